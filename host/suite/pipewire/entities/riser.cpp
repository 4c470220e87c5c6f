// What is asked of every vertical pipe of a drawing, taken from its tags at one go.
#include "qrs_riser.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "acdb.h"
#include "acutads.h"
#include "entities/pipecodes.h"
#include "host/objectarx/db/tagwalk.h"
#include "host/platform/codepage.h"
#include "host/platform/text.h"
#include "qrs_pipewire.h"

using qrs::host::ObjectTag;
using qrs::host::ObjectTagWalk;
using qrs::platform::trimmed;
namespace pipecodes = qrs::suite::pipecodes;

namespace {

// Beside those that the editor's interface names.
constexpr int kEmbedded = 101;
constexpr int kGroup = 102;
constexpr int kCoordinateStep = 10;

// Names of systems are few; whatever else there is shall not fill the memory.
constexpr std::size_t kMostTexts = 1024;

}  // namespace

// One walk through the tags of a pipe. It goes on while they are as this library writes them.
class TRiserReader::Scan {
  public:
    Scan(const TDbPipe& pipe, std::size_t itemCount) : walk_(pipe), items_(itemCount), isItemKnown_(itemCount, false) {}

    // False when something is unusual.
    bool run(TRiserReader& reader) {
        for (ObjectTag tag; walk_.next(tag);)
            if (!take(reader, tag)) return false;
        return section_ >= Section::Path && hasStart_ && hasEnd_;
    }

    const TPipeCurve& curve() const { return curve_; }
    std::string_view systemName() const { return systemName_; }
    int sysType() const { return sysType_; }
    const std::vector<std::string_view>& items() const { return items_; }
    const ObjectTagWalk& walk() const { return walk_; }

  private:
    enum class Section { Common, Prototype, Path, Items };

    bool take(TRiserReader& reader, const ObjectTag& tag) {
        if (tag.code >= AcDb::kDxfXdAsciiString) {
            if (inGroup_ || section_ < Section::Path) return false;
            section_ = Section::Items;
            return takeItem(reader, tag);
        }
        if (tag.code == kEmbedded || section_ == Section::Items) return false;
        if (tag.code == kGroup || inGroup_) return takeGroup(tag);
        if (tag.code == AcDb::kDxfSubclass) return enter(trimmed(tag.value));
        if (section_ == Section::Prototype) return takePrototype(tag);
        return section_ != Section::Path || takePath(tag);
    }

    // Reactors and the like stand before the sections.
    bool takeGroup(const ObjectTag& tag) {
        if (section_ != Section::Common) return false;
        const std::string_view value = trimmed(tag.value);
        if (tag.code == kGroup && !value.empty() && (value.front() == '{' || value.front() == '}'))
            inGroup_ = value.front() == '{';
        return true;
    }

    bool enter(std::string_view mark) {
        if (section_ == Section::Common && mark == "AcDbEntity") return true;
        const Section next = static_cast<Section>(static_cast<int>(section_) + 1);
        const std::string_view expected = next == Section::Prototype ? "TDbPipePrototype" : "TDbPipe";
        if (next > Section::Path || mark != expected) return false;
        section_ = next;
        return true;
    }

    template <typename Integer>
    static bool readInteger(std::string_view value, int& out) {
        std::int64_t number = 0;
        if (!ObjectTagWalk::integer(value, number)) return false;
        out = static_cast<Integer>(number);
        return out == number;
    }

    bool takePrototype(const ObjectTag& tag) {
        if (tag.code == pipecodes::kSystemName) systemName_ = tag.value;
        return tag.code != pipecodes::kSystemType || readInteger<std::int32_t>(tag.value, sysType_);
    }

    bool takePath(const ObjectTag& tag) {
        if (tag.code == pipecodes::kKind) return readInteger<std::int16_t>(tag.value, curve_.kind);
        if (tag.code == pipecodes::kStart || tag.code == pipecodes::kEnd) {
            point_ = tag.code == pipecodes::kStart ? &curve_.start : &curve_.end;
            (tag.code == pipecodes::kStart ? hasStart_ : hasEnd_) = true;
            *point_ = AcGePoint3d();
            coordinate_ = tag.code;
            return ObjectTagWalk::real(tag.value, point_->x);
        }
        const int axis = tag.code / kCoordinateStep - 1;
        const int first = tag.code - axis * kCoordinateStep;
        if ((first != pipecodes::kStart && first != pipecodes::kEnd) || axis < 1 || axis > 2) return true;
        // A coordinate that stands alone belongs to no point.
        if (tag.code != coordinate_ + kCoordinateStep || !tag.followsLast) return false;
        coordinate_ = tag.code;
        return ObjectTagWalk::real(tag.value, axis == 1 ? point_->y : point_->z);
    }

