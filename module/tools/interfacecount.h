// The command that counts the connection interfaces of a pipe object.
#pragma once

#include "dbid.h"

namespace qrs::tools {

// Asks for one pipe or pipe node and prints how many interfaces it has.
void countInterfaces();

// What was found out about one object.
struct InterfaceCount {
    int interfaces = 0;
    int damaged = 0;  // pipes nearby that could not be asked
};

// A pipe has its two ends and every end of another pipe that meets it between them; a pipe node has every end of a pipe
// that is tied to it or lies at it. To meet is to lie no further apart than 0.1 drawing units, in all three directions.
// Pipes of the same space or block count, whatever their layers. False for an object that is neither, or is damaged.
bool countInterfaces(AcDbObjectId object, InterfaceCount& count);

}  // namespace qrs::tools
