// Every sheet of a drawing: made current, picked from, and layers frozen in its viewports.
#include "acdbads.h"
#include "aced.h"
#include "db/access.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "host/editor/hostselect.h"
#include "pick_support.h"

using namespace edtest;
using qrs::host::DatabaseAccess;
using qrs::host::selectedIds;

namespace {

std::string viewport(const std::string& handle, const std::string& more) {
    return " 0 VIEWPORT 5 " + handle + " 67 1 100 AcDbEntity 8 0 100 AcDbViewport " + more;
}

std::string line(const std::string& handle, const std::string& more) {
    return " 0 LINE 5 " + handle + " 100 AcDbEntity 8 A " + more + " 100 AcDbLine 10 0.0 20 0.0 11 9.0 21 0.0";
}

// Model space with a line 10; the sheet shown last, "plan", with the line 11 and the viewport 31; the sheet "roof", its
// viewports without numbers, with the line 12 and the viewports 41 and 42, this one off; "empty". The tabs stand in
// another order than their objects.
std::string sheets() {
    Parts parts;
    parts.layers =
        "0 LAYER 5 F2 100 AcDbLayerTableRecord 2 A 70 0 62 1 0 LAYER 5 F3 100 AcDbLayerTableRecord 2 V 70 2 62 1 "
        "0 ENDTAB 0 TABLE 2 BLOCK_RECORD 70 4";
    const char* const blocks[][2] = {
        {"B0", "*Model_Space"}, {"B1", "*Paper_Space"}, {"B2", "*Paper_Space0"}, {"B3", "*Paper_Space1"}};
    for (const auto& [handle, name] : blocks) {
        parts.layers += std::string(" 0 BLOCK_RECORD 5 ") + handle + " 100 AcDbBlockTableRecord 2 " + name;
        parts.blocks += std::string(parts.blocks.empty() ? "" : " ") + "0 BLOCK 5 " + handle +
                        "A 8 0 100 AcDbBlockBegin 2 " + name + " 70 0";
        if (std::string(handle) == "B2")
            parts.blocks += viewport("40", "10 9.0 20 9.0 40 20.0 41 20.0 68 0 69 0 90 32864") + line("12", "67 1") +
                            viewport("41", "10 50.0 20 5.0 40 10.0 41 10.0 68 0 69 0 12 5.0 22 0.0 90 32864 45 50.0") +
                            viewport("42", "10 80.0 20 5.0 40 10.0 41 10.0 68 0 69 0 12 5.0 22 0.0 90 163840 45 50.0");
        parts.blocks += std::string(" 0 ENDBLK 5 ") + handle + "B 8 0 100 AcDbBlockEnd";
    }
    parts.entities = line("10", "62 3").substr(1) + line("11", "67 1") +
                     viewport("30", "10 9.0 20 9.0 40 20.0 41 20.0 68 1 69 1") +
                     viewport("31", "10 50.0 20 5.0 40 10.0 41 10.0 68 2 69 2 12 5.0 22 0.0 45 50.0");
    const char* const layouts[][4] = {
        {"C0", "Model", "0", "B0"}, {"C3", "empty", "3", "B3"}, {"C2", "roof", "2", "B2"}, {"C1", "plan", "1", "B1"}};
    for (const auto& [handle, name, tab, block] : layouts)
        parts.objects += std::string(parts.objects.empty() ? "" : " ") + "0 LAYOUT 5 " + handle +
                         " 100 AcDbPlotSettings 1 page 70 0 100 AcDbLayout 1 " + name + " 70 1 71 " + tab + " 330 " +
                         block;
    return drawingOf(parts);
}

class Layouts : public EditorTest {
  protected:
    Folder folder;
    std::wstring chosen;

