// Records of the section CLASSES: finding, adding and counting on.
#include "host/drawing/classcounts.h"

#include "host/drawing/objecttags.h"
#include "host/drawing/sections.h"
#include "host/dxf/classcodes.h"
#include "host/platform/codepage.h"

namespace qrs::host {

using dxf::kNoRecord;
using dxf::RecordId;
using dxf::RecordKind;
namespace classes = dxf::codes::classes;

namespace {

constexpr dxf::Version kFirstWithCount = dxf::Version::R2004;
constexpr RecordId kNotLookedUp = kNoRecord - 1;

// Calls visitor(record) for each CLASS of the drawing until it gives false.
template <typename Visitor>
void visitClasses(const dxf::Drawing& drawing, Visitor&& visitor) {
    const RecordId section = drawing.findSection("CLASSES");
    if (section == kNoRecord) return;
    const RecordId end = drawing.endOf(section);
    for (RecordId id = drawing.next(section); id != end && id != kNoRecord; id = drawing.next(id))
        if (drawing.record(id).kind == RecordKind::Class && !visitor(id)) return;
}

// Integers as wide as those of a sibling, another class of the drawing.
std::vector<dxf::NewTag> classTags(const dxf::Drawing& drawing, const ClassDescription& one, RecordId sibling) {
    const auto number = [&](int code, int value) {
        dxf::Tag sample;
        const bool hasSample = sibling != kNoRecord && drawing.findTag(sibling, code, sample);
        return dxf::NewTag{code, paddedLike(hasSample ? sample.value : std::string_view(), std::to_string(value))};
    };
    std::vector<dxf::NewTag> tags{{dxf::codes::kType, "CLASS"},
                                  {classes::kRecordName, writeText(drawing, one.dxfName)},
                                  {classes::kClassName, writeText(drawing, one.name)},
                                  {classes::kApplication, writeText(drawing, one.application)},
                                  number(classes::kProxyFlags, one.proxyFlags)};
    if (drawing.version() >= kFirstWithCount) tags.push_back(number(classes::kCount, 1));
    tags.push_back(number(classes::kWasProxy, 0));
    tags.push_back(number(classes::kIsEntity, one.isEntity ? 1 : 0));
    return tags;
}

}  // namespace

RecordId ClassCounts::find(std::wstring_view dxfName) const {
    RecordId found = kNoRecord;
    visitClasses(drawing_, [&](RecordId id) {
        dxf::Tag tag;
        const bool isWanted = drawing_.findTag(id, classes::kRecordName, tag) &&
                              platform::compareNoCase(readText(drawing_, dxf::trimmed(tag.value)), dxfName) == 0;
        if (isWanted) found = id;
        return !isWanted;
    });
    return found;
}

void ClassCounts::add(const ClassDescription& one) {
    if (const RecordId told = find(one.dxfName); told != kNoRecord) return write(told, 1);
    const RecordId section = ensureSection(drawing_, "CLASSES");
    RecordId last = kNoRecord;
    visitClasses(drawing_, [&](RecordId id) {
        dxf::Tag tag;
        if (drawing_.findTag(id, classes::kRecordName, tag)) last = id;
        return true;
    });
    drawing_.insertRecord(drawing_.endOf(section), RecordKind::Class, classTags(drawing_, one, last));
    byType_.clear();
}

void ClassCounts::count(RecordId object, int by) {
    const dxf::Record& entry = drawing_.record(object);
    if (entry.kind != RecordKind::Entity && entry.kind != RecordKind::Object) return;
    const RecordId told = recordOf(entry.type, drawing_.typeNameOf(object));
    if (told != kNoRecord) write(told, by);
}

RecordId ClassCounts::recordOf(std::uint16_t type, std::string_view dxfName) {
    if (type >= byType_.size()) byType_.resize(type + std::size_t{1}, kNotLookedUp);
    RecordId& record = byType_[type];
    if (record == kNotLookedUp) record = find(platform::fromUtf8(dxfName));
    return record;
}

void ClassCounts::write(RecordId told, int by) {
    dxf::Tag tag;
    if (!drawing_.findTag(told, classes::kCount, tag)) return;
    const std::int64_t count = dxf::toInteger(tag.value) + by;
    if (count >= 0) drawing_.setValue(told, tag, paddedLike(tag.value, std::to_string(count)));
}

}  // namespace qrs::host
