// The window over which others are shown.
#include "host/platform/window.h"

namespace qrs::platform {

namespace {

void* theOwner = nullptr;

}  // namespace

void setWindowOwner(void* window) {
    theOwner = window;
}

void* windowOwner() {
    return theOwner;
}

}  // namespace qrs::platform
