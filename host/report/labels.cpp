// Names of records for reports.
#include "host/report/labels.h"

#include <algorithm>

#include "host/dxf/classcodes.h"
#include "host/dxf/recordwalk.h"
#include "host/dxf/text.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::host {

using dxf::Drawing;
using dxf::kNoRecord;
using dxf::Record;
using dxf::RecordId;
using dxf::RecordKind;
namespace codes = dxf::codes;

namespace {

// Most texts are plain.
void appendWide(std::string_view text, std::wstring& out) {
    if (dxf::isPlainText(text))
        out.append(text.begin(), text.end());
    else
        out += platform::fromUtf8(text);
}

}  // namespace

std::wstring ownText(const Drawing& drawing, RecordId id, int code) {
    dxf::RecordPlace place;
    for (dxf::StoredTags tags = drawing.storedTags(id); tags.next();) {
        const std::string_view value = tags.value();
        const dxf::Part part = place.pass(tags.code(), value);
        if (part == dxf::Part::Xdata) break;
        if (part == dxf::Part::Own && tags.code() == code) return drawing.decode(dxf::trimmed(value));
    }
    return {};
}

bool isLoose(const Drawing& drawing, RecordId id) {
    return drawing.record(id).kind == RecordKind::Other && drawing.typeNameOf(id).empty();
}

std::size_t Places::of(RecordId id) const {
    std::call_once(isCounted_, [this] { count(); });
    return std::max<std::size_t>(places_[id], 1);
}

void Places::count() const {
    places_.resize(drawing_.recordCount(), 0);
    std::unordered_map<RecordId, std::unordered_map<std::uint16_t, std::uint32_t>> counts;
    auto ofOwner = counts.end();  // found once for the many in a row that have one owner
    for (RecordId id = 0; id < drawing_.recordCount(); ++id) {
        const Record& record = drawing_.record(id);
        if (drawing_.isErased(id) || record.owner == id) continue;
        if (ofOwner == counts.end() || ofOwner->first != record.owner) ofOwner = counts.try_emplace(record.owner).first;
        places_[id] = ++ofOwner->second[record.type];
    }
}

void Labels::append(RecordId id, std::wstring& out) {
    if (isLoose(drawing_, id)) {
        out += platform::translated(L"data after the end of the file");
        return;
    }
    const Record& record = drawing_.record(id);
    const bool isNamed = record.kind == RecordKind::TableRecord || record.kind == RecordKind::Block ||
                         record.kind == RecordKind::Section || record.kind == RecordKind::Table ||
                         record.kind == RecordKind::Class;
    const bool hasPlace =
        !isNamed && record.handle == 0 && record.kind != RecordKind::HeaderVariable && record.owner != kNoRecord;
    if (hasPlace) return appendByPlace(id, out);
    appendWide(drawing_.typeNameOf(id), out);
    if (record.handle != 0) appendWide(" " + dxf::handleText(record.handle), out);
    if (!isNamed) return;
    const int code = record.kind == RecordKind::Class ? codes::classes::kRecordName : codes::kName;
    out.append(L" \"").append(ownText(drawing_, id, code)).append(L"\"");
}

void Labels::appendByPlace(RecordId id, std::wstring& out) {
    const RecordId owner = drawing_.record(id).owner;
    const std::uint16_t type = drawing_.record(id).type;
    const std::string place = std::to_string(places_.of(id));
    const auto known = around_.find(type);
    if (known != around_.end() && known->second.owner == owner) {
        out += known->second.before;
        out.append(place.begin(), place.end());
        out += known->second.after;
        return;
    }
    std::wstring ownersLabel;
    if (owner != id) append(owner, ownersLabel);
    const auto around = [&](const std::wstring& middle) {
        const std::wstring name = platform::fromUtf8(drawing_.typeNameOf(id));
        return owner == id ? platform::translated(L"%1 number %2", name, middle)
                           : platform::translated(L"%1 number %2 of %3", name, middle, ownersLabel);
    };
    out += around(std::wstring(place.begin(), place.end()));
    // Many types have the number of those that are not counted. Names may hold anything, even what marks the place
    // here.
    const std::wstring mark(1, L'\0');
    const std::wstring marked = around(mark);
    const std::size_t at = marked.find(mark);
    if (type != dxf::kTypeUncounted && at == marked.rfind(mark))
        around_[type] = {owner, marked.substr(0, at), marked.substr(at + 1)};
}

}  // namespace qrs::host
