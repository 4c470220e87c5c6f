// The part of the editor's interface that speaks of windows: message filters, status bar, resources.
#pragma once

#include "adesk.h"
#include "afxwin.h"

// Sees a window message before the editor does; TRUE keeps it from the editor.
typedef BOOL (*AcedFilterWinMsgFn)(MSG*);

// FALSE for a null function, and when it is registered already (register) or is not (remove).
QRS_HOST_PORT BOOL acedRegisterFilterWinMsg(const AcedFilterWinMsgFn filter);
QRS_HOST_PORT BOOL acedRemoveFilterWinMsg(const AcedFilterWinMsgFn filter);

// The editor's main window. Null: there is none.
QRS_HOST_PORT CMDIFrameWnd* acedGetAcadFrame();
// The window the current drawing is shown in. Null: nothing is shown.
QRS_HOST_PORT CView* acedGetAcadDwgView();

QRS_HOST_PORT void acedUpdateDisplay();

// A progress meter in the status bar; 0 when done, -1 for a range that is none (minimum not below maximum) or a meter
// that was not set. The position is kept within the range.
QRS_HOST_PORT int acedSetStatusBarProgressMeter(const ACHAR* label, int minimum, int maximum);
QRS_HOST_PORT int acedSetStatusBarProgressMeterPos(int position);
QRS_HOST_PORT void acedRestoreStatusBar();
