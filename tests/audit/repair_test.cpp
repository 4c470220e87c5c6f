// Repairs of a drawing, and what pipes it holds.
#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "faulty.h"
#include "program.h"

namespace {

// The rules that --repair auto speaks of.
constexpr const char* kMended[] = {"[layer-different]",     "[layer-old-name]", "[layer-case]",
                                   "[textstyle-different]", "[textstyle-case]", "[linetype-case]",
                                   "[linetype-different]",  "[pipe-system-old]"};

constexpr const char* kMendedChanges =
    R"($HANDSEED: 5: FFF > 1001
TABLE "LTYPE": 70: 9 > 10
LTYPE 11 "HIDDEN": 3:  > 隐藏线
LTYPE 11 "HIDDEN": 40: 10 > 9.525
LTYPE 11 "HIDDEN": 49: 5 > 6.35
LTYPE 11 "HIDDEN": 49: -5 > -3.175
LTYPE 12 "Dashed": 2: Dashed > DASHED
LTYPE 1000 "J": only in the second
LAYER "给排-生活给水-管线": 62: 1 > 3
LAYER "给排-生活给水-管线": 6: HIDDEN > J
LAYER "给排-生活给水-管线": 290: 0 > 1
LAYER "给水立管": 2: 给水立管 > 给排-生活给水-立管
LAYER "给水立管": 370: (none) > 50
LAYER "给排-bim-井": 2: 给排-bim-井 > 给排-BIM-井
TABLE "STYLE": 70: 9 > 10
STYLE 21 "给排-管径": 40: 5 > 3.0
STYLE 21 "给排-管径": 3: GBENOR > gbenor.shx
STYLE FFF "文字线形": only in the second
LINE 42: 8: 给水立管 > 给排-生活给水-立管
QRS_PIPE 50: 160: (none) > 92
QRS_PIPE 50: 310: (none) > )"
    "5C000000030000000C0000000E000000030000000C00000017000000320000003C00000006000000"
    "02000000000000000000000000000000000000000000000000000000000000000070A74000000000"
    "000000000000000000000000"
    R"(
QRS_PIPE 50: 1: 给水 > 生活给水
QRS_PIPE 50: 90: 0 > 1
)";

// What the drawings differ in, a line each.
std::string compared(const Workplace& place, const std::string& before, const std::string& after) {
    return place.run({"--compare", before, after}).out;
}

}  // namespace

