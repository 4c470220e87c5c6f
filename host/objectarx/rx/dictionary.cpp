// Dictionaries of objects by name, and the system registry.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "rxdict.h"

ACRX_DEFINE_MEMBERS(AcRxDictionary, AcRxObject)

namespace {

struct Entry {
    Adesk::UInt32 id;
    std::wstring key;
    AcRxObject* object;
};

class EntryIterator : public AcRxDictionaryIterator {
  public:
    explicit EntryIterator(std::vector<Entry> entries) : entries_(std::move(entries)) {}
    bool done() const override { return position_ >= entries_.size(); }
    bool next() override {
        if (!done()) ++position_;
        return !done();
    }
    AcRxObject* object() const override { return done() ? nullptr : entries_[position_].object; }
    const ACHAR* key() const override { return done() ? nullptr : entries_[position_].key.c_str(); }
    Adesk::UInt32 id() const override { return done() ? 0 : entries_[position_].id; }

  private:
    std::vector<Entry> entries_;
    std::size_t position_ = 0;
};

}  // namespace

struct AcRxDictionary::Entries {
    std::vector<Entry> list;
    Adesk::UInt32 lastId = 0;

    const Entry* find(const ACHAR* key) const {
        if (!key) return nullptr;
        const auto found = std::find_if(list.begin(), list.end(), [&](const Entry& entry) { return entry.key == key; });
        return found == list.end() ? nullptr : &*found;
    }
    const Entry* find(Adesk::UInt32 id) const {
        const auto found = std::find_if(list.begin(), list.end(), [&](const Entry& entry) { return entry.id == id; });
        return found == list.end() ? nullptr : &*found;
    }
    AcRxObject* take(const Entry* entry) {
        if (!entry) return nullptr;
        AcRxObject* object = entry->object;
        list.erase(list.begin() + (entry - list.data()));
        return object;
    }
};

AcRxDictionary::AcRxDictionary() : entries_(std::make_unique<Entries>()) {}
AcRxDictionary::~AcRxDictionary() = default;

AcRxObject* AcRxDictionary::at(const ACHAR* key) const {
    Adesk::UInt32 id = 0;
    return at(key, id);
}

AcRxObject* AcRxDictionary::at(const ACHAR* key, Adesk::UInt32& id) const {
    const Entry* entry = entries_->find(key);
    if (!entry) return nullptr;
    id = entry->id;
    return entry->object;
}

AcRxObject* AcRxDictionary::at(Adesk::UInt32 id) const {
    const Entry* entry = entries_->find(id);
    return entry ? entry->object : nullptr;
}

AcRxObject* AcRxDictionary::atPut(const ACHAR* key, AcRxObject* object, Adesk::UInt32& id) {
    if (!key) return nullptr;
    if (const Entry* entry = entries_->find(key)) {
        id = entry->id;
        return std::exchange(entries_->list[static_cast<std::size_t>(entry - entries_->list.data())].object, object);
    }
    id = ++entries_->lastId;
    entries_->list.push_back(Entry{id, key, object});
    return nullptr;
}

AcRxObject* AcRxDictionary::remove(const ACHAR* key) {
    return entries_->take(entries_->find(key));
}

AcRxObject* AcRxDictionary::remove(Adesk::UInt32 id) {
    return entries_->take(entries_->find(id));
}

bool AcRxDictionary::has(const ACHAR* key) const {
    return entries_->find(key) != nullptr;
}

bool AcRxDictionary::has(Adesk::UInt32 id) const {
    return entries_->find(id) != nullptr;
}

Adesk::UInt32 AcRxDictionary::idAt(const ACHAR* key) const {
    const Entry* entry = entries_->find(key);
    return entry ? entry->id : 0;
}

const ACHAR* AcRxDictionary::keyAt(Adesk::UInt32 id) const {
    const Entry* entry = entries_->find(id);
    return entry ? entry->key.c_str() : nullptr;
}

Adesk::UInt32 AcRxDictionary::numEntries() const {
    return static_cast<Adesk::UInt32>(entries_->list.size());
}

AcRxDictionaryIterator* AcRxDictionary::newIterator() const {
    return new EntryIterator(entries_->list);
}

AcRxDictionary* acrxSysRegistry() {
    static AcRxDictionary registry;
    return &registry;
}
