// The entries of a dictionary of a drawing: names, each with the handle of an object.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/drawing.h"

namespace qrs::host {

struct DictionaryEntry {
    std::wstring name;
    dxf::RecordId object;  // kNoRecord when no object has the handle
};

// In the order of the file.
std::vector<DictionaryEntry> dictionaryEntries(const dxf::Drawing& drawing, dxf::RecordId dictionary);

// The dictionary that a record has for itself; kNoRecord for none.
dxf::RecordId extensionDictionary(const dxf::Drawing& drawing, dxf::RecordId record);

// Puts an object under a name, compared without regard to case. Gives the object that had the name; kNoRecord for none.
dxf::RecordId setDictionaryEntry(dxf::Drawing& drawing, dxf::RecordId dictionary, std::wstring_view name,
                                 dxf::RecordId object);
// Takes an entry out. False when there is none; object: kNoRecord when no object has the entry's handle.
bool removeDictionaryEntry(dxf::Drawing& drawing, dxf::RecordId dictionary, std::wstring_view name,
                           dxf::RecordId& object);

}  // namespace qrs::host
