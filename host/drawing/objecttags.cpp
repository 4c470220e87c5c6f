// The tags of one object.
#include "host/drawing/objecttags.h"

#include "host/dxf/recordwalk.h"
#include "host/platform/codepage.h"

namespace qrs::host {

namespace {

using dxf::Version;
namespace codes = dxf::codes;

constexpr CodeFormat kEntityCodes[] = {
    {codes::kPaperSpace},
    {codes::kLayout, Version::R2000},
    {codes::kLayer},
    {codes::kLinetype},
    {codes::kColor},
    {codes::kLineWeight, Version::R2000},
    {codes::kLinetypeScale, Version::R13},
    {codes::kVisibility, Version::R13},
    {codes::kTrueColor, Version::R2004},
    {codes::kColorName, Version::R2004},
    {codes::kTransparency, Version::R2004},
};

// Walks the tags of a part, those in groups too; visitor(walk, tag) returns false to stop.
template <typename Visit>
void visitPart(std::string_view record, ObjectTags::Part part, Visit&& visitor) {
    dxf::RecordWalk walk{dxf::TagCursor(record)};
    for (dxf::Tag tag; walk.next(tag) && walk.part() <= dxf::Part::Group;) {
        const bool isEnd = part == ObjectTags::Part::Common && walk.isOwn() && tag.code == codes::kSubclass &&
                           walk.section() != "AcDbEntity";
        if (isEnd || !visitor(walk, tag)) return;
    }
}

// Passes the tags that belong to an object itself to a visitor: visitor(tag) returns false to stop.
template <typename Visit>
void visitOwn(std::string_view record, ObjectTags::Part part, Visit&& visitor) {
    visitPart(record, part,
              [&](const dxf::RecordWalk& walk, const dxf::Tag& tag) { return !walk.isOwn() || visitor(tag); });
}

// Where the tags of a record's part end.
std::uint32_t endOfPart(std::string_view record, ObjectTags::Part part) {
    std::uint32_t end = 0;
    visitPart(record, part, [&](const dxf::RecordWalk&, const dxf::Tag& tag) {
        end = tag.end;
        return true;
    });
    return end;
}

}  // namespace

int RecordFormat::rankOf(int code) const {
    for (std::size_t i = 0; i < count; ++i)
        if (codes[i].code == code) return static_cast<int>(i);
    return -1;
}

int RecordFormat::rankOfMark(std::string_view mark, int rank) const {
    for (auto i = static_cast<std::size_t>(rank + 1); i < count; ++i)
        if (codes[i].mark && mark == codes[i].mark) return static_cast<int>(i);
    return -1;
}

dxf::Version RecordFormat::sinceOf(int code) const {
    const int rank = rankOf(code);
    return rank < 0 ? Version::Oldest : codes[rank].since;
}

const RecordFormat& entityFormat() {
    static const RecordFormat format{kEntityCodes, std::size(kEntityCodes)};
    return format;
}

// Drawings spell control characters "^J" and the caret itself "^ ".
std::wstring readText(const dxf::Drawing& drawing, std::string_view value) {
    std::wstring text = drawing.decode(value);
    std::size_t out = text.find(L'^');
    if (out == std::wstring::npos) return text;
    for (std::size_t in = out; in < text.size(); ++in, ++out) {
        const wchar_t following = in + 1 < text.size() ? text[in + 1] : L'\0';
        text[out] = text[in];
        if (text[in] != L'^' || (following != L' ' && (following < L'@' || following > L'_'))) continue;
        text[out] = following == L' ' ? L'^' : static_cast<wchar_t>(following - L'@');
        ++in;
    }
    text.resize(out);
    return text;
}

std::string writeText(const dxf::Drawing& drawing, std::wstring_view text) {
    std::wstring spelled;
    for (const wchar_t character : text) {
        if (character == L'^')
            spelled += L"^ ";
        else if (static_cast<unsigned long>(character) < 0x20)
            spelled += {L'^', static_cast<wchar_t>(character + L'@')};
        else
            spelled += character;
    }
    return drawing.encode(spelled);
}

std::string paddedLike(std::string_view sample, std::string value) {
    if (!sample.empty() && sample.front() == ' ' && value.size() < sample.size())
        value.insert(0, sample.size() - value.size(), ' ');
    return value;
}

template <typename Visit>
void ObjectTags::visit(Visit&& visitor) const {
    int group = -1;
    // False when the tags looked for come later.
    const auto passOn = [&](int code, const Found& found) {
        if (groupCode_ < 0) return visitor(code, found);
        if (code == groupCode_) ++group;
        return group < groupNumber_ || (group == groupNumber_ && visitor(code, found));
    };
    if (own_) {
        for (std::size_t i = 0; i < own_->tags.size(); ++i) {
            Found found;
            found.value = own_->tags[i].value;
            found.index = i;
            if (!passOn(own_->tags[i].code, found)) return;
        }
    } else if (drawing_) {
        visitOwn(drawing_->bytes(record_), part_, [&](const dxf::Tag& tag) {
            Found found;
            found.value = tag.value;
            found.tag = tag;
            return passOn(tag.code, found);
        });
    }
}

bool ObjectTags::find(int code, int nth, Found& found) const {
    bool isFound = false;
    visit([&](int tagCode, const Found& one) {
        if (tagCode != code || nth-- > 0) return true;
        found = one;
        isFound = true;
        return false;
    });
    return isFound;
}

bool ObjectTags::has(int code) const {
    Found found;
    return find(code, 0, found);
}

int ObjectTags::count(int code) const {
    int number = 0;
    visit([&](int tagCode, const Found&) {
        if (tagCode == code) ++number;
        return true;
    });
    return number;
}

std::int64_t ObjectTags::integer(int code, std::int64_t fallback, int nth) const {
    Found found;
    return find(code, nth, found) ? dxf::toInteger(found.value, fallback) : fallback;
}

double ObjectTags::real(int code, double fallback, int nth) const {
    Found found;
    return find(code, nth, found) ? dxf::toReal(found.value, fallback) : fallback;
}

std::wstring ObjectTags::text(int code, std::wstring_view fallback, int nth) const {
    Found found;
    if (!find(code, nth, found)) return std::wstring(fallback);
    return own_ ? platform::fromUtf8(found.value) : readText(*drawing_, found.value);
}

std::uint64_t ObjectTags::handle(int code) const {
    Found found;
    return find(code, 0, found) ? dxf::toHandle(found.value) : 0;
}

bool ObjectTags::canCarry(int code) const {
    return !drawing_ || drawing_->version() >= format_->sinceOf(code);
}

void ObjectTags::setInteger(int code, std::int64_t value, int nth) {
    Found found;
    if (!find(code, nth, found)) return insert(code, std::to_string(value));
    // What is no number differs from every number.
    if (dxf::toInteger(found.value, value - 1) != value)
        write(code, nth, paddedLike(found.value, std::to_string(value)));
}

void ObjectTags::setReal(int code, double value, int nth) {
    Found found;
    if (!find(code, nth, found)) return insert(code, dxf::realText(value));
    if (dxf::toReal(found.value, value + 1.0) != value) write(code, nth, dxf::realText(value));
}

void ObjectTags::setText(int code, std::wstring_view value) {
    Found found;
    std::string spelled = own_ ? platform::toUtf8(value) : drawing_ ? writeText(*drawing_, value) : std::string();
    if (!find(code, 0, found)) return insert(code, std::move(spelled));
    if (text(code) != value) write(code, 0, std::move(spelled));
}

void ObjectTags::write(int code, int nth, std::string value) {
    Found found;
    if (!find(code, nth, found)) return;
    if (own_)
        own_->tags[found.index].value = std::move(value);
    else
        drawing_->setValue(record_, found.tag, value);
}

// After the last tag that comes earlier in the order, else before the first that comes later, else at the end.
void ObjectTags::insert(int code, std::string value) {
    if (!own_ && !drawing_) return;
    const int rank = format_->rankOf(code);
    Found after;
    Found before;
    bool hasAfter = false;
    bool hasBefore = false;
    int mark = -1;
    visit([&](int tagCode, const Found& found) {
        int other = tagCode == codes::kSubclass ? format_->rankOfMark(dxf::trimmed(found.value), mark)
                                                : format_->rankOf(tagCode);
        if (tagCode == codes::kSubclass && other >= 0) mark = other;
        if (other >= 0 && other < rank) after = found, hasAfter = true;
        if (other > rank && !hasBefore) before = found, hasBefore = true;
        return true;
    });
    if (own_) {
        const std::size_t index = hasAfter ? after.index + 1 : hasBefore ? before.index : own_->tags.size();
        own_->tags.insert(own_->tags.begin() + static_cast<std::ptrdiff_t>(index), {code, std::move(value)});
        return;
    }
    const std::uint32_t place = hasAfter    ? after.tag.end
                                : hasBefore ? before.tag.begin
                                            : endOfPart(drawing_->bytes(record_), part_);
    drawing_->insertTags(record_, place, {{code, std::move(value)}});
}

void ObjectTags::append(int code, std::string value) {
    Found last;
    bool hasLast = false;
    visit([&](int, const Found& found) {
        last = found;
        hasLast = true;
        return true;
    });
    if (!hasLast) return insert(code, std::move(value));
    if (own_)
        own_->tags.insert(own_->tags.begin() + static_cast<std::ptrdiff_t>(last.index) + 1, {code, std::move(value)});
    else
        drawing_->insertTags(record_, last.tag.end, {{code, std::move(value)}});
}

void ObjectTags::removeAll(int code) {
    Found found;
    while (find(code, 0, found)) {
        if (own_)
            own_->tags.erase(own_->tags.begin() + static_cast<std::ptrdiff_t>(found.index));
        else
            drawing_->eraseTags(record_, found.tag.begin, found.tag.end);
    }
}

}  // namespace qrs::host
