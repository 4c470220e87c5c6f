// Header variables of a drawing, as system variables of the editor.
#include <cmath>
#include <cwchar>
#include <limits>

#include "acutads.h"
#include "host/objectarx/db/access.h"
#include "host/objectarx/db/state.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"

namespace qrs::host {

namespace {

enum class HeaderKind { Short, Long, Real, Point2, Point3, Text, Layer, Linetype, TextStyle, DimStyle, Color };

using dxf::Version;

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
    {"ACADVER", 1, HeaderKind::Text, kAlways, "AC1009", kAny, kMost, true},
    {"DWGCODEPAGE", 3, HeaderKind::Text, kAlways, "", kAny, kMost, true},
    {"HANDSEED", 5, HeaderKind::Text, kAlways, "0", kAny, kMost, true},
    {"INSBASE", 10, HeaderKind::Point3, kAlways, "0"},
    {"EXTMIN", 10, HeaderKind::Point3, kAlways, "1e20", kAny, kMost, true},
    {"EXTMAX", 10, HeaderKind::Point3, kAlways, "-1e20", kAny, kMost, true},
    {"LIMMIN", 10, HeaderKind::Point2, kAlways, "0"},
    {"LIMMAX", 10, HeaderKind::Point2, kAlways, "420"},
    {"ORTHOMODE", 70, HeaderKind::Short, kAlways, "0", 0, 1},
    {"REGENMODE", 70, HeaderKind::Short, kAlways, "1", 0, 1},
    {"FILLMODE", 70, HeaderKind::Short, kAlways, "1", 0, 1},
    {"QTEXTMODE", 70, HeaderKind::Short, kAlways, "0", 0, 1},
    {"MIRRTEXT", 70, HeaderKind::Short, kAlways, "0", 0, 1},
    {"LTSCALE", 40, HeaderKind::Real, kAlways, "1", std::numeric_limits<double>::min()},
    {"ATTMODE", 70, HeaderKind::Short, kAlways, "1", 0, 2},
    {"TEXTSIZE", 40, HeaderKind::Real, kAlways, "2.5", std::numeric_limits<double>::min()},
    {"TRACEWID", 40, HeaderKind::Real, kAlways, "1", 0},
    {"TEXTSTYLE", 7, HeaderKind::TextStyle, kAlways, "STANDARD"},
    {"CLAYER", 8, HeaderKind::Layer, kAlways, "0"},
    {"CELTYPE", 6, HeaderKind::Linetype, kAlways, "BYLAYER"},
    {"CECOLOR", 62, HeaderKind::Color, kAlways, "256"},
    {"CELTSCALE", 40, HeaderKind::Real, Version::R13, "1", std::numeric_limits<double>::min()},
    {"CELWEIGHT", 370, HeaderKind::Short, Version::R2000, "-1", -3, 211},
    {"DIMSTYLE", 2, HeaderKind::DimStyle, kAlways, "STANDARD"},
    {"DIMSCALE", 40, HeaderKind::Real, kAlways, "1", 0},
    {"DIMASZ", 40, HeaderKind::Real, kAlways, "2.5", 0},
    {"DIMTXT", 40, HeaderKind::Real, kAlways, "2.5", 0},
    {"LUNITS", 70, HeaderKind::Short, kAlways, "2", 1, 5},
    {"LUPREC", 70, HeaderKind::Short, kAlways, "4", 0, 8},
    {"AUNITS", 70, HeaderKind::Short, kAlways, "0", 0, 4},
    {"AUPREC", 70, HeaderKind::Short, kAlways, "0", 0, 8},
    {"ANGBASE", 50, HeaderKind::Real, kAlways, "0"},
    {"ANGDIR", 70, HeaderKind::Short, kAlways, "0", 0, 1},
    {"SKETCHINC", 40, HeaderKind::Real, kAlways, "1", 0},
    {"FILLETRAD", 40, HeaderKind::Real, kAlways, "0", 0},
    {"CHAMFERA", 40, HeaderKind::Real, kAlways, "0", 0},
    {"CHAMFERB", 40, HeaderKind::Real, kAlways, "0", 0},
    {"CHAMFERC", 40, HeaderKind::Real, Version::R13, "0", 0},
    {"CHAMFERD", 40, HeaderKind::Real, Version::R13, "0", 0},
    {"ELEVATION", 40, HeaderKind::Real, kAlways, "0"},
    {"PELEVATION", 40, HeaderKind::Real, kAlways, "0"},
    {"THICKNESS", 40, HeaderKind::Real, kAlways, "0"},
    {"LIMCHECK", 70, HeaderKind::Short, kAlways, "0", 0, 1},
    {"PDMODE", 70, HeaderKind::Short, kAlways, "0", 0, 100},
    {"PDSIZE", 40, HeaderKind::Real, kAlways, "0"},
    {"PLINEWID", 40, HeaderKind::Real, kAlways, "0", 0},
    {"PLINEGEN", 70, HeaderKind::Short, kAlways, "0", 0, 1},
    {"PSLTSCALE", 70, HeaderKind::Short, kAlways, "1", 0, 1},
    {"SPLFRAME", 70, HeaderKind::Short, kAlways, "0", 0, 1},
    {"SPLINETYPE", 70, HeaderKind::Short, kAlways, "6", 5, 6},
    {"SPLINESEGS", 70, HeaderKind::Short, kAlways, "8", -32768, 32767},
    {"SURFTAB1", 70, HeaderKind::Short, kAlways, "6", 2, 32766},
    {"SURFTAB2", 70, HeaderKind::Short, kAlways, "6", 2, 32766},
    {"TILEMODE", 70, HeaderKind::Short, kAlways, "1", 0, 1},
    {"MAXACTVP", 70, HeaderKind::Short, kAlways, "64", 2, 64},
    {"VISRETAIN", 70, HeaderKind::Short, kAlways, "1", 0, 1},
    {"TREEDEPTH", 70, HeaderKind::Short, Version::R13, "3020", -32768, 32767},
    {"DISPSILH", 70, HeaderKind::Short, Version::R13, "0", 0, 1},
    {"SHADEDGE", 70, HeaderKind::Short, kAlways, "3", 0, 3},
    {"SHADEDIF", 70, HeaderKind::Short, kAlways, "70", 0, 100},
    {"INSUNITS", 70, HeaderKind::Short, Version::R2000, "4", 0, 24},
    {"MEASUREMENT", 70, HeaderKind::Short, Version::R2000, "1", 0, 1},
    {"LWDISPLAY", 290, HeaderKind::Short, Version::R2000, "0", 0, 1},
    {"EXTNAMES", 290, HeaderKind::Short, Version::R2000, "1", 0, 1, true},
    {"PSTYLEMODE", 290, HeaderKind::Short, Version::R2000, "1", 0, 1, true},
    {"TDCREATE", 40, HeaderKind::Real, kAlways, "0", kAny, kMost, true},
    {"TDUPDATE", 40, HeaderKind::Real, kAlways, "0", kAny, kMost, true},
    {"TDINDWG", 40, HeaderKind::Real, kAlways, "0", kAny, kMost, true},
    {"USERI1", 70, HeaderKind::Short, kAlways, "0", -32768, 32767},
    {"USERI2", 70, HeaderKind::Short, kAlways, "0", -32768, 32767},
    {"USERI3", 70, HeaderKind::Short, kAlways, "0", -32768, 32767},
    {"USERI4", 70, HeaderKind::Short, kAlways, "0", -32768, 32767},
    {"USERI5", 70, HeaderKind::Short, kAlways, "0", -32768, 32767},
    {"USERR1", 40, HeaderKind::Real, kAlways, "0"},
    {"USERR2", 40, HeaderKind::Real, kAlways, "0"},
    {"USERR3", 40, HeaderKind::Real, kAlways, "0"},
    {"USERR4", 40, HeaderKind::Real, kAlways, "0"},
    {"USERR5", 40, HeaderKind::Real, kAlways, "0"},
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
            const int code = format.code + static_cast<int>(i) * 10;
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
        section = drawing.insertRecord(before, dxf::RecordKind::Section, {{0, "SECTION"}, {2, "HEADER"}});
        drawing.insertRecord(before, dxf::RecordKind::EndSection, {{0, "ENDSEC"}});
    }
    std::vector<dxf::NewTag> tags{{9, name}};
    for (std::size_t i = 0; i < values.size(); ++i)
        tags.push_back({format.code + static_cast<int>(i) * 10, values[i]});
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
        differs = differs || dxf::toReal(rawValue(drawing, format, format.code + axis * 10)) != coordinate;
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
        const bool isFrozen = kind.table == TableKind::Layer && drawing.findTag(record, 70, flags) &&
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
            value.resval.rpoint[axis] = dxf::toReal(rawValue(drawing, *format, format->code + axis * 10));
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
