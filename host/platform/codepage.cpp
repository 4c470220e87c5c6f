// Decodes and encodes text, most of which is ASCII.
#include "host/platform/codepage.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <optional>

#include "host/platform/inside/codepagetable.h"

namespace qrs::platform {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
// Drawings of the house were made on Chinese systems; where the system has no ANSI code page of its own this one
// serves.
constexpr unsigned kDefaultAnsiCodePage = 936;

std::atomic<unsigned>& currentAnsiCodePage() {
    static std::atomic<unsigned> current{systemAnsiCodePage().value_or(kDefaultAnsiCodePage)};
    return current;
}

bool isContinuation(std::string_view bytes, std::size_t i) {
    return i < bytes.size() && (static_cast<unsigned char>(bytes[i]) & 0xC0) == 0x80;
}

// Number of bytes of the UTF-8 character at i, 0 when it is none. Surrogates count as characters here.
std::size_t utf8Length(std::string_view bytes, std::size_t i, char32_t& codePoint) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    std::size_t length = 0;
    char32_t least = 0;
    if (first < 0x80) {
        codePoint = first;
        return 1;
    }
    if (first >= 0xC2 && first <= 0xDF) {
        length = 2, least = 0x80, codePoint = first & 0x1Fu;
    } else if (first >= 0xE0 && first <= 0xEF) {
        length = 3, least = 0x800, codePoint = first & 0x0Fu;
    } else if (first >= 0xF0 && first <= 0xF4) {
        length = 4, least = 0x10000, codePoint = first & 0x07u;
    } else {
        return 0;
    }
    for (std::size_t k = 1; k < length; ++k) {
        if (!isContinuation(bytes, i + k)) return 0;
        codePoint = codePoint << 6 | (static_cast<unsigned char>(bytes[i + k]) & 0x3Fu);
    }
    return codePoint >= least && codePoint <= 0x10FFFF ? length : 0;
}

void appendUtf8(std::string& out, char32_t codePoint) {
    const auto put = [&out](char32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | codePoint >> 6), put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | codePoint >> 12), put(0x80 | (codePoint >> 6 & 0x3F)), put(0x80 | (codePoint & 0x3F));
    } else {
        put(0xF0 | codePoint >> 18), put(0x80 | (codePoint >> 12 & 0x3F));
        put(0x80 | (codePoint >> 6 & 0x3F)), put(0x80 | (codePoint & 0x3F));
    }
}

// Length of the run of ASCII at i.
std::size_t asciiRun(std::string_view bytes, std::size_t i) {
    const std::size_t start = i;
    while (i + 8 <= bytes.size()) {
        std::uint64_t word;
        std::memcpy(&word, bytes.data() + i, 8);
        if (word & 0x8080808080808080u) break;
        i += 8;
    }
    while (i < bytes.size() && static_cast<unsigned char>(bytes[i]) < 0x80)
        ++i;
    return i - start;
}

void appendAscii(std::wstring& text, std::string_view ascii) {
    const std::size_t at = text.size();
    text.resize(at + ascii.size());
    for (std::size_t k = 0; k < ascii.size(); ++k)
        text[at + k] = static_cast<wchar_t>(ascii[k]);
}

// Appends the text of the bytes; false when some of them are none.
bool decodeUtf8(std::string_view bytes, std::wstring& text) {
    bool good = true;
    for (std::size_t i = 0; i < bytes.size();) {
        if (const std::size_t run = asciiRun(bytes, i)) {
            appendAscii(text, bytes.substr(i, run));
            i += run;
            continue;
        }
        char32_t codePoint = 0;
        const std::size_t length = utf8Length(bytes, i, codePoint);
        // A surrogate is no UTF-8, but toUtf8 writes lone ones so; reading them back loses nothing.
        if (length == 0 || isSurrogate(codePoint)) good = false;
        appendCodePoint(text, length ? codePoint : kReplacement);
        i += length ? length : 1;
    }
    return good;
}

bool isUtf16(unsigned codePage) {
    return codePage == kUtf16Little || codePage == kUtf16Big;
}

