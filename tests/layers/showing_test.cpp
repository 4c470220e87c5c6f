// Commands that show, thaw and unlock everything, and what all layer commands share.
#include <algorithm>

#include "accmd.h"
#include "frame/entry.h"
#include "qrs_pipewire.h"
#include "rxmfcapi.h"
#include "rxregsvc.h"
#include "support.h"

namespace qrs::test {

namespace {

const std::vector<Layer> kLayers = {{"0"}, {"A", 1}, {"B", 4}, {"C", 5, -3}, {"D", 0, -1}};

class LayerCommands : public LayerFrame {
  protected:
    const std::string asked = "请选择要解锁层上的图元(ESC退出,空格解开全部层) <全部>:";
    static std::vector<std::string> sentTexts(const platform::CallRecorder& recorder) {
        std::vector<std::string> sent;
        for (const std::string& call : recorder.calls())
            if (call.find("sendStringToExecute") != std::string::npos) sent.push_back(call);
        return sent;
    }
};

}  // namespace

TEST_F(LayerCommands, UnFrozenAllLayerThawsEveryLayerAndRefreshesTheLayerState) {
    open(drawingText(kLayers, {{"0"}}));
    platform::CallRecorder recorder;
    run({L"UnFrozenAllLayer"});
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isFrozen), "");
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isLocked), "B C");
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isOff), "C D");
    const std::vector<std::string> sent = sentTexts(recorder);
    ASSERT_EQ(sent.size(), 3u);
    EXPECT_NE(sent[0].find("\x1b-layer\n"), std::string::npos);
    EXPECT_NE(sent[1].find("\x1b"), std::string::npos);
    EXPECT_EQ(sent[1].find("-layer"), std::string::npos);
    EXPECT_NE(sent[2].find("re\n"), std::string::npos);

    // The user can switch the regeneration off.
    ASSERT_TRUE(TRegKey(GetRegLocation(L"PWXConfig")).WriteInteger(L"LayerLockShowUpdate", 0));
    recorder.clear();
    run({L"UnFrozenAllLayer"});
    EXPECT_EQ(sentTexts(recorder).size(), 2u);
}

TEST_F(LayerCommands, UnLockSelLayerTakesEnterForAllAndEscForNone) {
    open(drawingText(kLayers, {{"0"}}));
    platform::CallRecorder recorder;
    EXPECT_EQ(own(run({L"UnLockSelLayer", ScriptTerminal::kEsc})), asked + "<esc>\n*Cancel*\n");
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isLocked), "B C");
    EXPECT_TRUE(sentTexts(recorder).empty());
    EXPECT_FALSE(application.hasUnsavedChanges());

    EXPECT_EQ(own(run({L"UnLockSelLayer", L""})), asked + "\n");
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isLocked), "");
    EXPECT_EQ(sentTexts(recorder).size(), 3u);
}

// Names match without regard to case; the frozen layer "A" cannot be picked; "C" is locked and nobody picks it.
TEST_F(LayerCommands, UnLockSelLayerUnlocksThePickedLayersAndNamesThoseThatWereNotLocked) {
    open(drawingText(kLayers, {{"0"}, {"b"}, {"B"}, {"A"}, {"0"}}));
    EXPECT_EQ(own(run({L"UnLockSelLayer", L"ALL", L""})), asked + "ALL\n4 found\n" + asked + "\n0层本身就没有锁定！\n");
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isLocked), "C");
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isFrozen), "A C");
}

TEST_F(LayerCommands, UnLockSelLayerTakesWhatIsPickedFirst) {
    open(drawingText(kLayers, {{"0"}, {"B"}}));
    const std::wstring transcript = run({L"SELECT", L"ALL", L"", L"UnLockSelLayer"});
    EXPECT_EQ(transcript.find(platform::fromUtf8(asked)), std::wstring::npos) << platform::toUtf8(transcript);
    EXPECT_EQ(count(transcript, L"\n0层本身就没有锁定！"), 1u);
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isLocked), "C");
}

TEST_F(LayerCommands, OnlySetAllPipeLayOpenRunsInsideOtherCommands) {
    open(drawingText(kLayers, {{"0"}}));
    const std::wstring transcript = run({L"UnLockSelLayer", L"'SetAllPipeLayOpen", L"'UnFrozenAllLayer", L""});
    EXPECT_EQ(count(transcript, L"** That command may not be invoked transparently **"), 1u);
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isOff), "");
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isFrozen), "A C");
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isLocked), "") << "the command outside went on";
}

