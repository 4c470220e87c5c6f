// The drawing database, and the objects and entities in it.
//
//     AcDbLayerTable* table = nullptr;
//     if (acdbHostApplicationServices()->workingDatabase()->getSymbolTable(table, AcDb::kForRead) == Acad::eOk) {
//         AcDbObjectId id;
//         table->getAt(L"PIPE", id);
//         table->close();
//     }
//
// Objects stay in the drawing file; an open object reads and writes its tags there. Setting a value that an object
// already has leaves the file untouched.
#pragma once

#include <memory>

#include "acadstrc.h"
#include "acdb.h"
#include "adesk.h"
#include "adsdef.h"
#include "dbcolor.h"
#include "dbhandle.h"
#include "dbid.h"
#include "rxobject.h"

class AcDbBlockTable;
class AcDbDatabase;
class AcDbDictionary;
class AcDbDimStyleTable;
class AcDbDxfFiler;
class AcDbIdMapping;
class AcDbLayerTable;
class AcDbLinetypeTable;
class AcDbRegAppTable;
class AcDbSymbolTable;
class AcDbTextStyleTable;
class AcGeMatrix3d;
class AcGiWorldDraw;

namespace qrs::host {
class DatabaseState;
class ObjectTags;
class OpenObjects;
struct DetachedTags;
}  // namespace qrs::host

// An object of a drawing. Either it lies in a database and is open (by acdbOpenObject), or it was made with new and
// belongs to its maker until a table or container takes it over. Getters need it open for reading or writing, setters
// open for writing (eNotOpenForWrite otherwise); an object outside a database counts as open for writing.
class QRS_HOST_PORT AcDbObject : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcDbObject)
    ~AcDbObject() override;
    AcDbObject(const AcDbObject&) = delete;
    AcDbObject& operator=(const AcDbObject&) = delete;

    // Null until the object lies in a database.
    AcDbObjectId objectId() const;
    AcDbObjectId id() const { return objectId(); }
    // What holds it: the table of a record, the block of an entity. Null when unknown.
    AcDbObjectId ownerId() const;
    AcDbDatabase* database() const { return database_; }
    // Null in drawings without handles.
    void getAcDbHandle(AcDbHandle& handle) const;

    // Ends one opening; the pointer is not to be used after the last. eNotInDatabase for an object outside a database
    // (delete it); eNoDatabase when the drawing was closed meanwhile.
    Acad::ErrorStatus close();
    // From the only reader to the writer. eWasOpenForWrite when it is already; eWasOpenForRead when others read.
    Acad::ErrorStatus upgradeOpen();
    // eNotOpenForWrite when it is not open for writing.
    Acad::ErrorStatus downgradeOpen();
    // Takes the object, with what belongs to it alone, out of the drawing. erase(false) brings it back with what went
    // along; eDuplicateRecordName when another record has its name by then, ePermanentlyErased when it cannot come
    // back.
    Acad::ErrorStatus erase(bool erasing = true);

    bool isErased() const;
    bool isReadEnabled() const { return readers_ > 0 || writer_; }
    bool isWriteEnabled() const { return writer_; }

    // The chain of extended data of one application (1001 with its name, then the items), of all applications for null.
    // Released with acutRelRb. Null when there is none.
    resbuf* xData(const ACHAR* regAppName = nullptr) const;
    // Replaces the data of each application the chain names by the items after its 1001; a 1001 with nothing after
    // removes that application's data; other applications' stay. eRegappIdNotFound when an application is not in the
    // table "APPID", eBadDxfSequence when the chain does not open with 1001 or its brackets (1002) do not match,
    // eInvalidInput for a type that is no extended data or a text of more than 255 characters, eXdataSizeExceeded
    // when all data of the object would need more than 16383 bytes. Nothing is changed then.
    Acad::ErrorStatus setXData(const resbuf* chain);

    // The dictionary that belongs to this object; null when it has none.
    AcDbObjectId extensionDictionary() const;
    // Gives it an empty one unless it has one. eNotApplicable in a drawing older than AC1012.
    Acad::ErrorStatus createExtensionDictionary();
    // Takes it away when nothing is in it. eKeyNotFound when there is none, eNotApplicable when it is not empty.
    Acad::ErrorStatus releaseExtensionDictionary();

    // What a class that an application brings keeps in drawing files. dxfInFields takes its values from the object's
    // tags, dxfOutFields hands them out; both call those of their parent first and give filerStatus(). Tags that all
    // entities share, and extended data, are none of their business. An object is read when one of its getters first
    // calls assertReadEnabled, and written when it is closed after a setter has called assertWriteEnabled.
    virtual Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer);
    virtual Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const;
    // What getters begin with.
    void assertReadEnabled() const;
    // What setters begin with, once they know that the object is open for writing: being wrong about that is a
    // programmer's error and ends the program.
    void assertWriteEnabled();
    // True from assertWriteEnabled on until the object is written.
    bool isModified() const { return modified_; }

  protected:
    AcDbObject();

    qrs::host::ObjectTags tags() const;
    // Gives a new object tags of its own, until a drawing takes it over.
    void setOwnTags(qrs::host::DetachedTags tags);
    // The same, made only when the object is not about to stand for one of a drawing.
    void setOwnTags(qrs::host::DetachedTags (*make)());
    // eOk when setters may change the object.
    Acad::ErrorStatus checkWrite() const;
    std::uint32_t record() const { return record_; }  // ours

  private:
    friend class qrs::host::OpenObjects;

    AcDbDatabase* database_ = nullptr;
    std::uint32_t record_;
    std::uint16_t readers_ = 0;
    bool writer_ = true;
    bool orphan_ = false;  // the drawing was closed while the object was open
    mutable bool fieldsRead_ = false;
    bool modified_ = false;
    std::unique_ptr<qrs::host::DetachedTags> own_;
};

