// Reads a standard from its file, section by section.
#include <utility>

#include "host/platform/codepage.h"
#include "standard/fields.h"
#include "standard/itemtree.h"
#include "standard/standard.h"
#include "standard/text.h"

namespace qrs::standard {
namespace {

bool isElement(const pugi::xml_node& node, std::string_view name) {
    return node.type() == pugi::node_element && name == node.name();
}

template <class Node, std::size_t count>
void readFields(const pugi::xml_node& item, const Field<Node> (&fields)[count], Node& node,
                bool inOtherLayers = false) {
    for (const Field<Node>& field : fields) {
        if (field.onlyInOtherLayers && !inOtherLayers) continue;
        const CString text = itemText(findSubItem(item, field.name));
        field.form.set(node, text.IsEmpty() ? CString(field.missing) : text);
    }
}

std::unique_ptr<LayerNode> readLayer(const pugi::xml_node& item, bool inOtherLayers) {
    auto layer = std::make_unique<LayerNode>();
    readFields(item, kLayerFields, *layer, inOtherLayers);
    for (const pugi::xml_node& attachment : findSubItem(item, "LayerAttachSet").children("LayerAttach")) {
        layer->LayerAttachSet.push_back(itemText(attachment));
    }
    return layer;
}

template <class Add>
void readMap(const pugi::xml_node& map, const Add& add) {
    for (const pugi::xml_node& item : map.children("MapItem")) {
        MapItem entry;
        readFields(item, kMapItemFields, entry);
        add(entry);
    }
}

std::unique_ptr<PipeNode> readPipe(const pugi::xml_node& item) {
    auto pipe = std::make_unique<PipeNode>();
    readFields(findSubItem(item, "BaseInfo"), kPipeFields, *pipe);
    for (const pugi::xml_node& child : item.children("Layer")) {
        auto layer = readLayer(child, false);
        layer->LayerType = itemAttribute(child, "LayerType");
        layer->SystemName = pipe->PipeName;
        pipe->AddLayerNode(layer.release());
    }
    readMap(findSubItem(item, "SysMap"),
            [&pipe](const MapItem& entry) { pipe->SetLayerTypeMapping(entry.SrcItem, entry.DesItem); });
    pipe->UpdateLayerTypeMap();
    return pipe;
}

void readPipeSystem(const pugi::xml_node& section, Standard& standard) {
    for (const pugi::xml_node& item : section.children("PipeGroup")) {
        const bool canName = parseInteger(itemAttribute(item, "CanName")) != 0;
        auto group = std::make_unique<PipeGroupNode>(itemAttribute(item, "Name"), canName);
        for (const pugi::xml_node& pipe : item.children("Pipe"))
            group->AddPipeSystem(readPipe(pipe).release());
        standard.groups.push_back(std::move(group));
    }
}

void readOtherLayer(const pugi::xml_node& section, Standard& standard) {
    for (const pugi::xml_node& item : section.children("LayerGroup")) {
        auto group = std::make_unique<OtherLayerNode>(itemAttribute(item, "LayerType"));
        for (const pugi::xml_node& child : item.children()) {
            if (child.type() != pugi::node_element) continue;
            // Here, and not in a system, case does not count, and whatever is no layer is the type map: files that
            // older tools wrote come so.
            if (equalNoCase(fromUtf8(child.name()), L"layer")) {
                group->AddLayerNode(readLayer(child, true).release());
            } else {
                readMap(child,
                        [&group](const MapItem& entry) { group->AddMapping(entry.SrcItem, entry.DesItem, false); });
            }
        }
        standard.otherLayers.push_back(std::move(group));
    }
}

void readLayerNameRule(const pugi::xml_node& section, Standard& standard) {
    for (const pugi::xml_node& item : section.children("NameRule")) {
        NameRule rule;
        rule.LayerType = itemAttribute(item, "LayerType");
        readFields(item, kNameRuleFields, rule);
        standard.nameRules.push_back(rule);
    }
}

void readCreatePipeSystemRule(const pugi::xml_node& section, Standard& standard) {
    for (const pugi::xml_node& item : findSubItem(section, "LinkLayerType").children("CreateRule")) {
        CreateRule rule;
        rule.GroupName = itemAttribute(item, "Name");
        for (const pugi::xml_node& type : item.children("LayerType"))
            rule.LayerTypes.push_back(itemText(type));
        standard.createRules.push_back(std::move(rule));
    }
}

void readTextStyleSetting(const pugi::xml_node& section, Standard& standard) {
    for (const pugi::xml_node& item : findSubItem(section, "TextStyleSet").children("TextStyle")) {
        TextStyleNode style;
        style.Key = itemAttribute(item, "Key");
        readFields(item, kTextStyleFields, style);
        standard.textStyles.push_back(style);
    }
}

void readObjectColorSetting(const pugi::xml_node& section, Standard& standard) {
    for (const pugi::xml_node& item : section.children("ObjectColor")) {
        ObjectColor color;
        readFields(item, kObjectColorFields, color);
        standard.objectColors.push_back(color);
    }
}

struct Section {
    const char* name;
    void (*read)(const pugi::xml_node& section, Standard& standard);
};

// Not the order of the file: the rules for layer names are there before the layers.
constexpr Section kSections[] = {
    {"LayerNameRule", readLayerNameRule},
    {"PipeSystem", readPipeSystem},
    {"OtherLayer", readOtherLayer},
    {"CreatePipeSystemRule", readCreatePipeSystemRule},
    {"TextStyleSetting", readTextStyleSetting},
    {"ObjectColorSetting", readObjectColorSetting},
};

bool readTree(const pugi::xml_document& tree, const std::string& name, Standard& out, platform::Error& error) {
    const pugi::xml_node root = tree.document_element();
    // The root's Comment makes a file one that lists offer; a file that was chosen is loaded without it as well.
    if (!isElement(root, kRootName)) {
        error.message = name + "：不是管线系统标准文件（根元素是“" + root.name() + "”）";
        return false;
    }
    Standard standard;
    for (const Section& section : kSections)
        section.read(findSubItem(root, section.name), standard);
    out = std::move(standard);
    return true;
}

}  // namespace

bool parseStandard(std::string_view bytes, const std::string& name, Standard& out, platform::Error& error) {
    pugi::xml_document tree;
    return parseItemTree(bytes, name, tree, error) && readTree(tree, name, out, error);
}

bool readStandard(std::wstring_view path, Standard& out, platform::Error& error) {
    pugi::xml_document tree;
    return loadItemTree(path, tree, error) && readTree(tree, platform::toUtf8(path), out, error);
}

}  // namespace qrs::standard
