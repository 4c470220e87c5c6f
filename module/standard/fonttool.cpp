// FontTool: the fonts that text styles may name.
#include "FontTool.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "host/platform/files.h"
#include "qrs_kernal.h"

namespace {

using Names = std::vector<CString>;

struct ShxFonts {
    Names shape;
    Names big;
};

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
    if (!qrs::platform::readFile(qrs::platform::nativePath(path), content, error) || content.size() < headerSize)
        return nullptr;
    std::string word = content.substr(kindPosition, kindLength);
    for (char& character : word)
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
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
            const CString name = CString(file).MakeUpper();
            if (list && std::find(list->begin(), list->end(), name) == list->end()) list->push_back(name);
        }
    }
    return fonts;
}

}  // namespace

void FontTool::GetShxFont(std::vector<CString>& shapeFonts, std::vector<CString>& bigFonts, bool rescan) {
    static std::optional<ShxFonts> fonts;
    if (rescan || !fonts) fonts = scanSearchPath();
    shapeFonts = fonts->shape;
    bigFonts = fonts->big;
}
