// A scripted terminal, an application over a folder of its own, and small drawings.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "../folder.h"
#include "acdocman.h"
#include "dbobjptr.h"
#include "host/commands/hostcommands.h"
#include "host/editor/hostapp.h"
#include "host/platform/callrecord.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"
#include "host/platform/settings.h"

namespace qrs::test {

// Answers from a list (kEsc cancels) and keeps all that is shown, answers after their prompts.
class ScriptTerminal : public host::Terminal {
  public:
    static constexpr const wchar_t* kEsc = L"\x1b";

    host::Reply readLine(const std::wstring& prompt, std::wstring& line) override {
        if (atPrompt) atPrompt();
        transcript += prompt;
        if (script.empty()) {
            transcript += L"<end>\n";
            return host::Reply::End;
        }
        line = script.front();
        script.pop_front();
        transcript += (line == kEsc ? L"<esc>" : line) + L"\n";
        return line == kEsc ? host::Reply::Cancel : host::Reply::Line;
    }
    void print(std::wstring_view text) override { transcript += text; }
    void error(std::wstring_view message) override { transcript += L"<error>" + std::wstring(message) + L"\n"; }

    std::deque<std::wstring> script;
    std::function<void()> atPrompt;  // called before each answer
    std::wstring transcript;
};

// Settings and the system folder lie in the folder; the application lives as long as the object.
class Frame : public ::testing::Test {
  protected:
    Frame() {
        host::registerHostCommands();
        platform::Error error;
        EXPECT_TRUE(platform::Settings::user().useFile(folder.path() / "settings.ini", error)) << error.message;
        application.setSystemFolder(platform::innerPath(folder.path()));
    }

    void open(const std::string& drawing) {
        platform::Error error;
        ASSERT_TRUE(application.openDocument(folder.write("drawing.dxf", drawing), error)) << error.message;
    }
    // What is shown while the lines are answered.
    std::wstring run(std::deque<std::wstring> lines) {
        terminal.script = std::move(lines);
        terminal.transcript.clear();
        application.run(true);
        return terminal.transcript;
    }
    // The drawing as it would be saved.
    std::string saved() {
        platform::Error error;
        EXPECT_TRUE(application.saveDocument(folder / "saved.dxf", error)) << error.message;
        return folder.read("saved.dxf");
    }
    AcDbDatabase* database() const { return application.currentDocument()->database(); }

    Folder folder;
    ScriptTerminal terminal;
    host::Application application{terminal};
};

struct Layer {
    std::string name;
    int flags = 0;  // 1 frozen, 4 locked
    int color = 7;  // negative: off
};
struct Line {
    std::string layer;
    bool invisible = false;
};

inline std::string drawingText(const std::vector<Layer>& layers, const std::vector<Line>& lines) {
    std::string text =
        "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1021\n9\n$CLAYER\n8\n0\n9\n$TILEMODE\n70\n1\n0\nENDSEC\n"
        "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n5\n2\n100\nAcDbSymbolTable\n70\n9\n";
    int handle = 0x40;
    const auto record = [&](const std::string& kind) {
        char digits[16];
        std::snprintf(digits, sizeof digits, "%X", handle++);
        text += "0\n" + kind + "\n5\n" + digits + "\n";
    };
    for (const Layer& layer : layers) {
        record("LAYER");
        text += "100\nAcDbSymbolTableRecord\n100\nAcDbLayerTableRecord\n2\n" + layer.name + "\n70\n" +
                std::to_string(layer.flags) + "\n62\n" + std::to_string(layer.color) + "\n6\nContinuous\n";
    }
    text +=
        "0\nENDTAB\n0\nTABLE\n2\nBLOCK_RECORD\n5\n1\n100\nAcDbSymbolTable\n70\n1\n"
        "0\nBLOCK_RECORD\n5\n1F\n100\nAcDbSymbolTableRecord\n100\nAcDbBlockTableRecord\n2\n*Model_Space\n"
        "0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n5\n20\n330\n1F\n100\nAcDbEntity\n8\n0\n"
        "100\nAcDbBlockBegin\n2\n*Model_Space\n70\n0\n10\n0\n20\n0\n30\n0\n3\n*Model_Space\n1\n\n"
        "0\nENDBLK\n5\n21\n330\n1F\n100\nAcDbEntity\n8\n0\n100\nAcDbBlockEnd\n0\nENDSEC\n"
        "0\nSECTION\n2\nENTITIES\n";
    handle = 0x100;
    for (const Line& line : lines) {
        record("LINE");
        text += "330\n1F\n100\nAcDbEntity\n8\n" + line.layer + "\n" + (line.invisible ? "60\n1\n" : "") +
                "100\nAcDbLine\n10\n0\n20\n0\n30\n0\n11\n5\n21\n5\n31\n0\n";
    }
    return text + "0\nENDSEC\n0\nEOF\n";
}

inline std::size_t count(const std::wstring& text, const std::wstring& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::wstring::npos; at = text.find(part, at + part.size()))
        ++found;
    return found;
}

}  // namespace qrs::test
