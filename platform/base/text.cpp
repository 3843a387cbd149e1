#include <platform/text.h>

#include <algorithm>

#include <platform/exception.h>

#include "platform/base/ascii.h"
#include "platform/base/unicode.h"

namespace {

using platform::LowerAscii;

int Sign(int value) {
    return (value > 0) - (value < 0);
}

// A count or position of the interface as an offset into a text of `length` units.
std::size_t Clamped(int value, std::size_t length) {
    return value < 0 ? 0 : std::min(static_cast<std::size_t>(value), length);
}

int Position(std::size_t found) {
    return found == std::u16string_view::npos ? -1 : static_cast<int>(found);
}

}  // namespace

CString::CString(LPCWSTR text) {
    if (text) text_ = text;
}

CString::CString(const char* utf8) {
    if (utf8) text_ = platform::Utf16FromUtf8(utf8);
}

CString::CString(const wchar_t* text) {
    static_assert(sizeof(wchar_t) == sizeof(char32_t));
    if (!text) return;
    for (; *text; ++text)
        platform::AppendUtf16(text_, static_cast<char32_t>(*text));
}

CString::CString(const std::string& utf8) : text_(platform::Utf16FromUtf8(utf8)) {}

CString::CString(std::string_view utf8) : text_(platform::Utf16FromUtf8(utf8)) {}

CString::CString(const std::u16string& text) : text_(text) {}

CString::CString(const std::wstring& text) {
    for (const wchar_t unit : text)
        platform::AppendUtf16(text_, static_cast<char32_t>(unit));
}

CString::CString(LPCWSTR text, int length) {
    if (text && length > 0) text_.assign(text, static_cast<std::size_t>(length));
}

CString::CString(WCHAR unit, int count) {
    if (count > 0) text_.assign(static_cast<std::size_t>(count), unit);
}

WCHAR CString::GetAt(int position) const {
    if (position < 0 || static_cast<std::size_t>(position) >= text_.size()) AfxThrowInvalidArgException();
    return text_[static_cast<std::size_t>(position)];
}

void CString::SetAt(int position, WCHAR unit) {
    if (position < 0 || static_cast<std::size_t>(position) >= text_.size()) AfxThrowInvalidArgException();
    text_[static_cast<std::size_t>(position)] = unit;
}

CString& CString::operator+=(const CString& other) {
    text_ += other.text_;
    return *this;
}

CString& CString::operator+=(WCHAR unit) {
    text_ += unit;
    return *this;
}

CString CString::Left(int count) const {
    return CString(View().substr(0, Clamped(count, text_.size())));
}

CString CString::Right(int count) const {
    return CString(View().substr(text_.size() - Clamped(count, text_.size())));
}

CString CString::Mid(int first) const {
    return CString(View().substr(Clamped(first, text_.size())));
}

CString CString::Mid(int first, int count) const {
    return CString(View().substr(Clamped(first, text_.size()), Clamped(count, text_.size())));
}

int CString::Find(const CString& what, int from) const {
    return from < 0 ? -1 : Position(text_.find(what.text_, static_cast<std::size_t>(from)));
}

int CString::Find(WCHAR unit, int from) const {
    return from < 0 ? -1 : Position(text_.find(unit, static_cast<std::size_t>(from)));
}

int CString::ReverseFind(WCHAR unit) const {
    return Position(text_.rfind(unit));
}

int CString::Compare(const CString& other) const {
    return Sign(text_.compare(other.text_));
}

int CString::CompareNoCase(const CString& other) const {
    const std::size_t common = std::min(text_.size(), other.text_.size());
    for (std::size_t i = 0; i < common; ++i) {
        const char16_t mine = LowerAscii(text_[i]);
        const char16_t theirs = LowerAscii(other.text_[i]);
        if (mine != theirs) return mine < theirs ? -1 : 1;
    }
    if (text_.size() == other.text_.size()) return 0;
    return text_.size() < other.text_.size() ? -1 : 1;
}

LPWSTR CString::GetBuffer(int length) {
    if (length > 0) text_.resize(std::max(text_.size(), static_cast<std::size_t>(length)));
    return text_.data();
}

void CString::ReleaseBuffer(int length) {
    // The terminator behind the text bounds the search, also when the writer left none.
    const std::size_t end = length < 0 ? text_.find(u'\0') : static_cast<std::size_t>(length);
    text_.resize(std::min(end, text_.size()));
}

LPWSTR CString::GetBufferSetLength(int length) {
    text_.resize(static_cast<std::size_t>(std::max(length, 0)));
    return text_.data();
}
