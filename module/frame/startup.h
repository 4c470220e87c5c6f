// Start-up and tear-down of the module.
#pragma once

namespace qrs::frame {

// Both run every step, whatever an earlier one found or threw.
void startUp();
void tearDown();

// The messages that a drawing was loaded and that it goes; they speak of the current document. Nothing happens for a
// document without an entry.
void drawingLoaded();
void drawingUnloads();

}  // namespace qrs::frame
