// Bitmaps: locks in every format, single pixels, clones and revisions.
#include <cstring>
#include <functional>
#include <limits>

#include "graphics/gdiplus_kit.h"
#include "platform/graphics/pixel_rows.h"

namespace Gdiplus {
namespace {

using kit::MakeBitmap;
using kit::Pixels;
using kit::Random;

std::uint32_t Shown(std::uint32_t pixel, Gdiplus::PixelFormat format) {
    if (format == PixelFormat32bppPARGB) return pixel;
    const std::uint32_t straight = platform::Unpremultiply(pixel);
    return format == PixelFormat32bppRGB ? straight | 0xFF000000 : straight;
}

TEST(LockBits, ReadsEveryFormatIntoOwnAndUserMemory) {
    Random random(11);
    const Pixels pixels = random.Scattered(13, 9);
    const auto bitmap = MakeBitmap(pixels);
    for (const Gdiplus::PixelFormat format :
         {PixelFormat32bppARGB, PixelFormat32bppPARGB, PixelFormat32bppRGB})
        for (const int stride : {0, 13 * 4, 20 * 4, -20 * 4}) {
            SCOPED_TRACE(testing::Message() << std::hex << format << " " << std::dec << stride);
            std::vector<std::uint32_t> memory(20 * 9, 0xABCDEF01);
            BitmapData data{};
            UINT flags = ImageLockModeRead;
            const Rect part(2, 1, 10, 7);
            if (stride != 0) {
                flags |= ImageLockModeUserInputBuf;
                data.Scan0 = memory.data() + (stride < 0 ? 20 * 6 : 0);
                data.Stride = stride;
            }
            ASSERT_EQ(Ok, bitmap->LockBits(&part, flags, format, &data));
            EXPECT_EQ(10U, data.Width);
            EXPECT_EQ(7U, data.Height);
            EXPECT_EQ(format, data.PixelFormat);
            for (int y = 0; y < 7; ++y)
                for (int x = 0; x < 10; ++x)
                    ASSERT_EQ(Shown(pixels.At(x + 2, y + 1), format),
                              reinterpret_cast<std::uint32_t*>(static_cast<char*>(data.Scan0) +
                                                               y * data.Stride)[x]);
            EXPECT_EQ(Ok, bitmap->UnlockBits(&data));
            EXPECT_TRUE(stride != 20 * 4 || memory[15] == 0xABCDEF01) << "beyond the rectangle";
            if (format == PixelFormat32bppRGB) continue;
            // Written back, it changes no pixel.
            const std::uint64_t before = bitmap->GetRevision();
            ASSERT_EQ(Ok, bitmap->LockBits(&part, flags | ImageLockModeWrite, format, &data));
            EXPECT_EQ(Ok, bitmap->UnlockBits(&data));
            EXPECT_TRUE(Same(kit::PixelsOf(*bitmap), pixels));
            EXPECT_NE(before, bitmap->GetRevision());
        }
}

TEST(LockBits, WritesTakeEffectAtUnlockAndConvert) {
    Bitmap bitmap(3, 1);
    std::uint32_t memory[3] = {0x80FF0000, 0x00FFFFFF, 0x40FF8000};
    const auto write = [&](Gdiplus::PixelFormat format) {
        BitmapData data{};
        data.Scan0 = memory;
        data.Stride = 12;
        EXPECT_EQ(Ok,
                  bitmap.LockBits(nullptr, ImageLockModeWrite | ImageLockModeUserInputBuf, format, &data));
        const Pixels before = kit::PixelsOf(bitmap);
        EXPECT_EQ(Ok, bitmap.UnlockBits(&data));
        return before;
    };
    EXPECT_EQ(0U, write(PixelFormat32bppARGB).At(0, 0));
    EXPECT_EQ(0x80800000, kit::PixelsOf(bitmap).At(0, 0));
    EXPECT_EQ(0U, kit::PixelsOf(bitmap).At(1, 0));
    write(PixelFormat32bppRGB);
    EXPECT_EQ(0xFFFFFFFF, kit::PixelsOf(bitmap).At(1, 0));
    write(PixelFormat32bppPARGB);
    EXPECT_EQ(0x40404000U, kit::PixelsOf(bitmap).At(2, 0)) << "cut to what alpha allows";
}

TEST(LockBits, RefusesWhatItCannotDo) {
    Bitmap bitmap(8, 8);
    std::uint32_t memory[64] = {};
    const UINT read = ImageLockModeRead;
    const UINT own = read | ImageLockModeUserInputBuf;
    const int high = std::numeric_limits<int>::max();
    const auto lock = [&](Rect rect, UINT flags, Gdiplus::PixelFormat format = PixelFormat32bppARGB,
                          INT stride = 32, void* scan0 = nullptr) {
        BitmapData data{};
        data.Stride = stride;
        data.Scan0 = scan0;
        return bitmap.LockBits(&rect, flags, format, &data);
    };
    for (const Rect& rect : {Rect(0, 0, 9, 1), Rect(-1, 0, 2, 1), Rect(0, 0, 0, 1), Rect(high, 0, 2, 1)})
        EXPECT_EQ(InvalidParameter, lock(rect, read)) << rect.X;
    const Rect all(0, 0, 8, 8);
    EXPECT_EQ(InvalidParameter, lock(all, 0));
    EXPECT_EQ(InvalidParameter, lock(all, read, 0x21808));
    EXPECT_EQ(InvalidParameter, lock(all, own, PixelFormat32bppARGB, 28, memory));
    EXPECT_EQ(InvalidParameter, lock(all, own, PixelFormat32bppARGB, 34, memory));
    EXPECT_EQ(InvalidParameter, lock(all, own, PixelFormat32bppARGB, 32, nullptr));
    EXPECT_EQ(InvalidParameter, bitmap.LockBits(nullptr, read, PixelFormat32bppARGB, nullptr));
    BitmapData data{};
    EXPECT_EQ(WrongState, bitmap.UnlockBits(&data));
    EXPECT_EQ(WrongState, bitmap.GetLastStatus());
    EXPECT_EQ(Ok, bitmap.GetLastStatus()) << "reading resets it";

    ASSERT_EQ(Ok, bitmap.LockBits(nullptr, ImageLockModeWrite, PixelFormat32bppARGB, &data));
    EXPECT_EQ(WrongState, lock(Rect(0, 0, 1, 1), read)) << "open already";
    EXPECT_EQ(Ok, bitmap.RotateFlip(Rotate90FlipNone));
    EXPECT_EQ(Ok, bitmap.UnlockBits(&data));
    Bitmap narrow(8, 2);
    ASSERT_EQ(Ok, narrow.LockBits(nullptr, ImageLockModeWrite, PixelFormat32bppARGB, &data));
    EXPECT_EQ(Ok, narrow.RotateFlip(Rotate90FlipNone));
    EXPECT_EQ(WrongState, narrow.UnlockBits(&data)) << "the rectangle is gone";
}

TEST(Bitmap, PixelsAreStraightColours) {
    Bitmap bitmap(4, 3);
    Color color;
    EXPECT_EQ(Ok, bitmap.SetPixel(1, 2, Color(0x80, 0xFF, 0x40, 0x00)));
    EXPECT_EQ(0x80802000, kit::PixelsOf(bitmap).At(1, 2));
    EXPECT_EQ(Ok, bitmap.GetPixel(1, 2, &color));
    EXPECT_EQ(0x80FF4000, color.GetValue());
    EXPECT_EQ(Ok, bitmap.GetPixel(0, 0, &color));
    EXPECT_EQ(0U, color.GetValue());
    for (const auto& [x, y] : {std::pair(-1, 0), {0, -1}, {4, 0}, {0, 3}}) {
        EXPECT_EQ(InvalidParameter, bitmap.SetPixel(x, y, Color()));
        EXPECT_EQ(InvalidParameter, bitmap.GetPixel(x, y, &color));
    }
    EXPECT_EQ(InvalidParameter, bitmap.GetPixel(0, 0, nullptr));
}

TEST(Bitmap, WithoutAlphaStaysOpaqueWhateverIsWritten) {
    Bitmap bitmap(6, 4, PixelFormat32bppRGB);
    EXPECT_TRUE(Same(kit::PixelsOf(bitmap), Pixels(6, 4, 0xFF000000)));
    const auto expectOpaque = [&](const char* after) {
        for (const std::uint32_t word : kit::PixelsOf(bitmap).words)
            ASSERT_EQ(0xFFU, word >> 24) << after;
    };
    bitmap.SetPixel(0, 0, Color(0, 1, 2, 3));
    expectOpaque("SetPixel");
    EXPECT_EQ(0xFF010203, kit::PixelsOf(bitmap).At(0, 0));
    BitmapData data{};
    bitmap.LockBits(nullptr, ImageLockModeWrite, PixelFormat32bppARGB, &data);
    bitmap.UnlockBits(&data);
    expectOpaque("UnlockBits");
    Graphics graphics(&bitmap);
    graphics.Clear(Color(0, 9, 9, 9));
    expectOpaque("Clear");
    const SolidBrush brush(Color(0x30, 0xFF, 0, 0));
    graphics.FillRectangle(&brush, 1, 1, 3, 2);
    graphics.FillEllipse(&brush, RectF(0.5F, 0.5F, 4, 3));
    const Font font(u"DejaVu Sans", 12);
    graphics.DrawString(u"I", -1, &font, PointF(0, -9), &brush);
    expectOpaque("shapes and texts");
    const HDC context = graphics.GetHDC();
    const kit::Canvas empty(6, 4);
    BitBlt(context, 0, 0, 6, 4, empty.Context(), 0, 0, SRCCOPY);
    graphics.ReleaseHDC(context);
    expectOpaque("BitBlt");
}

TEST(Bitmap, BadSizesAndHandlesGiveAnObjectInError) {
    const HBITMAP made = CreateCompatibleBitmap(nullptr, 3, 2);
    DeleteObject(made);
    const Bitmap cases[] = {Bitmap(0, 4),
                            Bitmap(4, -1),
                            Bitmap(40000, 1),
                            Bitmap(32767, 32767),
                            Bitmap(4, 4, 137),
                            Bitmap(made),
                            Bitmap(HBITMAP()),
                            Bitmap(4, 4, nullptr),
                            Bitmap(static_cast<LPCWSTR>(nullptr)),
                            Bitmap(static_cast<IStream*>(nullptr))};
    for (const Bitmap& bitmap : cases) {
        SCOPED_TRACE(&bitmap - cases);
        EXPECT_EQ(0U, bitmap.GetWidth());
        EXPECT_EQ(0U, bitmap.GetHeight());
        EXPECT_EQ(InvalidParameter, bitmap.GetLastStatus());
        EXPECT_EQ(InvalidParameter, bitmap.GetLastStatus()) << "lasting";
        EXPECT_EQ(nullptr, bitmap.Clone());
        EXPECT_EQ(0U, bitmap.GetFrameDimensionsCount());
        Color color;
        EXPECT_EQ(InvalidParameter, bitmap.GetPixel(0, 0, &color));
    }
}

TEST(Bitmap, CopiesAContextsBitmap) {
    Random random(3);
    const Pixels before = random.Scattered(5, 4);
    const kit::Canvas canvas(before);
    Bitmap copy(canvas.Bitmap());
    EXPECT_TRUE(Same(kit::PixelsOf(copy), before));
    copy.SetPixel(0, 0, Color(1, 2, 3));
    EXPECT_TRUE(Same(canvas.Get(), before));
}

TEST(Bitmap, ClonesShareUntilOneChanges) {
    Random random(4);
    const Pixels pixels = random.Scattered(9, 5);
    const auto original = MakeBitmap(pixels);
    const std::unique_ptr<Bitmap> clone(original->Clone());
    EXPECT_EQ(original->GetRevision(), clone->GetRevision());
    EXPECT_EQ(original->Data()->Pixels(), clone->Data()->Pixels());
    const SolidBrush brush(Color(1, 2, 3));
    Graphics(clone.get()).FillRectangle(&brush, 20, 20, 5, 5);
    EXPECT_EQ(original->GetRevision(), clone->GetRevision()) << "nothing was drawn";
    clone->SetPixel(0, 0, Color(9, 8, 7));
    EXPECT_NE(original->GetRevision(), clone->GetRevision());
    EXPECT_TRUE(Same(kit::PixelsOf(*original), pixels));
    EXPECT_EQ(0xFF090807, kit::PixelsOf(*clone).At(0, 0));
    const platform::Surface* const surface = clone->Data()->Pixels().get();
    clone->SetPixel(1, 0, Color(9, 8, 7));
    EXPECT_EQ(surface, clone->Data()->Pixels().get()) << "copied once";

    Graphics graphics(original.get());
    const HDC context = graphics.GetHDC();
    const std::unique_ptr<Bitmap> second(original->Clone());
    const HBRUSH black = CreateSolidBrush(0);
    const RECT rect{0, 0, 9, 5};
    FillRect(context, &rect, black);
    graphics.ReleaseHDC(context);
    DeleteObject(black);
    EXPECT_TRUE(Same(kit::PixelsOf(*original), Pixels(9, 5, 0xFF000000)));
    EXPECT_TRUE(Same(kit::PixelsOf(*second), pixels)) << "cloned while a context was given out";
}

TEST(Image, RevisionMovesExactlyWhenThePixelsDo) {
    const SolidBrush brush(Color(1, 2, 3));
    const SolidBrush nothing(Color(0, 1, 2, 3));
    const auto other = MakeBitmap(Pixels(2, 2, 0xFF00FF00));
    const auto lock = [](Bitmap& b, UINT flags, bool unlocks) {
        BitmapData data{};
        b.LockBits(nullptr, flags, PixelFormat32bppARGB, &data);
        if (unlocks) b.UnlockBits(&data);
    };
    const struct {
        const char* what;
        bool changes;
        std::function<void(Bitmap&)> act;
    } cases[] = {
        {"GetPixel", false, [](Bitmap& b) { b.GetPixel(0, 0, std::make_unique<Color>().get()); }},
        {"SetPixel", true, [](Bitmap& b) { b.SetPixel(0, 0, Color(1, 2, 3)); }},
        {"SetPixel outside", false, [](Bitmap& b) { b.SetPixel(-1, 0, Color(1, 2, 3)); }},
        {"read lock", false, [&](Bitmap& b) { lock(b, ImageLockModeRead, true); }},
        {"write lock", true, [&](Bitmap& b) { lock(b, ImageLockModeWrite, true); }},
        {"write lock left open", false, [&](Bitmap& b) { lock(b, ImageLockModeWrite, false); }},
        {"turn", true, [](Bitmap& b) { b.RotateFlip(Rotate90FlipNone); }},
        {"no turn", false, [](Bitmap& b) { b.RotateFlip(RotateNoneFlipNone); }},
        {"fill", true, [&](Bitmap& b) { Graphics(&b).FillRectangle(&brush, 0, 0, 1, 1); }},
        {"fill outside", false, [&](Bitmap& b) { Graphics(&b).FillRectangle(&brush, 9, 9, 5, 5); }},
        {"fill with nothing", false, [&](Bitmap& b) { Graphics(&b).FillRectangle(&nothing, 0, 0, 5, 5); }},
        {"ellipse", true, [&](Bitmap& b) { Graphics(&b).FillEllipse(&brush, RectF(0, 0, 4, 4)); }},
        {"picture", true, [&](Bitmap& b) { Graphics(&b).DrawImage(other.get(), 0, 0); }},
        {"picture outside", false, [&](Bitmap& b) { Graphics(&b).DrawImage(other.get(), -2, 0); }},
        {"clear", true, [](Bitmap& b) { Graphics(&b).Clear(Color(1, 2, 3)); }},
        {"being drawn", false, [&](Bitmap& b) { Graphics(other.get()).DrawImage(&b, 0, 0, 20, 20); }},
        {"clone", false, [](Bitmap& b) { const std::unique_ptr<Bitmap> clone(b.Clone()); }},
        {"graphics alone", false, [](Bitmap& b) { Graphics graphics(&b); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Bitmap bitmap(4, 4);
        const std::uint64_t before = bitmap.GetRevision();
        EXPECT_NE(0U, before);
        c.act(bitmap);
        EXPECT_EQ(c.changes, before != bitmap.GetRevision());
    }
}

TEST(Image, TurnsAndMirrorsAllEightWays) {
    // 1 2 3 / 4 5 6
    Pixels pixels(3, 2);
    for (std::uint32_t i = 0; i < 6; ++i)
        pixels.words[i] = 0xFF000001 + i;
    const struct {
        RotateFlipType type;
        int width;
        const char* words;
    } cases[] = {{RotateNoneFlipNone, 3, "123456"}, {Rotate90FlipNone, 2, "415263"},
                 {Rotate180FlipNone, 3, "654321"},  {Rotate270FlipNone, 2, "362514"},
                 {RotateNoneFlipX, 3, "321654"},    {Rotate90FlipX, 2, "142536"},
                 {Rotate180FlipX, 3, "456123"},     {Rotate270FlipX, 2, "635241"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.type);
        const auto bitmap = MakeBitmap(pixels);
        EXPECT_EQ(Ok, bitmap->RotateFlip(c.type));
        Pixels expected(c.width, 6 / c.width);
        for (std::size_t i = 0; i < 6; ++i)
            expected.words[i] = 0xFF000000 | static_cast<std::uint32_t>(c.words[i] - '0');
        EXPECT_TRUE(Same(kit::PixelsOf(*bitmap), expected));
    }
}

}  // namespace
}  // namespace Gdiplus
