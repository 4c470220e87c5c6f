// What entities are drawn with, from the tags they share.
#include "qrs_looks.h"

#include <algorithm>
#include <exception>
#include <map>
#include <string>

#include "acdb.h"
#include "host/objectarx/db/entitywalk.h"
#include "host/platform/beside.h"
#include "host/platform/text.h"

using qrs::host::EntityTag;
using qrs::host::EntityWalk;
using qrs::host::NamedRecord;
using qrs::host::WalkedEntity;
using qrs::host::WalkedPart;

namespace {

constexpr int kColor = 62;
constexpr int kLineWeight = 370;
constexpr int kTrueColor = 420;
constexpr std::int64_t kColorByBlock = 0;
constexpr std::int64_t kColorByLayer = 256;
constexpr std::wstring_view kStandard = L"Standard";

// Names of a drawing are few; whatever else there is shall not fill the memory.
constexpr std::size_t kMostNames = 4096;

bool isSame(std::wstring_view a, std::wstring_view b) {
    return qrs::platform::compareNoCase(a, b) == 0;
}

}  // namespace

struct TEntityLooks::State {
    State(AcDbDatabase& database, WalkedPart part) : walk(database, part) {}

    bool next(TEntityLook& look);

    std::wstring_view nameOf(std::string_view bytes) {
        if (const auto known = names.find(bytes); known != names.end()) return known->second;
        return names.emplace(bytes, walk.text(bytes)).first->second;
    }

    std::wstring_view styleOf(std::string_view handle) {
        auto known = styles.find(handle);
        if (known == styles.end()) known = styles.emplace(handle, walk.textStyle(handle)).first;
        return known->second.empty() ? kStandard : std::wstring_view(known->second);
    }

    static void addFurther(TEntityLook& look, std::wstring_view name) {
        std::vector<std::wstring_view>& further = look.furtherTextStyles;
        const auto isIt = [&](std::wstring_view other) { return isSame(name, other); };
        if (name.empty() || isIt(look.textStyle) || std::any_of(further.begin(), further.end(), isIt)) return;
        further.push_back(name);
    }

    void take(TEntityLook& look, const EntityTag& tag) {
        const bool isBlock = look.space == TEntityLook::kBlock;
        if (tag.code == kColor) {
            const std::int64_t index = EntityWalk::integer(tag.value, kColorByLayer);
            look.hasOwnColor |= index != kColorByLayer && !(isBlock && index == kColorByBlock);
        } else if (tag.code == kTrueColor) {
            look.hasOwnColor = true;
        } else if (tag.code == kLineWeight) {
            const std::int64_t weight = EntityWalk::integer(tag.value, AcDb::kLnWtByLayer);
            look.hasOwnLineWeight = weight != AcDb::kLnWtByLayer && !(isBlock && weight == AcDb::kLnWtByBlock);
        } else if (tag.names == NamedRecord::Linetype) {
            const std::wstring_view name = nameOf(tag.value);
            if (isSame(name, L"ByLayer")) return;
            look.linetype = name;
            look.hasOwnLinetype = !(isBlock && isSame(name, L"ByBlock"));
        } else if (tag.names == NamedRecord::Layer && look.layer.isNull()) {
            look.layerName = nameOf(tag.value);
        } else if (tag.names == NamedRecord::TextStyle) {
            const std::wstring_view name = tag.isHandle ? styleOf(tag.value) : nameOf(tag.value);
            if (tag.isFurther)
                addFurther(look, name);
            else
                look.textStyle = name;
        } else if (tag.names == NamedRecord::DimStyle) {
            look.dimStyle = nameOf(tag.value);
        }
    }

    EntityWalk walk;
    std::map<std::string, std::wstring, std::less<>> names;   // by their bytes
    std::map<std::string, std::wstring, std::less<>> styles;  // by the handles of text styles
};

TEntityLooks::TEntityLooks(AcDbDatabase* database) {
    if (database != nullptr) state_ = std::make_unique<State>(*database, WalkedPart::All);
}

TEntityLooks::~TEntityLooks() = default;

bool TEntityLooks::Next(TEntityLook& look) {
    return state_ && state_->next(look);
}

bool TEntityLooks::State::next(TEntityLook& look) {
    WalkedEntity entity;
    if (!walk.next(entity)) return false;
    look = TEntityLook();
    if (names.size() >= kMostNames) names.clear();
    if (styles.size() >= kMostNames) styles.clear();
    look.id = entity.id;
    look.layer = entity.layer;
    look.typeName = entity.typeName;
    look.isPart = entity.isPart;
    if (entity.isModel) look.space = TEntityLook::kModel;
    if (entity.isPaper) look.space = TEntityLook::kPaper;
    if (entity.style == NamedRecord::TextStyle) look.textStyle = kStandard;
    if (entity.style == NamedRecord::DimStyle) look.dimStyle = kStandard;
    for (EntityTag tag; walk.nextTag(tag);)
        take(look, tag);
    return true;
}

void TEntityLooks::Tell(AcDbDatabase* database, const TEntityLookReader& first, const TEntityLookReader& second) {
    if (database == nullptr) return;
    const auto tell = [](State& state, const TEntityLookReader& reader) {
        for (TEntityLook look; state.next(look);)
            reader(look);
    };
    const bool isShared = EntityWalk::isWorthSharing(*database);
    State mine(*database, isShared ? WalkedPart::First : WalkedPart::All);
    if (!isShared) return tell(mine, first);
    State other(*database, WalkedPart::Second);
    std::exception_ptr problem;
    const auto tellOther = [&] {
        try {
            tell(other, second);
        } catch (...) {
            problem = std::current_exception();
        }
    };
    {
        qrs::platform::Beside beside(tellOther);
        tell(mine, first);
        if (!beside.hasBegun()) tellOther();
    }
    if (problem) std::rethrow_exception(problem);
}

std::wstring LostLinetype(AcDbObjectId layer) {
    return qrs::host::lostLinetype(layer);
}

bool CountOtherUses(AcDbDatabase* database, const AcDbObjectIdArray& ids, Adesk::UInt32* counts) {
    return database != nullptr && qrs::host::countOtherReferences(*database, ids, counts) == Acad::eOk;
}

bool SetTextStyle(AcDbEntity* entity, AcDbObjectId style) {
    return entity != nullptr && entity->isWriteEnabled() && qrs::host::setTextStyle(*entity, style);
}

std::wstring LostTextStyle(AcDbObjectId dimStyle) {
    return qrs::host::lostTextStyle(dimStyle);
}
