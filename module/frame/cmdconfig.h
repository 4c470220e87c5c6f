// The command configuration file CmdConfig.xml:
//
//     <CmdConfig>
//         <Function Name="给水功能">
//             <Item Name="禁用双管连接件规格" Value="0"/>
//         </Function>
//     </CmdConfig>
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace qrs::frame {

class CmdConfig {
  public:
    // The file as the kernel library finds it. Nothing when there is none, and, after one message on the command line,
    // when it cannot be read or is damaged.
    static std::optional<CmdConfig> read();

    // Null when the function has no such item. Names are compared exactly; of a repeated item the first counts.
    const std::wstring* value(const std::wstring& function, const std::wstring& item) const;

    // Makes the items the defaults of the suite's per-drawing settings, in place of earlier ones.
    void setDefaults() const;

    // Whether the fittings of double pipes have specifications: only when the item that disables them is there and
    // reads as the integer 0.
    bool usesDoublePipeFittings() const;

  private:
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> items_;
};

}  // namespace qrs::frame
