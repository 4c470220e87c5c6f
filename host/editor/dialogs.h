// Dialogs at the command line: asked as text, answered like every prompt.
#pragma once

#include "host/platform/dialogtext.h"

namespace qrs::host::ed {

class Session;

// Shows the process's dialogs through the session's prompts while it lives.
class Dialogs : private platform::QuestionLine {
  public:
    explicit Dialogs(Session& session);
    ~Dialogs() override;
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;

  private:
    void print(std::wstring_view text) override;
    void refuse(std::wstring_view text) override;
    bool ask(const std::wstring& prompt, const platform::ExpectedAnswer& expected, std::wstring& answer) override;

    Session& session_;
    platform::TextPresenter presenter_;
    platform::DialogPresenter* before_;
};

}  // namespace qrs::host::ed
