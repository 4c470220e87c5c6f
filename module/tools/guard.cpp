// Tells a failure through the suite's error line.
#include "tools/guard.h"

#include "host/platform/codepage.h"
#include "host/platform/error.h"
#include "host/platform/language.h"
#include "qrs_kernal.h"

void qrs::tools::tellFailure(const std::exception* reason) noexcept {
    try {
        QrsExport::FailCommand(L"qrs_pipeSystem: " + (reason ? platform::fromUtf8(platform::reasonOf(*reason))
                                                             : platform::translated(L"an unknown exception")));
    } catch (...) {
        // Not even memory for the message: what is left is to go on.
    }
}
