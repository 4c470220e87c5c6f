// Numbers in the bytes of a file.
#pragma once

#include <cstddef>
#include <cstdint>

inline std::uint64_t LittleEndian(const char* bytes, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = size; i > 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[i - 1]);
    return value;
}

inline std::uint64_t BigEndian(const char* bytes, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
}
