// The host's own commands on layers, entities and variables.
#include <gtest/gtest.h>

#include <sstream>

#include "../dxftext.h"
#include "program.h"

namespace {

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

TEST(LayerCommand, ChangesOnlyTheTagsItMust) {
    const Workplace place;
    const std::string before = fileBytes(place.example("building.dxf"));
    const Outcome outcome = place.run({"-o", "out.dxf", "building.dxf"},
                                      "-LAYER\n"
                                      "F\n给排-污水*, 建筑-门窗\n"
                                      "T\n建筑-尺寸\n"
                                      "OFF\n0,给排-洁具\n"
                                      "ON\n给排-雨水-立管\n"
                                      "LO\n给排-地漏\n"
                                      "U\n建筑-*\n"
                                      "C\nblue\n给排-生活给水-立管\n"
                                      "S\n公用-图框\n\n");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_EQ(changedLines(before, place.read("out.dxf")),
              (std::vector<std::string>{"给排-生活给水-管线 > 公用-图框",                 // $CLAYER
                                        "7 > -7",                                         // 0 off
                                        "4 > 0", "4 > 0",                                 // two layers unlocked
                                        "0 > 1", "1 > 0",                                 // frozen, thawed
                                        "6 > -6", "0 > 4", "3 > 5",                       // off, locked, blue
                                        "0 > 1", "0 > 1", "0 > 1", "0 > 1", "-5 > 5"}));  // frozen, on
}

TEST(LayerCommand, KeepsTheCurrentLayerUsable) {
    const Workplace place;
    const std::string before = fileBytes(place.example("building.dxf"));
    const Outcome refused =
        place.run({"-o", "out.dxf", "building.dxf"},
                  "-LAYER\nF\n给排-生活给水-管线\nOFF\n给排-生活给水-管线\nN\nS\n建筑-尺寸\nS\nnone\n\n");
    EXPECT_EQ(refused.code, 0) << refused.error;
    EXPECT_TRUE(has(refused.out, "Cannot freeze layer \"给排-生活给水-管线\".  It is the CURRENT layer."))
        << refused.out;
    EXPECT_TRUE(has(refused.out, "Really want layer \"给排-生活给水-管线\" (the CURRENT layer) off?")) << refused.out;
    EXPECT_TRUE(has(refused.out, "Cannot make layer \"建筑-尺寸\" current.  It is frozen.")) << refused.out;
    EXPECT_TRUE(has(refused.out, "Cannot find layer \"none\".")) << refused.out;
    EXPECT_EQ(place.read("out.dxf"), before);
    place.run({"-o", "off.dxf", "building.dxf"}, "-LAYER\nOFF\n给排-生活给水-管线\nY\n\n");
    EXPECT_EQ(changedLines(before, place.read("off.dxf")), std::vector<std::string>{"3 > -3"});
}

TEST(LayerCommand, MakesRenamesAndLists) {
    const Workplace place;
    for (const std::string name : {"building.dxf", "building-r12.dxf"}) {
        place.example(name);
        const Outcome outcome = place.run({"-o", "out.dxf", name},
                                          "-LAYER\nN\nA-1,新图层\nC\n30\nA-1\nM\n当前\nR\n给排-洁具\n卫生洁具\n"
                                          "N\nbad|name\n\n");
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        const Outcome listed = place.run({"out.dxf"}, "-LAYER\n?\nA-1,新*,当前,卫生洁具,给排-洁具\n\n");
        EXPECT_TRUE(has(listed.out,
                        "Current layer:  \"当前\"\n"
                        "Enter an option [?/Make/Set/New/Rename/ON/OFF/Color/Freeze/Thaw/LOck/Unlock/stAte]: ?\n"
                        "Enter layer name(s) to list <*>: A-1,新*,当前,卫生洁具,给排-洁具\n"
                        "Cannot find layer \"给排-洁具\".\n"
                        "Layer name  State  Color        Linetype\n"
                        "----------  -----  -----------  ----------\n"
                        "\"卫生洁具\"  on     6 (magenta)  C"))
            << listed.out;
        EXPECT_TRUE(has(listed.out, "\"A-1\"       on     30 ")) << listed.out;
        EXPECT_TRUE(has(listed.out, "\"新图层\"    on     7 (white)")) << listed.out;
        // What lay on the renamed layer came along.
        EXPECT_EQ(place.read("out.dxf").find("给排-洁具"), std::string::npos);
    }
    // A list that a prompt cannot take whole makes no part of its layers.
    const Outcome refused =
        place.run({"-o", "same.dxf", "building.dxf"}, "-LAYER\nN\nCUT," + std::string(40000, 'x') + "\n\n");
    EXPECT_TRUE(has(refused.error, "The answer has 32767 characters or more; nothing was done.")) << refused.error;
    EXPECT_TRUE(place.read("same.dxf") == place.read("building.dxf"));
}

TEST(LayerCommand, KeepsStatesAndGivesThemBack) {
    const Workplace place;
    place.example("building.dxf");
    place.example("building-r12.dxf");
    const std::string save = "LAYER\nstate\nSave\nAs it was\n";
    const std::string change = "T\n*\nON\n*\nUnlock\n*\nS\n建筑-尺寸\nF\n给排-生活给水-管线\nC\nT\n1,2,3\n公用-*\n";
    const Outcome saved = place.run({"-o", "saved.dxf", "building.dxf"}, save + change + "\n");
    EXPECT_EQ(saved.code, 0) << saved.error;
    EXPECT_TRUE(has(saved.out, "Layer state \"As it was\" saved.")) << saved.out;
    std::string kept;
    for (const char c : place.read("saved.dxf"))
        if (c != ' ' && c != '\r') kept += c == '\n' ? ';' : c;
    EXPECT_TRUE(has(kept, "AcDbXrecord;280;1;91;255;301;;290;0;302;给排-生活给水-管线;330;19;90;8;62;7;370;"));
    EXPECT_TRUE(has(kept, ";330;1F;90;10;62;3;370;")) << "frozen";
    EXPECT_TRUE(has(kept, ";330;30;90;9;62;5;370;")) << "off";

    // Another run finds it there; the layers, and which of them is current, are as they were before.
    const Outcome restored = place.run({"-o", "out.dxf", "saved.dxf"},
                                       "-LA\nA\n?\n\nA\nR\nas it was\nA\nD\nAS IT WAS\nA\nR\nas it was\n"
                                       "A\n?\n*\n\n");
    EXPECT_EQ(restored.code, 0) << restored.error;
    EXPECT_TRUE(has(restored.out, "\"As it was\"")) << restored.out;
    EXPECT_TRUE(has(restored.error, "Cannot find layer state \"as it was\".")) << restored.error;
    EXPECT_TRUE(has(restored.out, "The drawing keeps no layer states.")) << restored.out;
    const Outcome compared = place.run({"--compare", "building.dxf", "out.dxf"});
    EXPECT_EQ(compared.out, "$HANDSEED: 5: EE > F1\n") << "nothing is left of it";

    const Outcome again = place.run({"saved.dxf"}, save + "\n");
    EXPECT_TRUE(has(again.out, "Layer state \"As it was\" replaced.")) << again.out;
    const Outcome old = place.run({"building-r12.dxf"}, save + "\n");
    EXPECT_TRUE(has(old.error, "A drawing of this version cannot keep layer states.")) << old.error;
}

TEST(LayerCommand, RestoresWhatTheEditorSaved) {
    const Workplace place;
    const std::string state = "100=AcDbXrecord;280=1;91=";
    const std::string before = dxfText(
        "0=SECTION;2=HEADER;9=$ACADVER;1=AC1015;9=$HANDSEED;5=FF;0=ENDSEC;0=SECTION;2=TABLES;"
        "0=TABLE;2=LAYER;5=2;102={ACAD_XDICTIONARY;360=20;102=};330=0;100=AcDbSymbolTable;70=3;"
        "0=LAYER;5=10;330=2;100=AcDbSymbolTableRecord;100=AcDbLayerTableRecord;2=0;70=0;62=7;6=CONTINUOUS;"
        "0=LAYER;5=11;330=2;100=AcDbSymbolTableRecord;100=AcDbLayerTableRecord;2=A;70=0;62=1;6=CONTINUOUS;"
        "0=LAYER;5=12;330=2;100=AcDbSymbolTableRecord;100=AcDbLayerTableRecord;2=B;70=0;62=2;6=CONTINUOUS;"
        "0=ENDTAB;0=ENDSEC;0=SECTION;2=OBJECTS;0=DICTIONARY;5=C;330=0;100=AcDbDictionary;281=1;"
        "0=DICTIONARY;5=20;330=2;100=AcDbDictionary;280=1;281=1;3=ACAD_LAYERSTATES;360=21;"
        "0=DICTIONARY;5=21;330=20;100=AcDbDictionary;281=1;3=Night;350=22;3=Of a view;350=23;"
        "0=XRECORD;5=22;330=21;" +
        state +
        "3;301=Off and frozen;290=0;302=0;330=11;90=9;62=5;370=35;331=0;1=Color_5;440=0;330=0;90=8;62=7;"
        "330=12;90=14;62=2;370=-3;331=0;1=Color_2;440=0;92=-1039035666;"
        "0=XRECORD;5=23;330=21;" +
        state + "33280;301=;290=0;302=;330=11;90=8;62=1;0=ENDSEC;0=EOF;");
    place.write("states.dxf", before);
    const Outcome outcome = place.run({"-o", "out.dxf", "states.dxf"}, "-LAYER\nA\n?\n\nA\nR\nNight\n\n");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_TRUE(has(outcome.out, "\"Night\"      3       \"0\"            Off and frozen\n")) << outcome.out;
    EXPECT_FALSE(has(outcome.out, "Of a view")) << outcome.out;
    EXPECT_TRUE(has(outcome.out, "1 of its layers is not in the drawing any more.")) << outcome.out;
    // Neither colours nor locks: the state is not about them.
    EXPECT_EQ(changedLines(before, place.read("out.dxf")), (std::vector<std::string>{"1 > -1", "0 > 1"}));
}

TEST(TableCommands, ListLinetypesAndTextStyles) {
    const Workplace place;
    place.write(
        "styles.dxf",
        "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1021\n0\nENDSEC\n0\nSECTION\n2\nTABLES\n"
        "0\nTABLE\n2\nLTYPE\n70\n2\n0\nLTYPE\n2\nContinuous\n70\n0\n3\nSolid line\n72\n65\n73\n0\n40\n0.0\n"
        "0\nLTYPE\n2\n虚线\n70\n0\n3\n__ __\n72\n65\n73\n2\n40\n3.5\n49\n2.5\n49\n-1.0\n0\nENDTAB\n"
        "0\nTABLE\n2\nSTYLE\n70\n3\n0\nSTYLE\n2\n\n70\n1\n40\n0.0\n41\n1.0\n50\n0.0\n3\nltypeshp.shx\n4\n\n"
        "0\nSTYLE\n2\nHZ\n70\n0\n40\n3.0\n41\n0.7\n50\n15.0\n3\ngbenor.shx\n4\ngbcbig.shx\n"
        "0\nSTYLE\n2\n宋体\n70\n0\n40\n0.0\n41\n1.0\n50\n0.0\n3\nsimsun.ttc\n4\n\n1001\nACAD\n1000\n宋体\n1071\n"
        "33588738\n0\nENDTAB\n0\nENDSEC\n0\nEOF\n");
    const Outcome outcome =
        place.run({"styles.dxf"}, "-LINETYPE\n?\n\n?\n虚*,none\n\n-STYLE\n?\n\n-ST\n?\nno*\n-LT\n\n");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_TRUE(has(outcome.out,
                    "Enter an option [?]: ?\nEnter linetype name(s) to list <*>: \n"
                    "Linetype name  Length  Description\n"
                    "-------------  ------  -----------\n"
                    "\"Continuous\"   0.0     Solid line\n"
                    "\"虚线\"         3.5     __ __\n"
                    "Enter an option [?]: ?\nEnter linetype name(s) to list <*>: 虚*,none\n"
                    "Cannot find linetype \"none\".\n"
                    "Linetype name  Length  Description\n"
                    "-------------  ------  -----------\n"
                    "\"虚线\"         3.5     __ __\n"))
        << outcome.out;
    // A shape file among the styles is no style.
    EXPECT_TRUE(has(outcome.out,
                    "Style name  Height  Width factor  Angle  Font\n"
                    "----------  ------  ------------  -----  ---------------------\n"
                    "\"HZ\"        3.0     0.7           15.0   gbenor.shx,gbcbig.shx\n"
                    "\"宋体\"      0.0     1.0           0.0    宋体 (bold)\n"
                    "Command: -ST\n"))
        << outcome.out;
    EXPECT_TRUE(has(outcome.out, "No matching text style names found: no*\n")) << outcome.out;
}

TEST(EntityCommands, ListWhatIsSelected) {
    const Workplace place;
    place.example("building.dxf");
    const Outcome all = place.run({"-e", "LIST", "-e", "ALL", "-e", "", "building.dxf"});
    EXPECT_EQ(all.code, 0) << all.error;
    // Neither what lies on frozen layers, nor what is hidden, nor what lies on a sheet.
    EXPECT_TRUE(has(all.out, "INSERT        Layer: \"给排-消火栓\"  Space: Model space\n")) << all.out;
    EXPECT_FALSE(has(all.out, "给排-热水给水-管线")) << all.out;
    EXPECT_FALSE(has(all.out, "\nE2 ")) << all.out;
    EXPECT_FALSE(has(all.out, "公用-图框")) << all.out;

    const std::size_t circle = all.out.find("CIRCLE        Layer: \"给排-污水-立管\"");
    ASSERT_NE(circle, std::string::npos) << all.out;
    const std::string line = all.out.substr(all.out.rfind('\n', circle) + 1, 60);
    const std::string handle = line.substr(0, line.find(' '));
    // SELECT makes the previous set and the pick-first set.
    const Outcome picked = place.run({"building.dxf"}, "SELECT\n(handent \"" + handle + "\")\n\nLIST\nLIST\nP\n\n");
    EXPECT_EQ(picked.code, 0) << picked.error;
    const std::size_t first = picked.out.find(line.substr(0, line.find('\n')));
    ASSERT_NE(first, std::string::npos) << picked.out;
    EXPECT_NE(picked.out.find(line.substr(0, line.find('\n')), first + 1), std::string::npos) << picked.out;
}

TEST(EntityCommands, ChangeProperties) {
    const Workplace place;
    const std::string before = fileBytes(place.example("building.dxf"));
    const Outcome outcome = place.run({"-o", "out.dxf", "building.dxf"},
                                      "-LAYER\nN\n给排-地漏\nF\n公用-视口\n\n"
                                      "CHPROP\n(ssget \"X\" '((8 . \"给排-地漏,建筑-墙\")))\n\n"
                                      "LA\n公用-视口\nC\nbyblock\nLT\nDASHED\nLA\nnone\nC\n999\nLT\nnone\n\n"
                                      "CHPROP\n(ssget \"X\" '((8 . \"none\")))\n\nLAyer\n0\nLType\nByLayer\n\n");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_TRUE(has(outcome.out, "Layer \"给排-地漏\" already exists.")) << outcome.out;
    EXPECT_FALSE(has(outcome.error, "already exists")) << "as it should be";
    EXPECT_TRUE(has(outcome.error, "7 were on a locked layer.")) << outcome.error;
    for (const char* none :
         {"Cannot find layer \"none\".", "Cannot find linetype \"none\".", "Invalid color: \"999\"."})
        EXPECT_TRUE(has(outcome.error, none)) << outcome.error;
    EXPECT_FALSE(has(outcome.error, "keyword")) << "answers for a selection of nothing are no commands";
    EXPECT_EQ(place.run({"--compare", "building.dxf", "out.dxf"}).out,
              "LAYER 35 \"公用-视口\": 70: 0 > 1\n"
              "INSERT AC: 8: 给排-地漏 > 公用-视口\nINSERT AC: 6: (none) > DASHED\nINSERT AC: 62: (none) > 0\n"
              "INSERT AD: 8: 给排-地漏 > 公用-视口\nINSERT AD: 6: (none) > DASHED\nINSERT AD: 62: (none) > 0\n");
}

TEST(ViewCommands, TakeTheAnswersOfTheEditor) {
    const Workplace place;
    place.example("building.dxf");
    const Outcome outcome = place.run({"building.dxf"},
                                      "ZOOM e\nZOOM\nW\n0,0\n10,10\nZOOM\n0,0\n5,5\nZOOM\n0.5xp\nZOOM\nC\n1,1\n20\n"
                                      "Z a\nZOOM\nnonsense\nP\nRE\nREGENALL\n");
    EXPECT_EQ(outcome.code, 0) << outcome.error << outcome.out;
    EXPECT_TRUE(has(outcome.out, "Requires a point")) << outcome.out;
    EXPECT_TRUE(has(outcome.out, "Command: REGENALL\nRegenerating model.\n")) << outcome.out;
}

TEST(PictureCommand, GivesPipesWhatOtherProgramsShow) {
    const Workplace place;
    const std::string before = fileBytes(place.example("site.dxf"));
    Outcome outcome = place.run({"site.dxf", "-o", "out.dxf"}, "PICTURES\nPICTURES\n");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_TRUE(has(outcome.out, "Pictures drawn: 13, right already: 0.")) << outcome.out;
    EXPECT_TRUE(has(outcome.out, "Pictures drawn: 0, right already: 13.")) << outcome.out;
    std::size_t pictures = 0;
    std::istringstream tags(place.run({"--compare", "site.dxf", "out.dxf"}).out);
    for (std::string line; std::getline(tags, line);) {
        EXPECT_TRUE(has(line, ": 160: (none) > ") || has(line, ": 310: (none) > ")) << line;
        if (has(line, ": 160: ")) ++pictures;
    }
    EXPECT_EQ(pictures, 13U) << "and nothing else";
    outcome = place.run({"site.dxf", "-o", "back.dxf"}, "PICTURES\nU\n");
    EXPECT_EQ(place.read("back.dxf"), before) << outcome.out;
    place.example("building-r12.dxf");
    EXPECT_EQ(place.run({"building-r12.dxf"}, "PICTURES\n").code, 1);
}

TEST(VariableCommand, ShowsAndSets) {
    const Workplace place;
    place.example("building.dxf");
    const Outcome outcome =
        place.run({"building.dxf"}, "SETVAR\nCLAYER\n0\nSETVAR\nCLAYER\n\nSETVAR\n?\nTILE*\nSETVAR\nACADVER\n");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_TRUE(has(outcome.out, "Enter new value for CLAYER <\"给排-生活给水-管线\">: 0\n")) << outcome.out;
    EXPECT_TRUE(has(outcome.out, "Enter new value for CLAYER <\"0\">: \n")) << outcome.out;
    EXPECT_TRUE(has(outcome.out, "TILEMODE  1")) << outcome.out;
    EXPECT_TRUE(has(outcome.out, "(read only)")) << outcome.out;
    // The name of a variable is a command, and one that can be called from another.
    const Outcome typed = place.run({"building.dxf"}, "clayer\n0\n_CLAYER\n\nACADVER\n-LAYER\n'CTAB\n\n\nDWGPREFIX\n");
    EXPECT_EQ(typed.code, 0) << typed.error;
    EXPECT_TRUE(has(typed.out,
                    "Command: clayer\nEnter new value for CLAYER <\"给排-生活给水-管线\">: 0\n"
                    "Command: _CLAYER\nEnter new value for CLAYER <\"0\">: \n"
                    "Command: ACADVER\nACADVER = \"18.0\" (read only)\n"))
        << typed.out;
    const std::string folder = (place.path("").make_preferred()).u8string();
    EXPECT_TRUE(has(typed.out, "DWGPREFIX = \"" + folder + "\" (read only)\n")) << typed.out;
    EXPECT_TRUE(has(typed.out, "'CTAB\nEnter new value for CTAB <\"Model\">: \nResuming -LAYER command.\n"))
        << typed.out;
    for (const char* bad :
         {"SETVAR\nNOSUCHVARIABLE\n", "CLAYER\nnone\n", "SETVAR\nCLAYER\nno such layer\n", "SETVAR\nTILEMODE\nsoon\n"})
        EXPECT_EQ(place.run({"building.dxf"}, bad).code, 1) << bad;
}
