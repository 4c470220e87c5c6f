// Turns the chain of acedSSGet into tests of records, so that nothing is opened to be filtered.
#include "host/editor/entityfilter.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

#include "host/drawing/objecttags.h"
#include "host/dxf/classcodes.h"
#include "host/dxf/groupcodes.h"
#include "host/editor/layouts.h"
#include "host/editor/wildcard.h"
#include "host/objectarx/db/access.h"
#include "host/pick/layerstates.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::host::ed {

namespace codes = dxf::codes;
using platform::translated;

namespace {

constexpr int kXdataSentinel = -3;
constexpr int kMostDepth = 64;
constexpr double kColorByLayer = 256;
constexpr double kWeightByLayer = -1;

// None in what is too large for a whole number of a drawing.
std::int64_t bitsOf(double value) {
    constexpr double kLimit = 4294967296.0;
    return std::abs(value) < kLimit ? static_cast<std::int64_t>(value) : 0;
}

bool haveCommonBits(double value, double wanted) {
    return (bitsOf(value) & bitsOf(wanted)) != 0;
}

bool hasAllBits(double value, double wanted) {
    return (bitsOf(value) & bitsOf(wanted)) == bitsOf(wanted);
}

double numberOf(const resbuf& link) {
    const dxf::ValueKind kind = dxf::valueKindOf(link.restype);
    if (dxf::isReal(kind)) return link.resval.rreal;
    return kind == dxf::ValueKind::Integer32 ? link.resval.rlong : link.resval.rint;
}

std::wstring inQuotes(std::wstring_view text) {
    return L"\"" + std::wstring(text) + L"\"";
}

}  // namespace

// What conditions ask for. An entity that says nothing has the text or number given here when it is of one of the types
// (null: any); otherwise the condition does not hold for it.
struct EntityFilter::Field {
    short code;
    bool (EntityFilter::*holds)(const Node& condition, dxf::RecordId id) const;
    const wchar_t* text = nullptr;
    std::optional<double> number = std::nullopt;
    const wchar_t* types = nullptr;
};

const EntityFilter::Field EntityFilter::kFields[] = {
    {codes::kType, &EntityFilter::typeHolds},
    {codes::kText, &EntityFilter::textHolds},
    {codes::kName, &EntityFilter::textHolds},
    {codes::kLinetype, &EntityFilter::textHolds, L"BYLAYER"},
    {codes::kTextStyle, &EntityFilter::textHolds, L"STANDARD", std::nullopt, L"TEXT,MTEXT,ATTDEF"},
    {codes::kLayer, &EntityFilter::layerHolds},
    {codes::kPoint, &EntityFilter::pointHolds},
    {codes::kSecondPoint, &EntityFilter::pointHolds},
    {codes::kElevation, &EntityFilter::numberHolds, nullptr, 0.0, L"LWPOLYLINE"},
    {codes::kThickness, &EntityFilter::numberHolds, nullptr, 0.0},
    {40, &EntityFilter::numberHolds},                                // a radius, the height of a text
    {41, &EntityFilter::numberHolds, nullptr, 1.0, L"INSERT,TEXT"},  // a scale or width
    {codes::kLinetypeScale, &EntityFilter::numberHolds, nullptr, 1.0},
    {50, &EntityFilter::numberHolds, nullptr, 0.0, L"INSERT,TEXT,MTEXT"},  // a rotation
    {codes::kVisibility, &EntityFilter::numberHolds, nullptr, 0.0},
    {codes::kColor, &EntityFilter::numberHolds, nullptr, kColorByLayer},
    {codes::insert::kAttributesFollow, &EntityFilter::numberHolds, nullptr, 0.0, L"INSERT"},
    {codes::kPaperSpace, &EntityFilter::paperHolds},
    {codes::viewport::kNumber, &EntityFilter::numberHolds},
    {codes::kFlags, &EntityFilter::numberHolds, nullptr, 0.0, L"LWPOLYLINE,POLYLINE"},
    {codes::kSubclass, &EntityFilter::anyTextHolds},
    {codes::kLineWeight, &EntityFilter::numberHolds, nullptr, kWeightByLayer},
    {codes::kLayout, &EntityFilter::layoutHolds},
    {codes::kXdataApplication, &EntityFilter::xdataHolds},
};

