// Runs the converter between DWG and DXF in private folders, and puts in place what it has written.
#include "console/converter.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <utility>
#include <vector>

#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/platform/program.h"
#include "host/platform/settings.h"
#include "host/report/hostreport.h"

namespace qrs::console {

using platform::translated;

namespace fs = std::filesystem;

namespace {

constexpr const wchar_t* kSettingsKey = L"Software\\QRS\\PWX\\Console";
constexpr const wchar_t* kSettingsName = L"Converter";

// Without a limit of the user's own, which is one for the whole run: a converter that hangs shall not keep a batch for
// ever.
constexpr double kLongest = 300;

// Nothing when a quote is not closed.
std::optional<std::vector<std::string>> wordsOf(const std::string& command) {
    std::vector<std::string> words;
    std::string word;
    bool begun = false;
    char quote = 0;
    for (const char c : command) {
        if (quote != 0 ? c == quote : c == '"' || c == '\'') {
            quote = quote != 0 ? '\0' : c;
            begun = true;
        } else if (quote == 0 && (c == ' ' || c == '\t')) {
            if (begun) words.push_back(std::exchange(word, {}));
            begun = false;
        } else {
            word += c;
            begun = true;
        }
    }
    if (quote != 0) return std::nullopt;
    if (begun) words.push_back(word);
    return words;
}

struct Conversion {
    fs::path in, out;
    std::string release;  // "2018", "R12"
    const char* from;     // "dwg"
    const char* to;
};

std::string upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); });
    return text;
}

std::string filledIn(const std::string& word, const Conversion& conversion) {
    const std::string version =
        conversion.release.substr(0, 1) == "R" ? conversion.release.substr(1) : conversion.release;
    const std::pair<std::string, std::string> values[] = {
        {"{in}", conversion.in.u8string()},
        {"{out}", conversion.out.u8string()},
        {"{indir}", conversion.in.parent_path().u8string()},
        {"{outdir}", conversion.out.parent_path().u8string()},
        {"{version}", version},
        {"{from}", conversion.from},
        {"{to}", conversion.to},
        {"{FROM}", upper(conversion.from)},
        {"{TO}", upper(conversion.to)},
    };
    std::string filled;
    for (std::size_t at = 0; at < word.size();) {
        const auto value = std::find_if(std::begin(values), std::end(values), [&](const auto& one) {
            return word.compare(at, one.first.size(), one.first) == 0;
        });
        if (value == std::end(values)) {
            filled += word[at++];
        } else {
            filled += value->second;
            at += value->first.size();
        }
    }
    return filled;
}

// The last line of what a program has printed; only the end of it is kept.
class LastLine {
  public:
    void take(std::string_view piece) {
        constexpr std::size_t kKept = 2000;
        text_ += piece;
        if (text_.size() > kKept) text_.erase(0, text_.size() - kKept);
    }
    std::string text() const {
        const std::size_t end = text_.find_last_not_of(" \r\n");
        if (end == std::string::npos) return {};
        const std::size_t begin = text_.find_last_of("\r\n", end);
        return text_.substr(begin == std::string::npos ? 0 : begin + 1,
                            end - (begin == std::string::npos ? 0 : begin + 1) + 1);
    }

  private:
    std::string text_;
};

bool fails(platform::Error& error, const fs::path& drawing, const std::string& reason) {
    error.message = drawing.u8string() + ": " + reason;
    return false;
}

// Runs the command. False, with the reason in error, when it fails or leaves no file; shown is the drawing's name.
bool convert(const std::string& command, double seconds, const Conversion& conversion, const fs::path& shown,
             platform::Error& error) {
    platform::Program program;
    for (const std::string& word : wordsOf(command).value_or(std::vector<std::string>()))
        program.words.push_back(filledIn(word, conversion));
    program.seconds = seconds > 0 ? 0 : kLongest;
    LastLine said;
    program.output = program.errors = [&said](std::string_view piece) { said.take(piece); };
    const platform::ProgramEnd end = platform::runProgram(program);
    const std::string words = said.text().empty() ? "" : " (" + said.text() + ")";
    if (end.how == platform::ProgramEnd::How::NotStarted)
        return fails(error, shown, translated("the converter %1 does not start: %2", program.words.front(), end.text));
    if (end.how != platform::ProgramEnd::How::Exited || end.code != 0)
        return fails(error, shown, translated("the converter %1%2", end.text, words));
    const platform::FileMark written = platform::fileMark(conversion.out);
    if (!written.exists || written.size == 0)
        return fails(error, shown, translated("the converter wrote no drawing%1", words));
    return true;
}

// A file of its own name in a folder of its own, so that converters of whole folders find it alone.
bool makePlace(const fs::path& folder, const char* place, const fs::path& name, const char* extension, fs::path& file,
               platform::Error& error) {
    file = folder / place / name.stem();
    file += extension;
    return platform::makeFolders(folder / place, error);
}

