// The linetypes of a drawing as patterns.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/dxf/drawing.h"

namespace qrs::host::plot {

// A dash (> 0), dot (0) or gap (< 0), and what stands at its end.
struct Dash {
    double length = 0.0;  // drawing units
    std::wstring text;    // empty: none, or a shape
    long shape = 0;       // number in its file; 0: none
    std::wstring style;   // text style
    double scale = 1.0;
    double rotation = 0.0;   // radians
    bool isUpright = false;  // turned from the drawing's axis, not from the line
    double offsetX = 0.0;
    double offsetY = 0.0;

    bool operator==(const Dash& other) const;
};

struct Linetype {
    std::vector<Dash> dashes;
    double length = 0.0;  // of all
};

class Linetypes {
  public:
    explicit Linetypes(const dxf::Drawing& drawing) : drawing_(drawing) {}

    // Null for lines without gaps. Names are folded.
    const Linetype* find(const std::wstring& foldedName) const;

  private:
    void read() const;

    const dxf::Drawing& drawing_;
    mutable bool isRead_ = false;
    mutable std::map<std::wstring, Linetype> linetypes_;
};

}  // namespace qrs::host::plot
