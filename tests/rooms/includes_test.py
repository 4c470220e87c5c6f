#!/usr/bin/env python3
"""Puts includes and names into imagined files of every room and sees which of them scripts/check-includes refuses."""
import sys
from importlib.machinery import SourceFileLoader

# file, what it includes or says, part of the refusal ("": allowed)
CASES = (
    # upwards
    ("host/dxf/x.cpp", '#include "host/drawing/blocks.h"', "must not include"),
    ("host/drawing/x.cpp", '#include "dbmain.h"', "must not include"),
    ("host/pick/x.cpp", '#include "gepnt3d.h"', "must not include"),
    ("host/objectarx/db/x.cpp", '#include "host/editor/session.h"', "must not include"),
    ("host/editor/x.cpp", '#include "host/commands/commands.h"', "must not include"),
    ("host/editor/x.cpp", '#include "PwxTool.h"', "must not include"),
    ("console/x.cpp", '#include "host/dxf/drawing.h"', "must not include"),
    ("module/standard/x.cpp", '#include "frame/startup.h"', "must not include"),
    ("module/tools/x.cpp", '#include "layers/layerstate.h"', "must not include"),
    ("module/layers/x.cpp", '#include "host/pick/scene.h"', "must not include"),
    ("module/layers/x.cpp", '#include "host/editor/hostselect.h"', "must not include"),
    ("examples/sibling/x.cpp", '#include "module/standard/holder.h"', "must not include"),
    # into another room's inside
    ("module/config/x.cpp", '#include "host/platform/inside/partialfile.h"', "host/platform's own"),
    ("module/layers/x.cpp", '#include "host/platform/process.h"', "host/platform's own"),
    ("host/editor/x.cpp", '#include "host/objectarx/db/state.h"', "host/objectarx's own"),
    ("console/x.cpp", '#include "host/editor/session.h"', "host/editor's own"),
    ("console/x.cpp", '#include "host/objectarx/db/access.h"', "host/objectarx's own"),
    # libraries and the operating system
    ("module/standard/x.cpp", "#include <fontconfig/fontconfig.h>", "belongs to host/platform"),
    ("console/x.cpp", "#include <unistd.h>", "belongs to host/platform"),
    ("host/dxf/x.cpp", "#include <windows.h>", "belongs to host/platform"),
    ("module/config/x.cpp", "std::ifstream file(path);", "host/platform's business"),
    ("host/editor/x.cpp", "if (std::filesystem::exists(path)) return;", "host/platform's business"),
    # what the editor and its framework do not publish
    ("module/tools/x.cpp", "std::wstring name(text.view());", "view of host/mfc/afxstr.h is ours"),
    ("module/tools/x.cpp", "afxFormat(text, format, list);", "afxFormat of host/mfc/afxstr.h is ours"),
    ("module/layers/x.cpp", "if (database->hostState()) return;", "hostState of host/objectarx/dbmain.h is ours"),
    ("module/layers/x.cpp", "return AcDbObjectId::fromOldId(1);", "fromOldId of host/objectarx/dbid.h is ours"),
    ("module/frame/x.h", "AcDbTypedSymbolTable<Record>* table;", "AcDbTypedSymbolTable of host/objectarx/dbsymtb.h is ours"),
    ("module/tools/x.cpp", "return qrs::standard::view(text);", ""),
    ("module/tools/x.cpp", 'print("afxFormat");  // or database->hostState()', ""),
    ("host/suite/public/x.cpp", "afxFormat(text, format, list);", ""),
    # what is not there
    ("host/dxf/x.cpp", '#include "host/dxf/none.h"', "no file of the project"),
    # downwards
    ("host/editor/x.cpp", '#include "host/pick/scene.h"', ""),
    ("host/report/x.cpp", '#include "host/drawing/blocks.h"', ""),
    ("host/suite/kernel/x.cpp", '#include "host/editor/hostselect.h"', ""),
    ("console/x.cpp", '#include "host/editor/hostapp.h"', ""),
    ("console/x.cpp", '#include "host/platform/process.h"', ""),
    ("module/layers/x.cpp", '#include "dbsymtb.h"', ""),
    ("module/layers/x.cpp", '#include "qrs_select.h"', ""),
    ("module/frame/x.cpp", '#include "standard/holder.h"', ""),
    ("module/standard/x.cpp", "#include <pugixml.hpp>", ""),
    ("host/platform/posix/x.cpp", "#include <unistd.h>", ""),
    ("examples/sibling/x.cpp", '#include "PipeSystemTool.h"', ""),
)


def main() -> int:
    sys.dont_write_bytecode = True
    check = SourceFileLoader("check_includes", sys.argv[1]).load_module()
    faults = []
    for path, line, refusal in CASES:
        found = list(check.faults_of(path, "// text\n" + line + "\n"))
        refused = len(found) == 1 and found[0].startswith(f"{path}:2: ") and refusal in found[0]
        if not (refused if refusal else not found):
            faults.append(f"{path} with {line}: expected {refusal or 'no refusal'}, got {found}")
    print("\n".join(faults) or f"{len(CASES)} lines judged as they should be")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