struct EntityFilter::Comparison {
    const wchar_t* name;
    bool (*holds)(double value, double wanted);
    bool ofBits = false;  // whole numbers alone
};

const EntityFilter::Comparison EntityFilter::kComparisons[] = {
    {L"*", [](double, double) { return true; }},
    {L"=", [](double value, double wanted) { return value == wanted; }},
    {L"!=", [](double value, double wanted) { return value != wanted; }},
    {L"/=", [](double value, double wanted) { return value != wanted; }},
    {L"<>", [](double value, double wanted) { return value != wanted; }},
    {L"<", [](double value, double wanted) { return value < wanted; }},
    {L"<=", [](double value, double wanted) { return value <= wanted; }},
    {L">", [](double value, double wanted) { return value > wanted; }},
    {L">=", [](double value, double wanted) { return value >= wanted; }},
    {L"&", &haveCommonBits, true},
    {L"&=", &hasAllBits, true},
};

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

std::wstring EntityFilter::knownCodes() {
    std::wstring text;
    for (const Field& field : kFields)
        if (!dxf::isXdataCode(field.code)) text += (text.empty() ? L"" : L" ") + std::to_wstring(field.code);
    return text;
}

std::wstring EntityFilter::knownComparisons() {
    std::wstring text;
    for (const Comparison& comparison : kComparisons)
        text += (text.empty() ? L"" : L" ") + std::wstring(comparison.name);
    return text;
}

EntityFilter::EntityFilter(AcDbDatabase& database, const resbuf* chain, bool wildcards)
    : database_(database), drawing_(DatabaseAccess::drawing(database)), wildcards_(wildcards) {
    readGroup(all_, chain, nullptr, 0);
}

const resbuf* EntityFilter::refuse(const std::wstring& fault) {
    if (fault_.empty()) fault_ = fault;
    return nullptr;
}

const resbuf* EntityFilter::readGroup(Node& group, const resbuf* link, const wchar_t* end, int depth) {
    if (depth > kMostDepth) return refuse(translated(L"too many groups stand in each other"));
    while (link && isUsable()) {
        const resbuf& current = *link;
        link = link->rbnext;
        if (current.restype == kXdataSentinel) {
            inXdata_ = true;
            continue;
        }
        if (current.restype != AcDb::kDxfOperator) {
            addCondition(group, current, nullptr);
            continue;
        }
        const wchar_t* text = current.resval.rstring ? current.resval.rstring : L"";
        const auto means = [text](const wchar_t* name) { return platform::compareNoCase(text, name) == 0; };
        if (end && means(end))
            return isWhole(group) ? link
                                  : refuse(translated(L"%1 closes too many conditions or too few", inQuotes(end)));
        const auto* opened = std::find_if(std::begin(kOperators), std::end(kOperators),
                                          [&](const Operator& one) { return means(one.begin); });
        if (opened != std::end(kOperators)) {
            group.parts.emplace_back().kind = opened->kind;
            link = readGroup(group.parts.back(), link, opened->end, depth + 1);
            continue;
        }
        if (!link || link->restype == AcDb::kDxfOperator || link->restype == kXdataSentinel)
            return refuse(translated(L"the operator %1 does not belong there", inQuotes(text)));
        addCondition(group, *link, text);
        link = link->rbnext;
    }
    return end ? refuse(translated(L"%1 is missing", inQuotes(end))) : nullptr;
}

bool EntityFilter::isWhole(const Node& group) {
    const std::size_t count = group.parts.size();
    return (group.kind != Kind::Xor || count == 2) && (group.kind != Kind::Not || count == 1);
}

