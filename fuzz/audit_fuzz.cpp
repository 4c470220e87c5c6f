// Fuzz target: the small tables of the audit, which people write by hand: rules, accepted findings, mappings.
//
// The first byte chooses the kind, the rest is the file. Whatever is read without a fault must read back the same from
// what is written of it.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "audit/accepted.h"
#include "audit/csv.h"
#include "audit/mapping.h"
#include "audit/rules.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"

namespace {

using namespace qrs;

const std::filesystem::path& folder() {
    static const std::filesystem::path path = [] {
        std::filesystem::path made =
            std::filesystem::temp_directory_path() / ("qrs_audit_fuzz." + std::to_string(getpid()));
        std::filesystem::create_directories(made);
        std::atexit([] { std::filesystem::remove_all(folder()); });
        return made;
    }();
    return path;
}

std::wstring written(const char* name, std::string_view bytes) {
    const std::filesystem::path path = folder() / name;
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return platform::innerPath(path);
}

void readBack(const std::wstring& path) {
    std::vector<audit::CsvRow> rows, again;
    platform::Error error;
    if (!audit::readCsv(path, rows, error)) return;
    std::wstring text = L"#\n";
    for (const audit::CsvRow& row : rows) {
        std::wstring line;
        for (const std::wstring& cell : row.cells)
            line += (line.empty() ? L"" : L",") + (cell.empty() ? L"\"\"" : audit::csvCell(cell));
        text += line + L"\n";
    }
    if (!audit::readCsv(written("again", platform::toUtf8(text)), again, error) || again.size() != rows.size())
        std::abort();
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i].cells != again[i].cells) std::abort();
}

void readMeaning(unsigned kind, const std::wstring& path) {
    platform::Error error;
    audit::RuleWeights weights;
    audit::AcceptedFindings accepted;
    std::vector<audit::Mapping> mappings;
    bool isRead = false;
    if (kind == 0) {
        isRead = weights.read(path, error);
    } else if (kind == 1) {
        // That of a drawing that need not be there.
        isRead = accepted.read(path.substr(0, path.size() - std::wstring_view(audit::kAcceptedSuffix).size()), error);
        for (const audit::Rule& rule : audit::allRules())
            accepted.reasonOf(rule, L"生活给水, serial 1");
        accepted.idle(weights);
    } else {
        isRead = audit::readMappings(path, mappings, error);
    }
    // A fault is told, and nothing else is.
    if (isRead == !error.message.empty()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::wstring path = written("table.accepted", bytes);
    readBack(path);
    readMeaning(data[0] % 3, path);
    return 0;
}
