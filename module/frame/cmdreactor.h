// The module's ear at the editor's commands.
#pragma once

#include "aced.h"
#include "panel/layercontrolbar.h"
#include "tools/guard.h"

// One hangs on the editor from start-up to tear-down. Whatever a command changed, an open layer control panel shows it.
class TCmdReactor : public AcEditorReactor {
  public:
    void commandEnded(const ACHAR*) override { qrs::tools::guarded(CLayerControlBar::Refresh); }
    void commandCancelled(const ACHAR*) override { qrs::tools::guarded(CLayerControlBar::Refresh); }
    void commandFailed(const ACHAR*) override { qrs::tools::guarded(CLayerControlBar::Refresh); }
};
