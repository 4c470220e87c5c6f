// A file read by two readers side by side gives the index that one reader makes, wherever the second one begins.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "../folder.h"
#include "sameindex.h"
#include "sample.h"

namespace qrs::dxf {
namespace {

namespace fs = std::filesystem;

// Two blocks, entities with what can be open at a border, objects, in many records each.
test::Tags manyRecords() {
    test::Tags tags = {{0, "SECTION"}, {2, "BLOCKS"}};
    int handle = 0x100;
    const auto line = [&](const std::string& layer) {
        tags.insert(tags.end(), {{0, "LINE"}, {5, std::to_string(handle++)}, {8, layer}, {10, "1.5"}});
    };
    const auto polyline = [&](int vertices) {
        tags.insert(tags.end(), {{0, "POLYLINE"}, {5, std::to_string(handle++)}, {8, "0"}, {66, "1"}});
        for (int i = 0; i < vertices; ++i)
            tags.insert(tags.end(), {{0, "VERTEX"}, {5, std::to_string(handle++)}, {8, "vertices"}});
        tags.insert(tags.end(), {{0, "SEQEND"}, {5, std::to_string(handle++)}, {8, "0"}});
    };
    for (const char* name : {"one", "two"}) {
        tags.insert(tags.end(), {{0, "BLOCK"}, {5, std::to_string(handle++)}, {8, "0"}, {2, name}});
        for (int i = 0; i < 8; ++i)
            line(name + std::to_string(i));
        tags.insert(tags.end(), {{0, "ENDBLK"}, {5, std::to_string(handle++)}, {8, "0"}});
    }
    tags.insert(tags.end(), {{0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}});
    for (int i = 0; i < 8; ++i) {
        line(i % 3 == 0 ? "two2" : "pipes" + std::to_string(i));
        polyline(i % 4);
        // Values that look like the beginnings of records.
        tags.insert(tags.end(), {{0, "TEXT"}, {5, std::to_string(handle++)}, {8, "0"}, {1, "0"}, {1, "LINE"}});
        tags.insert(tags.end(), {{1001, "QRS"}, {1000, "  0"}, {1070, "0"}, {1000, "0"}});
    }
    tags.insert(tags.end(), {{0, "ENDSEC"}, {0, "SECTION"}, {2, "OBJECTS"}});
    for (int i = 0; i < 20; ++i)
        tags.insert(tags.end(), {{0, "XRECORD"}, {5, std::to_string(handle++)}, {340, "256"}, {90, "7"}});
    tags.insert(tags.end(), {{0, "ENDSEC"}, {0, "EOF"}});
    return tags;
}

// Of a second reader that begins after each of so many places.
void expectSame(const std::string& bytes, std::size_t places) {
    const Reading alone(bytes, kAlone);
    for (std::size_t i = 0; i < places; ++i) {
        const std::size_t place = bytes.size() * i / places + i % 16;
        EXPECT_EQ(alone.differenceOf(Reading(bytes, place)), "") << "from byte " << place << " of " << bytes.size();
    }
}

// In every form, and with faults before and after the place.
TEST(Sharing, TwoReadersAnswerAsOne) {
    const test::Tags whole = manyRecords();
    std::vector<std::string> drawings;
    for (const char* lineEnd : {"\n", "\r\n", "\r"})
        drawings.push_back(test::lay(whole, 3, lineEnd));
    for (const bool twoBytes : {false, true})
        drawings.push_back(test::layBinary(whole, twoBytes));
    // Each kind of tag is left out or spoiled once: ends, heads, handles, values.
    for (std::size_t i = 0; i < whole.size(); i += 13) {
        test::Tags less = whole;
        less.erase(less.begin() + static_cast<std::ptrdiff_t>(i));
        drawings.push_back(test::lay(less));
        test::Tags spoiled = whole;
        spoiled[i].value = spoiled[i].code == 5 ? "256" : spoiled[i].code == 0 ? "ENDBLK" : "1,5";
        drawings.push_back(test::lay(spoiled));
        drawings.push_back(drawings.front().substr(0, drawings.front().size() - i));
    }
    for (std::size_t i = 0; i < drawings.size(); ++i)
        expectSame(drawings[i], i < 5 ? 150 : 8);
}

// What a record means hangs on those before it: a block without its end, a vertex without its polyline.
TEST(Sharing, EveryRecordMayBeMissing) {
    const test::Tags whole = manyRecords();
    const auto isHead = [](const auto& tag) { return tag.code == 0; };
    for (auto head = std::find_if(whole.begin() + 1, whole.end(), isHead); head != whole.end();) {
        const auto next = std::find_if(head + 1, whole.end(), isHead);
        test::Tags less(whole.begin(), head);
        less.insert(less.end(), next, whole.end());
        SCOPED_TRACE(head->value);
        expectSame(test::lay(less), 40);
        head = next;
    }
}

// A part that is left to the second reader is not read by the first: else the threads would only be a burden.
TEST(Sharing, TheSecondPartIsTakenOver) {
    const std::string bytes = test::lay(manyRecords());
    std::size_t taken = 0;
    std::size_t tried = 0;
    for (std::size_t place = 0; place < bytes.size(); place += 97, ++tried) {
        Index index;
        Fault fault;
        ASSERT_TRUE(buildIndex(bytes, nullptr, index, fault, place));
        taken += index.records.isJoined();
    }
    EXPECT_GT(taken, tried * 3 / 4);
}

TEST(Sharing, RealDrawings) {
    std::vector<fs::path> files;
    for (const fs::path& folder :
         {fs::path(QRS_SOURCE_DIR) / "examples", fs::path(QRS_SOURCE_DIR) / ".." / "shared" / "corpus" / "dxf"}) {
        std::error_code none;
        for (const auto& entry : fs::recursive_directory_iterator(folder, none)) {
            const fs::path kind = entry.path().extension();
            if (kind == ".dxf" || kind == ".DXF") files.push_back(entry.path());
        }
    }
    ASSERT_FALSE(files.empty());
    for (const fs::path& path : files) {
        SCOPED_TRACE(path.filename());
        const std::string bytes = fileBytes(path);
        expectSame(bytes, 4);
    }
}

}  // namespace
}  // namespace qrs::dxf
