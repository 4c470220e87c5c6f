// Text styles. The typeface of a style with an outline font lies in its extended data, as the editor keeps it: under
// the application "ACAD" the typeface (1000) and what tells its look and script (1071).
#include <cmath>
#include <cwchar>
#include <memory>

#include "acutads.h"
#include "dbsymtb.h"
#include "host/dxf/classcodes.h"
#include "host/objectarx/db/state.h"
#include "host/platform/angle.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"

using qrs::host::DatabaseState;
using qrs::host::ObjectTags;
using qrs::host::TableKind;
using qrs::platform::compareNoCase;
using qrs::platform::kRadiansPerDegree;
using qrs::platform::recordCall;

namespace codes = qrs::dxf::codes;
namespace textstyle = codes::textstyle;

ACRX_DEFINE_MEMBERS(AcDbTextStyleTable, AcDbSymbolTable)
ACRX_DEFINE_DXF_MEMBERS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, "STYLE")

namespace {

constexpr const wchar_t* kFontApplication = L"ACAD";
constexpr std::size_t kLongestTypeface = 255;

// The bits of the look.
constexpr std::int32_t kBold = 0x2000000;
constexpr std::int32_t kItalic = 0x1000000;
constexpr int kCharsetShift = 8;
constexpr int kByte = 0xFF;

struct Font {
    std::wstring typeface;  // empty: none
    std::int32_t look = 0;
};

struct ChainRelease {
    void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using Chain = std::unique_ptr<resbuf, ChainRelease>;

Font fontOf(const resbuf* chain) {
    Font font;
    bool hasLook = false;
    for (const resbuf* link = chain; link; link = link->rbnext) {
        if (link->restype == codes::kXdataText && font.typeface.empty()) font.typeface = link->resval.rstring;
        if (link->restype == codes::kXdataLong && !hasLook) font.look = static_cast<std::int32_t>(link->resval.rlong);
        hasLook = hasLook || link->restype == codes::kXdataLong;
    }
    return font;
}

// "ACAD", alone for a font without typeface: that removes what is there.
Chain chainOf(const Font& font) {
    Chain chain(acutNewRb(codes::kXdataApplication));
    acutNewString(kFontApplication, chain->resval.rstring);
    if (font.typeface.empty()) return chain;
    resbuf* const typeface = chain->rbnext = acutNewRb(codes::kXdataText);
    acutNewString(font.typeface.c_str(), typeface->resval.rstring);
    resbuf* const look = typeface->rbnext = acutNewRb(codes::kXdataLong);
    look->resval.rlong = font.look;
    return chain;
}

// Of a style outside any drawing.
void setOwnFont(ObjectTags tags, const Font& font) {
    for (const int code : {codes::kXdataApplication, codes::kXdataText, codes::kXdataLong})
        tags.removeAll(code);
    if (font.typeface.empty()) return;
    tags.setText(codes::kXdataApplication, kFontApplication);
    tags.setText(codes::kXdataText, font.typeface);
    tags.setInteger(codes::kXdataLong, font.look);
}

bool namesOutlineFont(const std::wstring& file) {
    constexpr std::size_t kExtensionLength = 4;
    if (file.size() < kExtensionLength) return false;
    const std::wstring extension = file.substr(file.size() - kExtensionLength);
    for (const wchar_t* known : {L".ttf", L".ttc", L".otf"})
        if (compareNoCase(extension, known) == 0) return true;
    return false;
}

}  // namespace

AcDbTextStyleTableRecord::AcDbTextStyleTableRecord() {
    setOwnTags({&qrs::host::tableFormat(TableKind::TextStyle).record,
                {{codes::kFlags, "0"},
                 {textstyle::kHeight, "0.0"},
                 {textstyle::kWidthFactor, "1.0"},
                 {textstyle::kOblique, "0.0"},
                 {textstyle::kGeneration, "0"},
                 {textstyle::kLastHeight, "2.5"},
                 {textstyle::kFont, "txt"},
                 {textstyle::kBigFont, ""}}});
}

std::wstring AcDbTextStyleTableRecord::recordedName() const {
    return tags().text(codes::kName);
}

// --- font files

Acad::ErrorStatus AcDbTextStyleTableRecord::fileName(ACHAR*& name) const {
    return acutNewString(tags().text(textstyle::kFont).c_str(), name);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* name) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!name) return Acad::eInvalidInput;
    recordCall("AcDbTextStyleTableRecord::setFileName", recordedName(), name);
    const std::wstring present = tags().text(textstyle::kFont);
    const std::wstring face = typeface();
    // A typeface would be drawn in place of any other file.
    const bool namesSameFont = compareNoCase(face, name) == 0 || (present == name && namesOutlineFont(present));
    if (!face.empty() && !namesSameFont) {
        const Acad::ErrorStatus status = setFont(L"", false, false, 0, 0);
        if (status != Acad::eOk) return status;
    }
    tags().setText(textstyle::kFont, name);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::bigFontFileName(ACHAR*& name) const {
    return acutNewString(tags().text(textstyle::kBigFont).c_str(), name);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setBigFontFileName(const ACHAR* name) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!name) return Acad::eInvalidInput;
    recordCall("AcDbTextStyleTableRecord::setBigFontFileName", recordedName(), name);
    tags().setText(textstyle::kBigFont, name);
    return Acad::eOk;
}

