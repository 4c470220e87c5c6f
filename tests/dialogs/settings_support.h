// Settings of installations: a presenter that answers dialogs, system folders, and a temporary folder of their own.
#pragma once

#include <sys/resource.h>

#include <map>
#include <optional>
#include <set>

#include "../frame/support.h"
#include "host/platform/dialog.h"
#include "qrs_kernal.h"
#include "qrs_options.h"
#include "qrs_public.h"
#include "rxregsvc.h"

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* application);

namespace qrs::test {

namespace fs = std::filesystem;

// Checks the boxes that are named and presses OK, or Cancel.
class Answers : public platform::DialogPresenter {
  public:
    Answers() : before_(platform::setDialogPresenter(this)) {}
    ~Answers() override { platform::setDialogPresenter(before_); }

    int showDialog(platform::Dialog& dialog) override {
        shown = dialog.title + L"|" + dialog.okCaption + L"|" + dialog.cancelCaption;
        for (platform::Control& control : dialog.controls()) {
            shown += L"|" + control.caption;
            if (control.kind == platform::ControlKind::CheckBox) control.checked = checked.count(control.caption) > 0;
        }
        return ok ? platform::kDialogOk : platform::kDialogCancel;
    }
    int showMessage(const platform::MessageQuestion&) override { return platform::kDialogCancel; }
    std::optional<std::wstring> chooseFolder(const std::wstring& title) override {
        folderTitle = title;
        return folder;
    }
    std::optional<std::wstring> chooseFile(const platform::FileQuestion&) override { return std::nullopt; }

    std::set<std::wstring> checked;
    bool ok = true;
    std::optional<std::wstring> folder;
    std::wstring shown;
    std::wstring folderTitle;

  private:
    platform::DialogPresenter* before_;
};

const std::set<std::wstring> kAllGroups = {L"初始设置", L"快捷命令 acad.pgp", L"工具条设置", L"线型库", L"图层设置",
                                           L"管材库",   L"用户图库"};
constexpr const wchar_t* kChooseFolder = L"导出到指定文件夹";
constexpr const char* kExported = "已经完成导出设置！安装新版后可以运行【导入设置】\n";
constexpr const char* kImported = "已经完成导入设置。\n";
constexpr const char* kRestart = "您更新了acad.pgp文件。需要重新启动ACAD才能生效。\n";

class InstalledSettings : public Frame {
  protected:
    InstalledSettings() {
        for (const char* name : {"tmp", "old", "new", "chosen"})
            fs::create_directory(folder.path() / name);
        const char* before = std::getenv("TMPDIR");
        if (before) temporary_ = before;
        setenv("TMPDIR", (folder.path() / "tmp").c_str(), 1);
        use("old");
        TDwgSettingDefaults::Current().Clear();
        acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
        open(drawingText({{"0"}}, {}));
    }
    ~InstalledSettings() override {
        acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
        QrsExport::SetSystemFolder({});
        if (temporary_) {
            setenv("TMPDIR", temporary_->c_str(), 1);
        } else {
            unsetenv("TMPDIR");
        }
    }

    // Another system folder with the settings of another user.
    void use(const std::string& system) {
        QrsExport::SetSystemFolder(platform::innerPath(folder.path() / system));
        platform::Error error;
        EXPECT_TRUE(platform::Settings::user().useFile(folder.path() / (system + ".ini"), error)) << error.message;
    }
    // What a command showed between its name and the next prompt for one.
    std::string command(std::deque<std::wstring> lines) {
        const std::string text = platform::toUtf8(run(std::move(lines)));
        const std::size_t begin = text.find('\n') + 1;
        return text.substr(begin, text.find("Command:", begin) - begin);
    }
    std::string exportInto(const std::optional<std::string>& chosen, std::set<std::wstring> groups) {
        answers.checked = std::move(groups);
        if (chosen) answers.checked.insert(kChooseFolder);
        answers.folder = platform::innerPath(folder.path() / chosen.value_or("chosen"));
        return command({L"dcsz"});
    }
    std::string importFrom(const std::optional<std::string>& chosen) {
        answers.folder = platform::innerPath(folder.path() / chosen.value_or("chosen"));
        std::string text = command({L"drsz", chosen ? L"2" : L""});
        const std::size_t answered = text.find(":<1>");
        return answered == std::string::npos ? text : text.substr(text.find('\n', answered) + 1);
    }

    // Everything in a folder: file names with their content, folders and links with what they are.
    std::map<std::string, std::string> filesIn(const std::string& name) const {
        std::map<std::string, std::string> all;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path() / name)) {
            const std::string path = entry.path().lexically_relative(folder.path() / name).string();
            all[path] = entry.is_symlink() ? "<link>" : entry.is_directory() ? "<folder>" : read(entry.path());
        }
        return all;
    }
    static std::string read(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // A standard with one system of that name.
    static std::string standard(const std::string& system) {
        std::string text = read(fs::path(QRS_SOURCE_DIR) / "tests/standard/small.qdsl");
        const std::string name = "J &amp; &lt;1&gt;";
        return text.replace(text.find(name), name.size(), system);
    }

    Answers answers;

  private:
    std::optional<std::string> temporary_;
};

}  // namespace qrs::test
