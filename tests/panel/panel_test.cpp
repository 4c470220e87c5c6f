// The layer control panel, asked as text and shown as a window that stays while commands run.
#include <algorithm>

#include "../frame/standardframe.h"
#include "acedads.h"
#include "host/platform/dialog.h"
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
    // The panel asks when it opens; it says nothing when it closes.
    bool opens() { return run({L"tckz", L"确定"}).find(L"图层控制\n") != std::wstring::npos; }
};

// A window whose user is the test.
class Window : public platform::DialogPresenter {
  public:
    explicit Window(std::function<void(platform::Dialog&)> use)
        : use_(std::move(use)), before_(platform::setDialogPresenter(this)) {}
    ~Window() override { platform::setDialogPresenter(before_); }
    int showDialog(platform::Dialog& dialog) override {
        use_(dialog);
        return platform::kDialogOk;
    }
    int showMessage(const platform::MessageQuestion&) override { return platform::kDialogCancel; }
    std::optional<std::wstring> chooseFolder(const std::wstring&) override { return std::nullopt; }

  private:
    std::function<void(platform::Dialog&)> use_;
    platform::DialogPresenter* before_;
};

platform::Control& controlOf(platform::Dialog& dialog, platform::ControlKind kind) {
    return *std::find_if(dialog.controls().begin(), dialog.controls().end(),
                         [kind](const platform::Control& control) { return control.kind == kind; });
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
    EXPECT_FALSE(opens()) << "it was open";
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
    const Window window([&](platform::Dialog& dialog) {
        EXPECT_EQ(count(listed(dialog), line), 1u) << platform::toUtf8(listed(dialog));
        EXPECT_EQ(count(listed(dialog), line + L"生活给水\n"), 1u);
        platform::Control& system = controlOf(dialog, platform::ControlKind::Combo);
        system.text = second.PipeName.GetString();
        system.changed();
        EXPECT_EQ(listed(dialog), line + system.text + L"\n");
    });
    run({L"tckz"});
}

TEST_F(Panel, FollowsCommandsAndClosesAtUnload) {
    bool shown = false;
    {
        const Window window([&](platform::Dialog& dialog) {
            shown = true;
            EXPECT_NE(listed(dialog).find(L"立管|关|生活给水\n"), std::wstring::npos);
            acedCommandS(RTSTR, L"SetAllPipeLayOpen", RTNONE);
            EXPECT_NE(listed(dialog).find(L"立管|开|生活给水\n"), std::wstring::npos);
            // However the command ends.
            CString& name = standard::currentStandard()->groups[0]->FindPipeSystem(0)->PipeName;
            name = L"市政给水";
            acedCommandS(RTSTR, L"LockSelLayer", RTNONE);
            EXPECT_NE(listed(dialog).find(L"立管|开|市政给水\n"), std::wstring::npos);
            name = L"中水";
            std::filesystem::create_directory(folder.path() / "drawing_图层.txt");
            acedCommandS(RTSTR, L"tcdc", RTNONE);
            EXPECT_NE(listed(dialog).find(L"立管|开|中水\n"), std::wstring::npos);
        });
        run({L"tckz"});
    }
    EXPECT_TRUE(shown);
    platform::CallRecorder recorder;
    acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
    const std::vector<std::string>& calls = recorder.calls();
    const auto filter = std::find(calls.begin(), calls.end(), "acedRemoveFilterWinMsg()");
    EXPECT_NE(filter, calls.end());
    EXPECT_NE(std::find(calls.begin(), filter, "CLayerToolBar::Release()"), filter);
    EXPECT_NE(std::find(filter, calls.end(), "standard::releaseStandard()"), calls.end());
    acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
    EXPECT_TRUE(opens());
}

}  // namespace qrs::test
