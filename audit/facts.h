// What a check looks at in a drawing, gathered in one pass over its entities.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "acdb.h"
#include "dbcolor.h"
#include "dbmain.h"

struct TEntityLook;

namespace qrs::audit {

// How many objects, and which come first.
struct Tally {
    static constexpr std::size_t kShown = 5;

    std::uint64_t count = 0;
    std::vector<AcDbObjectId> first;
    bool hasParts = false;  // of what is counted elsewhere

    void add(AcDbObjectId id) {
        ++count;
        if (first.size() < kShown) first.push_back(id);
    }
    void add(const Tally& other);
    bool isEmpty() const { return count == 0 && !hasParts; }
};

// Vertices, and what ends them or attributes, are parts of what they follow, not objects of their own.
bool isCounted(const TEntityLook& look);

// Without regard to case, as the editor compares names.
struct NameLess {
    using is_transparent = void;
    bool operator()(std::wstring_view a, std::wstring_view b) const;
};
bool isSameName(std::wstring_view a, std::wstring_view b);
// Of an external reference ("reference|name"): the other drawing's business.
bool isDependentName(std::wstring_view name);
template <class Value>
using ByName = std::map<std::wstring, Value, NameLess>;

// A record of a symbol table.
struct RecordFacts {
    std::wstring name;
    AcDbObjectId id;
    Tally objects;        // that name it themselves
    bool isUsed = false;  // something in the drawing needs it, or every drawing has it

    bool isDependent() const { return isDependentName(name); }
};

struct LayerFacts : RecordFacts {
    AcCmColor color;
    std::wstring linetype;      // empty: the drawing lacks it
    std::wstring lostLinetype;  // the name of one that it lacks
    AcDb::LineWeight lineWeight = AcDb::kLnWtByLwDefault;
    bool isPlottable = true;
    bool isShown = true;  // neither off nor frozen
    bool isLocked = false;
    Tally ownColor, ownLinetype, ownLineWeight;
};

struct TextStyleFacts : RecordFacts {
    std::wstring font, bigFont, typeface;  // of a typeface the font files do not count
    bool isBold = false, isItalic = false;
    double height = 0.0, widthFactor = 1.0;
};

struct DimStyleFacts : RecordFacts {
    std::wstring textStyle;      // empty: none
    std::wstring lostTextStyle;  // the handle, "<2A>", of one that the drawing does not have; empty: it has it
    ByName<Tally> objectsByLayer;
};

struct PipeFacts {
    AcDbObjectId id;
    std::wstring_view system;       // as it is called now
    std::wstring_view drawnSystem;  // as the pipe bears it; empty when it bears none
    std::wstring_view layer;
    std::wstring_view serial, building;
    std::wstring_view diameter, material;  // empty: nobody has told
    double length = 0.0;
    bool isMeasured = true;  // or the ends are too far apart for a length
    bool isRiser = false;
    bool isInBlock = false;
    AcDbObjectId startNode, endNode;
    std::vector<AcDbObjectId> attachments;
};

// The tables, and what entities say of their records. The entities of a large drawing are counted in two parts.
struct TableFacts {
    std::vector<LayerFacts> layers;
    std::vector<RecordFacts> linetypes;
    std::vector<TextStyleFacts> textStyles;
    std::vector<DimStyleFacts> dimStyles;
    std::vector<AcDbObjectId> attachments;  // of model space
    Tally onLayerZero;                      // of model space
    // What objects name and the tables lack, but for names of external references.
    ByName<Tally> missingLayers, missingLinetypes, missingTextStyles, missingDimStyles;
    std::uint64_t entities = 0;

    // What entities that follow have said of the same tables.
    void add(const TableFacts& other);
};

class DrawingFacts : public TableFacts {
  public:
    // The drawing stays open as long as the facts are used.
    explicit DrawingFacts(AcDbDatabase& database);
    DrawingFacts(const DrawingFacts&) = delete;
    DrawingFacts& operator=(const DrawingFacts&) = delete;

    AcDbDatabase& database;
    std::vector<PipeFacts> pipes;           // of model space, as are the wells
    std::vector<PipeFacts> pipesElsewhere;  // of blocks and paper space
    std::vector<AcDbObjectId> wells;

  private:
    class EntityCounter;
    struct PipePlace;

    void readTables();
    void readEntities();
    void readPipe(const PipePlace& place);
    void findLost();
    void findUsed();
    std::wstring_view kept(std::wstring text);

    std::set<std::wstring, std::less<>> texts_;
};

// Texts of the editor's interface that their receiver releases.
std::wstring taken(ACHAR* text);
// "2A7"; empty for an object without one.
std::wstring handleOf(AcDbObjectId id);

}  // namespace qrs::audit