// What can be seen in a drawing. A new entity takes the names of its layer and linetype from the working database; the
// block that takes it over must have them in its own drawing.
class QRS_HOST_PORT AcDbEntity : public AcDbObject {
  public:
    static AcRxClass* desc();
    // Tells the kind of entity by name() ("AcDbLine") and dxfName() ("LINE") also for kinds without a C++ class.
    AcRxClass* isA() const override;
    static AcDbEntity* cast(const AcRxObject* object) {
        return object && object->isKindOf(desc()) ? static_cast<AcDbEntity*>(const_cast<AcRxObject*>(object)) : nullptr;
    }
    AcDbEntity() = default;

    AcDbObjectId blockId() const { return ownerId(); }

    // The layer's name, as the layer table spells it; as the entity spells it when the table has no such layer. "0" for
    // a new entity. Released with acutDelString.
    ACHAR* layer() const;
    // Null when the table has no such layer.
    AcDbObjectId layerId() const;
    // eKeyNotFound (by name) and eInvalidLayer (by id) when there is no such layer. doSubents: the vertices of a
    // polyline follow; attributes of a block reference keep their own layer.
    Acad::ErrorStatus setLayer(const ACHAR* newLayer, bool doSubents = true);
    Acad::ErrorStatus setLayer(AcDbObjectId newLayer, bool doSubents = true);

    AcCmColor color() const;
    // eNotApplicable for a true colour in a drawing older than AC1018.
    Acad::ErrorStatus setColor(const AcCmColor& color, bool doSubents = true);
    // 0 by block, 1 to 255 palette, 256 by layer; of a true colour the index written beside it.
    Adesk::UInt16 colorIndex() const;
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 index, bool doSubents = true);

    AcDb::Visibility visibility() const;
    Acad::ErrorStatus setVisibility(AcDb::Visibility visibility, bool doSubents = true);

    // The linetype's name ("ByLayer" when nothing else is said). Released with acutDelString.
    ACHAR* linetype() const;
    // Null when the table has no such linetype.
    AcDbObjectId linetypeId() const;
    Acad::ErrorStatus setLinetype(const ACHAR* newLinetype, bool doSubents = true);
    Acad::ErrorStatus setLinetype(AcDbObjectId newLinetype, bool doSubents = true);

    AcDb::LineWeight lineWeight() const;
    // eNotApplicable in a drawing older than AC1015.
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight, bool doSubents = true);

    // Moves, turns, scales or mirrors it with what belongs to it (vertices, attributes). eCannotScaleNonUniformly for a
    // transformation that changes angles, eNotApplicable for a kind whose coordinates are not known, and for a
    // dimension that is to be more than moved; the entity is then as it was.
    virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& transformation);

    // Draws it by subWorldDraw.
    Adesk::Boolean worldDraw(AcGiWorldDraw* mode);

  protected:
    // What a class that an application brings looks like (acgi.h); kTrue. Drawing files from R2000 on carry the shapes
    // for programs that do not know the class: they are drawn into them when an entity was changed. By itself nothing.
    virtual Adesk::Boolean subWorldDraw(AcGiWorldDraw* mode);

  private:
    template <typename Change>
    Acad::ErrorStatus changeCommon(bool doSubents, Change&& change);
};

