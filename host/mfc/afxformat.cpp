// The formatter behind CString::Format and the printing functions.
//
// Each conversion is read here, and only single numbers go to the C library: its wide functions do not agree between
// systems on what "%s" takes.
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <cwchar>

#include "afxstr.h"
#include "host/platform/codepage.h"

namespace {

enum class Size { none, narrow, veryNarrow, wide, bits32, bits64, pointer };

struct SizeName {
    const wchar_t* name;
    Size size;
};

// Longer names before those they begin with. A plain long follows the system's own.
constexpr SizeName kSizes[] = {
    {L"I64", Size::bits64}, {L"I32", Size::bits32}, {L"hh", Size::veryNarrow}, {L"ll", Size::bits64},
    {L"h", Size::narrow},   {L"l", Size::wide},     {L"w", Size::wide},        {L"j", Size::bits64},
    {L"z", Size::pointer},  {L"t", Size::pointer},  {L"I", Size::pointer},     {L"L", Size::none},
};

struct Conversion {
    std::string flags;
    int width = 0;
    int precision = -1;  // none
    Size size = Size::none;
    wchar_t letter = 0;
};

// va_list handed on by reference, so that what one function takes the next does not see again.
struct Arguments {
    va_list list;
};

int readNumber(const wchar_t*& at, Arguments& arguments) {
    if (*at == L'*') {
        ++at;
        return va_arg(arguments.list, int);
    }
    constexpr int kMost = 100'000'000;
    int number = 0;
    for (; *at >= L'0' && *at <= L'9'; ++at) {
        if (number < kMost) number = number * 10 + (*at - L'0');
    }
    return number;
}

// Reads what stands after the '%', up to the letter and moves past it.
Conversion readConversion(const wchar_t*& at, Arguments& arguments) {
    Conversion conversion;
    for (; *at && std::wcschr(L"-+ #0", *at); ++at)
        conversion.flags += static_cast<char>(*at);
    conversion.width = readNumber(at, arguments);
    if (conversion.width < 0) {
        conversion.flags += '-';
        conversion.width = -conversion.width;
    }
    if (*at == L'.') {
        ++at;
        conversion.precision = readNumber(at, arguments);
        if (conversion.precision < 0) conversion.precision = -1;
    }
    for (const SizeName& row : kSizes) {
        const std::size_t length = std::wcslen(row.name);
        if (std::wcsncmp(at, row.name, length) != 0) continue;
        conversion.size = row.size;
        at += length;
        break;
    }
    conversion.letter = *at;
    if (*at) ++at;
    return conversion;
}

bool leftAligned(const Conversion& conversion) {
    return conversion.flags.find('-') != std::string::npos;
}

void appendPadded(std::wstring& out, std::wstring_view text, const Conversion& conversion) {
    const auto width = static_cast<std::size_t>(conversion.width);
    const std::size_t padding = width > text.size() ? width - text.size() : 0;
    if (!leftAligned(conversion)) out.append(padding, L' ');
    out += text;
    if (leftAligned(conversion)) out.append(padding, L' ');
}

// The text of one number by the C library, in the plain ASCII spelling of every locale.
template <typename Number>
void appendNumber(std::wstring& out, const Conversion& conversion, const char* size, Number number) {
    const std::string format =
        '%' + conversion.flags + (conversion.precision < 0 ? "*" : "*.*") + size + static_cast<char>(conversion.letter);
    const auto print = [&](char* room, std::size_t count) {
        return conversion.precision < 0
                   ? std::snprintf(room, count, format.c_str(), conversion.width, number)
                   : std::snprintf(room, count, format.c_str(), conversion.width, conversion.precision, number);
    };
    const int length = print(nullptr, 0);
    if (length < 0) return;
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    print(text.data(), text.size());
    text.pop_back();
    const std::string point = std::localeconv()->decimal_point;
    const std::size_t at = point == "." ? std::string::npos : text.find(point);
    if (at != std::string::npos) text.replace(at, point.size(), ".");
    for (const char character : text)
        out += static_cast<wchar_t>(character);
}

std::int64_t takeSigned(Size size, Arguments& arguments) {
    switch (size) {
        case Size::bits64:
            return va_arg(arguments.list, long long);
        case Size::wide:
            return va_arg(arguments.list, long);
        case Size::pointer:
            return va_arg(arguments.list, std::ptrdiff_t);
        case Size::narrow:
            return static_cast<short>(va_arg(arguments.list, int));
        case Size::veryNarrow:
            return static_cast<signed char>(va_arg(arguments.list, int));
        default:
            return va_arg(arguments.list, int);
    }
}

std::uint64_t takeUnsigned(Size size, Arguments& arguments) {
    switch (size) {
        case Size::bits64:
            return va_arg(arguments.list, unsigned long long);
        case Size::wide:
            return va_arg(arguments.list, unsigned long);
        case Size::pointer:
            return va_arg(arguments.list, std::size_t);
        case Size::narrow:
            return static_cast<unsigned short>(va_arg(arguments.list, unsigned));
        case Size::veryNarrow:
            return static_cast<unsigned char>(va_arg(arguments.list, unsigned));
        default:
            return va_arg(arguments.list, unsigned);
    }
}

// Capital letters are the other width of what the small ones are; h and l say it outright.
bool isNarrowText(const Conversion& conversion) {
    if (conversion.size == Size::narrow) return true;
    if (conversion.size == Size::wide) return false;
    return conversion.letter == L'S' || conversion.letter == L'C';
}

// Length of the text, reading no further than the precision allows: the text need not end before that.
template <typename Unit>
std::size_t boundedLength(const Unit* text, int precision) {
    std::size_t length = 0;
    while ((precision < 0 || length < static_cast<std::size_t>(precision)) && text[length])
        ++length;
    return length;
}

void appendText(std::wstring& out, const Conversion& conversion, Arguments& arguments) {
    using qrs::platform::ansiCodePage;
    const bool narrow = isNarrowText(conversion);
    const auto* bytes = narrow ? va_arg(arguments.list, const char*) : nullptr;
    const auto* units = narrow ? nullptr : va_arg(arguments.list, const wchar_t*);
    std::wstring text;
    if (bytes) {
        text = qrs::platform::decode(ansiCodePage(), {bytes, boundedLength(bytes, conversion.precision)});
    } else if (units) {
        text.assign(units, boundedLength(units, conversion.precision));
    } else {
        text.assign(L"(null)", boundedLength(L"(null)", conversion.precision));
    }
    appendPadded(out, text, conversion);
}

void appendCharacter(std::wstring& out, const Conversion& conversion, Arguments& arguments) {
    const int value = va_arg(arguments.list, int);
    if (isNarrowText(conversion)) {
        const char byte = static_cast<char>(value);
        appendPadded(out, qrs::platform::decode(qrs::platform::ansiCodePage(), {&byte, 1}), conversion);
    } else {
        appendPadded(out, std::wstring(1, static_cast<wchar_t>(value)), conversion);
    }
}

// False for a letter that is no conversion.
bool appendConversion(std::wstring& out, const Conversion& conversion, Arguments& arguments) {
    switch (conversion.letter) {
        case L'd':
        case L'i':
            appendNumber(out, conversion, "ll", static_cast<long long>(takeSigned(conversion.size, arguments)));
            return true;
        case L'u':
        case L'x':
        case L'X':
        case L'o':
            appendNumber(out, conversion, "ll",
                         static_cast<unsigned long long>(takeUnsigned(conversion.size, arguments)));
            return true;
        case L'f':
        case L'F':
        case L'e':
        case L'E':
        case L'g':
        case L'G':
        case L'a':
        case L'A':
            appendNumber(out, conversion, "", va_arg(arguments.list, double));
            return true;
        case L's':
        case L'S':
            appendText(out, conversion, arguments);
            return true;
        case L'c':
        case L'C':
            appendCharacter(out, conversion, arguments);
            return true;
        case L'p': {
            Conversion digits = conversion;
            digits.letter = L'X';
            digits.precision = sizeof(void*) * 2;
            appendNumber(
                out, digits, "ll",
                static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(va_arg(arguments.list, const void*))));
            return true;
        }
        case L'%':
            out += L'%';
            return true;
        default:
            return false;
    }
}

}  // namespace

void afxFormat(std::wstring& out, const wchar_t* format, va_list list) {
    if (!format) return;
    // Gathered apart: out itself may be among the arguments.
    std::wstring text;
    Arguments arguments;
    va_copy(arguments.list, list);
    for (const wchar_t* at = format; *at;) {
        if (*at != L'%') {
            text += *at++;
            continue;
        }
        const wchar_t* const start = at++;
        const Conversion conversion = readConversion(at, arguments);
        if (!appendConversion(text, conversion, arguments)) text.append(start, at);
    }
    va_end(arguments.list);
    out += text;
}
