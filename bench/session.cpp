// Opens a drawing, thaws every layer, saves it: the driver of compare.sh.
//
//     qrs_dxf_session IN OUT [move]      move: also puts every second entity on layer "0"
#include <cstdio>
#include <string>

#include "host/dxf/drawing.h"

namespace {

using namespace qrs::dxf;

void thawLayers(Drawing& drawing) {
    const RecordId table = drawing.findTable("LAYER");
    if (table == kNoRecord) return;
    Tag tag;
    for (RecordId id = drawing.next(table); id != kNoRecord && id != drawing.endOf(table); id = drawing.next(id)) {
        if (!drawing.findTag(id, 70, tag)) continue;
        // Changed and changed back counts too: every record of the table shall be rewritten once.
        const std::int64_t flags = toInteger(tag.value);
        drawing.setValue(id, tag, std::to_string((flags & 1) != 0 ? flags & ~std::int64_t{1} : flags | 4));
    }
}

void moveEntities(Drawing& drawing) {
    bool second = false;
    Tag tag;
    for (RecordId id = drawing.first(); id != kNoRecord; id = drawing.next(id)) {
        if (drawing.record(id).kind != RecordKind::Entity) continue;
        second = !second;
        if (second && drawing.findTag(id, 8, tag)) drawing.setValue(id, tag, "0");
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 3) {
        std::fprintf(stderr, "usage: qrs_dxf_session IN OUT [move]\n");
        return 2;
    }
    qrs::platform::Error error;
    const auto drawing = Drawing::open(arguments[1], error);
    if (drawing != nullptr) {
        thawLayers(*drawing);
        if (count > 3 && std::string(arguments[3]) == "move") moveEntities(*drawing);
        if (drawing->save(arguments[2], false, error)) return 0;
    }
    std::fprintf(stderr, "qrs_dxf_session: %s\n", error.message.c_str());
    return 1;
}
