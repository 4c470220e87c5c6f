// Symbol tables of a drawing and their records: blocks, layers, linetypes, text styles, registered applications.
//
//     AcDbLayerTableIterator* iterator = nullptr;
//     table->newIterator(iterator);
//     for (; !iterator->done(); iterator->step()) { ... iterator->getRecordId(id) ... }
//     delete iterator;
#pragma once

#include <string>
#include <vector>

#include "dbmain.h"
#include "gepnt3d.h"
#include "gevec2d.h"

#define ACDB_MODEL_SPACE L"*Model_Space"
#define ACDB_PAPER_SPACE L"*Paper_Space"

// A named record. Names are compared without regard to case.
class QRS_HOST_PORT AcDbSymbolTableRecord : public AcDbObject {
  public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord)

    // Valid until the record is closed or its name asked for again.
    Acad::ErrorStatus getName(const ACHAR*& name) const;
    // eInvalidInput for an empty name or one with characters that names may not hold; eDuplicateRecordName when another
    // record of the table has it; eNotApplicable for a record of a drawing whose entities refer to it by name and are
    // not followed up (all but layers; but all except blocks may change the case of their name). Renaming a layer takes
    // everything on it along; "0" keeps its name.
    Acad::ErrorStatus setName(const ACHAR* name);

  protected:
    AcDbSymbolTableRecord();

  private:
    mutable std::wstring nameText_;
};

// Walks the records that were in the table when the walk started; records erased meanwhile are passed over.
class QRS_HOST_PORT AcDbSymbolTableIterator {
  public:
    AcDbSymbolTableIterator(AcDbDatabase* database, std::uint32_t table);
    void start();
    bool done() const;
    void step();
    // eEndOfObject when done.
    Acad::ErrorStatus getRecordId(AcDbObjectId& recordId) const;

  private:
    void passErased();

    AcDbDatabase* database_;
    std::uint32_t table_;
    std::vector<std::uint32_t> records_;
    std::size_t position_ = 0;  // records_.size() when done
};

class QRS_HOST_PORT AcDbSymbolTable : public AcDbObject {
  public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTable)

    // eKeyNotFound, id null, when there is none. getErasedRecord is accepted: erased records are not kept.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& recordId, bool getErasedRecord = false) const;
    bool has(const ACHAR* name) const;

  protected:
    AcDbSymbolTable() = default;
    Acad::ErrorStatus addRecord(AcDbObjectId& recordId, AcDbSymbolTableRecord* newRecord);
};

// The parts of a table that speak of its own record class.
template <class Record>
class AcDbTypedTableIterator : public AcDbSymbolTableIterator {  // ours
  public:
    using AcDbSymbolTableIterator::AcDbSymbolTableIterator;
    Acad::ErrorStatus getRecord(Record*& record, AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false) const {
        record = nullptr;
        AcDbObjectId recordId;
        const Acad::ErrorStatus status = getRecordId(recordId);
        return status == Acad::eOk ? acdbOpenObject(record, recordId, mode, openErased) : status;
    }
};

template <class Record>
class AcDbTypedSymbolTable : public AcDbSymbolTable {  // ours
  public:
    using Iterator = AcDbTypedTableIterator<Record>;
    using AcDbSymbolTable::getAt;
    Acad::ErrorStatus getAt(const ACHAR* name, Record*& tableRecord, AcDb::OpenMode mode,
                            bool openErased = false) const {
        tableRecord = nullptr;
        AcDbObjectId recordId;
        const Acad::ErrorStatus status = AcDbSymbolTable::getAt(name, recordId, openErased);
        return status == Acad::eOk ? acdbOpenObject(tableRecord, recordId, mode, openErased) : status;
    }
    // The iterator is deleted by the caller.
    Acad::ErrorStatus newIterator(Iterator*& iterator) const {
        iterator = nullptr;
        if (!isReadEnabled()) return Acad::eNotOpenForRead;
        iterator = new Iterator(database(), record());
        return Acad::eOk;
    }

  protected:
    AcDbTypedSymbolTable() = default;
};

