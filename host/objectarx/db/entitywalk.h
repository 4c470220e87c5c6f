// All entities of a drawing without opening them, for those who ask the same of every one.
//
//     EntityWalk walk(*database);
//     for (WalkedEntity entity; walk.next(entity);)
//         for (EntityTag tag; walk.nextTag(tag);) ...
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "dbmain.h"
#include "host/platform/port.h"

namespace qrs::host {

// Which table a tag names a record of.
enum class NamedRecord : std::uint8_t { None, Layer, Linetype, TextStyle, DimStyle };

struct WalkedEntity {
    AcDbObjectId id;
    AcDbObjectId layer;         // null when the layer table does not have it
    std::string_view typeName;  // as drawing files call it
    bool isModel = false;       // lies in model space; neither this nor the next: in the definition of a block
    bool isPaper = false;       // lies in the layout shown last; those of other layouts count as blocks
    bool isPart = false;        // a vertex, an attribute or what closes them
    NamedRecord style = NamedRecord::None;  // what styles entities of its type have
};

// Two walks, each through one part of a drawing, may go side by side once both have been made.
enum class WalkedPart : std::uint8_t { All, First, Second };

struct EntityTag {
    int code = 0;
    std::string_view value;  // in the bytes of the drawing; good until the next tag
    NamedRecord names = NamedRecord::None;
    bool isHandle = false;   // names it so, as multileaders name their text style
    bool isFurther = false;  // not the entity's own style: that of a part of it, or one instead of its style's
};

class QRS_HOST_PORT EntityWalk {
  public:
    // Entities that are open are written into the drawing first. The drawing is not to be changed during the walk.
    explicit EntityWalk(AcDbDatabase& database, WalkedPart part = WalkedPart::All);
    ~EntityWalk();
    EntityWalk(const EntityWalk&) = delete;
    EntityWalk& operator=(const EntityWalk&) = delete;

    // The next entity in the order of the file: blocks come before the spaces. False at the end.
    bool next(WalkedEntity& entity);
    // The next tag, of those that all entities share and that name a record of a table, that does so or tells a colour
    // or a lineweight. False at the end of those.
    bool nextTag(EntityTag& tag);
    std::wstring text(std::string_view value) const;
    // The name of the text style with that handle; the handle in angle brackets, which no name has, when no text style
    // has it; nothing for zero.
    std::wstring textStyle(std::string_view handle) const;
    static std::int64_t integer(std::string_view value, std::int64_t fallback);
    // Whether there is so much that another thread has begun before this one is done.
    static bool isWorthSharing(const AcDbDatabase& database);

  private:
    struct Place;
    std::unique_ptr<Place> place_;
};

// The linetype that a layer names and the drawing does not have; empty when it names one it has, or none.
QRS_HOST_PORT std::wstring lostLinetype(AcDbObjectId layer);

// How many objects of the drawing need each record besides the entities that name it, which a walk tells: layers and
// styles, objects, entities that refer to it by its handle, and the header where it says what is current. counts has a
// place for each id. The status is that of AcDbDatabase::countHardReferences, and much less of a large drawing is read.
QRS_HOST_PORT Acad::ErrorStatus countOtherReferences(AcDbDatabase& database, const AcDbObjectIdArray& ids,
                                                     Adesk::UInt32* counts);

// Gives a text, or a multileader with one, another text style of its drawing, also a text that names none. Lines of an
// attribute that are in its style get the new one, and the multileader has it from then on instead of its style's.
// False when it is neither.
QRS_HOST_PORT bool setTextStyle(AcDbEntity& entity, AcDbObjectId style);

// The handle, in angle brackets, by which a dimension style names a text style that the drawing does not have; empty
// when it names one it has, or none.
QRS_HOST_PORT std::wstring lostTextStyle(AcDbObjectId dimStyle);

}  // namespace qrs::host
