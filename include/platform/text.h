/// @file
/// UTF-16 text: CString, and the two conversions at the Linux boundary.
#pragma once

#include <compare>
#include <cstdarg>
#include <string>
#include <string_view>
#include <utility>

#include <platform/types.h>

#define PLATFORM_UTF16(literal) u##literal
#define _T(literal) PLATFORM_UTF16(literal)  // a UTF-16 literal: "..." or 'x', or a macro for one
#define _TEXT(literal) _T(literal)
#define TEXT(literal) _T(literal)

/// An owned UTF-16 string. It is a value: copies are independent. Positions and lengths count code units.
/// Malformed input of a conversion becomes U+FFFD; it never truncates what follows.
class PLATFORM_API CString {
  public:
    CString() = default;
    CString(LPCWSTR text);                ///< NOLINT: literals convert; null is the empty string
    CString(const char* utf8);            ///< NOLINT
    CString(const wchar_t* text);         ///< NOLINT: UTF-32, the compiler's L"" on Linux
    CString(const std::string& utf8);     ///< NOLINT: terminators among it, too
    CString(std::string_view utf8);       ///< NOLINT
    CString(const std::u16string& text);  ///< NOLINT
    CString(const std::wstring& text);    ///< NOLINT
    explicit CString(WCHAR unit) : CString(unit, 1) {}
    ///@{
    /// Exactly `length` units, terminators among them too; a count below 1 gives the empty string.
    CString(LPCWSTR text, int length);
    CString(WCHAR unit, int count);
    explicit CString(std::u16string_view text) : text_(text) {}
    explicit CString(std::u16string&& text) : text_(std::move(text)) {}
    ///@}

    int GetLength() const { return static_cast<int>(text_.size()); }
    bool IsEmpty() const { return text_.empty(); }
    void Empty() { text_.clear(); }
    LPCWSTR GetString() const { return text_.c_str(); }
    void SetString(const CString& text) { *this = text; }
    void SetString(LPCWSTR text, int length) { *this = CString(text, length); }
    operator LPCWSTR() const { return text_.c_str(); }  ///< NOLINT
    std::u16string_view View() const { return text_; }

    /// The unit at a position; a position outside the string raises CInvalidArgException.
    WCHAR GetAt(int position) const;
    WCHAR operator[](int position) const { return GetAt(position); }
    void SetAt(int position, WCHAR unit);

    CString& operator+=(const CString& other);
    CString& operator+=(WCHAR unit);
    CString& Append(const CString& other) { return *this += other; }
    CString& AppendChar(WCHAR unit) { return *this += unit; }
    /// The first `count` units, the last `count`, or those from `first` on; out-of-range counts are clamped.
    CString Left(int count) const;
    CString Right(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    /// The longest beginning made of units of a set, or of others.
    CString SpanIncluding(const CString& set) const;
    CString SpanExcluding(const CString& set) const;
    /// The next part between separators, none of them empty: for a loop that begins with `from` 0. `from` is
    /// moved on, and -1 with an empty string when no part is left.
    CString Tokenize(const CString& separators, int& from) const;

    ///@{
    /// The position of the first (last) match, or -1; also -1 when `from` lies outside the string.
    int Find(const CString& what, int from = 0) const;
    int Find(WCHAR unit, int from = 0) const;
    ///@}
    int ReverseFind(WCHAR unit) const;
    int FindOneOf(const CString& set) const;
    ///@{
    /// Returns how many places were replaced; an empty `what` is found nowhere.
    int Replace(const CString& what, const CString& with);
    int Replace(WCHAR what, WCHAR with);
    ///@}
    ///@{
    /// These three move positions outside the string to its ends. The first two return the length afterwards,
    /// Remove how many units of the kind there were.
    int Insert(int position, const CString& text);
    int Insert(int position, WCHAR unit) { return Insert(position, CString(unit)); }
    ///@}
    int Delete(int position, int count = 1);
    int Remove(WCHAR unit);
    /// At most so many units are kept.
    void Truncate(int length);

    ///@{
    /// Less than, equal to or greater than 0. CompareNoCase folds ASCII letters only.
    int Compare(const CString& other) const;
    int CompareNoCase(const CString& other) const;
    ///@}
    CString& MakeLower();  ///< ASCII letters only
    CString& MakeUpper();
    CString& MakeReverse();
    /// Takes off the ends what belongs to a set, or is one unit; by default ASCII white space.
    CString& TrimLeft(const CString& set = CString(kSpace));
    CString& TrimRight(const CString& set = CString(kSpace));
    CString& Trim(const CString& set = CString(kSpace)) { return TrimRight(set).TrimLeft(set); }
    CString& TrimLeft(WCHAR unit) { return TrimLeft(CString(unit)); }
    CString& TrimRight(WCHAR unit) { return TrimRight(CString(unit)); }
    CString& Trim(WCHAR unit) { return Trim(CString(unit)); }

    /// The text with this number in the string tables of the current resource module. FALSE with the error of
    /// FindResourceW, the string empty, where there is none.
    BOOL LoadString(UINT id);

    /// printf-like, over UTF-16: `%s` takes UTF-16 (null prints as "(null)"), a CString itself or the
    /// compiler's L"", `%hs` UTF-8 bytes, `%c` a WCHAR, and `%d %i %u %x %X %lld %llu %p %f %g %%` as printf
    /// has them, with width, precision and flags. `%ld` and `%lu` take a LONG and a ULONG, 32 bits; `%I64d`
    /// and `%Id` are 64 bits. What is no specifier stands for itself; `%n` is none. Width and precision end
    /// at 2^20. The string itself may be an argument.
    template <class... Arguments>
    void Format(LPCWSTR format, Arguments... arguments);
    template <class... Arguments>
    void Format(const wchar_t* format, Arguments... arguments);
    template <class... Arguments>
    void Format(const char* format, Arguments... arguments);  ///< UTF-8
    /// The format is a text of the string tables.
    template <class... Arguments>
    void Format(UINT id, Arguments... arguments);
    /// The same, behind what is there.
    template <class... Arguments>
    void AppendFormat(LPCWSTR format, Arguments... arguments);
    template <class... Arguments>
    void AppendFormat(const wchar_t* format, Arguments... arguments);
    template <class... Arguments>
    void AppendFormat(UINT id, Arguments... arguments);
    void FormatV(LPCWSTR format, std::va_list arguments);
    void AppendFormatV(LPCWSTR format, std::va_list arguments);

    /// Room for at least `length` units, writable until ReleaseBuffer, which takes the terminated text found
    /// there (or `length` units of it).
    LPWSTR GetBuffer(int length = 0);
    void ReleaseBuffer(int length = -1);
    /// Exactly `length` units to write, until ReleaseBuffer.
    LPWSTR GetBufferSetLength(int length);

  private:
    static constexpr std::u16string_view kSpace = u" \t\n\v\f\r";
    void FormatUnits(LPCWSTR format, ...);

    std::u16string text_;
};

namespace platform {
/// A text in UTF-8, as an argument: what a call that asks for UTF-16 takes besides. Null is none, as it is
/// there.
class Utf8 {
  public:
    Utf8(const char* text) : text_(text), null_(!text) {}  ///< NOLINT: this one and the others convert
    Utf8(const std::string& text) : text_(text) {}         ///< NOLINT
    Utf8(std::string_view text) : text_(text) {}           ///< NOLINT
    LPCWSTR Utf16() const { return null_ ? nullptr : text_.GetString(); }

