// Time of drawing the model of drawings of 10,000 to 1,000,000 entities in a picture.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <memory>

#include "drawings.h"
#include "host/plot/plot.h"

namespace {

using namespace qrs::host;

void plotModel(benchmark::State& state, const char* name) {
    qrs::platform::Error error;
    const auto drawing = qrs::dxf::Drawing::open(bench::drawings().of(state), error);
    PlotRequest request;
    request.file = bench::drawings().output().replace_filename(name);
    request.layout = L"Model";
    const LocateFile nowhere = [](const std::wstring&) { return std::wstring(); };
    PlotOutcome outcome;
    for (auto _ : state) {
        pick::References references;
        if (drawing &&
            plot::plotDrawing(*drawing, {}, references, nowhere, request, outcome, error) == PlotFailure::None)
            continue;
        state.SkipWithError(error.message.c_str());
        return;
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(outcome.entities));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"entities", "binary"})->ArgsProduct({{10000, 100000, 1000000}, {0}});
    benchmark->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(plotModel, png, "picture.png")->Apply(sizes);
BENCHMARK_CAPTURE(plotModel, pdf, "picture.pdf")->Apply(sizes);

}  // namespace

BENCHMARK_MAIN();
