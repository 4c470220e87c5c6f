// Time of scanning a table of 20 fields and 200,000 records for three of its fields, with the module's own cursor and,
// where it is installed, with shapelib. Opening the table counts as part of the scan.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "config/dbfrecordset.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"

#if QRS_HAVE_SHAPELIB
#include <shapefil.h>
#endif

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kRecords = 200000;

// The fields that are read.
constexpr std::wstring_view kNumber = L"NUMBER";
constexpr std::wstring_view kLength = L"LENGTH";
constexpr std::wstring_view kMaterial = L"MATERIAL";

struct Field {
    std::wstring_view name;
    char type;
    int width;
    int decimals;
};

constexpr Field kFields[] = {
    {L"CODE", 'C', 12, 0},     {L"DN", 'N', 6, 0},       {kNumber, 'N', 10, 0},     {L"SYSTEM", 'C', 16, 0},
    {L"LAYER", 'C', 24, 0},    {L"COLOR", 'N', 3, 0},    {L"LINETYPE", 'C', 16, 0}, {L"GROUP", 'N', 4, 0},
    {L"TITLE", 'C', 30, 0},    {kLength, 'N', 12, 2},    {L"COUNT", 'N', 8, 0},     {L"UNIT", 'C', 6, 0},
    {L"STANDARD", 'C', 20, 0}, {L"PRESSURE", 'N', 5, 0}, {kMaterial, 'C', 20, 0},   {L"MAKER", 'C', 24, 0},
    {L"YEAR", 'N', 4, 0},      {L"PREFIX", 'C', 8, 0},   {L"FLOOR", 'N', 3, 0},     {L"REMARK", 'C', 40, 0},
};
static_assert(std::size(kFields) == 20);

// Multiples of a quarter, so that sums of them are exact.
constexpr double kLengthStep = 0.25;

void appendNumber(std::string& bytes, std::uint64_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> 8 * i & 0xFF);
}

void appendValue(std::string& bytes, const Field& field, std::int64_t record) {
    char text[64];
    if (field.name == kNumber) {
        std::snprintf(text, sizeof text, "%*lld", field.width, static_cast<long long>(record));
    } else if (field.decimals > 0) {
        std::snprintf(text, sizeof text, "%*.*f", field.width, field.decimals,
                      static_cast<double>(record) * kLengthStep);
    } else if (field.type == 'N') {
        std::snprintf(text, sizeof text, "%*d", field.width, static_cast<int>(record % 1000));
    } else {
        std::snprintf(text, sizeof text, "%c%-*d", static_cast<char>('A' + record % 26), field.width - 1,
                      static_cast<int>(record % 10000));
    }
    bytes += text;
}

std::string tableHead() {
    std::uint64_t recordLength = 1;  // the deletion mark
    std::string descriptors;
    for (const Field& field : kFields) {
        recordLength += static_cast<std::uint64_t>(field.width);
        std::string descriptor = qrs::platform::toUtf8(field.name);
        descriptor.resize(32, '\0');
        descriptor[11] = field.type;
        descriptor[16] = static_cast<char>(field.width);
        descriptor[17] = static_cast<char>(field.decimals);
        descriptors += descriptor;
    }
    descriptors += '\x0D';
    std::string head = "\x03\x7E\x01\x01";  // dBASE III without memo file; the date
    appendNumber(head, kRecords, 4);
    appendNumber(head, 32 + descriptors.size(), 2);
    appendNumber(head, recordLength, 2);
    head.resize(32, '\0');
    return head + descriptors;
}

// The table, in a folder that goes away with the program.
class Table {
  public:
    Table() : folder_(fs::temp_directory_path() / ("qrs_dbf_bench_" + std::to_string(std::time(nullptr)))) {
        fs::create_directories(folder_);
        std::ofstream out(path(), std::ios::binary);
        std::string bytes = tableHead();
        for (std::int64_t record = 0; record < kRecords; ++record) {
            bytes += ' ';
            for (const Field& field : kFields)
                appendValue(bytes, field, record);
            if (bytes.size() < (std::size_t{1} << 20)) continue;
            out << bytes;
            bytes.clear();
        }
        out << bytes << '\x1A';
        out.close();
        if (out.fail()) std::abort();
    }
    ~Table() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    fs::path path() const { return folder_ / "pipes.dbf"; }

  private:
    fs::path folder_;
};

const Table& table() {
    static const Table one;
    return one;
}

// What a scan has read, to be sure that both read the same.
struct Sums {
    std::int64_t numbers = 0;
    double lengths = 0;
    std::int64_t initials = 0;  // of the materials

    bool operator==(const Sums& other) const {
        return numbers == other.numbers && lengths == other.lengths && initials == other.initials;
    }
};

Sums expectedSums() {
    Sums sums;
    for (std::int64_t record = 0; record < kRecords; ++record) {
        sums.numbers += record;
        sums.lengths += static_cast<double>(record) * kLengthStep;
        sums.initials += 'A' + record % 26;
    }
    return sums;
}

template <typename Scan>
void measure(benchmark::State& state, Scan scan) {
    const fs::path path = table().path();
    const Sums expected = expectedSums();
    for (auto _ : state) {
        if (scan(path) == expected) continue;
        state.SkipWithError("the scan did not read what the table holds");
        return;
    }
    state.SetItemsProcessed(state.iterations() * kRecords);
}

Sums scanWithRecordset(const fs::path& path) {
    Sums sums;
    CDBFRecordset recordset;
    if (!recordset.Open(qrs::platform::innerPath(path))) return sums;
    std::int32_t number = 0;
    double length = 0;
    std::wstring material;
    for (recordset.MoveFirst(); !recordset.IsEOF(); recordset.MoveNext()) {
        recordset.GetFieldValue(kNumber, number);
        recordset.GetFieldValue(kLength, length);
        recordset.GetFieldValue(kMaterial, material);
        sums.numbers += number;
        sums.lengths += length;
        if (!material.empty()) sums.initials += static_cast<std::int64_t>(material.front());
    }
    return sums;
}

void recordset(benchmark::State& state) {
    measure(state, scanWithRecordset);
}
BENCHMARK(recordset)->Unit(benchmark::kMillisecond);

#if QRS_HAVE_SHAPELIB
Sums scanWithShapelib(const fs::path& path) {
    Sums sums;
    const DBFHandle file = DBFOpen(path.string().c_str(), "rb");
    if (file == nullptr) return sums;
    const auto indexOf = [&](std::wstring_view name) {
        return DBFGetFieldIndex(file, qrs::platform::toUtf8(name).c_str());
    };
    const int number = indexOf(kNumber);
    const int length = indexOf(kLength);
    const int material = indexOf(kMaterial);
    const int count = DBFGetRecordCount(file);
    for (int record = 0; record < count; ++record) {
        sums.numbers += DBFReadIntegerAttribute(file, record, number);
        sums.lengths += DBFReadDoubleAttribute(file, record, length);
        const char* const text = DBFReadStringAttribute(file, record, material);
        if (text != nullptr) sums.initials += *text;
    }
    DBFClose(file);
    return sums;
}

void shapelib(benchmark::State& state) {
    measure(state, scanWithShapelib);
}
BENCHMARK(shapelib)->Unit(benchmark::kMillisecond);
#endif

}  // namespace

BENCHMARK_MAIN();
