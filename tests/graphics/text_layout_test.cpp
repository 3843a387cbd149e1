// Lines, trimming, placing and the box of a text; faces and scripts.
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>

#include "graphics/text_kit.h"
#include "platform/graphics/text/font_names.h"

namespace {

using namespace Gdiplus;
using kit::Box;
using kit::Laid;
using kit::LinesOf;
using kit::WidthOf;
using Lines = std::vector<std::string>;

float Wide(std::u16string_view text) {
    return static_cast<float>(WidthOf(text));
}

int LineHeight() {
    return static_cast<int>(Laid(u"x")->Box().Height);
}

constexpr int kNoWrap = StringFormatFlagsNoWrap, kWhole = StringFormatFlagsLineLimit,
              kUnclipped = StringFormatFlagsNoClip;
constexpr auto kCharacter = StringTrimmingCharacter, kWord = StringTrimmingWord,
               kDots = StringTrimmingEllipsisCharacter, kWordDots = StringTrimmingEllipsisWord;

struct LinesCase {
    const char* what;
    std::u16string text;
    Box box;
    Lines lines;
};

void ExpectLines(const std::vector<LinesCase>& cases) {
    for (const LinesCase& c : cases)
        EXPECT_EQ(LinesOf(*Laid(c.text, c.box)), c.lines) << c.what;
}

TEST(TextLayout, LinesBreakAtWordsThenInsideThem) {
    ExpectLines({
        {"fits", u"aaa bbb", {Wide(u"aaa bbb")}, {"aaa bbb"}},
        {"a pixel short", u"aaa bbb", {Wide(u"aaa bbb") - 1}, {"aaa", "bbb"}},
        {"blanks at the end take no room", u"aaa bbb   ", {Wide(u"aaa bbb")}, {"aaa bbb"}},
        {"a long word", u"xx aaaaaaaaaa bb", {Wide(u"aaaa")}, {"xx", "aaaa", "aaaa", "aa", "bb"}},
        {"narrower than a letter", u"ab", {1}, {"a", "b"}},
        {"ideographs", u"一二三四五", {Wide(u"一二")}, {"一二", "三四", "五"}},
        {"every line end", u"a\nb\r\nc\rd\u2028e\u2029f\vg", {}, {"a", "b", "c", "d", "e", "f", "g"}},
        {"empty lines", u"\na\n\nb\n", {50}, {"", "a", "", "b", ""}},
        {"no width, no wrapping", u"aaa bbb ccc", {}, {"aaa bbb ccc"}},
        {"a negative width", u"aaa bbb ccc", {-5, -5}, {"aaa bbb ccc"}},
        {"unwrapped", u"aaa bbb\nccc", {10, 0, kNoWrap, StringTrimmingNone}, {"aaa bbb", "ccc"}},
        {"nothing", u"", {50, 50}, {}},
    });
}

TEST(TextLayout, WhatDoesNotFitIsTrimmed) {
    const std::u16string text = u"hello wonderful world";
    const float width = Wide(u"hello wonde");
    const auto line = static_cast<float>(LineHeight());
    // The longest start that leaves room for the ellipsis, found the slow way.
    std::string ellipsis;
    for (std::size_t n = 0; n < text.size() && Wide(text.substr(0, n) + u"…") <= width; ++n)
        ellipsis = ToUtf8(text.substr(0, n)) + "…";
    ASSERT_GT(ellipsis.size(), 9U);
    ExpectLines({
        {"none", text, {width, 0, kNoWrap, StringTrimmingNone}, {ToUtf8(text)}},
        {"character", text, {width, 0, kNoWrap, kCharacter}, {"hello wonde"}},
        {"word", text, {width, 0, kNoWrap, kWord}, {"hello"}},
        {"ellipsis character", text, {width, 0, kNoWrap, kDots}, {ellipsis}},
        {"ellipsis word", text, {width, 0, kNoWrap, kWordDots}, {"hello…"}},
        {"a word that never fits", u"wonderful", {Wide(u"wond"), 0, kNoWrap, kWord}, {"wond"}},
        {"it fits", u"hello", {width, line, kNoWrap, kWordDots}, {"hello"}},
        {"room for nothing", text, {1, 0, kNoWrap, kDots}, {"…"}},
        {"room for nothing, no ellipsis", text, {1, 0, kNoWrap, kCharacter}, {"h"}},
        {"each line", u"hello wonderful\nworld", {width, 0, kNoWrap, kWordDots}, {"hello…", "world"}},
        {"the last line goes on with letters", text, {width, line}, {"hello wonde"}},
        {"the last line keeps whole words", text, {width, line, 0, kWord}, {"hello"}},
        {"the last line shows that more follows", text, {width, line, 0, kDots}, {ellipsis}},
        {"on the second line",
         u"aaa hello wonderful world",
         {Wide(u"wonderful…"), 2 * line, 0, kWordDots},
         {"aaa hello", "wonderful…"}},
        {"more paragraphs follow", u"aaa\nbbb\nccc", {width, 2 * line, 0, kWordDots}, {"aaa", "bbb…"}},
        {"untrimmed lines stay", text, {width, line, 0, StringTrimmingNone}, {"hello"}},
    });
}

TEST(TextLayout, HeightLimitsLines) {
    const std::u16string text = u"a\nb\nc\nd";
    const auto line = static_cast<float>(LineHeight());
    const struct {
        const char* what;
        Box box;
        std::size_t lines;
        float height;
    } cases[] = {
        {"exact", {50, 2 * line}, 2, 2 * line},
        {"the half line shows", {50, 2.5F * line}, 3, 2.5F * line},
        {"no width", {0, 2.5F * line}, 3, 2.5F * line},
        {"less than one line", {50, 3}, 1, 3},
        {"only whole lines", {50, 2.5F * line, kWhole}, 2, 2 * line},
        {"not even one", {50, 3, kWhole}, 0, 0},
        {"unclipped, all of them", {50, 2 * line, kUnclipped}, 4, 4 * line},
        {"unclipped but limited", {50, 2 * line, kUnclipped | kWhole}, 2, 2 * line},
        {"an ellipsis is not cut in half", {50, 2.5F * line, 0, kWordDots}, 2, 2 * line},
        {"not even one, but an ellipsis", {50, 3, 0, kDots}, 1, 3},
        {"no height, no limit", {50, 0}, 4, 4 * line},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto laid = Laid(text, c.box);
        EXPECT_EQ(laid->Lines().size(), c.lines);
        EXPECT_FLOAT_EQ(laid->Box().Height, c.height);
    }
}

TEST(TextLayout, TrimmingLeavesWholeCharacters) {
    // A letter with its accent, a pair of surrogates, a joined family, a flag: each is cut as one.
    for (const std::u16string unit :
         {u"e\u0301", u"\U0001D11E", u"\U0001F468\u200D\U0001F469\u200D\U0001F467", u"\U0001F1E8\U0001F1F3",
          u"\u4E2D\uFE00"}) {
        std::u16string text;
        for (int i = 0; i < 12; ++i)
            text += unit;
        for (int width = 1; width < 90; width += 3)
            for (const auto trimming : {kCharacter, kDots})
                for (const int flags : {0, kNoWrap}) {
                    const Box box{static_cast<float>(width), 40, flags, trimming};
                    for (const std::string& line : LinesOf(*Laid(text, box))) {
                        EXPECT_FALSE(line.empty());
                        const std::size_t dots = line.ends_with("…") ? 3 : 0;
                        EXPECT_EQ((line.size() - dots) % ToUtf8(unit).size(), 0U) << width << " " << line;
                    }
                }
    }
}

// Where the ink lies in a box of 200 x 100, as near, centre or far.
TEST(TextLayout, AlignmentPlacesTheInk) {
    const std::u16string text = u"Hxxx\nHxH";
    for (const bool rightToLeft : {false, true})
        for (const auto alignment : {StringAlignmentNear, StringAlignmentCenter, StringAlignmentFar})
            for (const auto lineAlignment :
                 {StringAlignmentNear, StringAlignmentCenter, StringAlignmentFar}) {
                SCOPED_TRACE(testing::Message() << rightToLeft << alignment << lineAlignment);
                Box box{200, 100, rightToLeft ? StringFormatFlagsDirectionRightToLeft : 0};
                box.alignment = alignment;
                box.lineAlignment = lineAlignment;
                const auto laid = Laid(text, box);
                const CRect ink = kit::PaintedBox(*laid);
                const bool left = alignment == (rightToLeft ? StringAlignmentFar : StringAlignmentNear);
                if (alignment == StringAlignmentCenter)
                    EXPECT_NEAR(ink.left, 200 - ink.right, 3);
                else
                    EXPECT_LE(left ? ink.left : 200 - ink.right, 3);
                if (lineAlignment == StringAlignmentCenter)
                    EXPECT_NEAR(ink.top, 100 - ink.bottom, 5);
                else
                    EXPECT_LE(lineAlignment == StringAlignmentNear ? ink.top : 100 - ink.bottom, 5);
                // Both lines stand at the same edge, or around the same middle.
                const auto& lines = laid->Lines();
                ASSERT_EQ(lines.size(), 2U);
                if (alignment == StringAlignmentCenter)
                    EXPECT_NEAR(lines[0].left * 2 + lines[0].width, lines[1].left * 2 + lines[1].width, 1);
                else if (left)
                    EXPECT_EQ(lines[0].left, lines[1].left);
                else
                    EXPECT_EQ(lines[0].left + lines[0].width, lines[1].left + lines[1].width);
            }
}

TEST(TextLayout, WithoutABoxTextStandsAroundItsPoint) {
    Box box;
    box.alignment = box.lineAlignment = StringAlignmentCenter;
    const RectF middle = Laid(u"HHHH", box)->Box();
    EXPECT_NEAR(middle.X + middle.Width / 2, 0, 0.5);
    EXPECT_NEAR(middle.Y + middle.Height / 2, 0, 0.5);
    box.alignment = box.lineAlignment = StringAlignmentFar;
    const RectF before = Laid(u"HHHH", box)->Box();
    EXPECT_EQ(before.GetRight(), 0);
    EXPECT_EQ(before.GetBottom(), 0);
}

// Every script and style, in and out of boxes: no pixel outside the box, and no box far beyond its pixels.
TEST(TextLayout, TheBoxHoldsTheInk) {
    for (const std::u16string text :
         {u"jgÅÄyq|", u"fff j", u"Wide text 你好，世界 gj", u"ÂÊÎ\nqpg", u"שלום עולם", u"漢字かな交じり",
          u"e\u0301\u0302 a\u0323", u"_", u"J", u"…"})
        for (const auto family : {u"DejaVu Sans", u"宋体", u"Noto Serif CJK SC"})
            for (const int style : {0, 1, 2, 3, 4, 8, 15})
                for (const float pixels : {9.0F, 12.0F, 16.0F, 37.5F}) {
                    const auto font = kit::TestFont(pixels, style, family);
                    const auto laid = Laid(text, {}, font);
                    const CRect ink = kit::PaintedBox(*laid);
                    const RectF box = laid->Box();
                    SCOPED_TRACE(testing::Message()
                                 << ToUtf8(text) << " " << ToUtf8(family) << " " << style << " " << pixels);
                    ASSERT_FALSE(ink.IsRectEmpty());
                    EXPECT_GE(static_cast<float>(ink.left), box.X);
                    EXPECT_LE(static_cast<float>(ink.right), box.GetRight());
                    EXPECT_GE(static_cast<float>(ink.top), box.Y);
                    EXPECT_LE(static_cast<float>(ink.bottom), box.GetBottom());
                    EXPECT_LE(box.Width, static_cast<float>(ink.Width()) + pixels);
                    CRect promised = laid->Ink();
                    EXPECT_TRUE(promised.left <= ink.left && promised.top <= ink.top &&
                                promised.right >= ink.right && promised.bottom >= ink.bottom)
                        << ink << " in " << promised;
                }
}

TEST(TextLayout, AMeasuredBoxTakesTheSameLines) {
    const std::u16string text = u"jog wander quickly along 上海的街道 file";
    for (int width = 20; width < 320; width += 7) {
        const auto first = Laid(text, {static_cast<float>(width), 0});
        const RectF box = first->Box();
        EXPECT_LE(box.Width, static_cast<float>(width));
        if (box.Width < 12) continue;
        EXPECT_EQ(LinesOf(*Laid(text, {box.Width, box.Height})), LinesOf(*first)) << width;
    }
}

TEST(TextLayout, LinesOfIdeographsAreNoHigherThanTheyNeed) {
    // Captions of 12 pixels are made for boxes of 15 or 16.
    for (const auto family : {u"宋体", u"Noto Sans CJK SC", u"DejaVu Sans"}) {
        const auto laid = Laid(u"中文 Agj", {}, kit::TestFont(12, 0, family));
        EXPECT_LE(laid->Box().Height, 16) << ToUtf8(family);
        EXPECT_GE(laid->Box().Height, 14) << ToUtf8(family);
    }
    EXPECT_EQ(Laid(u"中文", {}, kit::TestFont())->Box().Height,
              Laid(u"Agj", {}, kit::TestFont())->Box().Height)
        << "a line is as high whichever script it is in";
}

TEST(TextLayout, ScriptsHaveGlyphs) {
    for (const std::u16string text :
         {u"plain", u"中文混排 Latin", u"かな", u"한글", u"שלום", u"Ελληνικά", u"Кириллица"}) {
        const auto laid = Laid(text);
        EXPECT_EQ(laid->UnknownGlyphs(), 0) << ToUtf8(text);
        EXPECT_FALSE(kit::PaintedBox(*laid).IsRectEmpty()) << ToUtf8(text);
    }
    EXPECT_GT(Laid(u"\U0010FFFD")->UnknownGlyphs(), 0) << "or the count says nothing";
}

TEST(TextLayout, FacesThatAreMissingAreReplaced) {
    const std::string song = platform::ResolveFamily("宋体");
    EXPECT_NE(song, "宋体");
    EXPECT_EQ(platform::ResolveFamily("SimSun"), song);
    EXPECT_EQ(platform::ResolveFamily("simsun"), song);
    EXPECT_EQ(platform::ResolveFamily("DejaVu Sans"), "DejaVu Sans");
    EXPECT_EQ(platform::ResolveFamily("no such face"), platform::ResolveFamily(""));
    EXPECT_NE(platform::ResolveFamily("no such face"), song);
    // Latin letters and ideographs come from the one face.
    EXPECT_EQ(Laid(u"A中", {}, kit::TestFont(12, 0, u"宋体"))->Faces().size(), 1U);
    // Ideographs of a Latin face are Chinese, unless the user's language has its own.
    const auto fallback = Laid(u"中", {}, kit::TestFont());
    const auto chinese = Laid(u"中", {}, kit::TestFont(12, 0, u"Noto Sans CJK SC"));
    EXPECT_EQ(fallback->Faces()[0].font, chinese->Faces()[0].font);
}

// In processes of their own. With Latin faces only, boxes stand for what is missing; with no face at all the
// shaping library has nothing sure to draw them with, and text is merely laid out.
TEST(TextLayout, MissingFacesLeaveVisibleBoxes) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const char* folder : {"/usr/share/fonts/truetype/dejavu", "/nowhere"}) {
        const bool someFace = folder != std::string_view("/nowhere");
        const std::string path = std::string(QKUI_TEST_OUTPUT) + "/text_faces.conf";
        std::ofstream(path)
            << R"(<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd"><fontconfig><dir>)" << folder
            << "</dir><cachedir>" << QKUI_TEST_OUTPUT << "/text_faces</cachedir></fontconfig>";
        EXPECT_EXIT(
            {
                setenv("FONTCONFIG_FILE", path.c_str(), 1);
                const auto laid = Laid(u"中\U0001F468", {}, kit::TestFont(12, 0, u"宋体"));
                const CRect ink = kit::PaintedBox(*laid);
                const bool boxes =
                    laid->UnknownGlyphs() == 2 && (!someFace || (ink.Width() > 12 && ink.Height() > 6));
                _exit(boxes && !platform::ResolveFamily("宋体").empty() ? 0 : 1);
            },
            testing::ExitedWithCode(0), "")
            << folder;
    }
}

