// Reports: what a drawing holds, where two differ.
#include <gtest/gtest.h>

#include "program.h"

namespace {

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// An old drawing without handles: order is all that tells its entities apart.
std::string withoutHandles(const std::vector<std::string>& layers) {
    std::string text = "0\nSECTION\n2\nENTITIES\n";
    for (const std::string& layer : layers)
        text += "0\nLINE\n8\n" + layer + "\n10\n0.0\n20\n1.0\n11\n2.0\n21\n3.0\n";
    return text + "0\nPOLYLINE\n8\nP\n66\n1\n0\nVERTEX\n8\nP\n10\n1\n20\n1\n0\nSEQEND\n0\nENDSEC\n0\nEOF\n";
}

}  // namespace

TEST(Report, TellsWhatADrawingHolds) {
    const Workplace place;
    place.example("building.dxf");
    const Outcome text = place.run({"--info", "building.dxf"});
    EXPECT_EQ(text.code, 0) << text.error;
    for (const char* line :
         {"  version       AC1024 (2010)\n", "  form          text\n",
          "  code page     UTF-8 ($DWGCODEPAGE ANSI_936)\n", "        12          8  LWPOLYLINE\n",
          "         0         19  0\n", "         5          0  给排-废水-管线  frozen  locked\n",
          "       112  Model\n", "         7  布局1\n", "         2  LAYOUT  AcDbLayout  ObjectDBX Classes\n"})
        EXPECT_NE(text.out.find(line), std::string::npos) << line << text.out;

    EXPECT_NE(text.out.find("  size          " + std::to_string(place.read("building.dxf").size()) + " bytes\n"),
              std::string::npos);

    // A layer that no table defines, an external reference, a damaged name.
    place.write("odd.dxf",
                "0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n2\nSITE\n70\n4\n1\nsite\\plan.dxf\n0\nENDBLK\n0\nENDSEC\n"
                "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\nA\x1b[2J\n67\n1\n0\nLINE\n8\na\x1b[2J\n0\nENDSEC\n");
    const Outcome odd = place.run({"--info", "odd.dxf"});
    EXPECT_EQ(odd.code, 0) << odd.error;
    EXPECT_NE(odd.out.find("         2          0  A?[2J  (not in the layer table)\n"), std::string::npos) << odd.out;
    EXPECT_NE(odd.out.find("  SITE  site\\plan.dxf\n"), std::string::npos) << odd.out;
    EXPECT_NE(odd.out.find("\nwarnings\n  line "), std::string::npos) << odd.out;
    // Opening it tells the same.
    const std::string warning = odd.out.substr(odd.out.find("\nwarnings\n  ") + 12);
    const std::string told = "odd.dxf: " + warning.substr(0, warning.find('\n'));
    EXPECT_EQ(place.run({"odd.dxf", "-e", "REGEN"}).error, "qrsconsole: " + told + "\n");
    const Outcome opened = place.run({"building.dxf"}, "OPEN\nodd.dxf\n");
    EXPECT_NE(opened.out.find("\n" + told + "\n"), std::string::npos) << opened.out;
    const Outcome json = place.run({"--info", "odd.dxf", "--json"});
    EXPECT_NE(json.out.find("\"name\": \"A\\u001b[2J\""), std::string::npos) << json.out;
    EXPECT_NE(json.out.find("\"inLayouts\": 2"), std::string::npos) << json.out;
    EXPECT_EQ(json.out.find("\"defined\": true"), std::string::npos) << json.out;
}

