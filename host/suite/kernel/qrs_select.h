// Stand-in for the kernel library's selection services.
//
//     TPickEntSet picked;
//     if (SelectEntities(L"\n请选择: ", picked) == RTNORM)
//         for (const AcDbObjectId& id : picked.ids()) ...
#pragma once

#include <cstddef>
#include <string>

#include "adsdef.h"
#include "dbid.h"
#include "gepnt3d.h"
#include "host/platform/port.h"

// One entity by its name, in the form that acdbGetObjectId converts to an object id. A new one names nothing.
struct TEntitySet {
    ads_name ent = {0, 0};
};

// A selection: entities in the order they were picked, each once.
class QRS_HOST_PORT TPickEntSet {
  public:
    // Every entity of the drawing that passes the filter (group codes as acedSSGet takes them; null: all entities).
    // False when there is none.
    bool Get(const resbuf* filter);

    const AcDbObjectIdArray& ids() const { return ids_; }
    bool isEmpty() const { return ids_.isEmpty(); }

  private:
    friend QRS_HOST_PORT int SelectEntities(const std::wstring& prompt, TPickEntSet& picked, const resbuf* filter);
    AcDbObjectIdArray ids_;
};

// Asks for one entity and the point it was picked at (world coordinates, drawing units).
// RTNORM with both; RTNONE after Enter; RTCAN after Esc; RTERROR when nothing lies at the point.
QRS_HOST_PORT int SelectEntity(const std::wstring& prompt, TEntitySet& entity, AcGePoint3d& point);

// Asks for one entity inside a block reference, an external one too, and gives the layer it lies on: null when the
// drawing's layer table has no such layer. Results as SelectEntity.
QRS_HOST_PORT int SelectNestedEntity(const std::wstring& prompt, const TEntitySet& reference, AcDbObjectId& layer);

// Asks for entities; a pick-first set, when the command takes it, answers at once. The filter (null: none) is a chain
// of group codes as acedSSGet takes it.
// RTNORM with at least one entity; RTNONE after Enter without one; RTCAN after Esc; RTKWORD for a keyword of
// acedInitGet, with what was picked before it, which may be nothing.
QRS_HOST_PORT int SelectEntities(const std::wstring& prompt, TPickEntSet& picked, const resbuf* filter = nullptr);
