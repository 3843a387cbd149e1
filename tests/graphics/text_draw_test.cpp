// Text drawn through Graphics: the same pixels from every cache state and under every clip.
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <thread>

#include "graphics/gdiplus_kit.h"
#include "graphics/text_kit.h"
#include "platform/graphics/pixel_rows.h"

namespace {

using namespace Gdiplus;
using kit::Drawn;
using kit::InkOf;
using kit::Pixels;
using kit::Same;

const LPCWSTR kText = u"A label, 标签 jÅg";
const SolidBrush kBlack(Color(0, 0, 0));

void ForgetTexts() {
    platform::TextShaper::OfThread().Cache().Clear();
}

std::uint64_t Layouts() {
    return GetDrawingCounters().textLayouts;
}

// Draws again under each clip of a grid, which together hold everything.
template <class Draw>
auto InStripes(const Draw& draw, int width, int height) {
    return [&draw, width, height](Graphics& graphics) {
        for (int top = 0; top < 150; top += height)
            for (int left = 0; left < 200; left += width) {
                graphics.SetClip(Rect(left, top, width, height));
                draw(graphics);
            }
    };
}

// Warm or cold, whole or in stripes, on any ground: the pixels of a text depend on none of it.
TEST(TextDraw, CachesAndClipsChangeNoPixel) {
    kit::Random random(7);
    const Pixels background = random.Scattered(160, 60);
    for (const auto family : {u"DejaVu Sans", u"宋体"})
        for (const float y : {4.0F, 4.3F, 4.5F, 4.9F})
            for (const ARGB argb : {0xFE102030U, 0x80FF4020U, 0xFFFFFFFFU, 0x00FFFFFFU}) {
                SCOPED_TRACE(testing::Message() << ToUtf8(family) << " " << y << " " << std::hex << argb);
                const Font font(family, 11);
                const SolidBrush brush{Color(argb)};
                StringFormat format;
                format.SetAlignment(StringAlignmentCenter);
                const auto draw = [&](Graphics& graphics) {
                    EXPECT_EQ(graphics.DrawString(kText, -1, &font, RectF(5.5F, y, 90, 50), &format, &brush),
                              Ok);
                };
                ForgetTexts();
                const Pixels cold = DrawnOn(background, draw);
                const std::uint64_t before = Layouts();
                EXPECT_TRUE(Same(DrawnOn(background, draw), cold));
                EXPECT_EQ(Layouts(), before);
                ForgetTexts();
                EXPECT_TRUE(Same(DrawnOn(background, InStripes(draw, 13, 7)), cold));
                EXPECT_EQ(Same(cold, background), (argb >> 24) == 0);
            }
}

// A text with more ink than is kept is rendered where it shows, with the same result.
TEST(TextDraw, LargeTextsAreRenderedInParts) {
    CString text;
    for (int i = 0; i < 400; ++i)
        text.Format(u"%sline %d of a long text, lang genug\n", text.GetString(), i);
    const Font font(u"DejaVu Sans", 40, FontStyleItalic, UnitPixel);
    const SolidBrush brush(Color(0xC0, 0x20, 0x40, 0x60));
    const auto draw = [&](Graphics& graphics) {
        EXPECT_EQ(graphics.DrawString(text, -1, &font, PointF(-20, -9000), &brush), Ok);
    };
    const Pixels whole = Drawn(200, 150, draw);
    EXPECT_GT(InkOf(whole).Height(), 140);
    EXPECT_LT(platform::TextShaper::OfThread().Cache().Bytes(), 8U << 20);
    EXPECT_TRUE(Same(Drawn(200, 150, InStripes(draw, 200, 11)), whole));
}

TEST(TextDraw, WarmDrawsLayNothingOut) {
    ForgetTexts();
    Bitmap bitmap(200, 100);
    Graphics graphics(&bitmap);
    const SolidBrush other(Color(9, 9, 9));
    const Font font(u"DejaVu Sans", 12);
    const std::unique_ptr<Font> clone(font.Clone());
    const Font alike(u"DejaVu Sans", 16, FontStyleRegular, UnitPixel);
    const FontFamily family(u"DejaVu Sans");
    StringFormat format;
    const RectF box(10, 10, 100, 40);
    RectF measured;
    const auto layouts = [before = Layouts()] { return Layouts() - before; };

    graphics.DrawString(kText, -1, &font, box, &format, &kBlack);
    EXPECT_EQ(layouts(), 1U);
    graphics.DrawString(kText, -1, &font, RectF(20, 30, 100, 40), &format, &other);
    graphics.DrawString(kText, CString(kText).GetLength(), clone.get(), box, nullptr, &kBlack);
    graphics.DrawString(kText, -1, &alike, box, nullptr, &kBlack);
    graphics.MeasureString(kText, -1, &font, box, &format, &measured);
    EXPECT_EQ(layouts(), 1U) << "places, colours, copies and measuring need no other layout";
    format.SetAlignment(StringAlignmentFar);
    graphics.DrawString(kText, -1, &font, box, &format, &kBlack);
    EXPECT_EQ(layouts(), 2U);
    graphics.DrawString(kText, -1, &font, RectF(10, 10, 101, 40), &format, &kBlack);
    EXPECT_EQ(layouts(), 3U);
    // What lies beside everything that may be drawn on costs a test of rectangles.
    graphics.DrawString(u"another", -1, &font, RectF(300, 10, 50, 50), nullptr, &kBlack);
    graphics.SetClip(Rect(0, 0, 10, 10));
    graphics.DrawString(u"another", -1, &font, RectF(50, 50, 50, 50), nullptr, &kBlack);
    EXPECT_EQ(layouts(), 3U);
    // Outlines asked for again come from the same layout, although no font object is held between.
    for (const float x : {0.0F, 1.0F, 2.0F}) {
        GraphicsPath path;
        path.AddString(kText, -1, &family, 0, 17, RectF(x, 0, 80, 0), nullptr);
        EXPECT_EQ(layouts(), 4U);
    }
}

TEST(TextDraw, TheCacheKeepsToItsLimit) {
    auto& cache = platform::TextShaper::OfThread().Cache();
    const Font font(u"DejaVu Sans", 12);
    const auto draw = [&](Graphics& graphics) {
        for (int i = 0; i < 300; ++i) {
            CString text;
            text.Format(u"%d %s", i, kText);
            graphics.DrawString(text, -1, &font, PointF(0, static_cast<float>(i % 5) * 15), &kBlack);
        }
    };
    ForgetTexts();
    const Pixels unlimited = Drawn(200, 90, draw);
    EXPECT_EQ(cache.Count(), 300U);
    const std::size_t all = cache.Bytes();
    for (const std::size_t limit : {all / 3, std::size_t{5000}, std::size_t{0}}) {
        SetDrawingCacheLimit(limit);
        EXPECT_TRUE(Same(Drawn(200, 90, draw), unlimited));
        EXPECT_LE(cache.Bytes(), limit);
        EXPECT_LT(cache.Count(), 300U);
    }
    EXPECT_EQ(cache.Count(), 0U);
    EXPECT_EQ(cache.Bytes(), 0U);
    SetDrawingCacheLimit(std::size_t{64} << 20);
    // What is counted covers what is taken, by the faces of as many fonts above all.
    const std::size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 400; ++i) {
        const Font many(u"宋体", 10 + static_cast<float>(i) / 64);
        EXPECT_GT(GetTextExtent(kText, -1, &many, RectF(), nullptr).box.Width, 0);
    }
    EXPECT_EQ(cache.Count(), 400U);
    EXPECT_LE(mallinfo2().uordblks, before + cache.Bytes());
}

