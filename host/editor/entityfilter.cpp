// Turns the chain of acedSSGet into tests of records, so that nothing is opened to be filtered.
#include "host/editor/entityfilter.h"

#include "host/dxf/groupcodes.h"
#include "host/editor/wildcard.h"
#include "host/objectarx/db/access.h"
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

EntityFilter::EntityFilter(AcDbDatabase& database, const resbuf* chain, bool wildcards)
    : drawing_(DatabaseAccess::drawing(database)), wildcards_(wildcards) {
    bool inXdata = false;
    for (const resbuf* link = chain; link; link = link->rbnext) {
        if (link->restype == kXdataSentinel)
            inXdata = true;
        else
            addCondition(*link, inXdata);
    }
    passesAll_ = conditions_.empty();
}

void EntityFilter::addCondition(const resbuf& link, bool inXdata) {
    // Chains made by hand and those made by acutBuildList spell the type's code differently.
    const short code = link.restype == RTDXF0 ? short{codes::kType} : link.restype;
    const bool isXdata = code == codes::kXdataApplication;
    if (isXdata != inXdata || (!isText(code) && code != codes::kColor && code != codes::kPaperSpace)) {
        usable_ = false;
    } else if (isText(code)) {
        if (link.resval.rstring)
            conditions_.push_back(Condition{code, link.resval.rstring, 0});
        else
            usable_ = false;
    } else {
        conditions_.push_back(Condition{code, std::wstring(), link.resval.rint});
    }
}

bool EntityFilter::passes(dxf::RecordId id) const {
    for (const Condition& condition : conditions_)
        if (!holds(condition, id)) return false;
    return true;
}

bool EntityFilter::holds(const Condition& condition, dxf::RecordId id) const {
    const dxf::Record& record = drawing_.record(id);
    const std::uint64_t place = static_cast<std::uint64_t>(&condition - conditions_.data()) << 32;
    switch (condition.code) {
        case codes::kType: {
            const auto [known, fresh] = known_.emplace(place | record.type, false);
            if (fresh)
                known->second = matchesWildcard(platform::fromUtf8(drawing_.typeName(record.type)), condition.text);
            return known->second;
        }
        case codes::kLayer: {
            const auto [known, fresh] = known_.emplace(place | record.layer, false);
            if (fresh) known->second = layerHolds(condition, record.layer);
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

bool EntityFilter::layerHolds(const Condition& condition, dxf::NameId layer) const {
    const std::wstring name = layer == dxf::kNoName ? L"0" : drawing_.decode(dxf::trimmed(drawing_.name(layer)));
    return wildcards_ ? matchesWildcard(name, condition.text) : platform::compareNoCase(name, condition.text) == 0;
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
