// The symbol tables of drawing files, as data.
#include "host/drawing/tableformat.h"

#include "host/dxf/classcodes.h"

namespace qrs::host {

namespace {

using dxf::Version;
namespace codes = dxf::codes;
using namespace dxf::codes;

constexpr CodeFormat kNamedCodes[] = {{codes::kName}, {codes::kFlags}};
// Each dash begins with its length, the rest of its tags follow.
constexpr CodeFormat kLinetypeCodes[] = {{codes::kName},
                                         {codes::kFlags},
                                         {linetype::kDescription},
                                         {linetype::kAlignment},
                                         {linetype::kDashCount},
                                         {linetype::kPatternLength},
                                         {linetype::kDash},
                                         {linetype::kCarried, Version::R13},
                                         {linetype::kShapeNumber, Version::R13},
                                         {linetype::kStyle, Version::R13},
                                         {linetype::kScale, Version::R13},
                                         {linetype::kRotation, Version::R13},
                                         {linetype::kOffsetX, Version::R13},
                                         {linetype::kOffsetY, Version::R13},
                                         {linetype::kText, Version::R13}};
constexpr CodeFormat kLayerCodes[] = {{codes::kName},
                                      {codes::kFlags},
                                      {codes::kColor},
                                      {codes::kTrueColor, Version::R2004},
                                      {codes::kColorName, Version::R2004},
                                      {codes::kLinetype},
                                      {codes::kPlottable, Version::R2000},
                                      {codes::kLineWeight, Version::R2000},
                                      {codes::kPlotStyle, Version::R2000},
                                      {layer::kMaterial, Version::R2007},
                                      {layer::kVisualStyle, Version::R2007}};
// The typeface lies in extended data, which records of old drawings do not have.
constexpr CodeFormat kTextStyleCodes[] = {{codes::kName},
                                          {codes::kFlags},
                                          {textstyle::kHeight},
                                          {textstyle::kWidthFactor},
                                          {textstyle::kOblique},
                                          {textstyle::kGeneration},
                                          {textstyle::kLastHeight},
                                          {textstyle::kFont},
                                          {textstyle::kBigFont},
                                          {codes::kXdataApplication, Version::R13},
                                          {codes::kXdataText, Version::R13},
                                          {codes::kXdataLong, Version::R13}};

// The text style.
constexpr CodeFormat kDimStyleCodes[] = {{codes::kName}, {codes::kFlags}, {codes::kHardPointer, Version::R13}};

constexpr CodeFormat kBlockCodes[] = {{codes::kName},
                                      {blockrecord::kLayout, Version::R13},
                                      {blockrecord::kUnits, Version::R13},
                                      {blockrecord::kIsExplodable, Version::R13},
                                      {blockrecord::kScalesUniformly, Version::R13}};

// No layout shows a new block; it may be exploded and scaled at will.
constexpr SiblingTag kBlockSiblingTags[] = {{blockrecord::kLayout, "0"},
                                            {blockrecord::kUnits, "0"},
                                            {blockrecord::kIsExplodable, "1"},
                                            {blockrecord::kScalesUniformly, "0"}};

// Plot style, material and visual style are those of the layer beside; the lineweight is the default one.
constexpr SiblingTag kLayerSiblingTags[] = {{codes::kLineWeight, "-3"},
                                            {codes::kPlotStyle, nullptr},
                                            {layer::kMaterial, nullptr},
                                            {layer::kVisualStyle, nullptr}};

template <std::size_t Count>
constexpr RecordFormat formatOf(const CodeFormat (&codes)[Count], int groupCode = -1) {
    return {codes, Count, groupCode};
}

const TableFormat kTables[kTableCount] = {
    {TableKind::Viewport, "VPORT", "AcDbViewportTableRecord", codes::kHandle, formatOf(kNamedCodes), nullptr, 0},
    {TableKind::Linetype, "LTYPE", "AcDbLinetypeTableRecord", codes::kHandle, formatOf(kLinetypeCodes, linetype::kDash),
     nullptr, 0},
    {TableKind::Layer, "LAYER", "AcDbLayerTableRecord", codes::kHandle, formatOf(kLayerCodes), kLayerSiblingTags,
     std::size(kLayerSiblingTags)},
    {TableKind::TextStyle, "STYLE", "AcDbTextStyleTableRecord", codes::kHandle, formatOf(kTextStyleCodes), nullptr, 0},
    {TableKind::View, "VIEW", "AcDbViewTableRecord", codes::kHandle, formatOf(kNamedCodes), nullptr, 0},
    {TableKind::Ucs, "UCS", "AcDbUCSTableRecord", codes::kHandle, formatOf(kNamedCodes), nullptr, 0},
    {TableKind::RegApp, "APPID", "AcDbRegAppTableRecord", codes::kHandle, formatOf(kNamedCodes), nullptr, 0},
    {TableKind::DimStyle, "DIMSTYLE", "AcDbDimStyleTableRecord", codes::kDimStyleHandle, formatOf(kDimStyleCodes),
     nullptr, 0},
    {TableKind::Block, "BLOCK_RECORD", "AcDbBlockTableRecord", codes::kHandle, formatOf(kBlockCodes), kBlockSiblingTags,
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
