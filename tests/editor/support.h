// A terminal that answers from a list, and commands made of functions in the test.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "../folder.h"
#include "accmd.h"
#include "acdocman.h"
#include "aced.h"
#include "acedads.h"
#include "host/commands/hostcommands.h"
#include "host/editor/hostapp.h"
#include "host/platform/codepage.h"

namespace edtest {

constexpr wchar_t kEsc[] = L"\x1b";  // an answer that stands for the Esc key

class ListTerminal : public qrs::host::Terminal {
  public:
    std::deque<std::wstring> answers;
    std::wstring text;  // the transcript, answers after their prompts
    std::vector<std::wstring> errors;
    std::vector<int> percents;
    bool interactive = false;

    qrs::host::Reply readLine(const std::wstring& prompt, std::wstring& line) override {
        if (answers.empty()) return qrs::host::Reply::End;
        line = answers.front();
        answers.pop_front();
        text += prompt;
        if (line == kEsc) return qrs::host::Reply::Cancel;
        text += line + L"\n";
        return qrs::host::Reply::Line;
    }
    void print(std::wstring_view printed) override { text += printed; }
    void error(std::wstring_view message) override { errors.emplace_back(message); }
    bool isInteractive() const override { return interactive; }
    void progress(std::wstring_view, int percent) override { percents.push_back(percent); }
};

inline std::vector<std::function<void()>>& bodies() {
    static std::vector<std::function<void()>> functions(10);
    return functions;
}

template <int Number>
void runBody() {
    bodies()[Number]();
}

class EditorTest : public testing::Test {
  protected:
    ListTerminal terminal;
    std::unique_ptr<qrs::host::Application> application = std::make_unique<qrs::host::Application>(terminal);
    qrs::platform::Error error;

    EditorTest() { qrs::host::registerHostCommands(); }
    void TearDown() override {
        application.reset();
        for (auto& body : bodies())
            body = nullptr;
    }

    // A command of the group "TEST"; each number is one function.
    template <int Number>
    void command(const wchar_t* name, int flags, std::function<void()> body) {
        bodies()[Number] = std::move(body);
        ASSERT_EQ(Acad::eOk, acedRegCmds->addCommand(L"TEST", name, name, flags, &runBody<Number>));
    }

    bool run(std::deque<std::wstring> answers, bool keepGoing = false) {
        terminal.answers = std::move(answers);
        terminal.text.clear();
        terminal.errors.clear();
        return application->run(keepGoing);
    }
};

inline std::wstring textVariable(const wchar_t* name) {
    resbuf value{};
    if (acedGetVar(name, &value) != RTNORM || value.restype != RTSTR) return L"<none>";
    const std::wstring text = value.resval.rstring;
    acutDelString(value.resval.rstring);
    return text;
}

inline int intVariable(const wchar_t* name) {
    resbuf value{};
    return acedGetVar(name, &value) == RTNORM && value.restype == RTSHORT ? value.resval.rint : -9999;
}

}  // namespace edtest
