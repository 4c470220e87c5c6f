// The macros that give a class its run-time class information; see rxobject.h.
#pragma once

#include "rxobject.h"
