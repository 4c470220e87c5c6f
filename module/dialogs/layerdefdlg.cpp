// The dialogs that edit layer definitions of a standard.
#include "dialogs/layerdefdlg.h"

#include <memory>
#include <utility>

#include "aced.h"
#include "afxwin.h"
#include "dialogs/userlayerdlg.h"
#include "layers/layerfields.h"
#include "standard/layerlookup.h"
#include "standard/text.h"

using namespace qrs::layers;
using namespace qrs::platform;
using qrs::standard::makeText;
using qrs::standard::view;
using qrs::standard::wide;

bool AskText(LPCWSTR title, LPCWSTR caption, std::wstring& asked,
             std::function<std::wstring(const std::wstring&)> refuse) {
    Dialog dialog(title);
    Control& field = dialog.addEdit(caption, asked);
    field.refuse = refuse;
    dialog.refuseOk = [&] { return refuse(field.text); };
    if (showDialog(dialog) != kDialogOk) return false;
    asked = field.text;
    return true;
}

CLayerDefDlg::CLayerDefDlg(LayerNode& layer, std::function<std::wstring(const std::wstring&)> refuseName)
    : Form(L"图层定义"), layer_(layer), refuseName_(std::move(refuseName)) {}

void CLayerDefDlg::describe() {
    form().addLabel(L"图层类型: " + wide(layer_.LayerType));
    name_ = &form().addEdit(L"图层名", wide(layer_.LayerName));
    name_->refuse = [this](const std::wstring& name) {
        const std::wstring refusal = refuseLayerName(name);
        return refusal.empty() ? refuseName_(name) : refusal;
    };
    form().addButton(L"用户图层...", [this] { chooseUserLayer(); });
    color_ = &form().addEdit(L"颜色", colorText(layer_.LayerColor));
    color_->refuse = refuseColor;
    form().addButton(L"选择颜色...", [this] { chooseColor(); });
    linetype_ = &form().addCombo(L"线型", linetypeNames(), wide(layer_.LineStyle), true);
    weight_ = &form().addCombo(L"线宽", lineWeightTexts(), lineWeightText(layer_.LineWeight));
    plots_ = &form().addCheckBox(L"打印", layer_.CanPlot);
    remark_ = &form().addEdit(L"备注", wide(layer_.Remark));
}

void CLayerDefDlg::chooseUserLayer() {
    std::wstring name = name_->text;
    if (!CUserLayerDlg::Choose(name)) return;
    const std::wstring refusal = name_->refuse(name);
    if (refusal.empty())
        name_->text = name;
    else
        AfxMessageBox(refusal.c_str(), MB_OK | MB_ICONEXCLAMATION);
}

void CLayerDefDlg::chooseColor() {
    AcCmColor color;
    parseColorText(color_->text, color);
    if (acedSetColorDialogTrueColor(color, Adesk::kTrue, layer_.LayerColor)) color_->text = colorText(color);
}

void CLayerDefDlg::pressOk() {
    // A field that was never touched may hold what a damaged file said.
    const std::wstring refusal = name_->refuse(name_->text);
    if (!refusal.empty()) {
        AfxMessageBox(refusal.c_str(), MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    layer_.LayerName = makeText(name_->text);
    parseColorText(color_->text, layer_.LayerColor);
    layer_.LineStyle = makeText(linetype_->text);
    parseLineWeightText(weight_->text, layer_.LineWeight);
    layer_.CanPlot = plots_->checked;
    layer_.Remark = makeText(remark_->text);
    Form::pressOk();
}

CLayerDefListDlg::CLayerDefListDlg(const qrs::standard::Standard& standard, PipeNode& system)
    : Form(L"图层 - " + wide(system.PipeName)), standard_(&standard), system_(&system) {}

CLayerDefListDlg::CLayerDefListDlg(OtherLayerNode& group)
    : Form(L"图层 - " + wide(group.GroupName())), others_(&group) {}

int CLayerDefListDlg::count() const {
    return system_ ? system_->GetLayerNum() : others_->GetLayerNum();
}

LayerNode* CLayerDefListDlg::layerAt(int position) const {
    return system_ ? system_->FindLayerNode(position) : others_->FindLayerNode(position);
}

LayerNode* CLayerDefListDlg::chosenLayer() const {
    const std::optional<std::size_t> row = list_->chosenRow();
    return row ? layerAt(static_cast<int>(*row)) : nullptr;
}

void CLayerDefListDlg::describe() {
    list_ = &form().addList(L"图层", {L"类型", L"图层名", L"颜色", L"线型", L"线宽", L"打印"}, ListKind::One);
    form().addButton(L"修改...", [this] { edit(); });
    form().addButton(L"新建...", [this] { add(); });
    // Groups of other layers keep the layers that the suite asks for by their keys.
    if (system_) form().addButton(L"删除", [this] { remove(); });
    list(0);
}

void CLayerDefListDlg::list(std::size_t chosen) {
    list_->rows.clear();
    for (int i = 0; i < count(); ++i) {
        const LayerNode& layer = *layerAt(i);
        list_->addRow({wide(layer.LayerType), wide(layer.LayerName), colorText(layer.LayerColor), wide(layer.LineStyle),
                       lineWeightText(layer.LineWeight), layer.CanPlot ? L"是" : L"否"});
    }
    list_->chooseRow(chosen);
}

// Systems may share a layer inside, but not with one another: what lies on it would belong to either.
std::wstring CLayerDefListDlg::refuseName(const LayerNode* layer, const std::wstring& name) const {
    const CString wanted = makeText(name);
    if (system_ && qrs::standard::isLayerOfAnother(*standard_, system_->PipeName, wanted))
        return L"图层 " + name + L" 已属于另一个管线系统。";
    const LayerNode* same = others_ ? others_->FindLayerNodeByLayerName(wanted) : nullptr;
    if (same && same != layer) return L"图层 " + name + L" 已经存在。";
    return {};
}

void CLayerDefListDlg::edit() {
    LayerNode* layer = chosenLayer();
    if (!layer) return;
    CLayerDefDlg dialog(*layer, [&](const std::wstring& name) { return refuseName(layer, name); });
    if (dialog.show() == qrs::platform::kDialogOk) list(*list_->chosenRow());
}

void CLayerDefListDlg::add() {
    std::wstring type;
    const auto refuseType = [this](const std::wstring& typed) -> std::wstring {
        if (typed.empty()) return L"图层类型不能为空。";
        for (int i = 0; i < count(); ++i)
            if (view(layerAt(i)->LayerType) == typed) return L"已经有这个类型的图层。";
        return {};
    };
    if (!AskText(L"新建图层", L"图层类型", type, refuseType)) return;
    auto layer = std::make_unique<LayerNode>();
    layer->LayerType = makeText(type);
    layer->LayerColor.setColorIndex(7);
    layer->LineStyle = L"Continuous";
    layer->CanDel = true;
    CLayerDefDlg dialog(*layer, [&](const std::wstring& name) { return refuseName(nullptr, name); });
    if (dialog.show() != qrs::platform::kDialogOk) return;
    if (system_)
        system_->AddLayerNode(layer.release());
    else
        others_->AddLayerNode(layer.release());
    list(static_cast<std::size_t>(count() - 1));
}

void CLayerDefListDlg::remove() {
    LayerNode* layer = chosenLayer();
    if (!layer) return;
    if (!layer->CanDel) {
        AfxMessageBox((L"图层 " + wide(layer->LayerName) + L" 不能删除。").c_str(), MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    system_->DelLayerNode(layer);
    list(0);
}
