// The pipe settings dialog: the systems and layers of the current standard.
#pragma once

#include <memory>

#include "host/platform/form.h"
#include "standard/standardedit.h"

// Works on a copy. OK writes the standard file and makes the copy the current standard; a file that cannot be written
// is told in one message and the dialog stays open. Cancel leaves file and standard as they were.
class CPipeSettingDlg : public qrs::platform::Form {
  public:
    // editable: false only shows. updatesDrawing: with OK the drawing's layers take over what changed.
    CPipeSettingDlg(std::unique_ptr<qrs::standard::StandardEdit> edit, bool editable, bool updatesDrawing);

  protected:
    void describe() override;
    void pressOk() override;

  private:
    PipeGroupNode* group() const;
    PipeNode* chosenSystem() const;
    void addSystemControls();
    void addOtherControls();
    void list(std::size_t chosen);
    void editSystem();
    void editLayers();
    void addSystem();
    void removeSystem();
    void moveSystem(bool up);
    void editOtherLayers();

    std::unique_ptr<qrs::standard::StandardEdit> edit_;
    bool editable_;
    bool updatesDrawing_;
    bool changed_ = false;
    qrs::platform::Control* groups_ = nullptr;
    qrs::platform::Control* systems_ = nullptr;
    qrs::platform::Control* others_ = nullptr;
};

namespace qrs::dialogs {

// A new system of a group: the layers that the standard's rules give it, named by them, each with the colour, linetype
// and lineweight that the layer of its type has in the pattern, if there is one.
std::unique_ptr<PipeNode> makeSystem(const standard::Standard& standard, const PipeGroupNode& group,
                                     const CString& name, const PipeNode* pattern);

// The command gxsz.
void gxsz();

}  // namespace qrs::dialogs
