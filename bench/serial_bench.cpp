// Times opening a drawing and finding the next serials of its risers: qrs_serial_bench DRAWING [RUNS]
//
//     qrs_make_drawing 1000000 200 AC1024 risers.dxf 100000 && qrs_serial_bench risers.dxf
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "dbapserv.h"
#include "dbmain.h"
#include "host/platform/files.h"
#include "PwxTool.h"

namespace {

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::fprintf(stderr, "usage: qrs_serial_bench DRAWING [RUNS]\n");
        return 2;
    }
    const std::wstring path = qrs::platform::innerPath(qrs::platform::nativeFromTyped(arguments[1]));
    const int runs = count > 2 ? std::atoi(arguments[2]) : 5;
    double opening = std::numeric_limits<double>::max();
    double searching = opening;
    for (int run = 0; run < runs; ++run) {
        AcDbDatabase database(false, true);
        const auto begin = std::chrono::steady_clock::now();
        if (database.dxfIn(path.c_str()) != Acad::eOk) {
            std::fprintf(stderr, "qrs_serial_bench: %s cannot be read\n", arguments[1]);
            return 1;
        }
        opening = std::min(opening, secondsSince(begin));
        acdbHostApplicationServices()->setWorkingDatabase(&database);
        std::map<CString, int> numeric;
        std::map<CString, CString> text;
        const auto search = std::chrono::steady_clock::now();
        PwxTool::InitVPipeSerials(numeric, text, L"WL-1", 1);
        searching = std::min(searching, secondsSince(search));
        std::printf("%zu numeric and %zu text serials\n", numeric.size(), text.size());
    }
    std::printf("opened in %.3f s, next serials found in %.3f s (best of %d): %.2f of opening\n", opening, searching,
                runs, searching / opening);
    return 0;
}
