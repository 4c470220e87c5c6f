// Documents and their reactors, locks, and the life of plug-ins.
#include "axlock.h"
#include "dbapserv.h"
#include "host/platform/files.h"
#include "rxdlinkr.h"
#include "rxmfcapi.h"
#include "support.h"

using namespace edtest;

namespace {

std::wstring titleOf(AcApDocument* document) {
    return document ? document->docTitle() : L"-";
}

class DocumentListener : public AcApDocManagerReactor {
  public:
    std::vector<std::wstring> events;
    void documentCreateStarted(AcApDocument* document) override { note(L"started", document); }
    void documentCreated(AcApDocument* document) override { note(L"created", document); }
    void documentToBeDestroyed(AcApDocument* document) override { note(L"to be destroyed", document); }
    void documentDestroyed(const ACHAR* name) override { events.push_back(std::wstring(L"destroyed ") + name); }
    void documentBecameCurrent(AcApDocument* document) override { note(L"current", document); }
    void documentToBeActivated(AcApDocument* document) override { note(L"to be activated", document); }
    void documentToBeDeactivated(AcApDocument* document) override { note(L"to be deactivated", document); }
    void documentActivated(AcApDocument* document) override { note(L"activated", document); }
    void documentTitleUpdated(AcApDocument* document) override { note(L"title", document); }
    void documentLockModeChanged(AcApDocument*, AcAp::DocLockMode before, AcAp::DocLockMode after, AcAp::DocLockMode,
                                 const ACHAR* name) override {
        events.push_back(L"lock " + std::to_wstring(before) + L">" + std::to_wstring(after) + L" " + name);
    }
    std::vector<std::wstring> take() { return std::exchange(events, {}); }

