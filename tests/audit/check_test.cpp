// Checks of drawings against the shipped standard.
#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "faulty.h"
#include "program.h"

namespace {

constexpr const char* kReport = R"(faulty.dxf against the standard pwx
Standard: pwx.qdsl
error     Objects on a layer that the drawing does not have [layer-missing]
          To do: make the layer, or move the objects.
          GONE-LAYER: 1 object (43)
error     Objects or layers with a linetype that the drawing does not have [linetype-missing]
          To do: load the linetype, or give the objects another.
          GONE-LINE: 1 object (41)
error     Texts in a style that the drawing does not have [textstyle-missing]
          To do: make the style, or give the texts another.
          GONE-STYLE: 1 object (46)
error     Dimensions in a style that the drawing does not have [dimstyle-missing]
          To do: make the style, or give the dimensions another.
          GONE-DIM: 1 object (34)
error     Pipes of a system that the standard does not have [pipe-system-unknown]
          To do: give the pipes a system of the standard.
          牛奶: 1 object (52)
error     Pipes on a layer that is not their system's [pipe-layer]
          To do: move the pipes to the layer of their system, or give them the system of the layer.
          污水, on layer temp: 1 object (51)
warning   Layers that are not in the standard [layer-foreign]
          To do: move the objects to a layer of the standard, or map the layer to one.
          temp: 5 objects (45, 46, 47, 51, 52)
          EMPTY
warning   Layers of the standard with other properties [layer-different]
          To do: give the layer what the standard says.
          给排-生活给水-管线: 7 objects (31, 40, 41, 50, 53, ...)
            colour: 1 here, 3 in the standard
            linetype: HIDDEN here, J in the standard
            plotted: no here, yes in the standard
warning   Layers under a name of an older standard [layer-old-name]
          To do: rename the layer, or move its objects.
          给水立管, today 给排-生活给水-立管: 1 object (42)
warning   Objects with a colour of their own on layers of the standard [own-color]
          To do: make the colour by layer.
          给排-生活给水-管线: 2 objects (40, 41)
warning   Objects with a linetype of their own on layers of the standard [own-linetype]
          To do: make the linetype by layer.
          给排-生活给水-管线: 2 objects (40, 41)
warning   Objects with a lineweight of their own on layers of the standard [own-lineweight]
          To do: make the lineweight by layer.
          给排-生活给水-管线: 1 object (40)
warning   Objects of model space on layer 0 [on-layer-0]
          To do: move the objects to a layer of the standard.
          0: 1 object (44)
warning   Linetypes that are not in the standard [linetype-foreign]
          To do: use a linetype of the standard.
          WALL: 1 object (40)
warning   Linetypes of the standard with another pattern [linetype-different]
          To do: load the linetype anew.
          HIDDEN, of layer 给排-生活给水-管线
            pattern: 5,-5 here, 6.35,-3.175 in the standard
warning   Text styles that are not in the standard [textstyle-foreign]
          To do: use a text style of the standard.
          FANCY: 1 object (45)
warning   Text styles of the standard with other properties [textstyle-different]
          To do: give the style what the standard says.
          给排-管径
            height: 5 here, 3 in the standard
warning   Texts in styles that are not in the standard [text-in-foreign-style]
          To do: give the texts a style of the standard.
          FANCY: 1 object (45)
warning   Dimension styles that write in a text style that is not in the standard [dimstyle-text]
          To do: give the dimension style a text style of the standard.
          D1, writes in FANCY: 2 objects (33, 47)
warning   Dimensions on layers that are not in the standard [dimstyle-layer]
          To do: move the dimensions to a layer of the standard.
          D1, on temp: 1 object (47)
warning   Pipes that bear an old name of their system [pipe-system-old]
          To do: give the pipes the name of today.
          给水, today 生活给水: 1 object (50)
warning   Risers without a serial [riser-without-serial]
          To do: number the risers.
          生活给水: 1 object (53)
warning   Risers of one system with the same serial [riser-serial-doubled]
          To do: number the risers anew, or check that they are one.
          生活给水, serial 1: 2 objects (54, 55)
note      Layers spelled with other capitals than in the standard [layer-case]
          To do: spell the name as the standard does.
          给排-bim-井, spelled 给排-BIM-井
note      Layers that nothing lies on [layer-unused]
          To do: purge the layer if nobody needs it.
          EMPTY
          给排-bim-井
note      Linetypes spelled with other capitals than in the standard [linetype-case]
          To do: spell the name as the standard does.
          Dashed, spelled DASHED
note      Linetypes that nothing is drawn with [linetype-unused]
          To do: purge the linetype if nobody needs it.
          Dashed
note      Text styles that nothing is written in [textstyle-unused]
          To do: purge the style if nobody needs it.
          给排-管径
6 errors, 18 warnings, 6 notes
)";

