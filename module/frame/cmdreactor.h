// The module's ear at the editor's commands.
#pragma once

#include "aced.h"

// One hangs on the editor from start-up to tear-down.
class TCmdReactor : public AcEditorReactor {};
