// Reads a standard from its file, section by section.
#include <array>
#include <cstring>
#include <utility>

#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "standard/fields.h"
#include "standard/itemtree.h"
#include "standard/standard.h"
#include "standard/text.h"

namespace qrs::standard {

using platform::translated;

namespace {

// What findSubItem gives for every field, found in one walk. Files hold the fields in the table's order, mostly.
template <class Row, std::size_t count>
std::array<pugi::xml_node, count> findFields(const pugi::xml_node& owner, const Row (&fields)[count]) {
    std::array<pugi::xml_node, count> found;
    std::size_t missing = count, expected = 0;
    for (pugi::xml_node item = nextItem(owner, owner); item && missing > 0; item = nextItem(item, owner)) {
        for (std::size_t tried = 0; tried < count; ++tried, expected = (expected + 1) % count) {
            if (std::strcmp(item.name(), fields[expected].name) != 0) continue;
            if (!found[expected]) {
                found[expected] = item;
                --missing;
            }
            expected = (expected + 1) % count;
            break;
        }
    }
    return found;
}

template <class Node, class Row, std::size_t count>
void readFields(const pugi::xml_node& item, const Row (&fields)[count], Node& node, bool inOtherLayers = false) {
    const std::array<pugi::xml_node, count> items = findFields(item, fields);
    for (std::size_t i = 0; i < count; ++i) {
        const Field<Node>& field = fields[i];
        if (field.onlyInOtherLayers && !inOtherLayers) continue;
        const CString text = itemText(items[i]);
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
    std::vector<std::unique_ptr<LayerNode>> layers;
    for (const pugi::xml_node& child : item.children("Layer")) {
        layers.push_back(readLayer(child, false));
        layers.back()->LayerType = itemAttribute(child, "LayerType");
        layers.back()->SystemName = pipe->PipeName;
    }
    readMap(findSubItem(item, "SysMap"),
            [&pipe](const MapItem& entry) { pipe->SetLayerTypeMapping(entry.SrcItem, entry.DesItem); });
    // Brings the types that borrow a layer up to date, too.
    pipe->AddLayerNodes(std::move(layers));
    return pipe;
}

void readPipeSystem(ItemTree& tree, const pugi::xml_node& section, Standard& standard) {
    for (const pugi::xml_node& item : section.children("PipeGroup")) {
        const bool canName = parseInteger(itemAttribute(item, "CanName")) != 0;
        auto group = std::make_unique<PipeGroupNode>(itemAttribute(item, "Name"), canName);
        for (const pugi::xml_node& pipe : item.children("Pipe"))
            group->AddPipeSystem(readPipe(tree.whole(pipe)).release());
        standard.groups.push_back(std::move(group));
    }
}

void readOtherLayer(ItemTree& tree, const pugi::xml_node& section, Standard& standard) {
    for (const pugi::xml_node& item : section.children("LayerGroup")) {
        auto group = std::make_unique<OtherLayerNode>(itemAttribute(item, "LayerType"));
        for (const pugi::xml_node& child : item.children()) {
            if (child.type() != pugi::node_element) continue;
            // Here, and not in a system, case does not count, and whatever is no layer is the type map: files that
            // older tools wrote come so.
            if (equalNoCase(fromUtf8(child.name()), L"layer")) {
                group->AddLayerNode(readLayer(tree.whole(child), true).release());
            } else {
                readMap(tree.whole(child),
                        [&group](const MapItem& entry) { group->AddMapping(entry.SrcItem, entry.DesItem, false); });
            }
        }
        standard.otherLayers.push_back(std::move(group));
    }
}

void readLayerNameRule(ItemTree&, const pugi::xml_node& section, Standard& standard) {
    for (const pugi::xml_node& item : section.children("NameRule")) {
        NameRule rule;
        rule.LayerType = itemAttribute(item, "LayerType");
        readFields(item, kNameRuleFields, rule);
        standard.nameRules.push_back(rule);
    }
}

void readCreatePipeSystemRule(ItemTree&, const pugi::xml_node& section, Standard& standard) {
    for (const pugi::xml_node& item : findSubItem(section, "LinkLayerType").children("CreateRule")) {
        CreateRule rule;
        rule.GroupName = itemAttribute(item, "Name");
        for (const pugi::xml_node& type : item.children("LayerType"))
            rule.LayerTypes.push_back(itemText(type));
        standard.createRules.push_back(std::move(rule));
    }
}

void readTextStyleSetting(ItemTree&, const pugi::xml_node& section, Standard& standard) {
    for (const pugi::xml_node& item : findSubItem(section, "TextStyleSet").children("TextStyle")) {
        TextStyleNode style;
        style.Key = itemAttribute(item, "Key");
        readFields(item, kTextStyleFields, style);
        standard.textStyles.push_back(style);
    }
}

void readObjectColorSetting(ItemTree&, const pugi::xml_node& section, Standard& standard) {
    for (const pugi::xml_node& item : section.children("ObjectColor")) {
        ObjectColor color;
        readFields(item, kObjectColorFields, color);
        standard.objectColors.push_back(color);
    }
}

struct Section {
    const char* name;
    void (*read)(ItemTree& tree, const pugi::xml_node& section, Standard& standard);
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

const CutRule& cutRule() {
    static const CutRule rule = [] {
        CutRule names;
        for (const Section& section : kSections)
            names.sections.push_back(section.name);
        names.bulky = {"PipeSystem", "OtherLayer"};
        return names;
    }();
    return rule;
}

}  // namespace

bool parseStandard(std::string_view bytes, const std::string& name, Standard& out, platform::Error& error) {
    Standard standard;
    std::string rootName;
    const auto read = [&](ItemTree& tree) {
        standard = Standard();
        // The root's Comment makes a file one that lists offer; a file that was chosen is loaded without it as well.
        rootName = tree.root().name();
        if (rootName != kRootName) return;
        for (const Section& section : kSections)
            section.read(tree, findSubItem(tree.root(), section.name), standard);
    };
    if (!readItems(bytes, name, cutRule(), read, error)) return false;
    if (rootName != kRootName) {
        error.message = translated("%1: not a file of a standard (its root element is \"%2\")", name, rootName);
        return false;
    }
    out = std::move(standard);
    return true;
}

bool readStandard(std::wstring_view path, Standard& out, platform::Error& error) {
    const auto parse = [&](std::string_view bytes, const std::string& name) {
        return parseStandard(bytes, name, out, error);
    };
    return loadItemFile(path, kMostItemBytes, parse, error);
}

bool isStandardFile(std::wstring_view path) {
    platform::Error error;
    std::string comment;
    const auto readRoot = [&](ItemTree& tree) {
        comment = tree.root().attribute("Comment").value();
        tree.readAll();
    };
    const auto parse = [&](std::string_view bytes, const std::string& name) {
        return readItems(bytes, name, cutRule(), readRoot, error);
    };
    return loadItemFile(path, kMostItemBytes, parse, error) && comment == kRootComment;
}

}  // namespace qrs::standard
