// The command that brings pipes in line with the current standard.
#pragma once

namespace qrs::tools {

// Asks for pipes (Enter: all of model space) and gives each what the current standard says of its system: the system's
// current name where it bears an older one, the layer of vertical pipes or of pipes, the layers of diameter texts and
// flow arrows, also for the texts and arrows attached to it, and the line width. Missing layers are made. What is so
// already is not touched. Prints how many pipes were updated, and how many were left and why: their layer is locked,
// their data are damaged, or the standard does not know their system.
void updatePipes();

}  // namespace qrs::tools
