// The one standard of the process.
#include "standard/holder.h"

#include <utility>

#include "host/platform/language.h"
#include "qrs_kernal.h"

namespace qrs::standard {

using platform::translated;

namespace {

std::unique_ptr<StandardHolder>& holder() {
    static std::unique_ptr<StandardHolder> only;
    return only;
}

// True from the first attempt to load a standard on, whatever became of it.
bool wasStarted = false;

// A sibling that is linked against the module has it mapped; without its start there is nothing to answer from. Told
// once, since answers of a miss look like answers.
void tellNotStarted() {
    static bool isTold = false;
    if (wasStarted || std::exchange(isTold, true)) return;
    QrsExport::PrintRefusal(
        L"%s",
        translated(L"\nThe module qrs_pipeSystem has not been started: there is no standard to ask. Load it first.\n")
            .c_str());
}

}  // namespace

StandardHolder& StandardHolder::instance() {
    if (!holder()) holder().reset(new StandardHolder);
    return *holder();
}

void StandardHolder::release() {
    holder().reset();
}

void StandardHolder::start() {
    wasStarted = true;
}

void StandardHolder::adopt(Standard standard, const CString& path) {
    start();
    standard_ = std::move(standard);
    path_ = path;
    loaded_ = true;
}

Standard* currentStandard() {
    StandardHolder& current = StandardHolder::instance();
    if (current.isLoaded()) return &current.standard();
    tellNotStarted();
    return nullptr;
}

}  // namespace qrs::standard
