// Texts of every kind in boxes of every kind: drawn, measured and turned into outlines, all three of which
// have to agree, whatever the clip and whatever is still known from before.
#include <QKUILib.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace {

using namespace Gdiplus;

constexpr INT kWidth = 96;
constexpr INT kHeight = 64;
constexpr std::size_t kMostUnits = 30'000;

void Expect(bool right) {
    if (!right) __builtin_trap();
}

class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

    std::uint8_t Byte() {
        if (left_ == 0) return 0;
        --left_;
        return *data_++;
    }
    float Number() {
        constexpr float kOdd[] = {0,    0.01F, 0.25F, 0.5F, 1,
                                  4095, 1e5F,  1e6F,  1e9F, std::numeric_limits<float>::max(),
                                  -1,   -1e9F, -1e6F, -0.F, std::numeric_limits<float>::infinity(),
                                  NAN};
        const std::uint8_t kind = Byte();
        if (kind >= 0xF0) return kOdd[kind - 0xF0];
        const auto whole = static_cast<float>(static_cast<std::int8_t>(Byte()));
        return kind < 0x80 ? std::abs(whole) : whole + static_cast<float>(kind - 0x80) / 64;
    }
    // What is left, as UTF-16 over and over.
    std::u16string Text(unsigned times) {
        std::u16string once(left_ / 2, u'\0');
        if (!once.empty()) std::memcpy(once.data(), data_, once.size() * 2);
        std::u16string text;
        for (unsigned i = 0; i < times && text.size() + once.size() <= kMostUnits; ++i)
            text += once;
        return text;
    }

  private:
    const std::uint8_t* data_;
    std::size_t left_;
};

struct Case {
    explicit Case(Input& input)
        : family(Family(input)),
          style(input.Byte()),
          font{family, input.Number(), style, Units(input)},
          format(Flags(input)),
          layout{input.Number(), input.Number(), input.Number(), input.Number()} {
        const std::uint8_t places = input.Byte();
        format.SetAlignment(static_cast<StringAlignment>(places & 3));
        format.SetLineAlignment(static_cast<StringAlignment>((places >> 2) & 3));
        format.SetTrimming(static_cast<StringTrimming>((places >> 4) & 7));
        const std::uint8_t world = input.Byte();
        turned = (world & 0xC0) == 0xC0;
        if (turned) {
            const auto part = [&input] {
                return static_cast<float>(static_cast<std::int8_t>(input.Byte())) / 32;
            };
            matrix = Matrix(part(), part(), part(), part(), part() * 32, part() * 32);
        }
        colour = Color((world & 1) != 0 ? 0x80402010U : 0xFE000000U);
        constexpr unsigned kTimes[] = {1, 1, 1, 1, 1, 2, 50, 3000};
        text = input.Text(kTimes[(world >> 1) & 7]);
    }

    static CString Family(Input& input) {
        constexpr LPCWSTR kFamilies[] = {u"",
                                         u"宋体",
                                         u"DejaVu Sans",
                                         u"DejaVu Serif",
                                         u"Noto Serif CJK SC",
                                         u"monospace",
                                         u"no such face, or two",
                                         u"MS Gothic"};
        const std::uint8_t choice = input.Byte();
        if (choice < 0xF0) return kFamilies[choice % 8];
        const WCHAR any[] = {static_cast<WCHAR>(input.Byte() * 256 + input.Byte()), u'a', 0};
        return any;
    }
    static Unit Units(Input& input) {
        constexpr int kUnits[] = {UnitPixel, UnitPoint, UnitWorld, 1};
        return static_cast<Unit>(kUnits[input.Byte() & 3]);
    }
    static INT Flags(Input& input) {
        const std::uint8_t bits = input.Byte();
        return (bits & 1) * StringFormatFlagsDirectionRightToLeft |
               (bits >> 1 & 1) * StringFormatFlagsNoWrap | (bits >> 2 & 1) * StringFormatFlagsLineLimit |
               (bits >> 3 & 1) * StringFormatFlagsNoClip;
    }

