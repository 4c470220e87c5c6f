// Picks, windows and fences at prompts; picks inside blocks and external references; views and viewports.
#include <cmath>

#include "acdbads.h"
#include "acdocman.h"
#include "aced.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "host/editor/hostselect.h"
#include "pick_support.h"

using namespace edtest;
using qrs::host::NestedPick;
using qrs::host::selectedIds;

namespace {

// Lines on layers that are plain (A), frozen (F), off (O), locked (L) and frozen in the viewport of the layout (V), a
// circle, a mirrored block in which a block lies, a reference, and a layout.
Parts sample() {
    Parts parts;
    parts.layers =
        "0 LAYER 5 F2 2 A 70 0 62 1 0 LAYER 5 F3 2 F 70 1 62 1 0 LAYER 5 F4 2 O 70 0 62 -1 0 LAYER 5 F5 2 L 70 4 62 1 "
        "0 LAYER 5 F7 2 V 70 0 62 1 0 LAYER 5 F8 2 X1|WALL 70 48 62 1 0 LAYER 5 F9 2 X1|HID 70 49 62 1";
    parts.blocks =
        "0 BLOCK 8 0 2 B 70 0 10 0.0 20 0.0 0 LINE 5 20 8 0 10 0.0 20 0.0 11 5.0 21 0.0 "
        "0 INSERT 5 21 8 A 2 C 10 0.0 20 5.0 0 ENDBLK 8 0 "
        "0 BLOCK 8 0 2 C 70 0 10 0.0 20 0.0 0 CIRCLE 5 22 8 O 10 0.0 20 0.0 40 1.0 "
        "0 LINE 5 23 8 A 10 0.0 20 0.0 11 0.0 21 3.0 0 ENDBLK 8 0 "
        "0 BLOCK 8 0 2 X1 70 4 10 0.0 20 0.0 1 D:\\plans\\base.dwg 0 ENDBLK 8 0";
    parts.entities =
        "0 LINE 5 10 8 A 10 0.0 20 0.0 11 10.0 21 0.0 0 LINE 5 11 8 F 10 0.0 20 0.0 11 10.0 21 0.0 "
        "0 LINE 5 12 8 O 10 0.0 20 5.0 11 10.0 21 5.0 0 LINE 5 13 8 L 10 0.0 20 10.0 11 10.0 21 10.0 "
        "0 CIRCLE 5 14 8 A 10 20.0 20 0.0 40 5.0 0 LINE 5 15 8 A 10 5.0 20 -5.0 11 5.0 21 5.0 "
        "0 INSERT 5 16 8 A 2 B 10 40.0 20 0.0 41 -2.0 0 INSERT 5 17 8 A 2 X1 10 0.0 20 -40.0 "
        "0 LINE 5 18 8 V 10 0.0 20 20.0 11 10.0 21 20.0 "
        "0 VIEWPORT 5 30 67 1 8 0 10 100.0 20 100.0 40 200.0 41 100.0 68 1 69 1 12 100.0 22 100.0 45 100.0 "
        "0 VIEWPORT 5 31 67 1 8 0 10 100.0 20 100.0 40 40.0 41 40.0 68 2 69 2 12 5.0 22 5.0 45 200.0 331 F7 "
        "0 LINE 5 32 67 1 8 A 10 100.0 20 100.0 11 110.0 21 100.0";
    return parts;
}

std::string reference() {
    Parts parts;
    parts.layers = "0 LAYER 5 F2 2 WALL 70 1 62 1";
    parts.header = "9 $TILEMODE 70 1 9 $INSBASE 10 0.0 20 1.0 30 0.0";
    parts.blocks = "0 BLOCK 8 0 2 IN 70 0 10 0.0 20 0.0 0 LINE 5 22 8 0 10 0.0 20 0.0 11 10.0 21 0.0 0 ENDBLK 8 0";
    parts.entities =
        "0 LINE 5 10 8 WALL 10 0.0 20 1.0 11 10.0 21 1.0 0 LINE 5 11 8 HID 10 0.0 20 7.0 11 10.0 21 7.0 "
        "0 INSERT 5 12 8 NEW 2 IN 10 0.0 20 4.0 0 LINE 5 13 67 1 8 0 10 0.0 20 9.0 11 10.0 21 9.0";
    return drawingOf(parts);
}

class Picks : public EditorTest {
  protected:
    Folder folder;
    int result = 0;
    std::wstring chosen;
    NestedPick nested;

