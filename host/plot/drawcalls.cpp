// Finds the library that draws, and keeps it.
#include "host/plot/drawcalls.h"

#include <filesystem>
#include <memory>

#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/library.h"

namespace qrs::host::plot {

namespace {

constexpr const char* kFileName = "qrs_pictures.so";

struct Found {
    std::unique_ptr<platform::Library> library;
    const DrawCalls* calls = nullptr;
    std::string reason;
};

// As built it lies beside the program; installed, where the plug-ins lie.
std::filesystem::path libraryFile() {
    const std::filesystem::path folder = platform::programFolder();
    const std::filesystem::path installed = folder.parent_path() / "lib" / "qrs_pipeSystem" / kFileName;
    return platform::fileExists(platform::innerPath(installed)) ? installed : folder / kFileName;
}

Found find() {
    Found found;
    platform::Error error;
    found.library = platform::Library::load(libraryFile(), error);
    void* const entry = found.library ? found.library->symbol("qrsDrawCalls") : nullptr;
    if (entry)
        found.calls = reinterpret_cast<const DrawCalls* (*)()>(entry)();
    else
        found.reason = error ? error.message : kFileName;
    return found;
}

const Found& found() {
    static const Found once = find();
    return once;
}

}  // namespace

std::string findMissingLibrary() {
    if (found().calls) return {};
    return platform::translated("pictures cannot be drawn, as a library is missing: %1", found().reason);
}

const DrawCalls& calls() {
    return *found().calls;
}

}  // namespace qrs::host::plot
