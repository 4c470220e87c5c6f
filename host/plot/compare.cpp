// Two drawings in one picture.
#include <memory>

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

// What differs has a colour, and gives it to all that lies in its block.
plot::Repaint repaintBy(const dxf::Drawing& drawing, const std::vector<Fate>& fates, const Color& differing,
                        const Color& same) {
    return [&drawing, &fates, differing, same](const pick::Entity& entity,
                                               const std::optional<Color>& outer) -> std::optional<Color> {
        if (outer && *outer == differing) return outer;
        const bool isSame = &entity.drawing() != &drawing || fates[entity.id()] == Fate::Same;
        return isSame ? same : differing;
    };
}

}  // namespace

PlotFailure plotComparison(const std::filesystem::path& first, const std::filesystem::path& second,
                           const PlotRequest& request, PlotOutcome& outcome, platform::Error& error) {
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
    const plot::Sheet& leading = inSecond ? *sides[1].sheet : *sides[0].sheet;
    const plot::Page page = plot::pageFor(extents, leading.isModel(), leading.setup(), request.paper);
    const Fates fates = compareRecords(*sides[0].drawing, *sides[1].drawing);
    const std::unique_ptr<plot::Surface> surface = plot::Surface::make(request, page.paper, error);
    if (!surface) return PlotFailure::CannotWrite;
    plot::Notes notes;
    {
        const double dots = surface->dotsPerMillimetre();
        plot::Canvas canvas(surface->context(), page.paper.width * dots, page.paper.height * dots);
        plot::Texts texts(canvas);
        const plot::ViewScale scale{dots, surface->thinnest(), 1.0, false};
        const plot::Repaint repaints[2] = {repaintBy(*sides[0].drawing, fates.first, kGone, kSame),
                                           repaintBy(*sides[1].drawing, fates.second, kNew, inFirst ? kUnseen : kNew)};
        for (int i = 0; i < 2; ++i)
            if (sides[i].sheet)
                outcome.entities +=
                    sides[i].sheet->draw(canvas, texts, plot::toDots(page, dots), scale, repaints[i], notes);
    }
    outcome.layout = name;
    outcome.width = page.paper.width;
    outcome.height = page.paper.height;
    for (Side& side : sides)
        plot::tellNotes(notes, side.references, outcome), notes = {};
    return surface->finish(error) ? PlotFailure::None : PlotFailure::CannotWrite;
}

}  // namespace qrs::host
