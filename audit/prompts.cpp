// Prompts, and where reports go.
#include "prompts.h"

#include <iterator>

#include "acedads.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/text.h"
#include "qrs_kernal.h"

namespace qrs::audit {

namespace {
constexpr std::size_t kLongestAnswer = 4096;
}  // namespace

bool askText(const wchar_t* prompt, std::wstring& answer) {
    ACHAR text[kLongestAnswer] = L"";
    if (acedGetString(1, platform::translated(prompt).c_str(), text, kLongestAnswer) != RTNORM) return false;
    answer = platform::trimmed(text);
    return true;
}

bool askPath(const wchar_t* prompt, std::wstring& answer) {
    if (!askText(prompt, answer)) return false;
    if (!answer.empty()) answer = platform::wholePath(platform::innerFromTyped(answer));
    return true;
}

bool askChoice(const wchar_t* prompt, const std::vector<const wchar_t*>& words, std::size_t& choice) {
    std::wstring keywords;
    for (const wchar_t* word : words)
        keywords += (keywords.empty() ? L"" : L" ") + std::wstring(word);
    acedInitGet(0, keywords.c_str());
    ACHAR answer[64] = L"";
    const int result = acedGetKword(platform::translated(prompt).c_str(), answer, std::size(answer));
    choice = 0;
    if (result == RTNONE) return true;
    if (result != RTNORM) return false;
    while (choice + 1 < words.size() && words[choice] != std::wstring(answer))
        ++choice;
    return true;
}

bool askDrawings(std::vector<std::wstring>& paths) {
    for (std::wstring path;;) {
        if (!askPath(paths.empty() ? platform::untranslated(L"\nDrawing <the current one>: ")
                                   : platform::untranslated(L"\nAnother drawing <no more>: "),
                     path))
            return false;
        if (path.empty()) return true;
        paths.push_back(path);
    }
}

bool deliver(const std::string& report, const std::wstring& path, platform::Error& error) {
    if (!path.empty()) return platform::writeFileAtomically(platform::nativePath(path), report, 0, error);
    acedPrompt((L"\n" + platform::fromUtf8(report)).c_str());
    return true;
}

void fail(const std::wstring& message) {
    QrsExport::FailCommand(message);
}

void fail(const std::string& message) {
    fail(platform::fromUtf8(message));
}

void failReading(const std::wstring& message) {
    QrsExport::FailReading(message);
}

void failReading(const std::string& message) {
    failReading(platform::fromUtf8(message));
}

}  // namespace qrs::audit
