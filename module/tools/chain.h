// A chain of values that is released with its scope.
#pragma once

#include <memory>

#include "acutads.h"

namespace qrs::tools {

struct ReleaseChain {
    void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using Chain = std::unique_ptr<resbuf, ReleaseChain>;

}  // namespace qrs::tools
