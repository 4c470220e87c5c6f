// Time of opening, editing and saving drawings of 10,000 to 1,000,000 entities, text and binary. The drawings are made
// by qrs_make_drawing, whose path comes from the build.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>

#include "drawings.h"
#include "host/dxf/drawing.h"

namespace {

using namespace qrs::dxf;
using bench::drawings;
namespace fs = std::filesystem;

void countBytes(benchmark::State& state, const fs::path& path) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(fs::file_size(path)));
}

void open(benchmark::State& state) {
    const fs::path path = drawings().of(state);
    for (auto _ : state) {
        qrs::platform::Error error;
        benchmark::DoNotOptimize(Drawing::open(path, error));
    }
    countBytes(state, path);
}

void openAndSave(benchmark::State& state) {
    const fs::path path = drawings().of(state);
    for (auto _ : state) {
        qrs::platform::Error error;
        const auto drawing = Drawing::open(path, error);
        if (drawing == nullptr || !drawing->save(drawings().output(), false, error)) {
            state.SkipWithError(error.message.c_str());
            return;
        }
    }
    countBytes(state, path);
}

void moveEveryEntity(benchmark::State& state) {
    const fs::path path = drawings().of(state);
    for (auto _ : state) {
        qrs::platform::Error error;
        const auto drawing = Drawing::open(path, error);
        Tag tag;
        for (RecordId id = drawing->first(); id != kNoRecord; id = drawing->next(id)) {
            if (drawing->record(id).layer != kNoName && drawing->findTag(id, 8, tag)) drawing->setValue(id, tag, "0");
        }
        benchmark::DoNotOptimize(drawing->isModified());
    }
    countBytes(state, path);
}

void findEveryHandle(benchmark::State& state) {
    qrs::platform::Error error;
    const auto drawing = Drawing::open(drawings().of(state), error);
    for (auto _ : state) {
        for (RecordId id = 0; id < drawing->recordCount(); ++id) {
            benchmark::DoNotOptimize(drawing->findHandle(drawing->record(id).handle));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(drawing->recordCount()));
}

void sizesInBothForms(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"entities", "binary"})->ArgsProduct({{10000, 100000, 1000000}, {0, 1}});
    benchmark->Unit(benchmark::kMillisecond);
}

BENCHMARK(open)->Apply(sizesInBothForms);
BENCHMARK(openAndSave)->Apply(sizesInBothForms);
BENCHMARK(moveEveryEntity)->Apply(sizesInBothForms);
BENCHMARK(findEveryHandle)->Apply(sizesInBothForms);

}  // namespace

BENCHMARK_MAIN();
