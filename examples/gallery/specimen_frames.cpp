// Frames of nine images, and one alpha for a whole bitmap.
#include <array>
#include <string>

#include "examples/gallery/skin_files.h"
#include "examples/gallery/specimen.h"

namespace gallery {
namespace {

using Pieces = std::array<std::unique_ptr<Gdiplus::Image>, 9>;

// The pictures of one frame, by the middle of their names.
std::shared_ptr<Pieces> Load(const char* look) {
    auto pieces = std::make_shared<Pieces>();
    for (std::size_t i = 0; i < pieces->size(); ++i) {
        const std::string name = std::string("frame_") + look + "_" + std::to_string(i) + ".png";
        (*pieces)[i] = std::make_unique<Gdiplus::Image>(SkinFile(name.c_str()));
    }
    return pieces;
}

void DrawFrame(DemoWindow& dialog, Ink& ink, const Pieces& pieces, const Gdiplus::RectF& place) {
    std::array<Gdiplus::Image*, 9> images;
    for (std::size_t i = 0; i < images.size(); ++i)
        images[i] = pieces[i].get();
    dialog.DrawStateImage(&ink.Graphics(), images.data(), place);
}

Specimen Frame(const char* name, const char* look, CSize size, std::function<void(Pieces&)> change = {}) {
    const auto show = [look, size, change](SpecimenWindow& window) {
        const auto pieces = Load(look);
        if (change) change(*pieces);
        DemoWindow& dialog = window.Dialog();
        window.Draw([pieces, size, &dialog](Ink& ink) {
            DrawFrame(dialog, ink, *pieces,
                      {14, 14, static_cast<float>(size.cx), static_cast<float>(size.cy)});
        });
    };
    return {name, SpecimenRoom({size.cx, size.cy}), show};
}

void KeepCorners(Pieces& pieces) {
    for (const std::size_t i : {1U, 3U, 4U, 5U, 7U})
        pieces[i].reset();
}

// The right edge, as it is, at twice its width: the centre starts that much further from the left.
void WidenRightEdge(Pieces& pieces) {
    const auto width = static_cast<int>(pieces[5]->GetWidth());
    const auto height = static_cast<int>(pieces[5]->GetHeight());
    auto wide = std::make_unique<Gdiplus::Bitmap>(2 * width, height);
    Gdiplus::Graphics graphics(wide.get());
    graphics.DrawImage(
        pieces[5].get(),
        Gdiplus::RectF(static_cast<float>(width), 0, static_cast<float>(width), static_cast<float>(height)),
        0, 0, static_cast<float>(width), static_cast<float>(height), Gdiplus::UnitPixel);
    pieces[5] = std::move(wide);
}

// The nine pictures put together, and cut apart again by margins.
void OnePicture(SpecimenWindow& window) {
    const auto pieces = Load("hover");
    const auto width = [&](std::size_t i) { return static_cast<int>((*pieces)[i]->GetWidth()); };
    const auto height = [&](std::size_t i) { return static_cast<int>((*pieces)[i]->GetHeight()); };
    const std::array<int, 4> columns = {0, width(0), width(0) + width(1), width(0) + width(1) + width(2)};
    const std::array<int, 4> rows = {0, height(0), height(0) + height(3), height(0) + height(3) + height(6)};
    const auto picture = std::make_shared<Gdiplus::Bitmap>(columns[3], rows[3]);
    Gdiplus::Graphics graphics(picture.get());
    for (std::size_t i = 0; i < pieces->size(); ++i)
        graphics.DrawImage((*pieces)[i].get(), columns[i % 3], rows[i / 3]);
    const RECT margins = {columns[1], rows[1], width(2), height(6)};
    window.Draw([picture, margins](Ink& ink) {
        ink.Graphics().DrawImage(picture.get(), 14, 14);
        QKNineParts parts;
        parts.SetMargins(margins);
        parts.Draw(ink.Graphics(), *picture, {70, 14, 150, 80});
    });
}

constexpr skin::PictureSize kAlphaSize = {160, 60};

Specimen OneAlpha(const char* name, int alpha) {
    const auto show = [alpha](SpecimenWindow& window) {
        // Two alphas on transparent black.
        const auto bitmap = std::make_shared<Gdiplus::Bitmap>(kAlphaSize.width, kAlphaSize.height);
        Gdiplus::Graphics graphics(bitmap.get());
        const Gdiplus::SolidBrush sun(Tint(skin::palette::kAmber));
        const Gdiplus::SolidBrush moon(Tint(skin::WithAlpha(skin::palette::kMoon, 0.25)));
        graphics.FillRectangle(&sun, 10, 10, 80, 40);
        graphics.FillRectangle(&moon, 94, 10, 56, 40);
        if (alpha >= 0) window.Dialog().SetALPH255(bitmap.get(), alpha);
        window.Draw([bitmap](Ink& ink) { ink.Graphics().DrawImage(bitmap.get(), 14, 14); });
    };
    return {name, SpecimenRoom(kAlphaSize), show};
}

}  // namespace

std::vector<Specimen> FrameSpecimens() {
    const CSize usual(150, 80);
    return {
        Frame("frame-over", "hover", usual),
        Frame("frame-pressed", "press", usual),
        Frame("frame-focus", "focus", usual),
        Frame("frame-flat", "hover", CSize(260, 30)),
        Frame("frame-corners", "hover", usual, KeepCorners),
        Frame("frame-wide-right-edge", "press", usual, WidenRightEdge),
        {"frame-one-picture", CSize(234, 108), OnePicture},
        OneAlpha("alpha-before", -1),
        OneAlpha("alpha-half", 128),
        OneAlpha("alpha-whole", 255),
    };
}

}  // namespace gallery