  private:
    void note(const wchar_t* event, AcApDocument* document) {
        events.push_back(std::wstring(event) + L" " + titleOf(document));
    }
};

class Documents : public EditorTest {
  protected:
    Folder folder;
};

TEST_F(Documents, ReactorsHearOfOpeningAndClosingInOrder) {
    DocumentListener listener;
    acDocManager->addReactor(&listener);
    application->newDocument();
    EXPECT_EQ(
        (std::vector<std::wstring>{L"started Drawing1.dxf", L"created Drawing1.dxf", L"to be activated Drawing1.dxf",
                                   L"current Drawing1.dxf", L"activated Drawing1.dxf"}),
        listener.take());
    AcApDocument* first = curDoc();
    application->newDocument();
    AcApDocument* second = curDoc();
    EXPECT_EQ((std::vector<std::wstring>{L"started Drawing2.dxf", L"created Drawing2.dxf",
                                         L"to be deactivated Drawing1.dxf", L"to be activated Drawing2.dxf",
                                         L"current Drawing2.dxf", L"activated Drawing2.dxf"}),
              listener.take());
    EXPECT_EQ(second->database(), acdbHostApplicationServices()->workingDatabase());
    EXPECT_EQ(first, acDocManager->document(first->database()));
    EXPECT_EQ(Acad::eOk, acDocManager->setCurDocument(first));
    EXPECT_EQ(first->database(), acdbHostApplicationServices()->workingDatabase());
    EXPECT_EQ(Acad::eOk, acDocManager->setCurDocument(first, AcAp::kNone, true));
    EXPECT_EQ((std::vector<std::wstring>{L"current Drawing1.dxf", L"to be deactivated Drawing2.dxf",
                                         L"to be activated Drawing1.dxf", L"activated Drawing1.dxf"}),
              listener.take());

    const std::filesystem::path saved = folder / "plan.dxf";
    ASSERT_TRUE(application->saveDocument(saved, error)) << error.message;
    EXPECT_EQ(std::vector<std::wstring>{L"title plan.dxf"}, listener.take());
    EXPECT_EQ(qrs::platform::innerPath(saved), first->fileName());
    EXPECT_EQ(qrs::platform::innerPath(folder.path()) + L"\\", textVariable(L"DWGPREFIX"));
    EXPECT_EQ(1, intVariable(L"DWGTITLED"));
    EXPECT_FALSE(application->hasUnsavedChanges());

    acDocManager->sendStringToExecute(first, L"NOSUCH\n");
    ASSERT_TRUE(application->closeDocument(error));
    EXPECT_EQ((std::vector<std::wstring>{L"to be destroyed plan.dxf", L"to be activated Drawing2.dxf",
                                         L"current Drawing2.dxf", L"activated Drawing2.dxf",
                                         L"destroyed " + qrs::platform::innerPath(saved)}),
              listener.take());
    EXPECT_TRUE(run({})) << "what was sent to the closed drawing is not typed into another";
    EXPECT_EQ(Acad::eNoDocument, acDocManager->closeDocument(first));
    ASSERT_TRUE(application->closeDocument(error));
    EXPECT_EQ(nullptr, curDoc());
    EXPECT_EQ(nullptr, acdbHostApplicationServices()->workingDatabase());
    EXPECT_FALSE(application->closeDocument(error));
    EXPECT_FALSE(run({L"REGEN"}));
    EXPECT_EQ(std::vector<std::wstring>{L"REGEN needs an open drawing."}, terminal.errors);
    EXPECT_FALSE(application->openDocument(folder / "missing.dxf", error));
    EXPECT_NE(std::string::npos, error.message.find("missing.dxf")) << error.message;
    acDocManager->removeReactor(&listener);
}

TEST_F(Documents, CommandsLockTheirDrawing) {
    application->newDocument();
    DocumentListener listener;
    acDocManager->addReactor(&listener);
    command<0>(L"LOCKS", 0, [&] {
        const AcAxDocLock lock;
        EXPECT_EQ(Acad::eOk, lock.lockStatus());
        EXPECT_EQ(Acad::eLockViolation, acDocManager->closeDocument(curDoc()));
    });
    EXPECT_TRUE(run({L"LOCKS"}));
    EXPECT_EQ((std::vector<std::wstring>{L"lock 2>4 LOCKS", L"lock 4>4 ", L"lock 4>4 ", L"lock 4>2 #LOCKS"}),
              listener.take());
    EXPECT_EQ(Acad::eLockViolation, acDocManager->unlockDocument(curDoc()));
    acDocManager->removeReactor(&listener);
}

TEST_F(Documents, FilesAreFoundInTheFolders) {
    const std::wstring inner = qrs::platform::innerPath(folder.path());
    folder.write("one.txt", "1");
    application->setSystemFolder(inner);
    ACHAR found[261] = L"";
    EXPECT_EQ(RTNORM, acedFindFile(L"one.txt", found));
    EXPECT_EQ(qrs::platform::joinPath(inner, L"one.txt"), found);
    EXPECT_EQ(RTERROR, acedFindFile(L"two.txt", found));
    EXPECT_EQ(Acad::eInvalidInput, acdbHostApplicationServices()->findFile(found, 3, L"one.txt"));
}

TEST_F(Documents, ProgressIsPassedOnInPercent) {
    EXPECT_EQ(-1, acedSetStatusBarProgressMeterPos(1));
    EXPECT_EQ(-1, acedSetStatusBarProgressMeter(L"x", 5, 5));
    EXPECT_EQ(0, acedSetStatusBarProgressMeter(L"x", -1000, 1000));
    for (int position = -1000; position <= 2000; position += 500)
        EXPECT_EQ(0, acedSetStatusBarProgressMeterPos(position));
    acedRestoreStatusBar();
    EXPECT_EQ((std::vector<int>{0, 25, 50, 75, 100, -1}), terminal.percents);
}

class Plugins : public EditorTest {
  protected:
    Folder folder;
    const std::filesystem::path plugin = QRS_TEST_PLUGIN;
    // What the plug-in printed since the last look.
    std::wstring told() { return std::exchange(terminal.text, std::wstring()); }
};

TEST_F(Plugins, LoadAndUnloadAnyNumberOfTimes) {
    application->newDocument();
    application->newDocument();
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(application->loadPlugin(plugin, error)) << error.message;
        EXPECT_EQ(L"init Drawing2.dxf\nload Drawing1.dxf\nload Drawing2.dxf\n", told());
        EXPECT_FALSE(application->loadPlugin(plugin, error));
        EXPECT_NE(std::string::npos, error.message.find("loaded already")) << error.message;
        EXPECT_TRUE(run({L"PLUGINWORK", L"PLUGINGOES"}));
        EXPECT_NE(std::wstring::npos, terminal.text.find(L"plugin works"));
        EXPECT_NE(std::wstring::npos, terminal.text.find(L"refused")) << "not from inside its own command";
        told();
        ASSERT_TRUE(application->unloadPlugin(L"EDITOR_TEST_PLUGIN", error)) << error.message;
        EXPECT_EQ(L"close Drawing1.dxf\nclose Drawing2.dxf\nunload Drawing2.dxf\n", told());
        EXPECT_FALSE(run({L"PLUGINWORK"}));
        EXPECT_FALSE(application->unloadPlugin(L"editor_test_plugin", error));
        EXPECT_TRUE(application->pluginNames().empty());
        told();
    }
    ASSERT_TRUE(application->loadPlugin(plugin, error)) << error.message;
    told();
    ASSERT_TRUE(application->closeDocument(error));
    EXPECT_EQ(L"close Drawing2.dxf\n", told());
    application->newDocument();
    EXPECT_EQ(L"load Drawing3.dxf\n", told());
    ASSERT_TRUE(run({L"PLUGINLOCK"}));
    EXPECT_FALSE(application->unloadPlugin(L"editor_test_plugin", error));
    EXPECT_NE(std::string::npos, error.message.find("locked")) << error.message;
    told();
    application.reset();
    EXPECT_EQ(L"close Drawing1.dxf\nclose Drawing3.dxf\nunload Drawing3.dxf\n", told())
        << "at the end locks do not count";
}

