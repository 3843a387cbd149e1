// Text drawn through Graphics and paths: the same pixels from every cache state and under every clip.
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <limits>
#include <thread>

#include "graphics/gdiplus_kit.h"
#include "graphics/text_kit.h"
#include "platform/graphics/pixel_rows.h"

namespace {

using namespace Gdiplus;
using kit::Pixels;

const LPCWSTR kText = u"A label, 标签 jÅg";

void ForgetTexts() {
    platform::TextShaper::OfThread().Cache().Clear();
}

std::uint64_t Layouts() {
    return GetDrawingCounters().textLayouts;
}

// Around every pixel that is not `ground`.
CRect InkOf(const Pixels& pixels, std::uint32_t ground = 0) {
    CRect box;
    for (int y = 0; y < pixels.height; ++y)
        for (int x = 0; x < pixels.width; ++x)
            if (pixels.At(x, y) != ground) box.UnionRect(box, CRect(x, y, x + 1, y + 1));
    return box;
}

Pixels Drawn(int width, int height, const std::function<void(Graphics&)>& draw) {
    Bitmap bitmap(width, height);
    Graphics graphics(&bitmap);
    draw(graphics);
    return kit::PixelsOf(bitmap);
}

TEST(TextDraw, BadArgumentsAreRefusedAndDrawNothing) {
    Bitmap bitmap(50, 50);
    Graphics graphics(&bitmap);
    const Font font(u"DejaVu Sans", 12);
    const Font bad(u"DejaVu Sans", 0);
    const SolidBrush brush(Color(0, 0, 0));
    const RectF box(0, 0, 50, 50);
    RectF measured(1, 2, 3, 4);
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();

    EXPECT_EQ(graphics.DrawString(nullptr, -1, &font, box, nullptr, &brush), InvalidParameter);
    EXPECT_EQ(graphics.DrawString(u"a", -2, &font, box, nullptr, &brush), InvalidParameter);
    EXPECT_EQ(graphics.DrawString(u"a", -1, nullptr, box, nullptr, &brush), InvalidParameter);
    EXPECT_EQ(graphics.DrawString(u"a", -1, &bad, box, nullptr, &brush), InvalidParameter);
    EXPECT_EQ(graphics.DrawString(u"a", -1, &font, box, nullptr, nullptr), InvalidParameter);
    EXPECT_EQ(graphics.DrawString(u"a", -1, &font, RectF(kNan, 0, 50, 50), nullptr, &brush),
              InvalidParameter);
    EXPECT_EQ(graphics.DrawString(u"a", -1, &font, RectF(0, 0, kInfinity, 50), nullptr, &brush),
              InvalidParameter);
    EXPECT_EQ(graphics.GetLastStatus(), InvalidParameter);
    EXPECT_EQ(graphics.MeasureString(nullptr, -1, &font, box, nullptr, &measured), InvalidParameter);
    EXPECT_EQ(measured.Width, 0) << "nothing is measured of nothing";
    EXPECT_EQ(graphics.MeasureString(u"a", -1, &bad, box, nullptr, &measured), InvalidParameter);
    EXPECT_EQ(graphics.MeasureString(u"a", -1, &font, box, nullptr, nullptr), InvalidParameter);
    for (const float far : {1e7F, -1e7F, 3e38F, -3e38F}) {
        EXPECT_EQ(graphics.DrawString(u"a", -1, &font, RectF(far, far, 50, 50), nullptr, &brush), Ok);
        EXPECT_EQ(graphics.DrawString(u"a", -1, &font, PointF(0, far), &brush), Ok);
    }
    EXPECT_EQ(graphics.DrawString(u"", -1, &font, box, nullptr, &brush), Ok);
    EXPECT_TRUE(InkOf(kit::PixelsOf(bitmap)).IsRectEmpty());
    EXPECT_EQ(graphics.DrawString(u"a", -1, &font, box, nullptr, &brush), Ok);
    EXPECT_FALSE(InkOf(kit::PixelsOf(bitmap)).IsRectEmpty());

    auto gone = std::make_unique<Bitmap>(5, 5);
    Graphics late(gone.get());
    gone.reset();
    EXPECT_NE(late.DrawString(u"a", -1, &font, box, nullptr, &brush), Ok);
    EXPECT_NE(late.MeasureString(u"a", -1, &font, box, nullptr, &measured), Ok);
}

TEST(TextDraw, LengthsCountUnits) {
    const Font font(u"DejaVu Sans", 12);
    Bitmap bitmap(5, 5);
    const Graphics graphics(&bitmap);
    const auto width = [&](LPCWSTR text, INT length) {
        RectF box;
        EXPECT_EQ(graphics.MeasureString(text, length, &font, RectF(3, 4, 0, 0), nullptr, &box), Ok);
        EXPECT_EQ(box.X, 3);
        EXPECT_EQ(box.Y, 4);
        return box.Width;
    };
    EXPECT_EQ(width(u"abcdef", 3), width(u"abc", -1));
    EXPECT_EQ(width(u"ab\0cd", -1), width(u"ab", -1));
    EXPECT_EQ(width(u"ab\0cd", 5), width(u"abcd", -1));
    EXPECT_EQ(width(u"abc", 0), 0);
    EXPECT_LT(width(u"abc", 2), width(u"abc", 3));
}

// Warm or cold, whole or in stripes, on any ground: the pixels of a text depend on none of it.
TEST(TextDraw, CachesAndClipsChangeNoPixel) {
    kit::Dice dice(7);
    const Pixels ground = kit::Scattered(dice, 160, 60);
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
                const auto cold = kit::MakeBitmap(ground);
                const auto warm = kit::MakeBitmap(ground);
                const auto stripes = kit::MakeBitmap(ground);
                ForgetTexts();
                {
                    Graphics graphics(cold.get());
                    draw(graphics);
                }
                {
                    Graphics graphics(warm.get());
                    const std::uint64_t before = Layouts();
                    draw(graphics);
                    EXPECT_EQ(Layouts(), before);
                }
                ForgetTexts();
                {
                    Graphics graphics(stripes.get());
                    for (int top = 0; top < 60; top += 7)
                        for (int left = 0; left < 160; left += 13) {
                            graphics.SetClip(Rect(left, top, 13, 7));
                            draw(graphics);
                        }
                }
                EXPECT_TRUE(kit::Same(kit::PixelsOf(*warm), kit::PixelsOf(*cold)));
                EXPECT_TRUE(kit::Same(kit::PixelsOf(*stripes), kit::PixelsOf(*cold)));
                EXPECT_EQ(kit::Same(kit::PixelsOf(*cold), ground), (argb >> 24) == 0);
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
    const std::size_t kept = platform::TextShaper::OfThread().Cache().Bytes();
    EXPECT_LT(kept, 8U << 20);
    const Pixels stripes = Drawn(200, 150, [&](Graphics& graphics) {
        for (int top = 0; top < 150; top += 11) {
            graphics.SetClip(Rect(0, top, 200, 11));
            draw(graphics);
        }
    });
    EXPECT_TRUE(kit::Same(stripes, whole));
}

TEST(TextDraw, WarmDrawsLayNothingOut) {
    ForgetTexts();
    Bitmap bitmap(200, 100);
    Graphics graphics(&bitmap);
    const SolidBrush brush(Color(0, 0, 0));
    const SolidBrush other(Color(9, 9, 9));
    const Font font(u"DejaVu Sans", 12);
    const std::unique_ptr<Font> clone(font.Clone());
    const Font alike(u"DejaVu Sans", 16, FontStyleRegular, UnitPixel);
    StringFormat format;
    const RectF box(10, 10, 100, 40);
    RectF measured;
    const auto layouts = [before = Layouts()] { return Layouts() - before; };

    graphics.DrawString(kText, -1, &font, box, &format, &brush);
    EXPECT_EQ(layouts(), 1U);
    graphics.DrawString(kText, -1, &font, RectF(20, 30, 100, 40), &format, &other);
    graphics.DrawString(CString(kText), CString(kText).GetLength(), clone.get(), box, nullptr, &brush);
    graphics.DrawString(kText, -1, &alike, box, nullptr, &brush);
    graphics.MeasureString(kText, -1, &font, box, &format, &measured);
    EXPECT_EQ(layouts(), 1U) << "places, colours, copies and measuring need no other layout";
    format.SetAlignment(StringAlignmentFar);
    graphics.DrawString(kText, -1, &font, box, &format, &brush);
    EXPECT_EQ(layouts(), 2U);
    graphics.DrawString(kText, -1, &font, RectF(10, 10, 101, 40), &format, &brush);
    EXPECT_EQ(layouts(), 3U);
    // What lies beside everything that may be drawn on costs a test of rectangles.
    graphics.DrawString(u"another", -1, &font, RectF(300, 10, 50, 50), nullptr, &brush);
    graphics.SetClip(Rect(0, 0, 10, 10));
    graphics.DrawString(u"another", -1, &font, RectF(50, 50, 50, 50), nullptr, &brush);
    EXPECT_EQ(layouts(), 3U);
}

TEST(TextDraw, TheCacheKeepsToItsLimit) {
    auto& cache = platform::TextShaper::OfThread().Cache();
    const Font font(u"DejaVu Sans", 12);
    const SolidBrush brush(Color(0, 0, 0));
    const auto draw = [&](Graphics& graphics) {
        for (int i = 0; i < 300; ++i) {
            CString text;
            text.Format(u"%d %s", i, kText);
            graphics.DrawString(text, -1, &font, PointF(0, static_cast<float>(i % 5) * 15), &brush);
        }
    };
    ForgetTexts();
    const Pixels unlimited = Drawn(200, 90, draw);
    EXPECT_EQ(cache.Count(), 300U);
    const std::size_t all = cache.Bytes();
    for (const std::size_t limit : {all / 3, std::size_t{5000}, std::size_t{0}}) {
        SetDrawingCacheLimit(limit);
        EXPECT_TRUE(kit::Same(Drawn(200, 90, draw), unlimited));
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

TEST(TextDraw, TheLayoutClipsUnlessTold) {
    const Font font(u"DejaVu Sans", 20, FontStyleRegular, UnitPixel);
    const SolidBrush brush(Color(0, 0, 0));
    const RectF box(60, 20, 40, 12);
    for (const INT flags : {0, static_cast<INT>(StringFormatFlagsNoClip)}) {
        StringFormat format(flags | StringFormatFlagsNoWrap);
        format.SetTrimming(StringTrimmingNone);
        format.SetAlignment(StringAlignmentCenter);
        format.SetLineAlignment(StringAlignmentCenter);
        const CRect ink = InkOf(Drawn(160, 60, [&](Graphics& graphics) {
            graphics.DrawString(u"MMMMMM", -1, &font, box, &format, &brush);
        }));
        const bool inside = ink.left >= 60 && ink.top >= 20 && ink.right <= 100 && ink.bottom <= 32;
        EXPECT_EQ(inside, flags == 0) << ink;
        EXPECT_NEAR(ink.left - 60, 100 - ink.right, 2);
    }
    // Without height only the sides are cut, without width only top and bottom.
    StringFormat noWrap(StringFormatFlagsNoWrap);
    noWrap.SetTrimming(StringTrimmingNone);
    const CRect sides = InkOf(Drawn(120, 60, [&](Graphics& graphics) {
        graphics.DrawString(u"MMMMMM", -1, &font, RectF(20, 20, 40, 0), &noWrap, &brush);
    }));
    EXPECT_LE(sides.right, 60);
    EXPECT_GT(sides.bottom, 35);
    const CRect ends = InkOf(Drawn(120, 60, [&](Graphics& graphics) {
        graphics.DrawString(u"MMMMMM", -1, &font, RectF(20, 20, 0, 8), &noWrap, &brush);
    }));
    EXPECT_GT(ends.right, 100);
    EXPECT_LE(ends.bottom, 28);
}

TEST(TextDraw, ColourAndAlphaAreTheBrushs) {
    const Font font(u"DejaVu Sans", 40, FontStyleBold, UnitPixel);
    for (const ARGB argb : {0xFEFFFFFFU, 0x80204060U, 0x01FFFFFFU}) {
        const Pixels pixels = Drawn(60, 60, [&](Graphics& graphics) {
            const SolidBrush brush{Color(argb)};
            graphics.DrawString(u"I", -1, &font, PointF(5, 5), &brush);
        });
        // The stem of the letter is wholly covered somewhere.
        std::uint32_t strongest = 0;
        for (const std::uint32_t pixel : pixels.words)
            strongest = std::max(strongest, pixel);
        EXPECT_EQ(strongest, platform::Premultiply(argb));
    }
    // A target without alpha stays opaque.
    Bitmap opaque(30, 30, PixelFormat32bppRGB);
    Graphics graphics(&opaque);
    const SolidBrush brush(Color(0x80, 0xFF, 0xFF, 0xFF));
    graphics.DrawString(u"I", -1, &font, PointF(0, -10), &brush);
    const Pixels pixels = kit::PixelsOf(opaque);
    EXPECT_FALSE(InkOf(pixels, 0xFF000000).IsRectEmpty());
    for (const std::uint32_t pixel : pixels.words)
        ASSERT_EQ(pixel >> 24, 255U);
}

TEST(TextDraw, TheWorldMovesScalesAndTurnsText) {
    const Font font(u"DejaVu Sans", 20, FontStyleRegular, UnitPixel);
    const SolidBrush brush(Color(0, 0, 0));
    const auto draw = [&](const Matrix& matrix) {
        return Drawn(200, 200, [&](Graphics& graphics) {
            graphics.SetTransform(&matrix);
            EXPECT_EQ(graphics.DrawString(u"HEH", -1, &font, RectF(10, 10, 90, 30), nullptr, &brush), Ok);
        });
    };
    const Pixels plain = draw(Matrix());
    const CRect ink = InkOf(plain);
    Pixels moved(200, 200);
    for (int y = 0; y < 160; ++y)
        for (int x = 0; x < 170; ++x)
            moved.At(x + 30, y + 40) = plain.At(x, y);
    EXPECT_TRUE(kit::Same(draw(Matrix(1, 0, 0, 1, 30, 40)), moved));
    const auto near = [](const CRect& is, double l, double t, double r, double b) {
        const bool close = std::abs(is.left - l) <= 3 && std::abs(is.top - t) <= 3 &&
                           std::abs(is.right - r) <= 3 && std::abs(is.bottom - b) <= 3;
        return close ? testing::AssertionSuccess() : testing::AssertionFailure() << is;
    };
    EXPECT_TRUE(near(InkOf(draw(Matrix(2, 0, 0, 2, 0, 0))), ink.left * 2, ink.top * 2, ink.right * 2,
                     ink.bottom * 2));
    EXPECT_TRUE(near(InkOf(draw(Matrix(0.5F, 0, 0, 0.5F, 0, 0))), ink.left / 2.0, ink.top / 2.0,
                     ink.right / 2.0, ink.bottom / 2.0));
    // A quarter turn: down the page.
    EXPECT_TRUE(
        near(InkOf(draw(Matrix(0, 1, -1, 0, 100, 0))), 100 - ink.bottom, ink.left, 100 - ink.top, ink.right));
    // The layout's rectangle clips there as well.
    const CRect cut = InkOf(Drawn(200, 200, [&](Graphics& graphics) {
        const Matrix twice(2, 0, 0, 2, 0, 0);
        StringFormat format(StringFormatFlagsNoWrap);
        format.SetTrimming(StringTrimmingNone);
        graphics.SetTransform(&twice);
        graphics.DrawString(u"HEHEHEHE", -1, &font, RectF(10, 10, 30, 10), &format, &brush);
    }));
    EXPECT_TRUE(cut.left >= 20 && cut.top >= 20 && cut.right <= 80 && cut.bottom <= 40) << cut;
}

// Faces that are no longer used go from memory, those of texts that are kept stay.
TEST(TextDraw, ManyFontsLeaveKeptTextsAlone) {
    const Font font(u"宋体", 15);
    const SolidBrush brush(Color(0, 0, 0));
    const auto draw = [&](Graphics& graphics) {
        const Matrix turned(1, 0.25F, -0.25F, 1, 30, 0);  // shown from the layout each time
        graphics.SetTransform(&turned);
        graphics.DrawString(kText, -1, &font, PointF(5, 5), &brush);
    };
    const Pixels before = Drawn(160, 90, draw);
    const std::uint64_t layouts = Layouts();
    for (int i = 0; i < 150; ++i) {
        const Font other(u"DejaVu Sans", 10 + static_cast<float>(i) / 16);
        EXPECT_GT(GetTextExtent(u"x", -1, &other, RectF(), nullptr).box.Width, 0);
    }
    EXPECT_TRUE(kit::Same(Drawn(160, 90, draw), before));
    EXPECT_EQ(Layouts(), layouts + 150);
}

TEST(TextDraw, OutlinesLieWhereTheTextLies) {
    const FontFamily family(u"DejaVu Sans");
    const SolidBrush brush(Color(0, 0, 0));
    StringFormat format;
    format.SetAlignment(StringAlignmentFar);
    format.SetLineAlignment(StringAlignmentCenter);
    for (const LPCWSTR text : {u"Agj", u"two words wrap", u"中文"}) {
        SCOPED_TRACE(ToUtf8(CString(text)));
        const Font font(&family, 30, FontStyleBold, UnitPixel);
        const CRect ink = InkOf(Drawn(200, 150, [&](Graphics& graphics) {
            graphics.DrawString(text, -1, &font, RectF(10, 20, 150, 120), &format, &brush);
        }));
        GraphicsPath path;
        EXPECT_EQ(path.AddString(text, -1, &family, FontStyleBold, 30, RectF(10, 20, 150, 120), &format), Ok);
        RectF bounds;
        path.GetBounds(&bounds);
        EXPECT_NEAR(bounds.X, static_cast<float>(ink.left), 1.5F);
        EXPECT_NEAR(bounds.Y, static_cast<float>(ink.top), 1.5F);
        EXPECT_NEAR(bounds.GetRight(), static_cast<float>(ink.right), 1.5F);
        EXPECT_NEAR(bounds.GetBottom(), static_cast<float>(ink.bottom), 1.5F);
        const CRect filled = InkOf(Drawn(200, 150, [&](Graphics& graphics) {
            graphics.SetSmoothingMode(SmoothingModeAntiAlias);
            graphics.FillPath(&brush, &path);
        }));
        EXPECT_NEAR(filled.left, ink.left, 2);
        EXPECT_NEAR(filled.bottom, ink.bottom, 2);
        GraphicsPath whole;
        EXPECT_EQ(whole.AddString(text, -1, &family, FontStyleBold, 30, Rect(10, 20, 150, 120), &format), Ok);
        RectF wholeBounds;
        whole.GetBounds(&wholeBounds);
        EXPECT_EQ(wholeBounds.X, bounds.X);
        EXPECT_EQ(wholeBounds.Width, bounds.Width);
    }
}

// The size of a text's ink, as items ask for it.
TEST(TextDraw, BoundsOfOutlinesAreTight) {
    const FontFamily family(u"DejaVu Sans");
    const auto bounds = [&](LPCWSTR text, REAL size) {
        GraphicsPath path;
        EXPECT_EQ(path.AddString(text, -1, &family, FontStyleRegular, size, RectF(0, 0, 0, 0), nullptr), Ok);
        RectF box;
        path.GetBounds(&box);
        return box;
    };
    EXPECT_EQ(bounds(u"", 20).Width, 0);
    EXPECT_EQ(bounds(u"", 20).Height, 0);
    EXPECT_EQ(bounds(u"   ", 20).Width, 0);
    const RectF capitals = bounds(u"HH", 100);
    EXPECT_NEAR(capitals.Height, 73, 2) << "the capitals, not the line";
    EXPECT_GT(capitals.Y, 10);
    EXPECT_LT(bounds(u"x", 100).Height, capitals.Height);
    EXPECT_GT(bounds(u"HHH", 100).Width, capitals.Width);
    EXPECT_NEAR(bounds(u"HH", 50).Width * 2, capitals.Width, 4);
    EXPECT_NEAR(bounds(CString(u'H', 200), 12).Width, bounds(CString(u'H', 100), 12).Width * 2, 4)
        << "far from the start as well";

    GraphicsPath path;
    const RectF origin;
    EXPECT_EQ(path.AddString(nullptr, -1, &family, 0, 20, origin, nullptr), InvalidParameter);
    EXPECT_EQ(path.AddString(u"a", -1, nullptr, 0, 20, origin, nullptr), InvalidParameter);
    EXPECT_EQ(path.AddString(u"a", -5, &family, 0, 20, origin, nullptr), InvalidParameter);
    EXPECT_EQ(path.AddString(u"a", -1, &family, 0, -3, origin, nullptr), InvalidParameter);
    EXPECT_EQ(path.AddString(u"a", -1, &family, 0, std::numeric_limits<float>::quiet_NaN(), origin, nullptr),
              InvalidParameter);
    EXPECT_EQ(path.AddString(u"a", -1, &family, 0, 20, RectF(0, 1e8F, 0, 0), nullptr), InvalidParameter)
        << "as far as a rectangle's outline cannot lie either";
    const FontFamily none;
    EXPECT_EQ(path.AddString(u"a", -1, &none, 0, 20, origin, nullptr), FontFamilyNotFound);
    RectF box;
    path.GetBounds(&box);
    EXPECT_EQ(box.Width, 0);
}

// Outlines asked for again come from the same layout, although no font object is held between.
TEST(TextDraw, OutlinesAreLaidOutOnce) {
    const FontFamily family(u"DejaVu Sans");
    ForgetTexts();
    const std::uint64_t before = Layouts();
    for (int i = 0; i < 5; ++i) {
        GraphicsPath path;
        path.AddString(kText, -1, &family, 0, 17, RectF(static_cast<float>(i), 0, 80, 0), nullptr);
    }
    EXPECT_EQ(Layouts(), before + 1);
}

// In a process of its own, which starts under a user's rules against everything that we ask for.
TEST(TextDraw, RenderingRulesOfTheUserChangeNoPixel) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto hash = [] {
        const Font font(u"DejaVu Sans", 9);
        const SolidBrush brush(Color(0, 0, 0));
        const Pixels pixels = Drawn(160, 30, [&](Graphics& graphics) {
            graphics.DrawString(kText, -1, &font, PointF(2, 2), &brush);
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
        const SolidBrush brush(Color(10, 20, 30));
        graphics.DrawString(kText, -1, &font, RectF(3, 3, 90, 50), nullptr, &brush);
    };
    const Pixels expected = Drawn(100, 60, draw);
    std::vector<Pixels> results(4, Pixels(1, 1));
    std::vector<std::thread> threads;
    for (Pixels& result : results)
        threads.emplace_back([&result, &draw] {
            for (int i = 0; i < 20; ++i)
                result = Drawn(100, 60, draw);
        });
    for (std::thread& thread : threads)
        thread.join();
    for (const Pixels& result : results)
        EXPECT_TRUE(kit::Same(result, expected));
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

TEST(TextFont, SizesUnitsAndCopies) {
    const Font points(u"DejaVu Sans", 12);
    const Font pixels(u"DejaVu Sans", 16, FontStyleRegular, UnitPixel);
    const Font world(u"DejaVu Sans", 16, FontStyleRegular, UnitWorld);
    EXPECT_EQ(points.GetHeight(), pixels.GetHeight()) << "points are 4/3 pixels";
    EXPECT_EQ(points.GetRevision(), pixels.GetRevision());
    EXPECT_EQ(world.GetRevision(), pixels.GetRevision());
    EXPECT_NEAR(pixels.GetHeight(), 19, 1);
    EXPECT_EQ(points.GetSize(), 12);
    EXPECT_EQ(points.GetUnit(), UnitPoint);

    const std::unique_ptr<Font> clone(points.Clone());
    EXPECT_EQ(clone->GetRevision(), points.GetRevision());
    EXPECT_EQ(clone->GetSize(), 12);
    EXPECT_EQ(clone->GetUnit(), UnitPoint);
    EXPECT_EQ(clone->GetHeight(), points.GetHeight());
    const Font bold(u"DejaVu Sans", 12, FontStyleBold);
    EXPECT_NE(bold.GetRevision(), points.GetRevision());
    EXPECT_EQ(bold.GetStyle(), FontStyleBold);
    EXPECT_NE(Font(u"DejaVu Sans", 12.5F).GetRevision(), points.GetRevision());

    FontFamily family;
    EXPECT_FALSE(family.IsAvailable());
    EXPECT_EQ(Font(u"宋体", 9).GetFamily(&family), Ok);
    EXPECT_EQ(family.GetFamilyName(), u"宋体");
    EXPECT_TRUE(family.IsAvailable());
    EXPECT_EQ(points.GetFamily(nullptr), InvalidParameter);
    EXPECT_EQ(Font(LPCWSTR{}, 9).GetLastStatus(), Ok) << "some face always shows";
    EXPECT_EQ(Font(LPCWSTR{}, 9).GetFamily(&family), Ok);
    EXPECT_TRUE(family.IsAvailable());
}

TEST(TextFont, BadFontsSaySoAndDrawNothing) {
    const FontFamily none;
    const FontFamily family(u"DejaVu Sans");
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    for (const float size : {0.0F, -1.0F, kNan, std::numeric_limits<float>::infinity(), 1e9F}) {
        const Font font(u"DejaVu Sans", size);
        EXPECT_EQ(font.GetLastStatus(), InvalidParameter) << size;
        EXPECT_EQ(font.GetHeight(), 0);
        EXPECT_EQ(font.Data(), nullptr);
        const std::unique_ptr<Font> clone(font.Clone());
        EXPECT_EQ(clone->GetLastStatus(), InvalidParameter);
        FontFamily found;
        EXPECT_EQ(font.GetFamily(&found), InvalidParameter);
    }
    EXPECT_EQ(Font(&none, 9).GetLastStatus(), FontFamilyNotFound);
    EXPECT_EQ(Font(static_cast<const FontFamily*>(nullptr), 9).GetLastStatus(), InvalidParameter);
    EXPECT_EQ(Font(&family, 9, 0, static_cast<Unit>(1)).GetLastStatus(), InvalidParameter);
    EXPECT_EQ(Font(&family, 9).GetLastStatus(), Ok);
}

// Marks kept for each glyph, against the outlines of the whole text: the same, but where letters touch.
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

TEST(TextFormat, KeepsWhatItIsTold) {
    StringFormat format(StringFormatFlagsNoWrap);
    EXPECT_EQ(format.GetTrimming(), StringTrimmingCharacter);
    EXPECT_EQ(format.SetAlignment(StringAlignmentFar), Ok);
    EXPECT_EQ(format.SetLineAlignment(StringAlignmentCenter), Ok);
    EXPECT_EQ(format.SetTrimming(StringTrimmingEllipsisWord), Ok);
    EXPECT_EQ(format.SetAlignment(static_cast<StringAlignment>(3)), InvalidParameter);
    EXPECT_EQ(format.SetLineAlignment(static_cast<StringAlignment>(3)), InvalidParameter);
    EXPECT_EQ(format.SetTrimming(static_cast<StringTrimming>(7)), InvalidParameter);
    const std::unique_ptr<StringFormat> clone(format.Clone());
    EXPECT_EQ(format.SetFormatFlags(0), Ok);
    EXPECT_EQ(clone->GetFormatFlags(), StringFormatFlagsNoWrap);
    EXPECT_EQ(clone->GetAlignment(), StringAlignmentFar);
    EXPECT_EQ(clone->GetLineAlignment(), StringAlignmentCenter);
    EXPECT_EQ(clone->GetTrimming(), StringTrimmingEllipsisWord);
    const StringFormat plain(static_cast<const StringFormat*>(nullptr));
    EXPECT_EQ(plain.GetFormatFlags(), 0);
}

}  // namespace
