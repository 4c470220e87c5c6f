// Result buffers: chains of values.
#include <cmath>
#include <cstdarg>
#include <cstring>
#include <cwchar>
#include <memory>
#include <new>

#include "acutads.h"
#include "host/objectarx/db/valuekind.h"

namespace qrs::host {

namespace {

struct ValueRange {
    int first;
    int last;
    ValueKind kind;
};

// The first range that holds a type counts.
constexpr ValueRange kRanges[] = {
    {-4, -4, ValueKind::Text},
    {-3, -3, ValueKind::None},
    {-2, -1, ValueKind::Name},
    {0, 9, ValueKind::Text},
    {10, 18, ValueKind::Point},
    {19, 59, ValueKind::Real},
    {60, 79, ValueKind::Short},
    {90, 99, ValueKind::Long},
    {100, 109, ValueKind::Text},
    {110, 112, ValueKind::Point},
    {113, 149, ValueKind::Real},
    {160, 169, ValueKind::Long},
    {170, 179, ValueKind::Short},
    {210, 210, ValueKind::Point},
    {211, 239, ValueKind::Real},
    {270, 299, ValueKind::Short},
    {300, 309, ValueKind::Text},
    {310, 319, ValueKind::Binary},
    {320, 329, ValueKind::Text},
    {330, 369, ValueKind::Name},
    {370, 389, ValueKind::Short},
    {390, 399, ValueKind::Text},
    {400, 409, ValueKind::Short},
    {410, 419, ValueKind::Text},
    {420, 429, ValueKind::Long},
    {430, 439, ValueKind::Text},
    {440, 459, ValueKind::Long},
    {460, 469, ValueKind::Real},
    {470, 489, ValueKind::Text},
    {999, 1003, ValueKind::Text},
    {1004, 1004, ValueKind::Binary},
    {1005, 1009, ValueKind::Text},
    {1010, 1013, ValueKind::Point},
    {1014, 1059, ValueKind::Real},
    {1060, 1070, ValueKind::Short},
    {1071, 1071, ValueKind::Long},
    {RTNONE, RTNONE, ValueKind::None},
    {RTREAL, RTREAL, ValueKind::Real},
    {RTPOINT, RTPOINT, ValueKind::Point},
    {RTSHORT, RTSHORT, ValueKind::Short},
    {RTANG, RTANG, ValueKind::Real},
    {RTSTR, RTSTR, ValueKind::Text},
    {RTENAME, RTPICKS, ValueKind::Name},
    {RTORINT, RTORINT, ValueKind::Real},
    {RT3DPOINT, RT3DPOINT, ValueKind::Point},
    {RTLONG, RTLONG, ValueKind::Long},
    {RTVOID, RTNIL, ValueKind::None},
    {RTDXF0, RTDXF0, ValueKind::Text},
    {RTT, RTT, ValueKind::None},
};

}  // namespace

ValueKind valueKind(int type) {
    for (const ValueRange& range : kRanges)
        if (type >= range.first && type <= range.last) return range.kind;
    return ValueKind::Unknown;
}

}  // namespace qrs::host

using qrs::host::ValueKind;
using qrs::host::valueKind;

namespace {

struct ChainRelease {
    void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using Chain = std::unique_ptr<resbuf, ChainRelease>;

bool copyBinary(const ads_binary& from, ads_binary& to) {
    if (from.clen < 0 || (from.clen > 0 && !from.buf)) return false;
    to.buf = new (std::nothrow) char[static_cast<std::size_t>(from.clen) + 1];
    if (!to.buf) return false;
    if (from.clen > 0) std::memcpy(to.buf, from.buf, static_cast<std::size_t>(from.clen));
    to.clen = from.clen;
    return true;
}

// The next value of a list of arguments. False when it is missing or memory runs out.
bool takeValue(resbuf& link, std::va_list& arguments) {
    switch (valueKind(link.restype)) {
        case ValueKind::Text:
            return acutNewString(va_arg(arguments, const ACHAR*), link.resval.rstring) == Acad::eOk;
        case ValueKind::Real:
            link.resval.rreal = va_arg(arguments, double);
            return true;
        case ValueKind::Short:
            link.resval.rint = static_cast<short>(va_arg(arguments, int));
            return true;
        case ValueKind::Long:
            link.resval.rlong = va_arg(arguments, int);
            return true;
        case ValueKind::Binary:
            return copyBinary(va_arg(arguments, ads_binary), link.resval.rbinary);
        case ValueKind::Point: {
            const double* point = va_arg(arguments, const double*);
            if (point) std::memcpy(link.resval.rpoint, point, sizeof link.resval.rpoint);
            return point != nullptr;
        }
        case ValueKind::Name: {
            const std::int64_t* name = va_arg(arguments, const std::int64_t*);
            if (name) std::memcpy(link.resval.rlname, name, sizeof link.resval.rlname);
            return name != nullptr;
        }
        case ValueKind::None:
            return true;
        case ValueKind::Unknown:
            break;
    }
    return false;
}

}  // namespace

resbuf* acutNewRb(int type) {
    auto* link = new (std::nothrow) resbuf;
    if (!link) return nullptr;
    std::memset(static_cast<void*>(link), 0, sizeof *link);
    link->restype = static_cast<short>(type);
    return link;
}

resbuf* acutBuildList(int type, ...) {
    std::va_list arguments;
    va_start(arguments, type);
    Chain chain;
    resbuf* last = nullptr;
    for (int next = type; next != 0 && next != RTNONE; next = va_arg(arguments, int)) {
        resbuf* link = acutNewRb(next);
        if (last)
            last->rbnext = link;
        else
            chain.reset(link);
        last = link;
        if (link && takeValue(*link, arguments)) continue;
        chain.reset();
        break;
    }
    va_end(arguments);
    return chain.release();
}

int acutRelRb(resbuf* chain) {
    while (chain) {
        resbuf* next = chain->rbnext;
        const ValueKind kind = valueKind(chain->restype);
        if (kind == ValueKind::Text) delete[] chain->resval.rstring;
        if (kind == ValueKind::Binary) delete[] chain->resval.rbinary.buf;
        delete chain;
        chain = next;
    }
    return RTNORM;
}

Acad::ErrorStatus acutNewString(const ACHAR* text, ACHAR*& copy) {
    copy = nullptr;
    if (!text) return Acad::eInvalidInput;
    const std::size_t length = std::wcslen(text) + 1;
    copy = new (std::nothrow) ACHAR[length];
    if (!copy) return Acad::eOutOfMemory;
    std::wmemcpy(copy, text, length);
    return Acad::eOk;
}

void acutDelString(ACHAR*& text) {
    delete[] text;
    text = nullptr;
}

void acutPolar(const ads_point point, double angle, double distance, ads_point result) {
    const ads_real x = point[0] + distance * std::cos(angle);
    const ads_real y = point[1] + distance * std::sin(angle);
    result[0] = x;
    result[1] = y;
    result[2] = point[2];
}
