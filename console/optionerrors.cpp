// Finds the parts of what the library of options says, and says it again.
#include "console/optionerrors.h"

#include <optional>
#include <string_view>
#include <vector>

#include "host/platform/language.h"

namespace qrs::console {

namespace {

using platform::untranslated;

constexpr const char* kTexts[] = {
    untranslated("The following argument was not expected: %1"),
    untranslated("The following arguments were not expected: %1"),
    untranslated("Could not convert: %1 = %2"),
    untranslated("Expected exactly %1 arguments to %2, got %3"),
    untranslated("Expected at least %1 arguments to %2, got %3"),
    untranslated("%1: %2 required %3 missing"),
    untranslated("%1: At least %2 required but received %3"),
    untranslated("%1: At Most %2 required but received %3"),
    untranslated("%1 was given a disallowed flag override"),
    untranslated("%1 excludes %2"),
};

// What stands for "%1", "%2" and so on, in this order, in a text of this form.
std::optional<std::vector<std::string>> partsOf(std::string_view form, std::string_view text) {
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t next = form.find('%');
        const std::string_view fixed = form.substr(0, next);
        const std::size_t at =
            next == std::string_view::npos && parts.size() > 0 && fixed.empty() ? text.size() : text.find(fixed);
        if (at == std::string_view::npos || (parts.empty() && at != 0)) return std::nullopt;
        if (!parts.empty()) parts.back() = text.substr(0, at);
        text.remove_prefix(at + fixed.size());
        if (next == std::string_view::npos) break;
        form.remove_prefix(next + 2);
        parts.emplace_back();
    }
    return text.empty() ? std::optional(parts) : std::nullopt;
}

}  // namespace

std::string inLanguage(const std::string& told) {
    for (const char* text : kTexts)
        if (const auto parts = partsOf(text, told)) return platform::translatedText(text, *parts);
    return told;
}

}  // namespace qrs::console
