// CString.
#include "afxstr.h"

#include <algorithm>
#include <cwchar>

#include "host/platform/codepage.h"

namespace {

std::wstring_view viewOf(LPCWSTR text) {
    return text ? std::wstring_view(text) : std::wstring_view();
}

std::size_t cut(int value, std::size_t most) {
    return value <= 0 ? 0 : std::min(static_cast<std::size_t>(value), most);
}

int indexOf(std::size_t found) {
    return found == std::wstring::npos ? -1 : static_cast<int>(found);
}

// What counts as white space at the ends of a text; the full-width blank of Chinese typing is one.
constexpr LPCWSTR kWhiteSpace =
    L" \t\n\v\f\r\u0085\u00A0\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009"
    L"\u200A\u2028\u2029\u202F\u205F\u3000";

}  // namespace

CString::CString(LPCWSTR text) : text_(viewOf(text)) {}

CString::CString(LPCWSTR text, int length)
    : text_(text ? text : L"", text ? cut(length, std::wstring().max_size()) : 0) {}

CString::CString(wchar_t character, int count) : text_(cut(count, std::wstring().max_size()), character) {}

CString::CString(LPCSTR text)
    : text_(qrs::platform::decode(qrs::platform::ansiCodePage(), text ? std::string_view(text) : std::string_view())) {}

CString::CString(LPCSTR text, int length)
    : text_(qrs::platform::decode(
          qrs::platform::ansiCodePage(),
          text && length > 0 ? std::string_view(text, static_cast<std::size_t>(length)) : std::string_view())) {}

CString& CString::operator=(LPCWSTR text) {
    // By way of a copy: the text may be a part of this one.
    text_ = std::wstring(viewOf(text));
    return *this;
}

CString& CString::operator=(wchar_t character) {
    text_.assign(1, character);
    return *this;
}

CString& CString::operator=(LPCSTR text) {
    return *this = CString(text);
}

wchar_t CString::operator[](int index) const {
    return index >= 0 && index < GetLength() ? text_[static_cast<std::size_t>(index)] : L'\0';
}

void CString::SetAt(int index, wchar_t character) {
    if (index >= 0 && index < GetLength()) text_[static_cast<std::size_t>(index)] = character;
}

CString CString::Left(int count) const {
    return CString(view().substr(0, cut(count, text_.size())));
}

CString CString::Mid(int first) const {
    return CString(view().substr(cut(first, text_.size())));
}

CString CString::Mid(int first, int count) const {
    return CString(view().substr(cut(first, text_.size()), cut(count, text_.size())));
}

CString CString::Right(int count) const {
    return CString(view().substr(text_.size() - cut(count, text_.size())));
}

CString CString::SpanIncluding(LPCWSTR characters) const {
    return CString(view().substr(0, text_.find_first_not_of(viewOf(characters))));
}

int CString::Find(LPCWSTR part, int start) const {
    if (!part || start < 0 || start > GetLength()) return -1;
    return indexOf(text_.find(part, static_cast<std::size_t>(start)));
}

int CString::Find(wchar_t character, int start) const {
    if (start < 0 || start > GetLength()) return -1;
    return indexOf(text_.find(character, static_cast<std::size_t>(start)));
}

int CString::ReverseFind(wchar_t character) const {
    return indexOf(text_.rfind(character));
}

int CString::Replace(LPCWSTR part, LPCWSTR replacement) {
    const std::wstring old(viewOf(part));
    const std::wstring fresh(viewOf(replacement));
    if (old.empty()) return 0;
    std::wstring result;
    int count = 0;
    std::size_t at = 0;
    for (std::size_t found; (found = text_.find(old, at)) != std::wstring::npos; ++count) {
        result.append(text_, at, found - at).append(fresh);
        at = found + old.size();
    }
    if (count) text_ = result.append(text_, at);
    return count;
}

int CString::Replace(wchar_t character, wchar_t replacement) {
    if (character == replacement) return 0;
    int count = 0;
    for (wchar_t& unit : text_) {
        if (unit != character) continue;
        unit = replacement;
        ++count;
    }
    return count;
}

int CString::Remove(wchar_t character) {
    const auto end = std::remove(text_.begin(), text_.end(), character);
    const auto count = static_cast<int>(text_.end() - end);
    text_.erase(end, text_.end());
    return count;
}

int CString::Insert(int index, LPCWSTR text) {
    text_.insert(cut(index, text_.size()), std::wstring(viewOf(text)));
    return GetLength();
}

