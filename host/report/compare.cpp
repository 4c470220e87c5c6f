// Compares two drawing files record by record. What stands where is matched first; then two threads find what changed,
// piece by piece, and one of them tells it in order.
#include <algorithm>
#include <array>
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
#include "host/platform/beside.h"
#include "host/platform/codepage.h"
#include "host/report/fates.h"
#include "host/report/hostreport.h"
#include "host/report/inorder.h"
#include "host/report/labels.h"
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
    explicit Side(const Drawing& file)
        : drawing(file), partner(file.recordCount(), kNoRecord), places(file), labels(file, places) {}

    std::string typeOf(RecordId id) const { return std::string(drawing.typeNameOf(id)); }
    // As far as can be told without a look at all of them.
    bool hasHandlesOnce() const {
        const std::vector<dxf::Fault>& faults = drawing.faults();
        constexpr std::size_t kMostNamed = 100;  // what further ones are is not known
        return !drawing.isModified() && faults.size() <= kMostNamed &&
               std::none_of(faults.begin(), faults.end(),
                            [](const dxf::Fault& fault) { return fault.kind == dxf::FaultKind::HandleTwice; });
    }
    std::wstring text(RecordId id, int code) const { return ownText(drawing, id, code); }
    // What tells a record without a handle from others; empty when only its place does.
    std::wstring keyOf(RecordId id) const;
    std::string_view looseBytes(RecordId id) const {
        const std::string_view bytes = drawing.bytes(id);
        const std::size_t first = bytes.find_first_not_of(" \t\r\n");
        return first == std::string_view::npos ? std::string_view() : bytes.substr(first);
    }

    const Drawing& drawing;
    std::vector<RecordId> partner;  // in the other drawing
    Places places;
    Labels labels;
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

// The size and the bytes of the picture that an entity carries; some kinds use the codes for other things.
bool mayBeOfPicture(int code) {
    return code == 92 || code == 160 || code == 310;
}

// Some records of the first drawing that stand in a row, and how their partners differ.
class Piece {
  public:
    static constexpr std::size_t kRecords = 500;

    std::vector<RecordId> records;

    void clear() {
        records.clear();
        count_ = 0;
    }
    // Records must come in their order.
    Difference& add(RecordId record, Difference::Kind kind, int code) {
        if (count_ == changes_.size()) changes_.emplace_back();
        Change& change = changes_[count_++];
        change.record = record;
        change.difference.kind = kind;
        change.difference.code = code;
        for (std::wstring* text : {&change.difference.object, &change.difference.before, &change.difference.after})
            text->clear();
        return change.difference;
    }
    // Hands over those of a record, and goes on from at to what follows them.
    template <typename Take>
    void takeOf(RecordId record, std::size_t& at, const Take& take) const {
        for (; at < count_ && changes_[at].record == record; ++at)
            take(changes_[at].difference);
    }

  private:
    struct Change {
        RecordId record;
        Difference difference;
    };
    std::vector<Change> changes_;  // texts of earlier ones give their memory to later ones
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
    using Take = std::function<void(const Difference&)>;
    Comparison(const Drawing& first, const Drawing& second)
        : first_(first),
          second_(second),
          finders_{{{TagComparison(first, second), Labels(first, first_.places)},
                    {TagComparison(first, second), Labels(first, first_.places)}}} {}

    void run(const Take& take);
    Fates fates();

  private:
    // What a thread needs to find differences, on cache lines of its own.
    struct alignas(64) Finder {
        TagComparison tags;
        Labels labels;
    };

    void match() {
        matchByHandle();
        matchByKey();
        matchByPlace();
    }
    void pair(RecordId a, RecordId b) {
        first_.partner[a] = b;
        second_.partner[b] = a;
    }
    template <typename See>
    static void forEach(const Side& side, See&& see) {
        for (RecordId id = side.drawing.first(); id != kNoRecord; id = side.drawing.next(id))
            see(id);
    }
    void matchByHandle();
    void matchByKey();
    void matchByPlace();
    void pairRuns(const Run& as, const Run& bs);
    bool cut(Piece& piece);
    void findChanges(Piece& piece, Finder& finder) const;
    void tell(const Piece& piece, const Take& take);
    void tellAdded(const Take& take);
    void tellLoose(RecordId a, RecordId b, const Take& take);
    static void tellMissing(Difference::Kind kind, Side& side, RecordId id, const Take& take);

