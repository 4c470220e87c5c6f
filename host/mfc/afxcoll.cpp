// The base class, the end of the program, and collections of texts.
#include "afxcoll.h"

#include <algorithm>
#include <cstdlib>

struct CStringListNode {
    CString text;
    CStringListNode* previous;
    CStringListNode* next;
};

CObject::CObject() = default;
CObject::~CObject() = default;

void AfxAbort() {
    std::abort();
}

void CStringArray::SetSize(INT_PTR size, INT_PTR) {
    texts_.resize(static_cast<std::size_t>(std::max<INT_PTR>(size, 0)));
}

const CString& CStringArray::GetAt(INT_PTR index) const {
    static const CString none;
    return index >= 0 && index < GetSize() ? texts_[static_cast<std::size_t>(index)] : none;
}

void CStringArray::SetAt(INT_PTR index, const CString& text) {
    if (index >= 0 && index < GetSize()) texts_[static_cast<std::size_t>(index)] = text;
}

void CStringArray::SetAtGrow(INT_PTR index, const CString& text) {
    const CString kept = text;
    if (index >= GetSize()) SetSize(index + 1);
    SetAt(index, kept);
}

INT_PTR CStringArray::Add(const CString& text) {
    texts_.push_back(text);
    return GetUpperBound();
}

INT_PTR CStringArray::Append(const CStringArray& other) {
    const INT_PTR first = GetSize();
    const std::vector<CString> added = other.texts_;
    texts_.insert(texts_.end(), added.begin(), added.end());
    return first;
}

void CStringArray::Copy(const CStringArray& other) {
    texts_ = other.texts_;
}

void CStringArray::InsertAt(INT_PTR index, const CString& text, INT_PTR count) {
    if (index < 0 || count <= 0) return;
    const CString kept = text;
    if (index > GetSize()) SetSize(index);
    texts_.insert(texts_.begin() + index, static_cast<std::size_t>(count), kept);
}

void CStringArray::RemoveAt(INT_PTR index, INT_PTR count) {
    if (index < 0 || index >= GetSize() || count <= 0) return;
    texts_.erase(texts_.begin() + index, texts_.begin() + index + std::min(count, GetSize() - index));
}

CStringList::~CStringList() {
    RemoveAll();
}

POSITION CStringList::InsertBefore(POSITION position, const CString& text) {
    if (!position) position = head_;
    CStringListNode* const previous = position ? position->previous : nullptr;
    auto* const node = new CStringListNode{text, previous, position};
    (previous ? previous->next : head_) = node;
    (position ? position->previous : tail_) = node;
    ++count_;
    return node;
}

POSITION CStringList::InsertAfter(POSITION position, const CString& text) {
    if (!position) position = tail_;
    if (position && position->next) return InsertBefore(position->next, text);
    auto* const node = new CStringListNode{text, position, nullptr};
    (position ? position->next : head_) = node;
    tail_ = node;
    ++count_;
    return node;
}

void CStringList::RemoveAt(POSITION position) {
    if (!position) return;
    (position->previous ? position->previous->next : head_) = position->next;
    (position->next ? position->next->previous : tail_) = position->previous;
    delete position;
    --count_;
}

CString CStringList::RemoveHead() {
    const CString text = GetHead();
    RemoveAt(head_);
    return text;
}

CString CStringList::RemoveTail() {
    const CString text = GetTail();
    RemoveAt(tail_);
    return text;
}

void CStringList::RemoveAll() {
    while (head_)
        RemoveAt(head_);
}

CString& CStringList::GetNext(POSITION& position) {
    CString& text = position->text;
    position = position->next;
    return text;
}

const CString& CStringList::GetNext(POSITION& position) const {
    const CString& text = position->text;
    position = position->next;
    return text;
}

CString& CStringList::GetPrev(POSITION& position) {
    CString& text = position->text;
    position = position->previous;
    return text;
}

const CString& CStringList::GetPrev(POSITION& position) const {
    const CString& text = position->text;
    position = position->previous;
    return text;
}

CString& CStringList::GetAt(POSITION position) {
    return position->text;
}

const CString& CStringList::GetAt(POSITION position) const {
    return position->text;
}

POSITION CStringList::Find(const CString& text, POSITION startAfter) const {
    for (POSITION at = startAfter ? startAfter->next : head_; at; at = at->next) {
        if (at->text == text) return at;
    }
    return nullptr;
}

POSITION CStringList::FindIndex(INT_PTR index) const {
    if (index < 0) return nullptr;
    POSITION at = head_;
    while (at && index-- > 0)
        at = at->next;
    return at;
}