// A report with the standard's name alone: its folder is the machine's.
std::string withoutFolder(std::string report) {
    const std::size_t at = report.find("Standard: ") + std::string("Standard: ").size();
    return report.erase(at, report.find("pwx.qdsl\n") - at);
}

struct Case {
    const char* file;
    const char* content;
    std::vector<std::string> arguments;
    int code;
    const char* said;  // somewhere in the report or the messages
};

}  // namespace

TEST(Check, TellsEveryKindOfFault) {
    const Workplace place;
    place.write("faulty.dxf", faultyDrawing());
    const Outcome checked = place.run({"--check", "faulty.dxf"});
    EXPECT_EQ(withoutFolder(checked.out), kReport);
    EXPECT_EQ(checked.code, 1);
    EXPECT_EQ(checked.error, "qrsconsole: 6 findings are errors\n");
}

TEST(Check, WeighsRulesAndKnowsWhatWasAccepted) {
    const Workplace place;
    place.write("faulty.dxf", faultyDrawing());
    const std::string off =
        "layer-missing,off\nlinetype-missing,note\ntextstyle-missing,off\ndimstyle-missing,off\npipe-layer,off\npipe-"
        "system-unknown,"
        "warning\n";
    const Case cases[] = {
        {"rules.csv", off.c_str(), {"--rules", "rules.csv"}, 0, "\n0 errors, 19 warnings, 7 notes\n"},
        {"rules.csv", "# none\n\nlayer-absent , error\n", {"--rules", "rules.csv"}, 1, "          给排-污水-管线\n"},
        {"rules.csv", "textstyle-absent,error\n", {"--rules", "rules.csv"}, 1, "          给排-标注\n"},
        {"rules.csv", "linetype-absent,error\n", {"--rules", "rules.csv"}, 1, "          CENTER\n"},
        {"rules.csv",
         "own-color,off\nlayer-lost,off\n",
         {"--rules", "rules.csv"},
         3,
         "rules.csv:2: there is no rule \"layer-lost\"\n"},
        {"rules.csv", "own-color,bad\n", {"--rules", "rules.csv"}, 3, "rules.csv:1: \"bad\" is no severity"},
        {"rules.csv", "own-color,\"off\n", {"--rules", "rules.csv"}, 3, "rules.csv:1: a quote is not closed\n"},
        {"faulty.dxf.accepted", "# May\npipe-*,x,y\n", {}, 3, "faulty.dxf.accepted:2: there is no rule \"pipe-*\""},
        {"faulty.dxf.accepted", "pipe-layer,污水\n", {}, 3, "accepted:1: a row is a rule, a subject and a reason"},
        {"faulty.dxf.accepted",
         "layer-foreign,TE*,\"agreed, until May\"\nown-color,X,y\n",
         {},
         1,
         "accepted  Layers that are not in the standard [layer-foreign]\n"
         "          temp: 5 objects (45, 46, 47, 51, 52)\n"
         "            accepted: agreed, until May\n"},
        {"faulty.dxf.accepted",
         "layer-foreign,TE*,\"agreed, until May\"\nown-color,X,y\n",
         {},
         1,
         "faulty.dxf.accepted:2: own-color, X\n6 errors, 17 warnings, 6 notes; 1 accepted\n"},
        // Of several findings of a system each one is accepted by itself, however the report spells it.
        {"faulty.dxf.accepted", "riser-serial-doubled,\"生活给水, serial 1\",y\n", {}, 1, "; 1 accepted\n"},
        {"faulty.dxf.accepted", "riser-serial-doubled,\"生活给水, 编号 1\",y\n", {}, 1, "; 1 accepted\n"},
        {"faulty.dxf.accepted",
         "riser-serial-doubled,生活给水,y\n",
         {},
         1,
         "faulty.dxf.accepted:1: riser-serial-doubled, 生活给水\n"},
    };
    for (const Case& one : cases) {
        place.write(one.file, one.content);
        std::vector<std::string> arguments = {"--check", "faulty.dxf"};
        arguments.insert(arguments.end(), one.arguments.begin(), one.arguments.end());
        const Outcome checked = place.run(arguments);
        EXPECT_EQ(checked.code, one.code) << one.content;
        EXPECT_NE((checked.out + checked.error).find(one.said), std::string::npos) << checked.out << checked.error;
        std::filesystem::remove(place.path(one.file));
    }
    // A rule that is off fits nothing, and so its rows are not told.
    place.write("rules.csv", "own-color,off\n");
    place.write("faulty.dxf.accepted", "own-color,*,y\n");
    const Outcome checked = place.run({"--check", "faulty.dxf", "--rules", "rules.csv"});
    EXPECT_EQ(checked.out.find("not found any more"), std::string::npos) << checked.out;
}

