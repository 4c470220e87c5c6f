// Reads a record section by section, and finds which of its items the written ones replace.
#include "host/objectarx/db/fields.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "host/dxf/groupcodes.h"
#include "host/dxf/recordwalk.h"
#include "host/objectarx/db/state.h"
#include "host/platform/text.h"

namespace qrs::host {

namespace codes = dxf::codes;

namespace {

// Above this many pairs of items that may belong together, the search for them would take longer than it is worth.
constexpr std::size_t kMostPairs = std::size_t{1} << 22;

template <typename Integer>
bool fitsInto(std::string_view value) {
    // A text that is no number gives either fallback.
    const std::int64_t number = dxf::toInteger(value, std::numeric_limits<std::int64_t>::max());
    return number >= std::numeric_limits<Integer>::min() && number <= std::numeric_limits<Integer>::max();
}

bool isHex(std::string_view value) {
    std::string bytes;
    return platform::appendHexBytes(value, bytes);
}

bool isReadable(const dxf::Drawing& drawing, ValueKind kind, std::string_view value) {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    switch (kind) {
        case ValueKind::Text:
            return true;
        case ValueKind::Real:
        case ValueKind::Point:
            return std::isfinite(dxf::toReal(value, kNone));
        case ValueKind::Short:
            return fitsInto<std::int16_t>(value);
        case ValueKind::Long:
            return fitsInto<std::int32_t>(value);
        case ValueKind::Name:
            return drawing.findHandle(dxf::toHandle(value)) != dxf::kNoRecord;
        case ValueKind::Binary:
            return isHex(dxf::trimmed(value));
        case ValueKind::None:
        case ValueKind::Unknown:
            break;
    }
    return false;
}

// Whether the tag is the y or z of the point that the item began.
bool continuesPoint(const PresentItem& item, int code) {
    if (item.tags.empty() || valueKind(item.code) != ValueKind::Point || item.tags.size() > 2) return false;
    return code == item.tags.back().code + codes::kCoordinateStep;
}

// Neither embedded objects nor extended data are of any section.
bool isOfSections(dxf::Part part) {
    return part == dxf::Part::Own || part == dxf::Part::Group;
}

std::vector<PresentSection> readSections(const dxf::Drawing& drawing, dxf::RecordId record) {
    std::vector<PresentSection> sections;
    dxf::RecordWalk walk(drawing.tags(record));
    for (dxf::Tag tag; walk.next(tag) && isOfSections(walk.part());) {
        if (!walk.isOwn()) {
            if (!sections.empty()) sections.back().end = tag.end;
            continue;
        }
        if (tag.code == codes::kSubclass) {
            if (!sections.empty() || dxf::trimmed(tag.value) != "AcDbEntity") {
                sections.emplace_back();
                sections.back().mark = readText(drawing, dxf::trimmed(tag.value));
                sections.back().end = tag.end;
            }
            continue;
        }
        if (sections.empty()) continue;
        std::vector<PresentItem>& items = sections.back().items;
        if (items.empty() || !continuesPoint(items.back(), tag.code) || items.back().end != tag.begin) {
            items.emplace_back();
            items.back().code = tag.code;
            items.back().begin = tag.begin;
        }
        PresentItem& item = items.back();
        item.isReadable = item.isReadable && isReadable(drawing, valueKind(item.code), tag.value);
        item.tags.push_back({tag.code, std::string(tag.value)});
        item.end = sections.back().end = tag.end;
    }
    return sections;
}

double coordinate(const std::vector<dxf::NewTag>& tags, std::size_t axis) {
    return axis < tags.size() ? dxf::toReal(tags[axis].value) : 0.0;
}

bool isEqual(const dxf::Drawing& drawing, const PresentItem& present, const WrittenItem& written) {
    if (present.code != written.code) return false;
    const std::string& a = present.tags.front().value;
    const std::string& b = written.tags.front().value;
    const ValueKind kind = valueKind(present.code);
    // Of an object that was erased meanwhile too.
    if (kind == ValueKind::Name) return dxf::toHandle(a) == dxf::toHandle(b);
    if (!present.isReadable) return false;
    switch (kind) {
        case ValueKind::Short:
        case ValueKind::Long:
            return dxf::toInteger(a) == dxf::toInteger(b);
        case ValueKind::Real:
            return dxf::toReal(a) == dxf::toReal(b);
        case ValueKind::Point:
            for (std::size_t axis = 0; axis < 3; ++axis)
                if (coordinate(present.tags, axis) != coordinate(written.tags, axis)) return false;
            return true;
        default:
            return readText(drawing, a) == readText(drawing, b);
    }
}

// --- which item of the record becomes which of the written ones

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

struct Step {
    std::size_t present = kNone;
    std::size_t written = kNone;
    bool isEqual = false;
};

class Alignment {
  public:
    Alignment(const dxf::Drawing& drawing, const std::vector<PresentItem>& present,
              const std::vector<WrittenItem>& written)
        : drawing_(drawing), present_(present), written_(written) {}

