// Files made to hurt: a megabyte at most, of which every byte asks for as much as it can.
#pragma once

#include <string>
#include <vector>

struct HostileFile {
    const char* name;
    std::string bytes;
    const char* told = "";  // what standard error says of it; empty: there is nothing wrong
};

std::vector<HostileFile> hostileDrawings();
std::vector<HostileFile> hostileStandards();
std::vector<HostileFile> hostileTables();
std::vector<HostileFile> hostileSettings();
std::vector<HostileFile> hostileScripts();