    INT Length() const { return static_cast<INT>(text.size()); }
    Status Draw(Graphics& graphics) const {
        const SolidBrush brush(colour);
        if (turned) graphics.SetTransform(&matrix);
        return graphics.DrawString(text.data(), Length(), &font, layout, &format, &brush);
    }

    CString family;
    INT style;
    Font font;
    StringFormat format;
    RectF layout;
    bool turned = false;
    Matrix matrix;
    Color colour;
    std::u16string text;
};

using Pixels = std::vector<ARGB>;

Pixels PixelsOf(Bitmap& bitmap) {
    BitmapData data{};
    Expect(bitmap.LockBits(nullptr, ImageLockModeRead, PixelFormat32bppPARGB, &data) == Ok);
    Pixels pixels;
    for (INT y = 0; y < kHeight; ++y) {
        const auto* row =
            reinterpret_cast<const ARGB*>(static_cast<const char*>(data.Scan0) + y * data.Stride);
        pixels.insert(pixels.end(), row, row + kWidth);
    }
    bitmap.UnlockBits(&data);
    return pixels;
}

// On an empty bitmap, once for each clip.
Pixels Drawn(const Case& job, std::initializer_list<Rect> clips, Status expected) {
    Bitmap bitmap(kWidth, kHeight);
    {
        Graphics graphics(&bitmap);
        for (const Rect& clip : clips) {
            graphics.ResetTransform();
            graphics.SetClip(clip);
            Expect(job.Draw(graphics) == expected);
        }
    }
    return PixelsOf(bitmap);
}

void ForgetTexts() {
    SetDrawingCacheLimit(0);
    Bitmap bitmap(1, 1);
    const Font font(u"", 12);
    RectF box;
    Graphics(&bitmap).MeasureString(u"x", 1, &font, RectF(), nullptr, &box);
    SetDrawingCacheLimit(std::size_t{64} << 20);
}

// True where every pixel outside `allowed` is untouched.
bool KeepsInside(const Pixels& pixels, const RectF& allowed) {
    for (INT y = 0; y < kHeight; ++y)
        for (INT x = 0; x < kWidth; ++x) {
            const auto left = static_cast<float>(x);
            const auto top = static_cast<float>(y);
            const bool inside = left + 1 > allowed.X && left < allowed.GetRight() && top + 1 > allowed.Y &&
                                top < allowed.GetBottom();
            if (!inside && pixels[static_cast<std::size_t>(y * kWidth + x)] != 0) return false;
        }
    return true;
}

void CheckDrawing(const Case& job, Status expected) {
    const Rect whole(0, 0, kWidth, kHeight);
    ForgetTexts();
    const Pixels cold = Drawn(job, {whole}, expected);
    const std::uint64_t layouts = GetDrawingCounters().textLayouts;
    Expect(Drawn(job, {whole}, expected) == cold);
    // Lines without number may be more than the cache may hold.
    if (job.text.size() < 4096) Expect(GetDrawingCounters().textLayouts == layouts);
    Expect(Drawn(job, {Rect(0, 0, 41, kHeight), Rect(41, 0, kWidth - 41, kHeight)}, expected) == cold);
    ForgetTexts();
    Expect(Drawn(job, {Rect(0, 0, kWidth, 13), Rect(0, 13, kWidth, kHeight - 13)}, expected) == cold);
    if (expected != Ok) Expect(KeepsInside(cold, RectF()));
    if (job.turned || expected != Ok) return;

    const TextExtent extent =
        GetTextExtent(job.text.data(), job.Length(), &job.font, job.layout, &job.format);
    Expect(
        KeepsInside(cold, RectF(static_cast<REAL>(extent.ink.X), static_cast<REAL>(extent.ink.Y),
                                static_cast<REAL>(extent.ink.Width), static_cast<REAL>(extent.ink.Height))));
    if ((job.format.GetFormatFlags() & StringFormatFlagsNoClip) != 0) return;
    constexpr float kAnywhere = 1e6F;
    RectF allowed = job.layout;
    if (!(allowed.Width > 0)) allowed = RectF(-kAnywhere, allowed.Y, 2 * kAnywhere, allowed.Height);
    if (!(allowed.Height > 0)) allowed = RectF(allowed.X, -kAnywhere, allowed.Width, 2 * kAnywhere);
    Expect(KeepsInside(cold, allowed));
}

