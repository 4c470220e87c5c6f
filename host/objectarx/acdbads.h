// Handles, registered applications and the order of entities, in the older function interface. They speak of the
// working database.
#pragma once

#include "adsdef.h"
#include "dbmain.h"

// The entity with a handle (hexadecimal digits). RTNORM; RTERROR, name cleared, when there is none alive.
QRS_HOST_PORT int acdbHandEnt(const ACHAR* handle, ads_name name);

// Registers an application's name in the table "APPID". RTNORM; RTERROR when the name is no symbol name, is registered
// already, or the table cannot be opened.
QRS_HOST_PORT int acdbRegApp(const ACHAR* name);

// The entity after another in the space or block it lies in; a null or empty name asks for the first one of the
// drawing's spaces. Vertices, attributes and the SEQEND that closes them are met after the entity they belong to, and
// are objects like others. RTNORM; RTERROR, next cleared, when there is none.
QRS_HOST_PORT int acdbEntNext(const ads_name entity, ads_name next);
