// Dialogs as windows, used by another thread as a person would. They need a screen, if only one in memory.
#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "../folder.h"
#include "host/platform/codepage.h"
#include "host/platform/dialog.h"
#include "host/platform/files.h"
#include "host/platform/win32/handle.h"
#include "host/platform/window.h"

// After the system's main header.
#include <commctrl.h>

using namespace qrs::platform;

namespace {

constexpr UINT kSetSelection = WM_USER + 103;  // of a list of folders; the header that names it has a Folder, too

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

// A window below, at any depth, of a class and with a text; an empty text fits any.
HWND below(HWND parent, const std::wstring& windowClass, const std::wstring& text = {}) {
    struct Search {
        const std::wstring& windowClass;
        const std::wstring& text;
        HWND found;
    } search{windowClass, text, nullptr};
    const auto look = [](HWND window, LPARAM value) -> BOOL {
        auto& wanted = *reinterpret_cast<Search*>(value);
        wchar_t name[100] = {};
        GetClassNameW(window, name, 100);
        if (compareNoCase(name, wanted.windowClass) == 0 && (wanted.text.empty() || textOf(window) == wanted.text))
            wanted.found = window;
        return !wanted.found;
    };
    EnumChildWindows(parent, look, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// The text of the item that is chosen in the window's tree.
std::wstring chosenIn(HWND window) {
    const HWND tree = below(window, WC_TREEVIEWW);
    wchar_t text[300] = {};
    TVITEMW item{};
    item.mask = TVIF_TEXT | TVIF_HANDLE;
    item.hItem = TreeView_GetSelection(tree);
    item.pszText = text;
    item.cchTextMax = 300;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return text;
}

void click(HWND button) {
    PostMessageW(button, BM_CLICK, 0, 0);
}

// Waits for a dialog of this title (none: any) and uses it. With QRS_TEST_LOOK, milliseconds, there is time to look at
// it.
class Person {
  public:
    Person(std::wstring title, std::function<void(HWND)> use)
        : thread_([title = std::move(title), use = std::move(use)] {
              HWND window = nullptr;
              for (int waited = 0; waited < 2000 && !window; ++waited, Sleep(10))
                  window = find(title);
              if (!window) {
                  ADD_FAILURE() << "no window " << toUtf8(title) << " has come";
                  std::abort();  // the other thread waits for it for ever
              }
              Sleep(200);  // until it is filled
              wchar_t look[20] = {};
              if (GetEnvironmentVariableW(L"QRS_TEST_LOOK", look, 20) > 0) Sleep(wcstoul(look, nullptr, 10));
              use(window);
          }) {}
    ~Person() { thread_.join(); }

  private:
    static HWND find(const std::wstring& title) {
        HWND window = nullptr;
        while ((window = FindWindowExW(nullptr, window, L"#32770", title.empty() ? nullptr : title.c_str()))) {
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            if (process == GetCurrentProcessId() && IsWindowVisible(window)) break;
        }
        return window;
    }

    std::thread thread_;
};

}  // namespace

TEST(WindowsDialogs, ShowAndChangeEveryKindOfControl) {
    Dialog dialog(L"图层控制测试");
    Control& system = dialog.addCombo(L"系统", {L"全部", L"生活给水", L"污水"}, L"全部");
    Control& list = dialog.addList(L"图中的标准图层", {L"图层名", L"状态", L"颜色", L"系统", L"类型"}, ListKind::Many);
    list.addRow({L"给排-生活给水-管线", L"开", L"3", L"生活给水", L"管线"});
    list.addRow({L"给排-废水-立管", L"开 冻结 锁定", L"40", L"废水", L"立管"}, true);
    dialog.beginGroup(L"选项");
    Control& check = dialog.addCheckBox(L"全部打开");
    Control& height = dialog.addEdit(L"字高", L"3.5");
    height.refuse = [](const std::wstring& text) { return text == L"x" ? std::wstring(L"不是数字") : std::wstring(); };
    int pressed = 0;
    dialog.addButton(L"锁定", [&] {
        ++pressed;
        list.rows[0].cells[1] = L"开 锁定";
    });
    const Person person(dialog.title, [&](HWND window) {
        const HWND shown = below(window, WC_LISTVIEWW);
        const HWND header = ListView_GetHeader(shown);
        // No heading is cut, whatever stands below it.
        for (int i = 0; i < static_cast<int>(list.columns.size()); ++i) {
            RECT place{};
            SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&place));
            const int text = static_cast<int>(
                SendMessageW(shown, LVM_GETSTRINGWIDTHW, 0,
                             reinterpret_cast<LPARAM>(list.columns[static_cast<std::size_t>(i)].c_str())));
            EXPECT_GE(place.right - place.left, text + 16) << i;
        }
        EXPECT_FALSE(ListView_GetCheckState(shown, 0));
        EXPECT_TRUE(ListView_GetCheckState(shown, 1));
        SendMessageW(below(window, L"BUTTON", L"锁定"), BM_CLICK, 0, 0);
        SendMessageW(below(window, L"BUTTON", L"全部打开"), BM_CLICK, 0, 0);
        SendMessageW(below(window, L"EDIT", L"3.5"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"给5"));
        const HWND combo = below(window, L"COMBOBOX");
        SendMessageW(combo, CB_SETCURSEL, 2, 0);
        SendMessageW(window, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(combo));
        click(below(window, L"BUTTON", L"确定"));
    });
    EXPECT_EQ(showDialog(dialog), kDialogOk);
    EXPECT_EQ(pressed, 1);
    EXPECT_TRUE(check.checked);
    EXPECT_EQ(height.text, L"给5");
    EXPECT_EQ(system.text, L"污水");
    EXPECT_TRUE(list.rows[1].chosen);
    EXPECT_FALSE(list.rows[0].chosen);
}