// The comparisons of a list; false when one is none of them or not for such values.
bool EntityFilter::readComparisons(Node& condition, std::wstring_view list, dxf::ValueKind kind) {
    for (bool more = true; more;) {
        const std::size_t comma = std::min(list.find(L','), list.size());
        const std::wstring_view name = list.substr(0, comma);
        more = comma < list.size();
        list.remove_prefix(std::min(comma + 1, list.size()));
        const auto* one = std::find_if(std::begin(kComparisons), std::end(kComparisons),
                                       [&](const Comparison& each) { return name == each.name; });
        if (one == std::end(kComparisons) || (one->ofBits && dxf::isReal(kind))) return false;
        condition.comparisons.push_back(one);
    }
    const std::size_t most = kind == dxf::ValueKind::Point ? 3 : 1;
    return !dxf::isTextual(kind) && condition.comparisons.size() <= most;
}

void EntityFilter::addCondition(Node& group, const resbuf& link, const wchar_t* comparisons) {
    // Chains made by hand and those made by acutBuildList spell the type's code differently.
    const short code = link.restype == RTDXF0 ? short{codes::kType} : link.restype;
    const bool isXdata = code == codes::kXdataApplication;
    if (!isXdata) inXdata_ = false;
    const auto* field =
        std::find_if(std::begin(kFields), std::end(kFields), [&](const Field& one) { return one.code == code; });
    const dxf::ValueKind kind = dxf::valueKindOf(code);
    const bool isText = dxf::isTextual(kind);
    if (field == std::end(kFields) || isXdata != inXdata_ || (isText && !link.resval.rstring)) {
        refuse(translated(L"there is no condition for group %1", code));
        return;
    }
    Node condition;
    condition.kind = Kind::Condition;
    condition.field = field;
    if (comparisons && !readComparisons(condition, comparisons, kind)) {
        refuse(translated(L"the operator %1 is not for group %2", inQuotes(comparisons), code));
        return;
    }
    if (code == codes::kLayer) return addLayer(group, *field, link.resval.rstring);
    if (isText)
        condition.text = link.resval.rstring;
    else if (kind == dxf::ValueKind::Point)
        condition.point = {link.resval.rpoint[0], link.resval.rpoint[1], link.resval.rpoint[2]};
    else
        condition.point = {numberOf(link)};
    if (code == codes::kLayout) {
        for (const LayoutTab& tab : layoutTabs(database_))
            if (matchesWildcard(tab.name, condition.text)) condition.spaces.push_back(tab.space);
    }
    group.parts.push_back(std::move(condition));
}

// Layers of which any will do are looked up together, however many they are.
void EntityFilter::addLayer(Node& group, const Field& field, const wchar_t* name) {
    const bool joins = group.kind == Kind::Or && !group.parts.empty() && group.parts.back().field == &field;
    Node& condition = joins ? group.parts.back() : group.parts.emplace_back();
    condition.kind = Kind::Condition;
    condition.field = &field;
    if (wildcards_)
        condition.patterns.emplace_back(name);
    else
        condition.layers.insert(platform::foldCase(name));
}