// The same for tables that take new records.
template <class Record>
class AcDbGrowingSymbolTable : public AcDbTypedSymbolTable<Record> {  // ours
  public:
    // Takes over a record made with new; it is then open for writing. The record takes the form that the drawing's
    // other records have; what the drawing's version cannot carry is left out. The table, and its section, are put into
    // a file that lacks them. On an error the record stays the caller's: eNotOpenForWrite, eAlreadyInDb,
    // eNullObjectPointer, eInvalidInput for a record without a name, eDuplicateRecordName.
    Acad::ErrorStatus add(Record* newRecord) {
        AcDbObjectId recordId;
        return this->addRecord(recordId, newRecord);
    }
    Acad::ErrorStatus add(AcDbObjectId& recordId, Record* newRecord) { return this->addRecord(recordId, newRecord); }

  protected:
    AcDbGrowingSymbolTable() = default;
};

// --- layers

class AcDbLayerTable;

class QRS_HOST_PORT AcDbLayerTableRecord : public AcDbSymbolTableRecord {
  public:
    using Table = AcDbLayerTable;
    ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord)
    // On, thawed, unlocked, plottable, white, Continuous, default lineweight.
    AcDbLayerTableRecord();

    bool isOff() const;
    Acad::ErrorStatus setIsOff(bool off);
    bool isFrozen() const;
    // eInvalidLayer when the current layer is to be frozen.
    Acad::ErrorStatus setIsFrozen(bool frozen);
    bool isLocked() const;
    Acad::ErrorStatus setIsLocked(bool locked);
    // Frozen in new viewports.
    bool VPDFLT() const;
    Acad::ErrorStatus setVPDFLT(bool frozen);

    AcCmColor color() const;
    // A palette or a true colour (eInvalidInput for others); on and off stay as they are. eNotApplicable for a true
    // colour in a drawing older than AC1018.
    Acad::ErrorStatus setColor(const AcCmColor& color);

    // kLnWtByLwDefault when the drawing says nothing.
    AcDb::LineWeight lineWeight() const;
    // eNotApplicable in a drawing older than AC1015; eInvalidInput for by-layer, by-block and unknown weights.
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight);

    bool isPlottable() const;
    // eNotApplicable in a drawing older than AC1015.
    Acad::ErrorStatus setIsPlottable(bool plottable);

    // Null when the drawing has no linetype of that name.
    AcDbObjectId linetypeObjectId() const;
    // eNullObjectId; eWrongObjectType when the id is no linetype; eWrongDatabase when it is another drawing's.
    Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId id);

  private:
    friend class AcDbSymbolTable;
    Acad::ErrorStatus setFlag(const char* call, int bit, bool on);
    std::wstring recordedName() const;
};

using AcDbLayerTableIterator = AcDbTypedTableIterator<AcDbLayerTableRecord>;

class QRS_HOST_PORT AcDbLayerTable : public AcDbGrowingSymbolTable<AcDbLayerTableRecord> {
  public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTable)
    AcDbLayerTable() = default;
};

// --- linetypes

class AcDbLinetypeTable;

