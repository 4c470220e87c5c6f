// Reads userlayer.dbf anew for each dialog, so that an office sees what it has just added.
#include "dialogs/userlayerdlg.h"

#include <cstdint>
#include <optional>
#include <utility>

#include "afxwin.h"
#include "config/dbfrecordset.h"
#include "qrs_kernal.h"
#include "standard/tabletext.h"
#include "standard/text.h"

using namespace qrs::platform;

CUserLayerDlg::CUserLayerDlg(const std::wstring& name) : Form(L"用户图层"), chosen_(name) {}

bool CUserLayerDlg::read() {
    std::wstring path;
    CDBFRecordset table;
    if (!QrsExport::FindFile(L"userlayer.dbf", path) || !qrs::standard::openTable(table, path)) return false;
    for (table.MoveFirst(); !table.IsEOF(); table.MoveNext()) {
        std::int32_t product = 0;
        table.GetFieldValue(L"product", product);
        std::wstring name = qrs::standard::wide(qrs::standard::trimmedText(table, L"name"));
        if (!name.empty()) layers_.push_back({product, std::move(name)});
    }
    return true;
}

void CUserLayerDlg::describe() {
    list_ = &form().addList(L"图层", {L"图层名", L"产品"}, ListKind::One);
    for (const UserLayer& layer : layers_)
        list_->addRow({layer.name, std::to_wstring(layer.product)}, layer.name == chosen_);
}

void CUserLayerDlg::pressOk() {
    if (const std::optional<std::size_t> row = list_->chosenRow()) chosen_ = layers_[*row].name;
    Form::pressOk();
}

bool CUserLayerDlg::Choose(std::wstring& name) {
    CUserLayerDlg dialog(name);
    if (!dialog.read()) {
        AfxMessageBox(L"对不起，没有发现userlayer.dbf文件！", MB_OK | MB_ICONEXCLAMATION);
        return false;
    }
    if (dialog.show() != qrs::platform::kDialogOk) return false;
    name = dialog.chosen_;
    return true;
}