bool EntityFilter::holds(const Node& node, dxf::RecordId id) const {
    const auto holdsPart = [&](const Node& part) { return holds(part, id); };
    switch (node.kind) {
        case Kind::Condition:
            return (this->*node.field->holds)(node, id);
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

template <typename Find>
bool EntityFilter::knownOr(const Node& condition, std::uint32_t key, Find&& find) {
    using Answer = Node::Answer;
    std::vector<Answer>& known = condition.known;
    if (key >= known.size()) known.resize(key + std::size_t{1}, Answer::None);
    if (known[key] == Answer::None) known[key] = find() ? Answer::Yes : Answer::No;
    return known[key] == Answer::Yes;
}

bool EntityFilter::typeHolds(const Node& condition, dxf::RecordId id) const {
    const std::uint16_t type = drawing_.record(id).type;
    return knownOr(condition, type,
                   [&] { return matchesWildcard(platform::fromUtf8(drawing_.typeName(type)), condition.text); });
}

bool EntityFilter::layerHolds(const Node& condition, dxf::RecordId id) const {
    const dxf::NameId layer = drawing_.record(id).layer;
    return knownOr(condition, layer, [&] { return isOneOf(condition, layer); });
}

bool EntityFilter::isOneOf(const Node& condition, dxf::NameId layer) const {
    const std::wstring name = pick::layerName(drawing_, layer);
    if (condition.layers.count(platform::foldCase(name)) != 0) return true;
    return std::any_of(condition.patterns.begin(), condition.patterns.end(),
                       [&](const std::wstring& pattern) { return matchesWildcard(name, pattern); });
}

bool EntityFilter::textHolds(const Node& condition, dxf::RecordId id) const {
    const Field& field = *condition.field;
    dxf::Tag tag;
    if (drawing_.findTag(id, field.code, tag)) return matchesWildcard(readText(drawing_, tag.value), condition.text);
    return field.text && hasDefault(field, id) && matchesWildcard(field.text, condition.text);
}

bool EntityFilter::hasDefault(const Field& field, dxf::RecordId id) const {
    return !field.types || matchesWildcard(platform::fromUtf8(drawing_.typeNameOf(id)), field.types);
}

// Of a code that an entity may have several times.
bool EntityFilter::anyTextHolds(const Node& condition, dxf::RecordId id) const {
    dxf::Tag tag;
    for (int nth = 0; drawing_.findTag(id, condition.field->code, tag, nth); ++nth)
        if (matchesWildcard(readText(drawing_, tag.value), condition.text)) return true;
    return false;
}

bool EntityFilter::xdataHolds(const Node& condition, dxf::RecordId id) const {
    return (drawing_.record(id).flags & dxf::kHasXdata) != 0 && anyTextHolds(condition, id);
}

bool EntityFilter::layoutHolds(const Node& condition, dxf::RecordId id) const {
    return std::any_of(condition.spaces.begin(), condition.spaces.end(),
                       [&](EntitySpace space) { return liesInSpace(drawing_, space, id); });
}

bool EntityFilter::numberHolds(const Node& condition, dxf::RecordId id) const {
    const Field& field = *condition.field;
    dxf::Tag tag;
    const bool says = drawing_.findTag(id, field.code, tag);
    if (!says && (!field.number || !hasDefault(field, id))) return false;
    return fits(condition, {says ? dxf::toReal(tag.value, field.number.value_or(0.0)) : *field.number});
}

// One of the points that an entity has under a code: the vertices of a polyline stand there, too.
bool EntityFilter::pointHolds(const Node& condition, dxf::RecordId id) const {
    const int code = condition.field->code;
    Values point{};
    bool hasPoint = false;
    dxf::Tag tag;
    for (dxf::TagCursor tags = drawing_.tags(id); tags.next(tag) && !dxf::isXdataCode(tag.code);) {
        if (tag.code == code) {
            if (hasPoint && fits(condition, point)) return true;
            hasPoint = true;
            point = {dxf::toReal(tag.value, 0.0)};
        } else if (tag.code == code + codes::kCoordinateStep || tag.code == code + 2 * codes::kCoordinateStep) {
            point[static_cast<std::size_t>((tag.code - code) / codes::kCoordinateStep)] = dxf::toReal(tag.value, 0.0);
        }
    }
    return hasPoint && fits(condition, point);
}

// Without comparisons all must be equal; of several, those that are left out take any value.
bool EntityFilter::fits(const Node& condition, const Values& values) {
    if (condition.comparisons.empty()) return values == condition.point;
    for (std::size_t i = 0; i < condition.comparisons.size(); ++i)
        if (!condition.comparisons[i]->holds(values[i], condition.point[i])) return false;
    return true;
}

bool EntityFilter::paperHolds(const Node& condition, dxf::RecordId id) const {
    const bool onPaper = (drawing_.record(id).flags & dxf::kPaperSpace) != 0;
    return fits(condition, {onPaper ? 1.0 : 0.0});
}

}  // namespace qrs::host::ed
