// REGEN and ZOOM. The host shows nothing: the answers are taken so that scripts and plug-ins written for the editor
// run.
#include <cwchar>
#include <string>

#include "acedads.h"
#include "commands/asking.h"
#include "commands/commands.h"
#include "host/platform/codepage.h"

namespace qrs::host::commands {

void regenerate() {
    acedPrompt(L"\nRegenerating model.");
}

namespace {

enum class ZoomAnswers { None, Center, Factor, Window, Selection };

struct ZoomOption {
    const wchar_t* name;
    const wchar_t* shortest;
    ZoomAnswers answers;
};

constexpr ZoomOption kZoomOptions[] = {
    {L"All", L"A", ZoomAnswers::None},      {L"Center", L"C", ZoomAnswers::Center},
    {L"Dynamic", L"D", ZoomAnswers::None},  {L"Extents", L"E", ZoomAnswers::None},
    {L"Previous", L"P", ZoomAnswers::None}, {L"Scale", L"S", ZoomAnswers::Factor},
    {L"Window", L"W", ZoomAnswers::Window}, {L"Object", L"O", ZoomAnswers::Selection},
};

const ZoomOption* findOption(std::wstring typed) {
    if (!typed.empty() && typed.front() == L'_') typed.erase(0, 1);
    for (const ZoomOption& option : kZoomOptions) {
        const std::wstring name = option.name;
        if (typed.size() >= std::wcslen(option.shortest) && typed.size() <= name.size() &&
            platform::compareNoCase(name.substr(0, typed.size()), typed) == 0)
            return &option;
    }
    return nullptr;
}

// "2", "0.5x", "2xp".
bool isScale(const std::wstring& text) {
    wchar_t* end = nullptr;
    const double factor = std::wcstod(text.c_str(), &end);
    if (end == text.c_str() || !(factor > 0)) return false;
    const std::wstring unit = platform::foldCase(end);
    return unit.empty() || unit == L"X" || unit == L"XP";
}

bool isPoint(const std::wstring& text) {
    return text.find(L',') != std::wstring::npos;
}

void askOtherCorner() {
    ads_point corner = {};
    acedGetPoint(nullptr, L"\nSpecify opposite corner: ", corner);
}

void askAnswersOf(const ZoomOption& option) {
    ads_point point = {};
    ads_name set = {};
    switch (option.answers) {
        case ZoomAnswers::None:
            break;
        case ZoomAnswers::Center:
            if (acedGetPoint(nullptr, L"\nSpecify center point: ", point) == RTNORM)
                askText(L"\nEnter magnification or height: ", Blanks::EndAnswer);
            break;
        case ZoomAnswers::Factor:
            askText(L"\nEnter a scale factor (nX or nXP): ", Blanks::EndAnswer);
            break;
        case ZoomAnswers::Window:
            if (acedGetPoint(nullptr, L"\nSpecify first corner: ", point) == RTNORM) askOtherCorner();
            break;
        case ZoomAnswers::Selection:
            if (acedSSGet(nullptr, nullptr, nullptr, nullptr, set) == RTNORM) acedSSFree(set);
            break;
    }
}

}  // namespace

void zoom() {
    constexpr const wchar_t* kPrompt =
        L"\nSpecify corner of window, enter a scale factor (nX or nXP), or\n"
        L"[All/Center/Dynamic/Extents/Previous/Scale/Window/Object] <real time>: ";
    for (;;) {
        const std::optional<std::wstring> answer = askText(kPrompt, Blanks::EndAnswer);
        if (!answer || answer->empty() || isScale(*answer)) return;
        if (isPoint(*answer)) return askOtherCorner();
        if (const ZoomOption* option = findOption(*answer)) return askAnswersOf(*option);
        acedPrompt(L"\nRequires a point, a scale factor or an option keyword.");
    }
}

}  // namespace qrs::host::commands
