// Stand-in for the suite's closed pipe library: what is asked of every vertical pipe of a drawing.
//
//     TRiserReader reader({L"PIPE-SERIAL"});
//     TRiser riser;
//     if (reader.Read(*pipe, riser)) use(riser.systemName, riser.items[0]);
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/platform/port.h"
#include "qrs_pipeentity.h"

struct TRiser {
    std::wstring systemName;  // as GetPipeSystemName tells it
    int sysType = 0;
    std::vector<std::wstring> items;  // empty where the pipe has none
};

// Reads pipes one after the other: of each, only what is asked for, and once. Pipes that are not written as this
// library writes them are read by their getters, so that both ways always tell the same.
class QRS_HOST_PORT TRiserReader {
  public:
    // The names of applications whose extended data begins with a text.
    explicit TRiserReader(std::vector<std::wstring> itemNames);

    // False, riser without meaning, when the pipe (open for reading or writing) is not vertical.
    bool Read(const TDbPipe& pipe, TRiser& riser);

  private:
    class Scan;

    bool ReadByGetters(const TDbPipe& pipe, TRiser& riser) const;
    // Which item an application's name means; the count of items for one that is not asked for.
    std::size_t ItemOf(const Scan& scan, std::string_view application);
    void Decode(const Scan& scan, std::string_view value, std::wstring& text);

    std::vector<std::wstring> itemNames_;
    const AcDbDatabase* database_ = nullptr;  // whose texts these are, by their bytes
    std::map<std::string, std::size_t, std::less<>> itemByBytes_;
    std::map<std::string, std::wstring, std::less<>> textByBytes_;
};
