// The shape of a geometric tolerance: rows of boxes with texts, whose symbols are letters of a font of their own.
#include <algorithm>
#include <string>
#include <vector>

#include "host/drawing/objecttags.h"
#include "host/dxf/classcodes.h"
#include "host/pick/kinds.h"
#include "host/pick/picture.h"
#include "host/platform/codepage.h"

namespace qrs::host::pick {

namespace codes = dxf::codes;

namespace {

namespace dimstyle {
constexpr int kTextHeight = 140;
constexpr int kTextStyle = 340;
}  // namespace dimstyle

// A symbol of the font of symbols, by the letter that it stands for: rows of points, and an arc, in heights of the
// text.
struct Symbol {
    wchar_t letter;
    std::vector<std::vector<Vec>> strokes;
    double radius = 0.0;  // of the arc around the middle, or what of it turns from 0 to half
    double outer = 0.0;   // of another circle
    bool isHalf = false;
    const wchar_t* text = L"";  // within
};

const std::vector<Symbol>& symbols() {
    static const std::vector<Symbol> all = {
        {L'a', {{{1, 0, 0}, {0, 0, 0}, {0.9, 0.6, 0}}}},
        {L'b', {{{0, 0, 0}, {1, 0, 0}}, {{0.5, 0, 0}, {0.5, 1, 0}}}},
        {L'c', {{{0, 0.2, 0}, {0.7, 0.2, 0}, {1, 0.8, 0}, {0.3, 0.8, 0}, {0, 0.2, 0}}}},
        {L'd', {{{0, 0.5, 0}, {1, 0.5, 0}}}, 0.5, 0.0, true},
        {L'e', {}, 0.4},
        {L'f', {{{0.1, 0, 0}, {0.6, 1, 0}}, {{0.4, 0, 0}, {0.9, 1, 0}}}},
        {L'g', {{{0, 0.1, 0}, {0.45, 1, 0}}, {{0.55, 0, 0}, {1, 0.9, 0}}}, 0.25},
        {L'h', {{{0.1, 0, 0}, {0.9, 1, 0}}, {{0.5, 0.85, 0}, {0.9, 1, 0}, {0.85, 0.55, 0}}}},
        {L'i', {{{0.2, 0.9, 0}, {0.8, 0.9, 0}}, {{0, 0.5, 0}, {1, 0.5, 0}}, {{0.2, 0.1, 0}, {0.8, 0.1, 0}}}},
        {L'j', {{{0, 0.5, 0}, {1, 0.5, 0}}, {{0.5, 0, 0}, {0.5, 1, 0}}}, 0.3},
        {L'k', {}, 0.5, 0.0, true},
        {L'l', {}, 0.5, 0.0, false, L"L"},
        {L'm', {}, 0.5, 0.0, false, L"M"},
        {L'n', {{{0.15, 0, 0}, {0.85, 1, 0}}}, 0.35},
        {L'o', {{{0.1, 0.1, 0}, {0.9, 0.1, 0}, {0.9, 0.9, 0}, {0.1, 0.9, 0}, {0.1, 0.1, 0}}}},
        {L'p', {}, 0.5, 0.0, false, L"P"},
        {L'r', {}, 0.2, 0.45},
        {L's', {}, 0.5, 0.0, false, L"S"},
        {L't',
         {{{0, 0, 0}, {0.6, 1, 0}},
          {{0.3, 0.8, 0}, {0.6, 1, 0}, {0.6, 0.6, 0}},
          {{0.4, 0, 0}, {1, 1, 0}},
          {{0.7, 0.8, 0}, {1, 1, 0}, {1, 0.6, 0}},
          {{0, 0, 0}, {0.4, 0, 0}}}},
        {L'u', {{{0, 0.5, 0}, {1, 0.5, 0}}}},
        {L'v', {{{0, 0.8, 0}, {0, 0.2, 0}, {1, 0.2, 0}, {1, 0.8, 0}}}},
        {L'w', {{{0, 0.9, 0}, {0.5, 0.1, 0}, {1, 0.9, 0}}}},
        {L'x', {{{0, 1, 0}, {1, 1, 0}}, {{0.5, 1, 0}, {0.5, 0, 0}}, {{0.25, 0.35, 0}, {0.5, 0, 0}, {0.75, 0.35, 0}}}},
    };
    return all;
}

const Symbol* findSymbol(wchar_t letter) {
    for (const Symbol& symbol : symbols())
        if (symbol.letter == letter) return &symbol;
    return nullptr;
}

// A part of what stands in a box.
struct Run {
    std::wstring text;
    const Symbol* symbol = nullptr;

