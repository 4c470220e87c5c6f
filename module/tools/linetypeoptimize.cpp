// Asks for gap, scale and objects, and gives the objects a variant of the linetype they are drawn with.
#include "tools/linetypeoptimize.h"

#include <cmath>
#include <map>
#include <optional>
#include <set>

#include "acedads.h"
#include "acutmem.h"
#include "adscodes.h"
#include "host/platform/codepage.h"
#include "host/platform/number.h"
#include "qrs_kernal.h"
#include "tools/arrayloop.h"
#include "tools/changeable.h"

namespace qrs::tools {
namespace {

constexpr wchar_t kGapValue[] = L"LineTypeTextGap";
constexpr wchar_t kScaleValue[] = L"LineTypeTextScale";
constexpr TextSpacing kUsual{1.0, 1.0};
// Smaller ones would be rounded to nothing, larger ones are slips of the hand.
constexpr double kSmallestScale = 0.001;
constexpr double kLargest = 1e6;

// One value of the two as it is asked for at the command line.
struct ValueRow {
    const wchar_t* keyword;
    const wchar_t* prompt;
    double TextSpacing::*value;
    CString (*refuse)(double);
};

constexpr ValueRow kValues[] = {
    {L"D", L"\n请输入文字左右空隙值<%.2f>:", &TextSpacing::gap, &refuseTextGap},
    {L"S", L"\n请输入文字放大倍数<%.2f>:", &TextSpacing::scale, &refuseTextScale},
};

// False when the user cancelled. Enter keeps the value.
bool askValue(const ValueRow& row, TextSpacing& spacing) {
    CString prompt;
    prompt.Format(row.prompt, spacing.*row.value);
    for (;;) {
        double number = 0.0;
        const int answer = acedGetReal(prompt, &number);
        if (answer == RTNONE) return true;
        if (answer != RTNORM) return false;
        const CString refusal = row.refuse(number);
        if (refusal.IsEmpty()) {
            spacing.*row.value = number;
            writeTextSpacing(spacing);
            return true;
        }
        QrsExport::PrintRefusal(L"\n%s", refusal.GetString());
    }
}

// --- objects

enum Outcome { kChanged, kCurrent, kLocked, kPlain, kTooLong, kRefused, kOutcomeCount };

constexpr const ACHAR* kLines[kOutcomeCount] = {
    L"\n优化了%d个对象的线型。",
    L"\n%d个对象的线型已是该间隙和倍数，没有改动。",
    L"\n%d个对象在锁定的图层上，没有改动。",
    L"\n%d个对象的线型不带文字，没有改动。",
    L"\n%d个对象的线型线段太多，没有改动。",
    L"\n%d个对象不能修改，没有改动。",
};

// What the object is drawn with: its layer's linetype unless it has one of its own. Null for one by block.
AcDbObjectId drawnLinetype(const AcDbEntity& entity) {
    ACHAR* name = entity.linetype();
    const CString own(name != nullptr ? name : L"");
    acutDelString(name);
    if (own.CompareNoCase(L"ByLayer") != 0)
        return own.CompareNoCase(L"ByBlock") != 0 ? entity.linetypeId() : AcDbObjectId();
    const AcDbLayerTableRecordPointer layer(entity.layerId(), AcDb::kForRead);
    return layer.openStatus() == Acad::eOk ? layer->linetypeObjectId() : AcDbObjectId();
}

class Optimizing {
  public:
    explicit Optimizing(const TextSpacing& spacing) : spacing_(spacing) {}

    void change(AcDbObjectId id) { ++counts_[changeOne(id)]; }
    void tell() const {
        for (int outcome = 0; outcome < kOutcomeCount; ++outcome)
            (outcome > kCurrent ? tellLeft : tellCount)(kLines[outcome], counts_[outcome]);
    }

  private:
    struct Known {
        Outcome outcome;
        AcDbObjectId linetype;
    };

    const Known& lookUp(AcDbObjectId linetype) {
        const auto [place, isNew] = known_.try_emplace(linetype);
        if (!isNew) return place->second;
        switch (spacedLinetype(linetype, spacing_, place->second.linetype)) {
            case SpacingResult::kSpaced:
                place->second.outcome = kChanged;
                break;
            case SpacingResult::kTooLong:
                place->second.outcome = kTooLong;
                break;
            case SpacingResult::kPlain:
                place->second.outcome = kPlain;
                break;
            case SpacingResult::kRefused:
                place->second.outcome = kRefused;
                break;
        }
        return place->second;
    }

    Outcome changeOne(AcDbObjectId id) {
        AcDbEntityPointer entity(id, AcDb::kForRead);
        if (entity.openStatus() != Acad::eOk) return kRefused;
        if (liesOnLockedLayer(*entity.object())) return kLocked;
        const AcDbObjectId linetype = drawnLinetype(*entity.object());
        if (linetype.isNull()) return kPlain;
        const Known& known = lookUp(linetype);
        if (known.outcome != kChanged) return known.outcome;
        if (known.linetype == linetype) return kCurrent;
        const bool taken = entity->upgradeOpen() == Acad::eOk && entity->setLinetype(known.linetype) == Acad::eOk;
        return taken ? kChanged : kRefused;
    }

