// The editable prompt: libedit's line editing, history and completion.
#include "console/terminals.h"

#if defined(QRS_HAVE_LIBEDIT)

#include <histedit.h>

#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <optional>
#include <utility>

#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/platform/process.h"
#include "host/platform/textwidth.h"

namespace qrs::console {

using platform::translated;

namespace {

constexpr int kHistorySize = 500;
constexpr char kEscape = '\x1b';
constexpr wchar_t kCancelKey = L'\x03';
// The rest of what a key sends after Esc is there at once, even over a slow line.
constexpr int kKeyMilliseconds = 50;

// ^C while a command runs: the prompt that follows finds itself cancelled, and no unsaved drawing is lost.
volatile std::sig_atomic_t interrupted = 0;

void rememberInterrupt(int) {
    interrupted = 1;
}

struct EndEditLine {
    void operator()(EditLine* editor) const { el_end(editor); }
};
struct EndHistory {
    void operator()(HistoryW* history) const { history_wend(history); }
};

// libedit reads and shows in the locale's encoding. Anything but UTF-8 there would lose Chinese answers.
void useUtf8Locale() {
    const char* chosen = std::setlocale(LC_CTYPE, "");
    if (chosen == nullptr || (std::strstr(chosen, "UTF-8") == nullptr && std::strstr(chosen, "utf8") == nullptr))
        std::setlocale(LC_CTYPE, "C.UTF-8");
}

class EditingTerminal : public ConsoleTerminal {
  public:
    EditingTerminal(Completer complete, const std::filesystem::path& history);
    ~EditingTerminal() override;
    host::Reply readLine(const std::wstring& prompt, std::wstring& line) override;
    void progress(std::wstring_view label, int percent) override;
    bool isInteractive() const override { return true; }

  private:
    static EditingTerminal& of(EditLine* editor);
    static wchar_t* showPrompt(EditLine* editor);
    static int readKey(EditLine* editor, wchar_t* key);
    static unsigned char cancel(EditLine* editor, wint_t key);
    static unsigned char complete(EditLine* editor, wint_t key);
    static unsigned char leave(EditLine* editor, wint_t key);
    void list(const std::vector<std::wstring>& names);
    void remember(const std::wstring& line);

    Completer complete_;
    std::string historyFile_;
    std::unique_ptr<EditLine, EndEditLine> editor_;
    std::unique_ptr<HistoryW, EndHistory> history_;
    std::wstring prompt_;
    std::optional<char> following_;  // read after Esc, but not used yet
    bool cancelled_ = false;
    std::wstring discarded_;  // what had been typed on the cancelled line
    bool leaves_ = false;
};

EditingTerminal::EditingTerminal(Completer complete, const std::filesystem::path& history)
    : complete_(std::move(complete)), historyFile_(history.string()) {
    useUtf8Locale();
    editor_.reset(el_init("qrsconsole", stdin, stdout, stderr));
    history_.reset(history_winit());
    EditLine* const editor = editor_.get();
    if (editor == nullptr || history_ == nullptr) return;
    HistEventW event;
    history_w(history_.get(), &event, H_SETSIZE, kHistorySize);
    history_w(history_.get(), &event, H_SETUNIQUE, 1);
    if (!historyFile_.empty()) history_w(history_.get(), &event, H_LOAD, historyFile_.c_str());
    el_wset(editor, EL_CLIENTDATA, this);
    el_wset(editor, EL_PROMPT, &EditingTerminal::showPrompt);
    el_wset(editor, EL_HIST, history_w, history_.get());
    el_wset(editor, EL_GETCFN, &EditingTerminal::readKey);
    el_wset(editor, EL_EDITOR, L"emacs");
    el_wset(editor, EL_ADDFN, L"qrs-cancel", L"cancels", &EditingTerminal::cancel);
    el_wset(editor, EL_ADDFN, L"qrs-complete", L"completes", &EditingTerminal::complete);
    el_wset(editor, EL_ADDFN, L"qrs-leave", L"leaves", &EditingTerminal::leave);
    el_wset(editor, EL_BIND, L"^C", L"qrs-cancel", nullptr);
    el_wset(editor, EL_BIND, L"^D", L"qrs-leave", nullptr);
    el_wset(editor, EL_BIND, L"^I", L"qrs-complete", nullptr);
    // While a line is edited ^C is a key like the others.
    el_wset(editor, EL_SETTY, L"-d", L"-isig", nullptr);
    std::signal(SIGINT, &rememberInterrupt);
}

EditingTerminal::~EditingTerminal() {
    std::signal(SIGINT, SIG_DFL);
    if (history_ == nullptr || historyFile_.empty()) return;
    HistEventW event;
    // A history that cannot be kept is no reason to complain at the end of a session.
    history_w(history_.get(), &event, H_SAVE, historyFile_.c_str());
}

EditingTerminal& EditingTerminal::of(EditLine* editor) {
    void* self = nullptr;
    el_wget(editor, EL_CLIENTDATA, &self);
    return *static_cast<EditingTerminal*>(self);
}

wchar_t* EditingTerminal::showPrompt(EditLine* editor) {
    return of(editor).prompt_.data();
}

// Esc by itself cancels as ^C does. Arrow keys and their like send Esc and more.
int EditingTerminal::readKey(EditLine* editor, wchar_t* key) {
    EditingTerminal& self = of(editor);
    const auto next = [&] {
        return self.following_ ? std::exchange(self.following_, std::nullopt) : platform::readInputByte(-1);
    };
    std::string bytes;
    std::wstring text;
    while (const std::optional<char> byte = next()) {
        bytes += *byte;
        if (bytes.size() == 1 && *byte == kEscape) {
            self.following_ = platform::readInputByte(kKeyMilliseconds);
            const bool isKey = self.following_ && *self.following_ > ' ' && *self.following_ <= '~';
            *key = isKey ? wchar_t{kEscape} : kCancelKey;
            return 1;
        }
        if (platform::decodeStrict(platform::kUtf8, bytes, text) && !text.empty()) {
            *key = text.front();
            return 1;
        }
        if (bytes.size() >= 4) bytes.clear();
    }
    return 0;
}

unsigned char EditingTerminal::cancel(EditLine* editor, wint_t) {
    EditingTerminal& self = of(editor);
    const LineInfoW* line = el_wline(editor);
    self.cancelled_ = true;
    self.discarded_.assign(line->buffer, line->lastchar);
    return CC_EOF;
}

unsigned char EditingTerminal::leave(EditLine* editor, wint_t) {
    const LineInfoW* line = el_wline(editor);
    if (line->lastchar != line->buffer) return CC_ERROR;
    of(editor).leaves_ = true;
    return CC_EOF;
}

// In columns as wide as the terminal allows, down the first one first.
void EditingTerminal::list(const std::vector<std::wstring>& names) {
    constexpr std::size_t kMostShown = 200;
    const std::size_t shown = std::min(names.size(), kMostShown);
    std::size_t width = 0;
    for (std::size_t i = 0; i < shown; ++i)
        width = std::max(width, platform::columnsOf(names[i]) + 2);
    int screen = 80;
    el_get(editor_.get(), EL_GETTC, "co", &screen);
    const std::size_t columns = std::max<std::size_t>(static_cast<std::size_t>(std::max(screen, 1)) / width, 1);
    const std::size_t rows = (shown + columns - 1) / columns;
    std::wstring text = L"\n";
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t i = row; i < shown; i += rows)
            text += i + rows < shown ? platform::paddedTo(names[i], width) : names[i];
        text += L"\n";
    }
    if (shown < names.size()) text += translated(L"... and %1 more", names.size() - shown) + L"\n";
    write(platform::toUtf8(text));
}

