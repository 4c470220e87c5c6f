// CString: the text class of the plug-in interface, and the formatter behind it.
//
//     CString name;
//     name.Format(L"%s-%d", (LPCWSTR)prefix, number);
//     if (name.Left(3).CompareNoCase(L"wl-") == 0) acutPrintf(L"\n%s", (LPCWSTR)name);
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

#include "afxtypes.h"
#include "host/platform/port.h"

#ifndef QRS_PUBLISHED_ONLY
// Appends the formatted arguments to out. Understood are the flags "-+ #0", width and precision ('*' too), the sizes
// h hh l ll I32 I64 w j z t and the conversions d i u x X o c C f F e E g G a A s S p and %. A %s or %c is wide
// and %S narrow (ANSI code page) on every system; h before s, S, c or C makes it narrow, l or w wide. A null text
// prints as "(null)". An unknown conversion is written out as it stands.
QRS_HOST_PORT void afxFormat(std::wstring& out, const wchar_t* format, va_list arguments);
#endif  // QRS_PUBLISHED_ONLY

class QRS_HOST_PORT CString {
  public:
    CString() = default;
    // A null pointer makes an empty text.
    CString(LPCWSTR text);
    // The first length units of text, which need not end in a zero.
    CString(LPCWSTR text, int length);
    explicit CString(wchar_t character, int count = 1);
    // Narrow text in the ANSI code page.
    explicit CString(LPCSTR text);
    CString(LPCSTR text, int length);
#ifndef QRS_PUBLISHED_ONLY
    explicit CString(const std::wstring& text) : text_(text) {}
    explicit CString(std::wstring&& text) : text_(std::move(text)) {}
    explicit CString(std::wstring_view text) : text_(text) {}
    std::wstring_view view() const {
        return text_;
    }
#endif  // QRS_PUBLISHED_ONLY

    CString& operator=(LPCWSTR text);
    CString& operator=(wchar_t character);
    CString& operator=(LPCSTR text);

    operator LPCWSTR() const {
        return text_.c_str();
    }
    LPCWSTR GetString() const {
        return text_.c_str();
    }

    int GetLength() const {
        return static_cast<int>(text_.size());
    }
    bool IsEmpty() const {
        return text_.empty();
    }
    void Empty() {
        text_.clear();
    }

    // The unit at index, 0 at the end of the text; an index outside answers 0.
    wchar_t GetAt(int index) const {
        return (*this)[index];
    }
    wchar_t operator[](int index) const;
    // An index outside changes nothing.
    void SetAt(int index, wchar_t character);

    // Parts of the text; counts and positions are cut to what is there.
    CString Left(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Right(int count) const;
    // The longest leading run made of the given characters.
    CString SpanIncluding(LPCWSTR characters) const;

    // Index of the first (last) match from start on, or -1.
    int Find(LPCWSTR part, int start = 0) const;
    int Find(wchar_t character, int start = 0) const;
    int ReverseFind(wchar_t character) const;

    // Number of replacements; an empty part replaces nothing.
    int Replace(LPCWSTR part, LPCWSTR replacement);
    int Replace(wchar_t character, wchar_t replacement);
    // Number of characters removed.
    int Remove(wchar_t character);
    // The new length. A position after the end appends, one before the start inserts at it.
    int Insert(int index, LPCWSTR text);
    int Insert(int index, wchar_t character);
    int Delete(int index, int count = 1);

    // Without arguments white space is cut off, else the given characters.
    CString& Trim();
    CString& Trim(wchar_t character);
    CString& Trim(LPCWSTR characters);
    CString& TrimLeft();
    CString& TrimLeft(wchar_t character);
    CString& TrimLeft(LPCWSTR characters);
    CString& TrimRight();
    CString& TrimRight(wchar_t character);
    CString& TrimRight(LPCWSTR characters);

    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();

    // Below, equal to or above 0; code units compared, without regard to case in the second.
    int Compare(LPCWSTR other) const;
    int CompareNoCase(LPCWSTR other) const;

    // As afxFormat. The text itself may be among the arguments.
    void Format(LPCWSTR format, ...);
    void AppendFormat(LPCWSTR format, ...);
    void FormatV(LPCWSTR format, va_list arguments);
    void AppendFormatV(LPCWSTR format, va_list arguments);

    // The next token from start on, runs of delimiters counting as one; start moves past it, to -1 (and the answer is
    // empty) when there is none. No delimiters at all: the rest of the text.
    CString Tokenize(LPCWSTR delimiters, int& start) const;

    // Room for at least length units to be written directly; ReleaseBuffer ends it (-1: the text ends at its zero).
    LPWSTR GetBuffer(int length = 0);
    LPWSTR GetBufferSetLength(int length);
    void ReleaseBuffer(int length = -1);

    void Append(LPCWSTR text) {
        *this += text;
    }
    void Append(LPCWSTR text, int length);
    void AppendChar(wchar_t character) {
        text_ += character;
    }
    CString& operator+=(const CString& text);
    CString& operator+=(LPCWSTR text);
    CString& operator+=(wchar_t character);

    friend bool operator==(const CString& a, const CString& b) {
        return a.text_ == b.text_;
    }
    friend bool operator!=(const CString& a, const CString& b) {
        return a.text_ != b.text_;
    }

  private:
    std::wstring text_;
};

QRS_HOST_PORT CString operator+(const CString& a, const CString& b);
QRS_HOST_PORT CString operator+(const CString& a, LPCWSTR b);
QRS_HOST_PORT CString operator+(LPCWSTR a, const CString& b);
QRS_HOST_PORT CString operator+(const CString& a, wchar_t b);
QRS_HOST_PORT CString operator+(wchar_t a, const CString& b);

inline bool operator<(const CString& a, const CString& b) {
    return a.Compare(b) < 0;
}
inline bool operator>(const CString& a, const CString& b) {
    return a.Compare(b) > 0;
}
inline bool operator<=(const CString& a, const CString& b) {
    return a.Compare(b) <= 0;
}
inline bool operator>=(const CString& a, const CString& b) {
    return a.Compare(b) >= 0;
}
inline bool operator==(const CString& a, LPCWSTR b) {
    return a.Compare(b) == 0;
}
inline bool operator!=(const CString& a, LPCWSTR b) {
    return a.Compare(b) != 0;
}
inline bool operator<(const CString& a, LPCWSTR b) {
    return a.Compare(b) < 0;
}
inline bool operator>(const CString& a, LPCWSTR b) {
    return a.Compare(b) > 0;
}
inline bool operator<=(const CString& a, LPCWSTR b) {
    return a.Compare(b) <= 0;
}
inline bool operator>=(const CString& a, LPCWSTR b) {
    return a.Compare(b) >= 0;
}
inline bool operator==(LPCWSTR a, const CString& b) {
    return b.Compare(a) == 0;
}
inline bool operator!=(LPCWSTR a, const CString& b) {
    return b.Compare(a) != 0;
}
inline bool operator<(LPCWSTR a, const CString& b) {
    return b.Compare(a) > 0;
}
inline bool operator>(LPCWSTR a, const CString& b) {
    return b.Compare(a) < 0;
}
inline bool operator<=(LPCWSTR a, const CString& b) {
    return b.Compare(a) >= 0;
}
inline bool operator>=(LPCWSTR a, const CString& b) {
    return b.Compare(a) <= 0;
}
