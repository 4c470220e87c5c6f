// Turns the chain of acedSSGet into tests of records, so that nothing is opened to be filtered.
#include "host/editor/entityfilter.h"

#include <algorithm>
#include <iterator>

#include "host/dxf/groupcodes.h"
#include "host/editor/wildcard.h"
#include "host/objectarx/db/access.h"
#include "host/pick/layerstates.h"
#include "host/platform/codepage.h"

namespace qrs::host::ed {

namespace codes = dxf::codes;

namespace {

constexpr int kXdataSentinel = -3;
constexpr int kColorByLayer = 256;

bool isText(int code) {
    return code == codes::kType || code == codes::kLayer || code == codes::kLinetype ||
           code == codes::kXdataApplication;
}

std::int64_t integerOf(const dxf::Drawing& drawing, dxf::RecordId id, int code, std::int64_t fallback) {
    dxf::Tag tag;
    return drawing.findTag(id, code, tag) ? dxf::toInteger(tag.value, fallback) : fallback;
}

}  // namespace

struct EntityFilter::Operator {
    const wchar_t* begin;
    const wchar_t* end;
    Kind kind;
};

const EntityFilter::Operator EntityFilter::kOperators[] = {
    {L"<AND", L"AND>", Kind::And},
    {L"<OR", L"OR>", Kind::Or},
    {L"<XOR", L"XOR>", Kind::Xor},
    {L"<NOT", L"NOT>", Kind::Not},
};

EntityFilter::EntityFilter(AcDbDatabase& database, const resbuf* chain, bool wildcards)
    : drawing_(DatabaseAccess::drawing(database)), wildcards_(wildcards) {
    readGroup(all_, chain, nullptr);
}

const resbuf* EntityFilter::readGroup(Node& group, const resbuf* link, const wchar_t* end) {
    while (link) {
        if (link->restype == kXdataSentinel) {
            inXdata_ = true;
        } else if (link->restype != AcDb::kDxfOperator) {
            addCondition(group, *link);
        } else {
            const wchar_t* text = link->resval.rstring ? link->resval.rstring : L"";
            if (end && platform::compareNoCase(text, end) == 0) return link->rbnext;
            const auto* found = std::find_if(std::begin(kOperators), std::end(kOperators), [&](const Operator& one) {
                return platform::compareNoCase(text, one.begin) == 0;
            });
            if (found == std::end(kOperators)) break;
            group.parts.emplace_back().kind = found->kind;
            link = readGroup(group.parts.back(), link->rbnext, found->end);
            continue;
        }
        link = link->rbnext;
    }
    // An operator that is not known, or a group without an end.
    if (link || end) usable_ = false;
    const std::size_t count = group.parts.size();
    if ((group.kind == Kind::Xor && count != 2) || (group.kind == Kind::Not && count != 1)) usable_ = false;
    return nullptr;
}

void EntityFilter::addCondition(Node& group, const resbuf& link) {
    // Chains made by hand and those made by acutBuildList spell the type's code differently.
    const short code = link.restype == RTDXF0 ? short{codes::kType} : link.restype;
    const bool isXdata = code == codes::kXdataApplication;
    const bool isKnown =
        isText(code) ? link.resval.rstring != nullptr : code == codes::kColor || code == codes::kPaperSpace;
    if (isXdata != inXdata_ || !isKnown) {
        usable_ = false;
        return;
    }
    if (code == codes::kLayer) return addLayer(group, link.resval.rstring);
    Node& condition = group.parts.emplace_back();
    condition.kind = Kind::Condition;
    condition.code = code;
    if (isText(code))
        condition.text = link.resval.rstring;
    else
        condition.number = link.resval.rint;
}

// Layers of which any will do are looked up together, however many they are.
void EntityFilter::addLayer(Node& group, const wchar_t* name) {
    const bool joins = group.kind == Kind::Or && !group.parts.empty() && group.parts.back().code == codes::kLayer &&
                       group.parts.back().kind == Kind::Condition;
    Node& condition = joins ? group.parts.back() : group.parts.emplace_back();
    condition.kind = Kind::Condition;
    condition.code = codes::kLayer;
    if (wildcards_)
        condition.patterns.emplace_back(name);
    else
        condition.layers.insert(platform::foldCase(name));
}

bool EntityFilter::holds(const Node& node, dxf::RecordId id) const {
    const auto holdsPart = [&](const Node& part) { return holds(part, id); };
    switch (node.kind) {
        case Kind::Condition:
            return holdsCondition(node, id);
        case Kind::And:
            return std::all_of(node.parts.begin(), node.parts.end(), holdsPart);
        case Kind::Or:
            return std::any_of(node.parts.begin(), node.parts.end(), holdsPart);
        case Kind::Xor:
            return holdsPart(node.parts.front()) != holdsPart(node.parts.back());
        case Kind::Not:
            return !holdsPart(node.parts.front());
    }
    return false;
}

bool EntityFilter::holdsCondition(const Node& condition, dxf::RecordId id) const {
    const dxf::Record& record = drawing_.record(id);
    switch (condition.code) {
        case codes::kType: {
            const auto [known, fresh] = condition.known.emplace(record.type, false);
            if (fresh)
                known->second = matchesWildcard(platform::fromUtf8(drawing_.typeName(record.type)), condition.text);
            return known->second;
        }
        case codes::kLayer: {
            const auto [known, fresh] = condition.known.emplace(record.layer, false);
            if (fresh) known->second = isOneOf(condition, record.layer);
            return known->second;
        }
        case codes::kPaperSpace:
            return ((record.flags & dxf::kPaperSpace) != 0) == (condition.number != 0);
        case codes::kColor:
            return integerOf(drawing_, id, codes::kColor, kColorByLayer) == condition.number;
        case codes::kLinetype:
            return textMatches(id, codes::kLinetype, L"BYLAYER", condition.text);
        default:
            return hasXdataOf(id, condition.text);
    }
}

bool EntityFilter::isOneOf(const Node& condition, dxf::NameId layer) const {
    const std::wstring name = pick::layerName(drawing_, layer);
    if (condition.layers.count(platform::foldCase(name)) != 0) return true;
    return std::any_of(condition.patterns.begin(), condition.patterns.end(),
                       [&](const std::wstring& pattern) { return matchesWildcard(name, pattern); });
}

bool EntityFilter::textMatches(dxf::RecordId id, int code, const wchar_t* fallback, const std::wstring& pattern) const {
    dxf::Tag tag;
    return matchesWildcard(drawing_.findTag(id, code, tag) ? drawing_.decode(tag.value) : fallback, pattern);
}

bool EntityFilter::hasXdataOf(dxf::RecordId id, const std::wstring& applications) const {
    if (!(drawing_.record(id).flags & dxf::kHasXdata)) return false;
    dxf::Tag tag;
    for (int nth = 0; drawing_.findTag(id, codes::kXdataApplication, tag, nth); ++nth)
        if (matchesWildcard(drawing_.decode(tag.value), applications)) return true;
    return false;
}

}  // namespace qrs::host::ed
