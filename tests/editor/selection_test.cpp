// Selections: what the user may answer, what filters let through, the pick-first set.
#include "acdbads.h"
#include "dbmain.h"
#include "host/editor/hostselect.h"
#include "support.h"

using namespace edtest;
using qrs::host::allEntities;
using qrs::host::selectedIds;
using qrs::host::selectObjects;

namespace {

// Layers A (plain), F (frozen), O (off), L (locked); lines 10 to 15, a circle 16, a line 17 in paper space, a line 20
// in a block, an insert 18 of it.
std::string sample() {
    std::string text = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n9\n$TILEMODE\n70\n1\n0\nENDSEC\n";
    text += "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n5\n";
    const auto layer = [&](const char* name, int flags, int color) {
        text += std::string("0\nLAYER\n2\n") + name + "\n70\n" + std::to_string(flags) + "\n62\n" +
                std::to_string(color) + "\n6\nCONTINUOUS\n";
    };
    layer("0", 0, 7), layer("A", 0, 1), layer("F", 1, 2), layer("O", 0, -3), layer("L", 4, 4);
    text += "0\nENDTAB\n0\nTABLE\n2\nAPPID\n70\n1\n0\nAPPID\n2\nMARK\n70\n0\n0\nENDTAB\n0\nENDSEC\n";
    const auto line = [&](const char* handle, const char* layerName, const std::string& more) {
        text += std::string("0\nLINE\n5\n") + handle + "\n8\n" + layerName + "\n" + more +
                "10\n0.0\n20\n0.0\n11\n1.0\n21\n1.0\n";
    };
    text += "0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n8\n0\n2\nB\n70\n0\n10\n0.0\n20\n0.0\n";
    line("20", "A", "");
    text += "0\nENDBLK\n8\n0\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n";
    line("10", "A", ""), line("11", "a", "62\n5\n"), line("12", "F", ""), line("13", "O", "");
    line("14", "L", "100\nAcDbLine\n");
    line("15", "0", "");
    text += "1001\nMARK\n1000\nx\n";
    text += "0\nCIRCLE\n5\n16\n8\nA\n10\n0.0\n20\n0.0\n40\n1.0\n";
    line("17", "A", "67\n1\n");
    text += "0\nINSERT\n5\n18\n8\n0\n2\nB\n10\n0.0\n20\n0.0\n0\nENDSEC\n0\nEOF\n";
    return text;
}

std::wstring handles(const AcDbObjectIdArray& ids) {
    std::wstring text;
    for (const AcDbObjectId& id : ids) {
        ACHAR handle[17] = L"";
        id.handle().getIntoAsciiBuffer(handle);
        text += (text.empty() ? L"" : L" ") + std::wstring(handle);
    }
    return text;
}

class Selections : public EditorTest {
  protected:
    Folder folder;
    int result = 0;
    std::wstring chosen;  // their handles, or the result

