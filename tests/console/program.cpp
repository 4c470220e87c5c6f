// Runs the console program.
#include "program.h"

#include <gtest/gtest.h>

#if defined(_WIN32)
#include <windows.h>
#endif

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

#if defined(_WIN32)

// As the C library takes a line apart: backslashes stand for themselves but before quotes.
std::wstring quoted(const std::wstring& argument) {
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : argument) {
        if (c == L'"') text.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        text += c;
    }
    return text.append(backslashes, L'\\') + L"\"";
}

std::wstring wide(const std::string& utf8) {
    return fs::u8path(utf8).native();
}

HANDLE openInherited(const fs::path& file, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileW(file.c_str(), access, FILE_SHARE_READ, &inherited, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

// The program's exit code, or -1 when it could not be started. Its streams are files in the folder.
int start(const fs::path& folder, const std::vector<std::string>& arguments,
          const std::vector<std::string>& environment, const std::string&) {
    // In English, whatever the machine speaks, unless the test says otherwise.
    SetEnvironmentVariableW(L"LC_ALL", L"C");
    SetEnvironmentVariableW(L"LANGUAGE", nullptr);
    for (const std::string& variable : environment)
        SetEnvironmentVariableW(wide(variable.substr(0, variable.find('='))).c_str(),
                                wide(variable.substr(variable.find('=') + 1)).c_str());
    std::wstring line = quoted(wide(QRS_CONSOLE));
    // In the registry the user's settings would be those of every test.
    const auto has = [&](const char* option) {
        return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
    };
    if (!has("--settings") && !has("--compare"))
        line += L" --settings " + quoted((folder / "instead-of-registry.ini").native());
    for (const std::string& argument : arguments)
        line += L" " + quoted(wide(argument));
    STARTUPINFOW streams{};
    streams.cb = sizeof streams;
    streams.dwFlags = STARTF_USESTDHANDLES;
    streams.hStdInput = openInherited(folder / "stdin.tmp", GENERIC_READ, OPEN_EXISTING);
    streams.hStdOutput = openInherited(folder / "stdout.tmp", GENERIC_WRITE, CREATE_ALWAYS);
    streams.hStdError = openInherited(folder / "stderr.tmp", GENERIC_WRITE, CREATE_ALWAYS);
    PROCESS_INFORMATION process{};
    DWORD code = static_cast<DWORD>(-1);
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, folder.c_str(), &streams, &process)) {
        WaitForSingleObject(process.hProcess, INFINITE);
        GetExitCodeProcess(process.hProcess, &code);
        CloseHandle(process.hProcess);
        CloseHandle(process.hThread);
    }
    for (const HANDLE stream : {streams.hStdInput, streams.hStdOutput, streams.hStdError})
        CloseHandle(stream);
    for (const std::string& variable : environment)
        SetEnvironmentVariableW(wide(variable.substr(0, variable.find('='))).c_str(), nullptr);
    return static_cast<int>(code);
}

#else

std::string quoted(const std::string& argument) {
    std::string text = "'";
    for (const char c : argument)
        text += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return text + "'";
}

// The program's exit code, or -1 when it ended otherwise. Its streams are files in the folder.
int start(const fs::path& folder, const std::vector<std::string>& arguments,
          const std::vector<std::string>& environment, const std::string& limits) {
    // In English, whatever the machine speaks, unless the test says otherwise.
    std::string command = limits + " && cd " + quoted(folder.string()) +
                          " && LC_ALL=C.UTF-8 LANGUAGE= XDG_CONFIG_HOME=" + quoted(folder.string());
    for (const std::string& variable : environment)
        command += " " + variable.substr(0, variable.find('=') + 1) + quoted(variable.substr(variable.find('=') + 1));
    command += " " + quoted(QRS_CONSOLE);
    for (const std::string& argument : arguments)
        command += " " + quoted(argument);
    command += " <stdin.tmp >stdout.tmp 2>stderr.tmp";
    const int status = std::system(command.c_str());
    // The shell gives the program's own code in the second byte.
    return (status & 0xFF) == 0 ? (status >> 8) & 0xFF : -1;
}

#endif

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        line.erase(0, line.find_first_not_of(' '));
        line.erase(line.find_last_not_of(" \r") + 1);
        lines.push_back(line);
    }
    return lines;
}

}  // namespace

std::vector<std::string> changedLines(const std::string& before, const std::string& after) {
    const std::vector<std::string> old = linesOf(before), now = linesOf(after);
    EXPECT_EQ(old.size(), now.size());
    std::vector<std::string> changes;
    for (std::size_t i = 0; i < old.size() && i < now.size(); ++i)
        if (old[i] != now[i]) changes.push_back(old[i] + " > " + now[i]);
    return changes;
}

fs::path Workplace::example(const std::string& name) const {
    fs::copy_file(fs::path(QRS_SOURCE_DIR) / "examples" / name, path(name));
    return path(name);
}

Outcome Workplace::run(const std::vector<std::string>& arguments, const std::string& input,
                       const std::vector<std::string>& environment) const {
    write("stdin.tmp", input);
    Outcome outcome;
    outcome.code = start(folder_.path(), arguments, environment, limits_);
    outcome.out = read("stdout.tmp");
    outcome.error = read("stderr.tmp");
    return outcome;
}