TEST(Report, TellsWhichTagsDiffer) {
    const Workplace place;
    const std::string before = fileBytes(place.example("building.dxf"));
    // Spelling alone is no difference: line ends, blanks, decimals, letters of handles.
    std::string spelled;
    for (const char character : before)
        if (character != '\r') spelled += character;
    place.write("spelled.dxf", replaced(spelled, "\n 40\n300.0\n", "\n40\n300\n"));
    const Outcome same = place.run({"--compare", "building.dxf", "spelled.dxf"});
    EXPECT_EQ(same.code, 0) << same.out << same.error;
    EXPECT_EQ(same.out, "");

    EXPECT_EQ(place.run({"--in-place", "-e", "UnFrozenAllLayer", "spelled.dxf"}).code, 0);
    std::string changed = place.read("spelled.dxf");
    // One tag more in a record, one record fewer.
    changed = replaced(changed, "AcDbLine\n", "AcDbLine\n 39\n5.0\n");
    const std::size_t arc = changed.find("  0\nARC\n");
    changed.erase(arc, changed.find("  0\n", arc + 4) - arc);
    place.write("changed.dxf", changed);
    const Outcome outcome = place.run({"--compare", "building.dxf", "changed.dxf"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 9) << outcome.out;
    for (const char* part : {"LAYER 1E \"建筑-房间名\": 70: 1 > 0\n", "LAYER 2F \"给排-废水-管线\": 70: 5 > 4\n",
                             ": 39: (none) > 5.0\n", ": only in the first\n"})
        EXPECT_NE(outcome.out.find(part), std::string::npos) << part << outcome.out;
    const Outcome json = place.run({"--compare", "changed.dxf", "building.dxf", "--json"});
    EXPECT_EQ(json.code, 1);
    for (const char* part : {"\"difference\": \"onlyInSecond\"", "\"difference\": \"removed\",\n      \"code\": 39,"})
        EXPECT_NE(json.out.find(part), std::string::npos) << part << json.out;
}

TEST(Report, ComparesEntitiesWithoutHandlesByTheirOrder) {
    const Workplace place;
    place.write("first.dxf", withoutHandles({"A", "B", "C", "D", "E"}));
    place.write("second.dxf", withoutHandles({"X", "A", "C", "D", "F"}));
    const Outcome outcome = place.run({"--compare", "first.dxf", "second.dxf"});
    EXPECT_EQ(outcome.out,
              "LINE number 1 of SECTION \"ENTITIES\": only in the second\n"
              "LINE number 2 of SECTION \"ENTITIES\": only in the first\n"
              "LINE number 5 of SECTION \"ENTITIES\": 8: E > F\n");
    // Neither comments nor empty lines at the end are a difference; other data there are.
    const std::string same = withoutHandles({"A", "B", "C", "D", "E"});
    place.write("noted.dxf",
                replaced(replaced(same, "0\nLINE", "999\nnote\n0\nLINE\n999\nmore"), "EOF\n", "EOF\n\n\n"));
    EXPECT_EQ(place.run({"--compare", "first.dxf", "noted.dxf"}).out, "");
    place.write("more.dxf", same + "x");
    EXPECT_EQ(place.run({"--compare", "first.dxf", "more.dxf"}).out,
              "data after the end of the file: only in the second\n");
    place.write("none.dxf", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
    const Outcome emptied = place.run({"--compare", "first.dxf", "none.dxf"});
    // The polyline stands for its vertex and end.
    EXPECT_EQ(std::count(emptied.out.begin(), emptied.out.end(), '\n'), 6) << emptied.out;
}

TEST(Report, RefusesWhatMakesNoSense) {
    const Workplace place;
    place.example("building.dxf");
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--info", "building.dxf", "-e", "REGEN"},
          {"--json", "building.dxf"},
          {"--compare", "building.dxf"},
          {"--compare", "building.dxf", "building.dxf", "--info", "building.dxf"},
          {"--info", ""},
          {"--compare", "building.dxf", "building.dxf", "building.dxf"}})
        EXPECT_EQ(place.run(arguments).code, 2) << arguments.back();
    const Outcome missing = place.run({"--compare", "building.dxf", "none.dxf"});
    EXPECT_EQ(missing.code, 3);
    EXPECT_EQ(missing.error.rfind("qrsconsole: none.dxf: ", 0), 0u) << missing.error;
}
