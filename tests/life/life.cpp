// A long life, in little time: one process loads and unloads the plug-ins with drawings in between, or is given random
// commands, each drawing coming back to its first bytes.
//
//     qrs_life loads 1000
//     qrs_life commands 100000
//
// The second half does what the first did, so all that may be kept is kept by then: memory that is in use after it must
// not be more but for what a command happened to do last.
#include <malloc.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <string>

#include "fuzz/check.h"
#include "fuzz/session.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using qrs::fuzz::check;
using qrs::fuzz::Session;

constexpr int kCommandsAtATime = 50;
constexpr std::size_t kUneven = 256;  // bytes, and one for each drawing

// Pieces that the C library keeps for the next who asks count as used.
void leaveNothingInReserve(char** words) {
    const char* const name = "GLIBC_TUNABLES";
    if (std::getenv(name) != nullptr) return;
    setenv(name, "glibc.malloc.tcache_count=0", 1);
    execv("/proc/self/exe", words);
}

std::size_t bytesInUse() {
#if defined(QRS_SANITIZE) || defined(QRS_COVERAGE)
    return 0;  // both keep something of each library that comes; the sanitizers look for leaks at the end
#else
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

std::size_t residentBytes() {
    std::ifstream file("/proc/self/statm");
    std::size_t whole = 0, resident = 0;
    file >> whole >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// The plug-ins come, are used, and go.
void loadOnce(int number) {
    Session& session = Session::instance();
    session.load({QRS_SIBLING_FILE, QRS_AUDIT_FILE});
    const wchar_t* const lines[] = {
        L"ASKSTANDARD", L"INITSTANDARD", L"gxgd", L"", L"CHECKSTANDARD", L"", L"", L"", L""};
    const wchar_t* const* line = lines;
    session.run(static_cast<std::size_t>(number), [&](bool) -> Session::Typed {
        if (line == std::end(lines)) return {};
        return {qrs::host::Reply::Line, *line++};
    });
    session.reload();
}

void typeCommands(int number) {
    std::mt19937 random(static_cast<unsigned>(number));
    std::basic_string<std::uint8_t> input(1, static_cast<std::uint8_t>(random()));
    // Each fourth byte is a command, see fuzz/commands_fuzz.cpp.
    for (int i = 0; i < 4 * kCommandsAtATime; ++i)
        input += static_cast<std::uint8_t>(random());
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

}  // namespace

int main(int count, char** words) {
    const std::string what = count == 3 ? words[1] : "";
    const int times = count == 3 ? std::atoi(words[2]) : 0;
    if ((what != "loads" && what != "commands") || times < 2) {
        std::fprintf(stderr, "qrs_life loads|commands COUNT\n");
        return 2;
    }
    leaveNothingInReserve(words);
    const auto step = what == "loads" ? &loadOnce : &typeCommands;
    const int half = (what == "loads" ? times : times / kCommandsAtATime) / 2;
    std::size_t inUse[2] = {}, resident[2] = {};
    for (int part = 0; part < 2; ++part) {
        for (int number = 0; number < half; ++number)
            step(number);
        inUse[part] = bytesInUse();
        resident[part] = residentBytes();
    }
    std::printf("%d %s: %zu bytes in use after the first half, %zu after the second; %zu and %zu KB resident\n", times,
                what.c_str(), inUse[0], inUse[1], resident[0] / 1024, resident[1] / 1024);
    std::fflush(stdout);
    check(inUse[1] <= inUse[0] + kUneven + static_cast<std::size_t>(half), "memory grows");
    return 0;
}
