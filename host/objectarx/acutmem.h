// Texts that the editor's functions hand over.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

// A copy of a text, released with acutDelString. eInvalidInput for null.
QRS_HOST_PORT Acad::ErrorStatus acutNewString(const ACHAR* text, ACHAR*& copy);
// Releases the text and sets the pointer to null.
QRS_HOST_PORT void acutDelString(ACHAR*& text);
