// The layer control panel: the standard's layers in the current drawing, with their states, to be changed there.
#pragma once

#include <memory>
#include <vector>

#include "afxwin.h"
#include "host/platform/dialog.h"
#include "layers/layerfields.h"

// The panel. As a window it floats over the editor's frame and stays there while commands run; its buttons type
// commands or change the current drawing's layers at once. Where dialogs are asked as text it lists the layers at every
// call and takes answers until it is closed. There is at most one.
class CLayerControlBar : public CWnd {
  public:
    // Shows the window, hides it, and shows it again. The command tckz.
    static void Toggle();
    // Takes its filter out of the editor's message loop and destroys its window; nothing happens while there is none.
    static void Close();
    // Lists the layers anew when the panel is shown: the standard, their states or the drawing may have changed.
    static void Refresh();
    // Has objects picked for the tag button that was pressed; false when none was. The command gpsbs.
    static bool RunTagging();

  private:
    struct Row {
        CString system;  // name of the pipe system, or of the group of other layers
        CString type;
        CString layer;
    };
    // One of the panel's buttons that changes the layers chosen in its list.
    struct StateButton;

    static BOOL passMessage(MSG* message);
    // As text.
    static void ask();
    // False, and the list is told as text, when the system makes no window.
    static bool open();

    bool isOnScreen() const;
    bool createWindow();
    void print() const;
    void describe();
    void addButtons();
    void readStandard();
    void refresh();
    void fill();
    void press(const StateButton& button);
    void change(const StateButton& button);

    std::vector<Row> standardLayers_;
    std::vector<qrs::layers::DrawnLayer> listed_;  // by row of the list
    std::unique_ptr<qrs::platform::Dialog> dialog_;
    std::unique_ptr<qrs::platform::Pane> pane_;  // null where it is asked as text
    qrs::platform::Control* systems_ = nullptr;
    qrs::platform::Control* list_ = nullptr;
    bool changed_ = false;  // a state, and the tool bar does not know yet
};
