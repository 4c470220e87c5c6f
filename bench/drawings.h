// The drawings that benchmarks read, made by qrs_make_drawing, whose path comes from the build.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>

namespace bench {

// A folder of drawings that goes away with the program.
class Drawings {
  public:
    Drawings()
        : folder_(std::filesystem::temp_directory_path() / ("qrs_dxf_bench_" + std::to_string(std::time(nullptr)))) {
        std::filesystem::create_directories(folder_);
    }
    ~Drawings() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    // The drawing a benchmark's arguments ask for: entities, and whether it is binary.
    std::filesystem::path of(const benchmark::State& state) const {
        const std::string entities = std::to_string(state.range(0));
        const std::string form = state.range(1) != 0 ? "--binary " : "";
        const std::filesystem::path path = folder_ / (form + entities + ".dxf");
        if (!std::filesystem::exists(path)) {
            const std::string command =
                "\"" QRS_MAKE_DRAWING "\" " + form + entities + " 200 AC1024 \"" + path.string() + "\"";
            if (std::system(command.c_str()) != 0) std::abort();
        }
        return path;
    }
    std::filesystem::path output() const { return folder_ / "out.dxf"; }

  private:
    std::filesystem::path folder_;
};

inline const Drawings& drawings() {
    static const Drawings all;
    return all;
}

}  // namespace bench
