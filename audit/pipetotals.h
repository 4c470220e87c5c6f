// The pipes of a drawing, summed up by their systems.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "facts.h"

namespace qrs::audit {

struct Length {
    std::uint64_t pipes = 0;
    double length = 0.0;  // drawing units

    void add(double more) {
        ++pipes;
        length += more;
    }
    void add(const Length& other) {
        pipes += other.pipes;
        length += other.length;
    }
};

struct RiserTotals {
    std::wstring building, serial, diameter, material;  // empty: not given
    Length length;
};

struct SystemTotals {
    std::wstring name;
    Length pipes;  // without risers
    // By diameter and material; an empty one was not given.
    std::map<std::pair<std::wstring, std::wstring>, Length> bySize;
    std::vector<RiserTotals> risers;  // by building, then in the order of serials
    Length riserLength;
    std::uint64_t wells = 0;        // at the ends of its pipes, each once
    std::uint64_t attachments = 0;  // of its pipes, each once
};

struct PipeTotals {
    std::wstring drawing;               // its file's name; empty for one without a file
    std::wstring file;                  // whole, as the system spells paths
    std::string unreadable;             // why nothing is known; empty when it is
    std::vector<SystemTotals> systems;  // by name
    SystemTotals all;
    std::uint64_t unmeasured = 0;       // pipes counted without their length
    std::uint64_t loneWells = 0;        // that no pipe ends at
    std::uint64_t loneAttachments = 0;  // that no pipe has
};

void sumUp(const DrawingFacts& facts, PipeTotals& totals);

using PipeReport = std::vector<PipeTotals>;
std::string textPipes(const PipeReport& report);
std::string csvPipes(const PipeReport& report);
std::string jsonPipes(const PipeReport& report);

}  // namespace qrs::audit
