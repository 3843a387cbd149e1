// CString::Format: the specifiers are walked here, numbers are left to libc.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include <platform/text.h>

#include "platform/base/unicode.h"

namespace platform {
namespace {

// No field is wider and no number more precise than this, so that a mistaken "%*d" cannot ask for gigabytes.
constexpr int kWidestField = 1 << 20;

// What an argument's length prefix says. Long is a LONG, hence as wide as Default.
enum class Length { Default, Char, Short, Long, LongLong, LongDouble };

struct Specifier {
    std::string flags;
    int width = 0;
    int precision = -1;  // none
    Length length = Length::Default;
    char16_t conversion = 0;  // 0: the format ended inside the specifier

    bool LeftAligned() const { return flags.find('-') != std::string::npos; }
};

// The arguments are copied by the constructor, where the analyzer does not see it.
// NOLINTBEGIN(clang-analyzer-valist.Uninitialized)
class Formatter {
  public:
    Formatter(LPCWSTR format, std::va_list arguments) : next_(format) { va_copy(arguments_, arguments); }
    ~Formatter() { va_end(arguments_); }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    std::u16string Run();

  private:
    Specifier ReadSpecifier();
    int ReadNumber();
    Length ReadLength();
    bool Convert(const Specifier& specifier);
    std::int64_t SignedArgument(Length length);
    std::uint64_t UnsignedArgument(Length length);
    void AppendText(const Specifier& specifier);
    void AppendField(const Specifier& specifier, std::u16string_view text);
    template <class T>
    void AppendNumber(const Specifier& specifier, const char* length, T value);

