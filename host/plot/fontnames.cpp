// The table of font files.
#include "host/plot/fontnames.h"

#include "host/platform/codepage.h"

namespace qrs::host::plot {

namespace {

struct KnownFile {
    const wchar_t* name;  // of the file, without extension, folded
    const char* family;
    bool isBold = false;
    bool isItalic = false;
};

constexpr const char* kSans = "sans-serif";
constexpr const char* kSerif = "serif";

constexpr KnownFile kFiles[] = {
    {L"simsun", "SimSun"},
    {L"nsimsun", "NSimSun"},
    {L"simhei", "SimHei"},
    {L"simfang", "FangSong"},
    {L"simkai", "KaiTi"},
    {L"msyh", "Microsoft YaHei"},
    {L"msyhbd", "Microsoft YaHei", true},
    {L"simli", "LiSu"},
    {L"simyou", "YouYuan"},
    {L"stsong", "STSong"},
    {L"stfangso", "STFangsong"},
    {L"stkaiti", "STKaiti"},
    {L"arial", "Arial"},
    {L"arialbd", "Arial", true},
    {L"ariali", "Arial", false, true},
    {L"arialbi", "Arial", true, true},
    {L"arialn", "Arial Narrow"},
    {L"ariblk", "Arial Black"},
    {L"times", "Times New Roman"},
    {L"timesbd", "Times New Roman", true},
    {L"timesi", "Times New Roman", false, true},
    {L"timesbi", "Times New Roman", true, true},
    {L"cour", "Courier New"},
    {L"courbd", "Courier New", true},
    {L"calibri", "Calibri"},
    {L"tahoma", "Tahoma"},
    {L"verdana", "Verdana"},
    // The editor's own, drawn with strokes.
    {L"romanc", kSerif},
    {L"romant", kSerif},
    {L"romand", kSans},
    {L"complex", kSerif},
    {L"italic", kSerif, false, true},
    {L"italicc", kSerif, false, true},
    {L"italict", kSerif, false, true},
    {L"monotxt", "monospace"},
};

}  // namespace

FontChoice chooseFont(const std::wstring& file, const std::wstring& bigFont, const std::wstring& family) {
    FontChoice choice;
    const std::size_t slash = file.find_last_of(L"\\/");
    std::wstring name = platform::foldCase(slash == std::wstring::npos ? file : file.substr(slash + 1));
    if (!name.empty() && name.front() == L'@') name.erase(0, 1);  // for columns of characters
    const std::size_t dot = name.find(L'.');
    const std::wstring extension = dot == std::wstring::npos ? std::wstring() : name.substr(dot);
    name = name.substr(0, dot);
    const bool isOutline = extension == platform::foldCase(L".ttf") || extension == platform::foldCase(L".ttc") ||
                           extension == platform::foldCase(L".otf");
    choice.isStroked = family.empty() && !isOutline;
    choice.family = kSans;
    for (const KnownFile& known : kFiles) {
        if (platform::foldCase(known.name) != name) continue;
        choice.family = known.family;
        choice.isBold = known.isBold;
        choice.isItalic = known.isItalic;
        choice.isStroked = choice.isStroked && extension == platform::foldCase(L".shx");
    }
    if (!family.empty())
        choice.family = platform::toUtf8(family.front() == L'@' ? family.substr(1) : family);
    else if (isOutline && choice.family == kSans && !name.empty())
        choice.family = platform::toUtf8(name);
    if (!bigFont.empty()) choice.isStroked = true;
    return choice;
}

}  // namespace qrs::host::plot