// A side of no length does not clip.
TEST(TextDraw, TheLayoutClipsUnlessTheFormatSaysOtherwise) {
    const struct {
        INT flags;
        float scale;
        RectF box;
        bool cutsX, cutsY;
    } cases[] = {{0, 1, {60, 20, 40, 12}, true, true},
                 {0, 2, {30, 10, 20, 6}, true, true},
                 {StringFormatFlagsNoClip, 1, {60, 20, 40, 12}, false, false},
                 {0, 1, {60, 20, 40, 0}, true, false},
                 {0, 1, {60, 20, 0, 12}, false, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        const Font font(u"DejaVu Sans", 20 / c.scale, FontStyleRegular, UnitPixel);
        StringFormat format(c.flags | StringFormatFlagsNoWrap);
        format.SetTrimming(StringTrimmingNone);
        format.SetAlignment(StringAlignmentCenter);
        format.SetLineAlignment(StringAlignmentCenter);
        const CRect ink = InkOf(Drawn(160, 60, [&](Graphics& graphics) {
            const Matrix scaled(c.scale, 0, 0, c.scale, 0, 0);
            graphics.SetTransform(&scaled);
            graphics.DrawString(u"MMMMMM", -1, &font, c.box, &format, &kBlack);
        }));
        EXPECT_EQ(c.cutsX, ink.left >= 60 && ink.right <= 100) << ink;
        EXPECT_EQ(c.cutsY, ink.top >= 20 && ink.bottom <= 32) << ink;
        EXPECT_EQ(ink.IsRectEmpty(), FALSE);
    }
}

TEST(TextDraw, ColourAndAlphaAreTheBrushs) {
    const Font font(u"DejaVu Sans", 40, FontStyleBold, UnitPixel);
    for (const ARGB argb : {0xFEFFFFFFU, 0x80204060U, 0x01FFFFFFU}) {
        const SolidBrush brush{Color(argb)};
        const Pixels pixels = Drawn(
            60, 60, [&](Graphics& graphics) { graphics.DrawString(u"I", -1, &font, PointF(5, 5), &brush); });
        // The stem of the letter is wholly covered somewhere.
        EXPECT_EQ(*std::max_element(pixels.words.begin(), pixels.words.end()), platform::Premultiply(argb));
    }
}

TEST(TextDraw, TheWorldMovesScalesAndTurnsText) {
    const Font font(u"DejaVu Sans", 20, FontStyleRegular, UnitPixel);
    const auto draw = [&](const Matrix& matrix) {
        return Drawn(200, 200, [&](Graphics& graphics) {
            graphics.SetTransform(&matrix);
            EXPECT_EQ(graphics.DrawString(u"HEH", -1, &font, RectF(10, 10, 90, 30), nullptr, &kBlack), Ok);
        });
    };
    const Pixels plain = draw(Matrix());
    const CRect ink = InkOf(plain);
    Pixels moved(200, 200);
    for (int y = 0; y < 160; ++y)
        for (int x = 0; x < 170; ++x)
            moved.At(x + 30, y + 40) = plain.At(x, y);
    EXPECT_TRUE(Same(draw(Matrix(1, 0, 0, 1, 30, 40)), moved));
    const struct {
        Matrix matrix;
        double left, top, right, bottom;
    } cases[] = {
        {Matrix(2, 0, 0, 2, 0, 0), ink.left * 2.0, ink.top * 2.0, ink.right * 2.0, ink.bottom * 2.0},
        {Matrix(0.5F, 0, 0, 0.5F, 0, 0), ink.left / 2.0, ink.top / 2.0, ink.right / 2.0, ink.bottom / 2.0},
        // A quarter turn: down the page.
        {Matrix(0, 1, -1, 0, 100, 0), 100.0 - ink.bottom, 1.0 * ink.left, 100.0 - ink.top, 1.0 * ink.right}};
    for (const auto& c : cases) {
        const CRect is = InkOf(draw(c.matrix));
        EXPECT_NEAR(is.left, c.left, 3);
        EXPECT_NEAR(is.top, c.top, 3);
        EXPECT_NEAR(is.right, c.right, 3);
        EXPECT_NEAR(is.bottom, c.bottom, 3);
    }
}

// Faces that are no longer used go from memory, those of texts that are kept stay.
TEST(TextDraw, ManyFontsLeaveKeptTextsAlone) {
    const Font font(u"宋体", 15);
    const auto draw = [&](Graphics& graphics) {
        const Matrix turned(1, 0.25F, -0.25F, 1, 30, 0);  // shown from the layout each time
        graphics.SetTransform(&turned);
        graphics.DrawString(kText, -1, &font, PointF(5, 5), &kBlack);
    };
    const Pixels before = Drawn(160, 90, draw);
    const std::uint64_t layouts = Layouts();
    for (int i = 0; i < 150; ++i) {
        const Font other(u"DejaVu Sans", 10 + static_cast<float>(i) / 16);
        EXPECT_GT(GetTextExtent(u"x", -1, &other, RectF(), nullptr).box.Width, 0);
    }
    EXPECT_TRUE(Same(Drawn(160, 90, draw), before));
    EXPECT_EQ(Layouts(), layouts + 150);
}

TEST(TextDraw, OutlinesLieWhereTheTextLies) {
    const FontFamily family(u"DejaVu Sans");
    StringFormat format;
    format.SetAlignment(StringAlignmentFar);
    format.SetLineAlignment(StringAlignmentCenter);
    const Font font(&family, 30, FontStyleBold, UnitPixel);
    const Rect box(10, 20, 150, 120);
    for (const LPCWSTR text : {u"Agj", u"two words wrap", u"中文"}) {
        SCOPED_TRACE(ToUtf8(CString(text)));
        const CRect ink = InkOf(Drawn(200, 150, [&](Graphics& graphics) {
            graphics.DrawString(text, -1, &font, RectF(10, 20, 150, 120), &format, &kBlack);
        }));
        GraphicsPath path;
        EXPECT_EQ(path.AddString(text, -1, &family, FontStyleBold, 30, box, &format), Ok);
        const CRect filled = InkOf(Drawn(200, 150, [&](Graphics& graphics) {
            graphics.SetSmoothingMode(SmoothingModeAntiAlias);
            graphics.FillPath(&kBlack, &path);
        }));
        RectF bounds;
        path.GetBounds(&bounds);
        for (const RectF& is :
             {bounds, RectF(static_cast<float>(filled.left), static_cast<float>(filled.top),
                            static_cast<float>(filled.Width()), static_cast<float>(filled.Height()))}) {
            EXPECT_NEAR(is.X, static_cast<float>(ink.left), 2);
            EXPECT_NEAR(is.Y, static_cast<float>(ink.top), 2);
            EXPECT_NEAR(is.GetRight(), static_cast<float>(ink.right), 2);
            EXPECT_NEAR(is.GetBottom(), static_cast<float>(ink.bottom), 2);
        }
    }
}

// The size of a text's ink, as items ask for it.
TEST(TextDraw, BoundsOfOutlinesAreTight) {
    const FontFamily family(u"DejaVu Sans");
    const auto bounds = [&](LPCWSTR text, REAL size) {
        GraphicsPath path;
        EXPECT_EQ(path.AddString(text, -1, &family, FontStyleRegular, size, RectF(), nullptr), Ok);
        RectF box;
        path.GetBounds(&box);
        return box;
    };
    EXPECT_EQ(bounds(u"", 20).Height, 0);
    EXPECT_EQ(bounds(u"   ", 20).Width, 0);
    const RectF capitals = bounds(u"HH", 100);
    EXPECT_NEAR(capitals.Height, 73, 2) << "the capitals, not the line";
    EXPECT_GT(capitals.Y, 10);
    EXPECT_LT(bounds(u"x", 100).Height, capitals.Height);
    EXPECT_NEAR(bounds(u"HH", 50).Width * 2, capitals.Width, 4);
    EXPECT_NEAR(bounds(CString(u'H', 200), 12).Width, bounds(CString(u'H', 100), 12).Width * 2, 4)
        << "far from the start as well";
}

// In a process of its own, which starts under a user's rules against everything that we ask for.
TEST(TextDraw, RenderingRulesOfTheUserChangeNoPixel) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto hash = [] {
        const Font font(u"DejaVu Sans", 9);
        const Pixels pixels = Drawn(160, 30, [&](Graphics& graphics) {
            graphics.DrawString(kText, -1, &font, PointF(2, 2), &kBlack);
        });
        std::uint64_t value = 14695981039346656037ULL;
        for (const std::uint32_t word : pixels.words)
            value = (value ^ word) * 1099511628211ULL;
        return std::to_string(value);
    };
    constexpr const char* kExpected = "TEXT_DRAW_TEST_EXPECTED";
    if (std::getenv(kExpected) == nullptr) setenv(kExpected, hash().c_str(), 1);  // the child only reads it
    const std::string path = std::string(QKUI_TEST_OUTPUT) + "/text_rules.conf";
    std::ofstream(path) << R"(<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd"><fontconfig>
        <include>/etc/fonts/fonts.conf</include><match target="font">
        <edit name="antialias" mode="assign"><bool>false</bool></edit>
        <edit name="hintstyle" mode="assign"><const>hintfull</const></edit>
        <edit name="autohint" mode="assign"><bool>true</bool></edit>
        <edit name="rgba" mode="assign"><const>rgb</const></edit></match></fontconfig>)";
    EXPECT_EXIT(
        {
            setenv("FONTCONFIG_FILE", path.c_str(), 1);
            _exit(hash() == std::getenv(kExpected) ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(TextDraw, ThreadsDrawAlike) {
    const Font font(u"宋体", 12);
    const auto draw = [&](Graphics& graphics) {
        graphics.DrawString(kText, -1, &font, RectF(3, 3, 90, 50), nullptr, &kBlack);
    };
    const Pixels expected = Drawn(100, 60, draw);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int i = 0; i < 20; ++i)
                EXPECT_TRUE(Same(Drawn(100, 60, draw), expected));
        });
    for (std::thread& thread : threads)
        thread.join();
}

