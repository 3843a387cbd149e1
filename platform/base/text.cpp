#include <platform/text.h>

#include <algorithm>

#include <platform/collections.h>

#include "platform/base/unicode.h"

namespace {

char16_t LowerAscii(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

char16_t UpperAscii(char16_t unit) {
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - (u'a' - u'A')) : unit;
}

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

int CString::Replace(const CString& what, const CString& with) {
    if (what.IsEmpty()) return 0;
    // A new text, not edits in place: linear however many places there are, and either argument may be
    // this string itself.
    std::u16string out;
    int places = 0;
    std::size_t from = 0;
    for (std::size_t at = text_.find(what.text_); at != std::u16string::npos;
         at = text_.find(what.text_, from)) {
        out.append(text_, from, at - from).append(with.text_);
        from = at + what.text_.size();
        ++places;
    }
    if (places == 0) return 0;
    out.append(text_, from);
    text_ = std::move(out);
    return places;
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

CString& CString::MakeLower() {
    std::transform(text_.begin(), text_.end(), text_.begin(), LowerAscii);
    return *this;
}

CString& CString::MakeUpper() {
    std::transform(text_.begin(), text_.end(), text_.begin(), UpperAscii);
    return *this;
}

CString& CString::Trim() {
    constexpr std::u16string_view space = u" \t\n\v\f\r";
    const std::size_t first = text_.find_first_not_of(space);
    if (first == std::u16string::npos) {
        text_.clear();
        return *this;
    }
    text_.erase(text_.find_last_not_of(space) + 1);
    text_.erase(0, first);
    return *this;
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