    // What the command PICK of these tests does.
    void pick() {
        ads_name set = {};
        result = selectObjects(L"\nPick: ", nullptr, 0, set);
        chosen = result == RTNORM ? handles(selectedIds(set)) : std::to_wstring(result);
        acedSSFree(set);
    }
    void SetUp() override {
        ASSERT_TRUE(application->openDocument(folder.write("sample.dxf", sample()), error)) << error.message;
    }
    // What a program selects by mode and filter.
    std::wstring bySet(const wchar_t* mode, const resbuf* filter = nullptr) {
        ads_name set = {};
        result = acedSSGet(mode, nullptr, nullptr, filter, set);
        if (result != RTNORM) return std::to_wstring(result);
        const std::wstring text = handles(selectedIds(set));
        EXPECT_EQ(RTNORM, acedSSFree(set));
        EXPECT_EQ(RTERROR, acedSSFree(set));
        return text;
    }
    std::wstring byFilter(const std::vector<std::pair<short, std::wstring>>& conditions, const wchar_t* mode = L"X") {
        resbuf* chain = nullptr;
        for (auto one = conditions.rbegin(); one != conditions.rend(); ++one) {
            resbuf* link = nullptr;
            if (one->first == -3)
                link = acutNewRb(-3);
            else if (one->first == 62 || one->first == 67)
                link = acutBuildList(one->first, std::stoi(one->second), 0);
            else if (one->first == 40)
                link = acutBuildList(one->first, std::stod(one->second), 0);
            else
                link = acutBuildList(one->first == 0 ? int{RTDXF0} : int{one->first}, one->second.c_str(), 0);
            if (!link) return L"<no chain>";
            link->rbnext = chain;
            chain = link;
        }
        const std::wstring text = mode ? bySet(mode, chain) : handles(allEntities(chain));
        acutRelRb(chain);
        return text;
    }
};

TEST_F(Selections, ModesAndFilters) {
    EXPECT_EQ(L"10 11 12 13 14 15 16 17 18", bySet(L"X"));
    EXPECT_EQ(L"10 11 13 14 15 16 18", bySet(L"_A")) << "not frozen, of the current space";
    EXPECT_EQ(L"18", bySet(L"L"));
    EXPECT_EQ(std::to_wstring(RTERROR), bySet(L"P"));
    EXPECT_EQ(std::to_wstring(RTERROR), bySet(L"I"));
    EXPECT_EQ(std::to_wstring(RTREJ), bySet(L"Q"));
    EXPECT_EQ(L"16 18", byFilter({{0, L"circle,INS*"}}));
    EXPECT_EQ(L"10 11 16 17", byFilter({{8, L"a"}}));
    EXPECT_EQ(L"10 11", byFilter({{0, L"LINE"}, {8, L"[~0FOL]"}, {67, L"0"}}));
    EXPECT_EQ(L"12 13 14 15 18", byFilter({{8, L"~A"}}));
    EXPECT_EQ(L"11", byFilter({{62, L"5"}}));
    EXPECT_EQ(L"17", byFilter({{67, L"1"}}));
    EXPECT_EQ(L"15", byFilter({{0, L"*"}, {-3, L""}, {1001, L"MA?K"}}));
    EXPECT_EQ(L"15", byFilter({{-3, L""}, {1001, L"MARK"}, {8, L"0"}})) << "a condition may follow";
    EXPECT_EQ(L"18", byFilter({{2, L"b"}}));
    EXPECT_EQ(L"14", byFilter({{100, L"*Line"}}));
    EXPECT_EQ(L"17", byFilter({{410, L"Lay*"}}));
    EXPECT_EQ(L"", byFilter({{7, L"*"}}, nullptr)) << "no texts";
    EXPECT_EQ(L"11 16", byFilter({{-4, L"<OR"}, {-4, L"<"}, {62, L"256"}, {-4, L"<>"}, {40, L"2"}, {-4, L"OR>"}}))
        << "what has no such number does not differ from it";
    EXPECT_EQ(L"12 13 18",
              byFilter({{-4, L"<or"}, {8, L"F"}, {8, L"O"}, {0, L"INSERT"}, {-4, L"or>"}, {0, L"~CIRCLE"}}));
    EXPECT_EQ(L"12 13 14 15", byFilter({{-4, L"<XOR"},
                                        {0, L"LINE"},
                                        {8, L"A"},
                                        {-4, L"XOR>"},
                                        {-4, L"<NOT"},
                                        {-4, L"<AND"},
                                        {0, L"CIRCLE"},
                                        {8, L"A"},
                                        {-4, L"AND>"},
                                        {-4, L"NOT>"}}));
    for (const wchar_t* damaged : {L"<OR", L"OR>", L"<NOT", L">=", L""})
        EXPECT_EQ(std::to_wstring(RTREJ), byFilter({{-4, damaged}, {0, L"LINE"}})) << damaged;
    EXPECT_EQ(std::to_wstring(RTREJ), byFilter({{-4, L"&"}, {40, L"1"}})) << "no bits in a real";
    EXPECT_EQ(std::to_wstring(RTREJ), byFilter({{3, L"1"}})) << "a condition that is not known is not passed over";
    EXPECT_EQ(L"", byFilter({{8, L"*"}}, nullptr)) << "layer names of the host's own functions are no patterns";
    EXPECT_EQ(L"10 11 16 17", byFilter({{8, L"a"}}, nullptr));
}

TEST_F(Selections, WhatTheUserAnswers) {
    command<0>(L"PICK", 0, [&] { pick(); });
    EXPECT_TRUE(run({L"PICK", L"(handent \"10\")", L"(HANDENT  \"12\" )", L"(handent \"FF\")", L"bogus",
                     L"(handent \"20\")", L"ALL", L"R", L"L", L"a", L"(handent \"10\")", L""}));
    EXPECT_EQ(L"10 12 11 13 14 15 16", chosen);
    EXPECT_EQ(
        L"Command: PICK\nPick: (handent \"10\")\n1 found\nPick: (HANDENT  \"12\" )\n1 found, 2 total\n"
        L"Pick: (handent \"FF\")\n0 found, 2 total\n"
        L"Pick: bogus\n*Invalid selection*\n"
        L"Expects a point or Window/Last/Crossing/BOX/ALL/Fence/WPolygon/CPolygon/Add/Remove/Multiple/Previous/Undo/"
        L"AUto/SIngle or an expression: (ssget \"X\" '((8 . \"PIPE*\")))\n"
        L"Pick: (handent \"20\")\n0 found, 2 total\n"
        L"Pick: ALL\n7 found (1 duplicate), 8 total\nPick: R\nPick: L\n1 found, 1 removed, 7 total\nPick: a\n"
        L"Pick: (handent \"10\")\n1 found (1 duplicate), 7 total\nPick: \n",
        terminal.text);
    EXPECT_TRUE(run({L"PICK", L"P", L""}));
    EXPECT_EQ(L"10 11 13 14 15 16", chosen) << "not what is frozen";
    EXPECT_TRUE(run({L"PICK", L""}));
    EXPECT_EQ(std::to_wstring(RTNONE), chosen);
    EXPECT_TRUE(run({L"PICK", L"L", kEsc}));
    EXPECT_EQ(std::to_wstring(RTCAN), chosen);
    EXPECT_TRUE(run({L"PICK", L"ALL"}));
    EXPECT_EQ(std::to_wstring(RTCAN), chosen) << "the end of a script confirms nothing";

    command<1>(L"SS", 0, [&] {
        const ACHAR* prompts[] = {L"\nTake: ", L"\nLeave: "};
        resbuf* filter = acutBuildList(RTDXF0, L"LINE", 0);
        ads_name set = {};
        result = acedSSGet(L":S:$", prompts, nullptr, filter, set);
        chosen = handles(selectedIds(set));
        acedSSFree(set);
        acutRelRb(filter);
    });
    EXPECT_TRUE(run({L"SS L ALL"}));
    EXPECT_EQ(L"10 11 13 14 15", chosen);
    EXPECT_EQ(
        L"Command: SS L ALL\nTake: L\n1 found, 1 was filtered out\nTake: ALL\n"
        L"7 found, 2 were filtered out\n",
        terminal.text);
}

TEST_F(Selections, PickFirstSet) {
    std::vector<std::wstring> seen;
    const auto look = [&] {
        seen.push_back(bySet(L"I"));
        ads_name set = {};
        const int got = acedSSGet(nullptr, nullptr, nullptr, nullptr, set);
        seen.push_back(got == RTNORM ? handles(selectedIds(set)) : std::to_wstring(got));
        acedSSFree(set);
    };
    command<0>(L"USES", ACRX_CMD_USEPICKSET, look);
    command<1>(L"CLEARS", 0, look);
    const std::wstring none = std::to_wstring(RTERROR);
    EXPECT_TRUE(run({L"SELECT", L"(handent \"14\")", L"(handent \"10\")", L"", L"USES", L"USES", L""}));
    EXPECT_EQ((std::vector<std::wstring>{L"14 10", L"14 10", none, none}), seen);
    EXPECT_NE(std::wstring::npos, terminal.text.find(L"Command: USES\n2 found\nCommand: USES\nSelect objects: \n"));
    seen.clear();
    EXPECT_TRUE(run({L"SELECT", L"L", L"", L"CLEARS", L"", L"SELECT", L"L", L"", L"nosuch", L"USES"}, true) == false);
    EXPECT_EQ((std::vector<std::wstring>{none, none, L"18", L"18"}), seen) << "an unknown name is no command";

    seen.clear();
    command<2>(L"SETS", ACRX_CMD_USEPICKSET, [&] {
        ads_name set = {};
        ads_name entity = {};
        acdbHandEnt(L"16", entity);
        EXPECT_EQ(RTNORM, acedSSAdd(entity, nullptr, set));
        EXPECT_EQ(RTNORM, acedSSMemb(entity, set));
        EXPECT_EQ(RTNORM, acedSSSetFirst(set, nullptr));
        acedSSFree(set);
        resbuf* grips = nullptr;
        resbuf* picks = nullptr;
        EXPECT_EQ(RTNORM, acedSSGetFirst(&grips, &picks));
        ASSERT_NE(nullptr, picks);
        EXPECT_EQ(L"16", handles(selectedIds(picks->resval.rlname)));
        acedSSFree(picks->resval.rlname);
        acutRelRb(picks);
    });
    command<3>(L"EMPTIES", ACRX_CMD_USEPICKSET, [&] {
        acedSSSetFirst(nullptr, nullptr);
        look();
    });
    EXPECT_TRUE(run({L"SETS", L"USES", L"SETS", L"EMPTIES L", L""}));
    EXPECT_EQ((std::vector<std::wstring>{L"16", L"16", none, L"18"}), seen);
    resbuf off{};
    off.restype = RTSHORT;
    acedSetVar(L"PICKFIRST", &off);
    seen.clear();
    EXPECT_TRUE(run({L"SETS", L"USES", L""}));
    EXPECT_EQ((std::vector<std::wstring>{none, none}), seen);
}

TEST_F(Selections, SinglePicks) {
    std::wstring got;
    command<0>(L"ONE", 0, [&] {
        ads_name entity = {};
        ads_point point = {1, 1, 1};
        acedInitGet(0, L"Settings");
        result = acedEntSel(L"\nOne: ", entity, point);
        AcDbObjectId id;
        got = result == RTNORM && acdbGetObjectId(id, entity) == Acad::eOk ? handles([&] {
            AcDbObjectIdArray one;
            one.append(id);
            return one;
        }())
                                                                           : std::to_wstring(result);
    });
    EXPECT_TRUE(run({L"ONE (handent \"14\")"}));
    EXPECT_EQ(L"14", got) << "locked layers can be picked from";
    EXPECT_TRUE(run({L"ONE", L"3,4"}));
    EXPECT_EQ(std::to_wstring(RTERROR), got) << "nothing lies there";
    EXPECT_TRUE(run({L"ONE", L"what", L"l"}));
    EXPECT_EQ(L"18", got);
    EXPECT_TRUE(run({L"ONE", L"(handent \"12\")"}));
    EXPECT_EQ(L"12", got) << "what is named may be frozen";
    for (const wchar_t* none : {L"(handent \"20\")", L"(handent \"FF\")", L"(ssname (ssget \"X\") 99)"}) {
        EXPECT_TRUE(run({L"ONE", none}));
        EXPECT_EQ(RTERROR, result) << "in a block, or not there";
        EXPECT_EQ(7, intVariable(L"ERRNO"));
        EXPECT_NE(terminal.text.find(L"\nNothing is found: "), std::wstring::npos) << terminal.text;
    }
    EXPECT_TRUE(run({L"ONE", L""}));
    EXPECT_EQ(RTERROR, result);
    EXPECT_EQ(52, intVariable(L"ERRNO"));
    EXPECT_TRUE(run({L"ONE", L"s"}));
    EXPECT_EQ(RTKWORD, result);
    EXPECT_TRUE(run({L"ONE"}));
    EXPECT_EQ(RTCAN, result);
}

TEST_F(Selections, ByExpressions) {
    command<0>(L"PICK", 0, [&] { pick(); });
    command<1>(L"ONE", 0, [&] {
        ads_name entity = {};
        ads_point point = {};
        AcDbObjectIdArray ids;
        AcDbObjectId id;
        result = acedEntSel(L"\nOne: ", entity, point);
        if (result == RTNORM && acdbGetObjectId(id, entity) == Acad::eOk) ids.append(id);
        chosen = result == RTNORM ? handles(ids) : std::to_wstring(result);
    });
    const std::wstring none = std::to_wstring(RTNONE);
    const std::wstring missed = std::to_wstring(RTERROR);
    struct Row {
        const wchar_t* command;
        const wchar_t* expression;
        std::wstring chosen;
    };
    const Row rows[] = {
        {L"PICK", L"(ssget \"X\")", L"10 11 12 13 14 15 16 18"},  // not 17, which lies on paper
        {L"PICK", L"(ssget \"_x\" '((8 . \"F,O\")))", L"12 13"},
        {L"PICK", L"(SSGET \"A\" '((8 . \"F,O\")))", L"13"},
        {L"PICK", L"( ssget \"X\" '( (0 . \"LINE\")(-4 . \"<NOT\") (8 . \"A\") (-4 . \"NOT>\") ) )", L"12 13 14 15"},
        {L"PICK", L"(ssget \"X\" '((-4 . \"<=\") (62 . 5)))", L"11"},
        {L"PICK", L"(ssget \"X\" '((-4 . \">\") (40 . 0.5)))", L"16"},
        {L"PICK", L"(ssget \"X\" '((-3 (\"MARK\")) (0 . \"LINE\")))", L"15"},
        {L"PICK", L"(ssget \"X\" '((-3 (\"MARK\") (\"OTHER\"))))", none},
        {L"PICK", L"(ssget \"X\" '((-4 . \">,*\") (11 0.5 0 0) (0 . \"LINE\") (8 . \"A\")))", L"10 11"},
        {L"PICK", L"(ssget \"X\" '((-4 . \"=,>\") (10 0.0 0.5)))", none},
        {L"PICK", L"(ssget \"X\" '((10 0.0 0.0 0.0) (0 . \"~LINE\")))", L"16 18"},
        {L"PICK", L"(ssget \"X\" '((70 . 0)))", none},
        {L"PICK", L"(ssname (ssget \"X\" '((8 . \"F\"))) 0)", L"12"},
        {L"PICK", L"(entlast)", L"18"},
        {L"PICK", L"(ssget \"X\" '((8 . \"a\\\"b c\")))", none},
        {L"ONE", L"(ssname (ssget \"X\" '((8 . \"F\"))) 0)", L"12"},
        {L"ONE", L"(ssname (ssget \"X\" '((67 . 1))) 0)", L"17"},  // of another space, but it is named
        {L"ONE", L"(ssname (ssget \"X\" '((8 . \"F\"))) 1)", missed},
        {L"ONE", L"(ssget \"X\" '((0 . \"CIRCLE\")))", L"16"},
        {L"ONE", L"(entlast)", L"18"},
    };
    for (const Row& row : rows) {
        std::deque<std::wstring> answers = {row.command, row.expression};
        if (answers.front() == L"PICK") answers.push_back(L"");
        run(answers);
        EXPECT_EQ(row.chosen, chosen) << testing::PrintToString(std::wstring(row.expression)) << terminal.text;
    }
    run({L"PICK (ssget \"X\" '((67 . 1))) (handent \"10\")", L""});
    EXPECT_EQ(L"10", chosen);
    EXPECT_NE(terminal.text.find(L"1 was not in current space."), std::wstring::npos) << terminal.text;
    run({L"ONE", L"(ssget \"X\")", L"L"});
    EXPECT_EQ(L"18", chosen);
    EXPECT_NE(terminal.text.find(L"9 entities are named, one is wanted"), std::wstring::npos) << terminal.text;

    struct Fault {
        const wchar_t* expression;
        const wchar_t* fault;
        const wchar_t* expected = L"(handent ";
    };
    const Fault faults[] = {
        {L"(setq a 1)", L"there is no setq"},
        {L"(handent 10)", L"handent is used in another way"},
        {L"(ssget \"X\" ((8 . \"A\")))", L"ssget is used in another way"},
        {L"(ssget)", L"ssget is used in another way"},
        {L"(ssget \"W\" '((8 . \"A\")))", L"ssget has no mode \"W\" here", L"X (everything), "},
        {L"(ssget \"X\" '((8 \"A\")))", L"(8 \"A\") is no condition", L"(8 . \"PIPE*\"), "},
        {L"(ssget \"X\" '((62 . \"A\")))", L"(62 . \"A\") is no condition", L"(8 . \"PIPE*\"), "},
        {L"(ssget \"X\" '((62 . 40000)))", L"(62 . 40000) is no condition", L"(8 . \"PIPE*\"), "},
        {L"(ssget \"X\" '((10 . 1.0)))", L"(10 . 1.0) is no condition", L"(8 . \"PIPE*\"), "},
        {L"(ssget \"X\" '((1e300 . 1)))", L"(1e300 . 1) is no condition", L"(8 . \"PIPE*\"), "},
        {L"(ssget \"X\" '((3 . \"A\")))", L"there is no condition for group 3", L"(8 . \"PIPE*\"), "},
        {L"(ssget \"X\" '((-4 . \"<OR\") (8 . \"A\")))", L"\"OR>\" is missing", L"(8 . \"PIPE*\"), "},
        {L"(ssget \"X\" '((-4 . \"<NOT\") (-4 . \"NOT>\")))", L"\"NOT>\" closes too many conditions or too few",
         L"(8 . \"PIPE*\"), "},
        {L"(ssget \"X\" '((-4 . \"OR>\")))", L"the operator \"OR>\" does not belong there", L"(8 . \"PIPE*\"), "},
        {L"(ssget \"X\" '((-4 . \"&\") (40 . 1.0)))", L"the operator \"&\" is not for group 40", L"(8 . \"PIPE*\"), "},
        {L"(ssget \"X\" '((-4 . \"=,=\") (62 . 1)))", L"the operator \"=,=\" is not for group 62",
         L"(8 . \"PIPE*\"), "},
        {L"(ssname (handent \"10\") 0)", L"ssname takes a selection"},
        {L"(ssname (ssget \"X\") -1)", L"ssname counts from 0"},
        {L"(entlast", L"a closing parenthesis is missing"},
        {L"(handent \"10", L"a closing quote is missing"},
        {L"(entlast))", L"something stands after its end"},
        {L"(8 . . 9)", L"a point stands where none belongs"},
    };
    for (const auto& [expression, fault, expected] : faults) {
        for (const wchar_t* name : {L"PICK", L"ONE"}) {
            run({name, expression, L""});
            const std::wstring message = std::wstring(L"*Invalid expression*: ") + fault + L"\nExpects " + expected;
            EXPECT_NE(terminal.text.find(message), std::wstring::npos) << terminal.text;
        }
    }
    run({L"PICK", std::wstring(10000, L'('), L""});
    EXPECT_NE(terminal.text.find(L"too many parentheses"), std::wstring::npos);
    std::wstring groups;
    for (int i = 0; i < 1000; ++i)
        groups += L"(-4 . \"<OR\")";
    run({L"PICK", L"(ssget \"X\" '(" + groups + L"))", L""});
    EXPECT_NE(terminal.text.find(L"too many groups stand in each other"), std::wstring::npos);
}

TEST_F(Selections, ExpressionsOverSeveralLines) {
    command<0>(L"PICK", 0, [&] { pick(); });
    run({L"PICK (ssget", L"  \"X\" ; all ( of them", L"'((8 . \"F\")) ) (handent \"10\")", L"", L"REGEN"});
    EXPECT_EQ(L"12 10", chosen);
    EXPECT_EQ(
        L"Command: PICK (ssget\nPick: (ssget\n(_>   \"X\" ; all ( of them\n(_> '((8 . \"F\")) ) (handent \"10\")\n"
        L"1 found\nPick: (handent \"10\")\n1 found, 2 total\nPick: \nCommand: REGEN\nRegenerating model.\n",
        terminal.text);
    // One that is not closed takes no more than the lines up to an empty one, which is the Enter it was meant to be.
    run({L"PICK", L"(ssget \"X", L"", L"REGEN"});
    EXPECT_EQ(std::to_wstring(RTNONE), chosen);
    EXPECT_NE(terminal.text.find(L"(_> \n*Invalid expression*: a closing quote is missing\n"), std::wstring::npos);
    EXPECT_NE(terminal.text.find(L"Pick: \nCommand: REGEN\n"), std::wstring::npos) << terminal.text;
    run({L"PICK", L"(ssget", L"^C", L"REGEN"});
    EXPECT_EQ(std::to_wstring(RTCAN), chosen);
    EXPECT_NE(terminal.text.find(L"(_> ^C\n*Cancel*\nCommand: REGEN\n"), std::wstring::npos) << terminal.text;
    run({L"PICK", L"(ssget"});
    EXPECT_EQ(std::to_wstring(RTCAN), chosen);
    EXPECT_NE(terminal.text.find(L"a closing parenthesis is missing"), std::wstring::npos) << terminal.text;
    EXPECT_FALSE(run({L"(ssget \"X\"", L")"}));
    EXPECT_EQ(std::vector<std::wstring>{L"An expression is no command: it answers a prompt for objects."},
              terminal.errors);
}

TEST_F(Selections, SetsOutliveNothing) {
    ads_name set = {};
    ASSERT_EQ(RTNORM, acedSSGet(L"X", nullptr, nullptr, nullptr, set));
    Adesk::Int32 length = 0;
    EXPECT_EQ(RTNORM, acedSSLength(set, &length));
    EXPECT_EQ(9, length);
    ads_name entity = {};
    EXPECT_EQ(RTNORM, acedSSName(set, 8, entity));
    EXPECT_EQ(RTERROR, acedSSName(set, 9, entity));
    EXPECT_EQ(RTERROR, acedSSName(set, -1, entity));
    ASSERT_EQ(RTNORM, acedSSName(set, 0, entity));
    EXPECT_EQ(RTNORM, acedSSDel(entity, set));
    EXPECT_EQ(RTERROR, acedSSDel(entity, set));
    EXPECT_EQ(RTERROR, acedSSMemb(entity, set));
    EXPECT_EQ(RTERROR, acedSSLength(entity, &length)) << "the name of an entity is no set";
    ASSERT_TRUE(application->closeDocument(error));
    EXPECT_EQ(RTNORM, acedSSLength(set, &length));
    EXPECT_EQ(0, length) << "the drawing's entities are gone with it";
    EXPECT_EQ(RTERROR, acedSSGet(L"X", nullptr, nullptr, nullptr, set));
}

}  // namespace
