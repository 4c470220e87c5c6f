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
    // Empty.
    AcDbDictionary();

    // Names are compared without regard to case. eKeyNotFound when there is none.
    Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObjectId& entryId) const;
    // Puts an object under a name, in the place of another that has it (which is erased). newValue was made with new;
    // the drawing takes it over, with a handle, and it is then open for writing. eNotOpenForWrite, eNullObjectPointer,
    // eAlreadyInDb for an object of a drawing; eInvalidInput for an empty name; eNotApplicable for a class that drawing
    // files have no name for, and in a drawing older than AC1012. The object then stays the caller's.
    Acad::ErrorStatus setAt(const ACHAR* entryName, AcDbObject* newValue, AcDbObjectId& entryId);
    // Takes an entry out; its object goes with it, and what that owns. eKeyNotFound.
    Acad::ErrorStatus remove(const ACHAR* entryName);
    // The iterator is deleted by the caller; null when the dictionary is not open.
    AcDbDictionaryIterator* newIterator() const;

  private:
    std::vector<std::pair<std::wstring, AcDbObjectId>> entries() const;
};
