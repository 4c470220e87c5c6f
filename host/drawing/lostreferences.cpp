// Clears the references of records to others that are gone.
#include "host/drawing/lostreferences.h"

#include <algorithm>
#include <array>
#include <functional>

#include "host/drawing/objecttags.h"
#include "host/platform/codepage.h"

namespace qrs::host {

using dxf::kNoCode;
using dxf::kNoRecord;
using dxf::RecordId;
using dxf::ReferenceRule;

namespace codes = dxf::codes;

namespace {

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);
constexpr int kCountCodes = 100;  // counts have smaller codes

// One tag of a record whose references are cleared.
struct Field {
    dxf::Tag tag;
    const ReferenceRule* rule;  // null when it refers to nothing
    int section;
    std::size_t group;  // where its 102 group begins
    std::size_t count;  // the field that counts its list
    bool goes;
    bool isChanged;
    std::int64_t number;
};

// The tags of one record, and what is to become of them.
class Clearing {
  public:
    using IsLost = std::function<bool(const ReferenceRule& rule, std::string_view value)>;

    Clearing(const dxf::Drawing& drawing, RecordId record);
    void clear(const IsLost& isLost);
    std::vector<dxf::TagEdit> edits() const;
    // References that went with a list although nothing was lost of them.
    const std::vector<std::uint64_t>& answered() const { return answered_; }
    // Owning references that went with an entry.
    const std::vector<std::uint64_t>& disowned() const { return disowned_; }

  private:
    void lose(std::size_t place);
    void dropEntry(std::size_t place);
    void dropWholeList(std::size_t place);
    void dropGroup(std::size_t begin);
    void dropIfEmptied(std::size_t place);
    void state(std::size_t place);
    void change(std::size_t place, std::int64_t number);

    std::vector<Field> fields_;
    std::vector<std::uint64_t> answered_;
    std::vector<std::uint64_t> disowned_;
};

Clearing::Clearing(const dxf::Drawing& drawing, RecordId record) {
    dxf::ReferencePlace place(drawing.typeNameOf(record));
    std::array<std::size_t, kCountCodes> counts;
    counts.fill(kNowhere);
    std::size_t group = kNowhere;
    dxf::Tag tag;
    for (dxf::TagCursor cursor = drawing.tags(record); cursor.next(tag);) {
        const int sections = place.place().sections();
        const bool wasInGroup = place.place().part() == dxf::Part::Group;
        const ReferenceRule* rule = place.pass(tag.code, tag.value);
        const bool isInGroup = place.place().part() == dxf::Part::Group;
        if (isInGroup && tag.code == codes::kGroup && dxf::trimmed(tag.value).substr(0, 1) == "{")
            group = fields_.size();
        if (place.place().sections() != sections) counts.fill(kNowhere);
        if (tag.code >= 0 && tag.code < kCountCodes) counts[static_cast<std::size_t>(tag.code)] = fields_.size();
        const std::size_t count =
            rule && rule->count != kNoCode ? counts[static_cast<std::size_t>(rule->count)] : kNowhere;
        fields_.push_back(
            {tag, rule, place.place().sections(), isInGroup || wasInGroup ? group : kNowhere, count, false, false, 0});
    }
}

void Clearing::change(std::size_t place, std::int64_t number) {
    fields_[place].isChanged = true;
    fields_[place].number = number;
}

void Clearing::dropEntry(std::size_t place) {
    Field& field = fields_[place];
    const ReferenceRule& rule = *field.rule;
    if (field.goes) return;
    field.goes = true;
    if (place > 0 && rule.before != kNoCode && fields_[place - 1].tag.code == rule.before)
        fields_[place - 1].goes = true;
    for (std::size_t i = 0; i < std::size(rule.after) && rule.after[i] != kNoCode; ++i) {
        const std::size_t next = place + 1 + i;
        if (next >= fields_.size() || fields_[next].tag.code != rule.after[i]) break;
        fields_[next].goes = true;
        if (dxf::isOwning(dxf::referenceOf(rule.after[i]))) disowned_.push_back(dxf::toHandle(fields_[next].tag.value));
    }
    if (field.count == kNowhere) return;
    const Field& count = fields_[field.count];
    const std::int64_t left = (count.isChanged ? count.number : dxf::toInteger(count.tag.value)) - 1;
    change(field.count, std::max(left, std::int64_t{0}));
}

void Clearing::dropWholeList(std::size_t place) {
    const Field lost = fields_[place];
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const Field& other = fields_[i];
        if (other.rule != lost.rule || other.section != lost.section || other.goes) continue;
        answered_.push_back(dxf::toHandle(other.tag.value));
        dropEntry(i);
    }
}

void Clearing::dropGroup(std::size_t begin) {
    for (std::size_t i = begin; i < fields_.size() && fields_[i].group == begin; ++i)
        fields_[i].goes = true;
}

// A group is known by where it begins, so each is looked through once for all entries that it loses.
void Clearing::dropIfEmptied(std::size_t place) {
    const ReferenceRule* rule = fields_[place].rule;
    const std::size_t begin = fields_[place].group;
    if (begin == kNowhere || fields_[begin].goes) return;
    for (std::size_t i = begin; i < fields_.size() && fields_[i].group == begin; ++i)
        if (fields_[i].rule == rule && !fields_[i].goes) return;
    dropGroup(begin);
}

