// Two drawings in one picture.
#include <algorithm>
#include <map>
#include <memory>

#include "host/pick/kinds.h"
#include "host/pick/textcolumns.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/plot/pages.h"
#include "host/plot/surface.h"
#include "host/report/fates.h"

namespace qrs::host {

namespace {

using plot::Color;

constexpr Color kGone{210, 0, 0, 255};
constexpr Color kNew{0, 150, 0, 255};
constexpr Color kSame{170, 170, 170, 255};
constexpr Color kUnseen{0, 0, 0, 0};

// One of the two drawings.
struct Side {
    std::unique_ptr<dxf::Drawing> drawing;
    std::unique_ptr<BlockIndex> blocks;
    std::vector<Layout> layouts;
    std::unique_ptr<plot::Sheet> sheet;
    pick::References references;

    bool open(const std::filesystem::path& file, platform::Error& error) {
        drawing = dxf::Drawing::open(file, error);
        if (!drawing) return false;
        blocks = std::make_unique<BlockIndex>(*drawing);
        layouts = plot::tabsOf(*drawing, *blocks);
        return true;
    }
    bool choose(const std::wstring& name, const LocateFile& locate) {
        const Layout* const layout = plot::findLayout(layouts, name);
        if (layout) sheet = std::make_unique<plot::Sheet>(*drawing, references, locate, *layout);
        return layout != nullptr;
    }
};

// What a drawing refers to lies beside it.
LocateFile besides(const std::filesystem::path& file) {
    return [folder = platform::innerPath(std::filesystem::absolute(file).parent_path())](const std::wstring& path) {
        for (const std::wstring& place : {path, platform::joinPath(folder, path)})
            if (platform::fileExists(place)) return place;
        return std::wstring();
    };
}

bool isAlike(const plot::Sheet::Window& a, const plot::Sheet::Window& b) {
    const auto numbers = [](const plot::Sheet::Window& window) {
        std::vector<double> all;
        const pick::Transform& t = window.toSheet;
        for (const pick::Vec& v : {window.low, window.high, t.x, t.y, t.z, t.offset})
            all.insert(all.end(), {v.x, v.y, v.z});
        return all;
    };
    return numbers(a) == numbers(b);
}

// What differs has a colour, and gives it to all that lies in its block or viewport. So has what can be seen here
// alone, and what layers, block references and viewports give another look in the other drawing.
class Differences final : public plot::Painter {
  public:
    // fates, there: by record of this side; the record in the other drawing.
    Differences(const Side& here, const Side& other, const std::vector<Fate>& fates,
                const std::vector<dxf::RecordId>& there, const Color& differing, const Color& same)
        : here_(here), other_(other), fates_(fates), there_(there), differing_(differing), same_(same) {}

    plot::Paint paint(const pick::Shown& shown, const plot::EntityLooks& looks,
                      const plot::Paint& outer) const override {
        if (outer.isWhole) return outer;
        plot::Paint paint = outer;
        paint.layerThere = stateThere(shown, outer);
        if ((paint.layerThere & pick::kFrozenLayer) != 0 || !isSame(shown.entity)) return whole(paint);
        enterThere(shown, *paint.looksThere);
        // What lies in its block has looks and layers of its own.
        const bool isDrawn = !shown.showsBlock || kindOf(shown.entity).draw != nullptr;
        const bool isHidden = (paint.layerThere & (pick::kOffLayer | pick::kUnplottedLayer)) != 0;
        const bool differs = isDrawn && (isHidden || !plot::areAlike(looks, *paint.looksThere));
        paint.color = differs ? differing_ : same_;
        return paint;
    }
    void leave(const plot::Paint& paint) const override {
        if (paint.looksThere) paint.looksThere->leave();
    }

    plot::Paint within(dxf::RecordId viewport) override {
        plot::Paint paint;
        if (!other_.sheet || !isSameWindow(viewport)) return whole(paint);
        const dxf::RecordId id = viewport == dxf::kNoRecord ? viewport : there_[viewport];
        paint.layersThere = &layers_.try_emplace(id, other_.sheet->layersIn(id)).first->second;
        paint.looksThere = &looks_.try_emplace(id, *other_.drawing, id).first->second;
        return paint;
    }

