// What is wrong with pipes.
#include <map>
#include <tuple>
#include <utility>

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

}  // namespace

void findUnknownSystems(const CheckedDrawing& drawing, Findings& findings) {
    std::map<std::wstring_view, Tally> pipes;
    for (const PipeFacts& pipe : drawing.facts.pipes)
        pipes[pipe.system].add(pipe.id);
    for (const auto& [system, objects] : pipes)
        if (!PipeSystemTool::IsPipeSystemOfCurrentStandard(text(system)))
            findings.emplace_back(std::wstring(system), objects);
}

void findOldSystems(const CheckedDrawing& drawing, Findings& findings) {
    TallyByPair pipes;
    for (const PipeFacts& pipe : drawing.facts.pipes)
        if (!pipe.drawnSystem.empty() && pipe.drawnSystem != pipe.system)
            pipes[{pipe.drawnSystem, pipe.system}].add(pipe.id);
    for (const auto& [names, objects] : pipes)
        findings.emplace_back(std::wstring(names.first), objects, platform::translated(L"today %1", names.second));
}

void findPipesOnOtherLayers(const CheckedDrawing& drawing, Findings& findings) {
    TallyByPair pipes;
    for (const PipeFacts& pipe : drawing.facts.pipes)
        pipes[{pipe.system, pipe.layer}].add(pipe.id);
    for (const auto& [place, objects] : pipes) {
        const auto& [system, layer] = place;
        if (!PipeSystemTool::IsPipeSystemOfCurrentStandard(text(system))) continue;
        std::vector<CString> own;
        PipeSystemTool::GetPipeLayers({text(system)}, own);
        if (isOnLayerOf(layer, own)) continue;
        const CString other = PipeSystemTool::GetPipeSystemNameByLayer(text(layer));
        findings.emplace_back(std::wstring(system), objects,
                              other.IsEmpty() ? platform::translated(L"on layer %1", layer)
                                              : platform::translated(L"on layer %1, of %2", layer, other.view()));
    }
}

void findRisersWithoutSerial(const CheckedDrawing& drawing, Findings& findings) {
    std::map<std::wstring_view, Tally> risers;
    for (const PipeFacts& pipe : drawing.facts.pipes)
        if (pipe.isRiser && pipe.serial.empty()) risers[pipe.system].add(pipe.id);
    for (const auto& [system, objects] : risers)
        findings.emplace_back(std::wstring(system), objects);
}

// Serials count within a building.
void findDoubledSerials(const CheckedDrawing& drawing, Findings& findings) {
    std::map<std::tuple<std::wstring_view, std::wstring_view, std::wstring_view>, Tally> risers;
    for (const PipeFacts& pipe : drawing.facts.pipes)
        if (pipe.isRiser && !pipe.serial.empty()) risers[{pipe.system, pipe.building, pipe.serial}].add(pipe.id);
    for (const auto& [key, objects] : risers) {
        if (objects.count < 2) continue;
        const auto& [system, building, serial] = key;
        findings.emplace_back(std::wstring(system), objects,
                              building.empty() ? platform::translated(L"serial %1", serial)
                                               : platform::translated(L"serial %1 of building %2", serial, building));
    }
}

}  // namespace qrs::audit
