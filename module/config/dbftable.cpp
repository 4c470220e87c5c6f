// A dBASE or FoxPro table file: its header, its fields and its memo file.
#include "config/dbftable.h"

#include <algorithm>
#include <array>

#include "config/bytes.h"
#include "config/dbfexception.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"

using qrs::platform::InputFile;

namespace {

constexpr std::size_t kHeaderSize = 32;
constexpr std::size_t kDescriptorSize = 32;
constexpr std::size_t kNameSize = 11;
constexpr char kDescriptorsEnd = 0x0D;

struct Header {
    std::uint32_t version = 0;
    std::uint32_t recordCount = 0;
    std::uint32_t headerLength = 0;
    std::uint32_t recordLength = 0;
    std::uint32_t flags = 0;  // Visual FoxPro only
};

struct Descriptor {
    std::uint32_t type = 0;
    std::uint32_t length = 0;
    std::uint32_t decimals = 0;
};

template <typename Record>
struct Item {
    std::size_t offset;
    std::size_t size;  // bytes, little-endian
    std::uint32_t Record::*value;
};

constexpr Item<Header> kHeaderItems[] = {
    {0, 1, &Header::version},       {4, 4, &Header::recordCount}, {8, 2, &Header::headerLength},
    {10, 2, &Header::recordLength}, {28, 1, &Header::flags},
};

constexpr Item<Descriptor> kDescriptorItems[] = {
    {11, 1, &Descriptor::type},
    {16, 1, &Descriptor::length},
    {17, 1, &Descriptor::decimals},
};

template <typename Record, std::size_t count>
Record ReadItems(const Item<Record> (&items)[count], const char* bytes) {
    Record record;
    for (const Item<Record>& item : items) {
        record.*item.value = static_cast<std::uint32_t>(LittleEndian(bytes + item.offset, item.size));
    }
    return record;
}

constexpr std::uint32_t kVisualFoxPro = 0x30;
constexpr std::uint32_t kHasMemo = 0x02;  // table flag of Visual FoxPro

// dBASE 7, with or without memo and mark bits: its descriptors are of another size, so nothing of it would read right.
bool IsDBase7(std::uint32_t version) {
    return (version & 0x07) == 0x04;
}

template <typename Memo>
std::unique_ptr<CMemoFile> Make() {
    return std::make_unique<Memo>();
}

// The memo file by the version byte; other versions have none.
constexpr struct {
    std::uint32_t version;
    std::uint32_t flags;  // must all be set
    const wchar_t* extension;
    const wchar_t* catalogueExtension;  // beside the catalogue of a database
    std::unique_ptr<CMemoFile> (*make)();
} kMemoKinds[] = {
    {kVisualFoxPro, kHasMemo, L".FPT", L".DCT", Make<CFPTMemoFile>},
    {0x7B, 0, L".DBT", L".DBT", Make<CDBTMemoFile>},
    {0x8B, 0, L".DBT", L".DBT", Make<CDBTMemoFile>},
    {0xCB, 0, L".DBT", L".DBT", Make<CDBTMemoFile>},
    {0x83, 0, L".DBT", L".DBT", Make<CMemoFile>},
    {0xE5, 0, L".SMT", L".SMT", Make<CSMTMemoFile>},
    {0xF5, 0, L".FPT", L".FPT", Make<CFPTMemoFile>},
};

std::unique_ptr<CMemoFile> OpenMemo(const Header& header, bool isCatalogue, const CDBFMemoOpener& open) {
    for (const auto& kind : kMemoKinds) {
        if (kind.version != header.version || (header.flags & kind.flags) != kind.flags) continue;
        auto memo = kind.make();
        return memo->Open(open(isCatalogue ? kind.catalogueExtension : kind.extension)) ? std::move(memo) : nullptr;
    }
    return nullptr;
}

// Number fields keep their decimals beside the length. Of all other types both bytes together are the length, since
// texts may be longer than 255 bytes: this holds for dates and memos too, whatever stands in the second byte.
bool HasDecimals(std::uint32_t type) {
    constexpr std::string_view kNumberTypes = "BFINY";
    return kNumberTypes.find(static_cast<char>(type)) != kNumberTypes.npos;
}

std::unique_ptr<InputFile> OpenFile(std::wstring_view path) {
    qrs::platform::Error error;
    return InputFile::open(qrs::platform::nativePath(path), error);
}

}  // namespace