// Appends the text of the bytes, lone surrogates as they are; false when there are such, or half a unit.
bool decodeUtf16(bool isLittle, std::string_view bytes, std::wstring& text) {
    const auto unitAt = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]), second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<char32_t>(isLittle ? second << 8 | first : first << 8 | second);
    };
    bool good = true;
    std::size_t at = 0;
    for (; at + 2 <= bytes.size(); at += 2) {
        char32_t codePoint = unitAt(at);
        const char32_t second = isHighSurrogate(codePoint) && at + 4 <= bytes.size() ? unitAt(at + 2) : 0;
        if (isLowSurrogate(second)) {
            codePoint = joinedSurrogates(codePoint, second);
            at += 2;
        }
        good = good && !isSurrogate(codePoint);
        appendCodePoint(text, codePoint);
    }
    if (at < bytes.size()) appendCodePoint(text, kReplacement);
    return good && at == bytes.size();
}

void encodeUtf16(bool isLittle, std::wstring_view text, std::string& out) {
    const auto put = [&](char16_t unit) {
        const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
        out += isLittle ? low : high;
        out += isLittle ? high : low;
    };
    for (std::size_t i = 0; i < text.size();)
        forEachUtf16Unit(nextCodePoint(text, i), put);
}

bool decodeTable(const CodePageTable* table, std::string_view bytes, std::wstring& text) {
    bool good = true;
    for (std::size_t i = 0; i < bytes.size();) {
        if (const std::size_t run = asciiRun(bytes, i)) {
            appendAscii(text, bytes.substr(i, run));
            i += run;
            continue;
        }
        std::optional<char32_t> codePoint;
        if (table) {
            codePoint = table->next(bytes, i);
        } else {
            ++i;
        }
        good = good && codePoint;
        appendCodePoint(text, codePoint.value_or(kReplacement));
    }
    return good;
}

bool isAscii(std::string_view bytes) {
    return asciiRun(bytes, 0) == bytes.size();
}

}  // namespace

unsigned ansiCodePage() {
    return currentAnsiCodePage();
}

bool setAnsiCodePage(unsigned codePage) {
    if (!isKnownCodePage(codePage)) return false;
    currentAnsiCodePage() = codePage;
    return true;
}

bool isKnownCodePage(unsigned codePage) {
    return codePage == kUtf8 || CodePageTable::find(codePage) != nullptr;
}

bool isLeadByte(unsigned codePage, unsigned char byte) {
    return leadByteOf(codePage, byte);
}

bool decodeStrict(unsigned codePage, std::string_view bytes, std::wstring& text) {
    text.clear();
    text.reserve(bytes.size());
    if (codePage == kUtf8) return decodeUtf8(bytes, text);
    if (isUtf16(codePage)) return decodeUtf16(codePage == kUtf16Little, bytes, text);
    // ASCII needs no table, so a program that meets nothing else never makes one.
    return decodeTable(isAscii(bytes) ? nullptr : CodePageTable::find(codePage), bytes, text);
}

std::wstring decode(unsigned codePage, std::string_view bytes) {
    std::wstring text;
    decodeStrict(codePage, bytes, text);
    return text;
}

bool encode(unsigned codePage, std::wstring_view text, std::string& out) {
    out.clear();
    if (codePage == kUtf8) {
        out = toUtf8(text);
        return true;
    }
    if (isUtf16(codePage)) {
        encodeUtf16(codePage == kUtf16Little, text, out);
        return true;
    }
    const CodePageTable* table = nullptr;
    for (std::size_t i = 0; i < text.size();) {
        const char32_t codePoint = nextCodePoint(text, i);
        if (codePoint < 0x80) {
            out += static_cast<char>(codePoint);
            continue;
        }
        if (!table) table = CodePageTable::find(codePage);
        if (!table || !table->append(codePoint, out)) return false;
    }
    return true;
}

bool isUtf8(std::string_view bytes) {
    for (std::size_t i = asciiRun(bytes, 0); i < bytes.size(); i += asciiRun(bytes, i)) {
        char32_t codePoint = 0;
        const std::size_t length = utf8Length(bytes, i, codePoint);
        if (length == 0 || isSurrogate(codePoint)) return false;
        i += length;
    }
    return true;
}

std::wstring fromUtf8(std::string_view bytes) {
    return decode(kUtf8, bytes);
}

std::string toUtf8(std::wstring_view text) {
    std::string out(text.size(), '\0');
    std::size_t i = 0;
    for (; i < text.size() && static_cast<char32_t>(text[i]) < 0x80; ++i)
        out[i] = static_cast<char>(text[i]);
    for (out.resize(i); i < text.size();)
        appendUtf8(out, nextCodePoint(text, i));
    return out;
}

}  // namespace qrs::platform
