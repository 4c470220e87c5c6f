// Moves chosen entities into the coordinates of the block and lets them take the place of its content.
#include "tools/blockreset.h"

#include <cmath>
#include <set>
#include <vector>

#include "acdbads.h"
#include "acutads.h"
#include "adscodes.h"
#include "afx.h"
#include "dbents.h"
#include "dbidmap.h"
#include "dbmain.h"
#include "gemat3d.h"
#include "qrs_kernal.h"
#include "qrs_pipeentity.h"
#include "qrs_select.h"
#include "tools/arrayloop.h"
#include "tools/changeable.h"
#include "tools/drawing.h"

namespace qrs::tools {
namespace {

// --- the reference

struct Reference {
    AcDbObjectId block;
    AcGeMatrix3d toBlock;  // from the drawing's coordinates to the block's
};

AcGeMatrix3d stretching(const AcGeScale3d& by) {
    AcGeMatrix3d matrix;
    matrix(0, 0) = by.sx;
    matrix(1, 1) = by.sy;
    matrix(2, 2) = by.sz;
    return matrix;
}

// What the reference does to its block, taken back step by step. False for scale factors that cannot be.
bool takeBack(const AcDbBlockReference& reference, const AcGePoint3d& basePoint, AcGeMatrix3d& toBlock) {
    const AcGeScale3d scale = reference.scaleFactors();
    const AcGeScale3d back(1.0 / scale.sx, 1.0 / scale.sy, 1.0 / scale.sz);
    if (!std::isfinite(back.sx) || !std::isfinite(back.sy) || !std::isfinite(back.sz)) return false;
    const AcGePoint3d origin;
    toBlock = AcGeMatrix3d::translation(basePoint - origin) * stretching(back) *
              AcGeMatrix3d::rotation(-reference.rotation(), AcGeVector3d::kZAxis) *
              AcGeMatrix3d::worldToPlane(reference.normal()) * AcGeMatrix3d::translation(origin - reference.position());
    return true;
}

// Why the object cannot be reset; null when it can.
const ACHAR* examine(AcDbObjectId id, Reference& reference) {
    const AcDbObjectPointer<AcDbBlockReference> opened(id, AcDb::kForRead);
    if (opened.openStatus() != Acad::eOk) return L"\n所选对象不是图块！";
    if (liesOnLockedLayer(*opened.object())) return L"\n所选图块在锁定的图层上，不能重置！";
    const AcDbBlockTableRecordPointer block(opened->blockTableRecord(), AcDb::kForRead);
    if (block.openStatus() != Acad::eOk) return L"\n图中没有所选图块的定义！";
    if (block->isFromExternalReference() || block->isLayout()) return L"\n外部参照不能重置！";
    reference.block = opened->blockTableRecord();
    return takeBack(*opened.object(), block->origin(), reference.toBlock) ? nullptr
                                                                          : L"\n所选图块的比例为零，不能重置！";
}

// False when the user wants to leave.
bool askReference(Reference& reference) {
    for (;;) {
        TEntitySet picked;
        AcGePoint3d point;
        const int answer = SelectEntity(L"\n请选择需要重置的图块<退出>:", picked, point);
        if (answer == RTNONE || answer == RTCAN) return false;
        AcDbObjectId id;
        const ACHAR* refusal = L"\n没有选中对象！";
        if (answer == RTNORM && acdbGetObjectId(id, picked.ent) == Acad::eOk) refusal = examine(id, reference);
        if (refusal == nullptr) return true;
        QrsExport::PrintRefusal(L"%s", refusal);
    }
}

// --- the entities

// Whether a block shows another, however deep.
class Nesting {
  public:
    explicit Nesting(AcDbObjectId block) : block_(block) {}

    bool shows(AcDbObjectId entity) {
        const AcDbObjectPointer<AcDbBlockReference> reference(entity, AcDb::kForRead);
        return reference.openStatus() == Acad::eOk && contains(reference->blockTableRecord());
    }

  private:
    bool contains(AcDbObjectId start) {
        std::vector<AcDbObjectId> waiting{start};
        std::set<AcDbObjectId> seen;
        while (!waiting.empty()) {
            const AcDbObjectId block = waiting.back();
            waiting.pop_back();
            if (block == block_) return true;
            if (block.isNull() || !seen.insert(block).second) continue;
            for (const AcDbObjectId& id : entitiesOf(block, AcDbBlockReference::desc())) {
                const AcDbObjectPointer<AcDbBlockReference> inner(id, AcDb::kForRead);
                if (inner.openStatus() == Acad::eOk) waiting.push_back(inner->blockTableRecord());
            }
        }
        return false;
    }

