// Layers found by lists of names, and listed in columns.
#include "commands/layerlist.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <memory>

#include "acedads.h"
#include "dbobjptr.h"
#include "ed/wildcard.h"
#include "host/platform/codepage.h"

namespace qrs::host::commands {

namespace {

constexpr const wchar_t* kColorNames[] = {L"red", L"yellow", L"green", L"cyan", L"blue", L"magenta", L"white"};
constexpr std::size_t kColorNameCount = sizeof kColorNames / sizeof kColorNames[0];

// Code points that take two columns of a terminal, and those that take none.
struct Range {
    char32_t first, last;
};
constexpr Range kWide[] = {{0x1100, 0x115F}, {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xA960, 0xA97F},
                           {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF01, 0xFF60},
                           {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};
constexpr Range kZeroWidth[] = {{0x0300, 0x036F}, {0x200B, 0x200F}, {0xFE00, 0xFE0F}};

template <std::size_t Count>
bool isIn(const Range (&ranges)[Count], char32_t codePoint) {
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [codePoint](const Range& range) { return codePoint >= range.first && codePoint <= range.last; });
}

std::size_t columnsOf(const std::wstring& text) {
    std::size_t columns = 0;
    for (std::size_t i = 0; i < text.size();) {
        const char32_t codePoint = platform::nextCodePoint(text, i);
        columns += isIn(kWide, codePoint) ? 2u : isIn(kZeroWidth, codePoint) ? 0u : 1u;
    }
    return columns;
}

std::wstring stateText(const AcDbLayerTableRecord& layer) {
    std::wstring text = layer.isOff() ? L"off" : L"on";
    if (layer.isFrozen()) text += L" frozen";
    if (layer.isLocked()) text += L" locked";
    return text;
}

std::wstring linetypeText(const AcDbLayerTableRecord& layer) {
    const AcDbLinetypeTableRecordPointer linetype(layer.linetypeObjectId(), AcDb::kForRead);
    const ACHAR* name = nullptr;
    if (linetype.openStatus() != Acad::eOk || linetype->getName(name) != Acad::eOk) return L"?";
    return name;
}

using Row = std::array<std::wstring, 4>;

void printTable(const std::vector<Row>& rows) {
    std::array<std::size_t, std::tuple_size<Row>::value> widths{};
    for (const Row& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], columnsOf(row[i]));
    std::wstring text;
    for (std::size_t line = 0; line < rows.size(); ++line) {
        for (std::size_t i = 0; i < widths.size(); ++i) {
            text += (i == 0 ? L"\n" : L"  ") + rows[line][i];
            if (i + 1 < widths.size()) text.append(widths[i] - columnsOf(rows[line][i]), L' ');
        }
        if (line > 0) continue;
        for (std::size_t i = 0; i < widths.size(); ++i)
            text += (i == 0 ? L"\n" : L"  ") + std::wstring(widths[i], L'-');
    }
    acedPrompt(text.c_str());
}

}  // namespace

std::wstring layerName(AcDbObjectId id) {
    const AcDbLayerTableRecordPointer layer(id, AcDb::kForRead);
    const ACHAR* name = nullptr;
    if (layer.openStatus() != Acad::eOk || layer->getName(name) != Acad::eOk) return {};
    return name;
}

std::vector<NamedLayer> allLayers(AcDbDatabase* database) {
    std::vector<NamedLayer> layers;
    const AcDbLayerTablePointer table(database, AcDb::kForRead);
    AcDbLayerTableIterator* walk = nullptr;
    if (table.openStatus() != Acad::eOk || table->newIterator(walk) != Acad::eOk) return layers;
    for (const std::unique_ptr<AcDbLayerTableIterator> iterator(walk); !iterator->done(); iterator->step()) {
        AcDbObjectId id;
        if (iterator->getRecordId(id) == Acad::eOk) layers.push_back({id, layerName(id)});
    }
    return layers;
}

