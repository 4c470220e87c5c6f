// Result buffers: chains of values.
#include <cmath>
#include <cstdarg>
#include <cstring>
#include <cwchar>
#include <memory>
#include <new>

#include "acutads.h"
#include "host/dxf/groupcodes.h"
#include "host/objectarx/db/valuekind.h"

namespace qrs::host {

namespace {

struct ValueRange {
    int first;
    int last;
    ValueKind kind;
};

// Types that are no group codes.
constexpr ValueRange kRanges[] = {
    {-4, -4, ValueKind::Text},
    {-3, -3, ValueKind::None},
    {-2, -1, ValueKind::Name},
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

// Pointers and owners are ids to the editor, all other handles texts.
ValueKind kindOfCode(int code) {
    switch (dxf::valueKindOf(code)) {
        case dxf::ValueKind::None:
            return ValueKind::Unknown;
        case dxf::ValueKind::Text:
            return ValueKind::Text;
        case dxf::ValueKind::Handle:
            return code >= dxf::codes::kSoftPointer && code < dxf::codes::kLineWeight ? ValueKind::Name
                                                                                      : ValueKind::Text;
        case dxf::ValueKind::Chunk:
            return ValueKind::Binary;
        case dxf::ValueKind::Integer8:
        case dxf::ValueKind::Integer16:
            return ValueKind::Short;
        case dxf::ValueKind::Integer32:
        case dxf::ValueKind::Integer64:
            return ValueKind::Long;
        case dxf::ValueKind::Point:
            return ValueKind::Point;
        case dxf::ValueKind::Real:
        case dxf::ValueKind::Coordinate:
            return ValueKind::Real;
    }
    return ValueKind::Unknown;
}

}  // namespace

ValueKind valueKind(int type) {
    for (const ValueRange& range : kRanges)
        if (type >= range.first && type <= range.last) return range.kind;
    return kindOfCode(type);
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
