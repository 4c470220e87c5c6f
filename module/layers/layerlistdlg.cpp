// Fills the list, and gives back what was chosen when OK was pressed.
#include "layers/layerlistdlg.h"

#include <set>

#include "layers/layerfields.h"
#include "tools/arrayloop.h"

using namespace qrs::layers;
using qrs::platform::ListKind;

CLayerListDlg::CLayerListDlg(LPCWSTR title, LPCWSTR listCaption, const AcDbObjectIdArray& layers,
                             const AcDbObjectIdArray& checked)
    : Form(title), listCaption_(listCaption), layers_(layers), checked_(checked) {}

void CLayerListDlg::describe() {
    listed_.removeAll();
    chosen_.removeAll();
    list_ = &form().addList(listCaption_.GetString(), layerColumns(), ListKind::Many);
    std::set<AcDbObjectId> checked;
    for (const AcDbObjectId& id : checked_)
        checked.insert(id);
    for (int i = 0; i < layers_.length(); ++i) {
        DrawnLayer layer;
        if (!readLayer(layers_[i], layer)) continue;
        list_->addRow(layerCells(layer), checked.count(layers_[i]) != 0);
        listed_.append(layers_[i]);
    }
}

void CLayerListDlg::pressOk() {
    for (int i = 0; i < listed_.length(); ++i)
        if (list_->rows[static_cast<std::size_t>(i)].chosen) chosen_.append(listed_[i]);
    Form::pressOk();
}

COpenLayerDlg::COpenLayerDlg(const AcDbObjectIdArray& layersOff)
    : CLayerListDlg(L"打开图层", L"请选择要打开的图层", layersOff) {}

CLayerFilterDlg::CLayerFilterDlg(LPCWSTR title, const AcDbObjectIdArray& layers)
    : CLayerListDlg(title, L"请选择图层", layers) {}

CSelectLayerDlg::CSelectLayerDlg(const AcDbObjectIdArray& layers, const AcDbObjectIdArray& chosenBefore)
    : CLayerListDlg(L"选择图层", L"请选择图层", layers, chosenBefore) {}
