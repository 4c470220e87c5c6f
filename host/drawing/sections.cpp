// Finds a section by its name and makes it in its place where the file has none.
#include "host/drawing/sections.h"

#include <algorithm>

#include "host/dxf/groupcodes.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;

RecordId ensureSection(dxf::Drawing& drawing, std::string_view name) {
    static constexpr std::string_view kOrder[] = {"HEADER",   "CLASSES", "TABLES",   "BLOCKS",
                                                  "ENTITIES", "OBJECTS", "ACDSDATA", "THUMBNAILIMAGE"};
    RecordId section = drawing.findSection(name);
    if (section != kNoRecord) return section;
    RecordId before = kNoRecord;
    for (auto later = std::find(std::begin(kOrder), std::end(kOrder), name); later != std::end(kOrder); ++later) {
        before = drawing.findSection(*later);
        if (before != kNoRecord) break;
    }
    if (before == kNoRecord) {
        for (RecordId id = drawing.first(); id != kNoRecord; id = drawing.next(id))
            if (drawing.record(id).kind == RecordKind::EndOfFile) before = id;
    }
    section = drawing.insertRecord(before, RecordKind::Section,
                                   {{dxf::codes::kType, "SECTION"}, {dxf::codes::kName, std::string(name)}});
    drawing.insertRecord(before, RecordKind::EndSection, {{dxf::codes::kType, "ENDSEC"}});
    return section;
}

}  // namespace qrs::host
