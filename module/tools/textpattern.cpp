// Measures the texts of a linetype and moves its gaps to what was asked.
#include "tools/textpattern.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "acutads.h"
#include "acutmem.h"
#include "dbobjptr.h"
#include "host/platform/codepage.h"
#include "host/platform/number.h"
#include "standard/linetypes.h"
#include "standard/text.h"

namespace qrs::tools {
namespace {

constexpr std::size_t kMostDashes = 12;
constexpr wchar_t kMark = L'$';
constexpr double kDecimals = 1000.0;

// What a dash carries at its end.
struct Carried {
    bool isThere = false;
    CString text;  // empty: a shape
    int shape = 0;
    AcDbObjectId style;
    double scale = 1.0;
    AcGeVector2d offset;
    double rotation = 0.0;  // radians
    bool upright = false;
};

struct Dash {
    double length = 0.0;
    Carried carried;

    bool isGap() const { return length < 0.0; }
};

// --- reading and writing records

Carried readCarried(const AcDbLinetypeTableRecord& record, int index) {
    Carried carried;
    carried.style = record.shapeStyleAt(index);
    carried.isThere = !carried.style.isNull();
    if (!carried.isThere) return carried;
    ACHAR* text = nullptr;
    if (record.textAt(index, text) == Acad::eOk && text != nullptr) carried.text = text;
    acutDelString(text);
    carried.shape = record.shapeNumberAt(index);
    carried.scale = record.shapeScaleAt(index);
    carried.offset = record.shapeOffsetAt(index);
    carried.rotation = record.shapeRotationAt(index);
    carried.upright = record.shapeIsUcsOrientedAt(index);
    return carried;
}

std::vector<Dash> readDashes(const AcDbLinetypeTableRecord& record) {
    std::vector<Dash> dashes(static_cast<std::size_t>(std::max(record.numDashes(), 0)));
    for (std::size_t i = 0; i < dashes.size(); ++i) {
        const int index = static_cast<int>(i);
        dashes[i] = {record.dashLengthAt(index), readCarried(record, index)};
    }
    return dashes;
}

void writeCarried(AcDbLinetypeTableRecord& record, int index, const Carried& carried) {
    if (!carried.isThere) return;
    if (carried.text.IsEmpty())
        record.setShapeNumberAt(index, carried.shape);
    else
        record.setTextAt(index, carried.text);
    record.setShapeStyleAt(index, carried.style);
    record.setShapeScaleAt(index, carried.scale);
    record.setShapeOffsetAt(index, carried.offset);
    record.setShapeRotationAt(index, carried.rotation);
    record.setShapeIsUcsOrientedAt(index, carried.upright);
}

void writeDashes(AcDbLinetypeTableRecord& record, const std::vector<Dash>& dashes) {
    double length = 0.0;
    record.setNumDashes(static_cast<int>(dashes.size()));
    for (std::size_t i = 0; i < dashes.size(); ++i) {
        const int index = static_cast<int>(i);
        record.setDashLengthAt(index, dashes[i].length);
        writeCarried(record, index, dashes[i].carried);
        length += std::fabs(dashes[i].length);
    }
    record.setPatternLength(length);
}

// --- spacing

struct Size {
    double along = 0.0;
    double across = 0.0;
};

// Of a text as it is drawn, along its own direction and across it.
bool textSize(const Carried& carried, Size& size) {
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(carried.style, AcDb::kForRead);
    if (style.openStatus() != Acad::eOk) return false;
    const double fixed = style->textSize();
    size.across = std::fabs(fixed > 0.0 ? fixed * carried.scale : carried.scale);
    size.along = standard::linetypeTextWidth(carried.text) * size.across * style->xScale();
    return std::isfinite(size.along) && std::isfinite(size.across) && size.along > 0.0;
}

// The gap with the one text that stands in it, in two halves: the text hangs on the end of the first, its middle on the
// line.
bool spaceGap(Carried text, const TextSpacing& spacing, std::vector<Dash>& out) {
    text.scale *= spacing.scale;
    Size size;
    if (!textSize(text, size)) return false;
    const double sine = std::sin(text.rotation);
    const double cosine = std::cos(text.rotation);
    const double half = (std::fabs(cosine) * size.along + std::fabs(sine) * size.across) / 2.0;
    text.offset.x = -(cosine * size.along - sine * size.across) / 2.0;
    text.offset.y = -(sine * size.along + cosine * size.across) / 2.0;
    out.push_back({-(spacing.gap + half), text});
    out.push_back({-(spacing.gap + half), Carried()});
    return true;
}

// True when at least one gap was spaced; out is the whole pattern then. A text at the end of a dash stands in the gap
// after it.
bool spaceDashes(const std::vector<Dash>& dashes, const TextSpacing& spacing, std::vector<Dash>& out) {
    bool spacedAny = false;
    for (std::size_t begin = 0; begin < dashes.size();) {
        std::size_t end = begin;
        while (end < dashes.size() && dashes[end].isGap())
            ++end;
        if (end == begin) {
            out.push_back(dashes[begin++]);
            continue;
        }
        std::vector<Carried> inside;
        const bool fromDash = begin > 0 && dashes[begin - 1].carried.isThere;
        if (fromDash) inside.push_back(dashes[begin - 1].carried);
        for (std::size_t i = begin; i < end; ++i)
            if (dashes[i].carried.isThere) inside.push_back(dashes[i].carried);
        if (inside.size() == 1 && !inside.front().text.IsEmpty() && spaceGap(inside.front(), spacing, out)) {
            if (fromDash) out[out.size() - 3].carried = Carried();
            spacedAny = true;
        } else {
            out.insert(out.end(), dashes.begin() + static_cast<std::ptrdiff_t>(begin),
                       dashes.begin() + static_cast<std::ptrdiff_t>(end));
        }
        begin = end;
    }
    return spacedAny;
}

// --- names

double rounded(double value) {
    return std::round(value * kDecimals) / kDecimals;
}

// Without trailing zeros.
std::wstring decimals(double value) {
    CString text;
    text.Format(L"%.3f", value);
    std::wstring digits(text.GetString());
    digits.erase(digits.find_last_not_of(L'0') + 1);
    if (digits.back() == L'.') digits.pop_back();
    return digits;
}

struct SpacedName {
    std::wstring base;
    double scale = 1.0;
};

// Takes "J$1.5$2" apart; of any other name base is the whole.
SpacedName takeApart(const std::wstring& name) {
    const std::size_t second = name.rfind(kMark);
    const std::size_t first = second == 0 || second == std::wstring::npos ? second : name.rfind(kMark, second - 1);
    if (first == std::wstring::npos || first == 0 || first == second) return {name};
    const auto gap = platform::parseReal(platform::toUtf8(name.substr(first + 1, second - first - 1)));
    const auto scale = platform::parseReal(platform::toUtf8(name.substr(second + 1)));
    if (!gap || !scale || !(*gap >= 0.0) || !(*scale > 0.0)) return {name};
    return {name.substr(0, first), *scale};
}

AcDbObjectId find(AcDbDatabase* database, const std::wstring& name) {
    AcDbObjectId id;
    const AcDbLinetypeTablePointer table(database, AcDb::kForRead);
    if (table.openStatus() == Acad::eOk) table->getAt(name.c_str(), id);
    return id;
}

SpacingResult make(AcDbDatabase* database, const std::wstring& name, const AcDbLinetypeTableRecord& base,
                   const std::vector<Dash>& dashes, AcDbObjectId& made) {
    AcDbObjectPointer<AcDbLinetypeTableRecord> record;
    record.create();
    ACHAR* comments = nullptr;
    base.comments(comments);
    record->setComments(comments != nullptr ? comments : L"");
    acutDelString(comments);
    record->setIsScaledToFit(base.isScaledToFit());
    if (record->setName(name.c_str()) != Acad::eOk) return SpacingResult::kRefused;
    writeDashes(*record.object(), dashes);
    AcDbLinetypeTablePointer table(database, AcDb::kForWrite);
    if (table.openStatus() != Acad::eOk || table->add(made, record.object()) != Acad::eOk)
        return SpacingResult::kRefused;
    return SpacingResult::kSpaced;
}

}  // namespace

SpacingResult spacedLinetype(AcDbObjectId linetype, const TextSpacing& spacing, AcDbObjectId& spaced) {
    spaced = AcDbObjectId();
    AcDbObjectPointer<AcDbLinetypeTableRecord> base(linetype, AcDb::kForRead);
    const ACHAR* ownName = nullptr;
    if (base.openStatus() != Acad::eOk || base->getName(ownName) != Acad::eOk) return SpacingResult::kRefused;
    AcDbDatabase* database = base->database();
    SpacedName name = takeApart(ownName);
    TextSpacing wanted{rounded(spacing.gap), rounded(spacing.scale)};
    const std::wstring newName = name.base + kMark + decimals(wanted.gap) + kMark + decimals(wanted.scale);
    const AcDbObjectId origin = find(database, name.base);
    // What it was made from may be gone; it then stands for it, already scaled.
    if (origin.isNull())
        wanted.scale /= name.scale;
    else
        base.open(origin, AcDb::kForRead);
    if (base.openStatus() != Acad::eOk) return SpacingResult::kRefused;
    std::vector<Dash> dashes;
    if (!spaceDashes(readDashes(*base.object()), wanted, dashes)) return SpacingResult::kPlain;
    if (dashes.size() > kMostDashes) return SpacingResult::kTooLong;
    spaced = find(database, newName);
    return spaced.isNull() ? make(database, newName, *base.object(), dashes, spaced) : SpacingResult::kSpaced;
}

}  // namespace qrs::tools
