// Numbers and points as they are typed.
#include "points.h"

#include <cmath>
#include <cstdlib>
#include <locale>
#include <sstream>

namespace qrs::host::ed {

namespace {

bool isNumberText(const std::wstring& text) {
    return !text.empty() && text.find_first_not_of(L"+-0123456789.eE") == std::wstring::npos;
}

}  // namespace

bool parseReal(const std::wstring& text, double& value) {
    if (!isNumberText(text)) return false;
    // Numbers of the command line have a decimal point whatever the system's language is.
    std::istringstream stream(std::string(text.begin(), text.end()));
    stream.imbue(std::locale::classic());
    double read = 0;
    stream >> read;
    if (stream.fail() || stream.peek() != std::istringstream::traits_type::eof() || !std::isfinite(read)) return false;
    value = read;
    return true;
}

bool parseInteger(const std::wstring& text, long long& value) {
    if (text.empty() || text.size() > 15) return false;
    if (text.find_first_not_of(L"0123456789", text.find_first_of(L"+-") == 0 ? 1 : 0) != std::wstring::npos)
        return false;
    if (text.find_first_of(L"0123456789") == std::wstring::npos) return false;
    value = std::strtoll(std::string(text.begin(), text.end()).c_str(), nullptr, 10);
    return true;
}

bool parsePoint(const std::wstring& text, const double* base, double* point) {
    const bool relative = !text.empty() && text.front() == L'@';
    std::wstring rest = relative ? text.substr(1) : text;
    double read[3] = {0, 0, 0};
    int count = 0;
    for (bool more = true; more; ++count) {
        const std::size_t comma = rest.find(L',');
        more = comma != std::wstring::npos;
        if (count == 3 || !parseReal(rest.substr(0, comma), read[count])) return false;
        rest.erase(0, more ? comma + 1 : rest.size());
    }
    if (count < 2) return false;
    for (int i = 0; i < 3; ++i)
        point[i] = read[i] + (relative && base ? base[i] : 0.0);
    return true;
}

}  // namespace qrs::host::ed
