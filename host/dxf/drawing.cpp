// Opening, looking at and saving a drawing.
#include "host/dxf/drawing.h"

#include <algorithm>

#include "host/dxf/binary.h"
#include "host/dxf/text.h"
#include "host/dxf/version.h"
#include "host/platform/codepage.h"

namespace qrs::dxf {

namespace {

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool sameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return upper(x) == upper(y); });
}

}  // namespace

Drawing::~Drawing() = default;

std::unique_ptr<Drawing> Drawing::open(const std::filesystem::path& native, platform::Error& error) {
    std::unique_ptr<Drawing> drawing(new Drawing);
    drawing->marks_.push_back(platform::fileMark(native));
    drawing->file_ = platform::MappedFile::open(native, error);
    if (drawing->file_ == nullptr) return nullptr;
    if (!drawing->load(drawing->file_->bytes(), native.u8string(), error)) return nullptr;
    return drawing;
}

std::unique_ptr<Drawing> Drawing::fromBytes(std::string bytes, const std::string& name, platform::Error& error) {
    std::unique_ptr<Drawing> drawing(new Drawing);
    drawing->ownBytes_ = std::move(bytes);
    if (!drawing->load(drawing->ownBytes_, name, error)) return nullptr;
    return drawing;
}

bool Drawing::load(std::string_view bytes, const std::string& name, platform::Error& error) {
    bytes_ = bytes;
    Damage damage;
    if (!buildIndex(bytes, file_.get(), index_, damage)) {
        const std::string place = isBinary() ? " byte " + std::to_string(damage.offset)
                                             : std::to_string(lineNumber(bytes, damage.offset, index_.lineEnd));
        error.message = name + ":" + place + ": " + damage.reason;
        return false;
    }
    originalCount_ = static_cast<RecordId>(index_.records.size());
    if (isBinary()) texts_ = std::make_unique<TextCache>();
    readHeader();
    gatherWarnings();
    return true;
}

void Drawing::gatherWarnings() {
    std::vector<Doubt>& doubts = index_.doubts;
    std::stable_sort(doubts.begin(), doubts.end(), [](const Doubt& a, const Doubt& b) { return a.offset < b.offset; });
    std::size_t counted = 0;
    std::uint64_t line = 1;
    for (Doubt& doubt : doubts) {
        Warning warning;
        warning.offset = doubt.offset;
        if (!isBinary()) {
            line += lineNumber(bytes_.substr(counted), doubt.offset - counted, index_.lineEnd) - 1;
            counted = doubt.offset;
            warning.line = line;
        }
        if (doubt.record != kNoRecord) warning.handle = record(doubt.record).handle;
        warning.text = std::move(doubt.text);
        warnings_.push_back(std::move(warning));
    }
    if (index_.furtherDoubts != 0) {
        Warning warning = warnings_.back();
        warning.handle = 0;
        warning.text = std::to_string(index_.furtherDoubts) + " further errors";
        warnings_.push_back(std::move(warning));
    }
    doubts = {};
}

std::string Warning::message() const {
    std::string place = line != 0 ? "line " + std::to_string(line) : "byte " + std::to_string(offset);
    if (handle != 0) place += ", handle " + handleText(handle);
    return place + ": " + text;
}

void Drawing::readHeader() {
    Tag tag;
    const auto variable = [&](std::string_view name, int code) {
        const RecordId id = findHeaderVariable(name);
        return id != kNoRecord && findTag(id, code, tag);
    };
    if (variable("$ACADVER", codes::kText)) version_ = trimmed(tag.value);
    handling_ = variable("$HANDLING", codes::kFlags) && toInteger(tag.value) != 0;
    if (versionOf(version_) >= kFirstInUtf8 || index_.hasUtf8Mark) {
        codePage_ = platform::kUtf8;
    } else {
        if (variable("$DWGCODEPAGE", codes::kOtherText)) codePage_ = codePageOf(tag.value);
        if (codePage_ == 0 || !platform::isKnownCodePage(codePage_)) codePage_ = platform::ansiCodePage();
    }
}