TEST(TextLayout, RightToLeftTextStartsAtTheRight) {
    Box box{200, 40, StringFormatFlagsDirectionRightToLeft, StringTrimmingEllipsisCharacter};
    const CRect ink = kit::PaintedBox(*Laid(u"שלום", box));
    EXPECT_GT(ink.left, 150);
    EXPECT_GE(ink.right, 196);
    // The full stop of a right-to-left sentence stands at its left.
    const CRect stop = kit::PaintedBox(*Laid(u".", box));
    const auto sentence = Laid(u"ab.", box);
    const int plain = WidthOf(u"ab");
    EXPECT_GE(kit::PaintedBox(*sentence).left, 200 - plain - 8);
    EXPECT_GE(stop.left, 190);
    const auto coverage = platform::Coverage::Render(*sentence, CRect(200 - plain, 0, 200, 8));
    bool anyAtRight = false;
    for (int y = 0; y < 8; ++y)
        anyAtRight |= *coverage.At(193, y) != 0;
    EXPECT_TRUE(anyAtRight) << "the letter b, not the stop, is at the right";
    // An ellipsis stands at the end of the reading direction.
    box.width = 60;
    box.flags |= StringFormatFlagsNoWrap;
    const Lines lines = LinesOf(*Laid(u"שלום עולם שלום עולם", box));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].ends_with("…"));
}

