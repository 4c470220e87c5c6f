// Counts, for a pipe or a node, the ends of other pipes that meet it.
#include "tools/interfacecount.h"

#include "acdbads.h"
#include "acutads.h"
#include "adscodes.h"
#include "dbmain.h"
#include "qrs_kernal.h"
#include "qrs_pipeentity.h"
#include "qrs_select.h"
#include "tools/arrayloop.h"
#include "tools/changeable.h"
#include "tools/drawing.h"

namespace qrs::tools {
namespace {

// Drawing units: what the suite takes for the same place in plan.
constexpr double kMeetsWithin = 0.1;
constexpr int kOwnEnds = 2;

bool meets(const AcGePoint3d& a, const AcGePoint3d& b) {
    return a.distanceTo(b) <= kMeetsWithin;
}

// How many of the other pipe's ends meet the curve between its ends.
int endsOn(const TPipeCurve& curve, const TPipeCurve& other) {
    int count = 0;
    for (const AcGePoint3d& end : {other.start, other.end})
        if (!meets(end, curve.start) && !meets(end, curve.end) && curve.DistanceTo(end) <= kMeetsWithin) ++count;
    return count;
}

// How many ends of the pipe are at the node.
int endsAt(AcDbObjectId node, const AcGePoint3d& position, const TDbPipe& pipe) {
    const TPipeCurve curve = pipe.GetCurve();
    return (pipe.GetStartNode() == node || meets(curve.start, position) ? 1 : 0) +
           (pipe.GetEndNode() == node || meets(curve.end, position) ? 1 : 0);
}

// Adds what act says of each other pipe that lies where the object lies.
template <class Act>
void addPipes(const AcDbObjectId& object, AcDbObjectId block, InterfaceCount& count, Act&& act) {
    for (const AcDbObjectId& id : entitiesOf(block, TDbPipe::desc())) {
        if (id == object) continue;
        const AcDbObjectPointer<TDbPipe> pipe(id, AcDb::kForRead);
        if (pipe.openStatus() != Acad::eOk || pipe->IsDamaged())
            ++count.damaged;
        else
            count.interfaces += act(*pipe.object());
    }
}

}  // namespace

bool countInterfaces(AcDbObjectId object, InterfaceCount& count) {
    count = InterfaceCount();
    const AcDbObjectPointer<TDbPipe> pipe(object, AcDb::kForRead);
    if (pipe.openStatus() == Acad::eOk) {
        if (pipe->IsDamaged()) return false;
        const TPipeCurve curve = pipe->GetCurve();
        count.interfaces = kOwnEnds;
        addPipes(object, pipe->ownerId(), count, [&](const TDbPipe& other) { return endsOn(curve, other.GetCurve()); });
        return true;
    }
    const AcDbObjectPointer<TDbPipeNode> node(object, AcDb::kForRead);
    if (node.openStatus() != Acad::eOk) return false;
    const AcGePoint3d position = node->GetPosition();
    addPipes(object, node->ownerId(), count, [&](const TDbPipe& other) { return endsAt(object, position, other); });
    return true;
}

void countInterfaces() {
    for (;;) {
        TEntitySet picked;
        AcGePoint3d point;
        const int answer = SelectEntity(L"\n请选择需要检查接口数的对象<退出>:", picked, point);
        if (answer == RTNONE || answer == RTCAN) return;
        AcDbObjectId id;
        InterfaceCount count;
        if (answer != RTNORM || acdbGetObjectId(id, picked.ent) != Acad::eOk) {
            QrsExport::PrintRefusal(L"\n没有选中对象！");
        } else if (!countInterfaces(id, count)) {
            QrsExport::PrintRefusal(L"\n所选对象不是管线对象，或其数据已损坏！");
        } else {
            acutPrintf(L"\n该对象的接口数为%d。", count.interfaces);
            tellLeft(L"\n%d根管线的数据已损坏，没有计入。", count.damaged);
            return;
        }
    }
}

}  // namespace qrs::tools
