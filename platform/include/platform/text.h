// UTF-16 text: CString, and the two conversions at the Linux boundary.
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>
#include <utility>

#include <platform/types.h>

// A UTF-16 literal.
#define _T(literal) u##literal

// An owned UTF-16 string. It is a value: copies are independent. Positions and lengths count code units.
// Malformed input of a conversion becomes U+FFFD; it never truncates what follows.
class PLATFORM_API CString {
  public:
    CString() = default;
    CString(LPCWSTR text);         // NOLINT: literals convert; null is the empty string
    CString(const char* utf8);     // NOLINT
    CString(const wchar_t* text);  // NOLINT: UTF-32, the compiler's L"" on Linux
    // Exactly `length` units, terminators among them too; a count below 1 gives the empty string.
    CString(LPCWSTR text, int length);
    CString(WCHAR unit, int count);
    explicit CString(std::u16string_view text) : text_(text) {}
    explicit CString(std::u16string&& text) : text_(std::move(text)) {}

    int GetLength() const { return static_cast<int>(text_.size()); }
    bool IsEmpty() const { return text_.empty(); }
    void Empty() { text_.clear(); }
    LPCWSTR GetString() const { return text_.c_str(); }
    operator LPCWSTR() const { return text_.c_str(); }  // NOLINT
    std::u16string_view View() const { return text_; }

    // The unit at a position; a position outside the string raises CInvalidArgException.
    WCHAR GetAt(int position) const;
    WCHAR operator[](int position) const { return GetAt(position); }
    void SetAt(int position, WCHAR unit);

    CString& operator+=(const CString& other);
    CString& operator+=(WCHAR unit);
    // The first `count` units, the last `count`, or those from `first` on; out-of-range counts are clamped.
    CString Left(int count) const;
    CString Right(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;

    // The position of the first (last) match, or -1; also -1 when `from` lies outside the string.
    int Find(const CString& what, int from = 0) const;
    int Find(WCHAR unit, int from = 0) const;
    int ReverseFind(WCHAR unit) const;
    // Returns how many places were replaced; an empty `what` is found nowhere.
    int Replace(const CString& what, const CString& with);

    // Less than, equal to or greater than 0. CompareNoCase folds ASCII letters only.
    int Compare(const CString& other) const;
    int CompareNoCase(const CString& other) const;
    CString& MakeLower();  // ASCII letters only
    CString& MakeUpper();
    CString& Trim();  // ASCII white space at both ends

    // printf-like, over UTF-16: %s takes a LPCWSTR (null prints as "(null)"), %hs UTF-8 bytes, %c a WCHAR,
    // and %d %i %u %x %X %lld %llu %p %f %g %% as printf has them, with width, precision and flags. %ld and
    // %lu take a LONG and a ULONG, 32 bits. What is no specifier stands for itself; %n is none. Width and
    // precision end at 2^20. The string itself may be an argument.
    void Format(LPCWSTR format, ...);
    void FormatV(LPCWSTR format, std::va_list arguments);

    // Room for at least `length` units, writable until ReleaseBuffer, which takes the terminated text found
    // there (or `length` units of it).
    LPWSTR GetBuffer(int length);
    void ReleaseBuffer(int length = -1);

  private:
    std::u16string text_;
};

inline CString operator+(CString left, const CString& right) {
    return left += right;
}
inline bool operator==(const CString& a, const CString& b) {
    return a.View() == b.View();
}
inline bool operator==(const CString& a, LPCWSTR b) {
    return a == CString(b);
}
inline bool operator<(const CString& a, const CString& b) {
    return a.View() < b.View();
}

// The only doors between UTF-16 and the byte strings of Linux (paths, URLs, X properties).
PLATFORM_API std::string ToUtf8(std::u16string_view text);
inline std::string ToUtf8(LPCWSTR text) {
    return text ? ToUtf8(std::u16string_view(text)) : std::string();
}
inline std::string ToUtf8(const CString& text) {
    return ToUtf8(text.View());
}
// One U+FFFD stands for each maximal part of a malformed sequence.
PLATFORM_API CString FromUtf8(std::string_view bytes);
// The same, behind what is there.
PLATFORM_API void AppendFromUtf8(std::u16string& text, std::string_view bytes);
