// Compares two records tag by tag.
#include "host/report/tagdiff.h"

#include <string>
#include <utility>
#include <vector>

#include "host/dxf/groupcodes.h"
#include "host/platform/number.h"
#include "host/report/sequence.h"

namespace qrs::host {

namespace {

using dxf::Drawing;
using dxf::RecordId;
using dxf::Tag;

// Records that differ in more tags than these are compared place by place.
constexpr std::size_t kMostTagChanges = 1000;

// Tags whose bytes stay where they are for the time of one comparison.
struct TagList {
    TagList(const Drawing& file, RecordId id) : drawing(file) {
        dxf::TagCursor cursor = drawing.tags(id);
        Tag tag;
        while (cursor.next(tag))
            tags.emplace_back(tag.code, std::string(tag.value));
    }
    std::wstring text(std::size_t i) const {
        const std::string_view value = tags[i].second;
        return drawing.decode(dxf::valueKindOf(tags[i].first) == dxf::ValueKind::Text ? value : dxf::trimmed(value));
    }

    const Drawing& drawing;
    std::vector<std::pair<int, std::string>> tags;
};

bool saySame(const TagList& first, std::size_t i, const TagList& second, std::size_t j) {
    const auto& [code, a] = first.tags[i];
    const auto& [otherCode, b] = second.tags[j];
    if (code != otherCode) return false;
    if (a == b && first.drawing.codePage() == second.drawing.codePage()) return true;
    const dxf::ValueKind kind = dxf::valueKindOf(code);
    if (kind == dxf::ValueKind::Handle) {
        if (const std::uint64_t handle = dxf::toHandle(a); handle != 0) return handle == dxf::toHandle(b);
    } else if (kind != dxf::ValueKind::Text && kind != dxf::ValueKind::Chunk && kind != dxf::ValueKind::None) {
        const auto x = platform::parseReal(dxf::trimmed(a));
        const auto y = platform::parseReal(dxf::trimmed(b));
        if (x && y) return *x == *y;
    }
    return first.text(i) == second.text(j);
}

Difference differenceOf(Difference::Kind kind, int code) {
    Difference difference;
    difference.kind = kind;
    difference.code = code;
    return difference;
}

}  // namespace

void compareTags(const Drawing& first, RecordId a, const Drawing& second, RecordId b,
                 const std::function<void(Difference)>& take) {
    const TagList one(first, a);
    const TagList two(second, b);
    auto matches = matchSequences(
        one.tags.size(), two.tags.size(), [&](std::size_t i, std::size_t j) { return saySame(one, i, two, j); },
        kMostTagChanges);
    matches.emplace_back(one.tags.size(), two.tags.size());

    std::size_t i = 0;
    std::size_t j = 0;
    for (const auto& [matchedI, matchedJ] : matches) {
        // Between two matches: tags of one code, in their order, are changed ones; the others went or came.
        std::vector<bool> isPaired(matchedJ - j, false);
        for (; i < matchedI; ++i) {
            std::size_t partner = j;
            while (partner < matchedJ && (isPaired[partner - j] || two.tags[partner].first != one.tags[i].first))
                ++partner;
            Difference difference = differenceOf(
                partner < matchedJ ? Difference::Kind::TagChanged : Difference::Kind::TagRemoved, one.tags[i].first);
            difference.before = one.text(i);
            if (partner < matchedJ) {
                isPaired[partner - j] = true;
                if (saySame(one, i, two, partner)) continue;
                difference.after = two.text(partner);
            }
            take(std::move(difference));
        }
        for (const std::size_t from = j; j < matchedJ; ++j) {
            if (isPaired[j - from]) continue;
            Difference difference = differenceOf(Difference::Kind::TagAdded, two.tags[j].first);
            difference.after = two.text(j);
            take(std::move(difference));
        }
        i = matchedI + 1;
        j = matchedJ + 1;
    }
}

}  // namespace qrs::host