    std::vector<Step> steps() {
        std::size_t begin = 0;
        std::size_t presentEnd = present_.size();
        std::size_t writtenEnd = written_.size();
        std::vector<Step> steps;
        while (begin < presentEnd && begin < writtenEnd && isEqualAt(begin, begin)) {
            steps.push_back({begin, begin, true});
            ++begin;
        }
        std::vector<Step> tail;
        while (presentEnd > begin && writtenEnd > begin && isEqualAt(presentEnd - 1, writtenEnd - 1))
            tail.push_back({--presentEnd, --writtenEnd, true});
        if ((presentEnd - begin) > kMostPairs / (writtenEnd - begin + 1)) {
            for (std::size_t i = begin; i < presentEnd; ++i)
                steps.push_back({i, kNone, false});
            for (std::size_t j = begin; j < writtenEnd; ++j)
                steps.push_back({kNone, j, false});
        } else {
            alignMiddle(begin, presentEnd, writtenEnd, steps);
        }
        steps.insert(steps.end(), tail.rbegin(), tail.rend());
        return steps;
    }

  private:
    bool isEqualAt(std::size_t i, std::size_t j) const {
        return present_[i].isOwn && isEqual(drawing_, present_[i], written_[j]);
    }
    // Only what says something and is the class's goes; all else stays at no cost.
    unsigned costOfLeaving(std::size_t i) const { return present_[i].isOwn && present_[i].isReadable ? 1 : 0; }

    // The fewest changes that make one row the other.
    void alignMiddle(std::size_t begin, std::size_t presentEnd, std::size_t writtenEnd, std::vector<Step>& steps) {
        const std::size_t width = writtenEnd - begin + 1;
        std::vector<unsigned> cost((presentEnd - begin + 1) * width);
        const auto at = [&](std::size_t i, std::size_t j) -> unsigned& {
            return cost[(i - begin) * width + (j - begin)];
        };
        constexpr unsigned kNever = std::numeric_limits<unsigned>::max() / 2;
        const auto pairCost = [&](std::size_t i, std::size_t j) {
            if (!present_[i].isOwn || present_[i].code != written_[j].code) return kNever;
            return isEqualAt(i, j) ? 0u : 1u;
        };
        for (std::size_t j = begin; j <= writtenEnd; ++j)
            at(presentEnd, j) = static_cast<unsigned>(writtenEnd - j);
        for (std::size_t i = presentEnd; i-- > begin;) {
            at(i, writtenEnd) = at(i + 1, writtenEnd) + costOfLeaving(i);
            for (std::size_t j = writtenEnd; j-- > begin;)
                at(i, j) =
                    std::min({pairCost(i, j) + at(i + 1, j + 1), costOfLeaving(i) + at(i + 1, j), 1 + at(i, j + 1)});
        }
        for (std::size_t i = begin, j = begin; i < presentEnd || j < writtenEnd;) {
            if (i < presentEnd && j < writtenEnd && at(i, j) == pairCost(i, j) + at(i + 1, j + 1)) {
                steps.push_back({i, j, isEqualAt(i, j)});
                ++i, ++j;
            } else if (i < presentEnd && at(i, j) == costOfLeaving(i) + at(i + 1, j)) {
                steps.push_back({i++, kNone, false});
            } else {
                steps.push_back({kNone, j++, false});
            }
        }
    }

