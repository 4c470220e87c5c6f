// Names that nodes of a standard are found by.
//
//     layer->LayerName = L"W-给水-管线";   // the next question finds the layer under this name
//
// A name is a text: whatever CString offers can be asked of it and done to it. When it is written to, it tells the node
// it belongs to, so that look-ups need not go through the whole tree for names that changed. It does not see what is
// written through a pointer or reference to its CString part: hand a function that fills a CString one of your own, and
// assign that.
#pragma once

#include <cstdarg>

#include "afx.h"

// Whom a name tells that it is about to change.
class NodeNameOwner {
  public:
    virtual ~NodeNameOwner() = default;
    virtual void NameChanges() = 0;
};

class NodeName : public CString {
  public:
    NodeName() = default;
    // A copy is a text that tells nobody; assigning takes over the text alone.
    NodeName(const NodeName& other) : CString(other) {}
    NodeName& operator=(const NodeName& other) { return *this = static_cast<const CString&>(other); }
    ~NodeName() = default;

    NodeName& operator=(const CString& text) {
        Told().CString::operator=(text);
        return *this;
    }
    NodeName& operator=(LPCWSTR text) {
        Told().CString::operator=(text);
        return *this;
    }
    NodeName& operator=(LPCSTR text) {
        Told().CString::operator=(text);
        return *this;
    }
    NodeName& operator=(wchar_t character) {
        Told().CString::operator=(character);
        return *this;
    }
    template <class Text>
    NodeName& operator+=(const Text& text) {
        Told().CString::operator+=(text);
        return *this;
    }

    void Empty() { Told().CString::Empty(); }
    void SetAt(int index, wchar_t character) { Told().CString::SetAt(index, character); }
    int Replace(LPCWSTR part, LPCWSTR replacement) { return Told().CString::Replace(part, replacement); }
    int Replace(wchar_t character, wchar_t replacement) { return Told().CString::Replace(character, replacement); }
    int Remove(wchar_t character) { return Told().CString::Remove(character); }
    int Insert(int index, LPCWSTR text) { return Told().CString::Insert(index, text); }
    int Insert(int index, wchar_t character) { return Told().CString::Insert(index, character); }
    int Delete(int index, int count = 1) { return Told().CString::Delete(index, count); }

    template <class... Characters>
    NodeName& Trim(Characters... characters) {
        Told().CString::Trim(characters...);
        return *this;
    }
    template <class... Characters>
    NodeName& TrimLeft(Characters... characters) {
        Told().CString::TrimLeft(characters...);
        return *this;
    }
    template <class... Characters>
    NodeName& TrimRight(Characters... characters) {
        Told().CString::TrimRight(characters...);
        return *this;
    }
    NodeName& MakeUpper() {
        Told().CString::MakeUpper();
        return *this;
    }
    NodeName& MakeLower() {
        Told().CString::MakeLower();
        return *this;
    }
    NodeName& MakeReverse() {
        Told().CString::MakeReverse();
        return *this;
    }

    void Format(LPCWSTR format, ...) {
        va_list arguments;
        va_start(arguments, format);
        FormatV(format, arguments);
        va_end(arguments);
    }
    void AppendFormat(LPCWSTR format, ...) {
        va_list arguments;
        va_start(arguments, format);
        AppendFormatV(format, arguments);
        va_end(arguments);
    }
    void FormatV(LPCWSTR format, va_list arguments) { Told().CString::FormatV(format, arguments); }
    void AppendFormatV(LPCWSTR format, va_list arguments) { Told().CString::AppendFormatV(format, arguments); }
    template <class... Length>
    void Append(LPCWSTR text, Length... length) {
        Told().CString::Append(text, length...);
    }
    void AppendChar(wchar_t character) { Told().CString::AppendChar(character); }

    // What is written into the buffer counts from ReleaseBuffer on.
    LPWSTR GetBuffer(int length = 0) { return Told().CString::GetBuffer(length); }
    LPWSTR GetBufferSetLength(int length) { return Told().CString::GetBufferSetLength(length); }
    void ReleaseBuffer(int length = -1) { Told().CString::ReleaseBuffer(length); }

  private:
    friend class PipeNode;
    friend class OtherLayerNode;

    NodeName& Told() {
        if (owner_ != nullptr) owner_->NameChanges();
        return *this;
    }

    NodeNameOwner* owner_ = nullptr;
};
