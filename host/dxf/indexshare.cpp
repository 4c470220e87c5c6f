// Two indexers side by side. The second one begins at a record in the middle of the file and assumes what the first one
// will know when it arrives there: that tags are cut so, which section it is, and that no polyline is open. Where it
// was wrong, or where anything is the matter with its part, the first one goes on alone, so that the answer, damage
// and all, is always that of one reader.
#include <algorithm>
#include <exception>
#include <optional>
#include <utility>
#include <vector>

#include "host/dxf/binary.h"
#include "host/dxf/indexer.h"
#include "host/dxf/tags.h"
#include "host/platform/beside.h"

namespace qrs::dxf {

namespace {

// Smaller files are read before a thread has begun.
constexpr std::size_t kWorthSharing = std::size_t{1} << 20;
// A border is looked for in so many bytes, and believed when so many tags can be cut there.
constexpr std::ptrdiff_t kBorderSearch = std::ptrdiff_t{1} << 20;
constexpr int kTagsTried = 32;

// The records of the second part begin with two that stand for those of the first part which it lies in: its section,
// or its block and then its section.
constexpr RecordId kStandIns = 2;
constexpr RecordId kContainer = 0;
constexpr RecordId kSectionOfBlock = 1;

// Types that mean something by where they stand, so that nobody can begin with one.
bool isStructure(std::uint32_t type) {
    return (type >= kTypeSection && type <= kTypeClass) || (type >= kTypeVertex && type <= kTypeSeqend);
}

}  // namespace

std::size_t sharedPlace(std::size_t size) {
    return size >= kWorthSharing && platform::processorCount() > 1 ? size / 2 : kAlone;
}

class Indexer::Second {
  public:
    Second(const Indexer& first, const char* at)
        : indexer_({first.start_, static_cast<std::size_t>(first.end_ - first.start_)}, nullptr, index_, fault_) {
        index_.lineEnd = first.index_.lineEnd;
        index_.codeForm = first.index_.codeForm;
        work_.emplace([this, at] {
            try {
                indexer_.readSecondPart(at);
            } catch (const std::exception&) {
                // The first one reads this part too, and meets the reason itself.
            }
        });
    }
    ~Second() { indexer_.isUnwanted_ = true; }
    bool hasBegun() const { return work_->hasBegun(); }
    // When it is done.
    Indexer& indexer() {
        work_->wait();
        return indexer_;
    }

