// A prompt with what acedInitGet said for it.
#pragma once

#include <string>

#include "acedads.h"
#include "host/editor/session.h"

namespace qrs::host::ed {

inline std::wstring promptText(const ACHAR* prompt) {
    return prompt ? prompt : L"";
}

// What an answer is refused with; empty when it is taken.
using Refusal = std::wstring;

// A prompt with what acedInitGet said for it.
class Question {
  public:
    explicit Question(Session& session)
        : session_(session), flags_(session.takeFlags()), keywords_(session.takeKeywords()) {}

    int flags() const { return flags_; }
    bool hasKeywords() const { return !keywords_.empty(); }
    const Keywords& keywords() const { return keywords_; }

    // Asks until an answer is taken. take(text) gives the refusal.
    template <typename Take>
    int ask(const ACHAR* prompt, const std::wstring& emptyRefusal, Take&& take) {
        for (;;) {
            const Answer answer = session_.ask(promptText(prompt), Extent::Word, keywords_.names());
            if (answer.reply != Reply::Line) return RTCAN;
            if (answer.text.empty() && !(flags_ & RSG_NONULL)) return RTNONE;
            Refusal refusal = emptyRefusal;
            if (!answer.text.empty()) {
                const std::wstring keyword = keywords_.match(answer.text);
                if (!keyword.empty()) return keywordResult(keyword);
                refusal = take(answer.text);
                if (refusal.empty()) return RTNORM;
                if (flags_ & RSG_OTHER) return keywordResult(answer.text);
            }
            session_.refuse(L"\n" + refusal + L"\n");
        }
    }

  private:
    int keywordResult(const std::wstring& keyword) {
        session_.lastKeyword = keyword;
        return RTKWORD;
    }

    Session& session_;
    int flags_;
    Keywords keywords_;
};

}  // namespace qrs::host::ed
