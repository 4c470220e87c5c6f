// The variables of a drawing's header that are kept as data here. Names are without '$'.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/drawing/contents.h"

namespace qrs::host {

enum class HeaderKind : std::uint8_t { Short, Real, Point2, Point3, Text, Layer, Linetype, TextStyle, DimStyle, Color };

constexpr double kLeastHeader = -1e300;
constexpr double kMostHeader = 1e300;

// Code, kind, first version that knows it, value of a new drawing, and the range setting it allows.
struct HeaderFormat {
    const char* name;
    int code;
    HeaderKind kind;
    dxf::Version since;
    const char* fallback;  // x of a point; y and z are then 0
    double low = kLeastHeader;
    double high = kMostHeader;
    bool readOnly = false;

    bool isNumber() const { return kind == HeaderKind::Short || kind == HeaderKind::Real; }
    // Coordinates of a point; 0 for what is none.
    unsigned axes() const { return kind == HeaderKind::Point2 ? 2 : kind == HeaderKind::Point3 ? 3 : 0; }
};

// Without regard to case; null when the name is none.
const HeaderFormat* headerFormat(std::wstring_view name);
std::vector<std::wstring> headerNames();

// The variable's value; one the file lacks has that of a new drawing.
double headerReal(const dxf::Drawing& drawing, const HeaderFormat& format, unsigned axis = 0);
std::int64_t headerInteger(const dxf::Drawing& drawing, const HeaderFormat& format);
// Colours as the editor spells them: a palette index, "BYBLOCK" or "BYLAYER".
std::wstring headerText(const dxf::Drawing& drawing, const HeaderFormat& format);

// A variable the file lacks is put into it; a value equal to the present one touches nothing.
enum class HeaderChange : std::uint8_t { Done, OutOfRange, NoSuchValue, FrozenLayer };
HeaderChange setHeaderNumber(dxf::Drawing& drawing, const HeaderFormat& format, double value);
void setHeaderPoint(dxf::Drawing& drawing, const HeaderFormat& format, const double* coordinates);
// A name must be one the drawing has; it is written as the table spells it.
HeaderChange setHeaderText(Contents& contents, const HeaderFormat& format, std::wstring text);

}  // namespace qrs::host
