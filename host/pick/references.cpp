// Finding and reading external references.
#include "host/pick/references.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/platform/codepage.h"
#include "host/platform/files.h"

namespace qrs::host::pick {

namespace {

constexpr wchar_t kExtension[] = L".dxf";

std::wstring withExtension(const std::wstring& path) {
    const std::size_t name = path.rfind(L'\\') + 1;  // npos + 1 is 0
    const std::size_t dot = path.rfind(L'.');
    const bool hasExtension = dot != std::wstring::npos && dot > name;
    return path.substr(0, hasExtension ? dot : path.size()) + kExtension;
}

}  // namespace

const References::File* References::find(const std::wstring& path, const std::wstring& folder, const Locate& locate) {
    const std::wstring written = platform::innerFromTyped(path);
    const std::wstring bare = written.substr(written.rfind(L'\\') + 1);
    if (bare.empty()) return nullptr;
    std::vector<std::wstring> candidates;
    for (const std::wstring& name : {written, bare})
        for (const std::wstring& spelled : {name, withExtension(name)}) {
            if (!folder.empty()) candidates.push_back(platform::joinPath(folder, spelled));
            candidates.push_back(spelled);
        }
    for (const std::wstring& candidate : candidates) {
        const std::wstring place = locate(candidate);
        if (place.empty()) continue;
        if (const auto known = files_.find(place); known != files_.end()) return &known->second;
        platform::Error unreadable;  // a file of another kind: the next candidate may be the one
        std::unique_ptr<dxf::Drawing> drawing = dxf::Drawing::open(platform::nativePath(place), unreadable);
        if (!drawing) continue;
        File& file = files_[place];
        file.drawing = std::move(drawing);
        file.folder = place.substr(0, place.rfind(L'\\') + 1);
        return &file;
    }
    if (told_.count(path) == 0 && std::find(missing_.begin(), missing_.end(), path) == missing_.end())
        missing_.push_back(path);
    return nullptr;
}

std::vector<std::wstring> References::takeMissing() {
    told_.insert(missing_.begin(), missing_.end());
    return std::exchange(missing_, {});
}

bool References::isOne(const std::filesystem::path& native) const {
    const std::filesystem::path place = platform::fileMark(native).place;
    return std::any_of(files_.begin(), files_.end(), [&](const auto& file) {
        return platform::fileMark(platform::nativePath(file.first)).place == place;
    });
}

}  // namespace qrs::host::pick
