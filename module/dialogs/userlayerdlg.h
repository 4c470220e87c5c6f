// The layers that userlayer.dbf offers for layer definitions.
#pragma once

#include <string>
#include <vector>

#include "afxwin.h"

class CUserLayerDlg : public CDialog {
  public:
    explicit CUserLayerDlg(const std::wstring& name);

    // Shows the table's layers, the one of that name as the chosen one, and hands over the name of what is chosen then.
    // False, name untouched, when it was cancelled, and, with a message, when there is no table.
    static bool Choose(std::wstring& name);

  protected:
    BOOL OnInitDialog() override;
    void OnOK() override;

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
