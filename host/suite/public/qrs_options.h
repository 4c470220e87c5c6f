// The suite's options for pipes and equipment: what a user has chosen once for all drawings.
//
//     double radius = GetPipeOption(L"喷头半径");
//
// Each is kept per user under its name in the key "PipeOption" (see GetRegLocation), and read afresh on every call.
// What a user never chose has the value of CmdConfig.xml (the item of that name in the function named as its section),
// and where that has none, or none that makes sense, the one of the table below.
#pragma once

#include <cstddef>
#include <string>

#include "host/platform/port.h"

struct TPipeOption {
    const wchar_t* section;  // in setting.ini and CmdConfig.xml
    const wchar_t* name;
    bool hasDecimals;     // whole numbers otherwise
    double defaultValue;  // when nothing else gives one
    double least;         // smallest and largest value that makes sense
    double largest;
};

// The options in the order in which setting.ini has them; index from 0, null after the last.
QRS_HOST_PORT const TPipeOption* PipeOptionAt(std::size_t index);
// By name, exactly; null when there is none.
QRS_HOST_PORT const TPipeOption* FindPipeOption(const std::wstring& name);

// True when the option takes the value: within its range, and whole where it has no decimals.
QRS_HOST_PORT bool IsPipeOptionValue(const TPipeOption& option, double value);

// The current value. A stored one that makes no sense counts as none.
QRS_HOST_PORT double GetPipeOption(const TPipeOption& option);
// 0 when there is no such option.
QRS_HOST_PORT double GetPipeOption(const std::wstring& name);

// False, nothing changed, when the option does not take the value or the user's settings cannot be written.
QRS_HOST_PORT bool SetPipeOption(const TPipeOption& option, double value);
