// Header variables of a drawing, as system variables of the editor.
#include <cmath>
#include <cwchar>
#include <limits>

#include "acutads.h"
#include "host/dxf/classcodes.h"
#include "host/objectarx/db/access.h"
#include "host/objectarx/db/state.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"

namespace qrs::host {

namespace {

enum class HeaderKind { Short, Long, Real, Point2, Point3, Text, Layer, Linetype, TextStyle, DimStyle, Color };

using dxf::Version;
namespace codes = dxf::codes;
namespace variable = codes::variable;

constexpr Version kAlways = Version::Oldest;
constexpr double kAny = -1e300;
constexpr double kMost = 1e300;

// Code, kind, first version that knows it, value of a new drawing, and the range setting it allows.
struct HeaderFormat {
    const char* name;
    int code;
    HeaderKind kind;
    dxf::Version since;
    const char* fallback;  // x of a point; y and z are then 0
    double low = kAny;
    double high = kMost;
    bool readOnly = false;
};

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

const HeaderFormat* findFormat(std::wstring_view name) {
    for (const HeaderFormat& format : kVariables)
        if (platform::compareNoCase(platform::fromUtf8(format.name), name) == 0) return &format;
    return nullptr;
}

bool isNumber(HeaderKind kind) {
    return kind == HeaderKind::Short || kind == HeaderKind::Long || kind == HeaderKind::Real;
}

bool isPoint(HeaderKind kind) {
    return kind == HeaderKind::Point2 || kind == HeaderKind::Point3;
}

// The raw value in the file, or the one of a new drawing.
std::string_view rawValue(const dxf::Drawing& drawing, const HeaderFormat& format, int code) {
    dxf::Tag tag;
    const dxf::RecordId variable = drawing.findHeaderVariable(std::string("$") + format.name);
    if (variable != dxf::kNoRecord && drawing.findTag(variable, code, tag)) return tag.value;
    return code == format.code ? std::string_view(format.fallback) : std::string_view("0");
}

std::wstring textValue(const dxf::Drawing& drawing, const HeaderFormat& format) {
    const std::string_view raw = rawValue(drawing, format, format.code);
    if (format.kind != HeaderKind::Color) return readText(drawing, raw);
    const std::int64_t index = dxf::toInteger(raw, 256);
    for (const ColorWord& word : kColorWords)
        if (word.index == index) return word.word;
    return std::to_wstring(index);
}

// Writes raw values (of the codes code, code + 10 ...), after making the variable and its section where they are
// missing.
void write(dxf::Drawing& drawing, const HeaderFormat& format, const std::vector<std::string>& values) {
    const std::string name = std::string("$") + format.name;
    const dxf::RecordId variable = drawing.findHeaderVariable(name);
    if (variable != dxf::kNoRecord) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            dxf::Tag tag;
            const int code = format.code + static_cast<int>(i) * codes::kCoordinateStep;
            if (drawing.findTag(variable, code, tag))
                drawing.setValue(variable, tag, paddedLike(tag.value, values[i]));
            else
                drawing.insertTags(variable, static_cast<std::uint32_t>(drawing.bytes(variable).size()),
                                   {{code, values[i]}});
        }
        return;
    }
    dxf::RecordId section = drawing.findSection("HEADER");
    if (section == dxf::kNoRecord) {
        // Comments may stand before everything.
        dxf::RecordId before = drawing.first();
        if (drawing.record(before).kind == dxf::RecordKind::Preamble) before = drawing.next(before);
        section = drawing.insertRecord(before, dxf::RecordKind::Section,
                                       {{codes::kType, "SECTION"}, {codes::kName, "HEADER"}});
        drawing.insertRecord(before, dxf::RecordKind::EndSection, {{codes::kType, "ENDSEC"}});
    }
    std::vector<dxf::NewTag> tags{{codes::kVariable, name}};
    for (std::size_t i = 0; i < values.size(); ++i)
        tags.push_back({format.code + static_cast<int>(i) * codes::kCoordinateStep, values[i]});
    drawing.insertRecord(drawing.endOf(section), dxf::RecordKind::HeaderVariable, tags);
}

bool numberOf(const resbuf& value, double& number) {
    switch (value.restype) {
        case RTSHORT:
            number = value.resval.rint;
            return true;
        case RTLONG:
            number = value.resval.rlong;
            return true;
        case RTREAL:
        case RTANG:
        case RTORINT:
            number = value.resval.rreal;
            return std::isfinite(number);
        default:
            return false;
    }
}

Acad::ErrorStatus setNumber(dxf::Drawing& drawing, const HeaderFormat& format, const resbuf& value) {
    double number = 0.0;
    if (!numberOf(value, number)) return Acad::eInvalidInput;
    const bool isReal = format.kind == HeaderKind::Real;
    if (!isReal && value.restype != RTSHORT && value.restype != RTLONG) return Acad::eInvalidInput;
    if (number < format.low || number > format.high) return Acad::eOutOfRange;
    if (dxf::toReal(rawValue(drawing, format, format.code)) == number) return Acad::eOk;
    write(drawing, format, {isReal ? dxf::realText(number) : std::to_string(static_cast<long>(number))});
    return Acad::eOk;
}

