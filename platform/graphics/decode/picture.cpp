#include "platform/graphics/decode/picture.h"

#include <new>
#include <utility>

#include "platform/graphics/decode/gif_picture.h"
#include "platform/graphics/decode/icon_picture.h"
#include "platform/graphics/decode/signature.h"
#include "platform/graphics/decode/still_picture.h"

namespace platform {

std::unique_ptr<EncodedPicture> OpenPicture(std::vector<std::uint8_t> bytes, Gdiplus::Status& status) try {
    const PictureKind kind = RecognisePicture(bytes);
    switch (kind) {
        case PictureKind::Unknown:
            status = Gdiplus::UnknownImageFormat;
            return nullptr;
        case PictureKind::Gif:
            return GifPicture::Open(std::move(bytes), status);
        case PictureKind::Icon:
            return StillPicture::Open(kind, std::move(bytes), &DecodeIcon, status);
        default:
            return StillPicture::Open(kind, std::move(bytes), &DecodeStill, status);
    }
} catch (const std::bad_alloc&) {
    status = Gdiplus::OutOfMemory;
    return nullptr;
}

}  // namespace platform
