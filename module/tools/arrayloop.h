// Lets loops walk the editor's arrays, also in those releases whose arrays know nothing of loops.
//
//     for (const AcDbObjectId& id : ids) ...
#pragma once

#include "acarray.h"

// Found by the compiler where the array has no begin and end of its own.
template <typename... Parameters>
auto begin(const AcArray<Parameters...>& array) {
    return array.asArrayPtr();
}
template <typename... Parameters>
auto end(const AcArray<Parameters...>& array) {
    return array.asArrayPtr() + array.length();
}
