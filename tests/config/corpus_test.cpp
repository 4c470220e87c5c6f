// Real tables of other people: which open, what their listing says of their fields, and what their records hold.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <regex>
#include <sstream>

#include "../folder.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "tests/config/support.h"

namespace {

namespace fs = std::filesystem;
using qrs::platform::innerPath;
using qrs::platform::toUtf8;

const fs::path kCorpus = fs::path(QRS_SOURCE_DIR) / ".." / "shared" / "corpus" / "dbf";

class Corpus : public testing::Test {
    void SetUp() override {
        if (!fs::exists(kCorpus / "SOURCES.md")) GTEST_SKIP() << "no corpus";
    }
};

std::wstring trimmed(const std::wstring& text) {
    const std::size_t first = text.find_first_not_of(L" \t\r\n");
    return first == text.npos ? L"" : text.substr(first, text.find_last_not_of(L" \t\r\n") - first + 1);
}

// Compares with what is listed, as "NAME:C16.4 SIZE:N8.2 FLAG:L1/04".
void expectListedFields(const CDBFTableDef& table, const std::string& listed) {
    // Names may hold colons and spaces; what follows the last colon of a field does not.
    static const std::regex field(R"(:([^ :])(\d+)(?:\.(\d+))?(?:/[0-9a-f]{2})?(?= |$))");
    constexpr std::size_t kListingLimit = 690;  // longer ones are cut off
    std::size_t count = 0;
    for (std::sregex_iterator at(listed.begin(), listed.end(), field), end; at != end; ++at, ++count) {
        ASSERT_LT(count, table.Fields().size());
        const CDBFField& got = table.Fields()[count];
        const bool isNumber = std::string("BFINY").find((*at)[1].str()) != std::string::npos;
        const unsigned decimals = (*at)[3].matched ? static_cast<unsigned>(std::stoul((*at)[3])) : 0;
        EXPECT_EQ(got.type, (*at)[1].str()[0]);
        EXPECT_EQ(got.length, std::stoul((*at)[2]) + (isNumber ? 0 : 256 * decimals)) << count;
        EXPECT_EQ(got.decimals, isNumber ? decimals : 0);
    }
    EXPECT_TRUE(table.Fields().size() == count || listed.size() > kListingLimit);
}

// A row of the listing: | file | ver | ldid | records | hdr | rec | size | diff | del | notes | memo | fields |
void expectListedTable(const fs::path& path, const std::vector<std::string>& cells) {
    SCOPED_TRACE(path.string());
    CDBFRecordset table;
    const bool sizeFits = cells.size() > 12 && (cells[8] == "+0" || cells[8] == "+1") && std::stoul(cells[6]) >= 2;
    const bool isDBase7 = cells[2] == "8C" || cells[2] == "04";
    ASSERT_EQ(table.Open(innerPath(path)), sizeFits && !isDBase7);
    if (!sizeFits || isDBase7) return;
    std::uint32_t count = 0;
    std::uint32_t deleted = 0;
    std::wstring text;
    for (table.MoveFirst(); !table.IsEOF(); table.MoveNext()) {
        ++count;
        deleted += table.IsDeleted() ? 1 : 0;
        for (const CDBFField& field : table.TableDef().Fields())
            EXPECT_TRUE(table.GetFieldValue(field.name, text));
    }
    EXPECT_EQ(count, std::stoul(cells[4]));
    EXPECT_EQ(deleted, std::stoul(cells[9]));
    // The listing knows types that are letters only, and reads on after the slots where the fields have no end mark.
    const bool isListable = cells[12].find('\\') == std::string::npos && cells[10].find("ator 2") == std::string::npos;
    if (isListable) expectListedFields(table.TableDef(), cells[12]);
}

TEST_F(Corpus, TablesOpenOrAreRefusedAsTheirSizesTell) {
    static const std::regex between(R"( *\| *)");
    fs::path folder;
    std::size_t tables = 0;
    std::istringstream lines(fileBytes(kCorpus / "SOURCES.md"));
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("## ", 0) == 0) {
            folder = kCorpus / std::regex_replace(line.substr(3, line.find(' ', 3) - 3), std::regex("/"), "__");
        }
        const std::sregex_token_iterator cell(line.begin(), line.end(), between, -1);
        const std::vector<std::string> cells(cell, {});
        if (cells.size() < 9 || !fs::exists(folder / cells[1])) continue;
        expectListedTable(folder / cells[1], cells);
        ++tables;
    }
    EXPECT_GT(tables, 70u);
}

