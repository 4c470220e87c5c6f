// The files of drawings, and those of their external references.
#pragma once

#include <string>
#include <vector>

#include "dbmain.h"

namespace qrs::audit {

// Paths are in the inner form. The file a drawing has, as the user has named it; empty for a new one.
std::wstring fileOf(const AcDbDatabase& database);

// The name of a file without its folder, and its whole path as the system spells it.
std::wstring nameOfFile(const std::wstring& path);
std::wstring nativeFile(const std::wstring& path);

// The files of a drawing's external references (drawing: its own file), each once, as they are found: where the drawing
// says, beside it, on the support search path. A file that is not found is told as the drawing names it.
std::vector<std::wstring> referencesOf(AcDbDatabase& database, const std::wstring& drawing);

}  // namespace qrs::audit