TEST(Repair, MendsWhatHasOneAnswerAndNothingElse) {
    const Workplace place;
    place.write("faulty.dxf", faultyDrawing());
    const Outcome shown = place.run({"--repair", "auto", "--dry-run", "faulty.dxf"});
    EXPECT_EQ(shown.code, 0) << shown.error;
    EXPECT_EQ(shown.out,
              "layer 给排-生活给水-管线: colour 1 -> 3, linetype HIDDEN -> J, plotted no -> yes (7 objects)\n"
              "layer 给水立管 renamed 给排-生活给水-立管 (1 object)\n"
              "layer 给排-生活给水-立管: lineweight default -> 0.50 mm (1 object)\n"
              "layer 给排-bim-井 renamed 给排-BIM-井\n"
              "linetype HIDDEN: pattern 5,-5 -> 6.35,-3.175\n"
              "linetype Dashed renamed DASHED\n"
              "text style 给排-管径: height 5 -> 3\n"
              "pipes of 给水 given the system 生活给水 (1 object)\n"
              "8 changes; shown only, nothing was changed\n");

    // What was accepted stays.
    place.write("faulty.dxf.accepted", "layer-*,给排-*,all\nlayer-old-name,*,known\nlayer-different,*,known\n");
    EXPECT_EQ(place.run({"--repair", "auto", "--dry-run", "faulty.dxf"}).code, 3);
    place.write("faulty.dxf.accepted", "layer-old-name,*,known\nlayer-different,*,known\n");
    const std::string kept = place.run({"--repair", "auto", "--dry-run", "faulty.dxf"}).out;
    EXPECT_NE(kept.find("left as it is: layer 给水立管 renamed 给排-生活给水-立管; accepted: known\n5 changes;"),
              std::string::npos)
        << kept;
    std::filesystem::remove(place.path("faulty.dxf.accepted"));

    const Outcome mended = place.run({"--repair", "auto", "faulty.dxf", "-o", "mended.dxf"});
    EXPECT_EQ(mended.code, 0) << mended.error;
    // The linetype comes with its text style; nothing goes, and nothing else changes.
    EXPECT_EQ(compared(place, "faulty.dxf", "mended.dxf"), kMendedChanges);
    const std::string report = place.run({"--check", "mended.dxf"}).out;
    for (const char* rule : kMended)
        EXPECT_EQ(report.find(rule), std::string::npos) << rule << report;
    EXPECT_NE(report.find("6 errors, 13 warnings, 5 notes\n"), std::string::npos) << report;
    EXPECT_EQ(place.run({"--repair", "auto", "--dry-run", "mended.dxf"}).out,
              "0 changes; shown only, nothing was changed\n");

    // Layers that are lost and have one answer come back, or their objects move.
    place.write("lost.dxf", dxfText("0=SECTION;2=HEADER;9=$ACADVER;1=AC1024;0=ENDSEC;0=SECTION;2=TABLES;" +
                                    // The editor makes this linetype.
                                    tableText("LAYER", layerText("给排-BIM-井", "62=6;6=CONTINUOUS") +
                                                           layerText("给排-生活给水-管线", "62=3;6=GONE;370=50")) +
                                    "0=ENDSEC;0=SECTION;2=ENTITIES;" +
                                    entityText("POINT", "40", "给水立管", "100=AcDbPoint;10=0;20=0") +
                                    entityText("POINT", "41", "给排-污水-管线", "100=AcDbPoint;10=0;20=0") +
                                    entityText("POINT", "42", "LOST", "100=AcDbPoint;10=0;20=0") + "0=ENDSEC;0=EOF"));
    EXPECT_NE(place.run({"--check", "lost.dxf"})
                  .out.find("          LOST: 1 object (42)\n"
                            "          给排-污水-管线, in the standard: 1 object (41)\n"
                            "          给水立管, today 给排-生活给水-立管: 1 object (40)\n"),
              std::string::npos);
    EXPECT_EQ(place.run({"--repair", "auto", "--in-place", "lost.dxf"}).out,
              "layer 给排-生活给水-管线: linetype GONE (missing) -> J\nlayer 给排-污水-管线 made (1 object)\nobjects "
              "of layer 给水立管 moved to 给排-生活给水-立管 (1 object)\n"
              "3 changes\n");
    const std::string lost = place.run({"--check", "lost.dxf"}).out;
    EXPECT_NE(lost.find("1 error, "), std::string::npos) << lost;
    EXPECT_NE(lost.find("          LOST: 1 object (42)\n"), std::string::npos) << lost;

    // One step takes all of it back.
    const Outcome undone =
        place.run({"-p", QRS_AUDIT, "-s", "-", "-o", "undone.dxf", "faulty.dxf"}, "REPAIRSTANDARD\n\n\n\nU\n");
    EXPECT_EQ(undone.code, 0) << undone.error;
    EXPECT_EQ(place.read("undone.dxf"), place.read("faulty.dxf"));
}

