// A session of the program with its module: an input types commands, then all is taken back, and the drawing must be
// what it was, byte for byte.
#pragma once

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "host/editor/hostapp.h"

namespace qrs::fuzz {

class Session : private host::Terminal {
  public:
    // The one of the process. It has the folder of the data to itself, and settings of its own.
    static Session& instance();

    // Opens an example, types what next gives until that is nothing, and takes all back. At the prompt for a command
    // next may give one of kCommands alone: those that write nothing outside the drawing.
    struct Typed {
        host::Reply reply = host::Reply::End;
        std::wstring line;
    };
    using Next = std::function<Typed(bool isCommandPrompt)>;
    void run(std::size_t example, const Next& next);

    // Further plug-ins, until all are loaded anew.
    void load(std::initializer_list<std::filesystem::path> plugins);
    // All plug-ins leave the process, and the module comes back.
    void reload();

    // Of the entities of the drawing that is open, as it was opened.
    const std::vector<std::wstring>& handles() const { return handles_; }

    static const std::vector<const wchar_t*> kCommands;

  private:
    Session();
    host::Reply readLine(const std::wstring& prompt, std::wstring& line) override;
    void print(std::wstring_view text) override;
    void error(std::wstring_view message) override;
    void open(std::size_t example);

    std::filesystem::path folder_;
    std::unique_ptr<host::Application> application_;
    std::string before_;
    std::vector<std::wstring> handles_;
    Next next_;
    std::size_t steps_ = 0;
    bool takesBack_ = false;
    bool isAllBack_ = false;
};

}  // namespace qrs::fuzz
