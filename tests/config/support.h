// Tables made by hand, and files that lie in memory.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "config/dbfrecordset.h"

inline std::string bytesOf(std::uint64_t value, std::size_t size, bool bigEndian = false) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> 8 * i);
    if (bigEndian) std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

class MemoryFile : public qrs::platform::InputFile {
  public:
    explicit MemoryFile(std::string bytes) : bytes_(std::move(bytes)), size_(bytes_.size()) {}
    // A file that says another size than it has.
    MemoryFile(std::string bytes, std::uint64_t size) : bytes_(std::move(bytes)), size_(size) {}

    static inline std::uint64_t bytesRead = 0;
    static inline std::size_t largestRead = 0;

    std::uint64_t size() const override { return size_; }
    std::size_t readAt(std::uint64_t offset, char* target, std::size_t count) override {
        bytesRead += count;
        largestRead = std::max(largestRead, count);
        return offset < bytes_.size() ? bytes_.copy(target, count, static_cast<std::size_t>(offset)) : 0;
    }

  private:
    std::string bytes_;
    std::uint64_t size_;
};

struct HandField {
    std::string name;
    char type;
    int lengthByte;
    int decimalByte = 0;
};

// A table file; the records bear their deletion marks. Its table flags tell of a memo file.
inline std::string tableBytes(int version, const std::vector<HandField>& fields,
                              const std::vector<std::string>& records) {
    std::string descriptors;
    for (const HandField& field : fields) {
        std::string one = field.name;
        one.resize(32, '\0');
        one[11] = field.type;
        one[12] = '\x7F';  // an offset, as some writers leave it here; it is not read
        one[16] = static_cast<char>(field.lengthByte);
        one[17] = static_cast<char>(field.decimalByte);
        descriptors += one;
    }
    descriptors += '\x0D';
    if (version == 0x30) descriptors.append(263, '\0');
    std::string file = static_cast<char>(version) + std::string("\x7E\x01\x01") + bytesOf(records.size(), 4) +
                       bytesOf(32 + descriptors.size(), 2) + bytesOf(records.front().size(), 2);
    file.resize(32, '\0');
    file[28] = 0x02;
    file += descriptors;
    for (const std::string& record : records)
        file += record;
    return file;
}

inline bool openBytes(CDBFRecordset& table, std::string bytes, const std::string& memo = "") {
    return table.Open(std::make_unique<MemoryFile>(std::move(bytes)),
                      [&](std::wstring_view) { return std::make_unique<MemoryFile>(memo); });
}

template <typename Value>
Value valueOf(CDBFRecordset& table, std::wstring_view name) {
    Value value = {};
    table.GetFieldValue(name, value);
    return value;
}

inline std::wstring textOf(CDBFRecordset& table, std::wstring_view name) {
    return valueOf<std::wstring>(table, name);
}
inline std::int32_t integerOf(CDBFRecordset& table, std::wstring_view name) {
    return valueOf<std::int32_t>(table, name);
}
inline double doubleOf(CDBFRecordset& table, std::wstring_view name) {
    return valueOf<double>(table, name);
}
