// The cursor over the records of a dBASE or FoxPro table, and the getters for their fields.
//
//     CDBFRecordset table;
//     if (!table.Open(path)) return;
//     for (table.MoveFirst(); !table.IsEOF(); table.MoveNext()) {
//         double dn = 0;
//         table.GetFieldValue(L"DN", dn);
//     }
//
// A table of any length is scanned in constant memory: records are read a block at a time. Deleted records are met like
// the others. No function throws; the destructor closes the table and its memo file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "config/dbftable.h"
#include "config/dbfvalue.h"

class CDBFRecordset {
  public:
    // Opens the table at a path (inner form), closing the one open before. The cursor stands on no record yet.
    // False when the file cannot be opened or is no table.
    bool Open(std::wstring_view path, CDBFOpenMode mode = CDBFOpenMode::read);
    // The same for a table and a memo file that come from elsewhere than a path.
    bool Open(std::unique_ptr<qrs::platform::InputFile> table, const CDBFMemoOpener& openMemo);
    void Close();

    // Step to the first or the next record. False when there is none; IsEOF is then true.
    bool MoveFirst();
    bool MoveNext();
    // True when the cursor stands on no record.
    bool IsEOF() const { return record_ == nullptr; }
    // True when the record under the cursor bears the deletion mark.
    bool IsDeleted() const { return record_ != nullptr && *record_ == '*'; }

    // The field of the record under the cursor. Names match without regard to case, the first of equal names counts.
    // False, with 0 or an empty text, when there is no such field or no record under the cursor.
    // Integer: as atoi reads the field's text, so a blank field gives 0; clamped to 32 bits.
    bool GetFieldValue(std::wstring_view name, std::int32_t& value);
    // Number: as atof reads the field's text.
    bool GetFieldValue(std::wstring_view name, double& value);
    // Text: up to a NUL, decoded from the ANSI code page, with the padding that the table stores. A memo that is
    // missing or damaged reads empty.
    bool GetFieldValue(std::wstring_view name, std::wstring& value);

    // The number of the error that ended the last Open or step: 0 for none (Open may also refuse a file that is no
    // table), CDBFException::kShortRead when the file ended too early.
    std::uint32_t ErrorNumber() const { return errorNumber_; }

    // Of the table that is open: longer memos, in bytes, count as damaged. Records may share a memo, so that a small
    // file can hold long texts as often as it has records.
    void SetLongestMemo(std::uint64_t length) {
        if (CMemoFile* const memo = table_.Memo()) memo->SetLongest(length);
    }

    const CDBFTableDef& TableDef() const { return table_; }

  private:
    // Where and how a field is read, found once per name.
    struct ResolvedField {
        std::wstring name;  // as asked
        bool isKnown = false;
        char type = 0;
        std::size_t begin = 0;  // within the record
        std::size_t size = 0;   // the part of the field that lies within the record
    };

    template <typename OpenTable>
    bool OpenBy(OpenTable open);
    bool MoveTo(std::uint32_t number);
    ResolvedField Resolve(std::wstring_view name) const;
    const ResolvedField& Resolved(std::wstring_view name);
    bool ReadFieldText(std::wstring_view name, std::string_view& text);

    CDBFTableDef table_;
    std::vector<char> block_;       // whole records, read at once
    std::uint32_t blockFirst_ = 0;  // number of the block's first record
    std::uint32_t blockCount_ = 0;  // records in the block
    std::uint32_t current_ = 0;     // number of the record under the cursor
    const char* record_ = nullptr;  // the record under the cursor, in the block
    std::vector<ResolvedField> resolved_;
    std::size_t next_ = 0;  // where in resolved_ the next name is looked for first
    std::string memoText_;
    NarrowBuffer buffer_;
    std::uint32_t errorNumber_ = 0;
};
