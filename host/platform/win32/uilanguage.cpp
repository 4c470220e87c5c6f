// The language of Windows' own windows.
#include "host/platform/inside/uilanguage.h"

#include <windows.h>

namespace qrs::platform {

Language uiLanguage() {
    return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_CHINESE ? Language::Chinese : Language::English;
}

}  // namespace qrs::platform
