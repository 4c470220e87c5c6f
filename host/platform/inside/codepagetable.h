// One code page as tables in both directions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qrs::platform {

// What the system knows of one code page, asked character by character while the tables are made.
class SystemCodePage {
  public:
    // Null when the system does not know it.
    static std::unique_ptr<SystemCodePage> open(unsigned codePage);
    virtual ~SystemCodePage() = default;

    // The one code point that the bytes of one character stand for.
    virtual std::optional<char32_t> decode(std::string_view character) = 0;
    // The bytes of a code point: one, or two with the first in the high byte; 0 when it has none or more.
    virtual std::uint16_t encode(char32_t codePoint) = 0;
};

// The ANSI code page the system itself works with; nothing where it has no such notion.
std::optional<unsigned> systemAnsiCodePage();

bool leadByteOf(unsigned codePage, unsigned char byte);

// GB18030: the characters of GBK, and all others in four bytes each.
constexpr unsigned kGb18030 = 54936;

// The characters of four bytes: lead, digit, lead, digit, counted in order. Those of the basic plane fill the gaps
// which the characters of two bytes leave; after them come, number by number, the code points of all other planes.
class FourByteTable {
  public:
    explicit FourByteTable(SystemCodePage& system);

    // Reads the character at i and moves past it. Nothing (and i stays) when there is none.
    std::optional<char32_t> next(std::string_view bytes, std::size_t& i) const;
    // False when the code point has none.
    bool append(char32_t codePoint, std::string& out) const;

  private:
    std::vector<char16_t> decode_;       // by number; kNoCharacter where there is none
    std::vector<std::uint16_t> encode_;  // by code point of the basic plane: the number, counted from 1; 0: none
};

// Tables of a code page of one- and two-byte characters whose first half is ASCII, or of GB18030.
class CodePageTable {
  public:
    // Made at first use and kept; null when the system does not know the code page or it is of another make.
    static const CodePageTable* find(unsigned codePage);

    // Reads one character at i and moves past it. Nothing (and one byte on) when there is none.
    std::optional<char32_t> next(std::string_view bytes, std::size_t& i) const;
    // Appends the bytes of a code point. False when it has none.
    bool append(char32_t codePoint, std::string& out) const;

  private:
    CodePageTable(unsigned codePage, SystemCodePage& system);
    void enter(std::uint16_t bytes, char32_t codePoint, SystemCodePage& system);
    void enterSupplements(unsigned codePage, SystemCodePage& system);

    std::array<bool, 256> lead_{};
    std::vector<char16_t> decode_;       // by bytes, as SystemCodePage::encode gives them
    std::vector<std::uint16_t> encode_;  // by code point of the basic plane
    std::optional<FourByteTable> four_;
};

}  // namespace qrs::platform
