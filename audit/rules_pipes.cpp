// What is wrong with pipes.
#include <map>
#include <tuple>
#include <utility>

#include "inlanguage.h"
#include "PipeSystemTool.h"
#include "rules.h"

namespace qrs::audit {

namespace {

using TallyByPair = std::map<std::pair<std::wstring_view, std::wstring_view>, Tally>;

CString text(std::wstring_view view) {
    return CString(view);
}

bool isOnLayerOf(std::wstring_view layer, const std::vector<CString>& layersOfSystem) {
    for (const CString& one : layersOfSystem)
        if (isSameName(one.view(), layer)) return true;
    return false;
}

template <class Visit>
void visitPipes(const DrawingFacts& facts, const Visit& visit) {
    for (const auto* pipes : {&facts.pipesElsewhere, &facts.pipes})
        for (const PipeFacts& pipe : *pipes)
            visit(pipe);
}

// One of several findings of a system, which are accepted each by itself.
template <class... Parts>
void add(std::wstring_view system, const Tally& objects, Findings& findings, const wchar_t* detail,
         const Parts&... parts) {
    findings.emplace_back(std::wstring(system), objects, platform::translated(detail, parts...));
    for (const platform::Language one : {platform::Language::English, platform::Language::Chinese}) {
        const InLanguage language(one);
        findings.back().names.push_back(std::wstring(system) + L", " + platform::translated(detail, parts...));
    }
}

}  // namespace

void findUnknownSystems(const CheckedDrawing& drawing, Findings& findings) {
    std::map<std::wstring_view, Tally> pipes;
    visitPipes(drawing.facts, [&](const PipeFacts& pipe) { pipes[pipe.system].add(pipe.id); });
    for (const auto& [system, objects] : pipes)
        if (!PipeSystemTool::IsPipeSystemOfCurrentStandard(text(system)))
            findings.emplace_back(std::wstring(system), objects);
}

void findOldSystems(const CheckedDrawing& drawing, Findings& findings) {
    TallyByPair pipes;
    visitPipes(drawing.facts, [&](const PipeFacts& pipe) {
        if (!pipe.drawnSystem.empty() && pipe.drawnSystem != pipe.system)
            pipes[{pipe.drawnSystem, pipe.system}].add(pipe.id);
    });
    for (const auto& [names, objects] : pipes)
        findings.emplace_back(std::wstring(names.first), objects, platform::translated(L"today %1", names.second));
}

void findPipesOnOtherLayers(const CheckedDrawing& drawing, Findings& findings) {
    TallyByPair pipes;
    visitPipes(drawing.facts, [&](const PipeFacts& pipe) {
        // In blocks layer 0 stands for the layer of the block.
        if (!pipe.isInBlock || pipe.layer != L"0") pipes[{pipe.system, pipe.layer}].add(pipe.id);
    });
    for (const auto& [place, objects] : pipes) {
        const auto& [system, layer] = place;
        if (!PipeSystemTool::IsPipeSystemOfCurrentStandard(text(system))) continue;
        std::vector<CString> own;
        PipeSystemTool::GetPipeLayers({text(system)}, own);
        if (isOnLayerOf(layer, own)) continue;
        const CString other = PipeSystemTool::GetPipeSystemNameByLayer(text(layer));
        if (other.IsEmpty())
            add(system, objects, findings, platform::untranslated(L"on layer %1"), layer);
        else
            add(system, objects, findings, platform::untranslated(L"on layer %1, of %2"), layer, other.view());
    }
}

void findRisersWithoutSerial(const CheckedDrawing& drawing, Findings& findings) {
    TallyByPair risers;
    for (const PipeFacts& pipe : drawing.facts.pipes)
        if (pipe.isRiser && pipe.serial.empty()) risers[{pipe.system, pipe.building}].add(pipe.id);
    for (const auto& [place, objects] : risers) {
        const auto& [system, building] = place;
        if (building.empty())
            findings.emplace_back(std::wstring(system), objects);
        else
            add(system, objects, findings, platform::untranslated(L"of building %1"), building);
    }
}

// Serials count within a building.
void findDoubledSerials(const CheckedDrawing& drawing, Findings& findings) {
    std::map<std::tuple<std::wstring_view, std::wstring_view, std::wstring_view>, Tally> risers;
    for (const PipeFacts& pipe : drawing.facts.pipes)
        if (pipe.isRiser && !pipe.serial.empty()) risers[{pipe.system, pipe.building, pipe.serial}].add(pipe.id);
    for (const auto& [key, objects] : risers) {
        if (objects.count < 2) continue;
        const auto& [system, building, serial] = key;
        if (building.empty())
            add(system, objects, findings, platform::untranslated(L"serial %1"), serial);
        else
            add(system, objects, findings, platform::untranslated(L"serial %1 of building %2"), serial, building);
    }
}

}  // namespace qrs::audit