template <typename Sink>
void Drawing::emit(Sink&& sink) const {
    std::uint64_t begin = 0;  // of the stretch of the file not yet handed out
    std::uint64_t end = 0;
    const auto flush = [&] {
        if (end != begin) sink(bytes_.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)));
        begin = end;
    };
    for (RecordId id = first(); id != kNoRecord; id = next(id)) {
        const Record& one = record(id);
        if ((one.flags & kEdited) != 0) {
            flush();
            sink(arena_.at(one.offset, one.stored));
        } else {
            if (one.offset != end) {
                flush();
                begin = one.offset;
            }
            end = one.offset + one.stored;
        }
    }
    flush();
}

bool Drawing::save(const std::filesystem::path& native, bool keepBackup, platform::Error& error) {
    // Looked at again behind the last byte: somebody may change the mapped file while it is copied.
    const auto isMappedStill = [&] { return file_ == nullptr || file_->isUnchanged(error); };
    if (!unwritable_.empty()) {
        error.message = native.u8string() + ": " + unwritable_;
        return false;
    }
    platform::AtomicFile file;
    const platform::FileMark target = platform::fileMark(native);
    if (!isOverwritable(target, native, error)) return false;
    if (!isMappedStill() || !file.begin(native, error)) return false;
    std::size_t released = 0;
    emit([&](std::string_view piece) {
        // Steps of a size, each given back when it is written: memory does not grow to that of the file.
        for (; !piece.empty(); piece.remove_prefix(std::min(piece.size(), kReleaseStep))) {
            const std::string_view step = piece.substr(0, kReleaseStep);
            file.write(step);
            if (file_ == nullptr || step.data() < bytes_.data() || step.data() >= bytes_.data() + bytes_.size())
                continue;
            const auto written = static_cast<std::size_t>(step.data() + step.size() - bytes_.data());
            if (written - released < kReleaseStep) continue;
            file_->release(released, written);
            released = written;
        }
    });
    if (!isMappedStill() || !file.commit(keepBackup, error)) return false;
    modified_ = false;
    ++saves_;
    noteSaved(platform::fileMark(native));
    return true;
}

bool Drawing::isOverwritable(const platform::FileMark& target, const std::filesystem::path& native,
                             platform::Error& error) const {
    for (std::size_t i = 0; i < marks_.size() && target.exists; ++i) {
        if (marks_[i].place != target.place) continue;
        // Of the mapped file its identity tells; whether it was written into is looked at apart.
        const bool isMapped = i == 0 && isOpenedStill_ && file_ != nullptr;
        if (isMapped ? file_->isSameFile(native) : platform::isSameState(marks_[i], target)) continue;
        error.message = native.u8string() + ": was saved by somebody else since this drawing was opened; not saved";
        return false;
    }
    return true;
}

void Drawing::noteSaved(const platform::FileMark& saved) {
    for (std::size_t i = 0; i < marks_.size(); ++i) {
        if (marks_[i].place != saved.place) continue;
        marks_[i] = saved;
        if (i == 0) isOpenedStill_ = false;
        return;
    }
    marks_.push_back(saved);
    if (marks_.size() == 1) isOpenedStill_ = false;
}

std::string Drawing::toBytes() const {
    std::string all;
    all.reserve(bytes_.size());
    emit([&](std::string_view piece) { all += piece; });
    return all;
}

// --- order

// The first of the new records that stand before a record of the file, or that record itself.
RecordId Drawing::firstOfRow(RecordId anchor) const {
    return (record(anchor).flags & kHasNewBefore) == 0 ? anchor : newRows_.find(anchor)->second.first;
}

RecordId Drawing::nextInOrder(RecordId id) const {
    if (isNew(id)) {
        const NewPlace& place = newPlaces_[id - originalCount_];
        return place.next != kNoRecord ? place.next : place.anchor;
    }
    const RecordId following = id + 1;
    return following < originalCount_ ? firstOfRow(following) : kNoRecord;
}

RecordId Drawing::first() const {
    const RecordId id = firstOfRow(0);  // no drawing is without records
    return isErased(id) ? next(id) : id;
}

RecordId Drawing::next(RecordId id) const {
    do {
        id = nextInOrder(id);
    } while (id != kNoRecord && isErased(id));
    return id;
}

