// CString and the two conversions at the boundary to UTF-8.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include <platform/collections.h>
#include <platform/text.h>

namespace {

std::u16string Units(const CString& text) {
    return std::u16string(text.View());
}

TEST(Conversion, MalformedUtf8IsReplacedPartByPart) {
    const struct {
        const char* what;
        std::string bytes;
        std::u16string units;
    } cases[] = {
        {"ASCII, a zero among it", std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
        {"each length at its ends",
         "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
         u"\x7F\x80\x7FF\x800\xFFFF\U00010000\U0010FFFF"},
        {"around the surrogates", "\xED\x9F\xBF\xEE\x80\x80", u"\xD7FF\xE000"},
        {"a lone continuation", "a\x80z", u"a\xFFFDz"},
        {"bytes that never occur", "\xC0\xC1\xF5\xFF", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"overlong, two bytes", "\xC0\xAF", u"\xFFFD\xFFFD"},
        {"overlong, three bytes", "\xE0\x80\xAF", u"\xFFFD\xFFFD\xFFFD"},
        {"overlong, four bytes", "\xF0\x80\x80\xAF", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"a surrogate in UTF-8", "\xED\xA0\x80", u"\xFFFD\xFFFD\xFFFD"},
        {"beyond the last character", "\xF4\x90\x80\x80", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"cut short by ASCII", "\xE4\xBD!", u"\xFFFD!"},
        {"cut short by a lead", "\xF0\x9F\x98\xE4\xBD\xA0", u"\xFFFD\x4F60"},
        {"cut short by the end", "ok\xF0\x9F\x98", u"ok\xFFFD"},
        {"maximal parts", "z\xF1\x80\x80\xE1\x80\xC2y\x80x\x80\xBFw",
         u"z\uFFFD\uFFFD\uFFFDy\uFFFDx\uFFFD\uFFFDw"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(Units(FromUtf8(one.bytes)), one.units) << one.what;
}

TEST(Conversion, UnpairedSurrogatesBecomeTheReplacement) {
    const std::pair<std::u16string, std::string> cases[] = {
        {u"\U0001F600", "\U0001F600"},
        {{0xD83D}, "\uFFFD"},
        {{0xDE00, u'a'}, "\uFFFDa"},
        {{0xDE00, 0xD83D}, "\uFFFD\uFFFD"},
        {{0xD83D, 0xD83D, 0xDE00}, "\uFFFD\U0001F600"},
        {{u'a', 0, u'b'}, std::string("a\0b", 3)},
    };
    for (const auto& [units, bytes] : cases)
        EXPECT_EQ(ToUtf8(units), bytes);
    const wchar_t foreign[] = {L'a', 0x1F600, static_cast<wchar_t>(0xD800), 0x110000, -1, 0};
    EXPECT_EQ(Units(CString(foreign)), u"a\U0001F600\xFFFD\xFFFD\xFFFD");
}

TEST(Conversion, EveryCharacterSurvivesTheWayThereAndBack) {
    std::u16string all;
    for (char32_t c = 1; c <= 0x10FFFF; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF) continue;
        if (c >= 0x10000) all += static_cast<char16_t>(0xD7C0 + (c >> 10));
        all += static_cast<char16_t>(c < 0x10000 ? c : 0xDC00 + (c & 0x3FF));
    }
    EXPECT_TRUE(Units(FromUtf8(ToUtf8(all))) == all);
}

// Whatever the bytes are, the result is well formed and ASCII is neither lost nor moved.
TEST(Conversion, RandomBytesGiveWellFormedText) {
    std::mt19937 random(20240229);
    for (int round = 0; round < 20000; ++round) {
        std::string bytes(random() % 24, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>((random() % 3) ? 0x80 + random() % 128 : random() % 128);
        const std::string once = ToUtf8(FromUtf8(bytes));
        ASSERT_EQ(ToUtf8(FromUtf8(once)), once);
        const auto ascii = [](std::string text) {
            std::erase_if(text, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
            return text;
        };
        ASSERT_EQ(ascii(once), ascii(bytes));
    }
}

TEST(String, PartsAreClampedAndOnlyAsciiChanges) {
    const CString text(u"abcdef");
    const std::pair<CString, const char16_t*> cases[] = {
        {text.Left(2), u"ab"},
        {text.Left(0), u""},
        {text.Left(-1), u""},
        {text.Left(99), u"abcdef"},
        {text.Right(2), u"ef"},
        {text.Right(-1), u""},
        {text.Right(99), u"abcdef"},
        {text.Mid(4), u"ef"},
        {text.Mid(6), u""},
        {text.Mid(7), u""},
        {text.Mid(-3), u"abcdef"},
        {text.Mid(1, 3), u"bcd"},
        {text.Mid(4, 99), u"ef"},
        {text.Mid(99, 99), u""},
        {text.Mid(1, -1), u""},
        {text.Mid(-3, 2), u"ab"},
        {CString(u"abc", 2), u"ab"},
        {CString(u"abc", -2), u""},
        {CString(u'x', 3), u"xxx"},
        {CString(u'x', -3), u""},
        {CString(LPCWSTR{}), u""},
        {CString(LPCWSTR{}, 3), u""},
        {CString(static_cast<const char*>(nullptr)), u""},
        {CString(u" \t\r\n\v\fa b\x3000 \n").Trim(), u"a b\x3000"},
        {CString(u" \t ").Trim(), u""},
        {CString().Trim(), u""},
        {CString(u"aZ[éÉ").MakeUpper(), u"AZ[éÉ"},
        {CString(u"aZ[éÉ").MakeLower(), u"az[éÉ"},
    };
    for (const auto& [part, expected] : cases)
        EXPECT_EQ(Units(part), expected);
}

TEST(String, FindsFromAPosition) {
    const CString text(u"abcabc");
    EXPECT_EQ(text.Find(u"bc"), 1);
    EXPECT_EQ(text.Find(u"bc", 2), 4);
    EXPECT_EQ(text.Find(u"bc", 5), -1);
    EXPECT_EQ(text.Find(u"", 6), 6);
    EXPECT_EQ(text.Find(u'a', 1), 3);
    EXPECT_EQ(text.ReverseFind(u'a'), 3);
    EXPECT_EQ(text.ReverseFind(u'z'), -1);
    for (const int outside : {-1, 7, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(text.Find(u"a", outside), -1);
        EXPECT_EQ(text.Find(u'a', outside), -1);
    }
}

TEST(String, ReplacesWithoutReadingWhatItWrote) {
    const struct {
        const char16_t *text, *what, *with;
        int places;
        const char16_t* result;
    } cases[] = {
        {u"aaaa", u"a", u"aa", 4, u"aaaaaaaa"}, {u"aaaaa", u"aa", u"b", 2, u"bba"},
        {u"abc", u"", u"x", 0, u"abc"},         {u"abc", u"x", u"y", 0, u"abc"},
        {u"abcabc", u"bc", u"", 2, u"aa"},      {u"", u"a", u"b", 0, u""},
    };
    for (const auto& one : cases) {
        CString text(one.text);
        EXPECT_EQ(text.Replace(one.what, one.with), one.places) << ToUtf8(one.text);
        EXPECT_EQ(Units(text), one.result);
    }
    CString self(u"ab");
    EXPECT_EQ(self.Replace(self, self + self), 1);
    EXPECT_EQ(Units(self), u"abab");
    EXPECT_EQ(self.Replace(u"a", self), 2);
    EXPECT_EQ(Units(self), u"ababbababb");
    self += self;
    EXPECT_EQ(self.GetLength(), 20);
}

TEST(String, ComparesByUnitAndFoldsOnlyAscii) {
    const struct {
        const char16_t *a, *b;
        int exact, folded;
    } cases[] = {
        {u"a", u"a", 0, 0},
        {u"a", u"B", 1, -1},
        {u"Ab", u"aB", -1, 0},
        {u"ab", u"abc", -1, -1},
        {u"", u"", 0, 0},
        {u"ab", u"a", 1, 1},
        {u"[", u"a", -1, -1},
        {u"É", u"é", -1, -1},
        {u"_", u"A", 1, -1},
        {u"", u"a", -1, -1},
        {u"\xFFFF", u"\xD83D\xDE00", 1, 1},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(ToUtf8(one.a) + " against " + ToUtf8(one.b));
        EXPECT_EQ(CString(one.a).Compare(one.b), one.exact);
        EXPECT_EQ(CString(one.b).Compare(one.a), -one.exact);
        EXPECT_EQ(CString(one.a).CompareNoCase(one.b), one.folded);
        EXPECT_EQ(CString(one.b).CompareNoCase(one.a), -one.folded);
    }
}

TEST(String, BufferTakesWhatWasWritten) {
    CString text(u"abc");
    LPWSTR buffer = text.GetBuffer(8);
    EXPECT_EQ(std::u16string(buffer), u"abc");
    for (int i = 0; i < 8; ++i)
        buffer[i] = static_cast<char16_t>(u'0' + i);
    text.ReleaseBuffer();  // no terminator within the room
    EXPECT_EQ(Units(text), u"01234567");
    text.GetBuffer(0)[4] = 0;
    text.ReleaseBuffer();
    EXPECT_EQ(Units(text), u"0123");
    text.GetBuffer(-5);
    text.ReleaseBuffer(2);
    EXPECT_EQ(Units(text), u"01");
    text.GetBuffer(4);
    text.ReleaseBuffer(99);
    EXPECT_EQ(text.GetLength(), 4);
}

TEST(Positions, OutsideRaises) {
    CString text(u"ab");
    text.SetAt(1, u'c');
    EXPECT_EQ(text[1], u'c');
    for (const int outside : {-1, 2, 2147483647, -2147483647 - 1}) {
        EXPECT_THROW(text.GetAt(outside), CInvalidArgException);
        EXPECT_THROW(text.SetAt(outside, u'x'), CInvalidArgException);
    }
    EXPECT_EQ(Units(text), u"ac");

    CStringArray array;
    array.Add(u"a");
    array.InsertAt(1, u"c");
    array.InsertAt(1, u"b");
    for (const INT_PTR outside : {INT_PTR{-1}, INT_PTR{3}, INTPTR_MAX, INTPTR_MIN}) {
        EXPECT_THROW(array.GetAt(outside), CInvalidArgException);
        EXPECT_THROW(array.SetAt(outside, u"x"), CInvalidArgException);
        EXPECT_THROW(array.RemoveAt(outside), CInvalidArgException);
        EXPECT_THROW(array.RemoveAt(1, outside), CInvalidArgException);
        EXPECT_THROW(array.InsertAt(outside == 3 ? 4 : outside, u"x"), CInvalidArgException);
    }
    EXPECT_THROW(array.SetSize(-1), CInvalidArgException);
    array.RemoveAt(0, 2);
    ASSERT_EQ(array.GetSize(), 1);
    EXPECT_EQ(array[0], u"c");
    array.RemoveAt(1, 0);
    array.RemoveAll();
    EXPECT_TRUE(array.IsEmpty());
    try {
        AfxThrowInvalidArgException();
    } catch (const CException& raised) {
        EXPECT_STREQ(raised.What(), "An argument is outside its range.");
    }
}

}  // namespace
