// Pointers that close what they opened. The host's own sources may leave out the mode for reading.
//
//     AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
//     if (layer.openStatus() == Acad::eOk) layer->setIsOff(false);
#pragma once

#include "dbmain.h"
#include "dbsymtb.h"

template <class Object>
class AcDbObjectPointer {
  public:
    AcDbObjectPointer() = default;
    explicit AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
        open(id, mode, openErased);
    }
#ifndef QRS_PUBLISHED_ONLY
    explicit AcDbObjectPointer(AcDbObjectId id) : AcDbObjectPointer(id, AcDb::kForRead) {}
#endif  // QRS_PUBLISHED_ONLY
    ~AcDbObjectPointer() {
        close();
    }
    AcDbObjectPointer(const AcDbObjectPointer&) = delete;
    AcDbObjectPointer& operator=(const AcDbObjectPointer&) = delete;

    // Closes what it holds, then opens. The status is kept for openStatus().
    Acad::ErrorStatus open(AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
        close();
        return status_ = acdbOpenObject(object_, id, mode, openErased);
    }
    // Takes over an object that is open or was made with new.
    Acad::ErrorStatus acquire(Object*& object) {
        close();
        object_ = object;
        object = nullptr;
        return status_ = object_ ? Acad::eOk : Acad::eNullObjectPointer;
    }
    // Hands the object over; nothing is closed.
    Acad::ErrorStatus release(Object*& object) {
        object = object_;
        object_ = nullptr;
        status_ = Acad::eNullObjectPointer;
        return object ? Acad::eOk : Acad::eNullObjectPointer;
    }
    // A new object outside any database; deleted with the pointer unless a table takes it over.
    Acad::ErrorStatus create() {
        close();
        object_ = new Object;
        return status_ = Acad::eOk;
    }
    // Closes the object, deletes one that lies in no database.
    Acad::ErrorStatus close() {
        Object* object = object_;
        object_ = nullptr;
        status_ = Acad::eNullObjectPointer;
        if (!object) return Acad::eOk;
        const Acad::ErrorStatus status = object->close();
        if (status != Acad::eNotInDatabase) return status;
        delete object;
        return Acad::eOk;
    }

    Acad::ErrorStatus openStatus() const {
        return status_;
    }
    // A pointer that is const itself hands out an object that is.
    Object* object() {
        return object_;
    }
    const Object* object() const {
        return object_;
    }
    Object* operator->() {
        return object_;
    }
    const Object* operator->() const {
        return object_;
    }
    operator Object*() {
        return object_;
    }
    operator const Object*() const {
        return object_;
    }

  protected:
    Object* object_ = nullptr;
    Acad::ErrorStatus status_ = Acad::eNullObjectPointer;
};

using AcDbEntityPointer = AcDbObjectPointer<AcDbEntity>;

// A symbol table of a database.
template <class Table>
class AcDbSymbolTablePointer : public AcDbObjectPointer<Table> {
  public:
    AcDbSymbolTablePointer() = default;
    explicit AcDbSymbolTablePointer(AcDbDatabase* database, AcDb::OpenMode mode) { open(database, mode); }
#ifndef QRS_PUBLISHED_ONLY
    explicit AcDbSymbolTablePointer(AcDbDatabase* database) {
        open(database, AcDb::kForRead);
    }
#endif  // QRS_PUBLISHED_ONLY
    using AcDbObjectPointer<Table>::open;
    // eNoDatabase for null.
    Acad::ErrorStatus open(AcDbDatabase* database, AcDb::OpenMode mode) {
        this->close();
        return this->status_ = database ? database->getSymbolTable(this->object_, mode) : Acad::eNoDatabase;
    }
};

// A record of a symbol table by its name.
template <class Record>
class AcDbSymbolTableRecordPointer : public AcDbObjectPointer<Record> {
  public:
    AcDbSymbolTableRecordPointer() = default;
    explicit AcDbSymbolTableRecordPointer(AcDbObjectId id, AcDb::OpenMode mode) : AcDbObjectPointer<Record>(id, mode) {}
    AcDbSymbolTableRecordPointer(const ACHAR* name, AcDbDatabase* database, AcDb::OpenMode mode) {
        open(name, database, mode);
    }
#ifndef QRS_PUBLISHED_ONLY
    explicit AcDbSymbolTableRecordPointer(AcDbObjectId id) : AcDbObjectPointer<Record>(id, AcDb::kForRead) {}
    AcDbSymbolTableRecordPointer(const ACHAR* name, AcDbDatabase* database) {
        open(name, database, AcDb::kForRead);
    }
#endif  // QRS_PUBLISHED_ONLY
    using AcDbObjectPointer<Record>::open;
    // eKeyNotFound when the table has no record of that name.
    Acad::ErrorStatus open(const ACHAR* name, AcDbDatabase* database, AcDb::OpenMode mode) {
        this->close();
        const AcDbSymbolTablePointer<typename Record::Table> table(database, AcDb::kForRead);
        if (table.openStatus() != Acad::eOk) return this->status_ = table.openStatus();
        return this->status_ = table->getAt(name, this->object_, mode);
    }
};

using AcDbBlockTablePointer = AcDbSymbolTablePointer<AcDbBlockTable>;
using AcDbLayerTablePointer = AcDbSymbolTablePointer<AcDbLayerTable>;
using AcDbLinetypeTablePointer = AcDbSymbolTablePointer<AcDbLinetypeTable>;
using AcDbRegAppTablePointer = AcDbSymbolTablePointer<AcDbRegAppTable>;
using AcDbTextStyleTablePointer = AcDbSymbolTablePointer<AcDbTextStyleTable>;
using AcDbBlockTableRecordPointer = AcDbSymbolTableRecordPointer<AcDbBlockTableRecord>;
using AcDbLayerTableRecordPointer = AcDbSymbolTableRecordPointer<AcDbLayerTableRecord>;
using AcDbLinetypeTableRecordPointer = AcDbSymbolTableRecordPointer<AcDbLinetypeTableRecord>;
using AcDbTextStyleTableRecordPointer = AcDbSymbolTableRecordPointer<AcDbTextStyleTableRecord>;