RecordId Drawing::previousAlive(RecordId id) const {
    do {
        RecordId anchor = id;
        RecordId before = kNoRecord;
        if (isNew(id)) {
            const NewPlace& place = newPlaces_[id - originalCount_];
            anchor = place.anchor;
            before = place.previous;
        } else if ((record(id).flags & kHasNewBefore) != 0) {
            before = newRows_.find(id)->second.last;
        }
        if (before == kNoRecord && anchor != 0) before = anchor - 1;
        id = before;
    } while (id != kNoRecord && isErased(id));
    return id;
}

// --- finding

RecordId Drawing::findHandle(std::uint64_t handle) const {
    if (!handles_.isBuilt()) handles_.build(index_.records);
    return handles_.find(index_.records, handle);
}

RecordId Drawing::findNamed(const std::vector<RecordId>& heads, std::string_view name) const {
    Tag tag;
    for (const RecordId id : heads) {
        if (!isErased(id) && findTag(id, codes::kName, tag) && sameName(trimmed(tag.value), name)) return id;
    }
    return kNoRecord;
}

RecordId Drawing::findSection(std::string_view name) const {
    return findNamed(index_.sections, name);
}

RecordId Drawing::findTable(std::string_view name) const {
    return findNamed(index_.tables, name);
}

RecordId Drawing::findHeaderVariable(std::string_view name) const {
    for (const RecordId id : index_.headerVariables) {
        if (!isErased(id) && sameName(typeNameOf(id), name)) return id;
    }
    return kNoRecord;
}

RecordId Drawing::endOf(RecordId head) const {
    if (const auto found = newEnds_.find(head); found != newEnds_.end()) return found->second;
    const auto& ends = index_.ends;
    const auto place =
        std::lower_bound(ends.begin(), ends.end(), head, [](const auto& pair, RecordId id) { return pair.first < id; });
    return place != ends.end() && place->first == head ? place->second : kNoRecord;
}

std::string_view Drawing::typeName(std::uint16_t type) const {
    return type == kTypeUncounted ? std::string_view() : index_.types[type];
}

std::string_view Drawing::typeNameOf(RecordId id) const {
    if (record(id).type != kTypeUncounted) return typeName(record(id).type);
    Tag tag;
    return tags(id).next(tag) ? trimmed(tag.value) : std::string_view();
}

std::string_view Drawing::name(NameId id) const {
    return index_.layers[id];
}

std::size_t Drawing::nameCount() const {
    return index_.layers.size();
}

// --- tags

std::string_view Drawing::bytes(RecordId id) const {
    if (!isBinary()) return storedBytes(id);
    const std::string_view known = texts_->find(id);
    if (known.data() != nullptr) return known;
    std::string text;
    appendRecordText(index_.codeForm, record(id).kind == RecordKind::Preamble ? std::string_view() : storedBytes(id),
                     text);
    return texts_->keep(id, text);
}

std::string_view Drawing::storedBytes(RecordId id) const {
    const Record& one = record(id);
    if ((one.flags & kEdited) != 0) return arena_.at(one.offset, one.stored);
    return bytes_.substr(static_cast<std::size_t>(one.offset), one.stored);
}

bool Drawing::findTag(RecordId id, int code, Tag& tag, int nth) const {
    const bool isInXdata = isXdataCode(code);
    for (RecordWalk walk(tags(id)); walk.next(tag);) {
        if (!isInXdata && walk.part() == Part::Xdata) return false;
        const bool isLookedAt = isInXdata || walk.isOwn() || code == codes::kGroup;
        if (tag.code == code && isLookedAt && nth-- == 0) return true;
    }
    return false;
}

// --- what the whole drawing says of itself

bool Drawing::hasHandles() const {
    return handling_ || versionOf(version_) >= kFirstWithHandles || index_.greatestHandle != 0;
}

std::wstring Drawing::decode(std::string_view value) const {
    return decodeText(codePage_, value);
}

std::string Drawing::encode(std::wstring_view text) const {
    return encodeText(codePage_, text);
}

}  // namespace qrs::dxf
