// The dialog that takes the settings of an object's layer over into a layer of the standard.
#pragma once

#include <memory>
#include <vector>

#include "afxwin.h"
#include "PipeNodes.h"

// The user picks an object, chooses the group, the system and the layer type that are to get the name, colour, linetype
// and lineweight of its layer, and applies them, as often as wanted. OK saves the standard file and makes the changes
// the current standard; Cancel leaves file and standard as they were. A file that cannot be written is told in one
// message and the dialog stays open, so that nothing is lost.
class CLayerPickUpDlg : public CDialog {
  public:
    CLayerPickUpDlg();
    ~CLayerPickUpDlg() override;

  protected:
    BOOL OnInitDialog() override;
    void OnOK() override;

  private:
    class Work;
    std::unique_ptr<Work> work_;
};
