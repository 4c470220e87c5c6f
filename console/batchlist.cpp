// Reads lists of drawings and finds a place for each.
#include "console/batchlist.h"

#include <algorithm>
#include <map>

#include "console/run.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"

namespace qrs::console {

using platform::translated;

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

fs::path placeOf(const BatchItem& item) {
    const fs::path path = item.drawing.lexically_normal();
    const bool leadsUp = path.has_root_path() || (!path.empty() && *path.begin() == "..");
    return item.isListed && !leadsUp ? path : path.filename();
}

// Names in a list are UTF-8 as in scripts, or else the bytes of the name itself, or text of the ANSI code page.
fs::path listedDrawing(const std::string& name) {
    const fs::path typed = platform::nativeFromTyped(name);
    std::wstring text;
    if (platform::decodeStrict(platform::kUtf8, name, text) || platform::fileExists(platform::innerPath(typed)))
        return typed;
    return platform::nativeFromTyped(platform::toUtf8(platform::decode(platform::ansiCodePage(), name)));
}

}  // namespace

std::vector<std::string> namesOf(std::string_view list) {
    if (list.substr(0, kByteOrderMark.size()) == kByteOrderMark) list.remove_prefix(kByteOrderMark.size());
    const char end = list.find('\0') != std::string_view::npos ? '\0' : '\n';
    std::vector<std::string> names;
    while (!list.empty()) {
        const std::size_t length = std::min(list.find(end), list.size());
        std::string_view name = list.substr(0, length);
        list.remove_prefix(std::min(length + 1, list.size()));
        if (end == '\n' && !name.empty() && name.back() == '\r') name.remove_suffix(1);
        if (!name.empty()) names.emplace_back(name);
    }
    return names;
}

bool collectDrawings(const Options& options, std::vector<BatchItem>& items, platform::Error& error) {
    for (const fs::path& drawing : options.drawings)
        items.push_back({drawing, false, {}});
    if (!options.list) return true;
    std::string list;
    if (*options.list == "-")
        list = readStandardInput();
    else if (!platform::readFile(*options.list, list, error))
        return false;
    for (const std::string& name : namesOf(list))
        items.push_back({listedDrawing(name), true, {}});
    return true;
}

bool chooseOutputs(const fs::path& folder, std::vector<BatchItem>& items, platform::Error& error) {
    std::map<std::wstring, const BatchItem*> places;
    for (BatchItem& item : items) {
        item.output = folder / placeOf(item);
        const auto [place, isNew] = places.emplace(platform::foldCase(platform::innerPath(item.output)), &item);
        if (isNew) continue;
        error.message = translated("%1 and %2 would both be written to %3", place->second->drawing.u8string(),
                                   item.drawing.u8string(), item.output.u8string());
        return false;
    }
    return true;
}

}  // namespace qrs::console
