// Reads the block that a memo field names, bounded by the file's size and by what a person writes.
#include "config/dbfmemo.h"

#include <algorithm>
#include <array>

#include "config/bytes.h"

namespace {

constexpr std::uint64_t kDefaultBlock = 512;
constexpr char kMemoEnd = 0x1A;

// The block number in a memo field: four bytes little-endian (Visual FoxPro), else decimal digits among spaces.
// 0, which is never a memo's block, when there is none.
std::uint64_t BlockNumber(std::string_view field) {
    if (field.size() == 4) return LittleEndian(field.data(), 4);
    std::size_t i = std::min(field.find_first_not_of(' '), field.size());
    std::uint64_t number = 0;
    for (; i < field.size() && field[i] >= '0' && field[i] <= '9'; ++i) {
        number = number * 10 + static_cast<unsigned>(field[i] - '0');
        if (number > UINT32_MAX) return 0;
    }
    for (; i < field.size(); ++i) {
        if (field[i] != ' ' && field[i] != '\0') return 0;
    }
    return number;
}

}  // namespace

bool CMemoFile::Open(std::unique_ptr<qrs::platform::InputFile> file) {
    file_ = std::move(file);
    return file_ && ReadHeader();
}

void CMemoFile::Read(std::string_view field, std::string& text) {
    text.clear();
    if (!ReadMemo(field, text)) text.clear();
}

bool CMemoFile::ReadHeader() {
    blockSize_ = kDefaultBlock;
    return file_->size() >= blockSize_;
}

bool CMemoFile::ReadMemo(std::string_view field, std::string& text) {
    const std::uint64_t offset = BlockOffset(field);
    if (offset == 0) return false;
    Append(offset, std::min(file_->size(), offset + longest_ + 1), kMemoEnd, text);
    return text.size() <= longest_;
}

bool CMemoFile::ReadStretch(std::uint64_t offset, std::uint64_t length, std::string& text) {
    const std::uint64_t size = file_->size();
    if (offset > size || length > size - offset || length > longest_) return false;
    Append(offset, offset + length, '\0', text);
    return true;
}

bool CMemoFile::ReadExactly(std::uint64_t offset, char* target, std::size_t count) {
    return file_->readAt(offset, target, count) == count;
}

std::uint64_t CMemoFile::BlockOffset(std::string_view field) const {
    const std::uint64_t offset = BlockNumber(field) * blockSize_;
    return offset < file_->size() ? offset : 0;
}

// Appends up to a terminator, a NUL or the end, whichever comes first. Read in pieces, so that a short memo costs
// little however long the file is.
void CMemoFile::Append(std::uint64_t offset, std::uint64_t end, char terminator, std::string& text) {
    const std::array<char, 2> stops = {'\0', terminator};
    std::array<char, 4096> piece;
    while (offset < end) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(piece.size(), end - offset));
        const std::size_t got = file_->readAt(offset, piece.data(), wanted);
        const std::string_view bytes(piece.data(), got);
        const std::size_t last = bytes.find_first_of(std::string_view(stops.data(), stops.size()));
        text += bytes.substr(0, last);
        if (last != bytes.npos || got < wanted) return;
        offset += got;
    }
}

bool CDBTMemoFile::ReadHeader() {
    std::array<char, 22> header;
    if (!ReadExactly(0, header.data(), header.size())) return false;
    blockSize_ = LittleEndian(header.data() + 20, 2);
    if (blockSize_ == 0) blockSize_ = kDefaultBlock;
    return true;
}

bool CDBTMemoFile::ReadMemo(std::string_view field, std::string& text) {
    constexpr std::uint64_t kMemoMark = 0x0008FFFF;  // freed blocks bear the number of the next one instead
    std::array<char, 8> head;
    const std::uint64_t offset = BlockOffset(field);
    if (offset == 0 || !ReadExactly(offset, head.data(), head.size())) return false;
    const std::uint64_t length = LittleEndian(head.data() + 4, 4);  // mark and length included
    if (LittleEndian(head.data(), 4) != kMemoMark || length < head.size()) return false;
    return ReadStretch(offset + head.size(), length - head.size(), text);
}

bool CFPTMemoFile::ReadHeader() {
    std::array<char, 8> header;
    if (!ReadExactly(0, header.data(), header.size())) return false;
    blockSize_ = BigEndian(header.data() + 6, 2);
    return blockSize_ != 0;
}

bool CFPTMemoFile::ReadMemo(std::string_view field, std::string& text) {
    constexpr std::uint64_t kHeaderLength = 512;  // however small the blocks are
    std::array<char, 8> head;                     // kind (picture, text, object) and length
    const std::uint64_t offset = BlockOffset(field);
    if (offset < kHeaderLength || !ReadExactly(offset, head.data(), head.size())) return false;
    return ReadStretch(offset + head.size(), BigEndian(head.data() + 4, 4), text);
}

bool CSMTMemoFile::ReadHeader() {
    std::array<char, 8> header;
    if (!ReadExactly(0, header.data(), header.size())) return false;
    blockSize_ = LittleEndian(header.data() + 4, 4);
    return blockSize_ != 0;
}

bool CSMTMemoFile::ReadMemo(std::string_view field, std::string& text) {
    constexpr std::uint64_t kTextMemo = 1;  // the other kinds are numbers and arrays
    constexpr std::size_t kPointerLength = 10;
    if (field.size() != kPointerLength || LittleEndian(field.data(), 2) != kTextMemo) return false;
    const std::uint64_t offset = BlockOffset(field.substr(6));
    return offset != 0 && ReadStretch(offset, LittleEndian(field.data() + 2, 4), text);
}