  private:
    Index index_;
    Fault fault_;
    Indexer indexer_;
    std::optional<platform::Beside> work_;
};

Indexer::Indexer(std::string_view bytes, const platform::MappedFile* file, Index& index, Fault& fault)
    : start_(bytes.data()),
      end_(bytes.data() + bytes.size()),
      file_(file),
      index_(index),
      fault_(fault),
      given_(bytes.size()),
      pointedTo_(bytes.size()) {}

Indexer::~Indexer() = default;

// Lets another indexer begin in the middle, if a place for it was asked for and is found.
void Indexer::share() {
    if (secondBegin_ == nullptr) return;
    secondBegin_ = borderFrom(secondBegin_);
    if (secondBegin_ == nullptr) return;
    second_ = std::make_unique<Second>(*this, secondBegin_);
    if (second_->hasBegun()) return;
    second_.reset();
    secondBegin_ = nullptr;
}

// The next place that looks like the beginning of a record. In a text drawing a line that is no number is a value, so
// the line before it is a group code; in a binary one enough tags must follow.
const char* Indexer::borderFrom(const char* at) const {
    const char* const last = at + std::min(kBorderSearch, end_ - at);
    if (index_.lineEnd == kBinaryLineEnd) {
        while (at != last && !isBorder(at))
            ++at;
    } else {
        at = cutLine(at, end_, index_.lineEnd).next;
        while (at < last && !isBorder(at))
            at = cutLine(at, end_, index_.lineEnd).next;
    }
    return at < last ? at : nullptr;
}

bool Indexer::isBorder(const char* at) const {
    RawTag tag{};
    if (cut(at, tag) != Cut::Tag || tag.code != codes::kType) return false;
    const std::string_view type = trimmed(textOf(tag));
    int number = 0;
    if (type.empty() || parseCode(type.data(), type.data() + type.size(), number)) return false;
    if (isStructure(index_.types.find(type))) return false;
    for (int tried = 0; tried < kTagsTried && tag.next != end_; ++tried) {
        if (cut(tag.next, tag) != Cut::Tag || valueKindOf(tag.code) == ValueKind::None) return false;
    }
    return true;
}

// Objects have no layer, entities have one.
Place Indexer::placeToAssume(const char* at) const {
    RawTag tag{};
    if (cut(at, tag) != Cut::Tag) return Place::Entities;
    while (tag.next != end_ && cut(tag.next, tag) == Cut::Tag && tag.code != codes::kType) {
        if (tag.code == codes::kLayer) return Place::Entities;
    }
    return Place::Objects;
}

void Indexer::readSecondPart(const char* at) {
    for (RecordId id = 0; id < kStandIns; ++id) {
        index_.records.append();
        index_.ends.emplace_back(id, kNoRecord);
    }
    place_ = assumed_ = placeToAssume(at);
    plainKind_ = RecordKind::Object;
    sectionSlot_ = section_ = kContainer;
    released_ = static_cast<std::size_t>(at - start_);
    numbersChecked_ = at;
    if (!scan(at)) return;
    checkNumbers(end_);
    isDone_ = index_.faults.all().empty();
}

// The second part was taken to lie in ENTITIES, but a block ends in it, or the next one begins.
bool Indexer::isInBlockAfterAll() const {
    return assumed_ == Place::Entities && place_ == Place::Entities && section_ == kContainer;
}

void Indexer::becomeBlocks() {
    place_ = assumed_ = Place::Blocks;
    groupSlot_ = group_ = kContainer;
    sectionSlot_ = section_ = kSectionOfBlock;
}

// The first indexer has come to where the second one began, or beyond it. Ends when the second part is taken over.
Indexer::Step Indexer::joinSecond(const char* at) {
    const bool isMet = at == secondBegin_;
    secondBegin_ = nullptr;
    const std::unique_ptr<Second> second = std::move(second_);
    if (!isMet || section_ == kNoRecord || (place_ == Place::Blocks) != (group_ != kNoRecord)) return Step::Goes;
    Indexer& other = second->indexer();
    const Index& part = other.index_;
    const bool fits = other.isDone_ && other.assumed_ == place_ && given_.isApartFrom(other.given_) &&
                      !other.given_.has(current_->handle) && index_.types.size() + part.types.size() < kTypeUncounted &&
                      kNoRecord - index_.records.size() > part.records.size();
    if (!fits) return Step::Goes;
    closeMain(at);
    if (!close(at)) return Step::Fails;
    checkNumbers(at);
    takeOver(other);
    return Step::Ends;
}

// Names and records get the numbers that one reader would have given them.
void Indexer::takeOver(Indexer& second) {
    Index& part = second.index_;
    const bool isInBlock = second.assumed_ == Place::Blocks;
    const RecordId standIns[kStandIns] = {isInBlock ? group_ : section_, section_};
    const std::size_t slots[kStandIns] = {isInBlock ? groupSlot_ : sectionSlot_, sectionSlot_};
    const auto base = static_cast<RecordId>(index_.records.size());
    const auto here = [&](RecordId id) {
        if (id == kNoRecord) return id;
        return id < kStandIns ? standIns[id] : base + (id - kStandIns);
    };
    // By number in the second part; 0 until it is met.
    std::vector<std::uint32_t> types(part.types.size());
    std::vector<std::uint32_t> layers(part.layers.size());
    const auto named = [](std::uint32_t number, const Interner& from, std::vector<std::uint32_t>& known, Interner& to) {
        if (number != 0 && known[number] == 0) known[number] = to.intern(from[number]);
        return known[number];
    };
    for (RecordId id = kStandIns; id < part.records.size(); ++id) {
        Record& one = part.records[id];
        one.owner = here(one.owner);
        one.type = static_cast<std::uint16_t>(named(one.type, part.types, types, index_.types));
        one.layer = named(one.layer, part.layers, layers, index_.layers);
        if (part.refers(id)) index_.noteReference(here(id));
    }
    for (auto [ids, ours] : {std::pair{&part.sections, &index_.sections}, std::pair{&part.tables, &index_.tables},
                             std::pair{&part.headerVariables, &index_.headerVariables}}) {
        for (const RecordId id : *ids)
            ours->push_back(here(id));
    }
    for (std::size_t slot = 0; slot < part.ends.size(); ++slot) {
        const auto [head, end] = part.ends[slot];
        if (slot >= kStandIns)
            index_.ends.emplace_back(here(head), here(end));
        else if (end != kNoRecord)
            index_.ends[slots[slot]].second = here(end);
    }
    index_.countHandle(part.greatestHandle);
    given_.add(second.given_);
    pointedTo_.add(second.pointedTo_);
    numbersChecked_ = second.numbersChecked_;
    index_.records.takeOver(part.records, kStandIns);
}

}  // namespace qrs::dxf
