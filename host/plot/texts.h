// Texts on a page, in the installed fonts nearest to those that text styles name.
#pragma once

#include <pango/pangocairo.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>

#include "host/pick/picture.h"
#include "host/plot/canvas.h"
#include "host/plot/drawcalls.h"
#include "host/plot/fontnames.h"
#include "host/plot/textcodes.h"

namespace qrs::host::plot {

struct TextStyle {
    FontChoice font;
    double height = 0.0;  // 0: each text has its own
    double widthFactor = 1.0;
    double oblique = 0.0;  // radians
};

// The text styles of one drawing, each read when it is first asked for.
class TextStyles {
  public:
    explicit TextStyles(const dxf::Drawing& drawing) : drawing_(drawing) {}
    const TextStyle& find(const std::wstring& name);

  private:
    void read();

    const dxf::Drawing& drawing_;
    bool isRead_ = false;
    std::map<std::wstring, TextStyle> styles_;
    TextStyle usual_;
};

class Texts {
  public:
    // boxes: takes the characters that no font has, which are drawn as boxes.
    Texts(Canvas& canvas, std::set<char32_t>& boxes);

    // isBlack: colours within a text do not count. toPage: from the text's own coordinates to dots.
    void line(const pick::TextLine& text, const TextStyle& style, const Color& color, bool isBlack,
              const pick::Transform& toPage);
    // ground: the colour of what fills its background, where that is filled.
    void paragraphs(const pick::Paragraphs& text, const TextStyle& style, const Color& color, const Color& ground,
                    bool isBlack, const pick::Transform& toPage);

  private:
    struct Unref {
        void operator()(void* object) const { calls().g_object_unref(object); }
    };
    using Layout = std::unique_ptr<PangoLayout, Unref>;
    struct Face {
        PangoFontDescription* description = nullptr;
        double capitals = 1.0;  // height of a capital, in the layout's units
    };
    struct Placed;
    // Drawings say the same, such as diameters, many times.
    struct Shaped {
        Layout layout;
        PangoLayoutLine* line = nullptr;  // of it
        double width = 0.0;               // the layout's units
    };

    const Shaped& shapedLine(const std::wstring& text, const FontChoice& font, bool isBlack);
    const Face& faceOf(const FontChoice& font);
    void noteBoxes(PangoLayout* layout);
    Layout makeLayout(const std::vector<TextRun>& runs, const FontChoice& font, bool isBlack);
    void addLooks(PangoAttrList* list, const TextRun& run, const FontChoice& font, unsigned from, unsigned to,
                  bool isBlack);
    void show(PangoLayoutLine* line, const Color& color, const pick::Transform& toPage, double heightInDots);
    std::vector<Placed> breakLines(const pick::Paragraphs& text, const TextStyle& style, bool isBlack, double& widest);
    static double flow(std::vector<Placed>& lines, const pick::Paragraphs& text, double width);
    void drawGround(const std::vector<Vec>& corners, const pick::TextGround& ground, const Color& color,
                    const Color& filling);

    Canvas& canvas_;
    std::set<char32_t>& boxes_;
    std::unique_ptr<PangoContext, Unref> context_;
    std::map<std::string, Face> faces_;
    std::map<std::tuple<std::wstring, const Face*, bool, bool>, Shaped> shaped_;

  public:
    ~Texts();
    Texts(const Texts&) = delete;
    Texts& operator=(const Texts&) = delete;
};

}  // namespace qrs::host::plot
