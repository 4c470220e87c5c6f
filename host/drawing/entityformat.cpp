// The rows of tags of each kind of entity, and the tags by which entities name records of tables.
#include "host/drawing/entityformat.h"

namespace qrs::host {

namespace {

using dxf::Version;

constexpr CodeFormat mark(const char* name) {
    return {100, dxf::kFirstWithSubclasses, name};
}

constexpr CodeFormat kLine[] = {mark("AcDbLine"), {39}, {10}, {20}, {30}, {11}, {21}, {31}, {210}, {220}, {230}};
constexpr CodeFormat kCircle[] = {mark("AcDbCircle"), {39}, {10}, {20}, {30}, {40}, {210}, {220}, {230}};
constexpr CodeFormat kInsert[] = {mark("AcDbBlockReference"),
                                  {66},
                                  {2},
                                  {10},
                                  {20},
                                  {30},
                                  {41},
                                  {42},
                                  {43},
                                  {50},
                                  {70},
                                  {71},
                                  {44},
                                  {45},
                                  {210},
                                  {220},
                                  {230}};
// The vertical mode stands after a second mark of the same name.
constexpr CodeFormat kText[] = {mark("AcDbText"),
                                {39},
                                {10},
                                {20},
                                {30},
                                {40},
                                {1},
                                {50},
                                {41},
                                {51},
                                {7},
                                {71},
                                {72},
                                {11},
                                {21},
                                {31},
                                {210},
                                {220},
                                {230},
                                mark("AcDbText"),
                                {73}};
constexpr CodeFormat kViewport[] = {mark("AcDbViewport"),
                                    {10},
                                    {20},
                                    {30},
                                    {40},
                                    {41},
                                    {68},
                                    {69},
                                    {12},
                                    {22},
                                    {13},
                                    {23},
                                    {14},
                                    {24},
                                    {15},
                                    {25},
                                    {16},
                                    {26},
                                    {36},
                                    {17},
                                    {27},
                                    {37},
                                    {42},
                                    {43},
                                    {44},
                                    {45},
                                    {50},
                                    {51},
                                    {72},
                                    {90},
                                    {331, Version::R2000},
                                    {341, Version::R2000},
                                    {340, Version::R2000},
                                    {1}};
constexpr CodeFormat kBlock[] = {mark("AcDbBlockBegin"), {2}, {70}, {10}, {20}, {30}, {3}, {1}};

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
        {"INSERT", 2, TableKind::Block},
        {"DIMENSION", 2, TableKind::Block, true},
        {"ARC_DIMENSION", 2, TableKind::Block, true},
        {"LARGE_RADIAL_DIMENSION", 2, TableKind::Block, true},
        {"ACAD_TABLE", 2, TableKind::Block, true},
        {"TEXT", 7, TableKind::TextStyle},
        {"ATTRIB", 7, TableKind::TextStyle},
        {"ATTDEF", 7, TableKind::TextStyle},
        {"MTEXT", 7, TableKind::TextStyle},
        {"DIMENSION", 3, TableKind::DimStyle},
        {"ARC_DIMENSION", 3, TableKind::DimStyle},
        {"LARGE_RADIAL_DIMENSION", 3, TableKind::DimStyle},
        {"LEADER", 3, TableKind::DimStyle},
        {"TOLERANCE", 3, TableKind::DimStyle},
        {"", 8, TableKind::Layer},
        {"", 6, TableKind::Linetype},
    };
    return tags;
}

const NamingTag* namingTag(std::string_view dxfName, int code) {
    for (const NamingTag& tag : namingTags())
        if (tag.code == code && (*tag.dxfName == '\0' || dxfName == tag.dxfName)) return &tag;
    return nullptr;
}

}  // namespace qrs::host