// Rows of a CSV file whose quoted cells may hold line ends.
std::vector<std::vector<std::wstring>> readCsv(const std::string& content) {
    std::vector<std::vector<std::wstring>> rows(1);
    std::string cell;
    bool quoted = false;
    for (std::size_t i = content.rfind("\xEF\xBB\xBF", 0) == 0 ? 3 : 0; i < content.size(); ++i) {
        const char byte = content[i];
        if (byte == '"' && quoted && content[i + 1] == '"') {
            cell += content[++i];
        } else if (byte == '"') {
            quoted = !quoted;
        } else if (quoted || (byte != ',' && byte != '\n')) {
            cell += byte;
        } else {
            rows.back().push_back(trimmed(qrs::platform::fromUtf8(cell)));
            cell.clear();
            if (byte == '\n') rows.emplace_back();
        }
    }
    rows.back().push_back(trimmed(qrs::platform::fromUtf8(cell)));
    if (rows.back().size() < 2) rows.pop_back();
    return rows;
}

// Compares what can be compared: other readers write dates and flags in their own way, and know other code pages.
bool cellAgrees(CDBFRecordset& table, const CDBFField& field, const std::wstring& expected) {
    const std::wstring text = trimmed(textOf(table, field.name));
    const auto isForeign = [](const std::wstring& some) {
        return std::any_of(some.begin(), some.end(), [](wchar_t unit) { return unit >= 0x80; });
    };
    if (std::string("CM").find(field.type) != std::string::npos) {
        return text == expected || isForeign(text) || isForeign(expected);
    }
    if (std::string("NFIBY").find(field.type) != std::string::npos) {
        const double number = expected.empty() ? 0 : std::wcstod(expected.c_str(), nullptr);
        return std::abs(doubleOf(table, field.name) - number) <= 1e-9 * std::abs(number);
    }
    return field.type != 'D' || expected.size() != 10 ||
           text == expected.substr(6) + expected.substr(3, 2) + expected.substr(0, 2);
}

void expectRows(CDBFRecordset& table, const std::vector<std::vector<std::wstring>>& rows) {
    ASSERT_EQ(rows.size() - 1, table.TableDef().RecordCount());
    std::size_t row = 1;
    for (table.MoveFirst(); !table.IsEOF(); table.MoveNext(), ++row) {
        int column = 0;
        for (const CDBFField& field : table.TableDef().Fields()) {
            const std::wstring& expected = rows[row].at(static_cast<std::size_t>(column++));
            if (table.TableDef().FindField(field.name) != column - 1) continue;  // the second of equal names
            EXPECT_TRUE(cellAgrees(table, field, expected))
                << row << " " << toUtf8(field.name) << ": " << toUtf8(textOf(table, field.name));
        }
    }
}

TEST_F(Corpus, RecordsHoldWhatAnotherReaderWroteBesideThem) {
    int compared = 0;
    for (const auto& entry : fs::recursive_directory_iterator(kCorpus)) {
        if (entry.path().extension() != ".csv") continue;
        CDBFRecordset table;
        if (!table.Open(innerPath(fs::path(entry.path()).replace_extension(".dbf")))) continue;
        SCOPED_TRACE(entry.path().string());
        expectRows(table, readCsv(fileBytes(entry.path())));
        ++compared;
    }
    EXPECT_GE(compared, 7);
}

TEST_F(Corpus, MemosAreReadInEveryFormat) {
    const std::wstring groot = L"Groot (/?ru?t/) is a fictional character";
    const struct {
        const char* file;
        const wchar_t* field;
        std::wstring begin;
        std::size_t size;
    } cases[] = {
        {"dBaseIII.dbf", L"BIO", groot, 1478},
        {"dBaseIV.dbf", L"BIO", groot, 1480},
        {"Foxpro2.dbf", L"BIO", groot, 1480},
        {"derived_7b.dbf", L"MEMO", L"First memo\r\n", 12},
        {"derived_cb.dbf", L"MEMO", L"First memo\r\n", 12},
        {"derived_e5_gbk.dbf", L"NOTE", L"给水管 DN100", 9},
        {"dbase_83_missing_memo.dbf", L"DESC", L"", 0},
        {"FOXPRO-DB-TEST.DBC", L"PROPERTY", L"\x0B", 1},
    };
    std::map<std::string, fs::path> paths;
    for (const auto& entry : fs::recursive_directory_iterator(kCorpus))
        paths[entry.path().filename().string()] = entry;
    for (const auto& one : cases) {
        CDBFRecordset table;
        ASSERT_TRUE(table.Open(innerPath(paths[one.file]))) << one.file;
        table.MoveFirst();
        const std::wstring memo = textOf(table, one.field);
        EXPECT_EQ(memo.substr(0, one.begin.size()), one.begin) << one.file;
        EXPECT_EQ(memo.size(), one.size) << one.file;
    }
}

}  // namespace
