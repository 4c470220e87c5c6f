// Finds the files of drawings, and those that one refers to.
#include "drawings.h"

#include <algorithm>
#include <memory>

#include "dbapserv.h"
#include "dbobjptr.h"
#include "facts.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "prompts.h"
#include "qrs_drawings.h"

namespace qrs::audit {

namespace {

constexpr int kLongestPath = 4096;

std::wstring nameOfFile(const std::wstring& path) {
    return path.substr(path.find_last_of(L'\\') + 1);
}

bool isWhole(const std::wstring& path) {
    return path.substr(0, 1) == L"\\" || path.substr(1, 1) == L":";
}

std::wstring found(const std::wstring& named, const std::wstring& drawing) {
    if (isWhole(named) && platform::fileExists(named)) return named;
    const std::wstring folder = drawing.substr(0, drawing.find_last_of(L'\\') + 1);
    const std::wstring name = nameOfFile(named);
    for (const std::wstring& candidate : {isWhole(named) ? std::wstring() : folder + named, folder + name})
        if (!candidate.empty() && platform::fileExists(candidate)) return candidate;
    ACHAR path[kLongestPath];
    const bool isFound =
        acdbHostApplicationServices()->findFile(path, kLongestPath, name.c_str(), nullptr,
                                                AcDbHostApplicationServices::kXRefDrawing) == Acad::eOk;
    return isFound ? std::wstring(path) : named;
}

}  // namespace

std::wstring fileOf(const AcDbDatabase& database) {
    const ACHAR* name = nullptr;
    return database.getFilename(name) == Acad::eOk && name != nullptr ? QrsExport::NamedFile(name) : std::wstring();
}

std::filesystem::path nativeFile(const std::wstring& path) {
    return path.empty() ? std::filesystem::path() : platform::nativePath(platform::wholePath(path));
}

bool readDrawing(const std::filesystem::path& native, QrsExport::TReadDrawing& drawing, std::string& reason) {
    platform::Error error;
    std::wstring why;
    if (isThere(native, error) && QrsExport::ReadDrawing(platform::innerPath(native), drawing, why)) return true;
    reason = error ? error.message : platform::toUtf8(why);
    return false;
}

std::vector<std::wstring> referencesOf(AcDbDatabase& database, const std::wstring& drawing) {
    std::vector<std::wstring> files;
    const AcDbBlockTablePointer table(&database);
    AcDbBlockTableIterator* made = nullptr;
    if (table.openStatus() != Acad::eOk || table->newIterator(made) != Acad::eOk) return files;
    const std::unique_ptr<AcDbBlockTableIterator> walk(made);
    for (; !walk->done(); walk->step()) {
        AcDbObjectId id;
        if (walk->getRecordId(id) != Acad::eOk) continue;
        const AcDbBlockTableRecordPointer block(id, AcDb::kForRead);
        ACHAR* path = nullptr;
        if (block.openStatus() != Acad::eOk || !block->isFromExternalReference()) continue;
        if (block->pathName(path) != Acad::eOk) continue;
        const std::wstring named = platform::innerFromTyped(taken(path));
        if (named.empty()) continue;
        const std::wstring file = found(named, drawing);
        if (std::find(files.begin(), files.end(), file) == files.end()) files.push_back(file);
    }
    return files;
}

}  // namespace qrs::audit
