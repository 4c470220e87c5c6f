// Keeps selection sets by their names: acedSSAdd, acedSSName and their kin.
#include "host/editor/selectionsets.h"

#include "acdbads.h"
#include "acedads.h"
#include "host/editor/documents.h"
#include "host/editor/session.h"

namespace qrs::host::ed {

namespace {

// Second half of the name of a selection set; names of entities have no such one.
constexpr std::int64_t kSetMark = -1;

}  // namespace

std::unordered_set<std::int64_t>& SelectionSet::members() const {
    if (!indexed_) {
        members_.reserve(static_cast<std::size_t>(ids_.length()));
        for (const AcDbObjectId& id : ids_)
            members_.insert(id.asOldId());
        indexed_ = true;
    }
    return members_;
}

const AcDbObjectIdArray& SelectionSet::ids() const {
    if (holdsRemoved_) {
        AcDbObjectIdArray rest;
        for (const AcDbObjectId& id : ids_)
            if (has(id)) rest.append(id);
        ids_ = std::move(rest);
        holdsRemoved_ = false;
    }
    return ids_;
}

bool SelectionSet::add(AcDbObjectId id) {
    // One that was removed and comes back goes to the end.
    if (holdsRemoved_) ids();
    if (!members().insert(id.asOldId()).second) return false;
    ids_.append(id);
    return true;
}

bool SelectionSet::remove(AcDbObjectId id) {
    if (members().erase(id.asOldId()) == 0) return false;
    holdsRemoved_ = true;
    return true;
}

void SelectionSets::make(AcDbObjectIdArray ids, ads_name name) {
    name[0] = ++last_;
    name[1] = kSetMark;
    sets_.emplace(last_, SelectionSet(std::move(ids)));
}

SelectionSet* SelectionSets::find(const ads_name name) {
    return name && name[1] == kSetMark ? find(name[0]) : nullptr;
}

SelectionSet* SelectionSets::find(std::int64_t number) {
    const auto found = sets_.find(number);
    return found == sets_.end() ? nullptr : &found->second;
}

bool SelectionSets::release(const ads_name name) {
    return name && name[1] == kSetMark && sets_.erase(name[0]) != 0;
}

void SelectionSets::forget(std::uint32_t database) {
    for (auto& [number, set] : sets_) {
        AcDbObjectIdArray rest;
        for (const AcDbObjectId& id : set.ids())
            if (id.databaseNumber() != database) rest.append(id);
        set = SelectionSet(std::move(rest));
    }
}

}  // namespace qrs::host::ed

using qrs::host::ed::SelectionSet;
using qrs::host::ed::Session;

namespace {

SelectionSet* findSet(const ads_name name) {
    Session* session = Session::current();
    return session ? session->sets.find(name) : nullptr;
}

bool entityOf(const ads_name name, AcDbObjectId& id) {
    return name && acdbGetObjectId(id, name) == Acad::eOk;
}

bool isNil(const ads_name name) {
    return !name || ads_name_nil(name);
}

}  // namespace

int acedSSLength(const ads_name set, Adesk::Int32* length) {
    const SelectionSet* found = findSet(set);
    if (!found || !length) return RTERROR;
    *length = found->ids().length();
    return RTNORM;
}

int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity) {
    const SelectionSet* found = findSet(set);
    if (!found || !entity || index < 0 || index >= found->ids().length()) return RTERROR;
    return acdbGetAdsName(entity, found->ids()[index]) == Acad::eOk ? RTNORM : RTERROR;
}

int acedSSFree(const ads_name set) {
    Session* session = Session::current();
    return session && session->sets.release(set) ? RTNORM : RTERROR;
}

int acedSSAdd(const ads_name entity, const ads_name set, ads_name result) {
    Session* session = Session::current();
    if (!session || !result) return RTERROR;
    AcDbObjectId id;
    if (!isNil(entity) && !entityOf(entity, id)) return RTERROR;
    if (isNil(set)) {
        AcDbObjectIdArray ids;
        if (!id.isNull()) ids.append(id);
        session->sets.make(ids, result);
        return RTNORM;
    }
    SelectionSet* found = session->sets.find(set);
    if (!found) return RTERROR;
    if (!id.isNull()) found->add(id);
    ads_name_set(set, result);
    return RTNORM;
}

int acedSSDel(const ads_name entity, const ads_name set) {
    SelectionSet* found = findSet(set);
    AcDbObjectId id;
    return found && entityOf(entity, id) && found->remove(id) ? RTNORM : RTERROR;
}

int acedSSMemb(const ads_name entity, const ads_name set) {
    const SelectionSet* found = findSet(set);
    AcDbObjectId id;
    return found && entityOf(entity, id) && found->has(id) ? RTNORM : RTERROR;
}

int acedSSGetFirst(resbuf** gripSet, resbuf** pickFirstSet) {
    Session* session = Session::current();
    AcApDocument* document = session ? session->documents.curDocument() : nullptr;
    if (gripSet) *gripSet = nullptr;
    if (!document || !pickFirstSet) return RTERROR;
    *pickFirstSet = nullptr;
    const AcDbObjectIdArray& ids = document->state().pickFirst;
    if (ids.isEmpty()) return RTNORM;
    resbuf* link = acutNewRb(RTPICKS);
    if (!link) return RTERROR;
    session->sets.make(ids, link->resval.rlname);
    *pickFirstSet = link;
    return RTNORM;
}

int acedSSSetFirst(const ads_name pickFirstSet, const ads_name) {
    Session* session = Session::current();
    AcApDocument* document = session ? session->documents.curDocument() : nullptr;
    if (!document) return RTERROR;
    AcDbObjectIdArray ids;
    if (!isNil(pickFirstSet)) {
        const SelectionSet* found = session->sets.find(pickFirstSet);
        if (!found) return RTERROR;
        ids = found->ids();
    }
    // What the command empties is to be found empty by its own prompts, too.
    if (ids.isEmpty() && !session->running.empty()) session->running.front().takesPickFirst = false;
    session->setPickFirst(document, std::move(ids));
    return RTNORM;
}
