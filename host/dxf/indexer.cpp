// The one pass over a file that finds its records.
#include "host/dxf/indexer.h"

#include "host/dxf/binary.h"
#include "host/dxf/sizes.h"
#include "host/dxf/tags.h"
#include "host/platform/language.h"

namespace qrs::dxf {

using platform::translated;

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

}  // namespace

// A piece of a file as a message can show it.
std::string printable(std::string_view text) {
    constexpr std::size_t kShown = 24;
    std::string shown(text.substr(0, kShown));
    for (char& c : shown) {
        if (c < ' ' || c > '~') c = '?';
    }
    return text.size() > kShown ? shown + "..." : shown;
}

// Kinds of records that have handles and name those of others.
bool hasPointers(RecordKind kind) {
    switch (kind) {
        case RecordKind::Table:
        case RecordKind::TableRecord:
        case RecordKind::Block:
        case RecordKind::Entity:
        case RecordKind::EndBlock:
        case RecordKind::Object:
            return true;
        default:
            return false;
    }
}

Indexer::Step Indexer::fails(const char* at, std::string reason) {
    fault_.offset = static_cast<std::size_t>(at - start_);
    fault_.text = std::move(reason);
    return Step::Fails;
}

bool Indexer::close(const char* at) {
    if (current_ == nullptr) return true;
    const std::uint64_t length = static_cast<std::uint64_t>(at - start_) - current_->offset;
    if (length > 0xFFFFFFFFu) {
        fails(start_ + current_->offset, translated("a record of more than 4 GB"));
        return false;
    }
    current_->stored = static_cast<std::uint32_t>(length);
    index_.countHandle(current_->handle);
    if (current_->handle != 0 && !given_.add(current_->handle)) {
        fault(start_ + current_->offset, lastId(), FaultKind::HandleTwice,
              translated("another record has this handle too"));
    }
    if (current_->type == kTypeLwPolyline) checkVertices(at);
    return true;
}

Indexer::Step Indexer::open(const char* at, RecordKind kind, std::uint16_t type, RecordId owner) {
    if (!close(at)) return Step::Fails;
    if (index_.records.size() >= kNoRecord) return fails(at, translated("too many records"));
    if (const auto read = static_cast<std::size_t>(at - start_); read - released_ >= kReleaseStep) {
        // About as much as the index takes, so that memory stays near the size of the file; not more, because all of it
        // is fetched again when the drawing is saved.
        if (isUnwanted_) return fails(at, {});
        checkNumbers(at);
        const bool isFirstQuarter = read <= static_cast<std::size_t>(end_ - start_) / 4;
        if (file_ != nullptr && isFirstQuarter) file_->release(released_, read);
        released_ = read;
    }
    current_ = &index_.records.append();
    current_->offset = static_cast<std::uint64_t>(at - start_);
    current_->owner = owner;
    current_->type = type;
    current_->kind = kind;
    fields_.begin(*current_);
    return Step::Goes;
}

Indexer::Step Indexer::openHead(const char* at, RecordKind kind, std::uint16_t type, RecordId owner,
                                std::size_t& slot) {
    const Step step = open(at, kind, type, owner);
    if (step == Step::Goes) {
        slot = index_.ends.size();
        index_.ends.emplace_back(lastId(), kNoRecord);
    }
    return step;
}

bool Indexer::run(std::size_t second) {
    const std::string_view bytes(start_, static_cast<std::size_t>(end_ - start_));
    secondBegin_ = second < bytes.size() ? start_ + second : nullptr;
    const bool isWhole = bytes.substr(0, kBinarySignature.size()) == kBinarySignature ? binary() : text();
    if (!isWhole) return false;
    checkNumbers(end_);
    checkPointers();
    checkBlocks();
    checkLastLine();
    return true;
}

bool Indexer::text() {
    index_.lineEnd = lineEndOf({start_, static_cast<std::size_t>(end_ - start_)});
    const char* at = start_;
    if (!preamble(at)) return false;
    share();
    return scan(at);
}

bool Indexer::binary() {
    index_.lineEnd = kBinaryLineEnd;
    const char* at = start_ + kBinarySignature.size();
    index_.codeForm = codeFormOf({at, static_cast<std::size_t>(end_ - at)});
    RawTag tag{};
    Cut result = cut(at, tag);
    while (result == Cut::Tag && tag.code == codes::kComment) {
        at = tag.next;
        result = cut(at, tag);
    }
    if (result != Cut::Tag) return cutFailure(at, result);
    if (!takePreamble(at, tag)) return false;
    share();
    return scan(at);
}

Cut Indexer::cut(const char* at, RawTag& tag) const {
    return index_.lineEnd == kBinaryLineEnd ? cutBinary(index_.codeForm, at, end_, tag)
                                            : cutTag(at, end_, index_.lineEnd, tag);
}

// Passes over byte-order mark, blank lines and comments before the first tag.
bool Indexer::preamble(const char*& at) {
    const std::string_view bytes(start_, static_cast<std::size_t>(end_ - start_));
    index_.hasUtf8Mark = bytes.substr(0, kUtf8Mark.size()) == kUtf8Mark;
    if (index_.hasUtf8Mark) at += kUtf8Mark.size();
    RawTag tag{};
    for (;;) {
        if (at == end_) {
            fails(at, translated("not a DXF file: nothing in it"));
            return false;
        }
        const Line line = cutLine(at, end_, index_.lineEnd);
        if (trimmed({line.begin, static_cast<std::size_t>(line.end - line.begin)}).empty() && line.hasEnd) {
            at = line.next;
            continue;
        }
        const Cut result = cut(at, tag);
        if (result == Cut::Tag && tag.code == codes::kComment) {
            at = tag.next;
            continue;
        }
        if (result == Cut::NoCode) {
            fails(at, translated("not a DXF file: first line is no group code"));
        } else if (result == Cut::NoValue) {
            return cutFailure(at, result);
        } else {
            return takePreamble(at, tag);
        }
        return false;
    }
}

