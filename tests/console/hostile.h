// Files made to hurt: a megabyte at most, of which every byte asks for as much as it can.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

// A quarter of it for programs as they are not given to users, which take as long for that.
#if defined(__OPTIMIZE__) && !defined(QRS_SANITIZE)
constexpr std::size_t kMegabyte = 1000000;
#else
constexpr std::size_t kMegabyte = 250000;
#endif

struct HostileFile {
    const char* name;
    std::string bytes;
    const char* told = "";  // what standard error says of it; empty: there is nothing wrong
    std::string memo = {};  // of a table
};

std::vector<HostileFile> hostileDrawings();
std::vector<HostileFile> hostileStandards();
std::vector<HostileFile> hostileTables();
std::vector<HostileFile> hostileMappings();
std::vector<HostileFile> hostileSettings();
std::vector<HostileFile> hostileScripts();
