// Erasing and moving what lies on layers.
#include "layers/contents.h"

#include <map>
#include <string_view>
#include <utility>

#include "acdbads.h"
#include "acutads.h"
#include "adscodes.h"
#include "dbents.h"
#include "dbmain.h"
#include "dbobjptr.h"
#include "layers/layertoolbar.h"
#include "qrs_kernal.h"
#include "tools/arrayloop.h"
#include "tools/chain.h"
#include "tools/drawing.h"
#include "tools/picking.h"

using namespace qrs::layers;
using namespace qrs::tools;

namespace {

// Only these have objects behind them that belong to them.
bool hasParts(const AcDbEntity& entity) {
    const std::wstring_view kind = entity.isA()->dxfName();
    return kind == L"INSERT" || kind == L"POLYLINE";
}

void moveParts(AcDbObjectId owner, AcDbObjectId from, AcDbObjectId to) {
    ads_name name;
    if (acdbGetAdsName(name, owner) != Acad::eOk) return;
    AcDbEntityPointer part;
    for (AcDbObjectId id; acdbEntNext(name, name) == RTNORM && acdbGetObjectId(id, name) == Acad::eOk;) {
        if (part.open(id, AcDb::kForRead) != Acad::eOk || part->ownerId() != owner) return;
        if (part->layerId() == from && part->upgradeOpen() == Acad::eOk) part->setLayer(to, false);
    }
}

AcDbObjectId firstViewportOf(AcDbObjectId block) {
    const AcDbObjectIdArray viewports = entitiesOf(block, AcDbViewport::desc());
    return viewports.isEmpty() ? AcDbObjectId() : viewports[0];
}

// The sheets of paper of the layouts, which show the layouts themselves and go with them alone. Viewports are numbered
// in the layout that was shown last; in others the first one is the paper.
class Papers {
  public:
    bool has(const AcDbEntity& entity) {
        constexpr int kPaperNumber = 1;
        const AcDbViewport* viewport = AcDbViewport::cast(&entity);
        if (!viewport || viewport->number() > kPaperNumber) return false;
        if (viewport->number() == kPaperNumber) return true;
        const auto [first, isNew] = firsts_.emplace(viewport->ownerId(), AcDbObjectId());
        if (isNew) first->second = firstViewportOf(first->first);
        return first->second == viewport->objectId();
    }

  private:
    std::map<AcDbObjectId, AcDbObjectId> firsts_;  // viewports by block
};

void eraseObjects(const AcDbObjectIdArray& objects) {
    Papers papers;
    AcDbEntityPointer entity;
    for (const AcDbObjectId& id : objects)
        if (entity.open(id, AcDb::kForWrite) == Acad::eOk && !papers.has(*entity.object())) entity->erase();
}

// What lies on any of the layers.
Chain filterOf(const std::vector<std::wstring>& layers) {
    Chain filter(acutBuildList(RTDXF0, L"*", AcDb::kDxfOperator, L"<OR", RTNONE));
    resbuf* last = filter ? filter->rbnext : nullptr;
    const auto add = [&](int code, const std::wstring& text) {
        if (last) last = last->rbnext = acutBuildList(code, text.c_str(), RTNONE);
    };
    for (const std::wstring& layer : layers)
        add(AcDb::kDxfLayerName, layer);
    add(AcDb::kDxfOperator, L"OR>");
    return last ? std::move(filter) : Chain();
}

}  // namespace

AcDbObjectIdArray qrs::layers::objectsOn(const std::vector<std::wstring>& layers) {
    TPickEntSet found;
    if (const Chain filter = filterOf(layers)) found.Get(filter.get());
    return found.ids();
}

bool qrs::layers::moveObject(AcDbObjectId object, AcDbObjectId layer) {
    AcDbEntityPointer entity(object, AcDb::kForWrite);
    if (entity.openStatus() != Acad::eOk) return false;
    const AcDbObjectId from = entity->layerId();
    const bool parts = hasParts(*entity.object());
    if (entity->setLayer(layer, false) != Acad::eOk) return false;
    entity.close();
    if (parts) moveParts(object, from, layer);
    return true;
}

void qrs::layers::moveObjects(AcDbObjectId source, AcDbObjectId target) {
    for (const AcDbObjectId& id : objectsOn({nameOf(source)}))
        moveObject(id, target);
}

bool qrs::layers::refuseAsTarget(const std::wstring& layer) {
    if (!isOfReference(layer)) return false;
    QrsExport::PrintRefusal(L"\n%s是外部参照的图层，不能作为目标图层！", layer.c_str());
    return true;
}

void CLayerToolBar::EraseSelLayer() {
    TPickEntSet picked;
    if (SelectEntities(L"\n请选择删除层上的图元 <退出>:", picked) != RTNORM) return;
    std::vector<std::wstring> layers;
    for (std::wstring& layer : layerNamesOf(picked.ids())) {
        if (isLocked(QrsExport::GetLayerIdFromString(layer)))
            QrsExport::PrintRefusal(L"\n%s层已经锁定，层上的图元没有删除！", layer.c_str());
        else
            layers.push_back(std::move(layer));
    }
    eraseObjects(objectsOn(layers));
}

void CLayerToolBar::ConvertLayer() {
    AcDbObjectId source;
    AcDbObjectId target;
    if (pickLayer(L"\n请选择要转换图层(源)上的任意图元:<退出>", source) != RTNORM) return;
    if (pickLayer(L"\n请选择要转换图层(目标)上的任意图元:<退出>", target) != RTNORM) return;
    const std::wstring from = nameOf(source);
    const std::wstring to = nameOf(target);
    if (source == target) {
        QrsExport::PrintRefusal(L"\n图层相同，不需要转换！\n");
    } else if (isLocked(source)) {
        QrsExport::PrintRefusal(L"\n%s层已经锁定，层上的图元没有转换！", from.c_str());
    } else if (!refuseAsTarget(to)) {
        moveObjects(source, target);
        acutPrintf(L"\n%s层 已经成功转换到 %s层了！", from.c_str(), to.c_str());
    }
}
