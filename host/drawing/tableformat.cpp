// The symbol tables of drawing files, as data.
#include "host/drawing/tableformat.h"

namespace qrs::host {

namespace {

using dxf::Version;

constexpr CodeFormat kNamedCodes[] = {{2}, {70}};
// 49 opens a dash, the rest of its tags follow.
constexpr int kDashCode = 49;
constexpr CodeFormat kLinetypeCodes[] = {{2},
                                         {70},
                                         {3},
                                         {72},
                                         {73},
                                         {40},
                                         {kDashCode},
                                         {74, Version::R13},
                                         {75, Version::R13},
                                         {340, Version::R13},
                                         {46, Version::R13},
                                         {50, Version::R13},
                                         {44, Version::R13},
                                         {45, Version::R13},
                                         {9, Version::R13}};
constexpr CodeFormat kLayerCodes[] = {{2},
                                      {70},
                                      {62},
                                      {420, Version::R2004},
                                      {430, Version::R2004},
                                      {6},
                                      {290, Version::R2000},
                                      {370, Version::R2000},
                                      {390, Version::R2000},
                                      {347, Version::R2007},
                                      {348, Version::R2007}};
// The typeface lies in extended data, which records of old drawings do not have.
constexpr CodeFormat kTextStyleCodes[] = {{2},
                                          {70},
                                          {40},
                                          {41},
                                          {50},
                                          {71},
                                          {42},
                                          {3},
                                          {4},
                                          {1001, Version::R13},
                                          {1000, Version::R13},
                                          {1071, Version::R13}};

constexpr CodeFormat kBlockCodes[] = {
    {2}, {340, Version::R13}, {70, Version::R13}, {280, Version::R13}, {281, Version::R13}};

// No layout shows a new block; it may be exploded and scaled at will.
constexpr SiblingTag kBlockSiblingTags[] = {{340, "0"}, {70, "0"}, {280, "1"}, {281, "0"}};

// Plot style, material and visual style are those of the layer beside; the lineweight is the default one.
constexpr SiblingTag kLayerSiblingTags[] = {{370, "-3"}, {390, nullptr}, {347, nullptr}, {348, nullptr}};

template <std::size_t Count>
constexpr RecordFormat formatOf(const CodeFormat (&codes)[Count], int groupCode = -1) {
    return {codes, Count, groupCode};
}

const TableFormat kTables[kTableCount] = {
    {TableKind::Viewport, "VPORT", "AcDbViewportTableRecord", 5, formatOf(kNamedCodes), nullptr, 0},
    {TableKind::Linetype, "LTYPE", "AcDbLinetypeTableRecord", 5, formatOf(kLinetypeCodes, kDashCode), nullptr, 0},
    {TableKind::Layer, "LAYER", "AcDbLayerTableRecord", 5, formatOf(kLayerCodes), kLayerSiblingTags,
     std::size(kLayerSiblingTags)},
    {TableKind::TextStyle, "STYLE", "AcDbTextStyleTableRecord", 5, formatOf(kTextStyleCodes), nullptr, 0},
    {TableKind::View, "VIEW", "AcDbViewTableRecord", 5, formatOf(kNamedCodes), nullptr, 0},
    {TableKind::Ucs, "UCS", "AcDbUCSTableRecord", 5, formatOf(kNamedCodes), nullptr, 0},
    {TableKind::RegApp, "APPID", "AcDbRegAppTableRecord", 5, formatOf(kNamedCodes), nullptr, 0},
    {TableKind::DimStyle, "DIMSTYLE", "AcDbDimStyleTableRecord", 105, formatOf(kNamedCodes), nullptr, 0},
    {TableKind::Block, "BLOCK_RECORD", "AcDbBlockTableRecord", 5, formatOf(kBlockCodes), kBlockSiblingTags,
     std::size(kBlockSiblingTags)},
};

}  // namespace

const TableFormat& tableFormat(TableKind kind) {
    return kTables[static_cast<std::size_t>(kind)];
}

const TableFormat* findTableFormat(std::string_view name) {
    for (const TableFormat& format : kTables)
        if (format.name == name) return &format;
    return nullptr;
}

}  // namespace qrs::host