TEST(Check, TellsProgramsOfEachDrawing) {
    const Workplace place;
    place.write("faulty.dxf", faultyDrawing());
    place.write("faulty.dxf.accepted", "layer-different,*,known\n");
    place.example("pipes.dxf");
    // In one language whatever the user's is.
    const Outcome checked =
        place.run({"--language", "zh", "--check", "faulty.dxf", "pipes.dxf", "gone.dxf", "--to", "report.json"});
    EXPECT_NE(place.run({"--language", "zh", "--check", "faulty.dxf"}).out.find("线型：此处 HIDDEN，标准 J\n"),
              std::string::npos);
    EXPECT_EQ(checked.code, 1);
    EXPECT_EQ(checked.out, "");
    const nlohmann::json drawings = nlohmann::json::parse(place.read("report.json"))["drawings"];
    ASSERT_EQ(drawings.size(), 3u);
    EXPECT_EQ(drawings[0]["errors"], 6);
    const nlohmann::json& accepted = drawings[0]["findings"].back();
    EXPECT_EQ(accepted["accepted"], "known");
    EXPECT_EQ(accepted["differences"][1],
              nlohmann::json({{"property", "linetype"}, {"drawing", "HIDDEN"}, {"standard", "J"}}));
    EXPECT_EQ(accepted["handles"], nlohmann::json({"31", "40", "41", "50", "53"}));
    EXPECT_NE(drawings[0]["standardFile"].get<std::string>().find("pwx.qdsl"), std::string::npos);
    EXPECT_EQ(drawings[1]["warnings"], 1);
    EXPECT_NE(drawings[2]["unreadable"].get<std::string>().find("gone.dxf"), std::string::npos);
}

TEST(Check, OnePageSumsUpDrawings) {
    const Workplace place;
    place.write("faulty.dxf", faultyDrawing());
    place.write("faulty.dxf.accepted", "layer-different,*,<b>known\n");
    place.example("pipes.dxf");
    const Outcome page = place.run({"--check", "--form", "html", "pipes.dxf", "faulty.dxf", "gone.dxf"});
    // The worst first: what could not be read, then errors.
    std::size_t at = 0;
    for (const char* part :
         {"gone.dxf</a></td><td colspan=\"4\"", "faulty.dxf</a></td><td class=\"number\">6<",
          "pipes.dxf</a></td><td class=\"number\">0<", "<caption>Rules", "<code>layer-missing</code>",
          "<td>height</td><td>5</td><td>3</td>", "accepted: &lt;b&gt;known", "</html>"}) {
        const std::size_t found = page.out.find(part, at);
        ASSERT_NE(found, std::string::npos) << part << page.out;
        at = found;
    }
}

