// Gives entities other colours than their own, as a comparison of two drawings does.
#pragma once

#include <optional>

#include "host/pick/layerstates.h"
#include "host/pick/picture.h"
#include "host/plot/canvas.h"
#include "host/plot/entitylooks.h"

namespace qrs::host::plot {

struct Paint {
    std::optional<Color> color;  // in place of the entity's own; without opacity: not drawn
    int layerThere = 0;          // state of its layer in the drawing that is compared with
    const pick::LayerStates* layersThere = nullptr;
    EntityLooks* looksThere = nullptr;  // null where they do not count
    bool isWhole = false;               // all that lies in the entity has the colour, too
};

class Painter {
  public:
    // looks: have entered the entity; outer: what has that in which it lies.
    virtual Paint paint(const pick::Shown& shown, const EntityLooks& looks, const Paint& outer) const = 0;
    // After all that the entity shows, with what paint() gave for it.
    virtual void leave(const Paint& paint) const = 0;
    // What lies in a viewport; kNoRecord: in the layout itself.
    virtual Paint within(dxf::RecordId viewport) = 0;

  protected:
    ~Painter() = default;
};

}  // namespace qrs::host::plot
