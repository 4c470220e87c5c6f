// Completes answers: finds the part that is being typed, and the names that begin with it.
#include "host/editor/completion.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <optional>
#include <utility>

#include "host/editor/layouts.h"
#include "host/editor/namedrecords.h"
#include "host/editor/session.h"
#include "host/platform/codepage.h"
#include "host/platform/files.h"

namespace qrs::host::ed {

namespace {

using Names = std::vector<std::wstring>;

// The marks that may stand before a command's name.
constexpr wchar_t kMarks[] = L"'_.";
constexpr wchar_t kSeparators[] = L"/\\";

AcDbDatabase* databaseOf(const Session& session) {
    AcApDocument* const document = session.documents.curDocument();
    return document ? document->database() : nullptr;
}

Names transparentNames(const Session& session) {
    Names names;
    const std::unique_ptr<AcEdCommandIterator> command(session.commands.iterator());
    for (; !command->done(); command->next())
        if (command->command()->commandFlags() & ACRX_CMD_TRANSPARENT)
            names.emplace_back(command->command()->globalName());
    return names;
}

Names variableNames(const Session&) {
    return Variables::names();
}

template <class Table>
Names recordNames(const Session& session) {
    Names names;
    if (AcDbDatabase* const database = databaseOf(session))
        for (NamedRecord& record : allRecords<Table>(database))
            names.push_back(std::move(record.name));
    return names;
}

Names layoutNames(const Session& session) {
    Names names;
    if (AcDbDatabase* const database = databaseOf(session))
        for (LayoutTab& tab : layoutTabs(*database))
            names.push_back(std::move(tab.name));
    return names;
}

Names pluginNames(const Session& session) {
    return session.plugins.names();
}

struct Source {
    Wanted wanted;
    bool isList;  // several, with commas between
    Names (*names)(const Session&);
};
constexpr Source kSources[] = {
    {Wanted::Command, false, &commandNames},
    {Wanted::TransparentCommand, false, &transparentNames},
    {Wanted::Variable, false, &variableNames},
    {Wanted::Layer, false, &recordNames<AcDbLayerTable>},
    {Wanted::Layers, true, &recordNames<AcDbLayerTable>},
    {Wanted::Linetypes, true, &recordNames<AcDbLinetypeTable>},
    {Wanted::TextStyles, true, &recordNames<AcDbTextStyleTable>},
    {Wanted::Layout, false, &layoutNames},
    {Wanted::LoadedPlugin, false, &pluginNames},
};

struct FileSource {
    Wanted wanted;
    std::initializer_list<const wchar_t*> endings;
};
const FileSource kFileSources[] = {
    {Wanted::Drawing, {L".dxf"}},
    {Wanted::Picture, {L".svg", L".pdf", L".png"}},
    {Wanted::Plugin, {L".so", L".arx", L".dll"}},
    {Wanted::Folder, {}},
};

bool beginsWith(const std::wstring& name, std::wstring_view part) {
    return name.size() >= part.size() && platform::compareNoCase(name.substr(0, part.size()), part) == 0;
}

bool endsWith(const std::wstring& name, const std::wstring& ending) {
    return name.size() > ending.size() &&
           platform::compareNoCase(name.substr(name.size() - ending.size()), ending) == 0;
}

// Names of files are completed piece by piece: what lies in the folder that is typed already. Folders end in a
// separator. begin is moved to the piece.
Names fileNames(const FileSource& source, std::wstring_view typed, std::size_t& begin) {
    const std::wstring_view path = typed.substr(begin);
    const std::size_t last = path.find_last_of(kSeparators);
    const std::size_t length = last == std::wstring_view::npos ? 0 : last + 1;
    const wchar_t separator = length > 0 ? path[last] : wchar_t{std::filesystem::path::preferred_separator};
    begin += length;
    const bool showsHidden = path.substr(length, 1) == L".";
    Names names;
    for (const platform::FolderEntry& entry : platform::listFolder(platform::innerFromTyped(path.substr(0, length)))) {
        std::wstring again;
        // A name that is no text cannot be typed.
        if (!platform::decodeStrict(platform::kUtf8, platform::toUtf8(entry.name), again)) continue;
        if (entry.name.front() == L'.' && !showsHidden) continue;
        const bool isMeant = std::any_of(source.endings.begin(), source.endings.end(),
                                         [&](const wchar_t* ending) { return endsWith(entry.name, ending); });
        if (entry.isFolder)
            names.push_back(entry.name + separator);
        else if (isMeant)
            names.push_back(entry.name);
    }
    return names;
}

void keepBeginningWith(std::wstring_view part, Names& names) {
    names.erase(std::remove_if(names.begin(), names.end(), [&](const auto& name) { return !beginsWith(name, part); }),
                names.end());
    std::sort(names.begin(), names.end(),
              [](const auto& a, const auto& b) { return platform::compareNoCase(a, b) < 0; });
    names.erase(std::unique(names.begin(), names.end()), names.end());
}

// At the command prompt the words after a command's name are answers to its prompts; what the first of these takes is
// known of some. Nothing when it is not. begin is moved from the name to the answer.
std::optional<Wanted> wantedAfterName(const Session& session, std::wstring_view typed, std::size_t& begin) {
    const std::size_t end = std::min(typed.find_first_of(L" \t", begin), typed.size());
    std::wstring_view name = typed.substr(begin, end - begin);
    name.remove_prefix(std::min(name.find_first_not_of(kMarks), name.size()));
    begin = std::min(typed.find_first_not_of(L" \t", end), typed.size());
    const auto known = session.firstAnswers.find(platform::foldCase(name));
    return known == session.firstAnswers.end() ? std::nullopt : std::optional(known->second);
}

}  // namespace

Names commandNames(const Session& session) {
    Names names;
    const std::unique_ptr<AcEdCommandIterator> command(session.commands.iterator());
    for (; !command->done(); command->next())
        names.emplace_back(command->command()->globalName());
    return names;
}

Completion complete(const Session& session, const Asked& asked, std::wstring_view typed) {
    Completion completion;
    Wanted wanted = asked.wanted;
    std::size_t& begin = completion.begin;
    begin = std::min(typed.find_first_not_of(L" \t"), typed.size());
    completion.names = asked.words;
    const bool hasBlank = typed.find_first_of(L" \t", begin) != std::wstring_view::npos;
    const bool isTransparent = wanted != Wanted::Command && typed.substr(begin, 1) == L"'";
    if (isTransparent) completion.names.clear();
    if (hasBlank && (isTransparent || wanted == Wanted::Command)) {
        const std::optional<Wanted> first = wantedAfterName(session, typed, begin);
        if (!first) return {};
        wanted = *first;
    } else if (hasBlank && asked.extent == Extent::Word) {
        return {};
    } else if (isTransparent) {
        wanted = Wanted::TransparentCommand;
    }
    if (wanted == Wanted::Command || wanted == Wanted::TransparentCommand)
        begin = std::min(typed.find_first_not_of(kMarks, begin), typed.size());
    for (const Source& source : kSources) {
        if (source.wanted != wanted) continue;
        const std::size_t comma = source.isList ? typed.rfind(L',') : std::wstring_view::npos;
        if (comma != std::wstring_view::npos)
            begin = std::min(typed.find_first_not_of(L" \t", comma + 1), typed.size());
        for (std::wstring& name : source.names(session))
            completion.names.push_back(std::move(name));
    }
    for (const FileSource& source : kFileSources)
        if (source.wanted == wanted) completion.names = fileNames(source, typed, begin);
    keepBeginningWith(typed.substr(begin), completion.names);
    if (completion.names.empty() && wanted == Wanted::Command) {
        completion.names = Variables::names();
        keepBeginningWith(typed.substr(begin), completion.names);
    }
    return completion;
}

}  // namespace qrs::host::ed
