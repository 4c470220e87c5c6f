// Prints the commands by task, or one command's page, in the language of the user.
#include "console/help.h"

#include <algorithm>

#include "console/pagetext.h"
#include "host/editor/hostapp.h"
#include "host/objectarx/accmd.h"
#include "host/objectarx/acedads.h"
#include "host/platform/codepage.h"
#include "host/platform/language.h"
#include "host/platform/text.h"
#include "host/platform/textwidth.h"

namespace qrs::console {

namespace {

constexpr std::size_t kColumns = 78;
constexpr std::size_t kNameColumns = 24;

// The pages that list commands by task. Those of the host are sections of theirs.
constexpr const char* kModulePage = "README";
constexpr const char* kHostPage = "host";

// The text of a page in the user's language, or else in English; empty when there is none.
std::string_view pageNamed(const std::string& name) {
    for (const char* ending : {platform::language() == platform::Language::Chinese ? ".zh-CN.md" : ".md", ".md"})
        for (const CommandPage& page : kCommandPages)
            if (platform::compareNoCase(platform::fromUtf8(page.name), platform::fromUtf8(name + ending)) == 0)
                return page.text;
    return {};
}

std::wstring rowText(const std::wstring& name, const std::wstring& sentence) {
    return wrapped(platform::paddedTo(L"  " + name, kNameColumns) + sentence, kColumns, kNameColumns) + L"\n";
}

bool takeName(std::vector<std::wstring>& names, const std::wstring& name) {
    const auto found = std::find_if(names.begin(), names.end(),
                                    [&](const std::wstring& one) { return platform::compareNoCase(one, name) == 0; });
    if (found == names.end()) return false;
    names.erase(found);
    return true;
}

// The commands of plug-ins that no page lists: under the names of their files.
std::wstring otherCommands(const host::Application& application, const std::vector<std::wstring>& names) {
    std::wstring text;
    std::wstring heading;
    for (const std::wstring& name : names) {
        const std::wstring plugin = application.pluginOf(name);
        if (plugin.empty()) continue;
        if (plugin != heading) text += L"\n" + plugin + L"\n";
        heading = plugin;
        text += L"  " + name + L"\n";
    }
    return text;
}

void listCommands(const host::Application& application) {
    std::vector<std::wstring> names = application.commandNames();
    std::wstring text;
    for (const char* page : {kModulePage, kHostPage}) {
        for (const CommandTask& task : tasksOf(pageNamed(page))) {
            std::wstring rows;
            for (const CommandRow& row : task.commands)
                if (takeName(names, row.name)) rows += rowText(row.name, row.sentence);
            if (!rows.empty()) text += L"\n" + task.heading + L"\n" + rows;
        }
    }
    text += otherCommands(application, names) + L"\n" +
            platform::translated(L"HELP and a name tell more of one command: HELP OPEN");
    acedPrompt(text.c_str());
}

void tellCommand(const host::Application& application, const std::wstring& typed) {
    const std::wstring name = typed.substr(std::min(typed.find_first_not_of(L"'_."), typed.size()));
    const std::vector<std::wstring> names = application.commandNames();
    const bool isKnown = std::any_of(names.begin(), names.end(),
                                     [&](const std::wstring& one) { return platform::compareNoCase(one, name) == 0; });
    const bool isVariable = !isKnown && host::Application::isVariable(name);
    if (!isKnown && !isVariable) return host::failUnknownCommand(typed);
    std::wstring text = shownSection(pageNamed(kHostPage), isVariable ? L"SETVAR" : name);
    if (text.empty()) text = shownPage(pageNamed(platform::toUtf8(name)));
    if (text.empty())
        text = platform::translated(L"No page tells of %1; it is a command of %2.", name, application.pluginOf(name));
    acedPrompt((L"\n" + text).c_str());
}

void help() {
    const host::Application* const application = host::Application::current();
    if (application == nullptr) return;
    const std::wstring name = host::takeRestOfLine();
    name.empty() ? listCommands(*application) : tellCommand(*application, name);
}

}  // namespace

void registerHelpCommand() {
    AcEdCommandStack* const stack = acedRegCmds;
    host::Application* const application = host::Application::current();
    if (stack == nullptr || application == nullptr) return;
    constexpr Adesk::Int32 kFlags = ACRX_CMD_TRANSPARENT | ACRX_CMD_SESSION | ACRX_CMD_NOUNDOMARKER;
    stack->addCommand(L"HOST_COMMANDS", L"HELP", L"HELP", kFlags, &help);
    stack->addCommand(L"HOST_COMMANDS", L"?", L"?", kFlags, &help);
    application->setFirstAnswer(L"HELP", host::Wanted::Command);
    application->setFirstAnswer(L"?", host::Wanted::Command);
}

}  // namespace qrs::console