// A broken rule is what a pipeline stops for; that a drawing was not looked at is told where none is broken.
TEST(Check, OfSeveralDrawingsEndsWithTheGravestOutcome) {
    const Workplace place;
    place.write("faulty.dxf", faultyDrawing());
    const std::string mark("AC1032\0", 7);
    place.write("house.dwg", mark + faultyDrawing());
    place.write("house.dwg.accepted", "*,*,no rule\n");
    place.write("torn.dwg", mark + "torn");
    place.example("pipes.dxf");
    const std::string converter = "'" QRS_CONVERTER "' {in} {out} {from}";
    const struct {
        std::vector<std::string> arguments;
        int code;
        const char* said;
    } cases[] = {
        {{"--check", "pipes.dxf", "gone.dxf"}, 3, "qrsconsole: not checked: "},
        {{"--check", "gone.dxf", "faulty.dxf"}, 1, "\nqrsconsole: 6 findings are errors\n"},
        {{"--check", "--form", "json", "gone.dxf"}, 3, "\"unreadable\": "},
        {{"--pipes", "--form", "csv", "gone.dxf"}, 3, "gone.dxf,,unreadable,"},
        {{"--pipes", "pipes.dxf", "gone.dxf"}, 3, "qrsconsole: not read: "},
        // DWG drawings become others on the way; what lies beside them counts.
        {{"--check", "pipes.dxf", "house.dwg"}, 3, "save it as DXF, or name a converter"},
        {{"--check", "--converter", converter, "pipes.dxf", "torn.dwg"}, 3, "not checked: "},
        {{"--check", "--converter", converter, "pipes.dxf", "house.dwg"}, 3, "house.dwg.accepted:1: there is no rule"},
        {{"--check", "--converter", converter, "house.dwg"}, 3, "house.dwg.accepted:1: there is no rule"},
    };
    for (const auto& one : cases) {
        const Outcome checked = place.run(one.arguments);
        EXPECT_EQ(checked.code, one.code) << checked.out << checked.error;
        EXPECT_NE((checked.out + checked.error).find(one.said), std::string::npos) << checked.out << checked.error;
    }
    place.write("house.dwg.accepted", "layer-different,*,known\n");
    for (const char* other : {"pipes.dxf", ""}) {
        std::vector<std::string> arguments = {"--check", "--converter", converter, "house.dwg"};
        if (*other != '\0') arguments.emplace_back(other);
        const Outcome checked = place.run(arguments);
        EXPECT_EQ(checked.code, 1);
        EXPECT_NE(checked.out.find("house.dwg against the standard pwx\n"), std::string::npos) << checked.out;
        EXPECT_NE(checked.out.find("; 1 accepted\n"), std::string::npos) << checked.out;
    }
}