    TextSpacing spacing_;
    std::map<AcDbObjectId, Known> known_;  // by the linetype an object is drawn with
    int counts_[kOutcomeCount] = {};
};

void optimize(const AcDbObjectIdArray& ids, const TextSpacing& spacing) {
    Optimizing work(spacing);
    for (const AcDbObjectId& id : ids)
        work.change(id);
    work.tell();
}

CString selectionPrompt(const TextSpacing& spacing) {
    CString prompt;
    prompt.Format(L"\n请选择待优化线型的对象[文字间隙%.3f(D)/文字放大%.3f倍(S)]:<退出>", spacing.gap, spacing.scale);
    return prompt;
}

bool answerKeyword(TextSpacing& spacing) {
    ACHAR keyword[133] = L"";
    acedGetInput(keyword);
    for (const ValueRow& row : kValues)
        if (CString(keyword) == row.keyword) return askValue(row, spacing);
    return true;
}

// Asks for objects until Enter; the values may be changed in between, and count for all objects. Objects that were
// chosen before a value was changed stay chosen. Empty when the user cancelled.
AcDbObjectIdArray selectObjects(TextSpacing& spacing) {
    AcDbObjectIdArray chosen;
    std::set<AcDbObjectId> seen;
    for (;;) {
        acedInitGet(0, L"D S");
        TPickEntSet picked;
        const int answer = SelectEntities(selectionPrompt(spacing).GetString(), picked);
        for (const AcDbObjectId& id : picked.ids())
            if (seen.insert(id).second) chosen.append(id);
        if (answer == RTNORM || answer == RTNONE) return chosen;
        if (answer != RTKWORD || !answerKeyword(spacing)) return {};
    }
}

std::wstring shown(double value) {
    CString text;
    text.Format(L"%.3f", value);
    return text.GetString();
}

// Nothing when the text is no number.
std::optional<double> numberIn(const std::wstring& text) {
    const std::optional<double> number = platform::parseReal(platform::toUtf8(text));
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::wstring refuseText(const std::wstring& text, CString (*refuse)(double)) {
    const std::optional<double> number = numberIn(text);
    return number ? std::wstring(refuse(*number).GetString()) : L"请输入一个数值！";
}

}  // namespace

CString refuseTextGap(double gap) {
    return gap >= 0.0 && gap <= kLargest ? CString() : CString(L"文字左右空隙值应在0到1000000之间！");
}

CString refuseTextScale(double scale) {
    return scale >= kSmallestScale && scale <= kLargest ? CString() : CString(L"文字放大倍数应在0.001到1000000之间！");
}

TextSpacing readTextSpacing() {
    const TRegKey key(GetRegLocation(L"PWXConfig"));
    TextSpacing spacing{key.GetDouble(kGapValue, kUsual.gap), key.GetDouble(kScaleValue, kUsual.scale)};
    if (!refuseTextGap(spacing.gap).IsEmpty()) spacing.gap = kUsual.gap;
    if (!refuseTextScale(spacing.scale).IsEmpty()) spacing.scale = kUsual.scale;
    return spacing;
}

bool writeTextSpacing(const TextSpacing& spacing) {
    const TRegKey key(GetRegLocation(L"PWXConfig"));
    if (key.WriteDouble(kGapValue, spacing.gap) && key.WriteDouble(kScaleValue, spacing.scale)) return true;
    QrsExport::PrintRefusal(L"\n不能保存线型文字的设置！");
    return false;
}

void optimizeLinetypes() {
    TextSpacing spacing = readTextSpacing();
    const AcDbObjectIdArray chosen = selectObjects(spacing);
    optimize(chosen, spacing);
}

void optimizeLinetypesByDialog() {
    // Shown until it is closed: while a dialog stays open nobody could answer the selection's prompt here.
    CLinetypeOptimizeDlg dialog;
    if (dialog.show() != qrs::platform::kDialogOk) return;
    TPickEntSet picked;
    if (SelectEntities(L"\n请选择待优化线型的对象:<退出>", picked) == RTNORM) optimize(picked.ids(), dialog.Spacing());
}

}  // namespace qrs::tools

using namespace qrs::tools;

CLinetypeOptimizeDlg::CLinetypeOptimizeDlg() : Form(L"线型优化"), spacing_(readTextSpacing()) {}

void CLinetypeOptimizeDlg::describe() {
    gap_ = &form().addEdit(L"文字左右空隙值", shown(spacing_.gap));
    gap_->refuse = [](const std::wstring& text) { return refuseText(text, &refuseTextGap); };
    scale_ = &form().addEdit(L"文字放大倍数", shown(spacing_.scale));
    scale_->refuse = [](const std::wstring& text) { return refuseText(text, &refuseTextScale); };
}

void CLinetypeOptimizeDlg::pressOk() {
    // The fields take no text that is refused.
    spacing_ = {numberIn(gap_->text).value_or(spacing_.gap), numberIn(scale_->text).value_or(spacing_.scale)};
    writeTextSpacing(spacing_);
    Form::pressOk();
}
