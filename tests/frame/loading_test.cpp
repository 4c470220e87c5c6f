// The module as the host loads and unloads it.
#include <algorithm>

#include "accmd.h"
#include "support.h"

namespace qrs::test {

namespace {

using Calls = std::vector<std::string>;

struct Command {
    const char* name;
    int flags;
};
const Command kCommands[] = {{"gxsz", 2},
                             {"dcsz", 4},
                             {"drsz", 4},
                             {"SetAllPipeLayOpen", 1},
                             {"tckz", 2},
                             {"gpsbs", 2},
                             {"CleanOvraLayTag", 2},
                             {"UnLockSelLayer", 2},
                             {"LockSelLayer", 2},
                             {"sfxc", 2},
                             {"OpenLayer", 2},
                             {"OpenSelLayer", 2},
                             {"CloseSelLayer", 2},
                             {"EraseSelLayer", 2},
                             {"ConvertLayer", 2},
                             {"hbtc", 2},
                             {"gxgd", 2},
                             {"tcdc", 2},
                             {"tctq", 2},
                             {"FrozenLayer", 2},
                             {"UnFrozenAllLayer", 2},
                             {"FrozenViewLayer", 2},
                             {"UnFrozenViewAllLayer", 2},
                             {"tbds", 2},
                             {"yshf", 2},
                             {"cztk", 2},
                             {"jcjk", 2},
                             {"gxfz", 2},
                             {"xxyh", 2},
                             {"xxyh2", 2}};
const char* const kStale[] = {"tcgj",          "hbtc",          "OpenLayer",    "OpenSelLayer",
                              "CloseSelLayer", "EraseSelLayer", "ConvertLayer", "UnLockSelLayer",
                              "LockSelLayer",  "sfxc",          "dcsz",         "drsz"};

// Loading with a drawing open: library entry, message entry, the steps of the start-up, then the drawing's message.
Calls expectedLoading(const std::wstring& standardFile) {
    Calls calls = {"AfxInitExtensionModule()",
                   "CDynLinkLibrary::CDynLinkLibrary()",
                   "InitAol(_QRS)",
                   "QrsExport::InitGeLib(1)",
                   "acrxUnlockApplication()",
                   "AcRxDynamicLinker::registerAppMDIAware()"};
    for (const char* name : kStale)
        calls.push_back(std::string("AcEdCommandStack::removeCmd(TAPI_CMD, ") + name + ")");
    for (const Command& command : kCommands)
        calls.push_back(std::string("AcEdCommandStack::addCommand(QRS_PIPESTSTEM, ") + command.name + ", " +
                        command.name + ", " + std::to_string(command.flags) + ")");
    const std::string config = "(Software\\QRS\\PWX\\PWXConfig, ";
    const std::string choice = "(Software\\QRS\\PWX\\PipeSystemSetting, StandardFile";
    calls.push_back("Settings::text" + choice + ")");
    calls.push_back("Settings::setText" + choice + ", " + platform::toUtf8(standardFile) + ")");
    const Calls rest = {"standard::readOldLayerDefinitions()",
                        "SetPipeSystemName",
                        "ObjectUtility::ResetObjectColors()",
                        "Settings::text" + config + "LineTypeChnShx)",
                        "Settings::text" + config + "LineTypeEngShx)",
                        "Settings::real" + config + "LineTypeHeight)",
                        "Settings::real" + config + "LineTypeScale)",
                        "AcApDocManager::addReactor()",
                        "standard::initLayerMaps()",
                        "Settings::integer" + config + "nAlignTypeForVPipeDim4)",
                        "QrsExport::FindFile(CmdConfig.xml)",
                        "AcEditor::addReactor()",
                        "AcEditor::addReactor()"};
    calls.insert(calls.end(), rest.begin(), rest.end());
    return calls;
}

const Calls kExpectedUnloading = {
    "AcEditor::removeReactor()",       "AcEdCommandStack::removeGroup(QRS_PIPESTSTEM)",
    "CLayerToolBar::Release()",        "standard::releaseStandard()",
    "AcApDocManager::removeReactor()", "Settings::setInteger(Software\\QRS\\PWX\\PWXConfig, nAlignTypeForVPipeDim4, 0)",
    "AcEditor::removeReactor()",       "AfxTermExtensionModule()"};

// The systems of the standard are many: one entry stands for all names told in a row.
Calls gathered(const Calls& calls) {
    Calls out;
    for (const std::string& call : calls) {
        const std::string name = call.rfind("SetPipeSystemName(", 0) == 0 ? "SetPipeSystemName" : call;
        if (name != "SetPipeSystemName" || out.empty() || out.back() != name) out.push_back(name);
    }
    return out;
}

// One call a line, so that a difference shows the call.
std::string lines(const Calls& calls) {
    std::string text;
    for (const std::string& call : calls)
        text += call + "\n";
    return text;
}

class Loading : public Frame {
  protected:
    void load() {
        platform::Error error;
        ASSERT_TRUE(application.loadPlugin(QRS_MODULE_FILE, error)) << error.message;
    }
    void unload() {
        platform::Error error;
        ASSERT_TRUE(application.unloadPlugin(L"qrs_pipeSystem", error)) << error.message;
    }
    static AcEdCommandStack* commands() { return acedRegCmds; }
};

void olderCommand() {}

}  // namespace

TEST_F(Loading, CallsTheHostInTheStatedOrderEveryTime) {
    open(drawingText({{"0"}, {"A", 1}}, {{"0"}}));
    std::filesystem::copy_file(QRS_SOURCE_DIR "/data/pwx.qdsl", folder.path() / "pwx.qdsl");
    const std::wstring standardFile = platform::innerPath(folder.path() / "pwx.qdsl");
    const std::vector<std::wstring> before = application.commandNames();
    for (int round = 0; round < 2; ++round) {
        platform::CallRecorder recorder;
        load();
        EXPECT_EQ(lines(gathered(recorder.calls())), lines(expectedLoading(standardFile)));
        const std::vector<std::wstring> names = application.commandNames();
        EXPECT_EQ(names.size(), before.size() + std::size(kCommands));
        recorder.clear();
        unload();
        EXPECT_EQ(lines(gathered(recorder.calls())), lines(kExpectedUnloading));
        EXPECT_EQ(application.commandNames(), before);
        // The host tells of reactors and filters that are left behind.
        EXPECT_EQ(terminal.transcript.find(L"<error>"), std::wstring::npos) << platform::toUtf8(terminal.transcript);
    }
    EXPECT_FALSE(application.hasUnsavedChanges());
}

TEST_F(Loading, TakesOverTheNamesOfItsOlderSibling) {
    open(drawingText({{"0"}}, {{"0"}}));
    for (const char* name : kStale) {
        const std::wstring wide = platform::fromUtf8(name);
        ASSERT_EQ(commands()->addCommand(L"TAPI_CMD", wide.c_str(), wide.c_str(), 0, &olderCommand), Acad::eOk);
    }
    commands()->addCommand(L"TAPI_CMD", L"other", L"other", 0, &olderCommand);
    load();
    EXPECT_EQ(commands()->lookupGlobalCmd(L"tcgj"), nullptr);
    EXPECT_NE(commands()->lookupGlobalCmd(L"other"), nullptr);
    for (const Command& command : kCommands) {
        const AcEdCommand* found = commands()->lookupGlobalCmd(platform::fromUtf8(command.name).c_str());
        ASSERT_NE(found, nullptr) << command.name;
        EXPECT_NE(found->functionAddr(), &olderCommand) << command.name;
        EXPECT_EQ(found->commandFlags(), command.flags) << command.name;
    }
    std::size_t count = 0;
    const std::unique_ptr<AcEdCommandIterator> all(commands()->iterator());
    for (; !all->done(); all->next())
        if (all->commandGroup() == std::wstring(L"QRS_PIPESTSTEM")) ++count;
    EXPECT_EQ(count, std::size(kCommands));
    unload();
    EXPECT_EQ(commands()->removeGroup(L"TAPI_CMD"), Acad::eOk);
}

// Drawings that open and close while the module is loaded have their entries from message to message.
TEST_F(Loading, KeepsAnEntryForEachDrawingFromItsLoadingToItsEnd) {
    open(drawingText({{"0"}}, {{"0"}}));
    load();
    platform::CallRecorder recorder;
    const auto calls = [&](const std::string& name) {
        return std::count(recorder.calls().begin(), recorder.calls().end(), name);
    };
    platform::Error error;
    application.newDocument();
    EXPECT_EQ(calls("AcEditor::addReactor()"), 1);
    ASSERT_TRUE(application.closeDocument(error)) << error.message;
    EXPECT_EQ(calls("AcEditor::removeReactor()"), 1);
    recorder.clear();
    unload();
    EXPECT_EQ(calls("AcEditor::removeReactor()"), 2);
}

// Of drawings that were open before, only the current one has an entry; the messages about the others find none.
TEST_F(Loading, DrawingsWithoutEntryAreLeftAlone) {
    open(drawingText({{"0"}}, {{"0"}}));
    platform::Error error;
    application.newDocument();
    platform::CallRecorder recorder;
    const auto reactors = [&](const std::string& change) {
        const auto found = std::count(recorder.calls().begin(), recorder.calls().end(), "AcEditor::" + change);
        recorder.clear();
        return found;
    };
    load();
    EXPECT_EQ(reactors("addReactor()"), 2);  // the command reactor and that of the current drawing
    ASSERT_TRUE(application.closeDocument(error)) << error.message;
    EXPECT_EQ(reactors("removeReactor()"), 1);
    ASSERT_TRUE(application.closeDocument(error)) << error.message;
    EXPECT_EQ(reactors("removeReactor()"), 0);
    unload();
    EXPECT_EQ(reactors("removeReactor()"), 1);
}

TEST_F(Loading, LoadsAndUnloadsWithoutAnyDrawing) {
    load();
    const std::wstring transcript = run({L"UnFrozenAllLayer", L"SetAllPipeLayOpen", L"UnLockSelLayer"});
    EXPECT_EQ(count(transcript, L" needs an open drawing."), 3u) << platform::toUtf8(transcript);
    unload();
    load();
}

}  // namespace qrs::test