int CString::Insert(int index, wchar_t character) {
    text_.insert(cut(index, text_.size()), 1, character);
    return GetLength();
}

int CString::Delete(int index, int count) {
    text_.erase(cut(index, text_.size()), cut(count, text_.size()));
    return GetLength();
}

CString& CString::Trim() {
    return TrimRight().TrimLeft();
}

CString& CString::Trim(wchar_t character) {
    return TrimRight(character).TrimLeft(character);
}

CString& CString::Trim(LPCWSTR characters) {
    const std::wstring cutOff(viewOf(characters));
    return TrimRight(cutOff.c_str()).TrimLeft(cutOff.c_str());
}

CString& CString::TrimLeft() {
    return TrimLeft(kWhiteSpace);
}

CString& CString::TrimLeft(wchar_t character) {
    return TrimLeft(std::wstring(1, character).c_str());
}

CString& CString::TrimLeft(LPCWSTR characters) {
    text_.erase(0, std::min(text_.find_first_not_of(viewOf(characters)), text_.size()));
    return *this;
}

CString& CString::TrimRight() {
    return TrimRight(kWhiteSpace);
}

CString& CString::TrimRight(wchar_t character) {
    return TrimRight(std::wstring(1, character).c_str());
}

CString& CString::TrimRight(LPCWSTR characters) {
    // npos + 1 is 0: all of it goes.
    text_.erase(text_.find_last_not_of(viewOf(characters)) + 1);
    return *this;
}

CString& CString::MakeUpper() {
    text_ = qrs::platform::foldCase(text_);
    return *this;
}

CString& CString::MakeLower() {
    text_ = qrs::platform::lowerCaseText(text_);
    return *this;
}

CString& CString::MakeReverse() {
    std::reverse(text_.begin(), text_.end());
    return *this;
}

int CString::Compare(LPCWSTR other) const {
    const int order = text_.compare(viewOf(other));
    return (order > 0) - (order < 0);
}

int CString::CompareNoCase(LPCWSTR other) const {
    return qrs::platform::compareNoCase(text_, viewOf(other));
}

void CString::Format(LPCWSTR format, ...) {
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::AppendFormat(LPCWSTR format, ...) {
    va_list arguments;
    va_start(arguments, format);
    AppendFormatV(format, arguments);
    va_end(arguments);
}

void CString::FormatV(LPCWSTR format, va_list arguments) {
    std::wstring text;
    afxFormat(text, format, arguments);
    text_ = std::move(text);
}

void CString::AppendFormatV(LPCWSTR format, va_list arguments) {
    afxFormat(text_, format, arguments);
}

CString CString::Tokenize(LPCWSTR delimiters, int& start) const {
    const std::wstring_view between = viewOf(delimiters);
    if (start < 0) return CString();
    const std::size_t from = cut(start, text_.size());
    const std::size_t first = text_.find_first_not_of(between, from);
    if (first == std::wstring::npos) {
        start = -1;
        return CString();
    }
    const std::size_t end = std::min(text_.find_first_of(between, first), text_.size());
    start = static_cast<int>(end) + 1;
    return CString(view().substr(first, end - first));
}

LPWSTR CString::GetBuffer(int length) {
    text_.resize(std::max(text_.size(), cut(length, text_.max_size())));
    return text_.data();
}

LPWSTR CString::GetBufferSetLength(int length) {
    text_.resize(cut(length, text_.max_size()));
    return text_.data();
}

void CString::ReleaseBuffer(int length) {
    text_.resize(length < 0 ? std::wcslen(text_.c_str()) : cut(length, text_.size()));
}

void CString::Append(LPCWSTR text, int length) {
    if (text) text_.append(std::wstring(text, cut(length, text_.max_size())));
}

CString& CString::operator+=(const CString& text) {
    text_ += text.text_;
    return *this;
}

CString& CString::operator+=(LPCWSTR text) {
    text_ += std::wstring(viewOf(text));
    return *this;
}

CString& CString::operator+=(wchar_t character) {
    text_ += character;
    return *this;
}

CString operator+(const CString& a, const CString& b) {
    CString sum(a);
    return sum += b;
}

CString operator+(const CString& a, LPCWSTR b) {
    CString sum(a);
    return sum += b;
}

CString operator+(LPCWSTR a, const CString& b) {
    CString sum(a);
    return sum += b;
}

CString operator+(const CString& a, wchar_t b) {
    CString sum(a);
    return sum += b;
}

CString operator+(wchar_t a, const CString& b) {
    CString sum(a);
    return sum += b;
}
