// The table of header variables, and their values in the section HEADER.
#include "host/drawing/headervariables.h"

#include <limits>

#include "host/dxf/classcodes.h"
#include "host/platform/codepage.h"

namespace qrs::host {

namespace codes = dxf::codes;
namespace variable = dxf::codes::variable;
using dxf::Version;

namespace {

constexpr Version kAlways = Version::Oldest;
constexpr double kAny = kLeastHeader;
constexpr double kMost = kMostHeader;

constexpr HeaderFormat kVariables[] = {
    {"ACADVER", variable::kVersion, HeaderKind::Text, kAlways, "AC1009", kAny, kMost, true},
    {"DWGCODEPAGE", variable::kCodePage, HeaderKind::Text, kAlways, "", kAny, kMost, true},
    {"HANDSEED", codes::kHandle, HeaderKind::Text, kAlways, "0", kAny, kMost, true},
    {"INSBASE", codes::kPoint, HeaderKind::Point3, kAlways, "0"},
    {"EXTMIN", codes::kPoint, HeaderKind::Point3, kAlways, "1e20", kAny, kMost, true},
    {"EXTMAX", codes::kPoint, HeaderKind::Point3, kAlways, "-1e20", kAny, kMost, true},
    {"LIMMIN", codes::kPoint, HeaderKind::Point2, kAlways, "0"},
    {"LIMMAX", codes::kPoint, HeaderKind::Point2, kAlways, "420"},
    {"ORTHOMODE", variable::kInteger, HeaderKind::Short, kAlways, "0", 0, 1},
    {"REGENMODE", variable::kInteger, HeaderKind::Short, kAlways, "1", 0, 1},
    {"FILLMODE", variable::kInteger, HeaderKind::Short, kAlways, "1", 0, 1},
    {"QTEXTMODE", variable::kInteger, HeaderKind::Short, kAlways, "0", 0, 1},
    {"MIRRTEXT", variable::kInteger, HeaderKind::Short, kAlways, "0", 0, 1},
    {"LTSCALE", variable::kReal, HeaderKind::Real, kAlways, "1", std::numeric_limits<double>::min()},
    {"ATTMODE", variable::kInteger, HeaderKind::Short, kAlways, "1", 0, 2},
    {"TEXTSIZE", variable::kReal, HeaderKind::Real, kAlways, "2.5", std::numeric_limits<double>::min()},
    {"TRACEWID", variable::kReal, HeaderKind::Real, kAlways, "1", 0},
    {"TEXTSTYLE", codes::kTextStyle, HeaderKind::TextStyle, kAlways, "STANDARD"},
    {"CLAYER", codes::kLayer, HeaderKind::Layer, kAlways, "0"},
    {"CELTYPE", codes::kLinetype, HeaderKind::Linetype, kAlways, "BYLAYER"},
    {"CECOLOR", codes::kColor, HeaderKind::Color, kAlways, "256"},
    {"CELTSCALE", variable::kReal, HeaderKind::Real, Version::R13, "1", std::numeric_limits<double>::min()},
    {"CELWEIGHT", codes::kLineWeight, HeaderKind::Short, Version::R2000, "-1", -3, 211},
    {"DIMSTYLE", codes::kName, HeaderKind::DimStyle, kAlways, "STANDARD"},
    {"DIMSCALE", variable::kReal, HeaderKind::Real, kAlways, "1", 0},
    {"DIMASZ", variable::kReal, HeaderKind::Real, kAlways, "2.5", 0},
    {"DIMTXT", variable::kReal, HeaderKind::Real, kAlways, "2.5", 0},
    {"LUNITS", variable::kInteger, HeaderKind::Short, kAlways, "2", 1, 5},
    {"LUPREC", variable::kInteger, HeaderKind::Short, kAlways, "4", 0, 8},
    {"AUNITS", variable::kInteger, HeaderKind::Short, kAlways, "0", 0, 4},
    {"AUPREC", variable::kInteger, HeaderKind::Short, kAlways, "0", 0, 8},
    {"ANGBASE", variable::kAngle, HeaderKind::Real, kAlways, "0"},
    {"ANGDIR", variable::kInteger, HeaderKind::Short, kAlways, "0", 0, 1},
    {"SKETCHINC", variable::kReal, HeaderKind::Real, kAlways, "1", 0},
    {"FILLETRAD", variable::kReal, HeaderKind::Real, kAlways, "0", 0},
    {"CHAMFERA", variable::kReal, HeaderKind::Real, kAlways, "0", 0},
    {"CHAMFERB", variable::kReal, HeaderKind::Real, kAlways, "0", 0},
    {"CHAMFERC", variable::kReal, HeaderKind::Real, Version::R13, "0", 0},
    {"CHAMFERD", variable::kReal, HeaderKind::Real, Version::R13, "0", 0},
    {"ELEVATION", variable::kReal, HeaderKind::Real, kAlways, "0"},
    {"PELEVATION", variable::kReal, HeaderKind::Real, kAlways, "0"},
    {"THICKNESS", variable::kReal, HeaderKind::Real, kAlways, "0"},
    {"LIMCHECK", variable::kInteger, HeaderKind::Short, kAlways, "0", 0, 1},
    {"PDMODE", variable::kInteger, HeaderKind::Short, kAlways, "0", 0, 100},
    {"PDSIZE", variable::kReal, HeaderKind::Real, kAlways, "0"},
    {"PLINEWID", variable::kReal, HeaderKind::Real, kAlways, "0", 0},
    {"PLINEGEN", variable::kInteger, HeaderKind::Short, kAlways, "0", 0, 1},
    {"PSLTSCALE", variable::kInteger, HeaderKind::Short, kAlways, "1", 0, 1},
    {"SPLFRAME", variable::kInteger, HeaderKind::Short, kAlways, "0", 0, 1},
    {"SPLINETYPE", variable::kInteger, HeaderKind::Short, kAlways, "6", 5, 6},
    {"SPLINESEGS", variable::kInteger, HeaderKind::Short, kAlways, "8", -32768, 32767},
    {"SURFTAB1", variable::kInteger, HeaderKind::Short, kAlways, "6", 2, 32766},
    {"SURFTAB2", variable::kInteger, HeaderKind::Short, kAlways, "6", 2, 32766},
    {"TILEMODE", variable::kInteger, HeaderKind::Short, kAlways, "1", 0, 1},
    {"MAXACTVP", variable::kInteger, HeaderKind::Short, kAlways, "64", 2, 64},
    {"VISRETAIN", variable::kInteger, HeaderKind::Short, kAlways, "1", 0, 1},
    {"TREEDEPTH", variable::kInteger, HeaderKind::Short, Version::R13, "3020", -32768, 32767},
    {"DISPSILH", variable::kInteger, HeaderKind::Short, Version::R13, "0", 0, 1},
    {"SHADEDGE", variable::kInteger, HeaderKind::Short, kAlways, "3", 0, 3},
    {"SHADEDIF", variable::kInteger, HeaderKind::Short, kAlways, "70", 0, 100},
    {"INSUNITS", variable::kInteger, HeaderKind::Short, Version::R2000, "4", 0, 24},
    {"MEASUREMENT", variable::kInteger, HeaderKind::Short, Version::R2000, "1", 0, 1},
    {"LWDISPLAY", variable::kBoolean, HeaderKind::Short, Version::R2000, "0", 0, 1},
    {"EXTNAMES", variable::kBoolean, HeaderKind::Short, Version::R2000, "1", 0, 1, true},
    {"PSTYLEMODE", variable::kBoolean, HeaderKind::Short, Version::R2000, "1", 0, 1, true},
    {"TDCREATE", variable::kReal, HeaderKind::Real, kAlways, "0", kAny, kMost, true},
    {"TDUPDATE", variable::kReal, HeaderKind::Real, kAlways, "0", kAny, kMost, true},
    {"TDINDWG", variable::kReal, HeaderKind::Real, kAlways, "0", kAny, kMost, true},
    {"USERI1", variable::kInteger, HeaderKind::Short, kAlways, "0", -32768, 32767},
    {"USERI2", variable::kInteger, HeaderKind::Short, kAlways, "0", -32768, 32767},
    {"USERI3", variable::kInteger, HeaderKind::Short, kAlways, "0", -32768, 32767},
    {"USERI4", variable::kInteger, HeaderKind::Short, kAlways, "0", -32768, 32767},
    {"USERI5", variable::kInteger, HeaderKind::Short, kAlways, "0", -32768, 32767},
    {"USERR1", variable::kReal, HeaderKind::Real, kAlways, "0"},
    {"USERR2", variable::kReal, HeaderKind::Real, kAlways, "0"},
    {"USERR3", variable::kReal, HeaderKind::Real, kAlways, "0"},
    {"USERR4", variable::kReal, HeaderKind::Real, kAlways, "0"},
    {"USERR5", variable::kReal, HeaderKind::Real, kAlways, "0"},
};

// How the editor spells the colours that are no palette index.
struct ColorWord {
    int index;
    const wchar_t* word;
};
constexpr ColorWord kColorWords[] = {{0, L"BYBLOCK"}, {256, L"BYLAYER"}};

constexpr struct {
    HeaderKind header;
    TableKind table;
} kNamedKinds[] = {{HeaderKind::Layer, TableKind::Layer},
                   {HeaderKind::Linetype, TableKind::Linetype},
                   {HeaderKind::TextStyle, TableKind::TextStyle},
                   {HeaderKind::DimStyle, TableKind::DimStyle}};

// The value in the file, or that of a new drawing.
std::string_view rawValue(const dxf::Drawing& drawing, const HeaderFormat& format, unsigned axis = 0) {
    const int code = format.code + static_cast<int>(axis) * codes::kCoordinateStep;
    dxf::Tag tag;
    const dxf::RecordId variable = drawing.findHeaderVariable(std::string("$") + format.name);
    if (variable != dxf::kNoRecord && drawing.findTag(variable, code, tag)) return tag.value;
    return axis == 0 ? std::string_view(format.fallback) : std::string_view("0");
}

dxf::RecordId ensureHeader(dxf::Drawing& drawing) {
    const dxf::RecordId section = drawing.findSection("HEADER");
    if (section != dxf::kNoRecord) return section;
    // Comments may stand before everything.
    dxf::RecordId before = drawing.first();
    if (drawing.record(before).kind == dxf::RecordKind::Preamble) before = drawing.next(before);
    const dxf::RecordId made =
        drawing.insertRecord(before, dxf::RecordKind::Section, {{codes::kType, "SECTION"}, {codes::kName, "HEADER"}});
    drawing.insertRecord(before, dxf::RecordKind::EndSection, {{codes::kType, "ENDSEC"}});
    return made;
}

// One value for each axis.
void write(dxf::Drawing& drawing, const HeaderFormat& format, const std::vector<std::string>& values) {
    const std::string name = std::string("$") + format.name;
    std::vector<dxf::NewTag> tags{{codes::kVariable, name}};
    for (std::size_t i = 0; i < values.size(); ++i)
        tags.push_back({format.code + static_cast<int>(i) * codes::kCoordinateStep, values[i]});
    const dxf::RecordId variable = drawing.findHeaderVariable(name);
    if (variable == dxf::kNoRecord) {
        const dxf::RecordId section = ensureHeader(drawing);
        drawing.insertRecord(drawing.endOf(section), dxf::RecordKind::HeaderVariable, tags);
        return;
    }
    for (std::size_t i = 1; i < tags.size(); ++i) {
        dxf::Tag tag;
        if (drawing.findTag(variable, tags[i].code, tag))
            drawing.setValue(variable, tag, paddedLike(tag.value, tags[i].value));
        else
            drawing.insertTags(variable, drawing.length(variable), {tags[i]});
    }
}

HeaderChange setColor(dxf::Drawing& drawing, const HeaderFormat& format, std::wstring_view text) {
    std::int64_t index = -1;
    for (const ColorWord& word : kColorWords)
        if (platform::compareNoCase(word.word, text) == 0) index = word.index;
    if (index < 0) index = dxf::toInteger(platform::toUtf8(text), -1);
    if (index < 0 || index > 256) return HeaderChange::NoSuchValue;
    if (dxf::toInteger(rawValue(drawing, format), -1) != index) write(drawing, format, {std::to_string(index)});
    return HeaderChange::Done;
}

bool isFrozen(const dxf::Drawing& drawing, dxf::RecordId layer) {
    dxf::Tag flags;
    return drawing.findTag(layer, codes::kFlags, flags) && (dxf::toInteger(flags.value) & 1) != 0;
}

}  // namespace

const HeaderFormat* headerFormat(std::wstring_view name) {
    for (const HeaderFormat& format : kVariables)
        if (platform::compareNoCase(platform::fromUtf8(format.name), name) == 0) return &format;
    return nullptr;
}

std::vector<std::wstring> headerNames() {
    std::vector<std::wstring> names;
    for (const HeaderFormat& format : kVariables)
        names.push_back(platform::fromUtf8(format.name));
    return names;
}

double headerReal(const dxf::Drawing& drawing, const HeaderFormat& format, unsigned axis) {
    return dxf::toReal(rawValue(drawing, format, axis));
}

std::int64_t headerInteger(const dxf::Drawing& drawing, const HeaderFormat& format) {
    return dxf::toInteger(rawValue(drawing, format));
}

std::wstring headerText(const dxf::Drawing& drawing, const HeaderFormat& format) {
    const std::string_view raw = rawValue(drawing, format);
    if (format.kind != HeaderKind::Color) return readText(drawing, raw);
    const std::int64_t index = dxf::toInteger(raw, 256);
    for (const ColorWord& word : kColorWords)
        if (word.index == index) return word.word;
    return std::to_wstring(index);
}

HeaderChange setHeaderNumber(dxf::Drawing& drawing, const HeaderFormat& format, double value) {
    if (value < format.low || value > format.high) return HeaderChange::OutOfRange;
    if (headerReal(drawing, format) == value) return HeaderChange::Done;
    const bool isReal = format.kind == HeaderKind::Real;
    write(drawing, format, {isReal ? dxf::realText(value) : std::to_string(static_cast<long>(value))});
    return HeaderChange::Done;
}

void setHeaderPoint(dxf::Drawing& drawing, const HeaderFormat& format, const double* coordinates) {
    std::vector<std::string> values;
    bool differs = false;
    for (unsigned axis = 0; axis < format.axes(); ++axis) {
        differs = differs || headerReal(drawing, format, axis) != coordinates[axis];
        values.push_back(dxf::realText(coordinates[axis]));
    }
    if (differs) write(drawing, format, values);
}

HeaderChange setHeaderText(Contents& contents, const HeaderFormat& format, std::wstring text) {
    dxf::Drawing& drawing = contents.drawing();
    if (format.kind == HeaderKind::Color) return setColor(drawing, format, text);
    for (const auto& named : kNamedKinds) {
        if (named.header != format.kind) continue;
        const dxf::RecordId record = contents.tables().find(named.table, text);
        if (record == dxf::kNoRecord) {
            if (named.table != TableKind::Linetype || !isLogicalLinetype(text)) return HeaderChange::NoSuchValue;
            continue;
        }
        if (named.table == TableKind::Layer && isFrozen(drawing, record)) return HeaderChange::FrozenLayer;
        text = contents.tables().nameOf(record);
    }
    if (platform::compareNoCase(headerText(drawing, format), text) != 0)
        write(drawing, format, {writeText(drawing, text)});
    return HeaderChange::Done;
}

}  // namespace qrs::host