Acad::ErrorStatus setPoint(dxf::Drawing& drawing, const HeaderFormat& format, const resbuf& value) {
    if (value.restype != RTPOINT && value.restype != RT3DPOINT) return Acad::eInvalidInput;
    std::vector<std::string> values;
    bool differs = false;
    for (int axis = 0; axis < (format.kind == HeaderKind::Point2 ? 2 : 3); ++axis) {
        const double coordinate = axis == 2 && value.restype == RTPOINT ? 0.0 : value.resval.rpoint[axis];
        if (!std::isfinite(coordinate)) return Acad::eInvalidInput;
        differs = differs ||
                  dxf::toReal(rawValue(drawing, format, format.code + axis * codes::kCoordinateStep)) != coordinate;
        values.push_back(dxf::realText(coordinate));
    }
    if (differs) write(drawing, format, values);
    return Acad::eOk;
}

Acad::ErrorStatus setColor(dxf::Drawing& drawing, const HeaderFormat& format, std::wstring_view text) {
    std::int64_t index = -1;
    for (const ColorWord& word : kColorWords)
        if (platform::compareNoCase(word.word, text) == 0) index = word.index;
    if (index < 0) index = dxf::toInteger(platform::toUtf8(text), -1);
    if (index < 0 || index > 256) return Acad::eInvalidInput;
    if (dxf::toInteger(rawValue(drawing, format, format.code), -1) != index)
        write(drawing, format, {std::to_string(index)});
    return Acad::eOk;
}

// A name must be one the drawing has; it is written as the table spells it.
Acad::ErrorStatus setName(DatabaseState& state, const HeaderFormat& format, std::wstring text) {
    struct NamedKind {
        HeaderKind header;
        TableKind table;
    };
    static constexpr NamedKind kinds[] = {{HeaderKind::Layer, TableKind::Layer},
                                          {HeaderKind::Linetype, TableKind::Linetype},
                                          {HeaderKind::TextStyle, TableKind::TextStyle},
                                          {HeaderKind::DimStyle, TableKind::DimStyle}};
    dxf::Drawing& drawing = state.drawing();
    for (const NamedKind& kind : kinds) {
        if (kind.header != format.kind) continue;
        const dxf::RecordId record = state.tables().find(kind.table, text);
        const bool isLogical = kind.table == TableKind::Linetype && (platform::compareNoCase(text, L"BYLAYER") == 0 ||
                                                                     platform::compareNoCase(text, L"BYBLOCK") == 0);
        if (record == dxf::kNoRecord && !isLogical) return Acad::eInvalidInput;
        if (record == dxf::kNoRecord) continue;
        text = state.tables().nameOf(record);
        dxf::Tag flags;
        const bool isFrozen = kind.table == TableKind::Layer && drawing.findTag(record, codes::kFlags, flags) &&
                              (dxf::toInteger(flags.value) & 1) != 0;
        if (isFrozen) return Acad::eInvalidLayer;
    }
    if (platform::compareNoCase(textValue(drawing, format), text) != 0)
        write(drawing, format, {writeText(drawing, text)});
    return Acad::eOk;
}

}  // namespace

bool isHeaderVariable(std::wstring_view name) {
    return findFormat(name) != nullptr;
}

std::vector<std::wstring> headerVariableNames() {
    std::vector<std::wstring> names;
    for (const HeaderFormat& format : kVariables)
        names.push_back(platform::fromUtf8(format.name));
    return names;
}

Acad::ErrorStatus headerVariable(const AcDbDatabase* database, std::wstring_view name, resbuf& value) {
    const DatabaseState* state = DatabaseState::of(database);
    if (!state) return Acad::eNoDatabase;
    const HeaderFormat* format = findFormat(name);
    if (!format) return Acad::eKeyNotFound;
    const dxf::Drawing& drawing = state->drawing();
    value = resbuf{};
    if (isPoint(format->kind)) {
        value.restype = format->kind == HeaderKind::Point2 ? RTPOINT : RT3DPOINT;
        for (int axis = 0; axis < (format->kind == HeaderKind::Point2 ? 2 : 3); ++axis)
            value.resval.rpoint[axis] =
                dxf::toReal(rawValue(drawing, *format, format->code + axis * codes::kCoordinateStep));
    } else if (isNumber(format->kind)) {
        const std::string_view raw = rawValue(drawing, *format, format->code);
        value.restype = format->kind == HeaderKind::Real ? RTREAL : format->kind == HeaderKind::Long ? RTLONG : RTSHORT;
        if (format->kind == HeaderKind::Real)
            value.resval.rreal = dxf::toReal(raw);
        else if (format->kind == HeaderKind::Long)
            value.resval.rlong = static_cast<std::int32_t>(dxf::toInteger(raw));
        else
            value.resval.rint = static_cast<short>(dxf::toInteger(raw));
    } else {
        value.restype = RTSTR;
        value.resval.rstring = newString(textValue(drawing, *format));
    }
    return Acad::eOk;
}

Acad::ErrorStatus setHeaderVariable(AcDbDatabase* database, std::wstring_view name, const resbuf& value) {
    DatabaseState* state = DatabaseState::of(database);
    if (!state) return Acad::eNoDatabase;
    const HeaderFormat* format = findFormat(name);
    if (!format) return Acad::eKeyNotFound;
    if (format->readOnly) return Acad::eIsWriteProtected;
    // What the drawing's version does not know is no variable of it.
    if (state->drawing().version() < format->since) return Acad::eNotApplicable;
    if (isNumber(format->kind)) return setNumber(state->drawing(), *format, value);
    if (isPoint(format->kind)) return setPoint(state->drawing(), *format, value);
    if (value.restype != RTSTR || !value.resval.rstring) return Acad::eInvalidInput;
    if (format->kind == HeaderKind::Color) return setColor(state->drawing(), *format, value.resval.rstring);
    return setName(*state, *format, value.resval.rstring);
}

}  // namespace qrs::host
