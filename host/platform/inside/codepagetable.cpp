// Builds the tables of a code page from what the system answers.
#include "host/platform/inside/codepagetable.h"

#include <map>
#include <mutex>

namespace qrs::platform {

namespace {

struct LeadRange {
    unsigned codePage;
    unsigned char first;
    unsigned char last;
};

constexpr LeadRange kLeadRanges[] = {
    {932, 0x81, 0x9F},  {932, 0xE0, 0xFC},  {936, 0x81, 0xFE},  {949, 0x81, 0xFE},      {950, 0x81, 0xFE},
    {1361, 0x84, 0xD3}, {1361, 0xD8, 0xDE}, {1361, 0xE0, 0xF9}, {kGb18030, 0x81, 0xFE},
};

constexpr char16_t kNoCharacter = 0xFFFF;  // no character has this code point

// Characters that Windows has in a code page and other systems leave out. Drawings hold them: the private areas are
// where a user's own characters lie. Leads and trails run in order, code points are counted up from the first.
struct Supplement {
    unsigned codePage;
    unsigned char leadFirst;
    unsigned char leadLast;
    unsigned char trailFirst;
    unsigned char trailLast;
    unsigned char skippedTrail;
    char16_t codePoint;
};

constexpr Supplement kSupplements[] = {
    {936, 0xAA, 0xAF, 0xA1, 0xFE, 0, 0xE000},    {936, 0xF8, 0xFE, 0xA1, 0xFE, 0, 0xE234},
    {936, 0xA1, 0xA7, 0x40, 0xA0, 0x7F, 0xE4C6}, {936, 0xA8, 0xA8, 0xBC, 0xBC, 0, 0x1E3F},
    {936, 0xA8, 0xA8, 0xBF, 0xBF, 0, 0x01F9},    {949, 0xC9, 0xC9, 0xA1, 0xFE, 0, 0xE000},
    {949, 0xFE, 0xFE, 0xA1, 0xFE, 0, 0xE05E},
};

std::string_view characterOf(std::uint16_t bytes, char (&room)[2]) {
    room[0] = static_cast<char>(bytes >> 8);
    room[1] = static_cast<char>(bytes & 0xFF);
    return bytes > 0xFF ? std::string_view(room, 2) : std::string_view(room + 1, 1);
}

bool isAsciiBased(SystemCodePage& system) {
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        if (system.decode(std::string_view(&letter, 1)) != static_cast<char32_t>(letter)) return false;
    }
    return true;
}

// Single-byte pages of Windows give the control code of the same number for a byte between 0x80 and 0x9F without a
// character, so that such a byte in an old drawing comes through.
bool keepsControlCodes(unsigned codePage) {
    return codePage == 874 || (codePage >= 1250 && codePage <= 1258);
}

}  // namespace

bool leadByteOf(unsigned codePage, unsigned char byte) {
    for (const LeadRange& range : kLeadRanges) {
        if (range.codePage == codePage && byte >= range.first && byte <= range.last) return true;
    }
    return false;
}

namespace {

// Lead, digit, lead, digit: what each place counts.
constexpr unsigned char kFirstLead = 0x81, kLastLead = 0xFE;
constexpr std::size_t kLeads = kLastLead - kFirstLead + 1;
constexpr std::size_t kDigits = 10;
// Up to this number they may stand for code points of the basic plane; from the other one on for those above it.
constexpr std::size_t kBasicEnd = 4 * kDigits * kLeads * kDigits;
constexpr std::size_t kUpperStart = (0x90 - kFirstLead) * kDigits * kLeads * kDigits;

std::array<char, 4> fourBytes(std::size_t number) {
    const auto digit = [&] { return static_cast<char>('0' + number % kDigits); };
    const auto lead = [&] { return static_cast<char>(kFirstLead + number % kLeads); };
    std::array<char, 4> bytes{};
    bytes[3] = digit(), number /= kDigits;
    bytes[2] = lead(), number /= kLeads;
    bytes[1] = digit(), number /= kDigits;
    bytes[0] = lead();
    return bytes;
}

// Nothing when there are no four bytes of that form.
std::optional<std::size_t> numberOf(std::string_view bytes) {
    if (bytes.size() < 4) return std::nullopt;
    std::size_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        const bool isLead = i % 2 == 0;
        if (isLead ? byte < kFirstLead || byte > kLastLead : byte < '0' || byte > '9') return std::nullopt;
        number = isLead ? number * kLeads + (byte - kFirstLead) : number * kDigits + (byte - '0');
    }
    return number;
}

}  // namespace

FourByteTable::FourByteTable(SystemCodePage& system) : decode_(kBasicEnd, kNoCharacter), encode_(0x10000, 0) {
    for (std::size_t number = 0; number < kBasicEnd; ++number) {
        const std::array<char, 4> bytes = fourBytes(number);
        const std::optional<char32_t> codePoint = system.decode(std::string_view(bytes.data(), bytes.size()));
        if (!codePoint || *codePoint < 0x80 || *codePoint >= kNoCharacter) continue;
        decode_[number] = static_cast<char16_t>(*codePoint);
        encode_[*codePoint] = static_cast<std::uint16_t>(number + 1);
    }
}

