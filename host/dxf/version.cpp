// The names of versions.
#include "host/dxf/version.h"

#include <algorithm>

#include "host/dxf/tags.h"

namespace qrs::dxf {

namespace {

// Versions whose number has a point came before those with four digits.
constexpr std::int64_t kFirstOfFourDigits = 1000;
constexpr std::int64_t kGreatest = 0xFFFF;

struct Release {
    Version version;
    std::string_view name;
};
constexpr Release kReleases[] = {
    {Version{1002}, "R2.5"},  {Version{1003}, "R2.6"},  {Version{1004}, "R9"},    {Version::R10, "R10"},
    {Version::R12, "R12"},    {Version::R13, "R13"},    {Version::R14, "R14"},    {Version::R2000, "2000"},
    {Version::R2004, "2004"}, {Version::R2007, "2007"}, {Version::R2010, "2010"}, {Version::R2013, "2013"},
    {Version::R2018, "2018"},
};

}  // namespace

Version versionOf(std::string_view acadVer) {
    constexpr std::size_t kLetters = 2;
    std::string_view number = trimmed(acadVer);
    if (number.size() <= kLetters) return Version::Oldest;
    number.remove_prefix(kLetters);
    const std::size_t point = number.find('.');
    const std::int64_t whole = toInteger(number.substr(0, point));
    if (point == std::string_view::npos) return Version(std::clamp<std::int64_t>(whole, 0, kGreatest));
    const std::int64_t hundredths = std::clamp<std::int64_t>(whole, 0, 9) * 100 +
                                    std::clamp<std::int64_t>(toInteger(number.substr(point + 1)), 0, 99);
    return Version(std::min(hundredths, kFirstOfFourDigits - 1));
}

std::optional<std::string_view> dwgVersionOf(std::string_view firstBytes) {
    // The version and a zero byte.
    if (firstBytes.size() < kDwgStartLength || firstBytes[kDwgStartLength - 1] != '\0') return std::nullopt;
    const std::string_view version = firstBytes.substr(0, kDwgStartLength - 1);
    if (version.substr(0, 2) != "AC") return std::nullopt;
    if (version.find_first_not_of("0123456789.", 2) != std::string_view::npos) return std::nullopt;
    return version;
}

std::string_view releaseOf(Version version) {
    for (const Release& release : kReleases)
        if (release.version == version) return release.name;
    return {};
}

}  // namespace qrs::dxf
