// The language the system itself speaks to its user.
#pragma once

#include "host/platform/language.h"

namespace qrs::platform {

// English where the system has no choice of its own beside the environment.
Language uiLanguage();

}  // namespace qrs::platform