    LPCWSTR next_;
    std::va_list arguments_;
    std::u16string out_;
};

std::u16string Formatter::Run() {
    while (*next_) {
        if (*next_ != u'%') {
            out_ += *next_++;
            continue;
        }
        const LPCWSTR start = next_++;
        const Specifier specifier = ReadSpecifier();
        // What is no specifier stands for itself.
        if (!Convert(specifier)) out_.append(start, next_);
    }
    return std::move(out_);
}

// A '*' or decimal digits.
int Formatter::ReadNumber() {
    if (*next_ == u'*') {
        ++next_;
        return std::clamp(va_arg(arguments_, int), -kWidestField, kWidestField);
    }
    int value = 0;
    for (; *next_ >= u'0' && *next_ <= u'9'; ++next_)
        value = std::min(value * 10 + (*next_ - u'0'), kWidestField);
    return value;
}

Length Formatter::ReadLength() {
    const auto take = [this](std::u16string_view prefix) {
        for (std::size_t i = 0; i < prefix.size(); ++i)
            if (next_[i] != prefix[i]) return false;
        next_ += prefix.size();
        return true;
    };
    if (take(u"hh")) return Length::Char;
    if (take(u"h")) return Length::Short;
    if (take(u"ll") || take(u"I64") || take(u"j") || take(u"z") || take(u"t")) return Length::LongLong;
    if (take(u"l") || take(u"I32") || take(u"w")) return Length::Long;
    if (take(u"I")) return Length::LongLong;
    if (take(u"L")) return Length::LongDouble;
    return Length::Default;
}

Specifier Formatter::ReadSpecifier() {
    Specifier specifier;
    constexpr std::u16string_view flags = u"-+ #0";
    for (; *next_ && flags.find(*next_) != std::u16string_view::npos; ++next_) {
        const char flag = static_cast<char>(*next_);
        if (specifier.flags.find(flag) == std::string::npos) specifier.flags += flag;
    }
    specifier.width = ReadNumber();
    if (specifier.width < 0) {
        specifier.flags += '-';
        specifier.width = -specifier.width;
    }
    if (*next_ == u'.') {
        ++next_;
        specifier.precision = std::max(ReadNumber(), -1);
    }
    specifier.length = ReadLength();
    if (*next_) specifier.conversion = *next_++;
    return specifier;
}

std::int64_t Formatter::SignedArgument(Length length) {
    if (length == Length::LongLong) return va_arg(arguments_, long long);
    const int value = va_arg(arguments_, int);
    if (length == Length::Char) return static_cast<signed char>(value);
    if (length == Length::Short) return static_cast<short>(value);
    return value;
}

std::uint64_t Formatter::UnsignedArgument(Length length) {
    if (length == Length::LongLong) return va_arg(arguments_, unsigned long long);
    const unsigned value = va_arg(arguments_, unsigned);
    if (length == Length::Char) return static_cast<unsigned char>(value);
    if (length == Length::Short) return static_cast<unsigned short>(value);
    return value;
}

// False when the conversion is unknown; no argument was taken then.
bool Formatter::Convert(const Specifier& specifier) {
    switch (specifier.conversion) {
        case u'%':
            out_ += u'%';
            return true;
        case u's':
        case u'S':
        case u'c':
        case u'C':
            AppendText(specifier);
            return true;
        case u'd':
        case u'i':
            AppendNumber(specifier, "ll", static_cast<long long>(SignedArgument(specifier.length)));
            return true;
        case u'u':
        case u'x':
        case u'X':
        case u'o':
            AppendNumber(specifier, "ll",
                         static_cast<unsigned long long>(UnsignedArgument(specifier.length)));
            return true;
        case u'e':
        case u'E':
        case u'f':
        case u'F':
        case u'g':
        case u'G':
        case u'a':
        case u'A':
            if (specifier.length == Length::LongDouble)
                AppendNumber(specifier, "L", va_arg(arguments_, long double));
            else
                AppendNumber(specifier, "", va_arg(arguments_, double));
            return true;
        case u'p':
            AppendNumber(specifier, "", va_arg(arguments_, void*));
            return true;
        default:
            return false;
    }
}

// %s and %c take UTF-16; %hs, %hc, %S and %C take bytes. The precision counts units of the argument, which
// needs no terminator within it.
void Formatter::AppendText(const Specifier& specifier) {
    const bool capital = specifier.conversion == u'S' || specifier.conversion == u'C';
    const bool narrow = specifier.length == Length::Short || (capital && specifier.length == Length::Default);
    if (specifier.conversion == u'c' || specifier.conversion == u'C') {
        const int unit = va_arg(arguments_, int);
        const char byte = static_cast<char>(unit);
        const char16_t wide = static_cast<char16_t>(unit);
        AppendField(specifier, narrow ? Utf16FromUtf8({&byte, 1}) : std::u16string(1, wide));
        return;
    }
    const auto bounded = [&]<class Unit>(const Unit* text) {
        std::size_t length = 0;
        const std::size_t most =
            specifier.precision < 0 ? SIZE_MAX : static_cast<std::size_t>(specifier.precision);
        while (length < most && text[length])
            ++length;
        return std::basic_string_view<Unit>(text, length);
    };
    if (narrow) {
        const char* text = va_arg(arguments_, const char*);
        AppendField(specifier, Utf16FromUtf8(bounded(text ? text : "(null)")));
    } else {
        LPCWSTR text = va_arg(arguments_, LPCWSTR);
        AppendField(specifier, bounded(text ? text : u"(null)"));
    }
}

void Formatter::AppendField(const Specifier& specifier, std::u16string_view text) {
    const std::size_t width = static_cast<std::size_t>(specifier.width);
    const std::size_t padding = width > text.size() ? width - text.size() : 0;
    if (!specifier.LeftAligned()) out_.append(padding, u' ');
    out_ += text;
    if (specifier.LeftAligned()) out_.append(padding, u' ');
}

template <class T>
void Formatter::AppendNumber(const Specifier& specifier, const char* length, T value) {
    const std::string format =
        "%" + specifier.flags + "*.*" + length + static_cast<char>(specifier.conversion);
    const auto print = [&](char* buffer, std::size_t size) {
        return std::snprintf(buffer, size, format.c_str(), specifier.width, specifier.precision, value);
    };
    std::array<char, 128> small;
    const int needed = print(small.data(), small.size());
    if (needed < 0) return;
    const std::size_t count = static_cast<std::size_t>(needed);
    if (count < small.size()) {
        // A locale's decimal mark may be more than ASCII.
        out_ += Utf16FromUtf8({small.data(), count});
        return;
    }
    std::string large(count, '\0');
    print(large.data(), count + 1);
    out_ += Utf16FromUtf8(large);
}

// NOLINTEND(clang-analyzer-valist.Uninitialized)

}  // namespace
}  // namespace platform

void CString::FormatUnits(LPCWSTR format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::FormatV(LPCWSTR format, std::va_list arguments) {
    // This string may be among the arguments, so it changes last.
    text_ = format ? platform::Formatter(format, arguments).Run() : std::u16string();
}

void CString::AppendFormatV(LPCWSTR format, std::va_list arguments) {
    CString more;
    more.FormatV(format, arguments);
    *this += more;
}
