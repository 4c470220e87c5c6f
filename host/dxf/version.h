// Versions of drawings, in the order they came.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace qrs::dxf {

// The number after "AC" in $ACADVER. Others than those named occur: drawings of a later version are read like those of
// the last one named, and what has no number is held to what the oldest drawings can.
enum class Version : std::uint16_t {
    Oldest = 0,
    R10 = 1006,
    R12 = 1009,
    R13 = 1012,
    R14 = 1014,
    R2000 = 1015,
    R2004 = 1018,
    R2007 = 1021,
    R2010 = 1024,
    R2013 = 1027,
    R2018 = 1032,
};

// The first version that can do a thing.
constexpr Version kFirstWithHandles = Version::R13;  // in every drawing; older ones may have them
constexpr Version kFirstWithSubclasses = Version::R13;
constexpr Version kFirstWithObjects = Version::R13;
constexpr Version kFirstWithOwners = Version::R2000;  // as code 330
constexpr Version kFirstInUtf8 = Version::R2007;

// The version that a value of $ACADVER names: "AC1024", but also "AC2.10", which is older than all with four digits.
Version versionOf(std::string_view acadVer);

// The version in the first bytes of a DWG file; nothing for the bytes of other files.
std::optional<std::string_view> dwgVersionOf(std::string_view firstBytes);
constexpr std::size_t kDwgStartLength = 7;

// What a version is called: "R12", "2010"; empty for one that has no name here.
std::string_view releaseOf(Version version);

}  // namespace qrs::dxf
