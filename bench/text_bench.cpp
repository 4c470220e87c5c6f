// Layer names compared without regard to case, beside a plain loop over the C library's wcscasecmp.
#include <benchmark/benchmark.h>

#include <cwchar>
#include <string>
#include <vector>

#include "host/platform/text.h"

namespace {

constexpr int kNames = 10'000;

std::vector<std::wstring> makeNames() {
    std::vector<std::wstring> names;
    for (int i = 0; i < kNames; ++i)
        names.push_back(L"给排-系统" + std::to_wstring(i) + (i % 2 == 0 ? L"-PIPE-管线" : L"-Text-管径文字"));
    return names;
}

bool sameByPlatform(const std::wstring& a, const std::wstring& b) {
    return qrs::platform::compareNoCase(a, b) == 0;
}

bool sameByLibrary(const std::wstring& a, const std::wstring& b) {
    return wcscasecmp(a.c_str(), b.c_str()) == 0;
}

// Each name against every other of the list: none is the same, most differ late.
template <bool (*same)(const std::wstring&, const std::wstring&)>
void search(benchmark::State& state) {
    const std::vector<std::wstring> names = makeNames();
    const std::wstring sought = L"给排-系统99999-pipe-管线";
    for (auto _ : state) {
        int found = 0;
        for (const std::wstring& name : names)
            found += same(name, sought) ? 1 : 0;
        benchmark::DoNotOptimize(found);
    }
    state.SetItemsProcessed(state.iterations() * kNames);
}

// Each name against itself, as it is and in the other case.
template <bool (*same)(const std::wstring&, const std::wstring&), bool inOtherCase>
void meet(benchmark::State& state) {
    const std::vector<std::wstring> names = makeNames();
    std::vector<std::wstring> others = names;
    if (inOtherCase)
        for (std::wstring& other : others)
            other = qrs::platform::lowerCaseText(other);
    for (auto _ : state) {
        int found = 0;
        for (std::size_t i = 0; i < names.size(); ++i)
            found += same(names[i], others[i]) ? 1 : 0;
        if (found != kNames) state.SkipWithError("a name is not itself");
    }
    state.SetItemsProcessed(state.iterations() * kNames);
}

}  // namespace

BENCHMARK_TEMPLATE(search, sameByPlatform);
BENCHMARK_TEMPLATE(search, sameByLibrary);
BENCHMARK_TEMPLATE(meet, sameByPlatform, false);
BENCHMARK_TEMPLATE(meet, sameByLibrary, false);
BENCHMARK_TEMPLATE(meet, sameByPlatform, true);
BENCHMARK_TEMPLATE(meet, sameByLibrary, true);

BENCHMARK_MAIN();
