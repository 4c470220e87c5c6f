// Files that another program cuts short while they are mapped.
//
// In a program that calls endWhenMappedFileIsCut, bytes of a MappedFile that are gone read as zeros. What was found out
// from them may be wrong, so AtomicFile commits nothing until somebody was told of the loss.
#pragma once

#include <filesystem>
#include <string_view>

#include "host/platform/port.h"

namespace qrs::platform {

// A file of which such zeros were read, as long as nobody was told; empty when there is none.
QRS_HOST_PORT std::filesystem::path lostFile();
// All that were lost so far have been told.
QRS_HOST_PORT void forgetLostFiles();

// True when such zeros were read among the bytes of this mapped file; lostFile does not tell it any more.
bool takeLoss(std::string_view mapped);

}  // namespace qrs::platform
