// The options' file setting.ini.
#include "dialogs/settingfiles.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/platform/number.h"
#include "qrs_dict.h"
#include "qrs_kernal.h"
#include "qrs_options.h"

namespace qrs::dialogs {

using platform::translated;

namespace {

void setValue(TWDict& section, const TPipeOption& option) {
    const double value = GetPipeOption(option);
    if (option.hasDecimals) {
        section.SetValue(option.name, value);
    } else {
        section.SetValue(option.name, static_cast<std::int32_t>(value));
    }
}

// False when the user's settings cannot be written.
bool takeValue(const TWDict& section, const TPipeOption& option) {
    std::wstring text;
    if (!section.GetValue(option.name, text)) return true;
    double value = 0.0;
    if (!section.GetValue(option.name, value) || !IsPipeOptionValue(option, value)) {
        QrsExport::PrintRefusal(L"\n%s 中“%s”的值“%s”无效，保留原值。\n", kOptionsFile, option.name, text.c_str());
        return true;
    }
    return SetPipeOption(option, value);
}

}  // namespace

void writeOptions(const std::wstring& folder) {
    TWDict file;
    std::wstring reason;
    bool done = file.ReadFile(folder + kOptionsFile, reason);
    for (std::size_t i = 0; done && PipeOptionAt(i); ++i) {
        const TPipeOption& option = *PipeOptionAt(i);
        if (TWDict* section = file.FindOrAddDict(option.section)) setValue(*section, option);
    }
    // A link of that name may lead out of the folder, so it is not written through.
    done = done && file.WriteFile(folder + kOptionsFile, reason, false);
    if (!done) QrsExport::FailWriting(translated(L"%1 was not written: %2", kOptionsFile, reason));
}

void readOptions(const std::wstring& folder) {
    TWDict file;
    std::wstring reason;
    if (!file.ReadFile(folder + kOptionsFile, reason)) {
        QrsExport::PrintRefusal(L"%s", translated(L"\n%1 was not read: %2\n", kOptionsFile, reason).c_str());
        return;
    }
    for (std::size_t i = 0; PipeOptionAt(i); ++i) {
        const TPipeOption& option = *PipeOptionAt(i);
        const TWDict* section = file.FindDict(option.section);
        if (!section || takeValue(*section, option)) continue;
        QrsExport::PrintRefusal(L"\n不能保存用户设置，其余选项保留原值。\n");
        return;
    }
}

}  // namespace qrs::dialogs
