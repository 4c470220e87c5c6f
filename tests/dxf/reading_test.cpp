// Reading: what the index says of a drawing in every line style, and what is said of a damaged one.
#include <algorithm>
#include <limits>

#include "host/platform/codepage.h"
#include "tests/dxf/sample.h"

namespace qrs::dxf::test {
namespace {

std::string typeAt(const Drawing& drawing, std::uint64_t handle) {
    const RecordId id = drawing.findHandle(handle);
    return id == kNoRecord ? "none" : std::string(drawing.typeNameOf(id));
}

void checkSample(const Drawing& drawing) {
    EXPECT_EQ(drawing.versionText(), "AC1015");
    EXPECT_EQ(drawing.codePage(), 936u);
    EXPECT_TRUE(drawing.hasHandles());
    EXPECT_EQ(typeAt(drawing, 0x27), "DIMSTYLE");
    EXPECT_EQ(typeAt(drawing, 0x11), "LAYER");
    EXPECT_EQ(typeAt(drawing, 0x1A), "WIDGET");
    for (const std::uint64_t notThere : {0x66u, 0x99u, 0x1Bu, 0x30u, 0u}) {
        EXPECT_EQ(typeAt(drawing, notThere), "none") << notThere;
    }

    const RecordId block = drawing.findHandle(0x12);
    EXPECT_EQ(drawing.record(drawing.findHandle(0x13)).owner, block);
    EXPECT_EQ(drawing.endOf(block), drawing.findHandle(0x14));
    EXPECT_EQ(drawing.record(block).owner, drawing.findSection("BLOCKS"));
    const RecordId table = drawing.findTable("layer");
    EXPECT_EQ(drawing.record(drawing.findHandle(0x11)).owner, table);
    EXPECT_EQ(drawing.typeNameOf(drawing.endOf(table)), "ENDTAB");
    EXPECT_EQ(drawing.typeNameOf(drawing.endOf(drawing.findSection("ENTITIES"))), "ENDSEC");

    const RecordId insert = drawing.findHandle(0x15);
    for (const std::uint64_t sub : {0x16u, 0x17u}) {
        const Record& record = drawing.record(drawing.findHandle(sub));
        EXPECT_EQ(record.owner, insert);
        EXPECT_TRUE(record.flags & kSubEntity);
    }
    const Record& line = drawing.record(drawing.findHandle(0x18));
    EXPECT_EQ(line.owner, drawing.findSection("ENTITIES"));
    EXPECT_EQ(drawing.name(line.layer), "PIPE");
    EXPECT_EQ(line.flags, kPaperSpace | kInvisible | kHasXdata);
    const Record& widget = drawing.record(drawing.findHandle(0x1A));
    EXPECT_EQ(drawing.name(widget.layer), "  padded ");
    EXPECT_EQ(widget.flags, kHasXdata);
    EXPECT_EQ(drawing.record(drawing.findHandle(0x1C)).layer, kNoName);

    Tag tag;
    const RecordId layer = drawing.findHandle(0x10);
    EXPECT_FALSE(drawing.findTag(layer, 330, tag));
    ASSERT_TRUE(drawing.findTag(layer, 102, tag, 1));
    EXPECT_EQ(tag.value, "}");
    ASSERT_TRUE(drawing.findTag(drawing.findHandle(0x18), 1003, tag));
    EXPECT_EQ(tag.value, "PIPE");
}

TEST(Reading, EveryLineStyleGivesTheSameDrawing) {
    const Tags tags = sampleTags();
    std::vector<std::string> styles = {lay(tags), lay(tags, 1, "\r\n"), lay(tags, 6, "\n"), lay(tags, 1, "\r")};
    // Mixed line ends and codes written in other ways, tag by tag.
    const char* const codes[] = {"%d", "\t%d ", "%05d", "+%d", "          %d"};
    std::string mixed = "\xEF\xBB\xBF\n \r\n";
    for (std::size_t i = 0; i < tags.size(); ++i) {
        char code[32];
        std::snprintf(code, sizeof code, codes[i % 5], tags[i].code);
        mixed += code + std::string(i % 2 ? "\r\n" : "\n") + tags[i].value + (i % 3 ? "\r\n" : "\n");
    }
    styles.push_back(mixed);
    for (std::string style : styles) {
        SCOPED_TRACE(style.substr(0, 60));
        for (const std::string tail : {"", "\n\x1A", "\r\n\r\n  0\nnot read any more\n 7", "-"}) {
            // The tail "-" takes the last line end away.
            const std::string bytes = tail == "-" ? style.substr(0, style.find_last_of('F') + 1) : style + tail;
            const auto drawing = parse(bytes);
            ASSERT_NE(drawing, nullptr);
            EXPECT_EQ(drawing->toBytes(), bytes);
            if (style == mixed) {
                EXPECT_EQ(drawing->codePage(), platform::kUtf8);  // its mark says so
            } else {
                checkSample(*drawing);
            }
        }
        EXPECT_EQ(allTags(*parse(style)), allTags(*parse(styles.front())));
    }
}

TEST(Reading, BinaryFormsGiveTheSameDrawing) {
    for (const bool twoByteCodes : {false, true}) {
        SCOPED_TRACE(twoByteCodes);
        for (const std::string tail : {"", "\x1A", "\x46\x01"}) {
            const std::string bytes = layBinary(sampleTags(), twoByteCodes) + tail;
            const auto drawing = parse(bytes);
            ASSERT_NE(drawing, nullptr);
            EXPECT_TRUE(drawing->isBinary());
            EXPECT_EQ(drawing->toBytes(), bytes);
            checkSample(*drawing);
        }
        // Numbers have no spelling of their own in binary drawings.
        std::vector<std::string> expected = allTags(*parse(lay(sampleTags())));
        std::replace(expected.begin(), expected.end(), std::string("70=     2"), std::string("70=2"));
        std::replace(expected.begin(), expected.end(), std::string("10=1.50"), std::string("10=1.5"));
        EXPECT_EQ(allTags(*parse(layBinary(sampleTags(), twoByteCodes))), expected);
    }
}

// The oldest forms: no handles unless the header says so, no code page, no classes and objects; a drawing may be its
// entities alone.
TEST(Reading, OldDrawings) {
    for (const bool handling : {false, true}) {
        Tags tags = {{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1004"}, {9, "$HANDLING"}};
        tags.insert(tags.end(), {{70, handling ? "1" : "0"}, {0, "ENDSEC"}, {0, "SECTION"}, {2, "TABLES"}});
        tags.insert(tags.end(), {{0, "TABLE"}, {2, "LAYER"}, {70, "1"}, {0, "LAYER"}, {2, "\xB9\xDC"}, {70, "64"}});
        tags.insert(tags.end(), {{62, "7"}, {6, "CONTINUOUS"}, {0, "ENDTAB"}, {0, "ENDSEC"}, {0, "SECTION"}});
        tags.insert(tags.end(), {{2, "ENTITIES"}, {0, "POLYLINE"}, {8, "\xB9\xDC"}, {66, "1"}, {0, "VERTEX"}});
        tags.insert(tags.end(), {{8, "\xB9\xDC"}, {10, "1.0"}, {0, "SEQEND"}, {0, "ENDSEC"}, {0, "EOF"}});
        for (const std::string& bytes : {lay(tags), layBinary(tags, false)}) {
            const auto drawing = parse(bytes);
            ASSERT_NE(drawing, nullptr);
            EXPECT_EQ(drawing->versionText(), "AC1004");
            EXPECT_EQ(drawing->hasHandles(), handling);
            EXPECT_EQ(drawing->codePage(), platform::ansiCodePage());
            EXPECT_TRUE(drawing->faults().empty());
            const RecordId polyline = drawing->next(drawing->findSection("ENTITIES"));
            EXPECT_EQ(drawing->decode(drawing->name(drawing->record(polyline).layer)), L"\u7BA1");
            EXPECT_EQ(drawing->record(drawing->next(drawing->next(polyline))).owner, polyline);

            const RecordId end = drawing->endOf(drawing->findTable("LAYER"));
            drawing->insertRecord(end, RecordKind::TableRecord, {{0, "LAYER"}, {2, "NEW"}, {70, "0"}, {62, "-7"}});
            const std::size_t place = bytes.find("ENDTAB") - (drawing->isBinary() ? 1 : 4);
            const Tags layer = {{0, "LAYER"}, {2, "NEW"}, {70, "0"}, {62, "-7"}};
            const std::string fresh =
                drawing->isBinary() ? layBinary(layer, false).substr(kBinarySignature.size()) : lay(layer);
            EXPECT_EQ(drawing->toBytes(), std::string(bytes).insert(place, fresh));
        }
    }
    const auto bare = parse("0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n0\n0\nENDSEC\n0\nEOF\n");
    EXPECT_EQ(bare->versionText(), "AC1009");
    EXPECT_FALSE(bare->hasHandles());
    EXPECT_EQ(bare->findTable("LAYER"), kNoRecord);
}

TEST(Reading, MoreTypeNamesThanNumbers) {
    Tags tags = {{0, "SECTION"}, {2, "ENTITIES"}};
    for (int i = 0; i < 66000; ++i)
        tags.push_back({0, "T" + std::to_string(i)});
    tags.insert(tags.end(), {{0, "LINE"}, {8, "PIPE"}, {0, "ENDSEC"}, {0, "EOF"}});
    const auto drawing = parse(lay(tags));
    RecordId id = drawing->next(drawing->first());
    for (int i = 0; i < 66000; ++i, id = drawing->next(id)) {
        ASSERT_EQ(drawing->typeNameOf(id), "T" + std::to_string(i));
    }
    EXPECT_EQ(drawing->typeNameOf(id), "LINE");
    EXPECT_EQ(drawing->typeName(drawing->record(drawing->next(drawing->first())).type), "T0");
}

// Some programs give all entities one handle; nothing slows down, and the first one alive is found.
TEST(Reading, OneHandleForAll) {
    constexpr int kCount = 200000;
    std::string text = "0\nSECTION\n2\nENTITIES\n";
    for (int i = 0; i < kCount; ++i)
        text += "0\nPOINT\n5\nAB\n8\n0\n";
    const auto drawing = parse(text + "0\nENDSEC\n0\nEOF\n");
    for (RecordId id = 1; id <= 3; ++id) {
        EXPECT_EQ(drawing->findHandle(0xAB), id);
        drawing->eraseRecord(id);
    }
    EXPECT_EQ(drawing->findHandle(0xAB), 4u);
    EXPECT_EQ(drawing->findHandle(0xAC), kNoRecord);
    drawing->eraseRecord(2, false);
    EXPECT_EQ(drawing->findHandle(0xAB), 2u);
    EXPECT_EQ(drawing->newHandle(), 0xACu);
}

// One of several records with a handle gets another handle, and the shared one back.
TEST(Reading, RecordsThatShareAHandlePartAndMeet) {
    std::string text = "0\nSECTION\n2\nENTITIES\n";
    for (const char* handle : {"A", "B", "A", "B", "A"})
        text += std::string("0\nPOINT\n5\n") + handle + "\n8\n0\n";
    const auto drawing = parse(text + "0\nENDSEC\n0\nEOF\n");
    const auto give = [&](RecordId id, std::string_view handle) {
        Tag tag;
        ASSERT_TRUE(drawing->findTag(id, 5, tag));
        drawing->setValue(id, tag, handle);
    };
    const auto found = [&] {
        return std::vector<RecordId>{drawing->findHandle(0xA), drawing->findHandle(0xB), drawing->findHandle(0xC)};
    };
    EXPECT_EQ(found(), (std::vector<RecordId>{1, 2, kNoRecord}));
    give(1, "C");
    EXPECT_EQ(found(), (std::vector<RecordId>{3, 2, 1}));
    give(3, "B");
    EXPECT_EQ(found(), (std::vector<RecordId>{5, 2, 1}));
    drawing->eraseRecord(2);
    EXPECT_EQ(found(), (std::vector<RecordId>{5, 3, 1}));
    give(1, "A");
    EXPECT_EQ(found(), (std::vector<RecordId>{1, 3, kNoRecord}));
    drawing->eraseRecord(3);
    drawing->eraseRecord(4);
    EXPECT_EQ(found(), (std::vector<RecordId>{1, kNoRecord, kNoRecord}));
}

// Code lines of up to seven bytes are known by these bytes; longer ones must not be taken for them, nor their bytes for
// others.
TEST(Reading, CodeLinesOfEveryWidth) {
    for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
        for (int width = 1; width <= 18; ++width) {
            SCOPED_TRACE(width);
            const std::string bytes = lay(sampleTags(), width, lineEnd);
            const auto drawing = parse(bytes);
            ASSERT_NE(drawing, nullptr);
            checkSample(*drawing);
            EXPECT_EQ(drawing->toBytes(), bytes);
            // Any blank but that of a known line is still looked at.
            const std::string known = std::string(static_cast<std::size_t>(width) - 1, ' ') + "0" + lineEnd + "SEQEND";
            const std::size_t at = bytes.find(known);
            if (width < 5 || at == std::string::npos) continue;
            for (const char wrong : {'\0', '\x10', '@'}) {
                std::string damaged = bytes;
                damaged[at] = wrong;
                platform::Error error;
                EXPECT_EQ(Drawing::fromBytes(damaged, "damaged", error), nullptr) << static_cast<int>(wrong);
            }
        }
    }
}

TEST(Reading, DamageIsToldWithItsPlace) {
    const auto replaced = [](std::string_view what, std::string_view by) {
        std::string text = lay(sampleTags());
        text.replace(text.find(what), what.size(), by);
        return text;
    };
    const std::string whole = lay(sampleTags());
    const std::string noEnd = whole.substr(0, whole.size() - 8 - 11);
    const std::string binary = layBinary(sampleTags(), true);
    const std::size_t reactors = binary.find("{ACAD");
    const struct {
        std::string bytes;
        std::string message;
    } cases[] = {
        {"", "1: not a DXF file: nothing in it"},
        {"\n\n", "3: not a DXF file: nothing in it"},
        {"hello\nworld\n", "1: not a DXF file: first line is no group code"},
        {"AC1018\nworld\n", "1: not a DXF file: first line is no group code"},
        {"999\nhi\n\n{json}", "4: not a DXF file: first line is no group code"},
        {" - \n0\n", "1: not a DXF file: first line is no group code"},
        {"0\nSECTION \t and what comes after\x01it\n",
         "1: not a DXF file: 0 SECTION expected, found SECTION ? and what comes..."},
        {"0", "1: the file is cut off: no value after the last group code"},
        {"0\nSECTION", "1: a section without a name"},
        {std::string("AC1032\0data", 11), " a DWG drawing of 2018; save it as DXF, or name a converter (--converter)"},
        {std::string("AC9.99\0data", 11),
         " a DWG drawing of AC9.99; save it as DXF, or name a converter (--converter)"},
        {std::string("MC1032\0data", 11), "1: not a DXF file: first line is no group code"},
        {std::string("AC10A2\0data", 11), "1: not a DXF file: first line is no group code"},
        {"  1\nAC1015\n", "1: not a DXF file: 0 SECTION expected, found group code 1"},
        {"  0\nLINE\n", "1: not a DXF file: 0 SECTION expected, found LINE"},
        {noEnd, std::to_string(2 * sampleTags().size() - 4) + ": the file is cut off: 0 EOF is missing"},
        {noEnd.substr(0, noEnd.size() - 5),
         std::to_string(2 * sampleTags().size() - 5) + ": the file is cut off: no value after the last group code"},
        {replaced("  3\nANSI", "3.5\nANSI"), "13: group code expected, found \"3.5\""},
        {replaced("  3\nANSI", std::string("  3\0\nANSI", 9)), "13: NUL byte in a group code"},
        {replaced("  5\n10\n", "\n10\n"), "35: group code expected, found \"\""},
        {replaced("  2\nHEADER\n", ""), "3: a section without a name"},
        {replaced("  2\nHEADER\n", "999\nwhat\n  0\nENDSEC\n"), "3: a section without a name"},
        {binary.substr(0, 22), " byte 21: the file is cut off: 0 EOF is missing"},
        {binary.substr(0, 30), " byte 22: the file is cut off: a group code or its value is not whole"},
        {binary.substr(0, reactors + 3),
         " byte " + std::to_string(reactors - 2) + ": the file is cut off: a group code or its value is not whole"},
        {binary.substr(0, reactors - 2),
         " byte " + std::to_string(reactors - 3) + ": the file is cut off: 0 EOF is missing"},
    };
    for (const auto& one : cases) {
        platform::Error error;
        EXPECT_EQ(Drawing::fromBytes(one.bytes, "bad.dxf", error), nullptr);
        EXPECT_EQ(error.message, "bad.dxf:" + one.message);
        if (one.message[0] == ' ') continue;
        std::string bytes = one.bytes;
        std::replace(bytes.begin(), bytes.end(), '\n', '\r');
        EXPECT_EQ(Drawing::fromBytes(bytes, "bad.dxf", error), nullptr);
        EXPECT_EQ(error.message, "bad.dxf:" + one.message);
    }
}

TEST(Reading, Numbers) {
    EXPECT_EQ(toInteger("    -7 "), -7);
    EXPECT_EQ(toInteger("+12"), 12);
    EXPECT_EQ(toInteger("1.5", 9), 9);
    EXPECT_EQ(toInteger("", 9), 9);
    EXPECT_DOUBLE_EQ(toReal(" +1.5E+2"), 150.0);
    EXPECT_DOUBLE_EQ(toReal("1,5", 9.0), 9.0);
    EXPECT_EQ(toHandle(" 2a7 "), 0x2A7u);
    EXPECT_EQ(toHandle("2G"), 0u);
    EXPECT_EQ(toHandle("12345678123456789"), 0u);
    EXPECT_EQ(toReal("+-1.5", 9.0), 9.0);
    EXPECT_EQ(handleText(0x2A7), "2A7");
    EXPECT_EQ(realText(std::numeric_limits<double>::infinity()), "0.0");  // drawings have no spelling for it
    for (const double value : {0.0, 1.0, -0.1, 1e-300, 1.0 / 3, 123456789012345680.0, 5e-324, 1e15, 1e22}) {
        EXPECT_EQ(toReal(realText(value)), value) << realText(value);
        EXPECT_NE(realText(value).find('.'), std::string::npos) << realText(value);
    }
    // Spelled as drawings were written before: plain digits but for extreme sizes, and always a point.
    const struct {
        double value;
        const char* text;
    } spelled[] = {{100.0, "100.0"},   {5.0, "5.0"},         {-0.25, "-0.25"},      {0.0001, "0.0001"},
                   {1e-6, "0.000001"}, {1e-7, "1.0E-07"},    {-2.5e-9, "-2.5E-09"}, {1e15, "1000000000000000.0"},
                   {1e16, "1.0E+16"},  {1.5e300, "1.5E+300"}};
    for (const auto& one : spelled)
        EXPECT_EQ(realText(one.value), one.text);
}

}  // namespace
}  // namespace qrs::dxf::test
