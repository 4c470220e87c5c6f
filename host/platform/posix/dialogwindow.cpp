// This system shows no windows of its own: who carries the module presents its dialogs.
#include "host/platform/inside/dialogwindow.h"

namespace qrs::platform {

DialogPresenter* windowPresenter() {
    return nullptr;
}

}  // namespace qrs::platform