void Clearing::state(std::size_t place) {
    const Field& field = fields_[place];
    const dxf::Statement& statement = field.rule->statement;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const Field& other = fields_[i];
        if (other.tag.code != statement.code || other.section != field.section || other.group != kNowhere) continue;
        const std::int64_t old = dxf::toInteger(other.tag.value);
        const std::int64_t now = (old & statement.kept) | statement.set;
        if (now != old) change(i, now);
        return;
    }
}

void Clearing::lose(std::size_t place) {
    const ReferenceRule& rule = *fields_[place].rule;
    switch (rule.loss) {
        case dxf::Loss::Stays:
            return;
        case dxf::Loss::Entry:
            dropEntry(place);
            if (rule.isWhole) dropWholeList(place);
            break;
        case dxf::Loss::Group:
            if (fields_[place].group != kNowhere) dropGroup(fields_[place].group);
            break;
        case dxf::Loss::Zero:
        case dxf::Loss::Record:  // those that go have gone
            change(place, 0);
            break;
    }
    if (rule.statement.code != kNoCode) state(place);
}

void Clearing::clear(const IsLost& isLost) {
    std::vector<std::size_t> emptied;  // an entry of each group that lost some
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const Field& field = fields_[i];
        if (!field.rule || field.goes || !isLost(*field.rule, field.tag.value)) continue;
        lose(i);
        const bool isFirst = emptied.empty() || fields_[emptied.back()].group != field.group;
        if (field.rule->emptied == dxf::Emptied::Group && isFirst) emptied.push_back(i);
    }
    for (const std::size_t place : emptied)
        dropIfEmptied(place);
}

std::vector<dxf::TagEdit> Clearing::edits() const {
    std::vector<dxf::TagEdit> edits;
    for (const Field& field : fields_) {
        if (!field.goes && !field.isChanged) continue;
        dxf::TagEdit edit{field.tag, false, {}, {}};
        edit.isGone = field.goes;
        if (!field.goes) {
            edit.hasValue = true;
            edit.value = paddedLike(field.tag.value, std::to_string(field.number));
        }
        edits.push_back(std::move(edit));
    }
    return edits;
}

std::wstring layerKey(const dxf::Drawing& drawing, std::string_view name) {
    return platform::foldCase(readText(drawing, name));
}

}  // namespace

// --- what is gone

GoneRecords::GoneRecords(const dxf::Drawing& drawing)
    : drawing_(drawing), handles_(static_cast<std::size_t>(drawing.fileSize())) {}

void GoneRecords::add(RecordId record) {
    const dxf::Record& one = drawing_.record(record);
    if (one.handle != 0) handles_.add(one.handle);
    ++count_;
    dxf::Tag name;
    const bool isLayer = one.kind == dxf::RecordKind::TableRecord && drawing_.typeNameOf(record) == "LAYER";
    if (isLayer && drawing_.findTag(record, codes::kName, name)) layers_.insert(layerKey(drawing_, name.value));
}

bool GoneRecords::isLost(const ReferenceRule& rule, std::string_view value) const {
    if (!rule.isLayerName) return has(dxf::toHandle(value));
    return hasLayers() && layers_.count(layerKey(drawing_, value)) != 0;
}

// --- cleaning

bool ReferenceCleaner::namesGone(RecordId record) {
    dxf::ReferencePlace place(drawing_.typeNameOf(record));
    dxf::RawTag tag{};
    for (sweep_.begin(drawing_.bytes(record)); sweep_.next(tag);) {
        if (tag.code == codes::kComment) continue;
        const std::string_view value = dxf::textOf(tag);
        const ReferenceRule* rule = place.pass(tag.code, value);
        if (rule && rule->loss != dxf::Loss::Stays && gone_.isLost(*rule, value)) return true;
    }
    return false;
}

void ReferenceCleaner::clean(RecordId record) {
    if (!namesGone(record)) return;
    Clearing clearing(drawing_, record);
    clearing.clear([&](const ReferenceRule& rule, std::string_view value) { return gone_.isLost(rule, value); });
    for (const std::uint64_t handle : clearing.answered())
        answers_[handle].insert(drawing_.record(record).handle);
    for (const std::uint64_t handle : clearing.disowned()) {
        const RecordId owned = drawing_.findHandle(handle);
        if (owned != kNoRecord) disowned_.push_back(owned);
    }
    drawing_.editTags(record, clearing.edits());
}

void ReferenceCleaner::cleanAnswers() {
    for (const auto& [handle, reactors] : answers_) {
        const RecordId record = drawing_.findHandle(handle);
        if (record == kNoRecord) continue;
        Clearing clearing(drawing_, record);
        clearing.clear([&reactors = reactors](const ReferenceRule& rule, std::string_view value) {
            return rule.group == "ACAD_REACTORS" && reactors.count(dxf::toHandle(value)) != 0;
        });
        drawing_.editTags(record, clearing.edits());
    }
    answers_.clear();
}

}  // namespace qrs::host
