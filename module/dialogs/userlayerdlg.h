// The layers that userlayer.dbf offers for layer definitions.
#pragma once

#include <string>
#include <vector>

#include "host/platform/form.h"

class CUserLayerDlg : public qrs::platform::Form {
  public:
    explicit CUserLayerDlg(const std::wstring& name);

    // Shows the table's layers, the one of that name as the chosen one, and hands over the name of what is chosen then.
    // False, name untouched, when it was cancelled, and, with a message, when there is no table.
    static bool Choose(std::wstring& name);

  protected:
    void describe() override;
    void pressOk() override;

  private:
    struct UserLayer {
        int product = 0;
        std::wstring name;
    };

    bool read();

    std::vector<UserLayer> layers_;
    std::wstring chosen_;
    qrs::platform::Control* list_ = nullptr;
};
