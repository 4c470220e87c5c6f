// The elements of a standard file as tables: name, description, default when missing, and the member they stand for.
#pragma once

#include <type_traits>

#include "PipeNodes.h"
#include "standard/standard.h"
#include "standard/values.h"

namespace qrs::standard {

// How a member becomes the text of its element and back, and how it comes from another node as it is.
template <class Node>
struct Form {
    CString (*get)(const Node& node);
    void (*set)(Node& node, const CString& text);
    void (*copy)(Node& to, const Node& from);
};

// One element. A missing or empty one reads as the text in missing.
template <class Node>
struct Field {
    const char* name;
    const char* comment;
    Form<Node> form;
    const wchar_t* missing = L"";
    bool onlyInOtherLayers = false;
};

// One entry of a type map.
struct MapItem {
    CString SrcItem;
    CString DesItem;
};

namespace form {

template <class Member>
struct OwnerOf;
template <class Node, class Value>
struct OwnerOf<Value Node::*> {
    using Type = Node;
};
template <auto member>
using Owner = typename OwnerOf<decltype(member)>::Type;

template <auto member>
void copy(Owner<member>& to, const Owner<member>& from) {
    to.*member = from.*member;
}

template <auto member>
constexpr Form<Owner<member>> text = {
    [](const Owner<member>& node) -> CString { return node.*member; },
    [](Owner<member>& node, const CString& text) { node.*member = text; },
    copy<member>,
};
template <auto member>
constexpr Form<Owner<member>> real = {
    [](const Owner<member>& node) { return formatReal(node.*member); },
    [](Owner<member>& node, const CString& text) { node.*member = parseReal(text); },
    copy<member>,
};
template <auto member>
constexpr Form<Owner<member>> integer = {
    [](const Owner<member>& node) { return formatInteger(node.*member); },
    [](Owner<member>& node, const CString& text) { node.*member = parseInteger(text); },
    copy<member>,
};
template <auto member>
constexpr Form<Owner<member>> flag = {
    [](const Owner<member>& node) { return formatInteger(node.*member ? 1 : 0); },
    [](Owner<member>& node, const CString& text) { node.*member = parseInteger(text) != 0; },
    copy<member>,
};
template <auto member>
constexpr Form<Owner<member>> color = {
    [](const Owner<member>& node) { return formatColor(node.*member); },
    [](Owner<member>& node, const CString& text) { node.*member = parseColor(text); },
    copy<member>,
};
template <auto member>
constexpr Form<Owner<member>> lineWeight = {
    [](const Owner<member>& node) { return formatLineWeight(node.*member); },
    [](Owner<member>& node, const CString& text) { node.*member = parseLineWeight(text); },
    copy<member>,
};

}  // namespace form

// One element of a pipe system, and what it is in the system's summary, where it is in that.
struct PipeField : Field<PipeNode> {
    void (*tell)(const PipeNode& system, PipeInfoNode& info);
};

template <auto member, auto told>
void tell(const PipeNode& system, PipeInfoNode& info) {
    using Told = std::remove_reference_t<decltype(info.*told)>;
    info.*told = static_cast<Told>(system.*member);
}

// Every member of a pipe system that is no layer. "VPipeRaidus" and "FontHeigth" below are the names of the format:
// correcting them would lose the values of every file there is.
constexpr PipeField kPipeFields[] = {
    {{"PipeOriginalName", "原始名称", form::text<&PipeNode::PipeOriginalName>},
     tell<&PipeNode::PipeOriginalName, &PipeInfoNode::PipeOriginalName>},
    {{"PipeName", "名称", form::text<&PipeNode::PipeName>}, tell<&PipeNode::PipeName, &PipeInfoNode::PipeName>},
    {{"LineWidth", "线宽", form::real<&PipeNode::LineWidth>, L"0.0"},
     tell<&PipeNode::LineWidth, &PipeInfoNode::LineWidth>},
    {{"Dim", "标注", form::text<&PipeNode::Dim>}, tell<&PipeNode::Dim, &PipeInfoNode::Dim>},
    {{"Material", "管材", form::text<&PipeNode::Material>}, tell<&PipeNode::Material, &PipeInfoNode::Material>},
    {{"OutdoorMaterial", "室外管材", form::text<&PipeNode::OutdoorMaterial>},
     tell<&PipeNode::OutdoorMaterial, &PipeInfoNode::OutdoorMaterial>},
    {{"VPipeType", "立管样式", form::integer<&PipeNode::VPipeType>, L"0"},
     tell<&PipeNode::VPipeType, &PipeInfoNode::VPipeType>},
    {{"VPipeRaidus", "立管半径", form::real<&PipeNode::VPipeRaidus>, L"0.0"},
     tell<&PipeNode::VPipeRaidus, &PipeInfoNode::VPipeRaidus>},
    {{"VPipeRaidus1", "立管大圆半径", form::real<&PipeNode::VPipeRaidus1>, L"0.5"},
     tell<&PipeNode::VPipeRaidus1, &PipeInfoNode::VPipeRaidus1>},
    {{"VPipeRaidus2", "立管小圆半径", form::real<&PipeNode::VPipeRaidus2>, L"0.25"},
     tell<&PipeNode::VPipeRaidus2, &PipeInfoNode::VPipeRaidus2>},
    {{"WaterFlowStatus", "水流状态", form::text<&PipeNode::WaterFlowStatus>},
     tell<&PipeNode::WaterFlowStatus, &PipeInfoNode::WaterFlowStatus>},
    {{"Remark", "备注", form::text<&PipeNode::Remark>}, tell<&PipeNode::Remark, &PipeInfoNode::Remark>},
    {{"CanName", "是否可以更改管线关键字", form::flag<&PipeNode::CanName>, L"0"}, nullptr},
    {{"CanDel", "是否可以删除管线", form::flag<&PipeNode::CanDel>, L"0"}, nullptr},
    {{"Status", "状态标识", form::integer<&PipeNode::Status>, L"0"}, tell<&PipeNode::Status, &PipeInfoNode::Status>},
};

// A missing CanPlot means not plottable although a new LayerNode is plottable: whoever writes a layer by hand has to
// state it. LayerAttachSet, a list, follows these.
constexpr Field<LayerNode> kLayerFields[] = {
    {"OldKey", "旧版关键字", form::text<&LayerNode::OldKey>},
    {"LayerKey", "图层关键字", form::text<&LayerNode::LayerType>, L"", true},
    {"LayerName", "图层名", form::text<&LayerNode::LayerName>},
    {"LayerColor", "图层颜色", form::color<&LayerNode::LayerColor>},
    {"LineStyle", "线型", form::text<&LayerNode::LineStyle>},
    {"LineWeight", "线宽", form::lineWeight<&LayerNode::LineWeight>},
    {"Remark", "备注", form::text<&LayerNode::Remark>},
    {"CanDel", "是否可以删除图层", form::flag<&LayerNode::CanDel>, L"0"},
    {"CanPlot", "是否可打印图层", form::flag<&LayerNode::CanPlot>, L"0"},
};

constexpr Field<MapItem> kMapItemFields[] = {
    {"SrcItem", "映射源", form::text<&MapItem::SrcItem>},
    {"DesItem", "映射目标", form::text<&MapItem::DesItem>},
};

constexpr Field<NameRule> kNameRuleFields[] = {
    {"LayerPrefix", "图层前缀", form::text<&NameRule::LayerPrefix>},
    {"LayerSuffix", "图层后缀", form::text<&NameRule::LayerSuffix>},
};

constexpr Field<TextStyleNode> kTextStyleFields[] = {
    {"Name", "文字样式名", form::text<&TextStyleNode::Name>},
    {"ChineseFont", "中文字体名", form::text<&TextStyleNode::ChineseFont>},
    {"EnglishFont", "英文字体名", form::text<&TextStyleNode::EnglishFont>},
    {"WinFont", "win字体", form::flag<&TextStyleNode::WinFont>, L"0"},
    {"FontHeigth", "字高", form::real<&TextStyleNode::FontHeigth>, L"0.0"},
    {"WHScale", "宽高比", form::real<&TextStyleNode::WHScale>, L"0.0"},
    {"Bold", "粗体", form::flag<&TextStyleNode::Bold>, L"0"},
    {"Italic", "斜体", form::flag<&TextStyleNode::Italic>, L"0"},
    {"Encoded", "编码", form::text<&TextStyleNode::Encoded>, L"CHINESE_GB2312"},
};

constexpr Field<ObjectColor> kObjectColorFields[] = {
    {"Name", "对象名", form::text<&ObjectColor::Name>},
    {"Color", "颜色", form::color<&ObjectColor::Color>},
};

}  // namespace qrs::standard
