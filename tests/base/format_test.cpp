// CString::Format: texts are ours, numbers must be what printf prints.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <string>

#include <platform/text.h>

namespace {

template <class... Arguments>
std::string Formatted(const std::u16string& format, Arguments... arguments) {
    CString text;
    text.Format(format.c_str(), arguments...);
    return ToUtf8(text);
}

template <class... Arguments>
std::string Printed(const std::string& format, Arguments... arguments) {
    std::string text(2048, '\0');
    const int length = std::snprintf(text.data(), text.size(), format.c_str(), arguments...);
    return text.substr(0, static_cast<std::size_t>(length));
}

const std::string kDecorations[] = {"",    "5",    "-5",   "05",  "+",     " ",     "#",   ".0",
                                    ".3",  "8.3",  "-8.3", "+.2", "#08",   "- 6",   "300", ".200",
                                    "+05", "-300", "0-7",  "#.0", "+-9.4", " 012.5"};

template <class T>
void ExpectAsPrintf(const std::string& length, const std::string& conversions, const std::vector<T>& values) {
    for (const char conversion : conversions)
        for (const std::string& decoration : kDecorations) {
            std::string format = "<%";
            format.append(decoration).append(length).append({conversion, '>'});
            SCOPED_TRACE(format);
            const std::u16string wide(format.begin(), format.end());
            for (const T value : values)
                EXPECT_EQ(Formatted(wide, value), Printed(format, value));
        }
}

TEST(Format, NumbersAreAsPrintfHasThem) {
    ExpectAsPrintf<int>("", "di", {0, 1, -1, 12345, INT_MAX, INT_MIN});
    ExpectAsPrintf<int>("hh", "diux", {0, 127, 128, -1, 0x1FF});
    ExpectAsPrintf<int>("h", "diux", {0, 32767, 32768, -1, 0x1FFFF});
    ExpectAsPrintf<unsigned>("", "uxXo", {0, 1, 255, UINT_MAX});
    ExpectAsPrintf<long long>("ll", "di", {0, -1, LLONG_MAX, LLONG_MIN});
    ExpectAsPrintf<unsigned long long>("ll", "uxX", {0, ULLONG_MAX});
    ExpectAsPrintf<std::size_t>("z", "ux", {0, SIZE_MAX});
    ExpectAsPrintf<double>("", "fFgGeEaA", {0.0, -0.0, 1.5, -2.25, 1e300, 1e-300, INFINITY, -INFINITY, NAN});
    ExpectAsPrintf<long double>("L", "fg", {0.0L, -1.5L});
    EXPECT_EQ(Formatted(u"%p|%p", nullptr, reinterpret_cast<void*>(0xABC)), "(nil)|0xabc");
}

TEST(Format, LongIsThirtyTwoBits) {
    const LONG negative = -2;
    const ULONG most = 0xFFFFFFFF;
    EXPECT_EQ(Formatted(u"%ld %lu %lx %I32d", negative, most, most, negative), "-2 4294967295 ffffffff -2");
    EXPECT_EQ(Formatted(u"%I64d", LLONG_MIN), "-9223372036854775808");
}

TEST(Format, TextsTakeWidthPrecisionAndNull) {
    const char16_t unterminated[] = {u'a', u'b', u'c'};
    const char16_t* none = nullptr;
    const char* noBytes = nullptr;
    EXPECT_EQ(Formatted(u"[%s|%5s|%-5s|%.2s|%5.1s]", u"你好", u"ab", u"ab", u"abc", u"xyz"),
              "[你好|   ab|ab   |ab|    x]");
    EXPECT_EQ(Formatted(u"%.3s", &unterminated[0]), "abc");
    EXPECT_EQ(Formatted(u"%.*s|%*s|%*s", 1, u"abc", 3, u"a", -3, u"b"), "a|  a|b  ");
    EXPECT_EQ(Formatted(u"%.*s", -1, u"abc"), "abc");
    EXPECT_EQ(Formatted(u"%s %hs %.3s", none, noBytes, none), "(null) (null) (nu");
    EXPECT_EQ(Formatted(u"%hs|%S|%ls|%3hs|%.1hs", "é", "é", u"é", "é", "ab"), "é|é|é|  é|a");
    EXPECT_EQ(Formatted(u"%hs", "\xFF!"), "\xEF\xBF\xBD!");
    EXPECT_EQ(Formatted(u"%c%3c%-3c%hc%C", u'é', u'b', u'c', 'd', 'e'), "é  bc  de");
}

TEST(Format, WhatIsNoSpecifierStandsForItself) {
    const std::pair<const char16_t*, const char*> cases[] = {
        {u"", ""},           {u"100%", "100%"},
        {u"%%%", "%%"},      {u"%5.3", "%5.3"},
        {u"%n", "%n"},       {u"a%-", "a%-"},
        {u"%.", "%."},       {u"%ll", "%ll"},
        {u"%y%%", "%y%"},    {u"50% yes", "50% yes"},
        {u"你%你", "你%你"}, {u"%99999999999999", "%99999999999999"},
    };
    for (const auto& [format, expected] : cases)
        EXPECT_EQ(Formatted(format), expected);
    CString none(u"before");
    none.Format(LPCWSTR{});
    EXPECT_TRUE(none.IsEmpty());
}

TEST(Format, WidthIsBoundedAndTheStringMayFormatItself) {
    EXPECT_EQ(Formatted(u"%2000000000d", 1).size(), std::size_t{1} << 20);
    EXPECT_EQ(Formatted(u"%*s", INT_MIN, u"a").size(), std::size_t{1} << 20);
    EXPECT_EQ(Formatted(u"%.2000000000f", 1.0).size(), (std::size_t{1} << 20) + 2);
    CString text(u"ab");
    text.Format(u"%s-%s", text.GetString(), text.GetString());
    EXPECT_EQ(ToUtf8(text), "ab-ab");
}

}  // namespace