// Neither a wrong name nor a wrong ending costs a file, or is taken for done.
TEST(Check, WritesItsReportOnlyWhereNothingElseLies) {
    const Workplace place;
    place.example("pipes.dxf");
    place.write("rules.csv", "on-layer-0,off\n");
    place.write("map.csv", "WALL,ByLayer,linetype\n");
    place.write("list.txt", "pipes.dxf\n");
    place.write("none.txt", "\n");
    const struct {
        std::vector<std::string> arguments;
        int code;
        const char* said;
        const char* file;  // is not written
    } cases[] = {
        {{"--check", "pipes.dxf", "--to", "new.csv"}, 2, "new.csv: --check cannot", "new.csv"},
        {{"--pipes", "pipes.dxf", "--to", "new.HTM"}, 2, "new.HTM: --pipes cannot", "new.HTM"},
        {{"--repair", "auto", "--dry-run", "pipes.dxf", "--to", "new.json"}, 2, "--repair cannot", "new.json"},
        {{"--check", "pipes.dxf", "--to", "./pipes.dxf"}, 2, "--to would overwrite pipes.dxf\n", "pipes.dxf"},
        {{"--check", "pipes.dxf", "--to", "pipes.dxf.accepted"}, 2, "--to would", "pipes.dxf.accepted"},
        {{"--check", "pipes.dxf", "--rules", "rules.csv", "--to", "rules.csv", "--form", "text"},
         2,
         "--to would overwrite rules.csv\n",
         "rules.csv"},
        {{"--pipes", "--list", "list.txt", "--to", "list.txt"}, 2, "--to would overwrite list.txt\n", "list.txt"},
        {{"--pipes", "--list", "list.txt", "--to", "pipes.dxf"}, 2, "--to would", "pipes.dxf"},
        {{"--repair", "map.csv", "--dry-run", "pipes.dxf", "--to", "map.csv", "--form", "text"}, 2, "", "map.csv"},
        {{"--repair", "auto", "-o", "new.dxf", "pipes.dxf", "--to", "new.dxf"}, 2, "--to would", "new.dxf"},
        {{"--check", "--list", "none.txt"}, 2, "qrsconsole: no drawing was named\n", "none.txt"},
        {{"--check", "pipes.dxf", "--to", "nowhere/x.txt"}, 4, "nowhere", "pipes.dxf"},
        {{"--pipes", "pipes.dxf", "gone.dxf", "--to", "nowhere/x.txt"}, 4, "nowhere", "pipes.dxf"},
        {{"--repair", "auto", "--dry-run", "pipes.dxf", "--to", "nowhere/x.txt"}, 4, "nowhere", "pipes.dxf"},
#if !defined(_WIN32)
        // With slashes capitals matter.
        {{"--check", "pipes.dxf", "--rules", "RULES.csv"}, 3, "RULES.csv", "rules.csv"},
        {{"--check", "pipes.dxf", "Pipes.dxf", "--to", "List.txt"}, 3, "Pipes.dxf", "list.txt"},
#endif
    };
    const auto bytesOf = [&](const char* name) { return place.has(name) ? place.read(name) : std::string("none"); };
    for (const auto& one : cases) {
        const std::string before = bytesOf(one.file);
        const Outcome checked = place.run(one.arguments);
        EXPECT_EQ(checked.code, one.code) << one.file << checked.out << checked.error;
        EXPECT_NE(checked.error.find(one.said), std::string::npos) << checked.error;
        EXPECT_EQ(bytesOf(one.file), before);
    }

    // The command refuses what only it knows: the references.
    place.example("estate.dxf");
    const std::string building = fileBytes(place.example("building.dxf"));
    const Outcome refused = place.run({"--check", "--references", "estate.dxf", "--to", "building.dxf"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_NE(refused.error.find("would be written over "), std::string::npos) << refused.error;
    EXPECT_EQ(place.read("building.dxf"), building);

    EXPECT_EQ(place.run({"--check", "pipes.dxf", "--to", "page.HTM"}).code, 0);
    EXPECT_EQ(place.read("page.HTM").rfind("<!DOCTYPE html>", 0), 0u);
    // A drawing that is named twice is told once; what cannot be read beside it is named where the report is not seen.
    EXPECT_EQ(place.run({"--check", "pipes.dxf", "./pipes.dxf"}).out, place.run({"--check", "pipes.dxf"}).out);
    std::filesystem::create_directory(place.path("pipes.dxf.accepted"));
    const Outcome torn = place.run({"--check", "pipes.dxf", "--to", "report.txt"});
    EXPECT_EQ(torn.code, 3);
    EXPECT_NE(torn.error.find("pipes.dxf.accepted"), std::string::npos) << torn.error;
}

TEST(Check, LooksIntoReferencesWhenAsked) {
    const Workplace place;
    place.example("estate.dxf");
    place.example("building.dxf");
    const Outcome alone = place.run({"--check", "estate.dxf"});
    EXPECT_EQ(alone.out.find("building.dxf"), std::string::npos) << alone.out;
    const Outcome along = place.run({"--check", "--references", "estate.dxf"});
    EXPECT_NE(along.out.find("building.dxf: 0 errors, 6 warnings, 0 notes\n"), std::string::npos) << along.out;
}

// Multileaders, dimensions and their styles name their text style by its handle; a style that names none writes in
// "Standard". Cells of tables stay as they are, lines of attributes follow. A lost handle is no name.
// From 20,000 records on two threads count.
TEST(Check, CountsBothHalvesOfALargeDrawing) {
    const auto faults = [](const std::string& digit) {
        const std::string line = "100=AcDbLine;10=0;20=0;11=1;21=1";
        return entityText("LINE", digit + "1", "GONE", line) +
               entityText("LINE", digit + "2", "给排-污水-管线", "62=2;6=NOLT;370=25;" + line) +
               entityText("TEXT", digit + "3", "temp", "100=AcDbText;10=0;20=0;40=3;1=a;7=NOSTYLE") +
               entityText("DIMENSION", digit + "4", "temp", "100=AcDbDimension;10=0;20=0;70=0;3=NODIM") +
               entityText("DIMENSION", digit + "5", "temp", "100=AcDbDimension;10=0;20=0;70=0;3=D1") +
               entityText("QRS_PIPEATTACHMENT", digit + "6", "temp", "100=TDbPipeAttachment;10=0;20=0;30=0;70=0") +
               entityText("POINT", digit + "7", "0", "100=AcDbPoint;10=0;20=0");
    };
    std::string drawing =
        "0=SECTION;2=HEADER;9=$ACADVER;1=AC1024;0=ENDSEC;0=SECTION;2=TABLES;" +
        tableText("LAYER", layerText("0", "62=7") + layerText("temp", "62=7") + layerText("给排-污水-管线", "62=2")) +
        tableText("DIMSTYLE", "0=DIMSTYLE;105=22;100=AcDbSymbolTableRecord;100=AcDbDimStyleTableRecord;2=D1;70=0;") +
        "0=ENDSEC;0=SECTION;2=ENTITIES;" + faults("A");
    for (int i = 0; i < 20000; ++i)
        drawing += "0=POINT;8=Defpoints;10=0;20=0;";
    const Workplace place;
    place.write("large.dxf", dxfText(drawing + faults("B") + "0=ENDSEC;0=EOF"));
    const std::string report = place.run({"--check", "large.dxf"}).out;
    const std::string own = "          给排-污水-管线: 2 objects (A2, B2)\n";
    for (const std::string& said :
         {std::string(" GONE: 2 objects (A1, B1)\n"), std::string(" NOLT: 2 objects (A2, B2)\n"),
          std::string(" NOSTYLE: 2 objects (A3, B3)\n"), std::string(" NODIM: 2 objects (A4, B4)\n"),
          std::string(" temp: 8 objects (A3, A4, A5, A6, B3, ...)\n"), std::string(" 0: 2 objects (A7, B7)\n"),
          std::string(" D1, on temp: 2 objects (A5, B5)\n"), "make the colour by layer.\n" + own,
          "make the linetype by layer.\n" + own, "make the lineweight by layer.\n" + own})
        EXPECT_NE(report.find(said), std::string::npos) << said << report;
    EXPECT_NE(place.run({"--pipes", "--form", "csv", "large.dxf"}).out.find(",all-attachments,,,,,2,"),
              std::string::npos);
}

TEST(Check, KnowsTextStylesByTheirHandles) {
    const auto leader = [](const char* type, const std::string& handle, const char* content, const std::string& style) {
        return entityText(type, handle, "0",
                          "100=AcDbMLeader;300=CONTEXT_DATA{;290=1;304=a;340=" + style +
                              ";172=5;302=LEADER{;340=22;303=};301=};340=12E;90=" + (style == "21" ? "2049" : "1") +
                              ";172=" + content + ";343=" + style + ";173=1");
    };
    const auto dimStyle = [](const std::string& handle, const std::string& rest) {
        return "0=DIMSTYLE;105=" + handle + ";100=AcDbSymbolTableRecord;100=AcDbDimStyleTableRecord;2=D" + handle +
               ";70=0;" + rest;
    };
    const auto drawing = [&](const char* version, const std::string& named) {
        const auto style = [](const std::string& handle, const char* name) {
            return "0=STYLE;5=" + handle + ";100=AcDbSymbolTableRecord;100=AcDbTextStyleTableRecord;2=" + name +
                   ";70=0;40=0;41=1;50=0;71=0;42=1;3=txt;4=;";
        };
        const std::string text = named == "20" ? "FANCY" : "给排-管径";
        return dxfText(
            "0=SECTION;2=HEADER;9=$ACADVER;1=" + std::string(version) +
            ";9=$HANDSEED;5=FFF;0=ENDSEC;0=SECTION;2=TABLES;" +
            tableText("STYLE", style("20", "FANCY") + style("21", "给排-管径") + style("23", "98")) +
            tableText("APPID", "0=APPID;2=ACAD;70=0;") +
            tableText("DIMSTYLE", dimStyle("24", "") + dimStyle("25", named == "20" ? "340=99;" : "340=21;")) +
            "0=ENDSEC;0=SECTION;2=ENTITIES;" + leader("MULTILEADER", "40", "2", named) +
            leader("MULTILEADER", "41", "1", "20") + leader("MLEADER", "42", "2", "98") +
            entityText("DIMENSION", "46", "B", "100=AcDbDimension;3=D24") +
            entityText("DIMENSION", "47", "A", "100=AcDbDimension;3=D24") +
            entityText("ATTDEF", "45", "0", "100=AcDbText;7=" + text + ";101=Embedded Object;7=" + text) +
            entityText("DIMENSION", "43", "0",
                       "100=AcDbDimension;3=D24;100=AcDbAlignedDimension;13=0;1001=QRS;1000=DSTYLE;1070=340;"
                       "1005=20;1001=ACAD;1000=DSTYLE;1002={;1070=340;1005=" +
                           named + ";1070=271;1070=340;1005=20;1002=}") +
            entityText("ACAD_TABLE", "44", "0",
                       "100=AcDbBlockReference;2=*T1;100=AcDbTable;171=1;7=FANCY;171=1;7=fancy;7=Standard") +
            "0=ENDSEC;0=EOF");
    };
    const Workplace place;
    place.write("leaders.dxf", drawing("AC1024", "20"));
    const Outcome checked = place.run({"--check", "leaders.dxf"});
    const std::string& report = checked.out;
    // What the drawing itself is damaged in is told, too.
    EXPECT_NE(checked.error.find("qrsconsole: leaders.dxf: "), std::string::npos) << checked.error;
    for (const char* said :
         {"          <98>: 1 object (42)\n          <99>, named by its handle in dimension style D25\n",
          "[text-in-foreign-style]\n          To do: give the texts a style of the standard.\n"
          "          FANCY: 4 objects (40, 45, 43, 44)\n",
          "          D24, writes in Standard: 3 objects (46, 47, 43)\n",
          "          D24, on A, B: 2 objects (46, 47)\n"})
        EXPECT_NE(report.find(said), std::string::npos) << said << report;
    place.write("old.dxf", drawing("AC1014", "20"));
    EXPECT_EQ(place.run({"--check", "old.dxf"}).out.find("[dimstyle-text]"), std::string::npos);

    place.write("map.csv", "FANCY,给排-管径,textstyle\n<99>,给排-管径,textstyle\n98,X,textstyle\n");
    const Outcome mended = place.run({"--repair", "map.csv", "leaders.dxf", "-o", "mended.dxf"});
    EXPECT_EQ(mended.code, 0);
    EXPECT_NE(mended.error.find(" (44): cells of tables and lines of attributes keep"), std::string::npos)
        << mended.error;
    EXPECT_EQ(place.read("mended.dxf"), drawing("AC1024", "21"));
}

// Nor is the drawing changed, or the file of its report written over.
TEST(Prompts, LeftUnansweredEndTheCommandWithOneMessage) {
    const Workplace place;
    place.write("faulty.dxf", faultyDrawing());
    const struct {
        const char* script;
        const char* said;
    } cases[] = {
        {"CHECKSTANDARD\nText\n", "CHECKSTANDARD: not answered: File for the report <command line>:\n"},
        {"CHECKSTANDARD\n\nreport.txt\n\n\nfaulty.dxf\n", "not answered: Another drawing <no more>:\n"},
        {"CHECKSTANDARD\n\nfaulty.dxf\n\n\n\n", "faulty.dxf, which it tells of\n"},
        {"REPAIRSTANDARD\n", "REPAIRSTANDARD: not answered: File of mappings, or Auto <Auto>:\n"},
        {"REPAIRSTANDARD\nAuto\nNo\n", "REPAIRSTANDARD: not answered: File for the report <command line>:\n"},
        {"PIPEREPORT\nCsv\nreport.txt\n", "PIPEREPORT: not answered: Drawing <the current one>:\n"},
    };
    for (const auto& [script, said] : cases) {
        const Outcome ended = place.run({"-p", QRS_AUDIT, "-s", "-", "-o", "after.dxf", "faulty.dxf"}, script);
        EXPECT_NE(ended.error.find(said), std::string::npos) << ended.error;
        EXPECT_EQ(std::count(ended.error.begin(), ended.error.end(), '\n'), 1) << ended.error;
        EXPECT_FALSE(place.has("report.txt"));
        EXPECT_EQ(place.read("faulty.dxf"), faultyDrawing());
        if (place.has("after.dxf")) {
            EXPECT_EQ(place.read("after.dxf"), faultyDrawing());
        }
    }
}
