// Dictionaries: objects by name.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "dbmain.h"

class AcDbDictionary;

// Walks the entries a dictionary had when the walk started, in the order of the file.
class QRS_HOST_PORT AcDbDictionaryIterator {
  public:
    // Valid until the iterator is deleted; null when done.
    const ACHAR* name() const;
    AcDbObjectId objectId() const;
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode = AcDb::kForRead) const;
    bool done() const { return position_ >= entries_.size(); }
    // False at the end.
    bool next();

  private:
    friend class AcDbDictionary;
    AcDbDictionaryIterator() = default;
    std::vector<std::pair<std::wstring, AcDbObjectId>> entries_;
    std::size_t position_ = 0;
};

class QRS_HOST_PORT AcDbDictionary : public AcDbObject {
  public:
    ACRX_DECLARE_MEMBERS(AcDbDictionary)
    AcDbDictionary() = default;

    // Names are compared without regard to case. eKeyNotFound when there is none.
    Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObjectId& entryId) const;
    Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObject*& entry, AcDb::OpenMode mode) const;
    bool has(const ACHAR* entryName) const;
    bool has(AcDbObjectId entryId) const;
    Adesk::UInt32 numEntries() const;
    // The iterator is deleted by the caller; null when the dictionary is not open.
    AcDbDictionaryIterator* newIterator() const;

  private:
    std::vector<std::pair<std::wstring, AcDbObjectId>> entries() const;
};
