// Printing, and commands called by programs.
#include <algorithm>
#include <cstdarg>
#include <cwchar>
#include <deque>
#include <string>

#include "acdbads.h"
#include "acedads.h"
#include "afxstr.h"
#include "host/editor/entitynames.h"
#include "host/editor/session.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"
#include "host/platform/number.h"

namespace qrs::host::ed {

namespace {

std::wstring realText(double value) {
    return platform::fromUtf8(platform::formatReal(value));
}

std::wstring pointText(const double* point) {
    return realText(point[0]) + L"," + realText(point[1]) + L"," + realText(point[2]);
}

// A value as it would be typed. False for a type that cannot be.
bool typedText(short type, const ads_u_val& value, std::wstring& text) {
    AcDbObjectId id;
    switch (type) {
        case RTSTR:
            if (!value.rstring) return false;
            text = value.rstring;
            return true;
        case RTSHORT:
            text = std::to_wstring(value.rint);
            return true;
        case RTLONG:
            text = std::to_wstring(value.rlong);
            return true;
        case RTREAL:
        case RTANG:
        case RTORINT:
            text = realText(value.rreal);
            return true;
        case RTPOINT:
        case RT3DPOINT:
            text = pointText(value.rpoint);
            return true;
        case RTENAME:
            if (acdbGetObjectId(id, value.rlname) != Acad::eOk) return false;
            text = nameText(id);
            return true;
        case RTPICKS:
            text = setText(value.rlname[0]);
            return true;
        default:
            return false;
    }
}

bool ends(int type) {
    return type == RTNONE || type == 0;
}

// The next value of an argument list, as acutBuildList takes them.
bool takeArgument(int type, va_list& arguments, ads_u_val& value) {
    switch (type) {
        case RTSTR:
            value.rstring = va_arg(arguments, ACHAR*);
            return true;
        case RTSHORT:
            value.rint = static_cast<short>(va_arg(arguments, int));
            return true;
        case RTLONG:
            value.rlong = va_arg(arguments, int);
            return true;
        case RTREAL:
        case RTANG:
        case RTORINT:
            value.rreal = va_arg(arguments, double);
            return true;
        case RTPOINT:
        case RT3DPOINT: {
            const double* point = va_arg(arguments, double*);
            if (!point) return false;
            std::copy(point, point + (type == RTPOINT ? 2 : 3), value.rpoint);
            if (type == RTPOINT) value.rpoint[2] = 0;
            return true;
        }
        case RTENAME:
        case RTPICKS: {
            const std::int64_t* name = va_arg(arguments, std::int64_t*);
            if (!name) return false;
            ads_name_set(name, value.rlname);
            return true;
        }
        default:
            return false;
    }
}

int callWith(std::deque<std::wstring> words) {
    Session* session = Session::current();
    if (!session) return RTERROR;
    // An empty list cancels what runs; every call here has run to its end already.
    if (words.empty()) return RTNORM;
    const std::wstring name = words.front();
    words.pop_front();
    switch (session->callCommand(name, std::move(words))) {
        case Outcome::Ended:
            return RTNORM;
        case Outcome::Cancelled:
            return RTCAN;
        default:
            return RTERROR;
    }
}

int callWithArguments(int type, va_list& arguments) {
    std::deque<std::wstring> words;
    for (; !ends(type); type = va_arg(arguments, int)) {
        ads_u_val value{};
        std::wstring text;
        if (!takeArgument(type, arguments, value) || !typedText(static_cast<short>(type), value, text)) return RTREJ;
        words.push_back(std::move(text));
    }
    return callWith(std::move(words));
}

}  // namespace

}  // namespace qrs::host::ed

using namespace qrs::host::ed;

int acedPrompt(const ACHAR* text) {
    Session* session = Session::current();
    if (!session || !text) return RTERROR;
    session->output.print(text);
    return RTNORM;
}

int acutPrintf(const ACHAR* format, ...) {
    Session* session = Session::current();
    if (!session || !format) return RTERROR;
    std::wstring text;
    va_list arguments;
    va_start(arguments, format);
    afxFormat(text, format, arguments);
    va_end(arguments);
    session->output.print(text);
    return RTNORM;
}

int acedCommandS(int type, ...) {
    va_list arguments;
    va_start(arguments, type);
    const int result = callWithArguments(type, arguments);
    va_end(arguments);
    return result;
}

int acedFindFile(const ACHAR* name, ACHAR* result) {
    Session* session = Session::current();
    if (!session || !name || !result) return RTERROR;
    const std::wstring path = session->findInFolders(name);
    // The buffer is the caller's, of the length that every path fits which the system itself allows.
    if (path.empty() || path.size() > 260) return RTERROR;
    std::wmemcpy(result, path.c_str(), path.size() + 1);
    return RTNORM;
}
