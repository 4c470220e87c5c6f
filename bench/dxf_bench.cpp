// Time of opening, editing and saving drawings of 10,000 to 1,000,000 entities, text and binary. The drawings are made
// by qrs_make_drawing, whose path comes from the build.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "host/dxf/drawing.h"

namespace {

using namespace qrs::dxf;
namespace fs = std::filesystem;

// A folder of drawings that goes away with the program.
class Drawings {
  public:
    Drawings() : folder_(fs::temp_directory_path() / ("qrs_dxf_bench_" + std::to_string(std::time(nullptr)))) {
        fs::create_directories(folder_);
    }
    ~Drawings() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    // The drawing a benchmark's arguments ask for: entities, and whether it is binary.
    fs::path of(const benchmark::State& state) const {
        const std::string entities = std::to_string(state.range(0));
        const std::string form = state.range(1) != 0 ? "--binary " : "";
        const fs::path path = folder_ / (form + entities + ".dxf");
        if (!fs::exists(path)) {
            const std::string command =
                "\"" QRS_MAKE_DRAWING "\" " + form + entities + " 200 AC1024 \"" + path.string() + "\"";
            if (std::system(command.c_str()) != 0) std::abort();
        }
        return path;
    }
    fs::path output() const { return folder_ / "out.dxf"; }

  private:
    fs::path folder_;
};

const Drawings& drawings() {
    static const Drawings all;
    return all;
}

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
