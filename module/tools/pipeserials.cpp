// The next serials of a drawing's vertical pipes.
#include <memory>
#include <string>
#include <unordered_map>

#include "axlock.h"
#include "dbapserv.h"
#include "dbobjptr.h"
#include "PwxTool.h"
#include "qrs_pipeentity.h"
#include "qrs_pipewire.h"
#include "qrs_riser.h"
#include "standard/text.h"
#include "tools/serialnumber.h"

using qrs::standard::makeText;
using qrs::standard::view;
using qrs::standard::wide;
using qrs::tools::leadingNumber;
using qrs::tools::successor;

namespace {

CString systemNameOf(const TRiser& riser) {
    return makeText(riser.systemName.empty() ? GetSystypeName(riser.sysType) : riser.systemName);
}

// Takes the vertical pipes of a drawing in turn and keeps the next serials of their keys.
class NextSerials {
  public:
    NextSerials(std::map<CString, int>& numeric, std::map<CString, CString>& text, const CString& defaultText,
                int defaultNumber)
        : numeric_(numeric), text_(text), defaultText_(defaultText), defaultNumber_(defaultNumber) {}

    void take(const CString& system, const CString& serial, const CString& building) {
        Key& key = keyOf(system, building);
        if (PwxTool::IsDigit(serial, true))
            takeNumber(key, leadingNumber(serial));
        else
            takeText(key, serial);
    }

  private:
    // Entries of the tables stay where they are, so each is looked up once.
    struct Key {
        CString name;
        int* number = nullptr;    // null before a riser had one
        CString* text = nullptr;  // likewise
        bool isInBuilding = false;
    };

    Key& keyOf(const CString& system, const CString& building) {
        std::wstring name = wide(system);
        if (!building.IsEmpty()) name.append(L"%%").append(view(building));
        const auto [place, isNew] = keys_.try_emplace(std::move(name));
        Key& key = place->second;
        if (isNew) key.name = makeText(place->first);
        if (building.IsEmpty() || key.isInBuilding) return key;
        key.isInBuilding = true;
        if (text_.find(key.name) == text_.end()) {
            text_[key.name] = defaultText_;
            numeric_[key.name] = defaultNumber_;
        }
        return key;
    }

    // What the table held before the first pipe of a key does not count.
    void takeNumber(Key& key, int number) {
        const bool isSeen = key.number != nullptr;
        if (!isSeen) key.number = &numeric_[key.name];
        if (!isSeen || *key.number <= number) *key.number = successor(number);
    }

    // Every serial that does not come before the next one replaces it: one that compares equal (WL-2 after WL-7) sets
    // it back, and drawings already numbered depend on it.
    void takeText(Key& key, const CString& serial) {
        const bool isSeen = key.text != nullptr;
        if (!isSeen) key.text = &text_[key.name];
        if (isSeen && PwxTool::CompareSerial(serial, *key.text) == -1) return;
        *key.text = serial;
        PwxTool::IncreaseSerial(*key.text, 1);
    }

    std::map<CString, int>& numeric_;
    std::map<CString, CString>& text_;
    const CString defaultText_;
    const int defaultNumber_;
    std::unordered_map<std::wstring, Key> keys_;
};

}  // namespace

namespace PwxTool {

void InitVPipeSerials(std::map<CString, int>& numeric, std::map<CString, CString>& text, const CString& defaultText,
                      int defaultNumber) {
    const AcAxDocLock lock;
    const AcDbBlockTableRecordPointer space(ACDB_MODEL_SPACE, acdbHostApplicationServices()->workingDatabase(),
                                            AcDb::kForRead);
    AcDbBlockTableRecordIterator* walk = nullptr;
    if (space.openStatus() != Acad::eOk || space->newIterator(walk) != Acad::eOk) return;
    const std::unique_ptr<AcDbBlockTableRecordIterator> owner(walk);
    NextSerials next(numeric, text, defaultText, defaultNumber);
    TRiserReader reader({L"PIPE-SERIAL", L"BUILDING-SERIAL"});
    TRiser riser;
    for (AcDbObjectId id; !walk->done(); walk->step()) {
        if (walk->getEntityId(id) != Acad::eOk || id.objectClass() != TDbPipe::desc()) continue;
        const AcDbObjectPointer<TDbPipe> pipe(id, AcDb::kForRead);
        if (pipe.openStatus() != Acad::eOk || !reader.Read(*pipe.object(), riser)) continue;
        next.take(systemNameOf(riser), makeText(riser.items[0]), makeText(riser.items[1]));
    }
}

}  // namespace PwxTool
