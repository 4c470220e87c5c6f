// Chooses the standard file, loads it and remembers the choice.
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "qrs_kernal.h"
#include "qrs_standard.h"
#include "standard/holder.h"
#include "standard/startup.h"
#include "standard/text.h"

namespace qrs::standard {

using platform::translated;
using platform::untranslated;

namespace {

constexpr const wchar_t* kDefaultServes = untranslated(L"The default standard serves this time.");
constexpr const wchar_t* kNoneServes = untranslated(L"There is no pipe-system standard now.");
constexpr const wchar_t* kLoadedServes = untranslated(L"The one that is loaded serves on.");

bool tellFailure(const platform::Error& error, const wchar_t* consequence) {
    QrsExport::PrintRefusal(L"%s", translated(L"\nThe standard file was not loaded: %1. %2\n",
                                              platform::fromUtf8(error.message), translated(consequence))
                                       .c_str());
    return false;
}

// False, with a message that ends in the consequence, when the file does not load.
bool load(StandardHolder& holder, const std::wstring& path, const wchar_t* consequence) {
    Standard standard;
    platform::Error error;
    if (!readStandard(path, standard, error)) return tellFailure(error, consequence);
    holder.adopt(std::move(standard), makeText(path));
    QrsExport::SetStandardInUse({path, false});
    return true;
}

bool loadBuiltin(StandardHolder& holder, const std::wstring& path) {
    Standard standard;
    platform::Error error;
    if (!parseStandard(builtinStandard(), platform::toUtf8(platform::shownPath(path)), standard, error)) return false;
    holder.adopt(std::move(standard), makeText(path));
    QrsExport::SetStandardInUse({path, true});
    return true;
}

// Told only when the next start would choose another file.
void remember(const std::wstring& path) {
    if (QrsExport::ChooseStandardFile(path)) return;
    if (platform::compareNoCase(QrsExport::ChosenStandardFile(), path) == 0) return;
    QrsExport::PrintRefusal(
        L"%s", translated(L"\nThe choice of the standard cannot be saved: %1\n", platform::shownPath(path)).c_str());
}

bool isDefault(const std::wstring& path) {
    return platform::compareNoCase(path, QrsExport::DefaultStandardFile()) == 0;
}

}  // namespace

bool loadCurrentStandard() {
    StandardHolder::start();
    StandardHolder& holder = StandardHolder::instance();
    if (holder.isLoaded()) return true;
    const std::wstring chosen = QrsExport::StandardFileToLoad();
    const bool choseDefault = isDefault(chosen);
    if (!choseDefault && load(holder, chosen, kDefaultServes)) {
        remember(chosen);
        return true;
    }
    const std::wstring byDefault = QrsExport::DefaultStandardFile();
    // A missing default file is no failure: the standard carried inside serves, and no choice is written.
    if (QrsExport::IsStandardFileMissing(byDefault)) return loadBuiltin(holder, byDefault);
    if (!load(holder, byDefault, kNoneServes)) return false;
    // When the chosen file failed, the choice stays: once the file is mended it counts again.
    if (choseDefault) remember(byDefault);
    return true;
}

bool reloadCurrentStandard() {
    StandardHolder& holder = StandardHolder::instance();
    if (holder.isLoaded()) {
        const std::wstring path = QrsExport::StandardFileToLoad();
        // Without any file what serves now serves on.
        if (QrsExport::IsStandardFileMissing(path) || !load(holder, path, kLoadedServes)) return false;
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
