// Numbers and points as they are typed.
#include "host/editor/points.h"

#include <cmath>
#include <optional>

#include "host/platform/codepage.h"
#include "host/platform/number.h"

namespace qrs::host::ed {

bool parseReal(const std::wstring& text, double& value) {
    const std::optional<double> read = platform::parseReal(platform::toUtf8(text));
    if (!read || !std::isfinite(*read)) return false;
    value = *read;
    return true;
}

bool parseInteger(const std::wstring& text, int& value) {
    const std::optional<std::int32_t> read = platform::parseInteger(platform::toUtf8(text));
    if (read) value = *read;
    return read.has_value();
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
