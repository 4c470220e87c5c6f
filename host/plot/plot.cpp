// From a layout and a request to a page, and to the file.
#include "host/plot/plot.h"

#include <algorithm>
#include <cmath>

#include "host/dxf/classcodes.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/text.h"
#include "host/plot/pages.h"
#include "host/plot/surface.h"

namespace qrs::host::plot {

using pick::Box;
using pick::Transform;
using platform::translated;

namespace {

constexpr Paper kUsualPaper{420, 297};
constexpr double kMargin = 10.0;  // millimetres around what is fitted into a page
constexpr double kLongestSide = 20000;

// Puts a box of the drawing into the middle of what the margins leave.
Transform placed(const Box& box, const Paper& paper, double margin, double fixedScale) {
    const double width = std::max(box.high.x - box.low.x, 1e-9);
    const double height = std::max(box.high.y - box.low.y, 1e-9);
    double scale = std::min((paper.width - 2 * margin) / width, (paper.height - 2 * margin) / height);
    if (fixedScale > 0.0 && fixedScale < scale * 1.2) scale = fixedScale;
    if (!std::isfinite(scale)) scale = 1.0;
    const double x = (box.low.x + box.high.x) / 2;
    const double y = (box.low.y + box.high.y) / 2;
    return {
        {scale, 0, 0}, {0, scale, 0}, {0, 0, scale}, {paper.width / 2 - x * scale, paper.height / 2 - y * scale, 0}};
}

// A page of the drawing's own shape: a sheet as large as it is, a model as long as the usual paper.
Page fittedPage(const Box& box, bool isModel) {
    Page page;
    const double width = std::max(box.high.x - box.low.x, 1e-9);
    const double height = std::max(box.high.y - box.low.y, 1e-9);
    double scale = isModel ? (kUsualPaper.width - 2 * kMargin) / std::max(width, height) : 1.0;
    scale = std::min(scale, (kLongestSide - 2 * kMargin) / std::max(width, height));
    page.paper = {std::max(width * scale, 1.0) + 2 * kMargin, std::max(height * scale, 1.0) + 2 * kMargin};
    page.toPaper = placed(box, page.paper, kMargin, scale);
    return page;
}

}  // namespace

Page pageFor(const Box& extents, bool isModel, const std::optional<PageSetup>& setup, const std::wstring& paper) {
    Page page;
    const bool hasOwn = !isModel && setup && setup->paper.width > 0.0;
    if (paper.empty() && hasOwn && setup->area == PageSetup::Area::Layout) {
        const double unit = setup->millimetresPerUnit;
        page.paper = setup->paper;
        page.toPaper = {{unit, 0, 0}, {0, unit, 0}, {0, 0, unit}, {setup->left, setup->bottom, 0}};
        return page;
    }
    Box box = extents;
    const bool isWindow = !isModel && setup && setup->area == PageSetup::Area::Window &&
                          setup->window.high.x > setup->window.low.x && setup->window.high.y > setup->window.low.y;
    if (isWindow && paper.empty()) box = setup->window;
    if (!box.isBounded()) {
        box = Box{};
        box.add({0, 0, 0});
        box.add({kUsualPaper.width, kUsualPaper.height, 0});
    }
    if (isFit(paper)) return fittedPage(box, isModel);
    page.paper = turnedFor(kUsualPaper, box);
    if (paper.empty() && hasOwn) page.paper = setup->paper;
    if (!paper.empty()) page.paper = paperNamed(paper).value_or(kUsualPaper);
    // A paper named by its size alone lies as what it shall hold.
    if (!paper.empty() && paper.find_first_of(L"-x") == std::wstring::npos) page.paper = turnedFor(page.paper, box);
    const double margin = std::min(kMargin, std::min(page.paper.width, page.paper.height) / 20);
    page.toPaper = placed(box, page.paper, hasOwn && paper.empty() ? 0.0 : margin, isWindow ? setup->scale : 0.0);
    return page;
}

Transform toDots(const Page& page, double dotsPerMillimetre) {
    const Transform down{{dotsPerMillimetre, 0, 0},
                         {0, -dotsPerMillimetre, 0},
                         {0, 0, dotsPerMillimetre},
                         {0, page.paper.height * dotsPerMillimetre, 0}};
    return down.after(page.toPaper);
}

const Layout* findLayout(const std::vector<Layout>& layouts, const std::wstring& name) {
    for (const Layout& layout : layouts)
        if (platform::compareNoCase(layout.name, name) == 0) return &layout;
    return nullptr;
}

std::string noLayout(const std::vector<Layout>& layouts, const std::wstring& name) {
    std::string names;
    for (const Layout& layout : layouts)
        names += (names.empty() ? "" : ", ") + platform::toUtf8(layout.name);
    return translated("there is no layout \"%1\"; the drawing has %2", platform::toUtf8(name), names);
}

std::wstring shownLayout(const dxf::Drawing& drawing, const std::vector<Layout>& layouts) {
    const bool isModel = headerNumber(drawing, "$TILEMODE", dxf::codes::variable::kInteger, 1) != 0;
    for (const Layout& layout : layouts)
        if (layout.block->space == (isModel ? Space::Model : Space::Paper)) return layout.name;
    return layouts.empty() ? std::wstring() : layouts.front().name;
}

void tellNotes(const Notes& notes, pick::References& references, PlotOutcome& outcome) {
    for (const std::wstring& path : references.takeMissing())
        outcome.notes.push_back(translated(L"The external reference %1 cannot be found.", path));
    if (notes.all.count(Note::FinePattern))
        outcome.notes.push_back(translated(L"A hatch pattern too fine to be seen was drawn as an area."));
    if (notes.all.count(Note::UnknownShape))
        outcome.notes.push_back(translated(L"Shapes in linetypes that no file tells were left out."));
    if (notes.all.count(Note::RestLeftOut))
        outcome.notes.push_back(translated(L"There is more than can be drawn; the rest was left out."));
    if (!notes.boxes.empty()) {
        constexpr std::size_t kShown = 10;
        std::wstring shown;
        for (const char32_t character : notes.boxes) {
            platform::appendCodePoint(shown, character);
            if (shown.size() >= kShown) break;
        }
        outcome.notes.push_back(translated(L"Characters that no installed font has were drawn as boxes: %1 (%2).",
                                           notes.boxes.size(), shown));
    }
    for (const auto& [kind, count] : notes.undrawn)
        outcome.notes.push_back(
            translated(L"Entities of a kind that cannot be drawn: %1 x %2.", count, platform::fromUtf8(kind)));
}

PlotFailure refuseOver(const std::filesystem::path& drawing, platform::Error& error) {
    error.message = translated("%1 is a drawing that is plotted; no picture is written over it", drawing.u8string());
    return PlotFailure::CannotWrite;
}

PlotFailure plotDrawing(dxf::Drawing& drawing, const std::filesystem::path& own, pick::References& references,
                        const LocateFile& locate, const PlotRequest& request, PlotOutcome& outcome,
                        platform::Error& error) {
    if (platform::fileMark(request.file).place == platform::fileMark(own).place) return refuseOver(own, error);
    const BlockIndex blocks(drawing);
    const std::vector<Layout> layouts = tabsOf(drawing, blocks);
    const std::wstring name = request.layout.empty() ? shownLayout(drawing, layouts) : request.layout;
    const Layout* const layout = findLayout(layouts, name);
    if (!layout) {
        error.message = noLayout(layouts, name);
        return PlotFailure::Misuse;
    }
    Sheet sheet(drawing, references, locate, *layout);
    const std::optional<PageSetup> setup = sheet.setup();
    const bool needsExtents = sheet.isModel() || !request.paper.empty() || !setup || !(setup->paper.width > 0.0) ||
                              setup->area != PageSetup::Area::Layout;
    const Page page = pageFor(needsExtents ? sheet.extents() : Box{}, sheet.isModel(), setup, request.paper);
    const std::unique_ptr<Surface> surface = Surface::make(request, page.paper, error);
    if (!surface) return PlotFailure::CannotWrite;
    Notes notes;
    {
        const double dots = surface->dotsPerMillimetre();
        Canvas canvas(surface->context(), page.paper.width * dots, page.paper.height * dots);
        Texts texts(canvas, notes.boxes);
        const ViewScale scale{dots, surface->thinnest(), 1.0, request.isBlack, dxf::kNoRecord};
        outcome.entities = sheet.draw(canvas, texts, toDots(page, dots), scale, nullptr, notes);
    }
    outcome.layout = layout->name;
    outcome.width = page.paper.width;
    outcome.height = page.paper.height;
    tellNotes(notes, references, outcome);
    if (references.isOne(request.file)) return refuseOver(request.file, error);
    return surface->finish(error) ? PlotFailure::None : PlotFailure::CannotWrite;
}

}  // namespace qrs::host::plot