// A host's own, older than what the library keeps for the thread and the process, and so destroyed after it.
struct DrawsAtTheEnd {
    std::function<void(bool)> tell;
    ~DrawsAtTheEnd() {
        if (!tell) return;
        const Font fresh(u"SimHei", 21.5F);
        const SolidBrush brush(Color(0, 0, 0));
        const CRect ink = InkOf(Drawn(160, 50, [&](Graphics& graphics) {
            graphics.DrawString(kText, -1, &fresh, PointF(5, 5), &brush);
        }));
        tell(ink.Width() > 50);
    }
} drawsAtProcessEnd;
thread_local DrawsAtTheEnd drawsAtThreadEnd;

TEST(TextDrawDeathTest, ObjectsThatOutliveTheThreadAndTheProcessDraw) {
    const auto draw = [] {
        const Font font(u"DejaVu Sans", 12);
        EXPECT_GT(GetTextExtent(kText, -1, &font, RectF(), nullptr).box.Width, 0);
    };
    bool drawn = false;
    std::thread([&] {
        drawsAtThreadEnd.tell = [&drawn](bool ink) { drawn = ink; };
        draw();
    }).join();
    EXPECT_TRUE(drawn);
    EXPECT_EXIT(
        {
            drawsAtProcessEnd.tell = [](bool ink) { _exit(ink ? 7 : 8); };
            draw();
            std::exit(0);
        },
        testing::ExitedWithCode(7), "");
}

