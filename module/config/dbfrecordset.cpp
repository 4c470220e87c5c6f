// The cursor over the records of a table, and the getters for their fields.
#include "config/dbfrecordset.h"

#include <algorithm>

#include "config/dbfexception.h"
#include "host/platform/codepage.h"

namespace {

// Bytes read at once: enough to make the calls to the system cheap, small enough to stay in the processor's cache.
constexpr std::uint32_t kBlockSize = 128 * 1024;

// More names than any caller asks; beyond, the oldest is resolved anew.
constexpr std::size_t kMostNames = 256;

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

}  // namespace

template <typename OpenTable>
bool CDBFRecordset::OpenBy(OpenTable open) {
    Close();
    try {
        return open();
    } catch (const CDBFException& exception) {
        errorNumber_ = exception.ErrorNumber();
        return false;
    }
}

bool CDBFRecordset::Open(std::wstring_view path, CDBFOpenMode mode) {
    return OpenBy([&] { return table_.Open(path, mode); });
}

bool CDBFRecordset::Open(std::unique_ptr<qrs::platform::InputFile> table, const CDBFMemoOpener& openMemo) {
    return OpenBy([&] { return table_.Open(std::move(table), openMemo); });
}

void CDBFRecordset::Close() {
    table_.Close();
    block_.clear();
    blockFirst_ = blockCount_ = current_ = 0;
    record_ = nullptr;
    names_.clear();
    nextName_ = 0;
    errorNumber_ = 0;
}

bool CDBFRecordset::MoveFirst() {
    return MoveTo(0);
}

bool CDBFRecordset::MoveNext() {
    return !IsEOF() && MoveTo(current_ + 1);
}

bool CDBFRecordset::MoveTo(std::uint32_t number) {
    record_ = nullptr;
    if (number >= table_.RecordCount()) return false;
    const std::uint32_t length = table_.RecordLength();
    if (number < blockFirst_ || number - blockFirst_ >= blockCount_) {
        const std::uint32_t count = std::min(std::max(kBlockSize / length, 1u), table_.RecordCount() - number);
        block_.resize(std::size_t{count} * length);
        blockCount_ = 0;
        if (!table_.ReadRecords(number, count, block_.data())) {
            errorNumber_ = CDBFException::kShortRead;
            return false;
        }
        blockFirst_ = number;
        blockCount_ = count;
    }
    current_ = number;
    record_ = block_.data() + std::size_t{number - blockFirst_} * length;
    return true;
}

// Callers ask the same names for every record, in the same order: the name behind the last one asked is tried first.
int CDBFRecordset::ResolveField(std::wstring_view name) {
    for (std::size_t tried = 0; tried < names_.size(); ++tried) {
        if (nextName_ >= names_.size()) nextName_ = 0;
        const ResolvedName& resolved = names_[nextName_++];
        if (resolved.name == name) return resolved.field;
    }
    if (names_.size() == kMostNames) names_.erase(names_.begin());
    names_.push_back({std::wstring(name), table_.FindField(name)});
    nextName_ = names_.size();
    return names_.back().field;
}

bool CDBFRecordset::ReadFieldText(std::wstring_view name, std::string_view& text) {
    text = {};
    if (IsEOF()) return false;
    const int number = ResolveField(name);
    if (number == kNoField) return false;
    const CDBFField& field = table_.Fields()[static_cast<std::size_t>(number)];
    // Of a field that reaches beyond the record only the part within it is there.
    const std::uint64_t begin = std::min<std::uint64_t>(field.offset, table_.RecordLength());
    const std::uint64_t size = std::min<std::uint64_t>(field.length, table_.RecordLength() - begin);
    const std::string_view bytes(record_ + begin, static_cast<std::size_t>(size));
    if (!IsMemoType(field.type)) {
        text = NarrowText(ReadVariant(field.type, bytes), buffer_);
    } else if (table_.Memo() != nullptr) {
        table_.Memo()->Read(bytes, memoText_);
        text = memoText_;
    }
    return true;
}

bool CDBFRecordset::GetFieldValue(std::wstring_view name, std::int32_t& value) {
    std::string_view text;
    const bool found = ReadFieldText(name, text);
    value = IntegerOfText(text);
    return found;
}

bool CDBFRecordset::GetFieldValue(std::wstring_view name, double& value) {
    std::string_view text;
    const bool found = ReadFieldText(name, text);
    value = DoubleOfText(text);
    return found;
}

bool CDBFRecordset::GetFieldValue(std::wstring_view name, std::wstring& value) {
    std::string_view text;
    const bool found = ReadFieldText(name, text);
    if (IsAscii(text)) {
        value.assign(text.begin(), text.end());
    } else {
        value = qrs::platform::decode(qrs::platform::ansiCodePage(), text);
    }
    return found;
}
