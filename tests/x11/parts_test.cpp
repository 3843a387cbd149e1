// The parts that need no server: shapes from pixels, plans, conversions, key codes, clocks.
#include <gtest/gtest.h>

#include <vector>

#include <platform/window.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "platform/window/x11/pixel_conversion.h"
#include "platform/window/x11/row_spans.h"
#include "platform/window/x11/server_clock.h"
#include "platform/window/x11/virtual_keys.h"

namespace {

using namespace platform;
using namespace platform::x11;
using Kind = SpanRule::Kind;

Region ToRegion(const std::vector<xcb_rectangle_t>& rectangles) {
    std::vector<RECT> rects;
    rects.reserve(rectangles.size());
    for (const xcb_rectangle_t& r : rectangles)
        rects.push_back({r.x, r.y, r.x + r.width, r.y + r.height});
    return Region(rects);
}

class Noise {
  public:
    std::uint32_t Next() { return state_ = state_ * 1664525 + 1013904223; }

  private:
    std::uint32_t state_ = 7;
};

std::shared_ptr<Surface> NoiseSurface(int width, int height, Noise& noise) {
    auto surface = Surface::Create(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            surface->Row(y)[x] = noise.Next();
    return surface;
}

bool Belongs(const SpanRule& rule, std::uint32_t pixel) {
    if (rule.kind == Kind::AlphaAtLeast) return (pixel >> 24) >= rule.threshold;
    return rule.kind == Kind::NotKey ? (pixel & 0xFFFFFF) != rule.key : rule.kind == Kind::Everything;
}

TEST(RowSpans, HoldExactlyThePixelsOfTheirRule) {
    Noise noise;
    auto surface = NoiseSurface(61, 43, noise);
    std::fill(surface->Row(10), surface->Row(10) + 61, 0x00123456);
    std::fill(surface->Row(11), surface->Row(11) + 61, 0xFF123456);
    for (const SpanRule rule : {SpanRule{Kind::AlphaAtLeast, 1, 0}, SpanRule{Kind::AlphaAtLeast, 128, 0},
                                SpanRule{Kind::AlphaAtLeast, 255, 0}, SpanRule{Kind::NotKey, 0, 0x123456},
                                SpanRule{Kind::Everything, 0, 0}, SpanRule{Kind::Nothing, 0, 0}}) {
        RowSpans spans;
        spans.Scan(*surface, rule);
        const auto rectangles = spans.Rectangles();
        EXPECT_EQ(rectangles.size(), spans.Count());
        const Region region = ToRegion(rectangles);
        for (int y = 0; y < 43; ++y)
            for (int x = 0; x < 61; ++x)
                ASSERT_EQ(region.Contains(x, y), Belongs(rule, surface->Row(y)[x])) << x << ", " << y;
        for (std::size_t i = 1; i < rectangles.size(); ++i) {
            const auto &a = rectangles[i - 1], &b = rectangles[i];
            ASSERT_TRUE(a.y < b.y || (a.y == b.y && a.x + a.width < b.x)) << "sorted, never touching";
        }
        // A region and back.
        RowSpans taken;
        taken.Take(region);
        EXPECT_TRUE(ToRegion(taken.Rectangles()) == region);
    }
}

TEST(RowSpans, RescanningTheDamageEqualsScanningAll) {
    Noise noise;
    const SpanRule rule{Kind::AlphaAtLeast, 40, 0};
    auto surface = NoiseSurface(50, 40, noise);
    RowSpans kept;
    kept.Scan(*surface, rule);
    EXPECT_FALSE(kept.Rescan(*surface, rule, Region(CRect(0, 0, 50, 40))));
    for (int round = 0; round < 200; ++round) {
        Region damage;
        for (int part = 0; part < 3; ++part) {
            const int x = static_cast<int>(noise.Next() >> 8) % 60 - 10;
            const int y = static_cast<int>(noise.Next() >> 8) % 50 - 10;
            CRect rect;
            rect.IntersectRect(CRect(x, y, x + 9, y + 7), CRect(0, 0, 50, 40));
            damage.Add(CRect(x, y, x + 9, y + 7));
            for (int row = rect.top; row < rect.bottom; ++row)
                for (int column = rect.left; column < rect.right; ++column)
                    surface->Row(row)[column] = noise.Next();
        }
        kept.Rescan(*surface, rule, damage);
        RowSpans fresh;
        fresh.Scan(*surface, rule);
        for (int y = 0; y < 40; ++y)
            ASSERT_EQ(kept.Row(y), fresh.Row(y)) << y;
    }
}

TEST(RowSpans, ComeInAsManyRectanglesAsAllowed) {
    Noise noise;
    auto surface = NoiseSurface(401, 301, noise);
    RowSpans spans;
    spans.Scan(*surface, {Kind::AlphaAtLeast, 128, 0});
    const Region exact = ToRegion(spans.Rectangles());
    for (const std::size_t limit : {1000000U, 20000U, 4000U, 500U, 60U, 1U}) {
        SCOPED_TRACE(limit);
        const auto rectangles = LimitedRectangles(spans, limit);
        EXPECT_LE(rectangles.size(), limit);
        // Coarser only ever means larger, and never beyond the surface.
        Region missing = exact;
        const Region coarse = ToRegion(rectangles);
        missing.Subtract(coarse);
        EXPECT_TRUE(missing.IsEmpty());
        Region beyond = coarse;
        beyond.Subtract(Region(CRect(0, 0, 401, 301)));
        EXPECT_TRUE(beyond.IsEmpty());
    }
}

TEST(PixelConversion, TurnsSurfacesIntoWhatWindowsShow) {
    struct Case {
        Conversion conversion;
        std::uint32_t from, to;
        std::uint8_t opacity = 255;
    };
    const Case cases[] = {
        {Conversion::None, 0x12345678, 0x12345678},
        {Conversion::ForceOpaque, 0x12345678, 0xFF345678},
        {Conversion::KeyToTransparent, 0x00FF00FF, 0x00000000},
        {Conversion::KeyToTransparent, 0x80FF00FF, 0x00000000},
        {Conversion::KeyToTransparent, 0x00FF00FE, 0xFFFF00FE},
        {Conversion::Unpremultiply, 0x00000000, 0xFF000000},
        {Conversion::Unpremultiply, 0xFF102030, 0xFF102030},
        {Conversion::Unpremultiply, 0x80800040, 0xFFFF0080},
        {Conversion::Unpremultiply, 0x01010001, 0xFFFF00FF},
        {Conversion::Unpremultiply, 0x10FF0808, 0xFFFF8080},  // no premultiplied pixel
        {Conversion::None, 0xFF80FF01, 0x80408001, 128},
        {Conversion::ForceOpaque, 0x00FF0200, 0x64640100, 100},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(c.conversion) << std::hex << " " << c.from);
        std::uint32_t to[3] = {1, 1, 1};
        const std::uint32_t from[3] = {c.from, c.from, c.from};
        ConvertPixels({{}, {}, c.conversion, 0xFF00FF, c.opacity}, from, to, 2);
        EXPECT_EQ(to[0], c.to);
        EXPECT_EQ(to[1], c.to);
        EXPECT_EQ(to[2], 1U);
    }
    // Every opaque-blended colour comes back within rounding.
    for (std::uint32_t alpha = 1; alpha < 256; ++alpha)
        for (std::uint32_t colour = 0; colour < 256; ++colour) {
            const std::uint32_t stored = (colour * alpha + 127) / 255;
            const std::uint32_t from = alpha << 24 | stored;
            std::uint32_t to = 0;
            ConvertPixels({{}, {}, Conversion::Unpremultiply}, &from, &to, 1);
            const double exact = stored * 255.0 / alpha;
            ASSERT_NEAR(to & 0xFF, exact, 0.6) << alpha << " " << colour;
        }
}

TEST(VirtualKeys, CoverTheKeysOfAKeyboard) {
    const std::pair<xkb_keysym_t, UINT> cases[] = {
        {XKB_KEY_a, 'A'},
        {XKB_KEY_Z, 'Z'},
        {XKB_KEY_0, '0'},
        {XKB_KEY_9, '9'},
        {XKB_KEY_F1, VK_F1},
        {XKB_KEY_F24, VK_F1 + 23},
        {XKB_KEY_KP_0, 0x60},
        {XKB_KEY_KP_9, 0x69},
        {XKB_KEY_Insert, VK_INSERT},
        {XKB_KEY_KP_Insert, VK_INSERT},
        {XKB_KEY_Shift_L, VK_SHIFT},
        {XKB_KEY_Shift_R, VK_SHIFT},
        {XKB_KEY_Control_L, VK_CONTROL},
        {XKB_KEY_ISO_Level3_Shift, VK_MENU},
        {XKB_KEY_Super_L, VK_LWIN},
        {XKB_KEY_Super_R, VK_RWIN},
        {XKB_KEY_Return, VK_RETURN},
        {XKB_KEY_ISO_Left_Tab, VK_TAB},
        {XKB_KEY_Home, VK_HOME},
        {XKB_KEY_End, VK_END},
        {XKB_KEY_Left, VK_LEFT},
        {XKB_KEY_Up, VK_UP},
        {XKB_KEY_Right, VK_RIGHT},
        {XKB_KEY_Down, VK_DOWN},
        {XKB_KEY_Page_Up, VK_PRIOR},
        {XKB_KEY_Page_Down, VK_NEXT},
        {XKB_KEY_Caps_Lock, VK_CAPITAL},
        {XKB_KEY_Cyrillic_a, 0},
        {XKB_KEY_exclam, 0},
        {XKB_KEY_NoSymbol, 0},
    };
    for (const auto& [symbol, code] : cases)
        EXPECT_EQ(VirtualKeyOf(symbol), code) << std::hex << symbol;
}

TEST(ServerClock, FollowsTheServerAcrossItsWrap) {
    ServerClock clock;
    EXPECT_EQ(clock.Latest(), 0U);
    EXPECT_EQ(clock.ToLocal(XCB_CURRENT_TIME, 1234), 1234U);
    // The first event took 30 ms to arrive, the second 5.
    EXPECT_EQ(clock.ToLocal(0xFFFFFF00U, 100030), 100030U);
    EXPECT_EQ(clock.ToLocal(0xFFFFFF10U, 100021), 100021U);
    EXPECT_EQ(clock.ToLocal(0xFFFFFFFFU, 100300), 100260U);
    EXPECT_EQ(clock.ToLocal(0x00000010U, 100310), 100277U);
    EXPECT_EQ(clock.Latest(), 0x10U);
    // Out of order, from another source.
    EXPECT_EQ(clock.ToLocal(0xFFFFFFF0U, 100310), 100245U);
    EXPECT_EQ(clock.Latest(), 0x10U);
}

}  // namespace