    AcDbObjectId block_;
};

// The chosen entities that may go over; tells of the others.
AcDbObjectIdArray takeable(const AcDbObjectIdArray& chosen, const Reference& reference) {
    AcDbObjectIdArray ids;
    Nesting nesting(reference.block);
    int locked = 0;
    int showing = 0;
    for (const AcDbObjectId& id : chosen) {
        const AcDbEntityPointer entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk || liesOnLockedLayer(*entity.object()))
            ++locked;
        else if (nesting.shows(id))
            ++showing;
        else
            ids.append(id);
    }
    tellLeft(L"\n%d个图元在锁定的图层上，没有放入图块。", locked);
    tellLeft(L"\n%d个图元就是该图块或含有该图块，没有放入图块。", showing);
    return ids;
}

bool eraseEntity(AcDbObjectId id) {
    AcDbEntityPointer entity(id, AcDb::kForWrite);
    return entity.openStatus() == Acad::eOk && entity->erase() == Acad::eOk;
}

// Null when it was not copied.
AcDbObjectId copyOf(AcDbObjectId id, const AcDbIdMapping& copies) {
    AcDbIdPair pair;
    pair.setKey(id);
    return copies.compute(pair) ? pair.value() : AcDbObjectId();
}

// A pipe's attachments and nodes that came along are the copies from now on.
void followCopies(TDbPipe& pipe, const AcDbIdMapping& copies) {
    AcDbObjectIdArray attachments;
    pipe.GetAttachments(attachments);
    for (int i = 0; i < attachments.length(); ++i) {
        const AcDbObjectId copy = copyOf(attachments[i], copies);
        if (copy.isNull()) continue;
        pipe.RemoveAttachment(attachments[i]);
        pipe.AddAttachment(copy);
    }
    const AcDbObjectId start = copyOf(pipe.GetStartNode(), copies);
    if (!start.isNull()) pipe.SetStartNode(start);
    const AcDbObjectId end = copyOf(pipe.GetEndNode(), copies);
    if (!end.isNull()) pipe.SetEndNode(end);
}

// The copies of the entities in the block, in its coordinates. False, the drawing as it was, when one cannot be written
// so.
bool copyInto(const AcDbObjectIdArray& ids, const Reference& reference) {
    AcDbIdMapping copies;
    AcDbObjectId owner = reference.block;
    if (owner.database()->deepCloneObjects(ids, owner, copies) != Acad::eOk) return false;
    AcDbObjectIdArray made;
    int refused = 0;
    for (int i = 0; i < ids.length(); ++i) {
        const AcDbObjectId copy = copyOf(ids[i], copies);
        if (copy.isNull()) continue;
        made.append(copy);
        AcDbEntityPointer entity(copy, AcDb::kForWrite);
        if (entity.openStatus() != Acad::eOk || entity->transformBy(reference.toBlock) != Acad::eOk) ++refused;
        if (TDbPipe* pipe = TDbPipe::cast(entity.object())) followCopies(*pipe, copies);
    }
    if (refused == 0) return true;
    for (const AcDbObjectId& copy : made)
        eraseEntity(copy);
    tellLeft(L"\n%d个图元不能按图块的比例和方向改写，图块没有改动。", refused);
    return false;
}

bool isAttributeDefinition(AcDbObjectId id) {
    const AcRxClass* itsClass = id.objectClass();
    return itsClass != nullptr && itsClass->dxfName() != nullptr && CString(itsClass->dxfName()) == L"ATTDEF";
}

}  // namespace

void resetBlock() {
    Reference reference;
    if (!askReference(reference)) return;
    TPickEntSet picked;
    if (SelectEntities(L"\n请选择构造新块需要的图元<退出>:", picked) != RTNORM) return;
    const AcDbObjectIdArray ids = takeable(picked.ids(), reference);
    if (ids.isEmpty()) {
        QrsExport::PrintRefusal(L"\n没有可以放入图块的图元，图块没有改动。");
        return;
    }
    const AcDbObjectIdArray before = entitiesOf(reference.block, nullptr);
    if (!copyInto(ids, reference)) return;
    for (const AcDbObjectId& id : before)
        if (!isAttributeDefinition(id)) eraseEntity(id);
    for (const AcDbObjectId& id : ids)
        eraseEntity(id);
    acutPrintf(L"\n图块已由%d个图元重新构造。", ids.length());
}

}  // namespace qrs::tools
