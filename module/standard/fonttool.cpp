// FontTool: the fonts that text styles may name.
#include "FontTool.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "host/platform/files.h"
#include "host/platform/text.h"
#include "qrs_kernal.h"
#include "standard/fontlist.h"
#include "standard/text.h"

using qrs::standard::equalNoCase;
using qrs::standard::ShxFonts;
using qrs::standard::WindowsFont;
using qrs::standard::windowsFonts;

namespace {

using Names = std::vector<CString>;

// An SHX file opens with 16 bytes of text; the kind of font is told from the twelfth on.
constexpr std::size_t headerSize = 16;
constexpr std::size_t kindPosition = 11;
constexpr std::size_t kindLength = 5;

struct Kind {
    std::string_view word;
    Names ShxFonts::*list;
};
const Kind kinds[] = {{"shape", &ShxFonts::shape}, {"unifo", &ShxFonts::shape}, {"bigfo", &ShxFonts::big}};

// The list the file belongs into; null for a file that is no font of either kind or cannot be read.
Names* listFor(const std::wstring& path, ShxFonts& fonts) {
    std::string content;
    qrs::platform::Error error;
    if (!qrs::platform::readFileStart(qrs::platform::nativePath(path), headerSize, content, error) ||
        content.size() < headerSize)
        return nullptr;
    std::string word = content.substr(kindPosition, kindLength);
    for (char& character : word)
        character = qrs::platform::asciiLower(character);
    for (const Kind& kind : kinds)
        if (word == kind.word) return &(fonts.*kind.list);
    return nullptr;
}

ShxFonts scanSearchPath() {
    ShxFonts fonts;
    TWCStringList folders;
    QrsExport::GetSearchPath(folders);
    for (const std::wstring& folder : folders) {
        for (const std::wstring& file : qrs::platform::listFiles(folder, L"*.SHX")) {
            Names* list = listFor(folder + file, fonts);
            const CString name = CString(file.c_str()).MakeUpper();
            if (list && std::find(list->begin(), list->end(), name) == list->end()) list->push_back(name);
        }
    }
    return fonts;
}

// The scripts of the fonts that are meant.
template <typename Predicate>
void collectScripts(bool enumerateAgain, Names& scripts, Predicate&& isMeant) {
    std::set<CString> found;
    for (const WindowsFont& font : windowsFonts(enumerateAgain))
        if (isMeant(font)) found.insert(CString(font.script).MakeUpper());
    scripts.assign(found.begin(), found.end());
}

}  // namespace

void FontTool::GetShxFont(std::vector<CString>& shapeFonts, std::vector<CString>& bigFonts, bool rescan) {
    std::optional<ShxFonts>& fonts = qrs::standard::gatheredShxFonts();
    if (rescan || !fonts) fonts = scanSearchPath();
    shapeFonts = fonts->shape;
    bigFonts = fonts->big;
}

void FontTool::GetWinFont(const CString& script, std::vector<CString>& faces, bool enumerateAgain) {
    Names found;
    for (const WindowsFont& font : windowsFonts(enumerateAgain))
        if (equalNoCase(font.script, script)) found.push_back(font.face);
    faces = std::move(found);
}

void FontTool::GetFontEncoded(const CString& face, std::vector<CString>& scripts, bool enumerateAgain) {
    collectScripts(enumerateAgain, scripts, [&face](const WindowsFont& font) { return equalNoCase(font.face, face); });
}

void FontTool::GetFontEncoded(std::vector<CString>& scripts, bool enumerateAgain) {
    collectScripts(enumerateAgain, scripts, [](const WindowsFont&) { return true; });
}

bool FontTool::IsWinFont(const CString& face, const CString& script, int* charset, int* pitchAndFamily,
                         bool enumerateAgain) {
    for (const WindowsFont& font : windowsFonts(enumerateAgain)) {
        if (font.face != face || !equalNoCase(font.script, script)) continue;
        if (charset != nullptr) *charset = font.charset;
        if (pitchAndFamily != nullptr) *pitchAndFamily = font.pitchAndFamily;
        return true;
    }
    return false;
}
