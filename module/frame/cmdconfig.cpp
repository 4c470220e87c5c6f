// Reads the command configuration file CmdConfig.xml.
#include "frame/cmdconfig.h"

#include "frame/xmlfile.h"
#include "host/platform/codepage.h"
#include "qrs_public.h"

namespace qrs::frame {

std::optional<CmdConfig> CmdConfig::read() {
    pugi::xml_document document;
    if (!readXmlFile(L"CmdConfig.xml", "CmdConfig", document)) return std::nullopt;
    CmdConfig config;
    for (const pugi::xml_node function : document.document_element().children("Function")) {
        const std::wstring functionName = platform::fromUtf8(function.attribute("Name").value());
        for (const pugi::xml_node item : function.children("Item"))
            config.items_.emplace(std::pair(functionName, platform::fromUtf8(item.attribute("Name").value())),
                                  platform::fromUtf8(item.attribute("Value").value()));
    }
    return config;
}

const std::wstring* CmdConfig::value(const std::wstring& function, const std::wstring& item) const {
    const auto found = items_.find({function, item});
    return found == items_.end() ? nullptr : &found->second;
}

void CmdConfig::setDefaults() const {
    TDwgSettingDefaults& defaults = TDwgSettingDefaults::Current();
    defaults.Clear();
    for (const auto& [name, value] : items_)
        defaults.Set(name.first, name.second, value);
}

bool CmdConfig::usesDoublePipeFittings() const {
    const std::wstring* disabled = value(L"给水功能", L"禁用双管连接件规格");
    if (!disabled) return false;
    // Empty text and words are no integer, so they do not read as 0.
    TDwgSettingDefaults one;
    one.Set({}, {}, *disabled);
    int number = 1;
    return one.GetInteger({}, {}, number) && number == 0;
}

}  // namespace qrs::frame
