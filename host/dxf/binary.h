// Binary drawings: how group codes and values lie in bytes, and their text form.
//
// A record of a binary drawing is handed out in text form, with lines that end in NUL instead of a line break: no text
// of a binary drawing can hold one, so line breaks in values need no disguise. The bytes themselves stay binary, and a
// change encodes only the tags it writes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "host/dxf/codecache.h"
#include "host/dxf/codeform.h"
#include "host/dxf/groupcodes.h"
#include "host/dxf/lines.h"

namespace qrs::dxf {

// The form of what stands after the signature.
CodeForm codeFormOf(std::string_view body);

namespace detail {

// Bytes of a value by its ValueKind; those of text and chunks follow from what they hold.
constexpr std::array<std::uint8_t, 11> kSizes = {0, 0, 0, 0, 1, 2, 4, 8, 8, 8, 8};

}  // namespace detail

// Cuts the tag at a place. The value is the bytes as they lie, without a text's NUL or a chunk's length. NoCode is
// never the answer, since every number is a code.
template <CodeForm form>
inline Cut cutBinary(const char* at, const char* end, RawTag& tag) {
    const auto unsignedAt = [&](std::ptrdiff_t offset) {
        return static_cast<unsigned>(static_cast<unsigned char>(at[offset]));
    };
    const auto longCode = [&](std::ptrdiff_t offset) {
        return static_cast<std::int16_t>(unsignedAt(offset) | unsignedAt(offset + 1) << 8);
    };
    const char* value = nullptr;
    if (form == CodeForm::Long) {
        if (end - at < 3) return Cut::NoValue;
        tag.code = longCode(0);
        value = at + 2;
    } else if (end - at >= 2 && unsignedAt(0) != 255) {
        tag.code = static_cast<int>(unsignedAt(0));
        value = at + 1;
    } else if (end - at >= 4) {
        tag.code = longCode(1);
        value = at + 3;
    } else {
        return Cut::NoValue;
    }
    const ValueKind kind = valueKindOf(tag.code);
    if (isTextual(kind)) {
        if (kFastTags && end - value >= 32) {
            if (const std::uint32_t zeros = matches32(value, '\0'); zeros != 0) {
                tag.value = value;
                tag.valueEnd = value + lowestBit(zeros);
                tag.next = tag.valueEnd + 1;
                return Cut::Tag;
            }
        }
        const auto* zero = static_cast<const char*>(std::memchr(value, '\0', static_cast<std::size_t>(end - value)));
        if (zero == nullptr) return Cut::NoValue;
        tag.value = value;
        tag.valueEnd = zero;
        tag.next = zero + 1;
        return Cut::Tag;
    }
    std::ptrdiff_t size = detail::kSizes[static_cast<std::size_t>(kind)];
    if (kind == ValueKind::Chunk) size = static_cast<unsigned char>(*value++);
    if (end - value < size) return Cut::NoValue;
    tag.value = value;
    tag.valueEnd = tag.next = value + size;
    return Cut::Tag;
}

inline Cut cutBinary(CodeForm form, const char* at, const char* end, RawTag& tag) {
    return form == CodeForm::Long ? cutBinary<CodeForm::Long>(at, end, tag) : cutBinary<CodeForm::Short>(at, end, tag);
}

// Bytes a tag's group code takes.
inline std::size_t codeSize(CodeForm form, const char* at) {
    if (form == CodeForm::Long) return 2;
    return static_cast<unsigned char>(*at) == 255 ? 3 : 1;
}

// Appends a cut tag's value as text: numbers in decimal (reals with the fewest digits that read back as the same),
// chunks in hexadecimal.
void appendValueText(const RawTag& tag, std::string& out);

// Gives code and value text of a record's first tag and of those whose codes are wanted.
template <typename IsWanted, typename Take>
void forEachBinaryTag(CodeForm form, std::string_view record, IsWanted&& isWanted, Take&& take) {
    const char* at = record.data();
    const char* const end = at + record.size();
    std::string number;
    for (RawTag tag{}; at != end && cutBinary(form, at, end, tag) == Cut::Tag; at = tag.next) {
        if (at != record.data() && !isWanted(tag.code)) continue;
        if (isTextual(valueKindOf(tag.code))) {
            take(tag.code, textOf(tag));
        } else {
            number.clear();
            appendValueText(tag, number);
            take(tag.code, std::string_view(number));
        }
    }
}

// Appends all tags of a record in text form.
void appendRecordText(CodeForm form, std::string_view record, std::string& out);

// Appends a value as bytes. False, nothing appended, when the code cannot hold it: no number, too great a number, an
// odd count of hexadecimal digits or more than 255 bytes of them.
bool appendValueBytes(int code, std::string_view value, std::string& out);

// Appends a whole tag. False, nothing appended, when it cannot be written.
bool appendBinaryTag(CodeForm form, int code, std::string_view value, std::string& out);

// The bytes [begin, end) of a record that a stretch of its text form stands for; both ends must be bounds of tags.
// False when they are not.
bool binaryStretch(CodeForm form, std::string_view record, std::string_view text, std::size_t& begin, std::size_t& end);

}  // namespace qrs::dxf
