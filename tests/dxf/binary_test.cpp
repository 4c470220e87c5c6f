// Binary drawings: values of every kind, edits that leave all other bytes alone, texts that stay where they are.
#include "host/dxf/binary.h"

#include <cmath>
#include <iterator>
#include <limits>

#include "tests/dxf/sample.h"

namespace qrs::dxf::test {
namespace {

std::string replacedOnce(std::string bytes, const std::string& what, const std::string& by) {
    const std::size_t at = bytes.find(what);
    EXPECT_NE(at, std::string::npos);
    EXPECT_EQ(bytes.find(what, at + 1), std::string::npos);
    return bytes.replace(at, what.size(), by);
}

std::string doubleBytes(double value) {
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

// A drawing whose one entity has the tags given after its layer.
std::string withEntity(const std::string& tags, bool twoByteCodes) {
    const Tags head = {{0, "SECTION"}, {2, "ENTITIES"}, {0, "THING"}, {5, "2A"}, {8, "0"}};
    return layBinary(head, twoByteCodes) + tags +
           layBinary({{0, "ENDSEC"}, {0, "EOF"}}, twoByteCodes).substr(kBinarySignature.size());
}

TEST(Binary, ValuesOfEveryKindReadAsText) {
    const struct {
        int code;
        std::string bytes;
        std::string text;
    } values[] = {
        {10, doubleBytes(1.5), "1.5"},
        {11, doubleBytes(-0.0), "-0.0"},
        {12, doubleBytes(1234567.125), "1234567.125"},
        {40, doubleBytes(1.0 / 3), "0.3333333333333333"},
        {41, doubleBytes(1e300), "1.0E+300"},
        {42, doubleBytes(std::nan("7")), "nan"},
        {43, doubleBytes(-std::numeric_limits<double>::infinity()), "-inf"},
        {44, doubleBytes(5.0), "5.0"},
        {39, doubleBytes(std::numeric_limits<double>::infinity()), "inf"},
        {45, doubleBytes(-1000.0), "-1000.0"},
        {46, doubleBytes(0.0001), "0.0001"},
        {47, doubleBytes(-0.001), "-0.001"},
        {48, doubleBytes(12.34), "12.34"},
        {49, doubleBytes(0.0), "0.0"},
        {50, doubleBytes(123456789012345.5), "123456789012345.5"},
        {62, "\xFE\xFF", "-2"},
        {90, std::string("\x00\x00\x00\x80", 4), "-2147483648"},
        {160, std::string("\x01\x00\x00\x00\x00\x01\x00\x00", 8), "1099511627777"},
        {290, "\xFF", "255"},
        {310, std::string("\x03\x00\x0A\xFF", 4), "000AFF"},
        {1, std::string("two\r\nlines ^J\0", 14), "two\r\nlines ^J"},
        {1004, std::string("\0", 1), ""},
        {1071, "\xFF\xFF\xFF\x7F", "2147483647"},
        {1005, std::string("2A\0", 3), "2A"},
    };
    for (const bool twoByteCodes : {false, true}) {
        std::string tags;
        for (const auto& value : values) {
            if (twoByteCodes || value.code >= 255) tags += twoByteCodes ? "" : "\xFF";
            tags += static_cast<char>(value.code & 0xFF);
            if (twoByteCodes || value.code >= 255) tags += static_cast<char>(value.code >> 8);
            tags += value.bytes;
        }
        if (!twoByteCodes) tags.insert(0, "\xFF\x3C\x00\x01\x00", 5);  // 60, longer than need be
        const std::string bytes = withEntity(tags, twoByteCodes);
        const auto drawing = parse(bytes);
        ASSERT_NE(drawing, nullptr);
        const RecordId thing = drawing->findHandle(0x2A);
        Tag tag;
        for (const auto& value : values) {
            ASSERT_TRUE(drawing->findTag(thing, value.code, tag)) << value.code;
            EXPECT_EQ(tag.value, value.text) << value.code;
        }
        EXPECT_GT(allTags(*drawing).size(), std::size(values));
        EXPECT_EQ((drawing->record(thing).flags & kInvisible) != 0, !twoByteCodes);

        // Every value but one stays as it is, those no text could give back included.
        ASSERT_TRUE(drawing->findTag(thing, 90, tag));
        drawing->setValue(thing, tag, " 258 ");
        drawing->insertTags(thing, drawing->length(thing), {{1040, "2.25"}, {1000, "a\nb"}});
        ASSERT_TRUE(drawing->findTag(thing, 1005, tag));
        drawing->eraseTags(thing, tag.begin, tag.end);
        std::string expected =
            replacedOnce(bytes, std::string("\x00\x00\x00\x80\xA0", 5), std::string("\x02\x01\0\0\xA0", 5));
        const std::string escape = twoByteCodes ? "" : "\xFF";
        expected = replacedOnce(expected,
                                escape + std::string("\xED\x03"
                                                     "2A\0",
                                                     5),
                                "");
        const std::string end = std::string(twoByteCodes ? "\0\0" : "\0", twoByteCodes ? 2 : 1) + "ENDSEC";
        expected = replacedOnce(expected, end,
                                escape + "\x10\x04" + doubleBytes(2.25) + escape +
                                    std::string("\xE8\x03"
                                                "a^Jb\0",
                                                7) +
                                    end);
        EXPECT_EQ(drawing->toBytes(), expected);
    }
}

TEST(Binary, EditsOfTheSampleTouchNothingElse) {
    for (const bool twoByteCodes : {false, true}) {
        const auto drawing = parse(layBinary(sampleTags(), twoByteCodes));
        Tag tag;
        for (RecordId id = drawing->first(); id != kNoRecord; id = drawing->next(id)) {
            if (drawing->record(id).layer == kNoName || !drawing->findTag(id, 8, tag)) continue;
            drawing->setValue(id, tag, "moved");
            EXPECT_EQ(drawing->name(drawing->record(id).layer), "moved");
        }
        drawing->adjustTableCount(drawing->findTable("LAYER"), 1);
        const RecordId end = drawing->endOf(drawing->findTable("LAYER"));
        drawing->insertRecord(end, RecordKind::TableRecord,
                              {{0, "LAYER"}, {5, handleText(drawing->newHandle())}, {2, "NEW"}, {70, "0"}, {62, "-7"}});
        drawing->eraseRecord(drawing->findHandle(0x15));

        Tags expected;
        for (NewTag one : sampleTags()) {
            // Layers are moved where entities and blocks stand, neither in objects nor in xdata.
            if (expected.size() > 40 && one.code == 8 && one.value != "none" && expected.back().value != "1C")
                one.value = "moved";
            if (one.value == "     2") one.value = "3";
            if (one.code == 5 && one.value == "30") one.value = "31";
            expected.push_back(one);
        }
        const auto at = [&](std::string_view value, int nth = 0) {
            auto found = expected.begin();
            while (found->value != value || nth-- > 0)
                ++found;
            return found;
        };
        expected.erase(at("INSERT"), at("LINE", 1));
        expected.insert(at("ENDTAB"), {{0, "LAYER"}, {5, "30"}, {2, "NEW"}, {70, "0"}, {62, "-7"}});
        EXPECT_EQ(drawing->toBytes(), layBinary(expected, twoByteCodes));
        EXPECT_EQ(drawing->findHandle(0x16), kNoRecord);
    }
}

// Many tags of one record at once: what the text form of the drawing becomes, the binary one becomes too, and time goes
// with the number of tags.
TEST(Binary, ManyEditsOfOneRecordAtOnce) {
    const auto edited = [](Drawing& drawing) {
        std::vector<TagEdit> edits;
        const RecordId line = drawing.findHandle(0x2A);
        for (TagCursor cursor = drawing.tags(line); true;) {
            TagEdit edit;
            if (!cursor.next(edit.tag)) break;
            edit.hasValue = edit.tag.code == 5 || edit.tag.code == 8 || edit.tag.code == 10;
            edit.value = edit.tag.code == 5 ? "2B" : edit.tag.code == 8 ? "two\nlines" : "2.25";
            if (edit.tag.code == 70) edit.after = {{60, "1"}};
            if (edit.tag.code == 1000) edit.after = {{1070, "-3"}};
            if (edit.hasValue || !edit.after.empty()) edits.push_back(edit);
        }
        drawing.editTags(line, edits);
        EXPECT_EQ(drawing.findHandle(0x2B), line);
        EXPECT_TRUE(drawing.record(line).flags & kInvisible);
        return edits.size();
    };
    Tags tags = {{0, "SECTION"}, {2, "ENTITIES"}, {0, "THING"}, {5, "2A"}, {8, "PIPE"}, {70, "1"}};
    constexpr std::size_t kPoints = 20000;
    tags.insert(tags.end(), kPoints, {10, "1.5"});
    tags.insert(tags.end(), {{1001, "QRS"}, {1000, "x"}, {0, "ENDSEC"}, {0, "EOF"}});
    const auto text = parse(lay(tags));
    EXPECT_EQ(edited(*text), kPoints + 4);
    for (const bool twoByteCodes : {false, true}) {
        const auto binary = parse(layBinary(tags, twoByteCodes));
        EXPECT_EQ(edited(*binary), kPoints + 4);
        EXPECT_EQ(allTags(*parse(binary->toBytes())), allTags(*text));
    }

    const auto drawing = parse(layBinary(sampleTags(), true));
    TagEdit edit;
    ASSERT_TRUE(drawing->findTag(drawing->findHandle(0x18), 10, edit.tag));
    edit.hasValue = true;
    edit.value = "far";
    drawing->editTags(drawing->findHandle(0x18), {edit});
    EXPECT_EQ(drawing->toBytes(), layBinary(sampleTags(), true));
    platform::Error error;
    EXPECT_FALSE(drawing->save("never.dxf", false, error));
}

TEST(Binary, ValuesWithoutAPlaceKeepTheDrawingFromBeingSaved) {
    const std::string longHex(512, 'A');
    const struct {
        int code;
        std::string value;
    } values[] = {{10, "far"}, {10, "nan"}, {70, "65536"},         {70, "1.5"},    {290, "256"},
                  {310, "0"},  {310, "0G"}, {1071, "-2147483649"}, {310, longHex}, {40000, "1"}};
    for (const auto& value : values) {
        const auto drawing = parse(layBinary(sampleTags(), true));
        const RecordId line = drawing->findHandle(0x18);
        drawing->insertTags(line, 0, {{value.code, value.value}});
        platform::Error error;
        EXPECT_FALSE(drawing->save("never.dxf", false, error));
        EXPECT_EQ(error.message, "never.dxf: \"" + value.value + "\" has no place under group code " +
                                     std::to_string(value.code) + " of a binary drawing");
    }
}

// What is read stays readable while a good deal else is read, and memory does not grow with the drawing.
TEST(Binary, TextsStayForAWhile) {
    Tags tags = {{0, "SECTION"}, {2, "ENTITIES"}};
    const std::string padding(500, 'x');
    constexpr std::size_t kCount = 40000;
    for (std::size_t i = 1; i <= kCount; ++i)
        tags.insert(tags.end(), {{0, "TEXT"}, {5, handleText(i)}, {8, "0"}, {1, padding + std::to_string(i)}});
    tags.insert(tags.end(), {{0, "ENDSEC"}, {0, "EOF"}});
    const auto drawing = parse(layBinary(tags, true));
    std::vector<std::string_view> last;
    constexpr std::size_t kHeld = 5000;  // of a little more than 500 bytes: less than is kept
    Tag tag;
    for (std::size_t i = 1; i <= kCount; ++i) {
        ASSERT_TRUE(drawing->findTag(drawing->findHandle(i), 1, tag));
        last.push_back(tag.value);
        if (i >= kHeld) {
            ASSERT_EQ(last[i - kHeld], padding + std::to_string(i - kHeld + 1));
        }
    }
}

// Texts that were given up are made anew: the memory they lay in is no more.
TEST(Binary, TextsThatWereGivenUpAreMadeAnew) {
    Tags tags = {{0, "SECTION"}, {2, "ENTITIES"}};
    constexpr std::size_t kCount = 12;
    const auto longText = [](std::size_t i) { return std::string(1500000, static_cast<char>('a' + i)); };
    for (std::size_t i = 0; i < kCount; ++i)
        tags.insert(tags.end(), {{0, "TEXT"}, {5, handleText(i + 1)}, {8, "0"}, {1, longText(i)}});
    tags.insert(tags.end(), {{0, "ENDSEC"}, {0, "EOF"}});
    const auto drawing = parse(layBinary(tags, true));
    Tag tag;
    for (const std::size_t i : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 0, 11, 5}) {
        ASSERT_TRUE(drawing->findTag(drawing->findHandle(i + 1), 1, tag));
        EXPECT_TRUE(tag.value == longText(i)) << i;
    }
}

// What a step changed reads as before once it is taken back, though its text was just read.
TEST(Binary, TextsFollowWhatIsTakenBack) {
    const auto drawing = parse(layBinary(sampleTags(), true));
    const RecordId line = drawing->findHandle(0x18);
    Tag tag;
    const auto layer = [&] { return drawing->findTag(line, 8, tag) ? std::string(tag.value) : "none"; };
    drawing->beginStep(L"move");
    ASSERT_EQ(layer(), "PIPE");
    drawing->setValue(line, tag, "0");
    EXPECT_EQ(layer(), "0");
    EXPECT_TRUE(drawing->takeBack());
    EXPECT_EQ(layer(), "PIPE");
}

}  // namespace
}  // namespace qrs::dxf::test
