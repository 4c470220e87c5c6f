// What is entered under a name, and the system registry itself.
#include "rxdict.h"

#include <utility>

ACRX_DEFINE_MEMBERS(AcRxDictionary, AcRxObject)

AcRxDictionary::AcRxDictionary() = default;
AcRxDictionary::~AcRxDictionary() = default;

AcRxObject* AcRxDictionary::at(const ACHAR* key) const {
    const auto found = key ? entries_.find(key) : entries_.end();
    return found == entries_.end() ? nullptr : found->second.object;
}

AcRxObject* AcRxDictionary::atPut(const ACHAR* key, AcRxObject* object, Adesk::UInt32& id) {
    if (!key) return nullptr;
    Entry& entry = entries_[key];
    if (entry.id == 0) entry.id = ++lastId_;
    id = entry.id;
    return std::exchange(entry.object, object);
}

AcRxObject* AcRxDictionary::remove(const ACHAR* key) {
    AcRxObject* const object = at(key);
    if (key) entries_.erase(key);
    return object;
}

AcRxDictionary* acrxSysRegistry() {
    static AcRxDictionary registry;
    return &registry;
}
