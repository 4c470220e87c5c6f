// The layer control panel, asked as text and shown as a window that stays while commands run.
#include <algorithm>

#include "../frame/standardframe.h"
#include "host/platform/dialog.h"
#include "host/platform/window.h"
#include "standard/holder.h"

namespace qrs::test {

namespace {

class Panel : public StandardFrame {
  protected:
    bool layerIs(const wchar_t* name, bool (AcDbLayerTableRecord::*has)() const) const {
        const AcDbLayerTablePointer table(database(), AcDb::kForRead);
        AcDbLayerTableRecord* record = nullptr;
        if (table->getAt(name, record, AcDb::kForRead) != Acad::eOk) return false;
        const bool result = (record->*has)();
        record->close();
        return result;
    }
    // As text, at every call.
    bool asks() { return run({L"tckz", L"确定"}).find(L"图层控制\n") != std::wstring::npos; }
};

// Windows whose user is the test.
class Screen : public platform::DialogPresenter {
  public:
    Screen() : before_(platform::setDialogPresenter(this)) {}
    ~Screen() override { platform::setDialogPresenter(before_); }
    bool hasPanes() const override { return true; }
    std::unique_ptr<platform::Pane> showPane(platform::Dialog& dialog, void* window) override {
        if (isRefusing) return nullptr;
        pane = &dialog;
        paneWindow = window;
        return std::make_unique<Shown>(*this);
    }
    int showDialog(platform::Dialog&) override { return platform::kDialogCancel; }
    int showMessage(const platform::MessageQuestion&) override { return platform::kDialogCancel; }
    std::optional<std::wstring> chooseFolder(const std::wstring&) override { return std::nullopt; }

    bool isShown() const { return paneWindow && platform::isWindowShown(paneWindow); }

    platform::Dialog* pane = nullptr;
    void* paneWindow = nullptr;
    int updates = 0;
    bool isRefusing = false;

  private:
    class Shown : public platform::Pane {
      public:
        explicit Shown(Screen& screen) : screen_(screen) {}
        ~Shown() override { screen_.pane = nullptr; }
        void update() override { ++screen_.updates; }
        bool takeMessage(void*) override { return false; }