// In a process of its own, which gets no more than it has.
TEST(TextDrawDeathTest, LackOfMemoryIsAStatus) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer's own memory is beyond every limit";
#endif
    EXPECT_EXIT(
        {
            const std::u16string text(40'000'000, u'a');
            const Font font(u"DejaVu Sans", 12);
            const SolidBrush brush(Color(0, 0, 0));
            Bitmap bitmap(50, 50);
            Graphics graphics(&bitmap);
            const FontFamily family(u"DejaVu Sans");
            GraphicsPath path;
            const RectF box(0, 0, 50, 50);
            RectF measured;
            const INT length = 40'000'000;
            long pages = 0;
            std::ifstream("/proc/self/statm") >> pages;
            rlimit limit;
            limit.rlim_cur = limit.rlim_max = static_cast<rlim_t>(pages) * 4096 + (rlim_t{32} << 20);
            setrlimit(RLIMIT_AS, &limit);
            const bool told =
                graphics.DrawString(text.data(), length, &font, box, nullptr, &brush) == OutOfMemory &&
                graphics.MeasureString(text.data(), length, &font, box, nullptr, &measured) == OutOfMemory &&
                GetTextExtent(text.data(), length, &font, box, nullptr).ink.Width == 0 &&
                path.AddString(text.data(), length, &family, 0, 12, box, nullptr) == OutOfMemory &&
                Font(text.c_str(), 12).GetLastStatus() == OutOfMemory &&
                !FontFamily(text.c_str()).IsAvailable() &&
                graphics.DrawString(u"a", 1, &font, box, nullptr, &brush) == Ok;
            _exit(told ? 7 : 8);
        },
        testing::ExitedWithCode(7), "");
}

