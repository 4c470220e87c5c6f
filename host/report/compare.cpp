// Compares two drawing files record by record.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/dxf/classcodes.h"
#include "host/dxf/drawing.h"
#include "host/dxf/text.h"
#include "host/platform/beside.h"
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
    // As far as can be told without a look at all of them.
    bool hasHandlesOnce() const {
        const std::vector<dxf::Fault>& faults = drawing.faults();
        constexpr std::size_t kMostNamed = 100;  // what further ones are is not known
        return !drawing.isModified() && faults.size() <= kMostNamed &&
               std::none_of(faults.begin(), faults.end(),
                            [](const dxf::Fault& fault) { return fault.kind == dxf::FaultKind::HandleTwice; });
    }
    std::wstring text(RecordId id, int code) const {
        dxf::Tag tag;
        return drawing.findTag(id, code, tag) ? drawing.decode(dxf::trimmed(tag.value)) : std::wstring();
    }
    // What tells a record without a handle from others; empty when only its place does.
    std::wstring keyOf(RecordId id) const;
    // Appends what reports call it.
    void label(RecordId id, std::wstring& out) const;
    void labelByPlace(RecordId id, std::wstring& out) const;
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
    std::vector<RecordId> partner;  // in the other drawing

    // Labels of records that only their place tells apart are alike but for the place: what stands around it.
    struct AroundPlace {
        RecordId owner = kNoRecord;
        std::wstring before;
        std::wstring after;
    };
    mutable std::unordered_map<std::string_view, AroundPlace> aroundPlaces =
        {};                                          // by type; of the last owner asked for
    mutable std::vector<std::uint32_t> places = {};  // by record: its place among its like, once asked for
};

std::wstring wide(std::string_view text) {
    return platform::fromUtf8(text);
}

