// The next serials of a drawing's vertical pipes.
#include <memory>
#include <set>

#include "axlock.h"
#include "dbapserv.h"
#include "dbobjptr.h"
#include "PwxTool.h"
#include "qrs_pipeentity.h"
#include "qrs_pipewire.h"
#include "tools/serialnumber.h"

using qrs::tools::leadingNumber;
using qrs::tools::successor;

namespace {

CString systemNameOf(const TDbPipe& pipe) {
    const std::wstring name = pipe.GetPipeSystemName();
    return CString(name.empty() ? GetSystypeName(pipe.GetPipeSysType()) : name);
}

// Takes the vertical pipes of a drawing in turn and keeps the next serials of their keys.
class NextSerials {
  public:
    NextSerials(std::map<CString, int>& numeric, std::map<CString, CString>& text, const CString& defaultText,
                int defaultNumber)
        : numeric_(numeric), text_(text), defaultText_(defaultText), defaultNumber_(defaultNumber) {}

    void take(const CString& system, const CString& serial, const CString& building) {
        CString key = system;
        if (!building.IsEmpty()) {
            key += L"%%" + building;
            if (text_.find(key) == text_.end()) {
                text_[key] = defaultText_;
                numeric_[key] = defaultNumber_;
            }
        }
        if (PwxTool::IsDigit(serial, true))
            takeNumber(key, leadingNumber(serial));
        else
            takeText(key, serial);
    }

  private:
    // What the table held before the first pipe of a key does not count.
    void takeNumber(const CString& key, int number) {
        const bool isSeen = !numericSeen_.insert(key).second;
        int& next = numeric_[key];
        if (!isSeen || next <= number) next = successor(number);
    }

    // Every serial that does not come before the next one replaces it: one that compares equal (WL-2 after WL-7) sets
    // it back, and drawings already numbered depend on it.
    void takeText(const CString& key, const CString& serial) {
        const bool isSeen = !textSeen_.insert(key).second;
        CString& next = text_[key];
        if (isSeen && PwxTool::CompareSerial(serial, next) == -1) return;
        next = serial;
        PwxTool::IncreaseSerial(next, 1);
    }

    std::map<CString, int>& numeric_;
    std::map<CString, CString>& text_;
    const CString defaultText_;
    const int defaultNumber_;
    std::set<CString> numericSeen_;
    std::set<CString> textSeen_;
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
    for (AcDbObjectId id; !walk->done(); walk->step()) {
        if (walk->getEntityId(id) != Acad::eOk || id.objectClass() != TDbPipe::desc()) continue;
        const AcDbObjectPointer<TDbPipe> pipe(id, AcDb::kForRead);
        if (pipe.openStatus() != Acad::eOk || !pipe->GetCurve().IsVertical()) continue;
        next.take(systemNameOf(*pipe.object()), ReadXdata(pipe.object(), L"PIPE-SERIAL"),
                  ReadXdata(pipe.object(), L"BUILDING-SERIAL"));
    }
}

}  // namespace PwxTool
