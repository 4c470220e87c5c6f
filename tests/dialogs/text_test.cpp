// Dialogs asked as text: what is printed, what answers mean, and what closes them.
#include <gtest/gtest.h>

#include <deque>
#include <filesystem>

#include "../frame/support.h"
#include "aced.h"
#include "afxwin.h"
#include "host/platform/dialogtext.h"
#include "host/platform/language.h"

using namespace qrs::platform;

namespace {

class Lines : public QuestionLine {
  public:
    void print(std::wstring_view text) override { transcript += text; }
    bool ask(const std::wstring& prompt, const ExpectedAnswer& expected, std::wstring& answer) override {
        lastPrompt = prompt;
        lastExpected = expected;
        if (answers.empty()) return false;
        answer = answers.front();
        answers.pop_front();
        transcript += L"<" + answer + L">\n";
        return true;
    }

    std::deque<std::wstring> answers;
    std::wstring lastPrompt;
    ExpectedAnswer lastExpected;
    std::wstring transcript;
};

class TextDialog : public ::testing::Test {
  protected:
    TextDialog() {
        dialog.addLabel(L"说明");
        box = &dialog.addCheckBox(L"自动, 全部=是");
        dialog.addCheckBox(L"左", true);
        right = &dialog.addCheckBox(L"右");
        list = &dialog.addList(L"图层", {L"图层名", L"颜色"}, ListKind::Many);
        for (const wchar_t* name : {L"0", L"3", L"给排-管线", L"给排-立管", L"标注"})
            list->addRow({name, L"7"});
        edit = &dialog.addEdit(L"名称:", L"旧");
        edit->refuse = [](const std::wstring& text) { return std::wstring(text == L"坏" ? L"不行。" : L""); };
        combo = &dialog.addCombo(L"线型", {L"实线", L"虚线"}, L"实线");
        button = &dialog.addButton(L"拾取<", [this] { ++presses; });
    }

    int show(std::deque<std::wstring> answers) {
        lines.answers = std::move(answers);
        lines.transcript.clear();
        dialog.reopen();
        return presenter.showDialog(dialog);
    }
    std::wstring chosen() const {
        std::wstring marks;
        for (const ListRow& row : list->rows)
            marks += row.chosen ? L'x' : L'-';
        return marks;
    }

    Dialog dialog{L"试验"};
    Control *box, *right, *list, *edit, *combo, *button;
    Lines lines;
    TextPresenter presenter{lines};
    int presses = 0;
};

}  // namespace

TEST_F(TextDialog, PrintsItselfOnceAndThenWhatChanges) {
    EXPECT_EQ(show({L"6", L"拾取", L"OK"}), kDialogOk);
    EXPECT_EQ(lines.transcript,
              L"\n试验\n"
              L"说明\n"
              L"   1 [ ] 自动, 全部=是\n"
              L"   2 [x] 左\n"
              L"   3 [ ] 右\n"
              L"图层\n"
              L"         图层名     颜色\n"
              L"   4 [ ] 0          7\n"
              L"   5 [ ] 3          7\n"
              L"   6 [ ] 给排-管线  7\n"
              L"   7 [ ] 给排-立管  7\n"
              L"   8 [ ] 标注       7\n"
              L"   9 名称 = 旧\n"
              L"  10 线型 = 实线\n"
              L"  11 > 拾取<\n"
              L"<6>\n"
              L"   6 [x] 给排-管线  7\n"
              L"<拾取>\n"
              L"<OK>\n");
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(lines.lastPrompt, L"Number, name or name=value [?/OK/Cancel] <OK>: ");
    EXPECT_EQ(lines.lastExpected.words,
              (std::vector<std::wstring>{L"OK", L"Cancel", L"确定", L"取消", L"自动, 全部=是", L"左", L"右", L"0", L"3",
                                         L"给排-管线", L"给排-立管", L"标注", L"名称", L"线型", L"拾取"}));
    EXPECT_FALSE(lines.lastExpected.isFolder);
}

TEST_F(TextDialog, SpeaksTheLanguageChosen) {
    setLanguage(Language::Chinese);
    show({L"99", L"OK"});
    setLanguage(Language::English);
    EXPECT_EQ(lines.lastPrompt, L"编号、名称或 名称=值 [?/确定/取消] <确定>：");
    EXPECT_NE(lines.transcript.find(L"编号从 1 到 11。\n"), std::wstring::npos);
}

TEST_F(TextDialog, TakesNumbersNamesPatternsAndValues) {
    EXPECT_EQ(show({L"4-6,8", L" 0 , \"3\"", L"给排-*=1", L"自动, 全部=是", L"右", L"名称=新=1", L"线型=2", L""}),
              kDialogOk);
    EXPECT_EQ(chosen(), L"--xxx");
    EXPECT_TRUE(box->checked);
    EXPECT_TRUE(right->checked);
    EXPECT_EQ(edit->text, L"新=1");
    EXPECT_EQ(combo->text, L"虚线");
    // A number alone asks for the text of a field; a wrong one is asked again, Enter keeps, "." empties.
    EXPECT_EQ(show({L"9", L"坏", L"好", L"10", L"", L"*=0", L"9", L".", L"确定"}), kDialogOk);
    EXPECT_EQ(edit->text, L"");
    EXPECT_EQ(combo->text, L"虚线");
    EXPECT_EQ(chosen(), L"-----");
}

