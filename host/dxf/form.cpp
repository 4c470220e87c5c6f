// What both forms of drawings share.
#include "host/dxf/form.h"

namespace qrs::dxf {

void appendSpelled(std::string_view value, std::string& out) {
    for (const char c : value) {
        if (c == '\n') {
            out += "^J";
        } else if (c == '\r') {
            out += "^M";
        } else {
            out += c;
        }
    }
}

}  // namespace qrs::dxf