    const dxf::Drawing& drawing_;
    const std::vector<PresentItem>& present_;
    const std::vector<WrittenItem>& written_;
};

void replaceItem(dxf::Drawing& drawing, dxf::RecordId record, const PresentItem& present, const WrittenItem& written) {
    if (present.tags.size() == 1 && written.tags.size() == 1) {
        dxf::Tag tag;
        tag.begin = present.begin;
        tag.end = present.end;
        drawing.setValue(record, tag, paddedLike(present.tags.front().value, written.tags.front().value));
        return;
    }
    drawing.eraseTags(record, present.begin, present.end);
    drawing.insertTags(record, present.begin, written.tags);
}

// From the end to the beginning, so that the places of what is still to come stay good. False when nothing changed.
bool mergeSection(dxf::Drawing& drawing, dxf::RecordId record, PresentSection& present, const WrittenSection& written) {
    std::set<int> ownCodes(written.ownCodes.begin(), written.ownCodes.end());
    for (const WrittenItem& item : written.items)
        ownCodes.insert(item.code);
    for (PresentItem& item : present.items)
        item.isOwn = ownCodes.count(item.code) != 0;
    const std::vector<Step> steps = Alignment(drawing, present.items, written.items).steps();
    std::uint32_t place = present.end;
    bool isChanged = false;
    for (std::size_t i = steps.size(); i-- > 0;) {
        const Step& step = steps[i];
        if (step.present == kNone) {
            drawing.insertTags(record, place, written.items[step.written].tags);
            isChanged = true;
            continue;
        }
        const PresentItem& item = present.items[step.present];
        place = item.begin;
        if (step.written == kNone) {
            if (!item.isOwn || !item.isReadable) continue;
            drawing.eraseTags(record, item.begin, item.end);
            isChanged = true;
        } else if (!step.isEqual) {
            replaceItem(drawing, record, item, written.items[step.written]);
            isChanged = true;
        }
    }
    return isChanged;
}

std::vector<dxf::NewTag> tagsOf(const dxf::Drawing& drawing, const WrittenSection& section) {
    std::vector<dxf::NewTag> tags{{codes::kSubclass, writeText(drawing, section.mark)}};
    for (const WrittenItem& item : section.items)
        tags.insert(tags.end(), item.tags.begin(), item.tags.end());
    return tags;
}

std::uint32_t endOfOwnTags(const dxf::Drawing& drawing, dxf::RecordId record) {
    dxf::RecordWalk walk(drawing.tags(record));
    std::uint32_t end = 0;
    for (dxf::Tag tag; walk.next(tag) && isOfSections(walk.part());)
        end = tag.end;
    return end;
}

}  // namespace

// --- reading

FieldFiler::FieldFiler(DatabaseState& state, dxf::RecordId record) : state_(state), record_(record) {
    if (record != dxf::kNoRecord) present_ = readSections(state.drawing(), record);
    section_ = present_.size();
}

bool FieldFiler::enter(std::wstring_view mark) {
    for (std::size_t i = 0; i < present_.size(); ++i) {
        if (present_[i].mark != mark) continue;
        section_ = i;
        item_ = 0;
        return true;
    }
    return false;
}

Acad::ErrorStatus FieldFiler::read(resbuf& item) {
    if (section_ == present_.size()) return Acad::eEndOfObject;
    const std::vector<PresentItem>& items = present_[section_].items;
    while (item_ < items.size() && !items[item_].isReadable)
        ++item_;
    if (item_ == items.size()) return Acad::eEndOfObject;
    decode(items[item_++], item);
    return Acad::eOk;
}

void FieldFiler::decode(const PresentItem& present, resbuf& item) {
    const dxf::Drawing& drawing = state_.drawing();
    const std::string& value = present.tags.front().value;
    item = resbuf{};
    item.restype = static_cast<short>(present.code);
    switch (valueKind(present.code)) {
        case ValueKind::Text:
            text_ = readText(drawing, value);
            item.resval.rstring = text_.data();
            break;
        case ValueKind::Real:
            item.resval.rreal = dxf::toReal(value);
            break;
        case ValueKind::Point:
            for (std::size_t axis = 0; axis < 3; ++axis)
                item.resval.rpoint[axis] = coordinate(present.tags, axis);
            break;
        case ValueKind::Short:
            item.resval.rint = static_cast<short>(dxf::toInteger(value));
            break;
        case ValueKind::Long:
            item.resval.rlong = static_cast<std::int32_t>(dxf::toInteger(value));
            break;
        case ValueKind::Name:
            item.resval.rlname[0] = state_.idOf(drawing.findHandle(dxf::toHandle(value))).asOldId();
            item.resval.rlname[1] = 0;
            break;
        case ValueKind::Binary: {
            binary_.clear();
            platform::appendHexBytes(dxf::trimmed(value), binary_);
            item.resval.rbinary.clen = static_cast<short>(binary_.size());
            item.resval.rbinary.buf = binary_.data();
            break;
        }
        case ValueKind::None:
        case ValueKind::Unknown:
            break;
    }
}

// --- writing

Acad::ErrorStatus FieldFiler::beginSection(std::wstring_view mark) {
    written_.emplace_back();
    written_.back().mark = mark;
    return status_;
}

Acad::ErrorStatus FieldFiler::write(int code, ValueKind kind, std::vector<dxf::NewTag> tags) {
    const bool isWritable = !written_.empty() && code > 0 && code < codes::kFirstXdata && code != codes::kSubclass &&
                            code != codes::kGroup && valueKind(code) == kind;
    if (!isWritable) return status_ = Acad::eInvalidInput;
    written_.back().items.push_back({code, std::move(tags)});
    return status_;
}

void FieldFiler::setOwnCodes(const Adesk::Int16* codes, std::size_t count) {
    if (!written_.empty() && codes) written_.back().ownCodes.assign(codes, codes + count);
}

bool FieldFiler::merge() {
    if (status_ != Acad::eOk || record_ == dxf::kNoRecord) return false;
    dxf::Drawing& drawing = state_.drawing();
    std::vector<const WrittenSection*> added;
    std::vector<std::pair<std::size_t, const WrittenSection*>> changed;
    for (const WrittenSection& section : written_) {
        if (enter(section.mark))
            changed.emplace_back(section_, &section);
        else
            added.push_back(&section);
    }
    // A section that was lost does not come back with nothing in it.
    bool isChanged = false;
    for (const WrittenSection* section : added) {
        if (section->items.empty()) continue;
        drawing.insertTags(record_, endOfOwnTags(drawing, record_), tagsOf(drawing, *section));
        isChanged = true;
    }
    std::sort(changed.begin(), changed.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    for (const auto& [index, section] : changed)
        isChanged = mergeSection(drawing, record_, present_[index], *section) || isChanged;
    return isChanged;
}

std::vector<dxf::NewTag> FieldFiler::tags() const {
    std::vector<dxf::NewTag> tags;
    for (const WrittenSection& section : written_)
        for (dxf::NewTag& tag : tagsOf(state_.drawing(), section))
            tags.push_back(std::move(tag));
    return tags;
}

}  // namespace qrs::host
