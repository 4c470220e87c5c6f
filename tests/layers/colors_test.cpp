// One colour for all layers, and their own colours back.
#include "support.h"

namespace qrs::test {

namespace {

class LayerColors : public LayerFrame {
  protected:
    const std::string before = "0:7 A:1 B:2 L:3 D:4 A*:5 x|R:6 T:-33";
    static int keptColor() { return TRegKey(GetRegLocation(L"PWXConfig")).GetInteger(L"LayerOnlyColor", -1); }
    static std::string asked(int color) {
        return "请输入平面图要变成的颜色(1-红/2-黄/3-绿/4-青/5-蓝/6-粉/7-白)[选择图层(E)/选择颜色(C)]<当前颜色值(" +
               std::to_string(color) + ")>:";
    }
    const std::string warned = "警告:本次操作的图层与上次一致，是否继续<N>:";
};

}  // namespace

TEST_F(LayerColors, TbdsPaintsAndYshfRestoresAlsoAfterSaving) {
    // Beside a true colour another index than the nearest one.
    std::string text = planText();
    text.replace(text.find("62\n-30\n"), 7, "62\n-33\n");
    open(text);
    EXPECT_EQ(own(run({L"yshf"})), "没有找到相关信息，图层颜色恢复失败！\n");
    const std::string shown = own(run({L"tbds", L"0", L"8", L"3"}));
    EXPECT_EQ(count(platform::fromUtf8(shown), platform::fromUtf8(asked(7))), 3u) << shown;
    EXPECT_NE(shown.find("Regenerating"), std::string::npos) << shown;
    EXPECT_EQ(colors(), "0:3 A:3 B:3 L:3 D:3 A*:3 x|R:3 T:-3");
    EXPECT_EQ(keptColor(), 3);

    const std::string painted = saved();
    EXPECT_NE(painted.find("\nTuCengDanSe-YanSeHuiFu\n"), std::string::npos);
    open(painted);
    EXPECT_EQ(own(run({L"yshf"})), "Regenerating model.\n");
    EXPECT_EQ(colors(), before) << "T is still off, and has the index of its true colour";
    EXPECT_EQ(saved().find("TuCengDanSe"), std::string::npos);
    EXPECT_EQ(own(run({L"yshf"})), "没有找到相关信息，图层颜色恢复失败！\n");
}

TEST_F(LayerColors, TbdsPaintsTheChosenLayersWithTheChosenColour) {
    open(planText());
    const std::string shown = own(run({L"tbds", L"E", L"B,T", L"OK", L"C", L"40", L"OK", L""}));
    EXPECT_NE(shown.find("选择图层"), std::string::npos) << shown;
    EXPECT_NE(shown.find(asked(40)), std::string::npos) << shown;
    EXPECT_EQ(colors(), "0:7 A:1 B:40 L:3 D:4 A*:5 x|R:6 T:-40");
    EXPECT_EQ(keptColor(), 40);
    // Other layers: no warning, and the record is theirs from now on.
    EXPECT_EQ(own(run({L"tbds", L"E", L"A", L"OK", L"2"})).find(warned), std::string::npos);
    run({L"yshf"});
    EXPECT_EQ(colors(), "0:7 A:1 B:40 L:3 D:4 A*:5 x|R:6 T:-40");
}

TEST_F(LayerColors, TbdsWarnsBeforeItTakesPaintedColoursForTheOldOnes) {
    open(planText());
    run({L"tbds", L"1"});
    for (const wchar_t* answer : {L"N", L"", ScriptTerminal::kEsc}) {
        EXPECT_NE(own(run({L"tbds", L"5", answer})).find(warned), std::string::npos);
        EXPECT_EQ(colors(), "0:1 A:1 B:1 L:1 D:1 A*:1 x|R:1 T:-1");
        EXPECT_EQ(keptColor(), 1);
    }
    run({L"tbds", L"5", L"Y"});
    EXPECT_EQ(colors(), "0:5 A:5 B:5 L:5 D:5 A*:5 x|R:5 T:-5");
    run({L"yshf"});
    EXPECT_EQ(colors(), "0:1 A:1 B:1 L:1 D:1 A*:1 x|R:1 T:-1") << "Yes replaced the record";
}

TEST_F(LayerColors, TbdsChangesNothingWhenCancelledOrWhenTheDrawingCannotKeepColours) {
    open(planText());
    run({L"tbds", ScriptTerminal::kEsc});
    run({L"tbds", L"E", ScriptTerminal::kEsc, L"C", ScriptTerminal::kEsc, ScriptTerminal::kEsc});
    EXPECT_FALSE(application.hasUnsavedChanges());
    EXPECT_EQ(keptColor(), -1);

    open(planText("AC1009"));
    const std::string shown = own(run({L"tbds", L"3"}));
    EXPECT_NE(shown.find("不能保存图层原来的颜色，图层颜色没有改变！"), std::string::npos) << shown;
    EXPECT_FALSE(application.hasUnsavedChanges());
}

// Layers that are gone, indices that are none and values that belong together no more are passed over.
TEST_F(LayerColors, YshfPassesOverWhatARecordHoldsDamaged) {
    std::string text = planText();
    const std::size_t place = text.find("281\n1\n0\nENDSEC");
    ASSERT_NE(place, std::string::npos);
    text.insert(place + 6,
                "3\nTuCengDanSe-YanSeHuiFu\n350\n300\n0\nXRECORD\n5\n300\n330\nC\n100\nAcDbXrecord\n280\n1\n"
                "8\nGone\n62\n1\n62\n5\n8\nB\n62\n900\n8\nL\n8\nD\n62\n9\n8\nA\n");
    open(text);
    run({L"yshf"});
    EXPECT_EQ(colors(), "0:7 A:1 B:2 L:3 D:9 A*:5 x|R:6 T:-30");
}

}  // namespace qrs::test