    void SetUp() override {
        open(sample());
        command<0>(L"PICK", 0, [&] {
            ads_name set = {};
            acedInitGet(0, L"Clear");
            result = qrs::host::selectObjects(L"\nPick: ", nullptr, 0, set);
            chosen = handlesOf(selectedIds(set));
            acedSSFree(set);
        });
        command<1>(L"ONE", 0, [&] {
            ads_name entity = {};
            ads_point point = {9, 9, 9};
            acedInitGet(0, L"Clear");
            result = acedEntSel(L"\nOne: ", entity, point);
            AcDbObjectId id;
            chosen = L"none";
            if (result == RTNORM && acdbGetObjectId(id, entity) == Acad::eOk)
                chosen = handleOf(id) + L" " + std::to_wstring(std::lround(point[0] * 10));
        });
        command<2>(L"DEEP", 0, [&] { result = qrs::host::pickNested(L"\nDeep: ", nullptr, nested); });
    }
    void open(const Parts& parts) {
        if (application->currentDocument()) {
            ASSERT_TRUE(application->closeDocument(error));
        }
        ASSERT_TRUE(application->openDocument(folder.write("house.dxf", drawingOf(parts)), error)) << error.message;
    }
    std::wstring pick(std::deque<std::wstring> answers) {
        answers.push_front(L"PICK");
        answers.push_back(L"");
        EXPECT_TRUE(run(answers));
        return chosen;
    }
    std::wstring one(const wchar_t* point) {
        EXPECT_TRUE(run({L"ONE", point}));
        return chosen;
    }
    void deep(const wchar_t* point) {
        nested = NestedPick{};
        EXPECT_TRUE(run({L"DEEP", point}));
    }
};

TEST_F(Picks, PointsWindowsAndFencesAtThePrompt) {
    EXPECT_EQ(L"15", pick({L"5,3"}));
    EXPECT_EQ(L"15", pick({L"5,0"})) << "where lines cross, the one drawn last";
    EXPECT_EQ(L"10", pick({L"3,0.2"})) << "the frozen one on the same place is passed over";
    EXPECT_EQ(L"13", pick({L"3,10"})) << "locked layers are picked from";
    EXPECT_EQ(L"", pick({L"3,5", L""})) << "what is off is not met";
    EXPECT_NE(std::wstring::npos, terminal.text.find(L"Invalid window specification."));
    EXPECT_EQ(L"10", pick({L"w", L"-1,-1", L"@12,2"}));
    EXPECT_EQ(L"10 15", pick({L"CR", L"-1,-1", L"11,1"}));
    EXPECT_EQ(L"10", pick({L"-1,-1", L"11,1"})) << "towards the right: what lies inside";
    EXPECT_NE(std::wstring::npos, terminal.text.find(L"Pick: -1,-1\nSpecify opposite corner: 11,1\n1 found\n"));
    EXPECT_EQ(L"10 15", pick({L"11,1", L"-1,-1"})) << "towards the left: what crosses, too";
    EXPECT_EQ(L"14", pick({L"F", L"19,-9", L"19,9", L""}));
    EXPECT_EQ(L"10 14 15", pick({L"F", L"1,9", L"1,-1", L"26,-1", L"27,27", L"U", L""}));
    EXPECT_EQ(L"15", pick({L"WP", L"4,-6", L"6,-6", L"6,6", L"4,6", L""}));
    EXPECT_EQ(L"10 15", pick({L"CP", L"4,-6", L"6,-6", L"5,1", L""}));
    EXPECT_EQ(L"", pick({L"WP", L"4,-6", L"6,-6", L""})) << "two corners are no polygon";
    EXPECT_EQ(L"10 14", pick({L"BOX", L"11,1", L"-1,-1", L"20,5", L"R", L"5,4"}));
    EXPECT_EQ(L"15", pick({L"5,3", L"25,0", L"U"}));
    EXPECT_EQ(L"15 10", pick({L"CR", L"-1,-1", L"11,1", L"R", L"3,0", L"u"})) << "undo brings back what was removed";
    EXPECT_TRUE(run({L"PICK", L"5,3", L"SI", L"11,1", L"-1,-1"}));
    EXPECT_EQ(L"15 10", chosen) << "one more selection, and done";
    EXPECT_TRUE(run({L"PICK", L"5,3", L"w", kEsc}));
    EXPECT_EQ(RTCAN, result);
    EXPECT_TRUE(run({L"PICK", L"5,3", L"c"})) << "a keyword of the program's wins over Crossing";
    EXPECT_EQ(RTKWORD, result);
    EXPECT_EQ(L"15", chosen);
}

TEST_F(Picks, ProgramsSelectByPointsAndFilters) {
    resbuf* circles = acutBuildList(RTDXF0, L"CIRCLE", 0);
    resbuf* line = acutNewRb(RT3DPOINT);
    line->rbnext = acutNewRb(RT3DPOINT);
    const auto put = [](resbuf& link, double x, double y) {
        link.resval.rpoint[0] = x, link.resval.rpoint[1] = y, link.resval.rpoint[2] = 0;
    };
    put(*line, 1, 9);
    put(*line->rbnext, 1, -1);
    const ads_point low = {-1, -1, 0};
    const ads_point high = {26, 6, 0};
    const auto by = [&](const wchar_t* mode, const void* pt1, const void* pt2, const resbuf* filter) {
        ads_name set = {};
        result = acedSSGet(mode, pt1, pt2, filter, set);
        const std::wstring handles = handlesOf(selectedIds(set));
        if (result == RTNORM) acedSSFree(set);
        return handles;
    };
    EXPECT_EQ(L"10 14 15", by(L"_C", low, high, nullptr));
    EXPECT_EQ(L"14", by(L"C", low, high, circles));
    EXPECT_EQ(L"10", by(L"F", line, nullptr, nullptr));
    EXPECT_EQ(L"", by(L"F", line, nullptr, circles));
    EXPECT_EQ(RTERROR, result);
    const ads_point crossing = {5, 0, 0};
    EXPECT_EQ(L"15", by(nullptr, crossing, nullptr, nullptr));
    EXPECT_EQ(L"10 15", by(L":E", crossing, nullptr, nullptr));
    EXPECT_EQ(L"", by(L"W", low, nullptr, nullptr));
    EXPECT_EQ(RTREJ, result);
    EXPECT_EQ(L"", by(L"A", low, high, nullptr));
    EXPECT_EQ(RTREJ, result);
    acutRelRb(circles);
    acutRelRb(line);
}

TEST_F(Picks, InsideBlocks) {
    EXPECT_EQ(L"16 400", one(L"40,7"));
    EXPECT_EQ(L"none", one(L"41.9,5")) << "of a circle that is off";
    deep(L"40,7");
    ASSERT_EQ(RTNORM, result);
    EXPECT_EQ(L"23", handleOf(nested.entity));
    EXPECT_EQ(L"21 16", handlesOf(nested.containers)) << "the innermost first";
    EXPECT_EQ(L"A", nested.layer);
    EXPECT_FALSE(nested.isExternal);
    EXPECT_DOUBLE_EQ(-2.0, nested.toWorld[0][0]);
    EXPECT_DOUBLE_EQ(40.0, nested.toWorld[0][3]);
    EXPECT_DOUBLE_EQ(5.0, nested.toWorld[1][3]);
    ads_name entity = {};
    ads_point point = {33, 0, 0};
    ads_matrix matrix = {};
    resbuf* containers = nullptr;
    ASSERT_EQ(RTNORM, acedNEntSelP(nullptr, entity, point, 1, matrix, &containers));
    AcDbObjectId id;
    ASSERT_EQ(Acad::eOk, acdbGetObjectId(id, entity));
    EXPECT_EQ(L"20", handleOf(id));
    ASSERT_NE(nullptr, containers);
    ASSERT_EQ(Acad::eOk, acdbGetObjectId(id, containers->resval.rlname));
    EXPECT_EQ(L"16", handleOf(id));
    EXPECT_EQ(nullptr, containers->rbnext);
    acutRelRb(containers);
    deep(L"0,30");
    EXPECT_EQ(RTERROR, result);
    EXPECT_EQ(7, intVariable(L"ERRNO"));
    deep(L"");
    EXPECT_EQ(RTNONE, result);
    deep(L"(ssname (ssget \"X\" '((0 . \"INSERT\"))) 0)");
    ASSERT_EQ(RTNORM, result);
    EXPECT_EQ(L"16", handleOf(nested.entity)) << "named, it is that one itself";
    EXPECT_TRUE(nested.containers.isEmpty());
    EXPECT_EQ(L"INSERT", nested.type);
    EXPECT_FALSE(nested.layerId.isNull());
    EXPECT_DOUBLE_EQ(1.0, nested.toWorld[0][0]);
}

TEST_F(Picks, InsideExternalReferences) {
    EXPECT_EQ(L"none", one(L"5,-40")) << "the file is not there";
    deep(L"5,-40");
    EXPECT_EQ(RTERROR, result);
    EXPECT_NE(terminal.text.find(L"\nExternal reference \"D:\\plans\\base.dwg\" cannot be read.\n"),
              std::wstring::npos);
    terminal.text.clear();
    deep(L"5,-40");
    EXPECT_EQ(terminal.text.find(L"cannot be read"), std::wstring::npos) << "once";
    folder.write("base.dxf", reference());
    EXPECT_EQ(L"17 50", one(L"5,-40"));
    deep(L"5,-40");
    ASSERT_EQ(RTNORM, result);
    EXPECT_TRUE(nested.isExternal);
    EXPECT_TRUE(nested.entity.isNull());
    EXPECT_EQ(L"X1|WALL", nested.layer) << "frozen in its own file, but not in this drawing";
    EXPECT_EQ(L"F8", handleOf(nested.layerId));
    EXPECT_EQ(L"17", handlesOf(nested.containers));
    EXPECT_EQ(L"LINE", nested.type);
    deep(L"5,-37");
    ASSERT_EQ(RTNORM, result);
    EXPECT_EQ(L"0", nested.layer) << "a block of the reference's own";
    deep(L"5,-34");
    EXPECT_EQ(RTERROR, result) << "frozen in this drawing";
    deep(L"5,-32");
    EXPECT_EQ(RTERROR, result) << "on the paper of the reference";
    ads_name other = {};
    acdbHandEnt(L"16", other);
    EXPECT_FALSE(qrs::host::nestedAt({5, -40, 0}, other, nested)) << "inside another one";
    ads_name entity = {};
    ads_point point = {5, -40, 0};
    ads_matrix matrix = {};
    resbuf* containers = nullptr;
    ASSERT_EQ(RTNORM, acedNEntSelP(nullptr, entity, point, 1, matrix, &containers));
    AcDbObjectId id;
    ASSERT_EQ(Acad::eOk, acdbGetObjectId(id, entity));
    EXPECT_EQ(L"17", handleOf(id)) << "the innermost object of this drawing";
    EXPECT_EQ(nullptr, containers);
}

TEST_F(Picks, LayoutsAndTheirViewports) {
    EXPECT_EQ(L"18 50", one(L"5,20"));
    EXPECT_TRUE(run({L"MSPACE"}));
    EXPECT_NE(std::wstring::npos, terminal.text.find(L"** Command not allowed in Model Tab **"));
    resbuf off{};
    off.restype = RTSHORT;
    ASSERT_EQ(RTNORM, acedSetVar(L"TILEMODE", &off));
    EXPECT_EQ(L"none", one(L"5,3"));
    EXPECT_EQ(L"32 1050", one(L"105,100"));
    EXPECT_EQ(L"31 800", one(L"80,100"));
    EXPECT_EQ(L"none", one(L"0,100")) << "the edge of the paper";
    EXPECT_EQ(L"30", handleOf(acedGetCurViewportObjectId()));
    EXPECT_TRUE(run({L"MSPACE"}));
    EXPECT_EQ(2, intVariable(L"CVPORT"));
    EXPECT_EQ(L"31", handleOf(acedGetCurViewportObjectId()));
    EXPECT_EQ(L"15 50", one(L"5,3"));
    EXPECT_EQ(L"none", one(L"5,20")) << "frozen in this viewport";
    EXPECT_EQ(L"10 90", one(L"9,0.5")) << "the pick box is that of the viewport's view";
    EXPECT_EQ(L"10 13 14 15 16 17", pick({L"ALL", L"R", L"(handent \"12\")"})) << "of model space";
    EXPECT_TRUE(run({L"PSPACE"}));
    EXPECT_EQ(L"31 800", one(L"80,100"));
    resbuf number{};
    number.restype = RTSHORT;
    number.resval.rint = 7;
    EXPECT_EQ(RTERROR, acedSetVar(L"CVPORT", &number));
    number.resval.rint = 2;
    EXPECT_EQ(RTNORM, acedSetVar(L"CVPORT", &number));
    EXPECT_EQ(L"15 50", one(L"5,3"));
}

double realVariable(const wchar_t* name) {
    resbuf value{};
    return acedGetVar(name, &value) == RTNORM && value.restype == RTREAL ? value.resval.rreal : -1.0;
}

TEST_F(Picks, TheViewSetsThePickBox) {
    EXPECT_EQ(100.0, realVariable(L"VIEWSIZE"));
    EXPECT_EQ(L"none", one(L"10.8,0"));
    EXPECT_TRUE(run({L"ZOOM", L"C", L"0,0", L"1000"}));
    EXPECT_EQ(L"10 108", one(L"10.8,0"));
    EXPECT_TRUE(run({L"ZOOM", L"10x"}));
    EXPECT_EQ(100.0, realVariable(L"VIEWSIZE"));
    EXPECT_TRUE(run({L"ZOOM", L"0,0", L"16,10"}));
    EXPECT_EQ(10.0, realVariable(L"VIEWSIZE"));
    EXPECT_TRUE(run({L"ZOOM", L"O", L"25,0", L""}));
    EXPECT_EQ(10.0, realVariable(L"VIEWSIZE")) << "the circle's height";
    EXPECT_TRUE(run({L"ZOOM", L"E"}));
    EXPECT_EQ(26.25, realVariable(L"VIEWSIZE")) << "42 across: from the lines to the mirrored block";
    EXPECT_TRUE(run({L"ZOOM", L"P", L"ZOOM", L"P", L"ZOOM", L"P", L"ZOOM", L"P"}));
    EXPECT_EQ(1000.0, realVariable(L"VIEWSIZE"));
    EXPECT_FALSE(application->hasUnsavedChanges()) << "views are not written";
}

TEST_F(Picks, FollowWhatChangesInTheDrawing) {
    const auto line = [](const wchar_t* handle) {
        AcDbObjectId id;
        acDocManager->curDocument()->database()->getAcDbObjectId(id, false, AcDbHandle(handle));
        return id;
    };
    command<3>(L"CHANGE", 0, [&] {
        AcDbObjectPointer<AcDbLine>(line(L"10"), AcDb::kForWrite)->setEndPoint({10, 60, 0});
        AcDbObjectPointer<AcDbLine>(line(L"20"), AcDb::kForWrite)->setEndPoint({30, 0, 0});
    });
    command<4>(L"DROP", 0, [&] { AcDbObjectPointer<AcDbLine>(line(L"10"), AcDb::kForWrite)->erase(); });
    EXPECT_EQ(L"none", one(L"5,30"));
    EXPECT_EQ(L"none", one(L"-15,0"));
    EXPECT_TRUE(run({L"CHANGE"}));
    EXPECT_EQ(L"10 50", one(L"5,30"));
    EXPECT_EQ(L"16 -150", one(L"-15,0")) << "a line of its block is longer";
    EXPECT_TRUE(run({L"U"}));
    EXPECT_EQ(L"none", one(L"5,30"));
    EXPECT_EQ(L"none", one(L"-15,0"));
    EXPECT_EQ(L"10 80", one(L"8,0"));
    EXPECT_TRUE(run({L"DROP"}));
    EXPECT_EQ(L"none", one(L"8,0"));
    EXPECT_TRUE(run({L"U"}));
    EXPECT_EQ(L"10 80", one(L"8,0"));
}

TEST_F(Picks, DrawOrder) {
    Parts parts = sample();
    parts.layers += " 0 ENDTAB 0 TABLE 2 BLOCK_RECORD 70 1 0 BLOCK_RECORD 5 1F 2 *Model_Space";
    parts.objects = "0 SORTENTSTABLE 5 90 330 91 100 AcDbSortentsTable 330 1F 331 10 5 15 331 15 5 10";
    open(parts);
    EXPECT_EQ(L"10 50", one(L"5,0"));
}

}  // namespace
