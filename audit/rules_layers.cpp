// What is wrong with layers, and with what lies on them.
#include <set>
#include <utility>

#include "rules.h"

namespace qrs::audit {

namespace {

std::wstring wide(const CString& text) {
    return std::wstring(text.view());
}

// Layers the check speaks of: those of external references, and what every drawing has, are left out.
template <class Visit>
void visitLayers(const CheckedDrawing& drawing, const Visit& visit) {
    for (const LayerFacts& layer : drawing.facts.layers)
        if (!layer.isDependent() && !isBuiltInLayer(layer.name)) visit(layer);
}

template <class Visit>
void visitStandardLayers(const CheckedDrawing& drawing, const Visit& visit) {
    visitLayers(drawing, [&](const LayerFacts& layer) {
        if (const LayerNode* definition = drawing.standard.layer(layer.name)) visit(layer, *definition);
    });
}

std::wstring yesOrNo(bool isSo) {
    return isSo ? platform::translated(L"yes") : platform::translated(L"no");
}

bool carriesWeights(const DrawingFacts& facts) {
    return facts.database.originalFileVersion() >= AcDb::kDHL_1015;
}

// Where a drawing has no place for true colours, the nearest index of the palette is as good.
bool isSameColor(const DrawingFacts& facts, const AcCmColor& ours, const AcCmColor& theirs) {
    if (theirs.isByColor() && facts.database.originalFileVersion() < AcDb::kDHL_1800)
        return ours.colorIndex() == theirs.colorIndex();
    return ours == theirs;
}

// What became of an old name; empty when it is none.
std::wstring toldToday(const std::vector<const LayerNode*>& today) {
    std::wstring names;
    for (const LayerNode* one : today)
        names += (names.empty() ? L"" : L", ") + wide(one->LayerName);
    if (names.empty()) return {};
    return today.size() > 1 ? platform::translated(L"today one of %1", names)
                            : platform::translated(L"today %1", names);
}

void findOwn(const CheckedDrawing& drawing, Findings& findings, Tally LayerFacts::*own) {
    visitStandardLayers(drawing, [&](const LayerFacts& layer, const LayerNode&) {
        if ((layer.*own).count > 0) findings.emplace_back(layer.name, layer.*own);
    });
}

}  // namespace

std::vector<const LayerNode*> layersOfToday(const StandardLists& standard, std::wstring_view name) {
    if (const LayerNode* layer = standard.layer(name)) return {layer};
    return standard.layersOfOldName(name);
}

// One that is empty since its objects were moved is a foreign layer like others.
std::vector<const LayerNode*> newLayersOf(const StandardLists& standard, const LayerFacts& layer) {
    if (standard.layer(layer.name) != nullptr || layer.objects.count == 0) return {};
    return standard.layersOfOldName(layer.name);
}

std::vector<Difference> differencesOf(const CheckedDrawing& drawing, const LayerFacts& layer,
                                      const LayerNode& definition) {
    std::vector<Difference> differences;
    const AcCmColor& color = definition.LayerColor;
    if ((color.isByACI() || color.isByColor()) && !isSameColor(drawing.facts, layer.color, color))
        differences.push_back({platform::translated(L"colour"), textOf(layer.color), textOf(color)});
    const std::wstring linetype = wide(definition.LineStyle);
    std::wstring pattern;
    const bool isLoadable = isSameName(linetype, L"Continuous") || drawing.standard.pattern(linetype, pattern);
    // The editor makes what every drawing has.
    const bool isLost = !layer.lostLinetype.empty() && !isBuiltInLinetype(layer.lostLinetype);
    std::wstring here = layer.linetype.empty() ? layer.lostLinetype : layer.linetype;
    if (here.empty()) here = L"Continuous";
    if (isLoadable && (isLost || !isSameName(here, linetype)))
        differences.push_back(
            {platform::translated(L"linetype"), isLost ? platform::translated(L"%1 (missing)", here) : here, linetype});
    if (!carriesWeights(drawing.facts)) return differences;
    const auto weight = static_cast<AcDb::LineWeight>(definition.LineWeight);
    const bool isWeight = weight != AcDb::kLnWtByLayer && weight != AcDb::kLnWtByBlock;
    if (isWeight && layer.lineWeight != weight)
        differences.push_back({platform::translated(L"lineweight"), textOf(layer.lineWeight), textOf(weight)});
    if (layer.isPlottable != definition.CanPlot)
        differences.push_back(
            {platform::translated(L"plotted"), yesOrNo(layer.isPlottable), yesOrNo(definition.CanPlot)});
    return differences;
}

void findMissingLayers(const CheckedDrawing& drawing, Findings& findings) {
    for (const auto& [name, objects] : drawing.facts.missingLayers) {
        if (isBuiltInLayer(name)) continue;
        const bool isStandard = drawing.standard.layer(name) != nullptr;
        findings.emplace_back(
            name, objects,
            isStandard ? platform::translated(L"in the standard") : toldToday(drawing.standard.layersOfOldName(name)));
    }
}

void findForeignLayers(const CheckedDrawing& drawing, Findings& findings) {
    visitLayers(drawing, [&](const LayerFacts& layer) {
        if (drawing.standard.layer(layer.name) != nullptr || !newLayersOf(drawing.standard, layer).empty()) return;
        findings.emplace_back(layer.name, layer.objects);
    });
}

void findDifferentLayers(const CheckedDrawing& drawing, Findings& findings) {
    visitStandardLayers(drawing, [&](const LayerFacts& layer, const LayerNode& definition) {
        std::vector<Difference> differences = differencesOf(drawing, layer, definition);
        if (differences.empty()) return;
        findings.emplace_back(layer.name, layer.objects);
        findings.back().differences = std::move(differences);
    });
}

void findOldLayers(const CheckedDrawing& drawing, Findings& findings) {
    visitLayers(drawing, [&](const LayerFacts& layer) {
        const std::vector<const LayerNode*> today = newLayersOf(drawing.standard, layer);
        if (today.empty()) return;
        findings.emplace_back(layer.name, layer.objects, toldToday(today));
    });
}

void findMisspeltLayers(const CheckedDrawing& drawing, Findings& findings) {
    visitStandardLayers(drawing, [&](const LayerFacts& layer, const LayerNode& definition) {
        if (layer.name != definition.LayerName.view())
            findings.emplace_back(layer.name, layer.objects,
                                  platform::translated(L"spelled %1", definition.LayerName.view()));
    });
}

void findUnusedLayers(const CheckedDrawing& drawing, Findings& findings) {
    visitLayers(drawing, [&](const LayerFacts& layer) {
        if (!layer.isUsed) findings.emplace_back(layer.name, layer.objects);
    });
}

void findAbsentLayers(const CheckedDrawing& drawing, Findings& findings) {
    std::set<std::wstring, NameLess> present;
    for (const LayerFacts& layer : drawing.facts.layers)
        present.insert(layer.name);
    for (const LayerNode* layer : drawing.standard.layers())
        if (present.count(wide(layer->LayerName)) == 0) findings.emplace_back(wide(layer->LayerName), Tally());
}

void findOwnColors(const CheckedDrawing& drawing, Findings& findings) {
    findOwn(drawing, findings, &LayerFacts::ownColor);
}

void findOwnLinetypes(const CheckedDrawing& drawing, Findings& findings) {
    findOwn(drawing, findings, &LayerFacts::ownLinetype);
}

void findOwnLineWeights(const CheckedDrawing& drawing, Findings& findings) {
    findOwn(drawing, findings, &LayerFacts::ownLineWeight);
}

void findOnLayerZero(const CheckedDrawing& drawing, Findings& findings) {
    if (drawing.facts.onLayerZero.count > 0) findings.emplace_back(L"0", drawing.facts.onLayerZero);
}

}  // namespace qrs::audit