std::optional<char32_t> FourByteTable::next(std::string_view bytes, std::size_t& i) const {
    const std::optional<std::size_t> number = numberOf(bytes.substr(i, 4));
    if (!number) return std::nullopt;
    const bool isBasic = *number < kBasicEnd;
    const bool isUpper = *number >= kUpperStart && *number - kUpperStart < 0x100000;
    if (!isUpper && (!isBasic || decode_[*number] == kNoCharacter)) return std::nullopt;
    i += 4;
    return isBasic ? decode_[*number] : static_cast<char32_t>(0x10000 + (*number - kUpperStart));
}

bool FourByteTable::append(char32_t codePoint, std::string& out) const {
    const bool isUpper = codePoint > 0xFFFF;
    if (codePoint > 0x10FFFF || (!isUpper && encode_[codePoint] == 0)) return false;
    const std::array<char, 4> bytes =
        fourBytes(isUpper ? kUpperStart + (codePoint - 0x10000) : encode_[codePoint] - std::size_t{1});
    out.append(bytes.data(), bytes.size());
    return true;
}

const CodePageTable* CodePageTable::find(unsigned codePage) {
    static std::mutex mutex;
    static std::map<unsigned, std::unique_ptr<const CodePageTable>> tables;
    const std::lock_guard<std::mutex> lock(mutex);
    const auto known = tables.find(codePage);
    if (known != tables.end()) return known->second.get();
    std::unique_ptr<const CodePageTable> table;
    const std::unique_ptr<SystemCodePage> system = SystemCodePage::open(codePage);
    if (system && isAsciiBased(*system)) table.reset(new CodePageTable(codePage, *system));
    return tables.emplace(codePage, std::move(table)).first->second.get();
}

CodePageTable::CodePageTable(unsigned codePage, SystemCodePage& system) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        lead_[byte] = leadByteOf(codePage, static_cast<unsigned char>(byte));
    }
    bool doubleByte = false;
    for (const bool isLead : lead_)
        doubleByte = doubleByte || isLead;
    decode_.assign(doubleByte ? 0x10000 : 0x100, kNoCharacter);
    encode_.assign(0x10000, 0);
    for (unsigned byte = 0; byte < 0x80; ++byte)
        decode_[byte] = static_cast<char16_t>(byte);
    char room[2];
    for (unsigned byte = 0x80; byte < 0x100; ++byte) {
        if (lead_[byte]) {
            for (unsigned trail = 0x30; trail < 0x100; ++trail) {
                const auto bytes = static_cast<std::uint16_t>(byte << 8 | trail);
                if (const auto codePoint = system.decode(characterOf(bytes, room))) enter(bytes, *codePoint, system);
            }
        } else if (const auto codePoint = system.decode(characterOf(static_cast<std::uint16_t>(byte), room))) {
            enter(static_cast<std::uint16_t>(byte), *codePoint, system);
        } else if (byte < 0xA0 && keepsControlCodes(codePage)) {
            enter(static_cast<std::uint16_t>(byte), byte, system);
        }
    }
    enterSupplements(codePage, system);
    if (codePage == kGb18030) four_.emplace(system);
}

void CodePageTable::enter(std::uint16_t bytes, char32_t codePoint, SystemCodePage& system) {
    if (codePoint < 0x80 || codePoint >= kNoCharacter || decode_[bytes] != kNoCharacter) return;
    decode_[bytes] = static_cast<char16_t>(codePoint);
    std::uint16_t& back = encode_[codePoint];
    if (back == 0) {
        back = bytes;
    } else if (const std::uint16_t usual = system.encode(codePoint)) {
        // Two characters of the code page with one code point: the system says which of them is written.
        back = usual;
    }
}

void CodePageTable::enterSupplements(unsigned codePage, SystemCodePage& system) {
    for (const Supplement& area : kSupplements) {
        if (area.codePage != codePage) continue;
        char32_t codePoint = area.codePoint;
        for (unsigned lead = area.leadFirst; lead <= area.leadLast; ++lead) {
            for (unsigned trail = area.trailFirst; trail <= area.trailLast; ++trail) {
                if (trail == area.skippedTrail) continue;
                enter(static_cast<std::uint16_t>(lead << 8 | trail), codePoint++, system);
            }
        }
    }
}

std::optional<char32_t> CodePageTable::next(std::string_view bytes, std::size_t& i) const {
    if (four_) {
        if (const std::optional<char32_t> codePoint = four_->next(bytes, i)) return codePoint;
    }
    const auto first = static_cast<unsigned char>(bytes[i++]);
    unsigned index = first;
    if (lead_[first]) {
        if (i == bytes.size()) return std::nullopt;
        index = index << 8 | static_cast<unsigned char>(bytes[i]);
    }
    if (decode_[index] == kNoCharacter) return std::nullopt;
    if (lead_[first]) ++i;
    return decode_[index];
}

bool CodePageTable::append(char32_t codePoint, std::string& out) const {
    const auto bytes = codePoint < 0x80           ? static_cast<std::uint16_t>(codePoint)
                       : codePoint < kNoCharacter ? encode_[codePoint]
                                                  : std::uint16_t{0};
    if (bytes == 0 && codePoint != 0) return four_ && four_->append(codePoint, out);
    if (bytes > 0xFF) out += static_cast<char>(bytes >> 8);
    out += static_cast<char>(bytes & 0xFF);
    return true;
}

}  // namespace qrs::platform
