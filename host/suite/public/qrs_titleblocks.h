// Stand-in for the suite's closed public library: the cache of a folder's title blocks (see titleblock-cache.md).
#pragma once

#include <string>
#include <vector>

#include "host/platform/port.h"

struct TTitleBlock {
    std::wstring category;
    std::wstring name;  // of the block
    std::wstring serial;
};

// The title blocks of a folder (inner form) in the order of its cache. False, records untouched, when there is no cache
// or it is damaged.
QRS_HOST_PORT bool LoadTitleBlockCache(const std::wstring& directory, std::vector<TTitleBlock>& records);
