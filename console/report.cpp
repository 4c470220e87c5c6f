// Prints reports, for people and for programs.
#include "console/report.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

#include "console/converter.h"
#include "console/run.h"
#include "console/standard.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/process.h"
#include "host/platform/textwidth.h"
#include "host/report/hostreport.h"

namespace qrs::console {

using platform::translated;

namespace {

using Json = nlohmann::ordered_json;
using host::Difference;
using host::DrawingInfo;
using platform::toUtf8;

// What a value holds of control characters would move a terminal's cursor.
void appendShown(const std::wstring& value, std::string& text) {
    const auto isPlain = [](wchar_t unit) { return static_cast<std::uint32_t>(unit) < 0x80; };
    const std::size_t before = text.size();
    if (std::all_of(value.begin(), value.end(), isPlain)) {
        text.resize(before + value.size());
        std::transform(value.begin(), value.end(), &text[before], [](wchar_t unit) { return static_cast<char>(unit); });
    } else {
        text += toUtf8(value);
    }
    const auto isControl = [](char one) { return static_cast<unsigned char>(one) < 0x20 || one == 0x7F; };
    std::replace_if(text.begin() + static_cast<std::ptrdiff_t>(before), text.end(), isControl, '?');
}
std::string shown(const std::wstring& value) {
    std::string text;
    appendShown(value, text);
    return text;
}

std::string counts(const host::EntityCount& entities) {
    char text[64];
    std::snprintf(text, sizeof text, "%10zu %10zu", entities.inLayouts, entities.inBlocks);
    return text;
}

// The heading of a column of ten figures.
std::string overFigures(const std::string& heading) {
    constexpr std::size_t kFigures = 10;
    const std::size_t width = platform::columnsOf(platform::fromUtf8(heading));
    return std::string(width < kFigures ? kFigures - width : 0, ' ') + heading;
}

// Columns of figures first, so that names of any width and script may follow.
std::string textOf(const DrawingInfo& info, const std::string& file, const QrsExport::TStandardInUse& standard) {
    std::string text = file + "\n";
    const auto row = [&text](const std::string& name, const std::string& value) {
        const std::size_t width = platform::columnsOf(platform::fromUtf8(name));
        text += "  " + name + std::string(width < 14 ? 14 - width : 1, ' ') + value + "\n";
    };
    row(translated("version"), info.version + (info.release.empty() ? "" : " (" + shown(info.release) + ")"));
    row(translated("form"), info.isBinary ? translated("binary") : translated("text"));
    const std::string codePage = info.codePage == platform::kUtf8 ? "UTF-8" : std::to_string(info.codePage);
    row(translated("code page"),
        codePage + (info.codePageName.empty() ? "" : " ($DWGCODEPAGE " + shown(info.codePageName) + ")"));
    row(translated("size"), translated("%1 bytes", info.bytes));
    row(translated("handles"), info.hasHandles ? translated("yes") : translated("no"));
    row(translated("blocks"), std::to_string(info.blocks));
    row(translated("standard"), shown(platform::fromUtf8(shownStandard(standard))));

    const auto title = [&text](const std::string& columns) { text += "\n" + columns + "\n"; };
    title(overFigures(translated("in layouts")) + " " + overFigures(translated("in blocks")) + "  " +
          translated("entities"));
    for (const host::TypeInfo& type : info.types)
        text += counts(type.entities) + "  " + shown(type.name) + "\n";
    title(overFigures(translated("in layouts")) + " " + overFigures(translated("in blocks")) + "  " +
          translated("layer"));
    for (const host::LayerInfo& layer : info.layers) {
        text += counts(layer.entities) + "  " + shown(layer.name);
        if (!layer.isDefined) text += "  " + translated("(not in the layer table)");
        if (layer.isOff) text += "  " + translated("off");
        if (layer.isFrozen) text += "  " + translated("frozen");
        if (layer.isLocked) text += "  " + translated("locked");
        text += "\n";
    }
    title(overFigures(translated("entities")) + "  " + translated("layout"));
    for (const host::LayoutInfo& layout : info.layouts) {
        char count[32];
        std::snprintf(count, sizeof count, "%10zu", layout.entities);
        text += count + std::string("  ") + shown(layout.name) + "\n";
    }
    if (!info.externalReferences.empty()) title(translated("external references"));
    for (const host::ExternalReferenceInfo& reference : info.externalReferences)
        text += "  " + shown(reference.name) + "  " + shown(reference.path) + "\n";
    if (!info.classes.empty()) title(overFigures(translated("instances")) + "  " + translated("class"));
    for (const host::ClassInfo& one : info.classes) {
        char count[32];
        std::snprintf(count, sizeof count, "%10zu", one.instances);
        text += count + std::string("  ") + shown(one.dxfName) + "  " + shown(one.className) + "  " +
                shown(one.application) + "\n";
    }
    if (!info.faults.empty()) title(translated("warnings"));
    for (const std::string& fault : info.faults)
        text += "  " + fault + "\n";
    return text;
}

Json jsonOf(const host::EntityCount& entities) {
    return {{"inLayouts", entities.inLayouts}, {"inBlocks", entities.inBlocks}};
}

Json jsonOf(const DrawingInfo& info, const std::string& file, const QrsExport::TStandardInUse& standard) {
    Json json = {
        {"file", file},
        {"version", info.version},
        {"release", toUtf8(info.release)},
        {"form", info.isBinary ? "binary" : "text"},
        {"codePage", info.codePage},
        {"dwgCodePage", toUtf8(info.codePageName)},
        {"bytes", info.bytes},
        {"handles", info.hasHandles},
        {"blocks", info.blocks},
        {"standard", {{"file", platform::nativePath(standard.file).u8string()}, {"builtIn", standard.isBuiltIn}}}};
    for (const char* list : {"entities", "layers", "layouts", "externalReferences", "classes", "warnings"})
        json[list] = Json::array();
    for (const host::TypeInfo& type : info.types)
        json["entities"].push_back({{"type", toUtf8(type.name)}, {"count", jsonOf(type.entities)}});
    for (const host::LayerInfo& layer : info.layers)
        json["layers"].push_back({{"name", toUtf8(layer.name)},
                                  {"defined", layer.isDefined},
                                  {"off", layer.isOff},
                                  {"frozen", layer.isFrozen},
                                  {"locked", layer.isLocked},
                                  {"count", jsonOf(layer.entities)}});
    for (const host::LayoutInfo& layout : info.layouts)
        json["layouts"].push_back(
            {{"name", toUtf8(layout.name)}, {"block", toUtf8(layout.block)}, {"entities", layout.entities}});
    for (const host::ExternalReferenceInfo& reference : info.externalReferences)
        json["externalReferences"].push_back({{"name", toUtf8(reference.name)}, {"path", toUtf8(reference.path)}});
    for (const host::ClassInfo& one : info.classes)
        json["classes"].push_back({{"dxfName", toUtf8(one.dxfName)},
                                   {"className", toUtf8(one.className)},
                                   {"application", toUtf8(one.application)},
                                   {"instances", one.instances}});
    json["warnings"] = info.faults;
    return json;
}

// Values and names come from files that may hold bytes of any kind.
std::string dump(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

struct DifferenceForm {
    Difference::Kind kind;
    const char* name;
};

constexpr DifferenceForm kForms[] = {
    {Difference::Kind::OnlyInFirst, "onlyInFirst"}, {Difference::Kind::OnlyInSecond, "onlyInSecond"},
    {Difference::Kind::TagRemoved, "removed"},      {Difference::Kind::TagAdded, "added"},
    {Difference::Kind::TagChanged, "changed"},
};

bool isWholeRecord(const Difference& difference) {
    return difference.kind == Difference::Kind::OnlyInFirst || difference.kind == Difference::Kind::OnlyInSecond;
}

void append(const Difference& difference, std::string& text) {
    appendShown(difference.object, text);
    text += ": ";
    if (isWholeRecord(difference)) {
        const bool isInFirst = difference.kind == Difference::Kind::OnlyInFirst;
        text += isInFirst ? translated("only in the first\n") : translated("only in the second\n");
        return;
    }
    text.append(std::to_string(difference.code)).append(": ");
    const auto appendValue = [&](bool isThere, const std::wstring& value) {
        if (isThere)
            appendShown(value, text);
        else
            text += translated("(none)");
    };
    appendValue(difference.kind != Difference::Kind::TagAdded, difference.before);
    text += " > ";
    appendValue(difference.kind != Difference::Kind::TagRemoved, difference.after);
    text += '\n';
}

Json jsonOf(const Difference& difference) {
    Json json = {{"object", toUtf8(difference.object)}};
    for (const DifferenceForm& form : kForms)
        if (form.kind == difference.kind) json["difference"] = form.name;
    if (isWholeRecord(difference)) return json;
    json["code"] = difference.code;
    if (difference.kind != Difference::Kind::TagAdded) json["before"] = toUtf8(difference.before);
    if (difference.kind != Difference::Kind::TagRemoved) json["after"] = toUtf8(difference.after);
    return json;
}

ExitCode print(const std::string& text, ExitCode code) {
    if (platform::writeStandardOutput(text)) return code;
    complain(translated("standard output cannot be written"));
    return ExitCode::CannotWrite;
}

// The file to look at, which is another one for a DWG drawing.
class LookedAt {
  public:
    // False, with the reason in error, when a DWG drawing cannot be converted.
    bool open(const Options& options, const std::filesystem::path& drawing, platform::Error& error) {
        file_ = drawing;
        if (host::dwgReleaseOf(drawing).empty()) return true;
        converted_ = ConvertedDrawing::make(options, drawing, error);
        if (converted_) file_ = converted_->file();
        return converted_ != nullptr;
    }
    const std::filesystem::path& file() const { return file_; }

  private:
    std::filesystem::path file_;
    std::unique_ptr<ConvertedDrawing> converted_;
};

ExitCode describe(const Options& options) {
    DrawingInfo info;
    platform::Error error;
    LookedAt drawing;
    if (!drawing.open(options, options.described, error) || !host::describeDrawing(drawing.file(), info, error)) {
        complain(error.message);
        return ExitCode::CannotRead;
    }
    const std::string file = options.described.u8string();
    const QrsExport::TStandardInUse standard = standardToUse(options);
    return print(options.asJson ? dump(jsonOf(info, file, standard)) : textOf(info, file, standard), ExitCode::Done);
}

ExitCode compare(const Options& options) {
    Json list = Json::array();
    std::string text;
    bool differs = false;
    bool written = true;
    const auto take = [&](const Difference& difference) {
        differs = true;
        if (options.asJson) {
            list.push_back(jsonOf(difference));
            return;
        }
        append(difference, text);
        // Two drawings of a million entities may have as many differences.
        if (text.size() < 65536) return;
        written = platform::writeStandardOutput(text) && written;
        text.clear();
    };
    platform::Error error;
    LookedAt first, second;
    if (!first.open(options, options.compared[0], error) || !second.open(options, options.compared[1], error) ||
        !host::compareDrawings(first.file(), second.file(), take, error)) {
        complain(error.message);
        return ExitCode::CannotRead;
    }
    if (options.asJson) text = dump({{"differences", std::move(list)}});
    const ExitCode code = print(text, differs ? ExitCode::CommandFailed : ExitCode::Done);
    if (written || code == ExitCode::CannotWrite) return code;
    complain(translated("standard output cannot be written"));
    return ExitCode::CannotWrite;
}

}  // namespace

ExitCode report(const Options& options) {
    return options.described.empty() ? compare(options) : describe(options);
}

}  // namespace qrs::console