// One rule along the whole line, on whole pixels, whichever faces the letters come from.
TEST(TextLayout, RulesAreSharpAndUnbroken) {
    const std::u16string text = u"g下 Aqש ✓";
    for (const auto family : {u"宋体", u"DejaVu Sans"})
        for (const float pixels : {9.0F, 12.0F, 13.0F, 20.0F, 37.5F})
            for (const int style : {FontStyleUnderline | FontStyleItalic, int{FontStyleStrikeout}}) {
                SCOPED_TRACE(testing::Message() << ToUtf8(family) << " " << pixels << " " << style);
                const auto plain = Laid(text, {}, kit::TestFont(pixels, style & FontStyleItalic, family));
                const auto ruled = Laid(text, {}, kit::TestFont(pixels, style, family));
                EXPECT_EQ(ruled->Box().Height, plain->Box().Height) << "the rule asks for no room";
                const platform::TextLine& line = ruled->Lines()[0];
                CRect all;
                all.UnionRect(plain->Ink(), ruled->Ink());
                const auto without = platform::Coverage::Render(*plain, all);
                const auto with = platform::Coverage::Render(*ruled, all);
                int rows = 0;
                for (int y = all.top; y < all.bottom; ++y) {
                    const auto* row = with.At(line.left + line.indent, y);
                    const bool whole =
                        std::all_of(row, row + line.ruled, [](int value) { return value == 255; });
                    rows += whole ? 1 : 0;
                    for (int x = all.left; x < all.right && !whole; ++x)
                        ASSERT_EQ(*with.At(x, y), *without.At(x, y)) << x << ", " << y;
                }
                EXPECT_NEAR(rows, std::max(1.0F, pixels / 16), 1.5F);
                EXPECT_GE(rows, 1);
            }
}

