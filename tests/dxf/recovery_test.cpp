// Drawings with errors: they open with their faults told, can be worked on, and what is not understood stays as it was.
#include <algorithm>

#include "tests/dxf/sample.h"

namespace qrs::dxf::test {
namespace {

Tags without(Tags tags, std::string_view value, int nth = 0) {
    const auto found =
        std::find_if(tags.begin(), tags.end(), [&](const NewTag& tag) { return tag.value == value && nth-- == 0; });
    EXPECT_NE(found, tags.end());
    tags.erase(found);
    return tags;
}

// The sample, with the pointer to nothing taken out of it.
Tags soundTags() {
    return replaced(sampleTags(), "77", {{330, "2"}});
}

std::vector<std::string> messages(const Drawing& drawing) {
    std::vector<std::string> all;
    for (const Fault& fault : drawing.faults())
        all.push_back(fault.message());
    return all;
}

TEST(Recovery, ErrorsAreToldWithLineAndHandle) {
    const Tags sound = soundTags();
    EXPECT_TRUE(parse(lay(sound))->faults().empty());
    EXPECT_EQ(parse(lay(sound))->faultSummary(), "");
    EXPECT_EQ(parse(lay(without(sound, "EOF")))->faultSummary(), "1 error: 1 missing end (line 204)");
    const struct {
        Tags tags;
        std::string message;
    } cases[] = {
        {without(sound, "ENDTAB"), "line 59, handle 2: ENDTAB of a table is missing"},
        {without(sound, "ENDBLK"), "line 103, handle 12: ENDBLK of a block is missing"},
        {without(sound, "ENDSEC"), "line 19: ENDSEC of section HEADER is missing"},
        {without(sound, "ENDSEC", 5), "line 203: ENDSEC of section OBJECTS is missing"},
        {without(sound, "EOF"), "line 204: EOF is missing"},
        {without(sound, "SEQEND"), "line 131, handle 15: SEQEND of the INSERT is missing"},
        {replaced(sound, "     2", {{70, " 1 "}}), "line 31, handle 2: the table says 1 records and holds 2"},
        {replaced(sound, "1C", {{5, "18"}}), "line 197, handle 18: another record has this handle too"},
        {replaced(sound, "1C", {{5, "1C"}, {360, "abcd"}}),
         "line 201, handle 1C: group code 360 points to ABCD, which no record is"},
        {replaced(sound, "WIDGET", {{0, "LWPOLYLINE"}, {90, "2"}, {10, "0"}, {0, "WIDGET"}}),
         "line 159: the polyline says 2 vertices and has 1"},
        {replaced(sound, "ATTRIB", {{0, "ENDBLK"}}), "line 121: ENDBLK without a BLOCK"},
        {replaced(sound, "VALVE", {{2, "VALVE"}, {0, "ENDTAB"}}), "line 93: ENDTAB without a TABLE"},
        {replaced(sound, "ENDBLK", {{0, "INSERT"}, {5, "1D"}, {8, "0"}, {2, "Valve"}, {0, "ENDBLK"}}),
         "line 99, handle 1D: the block VALVE lies in itself"},
        {replaced(sound, "EOF", {{0, "MTEXT"}, {0, "ENDSEC"}, {0, "EOF"}}), "line 205: MTEXT outside of a section"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.message);
        const std::string text = lay(one.tags);
        const auto drawing = parse(text);
        ASSERT_NE(drawing, nullptr);
        EXPECT_EQ(drawing->toBytes(), text);
        const auto told = messages(*drawing);
        ASSERT_FALSE(told.empty());
        EXPECT_EQ(told.front(), one.message);
        if (one.message.find("SEQEND") == std::string::npos && one.message.find("MTEXT") == std::string::npos) {
            EXPECT_EQ(told.size(), 1u) << told.back();
        }
        // The same of the binary form, by place instead of line.
        const auto binary = parse(layBinary(one.tags, true));
        ASSERT_NE(binary, nullptr);
        ASSERT_EQ(binary->faults().size(), told.size());
        EXPECT_EQ(binary->faults().front().text, drawing->faults().front().text);
        EXPECT_EQ(messages(*binary).front().substr(0, 5), "byte ");
    }
    // What only text can have.
    const struct {
        const char *old, *now, *message;
    } spellings[] = {
        {"  3\nANSI", "99999999999\nANSI", "line 13: a number that is no group code"},
        {"AC1015", "AC1099", "line 9: the version AC1099 is not known"},
        {" 70\n0\n", " 70\n  -2,50\n",
         "line 48: group code 70 has the value -2,50, which other programs do not read as a number"},
        {"frozen", "12,5", nullptr},
        {"PIPE", "12,5", nullptr},
        {"EOF\n", "EOF\r", "line 206: the file is cut off between CR and LF"},
    };
    for (const auto& one : spellings) {
        SCOPED_TRACE(one.now);
        std::string text = lay(sound);
        const std::size_t at = text.find(one.old);
        ASSERT_NE(at, std::string::npos);
        text.replace(at, std::strlen(one.old), one.now);
        const auto told = messages(*parse(text));
        ASSERT_EQ(told.size(), one.message != nullptr ? 1u : 0u);
        if (one.message != nullptr) {
            EXPECT_EQ(told.front(), one.message);
        }
    }

    std::string many = "0\nSECTION\n2\nENTITIES\n";
    for (int i = 0; i < 1000; ++i)
        many += "0\nPOINT\n5\nAB\n8\n0\n";
    const auto told = messages(*parse(many + "0\nENDSEC\n0\nEOF\n"));
    ASSERT_EQ(told.size(), 101u);
    EXPECT_EQ(told.front(), "line 11, handle AB: another record has this handle too");
    EXPECT_EQ(told.back(), "line 605: 899 further errors");
    EXPECT_EQ(parse(many + "0\nENDSEC\n")->faultSummary(),
              "1000 errors: 1 missing end (line 6006), 999 handles given twice (first: line 11)");
}

// Every end is missing, and the last line end too; new records find their places all the same.
TEST(Recovery, DrawingsWithoutEndsCanBeWorkedOn) {
    Tags tags = soundTags();
    for (const char* end : {"ENDTAB", "ENDTAB", "ENDBLK", "SEQEND"})
        tags = without(tags, end);
    // Only the last section is closed: otherwise the file would be cut off.
    for (int i = 0; i < 5; ++i)
        tags = without(tags, "ENDSEC");
    tags = without(tags, "EOF");
    // Of the last line end so many bytes are missing.
    for (const std::size_t cut : {0u, 1u, 2u}) {
        const bool binary = cut == 0;
        std::string bytes = binary ? layBinary(tags, true) : lay(tags, 3, "\r\n");
        bytes.resize(bytes.size() - cut);
        const auto drawing = parse(bytes);
        ASSERT_NE(drawing, nullptr);
        EXPECT_EQ(drawing->toBytes(), bytes);
        const auto count = [](const Drawing& of, RecordKind kind) {
            int found = 0;
            for (RecordId id = of.first(); id != kNoRecord; id = of.next(id))
                found += of.record(id).kind == kind;
            return found;
        };
        const auto addTo = [&](RecordId head, RecordKind kind, const char* type, const char* handle) {
            const RecordId id = drawing->insertRecord(drawing->endOf(head), kind, {{0, type}, {5, handle}, {8, "0"}});
            EXPECT_EQ(drawing->record(id).owner, head) << type;
        };
        addTo(drawing->findTable("LAYER"), RecordKind::TableRecord, "LAYER", "41");
        addTo(drawing->findTable("DIMSTYLE"), RecordKind::TableRecord, "DIMSTYLE", "42");
        drawing->adjustTableCount(drawing->findTable("LAYER"), 1);
        drawing->adjustTableCount(drawing->findTable("DIMSTYLE"), 1);
        addTo(drawing->findHandle(0x12), RecordKind::Entity, "LINE", "43");
        addTo(drawing->findSection("ENTITIES"), RecordKind::Entity, "LINE", "44");
        RecordId end = drawing->first();
        while (drawing->record(end).kind != RecordKind::EndOfFile)
            end = drawing->next(end);
        drawing->insertRecord(end, RecordKind::Section, {{0, "SECTION"}, {2, "LATE"}});
        drawing->insertRecord(end, RecordKind::EndSection, {{0, "ENDSEC"}});

        const auto again = parse(drawing->toBytes());
        ASSERT_NE(again, nullptr);
        EXPECT_EQ(again->record(again->findHandle(0x41)).owner, again->findTable("LAYER"));
        EXPECT_EQ(again->record(again->findHandle(0x43)).owner, again->findHandle(0x12));
        EXPECT_EQ(again->record(again->findHandle(0x44)).owner, again->findSection("ENTITIES"));
        EXPECT_NE(again->findSection("LATE"), kNoRecord);
        for (const RecordKind kind : {RecordKind::TableRecord, RecordKind::Entity, RecordKind::EndSection}) {
            EXPECT_EQ(count(*again, kind), count(*drawing, kind));
        }
        // The line end is whole again.
        EXPECT_EQ(again->faults().size() + (cut == 1), drawing->faults().size());
    }
}

}  // namespace
}  // namespace qrs::dxf::test