    void SetUp() override {
        open(sheets());
        command<0>(L"PICK", 0, [&] {
            ads_name set = {};
            chosen.clear();
            if (qrs::host::selectObjects(L"\nPick: ", nullptr, 0, set) != RTNORM) return;
            chosen = handlesOf(selectedIds(set));
            acedSSFree(set);
        });
    }
    void open(const std::string& content) {
        ASSERT_TRUE(application->openDocument(folder.write("house.dxf", content), error)) << error.message;
    }
    AcDbDatabase& database() const { return *acDocManager->curDocument()->database(); }
    std::wstring pick(std::deque<std::wstring> answers) {
        answers.push_front(L"PICK");
        answers.push_back(L"");
        EXPECT_TRUE(run(answers));
        return chosen;
    }
    bool shows(const wchar_t* name) { return run({L"LAYOUT", L"", name}); }
    bool prints(const wchar_t* text) const { return terminal.text.find(text) != std::wstring::npos; }
    std::wstring frozenIn(const wchar_t* handle) const {
        AcDbObjectId id;
        database().getAcDbObjectId(id, false, AcDbHandle(handle));
        const AcDbObjectPointer<AcDbViewport> opened(id, AcDb::kForRead);
        AcDbObjectIdArray layers;
        EXPECT_EQ(Acad::eOk, opened->getFrozenLayerList(layers));
        return handlesOf(layers);
    }
};

TEST_F(Layouts, AreShownAndPickedFromByName) {
    EXPECT_EQ(L"Model", textVariable(L"CTAB"));
    EXPECT_EQ(L"10", pick({L"ALL"}));
    EXPECT_TRUE(shows(L"ROOF"));
    EXPECT_TRUE(prints(L"Enter layout option [Set/?] <set>: \nEnter layout to make current <Model>: ROOF\n"));
    EXPECT_EQ(L"roof", textVariable(L"CTAB"));
    EXPECT_EQ(L"12 41 42", pick({L"ALL"})) << "without the paper itself";
    EXPECT_EQ(L"12", pick({L"5,0"}));
    EXPECT_EQ(L"42", pick({L"L"}));
    EXPECT_EQ(L"", pick({L"(handent \"11\")"})) << "of another sheet";
    EXPECT_TRUE(run({L"LIST", L"5,0", L""}));
    EXPECT_TRUE(prints(L"12      LINE          Layer: \"A\"  Space: Paper space  Layout: \"roof\"\n"));
    EXPECT_TRUE(shows(L"plan"));
    EXPECT_EQ(L"11 31", pick({L"ALL"}));
    EXPECT_TRUE(run({L"LAYOUT", L"?"}));
    EXPECT_TRUE(
        prints(L"\"Model\"           0          *Model_Space\n\"plan\" (current)  1          *Paper_Space\n"
               L"\"roof\"            2          *Paper_Space0\n\"empty\"           0          *Paper_Space1\n"))
        << std::string(terminal.text.begin(), terminal.text.end());
    EXPECT_TRUE(shows(L"empty"));
    EXPECT_EQ(L"", pick({L"ALL", L""}));
    EXPECT_FALSE(shows(L"cellar"));
    EXPECT_EQ(L"empty", textVariable(L"CTAB"));
}

// Which sheet is shown is no part of the drawing; whether one is, is.
TEST_F(Layouts, ChangeNothingButTheTileMode) {
    const std::string before = DatabaseAccess::bytes(database());
    std::string expected = before;
    expected.replace(expected.find("$TILEMODE\n70\n1"), 14, "$TILEMODE\n70\n0");
    EXPECT_TRUE(shows(L"roof"));
    EXPECT_EQ(expected, DatabaseAccess::bytes(database()));
    EXPECT_TRUE(run({L"SETVAR", L"CTAB", L"plan", L"SETVAR", L"TILEMODE", L"1", L"SETVAR", L"TILEMODE", L"0"}));
    EXPECT_EQ(L"plan", textVariable(L"CTAB")) << "the one that was current before";
    EXPECT_TRUE(run({L"U", L"U", L"U", L"U"}));
    EXPECT_EQ(before, DatabaseAccess::bytes(database()));
    EXPECT_EQ(L"Model", textVariable(L"CTAB"));
    EXPECT_TRUE(shows(L"plan"));
    EXPECT_TRUE(shows(L"roof"));
    EXPECT_TRUE(shows(L"empty"));
    EXPECT_EQ(expected, DatabaseAccess::bytes(database()));
    for (const wchar_t* sheet : {L"roof", L"plan", L"Model"}) {
        EXPECT_TRUE(run({L"U"}));
        EXPECT_EQ(sheet, textVariable(L"CTAB"));
    }
    EXPECT_EQ(before, DatabaseAccess::bytes(database()));
}

TEST_F(Layouts, OldDrawingsHaveOneSheet) {
    open(
        tags("0 SECTION 2 HEADER 9 $ACADVER 1 AC1009 0 ENDSEC 0 SECTION 2 ENTITIES 0 LINE 5 1 8 0 67 1 10 0.0 20 0.0 "
             "11 1.0 21 0.0 0 LINE 5 2 8 0 10 0.0 20 0.0 11 1.0 21 0.0 0 ENDSEC 0 EOF"));
    EXPECT_TRUE(shows(L"layout1"));
    EXPECT_EQ(L"Layout1", textVariable(L"CTAB"));
    EXPECT_EQ(L"1", pick({L"ALL"}));
    EXPECT_TRUE(shows(L"Model"));
    EXPECT_EQ(L"2", pick({L"ALL"}));
}

TEST_F(Layouts, HaveViewportsOfTheirOwn) {
    EXPECT_TRUE(shows(L"plan"));
    EXPECT_TRUE(run({L"MSPACE"}));
    EXPECT_EQ(L"31", handleOf(acedGetCurViewportObjectId()));
    EXPECT_TRUE(shows(L"roof"));
    EXPECT_EQ(1, intVariable(L"CVPORT"));
    EXPECT_EQ(L"40", handleOf(acedGetCurViewportObjectId())) << "the sheet";
    EXPECT_TRUE(run({L"MSPACE"}));
    EXPECT_EQ(2, intVariable(L"CVPORT"));
    EXPECT_EQ(L"41", handleOf(acedGetCurViewportObjectId()));
    EXPECT_EQ(L"10", pick({L"ALL"}));
    EXPECT_FALSE(run({L"SETVAR", L"CVPORT", L"3"}));
    EXPECT_EQ(2, intVariable(L"CVPORT")) << "the other one is off";
    EXPECT_TRUE(run({L"PSPACE"}));
    EXPECT_EQ(L"12", pick({L"3,0"}));
    EXPECT_TRUE(shows(L"plan"));
    EXPECT_EQ(2, intVariable(L"CVPORT")) << "each sheet keeps its own";
}

TEST_F(Layouts, LayersAreFrozenInTheirViewports) {
    EXPECT_TRUE(shows(L"roof"));
    EXPECT_TRUE(run({L"-VPLAYER", L"Freeze", L"A,V", L"Select", L"50,10", L"", L""}));
    EXPECT_EQ(L"F2 F3", frozenIn(L"41"));
    EXPECT_TRUE(run({L"VPLAYER", L"?", L"50,10", L""}));
    EXPECT_TRUE(prints(L"Layers currently frozen in viewport 2:\n  \"A\"\n  \"V\"\n"));
    EXPECT_TRUE(run({L"MSPACE"}));
    EXPECT_EQ(L"", pick({L"ALL", L""}));
    EXPECT_TRUE(run({L"VPLAYER", L"T", L"A", L"", L"F", L"", L"0,0", L"", L"All", L""}));
    EXPECT_EQ(L"F3 F2", frozenIn(L"41")) << "thawed, picked through the viewport, and frozen again";
    EXPECT_EQ(L"F2", frozenIn(L"31")) << "on another sheet";
    EXPECT_EQ(2, intVariable(L"CVPORT"));
    EXPECT_TRUE(run({L"VPLAYER", L"R", L"*", L"Except", L""}));
    EXPECT_EQ(L"F3 F2", frozenIn(L"41"));
    EXPECT_EQ(L"F3", frozenIn(L"42")) << "as new ones would have it";
    EXPECT_EQ(L"", frozenIn(L"30")) << "the sheet is no viewport";
}

TEST_F(Layouts, NewLayersAreFrozenInAllViewports) {
    EXPECT_TRUE(run({L"VPLAYER", L"Newfrz", L"N", L"Vpvisdflt", L"V", L"Thawed", L"Vpvisdflt", L"A", L"F", L""}));
    EXPECT_TRUE(prints(L"Enter an option [Newfrz/Vpvisdflt]: Newfrz"));
    AcDbObjectId added;
    const AcDbLayerTablePointer table(&database(), AcDb::kForRead);
    ASSERT_EQ(Acad::eOk, table->getAt(L"N", added));
    for (const wchar_t* viewport : {L"31", L"41", L"42"})
        EXPECT_EQ(handleOf(added), frozenIn(viewport));
    const auto isFrozenInNew = [&](const wchar_t* name) {
        return AcDbLayerTableRecordPointer(name, &database(), AcDb::kForRead)->VPDFLT();
    };
    EXPECT_TRUE(isFrozenInNew(L"N") && isFrozenInNew(L"A"));
    EXPECT_FALSE(isFrozenInNew(L"V"));
}

}  // namespace
