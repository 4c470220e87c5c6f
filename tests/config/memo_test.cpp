// Memo files made by hand: which one a table opens, and pointers that lead astray.
#include <gtest/gtest.h>

#include "tests/config/support.h"

namespace {

using namespace std::string_literals;
using Texts = std::vector<std::wstring>;

// The memos of a table's records, one pointer each.
Texts memosOf(int version, const std::vector<std::string>& pointers, const std::string& memo) {
    std::vector<std::string> records;
    for (const std::string& pointer : pointers)
        records.push_back(" " + pointer);
    const int length = static_cast<int>(pointers.front().size());
    CDBFRecordset recordset;
    EXPECT_TRUE(openBytes(recordset, tableBytes(version, {{"NOTE", 'M', length}}, records), memo));
    Texts memos;
    for (recordset.MoveFirst(); !recordset.IsEOF(); recordset.MoveNext())
        memos.push_back(textOf(recordset, L"NOTE"));
    return memos;
}

std::string padded(std::string bytes, std::size_t size) {
    bytes.resize(size, '\0');
    return bytes;
}

TEST(Memo, FileIsChosenByTheVersionByte) {
    const struct {
        int version;
        char flags;
        bool isCatalogue;
        std::wstring extension;  // empty: no memo file
    } cases[] = {{0x30, 2, false, L".FPT"}, {0x30, 7, true, L".DCT"},  {0x30, 1, false, L""},
                 {0x7B, 0, false, L".DBT"}, {0x8B, 0, false, L".DBT"}, {0xCB, 0, false, L".DBT"},
                 {0x83, 0, false, L".DBT"}, {0xE5, 0, false, L".SMT"}, {0xF5, 0, true, L".FPT"},
                 {0x03, 2, false, L""},     {0x31, 2, false, L""},     {0x43, 2, false, L""}};
    for (const auto& one : cases) {
        std::string bytes = tableBytes(one.version, {{"NOTE", 'M', 4}}, {" \x01\0\0\0"s});
        bytes[28] = one.flags;
        std::wstring asked;
        const auto open = [&](std::wstring_view extension) {
            asked = extension;
            return nullptr;
        };
        CDBFTableDef table;
        EXPECT_TRUE(table.Open(std::make_unique<MemoryFile>(bytes), open, one.isCatalogue));
        EXPECT_EQ(asked, one.extension) << one.version;
    }
}

TEST(Memo, DBase3EndsAtTheMarkOrWithTheFile) {
    const std::string memo = padded("", 512) + padded("first\x1A\x1Arest", 512) + std::string(9000, 'x');
    EXPECT_EQ(memosOf(0x83,
                      {"         1", "2         ", "         3", "          ", "         0", "        20", "        -1",
                       "abcdefghij", "1        x", "9999999999", "1\0\0\0\0\0\0\0\0\0"s},
                      memo),
              (Texts{L"first", std::wstring(9000, L'x'), std::wstring(9000 - 512, L'x'), L"", L"", L"", L"", L"", L"",
                     L"", L"first"}));
    EXPECT_EQ(memosOf(0x83, {"         1"}, "cut"), Texts{L""});
}

TEST(Memo, DBase4LengthsAreBelievedOnlyWithinTheFile) {
    const auto head = [](std::uint64_t length) { return "\xFF\xFF\x08\0"s + bytesOf(length, 4); };
    std::string memo = padded(std::string(20, '\0') + bytesOf(64, 2), 64);
    memo += padded(head(8 + 5) + "first, and more", 64);      // 1
    memo += padded(bytesOf(2, 4) + bytesOf(1, 4) + "x", 64);  // 2: freed, names itself as the next
    memo += padded(head(7) + "x", 64);                        // 3: shorter than its own head
    memo += padded(head(0xFFFFFFFF) + "x", 64);               // 4: longer than the file
    memo += head(8 + 3) + "end";                              // 5
    for (const int version : {0x7B, 0x8B, 0xCB}) {
        EXPECT_EQ(memosOf(version, {"    1", "    2", "    3", "    4", "    5", "    6"}, memo),
                  (Texts{L"first", L"", L"", L"", L"end", L""}));
        EXPECT_EQ(memosOf(version, {"    1"}, "cut"), Texts{L""});
        // Blocks of no size are of the usual one; a head that the file cuts off is none.
        EXPECT_EQ(memosOf(version, {"    1", "    2"},
                          padded(padded("", 512) + head(8 + 3) + "512", 1024) + head(9).substr(4)),
                  (Texts{L"512", L""}));
    }
}

TEST(Memo, FoxProPointersAreBinaryOrDigits) {
    std::string memo = padded(std::string(6, '\0') + bytesOf(64, 2, true), 64);
    memo = padded(memo + bytesOf(1, 4, true) + bytesOf(2, 4, true) + "no", 512);             // 1: in the header
    memo += padded(bytesOf(1, 4, true) + bytesOf(4, 4, true) + "\xB9\xDC\xBE\xB6more", 64);  // 8
    memo += padded(bytesOf(1, 4, true) + bytesOf(0xFFFFFFFF, 4, true) + "x", 64);            // 9
    memo += bytesOf(1, 4, true) + bytesOf(5, 4, true) + "shor";                              // 10: cut
    std::vector<std::string> pointers;
    for (const unsigned block : {8u, 9u, 10u, 11u, 0xFFFFFFFFu, 0u, 1u}) {
        pointers.push_back(bytesOf(block, 4));
    }
    EXPECT_EQ(memosOf(0x30, pointers, memo), (Texts{L"管径", L"", L"", L"", L"", L"", L""}));
    EXPECT_EQ(memosOf(0xF5, {"         8", "         9"}, memo), (Texts{L"管径", L""}));
    EXPECT_EQ(memosOf(0x30, {bytesOf(8, 4)}, "cut"), Texts{L""});
    memo.replace(6, 2, 2, '\0');  // blocks of no size
    EXPECT_EQ(memosOf(0x30, {bytesOf(8, 4), bytesOf(512, 4)}, memo), (Texts{L"", L""}));
}

TEST(Memo, SmtKeepsKindLengthAndBlockInTheRecord) {
    const std::string memo = padded(bytesOf(18, 4) + bytesOf(32, 4), 512) + "water and fire";
    const auto pointer = [](std::uint64_t kind, std::uint64_t length, std::uint64_t block) {
        return bytesOf(kind, 2) + bytesOf(length, 4) + bytesOf(block, 4);
    };
    EXPECT_EQ(memosOf(0xE5,
                      {pointer(1, 5, 16), pointer(2, 5, 16), pointer(1, 15, 16), pointer(1, 5, 17),
                       pointer(1, 0xFFFFFFFF, 0xFFFFFFFF), "          "},
                      memo),
              (Texts{L"water", L"", L"", L"", L"", L""}));
    EXPECT_EQ(memosOf(0xE5, {pointer(1, 5, 16)}, "cut"), Texts{L""});
}

}  // namespace
