// Commands: looking them up, running them, transparent ones, texts sent to the command line.
#include <stdexcept>

#include "host/platform/callrecord.h"
#include "rxdict.h"
#include "support.h"

using namespace edtest;

namespace {

void first() {
    acutPrintf(L"\nfirst");
}

void second() {
    acutPrintf(L"\nsecond");
}

class Listener : public AcEditorReactor {
  public:
    std::vector<std::wstring> events;
    void commandWillStart(const ACHAR* name) override { events.push_back(std::wstring(L"start ") + name); }
    void commandEnded(const ACHAR* name) override { events.push_back(std::wstring(L"end ") + name); }
    void commandCancelled(const ACHAR* name) override { events.push_back(std::wstring(L"cancel ") + name); }
    void commandFailed(const ACHAR* name) override { events.push_back(std::wstring(L"fail ") + name); }
    void unknownCommand(const ACHAR* name) override { events.push_back(std::wstring(L"unknown ") + name); }
    void pickfirstModified() override { events.push_back(L"pickfirst"); }
};

class Commands : public EditorTest {
  protected:
    void SetUp() override { application->newDocument(); }
};

TEST_F(Commands, GroupsStackAndNamesAreUniqueWithinOne) {
    AcEdCommandStack* stack = acedRegCmds;
    ASSERT_NE(nullptr, stack);
    EXPECT_EQ(Acad::eOk, stack->addCommand(L"OLD", L"SHARED", L"GEMEINSAM", ACRX_CMD_MODAL, &first));
    EXPECT_EQ(Acad::eDuplicateKey, stack->addCommand(L"old", L"shared", L"x", ACRX_CMD_MODAL, &second));
    AcEdCommand* made = nullptr;
    EXPECT_EQ(Acad::eOk, stack->addCommand(L"NEW", L"shared", L"shared", ACRX_CMD_TRANSPARENT, &second, nullptr, -1,
                                           nullptr, &made));
    EXPECT_EQ(made, stack->lookupGlobalCmd(L"Shared")) << "the newest group is on top";
    EXPECT_EQ(Acad::eInvalidInput, stack->addCommand(nullptr, L"A", L"A", 0, &first));
    EXPECT_EQ(Acad::eInvalidInput, stack->addCommand(L"NEW", L"A", L"A", 0, nullptr));
    EXPECT_EQ(Acad::eKeyNotFound, stack->removeCmd(L"NONE", L"shared"));
    EXPECT_EQ(Acad::eInvalidInput, stack->removeCmd(L"NEW", nullptr));

    EXPECT_TRUE(run({L"shared", L"  _.Shared  ", L"gemeinsam"}));
    EXPECT_EQ(L"Command: shared\nsecond\nCommand:   _.Shared  \nsecond\nCommand: gemeinsam\nfirst\n", terminal.text);

    EXPECT_EQ(Acad::eOk, stack->removeCmd(L"NEW", L"SHARED"));
    EXPECT_EQ(&first, stack->lookupGlobalCmd(L"SHARED")->functionAddr());
    EXPECT_EQ(Acad::eKeyNotFound, stack->removeGroup(L"NEW")) << "an emptied group is gone";
    EXPECT_EQ(Acad::eOk, stack->removeGroup(L"OLD"));
    EXPECT_EQ(Acad::eKeyNotFound, stack->removeGroup(L"OLD"));
    EXPECT_EQ(nullptr, stack->lookupGlobalCmd(L"SHARED"));
}

TEST_F(Commands, TheRegistryMayHoldSomethingElse) {
    AcRxDictionary other;
    Adesk::UInt32 id = 0;
    AcRxObject* stack = acrxSysRegistry()->atPut(ACED_REGISTERED_COMMANDS, &other, id);
    EXPECT_EQ(nullptr, acedRegCmds);
    EXPECT_NE(nullptr, acedEditor);
    EXPECT_TRUE(run({L"REGEN"})) << "the editor does not depend on what others put there";
    acrxSysRegistry()->remove(ACED_REGISTERED_COMMANDS);
    EXPECT_EQ(nullptr, acedRegCmds);
    acrxSysRegistry()->atPut(ACED_REGISTERED_COMMANDS, stack, id);
    EXPECT_NE(nullptr, acedRegCmds);
    application.reset();
    EXPECT_EQ(nullptr, acedRegCmds);
    EXPECT_EQ(nullptr, acDocManager);
    EXPECT_EQ(RTERROR, acedPrompt(L"nobody listens"));
}

TEST_F(Commands, FailuresStopTheRunUnlessItKeepsGoing) {
    command<0>(L"FAILS", 0, [] { qrs::host::failCommand(L"No good."); });
    command<1>(L"THROWS", 0, [] { throw std::runtime_error("out of ink"); });
    command<2>(L"DONE", 0, [] { acutPrintf(L"\ndone\n"); });
    Listener listener;
    acedEditor->addReactor(&listener);
    acedEditor->addReactor(&listener);
    acedEditor->addReactor(nullptr);
    EXPECT_FALSE(run({L"nosuch a b", L"DONE"}));
    EXPECT_EQ(std::vector<std::wstring>{L"Unknown command \"nosuch\"."}, terminal.errors);
    EXPECT_EQ(1u, terminal.answers.size());
    EXPECT_FALSE(run({L"FAILS", L"nosuch x", L"", L"THROWS", L"DONE"}, true));
    EXPECT_EQ((std::vector<std::wstring>{L"No good.", L"Unknown command \"nosuch\".", L"THROWS failed: out of ink"}),
              terminal.errors);
    EXPECT_NE(std::wstring::npos, terminal.text.find(L"done"));
    EXPECT_EQ((std::vector<std::wstring>{L"unknown NOSUCH", L"start FAILS", L"fail FAILS", L"unknown NOSUCH",
                                         L"start THROWS", L"fail THROWS", L"start DONE", L"end DONE"}),
              listener.events);
    acedEditor->removeReactor(&listener);
    EXPECT_TRUE(run({L"DONE"})) << "earlier failures do not count again";
    EXPECT_EQ(8u, listener.events.size());

    terminal.interactive = true;
    EXPECT_TRUE(run({L"DONE", L""}));
    EXPECT_EQ(L"Command: DONE\ndone\nCommand: \nDONE\ndone\n", terminal.text) << "Enter repeats for a person";
}

TEST_F(Commands, MistypedNamesAreTold) {
    command<0>(L"gxsz", 0, [] {});
    command<1>(L"gxgd", 0, [] {});
    command<2>(L"FrozenLayer", 0, [] {});
    command<3>(L"UnFrozenAllLayer", 0, [] {});
    const std::pair<std::wstring, std::wstring> rows[] = {
        {L"gxsx", L" Did you mean gxsz?"},
        {L"GXZS", L" Did you mean gxsz?"},
        {L"gx", L" Did you mean gxsz or gxgd?"},
        {L"gxxx", L""},
        {L"'_frozenlayr", L" Did you mean FrozenLayer?"},
        {L"unfroz", L" Did you mean UnFrozenAllLayer?"},
        {L"clayr", L" Did you mean CLAYER?"},
        {L"x", L""},
        {std::wstring(5000, L'g'), L""},
        {L"图层管理", L""},
    };
    for (const auto& [typed, hint] : rows) {
        EXPECT_FALSE(run({typed}));
        EXPECT_EQ(std::vector<std::wstring>{L"Unknown command \"" + typed + L"\"." + hint}, terminal.errors);
    }
    EXPECT_FALSE(run(std::deque<std::wstring>(21, L"gxsx"), true));
    EXPECT_NE(std::wstring::npos, terminal.errors[19].find(L"gxsz")) << terminal.errors[19];
    EXPECT_EQ(L"Unknown command \"gxsx\".", terminal.errors[20]);
}

TEST_F(Commands, WordsBehindTheNameAreAnswers) {
    std::vector<std::wstring> got;
    const auto ask = [&](int cronly) {
        ACHAR text[64] = L"?";
        const int result = acedGetString(cronly, L"\nText: ", text, 64);
        got.push_back(result == RTNORM ? text : L"<" + std::to_wstring(result) + L">");
    };
    command<0>(L"ASK", 0, [&] { ask(0), ask(0), ask(1); });
    command<1>(L"EVER", 0, [&] {
        ACHAR text[64];
        while (acedGetString(0, L"\nMore: ", text) == RTNORM)
            got.push_back(text);
        acedGetString(0, L"\nOnce more: ", text);
    });
    Listener listener;
    acedEditor->addReactor(&listener);
    EXPECT_TRUE(
        run({L"ASK  one   two three  and four ", L"ASK", L"(a \"b c\" (d e)) x", L" whole line ", L"EVER", L"1"}));
    EXPECT_EQ((std::vector<std::wstring>{L"one", L"two", L"three  and four", L"(a \"b c\" (d e))", L"x",
                                         L" whole line ", L"1"}),
              got);
    EXPECT_EQ(
        L"Command: ASK  one   two three  and four \nText: one\nText: two\nText: three  and four\n"
        L"Command: ASK\nText: (a \"b c\" (d e)) x\nText: x\nText:  whole line \n"
        L"Command: EVER\nMore: 1\nMore: *Cancel*\n",
        terminal.text);
    EXPECT_EQ(
        (std::vector<std::wstring>{L"start ASK", L"end ASK", L"start ASK", L"end ASK", L"start EVER", L"cancel EVER"}),
        listener.events);
    acedEditor->removeReactor(&listener);
}

TEST_F(Commands, TransparentCommandsRunInsidePrompts) {
    std::wstring answer;
    std::wstring names;
    command<0>(L"OUTER", 0, [&] {
        acedInitGet(0, L"Yes No");
        ACHAR text[64] = L"";
        acedGetKword(L"\nGo on? [Yes/No]: ", text);
        answer = text;
    });
    command<1>(L"INNER", ACRX_CMD_TRANSPARENT, [&] {
        names = textVariable(L"CMDNAMES");
        ACHAR text[64] = L"";
        acedGetString(0, L"\nInner: ", text);
        acutPrintf(L"\ninner got %s\n", text);
    });
    EXPECT_TRUE(run({L"OUTER", L"'inner", L"'INNER", L"abc", L"'OUTER", L"y"}));
    EXPECT_EQ(L"OUTER'INNER", names);
    EXPECT_EQ(L"Yes", answer) << "the keywords of the outer prompt outlast the inner one";
    EXPECT_EQ(
        L"Command: OUTER\nGo on? [Yes/No]: 'inner\nInner: 'INNER\n"
        L"** Transparent commands may not be nested **\nInner: abc\ninner got abc\nResuming OUTER command.\n"
        L"Go on? [Yes/No]: 'OUTER\n** That command may not be invoked transparently **\nGo on? [Yes/No]: y\n",
        terminal.text);
    EXPECT_TRUE(run({L"'INNER", L"x"})) << "the mark means nothing at the command prompt";
    EXPECT_EQ(L"INNER", names);
}

TEST_F(Commands, SentTextIsTypedWhenTheCommandHasEnded) {
    std::vector<std::wstring> got;
    command<0>(L"-LAY", 0, [&] {
        ACHAR text[64] = L"";
        const int result = acedGetString(0, L"\nOption: ", text);
        got.push_back(result == RTCAN ? L"lay cancelled" : text);
    });
    command<1>(L"R", 0, [&] { got.push_back(L"r"); });
    command<2>(L"SENDS", 0, [&] {
        AcApDocument* document = curDoc();
        acDocManager->sendStringToExecute(document, L"\x1b-lay\n\x1b");
        acDocManager->sendStringToExecute(document, L"r\n", true, false, false);
        ACHAR text[64] = L"";
        acedGetString(0, L"\nOwn: ", text);
        got.push_back(text);
        EXPECT_EQ(Acad::eNoDocument, acDocManager->sendStringToExecute(nullptr, L"x"));
        EXPECT_EQ(Acad::eInvalidInput, acDocManager->sendStringToExecute(document, nullptr));
    });
    EXPECT_TRUE(run({L"SENDS mine", L"R"}));
    EXPECT_EQ((std::vector<std::wstring>{L"mine", L"lay cancelled", L"r", L"r"}), got);
    EXPECT_EQ(L"Command: SENDS mine\nOwn: mine\nCommand: -lay\nOption: *Cancel*\nCommand: R\n", terminal.text);

    got.clear();
    acDocManager->sendStringToExecute(curDoc(), L"^C^C-lay abc \n-lay ");
    EXPECT_TRUE(run({L"typed", L"R"}));
    EXPECT_EQ((std::vector<std::wstring>{L"abc", L"typed", L"r"}), got);
    got.clear();
    acDocManager->sendStringToExecute(curDoc(), L"-l");
    EXPECT_TRUE(run({L"ay half", L"R"})) << "what is not ended goes on with what is typed";
    EXPECT_EQ((std::vector<std::wstring>{L"half", L"r"}), got);
}

TEST_F(Commands, ProgramsCallCommandsWithAnswers) {
    std::vector<std::wstring> got;
    command<0>(L"TWO", 0, [&] {
        for (int i = 0; i < 2; ++i) {
            ACHAR text[64] = L"";
            const int result = acedGetString(0, L"\nText: ", text);
            got.push_back(result == RTNORM ? text : L"cancelled");
        }
    });
    std::vector<int> results;
    command<1>(L"CALLS", 0, [&] {
        results.push_back(acedCommandS(RTSTR, L"_TWO", RTSTR, L"a b", RTREAL, 2.5, RTNONE));
        results.push_back(acedCommandS(RTSTR, L"TWO", RTSTR, L"\\", RTSTR, L"", RTNONE));
        results.push_back(acedCommandS(RTSTR, L"TWO", RTSHORT, 7, RTNONE));
        results.push_back(acedCommandS(RTSTR, L"NOSUCH", RTNONE));
        results.push_back(acedCommandS(RTSTR, L"TWO", 4711, RTNONE));
        results.push_back(acedCommandS(RTNONE));
    });
    EXPECT_FALSE(run({L"CALLS", L"from the user"}));
    EXPECT_EQ((std::vector<int>{RTNORM, RTNORM, RTCAN, RTERROR, RTREJ, RTNORM}), results);
    EXPECT_EQ((std::vector<std::wstring>{L"a b", L"2.5", L"from", L"", L"7", L"cancelled"}), got);
}

TEST_F(Commands, CallsAreRecordedInOrder) {
    const qrs::platform::CallRecorder recorder;
    Listener listener;
    acedRegCmds->removeCmd(L"TAPI_CMD", L"hbtc");
    acedRegCmds->addCommand(L"G", L"hbtc", L"hbtc", 2, &first);
    acedEditor->addReactor(&listener);
    acedEditor->removeReactor(&listener);
    acedRegCmds->removeGroup(L"G");
    EXPECT_EQ((std::vector<std::string>{"AcEdCommandStack::removeCmd(TAPI_CMD, hbtc)",
                                        "AcEdCommandStack::addCommand(G, hbtc, hbtc, 2)", "AcEditor::addReactor()",
                                        "AcEditor::removeReactor()", "AcEdCommandStack::removeGroup(G)"}),
              recorder.calls());
}

}  // namespace
