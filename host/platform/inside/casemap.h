// Upper and lower case of single code points, the same on every system and in every locale.
#pragma once

namespace qrs::platform {

// Code points without a counterpart are given back. Nothing outside ASCII is mapped into it, so names that differ in
// such a character stay different.
char32_t upperCase(char32_t codePoint);
char32_t lowerCase(char32_t codePoint);

}  // namespace qrs::platform