  private:
    plot::Paint whole(plot::Paint paint) const {
        paint.color = differing_;
        paint.looksThere = nullptr;
        paint.isWhole = true;
        return paint;
    }
    static const pick::Kind& kindOf(const pick::Entity& entity) {
        return *pick::findKind(entity.drawing().typeNameOf(entity.id()));
    }
    bool isSame(const pick::Entity& entity) const {
        if (&entity.drawing() != here_.drawing.get()) return true;
        const Fate fate = fates_[entity.id()];
        if (fate == Fate::Redrawn) return kindOf(entity).trace != nullptr;
        for (const dxf::RecordId column : columnsAfter(entity))
            if (fates_[column] != Fate::Same) return false;
        return fate == Fate::Same && (other_.drawing->record(there_[entity.id()]).flags & dxf::kInvisible) == 0;
    }
    static std::vector<dxf::RecordId> columnsAfter(const pick::Entity& text) {
        if (text.drawing().typeNameOf(text.id()) != "MTEXT") return {};
        return pick::readTextColumns(text.drawing(), text.id()).further;
    }
    // The entity says the same in both drawings, so that the tags of this side tell its look in the other.
    void enterThere(const pick::Shown& shown, plot::EntityLooks& looks) const {
        const dxf::Drawing& drawing = shown.entity.drawing();
        const dxf::RecordId id = shown.entity.id();
        if (&drawing == here_.drawing.get())
            looks.enterAs(shown, *other_.drawing, other_.drawing->record(there_[id]).layer);
        else
            looks.enterAs(shown, drawing, drawing.record(id).layer);
    }
    int stateThere(const pick::Shown& shown, const plot::Paint& outer) const {
        const dxf::Drawing& drawing = shown.entity.drawing();
        const dxf::RecordId id = shown.entity.id();
        int state = 0;
        if (&drawing != here_.drawing.get()) {
            const std::wstring name = pick::layerName(drawing, drawing.record(id).layer);
            state = std::max(outer.layersThere->find(name == L"0" ? name : shown.prefix + L"|" + name), 0);
        } else if (there_[id] != dxf::kNoRecord) {
            state = outer.layersThere->of(there_[id]);
        }
        return shown.depth > 0 && (state & pick::kLayerZero) != 0 ? outer.layerThere : state;
    }
    bool isSameWindow(dxf::RecordId viewport) const {
        if (viewport == dxf::kNoRecord) return true;
        if (there_[viewport] == dxf::kNoRecord) return false;
        const std::optional<plot::Sheet::Window> here = here_.sheet->windowOf(viewport);
        const std::optional<plot::Sheet::Window> there = other_.sheet->windowOf(there_[viewport]);
        if (!here || !there || !isAlike(*here, *there)) return false;
        return here->outline == dxf::kNoRecord
                   ? there->outline == dxf::kNoRecord
                   : fates_[here->outline] == Fate::Same && there_[here->outline] == there->outline;
    }

    const Side& here_;
    const Side& other_;
    const std::vector<Fate>& fates_;
    const std::vector<dxf::RecordId>& there_;
    Color differing_;
    Color same_;
    // Of the other drawing, by its viewports.
    std::map<dxf::RecordId, pick::LayerStates> layers_;
    std::map<dxf::RecordId, plot::EntityLooks> looks_;
};

// Layouts that one of them lacks are in no picture of the other.
void tellLayouts(const Side& first, const Side& second, PlotOutcome& outcome) {
    for (const Layout& layout : first.layouts)
        if (!plot::findLayout(second.layouts, layout.name))
            outcome.notes.push_back(
                platform::translated(L"Only the first drawing has the layout \"%1\".", layout.name));
    for (const Layout& layout : second.layouts)
        if (!plot::findLayout(first.layouts, layout.name))
            outcome.notes.push_back(
                platform::translated(L"Only the second drawing has the layout \"%1\".", layout.name));
}

}  // namespace

PlotFailure plotComparison(const std::filesystem::path& first, const std::filesystem::path& second,
                           const PlotRequest& request, PlotOutcome& outcome, platform::Error& error) {
    for (const std::filesystem::path& drawing : {first, second})
        if (platform::fileMark(request.file).place == platform::fileMark(drawing).place)
            return plot::refuseOver(drawing, error);
    Side sides[2];
    if (!sides[0].open(first, error) || !sides[1].open(second, error)) return PlotFailure::CannotRead;
    const std::wstring name =
        request.layout.empty() ? plot::shownLayout(*sides[1].drawing, sides[1].layouts) : request.layout;
    const LocateFile locates[2] = {besides(first), besides(second)};
    const bool inFirst = sides[0].choose(name, locates[0]);
    const bool inSecond = sides[1].choose(name, locates[1]);
    if (!inFirst && !inSecond) {
        error.message = plot::noLayout(sides[1].layouts, name);
        return PlotFailure::Misuse;
    }
    pick::Box extents;
    for (const Side& side : sides) {
        if (!side.sheet) continue;
        const pick::Box box = side.sheet->extents();
        if (!box.isBounded()) continue;
        extents.add(box.low);
        extents.add(box.high);
    }
    tellLayouts(sides[0], sides[1], outcome);
    const plot::Sheet& leading = inSecond ? *sides[1].sheet : *sides[0].sheet;
    const plot::Page page = plot::pageFor(extents, leading.isModel(), leading.setup(), request.paper);
    const Fates fates = compareRecords(*sides[0].drawing, *sides[1].drawing);
    const std::unique_ptr<plot::Surface> surface = plot::Surface::make(request, page.paper, error);
    if (!surface) return PlotFailure::CannotWrite;
    plot::Notes notes;
    {
        const double dots = surface->dotsPerMillimetre();
        plot::Canvas canvas(surface->context(), page.paper.width * dots, page.paper.height * dots);
        plot::Texts texts(canvas, notes.boxes);
        const plot::ViewScale scale{dots, surface->thinnest(), 1.0, false, dxf::kNoRecord};
        Differences painters[2] = {{sides[0], sides[1], fates.first, fates.firstThere, kGone, kSame},
                                   {sides[1], sides[0], fates.second, fates.secondThere, kNew, kUnseen}};
        for (int i = 0; i < 2; ++i)
            if (sides[i].sheet)
                outcome.entities +=
                    sides[i].sheet->draw(canvas, texts, plot::toDots(page, dots), scale, &painters[i], notes);
    }
    outcome.layout = name;
    outcome.width = page.paper.width;
    outcome.height = page.paper.height;
    for (Side& side : sides)
        plot::tellNotes(notes, side.references, outcome), notes = {};
    return surface->finish(error) ? PlotFailure::None : PlotFailure::CannotWrite;
}

}  // namespace qrs::host
