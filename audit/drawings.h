// The files of drawings, and those of their external references.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "dbmain.h"
#include "qrs_drawings.h"

namespace qrs::audit {

// Paths are in the inner form. The file a drawing has, as the user has named it; empty for a new one.
std::wstring fileOf(const AcDbDatabase& database);

// The whole path as the system spells it; empty for an empty one.
std::filesystem::path nativeFile(const std::wstring& path);

// Reads a drawing of just that name. False, with the reason in UTF-8, when it cannot be read.
bool readDrawing(const std::filesystem::path& native, QrsExport::TReadDrawing& drawing, std::string& reason);

// The files of a drawing's external references (drawing: its own file), each once, as they are found: where the drawing
// says, beside it, on the support search path. A file that is not found is told as the drawing names it.
std::vector<std::wstring> referencesOf(AcDbDatabase& database, const std::wstring& drawing);

}  // namespace qrs::audit
