// CStringArray: texts by index.
#pragma once

#include <vector>

#include "afx.h"

// An index outside answers an empty text, and changes nothing where it would be written to.
class QRS_HOST_PORT CStringArray : public CObject {
  public:
    INT_PTR GetSize() const { return static_cast<INT_PTR>(texts_.size()); }
    INT_PTR GetCount() const { return GetSize(); }
    bool IsEmpty() const { return texts_.empty(); }
    INT_PTR GetUpperBound() const { return GetSize() - 1; }
    void RemoveAll() { texts_.clear(); }

    const CString& GetAt(INT_PTR index) const;
    void SetAt(INT_PTR index, const CString& text);
    const CString& operator[](INT_PTR index) const { return GetAt(index); }
    // The index must be inside.
    CString& operator[](INT_PTR index) { return texts_.at(static_cast<std::size_t>(index)); }

    // The index of the new element.
    INT_PTR Add(const CString& text);

  private:
    std::vector<CString> texts_;
};
