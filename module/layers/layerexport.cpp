// Writes the standard's layer definitions into a text file beside the drawing.
#include <string>

#include "acdocman.h"
#include "acutads.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "layers/layertoolbar.h"
#include "qrs_kernal.h"
#include "standard/holder.h"
#include "standard/text.h"
#include "standard/values.h"

namespace {

using qrs::standard::Standard;

// Of the layers that belong to no pipe system those of the suite itself (under "默认") are nobody else's business.
const wchar_t* const kOtherCategories[] = {L"建筑", L"其他"};

constexpr const wchar_t* kFileEnding = L"_图层.txt";
constexpr const char* kByteOrderMark = "\xEF\xBB\xBF";  // tells spreadsheets and old text editors that it is UTF-8

// Rows of fields with tabs between them.
class Rows {
  public:
    Rows() { add({L"类别", L"系统", L"图层名", L"颜色", L"线型", L"线宽"}); }

    void addLayer(const CString& category, const CString& system, const LayerNode& layer) {
        CString color;
        color.Format(L"%d,%d,%d", layer.LayerColor.red(), layer.LayerColor.green(), layer.LayerColor.blue());
        add({category, system, layer.LayerName, color, layer.LineStyle,
             qrs::standard::formatLineWeight(layer.LineWeight)});
        ++layers_;
    }
    int layers() const { return layers_; }
    std::string bytes() const { return kByteOrderMark + qrs::standard::toUtf8(text_); }

  private:
    void add(std::initializer_list<CString> fields) {
        bool isFirst = true;
        for (CString field : fields) {
            // What would break the columns.
            for (const wchar_t breaker : {L'\t', L'\r', L'\n'})
                field.Replace(breaker, L' ');
            if (!isFirst) text_ += L'\t';
            text_ += field;
            isFirst = false;
        }
        text_ += L"\r\n";
    }

    CString text_;
    int layers_ = 0;
};

Rows rowsOf(const Standard& standard) {
    Rows rows;
    for (const auto& group : standard.groups) {
        for (int i = 0; i < group->GetSystemNum(); ++i) {
            const PipeNode& system = *group->FindPipeSystem(i);
            for (int j = 0; j < system.GetLayerNum(); ++j)
                rows.addLayer(group->GroupName(), system.PipeName, *system.FindLayerNode(j));
        }
    }
    for (const wchar_t* category : kOtherCategories) {
        for (const auto& group : standard.otherLayers) {
            if (!group->IsLayerType(category)) continue;
            for (int i = 0; i < group->GetLayerNum(); ++i)
                rows.addLayer(category, CString(), *group->FindLayerNode(i));
        }
    }
    return rows;
}

// A drawing that has no file yet has its list in the temporary folder.
std::wstring exportPath() {
    const AcApDocument* document = acDocManager ? acDocManager->curDocument() : nullptr;
    if (!document) return std::wstring();
    const std::wstring drawing =
        document->isNamedDrawing() ? document->fileName() : qrs::platform::temporaryFolder() + document->docTitle();
    const std::size_t name = drawing.rfind(L'\\') + 1;
    const std::size_t dot = drawing.rfind(L'.');
    return (dot == std::wstring::npos || dot <= name ? drawing : drawing.substr(0, dot)) + kFileEnding;
}

}  // namespace

void CLayerToolBar::ExportLayer() {
    const Standard* standard = qrs::standard::currentStandard();
    const std::wstring path = exportPath();
    if (!standard || path.empty()) {
        QrsExport::PrintRefusal(L"\n没有可以输出的图层定义！");
        return;
    }
    const Rows rows = rowsOf(*standard);
    qrs::platform::Error error;
    if (qrs::platform::writeFileAtomically(qrs::platform::nativePath(path), rows.bytes(), false, error))
        acutPrintf(L"\n已将 %d 个图层的定义写入 %s\n", rows.layers(), qrs::platform::shownPath(path).c_str());
    else
        QrsExport::FailCommand(qrs::platform::translated(L"The layer definitions were not written: %1",
                                                         qrs::platform::fromUtf8(error.message)));
}
