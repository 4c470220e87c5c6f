// The pipe-system standard of a run.
#include "qrs_standard.h"

#include "host/platform/files.h"
#include "host/platform/settings.h"
#include "qrs_kernal.h"

namespace {

constexpr const wchar_t* kChoiceKey = L"PipeSystemSetting";
constexpr const wchar_t* kChoiceValue = L"StandardFile";
constexpr const wchar_t* kDefaultFile = L"pwx.qdsl";

std::wstring inSystemFolder(const std::wstring& name) {
    return qrs::platform::joinPath(g_csSysPath.view(), name);
}

QrsExport::TStandardInUse& standardInUse() {
    static QrsExport::TStandardInUse standard;
    return standard;
}

}  // namespace

std::wstring QrsExport::ChosenStandardFile() {
    const std::wstring value = TRegKey(GetRegLocation(kChoiceKey)).GetString(kChoiceValue, L"");
    if (value.empty() || value.find(L'\\') != std::wstring::npos) return value;
    return value.find(L'/') != std::wstring::npos ? qrs::platform::innerFromTyped(value) : inSystemFolder(value);
}

std::wstring QrsExport::DefaultStandardFile() {
    return inSystemFolder(kDefaultFile);
}

std::wstring QrsExport::StandardFileToLoad() {
    const std::wstring chosen = ChosenStandardFile();
    // A folder is no file that could have been chosen.
    const bool isFile = !chosen.empty() && !IsStandardFileMissing(chosen) && !qrs::platform::folderExists(chosen);
    return isFile ? chosen : DefaultStandardFile();
}

bool QrsExport::IsStandardFileMissing(const std::wstring& path) {
    qrs::platform::Error unreachable;
    return qrs::platform::presenceOf(path, unreachable) == qrs::platform::Presence::Missing;
}

bool QrsExport::ChooseStandardFile(const std::wstring& file) {
    return TRegKey(GetRegLocation(kChoiceKey)).WriteString(kChoiceValue, file);
}

void QrsExport::UseDefaultStandardFile() {
    qrs::platform::Settings::user().holdText(GetRegLocation(kChoiceKey), kChoiceValue, L"");
}

void QrsExport::SetStandardInUse(const TStandardInUse& standard) {
    standardInUse() = standard;
}

const QrsExport::TStandardInUse& QrsExport::GetStandardInUse() {
    return standardInUse();
}
