// Merges a layer into another and erases it.
#include <string>

#include "acedads.h"
#include "acutads.h"
#include "acutmem.h"
#include "adscodes.h"
#include "afxwin.h"
#include "dbobjptr.h"
#include "layers/contents.h"
#include "layers/layertoolbar.h"
#include "qrs_kernal.h"
#include "tools/chain.h"
#include "tools/drawing.h"
#include "tools/picking.h"

using namespace qrs::layers;
using namespace qrs::tools;

namespace {

// What there is against erasing the layer; null when there is nothing.
const wchar_t* reasonToKeep(AcDbObjectId source, AcDbObjectId target) {
    if (source == target) return L"\n2个图层一致，无需合并";
    if (sameName(nameOf(source), L"0")) return L"\n无法删除0层";
    if (isLocked(source)) return L"\n 无法删除已经锁定的图层！";
    // Nothing is moved off a layer that is known to stay.
    if (isOfReference(nameOf(source))) return L"\n 无法删除图层记录！";
    return nullptr;
}

bool isMergeWanted(const std::wstring& source, const std::wstring& target) {
    CString question;
    question.Format(L"\n您确定要把%s图层合并到%s图层上吗? 且删除%s图层?", source.c_str(), target.c_str(),
                    source.c_str());
    return AfxMessageBox(question, MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

// When the layer is the current one, "0" becomes it, also when the layer stays in the end; not the target, on which
// nobody asked to draw. A frozen "0" cannot; then the layer stays the current one, and stays.
void makeNotCurrent(const std::wstring& layer) {
    resbuf current{};
    if (acedGetVar(L"CLAYER", &current) != RTNORM || current.restype != RTSTR) return;
    const bool isCurrent = sameName(current.resval.rstring, layer);
    acutDelString(current.resval.rstring);
    const Chain zero(acutBuildList(RTSTR, L"0", RTNONE));
    if (isCurrent && zero && acedSetVar(L"CLAYER", zero.get()) != RTNORM)
        QrsExport::PrintRefusal(L"\n0层不能成为当前图层，%s层仍是当前图层！", layer.c_str());
}

void eraseLayer(AcDbObjectId layer) {
    AcDbObjectIdArray one;
    one.append(layer);
    Adesk::UInt32 references = 0;
    if (workingDatabase()->countHardReferences(one, &references) != Acad::eOk || references != 0) {
        QrsExport::PrintRefusal(L"\n 图层存在引用.无法删除图层！");
        return;
    }
    AcDbLayerTableRecordPointer record(layer, AcDb::kForWrite);
    if (record.openStatus() != Acad::eOk || record->erase() != Acad::eOk)
        QrsExport::PrintRefusal(L"\n 无法删除图层记录！");
}

}  // namespace

void CLayerToolBar::MergeLayer() {
    AcDbObjectId source;
    AcDbObjectId target;
    if (pickLayer(L"\n请选择要删除图层上的任意图元:<退出>", source) != RTNORM) return;
    if (pickLayer(L"\n请选择要合并到图层(目标)上的任意图元:<退出>", target) != RTNORM) return;
    if (const wchar_t* reason = reasonToKeep(source, target)) {
        QrsExport::PrintRefusal(L"%s", reason);
        return;
    }
    const std::wstring from = nameOf(source);
    const std::wstring to = nameOf(target);
    if (refuseAsTarget(to) || !isMergeWanted(from, to)) return;
    moveObjects(source, target);
    makeNotCurrent(from);
    eraseLayer(source);
}
