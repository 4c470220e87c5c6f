// The environment says it all.
#include "host/platform/inside/uilanguage.h"

namespace qrs::platform {

Language uiLanguage() {
    return Language::English;
}

}  // namespace qrs::platform