TEST(WindowsDialogs, MessagesAnswerWithTheirButton) {
    MessageQuestion question;
    question.title = L"合并图层测试";
    question.text = L"图层 给排-生活给水-管线 已存在，是否合并？";
    question.buttons = MessageButtons::YesNoCancel;
    question.icon = MessageIcon::Question;
    const Person person(question.title,
                        [](HWND window) { PostMessageW(window, WM_COMMAND, MAKEWPARAM(IDYES, BN_CLICKED), 0); });
    EXPECT_EQ(showMessage(question), kDialogYes);
}

TEST(WindowsDialogs, FoldersAreChosenByTheirPath) {
    const Folder scratch;
    const std::wstring folder = innerPath(scratch.path());
    // The system names the window.
    const Person person(L"", [&](HWND window) {
        EXPECT_TRUE(below(window, L"STATIC", L"选择导出文件夹"));
        // The list of folders fills itself little by little.
        for (int tries = 0; tries < 50 && chosenIn(window) != scratch.path().filename(); ++tries, Sleep(100))
            SendMessageW(window, kSetSelection, TRUE, reinterpret_cast<LPARAM>(folder.c_str()));
        PostMessageW(window, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    });
    EXPECT_EQ(chooseFolder(L"选择导出文件夹"), folder);
}

TEST(WindowsDialogs, APaneStaysInItsWindowUntilThatGoes) {
    WindowLook look;
    look.windowClass = plainWindowClass(0, nullptr, nullptr, nullptr);
    look.title = L"图层控制";
    look.style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
    void* const window = createWindow(look, nullptr);
    ASSERT_TRUE(window);
    Dialog dialog(look.title);
    Control& list = dialog.addList(L"图层", {L"图层名", L"颜色"}, ListKind::Many);
    int pressed = 0;
    dialog.addButton(
        L"关<",
        [&] {
            ++pressed, list.addRow({L"给排-洁具", L"7"});
        },
        true);
    const std::unique_ptr<Pane> pane = showPane(dialog, window);
    ASSERT_TRUE(pane);
    EXPECT_FALSE(isWindowShown(window));
    showWindow(window, SW_SHOWNOACTIVATE);
    EXPECT_TRUE(isWindowShown(window));
    const HWND shown = static_cast<HWND>(window);
    const HWND rows = below(shown, WC_LISTVIEWW);
    ASSERT_TRUE(rows);
    EXPECT_FALSE(below(shown, L"BUTTON", dialog.okCaption)) << "nothing to close it with";
    SendMessageW(below(shown, L"BUTTON", L"关<"), BM_CLICK, 0, 0);
    EXPECT_EQ(pressed, 1);
    EXPECT_TRUE(isWindowShown(window)) << "it does not step aside";
    EXPECT_EQ(ListView_GetItemCount(rows), 1);
    list.addRow({L"给排-地漏", L"6"});
    pane->update();
    EXPECT_EQ(ListView_GetItemCount(rows), 2);
    // Esc hides it, and it can be shown again.
    SendMessageW(GetParent(rows), WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
    EXPECT_FALSE(isWindowShown(window));
    showWindow(window, SW_SHOWNOACTIVATE);
    EXPECT_TRUE(isWindowShown(window));
    EXPECT_TRUE(destroyWindow(window));
    EXPECT_FALSE(isWindow(window));
    pane->update();  // nothing is there any more
}
