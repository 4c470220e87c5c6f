// Result codes, names and result buffers of the editor's older function interface.
#pragma once

#include <cstdint>

#include "adesk.h"

using ads_real = double;
using ads_point = ads_real[3];
using ads_matrix = ads_real[4][4];
using ads_name = std::int64_t[2];

struct ads_binary {
    short clen;
    char* buf;
};

union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    ACHAR* rstring;
    std::int64_t rlname[2];
    std::int32_t rlong;
    ads_binary rbinary;
};

// One link of a chain of values: a DXF group code or an RT type, and the value.
struct resbuf {
    resbuf* rbnext;
    short restype;
    ads_u_val resval;
};

// Types of values that are no group codes.
enum : short {
    RTNONE = 5000,
    RTREAL = 5001,
    RTPOINT = 5002,
    RTSHORT = 5003,
    RTANG = 5004,
    RTSTR = 5005,
    RTENAME = 5006,
    RTPICKS = 5007,
    RTORINT = 5008,
    RT3DPOINT = 5009,
    RTLONG = 5010,
    RTVOID = 5014,
    RTLB = 5016,
    RTLE = 5017,
    RTDOTE = 5018,
    RTNIL = 5019,
    RTDXF0 = 5020,
    RTT = 5021,
    RTRESBUF = 5023,
};

// Results of the functions that ask and do.
enum : int {
    RTNORM = 5100,
    RTERROR = -5001,
    RTCAN = -5002,
    RTREJ = -5003,
    RTFAIL = -5004,
    RTKWORD = -5005,
};

// Bits of acedInitGet.
enum : int {
    RSG_NONULL = 1,
    RSG_NOZERO = 2,
    RSG_NONEG = 4,
    RSG_NOLIM = 8,
    RSG_OTHER = 128,
};

inline void ads_name_set(const ads_name from, ads_name to) {
    to[0] = from[0], to[1] = from[1];
}
inline void ads_name_clear(ads_name name) {
    name[0] = name[1] = 0;
}
inline bool ads_name_nil(const ads_name name) {
    return name[0] == 0 && name[1] == 0;
}
