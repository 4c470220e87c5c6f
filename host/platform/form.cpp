// Dialogs as classes, over dialogs as data.
#include "host/platform/form.h"

#include <utility>

namespace qrs::platform {

Form::Form(std::wstring title) : title_(std::move(title)) {}

Form::~Form() = default;

int Form::show() {
    form_ = std::make_unique<Dialog>(title_);
    ended_.reset();
    describe();
    // pressOk decides itself whether the form ends.
    form_->refuseOk = [this] {
        pressOk();
        return std::wstring(ended_ ? L"" : L"\n");
    };
    if (!ended_) showDialog(*form_);
    return ended_.value_or(kDialogCancel);
}

void Form::end(int result) {
    ended_ = result;
    if (form_) form_->close(result);
}

}  // namespace qrs::platform
