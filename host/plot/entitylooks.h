// What the entities of a drawing, and of those it refers to, are drawn with: layers and blocks asked as the drawing
// says.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/pick/picture.h"
#include "host/plot/linetypes.h"
#include "host/plot/palette.h"

namespace qrs::host::plot {

struct Look {
    Color color;
    double weight = 0.0;                 // millimetres
    const Linetype* linetype = nullptr;  // null: without gaps
    double linetypeScale = 1.0;          // of the entity
};

// What entities on a layer have that say "by layer".
struct LayerLook {
    Look look;
    bool isPlotted = true;
    bool isZero = false;
};

class EntityLooks {
  public:
    // window: the viewport that is looked through, whose layers may look otherwise; kNoRecord for none.
    EntityLooks(const dxf::Drawing& drawing, dxf::RecordId window);

    // In the order in which a picture hears of entities: what lies in a block asks what the block reference has.
    void enter(const pick::Shown& shown);
    // As if it were one of this drawing, or of one that is referred to (drawing), on a layer of that.
    void enterAs(const pick::Shown& shown, const dxf::Drawing& drawing, dxf::NameId layer);
    void leave() { entered_.pop_back(); }

    // Of the entity that was entered last. Of one in no block when none was.
    const Look& look() const { return entered_.empty() ? usual_.look : entered_.back().look; }
    bool isPlotted() const { return entered_.empty() || entered_.back().layer->isPlotted; }
    // A colour that something within the entity names.
    Color colorOf(long index) const;
    double globalLinetypeScale() const { return globalScale_; }

  private:
    // One drawing in a role: the one that is plotted, or a reference under a name.
    struct Source {
        Source(const dxf::Drawing& its, std::wstring prefixOf)
            : drawing(its), prefix(std::move(prefixOf)), linetypes(its) {}
        const dxf::Drawing& drawing;
        std::wstring prefix;
        Linetypes linetypes;
        std::unordered_map<std::string_view, const Linetype*> byName;  // as entities spell them
        std::unordered_map<dxf::NameId, LayerLook> layers;
    };
    struct Entered {
        Look look;
        const LayerLook* layer;
    };

    Source& sourceOf(const dxf::Drawing& drawing, const std::wstring& prefix);
    const LayerLook& layerOf(Source& source, dxf::NameId layer);
    void override(Source& source, dxf::RecordId layer, Look& look) const;
    LayerLook readLayer(Source& source, dxf::RecordId record);
    static const Linetype* linetypeOf(Source& source, const dxf::Drawing& writer, std::string_view name);
    dxf::RecordId findLayer(const dxf::Drawing& drawing, const std::wstring& name);

    const dxf::Drawing& drawing_;
    std::uint64_t viewport_;
    double globalScale_ = 1.0;
    LayerLook usual_;
    std::map<std::pair<const dxf::Drawing*, std::wstring>, std::unique_ptr<Source>> sources_;
    std::map<const dxf::Drawing*, std::unordered_map<std::wstring, dxf::RecordId>> layerTables_;
    const dxf::Drawing* lastDrawing_ = nullptr;
    Source* lastSource_ = nullptr;
    std::vector<Entered> entered_;
};

// Whether what they entered last is drawn alike.
bool areAlike(const EntityLooks& a, const EntityLooks& b);

// A variable of the header that is a number.
double headerNumber(const dxf::Drawing& drawing, std::string_view name, int code, double fallback);

}  // namespace qrs::host::plot
