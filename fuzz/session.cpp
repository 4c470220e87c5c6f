#include "fuzz/session.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "fuzz/check.h"
#include "host/commands/hostcommands.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/settings.h"

namespace qrs::fuzz {

namespace fs = std::filesystem;

namespace {

const char* const kExamples[] = {"pipes.dxf", "risers.dxf", "building.dxf", "building-r12.dxf"};
constexpr std::size_t kMostSteps = 4000;
constexpr std::wstring_view kAllBack = L"Everything has been undone";

std::string read(const fs::path& file) {
    std::string bytes;
    platform::Error error;
    check(platform::readFile(file, bytes, error), error.message.c_str());
    return bytes;
}

// The values of group 5 after the entities begin.
std::vector<std::wstring> entityHandles(const std::string& dxf) {
    std::vector<std::wstring> handles;
    std::vector<std::string> lines(1);
    for (const char c : dxf.substr(std::min(dxf.find("ENTITIES"), dxf.size()))) {
        if (c == '\n')
            lines.emplace_back();
        else if (c != '\r' && c != ' ')
            lines.back() += c;
    }
    for (std::size_t i = 1; i + 1 < lines.size() && lines[i] != "OBJECTS"; i += 2)
        if (lines[i] == "5") handles.push_back(platform::fromUtf8(lines[i + 1]));
    return handles;
}

}  // namespace

// What asks for files, writes some, or keeps something for the next run is left out.
const std::vector<const wchar_t*> Session::kCommands = {L"SELECT",
                                                        L"LIST",
                                                        L"CHPROP",
                                                        L"-LAYER",
                                                        L"VPLAYER",
                                                        L"LAYOUT",
                                                        L"-LINETYPE",
                                                        L"-STYLE",
                                                        L"REGEN",
                                                        L"ZOOM",
                                                        L"MSPACE",
                                                        L"PSPACE",
                                                        L"U",
                                                        L"STANDARD",
                                                        L"CloseSelLayer",
                                                        L"OpenSelLayer",
                                                        L"OpenLayer",
                                                        L"SetAllPipeLayOpen",
                                                        L"tckz",
                                                        L"LockSelLayer",
                                                        L"UnLockSelLayer",
                                                        L"sfxc",
                                                        L"FrozenLayer",
                                                        L"UnFrozenAllLayer",
                                                        L"FrozenViewLayer",
                                                        L"UnFrozenViewAllLayer",
                                                        L"EraseSelLayer",
                                                        L"ConvertLayer",
                                                        L"hbtc",
                                                        L"tbds",
                                                        L"yshf",
                                                        L"gxgd",
                                                        L"jcjk",
                                                        L"gxfz",
                                                        L"cztk",
                                                        L"gpsbs",
                                                        L"CleanOvraLayTag",
                                                        L"xxyh",
                                                        L"xxyh2",
                                                        L"tctq"};

Session& Session::instance() {
    static Session& session = *new Session;  // the fuzzer ends the process as it likes
    return session;
}

Session::Session() {
    folder_ = fs::temp_directory_path() / ("qrs-fuzz-" + std::to_string(::getpid()));
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    fs::copy(QRS_SOURCE_DIR "/data", folder_ / "data", fs::copy_options::recursive);
    ::setenv("TMPDIR", folder_.c_str(), 1);
    static fs::path toRemove;
    toRemove = folder_;
    std::atexit([] { fs::remove_all(toRemove); });

    platform::Error error;
    check(platform::Settings::user().useFile(folder_ / "settings.ini", error), error.message.c_str());
    host::Terminal& terminal = *this;  // as only this class sees itself
    application_ = std::make_unique<host::Application>(terminal);
    host::registerHostCommands();
    application_->setSystemFolder(platform::innerPath(folder_ / "data"));
    load({QRS_MODULE_FILE});
}

void Session::load(std::initializer_list<fs::path> plugins) {
    platform::Error error;
    application_->newDocument();
    for (const fs::path& plugin : plugins)
        check(application_->loadPlugin(plugin, error), error.message.c_str());
    check(application_->closeDocument(error), error.message.c_str());
}

void Session::reload() {
    platform::Error error;
    std::vector<std::wstring> names = application_->pluginNames();
    for (; !names.empty(); names.pop_back())
        check(application_->unloadPlugin(names.back(), error), error.message.c_str());
    check(application_->pluginNames().empty(), "a plug-in stays");
    load({QRS_MODULE_FILE});
}

void Session::open(std::size_t example) {
    const fs::path original = fs::path(QRS_SOURCE_DIR) / "examples" / kExamples[example % std::size(kExamples)];
    before_ = read(original);
    handles_ = entityHandles(before_);
    platform::Error error;
    check(application_->openDocument(original, error), error.message.c_str());
}

void Session::run(std::size_t example, const Next& next) {
    open(example);
    next_ = next;
    steps_ = 0;
    takesBack_ = isAllBack_ = false;
    application_->run(true);
    platform::Error error;
    check(application_->saveDocument(folder_ / "saved.dxf", error), error.message.c_str());
    check(read(folder_ / "saved.dxf") == before_, "all taken back, and not the same");
    check(application_->closeDocument(error), error.message.c_str());
    check(application_->currentDocument() == nullptr, "a second drawing is open");
}

host::Reply Session::readLine(const std::wstring& prompt, std::wstring& line) {
    const bool isCommandPrompt = prompt == L"Command: ";
    if (++steps_ > kMostSteps) takesBack_ = true;
    check(steps_ < 2 * kMostSteps, "it asks and asks");
    if (!takesBack_) {
        const Typed typed = next_(isCommandPrompt);
        line = typed.line;
        if (typed.reply != host::Reply::End) return typed.reply;
        takesBack_ = true;
    }
    if (!isCommandPrompt) return host::Reply::Cancel;
    if (isAllBack_) return host::Reply::End;
    line = L"U";
    return host::Reply::Line;
}

void Session::print(std::wstring_view text) {
    if (text.find(kAllBack) != std::wstring_view::npos) isAllBack_ = takesBack_;
}

void Session::error(std::wstring_view message) {
    check(!message.empty(), "an error without a message");
}

}  // namespace qrs::fuzz