bool copyWithBackups(const fs::path& source, const fs::path& target, int backups, platform::Error& error) {
    std::string bytes;
    return platform::readFile(source, bytes, error) && platform::writeFileAtomically(target, bytes, backups, error);
}

bool convertBack(const std::string& command, double seconds, int backups, const fs::path& folder, const fs::path& dxf,
                 const std::string& release, const fs::path& target, platform::Error& error) {
    Conversion conversion{{}, {}, release, "dxf", "dwg"};
    if (!makePlace(folder, "changed", dxf, ".dxf", conversion.in, error) ||
        !makePlace(folder, "back", dxf, ".dwg", conversion.out, error) ||
        !platform::copyFileAtomically(dxf, conversion.in, platform::LinkedTarget::Replace, error) ||
        !convert(command, seconds, conversion, target, error))
        return false;
    const std::string written = host::dwgReleaseOf(conversion.out);
    if (written != release)
        return fails(error, target,
                     written.empty() ? translated("the converter wrote no DWG drawing instead of one of %1", release)
                                     : translated("the converter wrote a DWG drawing of %1 instead of one of %2",
                                                  written, release));
    return copyWithBackups(conversion.out, target, backups, error);
}

}  // namespace

std::string findConverterMisuse(const std::string& command) {
    const auto words = wordsOf(command);
    if (!words) return translated("a quote is not closed");
    if (words->empty()) return translated("no program is named");
    const auto has = [&](const char* one, const char* other) {
        return command.find(one) != std::string::npos || command.find(other) != std::string::npos;
    };
    if (!has("{in}", "{indir}")) return translated("{in} is missing");
    if (!has("{out}", "{outdir}")) return translated("{out} is missing");
    return {};
}

std::string converterOf(const Options& options) {
    if (options.converter) return *options.converter;
    return platform::toUtf8(platform::Settings::user().text(kSettingsKey, kSettingsName).value_or(L""));
}

bool isNamedDwg(const fs::path& file) {
    return upper(file.extension().u8string()) == ".DWG";
}

std::unique_ptr<ConvertedDrawing> ConvertedDrawing::make(const Options& options, const fs::path& dwg,
                                                         platform::Error& error) {
    std::unique_ptr<ConvertedDrawing> made(new ConvertedDrawing);
    made->command_ = converterOf(options);
    made->release_ = host::dwgReleaseOf(dwg);
    made->seconds_ = options.timeoutSeconds;
    made->backups_ = options.backups;
    made->dwg_ = dwg;
    if (made->command_.empty()) {
        fails(error, dwg,
              translated("a DWG drawing of %1; save it as DXF, or name a converter (--converter)", made->release_));
        return nullptr;
    }
    if (const std::string misuse = findConverterMisuse(made->command_); !misuse.empty()) {
        fails(error, dwg, translated("the converter of the settings: %1", misuse));
        return nullptr;
    }
    made->dwgMark_ = platform::fileMark(dwg);
    made->folder_ = platform::PrivateFolder::make(error);
    if (!made->folder_) return nullptr;
    const fs::path& folder = made->folder_->path();
    Conversion conversion{{}, {}, made->release_, "dwg", "dxf"};
    // The converter gets a copy, and may write beside it or over it.
    if (!makePlace(folder, "original", dwg, ".dwg", conversion.in, error) ||
        !makePlace(folder, "drawing", dwg, ".dxf", conversion.out, error) ||
        !platform::copyFileAtomically(dwg, conversion.in, platform::LinkedTarget::Replace, error) ||
        !convert(made->command_, made->seconds_, conversion, dwg, error))
        return nullptr;
    made->dxf_ = conversion.out;
    made->dxfMark_ = platform::fileMark(made->dxf_);
    return made;
}

bool ConvertedDrawing::wasWritten() const {
    return !platform::isSameState(dxfMark_, platform::fileMark(dxf_));
}

bool ConvertedDrawing::putBack(const fs::path& target, platform::Error& error) {
    const auto isOriginal = [&] { return platform::fileMark(target).place == dwgMark_.place; };
    if (isOriginal() && !platform::isSameState(dwgMark_, platform::fileMark(target)))
        return fails(error, target, translated("was changed by another program after it was opened; not saved"));
    if (!convertBack(command_, seconds_, backups_, folder_->path(), dxf_, release_, target, error)) return false;
    if (isOriginal()) dwgMark_ = platform::fileMark(target);
    dxfMark_ = platform::fileMark(dxf_);
    return true;
}

bool ConvertedDrawing::copyTo(const fs::path& target, platform::Error& error) const {
    return copyWithBackups(dwg_, target, backups_, error);
}

bool writeAsDwg(const Options& options, const fs::path& dxf, const std::string& release, const fs::path& target,
                platform::Error& error) {
    const std::string command = converterOf(options);
    const auto folder = platform::PrivateFolder::make(error);
    return folder != nullptr &&
           convertBack(command, options.timeoutSeconds, options.backups, folder->path(), dxf, release, target, error);
}

}  // namespace qrs::console
