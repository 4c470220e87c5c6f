// The dialog that takes the settings of an object's layer over into a layer of the standard.
#pragma once

#include <memory>

#include "host/platform/form.h"
#include "layers/layerfields.h"
#include "standard/standardedit.h"

// The user picks an object, chooses the group, the system and the layer type that are to get the name, colour, linetype
// and lineweight of its layer, or some of them, and applies them, as often as wanted. OK also applies what was picked
// last, saves the standard file and makes the changes the current standard; Cancel leaves file and standard as they
// were. A file that cannot be written is told in one message and the dialog stays open, so that nothing is lost.
class CLayerPickUpDlg : public qrs::platform::Form {
  public:
    CLayerPickUpDlg();
    // Without a standard: one message, and no dialog.
    int show() override;

  protected:
    void describe() override;
    void pressOk() override;

  private:
    PipeGroupNode* group() const;
    OtherLayerNode* otherGroup() const;
    PipeNode* system() const;
    LayerNode* target() const;
    void pick();
    void showPicked();
    void listSystems();
    void listTypes();
    void listTypesOf(const PipeNode* system, const OtherLayerNode* others);
    void showTarget();
    std::wstring refuseName() const;
    bool apply();

    std::unique_ptr<qrs::standard::StandardEdit> edit_;
    qrs::layers::DrawnLayer picked_;
    bool pending_ = false;  // picked and not applied yet
    bool changed_ = false;
    qrs::platform::Control* pickedLabel_ = nullptr;
    qrs::platform::Control* takes_[4] = {};  // name, colour, linetype, lineweight
    qrs::platform::Control* groups_ = nullptr;
    qrs::platform::Control* systems_ = nullptr;
    qrs::platform::Control* types_ = nullptr;
    qrs::platform::Control* targetLabel_ = nullptr;
};