// Masks kept for each glyph, against the outlines of the whole text: the same, but where letters touch.
TEST(TextDraw, WidenedLettersAreTheirOutlines) {
    const FontFamily family(u"DejaVu Sans");
    const Pen pen(Color(0xC0, 20, 200, 60), 1);
    const SolidBrush brush(pen.GetColor());
    const auto glow = [](float factor, const std::function<void(Graphics&)>& draw) {
        return Drawn(140, 50, [&](Graphics& graphics) {
            const Matrix shrink(1 / factor, 0, 0, 1 / factor, 3, -1 / factor);
            graphics.SetSmoothingMode(SmoothingModeAntiAlias);
            graphics.SetTransform(&shrink);
            draw(graphics);
        });
    };
    struct {
        LPCWSTR text;
        int style, most;  // difference of a channel
        double mean;      // over all that is covered
    } const cases[] = {{u"g   A   \u6807   4", FontStyleRegular, 3, 0.1},
                       {u"under", FontStyleUnderline, 0, 0},
                       {u"A label,\n\u6807\u7B7E j\u00C5g", FontStyleRegular, 90, 2}};
    for (const auto& test : cases)
        for (const float factor : {1.0F, 1.7F, 2.0F, 3.0F}) {
            SCOPED_TRACE(factor);
            const RectF box(1, 2, 200, 90);
            const auto widened = [&](Graphics& graphics) {
                EXPECT_EQ(
                    graphics.DrawWidenedString(test.text, -1, &family, test.style, 12, box, nullptr, &pen),
                    Ok);
            };
            const Pixels expected = glow(factor, [&](Graphics& graphics) {
                GraphicsPath outline;
                outline.AddString(test.text, -1, &family, test.style, 12, box, nullptr);
                graphics.DrawPath(&pen, &outline);
                graphics.FillPath(&brush, &outline);
            });
            const Pixels first = glow(factor, widened);
            EXPECT_TRUE(Same(glow(factor, widened), first));
            int worst = 0, covered = 0, sum = 0;
            for (std::size_t i = 0; i < first.words.size(); ++i) {
                const int difference = std::abs(static_cast<int>(first.words[i] >> 24) -
                                                static_cast<int>(expected.words[i] >> 24));
                worst = std::max(worst, difference);
                sum += difference;
                covered += expected.words[i] != 0;
            }
            EXPECT_GT(covered, 50);
            EXPECT_LE(worst, test.most);
            EXPECT_LE(sum, test.mean * covered);
        }
}

}  // namespace
