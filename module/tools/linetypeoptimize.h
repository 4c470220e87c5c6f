// Linetype optimisation: the texts in the linetypes of chosen objects get other gaps and sizes.
#pragma once

#include "host/platform/form.h"
#include "tools/textpattern.h"

namespace qrs::tools {

// The user's values: LineTypeTextGap (drawing units at linetype scale 1) and LineTypeTextScale of the PWXConfig key. A
// value that is missing or makes no sense counts as 1.
TextSpacing readTextSpacing();
// False, with a message, when the settings cannot be written.
bool writeTextSpacing(const TextSpacing& spacing);

// Why a number cannot be the gap, or the scale, in one sentence; empty when it can.
CString refuseTextGap(double gap);
CString refuseTextScale(double scale);

// The command that asks at the command line, for the values by keyword, then for objects.
void optimizeLinetypes();
// The command that asks for the values in the dialog, then for objects.
void optimizeLinetypesByDialog();

}  // namespace qrs::tools

// Gap and scale, each in a field. OK keeps them as the user's values; a field that holds no number in range keeps the
// dialog open.
class CLinetypeOptimizeDlg : public qrs::platform::Form {
  public:
    CLinetypeOptimizeDlg();
    const qrs::tools::TextSpacing& Spacing() const { return spacing_; }

  protected:
    void describe() override;
    void pressOk() override;

  private:
    qrs::tools::TextSpacing spacing_;
    qrs::platform::Control* gap_ = nullptr;
    qrs::platform::Control* scale_ = nullptr;
};
