// Finding, setting and removing the entries of dictionaries.
#include "host/drawing/dictionaries.h"

#include "host/drawing/objecttags.h"
#include "host/dxf/classcodes.h"
#include "host/dxf/recordwalk.h"
#include "host/platform/codepage.h"

namespace qrs::host {

namespace codes = dxf::codes;

namespace {

// The tag after an entry's name holds its handle: a soft owner's when the dictionary does not own what it names.
bool isEntryHandle(int code) {
    return code == codes::kSoftOwned || code == codes::kHardOwned;
}

// Where an entry stands in a dictionary, or where a new one is to be put: before value.begin, with value.code.
struct Place {
    bool isFound = false;
    std::uint32_t nameBegin = 0;
    dxf::Tag value;
};

Place placeOf(const dxf::Drawing& drawing, dxf::RecordId dictionary, std::wstring_view entryName) {
    Place end;
    end.value.code = codes::kSoftOwned;
    dxf::RecordWalk walk(drawing.tags(dictionary));
    dxf::Tag name;
    bool hasName = false;
    for (dxf::Tag tag; walk.next(tag) && walk.part() != dxf::Part::Xdata;) {
        const bool isInSection = walk.section() == "AcDbDictionary";
        const bool isOwn = isInSection && walk.isOwn();
        if (hasName && isEntryHandle(tag.code)) {
            end.value.code = tag.code;
            if (platform::compareNoCase(readText(drawing, name.value), entryName) == 0) return {true, name.begin, tag};
        }
        // A dictionary that says so owns what it names.
        if (isOwn && tag.code == codes::dictionary::kIsHardOwner && dxf::toInteger(tag.value) != 0)
            end.value.code = codes::kHardOwned;
        hasName = isOwn && tag.code == codes::kEntryName;
        if (hasName) name = tag;
        if (isInSection) end.value.begin = tag.end;
    }
    return end;
}

}  // namespace

std::vector<DictionaryEntry> dictionaryEntries(const dxf::Drawing& drawing, dxf::RecordId dictionary) {
    std::vector<DictionaryEntry> entries;
    dxf::RecordWalk walk(drawing.tags(dictionary));
    std::wstring name;
    bool hasName = false;
    for (dxf::Tag tag; walk.next(tag) && walk.part() != dxf::Part::Xdata;) {
        if (hasName && isEntryHandle(tag.code)) entries.push_back({name, drawing.findHandle(dxf::toHandle(tag.value))});
        hasName = walk.isOwn() && tag.code == codes::kEntryName;
        if (hasName) name = readText(drawing, tag.value);
    }
    return entries;
}

dxf::RecordId extensionDictionary(const dxf::Drawing& drawing, dxf::RecordId record) {
    dxf::RecordWalk walk(drawing.tags(record));
    for (dxf::Tag tag; walk.next(tag) && walk.part() != dxf::Part::Xdata;)
        if (walk.group() == "ACAD_XDICTIONARY" && tag.code != codes::kGroup)
            return drawing.findHandle(dxf::toHandle(tag.value));
    return dxf::kNoRecord;
}

dxf::RecordId setDictionaryEntry(dxf::Drawing& drawing, dxf::RecordId dictionary, std::wstring_view name,
                                 dxf::RecordId object) {
    const std::string handle = dxf::handleText(drawing.record(object).handle);
    const Place place = placeOf(drawing, dictionary, name);
    if (!place.isFound) {
        drawing.insertTags(dictionary, place.value.begin,
                           {{codes::kEntryName, writeText(drawing, name)}, {place.value.code, handle}});
        return dxf::kNoRecord;
    }
    const dxf::RecordId old = drawing.findHandle(dxf::toHandle(place.value.value));
    drawing.setValue(dictionary, place.value, handle);
    return old;
}

bool removeDictionaryEntry(dxf::Drawing& drawing, dxf::RecordId dictionary, std::wstring_view name,
                           dxf::RecordId& object) {
    const Place place = placeOf(drawing, dictionary, name);
    if (!place.isFound) return false;
    object = drawing.findHandle(dxf::toHandle(place.value.value));
    drawing.eraseTags(dictionary, place.nameBegin, place.value.end);
    return true;
}

}  // namespace qrs::host
