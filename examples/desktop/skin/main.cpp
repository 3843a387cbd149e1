// desktop-skin OUTDIR: draws every picture of the desktop into OUTDIR. The list of files also stands in
// CMakeLists.txt, for the build to know them.
#include <array>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <string>

#include "examples/desktop/skin/sizes.h"
#include "examples/gallery/skin/effects.h"
#include "examples/gallery/skin/icons.h"
#include "examples/gallery/skin/landscape.h"
#include "examples/gallery/skin/writers.h"

namespace {

using namespace skin;
using Folder = std::filesystem::path;

constexpr int kFrameCorner = 8;
constexpr int kMiddle = 8;  // of what is stretched

// A still night, calm where icons lie: the moon stands far from the first columns.
Canvas Wallpaper() {
    static constexpr std::array kSky = {Stop{0.00, Rgb(0x060a24)}, Stop{0.40, Rgb(0x0d1c4a)},
                                        Stop{0.78, Rgb(0x1d4270)}, Stop{1.00, Rgb(0x4a8c9c)}};
    return DrawScene({.size = {1920, 1200},
                      .shore = 0.74,
                      .moonX = 0.77,
                      .moonY = 0.19,
                      .moonRadius = 58,
                      .sky = kSky,
                      .haze = Rgb(0x7fc9c4),
                      .farRidge = Rgb(0x2c4a78),
                      .nearRidge = Rgb(0x0a1230),
                      .clouds = 0.15,
                      .aurora = 0.8,
                      .seed = 11});
}

// Corners as they are, edges and centre of `kMiddle` pixels to be stretched.
void WriteNineParts(const Canvas& whole, int corner, const Folder& folder, const std::string& name) {
    const auto start = [corner](int part) { return part == 0 ? 0 : part == 1 ? corner : corner + kMiddle; };
    for (int number = 0; number < 9; ++number) {
        const int column = number % 3;
        const int row = number / 3;
        Canvas part(column == 1 ? kMiddle : corner, row == 1 ? kMiddle : corner);
        part.Draw(whole, -start(column), -start(row));
        WritePng(part, folder / (name + "_" + std::to_string(number) + ".png"));
    }
}

struct FrameColours {
    Colour fill;
    Colour line;
    Colour inner;
};

Canvas Frame(const FrameColours& colours) {
    constexpr int kSide = 2 * kFrameCorner + kMiddle;
    Canvas frame(kSide, kSide);
    const Box box{0, 0, kSide, kSide};
    RoundedBox(box, kFrameCorner)(frame.Cairo());
    Fill(frame.Cairo(), colours.fill);
    RoundedBox(box.Inset(1.5), kFrameCorner - 1.5)(frame.Cairo());
    Stroke(frame.Cairo(), colours.inner, 1);
    RoundedBox(box.Inset(0.5), kFrameCorner - 0.5)(frame.Cairo());
    Stroke(frame.Cairo(), colours.line, 1);
    return frame;
}

void WriteFrames(const Folder& folder) {
    using namespace palette;
    const Colour ice = Rgb(0xa8d8ff);
    const auto write = [&folder](const char* name, const FrameColours& colours) {
        WriteNineParts(Frame(colours), kFrameCorner, folder, name);
    };
    write("hover", {WithAlpha(kWhite, 0.13), WithAlpha(kWhite, 0.34), WithAlpha(kWhite, 0.06)});
    write("press", {WithAlpha(kInk, 0.34), WithAlpha(ice, 0.50), WithAlpha(kInk, 0.25)});
    // A focused entry that is selected gets its frame twice.
    write("focus", {WithAlpha(Rgb(0x4c9cf0), 0.24), WithAlpha(ice, 0.62), WithAlpha(kWhite, 0.10)});
}

Canvas MenuPane() {
    constexpr int kCorner = kMenuShadow + kMenuRadius;
    constexpr int kSide = 2 * kCorner + kMiddle;
    Canvas pane(kSide, kSide);
    const Box box = Box{0, 0, kSide, kSide}.Inset(kMenuShadow);
    const Outline outline = RoundedBox(box, kMenuRadius);
    DropShadow(pane, outline, WithAlpha(palette::kInk, 0.55), {.sigma = 6, .dx = 0, .dy = 4});
    {
        // The glass lets what is behind it through, but not its own shadow.
        const SavedState saved(pane.Cairo());
        cairo_set_operator(pane.Cairo(), CAIRO_OPERATOR_SOURCE);
        outline(pane.Cairo());
        Fill(pane.Cairo(), Rgb(0x171a3d, 0.93));
    }
    RoundedBox(box.Inset(1.5), kMenuRadius - 1.5)(pane.Cairo());
    Stroke(pane.Cairo(), WithAlpha(palette::kWhite, 0.05), 1);
    RoundedBox(box.Inset(0.5), kMenuRadius - 0.5)(pane.Cairo());
    Stroke(pane.Cairo(), WithAlpha(palette::kMist, 0.30), 1);
    return pane;
}

void WriteMenu(const Folder& folder) {
    WriteNineParts(MenuPane(), kMenuShadow + kMenuRadius, folder, "menu");
    Canvas rows(kMenuRowWidth, 3 * kMenuRowHeight);
    const auto row = [&rows](int number, Colour top, Colour bottom) {
        const double y = number * kMenuRowHeight;
        RoundedBox({0, y + 1, kMenuRowWidth, kMenuRowHeight - 2.0}, 6)(rows.Cairo());
        FillVertical(rows.Cairo(), y, y + kMenuRowHeight, {{0, top}, {1, bottom}});
    };
    row(1, Rgb(0x4f86e8, 0.85), Rgb(0x3a67cc, 0.85));
    row(2, Rgb(0x2f58b0, 0.95), Rgb(0x3a67cc, 0.95));
    WritePng(rows, folder / "menu_row.png");
    Canvas divider(kMenuRowWidth, kMenuDividerHeight);
    cairo_rectangle(divider.Cairo(), 8, kMenuDividerHeight / 2, kMenuRowWidth - 16, 1);
    Fill(divider.Cairo(), WithAlpha(palette::kMist, 0.22));
    WritePng(divider, folder / "menu_divider.png");
}

// Both ends of the thumb are one picture, the same way up: it has to be as plain as the middle.
void WriteScrollBar(const Folder& folder) {
    const auto thumb = [&folder](const char* name, int height) {
        Canvas strip(kScrollWidth, 3 * height);
        for (int state = 0; state < 3; ++state) {
            cairo_rectangle(strip.Cairo(), 2, state * height, kScrollWidth - 4, height);
            Fill(strip.Cairo(), WithAlpha(palette::kWhite, 0.45 + 0.2 * state));
        }
        WritePng(strip, folder / name);
    };
    thumb("scroll_cap.png", kScrollCap);
    thumb("scroll_middle.png", kMiddle);
    Canvas track(kScrollWidth, kMiddle);
    cairo_rectangle(track.Cairo(), 0, 0, kScrollWidth, kMiddle);
    Fill(track.Cairo(), WithAlpha(palette::kInk, 0.35));
    WritePng(track, folder / "scroll_track.png");
}

void WriteIcons(const Folder& folder) {
    for (const ListIcon& icon : kListIcons) {
        if (std::strcmp(icon.name, "folder") == 0) WritePng(DrawListIcon(icon), folder / "folder.png");
        if (std::strcmp(icon.name, "document") == 0) WritePng(DrawListIcon(icon), folder / "file.png");
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: desktop-skin OUTDIR\n", stderr);
        return 2;
    }
    try {
        const Folder folder = arguments[1];
        std::filesystem::create_directories(folder);
        WriteJpeg(Wallpaper(), folder / "wallpaper.jpg", 92);
        WriteFrames(folder);
        WriteMenu(folder);
        WriteScrollBar(folder);
        WriteIcons(folder);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "desktop-skin: %s\n", error.what());
        return 1;
    }
    return 0;
}