// A pattern of dashes, gaps and dots. A dash may carry a text or a shape of a text style, which stands where the dash
// ends. Setters that take an index give eInvalidIndex outside 0 to numDashes() - 1, getters what they state. Lengths
// are in drawing units.
class QRS_HOST_PORT AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
  public:
    using Table = AcDbLinetypeTable;
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord)
    // A continuous line.
    AcDbLinetypeTableRecord();

    // The text that describes the linetype. Released with acutDelString.
    Acad::ErrorStatus comments(ACHAR*& text) const;
    Acad::ErrorStatus setComments(const ACHAR* text);
    // Length of one pattern.
    double patternLength() const;
    Acad::ErrorStatus setPatternLength(double length);
    // Whether the pattern is stretched so that both ends of a line show whole dashes.
    bool isScaledToFit() const;
    Acad::ErrorStatus setIsScaledToFit(bool scaledToFit);
    int numDashes() const;
    // Sets the number of dashes, 12 at most (eOutOfRange); new ones have length 0 and carry nothing.
    Acad::ErrorStatus setNumDashes(int count);
    // Dash lengths: negative ones are gaps, 0 is a dot. 0.0 for an index out of range.
    double dashLengthAt(int index) const;
    Acad::ErrorStatus setDashLengthAt(int index, double length);

    // --- what a dash carries
    //
    // Drawings older than AC1012 cannot hold it: eNotApplicable in one of those; a new record that carries something
    // loses it when such a drawing takes it, and its gap stays empty there. A dash that carries nothing answers
    // with the null id, 0, false or an empty text, and a scale of 1; setting something of it makes it carry a text.

    // The style whose font has the shape or writes the text; null as well in a record that no drawing holds yet.
    // eNullObjectId; eNullHandle when the style has no handle, by which linetypes refer to it; eWrongObjectType
    // when the id is no text style; eWrongDatabase when it is another drawing's.
    AcDbObjectId shapeStyleAt(int index) const;
    Acad::ErrorStatus setShapeStyleAt(int index, AcDbObjectId style);
    // The shape's number in its font; a text has none, so setting one takes the text away.
    int shapeNumberAt(int index) const;
    Acad::ErrorStatus setShapeNumberAt(int index, int shapeNumber);
    // Released with acutDelString. A dash carries a text or a shape: setting a text takes the shape away.
    Acad::ErrorStatus textAt(int index, ACHAR*& text) const;
    Acad::ErrorStatus setTextAt(int index, const ACHAR* text);
    // Height of the text where its style has no fixed height, otherwise a factor of that height.
    double shapeScaleAt(int index) const;
    Acad::ErrorStatus setShapeScaleAt(int index, double scale);
    // From the dash's end to the beginning of the text, along the line and to its left.
    AcGeVector2d shapeOffsetAt(int index) const;
    Acad::ErrorStatus setShapeOffsetAt(int index, const AcGeVector2d& offset);
    // Radians against the line's direction, or against the x axis when the dash says so.
    double shapeRotationAt(int index) const;
    Acad::ErrorStatus setShapeRotationAt(int index, double rotation);
    bool shapeIsUcsOrientedAt(int index) const;
    Acad::ErrorStatus setShapeIsUcsOrientedAt(int index, bool oriented);

  private:
    Acad::ErrorStatus checkDash(int index) const;
    Acad::ErrorStatus checkShape(int index) const;
    qrs::host::ObjectTags carrying(int index, int kind);
};

using AcDbLinetypeTableIterator = AcDbTypedTableIterator<AcDbLinetypeTableRecord>;

class QRS_HOST_PORT AcDbLinetypeTable : public AcDbGrowingSymbolTable<AcDbLinetypeTableRecord> {
  public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTable)
    AcDbLinetypeTable() = default;
};

// --- text styles

class AcDbTextStyleTable;

class QRS_HOST_PORT AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
  public:
    using Table = AcDbTextStyleTable;
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord)
    // No fixed height, width factor 1, upright, font file "txt".
    AcDbTextStyleTableRecord();

    // Font files. Released with acutDelString. A typeface (see setFont) stays when the file's name is the typeface
    // itself, or the outline font file ("arial.ttf") that the style names already; any other file takes its place.
    Acad::ErrorStatus fileName(ACHAR*& name) const;
    Acad::ErrorStatus setFileName(const ACHAR* name);
    Acad::ErrorStatus bigFontFileName(ACHAR*& name) const;
    Acad::ErrorStatus setBigFontFileName(const ACHAR* name);

    // The typeface of an outline font, which is drawn in place of the font files, with its character set (134: Chinese
    // in GB2312) and its pitch and family as the Windows interface numbers them, 0 to 255 each. The typeface is
    // released with acutDelString; it is empty, and the rest false and 0, in a style that has none.
    Acad::ErrorStatus font(ACHAR*& typeface, bool& bold, bool& italic, int& charset, int& pitchAndFamily) const;
    // An empty typeface takes the present one away. It is kept as extended data of the application "ACAD", which is
    // registered when it is not. eNotApplicable in a drawing older than AC1012; a new record loses its typeface when
    // such a drawing takes it.
    Acad::ErrorStatus setFont(const ACHAR* typeface, bool bold, bool italic, int charset, int pitchAndFamily);

    // Fixed height in drawing units, 0 when the height is asked for.
    double textSize() const;
    Acad::ErrorStatus setTextSize(double size);
    double xScale() const;
    // eInvalidInput unless positive.
    Acad::ErrorStatus setXScale(double factor);
    // Radians.
    double obliquingAngle() const;

  private:
    std::wstring typeface() const;
    std::wstring recordedName() const;
};

using AcDbTextStyleTableIterator = AcDbTypedTableIterator<AcDbTextStyleTableRecord>;

