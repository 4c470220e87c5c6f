// Collections of texts: CStringArray and CStringList.
#pragma once

#include <vector>

#include "afx.h"

// Texts by index. An index outside answers an empty text, and changes nothing where it would be written to.
class QRS_HOST_PORT CStringArray : public CObject {
  public:
    INT_PTR GetSize() const { return static_cast<INT_PTR>(texts_.size()); }
    INT_PTR GetCount() const { return GetSize(); }
    bool IsEmpty() const { return texts_.empty(); }
    INT_PTR GetUpperBound() const { return GetSize() - 1; }
    void SetSize(INT_PTR size, INT_PTR growBy = -1);
    void RemoveAll() { texts_.clear(); }
    void FreeExtra() { texts_.shrink_to_fit(); }

    const CString& GetAt(INT_PTR index) const;
    void SetAt(INT_PTR index, const CString& text);
    void SetAtGrow(INT_PTR index, const CString& text);
    const CString& operator[](INT_PTR index) const { return GetAt(index); }
    // The index must be inside.
    CString& ElementAt(INT_PTR index) { return texts_.at(static_cast<std::size_t>(index)); }
    CString& operator[](INT_PTR index) { return ElementAt(index); }
    const CString* GetData() const { return texts_.data(); }
    CString* GetData() { return texts_.data(); }

    // The index of the new element (of the first new one).
    INT_PTR Add(const CString& text);
    INT_PTR Append(const CStringArray& other);
    void Copy(const CStringArray& other);
    void InsertAt(INT_PTR index, const CString& text, INT_PTR count = 1);
    void RemoveAt(INT_PTR index, INT_PTR count = 1);

  private:
    std::vector<CString> texts_;
};

// A place in a list; null is none.
typedef struct CStringListNode* POSITION;

// Texts in a row. A POSITION stays good until its own element is removed.
class QRS_HOST_PORT CStringList : public CObject {
  public:
    CStringList() = default;
    ~CStringList() override;

    INT_PTR GetCount() const { return count_; }
    INT_PTR GetSize() const { return count_; }
    bool IsEmpty() const { return count_ == 0; }

    POSITION AddHead(const CString& text) { return InsertBefore(head_, text); }
    POSITION AddTail(const CString& text) { return InsertAfter(tail_, text); }
    // At a null position: before the first, after the last.
    POSITION InsertBefore(POSITION position, const CString& text);
    POSITION InsertAfter(POSITION position, const CString& text);
    void RemoveAt(POSITION position);
    // The list must not be empty.
    CString RemoveHead();
    CString RemoveTail();
    void RemoveAll();

    POSITION GetHeadPosition() const { return head_; }
    POSITION GetTailPosition() const { return tail_; }
    // The element at position, which moves on to the next (previous) one, null at the end.
    CString& GetNext(POSITION& position);
    const CString& GetNext(POSITION& position) const;
    CString& GetPrev(POSITION& position);
    const CString& GetPrev(POSITION& position) const;
    CString& GetAt(POSITION position);
    const CString& GetAt(POSITION position) const;
    void SetAt(POSITION position, const CString& text) { GetAt(position) = text; }
    const CString& GetHead() const { return GetAt(head_); }
    const CString& GetTail() const { return GetAt(tail_); }

    // Null when there is none (from after startAfter on, when given).
    POSITION Find(const CString& text, POSITION startAfter = nullptr) const;
    POSITION FindIndex(INT_PTR index) const;

  private:
    POSITION head_ = nullptr;
    POSITION tail_ = nullptr;
    INT_PTR count_ = 0;
};