TEST_F(LayerCommands, CommandsWorkOnTheCurrentDrawingOnly) {
    open(drawingText(kLayers, {{"0"}}));
    platform::Error error;
    application.newDocument();
    run({L"UnFrozenAllLayer", L"SetAllPipeLayOpen", L"UnLockSelLayer", L""});
    ASSERT_TRUE(application.closeDocument(error)) << error.message;
    EXPECT_FALSE(application.hasUnsavedChanges());
    run({L"UnFrozenAllLayer"});
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isFrozen), "");
}

#if !defined(_WIN32)  // calls no entry of a program
TEST_F(LayerCommands, CommandsRunAmongTheModulesResourcesAndLetNothingOut) {
    open(drawingText(kLayers, {{"0"}}));
    std::vector<HINSTANCE> seen;
    terminal.atPrompt = [&] { seen.push_back(AfxGetResourceHandle()); };
    run({L"UnLockSelLayer", ScriptTerminal::kEsc});
    ASSERT_NE(frame::moduleInstance(), nullptr);
    EXPECT_EQ(seen, (std::vector<HINSTANCE>{nullptr, frame::moduleInstance(), nullptr}));

    AcAp::DocLockMode lock = AcAp::kNone;
    terminal.atPrompt = [&] {
        if (lock == AcAp::kNone) lock = application.currentDocument()->lockMode(true);
        if (AfxGetResourceHandle()) throw std::runtime_error("the line is dead");
    };
    EXPECT_NO_THROW((acedRegCmds)->lookupGlobalCmd(L"UnLockSelLayer")->functionAddr()());
    EXPECT_EQ(lock, AcAp::kWrite) << "outside of any command, too";
    const std::wstring transcript = run({L"UnLockSelLayer", L"SetAllPipeLayOpen"});
    EXPECT_EQ(count(transcript, L"<error>qrs_pipeSystem: the line is dead\n"), 1u) << platform::toUtf8(transcript);
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isLocked), "B C");
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isOff), "");
    EXPECT_EQ(application.currentDocument()->lockMode(true), AcAp::kNotLocked);
    EXPECT_EQ(AfxGetResourceHandle(), nullptr);
}
#endif

TEST_F(LayerCommands, SetAllPipeLayOpenShowsLayersSystemsAndHiddenObjects) {
    open(drawingText(kLayers, {{"0"}, {"A", true}, {"B", true}, {"C"}}));
    TDbPsConfig* config = GetDwgPsGlobal(database());
    const int type = GetSysType(L"给水");
    config->ShowSystem(type, 0);
    config->HideCustomPipeSystem(L"别处的系统");
    platform::CallRecorder recorder;
    run({L"SetAllPipeLayOpen"});
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isOff), "");
    EXPECT_EQ(layersThatAre(&AcDbLayerTableRecord::isFrozen), "A C");
    EXPECT_TRUE(config->IsSystemShown(type));
    EXPECT_FALSE(config->IsCustomPipeSystemShown(L"别处的系统"));  // none of the standard's
    EXPECT_NE(std::find(recorder.calls().begin(), recorder.calls().end(), "UpdateGraphic(2)"), recorder.calls().end());

    // Only the colours of the layers that were off and the visibility of the hidden lines differ.
    const std::string file = saved();
    EXPECT_EQ(file.find("\n60\n1\n"), std::string::npos);
    EXPECT_NE(file.find("\n62\n3\n"), std::string::npos);
    EXPECT_EQ(file.find("\n62\n-"), std::string::npos);
}

TEST_F(LayerCommands, ADrawingThatIsAlreadyAsWantedStaysUntouched) {
    open(drawingText({{"0"}, {"A"}, {"B"}, {"C"}, {"D"}}, {{"0"}, {"A"}}));
    run({L"SetAllPipeLayOpen", L"UnFrozenAllLayer", L"UnLockSelLayer", L"", L"UnLockSelLayer", L"ALL", L""});
    EXPECT_FALSE(application.hasUnsavedChanges());
    EXPECT_EQ(saved(), content());
}

TEST_F(LayerCommands, OneToolBarServesAllCommandsUntilUnload) {
    open(drawingText(kLayers, {{"0"}}));
    platform::CallRecorder recorder;
    const auto timesMade = [&] {
        return std::count(recorder.calls().begin(), recorder.calls().end(), "CLayerToolBar::CLayerToolBar()");
    };
    run({L"SetAllPipeLayOpen", L"UnFrozenAllLayer", L"UnFrozenAllLayer", L"FrozenViewLayer", L"sfxc"});
    EXPECT_EQ(timesMade(), 1);
    acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
    acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
    EXPECT_EQ(timesMade(), 1);
    run({L"UnFrozenAllLayer"});
    EXPECT_EQ(timesMade(), 2);
}

}  // namespace qrs::test
