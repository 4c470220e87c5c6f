// Asks until something is hit, and finds layers by object, by name and by what they are not.
#include "tools/picking.h"

#include <set>

#include "acdbads.h"
#include "acedads.h"
#include "acutmem.h"
#include "adscodes.h"
#include "afx.h"
#include "dbmain.h"
#include "dbobjptr.h"
#include "PipeNodes.h"
#include "PwxTool.h"
#include "qrs_kernal.h"
#include "qrs_pipeentity.h"
#include "tools/arrayloop.h"
#include "tools/drawing.h"

namespace qrs::tools {

namespace {

constexpr short kPickMissed = 7;  // the system variable ERRNO after a pick where nothing lies

std::wstring layerNameOf(const AcDbEntity& entity) {
    ACHAR* name = entity.layer();
    const std::wstring text = name ? name : L"";
    acutDelString(name);
    return text;
}

// Each layer of the objects once: its id; of one that the drawing does not define its name.
template <typename Use>
void forEachLayer(const AcDbObjectIdArray& objects, Use&& use) {
    std::set<AcDbObjectId> seen;
    std::set<CString, LayerNameLess> undefined;
    AcDbEntityPointer entity;
    for (const AcDbObjectId& id : objects) {
        if (entity.open(id, AcDb::kForRead) != Acad::eOk) continue;
        if (const AcDbObjectId layer = entity->layerId(); !layer.isNull()) {
            if (seen.insert(layer).second) use(layer, std::wstring());
        } else if (const std::wstring name = layerNameOf(*entity.object()); undefined.insert(name.c_str()).second) {
            use(AcDbObjectId(), name);
        }
    }
}

}  // namespace

AcDbObjectId layerOf(AcDbObjectId object) {
    const AcDbEntityPointer entity(object, AcDb::kForRead);
    return entity.openStatus() == Acad::eOk ? entity->layerId() : AcDbObjectId();
}

bool pickMissed() {
    resbuf value{};
    return acedGetVar(L"ERRNO", &value) == RTNORM && value.restype == RTSHORT && value.resval.rint == kPickMissed;
}

int pickObject(const std::wstring& prompt, TEntitySet& picked) {
    AcGePoint3d point;
    for (;;) {
        const int answer = SelectEntity(prompt, picked, point);
        if (answer != RTERROR || !pickMissed()) return answer;
    }
}

AcDbObjectId layerOfPick(const TEntitySet& picked) {
    const AcDbObjectId layer = layerOf(idOf(picked));
    if (layer.isNull()) QrsExport::PrintRefusal(L"\n图元所在的图层没有定义！");
    return layer;
}

int pickLayer(const std::wstring& prompt, AcDbObjectId& layer) {
    for (TEntitySet picked;;) {
        const int answer = pickObject(prompt, picked);
        if (answer != RTNORM) return answer;
        layer = layerOfPick(picked);
        if (!layer.isNull()) return RTNORM;
    }
}

AcDbObjectId idOf(const TEntitySet& picked) {
    AcDbObjectId id;
    return acdbGetObjectId(id, picked.ent) == Acad::eOk ? id : AcDbObjectId();
}

AcDbObjectIdArray companionsOf(AcDbObjectId object) {
    AcDbObjectIdArray companions;
    const AcDbObjectPointer<TDbPipe> pipe(object, AcDb::kForRead);
    if (pipe.openStatus() != Acad::eOk) return companions;
    pipe->GetAttachments(companions);
    companions.append(pipe->GetStartNode());
    companions.append(pipe->GetEndNode());
    return companions;
}

AcDbObjectIdArray layersOf(const AcDbObjectIdArray& objects) {
    AcDbObjectIdArray layers;
    forEachLayer(objects, [&](AcDbObjectId layer, const std::wstring& name) {
        if (layer.isNull())
            QrsExport::PrintRefusal(L"\n%s层没有定义！\n", name.c_str());
        else
            layers.append(layer);
    });
    return layers;
}

std::vector<std::wstring> layerNamesOf(const AcDbObjectIdArray& objects) {
    std::vector<std::wstring> names;
    forEachLayer(objects, [&](AcDbObjectId layer, const std::wstring& name) {
        names.push_back(layer.isNull() ? name : nameOf(layer));
    });
    return names;
}

AcDbObjectIdArray layersBut(const AcDbObjectIdArray& layers) {
    const std::set<AcDbObjectId> left(begin(layers), end(layers));
    AcDbObjectIdArray all;
    AcDbObjectIdArray others;
    PwxTool::GetAllLayerIds(workingDatabase(), all);
    for (const AcDbObjectId& id : all)
        if (left.count(id) == 0) others.append(id);
    return others;
}

std::wstring nameOf(AcDbObjectId layer) {
    const AcDbLayerTableRecordPointer record(layer, AcDb::kForRead);
    const ACHAR* name = nullptr;
    return record.openStatus() == Acad::eOk && record->getName(name) == Acad::eOk ? name : L"";
}

bool sameName(const std::wstring& a, const std::wstring& b) {
    return CString(a.c_str()).CompareNoCase(b.c_str()) == 0;
}

bool isLocked(AcDbObjectId layer) {
    const AcDbLayerTableRecordPointer record(layer, AcDb::kForRead);
    return record.openStatus() == Acad::eOk && record->isLocked();
}

bool isOfReference(const std::wstring& layerName) {
    return layerName.find(L'|') != std::wstring::npos;
}

}  // namespace qrs::tools