// A drawing held open.
class QRS_HOST_PORT AcDbDatabase : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcDbDatabase)
    // buildDefaultDrawing: a new drawing with layer "0" and its model and paper space; otherwise empty, to be filled by
    // dxfIn. noDocument: accepted, a database belongs to a document only when the editor opens it for one.
    explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    // Objects still open lose their drawing; closing them is all that may be done with them.
    ~AcDbDatabase() override;
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;

    // Reads a drawing in place of the present one; no object may be open (eWasOpenForRead). eFileNotFound, eBadDxfFile;
    // the database is then as it was. logFileName: when given, what went wrong is written there.
    Acad::ErrorStatus dxfIn(const ACHAR* fileName, const ACHAR* logFileName = nullptr);
    // Writes the drawing; a file of that name stays as ".bak". eFileAccessErr when it cannot, the old file then stays.
    Acad::ErrorStatus dxfOut(const ACHAR* fileName);
    // The path the drawing was read from or last written to, inner form; empty for a new one. Valid as long as the
    // database keeps its name.
    Acad::ErrorStatus getFilename(const ACHAR*& fileName) const;
    // The form of the drawing file, which saving keeps: for a version between two known ones the older of them.
    AcDb::AcDbDwgVersion originalFileVersion() const;

    // The symbol tables. A table the file lacks is there all the same, with nothing in it.
    Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbRegAppTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode);
    AcDbObjectId layerTableId() const;

    // Opened for writing, it is put into a drawing that lacks it. eNotApplicable in a drawing older than AC1012, which
    // cannot hold one; eKeyNotFound for another that has none, opened for reading.
    Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode);
    AcDbObjectId namedObjectsDictionaryId() const;

    // The object with a handle. eUnknownHandle when there is none; eNullHandle for the null one. createIfNotFound is
    // accepted and of no effect: an id without an object has no use here.
    Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound, const AcDbHandle& handle,
                                      Adesk::UInt32 xRefId = 0);

    // How many objects need each of these records: entities that lie on a layer or name a linetype, a text style or a
    // block, in all spaces and block definitions, vertices and attributes included; and every object whose tags point
    // to the record as one it needs. Lists of layers that viewports freeze, and what names a record only to be found
    // again (dictionaries, saved layer states, extended data), do not count. counts: one number per id, each counted
    // anew. A record that one object needs twice counts once for it. eNullObjectPointer; eWrongDatabase for an id of
    // another drawing; eInvalidInput for one that is no object. One pass over the drawing however many ids there are.
    Acad::ErrorStatus countHardReferences(const AcDbObjectIdArray& ids, Adesk::UInt32* counts);

    // Copies entities into a block of this drawing, after what lies in it, every tag kept; handles, owners and the
    // space they lie in follow. Vertices and attributes come along, extension dictionaries and groups' memberships do
    // not. idMap tells the copies. eNullObjectId; eWrongDatabase; eWrongObjectType for what is no entity of its own or
    // no block; eNotApplicable for a block the file has no definition of. Nothing is copied then.
    Acad::ErrorStatus deepCloneObjects(const AcDbObjectIdArray& ids, AcDbObjectId owner, AcDbIdMapping& idMap);

    // eKeyNotFound when the drawing has none (old formats).
    Acad::ErrorStatus getLayoutDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode);
    AcDbObjectId layoutDictionaryId() const;

    // The current layer; layer "0" when the header names none that exists. Null when that is missing too.
    AcDbObjectId clayer() const;
    // eInvalidLayer when the id is no layer of this drawing, or the layer is frozen.
    Acad::ErrorStatus setClayer(AcDbObjectId layer);
    // Layer "0"; null when the drawing does not define it.
    AcDbObjectId layerZero() const;
    // True in model space.
    bool tilemode() const;
    double ltscale() const;
    // eInvalidInput unless positive.
    Acad::ErrorStatus setLtscale(double scale);
    // Of sizes on paper: drawing units per millimetre, in metric drawings.
    double dimscale() const;

#ifndef QRS_PUBLISHED_ONLY
    // What the host keeps for it; nothing that plug-ins could use.
    qrs::host::DatabaseState* hostState() const {
        return state_.get();
    }
#endif  // QRS_PUBLISHED_ONLY

  private:
    std::unique_ptr<qrs::host::DatabaseState> state_;
};

// Opens an object. It is closed with close() by the pointer's holder. eNullObjectId; eNoDatabase when its drawing is
// closed; eInvalidIndex when the id is no object; eWasErased unless openErased; eWasOpenForWrite, eWasOpenForRead,
// eAtMaxReaders (256) when others have it open (opening for notification counts as reading); eNotThatKindOfClass. The
// pointer is null unless eOk.
QRS_HOST_PORT Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                                   bool openErased = false);
inline Acad::ErrorStatus acdbOpenObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                        bool openErased = false) {
    return acdbOpenAcDbObject(object, id, mode, openErased);
}
template <class Object>
Acad::ErrorStatus acdbOpenObject(Object*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErased = false) {
    object = nullptr;
    AcDbObject* opened = nullptr;
    const Acad::ErrorStatus status = acdbOpenAcDbObject(opened, id, mode, openErased);
    if (status != Acad::eOk) return status;
    object = Object::cast(opened);
    if (object) return Acad::eOk;
    opened->close();
    return Acad::eNotThatKindOfClass;
}

// Names of the older function interface.
// eNullObjectId for an empty name, eInvalidInput when it names no object of an open drawing.
QRS_HOST_PORT Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& objectId, const ads_name name);
// eNullObjectId for the null id; the name is then cleared.
QRS_HOST_PORT Acad::ErrorStatus acdbGetAdsName(ads_name name, AcDbObjectId objectId);