// How far all the names agree, as the first one is spelled.
std::wstring commonStart(const std::vector<std::wstring>& names) {
    std::wstring common = names.front();
    for (const std::wstring& name : names) {
        std::size_t same = 0;
        while (same < common.size() && same < name.size() &&
               platform::compareNoCase(common.substr(same, 1), name.substr(same, 1)) == 0)
            ++same;
        common.resize(same);
    }
    return common;
}

// Completes what stands before the cursor: to the only name it can become, or as far as all of them agree; when that
// adds nothing the names are listed.
unsigned char EditingTerminal::complete(EditLine* editor, wint_t) {
    EditingTerminal& self = of(editor);
    const LineInfoW* line = el_wline(editor);
    const std::wstring typed(line->buffer, line->cursor);
    const host::Completion found = self.complete_(typed);
    if (found.names.empty()) return CC_ERROR;
    const std::wstring part = typed.substr(found.begin);
    const std::wstring common = commonStart(found.names);
    if (found.names.size() == 1 ? common != part : common.size() > part.size()) {
        if (!part.empty()) el_wdeletestr(editor, static_cast<int>(part.size()));
        return el_winsertstr(editor, common.c_str()) == 0 ? CC_REFRESH : CC_ERROR;
    }
    if (found.names.size() == 1) return CC_NORM;
    self.list(found.names);
    return CC_REDISPLAY;
}

void EditingTerminal::remember(const std::wstring& line) {
    if (line.empty()) return;
    HistEventW event;
    history_w(history_.get(), &event, H_ENTER, line.c_str());
}

// A line of its own below the output, wiped when the work is over.
void EditingTerminal::progress(std::wstring_view label, int percent) {
    constexpr std::string_view kWipeLine = "\r\x1b[K";
    std::string line(kWipeLine);
    if (percent >= 0) line += platform::toUtf8(label) + " " + std::to_string(percent) + "%";
    platform::writeStandardError(line);
}

host::Reply EditingTerminal::readLine(const std::wstring& prompt, std::wstring& line) {
    if (editor_ == nullptr || history_ == nullptr) return host::Reply::End;
    if (interrupted != 0) {
        interrupted = 0;
        print(prompt);
        line.clear();
        return host::Reply::Cancel;
    }
    prompt_ = prompt;
    cancelled_ = leaves_ = false;
    int count = 0;
    // Before the prompt is seen: what is typed at once is meant for it.
    el_wset(editor_.get(), EL_PREP_TERM, 1);
    const wchar_t* typed = el_wgets(editor_.get(), &count);
    interrupted = 0;
    if (leaves_ && prompt == translated(L"Command: ")) {
        // Typed out, so that the command asks before changes are lost.
        line = L"QUIT";
        write("QUIT\n");
        return host::Reply::Line;
    }
    if (cancelled_ || leaves_) {
        line = std::exchange(discarded_, std::wstring());
        return host::Reply::Cancel;
    }
    if (typed == nullptr || count <= 0) {
        write("\n");
        return host::Reply::End;
    }
    line.assign(typed, static_cast<std::size_t>(count));
    while (!line.empty() && (line.back() == L'\n' || line.back() == L'\r'))
        line.pop_back();
    remember(line);
    return host::Reply::Line;
}

}  // namespace

std::unique_ptr<ConsoleTerminal> makeInteractiveTerminal(Completer complete, const std::filesystem::path& history) {
    return std::make_unique<EditingTerminal>(std::move(complete), history);
}

}  // namespace qrs::console

#else

namespace qrs::console {

std::unique_ptr<ConsoleTerminal> makeInteractiveTerminal(Completer, const std::filesystem::path&) {
    return std::make_unique<PlainTerminal>();
}

}  // namespace qrs::console

#endif