bool CDBFTableDef::Open(std::wstring_view path, CDBFOpenMode mode) {
    Close();
    if (mode != CDBFOpenMode::read) return false;
    const std::size_t nameAt = path.find_last_of(L"\\/") + 1;  // 0 when there is no separator
    const std::size_t dot = path.find_last_of(L'.');
    const bool hasExtension = dot != path.npos && dot >= nameAt;
    const std::wstring stem(path.substr(0, hasExtension ? dot : path.size()));
    // The catalogue of a Visual FoxPro database is a table itself, whose memo file bears a name of its own.
    const bool isCatalogue = hasExtension && qrs::platform::compareNoCase(path.substr(dot), L".DBC") == 0;
    const CDBFMemoOpener openMemo = [&](std::wstring_view extension) {
        return OpenFile(stem + std::wstring(extension));
    };
    return Open(OpenFile(path), openMemo, isCatalogue);
}

bool CDBFTableDef::Open(std::unique_ptr<InputFile> table, const CDBFMemoOpener& openMemo, bool isCatalogue) {
    Close();
    file_ = std::move(table);
    try {
        if (file_ && ReadHeader(openMemo, isCatalogue)) return true;
    } catch (...) {
        Close();
        throw;
    }
    Close();
    return false;
}

void CDBFTableDef::Close() {
    *this = CDBFTableDef();
}

bool CDBFTableDef::ReadHeader(const CDBFMemoOpener& openMemo, bool isCatalogue) {
    std::array<char, kHeaderSize> bytes;
    if (file_->readAt(0, bytes.data(), bytes.size()) != bytes.size()) return false;
    const Header header = ReadItems(kHeaderItems, bytes.data());
    if (IsDBase7(header.version)) return false;
    if (header.recordLength < 2 || static_cast<std::int32_t>(header.recordCount) < 0) return false;
    const std::uint64_t expected = std::uint64_t{header.recordLength} * header.recordCount + header.headerLength;
    // One byte more is the mark of the file's end.
    if (file_->size() != expected && file_->size() != expected + 1) return false;
    recordCount_ = header.recordCount;
    recordLength_ = header.recordLength;
    headerLength_ = header.headerLength;

    if (header.version == kVisualFoxPro) {
        constexpr std::uint32_t kAroundFields = 296;  // header, end mark and the link to the database
        if (header.headerLength < kAroundFields + kDescriptorSize) return false;
        ReadVisualFoxProFields((header.headerLength - kAroundFields) / kDescriptorSize);
    } else {
        constexpr std::uint32_t kAroundFields = 33;  // header and end mark
        ReadFields(header.headerLength < kAroundFields ? 0 : (header.headerLength - kAroundFields) / kDescriptorSize);
    }
    memo_ = OpenMemo(header, isCatalogue, openMemo);
    return true;
}

void CDBFTableDef::ReadFields(std::uint32_t slots) {
    std::array<char, kDescriptorSize> descriptor;
    for (std::uint32_t slot = 0; slot < slots; ++slot) {
        const std::uint64_t offset = kHeaderSize + std::uint64_t{slot} * kDescriptorSize;
        if (file_->readAt(offset, descriptor.data(), descriptor.size()) != descriptor.size()) {
            throw CDBFException(CDBFException::kShortRead);
        }
        if (descriptor[0] == kDescriptorsEnd) return;
        AddField(descriptor.data());
    }
}

void CDBFTableDef::ReadVisualFoxProFields(std::uint32_t count) {
    std::vector<char> descriptors(count * kDescriptorSize);
    if (file_->readAt(kHeaderSize, descriptors.data(), descriptors.size()) != descriptors.size()) {
        throw CDBFException(CDBFException::kShortRead);
    }
    for (std::uint32_t i = 0; i < count; ++i)
        AddField(descriptors.data() + i * kDescriptorSize);
}

// Where a field lies is computed from the lengths of those before it; the offset that some writers store is not read.
void CDBFTableDef::AddField(const char* descriptor) {
    const Descriptor items = ReadItems(kDescriptorItems, descriptor);
    const std::string_view stored(descriptor, kNameSize);  // all eleven bytes may be the name
    CDBFField field;
    field.name = qrs::platform::decode(qrs::platform::ansiCodePage(), stored.substr(0, stored.find('\0')));
    field.type = static_cast<char>(items.type);
    field.length = HasDecimals(items.type) ? items.length : items.decimals << 8 | items.length;
    field.decimals = HasDecimals(items.type) ? items.decimals : 0;
    field.offset = fields_.empty() ? 1 : fields_.back().offset + fields_.back().length;
    fields_.push_back(std::move(field));
}

int CDBFTableDef::FindField(std::wstring_view name) const {
    const auto found = std::find_if(fields_.begin(), fields_.end(), [&](const CDBFField& field) {
        return qrs::platform::compareNoCase(field.name, name) == 0;
    });
    return found == fields_.end() ? -1 : static_cast<int>(found - fields_.begin());
}

bool CDBFTableDef::ReadRecords(std::uint32_t first, std::uint32_t count, char* target) {
    const std::size_t size = std::size_t{count} * recordLength_;
    return file_->readAt(headerLength_ + std::uint64_t{first} * recordLength_, target, size) == size;
}
