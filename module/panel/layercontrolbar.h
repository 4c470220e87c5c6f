// The layer control panel: the standard's layers in the current drawing, with their states, to be changed there.
#pragma once

#include <vector>

#include "afxwin.h"
#include "layers/layerfields.h"

// The panel. Where it is asked as text, it lists the layers when it is shown and takes answers until it is closed;
// it then counts as open until the command hides it. There is at most one.
class CLayerControlBar : public CWnd {
  public:
    // Opens the panel when there is none, else closes it. The command tckz.
    static void Toggle();
    // Takes its filter out of the editor's message loop and destroys its window; nothing happens while there is none.
    static void Close();
    // Lists the layers anew when the panel is shown: the standard or their states may have changed.
    static void Refresh();

  private:
    struct Row {
        CString system;  // name of the pipe system, or of the group of other layers
        CString type;
        CString layer;
    };
    // One of the panel's buttons that changes the layers chosen in its list.
    struct StateButton;

    void run();
    // Where it has no window.
    void print();
    void describe(qrs::platform::Dialog& dialog);
    void addButtons(qrs::platform::Dialog& dialog);
    void readStandard();
    void fill();
    void change(const StateButton& button);

    std::vector<Row> standardLayers_;
    std::vector<qrs::layers::DrawnLayer> listed_;  // by row of the list
    qrs::platform::Control* systems_ = nullptr;    // null while the panel takes no answers
    qrs::platform::Control* list_ = nullptr;
    bool changed_ = false;  // a state, since the panel was shown
};
