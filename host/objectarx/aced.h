// The editor object and the reactors that listen to it.
//
//     class Listener : public AcEditorReactor {
//         void commandEnded(const ACHAR* name) override { ... }
//     };
//     acedEditor->addReactor(&listener);
#pragma once

#include <memory>

#include "accmd.h"
#include "acedads.h"
#include "dbcolor.h"
#include "dbid.h"
#include "rxevent.h"

#define AC_EDITOR_OBJ ACRX_T("AcEditor")
#define acedEditor AcEditor::cast(acrxSysRegistry()->at(AC_EDITOR_OBJ))

// Command names arrive as global names in upper case. Every function does nothing unless overridden.
class QRS_HOST_PORT AcEditorReactor : public AcRxEventReactor {
  public:
    ACRX_DECLARE_MEMBERS(AcEditorReactor);
    AcEditorReactor();
    ~AcEditorReactor() override;

    virtual void commandWillStart(const ACHAR* name);
    virtual void commandEnded(const ACHAR* name);
    // A prompt of the command was cancelled and the command ended on it.
    virtual void commandCancelled(const ACHAR* name);
    virtual void commandFailed(const ACHAR* name);
    virtual void unknownCommand(const ACHAR* name);

    virtual void beginDwgOpen(ACHAR* fileName);
    virtual void endDwgOpen(const ACHAR* fileName, AcDbDatabase* database);
    virtual void beginClose(AcDbDatabase* database);
    virtual void beginQuit();
    virtual void quitWillStart();

    virtual void sysVarWillChange(const ACHAR* name);
    virtual void sysVarChanged(const ACHAR* name, bool success);
    virtual void pickfirstModified();
};

class QRS_HOST_PORT AcEditor : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcEditor);
    AcEditor();
    ~AcEditor() override;
    AcEditor(const AcEditor&) = delete;
    AcEditor& operator=(const AcEditor&) = delete;

    // Reactors are called in the order they were added; a second adding of the same one has no effect. A null is
    // ignored. One may be removed, or remove itself, while being called.
    void addReactor(AcEditorReactor* reactor);
    void removeReactor(AcEditorReactor* reactor);

    struct Reactors;
#ifndef QRS_PUBLISHED_ONLY
    Reactors& reactors() {
        return *reactors_;
    }
#endif  // QRS_PUBLISHED_ONLY

  private:
    std::unique_ptr<Reactors> reactors_;
};

// The viewport that takes the user's input; the null id in model space and when a layout has none.
QRS_HOST_PORT AcDbObjectId acedGetCurViewportObjectId();

namespace AcCm {
// The tabs of the colour dialog; flags. Without the tab of true colours only an index can be chosen.
enum DialogTabs {
    kACITab = 0x1,
    kTrueColorTab = 0x2,
    kDefaultTabs = kACITab | kTrueColorTab,
};
}  // namespace AcCm

// The editor's colour dialog, seeded with color, which becomes the chosen colour. bAllowMetaColor also lets by-layer
// and by-block be chosen; curLayerColor is the colour that by-layer shows. false, color untouched, when cancelled.
QRS_HOST_PORT bool acedSetColorDialogTrueColor(AcCmColor& color, Adesk::Boolean bAllowMetaColor,
                                               const AcCmColor& curLayerColor,
                                               AcCm::DialogTabs tabs = AcCm::kDefaultTabs);
