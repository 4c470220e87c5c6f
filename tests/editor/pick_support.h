// Drawings for picking: text put together from entities, with a view in which a pick box reaches 0.3 units.
#pragma once

#include <string>

#include "dbhandle.h"
#include "dbid.h"
#include "support.h"

namespace edtest {

// "0 LINE 10 1.0": tags written in one line; '~' stands for a blank in a value.
inline std::string tags(const std::string& line) {
    std::string text;
    for (const char c : line)
        text += c == ' ' ? '\n' : c == '~' ? ' ' : c;
    return text.empty() ? text : text + "\n";
}

struct Parts {
    std::string layers;
    std::string blocks;
    std::string entities;
    std::string objects;
    std::string header = "9 $TILEMODE 70 1";
};

inline std::string drawingOf(const Parts& parts) {
    std::string text = tags("0 SECTION 2 HEADER 9 $ACADVER 1 AC1015") + tags(parts.header) + tags("0 ENDSEC");
    text += tags(
        "0 SECTION 2 TABLES 0 TABLE 2 VPORT 70 1 0 VPORT 5 F0 100 AcDbViewportTableRecord 2 *ACTIVE 70 0 12 5.0 "
        "22 5.0 17 0.0 27 0.0 37 0.0 40 100.0 41 1.6 0 ENDTAB 0 TABLE 2 LAYER 70 9 0 LAYER 5 F1 2 0 70 0 62 7 6 "
        "CONTINUOUS");
    text += tags(parts.layers) + tags("0 ENDTAB 0 ENDSEC 0 SECTION 2 BLOCKS") + tags(parts.blocks) +
            tags("0 ENDSEC 0 SECTION 2 ENTITIES") + tags(parts.entities) + tags("0 ENDSEC 0 SECTION 2 OBJECTS") +
            tags(parts.objects) + tags("0 ENDSEC 0 EOF");
    return text;
}

inline std::wstring handleOf(AcDbObjectId id) {
    ACHAR handle[17] = L"";
    id.handle().getIntoAsciiBuffer(handle);
    return handle;
}

inline std::wstring handlesOf(const AcDbObjectIdArray& ids) {
    std::wstring text;
    for (const AcDbObjectId& id : ids)
        text += (text.empty() ? L"" : L" ") + handleOf(id);
    return text;
}

}  // namespace edtest
