// Dictionaries of objects by name, and the one in which the editor keeps its own services.
//
//     AcEditor* editor = AcEditor::cast(acrxSysRegistry()->at(L"AcEditor"));
#pragma once

#include <memory>

#include "rxobject.h"

class AcRxIterator : public AcRxObject {
  public:
    virtual bool done() const = 0;
    // False when there is no further entry.
    virtual bool next() = 0;
    virtual AcRxObject* object() const = 0;
};

class AcRxDictionaryIterator : public AcRxIterator {
  public:
    virtual const ACHAR* key() const = 0;
    virtual Adesk::UInt32 id() const = 0;
};

// Names are compared exactly. Objects are not owned.
class QRS_HOST_PORT AcRxDictionary : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcRxDictionary);
    AcRxDictionary();
    ~AcRxDictionary() override;
    AcRxDictionary(const AcRxDictionary&) = delete;
    AcRxDictionary& operator=(const AcRxDictionary&) = delete;

    // Null when there is no entry of that name or id.
    AcRxObject* at(const ACHAR* key) const;
    AcRxObject* at(const ACHAR* key, Adesk::UInt32& id) const;
    AcRxObject* at(Adesk::UInt32 id) const;
    // Enters the object under the name, in place of an earlier one, which is returned (else null).
    AcRxObject* atPut(const ACHAR* key, AcRxObject* object, Adesk::UInt32& id);
    // Takes the entry out and returns its object; null when there is none.
    AcRxObject* remove(const ACHAR* key);
    AcRxObject* remove(Adesk::UInt32 id);
    bool has(const ACHAR* key) const;
    bool has(Adesk::UInt32 id) const;
    // 0 and null when there is no such entry.
    Adesk::UInt32 idAt(const ACHAR* key) const;
    const ACHAR* keyAt(Adesk::UInt32 id) const;
    Adesk::UInt32 numEntries() const;
    // By order of entering; the caller deletes it. It sees the entries of the moment it was made.
    AcRxDictionaryIterator* newIterator() const;

  private:
    struct Entries;
    std::unique_ptr<Entries> entries_;
};

// Holds "ACAD_REGISTERED_COMMANDS" (AcEdCommandStack), "AcEditor" and "DynamicLinker" while an application lives.
QRS_HOST_PORT AcRxDictionary* acrxSysRegistry();
