// Makes the standard's layers in the drawing when they are first needed.
#include "dbapserv.h"
#include "dbobjptr.h"
#include "PipeSystemTool.h"
#include "PwxTool.h"
#include "qrs_kernal.h"
#include "standard/holder.h"
#include "standard/layerlookup.h"
#include "standard/linetypes.h"
#include "standard/standardedit.h"
#include "standard/systemindex.h"
#include "standard/text.h"

using qrs::standard::currentDefinition;
using qrs::standard::currentStandard;
using qrs::standard::Standard;

namespace {

// Commands and sibling modules ask for these keys whatever the current standard defines, so the list is fixed.
constexpr const wchar_t* kIndependentLayerKeys[] = {
    L"Morvel给排水",   L"阀门",     L"立管编号", L"洁具",       L"消防标注",   L"桩",         L"地漏",
    L"雨水斗",         L"消火栓",   L"灭火器",   L"灭火器文字", L"方沟",       L"双线管",     L"地热盘管",
    L"管道标注",       L"计算文字", L"计算面积", L"中心线",     L"虚线",       L"给排水室外", L"雨水口",
    L"纵断面图",       L"网格",     L"水箱",     L"水泵",       L"给排水法兰", L"洞口",       L"楼板洞",
    L"井标注",         L"树",       L"道路",     L"焓湿图",     L"焓湿图等温", L"焓湿图等焓", L"焓湿图等湿",
    L"焓湿图相对湿度", L"公框",     L"公标",     L"标高",       L"坐标",       L"索引符号",   L"引出标注",
    L"图名标注",       L"符号",     L"公文",     L"表格",
};

AcDbDatabase* workingDatabase() {
    return acdbHostApplicationServices()->workingDatabase();
}

// A setting that a layer cannot have ("by layer") leaves that of a new layer. False when the name is none.
bool setUp(AcDbLayerTableRecord& record, const LayerNode& layer) {
    if (record.setName(layer.LayerName) != Acad::eOk) return false;
    record.setColor(layer.LayerColor);
    record.setLineWeight(static_cast<AcDb::LineWeight>(layer.LineWeight));
    record.setIsPlottable(layer.CanPlot);
    record.setLinetypeObjectId(qrs::standard::layerLinetype(layer.LineStyle));
    return true;
}

LayerNode* currentIndependentLayer(const CString& layerKey) {
    const Standard* standard = currentStandard();
    return standard != nullptr ? qrs::standard::independentLayer(*standard, layerKey) : nullptr;
}

}  // namespace

AcDbObjectId LayerNode::CreateLayer(bool* created) const {
    AcDbObjectId id = QrsExport::GetLayerIdFromString(LayerName.GetString());
    if (!id.isNull()) return id;
    // The record is destroyed after the table, and deleted there when the table did not take it.
    AcDbLayerTableRecordPointer record;
    record.create();
    // Opened before the linetype is loaded: where the layer cannot be made, the drawing stays as it is.
    AcDbLayerTablePointer table(workingDatabase(), AcDb::kForWrite);
    if (table.openStatus() != Acad::eOk || !setUp(*record.object(), *this)) return {};
    if (table->add(id, record.object()) != Acad::eOk) return {};
    if (created != nullptr && id.isValid()) *created = true;
    return id;
}

AcDbObjectId PipeNode::CreateLayer(const CString& layerName, bool* found) const {
    const LayerNode* layer = FindLayerNodeByLayerName(layerName);
    if (layer == nullptr) return {};
    if (found != nullptr) *found = true;
    return layer->CreateLayer();
}

AcDbObjectId PipeGroupNode::CreateLayer(const CString& layerName) const {
    // The first definition decides, also when its layer could not be made.
    const PipeNode* system = FindPipeSystemByLayerName(layerName);
    return system != nullptr ? system->CreateLayer(layerName) : AcDbObjectId();
}

namespace PipeSystemTool {

CString GetLayerName(const CString& systemName, const CString& layerType, bool create) {
    const LayerNode* layer = currentDefinition(systemName, layerType);
    if (layer == nullptr) return {};
    if (create) layer->CreateLayer();
    return layer->LayerName;
}

AcDbObjectId InitLayer(const CString& systemName, const CString& layerType, CString* name) {
    const LayerNode* layer = currentDefinition(systemName, layerType);
    // The name is taken last: it may be the very text that was asked with.
    const AcDbObjectId id = layer != nullptr ? layer->CreateLayer() : AcDbObjectId();
    if (name != nullptr) *name = layer != nullptr ? layer->LayerName : CString();
    return id;
}

AcDbObjectId InitLayer(const CString& layerName) {
    AcDbObjectId id = QrsExport::GetLayerIdFromString(layerName.GetString());
    const Standard* standard = currentStandard();
    if (!id.isNull() || standard == nullptr) return id;
    const PipeGroupNode* asked = nullptr;
    for (const qrs::standard::IndexEntry* entry : standard->systems().withLayer(layerName)) {
        if (entry->group == asked) continue;
        asked = entry->group;
        id = asked->CreateLayer(layerName);
        if (id.isValid()) return id;
    }
    for (const auto& group : standard->otherLayers) {
        if (const LayerNode* layer = group->FindLayerNodeByLayerName(layerName)) return layer->CreateLayer();
    }
    return {};
}

bool UpdateLayer(const CString& layerName) {
    const Standard* standard = currentStandard();
    const LayerNode* layer = standard != nullptr ? qrs::standard::layerNamed(*standard, layerName) : nullptr;
    AcDbLayerTableRecordPointer record(QrsExport::GetLayerIdFromString(layerName.GetString()), AcDb::kForWrite);
    if (layer == nullptr || record.openStatus() != Acad::eOk) return false;
    qrs::standard::updateLayer(*layer, *record.object());
    return true;
}

AcDbObjectId InitLinetyle(const CString& systemName, const CString& layerType) {
    const LayerNode* layer = currentDefinition(systemName, layerType);
    return layer != nullptr ? PwxTool::LoadQdLineType(layer->LineStyle) : AcDbObjectId();
}

AcDbObjectId InitIndependentLayer(const CString& layerKey, CString* name) {
    const LayerNode* layer = currentIndependentLayer(layerKey);
    if (layer == nullptr) return {};
    const AcDbObjectId id = layer->CreateLayer();
    if (name != nullptr) *name = layer->LayerName;
    return id;
}

CString GetIndependentLayerName(const CString& layerKey, bool create) {
    const LayerNode* layer = currentIndependentLayer(layerKey);
    if (layer == nullptr) return {};
    if (create) layer->CreateLayer();
    return layer->LayerName;
}

void GetIndependentLayerKey(std::vector<CString>& out) {
    out.assign(std::begin(kIndependentLayerKeys), std::end(kIndependentLayerKeys));
}

AcCmColor GetLayerColor(const CString& layerName) {
    // The drawing wins over the standard.
    const AcDbLayerTableRecordPointer record(QrsExport::GetLayerIdFromString(layerName.GetString()), AcDb::kForRead);
    if (record.openStatus() == Acad::eOk) return record->color();
    const Standard* standard = currentStandard();
    const LayerNode* layer = standard != nullptr ? qrs::standard::layerNamed(*standard, layerName) : nullptr;
    return layer != nullptr ? layer->LayerColor : AcCmColor();
}

}  // namespace PipeSystemTool
