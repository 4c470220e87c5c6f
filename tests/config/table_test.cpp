// What is a table and what is none; where its fields lie; what the getters make of them.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "config/dbfexception.h"
#include "host/platform/files.h"
#include "tests/config/support.h"
#include "tests/folder.h"

namespace {

using namespace std::string_literals;

const std::vector<HandField> kNameAndSize = {{"NAME", 'C', 6}, {"SIZE", 'N', 4}};

TEST(Table, FileHasTheSizeThatItsHeaderTells) {
    const std::string table = tableBytes(0x03, kNameAndSize, {" alpha   12", " beta    34"});
    CDBFRecordset recordset;
    EXPECT_TRUE(openBytes(recordset, table));
    EXPECT_TRUE(openBytes(recordset, table + '\x1A'));
    EXPECT_FALSE(openBytes(recordset, table + "\x1A\x1A"));
    EXPECT_FALSE(openBytes(recordset, table.substr(0, table.size() - 1)));
    EXPECT_FALSE(recordset.MoveFirst());  // the refused table is not left half open
    for (std::size_t length = 0; length < 32; ++length)
        EXPECT_FALSE(openBytes(recordset, table.substr(0, length)));
    EXPECT_FALSE(openBytes(recordset, tableBytes(0x03, {}, {" ", " "})));  // records of one byte
    const auto changed = [&](std::size_t at, const std::string& bytes) {
        return std::string(table).replace(at, bytes.size(), bytes);
    };
    EXPECT_FALSE(openBytes(recordset, changed(4, "\x02\0\0\x80"s)));                    // a negative count
    EXPECT_FALSE(openBytes(recordset, changed(4, "\xFF\xFF\xFF\x7F\x79\0\xFF\xFF"s)));  // wraps around in 32 bits
    EXPECT_FALSE(openBytes(recordset, changed(0, "\x8C")));                             // dBASE 7
    EXPECT_FALSE(openBytes(recordset, tableBytes(0x30, {}, {" alpha   12"})));          // Visual FoxPro without a field
    EXPECT_FALSE(recordset.Open(L"\\no such folder\\none.dbf"));
    EXPECT_EQ(recordset.ErrorNumber(), 0u);
}

TEST(Table, LongTextsHaveTwoLengthBytesAndNumbersOne) {
    CDBFRecordset recordset;
    ASSERT_TRUE(openBytes(recordset,
                          tableBytes(0x03, {{"LONG", 'C', 0x2C, 0x01}, {"NUMBER", 'N', 0x2C, 0x01}, {"LAST", 'C', 1}},
                                     {" " + std::string(299, 'x') + "y" + std::string(41, ' ') + "2.5z"})));
    ASSERT_TRUE(recordset.MoveFirst());
    EXPECT_EQ(textOf(recordset, L"LONG"), std::wstring(299, L'x') + L"y");
    EXPECT_EQ(doubleOf(recordset, L"NUMBER"), 2.5);
    EXPECT_EQ(recordset.TableDef().Fields()[1].length, 44u);
    EXPECT_EQ(recordset.TableDef().Fields()[1].decimals, 1u);
    EXPECT_EQ(textOf(recordset, L"LAST"), L"z");
    for (const char type : "BFINYCDLMTGn"s) {
        ASSERT_TRUE(openBytes(recordset, tableBytes(0x03, {{"A", type, 4, 1}}, {"     "})));
        EXPECT_EQ(recordset.TableDef().Fields()[0].length, "BFINY"s.find(type) != std::string::npos ? 4u : 260u);
    }
}

TEST(Table, FileThatEndsEarlyRaisesTheShortReadAndTheRecordsetRefuses) {
    EXPECT_STREQ(CDBFException(CDBFException::kShortRead).what(), "Error number 0x00000BC1");
    const CDBFMemoOpener noMemo = [](std::wstring_view) { return nullptr; };
    for (const int version : {0x03, 0x30}) {
        const std::string bytes = tableBytes(version, kNameAndSize, {" alpha   12"});
        const auto cut = [&](std::size_t size) {
            return std::make_unique<MemoryFile>(bytes.substr(0, size), bytes.size());
        };
        CDBFTableDef table;
        EXPECT_THROW(table.Open(cut(70), noMemo), CDBFException);
        CDBFRecordset recordset;
        EXPECT_FALSE(recordset.Open(cut(70), noMemo));
        EXPECT_EQ(recordset.ErrorNumber(), 3009u);
        // The same among the records: the scan ends, and the error can be asked for.
        ASSERT_TRUE(recordset.Open(cut(bytes.size() - 1), noMemo));
        EXPECT_FALSE(recordset.MoveFirst());
        EXPECT_TRUE(recordset.IsEOF());
        EXPECT_EQ(recordset.ErrorNumber(), 3009u);
    }
}

TEST(Table, IsOpenedForReadingWhateverItsNameEndsIn) {
    const Folder folder;
    std::filesystem::create_directory(folder / "a.b");
    for (const char* name : {"pipe", "pipe.dbf", "pipe.dbc", "a.b/pipe"}) {
        folder.write(name, tableBytes(0x03, {{"NAME", 'C', 1}}, {" x"}));
        const std::wstring path = qrs::platform::innerPath(folder / name);
        CDBFRecordset recordset;
        EXPECT_FALSE(recordset.Open(path, CDBFOpenMode::readWrite)) << name;
        ASSERT_TRUE(recordset.Open(path)) << name;
        recordset.MoveFirst();
        EXPECT_EQ(textOf(recordset, L"NAME"), L"x") << name;
    }
}

TEST(Getters, NamesMatchWithoutCaseAndTheFirstOfEqualNamesCounts) {
    CDBFRecordset recordset;
    ASSERT_TRUE(openBytes(
        recordset,
        tableBytes(0x03, {{"ELEVENCHARS", 'C', 2}, {"Dn", 'N', 2}, {"DN", 'N', 2}, {"\xB9\xDC\xBE\xB6", 'N', 2}},
                   {" ab 1 2 3", "*cd 4 5 6"})));
    std::wstring text = L"old";
    EXPECT_FALSE(recordset.GetFieldValue(L"DN", text));  // no record yet
    EXPECT_EQ(text, L"");
    ASSERT_TRUE(recordset.MoveFirst());
    EXPECT_EQ(textOf(recordset, L"elevenchars"), L"ab");
    EXPECT_EQ(integerOf(recordset, L"dN"), 1);
    EXPECT_EQ(integerOf(recordset, L"管径"), 3);
    EXPECT_FALSE(recordset.IsDeleted());
    ASSERT_TRUE(recordset.MoveNext());
    EXPECT_TRUE(recordset.IsDeleted());  // and read like the others
    EXPECT_EQ(integerOf(recordset, L"DN"), 4);

    for (const wchar_t* unknown : {L"ELEVENCHAR", L"D", L"", L"DNX"}) {
        text = L"old";
        std::int32_t integer = 7;
        double number = 7;
        EXPECT_FALSE(recordset.GetFieldValue(unknown, text));
        EXPECT_FALSE(recordset.GetFieldValue(unknown, integer));
        EXPECT_FALSE(recordset.GetFieldValue(unknown, number));
        EXPECT_TRUE(text.empty() && integer == 0 && number == 0) << unknown;
    }
    for (int i = 0; i < 2000; ++i)
        EXPECT_EQ(integerOf(recordset, std::to_wstring(i)), 0);  // more than are remembered
    EXPECT_EQ(integerOf(recordset, L"DN"), 4);
    EXPECT_FALSE(recordset.MoveNext());
    EXPECT_FALSE(recordset.MoveNext());
    EXPECT_FALSE(recordset.GetFieldValue(L"DN", text));
    ASSERT_TRUE(recordset.MoveFirst());
}

struct Reading {
    char type;
    std::string stored;
    std::wstring text;
    std::int32_t integer;
    double number;
};

void expectReadings(int version, const std::vector<Reading>& readings) {
    for (const Reading& one : readings) {
        SCOPED_TRACE(one.type + (": " + one.stored));
        CDBFRecordset recordset;
        const std::string record = " " + one.stored;
        ASSERT_TRUE(openBytes(recordset,
                              tableBytes(version, {{"V", one.type, static_cast<int>(one.stored.size())}}, {record})));
        ASSERT_TRUE(recordset.MoveFirst());
        EXPECT_EQ(textOf(recordset, L"V"), one.text);
        EXPECT_EQ(integerOf(recordset, L"V"), one.integer);
        EXPECT_EQ(doubleOf(recordset, L"V"), one.number);
    }
}

TEST(Getters, ReadTextAsTheLanguagesLibraryDoes) {
    expectReadings(0x03, {
                             {'N', "      ", L"      ", 0, 0},  // padding stays
                             {'N', "  -12.75 ", L"  -12.75 ", -12, -12.75},
                             {'F', "\t +7e2x", L"\t +7e2x", 7, 700},
                             {'N', "2147483648", L"2147483648", INT32_MAX, 2147483648.0},
                             {'N', "-99999999999", L"-99999999999", INT32_MIN, -99999999999.0},
                             {'C', "12\0 345"s, L"12", 12, 12},
                             {'C', "--5", L"--5", 0, 0},
                             {'C', "0x1F", L"0x1F", 0, 31},
                             {'C', "-1e400", L"-1e400", -1, -HUGE_VAL},
                             {'C', "1e-400", L"1e-400", 1, 0},
                             {'C', "0.001e-9999", L"0.001e-9999", 0, 0},
                             {'C', "0x1p9999", L"0x1p9999", 0, HUGE_VAL},
                             {'C', "0x.1p-9999", L"0x.1p-9999", 0, 0},
                             {'C', std::string(400, '9').substr(0, 250) + "e99", std::wstring(250, L'9') + L"e99",
                              INT32_MAX, HUGE_VAL},
                             {'C', "1,5", L"1,5", 1, 1},
                             {'D', "20040229", L"20040229", 20040229, 20040229},
                             {'L', "T", L"T", 0, 0},
                             {'C', "\xB6\xC6\xD0\xBF\xB8\xD6\xB9\xDC ", L"镀锌钢管 ", 0, 0},
                             {'C', "DN25\xB6", L"DN25\xFFFD", 0, 0},  // half a character
                         });
}

TEST(Getters, BinaryFieldsReadAsTheirText) {
    const auto real = [](double value) {
        std::uint64_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        return bytesOf(bits, 8);
    };
    const auto time = [](std::uint32_t day, std::uint32_t ms) { return bytesOf(day, 4) + bytesOf(ms, 4); };
    expectReadings(
        0x30, {
                  {'I', bytesOf(0x80000000u, 4), L"-2147483648", INT32_MIN, -2147483648.0},
                  {'I', "\x01\x02\x03", L"", 0, 0},  // not the size of an integer
                  {'B', real(-33.33), L"-33.33", -33, -33.33},
                  {'B', real(3e9), L"3000000000", INT32_MAX, 3e9},
                  {'B', real(5e-324), L"0." + std::wstring(323, L'0') + L"5", 0, 5e-324},
                  {'Y', bytesOf(static_cast<std::uint64_t>(-200000), 8), L"-20.0000", -20, -20},
                  {'Y', bytesOf(std::uint64_t{1} << 63, 8), L"-922337203685477.5808", INT32_MIN, -922337203685477.5808},
                  {'T', time(2451180, 45296999), L"19990101 12:34:57", 19990101, 19990101},
                  {'T', time(2451604, 0), L"20000229 00:00:00", 20000229, 20000229},
                  {'T', time(5373484, 86399999), L"99991231 23:59:59", 99991231, 99991231},
                  {'T', time(1721426, 0), L"00010101 00:00:00", 10101, 10101},
                  {'T', time(0, 0), L"", 0, 0},
                  {'T', time(0x7FFFFFFF, 0x80000000), L"", 0, 0},
              });
}

TEST(Getters, FieldsBeyondTheRecordReadOnlyWhatLiesWithinIt) {
    CDBFRecordset recordset;
    ASSERT_TRUE(openBytes(
        recordset,
        tableBytes(0x03, {{"NONE", 'C', 0}, {"A", 'C', 3}, {"CUT", 'C', 0xFF, 0xFF}, {"I", 'I', 4}}, {" abcdef"})));
    ASSERT_TRUE(recordset.MoveFirst());
    EXPECT_EQ(textOf(recordset, L"NONE"), L"");
    EXPECT_EQ(textOf(recordset, L"A"), L"abc");
    EXPECT_EQ(textOf(recordset, L"CUT"), L"def");
    EXPECT_EQ(textOf(recordset, L"I"), L"");
}

TEST(Recordset, ScansAMillionRecordsReadingEachOnceThroughASmallWindow) {
    constexpr std::int32_t kRecords = 1000000;
    constexpr std::size_t kLength = 11;
    std::string bytes = tableBytes(0x03, {{"N", 'N', 10}}, {std::string(kLength, ' ')});
    bytes.replace(4, 4, bytesOf(kRecords, 4));
    bytes.resize(bytes.size() + kLength * (kRecords - 1), ' ');
    for (std::size_t i = 0; i < kRecords; ++i) {
        const std::string number = std::to_string(i);
        bytes.replace(bytes.size() - kLength * (kRecords - i - 1) - number.size(), number.size(), number);
    }
    CDBFRecordset recordset;
    ASSERT_TRUE(openBytes(recordset, std::move(bytes)));
    MemoryFile::bytesRead = MemoryFile::largestRead = 0;
    std::int32_t expected = 0;
    bool right = true;
    for (recordset.MoveFirst(); !recordset.IsEOF(); recordset.MoveNext()) {
        right = right && integerOf(recordset, L"n") == expected++;
    }
    EXPECT_TRUE(right);
    EXPECT_EQ(expected, kRecords);
    EXPECT_EQ(MemoryFile::bytesRead, kRecords * kLength);
    EXPECT_LE(MemoryFile::largestRead, 256u * 1024);
}

}  // namespace