    double width() const { return symbol ? 1.2 : textWidth(text); }
};
using Cell = std::vector<Run>;

struct TextLook {
    double height = 2.5;
    std::wstring style;
};

TextLook lookOf(const Entity& tolerance) {
    const dxf::Drawing& drawing = tolerance.drawing();
    const std::wstring name = tolerance.text(codes::dimension::kStyle);
    TextLook look;
    Entity record;
    if (const dxf::RecordId usual = drawing.findHeaderVariable("$DIMTXT"); usual != dxf::kNoRecord) {
        record.read(drawing, usual);
        look.height = record.real(codes::variable::kReal, look.height);
    }
    double scale = tolerance.paperScale();
    const dxf::RecordId table = drawing.findTable("DIMSTYLE");
    for (dxf::RecordId id = table == dxf::kNoRecord ? table : drawing.next(table); id != dxf::kNoRecord;
         id = drawing.next(id)) {
        if (drawing.record(id).kind != dxf::RecordKind::TableRecord) break;
        record.read(drawing, id);
        if (platform::compareNoCase(record.text(codes::kName), name) != 0) continue;
        look.height = record.real(dimstyle::kTextHeight, look.height);
        if (const double own = record.real(codes::dimstyle::kScale, scale); own > 0.0) scale = own;
        dxf::Tag tag;
        const dxf::RecordId style = drawing.findTag(id, dimstyle::kTextStyle, tag)
                                        ? drawing.findHandle(dxf::toHandle(tag.value))
                                        : dxf::kNoRecord;
        if (style != dxf::kNoRecord && drawing.findTag(style, codes::kName, tag))
            look.style = readText(drawing, tag.value);
        break;
    }
    look.height *= scale;
    return look;
}

std::vector<std::vector<Cell>> cellsOf(const std::wstring& text) {
    std::vector<std::vector<Cell>> rows(1, std::vector<Cell>(1));
    bool isSymbol = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 3, L"%%v") == 0 || text.compare(i, 3, L"%%V") == 0) {
            rows.back().emplace_back();
            i += 2;
        } else if (text[i] == L'\n' || text.compare(i, 2, L"^J") == 0) {
            rows.emplace_back(1);
            i += text[i] == L'\n' ? 0 : 1;
        } else if (text.compare(i, 2, L"\\F") == 0 || text.compare(i, 2, L"\\f") == 0) {
            isSymbol = platform::foldCase(text.substr(i + 2, 3)) == platform::foldCase(L"gdt");
            i = std::min(text.find(L';', i), text.size() - 1);
        } else if (text[i] == L'{' || text[i] == L'}') {
            isSymbol = false;
        } else {
            Cell& cell = rows.back().back();
            const Symbol* const symbol = isSymbol ? findSymbol(static_cast<wchar_t>(text[i] | 0x20)) : nullptr;
            if (symbol || cell.empty() || cell.back().symbol) cell.push_back({{}, symbol});
            if (!symbol) cell.back().text += text[i];
        }
    }
    return rows;
}

// A text in the middle of where the pen has its origin.
void drawText(const std::wstring& text, double height, const std::wstring& style, const Pen& pen) {
    Picture* const picture = pen.picture();
    if (!picture || text.empty()) return;
    TextLine line;
    line.text = text;
    line.style = style;
    line.height = height;
    line.across = TextAcross::Middle;
    picture->textLine(line, pen.toWorld());
}

Pen movedPen(const Pen& pen, double x, double y, double scale = 1.0) {
    return pen.in(Transform{{scale, 0, 0}, {0, scale, 0}, {0, 0, scale}, {x, y, 0}});
}

void drawSymbol(const Symbol& symbol, const std::wstring& style, const Pen& pen) {
    constexpr double kWithin = 0.6;
    const Vec middle{0.5, 0.5, 0};
    for (const std::vector<Vec>& stroke : symbol.strokes)
        for (std::size_t i = 1; i < stroke.size(); ++i)
            pen.segment(stroke[i - 1], stroke[i]);
    for (const double radius : {symbol.radius, symbol.outer})
        if (radius > 0.0) pen.arc(middle, {radius, 0, 0}, {0, radius, 0}, 0.0, symbol.isHalf ? kPi : 2 * kPi);
    drawText(symbol.text, kWithin, style, movedPen(pen, middle.x, middle.y));
}

// The pen's origin is the middle of its left side. Gives its width.
double drawCell(const Cell& cell, const TextLook& look, const Pen& pen) {
    double width = look.height;
    for (const Run& run : cell)
        width += run.width() * look.height;
    const Vec corners[] = {
        {0, -look.height, 0}, {width, -look.height, 0}, {width, look.height, 0}, {0, look.height, 0}};
    for (int i = 0; i < 4; ++i)
        pen.segment(corners[i], corners[(i + 1) % 4]);
    double left = look.height / 2;
    for (const Run& run : cell) {
        const double room = run.width() * look.height;
        if (run.symbol)
            drawSymbol(*run.symbol, look.style,
                       movedPen(pen, left + (room - look.height) / 2, -look.height / 2, look.height));
        else
            drawText(run.text, look.height, look.style, movedPen(pen, left + room / 2, 0));
        left += room;
    }
    return width;
}

}  // namespace

// The point lies in the middle of the first row's left side.
void drawTolerance(const Entity& entity, const Pen& pen) {
    const std::optional<Vec> at = entity.point(codes::kPoint);
    const TextLook look = lookOf(entity);
    if (!at || !(look.height > 0.0)) return;
    const Vec z = unit(entity.normal(), {0, 0, 1});
    const Vec x = unit(entity.point(codes::tolerance::kDirection).value_or(Vec{1, 0, 0}), {1, 0, 0});
    const Pen plane = pen.in(Transform{x, cross(z, x), z, *at});
    double middle = 0.0;
    for (const std::vector<Cell>& row : cellsOf(entity.text(codes::kText))) {
        double left = 0.0;
        for (const Cell& cell : row)
            if (!cell.empty()) left += drawCell(cell, look, movedPen(plane, left, middle));
        if (left > 0.0) middle -= 2 * look.height;
    }
}

}  // namespace qrs::host::pick
