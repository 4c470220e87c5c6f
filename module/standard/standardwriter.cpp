// Writes a standard into its file, section by section.
#include <pugixml.hpp>

#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/language.h"
#include "standard/fields.h"
#include "standard/itemtree.h"
#include "standard/standard.h"
#include "standard/text.h"

namespace qrs::standard {

using platform::translated;

namespace {

// Builds the items; remembers the first text that no file can hold.
class Builder {
  public:
    pugi::xml_node append(pugi::xml_node parent, const char* name, const char* comment) {
        pugi::xml_node item = append(parent, name);
        item.append_attribute("Comment").set_value(comment);
        return item;
    }

    // For the few items that bear no description.
    pugi::xml_node append(pugi::xml_node parent, const char* name) { return parent.append_child(name); }

    void setText(pugi::xml_node item, const CString& text) {
        if (!text.IsEmpty()) item.text().set(checked(item, text).c_str());
    }

    void setAttribute(pugi::xml_node item, const char* name, const CString& text) {
        item.append_attribute(name).set_value(checked(item, text).c_str());
    }

    void appendText(pugi::xml_node parent, const char* name, const char* comment, const CString& text) {
        setText(append(parent, name, comment), text);
    }

    template <class Node, class Row, std::size_t count>
    void appendFields(pugi::xml_node parent, const Row (&fields)[count], const Node& node, bool inOtherLayers = false) {
        for (const Field<Node>& field : fields) {
            if (field.onlyInOtherLayers && !inOtherLayers) continue;
            appendText(parent, field.name, field.comment, field.form.get(node));
        }
    }

    const std::string& failure() const { return failure_; }

  private:
    std::string checked(const pugi::xml_node& item, const CString& text) {
        const std::wstring_view in = view(text);
        for (std::size_t i = 0; i < in.size() && failure_.empty();) {
            if (isXmlCharacter(platform::nextCodePoint(in, i))) continue;
            failure_ = translated("the text of element %1 holds a character that XML cannot store", item.name());
        }
        return toUtf8(text);
    }

