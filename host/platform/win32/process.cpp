// Arguments, environment and standard streams on Windows.
#include "host/platform/process.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <iterator>
#include <mutex>

#include "host/platform/codepage.h"
#include "host/platform/inside/inprogress.h"
#include "host/platform/inside/laststream.h"
#include "host/platform/inside/plainline.h"
#include "host/platform/win32/handle.h"

namespace qrs::platform {

namespace {

constexpr DWORD kStreams[] = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};

bool isConsole(HANDLE stream) {
    DWORD mode = 0;
    return GetConsoleMode(stream, &mode) != 0;
}

bool interruptEnds = true;

// ^C that does not end the program is an answer to the prompt of now, or else to the next one.
class Interrupt {
  public:
    // Called by the system in a thread of its own.
    void come() {
        const std::lock_guard<std::mutex> lock(mutex_);
        SetEvent(came_.value());
        if (isReading_) pressEnter();
    }
    bool take(DWORD milliseconds) { return WaitForSingleObject(came_.value(), milliseconds) == WAIT_OBJECT_0; }
    // While a line is read.
    void setReading(bool isReading) {
        const std::lock_guard<std::mutex> lock(mutex_);
        isReading_ = isReading;
    }

  private:
    // Not every console ends the reading itself.
    static void pressEnter() {
        INPUT_RECORD record{};
        record.EventType = KEY_EVENT;
        record.Event.KeyEvent.bKeyDown = TRUE;
        record.Event.KeyEvent.wRepeatCount = 1;
        record.Event.KeyEvent.wVirtualKeyCode = VK_RETURN;
        record.Event.KeyEvent.uChar.UnicodeChar = L'\r';
        DWORD written = 0;
        WriteConsoleInputW(GetStdHandle(STD_INPUT_HANDLE), &record, 1, &written);
    }

    Handle came_{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
    std::mutex mutex_;
    bool isReading_ = false;
};

Interrupt& interrupt() {
    static Interrupt one;
    return one;
}

// Called by the system in a thread of its own.
BOOL WINAPI removeAtEnd(DWORD event) {
    if (event == CTRL_C_EVENT && !interruptEnds) {
        interrupt().come();
        return TRUE;
    }
    removeTemporariesForGood();
    return FALSE;  // the next handler decides; the last one ends the program
}

// Reads a line of a console; nothing when ^C or the end comes instead, with the system's reason set.
std::optional<std::wstring> readConsole(HANDLE console) {
    std::wstring line;
    wchar_t piece[1024];
    do {
        DWORD count = 0;
        SetLastError(ERROR_SUCCESS);
        if (!ReadConsoleW(console, piece, static_cast<DWORD>(std::size(piece)), &count, nullptr) || count == 0)
            return std::nullopt;
        line.append(piece, count);
    } while (line.back() != L'\n');
    while (!line.empty() && (line.back() == L'\n' || line.back() == L'\r'))
        line.pop_back();
    return line;
}

bool outputDropped = false;

// A console takes wide text, which needs no code page; everything else takes the bytes.
bool writeAll(DWORD number, std::string_view bytes) {
    const HANDLE stream = GetStdHandle(number);
    DWORD count = 0;
    if (isConsole(stream)) {
        const std::wstring text = fromUtf8(bytes);
        for (std::size_t at = 0; at < text.size(); at += count) {
            const auto left = static_cast<DWORD>(std::min<std::size_t>(text.size() - at, 8192));
            if (!WriteConsoleW(stream, text.data() + at, left, &count, nullptr) || count == 0) return false;
        }
        return true;
    }
    for (; !bytes.empty(); bytes.remove_prefix(count)) {
        const auto left = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), std::size_t{1} << 20));
        if (WriteFile(stream, bytes.data(), left, &count, nullptr) && count > 0) continue;
        const DWORD reason = GetLastError();
        if (reason != ERROR_BROKEN_PIPE && reason != ERROR_NO_DATA) return false;
        if (number == STD_OUTPUT_HANDLE) outputDropped = true;
        return true;
    }
    return true;
}

}  // namespace

std::vector<std::string> utf8Arguments(int count, char** arguments) {
    std::vector<std::string> texts;
    int wideCount = 0;
    // The system's own line: main's arguments have been through the ANSI code page.
    if (LPWSTR* wide = CommandLineToArgvW(GetCommandLineW(), &wideCount)) {
        for (int i = 0; i < wideCount; ++i)
            texts.push_back(toUtf8(wide[i]));
        LocalFree(wide);
        return texts;
    }
    for (int i = 0; i < count; ++i)
        texts.push_back(toUtf8(decode(ansiCodePage(), arguments[i])));
    return texts;
}

// The system gives a started program its streams; a missing one is no number that a file could take.
void keepStandardStreams() {}

void removeTemporariesWhenEnded(bool withInterrupt) {
    interruptEnds = withInterrupt;
    interrupt();  // made before it can come
    SetConsoleCtrlHandler(&removeAtEnd, TRUE);
}

bool isTerminal(int descriptor) {
    return descriptor >= 0 && descriptor <= 2 && isConsole(GetStdHandle(kStreams[descriptor]));
}

std::optional<char> readInputByte(int milliseconds) {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    const DWORD wait = milliseconds < 0 ? INFINITE : static_cast<DWORD>(milliseconds);
    char byte = 0;
    DWORD count = 0;
    if (WaitForSingleObject(input, wait) != WAIT_OBJECT_0) return std::nullopt;
    if (!ReadFile(input, &byte, 1, &count, nullptr) || count == 0) return std::nullopt;
    return byte;
}

Typed readTypedLine(std::wstring& line) {
    line.clear();
    if (!isTerminal(0)) return readPlainLine(line);
    if (interrupt().take(0)) return Typed::Cancelled;
    const HANDLE keyboard = GetStdHandle(STD_INPUT_HANDLE);
    interrupt().setReading(true);
    const std::optional<std::wstring> typed = readConsole(keyboard);
    const bool isAborted = !typed && GetLastError() == ERROR_OPERATION_ABORTED;
    interrupt().setReading(false);
    // The reading may end before the other thread is told why.
    if (interrupt().take(isAborted ? 1000 : 0)) {
        FlushConsoleInputBuffer(keyboard);  // what stands there was typed before, or is the Enter of our own
        return Typed::Cancelled;
    }
    if (!typed) return Typed::End;
    constexpr wchar_t kControlZ = 0x1A;
    if (!typed->empty() && typed->front() == kControlZ) return Typed::Leaving;
    line = *typed;
    return Typed::Line;
}

std::optional<std::wstring> environment(const char* name) {
    const wchar_t* value = _wgetenv(fromUtf8(name).c_str());
    return value ? std::optional<std::wstring>(value) : std::nullopt;
}

bool writeStandardOutput(std::string_view bytes) {
    return writeAll(STD_OUTPUT_HANDLE, bytes);
}

bool writeStandardError(std::string_view bytes) {
    return writeAll(STD_ERROR_HANDLE, bytes);
}

bool isOutputDropped() {
    return outputDropped;
}

void endWhenMappedFileIsCut(std::string, int) {}

void writeLastLine(std::string_view bytes) {
    writeStandardError(bytes);
}

}  // namespace qrs::platform
