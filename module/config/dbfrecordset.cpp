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
    resolved_.clear();
    next_ = 0;
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

CDBFRecordset::ResolvedField CDBFRecordset::Resolve(std::wstring_view name) const {
    ResolvedField resolved;
    resolved.name = name;
    const int number = table_.FindField(name);
    if (number < 0) return resolved;
    const CDBFField& field = table_.Fields()[static_cast<std::size_t>(number)];
    const std::uint64_t length = table_.RecordLength();
    const std::uint64_t begin = std::min(field.offset, length);
    resolved.isKnown = true;
    resolved.type = field.type;
    resolved.begin = static_cast<std::size_t>(begin);
    resolved.size = static_cast<std::size_t>(std::min<std::uint64_t>(field.length, length - begin));
    return resolved;
}

// Callers ask the same names for every record, in the same order: the name after the last one asked is tried first.
const CDBFRecordset::ResolvedField& CDBFRecordset::Resolved(std::wstring_view name) {
    for (std::size_t tried = 0; tried < resolved_.size(); ++tried) {
        if (next_ >= resolved_.size()) next_ = 0;
        const ResolvedField& resolved = resolved_[next_++];
        if (resolved.name == name) return resolved;
    }
    if (resolved_.size() == kMostNames) resolved_.erase(resolved_.begin());
    resolved_.push_back(Resolve(name));
    next_ = resolved_.size();
    return resolved_.back();
}

bool CDBFRecordset::ReadFieldText(std::wstring_view name, std::string_view& text) {
    text = {};
    if (IsEOF()) return false;
    const ResolvedField& field = Resolved(name);
    if (!field.isKnown) return false;
    const std::string_view bytes(record_ + field.begin, field.size);
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
    // Nearly all text is ASCII, which every ANSI code page has in common.
    value.resize(text.size());
    std::size_t size = 0;
    while (size < text.size() && static_cast<unsigned char>(text[size]) - 1u < 0x7F) {
        value[size] = static_cast<wchar_t>(text[size]);
        ++size;
    }
    if (size < text.size() && text[size] != '\0') {
        value = qrs::platform::decode(qrs::platform::ansiCodePage(), text.substr(0, text.find('\0')));
    } else {
        value.resize(size);
    }
    return found;
}
