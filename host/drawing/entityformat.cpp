// The rows of tags of each kind of entity, and the tags by which entities name records of tables.
#include "host/drawing/entityformat.h"

#include "host/dxf/classcodes.h"

namespace qrs::host {

namespace {

using dxf::Version;
namespace codes = dxf::codes;
using namespace dxf::codes;

constexpr CodeFormat mark(const char* name) {
    return {codes::kSubclass, dxf::kFirstWithSubclasses, name};
}

constexpr CodeFormat kLine[] = {mark("AcDbLine"),
                                {codes::kThickness},
                                {codes::kPoint},
                                {codes::yOf(codes::kPoint)},
                                {codes::zOf(codes::kPoint)},
                                {codes::kSecondPoint},
                                {codes::yOf(codes::kSecondPoint)},
                                {codes::zOf(codes::kSecondPoint)},
                                {codes::kNormal},
                                {codes::yOf(codes::kNormal)},
                                {codes::zOf(codes::kNormal)}};
constexpr CodeFormat kCircle[] = {
    mark("AcDbCircle"),          {codes::kThickness}, {codes::kPoint},  {codes::yOf(codes::kPoint)},
    {codes::zOf(codes::kPoint)}, {curve::kRadius},    {codes::kNormal}, {codes::yOf(codes::kNormal)},
    {codes::zOf(codes::kNormal)}};
constexpr CodeFormat kInsert[] = {
    mark("AcDbBlockReference"),  {insert::kAttributesFollow}, {codes::kName},         {codes::kPoint},
    {codes::yOf(codes::kPoint)}, {codes::zOf(codes::kPoint)}, {insert::kScaleX},      {insert::kScaleY},
    {insert::kScaleZ},           {insert::kRotation},         {insert::kColumnCount}, {insert::kRowCount},
    {insert::kColumnSpacing},    {insert::kRowSpacing},       {codes::kNormal},       {codes::yOf(codes::kNormal)},
    {codes::zOf(codes::kNormal)}};
// The vertical mode stands after a second mark of the same name.
constexpr CodeFormat kText[] = {mark("AcDbText"),
                                {codes::kThickness},
                                {codes::kPoint},
                                {codes::yOf(codes::kPoint)},
                                {codes::zOf(codes::kPoint)},
                                {text::kHeight},
                                {codes::kText},
                                {text::kRotation},
                                {text::kWidthFactor},
                                {text::kOblique},
                                {codes::kTextStyle},
                                {text::kGeneration},
                                {text::kHorizontal},
                                {text::kAlignmentPoint},
                                {codes::yOf(text::kAlignmentPoint)},
                                {codes::zOf(text::kAlignmentPoint)},
                                {codes::kNormal},
                                {codes::yOf(codes::kNormal)},
                                {codes::zOf(codes::kNormal)},
                                mark("AcDbText"),
                                {text::kVertical}};
constexpr CodeFormat kViewport[] = {mark("AcDbViewport"),
                                    {codes::kPoint},
                                    {codes::yOf(codes::kPoint)},
                                    {codes::zOf(codes::kPoint)},
                                    {viewport::kWidth},
                                    {viewport::kHeight},
                                    {viewport::kStack},
                                    {viewport::kNumber},
                                    {viewport::kViewCenter},
                                    {codes::yOf(viewport::kViewCenter)},
                                    {viewport::kSnapBase},
                                    {codes::yOf(viewport::kSnapBase)},
                                    {viewport::kSnapSpacing},
                                    {codes::yOf(viewport::kSnapSpacing)},
                                    {viewport::kGridSpacing},
                                    {codes::yOf(viewport::kGridSpacing)},
                                    {viewport::kViewDirection},
                                    {codes::yOf(viewport::kViewDirection)},
                                    {codes::zOf(viewport::kViewDirection)},
                                    {viewport::kViewTarget},
                                    {codes::yOf(viewport::kViewTarget)},
                                    {codes::zOf(viewport::kViewTarget)},
                                    {viewport::kLensLength},
                                    {viewport::kFrontClip},
                                    {viewport::kBackClip},
                                    {viewport::kViewHeight},
                                    {viewport::kSnapAngle},
                                    {viewport::kViewTwist},
                                    {viewport::kCircleZoom},
                                    {viewport::kStatus},
                                    {viewport::kFrozenLayer, Version::R2000},
                                    {viewport::kHardFrozenLayer, Version::R2000},
                                    {viewport::kOutline, Version::R2000},
                                    {viewport::kSheetName}};
constexpr CodeFormat kBlock[] = {
    mark("AcDbBlockBegin"),      {codes::kName},       {codes::kFlags}, {codes::kPoint}, {codes::yOf(codes::kPoint)},
    {codes::zOf(codes::kPoint)}, {block::kSecondName}, {block::kPath}};

struct Kind {
    const char* dxfName;
    std::vector<CodeFormat> codes;
    RecordFormat format;

    template <std::size_t Count>
    Kind(const char* name, const CodeFormat (&own)[Count]) : dxfName(name) {
        const RecordFormat& common = entityFormat();
        codes.push_back(mark("AcDbEntity"));
        codes.insert(codes.end(), common.codes, common.codes + common.count);
        codes.insert(codes.end(), own, own + Count);
        format = {codes.data(), codes.size()};
    }
    Kind(Kind&&) = default;  // the rows stay where they are
};

std::vector<Kind> makeKinds() {
    std::vector<Kind> kinds;
    kinds.emplace_back("LINE", kLine);
    kinds.emplace_back("CIRCLE", kCircle);
    kinds.emplace_back("INSERT", kInsert);
    kinds.emplace_back("TEXT", kText);
    kinds.emplace_back("VIEWPORT", kViewport);
    kinds.emplace_back("BLOCK", kBlock);
    return kinds;
}

}  // namespace

const RecordFormat& entityFormatOf(std::string_view dxfName) {
    static const std::vector<Kind> kinds = makeKinds();
    for (const Kind& kind : kinds)
        if (dxfName == kind.dxfName) return kind.format;
    return entityFormat();
}

const std::vector<NamingTag>& namingTags() {
    static const std::vector<NamingTag> tags = {
        {"INSERT", codes::kName, TableKind::Block},
        {"DIMENSION", codes::kName, TableKind::Block, true},
        {"ARC_DIMENSION", codes::kName, TableKind::Block, true},
        {"LARGE_RADIAL_DIMENSION", codes::kName, TableKind::Block, true},
        {"ACAD_TABLE", codes::kName, TableKind::Block, true},
        {"TEXT", codes::kTextStyle, TableKind::TextStyle},
        {"ATTRIB", codes::kTextStyle, TableKind::TextStyle},
        {"ATTDEF", codes::kTextStyle, TableKind::TextStyle},
        {"MTEXT", codes::kTextStyle, TableKind::TextStyle},
        {"DIMENSION", dimension::kStyle, TableKind::DimStyle},
        {"ARC_DIMENSION", dimension::kStyle, TableKind::DimStyle},
        {"LARGE_RADIAL_DIMENSION", dimension::kStyle, TableKind::DimStyle},
        {"LEADER", dimension::kStyle, TableKind::DimStyle},
        {"TOLERANCE", dimension::kStyle, TableKind::DimStyle},
        {"", codes::kLayer, TableKind::Layer},
        {"", codes::kLinetype, TableKind::Linetype},
    };
    return tags;
}

const NamingTag* namingTag(std::string_view dxfName, int code) {
    for (const NamingTag& tag : namingTags())
        if (tag.code == code && (*tag.dxfName == '\0' || dxfName == tag.dxfName)) return &tag;
    return nullptr;
}

}  // namespace qrs::host
