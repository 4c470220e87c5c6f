// What every entity of a drawing is drawn with, told without opening one: for reports on whole drawings.
//
//     TEntityLooks looks(database);
//     for (TEntityLook look; looks.Next(look);)
//         if (look.hasOwnColor) ++ownColors[look.layer];
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dbid.h"
#include "host/platform/port.h"

class AcDbDatabase;
class AcDbEntity;

struct TEntityLook {
    enum Space { kBlock, kModel, kPaper };

    AcDbObjectId id;
    AcDbObjectId layer;         // null when the drawing's layer table does not have it
    std::string_view typeName;  // as drawing files call it: "LINE"
    Space space = kBlock;       // layouts that are not shown last count as blocks
    bool isPart = false;        // a vertex, an attribute or what closes them
    // Neither by layer nor, in a block, by block.
    bool hasOwnColor = false;
    bool hasOwnLinetype = false;
    bool hasOwnLineWeight = false;
    // Names as the entity spells them; they hold until the next one. The layer's is told only when the table lacks it.
    std::wstring_view layerName;
    std::wstring_view linetype;  // empty: by layer
    // Of texts, attributes and their definitions, and multileaders that hold a text; "Standard" when they name none,
    // the handle in angle brackets ("<2A>", as no name is) when it is no text style's.
    std::wstring_view textStyle;
    std::wstring_view dimStyle;  // of dimensions, leaders and tolerances; likewise
    // What a dimension has instead of the text style of its style, cells of a table instead of theirs, or an attribute
    // in its further lines: each once, and none that is the entity's own.
    std::vector<std::wstring_view> furtherTextStyles;
};

using TEntityLookReader = std::function<void(const TEntityLook& look)>;

class QRS_HOST_PORT TEntityLooks {
  public:
    // The drawing is not to be changed while they are told. A null database has none.
    explicit TEntityLooks(AcDbDatabase* database);
    ~TEntityLooks();
    TEntityLooks(const TEntityLooks&) = delete;
    TEntityLooks& operator=(const TEntityLooks&) = delete;

    // The next entity in the order of the file, vertices and attributes after what they belong to. False at the end.
    bool Next(TEntityLook& look);

    // Tells all of them to two readers: the first part of a large drawing to one and the rest to the other, each in the
    // order of the file, and both at the same time in two threads. A small one is told to the first reader alone. A
    // reader must not open, change or ask objects, nor touch what the other one writes: it notes what to ask later.
    static void Tell(AcDbDatabase* database, const TEntityLookReader& first, const TEntityLookReader& second);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

// The linetype that a layer names and the drawing does not have; empty when it names one that it has, or none.
QRS_HOST_PORT std::wstring LostLinetype(AcDbObjectId layer);

// How many objects need each record besides the entities of which TEntityLooks tells that they name it: layers, styles,
// objects, entities that refer to it by its handle, blocks that lie on a layer; the header counts where it says what is
// current. counts has a place for each id, and is filled without a second walk through the entities. False when one of
// them is erased or another drawing's.
QRS_HOST_PORT bool CountOtherUses(AcDbDatabase* database, const AcDbObjectIdArray& ids, Adesk::UInt32* counts);

// Gives a text of any kind, open for writing, another text style: texts, paragraphs, attributes and their definitions,
// multileaders that name one. Lines of an attribute that are in its style get it, too.
// One that names no style, and so is written in "Standard", names it from then on. False, nothing changed, for what is
// no text and for a style of another drawing.
QRS_HOST_PORT bool SetTextStyle(AcDbEntity* entity, AcDbObjectId style);

// The handle, in angle brackets, by which a dimension style names a text style that the drawing does not have; empty
// when it names one that it has, or none.
QRS_HOST_PORT std::wstring LostTextStyle(AcDbObjectId dimStyle);
