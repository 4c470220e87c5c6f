// The entities of a drawing's spaces.
#include "host/drawing/spaces.h"

#include <string_view>

#include "host/dxf/groupcodes.h"
#include "host/platform/codepage.h"

namespace qrs::host {

namespace {

bool startsWithNoCase(std::string_view text, std::string_view start) {
    if (text.size() < start.size()) return false;
    return platform::compareNoCase(platform::fromUtf8(text.substr(0, start.size())), platform::fromUtf8(start)) == 0;
}

}  // namespace

EntitySpace spaceOf(const Block& block) {
    return block.space == Space::None ? EntitySpace{Space::None, block.head} : EntitySpace{block.space, dxf::kNoRecord};
}

bool liesInLayout(const dxf::Drawing& drawing, dxf::RecordId id) {
    const dxf::RecordId owner = drawing.record(id).owner;
    if (owner == dxf::kNoRecord) return false;
    if (drawing.record(owner).kind == dxf::RecordKind::Section) return true;
    if (drawing.record(owner).kind != dxf::RecordKind::Block) return false;
    dxf::Tag tag;
    if (!drawing.findTag(owner, dxf::codes::kName, tag)) return false;
    const std::string_view name = dxf::trimmed(tag.value);
    // Drawings before R2000 write a dollar sign for the asterisk.
    return startsWithNoCase(name, "*Paper_Space") || startsWithNoCase(name, "*Model_Space") ||
           startsWithNoCase(name, "$Paper_Space") || startsWithNoCase(name, "$Model_Space");
}

bool liesInSpace(const dxf::Drawing& drawing, EntitySpace space, dxf::RecordId id) {
    const dxf::Record& record = drawing.record(id);
    if (record.owner == dxf::kNoRecord) return false;
    if (space.head != dxf::kNoRecord) return record.owner == space.head;
    if (space.kind == Space::None || drawing.record(record.owner).kind != dxf::RecordKind::Section) return false;
    return ((record.flags & dxf::kPaperSpace) != 0) == (space.kind == Space::Paper);
}

}  // namespace qrs::host
