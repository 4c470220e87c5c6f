// Text in drawings.
#include "host/dxf/text.h"

#include <array>

#include "host/dxf/tags.h"
#include "host/platform/codepage.h"
#include "host/platform/text.h"

namespace qrs::dxf {

namespace {

struct NamedCodePage {
    std::string_view name;  // upper case
    unsigned codePage;
};

constexpr NamedCodePage kCodePages[] = {
    {"ANSI_874", 874},    {"ANSI_932", 932},    {"ANSI_936", 936},    {"ANSI_949", 949},    {"ANSI_950", 950},
    {"ANSI_1250", 1250},  {"ANSI_1251", 1251},  {"ANSI_1252", 1252},  {"ANSI_1253", 1253},  {"ANSI_1254", 1254},
    {"ANSI_1255", 1255},  {"ANSI_1256", 1256},  {"ANSI_1257", 1257},  {"ANSI_1258", 1258},  {"ANSI_1361", 1361},
    {"DOS437", 437},      {"DOS850", 850},      {"DOS852", 852},      {"DOS855", 855},      {"DOS857", 857},
    {"DOS860", 860},      {"DOS861", 861},      {"DOS863", 863},      {"DOS864", 864},      {"DOS865", 865},
    {"DOS866", 866},      {"DOS869", 869},      {"DOS932", 932},      {"ISO8859-1", 28591}, {"ISO8859-2", 28592},
    {"ISO8859-3", 28593}, {"ISO8859-4", 28594}, {"ISO8859-5", 28595}, {"ISO8859-6", 28596}, {"ISO8859-7", 28597},
    {"ISO8859-8", 28598}, {"ISO8859-9", 28599}, {"8859_1", 28591},    {"8859_2", 28592},    {"8859_3", 28593},
    {"8859_4", 28594},    {"8859_5", 28595},    {"8859_6", 28596},    {"8859_7", 28597},    {"8859_8", 28598},
    {"8859_9", 28599},    {"ASCII", 1252},      {"US_ASCII", 1252},   {"GB2312", 936},      {"GBK", 936},
    {"BIG5", 950},        {"KSC5601", 949},     {"JOHAB", 1361},      {"MAC-ROMAN", 10000}, {"UTF-8", 65001},
    {"UTF8", 65001},
};

// The code pages of \M+1 ... \M+5.
constexpr std::array<unsigned, 6> kMifCodePages = {0, 932, 950, 949, 1361, 936};

// The number written with a count of hexadecimal digits at the start of a text; -1 when it is not there.
int hexNumber(std::string_view text, std::size_t digits) {
    if (text.size() < digits) return -1;
    int number = 0;
    for (const char c : text.substr(0, digits)) {
        const int digit = platform::hexValue(static_cast<unsigned char>(c));
        if (digit < 0) return -1;
        number = number * 16 + digit;
    }
    return number;
}

// The \U+XXXX at the start of a text, or a pair of them that makes one code point. The bytes it takes; 0 when there is
// none.
std::size_t unicodeEscape(std::string_view text, std::wstring& out) {
    const int unit = text.substr(0, 3) == "\\U+" ? hexNumber(text.substr(3), 4) : -1;
    if (unit < 0) return 0;
    const std::string_view rest = text.substr(7);
    const auto high = static_cast<char32_t>(unit);
    const bool isPair = platform::isHighSurrogate(high) && rest.substr(0, 3) == "\\U+";
    const auto low = static_cast<char32_t>(isPair ? hexNumber(rest.substr(3), 4) : -1);
    if (platform::isLowSurrogate(low)) {
        platform::appendCodePoint(out, platform::joinedSurrogates(high, low));
        return 14;
    }
    out += static_cast<wchar_t>(unit);
    return 7;
}

// The \M+nXXXX at the start of a text. An escape that names no character stays as it is written.
std::size_t multibyteEscape(std::string_view text, std::wstring& out) {
    if (text.substr(0, 3) != "\\M+" || text.size() < 8 || text[3] < '1' || text[3] > '5') return 0;
    const int bytes = hexNumber(text.substr(4), 4);
    if (bytes < 0) return 0;
    std::string two;
    if (bytes > 0xFF) two += static_cast<char>(bytes >> 8);
    two += static_cast<char>(bytes & 0xFF);
    std::wstring decoded;
    if (!platform::decodeStrict(kMifCodePages[static_cast<std::size_t>(text[3] - '0')], two, decoded)) return 0;
    out += decoded;
    return 8;
}

}  // namespace

unsigned codePageOf(std::string_view dwgCodePage) {
    std::string name(trimmed(dwgCodePage));
    for (char& c : name)
        c = platform::asciiUpper(c);
    for (const NamedCodePage& known : kCodePages) {
        if (known.name == name) return known.codePage;
    }
    return 0;
}

bool isPlainText(std::string_view value) {
    bool isPlain = true;
    for (const char c : value)
        isPlain &= (static_cast<signed char>(c) >= 0) & (c != '\\');
    return isPlain;
}

std::wstring decodeText(unsigned codePage, std::string_view value) {
    if (isPlainText(value)) return std::wstring(value.begin(), value.end());
    std::wstring text;
    std::size_t plain = 0;  // start of the bytes not yet decoded
    std::size_t at = 0;
    while (at < value.size()) {
        if (platform::isLeadByte(codePage, static_cast<unsigned char>(value[at]))) {
            at += 2;  // the second byte may be a backslash
            continue;
        }
        if (value[at] != '\\') {
            ++at;
            continue;
        }
        std::wstring escaped;
        std::size_t length = unicodeEscape(value.substr(at), escaped);
        if (length == 0) length = multibyteEscape(value.substr(at), escaped);
        if (length == 0) {
            ++at;
            continue;
        }
        if (at != plain) text += platform::decode(codePage, value.substr(plain, at - plain));
        text += escaped;
        at += length;
        plain = at;
    }
    if (plain < value.size()) text += platform::decode(codePage, value.substr(plain));
    return text;
}

std::string encodeText(unsigned codePage, std::wstring_view text) {
    std::string bytes;
    if (platform::encode(codePage, text, bytes)) return bytes;
    bytes.clear();
    const auto appendEscape = [&](char16_t unit) {
        bytes += "\\U+";
        for (int shift = 12; shift >= 0; shift -= 4)
            bytes += platform::kHexDigits[static_cast<std::size_t>(unit >> shift) & 15];
    };
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        const char32_t codePoint = platform::nextCodePoint(text, at);
        std::string one;
        if (platform::encode(codePage, text.substr(begin, at - begin), one))
            bytes += one;
        else
            platform::forEachUtf16Unit(codePoint, appendEscape);
    }
    return bytes;
}

}  // namespace qrs::dxf
