// Who listens to the editor.
#pragma once

#include "aced.h"
#include "host/editor/reactors.h"

struct AcEditor::Reactors {
    qrs::host::ed::ReactorList<AcEditorReactor> list;
};
