// Fills the list, and gives back what was chosen when OK was pressed.
#include "layers/layerlistdlg.h"

#include <set>

#include "layers/layerfields.h"

using namespace qrs::layers;
using qrs::platform::ListKind;

CLayerListDlg::CLayerListDlg(LPCWSTR title, LPCWSTR listCaption, const AcDbObjectIdArray& layers,
                             const AcDbObjectIdArray& checked)
    : CDialog(title), listCaption_(listCaption), layers_(layers), checked_(checked) {}

BOOL CLayerListDlg::OnInitDialog() {
    listed_.removeAll();
    chosen_.removeAll();
    list_ = &form().addList(listCaption_.GetString(), layerColumns(), ListKind::Many);
    const std::set<AcDbObjectId> checked(checked_.begin(), checked_.end());
    for (int i = 0; i < layers_.length(); ++i) {
        DrawnLayer layer;
        if (!readLayer(layers_[i], layer)) continue;
        list_->addRow(layerCells(layer), checked.count(layers_[i]) != 0);
        listed_.append(layers_[i]);
    }
    return TRUE;
}

void CLayerListDlg::OnOK() {
    for (int i = 0; i < listed_.length(); ++i)
        if (list_->rows[static_cast<std::size_t>(i)].chosen) chosen_.append(listed_[i]);
    CDialog::OnOK();
}

COpenLayerDlg::COpenLayerDlg(const AcDbObjectIdArray& layersOff)
    : CLayerListDlg(L"打开图层", L"请选择要打开的图层", layersOff) {}

CLayerFilterDlg::CLayerFilterDlg(LPCWSTR title, const AcDbObjectIdArray& layers)
    : CLayerListDlg(title, L"请选择图层", layers) {}

CSelectLayerDlg::CSelectLayerDlg(const AcDbObjectIdArray& layers, const AcDbObjectIdArray& chosenBefore)
    : CLayerListDlg(L"选择图层", L"请选择图层", layers, chosenBefore) {}