    // The first of an application's parts counts, and in it what stands right after the name.
    bool takeItem(TRiserReader& reader, const ObjectTag& tag) {
        const bool isWanted = wanted_ < items_.size();
        if (tag.code == AcDb::kDxfXdAsciiString) {
            if (isWanted) items_[wanted_] = tag.value;
        } else if (tag.code == AcDb::kDxfRegAppName) {
            wanted_ = reader.ItemOf(*this, tag.value);
            if (wanted_ < items_.size() && isItemKnown_[wanted_]) wanted_ = items_.size();
            if (wanted_ < items_.size()) isItemKnown_[wanted_] = true;
            return true;
        } else if (isWanted) {
            return false;
        }
        wanted_ = items_.size();
        return true;
    }

    ObjectTagWalk walk_;
    Section section_ = Section::Common;
    bool inGroup_ = false;
    TPipeCurve curve_;
    bool hasStart_ = false;
    bool hasEnd_ = false;
    AcGePoint3d* point_ = nullptr;  // being read, and the code of its last coordinate
    int coordinate_ = 0;
    std::string_view systemName_;
    int sysType_ = 0;
    std::vector<std::string_view> items_;
    std::vector<bool> isItemKnown_;
    std::size_t wanted_ = static_cast<std::size_t>(-1);  // whose text may come next
};

TRiserReader::TRiserReader(std::vector<std::wstring> itemNames) : itemNames_(std::move(itemNames)) {}

bool TRiserReader::Read(const TDbPipe& pipe, TRiser& riser) {
    if (pipe.database() != database_) {
        database_ = pipe.database();
        itemByBytes_.clear();
        textByBytes_.clear();
    }
    // What was set is not among the tags yet.
    if (pipe.isWriteEnabled()) return ReadByGetters(pipe, riser);
    Scan scan(pipe, itemNames_.size());
    if (!scan.run(*this)) return ReadByGetters(pipe, riser);
    if (!scan.curve().IsVertical()) return false;
    Decode(scan, scan.systemName(), riser.systemName);
    riser.systemName = CurrentPipeSystemName(riser.systemName);
    riser.sysType = scan.sysType();
    riser.items.resize(itemNames_.size());
    for (std::size_t i = 0; i < itemNames_.size(); ++i)
        Decode(scan, scan.items()[i], riser.items[i]);
    return true;
}

bool TRiserReader::ReadByGetters(const TDbPipe& pipe, TRiser& riser) const {
    if (!pipe.GetCurve().IsVertical()) return false;
    riser.systemName = pipe.GetPipeSystemName();
    riser.sysType = pipe.GetPipeSysType();
    riser.items.assign(itemNames_.size(), std::wstring());
    for (std::size_t i = 0; i < itemNames_.size(); ++i) {
        const std::unique_ptr<resbuf, int (*)(resbuf*)> chain(pipe.xData(itemNames_[i].c_str()), &acutRelRb);
        const resbuf* value = chain ? chain->rbnext : nullptr;
        if (value && value->restype == AcDb::kDxfXdAsciiString) riser.items[i] = value->resval.rstring;
    }
    return true;
}

std::size_t TRiserReader::ItemOf(const Scan& scan, std::string_view application) {
    if (const auto known = itemByBytes_.find(application); known != itemByBytes_.end()) return known->second;
    std::wstring name;
    scan.walk().text(application, name);
    const auto found = std::find_if(itemNames_.begin(), itemNames_.end(), [&](const std::wstring& item) {
        return qrs::platform::compareNoCase(name, item) == 0;
    });
    const auto item = static_cast<std::size_t>(found - itemNames_.begin());
    itemByBytes_.emplace(application, item);
    return item;
}

void TRiserReader::Decode(const Scan& scan, std::string_view value, std::wstring& text) {
    const bool isAscii =
        std::all_of(value.begin(), value.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    const auto known = isAscii ? textByBytes_.end() : textByBytes_.find(value);
    if (known != textByBytes_.end()) {
        text = known->second;
        return;
    }
    scan.walk().text(value, text);
    // As result buffers hold it.
    if (const std::size_t end = text.find(L'\0'); end != std::wstring::npos) text.resize(end);
    if (!isAscii && textByBytes_.size() < kMostTexts) textByBytes_.emplace(value, text);
}
