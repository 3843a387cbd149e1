// A picture drawn on the screen's own background: it fills the screen, cut off where its shape differs.
#include <algorithm>

#include <platform/gdiplus.h>
#include <platform/text.h>

#include "platform/graphics/decode/picture.h"
#include "platform/graphics/image_file.h"
#include "platform/graphics/resample.h"
#include "platform/shell/wallpaper.h"
#include "platform/window/backdrop.h"

namespace platform {

namespace {

// The middle part of the picture that has the shape of the screen.
Scaling Filling(const Surface& picture, CSize screen) {
    Scaling scaling;
    const double factor = std::min(static_cast<double>(picture.Width()) / screen.cx,
                                   static_cast<double>(picture.Height()) / screen.cy);
    scaling.sourceWidth = screen.cx * factor;
    scaling.sourceHeight = screen.cy * factor;
    scaling.sourceX = (picture.Width() - scaling.sourceWidth) / 2;
    scaling.sourceY = (picture.Height() - scaling.sourceHeight) / 2;
    scaling.width = scaling.right = screen.cx;
    scaling.height = scaling.bottom = screen.cy;
    scaling.filter = Filter::Smooth;
    return scaling;
}

std::shared_ptr<Surface> Decode(const std::string& path) {
    std::vector<std::uint8_t> bytes;
    if (ReadFileBytes(FromUtf8(path).GetString(), bytes) != Gdiplus::Ok) return nullptr;
    Gdiplus::Status status = Gdiplus::Ok;
    const std::unique_ptr<EncodedPicture> picture = OpenPicture(std::move(bytes), status);
    return picture ? picture->Frame(0) : nullptr;
}

// What shows through is black.
void MakeOpaque(Surface& surface) {
    for (int y = 0; y < surface.Height(); ++y)
        std::for_each_n(surface.Row(y), surface.Width(), [](std::uint32_t& pixel) { pixel |= 0xFF000000; });
    surface.Touch();
}

class BackdropWallpaper final : public Wallpaper {
  public:
    explicit BackdropWallpaper(std::unique_ptr<Backdrop> backdrop) : backdrop_(std::move(backdrop)) {}

    bool Set(const std::string& path) override {
        const std::shared_ptr<Surface> picture = Decode(path);
        if (!picture) return false;
        const std::shared_ptr<Surface> scaled = Resample(*picture, Filling(*picture, backdrop_->Size()));
        if (!scaled) return false;
        MakeOpaque(*scaled);
        return backdrop_->Show(*scaled, path);
    }
    std::optional<std::string> Get() override { return backdrop_->Path(); }

  private:
    std::unique_ptr<Backdrop> backdrop_;
};

}  // namespace

std::unique_ptr<Wallpaper> MakeBackdropWallpaper(std::unique_ptr<Backdrop> backdrop) {
    return std::make_unique<BackdropWallpaper>(std::move(backdrop));
}

}  // namespace platform
