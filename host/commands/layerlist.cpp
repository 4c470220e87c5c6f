// Layers found by lists of names, and listed in columns.
#include "host/commands/layerlist.h"

#include <cwchar>
#include <iterator>
#include <set>

#include "acedads.h"
#include "host/commands/asking.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;
using platform::untranslated;

namespace {

constexpr const wchar_t* kColorNames[] = {untranslated(L"red"),  untranslated(L"yellow"), untranslated(L"green"),
                                          untranslated(L"cyan"), untranslated(L"blue"),   untranslated(L"magenta"),
                                          untranslated(L"white")};
constexpr std::size_t kColorNameCount = sizeof kColorNames / sizeof kColorNames[0];

std::wstring stateText(const AcDbLayerTableRecord& layer) {
    std::wstring text = layer.isOff() ? translated(L"off") : translated(L"on");
    if (layer.isFrozen()) text += translated(L" frozen");
    if (layer.isLocked()) text += translated(L" locked");
    return text;
}

std::wstring linetypeText(const AcDbLayerTableRecord& layer) {
    const AcDbLinetypeTableRecordPointer linetype(layer.linetypeObjectId(), AcDb::kForRead);
    const ACHAR* name = nullptr;
    if (linetype.openStatus() != Acad::eOk || linetype->getName(name) != Acad::eOk) return L"?";
    return name;
}

}  // namespace

std::wstring layerName(AcDbObjectId id) {
    const AcDbLayerTableRecordPointer layer(id, AcDb::kForRead);
    const ACHAR* name = nullptr;
    if (layer.openStatus() != Acad::eOk || layer->getName(name) != Acad::eOk) return {};
    return name;
}

std::vector<NamedLayer> allLayers(AcDbDatabase* database) {
    return allRecords<AcDbLayerTable>(database);
}

std::vector<NamedLayer> findLayers(AcDbDatabase* database, const std::wstring& list) {
    return findRecords(allLayers(database), list, untranslated(L"layer"));
}

std::vector<NamedLayer> layersOfSelection() {
    std::vector<NamedLayer> layers;
    std::set<AcDbObjectId> known;
    for (const AcDbObjectId id : askObjects().value_or(AcDbObjectIdArray())) {
        const AcDbEntityPointer entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk || entity->layerId().isNull()) continue;
        const AcDbObjectId layer = entity->layerId();
        if (known.insert(layer).second) layers.push_back({layer, layerName(layer)});
    }
    return layers;
}

bool hasLayer(AcDbDatabase* database, const std::wstring& name) {
    const AcDbLayerTablePointer table(database, AcDb::kForRead);
    return table.openStatus() == Acad::eOk && table->has(name.c_str());
}

AcDbObjectId makeLayer(AcDbDatabase* database, const std::wstring& name) {
    AcDbLayerTablePointer table(database, AcDb::kForWrite);
    AcDbLayerTableRecordPointer record;
    record.create();
    const bool added = table.openStatus() == Acad::eOk && record->setName(name.c_str()) == Acad::eOk &&
                       table->add(record.object()) == Acad::eOk;
    if (added) return record->objectId();
    refuse(translated(L"Invalid layer name: %1.", inQuotes(name)));
    return {};
}

void makeLayerCurrent(AcDbDatabase* database, const std::wstring& name) {
    const AcDbLayerTableRecordPointer record(name.c_str(), database, AcDb::kForRead);
    if (record.openStatus() != Acad::eOk) return refuse(translated(L"Cannot find layer %1.", inQuotes(name)));
    if (record->isFrozen()) return refuse(translated(L"Cannot make layer %1 current.  It is frozen.", inQuotes(name)));
    std::wstring text = name;
    resbuf value = {};
    value.restype = RTSTR;
    value.resval.rstring = text.data();
    if (acedSetVar(L"CLAYER", &value) != RTNORM) refuse(translated(L"Cannot make layer %1 current.", inQuotes(name)));
}

std::wstring colorText(const AcCmColor& color) {
    if (color.isByColor())
        return std::to_wstring(color.red()) + L"," + std::to_wstring(color.green()) + L"," +
               std::to_wstring(color.blue());
    const std::size_t index = color.colorIndex();
    std::wstring text = std::to_wstring(index);
    if (index >= 1 && index <= kColorNameCount) text += L" (" + translated(kColorNames[index - 1]) + L")";
    return text;
}

namespace {

// "red", "yellow" ... and what else is taken for a colour by its name.
std::vector<std::wstring> colorNames() {
    std::vector<std::wstring> names(std::begin(kColorNames), std::end(kColorNames));
    names.emplace_back(L"Truecolor");
    return names;
}

// The palette colour of a name ("red") or number ("1" to "255").
std::optional<AcCmColor> paletteColor(const std::wstring& text) {
    AcCmColor color;
    for (std::size_t i = 0; i < kColorNameCount; ++i) {
        if (platform::compareNoCase(text, kColorNames[i]) != 0 && text != translated(kColorNames[i])) continue;
        color.setColorIndex(static_cast<Adesk::UInt16>(i + 1));
        return color;
    }
    wchar_t* end = nullptr;
    const long index = std::wcstol(text.c_str(), &end, 10);
    if (text.empty() || *end != L'\0' || index < 1 || index > 255) return std::nullopt;
    color.setColorIndex(static_cast<Adesk::UInt16>(index));
    return color;
}

// The colour of "255,128,0".
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

}  // namespace

std::optional<std::wstring> askColor(const std::wstring& prompt, std::optional<AcCmColor>& color) {
    std::optional<std::wstring> text = askText(prompt, Blanks::EndAnswer, Wanted::Text, colorNames());
    if (!text || text->empty()) return text;
    const std::wstring folded = platform::foldCase(*text);
    const bool isTrueColor = std::wstring(L"TRUECOLOR").compare(0, folded.size(), folded) == 0;
    if (isTrueColor) text = askText(translated(L"\nRed,Green,Blue: "), Blanks::EndAnswer);
    if (text) color = isTrueColor ? trueColor(*text) : paletteColor(*text);
    return text;
}

void printLayers(const std::vector<NamedLayer>& layers) {
    std::vector<Row> rows = {
        {translated(L"Layer name"), translated(L"State"), translated(L"Color"), translated(L"Linetype")}};
    for (const NamedLayer& named : layers) {
        const AcDbLayerTableRecordPointer layer(named.id, AcDb::kForRead);
        if (layer.openStatus() != Acad::eOk) continue;
        const AcDbLayerTableRecord& record = *layer.object();
        rows.push_back({inQuotes(named.name), stateText(record), colorText(record.color()), linetypeText(record)});
    }
    printTable(rows);
}

}  // namespace qrs::host::commands