class QRS_HOST_PORT AcDbTextStyleTable : public AcDbGrowingSymbolTable<AcDbTextStyleTableRecord> {
  public:
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTable)
    AcDbTextStyleTable() = default;
};

// --- registered applications

class AcDbRegAppTable;

class QRS_HOST_PORT AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
  public:
    using Table = AcDbRegAppTable;
    ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord)
    AcDbRegAppTableRecord();
};

class QRS_HOST_PORT AcDbRegAppTable : public AcDbGrowingSymbolTable<AcDbRegAppTableRecord> {
  public:
    ACRX_DECLARE_MEMBERS(AcDbRegAppTable)
    AcDbRegAppTable() = default;
};

// --- dimension styles (names and text styles)

class AcDbDimStyleTable;

class QRS_HOST_PORT AcDbDimStyleTableRecord : public AcDbSymbolTableRecord {
  public:
    using Table = AcDbDimStyleTable;
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTableRecord)
    AcDbDimStyleTableRecord() = default;

    // The text style of its dimensions; null when it names none, as in drawings of R12.
    AcDbObjectId dimtxsty() const;
    // eNotApplicable in drawings of R12.
    Acad::ErrorStatus setDimtxsty(AcDbObjectId textStyle);
};

class QRS_HOST_PORT AcDbDimStyleTable : public AcDbTypedSymbolTable<AcDbDimStyleTableRecord> {
  public:
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTable)
    AcDbDimStyleTable() = default;
};

// --- blocks

class AcDbBlockTable;

// Walks the entities of a block, model space or paper space in drawing order. Vertices and attributes are passed over,
// as are entities erased meanwhile.
class QRS_HOST_PORT AcDbBlockTableRecordIterator {
  public:
    AcDbBlockTableRecordIterator(AcDbDatabase* database, std::uint32_t block);
    void start();
    bool done() const;
    void step();
    // eEndOfObject when done.
    Acad::ErrorStatus getEntityId(AcDbObjectId& entityId) const;
    Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const;

  private:
    enum class Space : std::uint8_t { All, Model, Paper };
    bool shows(std::uint32_t record) const;

    AcDbDatabase* database_;
    Space space_ = Space::All;
    std::uint32_t head_;     // section or block whose entities are walked; none when the block has no content
    std::uint32_t end_;      // the record that closes it
    std::uint32_t current_;  // end_ when done
};

class QRS_HOST_PORT AcDbBlockTableRecord : public AcDbSymbolTableRecord {
  public:
    using Table = AcDbBlockTable;
    ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord)
    // An empty block with its base point at the origin.
    AcDbBlockTableRecord();

    // The iterator is deleted by the caller.
    Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator) const;
    // Takes over an entity made with new, after the others; it is then open for writing. A drawing learns of a class
    // that an application brings by a record of its own. On an error the entity stays the caller's, and the drawing is
    // as it was: eNotOpenForWrite, eNullObjectPointer, eAlreadyInDb; eInvalidLayer or eKeyNotFound when the drawing
    // lacks the entity's layer or linetype; eNotApplicable for a class without an rxInit that was called, in a drawing
    // older than AC1015 for the class of an application, and for a block whose definition the file lacks.
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& outputId, AcDbEntity* entity);
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
    // True for model space and the paper spaces.
    bool isLayout() const;
    bool isFromExternalReference() const;
    // The file of an external reference as the drawing names it; empty for other blocks. Released with acutDelString.
    Acad::ErrorStatus pathName(ACHAR*& path) const;
    AcGePoint3d origin() const;
    // eNotApplicable for a block whose definition the file lacks.
    Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
    // The layout whose entities it holds; null when it holds none's.
    AcDbObjectId getLayoutId() const;
};

using AcDbBlockTableIterator = AcDbTypedTableIterator<AcDbBlockTableRecord>;

class QRS_HOST_PORT AcDbBlockTable : public AcDbTypedSymbolTable<AcDbBlockTableRecord> {
  public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTable)
    AcDbBlockTable() = default;

    // Takes over a block made with new, under the rules of the other tables' add; "*U" as a name is completed by a
    // number nobody has.
    Acad::ErrorStatus add(AcDbObjectId& recordId, AcDbBlockTableRecord* newRecord);
    Acad::ErrorStatus add(AcDbBlockTableRecord* newRecord);
};
