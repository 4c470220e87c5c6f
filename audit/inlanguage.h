// Another language for a while.
#pragma once

#include "host/platform/language.h"

namespace qrs::audit {

// What programs read, and what files name, does not follow the user's language.
class InLanguage {
  public:
    explicit InLanguage(platform::Language language) : before_(platform::language()) {
        platform::setLanguage(language);
    }
    ~InLanguage() { platform::setLanguage(before_); }
    InLanguage(const InLanguage&) = delete;
    InLanguage& operator=(const InLanguage&) = delete;

  private:
    platform::Language before_;
};

// For a report in that form: English where programs read it.
inline platform::Language languageOfReport(bool isForPrograms) {
    return isForPrograms ? platform::Language::English : platform::language();
}

}  // namespace qrs::audit
