// What a drawing shows of its pipe systems, and redrawing.
#include <algorithm>
#include <cwchar>
#include <iterator>
#include <map>
#include <memory>

#include "host/platform/callrecord.h"
#include "qrs_pipewire.h"
#include "rxmfcapi.h"

using qrs::platform::recordCall;

namespace {

// By the number of the drawing, which no later drawing gets again.
using Configurations = std::map<std::uint32_t, std::unique_ptr<TDbPsConfig>>;

void dropClosedDrawings(Configurations& configurations) {
    for (auto entry = configurations.begin(); entry != configurations.end();) {
        const bool isOpen = AcDbObjectId(entry->first, 0).database() != nullptr;
        entry = isOpen ? std::next(entry) : configurations.erase(entry);
    }
}

}  // namespace

void TDbPsConfig::ShowCustomPipeSystem(const std::wstring& name) {
    recordCall("TDbPsConfig::ShowCustomPipeSystem", name);
    const std::wstring current = CurrentPipeSystemName(name);
    for (auto hidden = hiddenNames_.begin(); hidden != hiddenNames_.end();)
        hidden = CurrentPipeSystemName(*hidden) == current ? hiddenNames_.erase(hidden) : std::next(hidden);
}

void TDbPsConfig::HideCustomPipeSystem(const std::wstring& name) {
    recordCall("TDbPsConfig::HideCustomPipeSystem", name);
    hiddenNames_.insert(name);
}

bool TDbPsConfig::IsCustomPipeSystemShown(const std::wstring& name) const {
    const std::wstring current = CurrentPipeSystemName(name);
    return std::none_of(hiddenNames_.begin(), hiddenNames_.end(),
                        [&](const std::wstring& hidden) { return CurrentPipeSystemName(hidden) == current; });
}

void TDbPsConfig::ShowSystem(int sysType, int show) {
    recordCall("TDbPsConfig::ShowSystem", sysType, show);
    if (show != 0)
        hiddenTypes_.erase(sysType);
    else
        hiddenTypes_.insert(sysType);
}

bool TDbPsConfig::IsSystemShown(int sysType) const {
    return hiddenTypes_.count(sysType) == 0;
}

TDbPsConfig* GetDwgPsGlobal(AcDbDatabase* database) {
    static Configurations configurations;
    if (!database) return nullptr;
    dropClosedDrawings(configurations);
    std::unique_ptr<TDbPsConfig>& configuration = configurations[database->layerTableId().databaseNumber()];
    if (!configuration) configuration = std::make_unique<TDbPsConfig>();
    return configuration.get();
}

bool IsNoDrawingObject(const AcDbEntity* entity) {
    const ACHAR* dxfName = entity ? entity->isA()->dxfName() : nullptr;
    return dxfName && std::wcsncmp(dxfName, L"QRS_", 4) == 0;
}

void UpdateGraphic(const AcDbObjectIdArray& ids) {
    recordCall("UpdateGraphic", ids.length());
    if (!ids.isEmpty()) acedUpdateDisplay();
}
