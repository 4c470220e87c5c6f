// Dialogs in which layers of a drawing are chosen from a list.
//
//     COpenLayerDlg dialog(layersThatAreOff);
//     if (dialog.show() != qrs::platform::kDialogOk) return;
//     for (int i = 0; i < dialog.ChosenLayers().length(); ++i) ...
#pragma once

#include "afx.h"
#include "dbid.h"
#include "host/platform/form.h"

// A list of layers with a check mark each; what they have in common. Layers that cannot be opened are not listed.
class CLayerListDlg : public qrs::platform::Form {
  public:
    // The layers that were checked when OK closed the dialog, in the order of the list; empty before.
    const AcDbObjectIdArray& ChosenLayers() const { return chosen_; }

  protected:
    // layers are listed in the order given; those among checked begin with a check mark.
    CLayerListDlg(LPCWSTR title, LPCWSTR listCaption, const AcDbObjectIdArray& layers,
                  const AcDbObjectIdArray& checked = AcDbObjectIdArray());
    void describe() override;
    void pressOk() override;

  private:
    CString listCaption_;
    AcDbObjectIdArray layers_;
    AcDbObjectIdArray checked_;
    AcDbObjectIdArray listed_;  // by row
    AcDbObjectIdArray chosen_;
    qrs::platform::Control* list_ = nullptr;
};

// The layers that are off: which ones are to be turned on.
class COpenLayerDlg : public CLayerListDlg {
  public:
    explicit COpenLayerDlg(const AcDbObjectIdArray& layersOff);
};

// Some layers of a drawing: which ones a command is to act on. The title is the caller's.
class CLayerFilterDlg : public CLayerListDlg {
  public:
    CLayerFilterDlg(LPCWSTR title, const AcDbObjectIdArray& layers);
};

// Every layer of a drawing: which ones are meant; those chosen before begin with a check mark.
class CSelectLayerDlg : public CLayerListDlg {
  public:
    CSelectLayerDlg(const AcDbObjectIdArray& layers, const AcDbObjectIdArray& chosenBefore);
};
