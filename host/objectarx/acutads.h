// Result buffers, texts and printing of the older function interface.
#pragma once

#include "acadstrc.h"
#include "acutmem.h"
#include "adscodes.h"
#include "adsdef.h"

// A link of that type with an empty value; released with acutRelRb. Null when memory runs out.
QRS_HOST_PORT resbuf* acutNewRb(int type);

// A chain from types and values in turn, closed by 0 or RTNONE (a group code 0 is given as RTDXF0). Values by type:
// texts const ACHAR*; reals double; points ads_point; 16-bit and 32-bit integers int; names ads_name; group 1004
// ads_binary; RTLB, RTLE, RTDOTE, RTNIL, RTT and RTVOID take none. Texts and binary data are copied.
//
//     resbuf* chain = acutBuildList(AcDb::kDxfRegAppName, L"PWX-ENT-TYPE", AcDb::kDxfXdAsciiString, L"PUMP", RTNONE);
//     entity->setXData(chain);
//     acutRelRb(chain);
//
// Null when a type is unknown or nothing is given.
QRS_HOST_PORT resbuf* acutBuildList(int type, ...);

// Releases a chain with its texts and binary data; null is allowed. RTNORM.
QRS_HOST_PORT int acutRelRb(resbuf* chain);

// Prints to the command line as printf does; %s takes const ACHAR*. RTNORM, RTERROR when the format is null.
QRS_HOST_PORT int acutPrintf(const ACHAR* format, ...);

// The point at a distance from another in a direction (radians, counterclockwise from the X axis), at its height.
// result may be the point itself.
QRS_HOST_PORT void acutPolar(const ads_point point, double angle, double distance, ads_point result);
