// The layer definitions of older installations: LAYERDEF.DAT of the system folder.
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "qrs_kernal.h"
#include "standard/holder.h"
#include "standard/startup.h"
#include "standard/text.h"
#include "standard/values.h"

namespace qrs::standard {

using platform::translated;

namespace {

constexpr const wchar_t* kFileName = L"LAYERDEF.DAT";
constexpr std::uint64_t kMostBytes = 64u << 20;
constexpr wchar_t kReplacement = 0xFFFD;  // stands for bytes that are no text

struct OldDefinition {
    CString oldKey;
    CString layerName;
    CString color;
    CString linetype;
};

bool isIndex(const CString& color) {
    constexpr Adesk::Int32 kLastIndex = 256;
    return color.SpanIncluding(L"0123456789") == color && parseInteger(color) <= kLastIndex;
}

// One line without white space at its ends; nothing when it is no definition.
std::optional<OldDefinition> parseLine(const CString& line) {
    constexpr std::size_t kParts = 3;
    const int equals = line.Find(L'=');
    if (equals <= 0 || line.Find(kReplacement) >= 0) return std::nullopt;
    std::vector<CString> parts;
    for (int start = equals + 1; start >= 0;) {
        const int comma = line.Find(L',', start);
        parts.push_back(comma < 0 ? line.Mid(start) : line.Mid(start, comma - start));
        parts.back().Trim();
        start = comma < 0 ? -1 : comma + 1;
    }
    if (parts.size() > kParts) return std::nullopt;
    parts.resize(kParts);
    if (!isIndex(parts[1])) return std::nullopt;
    OldDefinition definition{line.Left(equals), parts[0], parts[1], parts[2]};
    definition.oldKey.TrimRight();
    return definition;
}

// The layers of a standard by their older key.
using LayersByOldKey = std::multimap<CString, LayerNode*>;

LayersByOldKey layersByOldKey(const Standard& standard) {
    LayersByOldKey layers;
    const auto add = [&layers](LayerNode* layer) { layers.emplace(layer->OldKey, layer); };
    for (const auto& group : standard.groups) {
        for (int i = 0; i < group->GetSystemNum(); ++i) {
            const PipeNode& system = *group->FindPipeSystem(i);
            for (int j = 0; j < system.GetLayerNum(); ++j)
                add(system.FindLayerNode(j));
        }
    }
    for (const auto& group : standard.otherLayers) {
        for (int i = 0; i < group->GetLayerNum(); ++i)
            add(group->FindLayerNode(i));
    }
    return layers;
}

void apply(const OldDefinition& definition, LayerNode& layer) {
    if (!definition.layerName.IsEmpty()) layer.LayerName = definition.layerName;
    if (!definition.color.IsEmpty()) layer.LayerColor = parseColor(definition.color);
    if (!definition.linetype.IsEmpty()) layer.LineStyle = definition.linetype;
}

// The numbers of the lines that are no definitions.
std::vector<int> readDefinitions(const CString& text, const LayersByOldKey& layers) {
    std::vector<int> badLines;
    int number = 0;
    for (int start = 0; start < text.GetLength();) {
        int end = text.Find(L'\n', start);
        if (end < 0) end = text.GetLength();
        CString line = text.Mid(start, end - start);
        start = end + 1;
        ++number;
        line.Trim();
        if (line.IsEmpty() || line[0] == L';') continue;
        if (const auto definition = parseLine(line)) {
            const auto [first, last] = layers.equal_range(definition->oldKey);
            for (auto entry = first; entry != last; ++entry)
                apply(*definition, *entry->second);
        } else {
            badLines.push_back(number);
        }
    }
    return badLines;
}

void report(const std::wstring& path, const std::vector<int>& badLines) {
    constexpr std::size_t kNamed = 10;
    CString numbers;
    for (std::size_t i = 0; i < badLines.size() && i < kNamed; ++i) {
        numbers = i == 0 ? formatInteger(badLines[i]) : makeText(translated(L"%1, %2", view(numbers), badLines[i]));
    }
    if (badLines.size() > kNamed) numbers += translated(L", ...").c_str();
    QrsExport::PrintRefusal(L"%s", translated(L"\nOld layer definitions %1: cannot read line %2, %3 left out.\n",
                                              platform::shownPath(path), view(numbers), badLines.size())
                                       .c_str());
}

}  // namespace

void readOldLayerDefinitions() {
    const Standard* standard = currentStandard();
    const std::wstring path = platform::joinPath(view(g_csSysPath), kFileName);
    platform::Error error;
    if (standard == nullptr || platform::presenceOf(path, error) == platform::Presence::Missing) return;
    std::string bytes;
    if (!platform::readOrdinaryFile(platform::nativePath(path), kMostBytes, bytes, error)) {
        const std::wstring reason = platform::fromUtf8(error.message);
        QrsExport::PrintRefusal(L"%s", translated(L"\nOld layer definitions were not read: %1\n", reason).c_str());
        return;
    }
    const std::vector<int> badLines =
        readDefinitions(makeText(platform::decode(platform::ansiCodePage(), bytes)), layersByOldKey(*standard));
    if (!badLines.empty()) report(path, badLines);
}

}  // namespace qrs::standard
