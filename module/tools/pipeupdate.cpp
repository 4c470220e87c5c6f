// Compares each pipe with the standard's system and layer, and writes only what differs.
#include "tools/pipeupdate.h"

#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "acutads.h"
#include "acutmem.h"
#include "adscodes.h"
#include "PipeSystemTool.h"
#include "qrs_kernal.h"
#include "qrs_pipeentity.h"
#include "qrs_select.h"
#include "standard/holder.h"
#include "standard/text.h"
#include "tools/arrayloop.h"
#include "tools/changeable.h"
#include "tools/drawing.h"

namespace qrs::tools {
namespace {

enum Outcome { kUpdated, kCurrent, kLocked, kDamaged, kUnknown, kRefused, kOutcomeCount };

// What is told of each outcome, those from kLocked on of pipes that are left; pipes in line with the standard are told
// when there are no others.
constexpr const ACHAR* kLines[kOutcomeCount] = {
    L"\n共更新了%d根管线。",
    L"\n%d根管线与当前标准一致，没有改动。",
    L"\n%d根管线在锁定的图层上，没有更新。",
    L"\n%d根管线的数据已损坏，没有更新。",
    L"\n%d根管线的系统不在当前标准中，没有更新。",
    L"\n%d根管线不能修改，没有更新。",
};

// Differences below it are those of writing a width in decimals.
constexpr double kSameWidth = 1e-6;

// The standard's layers of the systems that are met, looked up once each.
class SystemLayers {
  public:
    AcDbObjectId of(const CString& system, const CString& type) {
        const auto [place, isNew] = ids_.try_emplace({system, type});
        if (isNew) place->second = PipeSystemTool::InitLayer(system, type);
        return place->second;
    }

  private:
    std::map<std::pair<CString, CString>, AcDbObjectId> ids_;
};

CString layerName(const AcDbEntity& entity) {
    ACHAR* name = entity.layer();
    const CString copy(name != nullptr ? name : L"");
    acutDelString(name);
    return copy;
}

// The pipe's system as the current standard calls it. Where the pipe does not say it, its layer may. Empty when the
// standard does not know it.
CString currentSystem(const TDbPipe& pipe) {
    CString name = PipeSystemTool::GetPipeSystemName(&pipe);
    if (PipeSystemTool::IsPipeSystemOfCurrentStandard(name)) return name;
    name = PipeSystemTool::OriginSystemNameToCurrentName(name);
    return name.IsEmpty() ? PipeSystemTool::GetPipeSystemNameByPipeLayer(layerName(pipe)) : name;
}

class PipeUpdate {
  public:
    void update(AcDbObjectId id) { ++counts_[updateOne(id)]; }

    void tell() const {
        bool toldAny = false;
        for (int outcome = 0; outcome < kOutcomeCount; ++outcome) {
            (outcome > kCurrent ? tellLeft : tellCount)(kLines[outcome], counts_[outcome]);
            toldAny = toldAny || counts_[outcome] != 0;
        }
        if (!toldAny) acutPrintf(L"\n没有找到管线！");
        tellLeft(L"\n%d个管线附件在锁定的图层上，没有更新。", static_cast<int>(lockedAttachments_.size()));
    }

  private:
    Outcome updateOne(AcDbObjectId id) {
        AcDbObjectPointer<TDbPipe> pipe(id, AcDb::kForRead);
        if (pipe.openStatus() != Acad::eOk) return kRefused;
        if (pipe->IsDamaged()) return kDamaged;
        if (liesOnLockedLayer(*pipe.object())) return kLocked;
        const CString system = currentSystem(*pipe.object());
        if (system.IsEmpty()) return kUnknown;
        const AcDbObjectId oldTexts = pipe->GetDimLayerId();
        const AcDbObjectId oldArrows = pipe->GetArrowLayerId();
        bool changed = false;
        if (!isCurrent(*pipe.object(), system)) {
            if (pipe->upgradeOpen() != Acad::eOk) return kRefused;
            setCurrent(*pipe.object(), system);
            changed = true;
        }
        AcDbObjectIdArray attachments;
        pipe->GetAttachments(attachments);
        pipe.close();
        for (const AcDbObjectId& attachment : attachments)
            changed = moveAttachment(attachment, system, oldTexts, oldArrows) || changed;
        return changed ? kUpdated : kCurrent;
    }

