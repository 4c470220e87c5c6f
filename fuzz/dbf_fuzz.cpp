// Fuzzes the table library with a table and its memo file: opens the table and reads every field of some records by
// every getter. Input: a choice byte, the table's length (two bytes, little-endian), the table, the memo file.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "config/dbfrecordset.h"
#include "tests/config/support.h"

namespace {

// Makes the record count and the file's end agree with the header, which hardly any change leaves intact.
void mendSize(std::string& table) {
    if (table.size() < 32) return;
    const auto number = [&](std::size_t at) {
        return static_cast<unsigned char>(table[at]) |
               static_cast<std::size_t>(static_cast<unsigned char>(table[at + 1])) << 8;
    };
    const std::size_t header = number(8);
    const std::size_t record = number(10);
    if (record == 0 || header > table.size()) return;
    const std::size_t count = (table.size() - header) / record;
    table.resize(header + count * record);
    for (std::size_t i = 0; i < 4; ++i)
        table[4 + i] = static_cast<char>(count >> 8 * i);
}

void readRecord(CDBFRecordset& recordset) {
    std::wstring text;
    std::int32_t integer = 0;
    double real = 0;
    for (const CDBFField& field : recordset.TableDef().Fields()) {
        recordset.GetFieldValue(field.name, text);
        recordset.GetFieldValue(field.name, integer);
        recordset.GetFieldValue(field.name, real);
    }
    recordset.GetFieldValue(L"none", text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const std::size_t length = std::min<std::size_t>(data[1] | data[2] << 8, size - 3);
    const char* const bytes = reinterpret_cast<const char*>(data);
    std::string table(bytes + 3, length);
    const std::string memo(bytes + 3 + length, size - 3 - length);
    if ((data[0] & 1) != 0) mendSize(table);

    CDBFRecordset recordset;
    if (!openBytes(recordset, table, memo)) return 0;
    constexpr int kEnough = 16;  // records
    int read = 0;
    for (recordset.MoveFirst(); !recordset.IsEOF() && read < kEnough; recordset.MoveNext(), ++read)
        readRecord(recordset);
    return 0;
}
