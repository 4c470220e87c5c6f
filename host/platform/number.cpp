// Numbers through the language's own conversions, which know no locale.
#include "host/platform/number.h"

#include <charconv>

#include "host/platform/plainreal.h"

namespace qrs::platform {

namespace {

template <typename Number>
std::optional<Number> parsed(std::string_view text) {
    Number value{};
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

}  // namespace

std::string formatReal(double value) {
    char room[32];
    const auto [end, failure] = std::to_chars(room, room + sizeof room, value);
    std::string text(room, failure == std::errc() ? end : room);
    if (text.find_first_not_of("-0123456789") == std::string::npos) text += ".0";
    return text;
}

std::optional<double> parseReal(std::string_view text) {
    double number = 0.0;
    return readPlainReal(text, number) ? number : parsed<double>(text);
}

std::optional<std::int32_t> parseInteger(std::string_view text) {
    return parsed<std::int32_t>(text);
}

}  // namespace qrs::platform
