// Prompts for texts, numbers, points and keywords.
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <string>

#include "acedads.h"
#include "host/editor/points.h"
#include "host/editor/question.h"
#include "host/editor/session.h"
#include "host/editor/suggestions.h"
#include "host/platform/language.h"

namespace qrs::host::ed {

using platform::translated;

namespace {

// Room in the buffers of functions that are not told a size.
constexpr std::size_t kTextSize = 133;

int copyText(const std::wstring& text, ACHAR* buffer, std::size_t size) {
    if (!buffer || size == 0) return RTREJ;
    const std::size_t length = std::min(text.size(), size - 1);
    std::wmemcpy(buffer, text.c_str(), length);
    buffer[length] = L'\0';
    return RTNORM;
}

// The refusal of a number by the flags of acedInitGet.
Refusal refuseNumber(double value, int flags) {
    const bool zero = (flags & RSG_NOZERO) && value == 0;
    const bool negative = (flags & RSG_NONEG) && value < 0;
    if (!zero && !negative) return Refusal();
    if ((flags & RSG_NOZERO) && (flags & RSG_NONEG)) return translated(L"Value must be positive and nonzero.");
    return zero ? translated(L"Value must be nonzero.") : translated(L"Value must be positive.");
}

int getReal(Session& session, const ACHAR* prompt, ads_real* result) {
    Question question(session);
    const std::wstring wanted = question.hasKeywords() ? translated(L"Requires numeric value or option keyword.")
                                                       : translated(L"Requires numeric value.");
    return question.ask(prompt, wanted, [&](const std::wstring& text) {
        double value = 0;
        if (!parseReal(text, value)) return wanted;
        Refusal refusal = refuseNumber(value, question.flags());
        if (refusal.empty()) *result = value;
        return refusal;
    });
}

int getPoint(Question& question, const ads_point base, const ACHAR* prompt, ads_point result) {
    const std::wstring wanted =
        question.hasKeywords() ? translated(L"Point or option keyword required.") : translated(L"Invalid point.");
    return question.ask(prompt, wanted,
                        [&](const std::wstring& text) { return parsePoint(text, base, result) ? Refusal() : wanted; });
}

int getDist(Session& session, const ads_point base, const ACHAR* prompt, ads_real* result) {
    Question question(session);
    const std::wstring wanted = question.hasKeywords()
                                    ? translated(L"Requires numeric distance, two points, or option keyword.")
                                    : translated(L"Requires numeric distance or two points.");
    ads_point first = {0, 0, 0};
    bool byPoint = false;
    const int answered = question.ask(prompt, wanted, [&](const std::wstring& text) {
        double value = 0;
        byPoint = parsePoint(text, base, first);
        if (byPoint) return Refusal();
        if (!parseReal(text, value)) return wanted;
        Refusal refusal = refuseNumber(value, question.flags());
        if (refusal.empty()) *result = value;
        return refusal;
    });
    if (answered != RTNORM || !byPoint) return answered;
    ads_point second = {0, 0, 0};
    if (base) {
        std::copy(first, first + 3, second);
        std::copy(base, base + 3, first);
    } else {
        session.initGet(RSG_NONULL, std::wstring_view());
        Question other(session);
        const int next = getPoint(other, first, translated(L"\nSpecify second point: ").c_str(), second);
        if (next != RTNORM) return next;
    }
    *result = std::hypot(second[0] - first[0], second[1] - first[1], second[2] - first[2]);
    return RTNORM;
}

}  // namespace

}  // namespace qrs::host::ed

using namespace qrs::host::ed;

int acedInitGet(int flags, const ACHAR* keywords) {
    Session* session = Session::current();
    if (!session) return RTERROR;
    session->initGet(flags, keywords ? keywords : L"");
    return RTNORM;
}

int acedGetInput(ACHAR* text) {
    return acedGetInput(text, kTextSize);
}

int acedGetInput(ACHAR* text, std::size_t bufferSize) {
    Session* session = Session::current();
    return session ? copyText(session->lastKeyword, text, bufferSize) : RTERROR;
}

int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result) {
    return acedGetString(cronly, prompt, result, kTextSize);
}

int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, std::size_t bufferSize) {
    Session* session = Session::current();
    if (!session) return RTERROR;
    if (!result || bufferSize == 0) return RTREJ;
    session->initGet(0, std::wstring_view());
    const Answer answer = session->ask(promptText(prompt), cronly ? Extent::Line : Extent::Word);
    if (answer.reply != qrs::host::Reply::Line) return RTCAN;
    return copyText(answer.text, result, bufferSize);
}

int acedGetInt(const ACHAR* prompt, int* result) {
    Session* session = Session::current();
    if (!session) return RTERROR;
    if (!result) return RTREJ;
    Question question(*session);
    const std::wstring wanted = question.hasKeywords() ? translated(L"Requires an integer value or option keyword.")
                                                       : translated(L"Requires an integer value.");
    return question.ask(prompt, wanted, [&](const std::wstring& text) {
        int value = 0;
        if (!parseInteger(text, value)) return wanted;
        if (value < -32768 || value > 32767) return translated(L"Requires an integer between -32768 and 32767.");
        Refusal refusal = refuseNumber(value, question.flags());
        if (refusal.empty()) *result = value;
        return refusal;
    });
}

int acedGetReal(const ACHAR* prompt, ads_real* result) {
    Session* session = Session::current();
    if (!session) return RTERROR;
    return result ? getReal(*session, prompt, result) : RTREJ;
}

int acedGetDist(const ads_point base, const ACHAR* prompt, ads_real* result) {
    Session* session = Session::current();
    if (!session) return RTERROR;
    return result ? getDist(*session, base, prompt, result) : RTREJ;
}

int acedGetPoint(const ads_point base, const ACHAR* prompt, ads_point result) {
    Session* session = Session::current();
    if (!session) return RTERROR;
    if (!result) return RTREJ;
    Question question(*session);
    return getPoint(question, base, prompt, result);
}

int acedGetKword(const ACHAR* prompt, ACHAR* result) {
    return acedGetKword(prompt, result, kTextSize);
}

int acedGetKword(const ACHAR* prompt, ACHAR* result, std::size_t bufferSize) {
    Session* session = Session::current();
    if (!session) return RTERROR;
    if (!result || bufferSize == 0) return RTREJ;
    Question question(*session);
    const std::wstring wanted = translated(L"Invalid option keyword.");
    const int answered = question.ask(prompt, wanted, [&](const std::wstring& text) {
        return wanted + didYouMean(text, question.keywords().names());
    });
    return answered == RTKWORD ? copyText(session->lastKeyword, result, bufferSize) : answered;
}