// --- typeface

std::wstring AcDbTextStyleTableRecord::typeface() const {
    if (!database()) return tags().text(codes::kXdataText);
    return fontOf(Chain(xData(kFontApplication)).get()).typeface;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::font(ACHAR*& typeface, bool& bold, bool& italic, int& charset,
                                                 int& pitchAndFamily) const {
    Font font;
    if (database()) {
        font = fontOf(Chain(xData(kFontApplication)).get());
    } else {
        font.typeface = tags().text(codes::kXdataText);
        font.look = static_cast<std::int32_t>(tags().integer(codes::kXdataLong, 0));
    }
    bold = (font.look & kBold) != 0;
    italic = (font.look & kItalic) != 0;
    charset = font.look >> kCharsetShift & kByte;
    pitchAndFamily = font.look & kByte;
    return acutNewString(font.typeface.c_str(), typeface);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFont(const ACHAR* typeface, bool bold, bool italic, int charset,
                                                    int pitchAndFamily) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!typeface || std::wcslen(typeface) > kLongestTypeface) return Acad::eInvalidInput;
    if (charset < 0 || charset > kByte || pitchAndFamily < 0 || pitchAndFamily > kByte) return Acad::eInvalidInput;
    if (*typeface && !tags().canCarry(codes::kXdataText)) return Acad::eNotApplicable;
    recordCall("AcDbTextStyleTableRecord::setFont", recordedName(), typeface, bold ? 1 : 0, italic ? 1 : 0, charset,
               pitchAndFamily);
    const Font font{typeface, (bold ? kBold : 0) | (italic ? kItalic : 0) | charset << kCharsetShift | pitchAndFamily};
    DatabaseState* state = DatabaseState::of(database());
    if (!state) {
        setOwnFont(tags(), font);
        return Acad::eOk;
    }
    if (font.typeface.empty() && this->typeface().empty()) return Acad::eOk;
    state->tables().registerApplication(kFontApplication);
    return setXData(chainOf(font).get());
}

// --- look

double AcDbTextStyleTableRecord::textSize() const {
    return tags().real(textstyle::kHeight, 0.0);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!std::isfinite(size) || size < 0.0) return Acad::eInvalidInput;
    recordCall("AcDbTextStyleTableRecord::setTextSize", recordedName(), size);
    tags().setReal(textstyle::kHeight, size);
    return Acad::eOk;
}

double AcDbTextStyleTableRecord::xScale() const {
    return tags().real(textstyle::kWidthFactor, 1.0);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double factor) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    if (!std::isfinite(factor) || factor <= 0.0) return Acad::eInvalidInput;
    recordCall("AcDbTextStyleTableRecord::setXScale", recordedName(), factor);
    tags().setReal(textstyle::kWidthFactor, factor);
    return Acad::eOk;
}

double AcDbTextStyleTableRecord::obliquingAngle() const {
    return tags().real(textstyle::kOblique, 0.0) * kRadiansPerDegree;
}
