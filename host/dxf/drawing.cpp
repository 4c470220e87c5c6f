// Opening a drawing and looking at it.
#include "host/dxf/drawing.h"

#include <algorithm>

#include "host/dxf/binaryform.h"
#include "host/dxf/codeform.h"
#include "host/dxf/text.h"
#include "host/dxf/textform.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/platform/lostfile.h"
#include "host/platform/text.h"

namespace qrs::dxf {

using platform::translated;

namespace {

bool sameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return platform::asciiUpper(x) == platform::asciiUpper(y);
           });
}

}  // namespace

Drawing::~Drawing() = default;

std::unique_ptr<Drawing> Drawing::open(const std::filesystem::path& native, platform::Error& error) {
    // Taken first: what happens to the file from here on is noticed.
    const platform::FileMark mark = platform::fileMark(native);
    auto file = platform::MappedFile::open(native, error);
    if (file == nullptr) return nullptr;
    std::unique_ptr<Drawing> drawing(new Drawing(std::make_unique<Source>(std::move(file))));
    drawing->guard_.noteOpened(mark, *drawing->source_->file());
    const bool done = drawing->load(native.u8string(), error);
    if (!platform::takeLoss(drawing->source_->bytes())) return done ? std::move(drawing) : nullptr;
    error.message = native.u8string() + ": " + translated("was cut short by another program while it was read");
    return nullptr;
}

std::unique_ptr<Drawing> Drawing::fromBytes(std::string bytes, const std::string& name, platform::Error& error) {
    std::unique_ptr<Drawing> drawing(new Drawing(std::make_unique<Source>(std::move(bytes))));
    return drawing->load(name, error) ? std::move(drawing) : nullptr;
}

bool Drawing::load(const std::string& name, platform::Error& error) {
    const std::string_view bytes = source_->bytes();
    if (const auto dwg = dwgVersionOf(bytes)) {
        const std::string_view release = releaseOf(versionOf(*dwg));
        error.message = name + ": " +
                        translated("a DWG drawing of %1; save it as DXF, or name a converter (--converter)",
                                   release.empty() ? *dwg : release);
        return false;
    }
    Fault fault;
    if (!buildIndex(bytes, source_->file(), index_, fault, sharedPlace(bytes.size()))) {
        const std::uint64_t line = lineNumber(bytes, static_cast<std::size_t>(fault.offset), index_.lineEnd);
        const std::string place = line == 0 ? " " + translated("byte %1", fault.offset) : std::to_string(line);
        error.message = name + ":" + place + ": " + fault.text;
        return false;
    }
    order_.begin();
    contents_.begin(bytes);
    if (index_.lineEnd == kBinaryLineEnd) {
        form_ = std::make_unique<BinaryForm>(index_.codeForm);
    } else {
        form_ = std::make_unique<TextForm>(index_.lineEnd);
    }
    readHeader();
    index_.faults.finish(bytes, index_.lineEnd, index_.records);
    return true;
}

void Drawing::readHeader() {
    Tag tag;
    const auto variable = [&](std::string_view name, int code) {
        const RecordId id = findHeaderVariable(name);
        return id != kNoRecord && findTag(id, code, tag);
    };
    if (variable("$ACADVER", codes::kText)) {
        versionText_ = trimmed(tag.value);
        version_ = versionOf(versionText_);
        if (releaseOf(version_).empty()) {
            const Record& named = record(findHeaderVariable("$ACADVER"));
            index_.faults.add(static_cast<std::size_t>(named.offset) + tag.begin, kNoRecord, FaultKind::UnknownVersion,
                              translated("the version %1 is not known", versionText_));
        }
    }
    handling_ = variable("$HANDLING", codes::kFlags) && toInteger(tag.value) != 0;
    if (version_ >= kFirstInUtf8 || index_.hasUtf8Mark) {
        codePage_ = platform::kUtf8;
    } else {
        if (variable("$DWGCODEPAGE", codes::kOtherText)) codePage_ = codePageOf(tag.value);
        if (codePage_ == 0 || !platform::isKnownCodePage(codePage_)) codePage_ = platform::ansiCodePage();
    }
}

// --- order

RecordId Drawing::first() const {
    const RecordId id = order_.first();
    return isErased(id) ? next(id) : id;
}

RecordId Drawing::next(RecordId id) const {
    do {
        id = order_.next(id);
    } while (id != kNoRecord && isErased(id));
    return id;
}

RecordId Drawing::previous(RecordId id) const {
    do {
        id = order_.previous(id);
    } while (id != kNoRecord && isErased(id));
    return id;
}

// --- finding

RecordId Drawing::findHandle(std::uint64_t handle) const {
    RecordId found = kNoRecord;
    if (handles_.findWithout(index_.records, handle, found)) return found;
    if (!handles_.isBuilt()) handles_.build(index_.records);
    return handles_.find(index_.records, handle);
}

RecordId Drawing::findNamed(const std::vector<RecordId>& heads, std::string_view name) const {
    Tag tag;
    for (const RecordId id : heads) {
        if (!isErased(id) && findTag(id, codes::kName, tag) && sameName(trimmed(tag.value), name)) return id;
    }
    return kNoRecord;
}

RecordId Drawing::findSection(std::string_view name) const {
    return findNamed(index_.sections, name);
}

RecordId Drawing::findTable(std::string_view name) const {
    return findNamed(index_.tables, name);
}

RecordId Drawing::findHeaderVariable(std::string_view name) const {
    for (const RecordId id : index_.headerVariables) {
        if (!isErased(id) && sameName(typeNameOf(id), name)) return id;
    }
    return kNoRecord;
}

std::string_view Drawing::typeName(std::uint16_t type) const {
    return type == kTypeUncounted ? std::string_view() : index_.types[type];
}

std::string_view Drawing::typeNameOf(RecordId id) const {
    if (record(id).type != kTypeUncounted) return typeName(record(id).type);
    // Not through the texts of binary records, which several threads cannot share.
    StoredTags tags = storedTags(id);
    return tags.next() ? trimmed(tags.value()) : std::string_view();
}

std::string_view Drawing::name(NameId id) const {
    return index_.layers[id];
}

std::size_t Drawing::nameCount() const {
    return index_.layers.size();
}

// --- tags

bool Drawing::findTag(RecordId id, int code, Tag& tag, int nth) const {
    const bool isInXdata = isXdataCode(code);
    for (RecordWalk walk(tags(id)); walk.next(tag);) {
        if (!isInXdata && walk.part() == Part::Xdata) return false;
        const bool isLookedAt = isInXdata || walk.isOwn() || code == codes::kGroup;
        if (tag.code == code && isLookedAt && nth-- == 0) return true;
    }
    return false;
}

// --- what the whole drawing says of itself

bool Drawing::hasHandles() const {
    return handling_ || version_ >= kFirstWithHandles || index_.greatestHandle != 0;
}

std::wstring Drawing::decode(std::string_view value) const {
    return decodeText(codePage_, value);
}

std::string Drawing::encode(std::wstring_view text) const {
    return encodeText(codePage_, text);
}

}  // namespace qrs::dxf