// The same, appended; most texts are plain.
void appendWide(std::string_view text, std::wstring& out) {
    if (dxf::isPlainText(text))
        out.append(text.begin(), text.end());
    else
        out += wide(text);
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

void Side::label(RecordId id, std::wstring& out) const {
    const Record& record = drawing.record(id);
    if (isLoose(id)) {
        out += platform::translated(L"data after the end of the file");
        return;
    }
    const bool isNamed = record.kind == RecordKind::TableRecord || record.kind == RecordKind::Block ||
                         record.kind == RecordKind::Section || record.kind == RecordKind::Table ||
                         record.kind == RecordKind::Class;
    const bool hasPlace =
        !isNamed && record.handle == 0 && record.kind != RecordKind::HeaderVariable && record.owner != kNoRecord;
    if (hasPlace) return labelByPlace(id, out);
    appendWide(drawing.typeNameOf(id), out);
    if (record.handle != 0) appendWide(" " + dxf::handleText(record.handle), out);
    if (!isNamed) return;
    const int code = record.kind == RecordKind::Class ? codes::classes::kRecordName : codes::kName;
    out.append(L" \"").append(text(id, code)).append(L"\"");
}

void Side::labelByPlace(RecordId id, std::wstring& out) const {
    const RecordId owner = drawing.record(id).owner;
    const std::wstring place = std::to_wstring(placeOf(id));
    const std::string_view type = drawing.typeNameOf(id);
    const auto known = aroundPlaces.find(type);
    if (known != aroundPlaces.end() && known->second.owner == owner) {
        out.append(known->second.before).append(place).append(known->second.after);
        return;
    }
    std::wstring ownersLabel;
    if (owner != id) label(owner, ownersLabel);
    const auto around = [&](const std::wstring& middle) {
        return owner == id ? platform::translated(L"%1 number %2", wide(type), middle)
                           : platform::translated(L"%1 number %2 of %3", wide(type), middle, ownersLabel);
    };
    out += around(place);
    // Names may hold anything, even what marks the place here.
    const std::wstring mark(1, L'\0');
    const std::wstring marked = around(mark);
    const std::size_t at = marked.find(mark);
    if (at == marked.rfind(mark)) aroundPlaces[type] = {owner, marked.substr(0, at), marked.substr(at + 1)};
}

// From 1, among those of its type under the same owner.
std::size_t Side::placeOf(RecordId id) const {
    if (places.empty()) {
        places.resize(drawing.recordCount(), 0);
        std::unordered_map<RecordId, std::unordered_map<std::uint16_t, std::uint32_t>> counts;
        auto ofOwner = counts.end();  // found once for the many in a row that have one owner
        for (RecordId one = 0; one < drawing.recordCount(); ++one) {
            const Record& record = drawing.record(one);
            if (drawing.isErased(one) || record.owner == one) continue;
            if (ofOwner == counts.end() || ofOwner->first != record.owner)
                ofOwner = counts.try_emplace(record.owner).first;
            places[one] = ++ofOwner->second[record.type];
        }
    }
    return std::max<std::size_t>(places[id], 1);
}

// The size and the bytes of the picture that an entity carries; some kinds use the codes for other things.
bool mayBeOfPicture(int code) {
    return code == 92 || code == 160 || code == 310;
}

// Differences on their way to who takes them.
class Batch {
  public:
    using Iterator = std::vector<Difference>::const_iterator;

    void clear() { count_ = 0; }
    std::size_t size() const { return count_; }
    Difference& add(Difference::Kind kind, int code = 0) {
        if (count_ == list_.size()) list_.emplace_back();
        Difference& difference = list_[count_++];
        difference.kind = kind;
        difference.code = code;
        for (std::wstring* text : {&difference.object, &difference.before, &difference.after})
            text->clear();
        return difference;
    }
    Iterator begin() const { return list_.begin(); }
    Iterator end() const { return list_.begin() + static_cast<std::ptrdiff_t>(count_); }

  private:
    std::vector<Difference> list_;  // texts of earlier ones give their memory to later ones
    std::size_t count_ = 0;
};

// Records that stand in a row.
struct Run {
    const RecordId* first;
    const RecordId* last;  // after the last one

    const RecordId* begin() const { return first; }
    const RecordId* end() const { return last; }
};

class Comparison {
  public:
    Comparison(const Drawing& first, const Drawing& second) : first_(first), second_(second), tags_(first, second) {}

    void run(const std::function<void(const Difference&)>& take);
    Fates fates();

  private:
    void match() {
        matchByHandle();
        matchByKey();
        matchByPlace();
        findEqual();
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
    void pairRuns(const Run& as, const Run& bs);
    void findEqual();
    bool tellSome();
    void tellAdded();
    void tellChanges(RecordId a, RecordId b);
    void tellMissing(Difference::Kind kind, const Side& side, RecordId id);

    Side first_;
    Side second_;
    TagComparison tags_;
    std::vector<std::uint8_t> isEqual_;  // by record of the first drawing: its bytes are those of its partner
    // What is told next, and what was told of late.
    RecordId next_ = kNoRecord;
    RecordId nextAdded_ = kNoRecord;
    Batch told_;
};

// Most records stand in the same order in both drawings: where the next one has the handle, none is looked for.
void Comparison::matchByHandle() {
    RecordId likely = second_.hasHandlesOnce() ? second_.drawing.first() : kNoRecord;
    forEach(first_, [&](RecordId a) {
        const Record& record = first_.drawing.record(a);
        if (record.handle == 0 || record.kind == RecordKind::HeaderVariable) return;
        while (likely != kNoRecord && second_.drawing.record(likely).handle == 0)
            likely = second_.drawing.next(likely);
        const bool isNext = likely != kNoRecord && second_.drawing.record(likely).handle == record.handle;
        const RecordId b = isNext ? likely : second_.drawing.findHandle(record.handle);
        if (likely != kNoRecord && b != kNoRecord) likely = second_.drawing.next(b);
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

// What only its place tells apart, under the same owner in both drawings.
void Comparison::matchByPlace() {
    struct Rows {
        std::vector<RecordId> as;
        std::vector<RecordId> bs;
    };
    std::map<RecordId, Rows> byOwner;  // of the first drawing
    // Found once for the many in a row that have one owner.
    auto found = byOwner.end();
    const auto isFound = [&](RecordId owner) {
        if (found == byOwner.end() || found->first != owner) found = byOwner.find(owner);
        return found != byOwner.end();
    };
    const auto ownerIn = [](const Side& side, RecordId id) {
        RecordId owner = side.drawing.record(id).owner;
        // A vertex lies with its polyline in the row of the entities.
        if (owner != kNoRecord && (side.drawing.record(id).flags & dxf::kSubEntity) != 0)
            owner = side.drawing.record(owner).owner;
        return owner;
    };
    forEach(first_, [&](RecordId a) {
        if (first_.partner[a] != kNoRecord || first_.drawing.record(a).handle != 0) return;
        const RecordId owner = ownerIn(first_, a);
        if (!isFound(owner)) found = byOwner.emplace(owner, Rows()).first;
        found->second.as.push_back(a);
    });
    forEach(second_, [&](RecordId b) {
        if (second_.partner[b] != kNoRecord || second_.drawing.record(b).handle != 0) return;
        const RecordId owner = ownerIn(second_, b);
        const RecordId matched = owner == kNoRecord ? kNoRecord : second_.partner[owner];
        if (isFound(matched)) found->second.bs.push_back(b);
    });
    for (const auto& [owner, rows] : byOwner) {
        const auto& [as, bs] = rows;
        const Sayings ours = sayingsOf(first_.drawing, as, nullptr);
        auto matches = matchSequences(ours.numbers, sayingsOf(second_.drawing, bs, &ours).numbers);
        matches.emplace_back(as.size(), bs.size());
        std::size_t i = 0;
        std::size_t j = 0;
        for (const auto& [x, y] : matches) {
            pairRuns({as.data() + i, as.data() + x}, {bs.data() + j, bs.data() + y});
            if (x < as.size() && y < bs.size()) pair(as[x], bs[y]);
            i = x + 1;
            j = y + 1;
        }
    }
}

// By stored bytes, where these mean the same in both.
void Comparison::findEqual() {
    isEqual_.assign(first_.drawing.recordCount(), 0);
    const bool isAlike = first_.drawing.storesLike(second_.drawing);
    if (!isAlike || first_.drawing.codePage() != second_.drawing.codePage()) return;
    platform::inHalves(isEqual_.size(), [this](std::size_t begin, std::size_t end) {
        for (auto a = static_cast<RecordId>(begin); a < end; ++a) {
            const RecordId b = first_.partner[a];
            isEqual_[a] = b != kNoRecord && first_.drawing.storedBytes(a) == second_.drawing.storedBytes(b);
        }
    });
}

// Between equal neighbours: entities of one type, in their order, are changed ones.
void Comparison::pairRuns(const Run& as, const Run& bs) {
    if (as.first == as.last || bs.first == bs.last) return;
    if (as.last - as.first == 1 && bs.last - bs.first == 1) {
        if (first_.drawing.typeNameOf(*as.first) == second_.drawing.typeNameOf(*bs.first)) pair(*as.first, *bs.first);
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
    side.label(id, told_.add(kind).object);
}

void Comparison::tellChanges(RecordId a, RecordId b) {
    if (first_.isLoose(a)) {
        if (first_.looseBytes(a) == second_.looseBytes(b)) return;
        tellMissing(Difference::Kind::OnlyInFirst, first_, a);
        tellMissing(Difference::Kind::OnlyInSecond, second_, b);
        return;
    }
    tags_.compare(a, b, [&](Difference::Kind kind, int code) -> Difference& {
        Difference& difference = told_.add(kind, code);
        first_.label(a, difference.object);
        return difference;
    });
}

// What only the second drawing has, up to the next record that both have.
void Comparison::tellAdded() {
    for (; nextAdded_ != kNoRecord && second_.partner[nextAdded_] == kNoRecord;
         nextAdded_ = second_.drawing.next(nextAdded_))
        tellMissing(Difference::Kind::OnlyInSecond, second_, nextAdded_);
}

// False when all has been told.
bool Comparison::tellSome() {
    constexpr std::size_t kSome = 4000;
    for (; next_ != kNoRecord; next_ = first_.drawing.next(next_)) {
        if (told_.size() >= kSome) return true;
        const RecordId partner = first_.partner[next_];
        if (partner == kNoRecord) {
            tellMissing(Difference::Kind::OnlyInFirst, first_, next_);
            continue;
        }
        if (!isEqual_[next_]) tellChanges(next_, partner);
        // Records may stand in another order: only those that have not been passed are told here.
        if (nextAdded_ != partner) continue;
        nextAdded_ = second_.drawing.next(partner);
        tellAdded();
    }
    for (; nextAdded_ != kNoRecord; nextAdded_ = second_.drawing.next(nextAdded_))
        if (second_.partner[nextAdded_] == kNoRecord) tellMissing(Difference::Kind::OnlyInSecond, second_, nextAdded_);
    return false;
}

// Some differences are found while those before them are taken.
void Comparison::run(const std::function<void(const Difference&)>& take) {
    match();
    next_ = first_.drawing.first();
    nextAdded_ = second_.drawing.first();
    tellAdded();
    bool isMore = tellSome();
    Batch ready;
    while (told_.size() != 0) {
        std::swap(ready, told_);
        told_.clear();
        const auto takeReady = [&] { std::for_each(ready.begin(), ready.end(), take); };
        if (!isMore)
            takeReady();
        else
            platform::doBoth(takeReady, [&] { isMore = tellSome(); });
    }
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
    Difference unread;
    forEach(first_, [&](RecordId a) {
        const RecordId b = first_.partner[a];
        if (b == kNoRecord) return note(first_, fates.first, a, Fate::Alone);
        Fate fate = Fate::Same;
        const auto take = [&](Difference::Kind, int code) -> Difference& {
            fate = std::max(fate, mayBeOfPicture(code) ? Fate::Redrawn : Fate::Changed);
            return unread;
        };
        if (!isEqual_[a]) tags_.compare(a, b, take);
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
    return Comparison(first, second).fates();
}

bool compareDrawings(const std::filesystem::path& first, const std::filesystem::path& second,
                     const std::function<void(const Difference&)>& take, platform::Error& error) {
    const std::unique_ptr<Drawing> a = Drawing::open(first, error);
    if (!a) return false;
    const std::unique_ptr<Drawing> b = Drawing::open(second, error);
    if (!b) return false;
    Comparison(*a, *b).run(take);
    return true;
}

}  // namespace qrs::host
