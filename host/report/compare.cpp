// Compares two drawing files record by record.
#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/dxf/classcodes.h"
#include "host/dxf/drawing.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/report/fates.h"
#include "host/report/hostreport.h"
#include "host/report/sequence.h"
#include "host/report/tagdiff.h"

namespace qrs::host {

using dxf::Drawing;
using dxf::kNoRecord;
using dxf::Record;
using dxf::RecordId;
using dxf::RecordKind;
namespace codes = dxf::codes;

namespace {

// One of the two drawings, and what is known of its records.
struct Side {
    explicit Side(const Drawing& file) : drawing(file), partner(file.recordCount(), kNoRecord) {}

    std::string typeOf(RecordId id) const { return std::string(drawing.typeNameOf(id)); }
    std::wstring text(RecordId id, int code) const {
        dxf::Tag tag;
        return drawing.findTag(id, code, tag) ? drawing.decode(dxf::trimmed(tag.value)) : std::wstring();
    }
    // What tells a record without a handle from others; empty when only its place does.
    std::wstring keyOf(RecordId id) const;
    std::wstring label(RecordId id) const;
    // Kept, since many records in a row have one owner.
    const std::wstring& labelOfOwner(RecordId owner) const {
        if (labelled != owner) {
            ownersLabel = label(owner);  // may ask for the label of the owner's owner
            labelled = owner;
        }
        return ownersLabel;
    }
    std::size_t placeOf(RecordId id) const;
    // Bytes after the end of the file that are no record.
    bool isLoose(RecordId id) const {
        return drawing.record(id).kind == RecordKind::Other && drawing.typeNameOf(id).empty();
    }
    std::string_view looseBytes(RecordId id) const {
        const std::string_view bytes = drawing.bytes(id);
        const std::size_t first = bytes.find_first_not_of(" \t\r\n");
        return first == std::string_view::npos ? std::string_view() : bytes.substr(first);
    }

    const Drawing& drawing;
    std::vector<RecordId> partner;          // in the other drawing
    mutable RecordId labelled = kNoRecord;  // the owner whose label is kept
    mutable std::wstring ownersLabel = {};
    mutable std::vector<std::uint32_t> places = {};  // by record: its place among its like, once asked for
};

std::wstring wide(std::string_view text) {
    return platform::fromUtf8(text);
}

std::wstring Side::keyOf(RecordId id) const {
    const Record& record = drawing.record(id);
    const auto key = [&](const wchar_t* kind, const std::wstring& name) {
        return std::wstring(kind) + L"/" + platform::foldCase(name);
    };
    switch (record.kind) {
        case RecordKind::HeaderVariable:
            return key(L"variable", wide(typeOf(id)));
        case RecordKind::Section:
            return key(L"section", text(id, codes::kName));
        case RecordKind::Table:
            return key(L"table", text(id, codes::kName));
        case RecordKind::TableRecord:
            return key(L"record", wide(typeOf(id)) + L"/" + text(id, codes::kName));
        case RecordKind::Class:
            return key(L"class", text(id, codes::classes::kRecordName));
        case RecordKind::Block:
            return key(L"block", text(id, codes::kName));
        case RecordKind::EndSection:
        case RecordKind::EndTable:
        case RecordKind::EndBlock:
            return record.owner == kNoRecord || record.owner == id ? std::wstring() : L"end/" + keyOf(record.owner);
        case RecordKind::EndOfFile:
        case RecordKind::Preamble:
            return key(L"file", wide(typeOf(id)));
        default:
            // Several records of one handle, in their order.
            return record.handle == 0 ? std::wstring()
                                      : key(L"handle", wide(typeOf(id) + "/" + dxf::handleText(record.handle)));
    }
}

std::wstring Side::label(RecordId id) const {
    const Record& record = drawing.record(id);
    if (isLoose(id)) return platform::translated(L"data after the end of the file");
    std::wstring label = wide(typeOf(id));
    if (record.handle != 0) label += L" " + wide(dxf::handleText(record.handle));
    const bool isNamed = record.kind == RecordKind::TableRecord || record.kind == RecordKind::Block ||
                         record.kind == RecordKind::Section || record.kind == RecordKind::Table;
    if (record.kind == RecordKind::Class) return label + L" \"" + text(id, codes::classes::kRecordName) + L"\"";
    if (isNamed) return label + L" \"" + text(id, codes::kName) + L"\"";
    if (record.handle != 0 || record.kind == RecordKind::HeaderVariable || record.owner == kNoRecord) return label;
    return record.owner == id
               ? platform::translated(L"%1 number %2", label, placeOf(id))
               : platform::translated(L"%1 number %2 of %3", label, placeOf(id), labelOfOwner(record.owner));
}

// From 1, among those of its type under the same owner.
std::size_t Side::placeOf(RecordId id) const {
    if (places.empty()) {
        places.resize(drawing.recordCount(), 0);
        std::map<std::pair<RecordId, std::uint16_t>, std::uint32_t> counts;
        for (RecordId one = 0; one < drawing.recordCount(); ++one) {
            const Record& record = drawing.record(one);
            if (!drawing.isErased(one) && record.owner != one) places[one] = ++counts[{record.owner, record.type}];
        }
    }
    return std::max<std::size_t>(places[id], 1);
}

// The size and the bytes of the picture that an entity carries; some kinds use the codes for other things.
bool mayBeOfPicture(int code) {
    return code == 92 || code == 160 || code == 310;
}

class Comparison {
  public:
    Comparison(const Drawing& first, const Drawing& second, const std::function<void(const Difference&)>& take)
        : first_(first), second_(second), take_(take) {}

