// Tables that say what is to become of names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/platform/error.h"

namespace qrs::audit {

// What is to become of names that fit a pattern.
struct Mapping {
    enum class Kind { Layer, Linetype, TextStyle, PipeSystem };

    int line = 0;
    Kind kind = Kind::Layer;
    std::wstring from;  // with the wildcards "?" and "*"
    std::wstring to;
};

// Rows of a pattern, a name and what it is: layer, linetype, textstyle or system. False, with file and line in error,
// when a row is none, or names a system that the standard does not have.
bool readMappings(const std::wstring& path, std::vector<Mapping>& mappings, platform::Error& error);

// Of several rows that fit a name the first one counts.
bool fits(const Mapping& mapping, std::wstring_view name);

}  // namespace qrs::audit
