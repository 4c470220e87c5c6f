// Questions about a large standard (1,000 systems of 15 layers each), beside a plain loop over the layer names.
#include <benchmark/benchmark.h>

#include "PipeSystemTool.h"
#include "standard/holder.h"

namespace {

constexpr int kGroups = 10;
constexpr int kSystemsOfGroup = 100;
constexpr const wchar_t* kTypes[] = {L"管线",   L"立管", L"阀门", L"文字", L"标注",     L"设备",     L"电动阀", L"喷头",
                                     L"消火栓", L"井",   L"扣弯", L"标高", L"管径文字", L"管线流向", L"坐标"};

struct Name {
    CString layer;
    CString system;
};

// Makes the standard the current one; its layers in the order in which they are searched.
std::vector<Name> makeStandard() {
    qrs::standard::Standard standard;
    std::vector<Name> names;
    for (int g = 0; g < kGroups; ++g) {
        CString groupName;
        groupName.Format(L"系统组%d", g);
        auto group = std::make_unique<PipeGroupNode>(groupName);
        for (int s = 0; s < kSystemsOfGroup; ++s) {
            auto system = std::make_unique<PipeNode>();
            system->PipeName.Format(L"系统%d", g * kSystemsOfGroup + s);
            for (const wchar_t* type : kTypes) {
                auto layer = std::make_unique<LayerNode>();
                layer->LayerType = type;
                layer->LayerName = L"给排-" + system->PipeName + L"-" + type;
                names.push_back({layer->LayerName, system->PipeName});
                system->AddLayerNode(layer.release());
            }
            group->AddPipeSystem(system.release());
        }
        standard.groups.push_back(std::move(group));
    }
    qrs::standard::StandardHolder::instance().adopt(std::move(standard), L"\\bench.qdsl");
    return names;
}

const std::vector<Name>& names() {
    static const std::vector<Name> all = makeStandard();
    return all;
}

// The last layer, so that every name is compared.
CString askedName() {
    return names().back().layer;
}

void plainLoop(benchmark::State& state) {
    const CString asked = askedName();
    for (auto _ : state) {
        CString system;
        for (const Name& name : names()) {
            if (name.layer.CompareNoCase(asked) != 0) continue;
            system = name.system;
            break;
        }
        benchmark::DoNotOptimize(system);
    }
}
BENCHMARK(plainLoop);

// The same with the module's own shortcut: names of different lengths are not compared at all.
void plainLoopLengthsFirst(benchmark::State& state) {
    const CString asked = askedName();
    for (auto _ : state) {
        CString system;
        for (const Name& name : names()) {
            if (name.layer.GetLength() != asked.GetLength() || name.layer.CompareNoCase(asked) != 0) continue;
            system = name.system;
            break;
        }
        benchmark::DoNotOptimize(system);
    }
}
BENCHMARK(plainLoopLengthsFirst);

void systemByLayer(benchmark::State& state) {
    const CString asked = askedName();
    for (auto _ : state)
        benchmark::DoNotOptimize(PipeSystemTool::GetPipeSystemNameByLayer(asked));
}
BENCHMARK(systemByLayer);

void systemByPipeLayer(benchmark::State& state) {
    const CString asked = names()[names().size() - std::size(kTypes)].layer;
    for (auto _ : state)
        benchmark::DoNotOptimize(PipeSystemTool::GetPipeSystemNameByPipeLayer(asked));
}
BENCHMARK(systemByPipeLayer);

void layerOfSystem(benchmark::State& state) {
    const CString asked = names().back().system;
    for (auto _ : state)
        benchmark::DoNotOptimize(PipeSystemTool::GetLayerName(asked, L"坐标", false));
}
BENCHMARK(layerOfSystem);

// Collecting must grow with the names, not with their square.
void allPipeLayers(benchmark::State& state) {
    std::vector<CString> groups;
    for (int g = 0; g < static_cast<int>(state.range(0)); ++g) {
        CString name;
        name.Format(L"系统组%d", g);
        groups.push_back(name);
    }
    names();
    for (auto _ : state) {
        std::vector<CString> layers;
        PipeSystemTool::GetSystemGroupPipeLayers(groups, layers);
        benchmark::DoNotOptimize(layers.data());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(allPipeLayers)->Arg(1)->Arg(2)->Arg(5)->Arg(kGroups)->Complexity();

}  // namespace

BENCHMARK_MAIN();
