// What the start of the module does with a standard once it is chosen.
#include "standard/startup.h"

#include "qrs_kernal.h"
#include "qrs_pipewire.h"
#include "qrs_standard.h"
#include "standard/fontlist.h"
#include "standard/holder.h"
#include "standard/systemindex.h"
#include "standard/text.h"

namespace qrs::standard {

void convertOldSystemNames() {
    // Those of the standard before would call systems by names that this one may give to others.
    ClearPipeSystemNames();
    const Standard* standard = currentStandard();
    if (standard == nullptr) return;
    for (const auto& group : standard->groups)
        group->ConvertOldSysNameToCurrentName();
    // Where one system's name is the old name of another, pipes that bear it are pipes of the one that has it now.
    for (const auto& group : standard->groups) {
        for (int i = 0; i < group->GetSystemNum(); ++i) {
            const std::wstring name = wide(group->FindPipeSystem(i)->PipeName);
            if (CurrentPipeSystemName(name) != name) SetPipeSystemName(name, name);
        }
    }
}

void applyObjectColors() {
    ObjectUtility::ResetObjectColors();
    const Standard* standard = currentStandard();
    if (standard == nullptr) return;
    for (const ObjectColor& color : standard->objectColors) {
        for (TObjectColor& kind : ObjectUtility::AllObjectColors()) {
            if (view(color.Name) == kind.name) kind.color = color.Color;
        }
    }
}

void readLinetypeTextSettings() {
    const TRegKey config(GetRegLocation(L"PWXConfig"));
    LinetypeTextSettings& settings = StandardHolder::instance().linetypeText();
    settings.chineseShx = makeText(config.GetString(L"LineTypeChnShx", settings.chineseShx.GetString()));
    settings.englishShx = makeText(config.GetString(L"LineTypeEngShx", settings.englishShx.GetString()));
    settings.height = config.GetDouble(L"LineTypeHeight", settings.height);
    settings.scale = config.GetDouble(L"LineTypeScale", settings.scale);
}

void initLayerMaps() {
    const Standard* standard = currentStandard();
    if (standard == nullptr) return;
    standard->systems().refresh();
    // A group of other layers makes its look-up when it is asked.
    for (const auto& group : standard->otherLayers)
        group->FindLayerNode(CString());
}

void releaseStandard() {
    StandardHolder::release();
    ClearPipeSystemNames();
    forgetFonts();
    QrsExport::SetStandardInUse({});
}

}  // namespace qrs::standard
