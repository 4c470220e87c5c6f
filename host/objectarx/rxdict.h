// Dictionaries of objects by name, and the one in which the editor keeps its own services.
//
//     AcEditor* editor = AcEditor::cast(acrxSysRegistry()->at(L"AcEditor"));
#pragma once

#include <map>
#include <string>

#include "rxobject.h"

// Names are compared exactly. Objects are not owned.
class QRS_HOST_PORT AcRxDictionary : public AcRxObject {
  public:
    ACRX_DECLARE_MEMBERS(AcRxDictionary);
    AcRxDictionary();
    ~AcRxDictionary() override;
    AcRxDictionary(const AcRxDictionary&) = delete;
    AcRxDictionary& operator=(const AcRxDictionary&) = delete;

    // Null when there is no entry of that name.
    AcRxObject* at(const ACHAR* key) const;
    // Enters the object under the name, in place of an earlier one, which is returned (else null). id: the number of
    // the entry, from 1.
    AcRxObject* atPut(const ACHAR* key, AcRxObject* object, Adesk::UInt32& id);
    // Takes the entry out and returns its object; null when there is none.
    AcRxObject* remove(const ACHAR* key);

  private:
    struct Entry {
        AcRxObject* object = nullptr;
        Adesk::UInt32 id = 0;
    };
    std::map<std::wstring, Entry> entries_;
    Adesk::UInt32 lastId_ = 0;
};

// Holds "ACAD_REGISTERED_COMMANDS" (AcEdCommandStack), "AcEditor" and "DynamicLinker" while an application lives.
QRS_HOST_PORT AcRxDictionary* acrxSysRegistry();