// `inner` within `outer`, as exactly as the numbers at hand can say.
bool Holds(float outer, float outerSize, float inner, float innerSize) {
    const double slack = (std::abs(double{outer}) + outerSize) * 1e-6 + 1e-3;
    return double{inner} >= double{outer} - slack &&
           double{inner} + innerSize <= double{outer} + outerSize + slack;
}

void CheckMeasuring(const Case& job, Status expected) {
    Bitmap bitmap(1, 1);
    const Graphics graphics(&bitmap);
    RectF box(1, 2, 3, 4);
    const INT length = job.Length();
    Expect(graphics.MeasureString(job.text.data(), length, &job.font, job.layout, &job.format, &box) ==
           expected);
    const TextExtent extent = GetTextExtent(job.text.data(), length, &job.font, job.layout, &job.format);
    if (expected != Ok) {
        Expect(box.Width == 0 && box.Height == 0 && extent.ink.Width == 0 && extent.ink.Height == 0);
        return;
    }
    Expect(std::isfinite(box.X) && std::isfinite(box.Y) && box.Width >= 0 && box.Height >= 0 &&
           box.Width < 1e7F && box.Height < 1e7F);
    Expect(extent.box.X == box.X && extent.box.Y == box.Y && extent.box.Width == box.Width &&
           extent.box.Height == box.Height);
    if ((job.format.GetFormatFlags() & StringFormatFlagsNoClip) != 0) return;
    const RectF& layout = job.layout;
    if (layout.Width > 0) Expect(Holds(layout.X, layout.Width, box.X, box.Width));
    if (layout.Height > 0) Expect(Holds(layout.Y, layout.Height, box.Y, box.Height));
}

// The outlines of a text that nothing cuts lie where it is drawn.
void CheckOutline(const Case& job, Status expected) {
    const FontFamily family(job.family);
    if (!family.IsAvailable()) return;
    const REAL size = job.font.GetUnit() == UnitPoint ? job.font.GetSize() * 4 / 3 : job.font.GetSize();
    const INT length = job.Length();
    GraphicsPath path;
    const Status status =
        path.AddString(job.text.data(), length, &family, job.style, size, job.layout, &job.format);
    RectF bounds;
    Expect(path.GetBounds(&bounds) == Ok);
    Expect(std::isfinite(bounds.X) && std::isfinite(bounds.Y) && bounds.Width >= 0 && bounds.Height >= 0);
    if (status != Ok) Expect(bounds.Width == 0 && bounds.Height == 0);
    // The frame that stands for a missing glyph shrinks to a point without ink below two pixels.
    if (expected != Ok || status != Ok || bounds.Width == 0 || size < 2) return;
    if ((job.format.GetFormatFlags() & StringFormatFlagsNoClip) == 0) return;
    const Rect ink = GetTextExtent(job.text.data(), length, &job.font, job.layout, &job.format).ink;
    if (ink.Width == 0) return;
    const REAL slack = 2 + std::max(std::abs(bounds.X), std::abs(bounds.Y)) * 1e-5F;
    Expect(bounds.X >= static_cast<REAL>(ink.X) - slack && bounds.Y >= static_cast<REAL>(ink.Y) - slack &&
           bounds.GetRight() <= static_cast<REAL>(ink.X + ink.Width) + slack &&
           bounds.GetBottom() <= static_cast<REAL>(ink.Y + ink.Height) + slack);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const Case job(input);
    const RectF& layout = job.layout;
    const bool possible = job.font.GetLastStatus() == Ok && std::isfinite(layout.X) &&
                          std::isfinite(layout.Y) && std::isfinite(layout.Width) &&
                          std::isfinite(layout.Height);
    const Status expected = possible ? Ok : InvalidParameter;
    CheckDrawing(job, expected);
    CheckMeasuring(job, expected);
    CheckOutline(job, expected);
    // Or the texts kept would look like leaks, and be looked into for longer than the tests take.
    ForgetTexts();
    return 0;
}
