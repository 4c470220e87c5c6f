// One layout of one drawing: what of it is seen, and drawing it on a page.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/drawing/contents.h"
#include "host/drawing/layouts.h"
#include "host/drawing/spaces.h"
#include "host/pick/references.h"
#include "host/plot/page.h"
#include "host/plot/plot.h"
#include "host/plot/texts.h"
#include "host/plot/view.h"

namespace qrs::host::plot {

// The layouts of a drawing in the order of their tabs; one that the file does not name is "Layout1".
std::vector<Layout> tabsOf(const dxf::Drawing& drawing, const BlockIndex& blocks);

class Sheet {
  public:
    // layout: of the drawing's, which outlive the sheet.
    Sheet(dxf::Drawing& drawing, pick::References& references, const LocateFile& locate, const Layout& layout);

    bool isModel() const { return space_ == kModelSpace; }
    const std::wstring& name() const { return name_; }
    std::optional<PageSetup> setup() const;
    // The box around all that can be seen in the layout.
    pick::Box extents();
    // toPage: from the layout's coordinates to dots. Gives how many entities were drawn.
    // painter: null for none.
    std::size_t draw(Canvas& canvas, Texts& texts, const pick::Transform& toPage, const ViewScale& scale,
                     Painter* painter, Notes& notes);

    // The states of layers as they are seen in a viewport; kNoRecord: in the layout itself.
    pick::LayerStates layersIn(dxf::RecordId viewport) const;
    // A viewport of the layout, and what it shows.
    struct Window {
        dxf::RecordId id;
        pick::Vec low;  // of its rectangle on the sheet
        pick::Vec high;
        pick::Transform toSheet;  // from the model
        dxf::RecordId outline;    // kNoRecord: the rectangle
    };
    // Nothing for one that is off or not of the layout.
    std::optional<Window> windowOf(dxf::RecordId id) const;

  private:
    std::vector<dxf::RecordId> entities(EntitySpace space) const;
    bool isWindow(dxf::RecordId id) const;
    std::size_t drawWindow(const Window& window, Canvas& canvas, Texts& texts, const pick::Transform& toPage,
                           const ViewScale& scale, Painter* painter, Notes& notes);
    std::vector<std::vector<pick::Vec>> edgeOf(const Window& window, const pick::Transform& toPage);

    dxf::Drawing& drawing_;
    pick::References& references_;
    const LocateFile& locate_;
    std::wstring name_;
    const Block& block_;
    EntitySpace space_;
    SymbolTables tables_;
    BlockIndex blocks_;
    std::vector<dxf::RecordId> windows_;  // of the sheet that are on, without the sheet itself
};

}  // namespace qrs::host::plot
