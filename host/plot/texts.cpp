// Sets texts with the system's fonts. A text's height is that of its capitals, whatever the font.
#include "host/plot/texts.h"

#include <algorithm>
#include <cmath>

#include "host/drawing/objecttags.h"
#include "host/dxf/classcodes.h"
#include "host/pick/entity.h"
#include "host/platform/codepage.h"
#include "host/plot/drawcalls.h"
#include "host/plot/palette.h"

namespace qrs::host::plot {

namespace {

using pick::Transform;

constexpr double kSize = 100.0;          // of the layouts' fonts; what is drawn is scaled
constexpr double kUnits = PANGO_SCALE;   // of the library in one of ours
constexpr std::size_t kLongest = 20000;  // characters of a text
constexpr double kText = 10.0;           // pieces of lines that it takes the time of
constexpr double kGlyph = 2.0;
constexpr double kLeastDots = 0.7;       // a text less high is drawn as a line
constexpr double kMostDots = 200000.0;   // a text higher than that is not drawn
constexpr double kGlyphDots = 250.0;     // a text higher than that is drawn as areas, not by kept glyphs
constexpr double kLineStep = 5.0 / 3.0;  // heights from line to line
constexpr double kStrokedChinese = 1.1;  // size of Chinese stroked characters, heights
constexpr wchar_t kFirstChinese = 0x2E80;

// From the style's extended data: the family of a font that the system knows.
std::wstring familyOf(const dxf::Drawing& drawing, dxf::RecordId style) {
    bool isOurs = false;
    dxf::TagCursor cursor = drawing.tags(style);
    for (dxf::Tag tag; cursor.next(tag);) {
        if (tag.code == dxf::codes::kXdataApplication) isOurs = dxf::trimmed(tag.value) == "ACAD";
        if (isOurs && tag.code == dxf::codes::kXdataText) return readText(drawing, tag.value);
    }
    return {};
}

Transform stretched(double x, double y) {
    return {{x, 0, 0}, {0, y, 0}, {0, 0, 1}, {}};
}

Transform moved(double x, double y) {
    return {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {x, y, 0}};
}

Transform slanted(double angle) {
    constexpr double kSteepest = 1.4835;  // 85 degrees
    return {{1, 0, 0}, {std::tan(std::clamp(angle, -kSteepest, kSteepest)), 1, 0}, {0, 0, 1}, {}};
}

// Whether a rectangle of a text can be seen, and is of a size that can be drawn.
bool isShown(const Canvas& canvas, const Transform& toPage, const Vec& low, const Vec& high) {
    Box box;
    box.add({low.x, low.y, 0});
    box.add({high.x, high.y, 0});
    const Box seen = box.transformed(toPage);
    return seen.isBounded() && canvas.isVisible(seen);
}

double heightOf(const Transform& toPage, double height) {
    return std::hypot(toPage.y.x, toPage.y.y) * height;
}

double capitalsOf(const TextParagraph& paragraph) {
    double height = 0.0;
    for (const TextRun& run : paragraph.runs)
        height = std::max(height, run.lift == Lift::None ? run.height : run.height / 0.7);
    return height > 0.0 ? height : 1.0;
}

}  // namespace

void TextStyles::read() {
    namespace textstyle = dxf::codes::textstyle;
    isRead_ = true;
    usual_.font = chooseFont(L"txt.shx", {}, {});
    const dxf::RecordId table = drawing_.findTable("STYLE");
    if (table == dxf::kNoRecord) return;
    pick::Entity record;
    for (dxf::RecordId id = drawing_.next(table); id != dxf::kNoRecord; id = drawing_.next(id)) {
        if (drawing_.record(id).kind != dxf::RecordKind::TableRecord) break;
        record.read(drawing_, id);
        TextStyle style;
        style.font =
            chooseFont(record.text(textstyle::kFont), record.text(textstyle::kBigFont), familyOf(drawing_, id));
        style.height = std::max(record.real(textstyle::kHeight, 0.0), 0.0);
        style.widthFactor = record.real(textstyle::kWidthFactor, 1.0);
        style.oblique = record.real(textstyle::kOblique, 0.0) * pick::kRadiansPerDegree;
        styles_.emplace(platform::foldCase(record.text(dxf::codes::kName)), std::move(style));
    }
}

const TextStyle& TextStyles::find(const std::wstring& name) {
    if (!isRead_) read();
    const auto found = styles_.find(platform::foldCase(name.empty() ? L"Standard" : name));
    return found == styles_.end() ? usual_ : found->second;
}

// One line of a text of several.
struct Texts::Placed {
    std::shared_ptr<PangoLayout> layout;  // null: an empty line
    PangoLayoutLine* line = nullptr;      // of it
    double width = 0.0;                   // heights of the text
    double height = 1.0;                  // of its capitals, against the text's
    double indent = 0.0;
    double stretch = 1.0;
    double oblique = 0.0;
    double scale = 1.0;  // from the layout's units to the text's heights
    int column = -1;     // of the paragraph: left, middle, right
    bool startsColumn = false;
    double x = 0.0;  // drawing units: the column's left side
    double y = 0.0;  // down to the baseline
};

Texts::Texts(Canvas& canvas, std::set<char32_t>& boxes)
    : canvas_(canvas), boxes_(boxes), context_(calls().pango_cairo_create_context(canvas.context())) {
    cairo_font_options_t* const options = calls().cairo_font_options_create();
    calls().cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    calls().cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    calls().cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    calls().pango_cairo_context_set_font_options(context_.get(), options);
    calls().cairo_font_options_destroy(options);
    calls().pango_context_set_round_glyph_positions(context_.get(), FALSE);
    calls().pango_context_set_language(context_.get(), calls().pango_language_from_string("zh-cn"));
}

Texts::~Texts() {
    for (const auto& [key, face] : faces_)
        calls().pango_font_description_free(face.description);
}

const Texts::Face& Texts::faceOf(const FontChoice& font) {
    const std::string key = font.family + (font.isBold ? "|b" : "|") + (font.isItalic ? "i" : "");
    const auto [found, fresh] = faces_.try_emplace(key);
    Face& face = found->second;
    if (!fresh) return face;
    face.description = calls().pango_font_description_new();
    calls().pango_font_description_set_family(face.description, font.family.c_str());
    calls().pango_font_description_set_absolute_size(face.description, kSize * kUnits);
    if (font.isBold) calls().pango_font_description_set_weight(face.description, PANGO_WEIGHT_BOLD);
    if (font.isItalic) calls().pango_font_description_set_style(face.description, PANGO_STYLE_ITALIC);
    const Layout layout(calls().pango_layout_new(context_.get()));
    calls().pango_layout_set_font_description(layout.get(), face.description);
    calls().pango_layout_set_text(layout.get(), "H", 1);
    PangoRectangle ink{};
    calls().pango_layout_get_extents(layout.get(), &ink, nullptr);
    face.capitals = ink.height > 0 ? ink.height / kUnits : kSize * 0.7;
    return face;
}

void Texts::addLooks(PangoAttrList* list, const TextRun& run, const FontChoice& font, unsigned from, unsigned to,
                     bool isBlack) {
    const auto add = [&](PangoAttribute* attribute) {
        attribute->start_index = from;
        attribute->end_index = to;
        calls().pango_attr_list_insert(list, attribute);
    };
    if (!run.font.empty()) {
        const bool isFile =
            run.font.find(L".shx") != std::wstring::npos || run.font.find(L".SHX") != std::wstring::npos;
        const FontChoice own = isFile ? chooseFont(run.font, {}, {}) : chooseFont({}, {}, run.font);
        add(calls().pango_attr_family_new(own.family.c_str()));
    }
    if (run.isBold) add(calls().pango_attr_weight_new(PANGO_WEIGHT_BOLD));
    if (run.isItalic) add(calls().pango_attr_style_new(PANGO_STYLE_ITALIC));
    if (run.height != 1.0) add(calls().pango_attr_scale_new(std::clamp(run.height, 0.01, 100.0)));
    if (run.isUnderlined) add(calls().pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
    if (run.isOverlined) add(calls().pango_attr_overline_new(PANGO_OVERLINE_SINGLE));
    if (run.isStruck) add(calls().pango_attr_strikethrough_new(TRUE));
    const double capitals = faceOf(font).capitals;
    if (run.lift == Lift::Over) add(calls().pango_attr_rise_new(static_cast<int>(capitals * 0.5 * kUnits)));
    if (run.lift == Lift::Under) add(calls().pango_attr_rise_new(static_cast<int>(capitals * -0.15 * kUnits)));
    if (isBlack || (!run.color && !run.trueColor) || (run.color && (*run.color <= kByBlock || *run.color >= kByLayer)))
        return;
    const Color color = run.trueColor ? trueColor(*run.trueColor) : paletteColor(*run.color);
    const auto part = [](std::uint8_t value) { return static_cast<guint16>(value * 257); };
    add(calls().pango_attr_foreground_new(part(color.red), part(color.green), part(color.blue)));
}

void Texts::noteBoxes(PangoLayout* layout) {
    if (calls().pango_layout_get_unknown_glyphs_count(layout) == 0) return;
    for (GSList* line = calls().pango_layout_get_lines_readonly(layout); line != nullptr; line = line->next)
        for (GSList* run = static_cast<PangoLayoutLine*>(line->data)->runs; run != nullptr; run = run->next) {
            const PangoGlyphString& glyphs = *static_cast<PangoGlyphItem*>(run->data)->glyphs;
            for (int i = 0; i < glyphs.num_glyphs; ++i) {
                const PangoGlyph glyph = glyphs.glyphs[i].glyph;
                constexpr PangoGlyph kUnknown = PANGO_GLYPH_UNKNOWN_FLAG;
                if (glyph != PANGO_GLYPH_INVALID_INPUT && (glyph & kUnknown) != 0)
                    boxes_.insert(static_cast<char32_t>(glyph & ~kUnknown));
            }
        }
}

Texts::Layout Texts::makeLayout(const std::vector<TextRun>& runs, const FontChoice& font, bool isBlack) {
    Layout layout(calls().pango_layout_new(context_.get()));
    const Face& face = faceOf(font);
    calls().pango_layout_set_font_description(layout.get(), face.description);
    PangoAttrList* const list = calls().pango_attr_list_new();
    std::string text;
    for (const TextRun& run : runs) {
        const auto from = static_cast<unsigned>(text.size());
        // Chinese characters of stroked fonts are as high as capitals, those of others are higher.
        for (std::size_t begin = 0; begin < run.text.size() && text.size() < kLongest * 4;) {
            const bool isChinese = run.text[begin] >= kFirstChinese;
            std::size_t end = begin + 1;
            while (end < run.text.size() && (run.text[end] >= kFirstChinese) == isChinese)
                ++end;
            const auto at = static_cast<unsigned>(text.size());
            text += platform::toUtf8(run.text.substr(begin, std::min(end - begin, kLongest)));
            begin = end;
            if (!isChinese || !font.isStroked || !run.font.empty()) continue;
            PangoAttribute* const scale =
                calls().pango_attr_scale_new(face.capitals / kSize * kStrokedChinese * run.height);
            scale->start_index = at;
            scale->end_index = static_cast<unsigned>(text.size());
            calls().pango_attr_list_insert(list, scale);
        }
        addLooks(list, run, font, from, static_cast<unsigned>(text.size()), isBlack);
    }
    for (char& character : text)
        if (static_cast<unsigned char>(character) < 0x20) character = ' ';
    calls().pango_layout_set_text(layout.get(), text.c_str(), static_cast<int>(text.size()));
    calls().pango_layout_set_attributes(layout.get(), list);
    calls().pango_attr_list_unref(list);
    noteBoxes(layout.get());
    return layout;
}

const Texts::Shaped& Texts::shapedLine(const std::wstring& text, const FontChoice& font, bool isBlack) {
    constexpr std::size_t kMostKept = 2000;
    if (shaped_.size() > kMostKept) shaped_.clear();
    const auto [found, fresh] = shaped_.try_emplace({text, &faceOf(font), font.isStroked, isBlack});
    Shaped& shaped = found->second;
    if (!fresh) return shaped;
    shaped.layout = makeLayout(lineRuns(text), font, isBlack);
    shaped.line = calls().pango_layout_get_line_readonly(shaped.layout.get(), 0);
    PangoRectangle logical{};
    calls().pango_layout_line_get_extents(shaped.line, nullptr, &logical);
    shaped.width = logical.width / kUnits;
    return shaped;
}

// toPage: from the layout's units, upwards from the baseline.
void Texts::show(PangoLayoutLine* line, const Color& color, const Transform& toPage, double heightInDots) {
    cairo_t* const context = canvas_.context();
    const Transform down = toPage.after(stretched(1, -1));
    cairo_matrix_t matrix;
    calls().cairo_matrix_init(&matrix, down.x.x, down.x.y, down.y.x, down.y.y, down.offset.x, down.offset.y);
    const double turned = down.x.x * down.y.y - down.x.y * down.y.x;
    if (!(std::fabs(turned) > 1e-12) || !std::isfinite(turned)) return;
    calls().cairo_save(context);
    calls().cairo_transform(context, &matrix);
    canvas_.setColor(color);
    calls().cairo_move_to(context, 0, 0);
    if (heightInDots > kGlyphDots) {
        calls().pango_cairo_layout_line_path(context, line);
        calls().cairo_set_fill_rule(context, CAIRO_FILL_RULE_WINDING);
        calls().cairo_fill(context);
    } else {
        calls().pango_cairo_show_layout_line(context, line);
    }
    calls().cairo_new_path(context);
    calls().cairo_restore(context);
}

void Texts::line(const pick::TextLine& text, const TextStyle& style, const Color& color, bool isBlack,
                 const Transform& toPage) {
    using pick::TextAcross;
    using pick::TextUp;
    const double dots = heightOf(toPage, text.height);
    if (text.text.empty() || canvas_.isSpent() || !(dots < kMostDots) || !(text.height > 0.0)) return;
    // About the space it could take: far texts need no fonts.
    const double reach = std::max(text.length, static_cast<double>(text.text.size() + 2) * text.height * 1.5 *
                                                   std::max(1.0, std::fabs(text.widthFactor)));
    if (!isShown(canvas_, toPage, {-reach, -reach, 0}, {reach, reach, 0})) return;
    if (dots < kLeastDots) {
        const double width = static_cast<double>(text.text.size()) * text.height * 0.8;
        const double from = text.across == TextAcross::Center || text.across == TextAcross::Middle ? -width / 2
                            : text.across == TextAcross::Right                                     ? -width
                                                                                                   : 0.0;
        return canvas_.line(toPage.point({from, 0, 0}), toPage.point({from + width, 0, 0}), Stroke{color, dots, true});
    }
    canvas_.spend(kText + kGlyph * static_cast<double>(std::min(text.text.size(), kLongest)));
    const Shaped& shaped = shapedLine(text.text, style.font, isBlack);
    double scale = text.height / faceOf(style.font).capitals;
    double stretch = text.widthFactor != 0.0 ? std::fabs(text.widthFactor) : 1.0;
    double width = shaped.width * scale * stretch;
    if (!(width > 0.0)) return;
    double left = 0.0;
    if (text.across == TextAcross::Aligned && text.length > 0.0) {
        scale *= text.length / width;
    } else if (text.across == TextAcross::Fit && text.length > 0.0) {
        stretch *= text.length / width;
    } else if (text.across == TextAcross::Center || text.across == TextAcross::Middle) {
        left = -width / 2;
    } else if (text.across == TextAcross::Right) {
        left = -width;
    }
    double bottom = 0.0;
    if (text.across == TextAcross::Middle || text.up == TextUp::Half) bottom = -text.height / 2;
    if (text.up == TextUp::Top) bottom = -text.height;
    if (text.up == TextUp::Bottom) bottom = text.height / 3;
    const Transform mirrored = stretched(text.isBackwards ? -1 : 1, text.isUpsideDown ? -1 : 1);
    const Transform placed = toPage.after(mirrored).after(moved(left, bottom)).after(slanted(text.oblique));
    show(shaped.line, color, placed.after(stretched(scale * stretch, scale)), dots);
}

std::vector<Texts::Placed> Texts::breakLines(const pick::Paragraphs& text, const TextStyle& style, bool isBlack,
                                             double& widest) {
    std::vector<Placed> lines;
    const double scale = 1.0 / faceOf(style.font).capitals;
    const std::wstring shortened = text.text.substr(0, kLongest);
    for (const TextParagraph& paragraph : paragraphRuns(shortened, text.height)) {
        Placed line;
        line.height = capitalsOf(paragraph);
        line.column = paragraph.column;
        line.startsColumn = paragraph.startsColumn;
        line.indent = paragraph.indent;
        line.scale = scale;
        line.stretch = style.widthFactor > 0.0 ? style.widthFactor : 1.0;
        line.oblique = style.oblique;
        if (paragraph.runs.empty()) {
            lines.push_back(line);
            continue;
        }
        line.stretch *= paragraph.runs.front().widthFactor;
        if (paragraph.runs.front().oblique != 0.0) line.oblique = paragraph.runs.front().oblique;
        line.layout = std::shared_ptr<PangoLayout>(makeLayout(paragraph.runs, style.font, isBlack));
        if (text.width > 0.0) {
            const double room = (text.width / text.height - paragraph.indent) / scale / line.stretch;
            calls().pango_layout_set_width(line.layout.get(), static_cast<int>(std::clamp(room, kSize, 1e6) * kUnits));
            calls().pango_layout_set_wrap(line.layout.get(), PANGO_WRAP_WORD);
        }
        const int count = calls().pango_layout_get_line_count(line.layout.get());
        for (int i = 0; i < count; ++i) {
            line.line = calls().pango_layout_get_line_readonly(line.layout.get(), i);
            PangoRectangle logical{};
            calls().pango_layout_line_get_extents(line.line, nullptr, &logical);
            line.width = logical.width / kUnits * scale * line.stretch;
            widest = std::max(widest, line.width);
            lines.push_back(line);
            if (i == 0) lines.back().indent += paragraph.firstIndent;
            line.startsColumn = false;
        }
    }
    return lines;
}

// Gives the lines their places in columns; gives the height of the highest.
double Texts::flow(std::vector<Placed>& lines, const pick::Paragraphs& text, double width) {
    constexpr double kAlmost = 1.0 + 1e-6;
    const double spacing = kLineStep * std::clamp(text.lineSpacing, 0.25, 4.0);
    std::size_t column = 0;
    double highest = 0.0;
    double y = 0.0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const double height = lines[i].height * text.height;
        const double limit = column < text.columns.size() ? text.columns[column] : 0.0;
        const bool isFull = y > 0.0 && limit > 0.0 && y + height * spacing > limit * kAlmost;
        if ((isFull || (lines[i].startsColumn && i > 0)) && column + 1 < text.columns.size()) ++column, y = 0.0;
        y += y > 0.0 ? height * spacing : height;
        lines[i].x = static_cast<double>(column) * (width + text.gutter);
        lines[i].y = y;
        highest = std::max(highest, y);
    }
    return highest;
}

void Texts::drawGround(const std::vector<Vec>& corners, const pick::TextGround& ground, const Color& color,
                       const Color& filling) {
    constexpr double kThin = 1.0;  // dots
    if (ground.isFilled) canvas_.fill({corners}, filling);
    if (ground.isFramed) canvas_.path(corners, true, Stroke{color, kThin, false});
}

void Texts::paragraphs(const pick::Paragraphs& text, const TextStyle& style, const Color& color, const Color& ground,
                       bool isBlack, const Transform& toPage) {
    const double dots = heightOf(toPage, text.height);
    if (text.text.empty() || canvas_.isSpent() || !(dots < kMostDots) || !(text.height > 0.0)) return;
    const double reach = std::max(text.width, static_cast<double>(text.text.size() + 2) * text.height * 2.0);
    if (!isShown(canvas_, toPage, {-reach, -reach, 0}, {reach, reach, 0})) return;
    if (dots < kLeastDots / 2) {
        const double width = text.width > 0.0 ? text.width : static_cast<double>(text.text.size()) * text.height * 0.8;
        const double from = -width * text.column / 2;
        return canvas_.line(toPage.point({from, 0, 0}), toPage.point({from + width, 0, 0}), Stroke{color, dots, true});
    }
    canvas_.spend(kText + 4 * kGlyph * static_cast<double>(std::min(text.text.size(), kLongest)));
    double widest = 0.0;
    std::vector<Placed> lines = breakLines(text, style, isBlack, widest);
    const double width = text.width > 0.0 ? text.width : widest * text.height;
    const double total = flow(lines, text, width);
    const double others = text.columns.empty() ? 0.0 : static_cast<double>(text.columns.size() - 1);
    const double left = -(width + others * (width + text.gutter)) * text.column / 2;
    const double top = total * text.row / 2;
    // Columns have the height they are given, other texts that of their lines.
    for (std::size_t i = 0; text.ground && i < std::max<std::size_t>(text.columns.size(), 1); ++i) {
        const double border = text.ground->border * text.height;
        const double covered = text.columns.empty() ? widest * text.height : width;
        const double deep = i < text.columns.size() && text.columns[i] > 0.0 ? text.columns[i] : total;
        const double start =
            text.columns.empty() ? -covered * text.column / 2 : left + static_cast<double>(i) * (width + text.gutter);
        const Vec low{start - border, top - deep - border, 0};
        const Vec high{start + covered + border, top + border, 0};
        drawGround(
            {toPage.point(low), toPage.point({high.x, low.y, 0}), toPage.point(high), toPage.point({low.x, high.y, 0})},
            *text.ground, color, ground);
    }
    for (const Placed& line : lines) {
        if (!line.line) continue;
        const int column = line.column >= 0 ? line.column : text.column;
        const double indent = column == 0 ? line.indent * text.height : 0.0;
        const double x = left + line.x + indent + (width - line.width * text.height) * column / 2;
        const double scale = line.scale * text.height;
        const Transform placed = toPage.after(moved(x, top - line.y)).after(slanted(line.oblique));
        show(line.line, color, placed.after(stretched(scale * line.stretch, scale)), dots * line.height);
    }
}

}  // namespace qrs::host::plot
