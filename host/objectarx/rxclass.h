// Classes of the run-time class information; see rxobject.h.
#pragma once

#include "rxobject.h"
