// Draws the shapes of a drawing on a canvas, as what they belong to looks.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/pick/picture.h"
#include "host/pick/probe.h"
#include "host/plot/canvas.h"
#include "host/plot/clips.h"
#include "host/plot/dashes.h"
#include "host/plot/entitylooks.h"
#include "host/plot/painter.h"
#include "host/plot/texts.h"

namespace qrs::host::plot {

// What a plot could not draw as it is.
enum class Note { FinePattern, UnknownShape, RestLeftOut };
struct Notes {
    std::set<Note> all;
    std::map<std::string, std::size_t> undrawn;  // entities without a shape, by kind
    std::set<char32_t> boxes;                    // characters that no font has
};

struct ViewScale {
    double dotsPerMillimetre = 1.0;
    double thinnest = 1.0;        // dots
    double linetypeFactor = 1.0;  // of dashes, for views that show them at the size of the sheet
    bool isBlack = false;
    dxf::RecordId window = dxf::kNoRecord;  // the viewport that is looked through
};

// The coordinates it is told are dots on the page.
class View final : public pick::Probe, public pick::Picture {
  public:
    // painter: null for none.
    View(Canvas& canvas, Texts& texts, const dxf::Drawing& drawing, const ViewScale& scale, Painter* painter,
         Notes& notes);
    ~View() override;

    void area(const std::vector<std::vector<Vec>>& loops) override;
    bool wants(const Box& box) override;
    bool isDone() const override { return canvas_.isSpent(); }
    double closeness() const override { return 0.05; }
    pick::Picture* picture() override { return this; }

    bool enter(const pick::Shown& shown) override;
    void leave() override;
    void textLine(const pick::TextLine& text, const pick::Transform& toWorld) override;
    void paragraphs(const pick::Paragraphs& text, const pick::Transform& toWorld) override;
    void filling(const pick::Filling& filling, const pick::Transform& toWorld) override;
    void band(const std::vector<Vec>& points, double width, bool isClosed) override;
    void mark(const Vec& at) override;
    void head(const Vec& tip, const Vec& from, const std::wstring& style, double scale) override;
    void traits(std::optional<long> rgb, std::optional<long> index, std::optional<long> weight) override;
    void cover(const std::vector<Vec>& corners) override;

  protected:
    void takeLine(const Vec& p, const Vec& d, double t0, double t1) override;
    void takeArc(const Vec& center, const Vec& u, const Vec& v, double t0, double t1) override;

  private:
    Color colorNow() const;
    // Colours within the entity do not count.
    bool isOneColor() const { return scale_.isBlack || now_.paint.color; }
    Stroke strokeNow() const;
    bool isDashed() const { return now_.linetype != nullptr && now_.dashScale > 0.0; }
    bool isUndrawn(const pick::Entity& entity);
    void clip(const pick::Shown& shown);
    TextStyles& stylesOf(const dxf::Drawing& drawing);
    void dashedPath(const std::vector<Vec>& points, const Stroke& stroke);
    void carried(const Dash& dash, const Vec& at, const Vec& along, const Stroke& stroke);
    void endRun();

    Canvas& canvas_;
    Texts& texts_;
    EntityLooks looks_;
    ViewScale scale_;
    const Painter* painter_;
    Notes& notes_;
    std::map<const dxf::Drawing*, std::unique_ptr<TextStyles>> styles_;
    std::map<const dxf::Drawing*, Clips> clips_;

    struct Now {
        const dxf::Drawing* drawing = nullptr;
        const Linetype* linetype = nullptr;
        double dashScale = 0.0;  // dots for a drawing unit of the pattern
        double dotScale = 1.0;   // dots for a drawing unit
        bool isOnePath = false;  // the pattern runs through its corners
        Paint paint;
        std::optional<Color> shapeColor;    // of what is drawn of the entity now, in place of the entity's
        std::optional<double> shapeWeight;  // millimetres
        bool isClipped = false;
    };
    Now now_;
    std::vector<Now> outer_;
    std::vector<Vec> run_;        // pieces of one path so far
    std::uint16_t lastType_ = 0;  // of entities: most come in rows
    const dxf::Drawing* lastDrawing_ = nullptr;
    bool isLastKnown_ = true;
    long pointMode_ = 0;
    double pointSize_ = 0.0;
};

}  // namespace qrs::host::plot
