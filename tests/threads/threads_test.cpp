// What two threads find side by side is what is there: boxes of entities, differences of drawings; and in which order.
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "../folder.h"
#include "host/dxf/binary.h"
#include "host/pick/bounds.h"
#include "host/report/hostreport.h"
#include "host/report/inorder.h"
#include "host/report/sequence.h"

namespace qrs::host {
namespace {

// Enough that two threads are worth it.
constexpr int kMany = 24000;

enum class Written { Text, Long, Short };

struct Kind {
    bool hasHandles;
    Written written;
};

// Upright lines side by side, each third of them on a layer of its own. Where that is not PIPE, some of the third have
// a colour or are longer, too, and others a comment.
std::string upright(const Kind& kind, const std::string& third) {
    const bool isText = kind.written == Written::Text;
    const dxf::CodeForm form = kind.written == Written::Long ? dxf::CodeForm::Long : dxf::CodeForm::Short;
    std::string bytes(isText ? std::string_view() : dxf::kBinarySignature);
    const auto add = [&](int code, const std::string& value) {
        if (isText)
            bytes += std::to_string(code) + "\n" + value + "\n";
        else
            EXPECT_TRUE(dxf::appendBinaryTag(form, code, value, bytes));
    };
    add(0, "SECTION"), add(2, "ENTITIES");
    for (int i = 1; i <= kMany; ++i) {
        const std::string x = std::to_string(i) + ".0";
        add(0, "LINE");
        if (kind.hasHandles) add(5, std::to_string(i));
        if (third != "PIPE" && i % 3 == 1) add(999, "after the third");
        add(8, i % 3 == 0 ? third : "PIPE");
        if (third != "PIPE" && i % 30 == 0) add(62, "1");
        add(10, x), add(20, "0.0"), add(11, x), add(21, third != "PIPE" && i % 30 == 15 ? "6.0" : "5.0");
    }
    add(0, "ENDSEC"), add(0, "EOF");
    return bytes;
}

}  // namespace

TEST(Threads, FindBoxesInBothHalves) {
    for (const Written written : {Written::Text, Written::Long}) {
        platform::Error error;
        const auto drawing = dxf::Drawing::fromBytes(upright({true, written}, "PIPE"), "lines.dxf", error);
        ASSERT_NE(drawing, nullptr) << error.message;
        // The record of a line has its number; what stands before the section of a binary drawing is one, too.
        const dxf::RecordId before = written == Written::Text ? 0 : 1;
        pick::Bounds bounds;
        std::vector<dxf::RecordId> found;
        for (const int x : {2, kMany / 2, kMany - 1}) {
            ASSERT_TRUE(bounds.find(*drawing, pick::Region::window({x - 0.5, 1, 0}, {x + 1.5, 2, 0}), found));
            const auto first = static_cast<dxf::RecordId>(x) + before;
            EXPECT_EQ(found, (std::vector<dxf::RecordId>{first, first + 1}));
        }
        ASSERT_TRUE(bounds.find(*drawing, pick::Region::window({0, 6, 0}, {kMany, 7, 0}), found));
        EXPECT_TRUE(found.empty());
    }
}

TEST(Threads, GoDownAsFarAsAnAnswerNeeds) {
    platform::Error error;
    const auto drawing = dxf::Drawing::fromBytes(upright({true, Written::Text}, "PIPE"), "lines.dxf", error);
    ASSERT_NE(drawing, nullptr) << error.message;
    pick::Bounds bounds;
    std::vector<dxf::RecordId> asked;
    const auto lastAt = [&](double x, dxf::RecordId passing) {
        asked.clear();
        dxf::RecordId last = 0;
        const auto passes = [&](dxf::RecordId id) {
            asked.push_back(id);
            return id == passing;
        };
        EXPECT_TRUE(bounds.findLast(*drawing, pick::Region::window({x - 0.5, 1, 0}, {x + 1.5, 2, 0}), passes, last));
        return last;
    };
    // Downwards, from what is read at first to what is read later, and up again to what has been read.
    for (const int x : {kMany - 1, kMany - 20000, 2, kMany - 1}) {
        const auto lower = static_cast<dxf::RecordId>(x);
        EXPECT_EQ(lastAt(x, lower), lower);
        EXPECT_EQ(asked, (std::vector<dxf::RecordId>{lower + 1, lower}));
        EXPECT_EQ(lastAt(x, lower + 1), lower + 1);
    }
    EXPECT_EQ(lastAt(5, 1), dxf::kNoRecord);
    EXPECT_EQ(asked, (std::vector<dxf::RecordId>{6, 5}));

    // A line that moves before it is read, and after it.
    pick::Bounds fresh;
    std::swap(bounds, fresh);
    const auto moveLine = [&](dxf::RecordId id, const char* x) {
        dxf::Tag tag;
        for (const int code : {10, 11}) {
            ASSERT_TRUE(drawing->findTag(id, code, tag));
            drawing->setValue(id, tag, x);
        }
    };
    EXPECT_EQ(lastAt(kMany - 1, kMany), static_cast<dxf::RecordId>(kMany));
    for (const char* x : {"-100.0", "-200.0"}) {
        moveLine(3, x);
        EXPECT_EQ(lastAt(std::stod(x), 3), 3u);
        EXPECT_EQ(asked.size(), 1u);
        EXPECT_EQ(lastAt(3, 2), dxf::kNoRecord);
        EXPECT_EQ(asked, (std::vector<dxf::RecordId>{4}));
    }
}

// Few pieces, often, since threads meet where they end.
TEST(Threads, TakePiecesInOrder) {
    for (int round = 0; round < 1000; ++round) {
        const int count = round % 40;
        int begun = 0;
        std::vector<int> taken, expected;
        for (int i = 0; i < count; ++i)
            expected.push_back(3 * i);
        InOrder<int>([&](int& piece) { return (piece = begun++) < count; }, [](int& piece, std::size_t) { piece *= 3; },
                     [&](const int& piece) { taken.push_back(piece); })
            .run();
        ASSERT_EQ(taken, expected);
    }
    // Whichever part fails, in whichever thread: the others end, too.
    for (int failing = 0; failing < 3; ++failing) {
        int begun = 0;
        const auto part = [&](int one, int piece) {
            if (one == failing && piece == 50) throw std::runtime_error("failed");
        };
        InOrder<int> work([&](int& piece) { return part(0, piece = begun++), true; },
                          [&](int& piece, std::size_t) { part(1, piece); }, [&](const int& piece) { part(2, piece); });
        EXPECT_THROW(work.run(), std::runtime_error);
    }
}

// What stood at the end has moved to the front, behind an element that stayed. Some elements are there often: their
// neighbours tell which is which.
TEST(Threads, MatchLongSequences) {
    constexpr std::size_t kMoved = 15000, kKept = 25000;
    std::vector<std::uint64_t> first{1};
    for (std::size_t i = 0; i < kKept + kMoved; ++i)
        first.push_back(i % 100 == 50 ? 7 : (i + 1) * 0x9E3779B97F4A7C15U);
    std::vector<std::uint64_t> second(first);
    std::rotate(second.begin() + 1, second.begin() + 1 + kKept, second.end());
    const auto matches = matchSequences(first, second);
    ASSERT_EQ(matches.size(), 1 + kKept);
    for (std::size_t i = 1; i < matches.size(); ++i)
        ASSERT_EQ(matches[i], std::make_pair(i, i + kMoved));
}

// The forms make no difference, whether both drawings have the same one or not.
TEST(Threads, TellDifferencesInTheirOrder) {
    const Folder folder;
    for (const bool hasHandles : {true, false}) {
        std::vector<std::wstring> expected;
        for (int i = 3; i <= kMany; i += 3) {
            const std::wstring object = (hasHandles ? L"LINE " : L"LINE number ") + std::to_wstring(i) +
                                        (hasHandles ? L"" : L" of SECTION \"ENTITIES\"");
            expected.push_back(object + L" 8 PIPE DUCT");
            if (i % 30 == 0) expected.push_back(object + L" 62  1");
            if (i % 30 == 15) expected.push_back(object + L" 21 5.0 6.0");
        }
        for (const Written first : {Written::Text, Written::Long, Written::Short}) {
            folder.write("first.dxf", upright({hasHandles, first}, "PIPE"));
            for (const Written second : {Written::Text, Written::Long, Written::Short}) {
                folder.write("second.dxf", upright({hasHandles, second}, "DUCT"));
                std::vector<std::wstring> told;
                platform::Error error;
                const auto take = [&](const Difference& one) {
                    told.push_back(one.object + L" " + std::to_wstring(one.code) + L" " + one.before + L" " +
                                   one.after);
                };
                EXPECT_TRUE(compareDrawings(folder / "first.dxf", folder / "second.dxf", take, error));
                EXPECT_TRUE(told == expected) << told.size();
            }
        }
    }
}

}  // namespace qrs::host
