// What the library of options says, in the language of the program.
#pragma once

#include <string>

namespace qrs::console {

// The library speaks English alone. A text of it that is not known here stays as it is.
std::string inLanguage(const std::string& told);

}  // namespace qrs::console
