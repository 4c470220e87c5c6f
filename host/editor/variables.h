// System variables: those of the drawing, those of the session, and those that tell how things stand.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "adsdef.h"

namespace qrs::host::ed {

class Session;

// Names compare without regard to case.
class Variables {
  public:
    // The value with its type; texts are to be released with acutDelString. False when there is none of that name.
    bool get(Session& session, std::wstring_view name, resbuf& value) const;
    // False when it cannot be set to the value; nothing is changed then.
    bool set(Session& session, std::wstring_view name, const resbuf& value);

    // All names, those kept in drawings included.
    static std::vector<std::wstring> names();
    static bool isKnown(std::wstring_view name);
    static bool isReadOnly(std::wstring_view name);

    // A whole number kept for the session; 0 when there is none of that name.
    short integer(std::wstring_view name) const;
    void setErrno(short reason);

  private:
    struct Row;
    static const Row kRows[];
    static const Row* find(std::wstring_view name);

    // Values that differ from those of the start.
    std::map<std::wstring, short> integers_;
    std::map<std::wstring, std::wstring> texts_;
};

}  // namespace qrs::host::ed
