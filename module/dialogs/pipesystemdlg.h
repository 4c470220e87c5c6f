// The dialog that edits what a pipe system says of itself.
#pragma once

#include <vector>

#include "host/platform/form.h"
#include "PipeNodes.h"
#include "standard/standard.h"

// OK writes what was typed into the system, through its group, so that index and layers follow a new name; Cancel
// leaves it as it was.
class CPipeSystemDlg : public qrs::platform::Form {
  public:
    CPipeSystemDlg(const qrs::standard::Standard& standard, PipeGroupNode& group, PipeNode& system);

    // Why the standard cannot have a system of that name, one sentence; empty when it can. system is the one that is to
    // get the name, or null for a new one.
    static std::wstring RefuseName(const qrs::standard::Standard& standard, const PipeNode* system,
                                   const std::wstring& name);

  protected:
    void describe() override;
    void pressOk() override;

  private:
    const qrs::standard::Standard& standard_;
    PipeGroupNode& group_;
    PipeNode& system_;
    qrs::platform::Control* name_ = nullptr;
    std::vector<qrs::platform::Control*> fields_;  // by row of the table of fields
};