  private:
    CString text_;
    bool null_ = false;
};

/// What a text stands for among the arguments of a format: the address of its UTF-16.
template <class T>
T TextAsArgument(T value) {
    return value;
}
inline CString TextAsArgument(const wchar_t* text) {
    return CString(text ? text : L"(null)");
}
inline CString TextAsArgument(wchar_t* text) {
    return TextAsArgument(static_cast<const wchar_t*>(text));
}
template <class T>
T FormatArgument(const T& value) {
    return value;
}
inline LPCWSTR FormatArgument(const CString& text) {
    return text;
}
}  // namespace platform

template <class... Arguments>
void CString::Format(LPCWSTR format, Arguments... arguments) {
    FormatUnits(format, platform::FormatArgument(platform::TextAsArgument(arguments))...);
}
template <class... Arguments>
void CString::Format(const wchar_t* format, Arguments... arguments) {
    Format(CString(format).GetString(), arguments...);
}
template <class... Arguments>
void CString::Format(const char* format, Arguments... arguments) {
    Format(CString(format).GetString(), arguments...);
}
template <class... Arguments>
void CString::Format(UINT id, Arguments... arguments) {
    CString format;
    if (format.LoadString(id)) Format(format.GetString(), arguments...);
}
template <class... Arguments>
void CString::AppendFormat(LPCWSTR format, Arguments... arguments) {
    CString more;
    more.Format(format, arguments...);
    *this += more;
}
template <class... Arguments>
void CString::AppendFormat(const wchar_t* format, Arguments... arguments) {
    AppendFormat(CString(format).GetString(), arguments...);
}
template <class... Arguments>
void CString::AppendFormat(UINT id, Arguments... arguments) {
    CString format;
    if (format.LoadString(id)) AppendFormat(format.GetString(), arguments...);
}

inline CString operator+(CString left, const CString& right) {
    return left += right;
}
/// Of one unit, not of the pointer that a string converts to.
inline CString operator+(CString left, WCHAR right) {
    return left += right;
}
inline CString operator+(WCHAR left, const CString& right) {
    return CString(left) += right;
}
inline bool operator==(const CString& a, const CString& b) {
    return a.View() == b.View();
}
inline bool operator==(const CString& a, LPCWSTR b) {
    return a.View() == (b ? std::u16string_view(b) : std::u16string_view());
}
inline std::strong_ordering operator<=>(const CString& a, const CString& b) {
    return a.View() <=> b.View();
}
inline std::strong_ordering operator<=>(const CString& a, LPCWSTR b) {
    return a.View() <=> (b ? std::u16string_view(b) : std::u16string_view());
}

///@{
/// The only doors between UTF-16 and the byte strings of Linux (paths, URLs, X properties).
PLATFORM_API std::string ToUtf8(std::u16string_view text);
inline std::string ToUtf8(LPCWSTR text) {
    return text ? ToUtf8(std::u16string_view(text)) : std::string();
}
inline std::string ToUtf8(const std::u16string& text) {
    return ToUtf8(std::u16string_view(text));
}
inline std::string ToUtf8(const CString& text) {
    return ToUtf8(text.View());
}
///@}
/// One U+FFFD stands for each maximal part of a malformed sequence.
PLATFORM_API CString FromUtf8(std::string_view bytes);
/// The same, behind what is there.
PLATFORM_API void AppendFromUtf8(std::u16string& text, std::string_view bytes);
