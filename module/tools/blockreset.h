// The command that rebuilds a block from chosen entities.
#pragma once

namespace qrs::tools {

// Asks for a block reference, then for the entities its block is to consist of. They go over into the block definition,
// written as that reference shows them: its place, rotation and scale are taken back, so that each is seen where it
// was. What the block consisted of before goes, except its attribute definitions, as the references keep their
// attributes. Every reference of the block shows the new content. Left, with their numbers, are entities on locked
// layers, the reference itself, and references that show the block. The drawing stays as it was when nothing is left to
// take, or when one of the entities cannot be written so.
void resetBlock();

}  // namespace qrs::tools
