// The editor object and its reactors.
#include "aced.h"

#include "host/editor/editorstate.h"
#include "host/platform/callrecord.h"

ACRX_DEFINE_MEMBERS(AcRxEventReactor, AcRxObject)
ACRX_DEFINE_MEMBERS(AcEditorReactor, AcRxEventReactor)
ACRX_DEFINE_MEMBERS(AcEditor, AcRxObject)

using qrs::platform::recordCall;

AcRxEventReactor::AcRxEventReactor() = default;
AcRxEventReactor::~AcRxEventReactor() = default;
void AcRxEventReactor::databaseConstructed(AcDbDatabase*) {}
void AcRxEventReactor::databaseToBeDestroyed(AcDbDatabase*) {}
void AcRxEventReactor::beginSave(AcDbDatabase*, const ACHAR*) {}
void AcRxEventReactor::saveComplete(AcDbDatabase*, const ACHAR*) {}
void AcRxEventReactor::abortSave(AcDbDatabase*) {}

AcEditorReactor::AcEditorReactor() = default;
AcEditorReactor::~AcEditorReactor() = default;
void AcEditorReactor::commandWillStart(const ACHAR*) {}
void AcEditorReactor::commandEnded(const ACHAR*) {}
void AcEditorReactor::commandCancelled(const ACHAR*) {}
void AcEditorReactor::commandFailed(const ACHAR*) {}
void AcEditorReactor::unknownCommand(const ACHAR*) {}
void AcEditorReactor::beginDwgOpen(ACHAR*) {}
void AcEditorReactor::endDwgOpen(const ACHAR*, AcDbDatabase*) {}
void AcEditorReactor::beginClose(AcDbDatabase*) {}
void AcEditorReactor::beginQuit() {}
void AcEditorReactor::quitWillStart() {}
void AcEditorReactor::sysVarWillChange(const ACHAR*) {}
void AcEditorReactor::sysVarChanged(const ACHAR*, bool) {}
void AcEditorReactor::pickfirstModified() {}

AcEditor::AcEditor() : reactors_(std::make_unique<Reactors>()) {}
AcEditor::~AcEditor() = default;

void AcEditor::addReactor(AcEditorReactor* reactor) {
    recordCall("AcEditor::addReactor");
    reactors_->list.add(reactor);
}

void AcEditor::removeReactor(AcEditorReactor* reactor) {
    recordCall("AcEditor::removeReactor");
    reactors_->list.remove(reactor);
}
