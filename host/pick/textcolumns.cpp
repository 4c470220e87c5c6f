// Reads columns from the object that new drawings have after a text's tags, and from the extended data of old ones.
#include "host/pick/textcolumns.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "host/dxf/classcodes.h"
#include "host/dxf/recordwalk.h"
#include "host/pick/entity.h"

namespace qrs::host::pick {

namespace {

using namespace dxf::codes;

constexpr std::string_view kColumnTexts = "ACAD_MTEXT_COLUMNS_BEGIN";

struct Columns {
    bool isThere = false;
    std::size_t count = 0;
    double height = 0.0;
    double width = 0.0;
    double gutter = 0.0;
    std::vector<double> heights;
};

// One value of them, by its code in the object that new drawings have after the text's tags.
void takeColumns(Columns& columns, int code, double number) {
    namespace codes = dxf::codes::mtextcolumns;
    constexpr int kType = 71;
    constexpr int kCount = 72;
    constexpr std::size_t kMost = 1000;
    number = std::max(number, 0.0);
    if (code == kType) columns.isThere = number != 0.0;
    if (code == kCount) columns.count = static_cast<std::size_t>(std::min(number, double{kMost}));
    if (code == codes::kDefinedHeight) columns.height = number;
    if (code == codes::kColumnWidth) columns.width = number;
    if (code == codes::kColumnGutter) columns.gutter = number;
    if (code == codes::kColumnHeight && columns.heights.size() < kMost) columns.heights.push_back(number);
}

// In older drawings they stand in extended data, in lists between a begin and an end: names, numbers for short, each
// before its value; heights after how many there are.
class OldColumns {
  public:
    explicit OldColumns(const dxf::Drawing& drawing) : drawing_(drawing) {}

    void take(const dxf::Tag& tag, Columns& columns, TextColumns& result) {
        if (tag.code == kXdataText || tag.code == kXdataApplication) {
            name_ = kNone;
            list_ = dxf::trimmed(tag.value);
            return;
        }
        if (tag.code == kXdataHandle) return takeHandle(tag, result);
        const bool isTold = list_ == "ACAD_MTEXT_COLUMN_INFO_BEGIN" || list_ == "ACAD_MTEXT_DEFINED_HEIGHT_BEGIN";
        if (!isTold || (tag.code != kXdataShort && tag.code != kXdataReal)) return;
        const double number = finiteOf(tag.value).value_or(0.0);
        if (name_ == kNone) {
            name_ = static_cast<int>(std::clamp(number, 0.0, 1000.0));
        } else if (name_ == kHeights && tag.code == kXdataShort) {
            return;
        } else {
            for (const auto& [name, code] : kCodes)
                if (name == name_) takeColumns(columns, code, number);
            if (name_ != kHeights) name_ = kNone;
        }
    }

  private:
    void takeHandle(const dxf::Tag& tag, TextColumns& result) const {
        const dxf::RecordId id = drawing_.findHandle(dxf::toHandle(tag.value));
        if (id == dxf::kNoRecord || drawing_.record(id).kind != dxf::RecordKind::Entity) return;
        if (list_ == "ACAD_MTEXT_TEXT_BORDERS_BEGIN") result.hasFrames = true;
        if (list_ == kColumnTexts && drawing_.typeNameOf(id) == "MTEXT") result.further.push_back(id);
    }

    static constexpr int kNone = -1;
    static constexpr int kHeights = 50;
    static constexpr std::pair<int, int> kCodes[] = {{75, 71},
                                                     {76, 72},
                                                     {46, dxf::codes::mtextcolumns::kDefinedHeight},
                                                     {48, dxf::codes::mtextcolumns::kColumnWidth},
                                                     {49, dxf::codes::mtextcolumns::kColumnGutter},
                                                     {kHeights, dxf::codes::mtextcolumns::kColumnHeight}};
    const dxf::Drawing& drawing_;
    std::string_view list_;
    int name_ = kNone;
};

}  // namespace

TextColumns readTextColumns(const dxf::Drawing& drawing, dxf::RecordId id) {
    TextColumns result;
    Columns columns;
    OldColumns old(drawing);
    dxf::RecordWalk walk(drawing.tags(id));
    for (dxf::Tag tag; walk.next(tag);) {
        if (walk.part() == dxf::Part::Embedded) takeColumns(columns, tag.code, finiteOf(tag.value).value_or(0.0));
        if (walk.part() == dxf::Part::Xdata && drawing.version() < dxf::Version::R2018) old.take(tag, columns, result);
    }
    if (!columns.isThere || !(columns.width > 0.0)) return {};
    result.heights =
        columns.heights.empty() ? std::vector<double>(columns.count, columns.height) : std::move(columns.heights);
    result.width = columns.width;
    result.gutter = columns.gutter;
    return result;
}

std::unordered_set<dxf::RecordId> furtherColumns(const dxf::Drawing& drawing) {
    std::unordered_set<dxf::RecordId> all;
    if (drawing.version() >= dxf::Version::R2018) return all;
    for (dxf::RecordId id = drawing.first(); id != dxf::kNoRecord; id = drawing.next(id)) {
        if (drawing.record(id).kind != dxf::RecordKind::Entity || !drawing.mayRefer(id)) continue;
        if (drawing.typeNameOf(id) != "MTEXT" || drawing.bytes(id).find(kColumnTexts) == std::string_view::npos)
            continue;
        for (const dxf::RecordId further : readTextColumns(drawing, id).further)
            if (further != id) all.insert(further);
    }
    return all;
}

}  // namespace qrs::host::pick
