// Writes and clears the tags of picked entities, and tells of those that could not take one.
#include "tools/layertag.h"

#include "acedads.h"
#include "acutads.h"
#include "adscodes.h"
#include "PwxTool.h"
#include "qrs_select.h"
#include "tools/arrayloop.h"
#include "tools/chain.h"
#include "tools/changeable.h"

namespace qrs::tools {
namespace {

constexpr int kXdataFollows = -3;  // in a filter

enum Outcome { kDone, kLocked, kNothingToDo, kRefused, kOutcomeCount };

using Counts = int[kOutcomeCount];

bool clear(AcDbEntity& entity) {
    const Chain item(acutBuildList(AcDb::kDxfRegAppName, kLayerTagItem, RTNONE));
    return entity.setXData(item.get()) == Acad::eOk;
}

// What other programs keep on an entity may leave no room for a tag.
bool tag(AcDbEntity& entity, const CString& discipline) {
    PwxTool::WriteXdata(&entity, kLayerTagItem, discipline.GetString());
    return layerTag(entity) == discipline;
}

// Lets act change the entity when needs says so; act tells whether it could.
template <class Needs, class Act>
Outcome change(AcDbObjectId id, Needs&& needs, Act&& act) {
    AcDbEntityPointer entity(id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk) return kRefused;
    if (!needs(*entity.object())) return kNothingToDo;
    if (liesOnLockedLayer(*entity.object())) return kLocked;
    if (entity->upgradeOpen() != Acad::eOk) return kRefused;
    return act(*entity.object()) ? kDone : kRefused;
}

void cleanAndTell(const AcDbObjectIdArray& ids) {
    Counts counts = {};
    for (const AcDbObjectId& id : ids)
        ++counts[change(
            id, [](const AcDbEntity& entity) { return layerTag(entity) == kArchitectureTag; }, clear)];
    if (counts[kDone] + counts[kLocked] + counts[kRefused] == 0) acutPrintf(L"\n没有找到带建筑标识的图元！");
    tellCount(L"\n清除了%d个图元的建筑标识。", counts[kDone]);
    tellLeft(L"\n%d个图元在锁定的图层上，没有清除。", counts[kLocked]);
    tellLeft(L"\n%d个图元不能修改，没有清除。", counts[kRefused]);
}

// Of every space, but not of block definitions.
AcDbObjectIdArray allTagged() {
    const Chain filter(acutBuildList(kXdataFollows, AcDb::kDxfRegAppName, kLayerTagItem, RTNONE));
    TPickEntSet all;
    all.Get(filter.get());
    return all.ids();
}

}  // namespace

CString layerTag(const AcDbEntity& entity) {
    return PwxTool::ReadXdata(&entity, kLayerTagItem);
}

void tagPicked(const CString& discipline) {
    CString prompt;
    prompt.Format(L"\n请选择要加%s标识的图元<退出>:", discipline.GetString());
    TPickEntSet picked;
    if (SelectEntities(prompt.GetString(), picked) != RTNORM) return;
    Counts counts = {};
    for (const AcDbObjectId& id : picked.ids())
        ++counts[change(
            id, [&](const AcDbEntity& entity) { return layerTag(entity) != discipline; },
            [&](AcDbEntity& entity) { return tag(entity, discipline); })];
    acutPrintf(L"\n%d个图元加了%s标识。", counts[kDone], discipline.GetString());
    tellCount(L"\n%d个图元已有该标识，没有改动。", counts[kNothingToDo]);
    tellLeft(L"\n%d个图元在锁定的图层上，没有加标识。", counts[kLocked]);
    tellLeft(L"\n%d个图元不能修改，没有加标识。", counts[kRefused]);
}

void cleanArchitectureTags() {
    acedInitGet(0, L"A");
    TPickEntSet picked;
    const int answer = SelectEntities(L"\n请选择要清除建筑标识的图元[清除全部A]<退出>", picked);
    if (answer == RTKWORD)
        cleanAndTell(allTagged());
    else if (answer == RTNORM)
        cleanAndTell(picked.ids());
}

}  // namespace qrs::tools
