// Compares two records tag by tag.
#include "host/report/tagdiff.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/dxf/groupcodes.h"
#include "host/dxf/text.h"
#include "host/platform/beside.h"
#include "host/platform/number.h"
#include "host/platform/plainreal.h"
#include "host/report/sequence.h"

namespace qrs::host {

namespace {

using dxf::Drawing;
using dxf::RecordId;

constexpr std::uint64_t kFirstHash = 14695981039346656037U;

// Numbers that go into one another: the row of them counts.
std::uint64_t mixed(std::uint64_t hash, std::uint64_t number) {
    hash ^= number + 0x9E3779B97F4A7C15U + (hash << 6) + (hash >> 2);
    hash *= 0xBF58476D1CE4E5B9U;
    return hash ^ (hash >> 29);
}

std::uint64_t numberOf(double value) {
    std::uint64_t bits = 0;
    if (value == 0.0) value = 0.0;  // of either sign
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

std::uint64_t numberOf(std::string_view plain) {
    std::uint64_t hash = mixed(kFirstHash, plain.size());
    std::uint64_t word = 0;
    if (plain.size() < sizeof word) {
        for (const char c : plain)
            word = word << 8 | static_cast<unsigned char>(c);
        return mixed(hash, word);
    }
    const char* const last = plain.data() + plain.size() - sizeof word;
    for (const char* at = plain.data(); at < last; at += sizeof word) {
        std::memcpy(&word, at, sizeof word);
        hash = mixed(hash, word);
    }
    std::memcpy(&word, last, sizeof word);  // bytes that were met before, too
    return mixed(hash, word);
}

// What another spelling of plain letters says is the same.
std::uint64_t numberOf(const std::wstring& text) {
    const auto isAscii = [](wchar_t unit) { return static_cast<std::uint32_t>(unit) < 0x80; };
    std::string plain;
    if (std::all_of(text.begin(), text.end(), isAscii)) {
        for (const wchar_t unit : text)
            plain += static_cast<char>(unit);
        return numberOf(plain);
    }
    std::uint64_t hash = kFirstHash;
    for (const wchar_t unit : text)
        hash = mixed(hash, static_cast<std::uint64_t>(unit));
    return hash;
}

// As it counts: blanks around anything but text do not.
std::string_view countedOf(int code, std::string_view value) {
    return dxf::valueKindOf(code) == dxf::ValueKind::Text ? value : dxf::trimmed(value);
}

// Puts it as people read it. Most values are plain: for them the memory the text has is enough.
void read(const Drawing& drawing, int code, std::string_view value, std::wstring& text) {
    const std::string_view counted = countedOf(code, value);
    if (dxf::isPlainText(counted))
        text.assign(counted.begin(), counted.end());
    else
        text = drawing.decode(counted);
}

// What a tag says, as a number.
std::uint64_t sayingOf(const Drawing& drawing, int code, std::string_view value) {
    const auto hash = mixed(kFirstHash, static_cast<std::uint64_t>(code));
    const dxf::ValueKind kind = dxf::valueKindOf(code);
    if (kind == dxf::ValueKind::Handle) {
        if (const std::uint64_t handle = dxf::toHandle(value); handle != 0) return mixed(hash, handle);
    } else if (kind != dxf::ValueKind::Text && kind != dxf::ValueKind::Chunk && kind != dxf::ValueKind::None) {
        const std::string_view number = dxf::trimmed(value);
        double plain = 0.0;
        if (platform::readPlainReal(number, plain)) return mixed(hash, numberOf(plain));
        if (const auto real = platform::parseReal(number)) return mixed(hash, numberOf(*real));
    }
    const std::string_view counted = countedOf(code, value);
    return mixed(hash, dxf::isPlainText(counted) ? numberOf(counted) : numberOf(drawing.decode(counted)));
}

// What a tag, one of so many that are no comments, adds to the number of its record.
std::uint64_t partOf(std::uint64_t place, std::uint64_t saying) {
    return mixed(mixed(kFirstHash, place), saying);
}

// The tags of a record.
struct TagList {
    TagList(const Drawing& file, dxf::StoredSweep& sweep, RecordId id) : drawing(file) {
        dxf::RawTag raw{};
        for (sweep.begin(file.storedBytes(id)); sweep.next(raw);) {
            if (raw.code == dxf::codes::kComment) continue;
            const std::string_view value = sweep.value(raw);
            sayings.push_back(sayingOf(file, raw.code, value));
            tags.push_back({raw.code, std::string(value)});
        }
    }
    int code(std::size_t i) const { return tags[i].code; }
    void read(std::size_t i, std::wstring& text) const { host::read(drawing, tags[i].code, tags[i].value, text); }

    const Drawing& drawing;
    std::vector<dxf::NewTag> tags;
    std::vector<std::uint64_t> sayings;
};

// The bytes of a record after one of its tags.
std::string_view restAfter(std::string_view record, const dxf::RawTag& tag) {
    return record.substr(static_cast<std::size_t>(tag.next - record.data()));
}

}  // namespace

Sayings sayingsOf(const Drawing& drawing, const std::vector<RecordId>& records, const Sayings* like) {
    Sayings sayings{drawing, records, std::vector<std::uint64_t>(records.size())};
    const bool isLike =
        like != nullptr && drawing.storesLike(like->drawing) && like->drawing.codePage() == drawing.codePage();
    const std::size_t alike = isLike ? std::min(records.size(), like->records.size()) : 0;
    platform::inHalves(records.size(), [&](std::size_t begin, std::size_t end) {
        dxf::StoredSweep sweep = drawing.beginStoredSweep();
        dxf::StoredSweep likeSweep = (isLike ? like->drawing : drawing).beginStoredSweep();
        dxf::RawTag tag{};
        dxf::RawTag likeTag{};
        const auto say = [](const Drawing& file, dxf::StoredSweep& reader, std::uint64_t place,
                            const dxf::RawTag& one) {
            return partOf(place, sayingOf(file, one.code, reader.value(one)));
        };
        // Most records that differ do so in one tag: it alone is exchanged in the number. False when there may be more.
        const auto exchangeOneTag = [&](std::string_view likeBytes, std::string_view bytes, std::uint64_t& number) {
            std::uint64_t place = 0;
            likeSweep.begin(likeBytes);
            sweep.begin(bytes);
            do {
                if (!likeSweep.next(likeTag) || !sweep.next(tag)) return false;
                place += tag.code != dxf::codes::kComment;
            } while (tag.code == likeTag.code && textOf(tag) == textOf(likeTag));
            const bool isComment = tag.code == dxf::codes::kComment || likeTag.code == dxf::codes::kComment;
            if (isComment || restAfter(likeBytes, likeTag) != restAfter(bytes, tag)) return false;
            number += say(drawing, sweep, place, tag) - say(like->drawing, likeSweep, place, likeTag);
            return true;
        };
        for (std::size_t i = begin; i < end; ++i) {
            const std::string_view bytes = drawing.storedBytes(records[i]);
            std::uint64_t& number = sayings.numbers[i];
            if (i < alike) {
                const std::string_view likeBytes = like->drawing.storedBytes(like->records[i]);
                number = like->numbers[i];
                if (likeBytes == bytes || exchangeOneTag(likeBytes, bytes, number)) continue;
            }
            number = 0;
            std::uint64_t place = 0;
            for (sweep.begin(bytes); sweep.next(tag);)
                if (tag.code != dxf::codes::kComment) number += say(drawing, sweep, ++place, tag);
        }
    });
    return sayings;
}

TagComparison::TagComparison(const Drawing& first, const Drawing& second)
    : first_(first),
      second_(second),
      isAlike_(first.storesLike(second) && first.codePage() == second.codePage()),
      ours_(first.beginStoredSweep()),
      theirs_(second.beginStoredSweep()) {}

// Most records that differ do so in one value. False, nothing told, when these two differ in more, or may do.
bool TagComparison::compareOneTag(RecordId a, RecordId b, const Add& add) {
    const std::string_view ourBytes = first_.storedBytes(a);
    const std::string_view theirBytes = second_.storedBytes(b);
    const auto next = [](dxf::StoredSweep& sweep, dxf::RawTag& tag) {
        while (sweep.next(tag))
            if (tag.code != dxf::codes::kComment) return true;
        return false;
    };
    dxf::RawTag one{};
    dxf::RawTag two{};
    std::optional<std::pair<dxf::RawTag, dxf::RawTag>> changed;
    ours_.begin(ourBytes);
    theirs_.begin(theirBytes);
    for (bool isMore = true; isMore;) {
        isMore = next(ours_, one);
        if (next(theirs_, two) != isMore) return false;
        if (!isMore) break;
        if (one.code != two.code) return false;
        if (isAlike_ && textOf(one) == textOf(two)) continue;
        if (sayingOf(first_, one.code, ours_.value(one)) == sayingOf(second_, two.code, theirs_.value(two))) continue;
        if (changed) return false;
        changed.emplace(one, two);
        isMore = !isAlike_ || restAfter(ourBytes, one) != restAfter(theirBytes, two);
    }
    if (!changed) return true;
    std::tie(one, two) = *changed;
    Difference& difference = add(Difference::Kind::TagChanged, one.code);
    read(first_, one.code, ours_.value(one), difference.before);
    read(second_, two.code, theirs_.value(two), difference.after);
    return true;
}

void TagComparison::compare(RecordId a, RecordId b, const Add& add) {
    if (compareOneTag(a, b, add)) return;
    const TagList one(first_, ours_, a);
    const TagList two(second_, theirs_, b);
    if (one.sayings == two.sayings) return;
    auto matches = matchSequences(one.sayings, two.sayings);
    matches.emplace_back(one.tags.size(), two.tags.size());

    std::size_t i = 0;
    std::size_t j = 0;
    for (const auto& [matchedI, matchedJ] : matches) {
        if (i == matchedI && j == matchedJ) {
            ++i;
            ++j;
            continue;
        }
        // Between two matches: tags of one code, in their order, are changed ones; the others went or came.
        std::vector<bool> isPaired(matchedJ - j, false);
        std::unordered_map<int, std::deque<std::size_t>> byCode;
        for (std::size_t partner = j; partner < matchedJ && i < matchedI; ++partner)
            byCode[two.code(partner)].push_back(partner);
        for (; i < matchedI; ++i) {
            std::deque<std::size_t>& partners = byCode[one.code(i)];
            if (partners.empty()) {
                one.read(i, add(Difference::Kind::TagRemoved, one.code(i)).before);
                continue;
            }
            const std::size_t partner = partners.front();
            partners.pop_front();
            isPaired[partner - j] = true;
            if (one.sayings[i] == two.sayings[partner]) continue;
            Difference& difference = add(Difference::Kind::TagChanged, one.code(i));
            one.read(i, difference.before);
            two.read(partner, difference.after);
        }
        for (const std::size_t from = j; j < matchedJ; ++j)
            if (!isPaired[j - from]) two.read(j, add(Difference::Kind::TagAdded, two.code(j)).after);
        i = matchedI + 1;
        j = matchedJ + 1;
    }
}

}  // namespace qrs::host
