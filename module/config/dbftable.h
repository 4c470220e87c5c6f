// A dBASE or FoxPro table file: its header, its fields and its memo file. CDBFRecordset reads the records.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "config/dbfmemo.h"
#include "host/platform/inputfile.h"

// How a table is opened. Tables are only read here: a mode that writes is refused.
enum class CDBFOpenMode { read, readWrite };

struct CDBFField {
    std::wstring name;    // as stored, decoded from the ANSI code page
    char type = 0;        // the type letter
    unsigned length = 0;  // bytes
    unsigned decimals = 0;
    std::uint64_t offset = 0;  // bytes from the start of the record, whose first byte is the deletion mark
};

// Opens the memo file of a table by its extension (".FPT"); null when there is none.
using CDBFMemoOpener = std::function<std::unique_ptr<qrs::platform::InputFile>(std::wstring_view extension)>;

class CDBFTableDef {
  public:
    // Opens the table at a path (inner form), and its memo file beside it. False when the file cannot be opened or is
    // no table. A table whose memo file is missing or damaged opens without it. Throws CDBFException(kShortRead) when
    // the file ends within its field descriptors.
    bool Open(std::wstring_view path, CDBFOpenMode mode);
    // The same for files that come from elsewhere than a path. isCatalogue: the table is the catalogue of a Visual
    // FoxPro database (.DBC), whose memo file has the extension ".DCT".
    bool Open(std::unique_ptr<qrs::platform::InputFile> table, const CDBFMemoOpener& openMemo,
              bool isCatalogue = false);
    void Close();

    std::uint32_t RecordCount() const { return recordCount_; }
    // Bytes, the deletion mark included; 2 at least while a table is open.
    std::uint32_t RecordLength() const { return recordLength_; }
    const std::vector<CDBFField>& Fields() const { return fields_; }

    // Index of the first field of that name (without regard to case); -1 when there is none.
    int FindField(std::wstring_view name) const;

    // Null when the table has none.
    CMemoFile* Memo() const { return memo_.get(); }

    // Reads whole records into target; false when the file ends before the last of them.
    bool ReadRecords(std::uint32_t first, std::uint32_t count, char* target);

  private:
    bool ReadHeader(const CDBFMemoOpener& openMemo, bool isCatalogue);
    void ReadFields(std::uint32_t slots);
    void ReadVisualFoxProFields(std::uint32_t count);
    void AddField(const char* descriptor);

    std::unique_ptr<qrs::platform::InputFile> file_;
    std::unique_ptr<CMemoFile> memo_;
    std::vector<CDBFField> fields_;
    std::uint32_t recordCount_ = 0;
    std::uint32_t recordLength_ = 0;
    std::uint32_t headerLength_ = 0;
};