// Others' reactors may ask for it when the command is about to start or has just ended.
TEST_F(Plugins, StayWithTheirDrawingWhileACommandIsOnItsWay) {
    static bool unloaded;
    unloaded = false;
    class Unloader : public AcEditorReactor {
        void commandWillStart(const ACHAR*) override {
            unloaded |= acrxDynamicLinker->unloadModule(L"editor_test_plugin");
        }
        void commandEnded(const ACHAR*) override { unloaded |= acrxDynamicLinker->unloadModule(L"editor_test_plugin"); }
    } unloader;
    class Closer : public AcApDocManagerReactor {
        void documentLockModeWillChange(AcApDocument* document, AcAp::DocLockMode, AcAp::DocLockMode, AcAp::DocLockMode,
                                        const ACHAR*) override {
            unloaded |= acrxDynamicLinker->unloadModule(L"editor_test_plugin");
            EXPECT_EQ(Acad::eLockViolation, acDocManager->closeDocument(document));
        }
    } closer;
    application->newDocument();
    ASSERT_TRUE(application->loadPlugin(plugin, error)) << error.message;
    acedEditor->addReactor(&unloader);
    acDocManager->addReactor(&closer);
    EXPECT_TRUE(run({L"PLUGINWORK"}));
    EXPECT_NE(std::wstring::npos, terminal.text.find(L"plugin works"));
    EXPECT_FALSE(unloaded);
    acDocManager->removeReactor(&closer);
    EXPECT_TRUE(run({L"REGEN"}));
    EXPECT_TRUE(unloaded);
    acedEditor->removeReactor(&unloader);
}

TEST_F(Plugins, NothingOfACarelessOneStaysBehind) {
    application->newDocument();
    ASSERT_TRUE(application->loadPlugin(plugin, error)) << error.message;
    ASSERT_TRUE(run({L"PLUGINFORGETS", L"PLUGINLEFT", L"REGEN"}));
    EXPECT_EQ(std::wstring::npos, terminal.text.find(L"unloaded")) << "not while its reactor is called";
    ASSERT_TRUE(application->unloadPlugin(L"editor_test_plugin", error)) << error.message;
    ASSERT_EQ(2u, terminal.errors.size());
    EXPECT_NE(std::wstring::npos, terminal.errors[0].find(L"lost its papers"));
    EXPECT_NE(std::wstring::npos, terminal.errors[1].find(L"left 3 commands"));
    EXPECT_FALSE(run({L"PLUGINLEFT", L"REGEN"}));
}

TEST_F(Plugins, WhatCannotBeLoadedSaysWhy) {
    EXPECT_FALSE(application->loadPlugin(folder / "none.so", error));
    EXPECT_NE(std::string::npos, error.message.find("none.so")) << error.message;
    EXPECT_FALSE(application->loadPlugin(folder.write("text.so", "no library"), error));
    EXPECT_NE(std::string::npos, error.message.find("text.so")) << error.message;
    EXPECT_FALSE(application->loadPlugin(QRS_TEST_NOENTRY, error));
    EXPECT_NE(std::string::npos, error.message.find("it has no acrxEntryPoint")) << error.message;
    EXPECT_TRUE(application->pluginNames().empty());
    EXPECT_FALSE(acrxUnlockApplication(nullptr));
    EXPECT_FALSE(acrxUnlockApplication(&folder)) << "a handle nobody gave out";
}

}  // namespace