      private:
        Screen& screen_;
    };
    platform::DialogPresenter* before_;
};

platform::Control& controlOf(platform::Dialog& dialog, platform::ControlKind kind) {
    return *std::find_if(dialog.controls().begin(), dialog.controls().end(),
                         [kind](const platform::Control& control) { return control.kind == kind; });
}

platform::Control& buttonOf(platform::Dialog& dialog, const std::wstring& caption) {
    return *std::find_if(dialog.controls().begin(), dialog.controls().end(),
                         [&](const platform::Control& control) { return control.caption == caption; });
}

// Names, states and systems of the layers listed.
std::wstring listed(platform::Dialog& dialog) {
    std::wstring text;
    for (const platform::ListRow& row : controlOf(dialog, platform::ControlKind::List).rows)
        text += row.cells[0] + L"|" + row.cells[1] + L"|" + row.cells[3] + L"\n";
    return text;
}

}  // namespace

TEST_F(Panel, ShowsStatesAndChangesThem) {
    run({L"tckz", L"给排-*", L"开", L"解冻", L"解锁", L"给排-*=0", L"给排-生活给水-立管", L"关", L"锁定", L"系统=雨水",
         L"给排-雨水-管线", L"冻结", L"确定"});
    EXPECT_NE(terminal.transcript.find(L"[ ] 给排-生活给水-管线  开 锁定  3"), std::wstring::npos)
        << terminal.transcript;
    EXPECT_FALSE(layerIs(L"给排-生活给水-管线", &AcDbLayerTableRecord::isLocked));
    EXPECT_TRUE(layerIs(L"给排-生活给水-立管", &AcDbLayerTableRecord::isOff));
    EXPECT_TRUE(layerIs(L"给排-生活给水-立管", &AcDbLayerTableRecord::isLocked));
    EXPECT_TRUE(layerIs(L"给排-雨水-管线", &AcDbLayerTableRecord::isFrozen));
    EXPECT_FALSE(layerIs(L"新给水", &AcDbLayerTableRecord::isOff));
    EXPECT_TRUE(asks());
    // Buttons that run commands.
    run({L"tckz", L"全部显示", L"锁选中层", L"(handent \"100\")", L"", L"确定"});
    EXPECT_FALSE(layerIs(L"给排-生活给水-立管", &AcDbLayerTableRecord::isOff));
    EXPECT_TRUE(layerIs(L"新给水", &AcDbLayerTableRecord::isLocked)) << terminal.transcript;
}

TEST_F(Panel, ListsALayerOfTwoSystemsOnceUnderTheFirst) {
    const standard::Standard& current = *standard::currentStandard();
    PipeNode& first = *current.groups[0]->FindPipeSystem(0);
    PipeNode& second = *current.groups[0]->FindPipeSystem(1);
    ASSERT_EQ(first.PipeName, CString(L"生活给水"));
    second.FindLayerNode(CString(L"管线"))->LayerName = L"给排-生活给水-管线";
    const std::wstring line = L"给排-生活给水-管线|开 锁定|";
    const Screen screen;
    run({L"tckz"});
    ASSERT_TRUE(screen.pane);
    platform::Dialog& dialog = *screen.pane;
    EXPECT_EQ(count(listed(dialog), line), 1u) << platform::toUtf8(listed(dialog));
    EXPECT_EQ(count(listed(dialog), line + L"生活给水\n"), 1u);
    platform::Control& system = controlOf(dialog, platform::ControlKind::Combo);
    system.text = second.PipeName.GetString();
    system.changed();
    EXPECT_EQ(listed(dialog), line + system.text + L"\n");
    acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
}

TEST_F(Panel, IsShownHiddenAndShownAgain) {
    Screen screen;
    run({L"tckz"});
    ASSERT_TRUE(screen.isShown());
    run({L"tckz"});
    EXPECT_FALSE(screen.isShown());
    const int updates = screen.updates;
    run({L"SetAllPipeLayOpen"});
    EXPECT_EQ(screen.updates, updates) << "nobody sees it";
    void* const window = screen.paneWindow;
    run({L"tckz"});
    EXPECT_TRUE(screen.isShown());
    EXPECT_EQ(screen.paneWindow, window);
    EXPECT_NE(listed(*screen.pane).find(L"立管|开|生活给水\n"), std::wstring::npos);
    // Closed by its own button.
    platform::destroyWindow(window);
    run({L"tckz"});
    EXPECT_TRUE(screen.isShown());
    EXPECT_NE(screen.paneWindow, window);
    acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
    EXPECT_FALSE(screen.pane);
    EXPECT_FALSE(screen.isShown());
    acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
}

TEST_F(Panel, ButtonsOfTheWindowWorkOutsideOfCommands) {
    Screen screen;
    run({L"tckz"});
    ASSERT_TRUE(screen.pane);
    for (platform::ListRow& row : controlOf(*screen.pane, platform::ControlKind::List).rows)
        row.chosen = row.cells[0] == L"给排-生活给水-管线";
    buttonOf(*screen.pane, L"关").pressed();
    EXPECT_TRUE(layerIs(L"给排-生活给水-管线", &AcDbLayerTableRecord::isOff));
    EXPECT_EQ(application.currentDocument()->lockMode(true), AcAp::kNotLocked);
    EXPECT_NE(listed(*screen.pane).find(L"管线|关 锁定|生活给水\n"), std::wstring::npos);
    buttonOf(*screen.pane, L"全部显示").pressed();
    run({});
    EXPECT_FALSE(layerIs(L"给排-生活给水-管线", &AcDbLayerTableRecord::isOff)) << terminal.transcript;
    EXPECT_NE(listed(*screen.pane).find(L"管线|开 锁定|生活给水\n"), std::wstring::npos);
    buttonOf(*screen.pane, L"建筑标识<").pressed();
    EXPECT_NE(run({L"(handent \"100\")", L""}).find(L"\n1个图元加了建筑标识。"), std::wstring::npos)
        << terminal.transcript;
    EXPECT_NE(run({L"gpsbs"}).find(L"此命令不能单独使用"), std::wstring::npos) << "typed alone";
    // The window goes before the screen does.
    acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
    acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
}

TEST_F(Panel, FollowsCommandsAndClosesAtUnload) {
    Screen screen;
    run({L"tckz"});
    ASSERT_TRUE(screen.pane);
    const auto shows = [&](const wchar_t* line) { return listed(*screen.pane).find(line) != std::wstring::npos; };
    EXPECT_TRUE(shows(L"立管|关|生活给水\n"));
    run({L"SetAllPipeLayOpen"});
    EXPECT_TRUE(shows(L"立管|开|生活给水\n"));
    // However the command ends.
    CString& name = standard::currentStandard()->groups[0]->FindPipeSystem(0)->PipeName;
    name = L"市政给水";
    run({L"LockSelLayer", ScriptTerminal::kEsc});
    EXPECT_TRUE(shows(L"立管|开|市政给水\n"));
    name = L"中水";
    std::filesystem::create_directory(folder.path() / "drawing_图层.txt");
    run({L"tcdc"});
    EXPECT_TRUE(shows(L"立管|开|中水\n"));
    EXPECT_GT(screen.updates, 3);
    // Another drawing has other layers.
    open(drawingText({{"0"}, {"给排-雨水-管线"}}, {}));
    EXPECT_FALSE(shows(L"立管"));
    EXPECT_TRUE(shows(L"给排-雨水-管线|开|"));
    platform::CallRecorder recorder;
    acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
    const std::vector<std::string>& calls = recorder.calls();
    const auto filter = std::find(calls.begin(), calls.end(), "acedRemoveFilterWinMsg()");
    EXPECT_NE(filter, calls.end());
    EXPECT_NE(std::find(calls.begin(), filter, "CLayerToolBar::Release()"), filter);
    EXPECT_NE(std::find(filter, calls.end(), "standard::releaseStandard()"), calls.end());
    EXPECT_FALSE(screen.pane);
    acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
}

TEST_F(Panel, IsPrintedWhereItsWindowCannotBeMade) {
    Screen screen;
    screen.isRefusing = true;
    const std::wstring told = run({L"tckz"});
    EXPECT_NE(told.find(L"图层控制窗口无法建立。"), std::wstring::npos) << platform::toUtf8(told);
    EXPECT_NE(told.find(L"给排-雨水-管线  开 冻结  2  雨水  管线\n"), std::wstring::npos) << platform::toUtf8(told);
}

}  // namespace qrs::test