// A plan tells what is not possible, the first row that fits decides, and nothing vanishes unseen.
TEST(Repair, TellsBeforehandWhatItCannotDo) {
    const std::string line = "100=AcDbLine;10=0;20=0;11=1;21=1";
    const auto layer = [](const std::string& name, const char* flags, const char* color) {
        return "0=LAYER;100=AcDbSymbolTableRecord;100=AcDbLayerTableRecord;2=" + name + ";70=" + flags +
               ";62=" + color + ";6=Continuous;";
    };
    const Workplace place;
    place.write(
        "plan.dxf",
        dxfText("0=SECTION;2=HEADER;9=$ACADVER;1=AC1024;9=$HANDSEED;5=FFF;0=ENDSEC;0=SECTION;2=TABLES;" +
                tableText("LTYPE",
                          "0=LTYPE;100=AcDbSymbolTableRecord;100=AcDbLinetypeTableRecord;2=Continuous;70=0;3=;72=65;"
                          "73=0;40=0;0=LTYPE;100=AcDbSymbolTableRecord;100=AcDbLinetypeTableRecord;2=HID;70=0;3=;72=65;"
                          "73=0;40=0;") +
                tableText("LAYER", layer("0", "0", "7") + layer("LOCKED", "4", "7") + layer("BAD", "0", "7") +
                                       layer("ONE", "0", "7") + layer("TWO", "0", "7") + layer("KEPT", "4", "7") +
                                       layer("ICE1", "1", "7") + layer("ICE2", "0", "7") + layer("SEEN", "0", "7") +
                                       layer("OFF", "0", "-7") + layerText("HIDDEN", "62=7;6=HID") +
                                       layerText("BACK", "62=7;6=Continuous") + layerText("NOPE", "62=7;6=NOLT") +
                                       layerText("REF|A", "62=7;6=HID")) +
                "0=ENDSEC;0=SECTION;2=BLOCKS;0=BLOCK;5=30;8=0;2=B;70=0;10=0;20=0;" +
                pipeText("31", "0", "牛奶", "11=1;21=0;31=0") + "0=ENDBLK;5=32;8=0;0=ENDSEC;0=SECTION;2=ENTITIES;" +
                entityText("LINE", "41", "LOCKED", "6=WALL;" + line) +
                pipeText("51", "LOCKED", "牛奶", "11=1;21=0;31=0") + entityText("LINE", "42", "BAD", line) +
                entityText("LINE", "43", "ONE", line) + entityText("LINE", "44", "TWO", line) +
                entityText("LINE", "45", "ICE1", line) + entityText("LINE", "46", "ICE2", line) +
                entityText("LINE", "47", "SEEN", "6=WALL;" + line) + entityText("LINE", "48", "0", "6=DASH;" + line) +
                entityText("LINE", "49", "给排-污水-立管", line) + entityText("LINE", "4A", "LOST", line) +
                entityText("LINE", "4E", "REF|LOST", line) + entityText("LINE", "4F", "GONE", line) +
                entityText("LINE", "4C", "PIT", line) + entityText("LINE", "4D", "KEPT", "6=GLASS;" + line) +
                // Vertices and ends move along, attributes on layer 0 stay with their block.
                entityText("POLYLINE", "60", "BACK", "100=AcDb2dPolyline;66=1") +
                entityText("VERTEX", "61", "BACK", "100=AcDb2dVertex;10=0;20=0") +
                entityText("SEQEND", "62", "BACK", "60=0") +
                entityText("INSERT", "64", "0", "100=AcDbBlockReference;66=1;2=B;10=0;20=0") +
                entityText("ATTRIB", "65", "0", "100=AcDbText;10=0;20=0;40=3;1=a;100=AcDbAttribute;2=T;70=0") +
                entityText("SEQEND", "66", "0", "60=0") +
                entityText("TEXT", "4B", "0", "100=AcDbText;10=0;20=0;40=3;1=a;7=FANCY") +
                pipeText("50", "0", "牛奶", "11=1;21=0;31=0") + "0=ENDSEC;0=EOF"));
    place.write(
        "map.csv",
        "LOCKED,TWO,layer\nKEPT,SHUT,layer\n0,TWO,layer\nBAD,bad|na*me,layer\nONE,TWO,layer\nTWO,给排-污水-管线,layer\n"
        "ICE*,给排-雨水-管线,layer\nSEEN,OFF,layer\n*,污水,system\n牛*,雨水,system\nWALL,ByLayer,"
        "linetype\nHID,ByLayer,linetype\nDASH,BYBLOCK,linetype\nFANCY,没有,textstyle\nREF|*,TWO,layer\nGONE,OFF,layer\n"
        "给排-污水-立管,给排-污水-立管,layer\nLOST,LOST,layer\nPIT,BACK,layer\nBACK,给排-废水-管线,layer\nNOLT,"
        "J,linetype\nCont*,没有,linetype\n*,J,linetype\n");
    const std::string checked = place.run({"--check", "plan.dxf"}).out;
    EXPECT_NE(checked.find("牛奶: 3 objects (31, 51, 50)\n"), std::string::npos) << checked;
    EXPECT_NE(checked.find("          NOLT, of layer NOPE\n"), std::string::npos) << checked;
    // Lost layers of references are told there.
    EXPECT_EQ(checked.find("REF|"), std::string::npos) << checked;
    const Outcome shown = place.run({"--repair", "map.csv", "--dry-run", "plan.dxf"});
    const std::string report =
        "objects of layer 0 moved to TWO (4 objects)\n"
        "objects of layer ONE moved to TWO (1 object)\n"
        "objects of layer TWO moved to 给排-污水-管线 (1 object)\n"
        "layer KEPT renamed SHUT (1 object)\n"
        "layer ICE2 renamed 给排-雨水-管线 (1 object)\n"
        "objects of layer SEEN moved to OFF, which is frozen or off (1 object)\n"
        "objects of layer BACK moved to 给排-废水-管线 (1 object)\n"
        "objects of layer ICE1 moved to 给排-雨水-管线 (1 object)\n"
        "objects of layer GONE moved to OFF, which is frozen or off (1 object)\n"
        "objects of layer PIT moved to BACK (1 object)\n"
        "layer 给排-污水-立管 made (1 object)\n"
        "linetype DASH replaced by BYBLOCK (1 object)\n"
        "linetype NOLT replaced by J\n"
        "linetype WALL replaced by ByLayer (1 object)\n"
        "pipes of * given the system 污水 (2 objects)\n"
        "left as it is: linetype HID of layer HIDDEN; ByLayer is for objects alone\n"
        "not done: objects of layer LOCKED moved to TWO: the layer is locked\n"
        "not done: layer BAD renamed bad|na*me: the drawing does not take the name\n"
        "not done: layer LOST made: neither the drawing nor the standard has it\n"
        "not done: linetype Continuous replaced by 没有: neither the drawing nor linetype.dbf has it\n"
        "not done: texts in FANCY written in 没有: neither the drawing nor the standard has it\n"
        "not done: pipes of * given the system 污水, 1 object of layer LOCKED (51): the layer is locked\n"
        "not done: 1 object of layer LOCKED (41): the layer is locked\n"
        "not done: 1 object of layer SHUT (4D): the layer is locked\n"
        "map.csv:10: earlier rows decide on all that fits \"牛*\"\n"
        "map.csv:15: nothing in the drawing fits \"REF|*\"\n";
    const auto withoutPropertiesAndFolder = [](std::string text) {
        for (std::size_t at; (at = text.find("layer 给排-雨水-管线: ")) != std::string::npos;)
            text.erase(at, text.find('\n', at) + 1 - at);
        for (std::size_t file = 0; (file = text.find("map.csv:", file)) != std::string::npos;) {
            const std::size_t folder = text.rfind('\n', file) + 1;
            text.erase(folder, file - folder);
            file = folder + 1;
        }
        return text;
    };
    EXPECT_EQ(withoutPropertiesAndFolder(shown.out), report + "16 changes; shown only, nothing was changed\n");
    const Outcome mended = place.run({"--repair", "map.csv", "plan.dxf", "-o", "mended.dxf"});
    EXPECT_EQ(withoutPropertiesAndFolder(mended.out), report + "16 changes\n");
    const std::string differences = compared(place, "plan.dxf", "mended.dxf");
    for (const char* moved :
         {"LINE 43: 8: ONE > TWO\n", "LINE 44: 8: TWO > 给排-污水-管线\n", "LINE 48: 6: DASH > BYBLOCK\n",
          "VERTEX 61: 8: BACK > 给排-废水-管线\n", "SEQEND 62: 8: BACK > 给排-废水-管线\n",
          "LAYER \"NOPE\": 6: NOLT > J\n", "QRS_PIPE 31: 1: 牛奶 > 污水\n", "QRS_PIPE 50: 1: 牛奶 > 污水\n"})
        EXPECT_NE(differences.find(moved), std::string::npos) << moved << differences;
    for (const char* kept : {"LINE 41", "LINE 4D: 6", "ATTRIB", "SEQEND 66"})
        EXPECT_EQ(differences.find(kept), std::string::npos) << kept << differences;
}

