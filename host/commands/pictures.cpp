// PICTURES: gives the entities of plug-ins the pictures by which other programs show them.
#include "host/objectarx/db/pictures.h"

#include <string>

#include "acdocman.h"
#include "host/commands/asking.h"
#include "host/commands/commands.h"
#include "host/platform/language.h"

namespace qrs::host::commands {

using platform::translated;

void givePictures() {
    AcApDocument* const document = acDocManager->curDocument();
    if (document == nullptr) return failCommand(translated(L"There is no drawing."));
    if (document->database()->originalFileVersion() < AcDb::kDHL_1015)
        return failCommand(translated(L"Drawings older than 2000 cannot hold pictures; nothing was done."));
    const PictureCounts counts = renewAllPictures(*document->database());
    tell(translated(L"Pictures drawn: %1, right already: %2.", std::to_wstring(counts.given),
                    std::to_wstring(counts.kept)));
}

}  // namespace qrs::host::commands
