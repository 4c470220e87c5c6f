// The fields of a system as rows, shown, checked and taken over by one loop.
#include "dialogs/pipesystemdlg.h"

#include <cmath>

#include "host/platform/codepage.h"
#include "host/platform/number.h"
#include "qrs_public.h"
#include "standard/text.h"
#include "standard/values.h"

using namespace qrs::platform;
using qrs::standard::makeText;
using qrs::standard::view;
using qrs::standard::wide;

namespace {

// One field of a system: exactly one member is set.
struct SystemField {
    const wchar_t* caption;
    CString PipeNode::*text;
    double PipeNode::*real;  // 0 to kLargest, kept with two decimals as in the file
    Adesk::Int32 PipeNode::*integer;
    bool isMaterial;  // offers the suite's pipe materials
};
constexpr double kLargest = 10000;

constexpr SystemField kFields[] = {
    {L"标注", &PipeNode::Dim, nullptr, nullptr, false},
    {L"管线宽度", nullptr, &PipeNode::LineWidth, nullptr, false},
    {L"室内管材", &PipeNode::Material, nullptr, nullptr, true},
    {L"室外管材", &PipeNode::OutdoorMaterial, nullptr, nullptr, true},
    {L"立管样式", nullptr, nullptr, &PipeNode::VPipeType, false},
    {L"立管半径", nullptr, &PipeNode::VPipeRaidus, nullptr, false},
    {L"立管外圆半径", nullptr, &PipeNode::VPipeRaidus1, nullptr, false},
    {L"立管内圆半径", nullptr, &PipeNode::VPipeRaidus2, nullptr, false},
    {L"水流状态", &PipeNode::WaterFlowStatus, nullptr, nullptr, false},
    {L"备注", &PipeNode::Remark, nullptr, nullptr, false},
};

std::wstring textOf(const PipeNode& system, const SystemField& field) {
    if (field.text) return wide(system.*field.text);
    if (field.real) return wide(qrs::standard::formatReal(system.*field.real));
    return std::to_wstring(system.*field.integer);
}

std::wstring refuseText(const SystemField& field, const std::wstring& typed) {
    const std::string bytes = toUtf8(typed);
    if (field.real) {
        const std::optional<double> value = parseReal(bytes);
        const bool isSize = value && std::isfinite(*value) && *value >= 0 && *value <= kLargest;
        return isSize ? L"" : L"请输入 0 到 10000 的数值。";
    }
    if (field.integer) {
        const bool digits =
            !typed.empty() && typed.size() < 5 && bytes.find_first_not_of("0123456789") == std::string::npos;
        return digits ? L"" : L"请输入不超过四位的整数。";
    }
    return {};
}

void takeText(PipeNode& system, const SystemField& field, const std::wstring& typed) {
    // What was not touched stays as it is, also where its text says less than the value.
    if (typed == textOf(system, field)) return;
    const CString value = makeText(typed);
    if (field.text)
        system.*field.text = value;
    else if (field.real)
        system.*field.real = qrs::standard::parseReal(value);
    else
        system.*field.integer = qrs::standard::parseInteger(value);
}

}  // namespace

CPipeSystemDlg::CPipeSystemDlg(const qrs::standard::Standard& standard, PipeGroupNode& group, PipeNode& system)
    : Form(L"管线系统"), standard_(standard), group_(group), system_(system) {}

std::wstring CPipeSystemDlg::RefuseName(const qrs::standard::Standard& standard, const PipeNode* system,
                                        const std::wstring& name) {
    if (name.empty()) return L"系统名不能为空。";
    for (const auto& group : standard.groups) {
        // In other groups, too: a question by name is answered by the first group that has it.
        for (int i = 0; i < group->GetSystemNum(); ++i) {
            const PipeNode* other = group->FindPipeSystem(i);
            if (other != system && compareNoCase(view(other->PipeName), name) == 0)
                return L"系统 " + name + L" 已经存在。";
        }
        // The pipes of old drawings that bear the name belong to the system that once had it.
        CString owner;
        const bool isOld = group->OldSystemNameToCurrentName(makeText(name), owner) && view(owner) != name;
        if (isOld && (system == nullptr || owner != system->PipeName))
            return name + L" 是系统 " + wide(owner) + L" 的原名。";
    }
    return {};
}

void CPipeSystemDlg::describe() {
    fields_.clear();
    name_ = &form().addEdit(L"系统名", wide(system_.PipeName));
    name_->enabled = group_.CanRename() && system_.CanName;
    name_->refuse = [this](const std::wstring& name) { return RefuseName(standard_, &system_, name); };
    for (const SystemField& field : kFields) {
        Control& control = field.isMaterial
                               ? form().addCombo(field.caption, GetPipeMaterialList(), textOf(system_, field), true)
                               : form().addEdit(field.caption, textOf(system_, field));
        control.refuse = [&field](const std::wstring& typed) { return refuseText(field, typed); };
        fields_.push_back(&control);
    }
}

void CPipeSystemDlg::pressOk() {
    std::size_t row = 0;
    for (const SystemField& field : kFields)
        takeText(system_, field, fields_[row++]->text);
    const CString name = makeText(name_->text);
    if (name != system_.PipeName) group_.RenameSystemName(CString(system_.PipeName), name);
    Form::pressOk();
}