// A typeface of the standard that is not installed is no font file.
TEST(Repair, LeavesTheFontWhereTheTypefaceIsNotInstalledAndMendsCapitals) {
    const Workplace place;
    std::filesystem::copy(std::filesystem::path(QRS_SOURCE_DIR) / "data", place.path("system"));
    std::string standard = place.read("system/pwx.qdsl");
    const std::string fonts = ">gbcbig.shx</ChineseFont>", english = ">gbenor.shx</EnglishFont>", flag = ">0</WinFont>";
    standard.replace(standard.find(fonts), fonts.size(), ">没有的字体</ChineseFont>");
    standard.replace(standard.find(english), english.size(), "></EnglishFont>");
    standard.replace(standard.find(flag), flag.size(), ">1</WinFont>");
    const std::string well = "文字样式名\">给排-井<";
    standard.replace(standard.find(well), well.size(), "文字样式名\">Fancy<");
    place.write("system/pwx.qdsl", standard);
    place.write("faulty.dxf", faultyDrawing());
    EXPECT_NE(
        place.run({"--system", "system", "--check", "faulty.dxf"}).out.find("FANCY, spelled Fancy: 1 object (45)\n"),
        std::string::npos);
    const Outcome mended = place.run({"--system", "system", "--repair", "auto", "faulty.dxf", "-o", "mended.dxf"});
    EXPECT_NE(mended.out.find("text style 给排-管径: height 5 -> 3\n"), std::string::npos)
        << mended.out << mended.error;
    const std::string differences = compared(place, "faulty.dxf", "mended.dxf");
    EXPECT_NE(differences.find("STYLE 20 \"FANCY\": 2: FANCY > Fancy"), std::string::npos) << differences;
    EXPECT_EQ(place.run({"--system", "system", "--check", "mended.dxf"}).out.find("[textstyle-case]"),
              std::string::npos);
    EXPECT_NE(differences.find("STYLE 21 \"给排-管径\": 40: 5 > 3"), std::string::npos) << differences;
    EXPECT_EQ(differences.find("STYLE 21 \"给排-管径\": 3:"), std::string::npos) << differences;
}

