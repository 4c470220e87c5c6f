// The base class, the end of the program, and texts by index.
#include "afxcoll.h"

#include <cstdlib>

CObject::CObject() = default;
CObject::~CObject() = default;

void AfxAbort() {
    std::abort();
}

const CString& CStringArray::GetAt(INT_PTR index) const {
    static const CString none;
    return index >= 0 && index < GetSize() ? texts_[static_cast<std::size_t>(index)] : none;
}

void CStringArray::SetAt(INT_PTR index, const CString& text) {
    if (index >= 0 && index < GetSize()) texts_[static_cast<std::size_t>(index)] = text;
}

INT_PTR CStringArray::Add(const CString& text) {
    texts_.push_back(text);
    return GetUpperBound();
}
