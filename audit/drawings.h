// Drawings beside the current one: opened to be looked at, never written.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dbmain.h"
#include "host/platform/error.h"

namespace qrs::audit {

// Paths are in the inner form. Null, with the reason in error, when the drawing cannot be read.
std::unique_ptr<AcDbDatabase> openDrawing(const std::wstring& path, platform::Error& error);

// The file a drawing has; empty for a new one.
std::wstring fileOf(const AcDbDatabase& database);

// The name of a file without its folder, and its whole path as the system spells it.
std::wstring nameOfFile(const std::wstring& path);
std::wstring nativeFile(const std::wstring& path);

// The files of a drawing's external references, each once, as they are found: where the drawing says, beside it, on the
// support search path. A file that is not found is told as the drawing names it.
std::vector<std::wstring> referencesOf(AcDbDatabase& database);

}  // namespace qrs::audit
