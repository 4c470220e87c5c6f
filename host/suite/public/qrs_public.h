// Stand-in for the suite's closed public library: settings shared by the suite's modules, pipe materials.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "host/platform/port.h"
#include "qrs_kernal.h"

// How the label of a vertical pipe with four lines is aligned (0 when nobody set it).
extern QRS_HOST_PORT int g_nAlignTypeForVPipeDim4;

// What a new drawing's settings begin with: one value (as text) for each item of a function. Items are read from the
// command configuration at start; names are compared exactly.
class QRS_HOST_PORT TDwgSettingDefaults {
  public:
    // The defaults of this process.
    static TDwgSettingDefaults& Current();

    void Clear();
    // Of a repeated item the last value counts.
    void Set(const std::wstring& function, const std::wstring& item, const std::wstring& value);

    // False, value untouched, when there is no such item (or its text is no such number).
    bool Get(const std::wstring& function, const std::wstring& item, std::wstring& value) const;
    bool GetInteger(const std::wstring& function, const std::wstring& item, int& value) const;
    bool GetDouble(const std::wstring& function, const std::wstring& item, double& value) const;

    // All items, ordered by function and item: (function, item) -> value.
    using Items = std::map<std::pair<std::wstring, std::wstring>, std::wstring>;
    const Items& All() const { return items_; }

  private:
    Items items_;
};

// The pipe materials the suite knows, in the order its dialogs list them; none while nobody has said where to ask for
// them. The list stays as it is until another source is named.
QRS_HOST_PORT const TWCStringList& GetPipeMaterialList();

// Where the list comes from: the module that reads the tables of pipes says so at its start, and takes it back (null)
// at its end. The source is asked when the list is first wanted.
using TPipeMaterialSource = TWCStringList (*)();
QRS_HOST_PORT void SetPipeMaterialSource(TPipeMaterialSource source);
