// What two threads find side by side is what is there: boxes of entities, differences of drawings.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "../folder.h"
#include "host/pick/bounds.h"
#include "host/report/hostreport.h"

namespace qrs::host {
namespace {

// Enough that two threads are worth it.
constexpr int kMany = 24000;

// Upright lines side by side, with handles or none; each third of them on another layer if wanted.
std::string upright(bool hasHandles, const std::string& third) {
    std::string text = "0\nSECTION\n2\nENTITIES\n";
    for (int i = 1; i <= kMany; ++i) {
        const std::string x = std::to_string(i) + ".0";
        text += "0\nLINE\n";
        if (hasHandles) text += "5\n" + std::to_string(i) + "\n";
        text += "8\n" + (i % 3 == 0 ? third : "PIPE") + "\n10\n" + x + "\n20\n0.0\n11\n" + x + "\n21\n5.0\n";
    }
    return text + "0\nENDSEC\n0\nEOF\n";
}

}  // namespace

TEST(Threads, FindBoxesInBothHalves) {
    platform::Error error;
    const auto drawing = dxf::Drawing::fromBytes(upright(true, "PIPE"), "lines.dxf", error);
    ASSERT_NE(drawing, nullptr) << error.message;
    pick::Bounds bounds;
    std::vector<dxf::RecordId> found;
    for (const int x : {2, kMany / 2, kMany - 1}) {
        // The record of a line has its number: the section's head comes first.
        ASSERT_TRUE(bounds.find(*drawing, pick::Region::window({x - 0.5, 1, 0}, {x + 1.5, 2, 0}), found));
        const auto first = static_cast<dxf::RecordId>(x);
        EXPECT_EQ(found, (std::vector<dxf::RecordId>{first, first + 1}));
    }
    ASSERT_TRUE(bounds.find(*drawing, pick::Region::window({0, 6, 0}, {kMany, 7, 0}), found));
    EXPECT_TRUE(found.empty());
}

TEST(Threads, TellDifferencesInTheirOrder) {
    const Folder folder;
    for (const bool hasHandles : {true, false}) {
        folder.write("first.dxf", upright(hasHandles, "PIPE"));
        folder.write("second.dxf", upright(hasHandles, "DUCT"));
        std::vector<std::wstring> told, expected;
        for (int i = 3; i <= kMany; i += 3)
            expected.push_back((hasHandles ? L"LINE " : L"LINE number ") + std::to_wstring(i) +
                               (hasHandles ? L"" : L" of SECTION \"ENTITIES\"") + L" DUCT");
        platform::Error error;
        EXPECT_TRUE(compareDrawings(
            folder / "first.dxf", folder / "second.dxf",
            [&](const Difference& difference) { told.push_back(difference.object + L" " + difference.after); }, error));
        EXPECT_TRUE(told == expected);
    }
}

}  // namespace qrs::host
