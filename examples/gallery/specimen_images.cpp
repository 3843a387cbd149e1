// Pictures, still and moving.
#include "examples/gallery/skin_files.h"
#include "examples/gallery/specimen.h"

namespace gallery {
namespace {

Specimen Still(const char* name, CSize size) {
    const auto show = [size](SpecimenWindow& window) {
        auto& image = window.Add<QKImage>(SpecimenPlace({size.cx, size.cy}));
        image.SetImage(SkinFile("picture.png"));
    };
    return {name, SpecimenRoom({size.cx, size.cy}), show};
}

Specimen OwnSize(const char* name) {
    const Gdiplus::Image picture(SkinFile("picture.png"));
    return Still(name, CSize(static_cast<int>(picture.GetWidth()), static_cast<int>(picture.GetHeight())));
}

// So many frames into its animation; each frame is waited for, as long as it says.
Specimen Moving(const char* name, const char* file, int steps) {
    const Gdiplus::Image picture(SkinFile(file));
    const skin::PictureSize size = {static_cast<int>(picture.GetWidth()),
                                    static_cast<int>(picture.GetHeight())};
    const auto show = [file, size, steps](SpecimenWindow& window) {
        constexpr UINT kTimer = 7;
        auto& gif = window.Add<QKGifImage>(SpecimenPlace(size));
        gif.SetImage(SkinFile(file));
        gif.StartRun(kTimer, window.Dialog().m_hWnd);
        for (int i = 0; i < steps; ++i)
            Headless::Advance(gif.GetFrameTime().value_or(0));
    };
    return {name, SpecimenRoom(size), show};
}

}  // namespace

std::vector<Specimen> ImageSpecimens() {
    return {
        OwnSize("image"),
        Still("image-stretched", CSize(240, 48)),
        Still("image-shrunk", CSize(32, 32)),
        Moving("gif-first", "spinner.gif", 0),
        Moving("gif-second", "spinner.gif", 1),
        Moving("gif-fifth", "spinner.gif", 4),
        Moving("gif-transparent", "comet.gif", 9),
    };
}

}  // namespace gallery
