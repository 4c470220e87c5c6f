// Turning layers off and on.
#include "aced.h"
#include "acedads.h"
#include "acutads.h"
#include "adscodes.h"
#include "dbobjptr.h"
#include "layers/layerstate.h"
#include "layers/layertoolbar.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"
#include "qrs_kernal.h"
#include "rxmfcapi.h"
#include "tools/picking.h"

using namespace qrs::layers;
using namespace qrs::tools;

namespace {

// What is picked shall be what lies under the pick box, so running object snaps are off meanwhile.
class NoObjectSnap {
  public:
    NoObjectSnap() : known_(acedGetVar(L"OSMODE", &saved_) == RTNORM) {
        resbuf off{};
        off.restype = RTSHORT;
        if (known_) acedSetVar(L"OSMODE", &off);
    }
    ~NoObjectSnap() {
        if (known_) acedSetVar(L"OSMODE", &saved_);
    }
    NoObjectSnap(const NoObjectSnap&) = delete;
    NoObjectSnap& operator=(const NoObjectSnap&) = delete;

  private:
    resbuf saved_{};
    bool known_;
};

// In the editor's message loop while layers are picked, and out of it whatever way the command ends. It keeps no
// message from the editor.
class PickingFilter {
  public:
    PickingFilter() { acedRegisterFilterWinMsg(pass); }
    ~PickingFilter() { acedRemoveFilterWinMsg(pass); }
    PickingFilter(const PickingFilter&) = delete;
    PickingFilter& operator=(const PickingFilter&) = delete;

  private:
    static BOOL pass(MSG*) { return FALSE; }
};

void turnOff(AcDbObjectId layer) {
    AcDbObjectIdArray one;
    one.append(layer);
    turnLayers(one, true);
}

// Whoever hides pipes means their diameter texts, too.
void turnOffDiameterTexts(const std::wstring& pipeLayer) {
    constexpr int kNone = -1;
    int kind = kNone;
    // Its result says nothing; a pipe layer is known by the kind that was written.
    PipeSystemTool::IsPipeLayer(pipeLayer.c_str(), &kind);
    if (kind == kNone) return;
    const CString system = PipeSystemTool::GetPipeSystemNameByPipeLayer(CString(pipeLayer.c_str()));
    const CString texts = PipeSystemTool::GetLayerName(system, L"管径文字", false);
    if (!texts.IsEmpty()) turnOff(QrsExport::GetLayerIdFromString(texts.GetString()));
}

int pickLayerToClose(AcDbObjectId& layer) {
    TEntitySet picked;
    const int answer = pickObject(L"\n请选择关闭层上的图元或外部参照上的图元<退出>:", picked);
    if (answer != RTNORM) return answer;
    if (PwxTool::IsExternalBlock(picked))
        return PwxTool::SelectEntityFromExternalBlock(L"\n外部参照！请继续选择外部参照上要关闭的图元<退出>: ", picked,
                                                      layer);
    layer = layerOfPick(picked);
    return RTNORM;
}

}  // namespace

void CLayerToolBar::CloseSelLayer() {
    acedSSSetFirst(nullptr, nullptr);
    const PickingFilter filter;
    const NoObjectSnap noSnap;
    for (AcDbObjectId layer; pickLayerToClose(layer) == RTNORM; layer.setNull()) {
        if (layer.isNull()) continue;
        turnOff(layer);
        turnOffDiameterTexts(nameOf(layer));
        acedUpdateDisplay();
    }
}

void CLayerToolBar::OpenSelLayer() {
    TPickEntSet picked;
    if (SelectEntities(L"\n请选择打开层上的图元 <退出>:", picked) != RTNORM) return;
    const AcDbObjectIdArray kept = layersOf(picked.ids());
    turnLayers(kept, false);
    // The current layer goes off like any other.
    turnLayers(layersBut(kept), true);
    acedUpdateDisplay();
}
