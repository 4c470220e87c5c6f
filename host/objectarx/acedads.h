// The editor's older function interface: prompts, selection sets, system variables, commands.
//
// Results: RTNORM; RTNONE for an empty answer; RTCAN when the user cancelled; RTKWORD for a keyword, which acedGetInput
// then returns; RTERROR with the system variable ERRNO saying why; RTREJ for arguments that make no sense.
//
//     acedInitGet(RSG_NONULL, L"Yes No");
//     ACHAR answer[64];
//     if (acedGetKword(L"\nGo on? [Yes/No]: ", answer) == RTNORM) ...
#pragma once

#include <cstddef>

#include "acutads.h"
#include "adesk.h"
#include "adsdef.h"

// Flags and keywords of the next prompt that honours them (acedGetInt, acedGetReal, acedGetDist, acedGetPoint,
// acedGetKword, acedEntSel). Keywords are separated by blanks; their upper-case letters, or what follows a comma, are
// the shortest form that is accepted.
QRS_HOST_PORT int acedInitGet(int flags, const ACHAR* keywords);

// What was typed for the last RTKWORD, as the keyword is spelled in the list. The buffer holds 133 characters, or as
// many as stated; longer text is cut.
QRS_HOST_PORT int acedGetInput(ACHAR* text);
QRS_HOST_PORT int acedGetInput(ACHAR* text, std::size_t bufferSize);

// cronly = 0: a blank ends the answer as Enter does. An empty answer is RTNORM with an empty text. The buffer as above.
QRS_HOST_PORT int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result);
QRS_HOST_PORT int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, std::size_t bufferSize);

QRS_HOST_PORT int acedGetInt(const ACHAR* prompt, int* result);        // -32768 to 32767
QRS_HOST_PORT int acedGetReal(const ACHAR* prompt, ads_real* result);  // finite
// A number in drawing units, or two points (the first one when base is null).
QRS_HOST_PORT int acedGetDist(const ads_point base, const ACHAR* prompt, ads_real* result);
QRS_HOST_PORT int acedGetKword(const ACHAR* prompt, ACHAR* result);
QRS_HOST_PORT int acedGetKword(const ACHAR* prompt, ACHAR* result, std::size_t bufferSize);
// "x,y" or "x,y,z" in drawing units; "@x,y" counts from base.
QRS_HOST_PORT int acedGetPoint(const ads_point base, const ACHAR* prompt, ads_point result);

// Prints. acutPrintf formats.
QRS_HOST_PORT int acedPrompt(const ACHAR* text);

// A set of entities. mode: null (the user selects, or with the point pt1 what a pick there meets), "X" (the whole
// drawing), "A" (what could be selected now), "I" (the pick-first set), "P" (the previous set), "L" (the newest
// entity); "W" (inside the rectangle of the corners pt1 and pt2), "C" (inside or crossing it), "WP", "CP" (the same
// with a polygon), "F" (crossing a line of several points); for polygon and line pt1 is a chain of RT3DPOINT or
// RTPOINT. ":$" with pt1 pointing to two texts gives the user's prompts for adding and removing, ":S" lets the user
// make one selection, ":E" takes all that a pick meets. filter: 0 type, 8 layer, 67 space, 62 colour, 6 linetype, -3
// application names; texts are wildcards of '*', '?', '#', '@', '.', '~' and commas. RTERROR when nothing is selected.
// The set lives until acedSSFree or until its drawing closes. Points are world coordinates.
QRS_HOST_PORT int acedSSGet(const ACHAR* mode, const void* pt1, const void* pt2, const resbuf* filter, ads_name set);
QRS_HOST_PORT int acedSSLength(const ads_name set, Adesk::Int32* length);
QRS_HOST_PORT int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity);
QRS_HOST_PORT int acedSSFree(const ads_name set);
// Adds to a set; a null entity with a null set makes an empty set; a null set makes a set of the one entity.
QRS_HOST_PORT int acedSSAdd(const ads_name entity, const ads_name set, ads_name result);
QRS_HOST_PORT int acedSSDel(const ads_name entity, const ads_name set);
// RTNORM when the entity is a member, else RTERROR.
QRS_HOST_PORT int acedSSMemb(const ads_name entity, const ads_name set);
// The pick-first set as an RTPICKS buffer that the caller releases (acutRelRb) after freeing the set; there are no
// grips.
QRS_HOST_PORT int acedSSGetFirst(resbuf** gripSet, resbuf** pickFirstSet);
// A null set empties the pick-first set.
QRS_HOST_PORT int acedSSSetFirst(const ads_name pickFirstSet, const ads_name unused);

// One entity. RTERROR for an empty answer (ERRNO 52) and for a pick that met nothing (ERRNO 7). The point is the one
// picked; (0, 0, 0) when the entity was named and not picked.
QRS_HOST_PORT int acedEntSel(const ACHAR* prompt, ads_name entity, ads_point point);

// One entity as acedEntSel, but the innermost one inside block references and dimensions, attributes included.
// useGivenPoint other than 0: point is the pick, nobody is asked. toWorld: from the coordinates of the definition the
// entity lies in to world ones (the identity for an entity in none). containers: the block references around it, the
// innermost first, as a chain of RTENAME that the caller releases; null when it lies in none. An entity of an external
// reference is no object of this drawing: the innermost block reference that is one is given instead
// (qrs::host::pickNested tells more).
QRS_HOST_PORT int acedNEntSelP(const ACHAR* prompt, ads_name entity, ads_point point, int useGivenPoint,
                               ads_matrix toWorld, resbuf** containers);

// The value with its type: RTSHORT, RTREAL, RTSTR (the caller releases it with acutDelString) or RT3DPOINT. RTERROR
// when there is no such variable, when it is read-only, or when the value is of another type or out of range.
QRS_HOST_PORT int acedGetVar(const ACHAR* name, resbuf* value);
QRS_HOST_PORT int acedSetVar(const ACHAR* name, const resbuf* value);

// Runs one command with its answers: pairs of a type and a value, closed by RTNONE (or 0). RTSTR with an empty text is
// Enter, with "\\" lets the user answer. A prompt left over is cancelled.
QRS_HOST_PORT int acedCommandS(int type, ...);

// The first file of that name in the drawing's folder and the support folders, in the inner form (buffer of at least
// 261 characters). RTERROR when there is none.
QRS_HOST_PORT int acedFindFile(const ACHAR* name, ACHAR* result);
