// Turns the chain of acedSSGet into tests of records, so that nothing is opened to be filtered.
#include "host/editor/entityfilter.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include "host/dxf/groupcodes.h"
#include "host/editor/layouts.h"
#include "host/editor/wildcard.h"
#include "host/objectarx/db/access.h"
#include "host/pick/layerstates.h"
#include "host/platform/codepage.h"

namespace qrs::host::ed {

namespace codes = dxf::codes;

namespace {

constexpr int kXdataSentinel = -3;
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

}  // namespace

// What conditions ask for. An entity that says nothing has the text or number given here; where none is given the
// condition does not hold for it.
struct EntityFilter::Field {
    short code;
    bool (EntityFilter::*holds)(const Node& condition, dxf::RecordId id) const;
    const wchar_t* text = nullptr;
    const wchar_t* typesWithText = nullptr;  // null: all
    std::optional<double> number = std::nullopt;
};

const EntityFilter::Field EntityFilter::kFields[] = {
    {codes::kType, &EntityFilter::typeHolds},
    {codes::kName, &EntityFilter::textHolds},
    {codes::kLinetype, &EntityFilter::textHolds, L"BYLAYER"},
    {codes::kTextStyle, &EntityFilter::textHolds, L"STANDARD", L"TEXT,MTEXT,ATTRIB,ATTDEF"},
    {codes::kLayer, &EntityFilter::layerHolds},
    {codes::kElevation, &EntityFilter::numberHolds, nullptr, nullptr, 0.0},
    {codes::kThickness, &EntityFilter::numberHolds, nullptr, nullptr, 0.0},
    {40, &EntityFilter::numberHolds},  // a radius, the height of a text
    {codes::kLinetypeScale, &EntityFilter::numberHolds, nullptr, nullptr, 1.0},
    {codes::kVisibility, &EntityFilter::numberHolds, nullptr, nullptr, 0.0},
    {codes::kColor, &EntityFilter::numberHolds, nullptr, nullptr, kColorByLayer},
    {codes::kPaperSpace, &EntityFilter::paperHolds},
    {codes::kFlags, &EntityFilter::numberHolds, nullptr, nullptr, 0.0},
    {codes::kSubclass, &EntityFilter::anyTextHolds},
    {codes::kLineWeight, &EntityFilter::numberHolds, nullptr, nullptr, kWeightByLayer},
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
    readGroup(all_, chain, nullptr);
}

const resbuf* EntityFilter::refuse() {
    usable_ = false;
    return nullptr;
}

const resbuf* EntityFilter::readGroup(Node& group, const resbuf* link, const wchar_t* end) {
    while (link) {
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
        if (end && means(end)) return isWhole(group) ? link : refuse();
        const auto* opened = std::find_if(std::begin(kOperators), std::end(kOperators),
                                          [&](const Operator& one) { return means(one.begin); });
        if (opened != std::end(kOperators)) {
            group.parts.emplace_back().kind = opened->kind;
            link = readGroup(group.parts.back(), link, opened->end);
            continue;
        }
        const auto* comparison = std::find_if(std::begin(kComparisons), std::end(kComparisons),
                                              [&](const Comparison& one) { return means(one.name); });
        if (comparison == std::end(kComparisons) || !link) return refuse();
        addCondition(group, *link, comparison);
        link = link->rbnext;
    }
    return end ? refuse() : nullptr;
}

bool EntityFilter::isWhole(const Node& group) {
    const std::size_t count = group.parts.size();
    return (group.kind != Kind::Xor || count == 2) && (group.kind != Kind::Not || count == 1);
}

void EntityFilter::addCondition(Node& group, const resbuf& link, const Comparison* comparison) {
    // Chains made by hand and those made by acutBuildList spell the type's code differently.
    const short code = link.restype == RTDXF0 ? short{codes::kType} : link.restype;
    const bool isXdata = code == codes::kXdataApplication;
    if (!isXdata) inXdata_ = false;
    const auto* field =
        std::find_if(std::begin(kFields), std::end(kFields), [&](const Field& one) { return one.code == code; });
    if (field == std::end(kFields) || isXdata != inXdata_) {
        usable_ = false;
        return;
    }
    const dxf::ValueKind kind = dxf::valueKindOf(code);
    const bool isText = dxf::isTextual(kind);
    const bool isComparable = !comparison || (!isText && !(comparison->ofBits && dxf::isReal(kind)));
    if ((isText && !link.resval.rstring) || !isComparable) {
        usable_ = false;
        return;
    }
    if (code == codes::kLayer) return addLayer(group, *field, link.resval.rstring);
    Node& condition = group.parts.emplace_back();
    condition.kind = Kind::Condition;
    condition.field = field;
    condition.comparison = comparison;
    if (isText)
        condition.text = link.resval.rstring;
    else
        condition.number = numberOf(link);
    if (code != codes::kLayout) return;
    for (const LayoutTab& tab : layoutTabs(database_))
        if (matchesWildcard(tab.name, condition.text)) condition.spaces.push_back(tab.space);
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

bool EntityFilter::typeHolds(const Node& condition, dxf::RecordId id) const {
    const auto [known, fresh] = condition.known.emplace(drawing_.record(id).type, false);
    if (fresh)
        known->second =
            matchesWildcard(platform::fromUtf8(drawing_.typeName(drawing_.record(id).type)), condition.text);
    return known->second;
}

bool EntityFilter::layerHolds(const Node& condition, dxf::RecordId id) const {
    const dxf::NameId layer = drawing_.record(id).layer;
    const auto [known, fresh] = condition.known.emplace(layer, false);
    if (fresh) known->second = isOneOf(condition, layer);
    return known->second;
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
    if (drawing_.findTag(id, field.code, tag)) return matchesWildcard(drawing_.decode(tag.value), condition.text);
    if (!field.text) return false;
    const bool hasText =
        !field.typesWithText || matchesWildcard(platform::fromUtf8(drawing_.typeNameOf(id)), field.typesWithText);
    return hasText && matchesWildcard(field.text, condition.text);
}

// Of a code that an entity may have several times.
bool EntityFilter::anyTextHolds(const Node& condition, dxf::RecordId id) const {
    dxf::Tag tag;
    for (int nth = 0; drawing_.findTag(id, condition.field->code, tag, nth); ++nth)
        if (matchesWildcard(drawing_.decode(tag.value), condition.text)) return true;
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
    if (!says && !field.number) return false;
    const double value = says ? dxf::toReal(tag.value, field.number.value_or(0.0)) : *field.number;
    return condition.comparison ? condition.comparison->holds(value, condition.number) : value == condition.number;
}

bool EntityFilter::paperHolds(const Node& condition, dxf::RecordId id) const {
    const bool onPaper = (drawing_.record(id).flags & dxf::kPaperSpace) != 0;
    if (!condition.comparison) return onPaper == (condition.number != 0);
    return condition.comparison->holds(onPaper ? 1 : 0, condition.number);
}

}  // namespace qrs::host::ed
