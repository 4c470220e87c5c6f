// Extended data: reading it as result buffers, and replacing one application's part of it.
#include "host/objectarx/db/xdata.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <cwchar>
#include <utility>
#include <vector>

#include "acutads.h"
#include "host/dxf/groupcodes.h"
#include "host/objectarx/db/valuekind.h"
#include "host/platform/codepage.h"
#include "host/platform/text.h"

namespace qrs::host {

namespace codes = dxf::codes;

namespace {

constexpr std::size_t kLongestText = 255;
constexpr std::size_t kMostBytes = 16383;

// What is no digit counts as zero.
int fromHex(char digit) {
    return std::max(platform::hexValue(static_cast<unsigned char>(digit)), 0);
}

void setBinary(ads_binary& binary, std::string_view hex) {
    const std::size_t length = hex.size() / 2;
    binary.buf = new char[length + 1];
    binary.clen = static_cast<short>(length);
    for (std::size_t i = 0; i < length; ++i)
        binary.buf[i] = static_cast<char>(fromHex(hex[2 * i]) * 16 + fromHex(hex[2 * i + 1]));
}

std::string hexText(const ads_binary& binary) {
    return platform::hexText({binary.buf, static_cast<std::size_t>(std::max<short>(binary.clen, 0))});
}

// One application's data: the tags from 1001 to the next 1001.
struct Portion {
    std::wstring application;
    std::vector<dxf::NewTag> tags;
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

// The portions an object has, and where they end.
std::vector<Portion> readPortions(const dxf::Drawing& drawing, dxf::RecordId record) {
    std::vector<Portion> portions;
    dxf::TagCursor cursor = drawing.tags(record);
    dxf::Tag tag;
    while (cursor.next(tag)) {
        if (tag.code < codes::kFirstXdata) continue;
        if (tag.code == codes::kXdataApplication) {
            portions.emplace_back();
            portions.back().application = readText(drawing, tag.value);
            portions.back().begin = tag.begin;
        }
        if (portions.empty()) continue;
        portions.back().tags.push_back({tag.code, std::string(tag.value)});
        portions.back().end = tag.end;
    }
    return portions;
}

Acad::ErrorStatus checkLink(const resbuf& link, int& depth) {
    const int code = link.restype;
    const ValueKind kind = valueKind(code);
    if (code < codes::kFirstXdata || code > codes::kXdataLong || kind == ValueKind::Unknown) return Acad::eInvalidInput;
    if (kind == ValueKind::Text) {
        if (!link.resval.rstring || std::wcslen(link.resval.rstring) > kLongestText) return Acad::eInvalidInput;
        if (code != codes::kXdataBracket) return Acad::eOk;
        const std::wstring_view bracket = link.resval.rstring;
        if (bracket != L"{" && bracket != L"}") return Acad::eBadDxfSequence;
        depth += bracket == L"{" ? 1 : -1;
        return depth < 0 ? Acad::eBadDxfSequence : Acad::eOk;
    }
    if (kind == ValueKind::Binary) {
        const ads_binary& binary = link.resval.rbinary;
        // A chunk holds 127 bytes at most.
        if (binary.clen < 0 || binary.clen > 127 || (binary.clen > 0 && !binary.buf)) return Acad::eInvalidInput;
    }
    return Acad::eOk;
}

// The portions a chain asks for.
Acad::ErrorStatus parseChain(DatabaseState& state, const resbuf* chain, std::vector<Portion>& portions) {
    int depth = 0;
    if (!chain || chain->restype != codes::kXdataApplication) return Acad::eBadDxfSequence;
    for (const resbuf* link = chain; link; link = link->rbnext) {
        const Acad::ErrorStatus status = checkLink(*link, depth);
        if (status != Acad::eOk) return status;
        if (link->restype == codes::kXdataApplication) {
            if (depth != 0) return Acad::eBadDxfSequence;
            const dxf::RecordId application = state.tables().find(TableKind::RegApp, link->resval.rstring);
            if (application == dxf::kNoRecord) return Acad::eRegappIdNotFound;
            portions.emplace_back();
            portions.back().application = state.tables().nameOf(application);
            portions.back().tags.push_back(
                {codes::kXdataApplication, writeText(state.drawing(), portions.back().application)});
            continue;
        }
        appendValueTags(&state.drawing(), *link, portions.back().tags);
    }
    return depth == 0 ? Acad::eOk : Acad::eBadDxfSequence;
}

bool samePortion(const dxf::Drawing& drawing, const Portion& a, const Portion& b) {
    if (a.tags.size() != b.tags.size()) return false;
    for (std::size_t i = 0; i < a.tags.size(); ++i)
        if (!sameValue(drawing, a.tags[i], b.tags[i])) return false;
    return true;
}

std::size_t bytesOf(const std::vector<dxf::NewTag>& tags) {
    std::size_t bytes = 0;
    for (const dxf::NewTag& tag : tags)
        bytes += 1 + (valueKind(tag.code) == ValueKind::Text ? tag.value.size() + 3 : 8);
    return bytes;
}

const Portion* findPortion(const std::vector<Portion>& portions, const std::wstring& application) {
    for (const Portion& portion : portions)
        if (platform::compareNoCase(portion.application, application) == 0) return &portion;
    return nullptr;
}

void replacePortion(dxf::Drawing& drawing, dxf::RecordId record, const Portion& wanted) {
    const std::vector<Portion> present = readPortions(drawing, record);
    const Portion* old = findPortion(present, wanted.application);
    const bool removing = wanted.tags.size() == 1;
    if (old ? samePortion(drawing, *old, wanted) : removing) return;
    std::uint32_t place = static_cast<std::uint32_t>(drawing.bytes(record).size());
    if (old) {
        place = old->begin;
        drawing.eraseTags(record, old->begin, old->end);
    }
    if (!removing) drawing.insertTags(record, place, wanted.tags);
}

}  // namespace

// --- values between tags and result buffers

bool appendValueTags(const dxf::Drawing* drawing, const resbuf& link, std::vector<dxf::NewTag>& tags) {
    const int code = link.restype;
    switch (valueKind(code)) {
        case ValueKind::Text:
            if (!link.resval.rstring) return false;
            tags.push_back(
                {code, drawing ? writeText(*drawing, link.resval.rstring) : platform::toUtf8(link.resval.rstring)});
            return true;
        case ValueKind::Real:
            tags.push_back({code, dxf::realText(link.resval.rreal)});
            return std::isfinite(link.resval.rreal);
        case ValueKind::Short:
            tags.push_back({code, std::to_string(link.resval.rint)});
            return true;
        case ValueKind::Long:
            tags.push_back({code, std::to_string(link.resval.rlong)});
            return true;
        case ValueKind::Binary:
            if (link.resval.rbinary.clen < 0 || (link.resval.rbinary.clen > 0 && !link.resval.rbinary.buf))
                return false;
            tags.push_back({code, hexText(link.resval.rbinary)});
            return true;
        case ValueKind::Point:
            for (int i = 0; i < 3; ++i) {
                tags.push_back({code + i * codes::kCoordinateStep, dxf::realText(link.resval.rpoint[i])});
                if (!std::isfinite(link.resval.rpoint[i])) return false;
            }
            return true;
        case ValueKind::Name:
        case ValueKind::None:
        case ValueKind::Unknown:
            break;
    }
    return false;
}

bool sameValue(const dxf::Drawing& drawing, const dxf::NewTag& a, const dxf::NewTag& b) {
    if (a.code != b.code) return false;
    switch (valueKind(a.code)) {
        case ValueKind::Real:
        case ValueKind::Point:
            return dxf::toReal(a.value) == dxf::toReal(b.value);
        case ValueKind::Short:
        case ValueKind::Long:
            return dxf::toInteger(a.value) == dxf::toInteger(b.value);
        default:
            break;
    }
    const std::wstring first = readText(drawing, a.value);
    const std::wstring second = readText(drawing, b.value);
    return a.code == codes::kXdataApplication ? platform::compareNoCase(first, second) == 0 : first == second;
}

// --- chains

ChainBuilder::~ChainBuilder() {
    acutRelRb(first_);
}

resbuf* ChainBuilder::take() {
    last_ = nullptr;
    return std::exchange(first_, nullptr);
}

bool ChainBuilder::completePoint(const dxf::Tag& tag) {
    if (!last_ || valueKind(last_->restype) != ValueKind::Point) return false;
    const int axis = (tag.code - last_->restype) / codes::kCoordinateStep;
    if ((axis != 1 && axis != 2) || tag.code != last_->restype + axis * codes::kCoordinateStep) return false;
    last_->resval.rpoint[axis] = dxf::toReal(tag.value);
    return true;
}

void ChainBuilder::add(const dxf::Tag& tag) {
    const ValueKind kind = valueKind(tag.code);
    if (kind == ValueKind::Unknown || kind == ValueKind::None || completePoint(tag)) return;
    resbuf* link = acutNewRb(tag.code);
    (last_ ? last_->rbnext : first_) = link;
    last_ = link;
    switch (kind) {
        case ValueKind::Text:
            link->resval.rstring = newString(readText(state_.drawing(), tag.value));
            break;
        case ValueKind::Real:
            link->resval.rreal = dxf::toReal(tag.value);
            break;
        case ValueKind::Point:
            link->resval.rpoint[0] = dxf::toReal(tag.value);
            break;
        case ValueKind::Short:
            link->resval.rint = static_cast<short>(dxf::toInteger(tag.value));
            break;
        case ValueKind::Long:
            link->resval.rlong = static_cast<std::int32_t>(dxf::toInteger(tag.value));
            break;
        case ValueKind::Binary:
            setBinary(link->resval.rbinary, dxf::trimmed(tag.value));
            break;
        case ValueKind::Name:
            link->resval.rlname[0] = state_.idOf(state_.drawing().findHandle(dxf::toHandle(tag.value))).asOldId();
            break;
        case ValueKind::None:
        case ValueKind::Unknown:
            break;
    }
}

}  // namespace qrs::host

using namespace qrs::host;
namespace dxf = qrs::dxf;

resbuf* AcDbObject::xData(const ACHAR* regAppName) const {
    DatabaseState* state = DatabaseState::of(database());
    const dxf::RecordId id = state ? state->ids().recordOf(record()) : dxf::kNoRecord;
    if (id == dxf::kNoRecord) return nullptr;
    const dxf::Record& entry = state->drawing().record(id);
    if (entry.kind == dxf::RecordKind::Entity && (entry.flags & dxf::kHasXdata) == 0) return nullptr;
    ChainBuilder chain(*state);
    dxf::TagCursor cursor = state->drawing().tags(id);
    dxf::Tag tag;
    bool isWanted = false;
    while (cursor.next(tag)) {
        if (tag.code < codes::kFirstXdata) continue;
        if (tag.code == codes::kXdataApplication)
            isWanted =
                !regAppName || qrs::platform::compareNoCase(readText(state->drawing(), tag.value), regAppName) == 0;
        if (isWanted) chain.add(tag);
    }
    return chain.take();
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* chain) {
    if (const Acad::ErrorStatus status = checkWrite(); status != Acad::eOk) return status;
    DatabaseState* state = DatabaseState::of(database());
    const dxf::RecordId id = state ? state->ids().recordOf(record()) : dxf::kNoRecord;
    if (id == dxf::kNoRecord) return Acad::eNotInDatabase;
    std::vector<Portion> portions;
    if (const Acad::ErrorStatus status = parseChain(*state, chain, portions); status != Acad::eOk) return status;
    std::size_t bytes = 0;
    for (const Portion& portion : portions)
        bytes += bytesOf(portion.tags);
    for (const Portion& portion : readPortions(state->drawing(), id))
        if (!findPortion(portions, portion.application)) bytes += bytesOf(portion.tags);
    if (bytes > kMostBytes) return Acad::eXdataSizeExceeded;
    for (const Portion& portion : portions)
        replacePortion(state->drawing(), id, portion);
    return Acad::eOk;
}