    void run() {
        match();
        tell();
    }
    Fates fates();

  private:
    void match() {
        matchByHandle();
        matchByKey();
        matchByPlace();
    }
    void pair(RecordId a, RecordId b) {
        first_.partner[a] = b;
        second_.partner[b] = a;
    }
    template <typename Take>
    static void forEach(const Side& side, Take&& take) {
        for (RecordId id = side.drawing.first(); id != kNoRecord; id = side.drawing.next(id))
            take(id);
    }
    void matchByHandle();
    void matchByKey();
    void matchByPlace();
    void pairRuns(const std::vector<RecordId>& as, const std::vector<RecordId>& bs);
    void tell();
    void tellChanges(RecordId a, RecordId b);
    void tellMissing(Difference::Kind kind, const Side& side, RecordId id);

    Side first_;
    Side second_;
    const std::function<void(const Difference&)>& take_;
};

void Comparison::matchByHandle() {
    forEach(first_, [this](RecordId a) {
        const Record& record = first_.drawing.record(a);
        if (record.handle == 0 || record.kind == RecordKind::HeaderVariable) return;
        const RecordId b = second_.drawing.findHandle(record.handle);
        if (b == kNoRecord || second_.partner[b] != kNoRecord || second_.drawing.record(b).kind != record.kind) return;
        if (first_.drawing.typeNameOf(a) == second_.drawing.typeNameOf(b)) pair(a, b);
    });
}

void Comparison::matchByKey() {
    std::unordered_map<std::wstring, std::vector<RecordId>> byKey;
    forEach(second_, [&](RecordId b) {
        if (second_.partner[b] != kNoRecord) return;
        if (const std::wstring key = second_.keyOf(b); !key.empty()) byKey[key].push_back(b);
    });
    std::unordered_map<std::wstring, std::size_t> taken;
    forEach(first_, [&](RecordId a) {
        if (first_.partner[a] != kNoRecord) return;
        const std::wstring key = first_.keyOf(a);
        const auto found = key.empty() ? byKey.end() : byKey.find(key);
        if (found == byKey.end()) return;
        std::size_t& next = taken[key];
        if (next < found->second.size()) pair(a, found->second[next++]);
    });
}

std::vector<std::uint64_t> contentsOf(const Drawing& drawing, const std::vector<RecordId>& records) {
    std::vector<std::uint64_t> contents;
    contents.reserve(records.size());
    for (const RecordId id : records)
        contents.push_back(contentOf(drawing, id));
    return contents;
}

// What only its place tells apart, under the same owner in both drawings.
void Comparison::matchByPlace() {
    std::map<RecordId, std::pair<std::vector<RecordId>, std::vector<RecordId>>> byOwner;  // of the first drawing
    const auto ownerIn = [](const Side& side, RecordId id) {
        RecordId owner = side.drawing.record(id).owner;
        // A vertex lies with its polyline in the row of the entities.
        if (owner != kNoRecord && (side.drawing.record(id).flags & dxf::kSubEntity) != 0)
            owner = side.drawing.record(owner).owner;
        return owner;
    };
    forEach(first_, [&](RecordId a) {
        if (first_.partner[a] == kNoRecord && first_.drawing.record(a).handle == 0)
            byOwner[ownerIn(first_, a)].first.push_back(a);
    });
    forEach(second_, [&](RecordId b) {
        if (second_.partner[b] != kNoRecord || second_.drawing.record(b).handle != 0) return;
        const RecordId owner = ownerIn(second_, b);
        const RecordId matched = owner == kNoRecord ? kNoRecord : second_.partner[owner];
        if (const auto found = byOwner.find(matched); found != byOwner.end()) found->second.second.push_back(b);
    });
    for (const auto& [owner, rows] : byOwner) {
        const auto& [as, bs] = rows;
        auto matches = matchSequences(contentsOf(first_.drawing, as), contentsOf(second_.drawing, bs));
        matches.emplace_back(as.size(), bs.size());
        std::size_t i = 0;
        std::size_t j = 0;
        for (const auto& [x, y] : matches) {
            const auto slice = [](const std::vector<RecordId>& ids, std::size_t from, std::size_t to) {
                return std::vector<RecordId>(ids.begin() + static_cast<std::ptrdiff_t>(from),
                                             ids.begin() + static_cast<std::ptrdiff_t>(to));
            };
            pairRuns(slice(as, i, x), slice(bs, j, y));
            if (x < as.size() && y < bs.size()) pair(as[x], bs[y]);
            i = x + 1;
            j = y + 1;
        }
    }
}

// Between equal neighbours: entities of one type, in their order, are changed ones.
void Comparison::pairRuns(const std::vector<RecordId>& as, const std::vector<RecordId>& bs) {
    if (as.empty() || bs.empty()) return;
    if (as.size() == 1 && bs.size() == 1) {
        if (first_.drawing.typeNameOf(as[0]) == second_.drawing.typeNameOf(bs[0])) pair(as[0], bs[0]);
        return;
    }
    std::unordered_map<std::string, std::vector<RecordId>> byType;
    for (const RecordId b : bs)
        byType[second_.typeOf(b)].push_back(b);
    std::unordered_map<std::string, std::size_t> taken;
    for (const RecordId a : as) {
        const std::string type = first_.typeOf(a);
        const std::vector<RecordId>& candidates = byType[type];
        std::size_t& next = taken[type];
        if (next < candidates.size()) pair(a, candidates[next++]);
    }
}

void Comparison::tellMissing(Difference::Kind kind, const Side& side, RecordId id) {
    const Record& record = side.drawing.record(id);
    if (record.kind == RecordKind::Preamble) return;  // comments
    if (side.isLoose(id) && side.looseBytes(id).empty()) return;
    // A vertex goes and comes with its polyline, an end with what it ends.
    const bool isPart = (record.flags & dxf::kSubEntity) != 0 || record.kind == RecordKind::EndSection ||
                        record.kind == RecordKind::EndTable || record.kind == RecordKind::EndBlock;
    if (isPart && record.owner != kNoRecord && side.partner[record.owner] == kNoRecord) return;
    Difference difference;
    difference.kind = kind;
    difference.object = side.label(id);
    take_(difference);
}

void Comparison::tellChanges(RecordId a, RecordId b) {
    if (first_.isLoose(a)) {
        if (first_.looseBytes(a) == second_.looseBytes(b)) return;
        tellMissing(Difference::Kind::OnlyInFirst, first_, a);
        tellMissing(Difference::Kind::OnlyInSecond, second_, b);
        return;
    }
    const bool isSameForm = first_.drawing.codePage() == second_.drawing.codePage();
    if (isSameForm && first_.drawing.bytes(a) == second_.drawing.bytes(b)) return;
    std::wstring label;
    compareTags(first_.drawing, a, second_.drawing, b, [&](Difference difference) {
        if (label.empty()) label = first_.label(a);
        difference.object = label;
        take_(difference);
    });
}

void Comparison::tell() {
    RecordId b = second_.drawing.first();
    // What only the second drawing has, up to the next record that both have.
    const auto tellAdded = [&] {
        for (; b != kNoRecord && second_.partner[b] == kNoRecord; b = second_.drawing.next(b))
            tellMissing(Difference::Kind::OnlyInSecond, second_, b);
    };
    tellAdded();
    forEach(first_, [&](RecordId a) {
        const RecordId partner = first_.partner[a];
        if (partner == kNoRecord) {
            tellMissing(Difference::Kind::OnlyInFirst, first_, a);
            return;
        }
        tellChanges(a, partner);
        // Records may stand in another order: only those that have not been passed are told here.
        if (b == partner) {
            b = second_.drawing.next(b);
            tellAdded();
        }
    });
    for (; b != kNoRecord; b = second_.drawing.next(b))
        if (second_.partner[b] == kNoRecord) tellMissing(Difference::Kind::OnlyInSecond, second_, b);
}

Fates Comparison::fates() {
    match();
    Fates fates{std::vector<Fate>(first_.drawing.recordCount(), Fate::Same),
                std::vector<Fate>(second_.drawing.recordCount(), Fate::Same), first_.partner, second_.partner};
    // A part tells on what it belongs to.
    const auto note = [](const Side& side, std::vector<Fate>& list, RecordId id, Fate fate) {
        list[id] = std::max(list[id], fate);
        const Record& record = side.drawing.record(id);
        if ((record.flags & dxf::kSubEntity) != 0 && record.owner != kNoRecord)
            list[record.owner] = std::max(list[record.owner], Fate::Changed);
    };
    forEach(second_, [&](RecordId b) {
        if (second_.partner[b] == kNoRecord) note(second_, fates.second, b, Fate::Alone);
    });
    forEach(first_, [&](RecordId a) {
        const RecordId b = first_.partner[a];
        if (b == kNoRecord) return note(first_, fates.first, a, Fate::Alone);
        Fate fate = Fate::Same;
        const std::function<void(const Difference&)> take = [&fate](const Difference& difference) {
            fate = std::max(fate, mayBeOfPicture(difference.code) ? Fate::Redrawn : Fate::Changed);
        };
        if (first_.drawing.bytes(a) != second_.drawing.bytes(b))
            compareTags(first_.drawing, a, second_.drawing, b, take);
        if (fate == Fate::Same) return;
        note(first_, fates.first, a, fate);
        note(second_, fates.second, b, fate);
    });
    // What only one drawing has of an entity changes it in the other, too.
    forEach(first_, [&](RecordId a) {
        const RecordId b = first_.partner[a];
        if (b == kNoRecord || fates.first[a] == fates.second[b]) return;
        fates.first[a] = fates.second[b] = Fate::Changed;
    });
    return fates;
}

}  // namespace

Fates compareRecords(const Drawing& first, const Drawing& second) {
    return Comparison(first, second, [](const Difference&) {}).fates();
}

bool compareDrawings(const std::filesystem::path& first, const std::filesystem::path& second,
                     const std::function<void(const Difference&)>& take, platform::Error& error) {
    const std::unique_ptr<Drawing> a = Drawing::open(first, error);
    if (!a) return false;
    const std::unique_ptr<Drawing> b = Drawing::open(second, error);
    if (!b) return false;
    Comparison(*a, *b, take).run();
    return true;
}

}  // namespace qrs::host
