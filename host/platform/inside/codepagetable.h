// One code page as tables in both directions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
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
    // The bytes of a code point: one, or two with the first in the high byte; 0 when it has none.
    virtual std::uint16_t encode(char32_t codePoint) = 0;
};

// The ANSI code page the system itself works with; nothing where it has no such notion.
std::optional<unsigned> systemAnsiCodePage();

bool leadByteOf(unsigned codePage, unsigned char byte);

// Tables of a code page of one- and two-byte characters whose first half is ASCII.
class CodePageTable {
  public:
    // Made at first use and kept; null when the system does not know the code page or it is of another make.
    static const CodePageTable* find(unsigned codePage);

    // Reads one character at i and moves behind it. Nothing (and one byte on) when there is none.
    std::optional<char32_t> next(std::string_view bytes, std::size_t& i) const;
    // As SystemCodePage::encode.
    std::uint16_t encode(char32_t codePoint) const;

  private:
    CodePageTable(unsigned codePage, SystemCodePage& system);
    void enter(std::uint16_t bytes, char32_t codePoint, SystemCodePage& system);
    void enterSupplements(unsigned codePage, SystemCodePage& system);

    static constexpr char16_t kNone = 0xFFFF;  // no character has this code point

    std::array<bool, 256> lead_{};
    std::vector<char16_t> decode_;       // by bytes, as encode gives them
    std::vector<std::uint16_t> encode_;  // by code point of the basic plane
};

}  // namespace qrs::platform
