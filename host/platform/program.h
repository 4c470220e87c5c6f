// Runs another program and waits for it.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/platform/port.h"

namespace qrs::platform {

//     Program program;
//     program.words = {"dwg2dxf", "-o", "house.dxf", "house.dwg"};
//     program.seconds = 60;
//     const ProgramEnd end = runProgram(program);
struct Program {
    // The program, a path or a name that is looked for where the system looks, and its arguments; in UTF-8 (on POSIX:
    // any bytes).
    std::vector<std::string> words;
    // What it reads as its standard input; empty: nothing.
    std::filesystem::path input;
    // It is ended then, with what it has started itself; 0: no limit.
    double seconds = 0;
    // Pieces of what it prints, as they come. Without one it prints where this program does.
    std::function<void(std::string_view)> output, errors;
};

struct ProgramEnd {
    enum class How { Exited, Killed, TimedOut, NotStarted };
    How how = How::NotStarted;
    int code = 0;  // Exited: its exit code; Killed: the signal's number
    // For people: "ended with exit code 3", "was killed by signal 9", "did not end within 60 seconds", why it did not
    // start.
    std::string text;
};

// One runs at a time. When this program is ended by a signal or a deadline, the other is ended too.
QRS_HOST_PORT ProgramEnd runProgram(const Program& program);

}  // namespace qrs::platform
