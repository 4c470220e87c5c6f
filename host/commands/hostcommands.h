// The host's own commands, for the program that makes the application:
//
//     qrs::host::Application application(terminal);
//     qrs::host::registerHostCommands();
#pragma once

#include <string>
#include <vector>

#include "host/platform/port.h"
#include "host/plot/hostplot.h"

namespace qrs::host {

// Registers them in the group "HOST_COMMANDS" of the application that lives now. Nothing happens without one.
QRS_HOST_PORT void registerHostCommands();

// The layouts of the current drawing, the model first.
QRS_HOST_PORT std::vector<std::wstring> currentLayouts();
// Draws the current drawing in a picture file, as it is now; without a layout in the request the current one.
QRS_HOST_PORT PlotFailure plotCurrentDrawing(const PlotRequest& request, PlotOutcome& outcome, platform::Error& error);

}  // namespace qrs::host