std::vector<std::wstring> splitNames(const std::wstring& list) {
    std::vector<std::wstring> names;
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(L',', begin), list.size());
        std::wstring name = list.substr(begin, end - begin);
        begin = end + 1;
        name.erase(0, name.find_first_not_of(L' '));
        name.erase(name.find_last_not_of(L' ') + 1);
        if (!name.empty()) names.push_back(std::move(name));
    }
    return names;
}

std::vector<NamedLayer> findLayers(AcDbDatabase* database, const std::wstring& list) {
    const std::vector<NamedLayer> layers = allLayers(database);
    std::vector<bool> meant(layers.size());
    const auto mark = [&](const auto& means) {
        bool any = false;
        for (std::size_t i = 0; i < layers.size(); ++i)
            if (means(layers[i].name)) any = meant[i] = true;
        return any;
    };
    for (const std::wstring& part : splitNames(list)) {
        if (mark([&](const std::wstring& name) { return platform::compareNoCase(name, part) == 0; })) continue;
        if (part.find_first_of(L"*?#@.~[") == std::wstring::npos)
            acedPrompt((L"\nCannot find layer \"" + part + L"\".").c_str());
        else if (!mark([&](const std::wstring& name) { return ed::matchesWildcard(name, part); }))
            acedPrompt(L"\nNo matching layer names found.");
    }
    std::vector<NamedLayer> found;
    for (std::size_t i = 0; i < layers.size(); ++i)
        if (meant[i]) found.push_back(layers[i]);
    return found;
}

std::wstring colorText(const AcCmColor& color) {
    if (color.isByColor())
        return std::to_wstring(color.red()) + L"," + std::to_wstring(color.green()) + L"," +
               std::to_wstring(color.blue());
    const std::size_t index = color.colorIndex();
    std::wstring text = std::to_wstring(index);
    if (index >= 1 && index <= kColorNameCount) text += std::wstring(L" (") + kColorNames[index - 1] + L")";
    return text;
}

std::optional<AcCmColor> paletteColor(const std::wstring& text) {
    AcCmColor color;
    for (std::size_t i = 0; i < kColorNameCount; ++i) {
        if (platform::compareNoCase(text, kColorNames[i]) != 0) continue;
        color.setColorIndex(static_cast<Adesk::UInt16>(i + 1));
        return color;
    }
    wchar_t* end = nullptr;
    const long index = std::wcstol(text.c_str(), &end, 10);
    if (text.empty() || *end != L'\0' || index < 1 || index > 255) return std::nullopt;
    color.setColorIndex(static_cast<Adesk::UInt16>(index));
    return color;
}

std::optional<AcCmColor> trueColor(const std::wstring& text) {
    Adesk::UInt8 components[3] = {};
    const wchar_t* at = text.c_str();
    for (int i = 0; i < 3; ++i) {
        wchar_t* end = nullptr;
        const long value = std::wcstol(at, &end, 10);
        if (end == at || value < 0 || value > 255 || *end != (i < 2 ? L',' : L'\0')) return std::nullopt;
        components[i] = static_cast<Adesk::UInt8>(value);
        at = end + 1;
    }
    AcCmColor color;
    color.setRGB(components[0], components[1], components[2]);
    return color;
}

void printLayers(const std::vector<NamedLayer>& layers) {
    std::vector<Row> rows = {{L"Layer name", L"State", L"Color", L"Linetype"}};
    for (const NamedLayer& named : layers) {
        const AcDbLayerTableRecordPointer layer(named.id, AcDb::kForRead);
        if (layer.openStatus() != Acad::eOk) continue;
        const AcDbLayerTableRecord& record = *layer.object();
        rows.push_back(
            {L"\"" + named.name + L"\"", stateText(record), colorText(record.color()), linetypeText(record)});
    }
    printTable(rows);
}

}  // namespace qrs::host::commands
