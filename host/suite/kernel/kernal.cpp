// The kernel library: its start, the system folder, files, look-ups.
#include "qrs_kernal.h"

#include <cstdarg>

#include "acdocman.h"
#include "afx.h"
#include "dbapserv.h"
#include "dbobjptr.h"
#include "host/editor/hostapp.h"
#include "host/platform/callrecord.h"
#include "host/platform/files.h"

using qrs::host::Application;
using qrs::platform::recordCall;

CString g_csSysPath;

namespace {

std::wstring withBackslash(std::wstring folder) {
    if (!folder.empty() && folder.back() != L'\\') folder += L'\\';
    return folder;
}

}  // namespace

void InitAol(const wchar_t* prefix) {
    recordCall("InitAol", prefix);
    if (const Application* application = Application::current())
        QrsExport::SetSystemFolder(application->systemFolder());
}

void QrsExport::InitGeLib(bool initialise) {
    recordCall("QrsExport::InitGeLib", static_cast<int>(initialise));
}

void QrsExport::SetSystemFolder(const std::wstring& folder) {
    g_csSysPath = withBackslash(folder).c_str();
}

bool QrsExport::FindFile(const std::wstring& name, std::wstring& path) {
    recordCall("QrsExport::FindFile", name);
    TWCStringList folders;
    GetSearchPath(folders);
    if (!g_csSysPath.IsEmpty()) folders.insert(folders.begin(), g_csSysPath.GetString());
    for (const std::wstring& folder : folders) {
        const std::wstring candidate = folder + name;
        if (!qrs::platform::fileExists(candidate)) continue;
        path = candidate;
        return true;
    }
    return false;
}

void QrsExport::GetSearchPath(TWCStringList& out) {
    out.clear();
    const Application* application = Application::current();
    if (!application) return;
    for (const std::wstring& folder : application->supportFolders())
        out.push_back(withBackslash(folder));
}

AcDbObjectId QrsExport::GetLayerIdFromString(const std::wstring& name) {
    AcDbObjectId id;
    const AcDbLayerTablePointer table(acdbHostApplicationServices()->workingDatabase(), AcDb::kForRead);
    if (table.openStatus() == Acad::eOk) table->getAt(name.c_str(), id);
    return id;
}

void QrsExport::PrintRefusal(const wchar_t* format, ...) {
    if (!format) return;
    std::wstring text;
    va_list arguments;
    va_start(arguments, format);
    afxFormat(text, format, arguments);
    va_end(arguments);
    qrs::host::refuseCommand(text);
}

void QrsExport::TellRefusal(const std::wstring& message) {
    qrs::host::tellRefusal(message);
}

void QrsExport::FailCommand(const std::wstring& message) {
    qrs::host::failCommand(message);
}

void QrsExport::FailReading(const std::wstring& message) {
    qrs::host::failReading(message);
}

void QrsExport::FailWriting(const std::wstring& message) {
    qrs::host::failWriting(message);
}

bool QrsExport::PostCommand(const std::wstring& text) {
    AcApDocManager* manager = acDocManager;
    AcApDocument* document = manager ? manager->curDocument() : nullptr;
    return document && manager->sendStringToExecute(document, text.c_str(), false, false, false) == Acad::eOk;
}
