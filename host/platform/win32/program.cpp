// Running another program on Windows.
#include "host/platform/program.h"

#include <algorithm>
#include <cstdio>

#include "host/platform/codepage.h"
#include "host/platform/inside/fileerror.h"
#include "host/platform/language.h"
#include "host/platform/win32/handle.h"

namespace qrs::platform {

namespace {

// A word as the other program's start takes the line apart: quotes and the backslashes before them are marked.
std::wstring quoted(const std::wstring& word) {
    if (!word.empty() && word.find_first_of(L" \t\"") == std::wstring::npos) return word;
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : word) {
        if (c == L'"') text.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        text += c;
    }
    text.append(backslashes, L'\\');
    return text + L"\"";
}

struct Pipe {
    Handle out, in;

    bool open() {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        HANDLE ends[2];
        if (!CreatePipe(&ends[0], &ends[1], &inherited, 0)) return false;
        out = Handle(ends[0]);
        in = Handle(ends[1]);
        return SetHandleInformation(out.value(), HANDLE_FLAG_INHERIT, 0) != 0;
    }
    bool isOpen() const { return static_cast<bool>(out); }
};

ProgramEnd notStarted() {
    return {ProgramEnd::How::NotStarted, 0, textOf(lastError())};
}

// False when nothing was there to be taken.
bool takeFrom(Pipe& pipe, const std::function<void(std::string_view)>& taker) {
    if (!pipe.isOpen()) return false;
    DWORD waiting = 0;
    char buffer[65536];
    DWORD count = 0;
    if (!PeekNamedPipe(pipe.out.value(), nullptr, 0, nullptr, &waiting, nullptr)) {
        pipe.out.close();
        return false;
    }
    const DWORD most = std::min<DWORD>(waiting, sizeof buffer);
    if (most == 0 || !ReadFile(pipe.out.value(), buffer, most, &count, nullptr) || count == 0) return false;
    taker({buffer, count});
    return true;
}

}  // namespace

ProgramEnd runProgram(const Program& program) {
    std::wstring line;
    for (const std::string& word : program.words)
        line += (line.empty() ? L"" : L" ") + quoted(fromUtf8(word));
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const std::wstring inputName = program.input.empty() ? L"NUL" : program.input.wstring();
    const Handle input(CreateFileW(inputName.c_str(), GENERIC_READ, FILE_SHARE_READ, &inherited, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr));
    Pipe output, errors;
    if (!input || (program.output && !output.open()) || (program.errors && !errors.open())) return notStarted();
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input.value();
    start.hStdOutput = program.output ? output.in.value() : GetStdHandle(STD_OUTPUT_HANDLE);
    start.hStdError = program.errors ? errors.in.value() : GetStdHandle(STD_ERROR_HANDLE);
    // The job ends with this program's last handle to it, and everything in the job with the job.
    const Handle job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (!job || !SetInformationJobObject(job.value(), JobObjectExtendedLimitInformation, &limits, sizeof limits))
        return notStarted();
    PROCESS_INFORMATION made{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr, nullptr, &start,
                        &made))
        return notStarted();
    const Handle process(made.hProcess);
    const Handle thread(made.hThread);
    AssignProcessToJobObject(job.value(), process.value());
    ResumeThread(thread.value());
    output.in.close();
    errors.in.close();
    const ULONGLONG begin = GetTickCount64();
    bool hasEnded = false;
    while (!hasEnded) {
        if (program.seconds > 0 && static_cast<double>(GetTickCount64() - begin) > program.seconds * 1000) {
            TerminateJobObject(job.value(), 1);
            char number[32];
            std::snprintf(number, sizeof number, "%g", program.seconds);
            return {ProgramEnd::How::TimedOut, 0, translated("did not end within %1 seconds", number)};
        }
        hasEnded = WaitForSingleObject(process.value(), 10) == WAIT_OBJECT_0;
        while (takeFrom(output, program.output) || takeFrom(errors, program.errors)) {
        }
    }
    DWORD code = 0;
    GetExitCodeProcess(process.value(), &code);
    return {ProgramEnd::How::Exited, static_cast<int>(code), translated("ended with exit code %1", code)};
}

}  // namespace qrs::platform