TEST(Repair, FollowsAFileOfMappings) {
    const Workplace place;
    place.write("faulty.dxf", faultyDrawing());
    place.write("map.csv",
                "# from, to, what\ntemp,给排-污水-管线,layer\nGONE*,给排-污水-管线,layer\n0,给排-雨水-管线,layer\n"
                "EMPTY,没有,layer\nWALL,ByLayer,linetype\nHIDDEN,没有,linetype\nFANCY,给排-管径,textstyle\n"
                "GONE-*,给排-管径,textstyle\nSTANDARD,给排-管径,textstyle\n"
                "牛奶,污水,system\n");
    const Outcome mended = place.run({"--repair", "map.csv", "faulty.dxf", "-o", "mended.dxf"});
    EXPECT_EQ(mended.code, 0) << mended.error;
    EXPECT_EQ(mended.error,
              "qrsconsole: not done: linetype HIDDEN replaced by 没有: neither the drawing nor linetype.dbf has it\n");
    const std::string differences = compared(place, "faulty.dxf", "mended.dxf");
    for (const char* line : {"LAYER \"temp\": 2: temp > 给排-污水-管线\n", "LAYER \"temp\": 62: 8 > 2\n",
                             "LAYER \"EMPTY\": 2: EMPTY > 没有\n", "LINE 40: 6: WALL > ByLayer\n",
                             "LINE 43: 8: GONE-LAYER > 给排-污水-管线\n", "LINE 44: 8: 0 > 给排-雨水-管线\n",
                             "TEXT 45: 7: FANCY > 给排-管径\n", "DIMSTYLE 22 \"D1\": 340: 20 > 21\n",
                             "MTEXT 46: 7: GONE-STYLE > 给排-管径\n", "QRS_PIPE 52: 1: 牛奶 > 污水\n"})
        EXPECT_NE(differences.find(line), std::string::npos) << line << differences;
    EXPECT_EQ(differences.find("only in the first"), std::string::npos) << differences;

    const Outcome undone =
        place.run({"-p", QRS_AUDIT, "-s", "-", "-o", "undone.dxf", "faulty.dxf"}, "REPAIRSTANDARD\nmap.csv\n\n\nU\n");
    EXPECT_EQ(place.read("undone.dxf"), faultyDrawing()) << undone.error;

    // A text without a style of its own is written in "Standard", and gets one.
    place.write("plain.dxf",
                dxfText("0=SECTION;2=HEADER;9=$ACADVER;1=AC1024;0=ENDSEC;0=SECTION;2=ENTITIES;" +
                        entityText("MTEXT", "40", "0", "100=AcDbMText;10=0;20=0;40=3;1=a;72=5") + "0=ENDSEC;0=EOF"));
    EXPECT_NE(place.run({"--check", "plain.dxf"}).out.find("          Standard: 1 object (40)\n"), std::string::npos);
    EXPECT_EQ(place.run({"--repair", "map.csv", "--in-place", "plain.dxf"}).code, 0);
    EXPECT_NE(place.read("plain.dxf").find("\n  1\na\n  7\n给排-管径\n 72\n"), std::string::npos);

    // Rows that are none.
    const char* const rows[][2] = {{"temp,X\n", "map.csv:1: a row is a pattern, a name and what it is"},
                                   {"\ntemp,X,layers\n", "map.csv:2: \"layers\" is none of"},
                                   {"a,没有,system\n", "map.csv:1: the standard has no pipe system \"没有\""}};
    for (const auto& [row, said] : rows) {
        place.write("map.csv", row);
        const Outcome refused = place.run({"--repair", "map.csv", "--in-place", "faulty.dxf"});
        EXPECT_EQ(refused.code, 3);
        EXPECT_NE(refused.error.find(said), std::string::npos) << refused.error;
    }
    EXPECT_EQ(place.read("faulty.dxf"), faultyDrawing());
}

