// Commands that turn layers on and off, lock and freeze them.
#include "acedads.h"
#include "rxmfcapi.h"
#include "support.h"

namespace qrs::test {

namespace {

class LayerStates : public LayerFrame {
  protected:
    short snapMode() const {
        resbuf value{};
        EXPECT_EQ(acedGetVar(L"OSMODE", &value), RTNORM);
        return value.resval.rint;
    }
};

const std::string kClose = "请选择关闭层上的图元或外部参照上的图元<退出>:";

}  // namespace

// The diameter texts follow a pipe layer of any kind, and no other layer. A second pick on the same layer, and one that
// meets nothing, are no end.
TEST_F(LayerStates, CloseSelLayerTurnsOffPickedLayersAndDiameterTextsOfPipes) {
    open(drawingText({{"0"}, {"给排-生活给水-立管"}, {"给排-生活给水-管径文字"}, {"给排-污水-管径文字"}, {"建筑-墙"}},
                     {{"0"}, {"给排-生活给水-立管"}, {"建筑-墙"}, {"建筑-墙"}}));
    short meanwhile = -1;
    terminal.atPrompt = [&] {
        if (terminal.script.size() == 1) meanwhile = snapMode();
    };
    const short before = snapMode();
    run({L"SELECT", ent(L"100"), L""});
    EXPECT_EQ(own(run({L"CloseSelLayer", ent(L"102"), ent(L"103"), ent(L"FFF"), L""})),
              kClose + "(handent \"102\")\n" + kClose + "(handent \"103\")\n" + kClose +
                  "(handent \"FFF\")\nNothing is found: (handent \"FFF\")\n" + kClose + "\n");
    EXPECT_EQ(offLayers(), "建筑-墙");
    EXPECT_EQ(meanwhile, 0);
    EXPECT_EQ(snapMode(), before);
    run({L"CloseSelLayer", ent(L"101"), ScriptTerminal::kEsc});
    EXPECT_EQ(offLayers(), "给排-生活给水-立管 给排-生活给水-管径文字 建筑-墙") << "Esc keeps what was done";
    // The pick-first set was emptied.
    EXPECT_NE(own(run({L"LockSelLayer", L""})).find("请选择要锁定层上的图元 <退出>:"), std::string::npos);
}

// Of an external reference not its own layer goes off but that of the object picked inside it.
TEST_F(LayerStates, CloseSelLayerTurnsOffLayersInsideExternalReferences) {
    folder.write("ref.dxf", drawingText({{"0"}, {"R"}}, {{"R"}}));
    std::string text =
        planText("AC1018", true, entity("INSERT", "210", "B", "100 AcDbBlockReference/2 x/10 100/20 100"));
    const std::size_t record = text.find("0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nBLOCKS");
    ASSERT_NE(record, std::string::npos);
    text.insert(record, tags("0 BLOCK_RECORD/5 1D/100 AcDbSymbolTableRecord/100 AcDbBlockTableRecord/2 x"));
    text.insert(text.find("0\nENDSEC\n0\nSECTION\n2\nENTITIES"),
                tags("0 BLOCK/5 31D/330 1D/100 AcDbEntity/8 0/100 AcDbBlockBegin/2 x/70 4/10 0/20 0/30 0/3 x/1 ref.dxf/"
                     "0 ENDBLK/5 21D/330 1D/100 AcDbEntity/8 0/100 AcDbBlockEnd"));
    open(text);
    const std::string inside = "外部参照！请继续选择外部参照上要关闭的图元<退出>: ";
    EXPECT_EQ(
        own(run({L"CloseSelLayer", L"102,102", L"150,150", L"103,103", L""})),
        kClose + "102,102\n" + inside + "150,150\n没有选中外部参照上的图元！\n" + inside + "103,103\n" + kClose + "\n");
    EXPECT_EQ(offLayers(), "x|R T");
    EXPECT_NE(own(run({L"CloseSelLayer", ent(L"210"), ent(L"101"), ScriptTerminal::kEsc}))
                  .find("Expects a point: what a reference shows cannot be named"),
              std::string::npos);
    EXPECT_EQ(offLayers(), "x|R T");
}

TEST_F(LayerStates, OpenSelLayerKeepsOnlyTheLayersOfTheSelection) {
    open(planText());
    run({L"OpenSelLayer", ScriptTerminal::kEsc});
    run({L"OpenSelLayer", L""});
    EXPECT_FALSE(application.hasUnsavedChanges());
    EXPECT_EQ(own(run({L"OpenSelLayer", ent(L"130"), ent(L"140"), L""})),
              "请选择打开层上的图元 <退出>:(handent \"130\")\n1 found\n请选择打开层上的图元 <退出>:(handent \"140\")\n"
              "1 found, 2 total\n请选择打开层上的图元 <退出>:\n");
    EXPECT_EQ(offLayers(), "0 A D A* x|R T") << "the current layer A too";
    EXPECT_NE(saved().find("\n62\n-30\n420\n16744192\n"), std::string::npos) << "a true colour stays";
}

TEST_F(LayerStates, OpenLayerTurnsOnTheLayersChosenInItsDialog) {
    open(drawingText({{"0"}, {"A", 0, -1}, {"B", 0, -2}, {"C", 0, -3}, {"D"}}, {{"0"}}));
    platform::CallRecorder recorder;
    EXPECT_NE(own(run({L"OpenLayer", L"B", ScriptTerminal::kEsc})).find("打开图层"), std::string::npos);
    EXPECT_EQ(offLayers(), "A B C");
    EXPECT_EQ(count(platform::fromUtf8(own(run({L"OpenLayer", L"2-3", L"OK"}))), L"D "), 0u) << "D is on";
    EXPECT_EQ(offLayers(), "A");
    run({L"OpenLayer", L"A", L"OK"});
    const auto refreshed = [&] {
        return std::count_if(recorder.calls().begin(), recorder.calls().end(),
                             [](const std::string& call) { return call.find("-layer\n") != std::string::npos; });
    };
    EXPECT_EQ(refreshed(), 2);
    EXPECT_EQ(own(run({L"OpenLayer"})), "所有图层都是打开的！\n");
    EXPECT_EQ(refreshed(), 2);
}

TEST_F(LayerStates, LockSelLayerLocksAndNamesThoseThatWereLocked) {
    open(planText());
    const std::string asked = "请选择要锁定层上的图元 <退出>:";
    EXPECT_EQ(own(run({L"LockSelLayer", ent(L"140"), ent(L"130"), L""})),
              asked + "(handent \"140\")\n1 found\n" + asked + "(handent \"130\")\n1 found, 2 total\n" + asked +
                  "\nL层本身就是锁定的！\n");
    EXPECT_EQ(lockedLayers(), "B L");
    EXPECT_EQ(frozenLayers(), "");
}

TEST_F(LayerStates, SfxcLocksAllLayersButTheKeptOnes) {
    open(planText());
    const std::string asked = "请选择要保留不被锁定层上的图元<退出>:";
    EXPECT_EQ(own(run({L"sfxc", ent(L"140"), ent(L"130"), ent(L"140"), L""})),
              asked + "(handent \"140\")\n1 found\n" + asked + "(handent \"130\")\n1 found, 2 total\n" + asked +
                  "(handent \"140\")\n1 found (1 duplicate), 2 total\n" + asked + "\nL 层打开\nB 层打开\n");
    EXPECT_EQ(lockedLayers(), "0 A D A* x|R T");
    run({L"sfxc", L""});
    EXPECT_EQ(lockedLayers(), "0 A D A* x|R T");
}

// What is attached to a pipe and the nodes at its ends are kept with it, whatever else lies on their layers.
TEST_F(LayerStates, SfxcKeepsTheLayersOfWhatFollowsAPipe) {
    open(planText(
        "AC1018", true,
        entity("QRS_PIPE", "200", "A", "100 TDbPipePrototype/330 201/330 202/100 TDbPipe/70 0/331 203/332 204") +
            entity("QRS_PIPEATTACHMENT", "201", "D", "100 TDbPipeAttachment") +
            entity("QRS_PIPEATTACHMENT", "202", "A", "100 TDbPipeAttachment") +
            entity("QRS_PIPENODE", "203", "T", "100 TDbPipeNode") +
            entity("QRS_PIPENODE", "204", "L", "100 TDbPipeNode")));
    const std::string shown = own(run({L"sfxc", ent(L"200"), L""}));
    EXPECT_NE(shown.find("\nA 层打开\nD 层打开\nT 层打开\nL 层打开\n"), std::string::npos) << shown;
    EXPECT_EQ(lockedLayers(), "0 B A* x|R");
}

TEST_F(LayerStates, FrozenLayerFreezesPickByPickAndNeverTheCurrentLayer) {
    open(planText());
    const std::string asked = "请选择需要冻结层上的图元 <退出>:";
    EXPECT_EQ(own(run({L"FrozenLayer", ent(L"100"), ent(L"130"), ent(L"140"), L""})),
              asked + "(handent \"100\")\n不能冻结当前层!\n" + asked + "(handent \"130\")\n" + asked +
                  "(handent \"140\")\n" + asked + "\n");
    EXPECT_EQ(frozenLayers(), "B L");
}

}  // namespace qrs::test
