// Asks the suite which standard file a run with its options takes, and tells it.
#include "console/standard.h"

#include "console/places.h"
#include "console/run.h"
#include "host/objectarx/accmd.h"
#include "host/objectarx/acedads.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/inputfile.h"
#include "host/platform/language.h"
#include "host/suite/kernel/qrs_kernal.h"

namespace qrs::console {

using platform::translated;

namespace {

void tellStandard() {
    const QrsExport::TStandardInUse& standard = QrsExport::GetStandardInUse();
    const std::string text = standard.file.empty() ? translated("\nNo pipe-system standard is loaded.")
                                                   : translated("\nStandard: %1", shownStandard(standard));
    acedPrompt(platform::fromUtf8(text).c_str());
}

}  // namespace

void registerStandardCommand() {
    if (AcEdCommandStack* const stack = acedRegCmds)
        stack->addCommand(L"HOST_COMMANDS", L"STANDARD", L"STANDARD", ACRX_CMD_TRANSPARENT, &tellStandard);
}

QrsExport::TStandardInUse standardToUse(const Options& options) {
    QrsExport::SetSystemFolder(systemFolder(options));
    const std::wstring byDefault = QrsExport::DefaultStandardFile();
    for (const std::wstring& file : {QrsExport::StandardFileToLoad(), byDefault}) {
        const bool isMissing = QrsExport::IsStandardFileMissing(file);
        platform::Error error;
        if (isMissing || platform::InputFile::open(platform::nativePath(file), error)) return {file, isMissing};
        complain(error.message);
        if (file == byDefault) break;
    }
    return {};
}

std::string shownStandard(const QrsExport::TStandardInUse& standard) {
    if (standard.file.empty()) return translated("none");
    const std::string path = platform::nativePath(standard.file).u8string();
    return standard.isBuiltIn ? translated("built in (there is no %1)", path) : path;
}

}  // namespace qrs::console
