// SETVAR: shows, sets and lists system variables.
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <iterator>
#include <limits>
#include <vector>

#include "acedads.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/editor/hostapp.h"
#include "host/editor/session.h"
#include "host/editor/suggestions.h"
#include "host/editor/wildcard.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "host/platform/number.h"

namespace qrs::host::commands {

using platform::translated;

namespace {

// Variables that hold paths, which commands know in the inner form.
constexpr const wchar_t* kPathVariables[] = {L"DWGPREFIX", L"TEMPPREFIX"};

// The value of a variable, released with the object.
class Value {
  public:
    explicit Value(const std::wstring& name)
        : known_(acedGetVar(name.c_str(), &buffer_) == RTNORM),
          isPath_(std::find(std::begin(kPathVariables), std::end(kPathVariables), name) != std::end(kPathVariables)) {}
    ~Value() {
        if (known_ && buffer_.restype == RTSTR) acutDelString(buffer_.resval.rstring);
    }
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;

    bool isKnown() const { return known_; }
    short type() const { return buffer_.restype; }
    std::wstring text() const;

  private:
    resbuf buffer_ = {};
    bool known_;
    bool isPath_;
};

std::wstring realText(double value) {
    return platform::fromUtf8(platform::formatReal(value));
}

std::wstring Value::text() const {
    const auto& value = buffer_.resval;
    switch (buffer_.restype) {
        case RTSHORT:
            return std::to_wstring(value.rint);
        case RTLONG:
            return std::to_wstring(value.rlong);
        case RTREAL:
            return realText(value.rreal);
        case RTPOINT:
            return realText(value.rpoint[0]) + L"," + realText(value.rpoint[1]);
        case RT3DPOINT:
            return realText(value.rpoint[0]) + L"," + realText(value.rpoint[1]) + L"," + realText(value.rpoint[2]);
        default:
            return inQuotes(value.rstring == nullptr ? L""
                            : isPath_                ? platform::shownPath(value.rstring)
                                                     : value.rstring);
    }
}

// The numbers of "1", "1,2" or "1,2,3"; empty when the text is none of these.
std::vector<double> numbersOf(const std::wstring& text) {
    std::vector<double> numbers;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(L',', begin), text.size());
        const std::optional<double> number = platform::parseReal(platform::toUtf8(text.substr(begin, end - begin)));
        if (!number || !std::isfinite(*number)) return {};
        numbers.push_back(*number);
        begin = end + 1;
    }
    return numbers.size() <= 3 ? numbers : std::vector<double>();
}

// Sets a variable of a type from what was typed. "." stands for an empty text.
bool setFrom(const std::wstring& name, short type, std::wstring typed) {
    resbuf value = {};
    value.restype = type;
    if (type == RTSTR) {
        if (typed == L".") typed.clear();
        value.resval.rstring = typed.data();
        return acedSetVar(name.c_str(), &value) == RTNORM;
    }
    const std::vector<double> numbers = numbersOf(typed);
    const bool isPoint = type == RTPOINT || type == RT3DPOINT;
    if (numbers.empty() || (numbers.size() > 1) != isPoint) return false;
    const double number = numbers.front();
    if (isPoint) {
        std::copy(numbers.begin(), numbers.end(), value.resval.rpoint);
    } else if (type == RTREAL) {
        value.resval.rreal = number;
    } else {
        const bool isShort = type == RTSHORT;
        const double most = isShort ? std::numeric_limits<short>::max() : std::numeric_limits<std::int32_t>::max();
        if (number != std::floor(number) || number > most || number < -most - 1) return false;
        if (isShort)
            value.resval.rint = static_cast<short>(number);
        else
            value.resval.rlong = static_cast<std::int32_t>(number);
    }
    return acedSetVar(name.c_str(), &value) == RTNORM;
}

// Variables whose values are names.
struct NameVariable {
    const wchar_t* name;
    Wanted wanted;
};
constexpr NameVariable kNameVariables[] = {
    {L"CELTYPE", Wanted::Linetypes},
    {L"CLAYER", Wanted::Layer},
    {L"CTAB", Wanted::Layout},
    {L"TEXTSTYLE", Wanted::TextStyles},
};

Wanted wantedFor(const std::wstring& name) {
    for (const NameVariable& row : kNameVariables)
        if (name == row.name) return row.wanted;
    return Wanted::Text;
}

bool isReadOnly(const std::wstring& name) {
    return ed::Variables::isReadOnly(name);
}

void list(const std::wstring& patterns) {
    std::vector<std::wstring> names;
    for (const std::wstring& name : ed::Variables::names())
        if (ed::matchesWildcard(name, patterns)) names.push_back(name);
    std::sort(names.begin(), names.end());
    std::size_t width = 0;
    for (const std::wstring& name : names)
        width = std::max(width, name.size());
    std::wstring text;
    for (const std::wstring& name : names) {
        const Value value(name);
        if (!value.isKnown()) continue;
        text += L"\n" + name + std::wstring(width + 2 - name.size(), L' ') + value.text();
        if (isReadOnly(name)) text += translated(L"  (read only)");
    }
    if (text.empty()) text = translated(L"\nNo matching variable names found.");
    acedPrompt(text.c_str());
}

}  // namespace

void setVariable() {
    std::optional<std::wstring> name = ed::Session::current()->takeTypedVariable();
    if (name->empty())
        name = askText(translated(L"\nEnter variable name or [?]: "), Blanks::EndAnswer, Wanted::Variable);
    if (!name || name->empty()) return;
    if (*name == L"?") {
        const std::optional<std::wstring> patterns =
            askText(translated(L"\nEnter variable(s) to list <*>: "), Blanks::EndAnswer, Wanted::Variable);
        if (patterns) list(patterns->empty() ? L"*" : *patterns);
        return;
    }
    name = platform::foldCase(*name);
    const Value value(*name);
    if (!value.isKnown())
        return failCommand(translated(L"Unknown variable name: %1. Type SETVAR ? for a listing.%2", *name,
                                      ed::didYouMean(*name, ed::Variables::names())));
    if (isReadOnly(*name)) {
        acedPrompt(translated(L"\n%1 = %2 (read only)", *name, value.text()).c_str());
        return;
    }
    const std::optional<std::wstring> typed =
        askText(translated(L"\nEnter new value for %1 <%2>: ", *name, value.text()), Blanks::Kept, wantedFor(*name));
    if (!typed || typed->empty()) return;
    if (!setFrom(*name, value.type(), *typed)) failCommand(translated(L"Cannot set %1 to %2.", *name, *typed));
}

}  // namespace qrs::host::commands
