// Start-up and tear-down of the module, and what it owns between them.
#pragma once

#include <memory>

#include "afxwin.h"
#include "rxmfcapi.h"

class AcApDocument;
class TPipeDocEntry;

namespace qrs::frame {

// The docked window of the layer control panel, with the filter through which it sees the editor's window messages.
struct LayerPanel {
    std::unique_ptr<CWnd> window;
    AcedFilterWinMsgFn filter = nullptr;
    void (*refresh)() = nullptr;  // lists the layers anew
};
// The one panel; its window is null while it is closed.
LayerPanel& layerPanel();
// Removes its filter and its window; nothing happens while it is closed.
void closeLayerPanel();

// Both run every step, whatever an earlier one found or threw.
void startUp();
void tearDown();

// The messages that a drawing was loaded and that it goes; they speak of the current document. Nothing happens for a
// document without an entry.
void drawingLoaded();
void drawingUnloads();

}  // namespace qrs::frame