// The first tag decides whether this is a drawing at all.
bool Indexer::takePreamble(const char* at, const RawTag& tag) {
    if (tag.code != codes::kType) {
        fails(at, translated("not a DXF file: 0 SECTION expected, found group code %1", tag.code));
        return false;
    }
    const std::uint16_t type = typeNumber(index_.types.intern(trimmed(textOf(tag))));
    if (type != kTypeSection && type != kTypeEndOfFile) {
        fails(at, translated("not a DXF file: 0 SECTION expected, found %1", printable(trimmed(textOf(tag)))));
        return false;
    }
    return at == start_ || open(start_, RecordKind::Preamble, 0, kNoRecord) == Step::Goes;
}

bool Indexer::cutFailure(const char* at, Cut cut) {
    if (at == end_) {
        const char* last = at == start_ ? at : at - 1;
        fails(last, translated("the file is cut off: 0 EOF is missing"));
    } else if (cut == Cut::NoValue) {
        fails(at, index_.lineEnd == kBinaryLineEnd
                      ? translated("the file is cut off: a group code or its value is not whole")
                      : translated("the file is cut off: no value after the last group code"));
    } else {
        const Line line = cutLine(at, end_, index_.lineEnd);
        const std::string_view text(line.begin, static_cast<std::size_t>(line.end - line.begin));
        if (text.find('\0') != std::string_view::npos) {
            fails(at, translated("NUL byte in a group code"));
        } else {
            fails(at, translated("group code expected, found \"%1\"", printable(text)));
        }
    }
    return false;
}

bool Indexer::scan(const char* at) {
    if (index_.lineEnd == '\n') return scanText<'\n'>(at);
    if (index_.lineEnd == '\r') return scanText<'\r'>(at);
    return index_.codeForm == CodeForm::Long ? scanBinary<CodeForm::Long>(at) : scanBinary<CodeForm::Short>(at);
}

// No tag begins here: the file's end, where only EOF may be missing, or damage.
bool Indexer::atEnd(const char* at, Cut cut) {
    if (at != end_ || place_ != Place::Outside) return cutFailure(at, cut);
    fault(at == start_ ? at : at - 1, kNoRecord, FaultKind::MissingEnd, translated("EOF is missing"));
    return open(at, RecordKind::EndOfFile, kTypeEndOfFile, kNoRecord) == Step::Goes && close(end_);
}

template <char lineEnd>
bool Indexer::scanText(const char* at) {
    RawTag tag{};
    LineEnds ends;
    for (;;) {
        bool matters = true;
        const char* const begin = at;
        const auto left = static_cast<std::size_t>(end_ - at);
        const CodeCache::Entry* known =
            kFastTags && left >= LineEnds::kReach ? cache_.fastTag(at, lineEnd, ends, tag) : nullptr;
        if (known != nullptr) {
            matters = known->matters;
        } else {
            const Cut cut = cutTag(at, end_, lineEnd, tag);
            if (cut != Cut::Tag) return atEnd(at, cut);
            if (left >= LineEnds::kReach) cache_.learn(at, tag, lineEnd);
            matters = CodeCache::mattersToIndex(tag.code);
            if (tag.code == kUnreadableCode)
                fault(at, lastId(), FaultKind::NoGroupCode, translated("a number that is no group code"));
        }
        at = tag.next;
        if (!matters) continue;
        const Step step = take(begin, tag, textOf(tag));
        if (step != Step::Goes) return step == Step::Ends;
    }
}

template <CodeForm form>
bool Indexer::scanBinary(const char* at) {
    RawTag tag{};
    std::string number;
    for (;;) {
        const char* const begin = at;
        const Cut cut = cutBinary<form>(at, end_, tag);
        if (cut != Cut::Tag) return atEnd(at, cut);
        at = tag.next;
        if (!CodeCache::mattersToIndex(tag.code)) continue;
        std::string_view value = textOf(tag);
        if (!isXdataCode(tag.code) && !isTextual(valueKindOf(tag.code))) {
            number.clear();
            appendValueText(tag, number);
            value = number;
        }
        const Step step = take(begin, tag, value);
        if (step != Step::Goes) return step == Step::Ends;
    }
}

// A tag that matters to the index.
Indexer::Step Indexer::take(const char* at, const RawTag& tag, std::string_view value) {
    if (tag.code == codes::kType || (tag.code == codes::kVariable && place_ == Place::Header))
        return startRecord(at, tag);
    const Reference reference = referenceOf(tag.code);
    if (isResolved(reference)) {
        if (fields_.isReference(tag.code)) index_.noteReference(lastId());
        if (const std::uint64_t handle = toHandle(value); handle != 0 && hasPointers(current_->kind)) {
            pointedTo_.add(handle);
        }
        return Step::Goes;
    }
    if (reference == Reference::Xdata) index_.noteReference(lastId());
    if (tag.code != codes::kVariable) fields_.take(tag.code, value, index_.layers, false);
    return Step::Goes;
}

bool buildIndex(std::string_view bytes, const platform::MappedFile* file, Index& index, Fault& fault,
                std::size_t second) {
    return Indexer(bytes, file, index, fault).run(second);
}

}  // namespace qrs::dxf