    std::string failure_;
};

// The entries that a reader would not have by itself. Without one there is no element. A type that a system maps to
// itself, which only keeps it from borrowing, is not stored either: programs that read these files do not expect it.
template <class Node>
void writeMap(Builder& builder, pugi::xml_node parent, const char* name, const char* comment, const Node& node,
              const std::map<CString, CString>& map, bool skipIdentity) {
    pugi::xml_node item = builder.append(parent, name, comment);
    for (const auto& [source, target] : map) {
        if ((skipIdentity && source == target) || node.IsDefaultMapping(source)) continue;
        builder.appendFields(builder.append(item, "MapItem", "映射项"), kMapItemFields, MapItem{source, target});
    }
    if (!item.first_child()) parent.remove_child(item);
}

void writeLayer(Builder& builder, pugi::xml_node item, const LayerNode& layer, bool inOtherLayers) {
    builder.appendFields(item, kLayerFields, layer, inOtherLayers);
    const pugi::xml_node attachments = builder.append(item, "LayerAttachSet", "图层归属集合");
    for (const CString& name : layer.LayerAttachSet)
        builder.appendText(attachments, "LayerAttach", "图层归属", name);
}

void writePipe(Builder& builder, pugi::xml_node group, const PipeNode& pipe) {
    const pugi::xml_node item = builder.append(group, "Pipe", "系统");
    builder.appendFields(builder.append(item, "BaseInfo", "基本信息"), kPipeFields, pipe);
    writeMap(builder, item, "SysMap", "管道系统图层映射规则", pipe, pipe.LayerTypeMap(), true);
    for (int i = 0; i < pipe.GetLayerNum(); ++i) {
        const LayerNode& layer = *pipe.FindLayerNode(i);
        const pugi::xml_node child = builder.append(item, "Layer");
        builder.setAttribute(child, "LayerType", layer.LayerType);
        writeLayer(builder, child, layer, false);
    }
}

void writePipeSystem(Builder& builder, pugi::xml_node section, const Standard& standard) {
    for (const auto& group : standard.groups) {
        const pugi::xml_node item = builder.append(section, "PipeGroup", "系统组");
        builder.setAttribute(item, "Name", group->GroupName());
        builder.setAttribute(item, "CanName", formatInteger(group->CanRename() ? 1 : 0));
        for (int i = 0; i < group->GetSystemNum(); ++i)
            writePipe(builder, item, *group->FindPipeSystem(i));
    }
}

void writeOtherLayer(Builder& builder, pugi::xml_node section, const Standard& standard) {
    for (const auto& group : standard.otherLayers) {
        const pugi::xml_node item = builder.append(section, "LayerGroup");
        builder.setAttribute(item, "LayerType", group->GroupName());
        writeMap(builder, item, "OtherMap", "图层映射规则", *group, group->TypeMap(), false);
        for (int i = 0; i < group->GetLayerNum(); ++i) {
            writeLayer(builder, builder.append(item, "Layer"), *group->FindLayerNode(i), true);
        }
    }
}

void writeLayerNameRule(Builder& builder, pugi::xml_node section, const Standard& standard) {
    for (const NameRule& rule : standard.nameRules) {
        const pugi::xml_node item = builder.append(section, "NameRule", "命名规则");
        builder.setAttribute(item, "LayerType", rule.LayerType);
        builder.appendFields(item, kNameRuleFields, rule);
    }
}

void writeCreatePipeSystemRule(Builder& builder, pugi::xml_node section, const Standard& standard) {
    const pugi::xml_node links = builder.append(section, "LinkLayerType", "关联图层分类");
    for (const CreateRule& rule : standard.createRules) {
        const pugi::xml_node item = builder.append(links, "CreateRule", "管道系统组");
        builder.setAttribute(item, "Name", rule.GroupName);
        for (const CString& type : rule.LayerTypes)
            builder.appendText(item, "LayerType", "图层分类", type);
    }
}

void writeTextStyleSetting(Builder& builder, pugi::xml_node section, const Standard& standard) {
    const pugi::xml_node set = builder.append(section, "TextStyleSet", "文字样式集合");
    for (const TextStyleNode& style : standard.textStyles) {
        const pugi::xml_node item = builder.append(set, "TextStyle", "文字样式");
        builder.setAttribute(item, "Key", style.Key);
        builder.appendFields(item, kTextStyleFields, style);
    }
}

void writeObjectColorSetting(Builder& builder, pugi::xml_node section, const Standard& standard) {
    for (const ObjectColor& color : standard.objectColors) {
        builder.appendFields(builder.append(section, "ObjectColor", "对象颜色"), kObjectColorFields, color);
    }
}

struct Section {
    const char* name;
    const char* comment;
    void (*write)(Builder& builder, pugi::xml_node section, const Standard& standard);
};

constexpr Section kSections[] = {
    {"PipeSystem", "管线系统", writePipeSystem},
    {"OtherLayer", "管线无关图层", writeOtherLayer},
    {"LayerNameRule", "图层名命名规则", writeLayerNameRule},
    {"CreatePipeSystemRule", "创建管道系统规则", writeCreatePipeSystemRule},
    {"TextStyleSetting", "文字样式设置", writeTextStyleSetting},
    {"ObjectColorSetting", "对象颜色设置", writeObjectColorSetting},
};

// The one line that ends in a carriage return as well; the lines below end in a line feed alone on every system.
constexpr const char* kDeclaration = "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n";

// A carriage return in the text of an element would come back as a line feed, so it is written as a reference.
class StringWriter : public pugi::xml_writer {
  public:
    explicit StringWriter(std::string& out) : out_(out) {}
    void write(const void* data, std::size_t size) override {
        std::string_view rest(static_cast<const char*>(data), size);
        for (std::size_t at; (at = rest.find('\r')) != std::string_view::npos; rest.remove_prefix(at + 1)) {
            out_.append(rest.substr(0, at)).append("&#13;");
        }
        out_.append(rest);
    }

  private:
    std::string& out_;
};

}  // namespace

bool formatStandard(const Standard& standard, std::string& bytes, platform::Error& error) {
    pugi::xml_document tree;
    Builder builder;
    const pugi::xml_node root = builder.append(tree, kRootName, kRootComment);
    for (const Section& section : kSections) {
        section.write(builder, builder.append(root, section.name, section.comment), standard);
    }
    if (!builder.failure().empty()) {
        error.message = builder.failure();
        return false;
    }
    bytes = kDeclaration;
    StringWriter writer(bytes);
    tree.save(writer, "\t", pugi::format_indent | pugi::format_no_declaration, pugi::encoding_utf8);
    return true;
}

bool writeStandard(const Standard& standard, std::wstring_view path, platform::Error& error) {
    std::string bytes;
    if (!formatStandard(standard, bytes, error)) {
        error.message = platform::toUtf8(platform::shownPath(path)) + "：" + error.message;
        return false;
    }
    return platform::writeFileAtomically(platform::nativePath(path), bytes, false, error);
}

}  // namespace qrs::standard