TEST(TextLayout, MarksStandOnTheirLetters) {
    for (const auto family : {u"宋体", u"Noto Serif CJK SC", u"DejaVu Sans"})
        for (const int style : {0, 3})
            for (const std::u16string text :
                 {u"e\u0301", u"x\u0301", u"o\u0302\u0301", u"Å\u0301", u"x\u0323\u0304"}) {
                EXPECT_LE(WidthOf(text, kit::TestFont(40, style, family)),
                          WidthOf(text, kit::TestFont(40, style)) + 4)
                    << "no room beside the letter: " << ToUtf8(text) << " " << ToUtf8(family) << style;
                EXPECT_EQ(Laid(text)->UnknownGlyphs(), 0);
            }
    std::u16string heap = u"e";
    heap.append(20'000, u'\u0301');
    EXPECT_LT(Laid(heap + u"x")->Bytes(), 100'000U);
    EXPECT_GT(WidthOf(heap + u"x"), WidthOf(u"x")) << "what follows is still there";
}

TEST(TextLayout, MalformedTextShowsReplacements) {
    const char16_t high = 0xD800, low = 0xDC00;
    for (const auto& [text, as] : {std::pair(std::u16string{u'a', high, u'b'}, u"a\uFFFDb"),
                                   {std::u16string{low}, u"\uFFFD"},
                                   {std::u16string{u'a', high}, u"a\uFFFD"}}) {
        EXPECT_EQ(LinesOf(*Laid(text)), LinesOf(*Laid(as)));
        EXPECT_EQ(Wide(text), Wide(as));
    }
    EXPECT_EQ(WidthOf(std::u16string_view(u"a\0b", 3)), WidthOf(u"ab")) << "a zero takes no room";
}

TEST(TextLayout, LongTextsCostWhatIsSeenOfThem) {
    std::u16string text;
    for (int i = 0; i < 300'000; ++i)
        text += i % 7 == 6 ? u' ' : static_cast<char16_t>(u'a' + i % 26);
    const auto seen = Laid(text, {200, 100});
    EXPECT_LE(seen->Lines().size(), 8U);
    EXPECT_EQ(LinesOf(*seen), LinesOf(*Laid(text.substr(0, 2000), {200, 100})));
    const Box oneLine{200, 0, StringFormatFlagsNoWrap, StringTrimmingEllipsisCharacter};
    EXPECT_EQ(LinesOf(*Laid(text, oneLine)), LinesOf(*Laid(text.substr(0, 2000), oneLine)));
    // Wider in all than the shaping library can count; every line is there, in order.
    const auto all = Laid(text, {200, 0});
    std::string joined;
    for (const std::string& line : LinesOf(*all))
        joined += line + ' ';
    joined.resize(text.size());
    EXPECT_TRUE(joined == ToUtf8(text));
    for (const platform::TextLine& line : all->Lines())
        ASSERT_LE(line.width, 201);
    // A letter to the line.
    EXPECT_EQ(Laid(std::u16string(20'000, u'!'), {6, 0})->Lines().size(), 20'000U);
}

// Bounded work, which is no time and so the same on every machine.
TEST(TextLayout, AbsurdTextsEndBeforeTheyCostTooMuch) {
    const auto& shaper = platform::TextShaper::OfThread();
    for (const std::u16string unit : {u"a\t", u"a\u05D0", u"\n", u"a\u20DD"})
        for (const Box& box : {Box{50, 0, 0, StringTrimmingEllipsisCharacter},
                               Box{1e9F, 1e9F, StringFormatFlagsNoWrap, StringTrimmingEllipsisWord}}) {
            std::u16string text;
            while (text.size() < 300'000)
                text += unit;
            const std::uint64_t before = shaper.Work();
            EXPECT_FALSE(Laid(text, box, kit::TestFont(1))->Lines().empty());
            EXPECT_LT(shaper.Work() - before, 8'000'000U) << ToUtf8(unit) << " " << box.width;
        }
    const std::string longName = ToUtf8(std::u16string(512'000, u'宋'));
    EXPECT_EQ(platform::ResolveFamily(longName), platform::ResolveFamily("宋体"));
}

TEST(TextLayout, ExtremesOfSizeAreHarmless) {
    EXPECT_EQ(platform::FontData::Get(u"DejaVu Sans", 0, 0), nullptr);
    EXPECT_EQ(platform::FontData::Get(u"DejaVu Sans", 5000, 0), nullptr);
    for (const float pixels : {0.001F, 0.3F, 1.0F, 300.0F, 4096.0F})
        for (const float width : {0.0F, 0.01F, 1.0F, 1e9F, 3e38F})
            for (const float height : {0.0F, 0.01F, 1e9F, 3e38F})
                for (const auto trimming : {StringTrimmingNone, StringTrimmingEllipsisWord}) {
                    Box box{width, height, 0, trimming, StringAlignmentCenter, StringAlignmentFar};
                    const RectF measured = Laid(u"Ag xy\nz", box, kit::TestFont(pixels))->Box();
                    EXPECT_TRUE(std::isfinite(measured.Width) && measured.Width >= 0);
                    EXPECT_TRUE(std::isfinite(measured.Height) && measured.Height >= 0);
                }
}

}  // namespace
