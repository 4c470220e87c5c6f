// Commands that move and erase what lies on layers.
#include "support.h"

namespace qrs::test {

namespace {

class LayerContents : public LayerFrame {};

const std::string kConvertSource = "请选择要转换图层(源)上的任意图元:<退出>";
const std::string kConvertTarget = "请选择要转换图层(目标)上的任意图元:<退出>";
const std::string kMergeSource = "请选择要删除图层上的任意图元:<退出>";
const std::string kMergeTarget = "请选择要合并到图层(目标)上的任意图元:<退出>";

}  // namespace

// In every space; parts that lie elsewhere stay there, as does what lies in blocks and on a layer that looks like a
// pattern.
TEST_F(LayerContents, ConvertLayerMovesEverythingOnTheSourceLayerAlone) {
    for (const char* version : {"AC1018", "AC1009"}) {
        open(planText(version));
        EXPECT_EQ(own(run({L"ConvertLayer", ent(L"FFF"), ent(L"100"), ent(L"130")})),
                  kConvertSource + "(handent \"FFF\")\nNothing is found: (handent \"FFF\")\n" + kConvertSource +
                      "(handent \"100\")\n" + kConvertTarget + "(handent \"130\")\nA层 已经成功转换到 B层了！\n");
        EXPECT_EQ(layersOf({L"100", L"110", L"111", L"113", L"120", L"121", L"123", L"180", L"190"}),
                  "B B B B B B B B B");
        EXPECT_EQ(layersOf({L"112", L"122", L"25", L"140", L"150", L"160", L"170"}), "D D D L D A* x|R");
        run({L"ConvertLayer", ent(L"160"), ent(L"150")});
        EXPECT_EQ(layersOf({L"160", L"100", L"110"}), "D B B");
        EXPECT_EQ(count(platform::fromUtf8(saved()), L"\n8\nA\n"), 1u) << "the current layer alone is still A";
    }
}

TEST_F(LayerContents, ConvertLayerRefusesAndCancelsWithNothingChanged) {
    open(planText());
    EXPECT_EQ(own(run({L"ConvertLayer", ent(L"100"), ent(L"120")})),
              kConvertSource + "(handent \"100\")\n" + kConvertTarget + "(handent \"120\")\n图层相同，不需要转换！\n");
    EXPECT_NE(own(run({L"ConvertLayer", ent(L"140"), ent(L"100")})).find("L层已经锁定"), std::string::npos);
    EXPECT_NE(own(run({L"ConvertLayer", ent(L"100"), ent(L"170")})).find("x|R是外部参照的图层"), std::string::npos);
    EXPECT_EQ(own(run({L"ConvertLayer", ScriptTerminal::kEsc})), kConvertSource + "<esc>\n*Cancel*\n");
    EXPECT_EQ(own(run({L"ConvertLayer", ent(L"100"), L""})),
              kConvertSource + "(handent \"100\")\n" + kConvertTarget + "\n");
    EXPECT_FALSE(application.hasUnsavedChanges());
    EXPECT_EQ(saved(), content());
}

// Each command is one step that can be taken back.
TEST_F(LayerContents, UTakesBackWhatOneCommandDid) {
    open(planText());
    run({L"ConvertLayer", ent(L"100"), ent(L"130")});
    const std::string converted = saved();
    run({L"EraseSelLayer", ent(L"130"), L"", L"U"});
    EXPECT_EQ(saved(), converted);
    run({L"hbtc", ent(L"130"), ent(L"160"), L"Y", L"tbds", L"3", L"FrozenLayer", ent(L"130"), L"", L"U", L"U", L"U"});
    EXPECT_EQ(saved(), converted);
    run({L"U"});
    EXPECT_EQ(saved(), content());
}

// Viewports of a layout that was not shown last have no numbers; the first one is its paper.
TEST_F(LayerContents, EraseSelLayerErasesEverythingOnTheLayersButLockedOnesAndThePaper) {
    for (const char* number : {"69\n1\n", "69\n0\n"}) {
        std::string text = planText();
        text.replace(text.find("69\n1\n"), 5, number);
        open(text);
        EXPECT_EQ(own(run({L"EraseSelLayer", L""})), "请选择删除层上的图元 <退出>:\n");
        EXPECT_FALSE(application.hasUnsavedChanges());
        const std::string shown = own(run({L"EraseSelLayer", ent(L"100"), ent(L"140"), ent(L"150"), L""}));
        EXPECT_NE(shown.find("L层已经锁定，层上的图元没有删除！"), std::string::npos) << shown;
        EXPECT_EQ(layersOf({L"100", L"110", L"111", L"112", L"120", L"122", L"123", L"150", L"190"}),
                  "- - - - - - - - -");
        EXPECT_EQ(layersOf({L"25", L"130", L"140", L"160", L"170", L"180", L"181"}), "D B L A* x|R A B");
    }
}

// What counts is the layer's name: blanks at its ends belong to it, and the drawing need not define it.
TEST_F(LayerContents, AreFoundByTheNameOfTheLayer) {
    std::string text = planText();
    for (const char* code : {"2", "8"})
        for (std::size_t at = 0; (at = text.find(std::string("\n") + code + "\nB\n", at)) != std::string::npos;)
            text.replace(at + 3, 1, " B ");
    open(text);
    run({L"ConvertLayer", ent(L"130"), ent(L"150")});
    EXPECT_EQ(layersOf({L"130", L"181"}), "D D");
    open(text);
    run({L"EraseSelLayer", ent(L"130"), L""});
    EXPECT_EQ(layersOf({L"130", L"181"}), "- -");

    text = planText("AC1018", true, entity("LINE", "F1", "gone", "100 AcDbLine") + entity("LINE", "F2", "GONE", ""));
    open(text);
    for (const wchar_t* command : {L"OpenSelLayer", L"LockSelLayer", L"UnLockSelLayer", L"sfxc"})
        EXPECT_EQ(count(platform::fromUtf8(own(run({command, ent(L"F1"), ent(L"F2"), ent(L"130"), L""}))),
                        L"gone层没有定义！\n"),
                  1u)
            << command;
    run({L"EraseSelLayer", ent(L"F2"), ent(L"130"), L""});
    EXPECT_EQ(layersOf({L"F1", L"F2", L"130", L"150"}), "- - - D");
}

// The current layer becomes "0", not the target.
TEST_F(LayerContents, HbtcMovesEverythingErasesTheLayerAndLeavesItBeingCurrent) {
    open(planText());
    const std::string shown = own(run({L"hbtc", ent(L"100"), ent(L"130"), L"Y"}));
    EXPECT_EQ(shown.find(kMergeSource + "(handent \"100\")\n" + kMergeTarget + "(handent \"130\")\n"), 0u) << shown;
    EXPECT_NE(shown.find("您确定要把A图层合并到B图层上吗? 且删除A图层?"), std::string::npos) << shown;
    EXPECT_EQ(shown.find("引用"), std::string::npos) << shown;
    EXPECT_EQ(layersOf({L"100", L"110", L"111", L"112", L"113", L"120", L"122", L"123", L"180", L"190"}),
              "B B B D B B D B B B");
    EXPECT_EQ(colors(), "0:7 B:2 L:3 D:4 A*:5 x|R:6 T:-30");
    EXPECT_NE(saved().find("$CLAYER\n8\n0\n"), std::string::npos);
}

TEST_F(LayerContents, HbtcKeepsALayerThatBlocksNeed) {
    open(planText());
    run({L"-LAYER", L"S", L"D", L""});
    const std::string shown = own(run({L"hbtc", ent(L"150"), ent(L"130"), L"Y"}));
    EXPECT_NE(shown.find("\n 图层存在引用.无法删除图层！"), std::string::npos) << shown;
    EXPECT_EQ(layersOf({L"150", L"25", L"112"}), "B D D");
    EXPECT_EQ(colors(), "0:7 A:1 B:2 L:3 D:4 A*:5 x|R:6 T:-30");
    EXPECT_NE(saved().find("$CLAYER\n8\n0\n"), std::string::npos);
}

TEST_F(LayerContents, HbtcSaysWhyTheCurrentLayerStays) {
    std::string text = planText();
    text.replace(text.find("\n2\n0\n70\n0\n"), 10, "\n2\n0\n70\n1\n");
    open(text);
    const std::string shown = own(run({L"hbtc", ent(L"100"), ent(L"130"), L"Y"}));
    EXPECT_NE(shown.find("\n0层不能成为当前图层，A层仍是当前图层！\n 无法删除图层记录！"), std::string::npos) << shown;
    EXPECT_EQ(colors(), "0:7 A:1 B:2 L:3 D:4 A*:5 x|R:6 T:-30");
}

TEST_F(LayerContents, HbtcRefusesAndCancelsWithNothingChanged) {
    open(planText() /* A is current */);
    const std::pair<std::pair<const wchar_t*, const wchar_t*>, const char*> refusals[] = {
        {{L"100", L"110"}, "2个图层一致，无需合并"},
        {{L"140", L"100"}, "\n 无法删除已经锁定的图层！"},
        {{L"170", L"100"}, "\n 无法删除图层记录！"},
        {{L"100", L"170"}, "x|R是外部参照的图层"},
    };
    for (const auto& [picks, message] : refusals) {
        const std::string shown = own(run({L"hbtc", ent(picks.first), ent(picks.second), L"Y"}));
        EXPECT_NE(shown.find(message), std::string::npos) << shown;
        EXPECT_EQ(shown.find("您确定"), std::string::npos) << shown;
    }
    run({L"hbtc", ent(L"100"), ent(L"130"), L"N"});
    run({L"hbtc", ent(L"100"), ent(L"130"), ScriptTerminal::kEsc});
    run({L"hbtc", ent(L"100"), ScriptTerminal::kEsc});
    EXPECT_FALSE(application.hasUnsavedChanges());
    EXPECT_EQ(saved(), content());

    open(drawingText({{"0"}, {"A"}}, {{"0"}, {"A"}}));
    EXPECT_NE(own(run({L"hbtc", ent(L"100"), ent(L"101"), L"Y"})).find("无法删除0层"), std::string::npos);
    EXPECT_FALSE(application.hasUnsavedChanges());
}

}  // namespace qrs::test
