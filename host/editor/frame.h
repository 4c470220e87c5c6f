// What a window would show or see: message filters and the progress meter.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "rxmfcapi.h"

namespace qrs::host {
class Terminal;
}

namespace qrs::host::ed {

class Frame {
  public:
    bool addFilter(AcedFilterWinMsgFn filter);
    bool removeFilter(AcedFilterWinMsgFn filter);
    std::size_t removeFiltersOf(const void* application);

    bool setMeter(Terminal& terminal, const ACHAR* label, int minimum, int maximum);
    bool setMeterPosition(Terminal& terminal, int position);
    void clearMeter(Terminal& terminal);

  private:
    struct Filter {
        AcedFilterWinMsgFn function;
        const void* application;
    };
    std::vector<Filter> filters_;
    std::wstring meterLabel_;
    int meterMinimum_ = 0;
    int meterMaximum_ = 0;
    int meterPercent_ = -1;
    bool meterShown_ = false;
};

}  // namespace qrs::host::ed
