// Settings of installations: system folders of different users, and a temporary folder of their own.
#pragma once

#include <map>

#include "../folder.h"
#include "../frame/support.h"
#include "qrs_kernal.h"
#include "qrs_options.h"
#include "qrs_public.h"
#include "rxregsvc.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <share.h>
#else
#include "../platform/limits.h"
#endif

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* application);

namespace qrs::test {

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>;

constexpr const wchar_t* kAllGroups = L"1-7";
constexpr const char* kExported = "已经完成导出设置！安装新版后可以运行【导入设置】\n";
constexpr const char* kImported = "已经完成导入设置。\n";
constexpr const char* kRestart = "您更新了acad.pgp文件。需要重新启动ACAD才能生效。\n";
constexpr const char* kMissing = "没有找到导出的文件，请确认首先进行导出设置。\n";
constexpr const char* kRefused = "The default settings folder ";

// Keeps a long file from being written while it lives: the disk is full, or another program holds the file.
#if defined(_WIN32)
constexpr bool kHasLinks = false;
class NotWritable {
  public:
    explicit NotWritable(const fs::path& file) : held_(_wsopen(file.c_str(), _O_RDONLY, _SH_DENYWR)) {
        EXPECT_GE(held_, 0);
    }
    ~NotWritable() { _close(held_); }
    NotWritable(const NotWritable&) = delete;
    NotWritable& operator=(const NotWritable&) = delete;

  private:
    int held_;
};
inline void setTemporary(const fs::path& path) {
    _wputenv_s(L"TMP", path.c_str());
}
#else
constexpr bool kHasLinks = true;
class NotWritable {
  public:
    explicit NotWritable(const fs::path&) {}

  private:
    FileSizeLimit full_{10'000};
};
inline void setTemporary(const fs::path& path) {
    setenv("TMPDIR", path.c_str(), 1);
}
#endif

class InstalledSettings : public Frame {
  protected:
    InstalledSettings() {
        for (const char* name : {"tmp", "old", "new", "chosen"})
            fs::create_directory(folder.path() / name);
        setTemporary(folder.path() / "tmp");
        use("old");
        acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
        open(drawingText({{"0"}}, {}));
    }
    ~InstalledSettings() override {
        acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr);
        TDwgSettingDefaults::Current().Clear();
        QrsExport::SetSystemFolder({});
        setTemporary(temporary_);
    }

    // Another system folder with the settings of another user.
    void use(const std::string& system) {
        QrsExport::SetSystemFolder(platform::innerPath(folder.path() / system));
        platform::Error error;
        EXPECT_TRUE(platform::Settings::user().useFile(folder.path() / (system + ".ini"), error)) << error.message;
    }
    // What a command shows after its last question.
    std::string command(std::deque<std::wstring> lines) {
        const std::string text = platform::toUtf8(run(std::move(lines)));
        const std::size_t end = text.rfind("Command: ");
        std::size_t begin = 0;
        for (const char* question : {"Command: ", "<OK>: ", ":<1>", "目录: "}) {
            const std::size_t asked = text.rfind(question, end - 1);
            if (asked != std::string::npos) begin = std::max(begin, text.find('\n', asked) + 1);
        }
        return text.substr(begin, end - begin);
    }
    // To the default folder when none is chosen; the group is an answer that checks what is to be exported.
    std::string exportInto(const std::string& chosen, const std::wstring& group) {
        std::deque<std::wstring> lines = {L"dcsz", L"*=0", group};
        if (!chosen.empty()) lines.push_back(L"导出到指定文件夹");
        lines.push_back(L"OK");
        if (!chosen.empty()) lines.push_back(platform::innerPath(folder.path() / chosen));
        return command(std::move(lines));
    }
    std::string importFrom(const std::string& chosen) {
        return chosen.empty() ? command({L"drsz", L""})
                              : command({L"drsz", L"2", platform::innerPath(folder.path() / chosen)});
    }

    // A link, where the system has any; else a file.
    void link(const std::string& to, const std::string& name) const {
        if (kHasLinks) return fs::create_symlink(to, folder.path() / name);
        folder.write(name, "no link");
    }

    // Everything in a folder: file names with their content, folders and links with what they are.
    Files filesIn(const std::string& name) const {
        Files all;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path() / name)) {
            const std::string path = entry.path().lexically_relative(folder.path() / name).generic_u8string();
            all[path] = entry.is_symlink() ? "<link>" : entry.is_directory() ? "<folder>" : fileBytes(entry.path());
        }
        return all;
    }

  private:
    fs::path temporary_ = fs::temp_directory_path();
};

}  // namespace qrs::test