// What a pipeline sees: exit codes, and files that are written or not.
TEST(Repair, AndCheckOfSeveralFilesEndAsAPipelineNeeds) {
    const auto referring = [](const char* name) {
        return dxfText(
            std::string("0=SECTION;2=HEADER;9=$ACADVER;1=AC1024;0=ENDSEC;0=SECTION;2=BLOCKS;0=BLOCK;5=30;8=0;"
                        "2=R;70=4;10=0;20=0;3=R;1=") +
            name + ";0=ENDBLK;5=32;8=0;0=ENDSEC;0=SECTION;2=ENTITIES;" +
            entityText("POINT", "40", "0", "100=AcDbPoint;10=0;20=0") + "0=ENDSEC;0=EOF");
    };
    const Workplace place;
    place.write("faulty.dxf", faultyDrawing());
    place.example("pipes.dxf");
    place.write("map.csv", "HIDDEN,没有,linetype\ntemp,给排-污水-管线,layer\n");
    place.write("a.dxf", referring("b.dxf"));
    place.write("b.dxf", referring("a.dxf"));
    place.write("c.dxf", referring("gone.dxf"));
    const struct {
        std::vector<std::string> arguments;
        int code;
        const char* said;
        const char* file;
        bool isWritten;
    } cases[] = {
        {{"--repair", "map.csv", "faulty.dxf", "-o", "left.dxf"}, 0, "not done: linetype HIDDEN", "left.dxf", true},
        {{"--repair", "map.csv", "--strict", "faulty.dxf", "-o", "strict.dxf"},
         1,
         "not done: linetype HIDDEN",
         "strict.dxf",
         false},
        {{"--repair", "auto", "faulty.dxf", "pipes.dxf", "-o", "mended/"}, 0, "8 changes\n", "mended/faulty.dxf", true},
        {{"--repair", "auto", "pipes.dxf", "-o", "mended/"}, 0, "0 changes\n", "mended/pipes.dxf", true},
        {{"--check", "--references", "c.dxf", "--to", "c.txt"}, 3, "gone.dxf", "c.txt", true},
        {{"--check", "--references", "a.dxf", "--to", "a.txt"}, 0, "", "a.txt", true},
    };
    for (const auto& one : cases) {
        const Outcome ended = place.run(one.arguments);
        EXPECT_EQ(ended.code, one.code) << ended.out << ended.error;
        EXPECT_NE((ended.out + ended.error).find(one.said), std::string::npos) << ended.out << ended.error;
        EXPECT_EQ(place.has(one.file), one.isWritten) << one.file;
    }
    // Drawings that refer to each other are each told once.
    const std::string report = place.read("a.txt");
    for (const char* name : {"a.dxf against", "b.dxf against"}) {
        const std::size_t at = report.find(name);
        ASSERT_NE(at, std::string::npos) << report;
        EXPECT_EQ(report.find(name, at + 1), std::string::npos) << report;
    }
}

