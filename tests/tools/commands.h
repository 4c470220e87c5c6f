// The module's commands over small drawings with entities of the suite, as they are typed.
#pragma once

#include <sstream>

#include "../frame/support.h"
#include "acutads.h"
#include "dbents.h"
#include "frame/entry.h"
#include "qrs_kernal.h"
#include "qrs_pipeentity.h"
#include "rxregsvc.h"
#include "standard/startup.h"

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* application);

namespace qrs::test {

class ToolCommands : public Frame {
  protected:
    ToolCommands() {
        application.setSystemFolder(platform::innerPath(std::filesystem::path(QRS_SOURCE_DIR) / "data"));
        InitAol(L"_QRS");
        acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
    }
    ~ToolCommands() override { acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr); }

    // "LINE;8=0;10=1" as tags; the handle and what every entity has come first.
    static std::string entity(int handle, const std::string& typeAndTags, const std::string& owner = "1F") {
        char digits[16];
        std::snprintf(digits, sizeof digits, "%X", static_cast<unsigned>(handle));
        std::istringstream parts(typeAndTags);
        std::string part;
        std::getline(parts, part, ';');
        std::string text = "0\n" + part + "\n5\n" + digits + "\n330\n" + owner + "\n100\nAcDbEntity\n";
        while (std::getline(parts, part, ';'))
            text += part.replace(part.find('='), 1, "\n") + "\n";
        return text;
    }
    // Opens a drawing of these layers (their handles begin at 40) and entities.
    void openWith(const std::vector<Layer>& layers, const std::string& entities, const std::string& tables = {}) {
        std::string text = drawingText(layers, {});
        text.insert(text.rfind("0\nENDSEC\n0\nEOF"), entities);
        text.insert(text.find("0\nTABLE\n2\nBLOCK_RECORD"), tables);
        open(text);
    }
    AcDbObjectId byHandle(int handle) const {
        AcDbObjectId id;
        database()->getAcDbObjectId(id, false, AcDbHandle(static_cast<Adesk::UInt64>(handle)));
        return id;
    }
    std::string layerOf(int handle) const {
        const AcDbEntityPointer opened(byHandle(handle), AcDb::kForRead);
        return opened.openStatus() == Acad::eOk ? taken(opened->layer()) : "-";
    }
    std::string linetypeOf(int handle) const {
        const AcDbEntityPointer opened(byHandle(handle), AcDb::kForRead);
        return opened.openStatus() == Acad::eOk ? taken(opened->linetype()) : "-";
    }
    static std::string taken(ACHAR* text) {
        const std::string copy = platform::toUtf8(text ? text : L"");
        acutDelString(text);
        return copy;
    }
    static std::string nameOf(AcDbObjectId record) {
        const AcDbObjectPointer<AcDbSymbolTableRecord> opened(record, AcDb::kForRead);
        const ACHAR* name = nullptr;
        return opened.openStatus() == Acad::eOk && opened->getName(name) == Acad::eOk ? platform::toUtf8(name) : "-";
    }
    std::string told(std::deque<std::wstring> lines) { return platform::toUtf8(run(std::move(lines))); }
};

}  // namespace qrs::test