    // Whether the pipe bears a name that the standard no longer uses. One without a name of its own is named by its
    // type, which follows the standard by itself.
    static bool bearsOldName(const TDbPipe& pipe, const CString& system) {
        const std::wstring name = pipe.GetDrawnSystemName();
        return !name.empty() && standard::makeText(name) != system;
    }

    bool isCurrent(const TDbPipe& pipe, const CString& system) {
        const AcDbObjectId layer = layers_.of(system, pipe.GetCurve().IsVertical() ? L"立管" : L"管线");
        return !bearsOldName(pipe, system) && (layer.isNull() || pipe.layerId() == layer) &&
               pipe.GetDimLayerId() == layers_.of(system, L"管径文字") &&
               pipe.GetArrowLayerId() == layers_.of(system, L"管线流向") &&
               std::fabs(pipe.GetLineWidth() - PipeSystemTool::GetPipeLineWidth(system)) < kSameWidth;
    }

    static void setCurrent(TDbPipe& pipe, const CString& system) {
        if (bearsOldName(pipe, system)) PipeSystemTool::SetPipeSystemName(&pipe, system);
        PipeSystemTool::SetPipeLayer(&pipe, system);
        const double width = PipeSystemTool::GetPipeLineWidth(system);
        if (std::fabs(pipe.GetLineWidth() - width) >= kSameWidth) pipe.SetLineWidth(width);
    }

    // True when the attachment went to another layer. One that does not say what it is follows the pipe's layers when
    // it lies on one of them.
    bool moveAttachment(AcDbObjectId id, const CString& system, AcDbObjectId oldTexts, AcDbObjectId oldArrows) {
        AcDbObjectPointer<TDbPipeAttachment> attachment(id, AcDb::kForRead);
        if (attachment.openStatus() != Acad::eOk) return false;
        const AcDbObjectId layer = attachment->layerId();
        int kind = attachment->GetKind();
        if (kind == TDbPipeAttachment::kOther && !layer.isNull())
            kind = layer == oldTexts    ? TDbPipeAttachment::kDimText
                   : layer == oldArrows ? TDbPipeAttachment::kArrow
                                        : TDbPipeAttachment::kOther;
        if (kind != TDbPipeAttachment::kDimText && kind != TDbPipeAttachment::kArrow) return false;
        const bool isText = kind == TDbPipeAttachment::kDimText;
        const AcDbObjectId target = layers_.of(system, isText ? L"管径文字" : L"管线流向");
        if (target.isNull() || target == layer) return false;
        if (liesOnLockedLayer(*attachment.object())) return lockedAttachments_.insert(id), false;
        return attachment->upgradeOpen() == Acad::eOk && attachment->setLayer(target) == Acad::eOk;
    }

    SystemLayers layers_;
    int counts_[kOutcomeCount] = {};
    std::set<AcDbObjectId> lockedAttachments_;
};

}  // namespace

void updatePipes() {
    if (standard::currentStandard() == nullptr) {
        QrsExport::PrintRefusal(L"\n现在没有管线系统标准。");
        return;
    }
    TPickEntSet picked;
    const int answer = SelectEntities(L"\n请选择需要更新的管线<全图>:", picked);
    if (answer != RTNORM && answer != RTNONE) return;
    PipeUpdate work;
    for (const AcDbObjectId& id : answer == RTNORM ? picked.ids() : modelSpaceEntities(TDbPipe::desc())) {
        const AcRxClass* itsClass = id.objectClass();
        if (itsClass != nullptr && itsClass->isDerivedFrom(TDbPipe::desc())) work.update(id);
    }
    work.tell();
}

}  // namespace qrs::tools
