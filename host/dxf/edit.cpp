// Changing a drawing's records, and taking changes back. The index entry of a changed record follows what it says.
#include <utility>

#include "host/dxf/drawing.h"
#include "host/dxf/require.h"

namespace qrs::dxf {

namespace {

bool isHead(RecordKind kind) {
    return kind == RecordKind::Section || kind == RecordKind::Table || kind == RecordKind::Block;
}

bool isEnd(RecordKind kind) {
    return kind == RecordKind::EndSection || kind == RecordKind::EndTable || kind == RecordKind::EndBlock;
}

}  // namespace

// --- tags

void Drawing::noteProblem() {
    if (unwritable_.empty()) unwritable_ = draft_.problem;
}

void Drawing::takeDraft(RecordId id) {
    const std::string_view old = contents_.of(id);
    contents_.replace(id, draft_.bytes);
    if (id == layerName_.layer) layerName_.layer = kNoRecord;
    changed_.done(old);
    form_->forget(id);
}

void Drawing::reindex(RecordId id) {
    const std::uint64_t handle = record(id).handle;
    RecordFields fields(index_, id);
    form_->readFields(contents_.of(id), fields);
    if (record(id).handle == handle) return;
    index_.countHandle(record(id).handle);
    handles_.add(index_.records, id);
}

void Drawing::setValue(RecordId id, const Tag& tag, std::string_view value) {
    const int code = form_->setValue(stored(id), tag, value, draft_);
    noteProblem();
    if (draft_.bytes == contents_.of(id)) return;
    takeDraft(id);
    if (tag.begin == 0 || isFieldCode(code)) reindex(id);
}

// As findTag; the faster the more records it is asked for.
bool Drawing::sweepTo(RecordId id, int code, Tag& tag) {
    if (!sweep_) sweep_ = std::make_unique<TagSweep>(beginSweep());
    const std::string_view record = bytes(id);
    std::uint32_t begin = 0;
    RecordPlace place;
    RawTag raw{};
    for (sweep_->begin(record); sweep_->next(raw); begin = tag.end) {
        tag = {raw.code, textOf(raw), begin, static_cast<std::uint32_t>(raw.next - record.data())};
        if (raw.code == codes::kComment) continue;
        const Part part = place.pass(raw.code, tag.value);
        if (part == Part::Xdata) return false;
        if (raw.code == code && part == Part::Own) return true;
    }
    return false;
}

// Many entities in a row go to one layer.
const Drawing::LayerName& Drawing::nameOfLayer(RecordId layer) {
    if (layerName_.layer == layer) return layerName_;
    Tag name;
    layerName_.spelled = sweepTo(layer, codes::kName, name) ? std::string(name.value) : std::string();
    const bool isOneLine = layerName_.spelled.find_first_of("\r\n") == std::string::npos;
    layerName_.name = isOneLine ? index_.layers.internCopy(layerName_.spelled) : kNoName;
    layerName_.layer = layer;
    return layerName_;
}

bool Drawing::setLayer(RecordId entity, RecordId layer) {
    const LayerName& name = nameOfLayer(layer);
    Tag tag;
    if (!sweepTo(entity, codes::kLayer, tag)) return false;
    Record& one = index_.records[entity];
    // What the index has of the layer is this very tag; no other tag means anything else after it.
    const bool isPlain = one.kind == RecordKind::Entity && !isBinary() && name.name != kNoName;
    if (!isPlain) return setValue(entity, tag, name.spelled), true;
    form_->setValue(stored(entity), tag, name.spelled, draft_);
    if (draft_.bytes == contents_.of(entity)) return true;
    takeDraft(entity);
    one.layer = name.name;
    return true;
}

void Drawing::editTags(RecordId id, const std::vector<TagEdit>& edits) {
    if (edits.empty()) return;
    form_->editTags(stored(id), edits, draft_);
    noteProblem();
    if (draft_.bytes == contents_.of(id)) return;
    takeDraft(id);
    reindex(id);
}

void Drawing::insertTags(RecordId id, std::uint32_t before, const std::vector<NewTag>& tags) {
    form_->replaceTags(stored(id), before, before, tags, draft_);
    noteProblem();
    if (tags.empty()) return;
    takeDraft(id);
    reindex(id);
}

void Drawing::eraseTags(RecordId id, std::uint32_t begin, std::uint32_t end) {
    form_->replaceTags(stored(id), begin, end, {}, draft_);
    if (begin == end) return;
    takeDraft(id);
    reindex(id);
}

// --- whole records

// The record, or, when it stands for an end that is missing, the one before it.
RecordId Drawing::nearestWithBytes(RecordId id) const {
    for (RecordId near = id; near != kNoRecord; near = previous(near)) {
        if (record(near).stored != 0) return near;
    }
    return id;
}

// A file without its EOF may lack the last line's end as well, which something put after it needs.
void Drawing::endLastLine(RecordId next) {
    const RecordId last = previous(next);
    if (last != kNoRecord && form_->endLastLine(contents_.of(last), draft_)) takeDraft(last);
}

// Finds out what a new record lies under, from the one it stands after.
void Drawing::settle(RecordId id) {
    Record& one = index_.records[id];
    const RecordId before = previous(id);
    if (one.kind == RecordKind::Section || one.kind == RecordKind::EndOfFile || before == kNoRecord) return;
    RecordId container = kNoRecord;
    RecordId main = kNoRecord;
    const Record& neighbour = record(before);
    if (isHead(neighbour.kind)) {
        container = before;
    } else if (isEnd(neighbour.kind)) {
        if (neighbour.owner != kNoRecord) container = record(neighbour.owner).owner;
    } else if ((neighbour.flags & kSubEntity) != 0) {
        if (neighbour.type != kTypeSeqend) main = neighbour.owner;
        container = record(neighbour.owner).owner;
    } else {
        if (neighbour.type == kTypePolyline || neighbour.type == kTypeInsert) main = before;
        container = neighbour.owner;
    }
    const bool isSub = one.kind == RecordKind::Entity && main != kNoRecord &&
                       (one.type == kTypeVertex || one.type == kTypeAttrib || one.type == kTypeSeqend);
    one.owner = isSub ? main : container;
    if (isSub) one.flags |= kSubEntity;
}

RecordId Drawing::insertRecord(RecordId before, RecordKind kind, const std::vector<NewTag>& tags) {
    require(before < recordCount(), "no record to put another before");
    require(
        !tags.empty() && tags.front().code == (kind == RecordKind::HeaderVariable ? codes::kVariable : codes::kType),
        "a new record must begin with code 0, a header variable with 9");
    const auto id = static_cast<RecordId>(recordCount());
    require(id != kNoRecord, "too many records");
    if (record(before).stored == 0) endLastLine(before);
    form_->writeRecord(tags, contents_.of(nearestWithBytes(before)), draft_);
    noteProblem();

    Record& one = index_.records.append();
    one.kind = kind;
    one.flags = kNew;
    contents_.noteNew(id);
    order_.insert(id, before);
    takeDraft(id);
    reindex(id);
    settle(id);
    index_.noteNew(id);
    return id;
}

void Drawing::eraseRecord(RecordId id, bool erase) {
    if (isErased(id) == erase) return;
    contents_.setErased(id, erase);
    const std::uint16_t type = record(id).type;
    if (type != kTypePolyline && type != kTypeInsert) return;
    for (RecordId sub = order_.next(id); sub != kNoRecord; sub = order_.next(sub)) {
        const Record& one = record(sub);
        if ((one.flags & kSubEntity) != 0 && one.owner == id) {
            contents_.setErased(sub, erase);
        } else if ((one.flags & kErased) == 0) {
            break;
        }
    }
}

void Drawing::adjustTableCount(RecordId table, int by) {
    Tag tag;
    if (by == 0 || !findTag(table, codes::kTableCount, tag)) return;
    const std::string_view value = tag.value;
    std::string count = std::to_string(toInteger(value) + by);
    const std::size_t width = value.find_last_not_of(" \t") + 1;
    if (count.size() < width && value.front() == ' ') count.insert(0, width - count.size(), ' ');
    setValue(table, tag, count);
}

std::uint64_t Drawing::newHandle() {
    const RecordId variable = findHeaderVariable("$HANDSEED");
    Tag tag;
    const bool hasSeed = variable != kNoRecord && findTag(variable, codes::kHandle, tag);
    std::uint64_t handle = hasSeed ? toHandle(tag.value) : 0;
    if (handle < seed_ || handle > kGreatestHandle) handle = seed_;
    if (handle <= index_.greatestHandle) handle = index_.greatestHandle + 1;
    seed_ = handle + 1;
    if (hasSeed) setValue(variable, tag, handleText(seed_));
    return handle;
}

// --- taking changes back

void Drawing::beginStep(std::wstring name) {
    DrawingMarks marks;
    marks.seed = seed_;
    marks.greatestHandle = index_.greatestHandle;
    marks.unwritable = unwritable_;
    contents_.beginStep(std::move(name), std::move(marks));
}

bool Drawing::takeBack() {
    const Journal::Step* step = contents_.lastStep();
    if (step == nullptr) return false;
    seed_ = step->marks.seed;
    index_.greatestHandle = step->marks.greatestHandle;
    unwritable_ = step->marks.unwritable;
    contents_.takeBack();
    form_->forgetAll();
    handles_ = HandleIndex();
    layerName_.layer = kNoRecord;
    return true;
}

}  // namespace qrs::dxf