    Side first_;
    Side second_;
    std::array<Finder, 2> finders_;   // one a thread
    RecordId next_ = kNoRecord;       // of the first drawing: not yet in a piece
    RecordId nextAdded_ = kNoRecord;  // of the second: not yet passed by what is told
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
        const std::vector<RecordId>& as = rows.as;
        const std::vector<RecordId>& bs = rows.bs;
        const Sayings ours = sayingsOf(first_.drawing, as, nullptr);
        auto matches = matchSequences(ours.numbers, sayingsOf(second_.drawing, bs, &ours).numbers);
        matches.emplace_back(as.size(), bs.size());
        const auto pairMatches = [&](std::size_t begin, std::size_t end) {
            std::size_t i = begin == 0 ? 0 : matches[begin - 1].first + 1;
            std::size_t j = begin == 0 ? 0 : matches[begin - 1].second + 1;
            for (std::size_t match = begin; match < end; ++match) {
                const auto [x, y] = matches[match];
                pairRuns({as.data() + i, as.data() + x}, {bs.data() + j, bs.data() + y});
                if (x < as.size() && y < bs.size()) pair(as[x], bs[y]);
                i = x + 1;
                j = y + 1;
            }
        };
        platform::inHalves(matches.size(), pairMatches);
    }
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

void Comparison::tellMissing(Difference::Kind kind, Side& side, RecordId id, const Take& take) {
    const Record& record = side.drawing.record(id);
    if (record.kind == RecordKind::Preamble) return;  // comments
    if (isLoose(side.drawing, id) && side.looseBytes(id).empty()) return;
    // A vertex goes and comes with its polyline, an end with what it ends.
    const bool isPart = (record.flags & dxf::kSubEntity) != 0 || record.kind == RecordKind::EndSection ||
                        record.kind == RecordKind::EndTable || record.kind == RecordKind::EndBlock;
    if (isPart && record.owner != kNoRecord && side.partner[record.owner] == kNoRecord) return;
    Difference difference;
    difference.kind = kind;
    side.labels.append(id, difference.object);
    take(difference);
}

void Comparison::tellLoose(RecordId a, RecordId b, const Take& take) {
    if (first_.looseBytes(a) == second_.looseBytes(b)) return;
    tellMissing(Difference::Kind::OnlyInFirst, first_, a, take);
    tellMissing(Difference::Kind::OnlyInSecond, second_, b, take);
}

// What only the second drawing has, up to the next record that both have.
void Comparison::tellAdded(const Take& take) {
    for (; nextAdded_ != kNoRecord && second_.partner[nextAdded_] == kNoRecord;
         nextAdded_ = second_.drawing.next(nextAdded_))
        tellMissing(Difference::Kind::OnlyInSecond, second_, nextAdded_, take);
}

// The next records of the first drawing. False when there are none.
bool Comparison::cut(Piece& piece) {
    for (piece.clear(); next_ != kNoRecord && piece.records.size() < Piece::kRecords;
         next_ = first_.drawing.next(next_))
        piece.records.push_back(next_);
    return !piece.records.empty();
}

void Comparison::findChanges(Piece& piece, Finder& finder) const {
    RecordId changed = kNoRecord;
    const TagComparison::Add add = [&](Difference::Kind kind, int code) -> Difference& {
        Difference& difference = piece.add(changed, kind, code);
        finder.labels.append(changed, difference.object);
        return difference;
    };
    for (const RecordId a : piece.records) {
        const RecordId b = first_.partner[a];
        if (b == kNoRecord || finder.tags.areSame(a, b) || isLoose(first_.drawing, a)) continue;
        changed = a;
        finder.tags.compare(a, b, add);
    }
}

void Comparison::tell(const Piece& piece, const Take& take) {
    std::size_t at = 0;
    for (const RecordId a : piece.records) {
        const RecordId b = first_.partner[a];
        if (b == kNoRecord) {
            tellMissing(Difference::Kind::OnlyInFirst, first_, a, take);
            continue;
        }
        if (isLoose(first_.drawing, a))
            tellLoose(a, b, take);
        else
            piece.takeOf(a, at, take);
        // Records may stand in another order: only those that have not been passed are told here.
        if (nextAdded_ != b) continue;
        nextAdded_ = second_.drawing.next(b);
        tellAdded(take);
    }
}

void Comparison::run(const Take& take) {
    match();
    next_ = first_.drawing.first();
    nextAdded_ = second_.drawing.first();
    tellAdded(take);
    InOrder<Piece>([this](Piece& piece) { return cut(piece); },
                   [this](Piece& piece, std::size_t thread) { findChanges(piece, finders_[thread]); },
                   [&](const Piece& piece) { tell(piece, take); })
        .run();
    for (; nextAdded_ != kNoRecord; nextAdded_ = second_.drawing.next(nextAdded_))
        if (second_.partner[nextAdded_] == kNoRecord)
            tellMissing(Difference::Kind::OnlyInSecond, second_, nextAdded_, take);
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
        if (finders_[0].tags.areSame(a, b)) return;
        Fate fate = Fate::Same;
        const auto take = [&](Difference::Kind, int code) -> Difference& {
            fate = std::max(fate, mayBeOfPicture(code) ? Fate::Redrawn : Fate::Changed);
            return unread;
        };
        finders_[0].tags.compare(a, b, take);
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
