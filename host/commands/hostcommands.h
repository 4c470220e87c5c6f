// The host's own commands, for the program that makes the application:
//
//     qrs::host::Application application(terminal);
//     qrs::host::registerHostCommands();
#pragma once

#include "host/platform/port.h"

namespace qrs::host {

// Registers them in the group "HOST_COMMANDS" of the application that lives now. Nothing happens without one.
QRS_HOST_PORT void registerHostCommands();

}  // namespace qrs::host