TEST(Pipes, AreSummedUpBySystemSizeAndSerial) {
    const Workplace place;
    const std::string marks = ";1001=PIPE-DN;1000=DN100;1001=PIPE-MATERIAL;1000=\"PE\"";
    std::string drawing = "0=SECTION;2=HEADER;9=$ACADVER;1=AC1024;0=ENDSEC;0=SECTION;2=ENTITIES;";
    // Two pipes share an attachment; another one is at no pipe.
    drawing += pipeText("50", "0", "污水", "11=3000;21=0;31=0;331=60;332=61", marks, "330=64;") +
               pipeText("51", "0", "污水", "11=0;21=4000;31=0;331=61", "", "330=64;330=65;") +
               pipeText("52", "0", "污水", "11=0;21=0;31=900", ";1001=PIPE-SERIAL;1000=WL-2") +
               pipeText("53", "0", "给水", "11=1;21=0;31=0") +
               // A pipe whose end is missing is no riser.
               pipeText("55", "0", "给水", "42=0") + pipeText("56", "0", "给水", "11=1e308;21=1e308;31=0") +
               // Not in model space.
               entityText("QRS_PIPE", "54", "0", "67=1;100=TDbPipePrototype;1=污水;90=0;100=TDbPipe;70=0;10=0;11=1");
    for (const char* node : {"60", "61", "63"})
        drawing += entityText("QRS_PIPENODE", node, "0", "100=TDbPipeNode;10=0;20=0;30=0;70=1");
    for (const char* attachment : {"64", "65", "66"})
        drawing += entityText("QRS_PIPEATTACHMENT", attachment, "0", "100=TDbPipeAttachment;10=0;20=0;30=0;70=0");
    place.write("pipes.dxf", dxfText(drawing + "0=ENDSEC;0=EOF"));
    const Outcome table = place.run({"--pipes", "--form", "csv", "pipes.dxf"});
    EXPECT_EQ(table.code, 0) << table.error;
    std::string rows = table.out;
    for (std::size_t at; (at = rows.find(place.path("pipes.dxf").string())) != std::string::npos;)
        rows.erase(at, place.path("pipes.dxf").string().size());
    EXPECT_EQ(rows,
              "drawing,system,what,diameter,material,building,serial,count,length\n"
              ",污水,pipe,,,,,1,4000.0\n,污水,pipe,DN100,\"\"\"PE\"\"\",,,1,3000.0\n,污水,riser,,,,WL-2,1,900.0\n"
              ",污水,well,,,,,2,\n,污水,attachment,,,,,2,\n,生活给水,pipe,,,,,3,1.0\n,生活给水,well,,,,,0,\n"
              ",生活给水,attachment,,,,,0,\n"
              ",,all-pipes,,,,,5,7001.0\n,,pipes-not-measured,,,,,1,\n,,all-risers,,,,,1,900.0\n,,all-wells,,,,,3,\n,,"
              "wells-at-no-pipe,,,,,1,\n"
              ",,all-attachments,,,,,3,\n,,attachments-at-no-pipe,,,,,1,\n");
    EXPECT_NE(place.run({"--pipes", "--form", "csv", "pipes.dxf", "gone.dxf"}).out.find("gone.dxf,,unreadable,"),
              std::string::npos);
    const Outcome json = place.run({"--pipes", "--form", "json", "pipes.dxf", "gone.dxf"});
    EXPECT_EQ(json.code, 3);
    // In one language whatever the user's is.
    EXPECT_EQ(place.run({"--language", "zh", "--pipes", "--form", "json", "pipes.dxf", "gone.dxf"}).out, json.out);
    const nlohmann::json drawings = nlohmann::json::parse(json.out)["drawings"];
    EXPECT_EQ(drawings[0]["all"]["length"], 7001.0);
    EXPECT_EQ(drawings[0]["all"]["wells"], 3);
    EXPECT_EQ(drawings[0]["pipesNotMeasured"], 1);
    EXPECT_EQ(drawings[0]["wellsAtNoPipe"], 1);
    EXPECT_EQ(drawings[0]["attachmentsAtNoPipe"], 1);
    EXPECT_TRUE(drawings[0]["systems"][0]["sizes"][0]["diameter"].is_null());
    EXPECT_NE(drawings[1]["unreadable"].get<std::string>().find("gone.dxf"), std::string::npos);
    const std::string text = place.run({"--pipes", "pipes.dxf"}).out;
    for (const char* line : {"    diameter not given, material not given: 1 pipe, length 4000.0\n",
                             "    WL-2, diameter not given, material not given: 1 riser, length 900.0\n",
                             "  1 pipe of these too long to be measured\n"})
        EXPECT_NE(text.find(line), std::string::npos) << text;
}
