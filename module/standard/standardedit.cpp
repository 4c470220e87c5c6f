// Copies the tree, writes it to its file, makes it the current one and updates the drawing's layers.
#include "standard/standardedit.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "afxwin.h"
#include "dbapserv.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "PwxTool.h"
#include "qrs_kernal.h"
#include "qrs_standard.h"
#include "standard/holder.h"
#include "standard/startup.h"
#include "standard/text.h"

namespace qrs::standard {

using platform::translated;

namespace {

template <class Node>
std::vector<std::unique_ptr<Node>> copiesOf(const std::vector<std::unique_ptr<Node>>& nodes) {
    std::vector<std::unique_ptr<Node>> copies;
    for (const std::unique_ptr<Node>& node : nodes) {
        copies.push_back(std::make_unique<Node>());
        copies.back()->CopyFrom(node.get());
    }
    return copies;
}

template <class Node>
Node* named(const std::vector<std::unique_ptr<Node>>& nodes, std::wstring_view name) {
    const auto found =
        std::find_if(nodes.begin(), nodes.end(), [&](const auto& node) { return view(node->GroupName()) == name; });
    return found != nodes.end() ? found->get() : nullptr;
}

}  // namespace

std::unique_ptr<StandardEdit> StandardEdit::begin() {
    const Standard* current = currentStandard();
    if (!current) {
        AfxMessageBox(L"没有管线系统标准。", MB_OK | MB_ICONEXCLAMATION);
        return nullptr;
    }
    std::unique_ptr<StandardEdit> edit(new StandardEdit);
    edit->copy_.groups = copiesOf(current->groups);
    edit->copy_.otherLayers = copiesOf(current->otherLayers);
    edit->copy_.nameRules = current->nameRules;
    edit->copy_.createRules = current->createRules;
    edit->copy_.textStyles = current->textStyles;
    edit->copy_.objectColors = current->objectColors;
    return edit;
}

PipeGroupNode* StandardEdit::group(std::wstring_view name) const {
    return named(copy_.groups, name);
}

OtherLayerNode* StandardEdit::otherLayers(std::wstring_view name) const {
    return named(copy_.otherLayers, name);
}

bool StandardEdit::save() {
    StandardHolder& holder = StandardHolder::instance();
    const CString path = holder.path();
    platform::Error error;
    if (!writeStandard(copy_, view(path), error)) {
        const std::wstring reason = platform::fromUtf8(error.message);
        AfxMessageBox(translated(L"The standard cannot be saved: %1", reason).c_str(), MB_OK | MB_ICONERROR);
        QrsExport::FailWriting({});  // told already
        return false;
    }
    holder.adopt(std::move(copy_), path);
    // There is a file now, also where the one carried inside served.
    QrsExport::SetStandardInUse({wide(path), false});
    convertOldSystemNames();
    applyObjectColors();
    initLayerMaps();
    return true;
}

void updateLayer(const LayerNode& layer, AcDbLayerTableRecord& record) {
    if (layer.LayerColor.isByACI() || layer.LayerColor.isByColor()) record.setColor(layer.LayerColor);
    record.setLineWeight(static_cast<AcDb::LineWeight>(layer.LineWeight));
    record.setIsPlottable(layer.CanPlot);
    const AcDbObjectId linetype = PwxTool::LoadQdLineType(layer.LineStyle);
    if (!linetype.isNull()) record.setLinetypeObjectId(linetype);
}

void updateDrawingLayers() {
    const Standard* current = currentStandard();
    AcDbLayerTablePointer table(acdbHostApplicationServices()->workingDatabase(), AcDb::kForRead);
    if (!current || table.openStatus() != Acad::eOk) return;
    LayerNameMap layers;
    for (const auto& group : current->groups)
        group->GetAllLayer(layers);
    for (const auto& group : current->otherLayers)
        group->GetAllLayer(layers);
    for (const auto& [name, layer] : layers) {
        AcDbObjectId id;
        if (table->getAt(name.GetString(), id) != Acad::eOk) continue;
        AcDbObjectPointer<AcDbLayerTableRecord> record(id, AcDb::kForWrite);
        if (record.openStatus() == Acad::eOk) updateLayer(*layer, *record);
    }
}

}  // namespace qrs::standard
