// Memo files: where the tables keep texts that have no fixed length.
//
// Each class reads one format. A memo field of a record holds a pointer into the file. A pointer that leads nowhere (a
// block outside the file, a length beyond its end, a block that is no memo) reads as an empty text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/platform/inputfile.h"

// dBASE III (.DBT): blocks of 512 bytes; a memo ends at 0x1A or at the end of the file.
class CMemoFile {
  public:
    CMemoFile() = default;
    virtual ~CMemoFile() = default;
    CMemoFile(const CMemoFile&) = delete;
    CMemoFile& operator=(const CMemoFile&) = delete;

    // False when the file's header is damaged.
    bool Open(std::unique_ptr<qrs::platform::InputFile> file);

    // The memo that a field's bytes point to, up to its first NUL. Text is replaced; empty when there is none.
    void Read(std::string_view field, std::string& text);

    // Longer memos, in bytes, count as damaged.
    void SetLongest(std::uint64_t length) { longest_ = length; }

  protected:
    virtual bool ReadHeader();
    virtual bool ReadMemo(std::string_view field, std::string& text);

    // A memo of known length in bytes at an offset in the file. False when the file ends before it.
    bool ReadStretch(std::uint64_t offset, std::uint64_t length, std::string& text);
    // Exactly count bytes; false when the file ends before them.
    bool ReadExactly(std::uint64_t offset, char* target, std::size_t count);
    // Offset in the file of the block whose number the field holds: 0 when it holds none, or one outside the file.
    std::uint64_t BlockOffset(std::string_view field) const;

    std::uint64_t blockSize_ = 0;  // bytes

  private:
    // Nobody's remark is longer; a file that claims so is damaged and shall not eat the memory.
    static constexpr std::uint64_t kLongestMemo = 64u << 20;

    void Append(std::uint64_t offset, std::uint64_t end, char terminator, std::string& text);

    std::unique_ptr<qrs::platform::InputFile> file_;
    std::uint64_t longest_ = kLongestMemo;
};

// dBASE IV (.DBT): the header tells the block size; a memo begins with a mark and its length.
class CDBTMemoFile : public CMemoFile {
  protected:
    bool ReadHeader() override;
    bool ReadMemo(std::string_view field, std::string& text) override;
};

// FoxPro (.FPT, .DCT): big-endian; a memo begins with its kind and its length.
class CFPTMemoFile : public CMemoFile {
  protected:
    bool ReadHeader() override;
    bool ReadMemo(std::string_view field, std::string& text) override;
};

// SMT: kind, length and block number of a memo stand in the record itself.
class CSMTMemoFile : public CMemoFile {
  protected:
    bool ReadHeader() override;
    bool ReadMemo(std::string_view field, std::string& text) override;
};
