// Chooses the standard file, loads it and remembers the choice.
#include "acutads.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "qrs_kernal.h"
#include "standard/holder.h"
#include "standard/startup.h"
#include "standard/text.h"

namespace qrs::standard {
namespace {

constexpr const wchar_t* kDefaultFile = L"pwx.qdsl";
constexpr const wchar_t* kChoiceKey = L"PipeSystemSetting";
constexpr const wchar_t* kChoiceValue = L"StandardFile";

// The user's choice as a full path; empty when there is none or no file lies there.
std::wstring chosenFile(const std::wstring& value) {
    if (value.empty()) return {};
    const bool bareName = value.find(L'\\') == std::wstring::npos;
    std::wstring path = bareName ? platform::joinPath(view(g_csSysPath), value) : value;
    return platform::fileExists(path) ? path : std::wstring();
}

// False, with a message that ends in the consequence, when the file does not load.
bool load(StandardHolder& holder, const std::wstring& path, const wchar_t* consequence) {
    Standard standard;
    platform::Error error;
    if (!readStandard(path, standard, error)) {
        acutPrintf(L"\n管线系统标准文件没有载入：%s。%s\n", platform::fromUtf8(error.message).c_str(), consequence);
        return false;
    }
    holder.adopt(std::move(standard), makeText(path));
    return true;
}

void remember(const std::wstring& path) {
    if (!TRegKey(GetRegLocation(kChoiceKey)).WriteString(kChoiceValue, path)) {
        acutPrintf(L"\n不能保存当前管线系统标准的设置：%s\n", path.c_str());
    }
}

bool loadBuiltin(StandardHolder& holder, const std::wstring& path) {
    Standard standard;
    platform::Error error;
    if (!parseStandard(builtinStandard(), platform::toUtf8(path), standard, error)) return false;
    holder.adopt(std::move(standard), makeText(path));
    return true;
}

std::wstring chosenFile() {
    return chosenFile(TRegKey(GetRegLocation(kChoiceKey)).GetString(kChoiceValue, L""));
}

std::wstring defaultFile() {
    return platform::joinPath(view(g_csSysPath), kDefaultFile);
}

}  // namespace

bool loadCurrentStandard() {
    StandardHolder& holder = StandardHolder::instance();
    if (holder.isLoaded()) return true;
    const std::wstring chosen = chosenFile();
    const std::wstring byDefault = defaultFile();
    const bool choseDefault = chosen.empty() || platform::compareNoCase(chosen, byDefault) == 0;
    if (!choseDefault) {
        if (load(holder, chosen, L"本次改用默认标准。")) {
            remember(chosen);
            return true;
        }
    }
    // A missing default file is no failure: the standard carried inside serves, and no choice is written.
    if (!platform::fileExists(byDefault)) return loadBuiltin(holder, byDefault);
    if (!load(holder, byDefault, L"现在没有管线系统标准。")) return false;
    // When the chosen file failed, the choice stays: once the file is mended it counts again.
    if (choseDefault) remember(byDefault);
    return true;
}

bool reloadCurrentStandard() {
    StandardHolder& holder = StandardHolder::instance();
    if (holder.isLoaded()) {
        const std::wstring chosen = chosenFile();
        const std::wstring path = chosen.empty() ? defaultFile() : chosen;
        // Without any file what serves now serves on.
        if (!platform::fileExists(path) || !load(holder, path, L"仍使用已载入的标准。")) return false;
        remember(path);
    } else if (!loadCurrentStandard()) {
        return false;
    }
    readOldLayerDefinitions();
    convertOldSystemNames();
    applyObjectColors();
    readLinetypeTextSettings();
    initLayerMaps();
    return true;
}

}  // namespace qrs::standard
