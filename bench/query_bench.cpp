// Questions about standards of 10 to 10,000 systems (15 layers each, 10 groups), beside a plain loop over the names
// that are searched; and loading such standards. Items per second are questions per second.
#include <benchmark/benchmark.h>

#include <cwchar>
#include <string>
#include <utility>
#include <vector>

#include "PipeSystemTool.h"
#include "standard/holder.h"
#include "standard/startup.h"

namespace {

constexpr int kGroups = 10;
constexpr const wchar_t* kTypes[] = {L"管线",   L"立管", L"阀门", L"文字", L"标注",     L"设备",     L"电动阀", L"喷头",
                                     L"消火栓", L"井",   L"扣弯", L"标高", L"管径文字", L"管线流向", L"坐标"};

// One layer, in the order in which layers are searched.
struct Row {
    CString layer;
    CString pipeLayer;  // of its system
    CString system;
};

qrs::standard::Standard makeStandard(int systems, std::vector<Row>& rows) {
    qrs::standard::Standard standard;
    for (int s = 0; s < systems; ++s) {
        if (s * kGroups / systems == static_cast<int>(standard.groups.size())) {
            CString name;
            name.Format(L"系统组%d", s);
            standard.groups.push_back(std::make_unique<PipeGroupNode>(name));
        }
        auto system = std::make_unique<PipeNode>();
        system->PipeName.Format(L"系统%d", s);
        for (const wchar_t* type : kTypes) {
            auto layer = std::make_unique<LayerNode>();
            layer->LayerType = type;
            layer->LayerName = L"给排-" + system->PipeName + L"-" + type;
            rows.push_back({layer->LayerName, L"给排-" + system->PipeName + L"-管线", system->PipeName});
            system->AddLayerNode(layer.release());
        }
        standard.groups.back()->AddPipeSystem(system.release());
    }
    return standard;
}

// Makes the standard of that many systems the current one.
const std::vector<Row>& current(std::int64_t systems) {
    static std::int64_t made = 0;
    static std::vector<Row> rows;
    if (made != systems) {
        rows.clear();
        qrs::standard::StandardHolder::instance().adopt(makeStandard(static_cast<int>(systems), rows), L"\\bench.qdsl");
        // As the start does, so that no question is measured with it.
        qrs::standard::initLayerMaps();
        made = systems;
    }
    return rows;
}

// Asks for one row after another, far apart, so that no answer lies in the processor's caches by chance.
template <class Ask>
void askAll(benchmark::State& state, const Ask& ask) {
    const std::vector<Row>& rows = current(state.range(0));
    std::size_t i = 0;
    for (auto _ : state) {
        i = (i + 7919) % rows.size();
        benchmark::DoNotOptimize(ask(rows[i]));
    }
    state.SetItemsProcessed(state.iterations());
}

void plainLoopByLayer(benchmark::State& state) {
    std::vector<std::pair<std::wstring, std::wstring>> names;
    for (const Row& row : current(state.range(0)))
        names.emplace_back(row.layer.GetString(), row.system.GetString());
    askAll(state, [&](const Row& asked) {
        for (const auto& [layer, system] : names) {
#if defined(_WIN32)
            if (_wcsicmp(layer.c_str(), asked.layer.GetString()) == 0) return &system;
#else
            if (wcscasecmp(layer.c_str(), asked.layer.GetString()) == 0) return &system;
#endif
        }
        return static_cast<const std::wstring*>(nullptr);
    });
}

void bySystem(benchmark::State& state) {
    askAll(state, [](const Row& asked) { return PipeSystemTool::GetPipeLineWidth(asked.system); });
}

void layerOfSystem(benchmark::State& state) {
    askAll(state, [](const Row& asked) { return PipeSystemTool::GetLayerName(asked.system, L"坐标", false); });
}

void byLayer(benchmark::State& state) {
    askAll(state, [](const Row& asked) { return PipeSystemTool::GetPipeSystemNameByLayer(asked.layer); });
}

void byPipeLayer(benchmark::State& state) {
    askAll(state, [](const Row& asked) { return PipeSystemTool::GetPipeSystemNameByPipeLayer(asked.pipeLayer); });
}

void byUnknownLayer(benchmark::State& state) {
    const CString unknown(L"给排-系统没有-管线");
    askAll(state, [&](const Row&) { return PipeSystemTool::GetPipeSystemNameByLayer(unknown); });
}

// A name is changed before each question.
void byChangedLayer(benchmark::State& state) {
    current(state.range(0));
    const auto& group = qrs::standard::currentStandard()->groups.back();
    LayerNode* layer = group->FindPipeSystem(group->GetSystemNum() - 1)->FindLayerNode(0);
    const CString names[] = {layer->LayerName + L"1", layer->LayerName + L"2"};
    const CString before = layer->LayerName;
    std::size_t i = 0;
    for (auto _ : state) {
        layer->LayerName = names[++i % 2];
        benchmark::DoNotOptimize(PipeSystemTool::GetPipeSystemNameByLayer(names[i % 2]));
    }
    layer->LayerName = before;
    state.SetItemsProcessed(state.iterations());
}

// Collecting must grow with the names, not with their square.
void allPipeLayers(benchmark::State& state) {
    current(state.range(0));
    std::vector<CString> groups;
    for (const auto& group : qrs::standard::currentStandard()->groups)
        groups.push_back(group->GroupName());
    for (auto _ : state) {
        std::vector<CString> layers;
        PipeSystemTool::GetSystemGroupPipeLayers(groups, layers);
        benchmark::DoNotOptimize(layers.data());
    }
    state.SetComplexityN(state.range(0));
}

// From the bytes of the file to the first answer by layer.
void loading(benchmark::State& state) {
    std::vector<Row> rows;
    std::string bytes;
    qrs::platform::Error error;
    formatStandard(makeStandard(static_cast<int>(state.range(0)), rows), bytes, error);
    for (auto _ : state) {
        qrs::standard::Standard standard;
        parseStandard(bytes, "bench.qdsl", standard, error);
        benchmark::DoNotOptimize(standard.groups.back()->FindPipeSystemByLayerName(rows.back().layer));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
    state.SetComplexityN(state.range(0));
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->RangeMultiplier(10)->Range(10, 10000);
}

BENCHMARK(plainLoopByLayer)->Apply(sizes);
BENCHMARK(bySystem)->Apply(sizes);
BENCHMARK(layerOfSystem)->Apply(sizes);
BENCHMARK(byLayer)->Apply(sizes);
BENCHMARK(byPipeLayer)->Apply(sizes);
BENCHMARK(byUnknownLayer)->Apply(sizes);
BENCHMARK(byChangedLayer)->Apply(sizes);
BENCHMARK(allPipeLayers)->Apply(sizes)->Complexity();
BENCHMARK(loading)->Apply(sizes)->Unit(benchmark::kMillisecond)->Complexity();

}  // namespace

BENCHMARK_MAIN();
