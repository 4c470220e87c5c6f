// Prompts, and where reports go.
#include "prompts.h"

#include <iterator>
#include <set>

#include "accepted.h"
#include "acedads.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/text.h"
#include "host/platform/tree.h"
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

bool askPath(const wchar_t* prompt, std::filesystem::path& answer) {
    std::wstring text;
    if (!askText(prompt, text)) return false;
    answer = pathTyped(text);
    return true;
}

std::filesystem::path pathTyped(const std::wstring& answer) {
    if (answer.empty()) return {};
    return std::filesystem::absolute(platform::nativeFromTyped(platform::toUtf8(answer))).lexically_normal();
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

bool askDrawings(std::vector<std::filesystem::path>& paths) {
    std::set<std::filesystem::path> places;
    for (std::filesystem::path path;;) {
        if (!askPath(paths.empty() ? platform::untranslated(L"\nDrawing <the current one>: ")
                                   : platform::untranslated(L"\nAnother drawing <no more>: "),
                     path))
            return false;
        if (path.empty()) return true;
        if (places.insert(platform::fileMark(path).place).second) paths.push_back(path);
    }
}

bool isThere(const std::filesystem::path& native, platform::Error& error) {
    std::string content;
    return platform::kindOfName(native) != platform::NameKind::Missing || platform::readFile(native, content, error);
}

bool isFree(const std::filesystem::path& report, const std::vector<std::filesystem::path>& read) {
    if (report.empty()) return true;
    for (const std::filesystem::path& file : read) {
        if (file.empty()) continue;
        const std::filesystem::path accepted = platform::nativePath(platform::innerPath(file) + kAcceptedSuffix);
        // Nothing lies in a file but itself.
        for (const std::filesystem::path& one : {file, accepted}) {
            if (!platform::liesInFolder(report, one)) continue;
            fail(platform::translated("the report would be written over %1, which it tells of", one.u8string()));
            return false;
        }
    }
    return true;
}

bool deliver(const std::string& report, const std::filesystem::path& file) {
    if (file.empty()) {
        acedPrompt((L"\n" + platform::fromUtf8(report)).c_str());
        return true;
    }
    platform::Error error;
    if (platform::writeFileAtomically(file, report, 0, error)) return true;
    QrsExport::FailWriting(platform::fromUtf8(error.message));
    return false;
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
