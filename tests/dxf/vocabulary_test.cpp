// What group codes and versions mean, and where in a record a tag stands.
#include <string>
#include <vector>

#include "host/dxf/groupcodes.h"
#include "host/dxf/recordwalk.h"
#include "host/dxf/version.h"
#include "tests/dxf/sample.h"

namespace qrs::dxf::test {
namespace {

// The ranges that decide what is erased, copied and checked along with a record.
TEST(GroupCodes, ReferencesByRange) {
    const struct {
        int first, last;
        Reference reference;
        bool isHard, isOwning, isResolved, isToOther;
    } ranges[] = {
        {0, 4, Reference::None, false, false, false, false},
        {5, 5, Reference::Own, false, false, false, false},
        {105, 105, Reference::Own, false, false, false, false},
        {106, 319, Reference::None, false, false, false, false},
        {320, 329, Reference::Unresolved, false, false, false, true},
        {330, 339, Reference::SoftPointer, false, false, true, true},
        {340, 349, Reference::HardPointer, true, false, true, true},
        {350, 359, Reference::SoftOwner, false, true, true, true},
        {360, 369, Reference::HardOwner, true, true, true, true},
        {370, 389, Reference::None, false, false, false, false},
        {390, 399, Reference::HardPointer, true, false, true, true},
        {400, 479, Reference::None, false, false, false, false},
        {480, 481, Reference::HardPointer, true, false, true, true},
        {482, 1004, Reference::None, false, false, false, false},
        {1005, 1005, Reference::Xdata, false, false, false, true},
        {1006, 1080, Reference::None, false, false, false, false},
        {-5, -1, Reference::None, false, false, false, false},
    };
    for (const auto& range : ranges) {
        for (int code = range.first; code <= range.last; ++code) {
            const Reference reference = referenceOf(code);
            EXPECT_EQ(reference, range.reference) << code;
            EXPECT_EQ(isHard(reference), range.isHard) << code;
            EXPECT_EQ(isOwning(reference), range.isOwning) << code;
            EXPECT_EQ(isResolved(reference), range.isResolved) << code;
            EXPECT_EQ(isToOther(reference), range.isToOther) << code;
            // What refers is a handle, and nothing else is.
            EXPECT_EQ(valueKindOf(code) == ValueKind::Handle, reference != Reference::None) << code;
        }
    }
}

TEST(Versions, InTheOrderTheyCame) {
    const char* const inOrder[] = {"AC1.50", "AC2.10", "AC2.22", "AC1001", "AC1004", "AC1009", "AC1012",
                                   "AC1015", "AC1021", "AC1024", "AC1032", "AC1035", "AC9999"};
    for (std::size_t i = 1; i < std::size(inOrder); ++i)
        EXPECT_LT(versionOf(inOrder[i - 1]), versionOf(inOrder[i])) << inOrder[i];
    for (const char* const none : {"", "AC", "AC10x5", "new", "AC-1015", "AC.", "12"})
        EXPECT_EQ(versionOf(none), Version::Oldest) << none;
    EXPECT_EQ(versionOf(" AC1015 "), Version::R2000);
    EXPECT_EQ(versionOf("AC99999999"), Version{0xFFFF});
    EXPECT_EQ(releaseOf(Version::R2000), "2000");
    EXPECT_EQ(releaseOf(versionOf("AC1009")), "R12");
    EXPECT_EQ(releaseOf(Version{1016}), "");
}

// Each tag as CODE:PART:SECTION:GROUP.
std::vector<std::string> places(const Tags& tags) {
    const std::string record = lay(tags);
    std::vector<std::string> all;
    Tag tag;
    for (RecordWalk walk{TagCursor(record)}; walk.next(tag);) {
        const char* const parts[] = {"own", "group", "embedded", "xdata"};
        EXPECT_EQ(walk.isOwn(), walk.part() == Part::Own);
        all.push_back(std::to_string(tag.code) + ":" + parts[static_cast<int>(walk.part())] + ":" +
                      std::to_string(walk.sections()) + std::string(walk.section()) + ":" + std::string(walk.group()));
    }
    return all;
}

TEST(RecordWalk, TellsThePartOfEachTag) {
    const Tags tags = {{0, "MTEXT"},
                       {5, "1"},
                       {102, " {ACAD_REACTORS"},
                       {330, "7"},
                       {100, "NoMark"},
                       {102, "}"},
                       {330, "8"},
                       {100, " AcDbEntity "},
                       {999, "a comment"},
                       {8, "0"},
                       {102, "{A"},
                       {102, ""},
                       {102, "{B"},
                       {102, "foreign"},
                       {102, "}"},
                       {102, "}"},
                       {102, ""},
                       {102, "foreign"},
                       {100, "AcDbMText"},
                       {101, "Embedded Object"},
                       {8, "1"},
                       {102, "{C"},
                       {102, "}"},
                       {100, "NoMark"},
                       {1001, "QRS"},
                       {8, "2"},
                       {102, "{D"}};
    const std::vector<std::string> expected = {
        "0:own:0:",
        "5:own:0:",
        "102:group:0:ACAD_REACTORS",
        "330:group:0:ACAD_REACTORS",
        "100:group:0:ACAD_REACTORS",
        "102:group:0:ACAD_REACTORS",
        "330:own:0:",
        "100:own:1AcDbEntity:",
        "8:own:1AcDbEntity:",
        "102:group:1AcDbEntity:A",
        "102:group:1AcDbEntity:A",
        "102:group:1AcDbEntity:B",
        "102:group:1AcDbEntity:B",
        "102:group:1AcDbEntity:B",
        "102:own:1AcDbEntity:",
        "102:own:1AcDbEntity:",
        "102:own:1AcDbEntity:",
        "100:own:2AcDbMText:",
        "101:embedded:2AcDbMText:",
        "8:embedded:2AcDbMText:",
        "102:embedded:2AcDbMText:",
        "102:embedded:2AcDbMText:",
        "100:embedded:2AcDbMText:",
        "1001:xdata:2AcDbMText:",
        "8:xdata:2AcDbMText:",
        "102:xdata:2AcDbMText:",
    };
    EXPECT_EQ(places(tags), expected);
    EXPECT_EQ(places({{102, "{OPEN"}, {8, "0"}, {1001, "QRS"}}),
              (std::vector<std::string>{"102:group:0:OPEN", "8:group:0:OPEN", "1001:xdata:0:"}));
}

// What the index and findTag say of a record follows the same walk.
TEST(RecordWalk, EmbeddedObjectsSayNothingOfTheirRecord) {
    const Tags tags = {{0, "SECTION"},
                       {2, "ENTITIES"},
                       {0, "MTEXT"},
                       {5, "A1"},
                       {100, "AcDbEntity"},
                       {100, "AcDbMText"},
                       {101, "Embedded Object"},
                       {8, "WRONG"},
                       {67, "1"},
                       {40, "2.5"},
                       {1001, "QRS"},
                       {0, "ENDSEC"},
                       {0, "EOF"}};
    for (const std::string& bytes : {lay(tags), layBinary(tags, true)}) {
        const auto drawing = parse(bytes);
        ASSERT_NE(drawing, nullptr);
        const RecordId text = drawing->findHandle(0xA1);
        EXPECT_EQ(drawing->record(text).layer, kNoName);
        EXPECT_EQ(drawing->record(text).flags, kHasXdata);
        Tag tag;
        for (const int code : {8, 67, 40})
            EXPECT_FALSE(drawing->findTag(text, code, tag)) << code;
        // The index of an edited record is made by another loop.
        ASSERT_TRUE(drawing->findTag(text, 5, tag));
        drawing->setValue(text, tag, "A2");
        EXPECT_EQ(drawing->record(drawing->findHandle(0xA2)).layer, kNoName);
        EXPECT_EQ(drawing->record(drawing->findHandle(0xA2)).flags, kEdited | kHasXdata);
    }
}

}  // namespace
}  // namespace qrs::dxf::test
