// Layouts: the sheets of a drawing, and its model as one of them.
#pragma once

#include "dbmain.h"

class QRS_HOST_PORT AcDbLayout : public AcDbObject {
  public:
    ACRX_DECLARE_MEMBERS(AcDbLayout)
    AcDbLayout() = default;

    // Released with acutDelString.
    Acad::ErrorStatus getLayoutName(ACHAR*& name) const;
    // The block that holds its entities; null when the drawing does not tell.
    AcDbObjectId getBlockTableRecordId() const;
    // Place in the row of tabs; the model has 0.
    int getTabOrder() const;
    // True for the tab of the model.
    bool modelType() const;
};