TEST_F(TextDialog, TellsWrongAnswersAndChangesNothing) {
    dialog.addCheckBox(L"标注");
    button->enabled = false;
    const std::deque<std::wstring> wrong = {L"13", L"0-3",  L"5-4",     L"4,没有",  L"没*",     L"标注",
                                            L"4,", L"拾取", L"4=maybe", L"名称=坏", L"线型=点", L"99999999999"};
    EXPECT_EQ(show(wrong), kDialogCancel);
    EXPECT_EQ(chosen(), L"-----");
    EXPECT_EQ(edit->text, L"旧");
    EXPECT_EQ(combo->text, L"实线");
    EXPECT_EQ(presses, 0);
    // Each answer is followed by exactly one line of its own.
    std::size_t at = lines.transcript.find(L"<13>");
    for (const std::wstring& answer : wrong) {
        EXPECT_EQ(lines.transcript.compare(at, answer.size() + 3, L"<" + answer + L">\n"), 0) << at;
        at = lines.transcript.find(L'\n', lines.transcript.find(L'\n', at) + 1) + 1;
    }
    EXPECT_EQ(at, lines.transcript.size());
}

TEST_F(TextDialog, IsClosedByWordsActionsAndTheEnd) {
    for (const wchar_t* word : {L"Cancel", L"取消", L"cancel"})
        EXPECT_EQ(show({L"1", word, L"1"}), kDialogCancel);
    EXPECT_EQ(show({}), kDialogCancel);
    // OK is refused until something is chosen; a list that grows is printed anew with its new numbers.
    dialog.refuseOk = [this] { return std::wstring(list->chosenRow() ? L"" : L"没有选择。"); };
    button->pressed = [this] {
        if (list->rows.size() > 5) return dialog.close(kDialogYes);
        list->rows.insert(list->rows.begin(), {{L"新", L"1"}, false});
    };
    EXPECT_EQ(show({L"", L"11", L"4", L"12"}), kDialogYes);
    EXPECT_NE(lines.transcript.find(L"<>\n没有选择。\n<11>\n\n试验\n"), std::wstring::npos) << lines.transcript;
    EXPECT_TRUE(list->rows[0].chosen);
}

TEST_F(TextDialog, AsksMessagesAndFolders) {
    const MessageQuestion question{L"合并?", L"", MessageButtons::YesNo, MessageIcon::Warning, 0};
    const auto answered = [&](std::deque<std::wstring> answers) {
        lines.answers = std::move(answers);
        return presenter.showMessage(question);
    };
    EXPECT_EQ(answered({L"y"}), kDialogYes);
    EXPECT_EQ(answered({L"what", L"否"}), kDialogNo);
    EXPECT_EQ(answered({L""}), kDialogYes);
    EXPECT_EQ(answered({}), kDialogNo);
    EXPECT_EQ(lines.lastExpected.words, (std::vector<std::wstring>{L"Yes", L"是", L"No", L"否"}));

    const Folder folder;
    const std::wstring inner = innerPath(folder.path());
    const auto path = [](const std::filesystem::path& native) { return fromUtf8(native.string()); };
    lines.answers = {path(folder.path() / "none"), path(folder.path()) + L"/"};
    EXPECT_EQ(presenter.chooseFolder(L"指定导入目录"), inner);
    lines.answers = {L""};
    EXPECT_EQ(presenter.chooseFolder(L"指定导入目录"), std::nullopt);
    EXPECT_TRUE(lines.lastExpected.isFolder);
}

TEST(ColorDialog, TakesIndexesNamesAndTrueColors) {
    qrs::test::ScriptTerminal terminal;
    qrs::host::Application application{terminal};
    AcCmColor color;
    color.setColorIndex(3);
    const auto choose = [&](std::deque<std::wstring> answers, bool meta, AcCm::DialogTabs tabs) {
        terminal.script = std::move(answers);
        return acedSetColorDialogTrueColor(color, meta, AcCmColor(), tabs);
    };
    EXPECT_TRUE(choose({L"256", L"1", L""}, false, AcCm::kACITab));
    EXPECT_EQ(color.colorIndex(), 1);
    EXPECT_TRUE(choose({L"ByLayer", L"10,20,30", L"蓝", L""}, false, AcCm::kACITab));
    EXPECT_EQ(color.colorIndex(), 5);
    EXPECT_TRUE(choose({L"10, 20,300", L"10, 20,30", L"OK"}, false, AcCm::kDefaultTabs));
    EXPECT_EQ(color.red() * 10000 + color.green() * 100 + color.blue(), 102030);
    EXPECT_TRUE(choose({L"随层", L""}, true, AcCm::kDefaultTabs));
    EXPECT_TRUE(color.isByLayer());
    EXPECT_FALSE(choose({L"2", qrs::test::ScriptTerminal::kEsc}, true, AcCm::kDefaultTabs));
    EXPECT_TRUE(color.isByLayer());
    terminal.script = {L""};
    EXPECT_EQ(AfxMessageBox(L"是否继续?", MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2), IDNO);
}
