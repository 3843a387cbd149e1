// Images: pictures that were loaded, their frames and their properties.
#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <utility>

#include <platform/gdiplus.h>

#include "platform/base/log.h"
#include "platform/graphics/file_pictures.h"
#include "platform/graphics/image_data.h"
#include "platform/graphics/image_file.h"
#include "platform/graphics/pixel_rows.h"
#include "platform/graphics/scale.h"

namespace platform {
namespace {

std::string Quoted(LPCWSTR path) {
    std::string quoted = ToUtf8(path);
    quoted.insert(0, 1, '"');
    return quoted + '"';
}

const char* Reason(Gdiplus::Status status) {
    switch (status) {
        case Gdiplus::FileNotFound:
            return "no such file, or not one that can be read";
        case Gdiplus::UnknownImageFormat:
            return "not a picture of a known format, or a damaged one";
        case Gdiplus::OutOfMemory:
            return "too large";
        case Gdiplus::InvalidParameter:
            return "nothing to read from";
        default:
            return "it could not be read";
    }
}

std::shared_ptr<ImageData> LoadStream(IStream* stream) {
    std::vector<std::uint8_t> bytes;
    const Gdiplus::Status status = ReadStreamBytes(stream, bytes);
    const std::size_t size = bytes.size();
    std::shared_ptr<ImageData> image =
        status == Gdiplus::Ok ? ImageData::Decode(std::move(bytes)) : ImageData::Failed(status);
    if (!image->IsGood() && IsLogging())
        LogMissing("picture", "in " + std::to_string(size) + " bytes of memory or resource",
                   Reason(image->LoadStatus()));
    return image;
}

// Holds a stream for as long as the pixels that came from it live.
std::shared_ptr<ImageData> Holding(IStream* stream, std::shared_ptr<ImageData> data) {
    if (!stream) return data;
    stream->AddRef();
    ImageData* const image = data.get();
    return {image, [data = std::move(data), stream](ImageData*) mutable {
                data.reset();
                stream->Release();
            }};
}

const Gdiplus::FrameDimension& DimensionOf(const ImageData& image) {
    const FrameSource* const frames = image.Frames();
    const bool animated = frames && (frames->FrameCount() > 1 || !frames->Delays().empty());
    return animated ? Gdiplus::FrameDimensionTime : Gdiplus::FrameDimensionPage;
}

// The bytes of a property's value; empty for one that the image does not have.
struct Property {
    WORD type = 0;
    std::vector<std::uint8_t> value;
};

Property PropertyOf(const ImageData& image, UINT id) {
    Property property;
    const FrameSource* const frames = image.Frames();
    if (!frames) return property;
    if (id == Gdiplus::PropertyTagFrameDelay && !frames->Delays().empty()) {
        property.type = Gdiplus::PropertyTagTypeLong;
        property.value.resize(frames->Delays().size() * 4);
        std::memcpy(property.value.data(), frames->Delays().data(), property.value.size());
    }
    if (id == Gdiplus::PropertyTagLoopCount && frames->LoopCount() >= 0) {
        const auto count = static_cast<std::uint16_t>(std::min(frames->LoopCount(), 0xFFFF));
        property.type = Gdiplus::PropertyTagTypeShort;
        property.value.resize(2);
        std::memcpy(property.value.data(), &count, 2);
    }
    return property;
}

// Where a pixel of the turned picture comes from: start + x * byColumn + y * byRow, in words.
struct Turn {
    int width, height;
    std::ptrdiff_t start, byColumn, byRow;
};

Turn TurnOf(const Surface& from, Gdiplus::RotateFlipType type) {
    const std::ptrdiff_t pitch = from.Stride() / 4;
    const std::ptrdiff_t lastColumn = from.Width() - 1;
    const std::ptrdiff_t lastRow = (from.Height() - 1) * pitch;
    Turn turn{};
    switch (type % 4) {
        case 1:
            turn = {from.Height(), from.Width(), lastRow, -pitch, 1};
            break;
        case 2:
            turn = {from.Width(), from.Height(), lastRow + lastColumn, -1, -pitch};
            break;
        case 3:
            turn = {from.Height(), from.Width(), lastColumn, pitch, -1};
            break;
        default:
            turn = {from.Width(), from.Height(), 0, 1, pitch};
            break;
    }
    if (type >= Gdiplus::RotateNoneFlipX) {
        turn.start += (turn.width - 1) * turn.byColumn;
        turn.byColumn = -turn.byColumn;
    }
    return turn;
}

std::shared_ptr<Surface> Turned(const Surface& from, Gdiplus::RotateFlipType type) {
    const Turn turn = TurnOf(from, type);
    std::shared_ptr<Surface> to = Surface::Create(turn.width, turn.height);
    if (!to) return {};
    for (int y = 0; y < turn.height; ++y) {
        const std::uint32_t* const row = from.Row(0) + turn.start + y * turn.byRow;
        std::uint32_t* const result = to->Row(y);
        if (turn.byColumn == 1) {
            std::memcpy(result, row, static_cast<std::size_t>(turn.width) * 4);
        } else {
            for (std::ptrdiff_t x = 0; x < turn.width; ++x)
                result[x] = row[x * turn.byColumn];
        }
    }
    return to;
}

// Null where there is none, and for one that is damaged or has no such size.
std::shared_ptr<ImageData> LoadVariant(std::u16string_view path, int scale) {
    std::u16string name(path);
    const std::size_t slash = path.rfind(u'/');
    const std::size_t dot = path.rfind(u'.');
    const bool dotted = dot != path.npos && (slash == path.npos || dot > slash);
    name.insert(dotted ? dot : name.size(), {u'@', static_cast<char16_t>(u'0' + scale), u'x'});
    std::shared_ptr<ImageData> image = LoadPictureFile(name.c_str(), scale);
    if (image->IsGood()) return image;
    if (image->LoadStatus() != Gdiplus::FileNotFound)
        LogMissing("picture", Quoted(name.c_str()),
                   "damaged, or its sides are no multiples: the one of usual size is used");
    return {};
}

}  // namespace

std::shared_ptr<ImageData> ImageData::FromFile(LPCWSTR path) {
    std::shared_ptr<ImageData> image = LoadPictureFile(path, 1);
    if (!image->IsGood() && IsLogging())
        LogMissing("picture", path ? Quoted(path) : "without a path", Reason(image->LoadStatus()));
    return image;
}

std::shared_ptr<ImageData> ImageData::FromFileForScreen(LPCWSTR path) try {
    for (int scale = path ? ScreenScale() : 1; scale > 1; --scale)
        if (std::shared_ptr<ImageData> image = LoadVariant(path, scale)) return image;
    return FromFile(path);
} catch (const std::bad_alloc&) {
    return Failed(Gdiplus::OutOfMemory);
}

}  // namespace platform

namespace Gdiplus {

using platform::ImageData;

const FrameDimension FrameDimensionTime = {{0x6AEDBD6D, 0x4A30B53F, 0x85A3E5B9, 0x2F43A01C}};
const FrameDimension FrameDimensionPage = {{0x7462DC86, 0x4C296180, 0x8B7A4FB3, 0xBD6A1B24}};

Image::Image(LPCWSTR path, BOOL) : Image(ImageData::FromFileForScreen(path)) {}

Image::Image(IStream* stream, BOOL) : Image(platform::Holding(stream, platform::LoadStream(stream))) {}

Image::Image(std::shared_ptr<ImageData> data) : data_(std::move(data)) {}

Image::~Image() = default;

Image* Image::Clone() const {
    std::shared_ptr<ImageData> data = data_->Clone();
    last_ = data ? Ok : data_->LoadStatus() != Ok ? data_->LoadStatus() : OutOfMemory;
    return data ? new Image(std::move(data)) : nullptr;
}

bool Image::IsCloneOf(const Image& other) const {
    return data_->IsCloneOf(*other.data_);
}

UINT Image::GetWidth() const {
    return static_cast<UINT>(data_->Width() / data_->Scale());
}

UINT Image::GetHeight() const {
    return static_cast<UINT>(data_->Height() / data_->Scale());
}

Status Image::GetLastStatus() const {
    if (data_->LoadStatus() != Ok) return data_->LoadStatus();
    return std::exchange(last_, Ok);
}

PixelFormat Image::GetPixelFormat() const {
    return data_->Format();
}

UINT Image::GetFrameDimensionsCount() const {
    return data_->IsGood() ? 1 : 0;
}

Status Image::GetFrameDimensionsList(FrameDimension* list, UINT count) const {
    if (!data_->IsGood() || !list || count != 1) return last_ = InvalidParameter;
    list[0] = platform::DimensionOf(*data_);
    return last_ = Ok;
}

UINT Image::GetFrameCount(const FrameDimension* dimension) const {
    const bool known = data_->IsGood() && dimension && *dimension == platform::DimensionOf(*data_);
    last_ = known ? Ok : InvalidParameter;
    return known ? static_cast<UINT>(data_->FrameCount()) : 0;
}

Status Image::SelectActiveFrame(const FrameDimension* dimension, UINT index) {
    if (index >= GetFrameCount(dimension)) return last_ = InvalidParameter;
    return last_ = data_->SelectFrame(static_cast<int>(index)) ? Ok : GenericError;
}

UINT Image::GetPropertyItemSize(UINT id) const {
    const platform::Property property = platform::PropertyOf(*data_, id);
    last_ = property.value.empty() ? PropertyNotFound : Ok;
    return property.value.empty() ? 0 : static_cast<UINT>(sizeof(PropertyItem) + property.value.size());
}

Status Image::GetPropertyItem(UINT id, UINT size, PropertyItem* buffer) const {
    const platform::Property property = platform::PropertyOf(*data_, id);
    if (property.value.empty()) return last_ = PropertyNotFound;
    if (!buffer || size < sizeof(PropertyItem) + property.value.size()) return last_ = InvalidParameter;
    void* const value = buffer + 1;
    std::memcpy(value, property.value.data(), property.value.size());
    *buffer = {id, static_cast<ULONG>(property.value.size()), property.type, value};
    return last_ = Ok;
}

Status Image::RotateFlip(RotateFlipType type) {
    if (!data_->IsGood() || type < RotateNoneFlipNone || type > Rotate270FlipX)
        return last_ = InvalidParameter;
    if (type == RotateNoneFlipNone) return last_ = Ok;
    std::shared_ptr<platform::Surface> turned = platform::Turned(*data_->Pixels(), type);
    if (!turned) return last_ = OutOfMemory;
    data_->Replace(std::move(turned));
    return last_ = Ok;
}

INT Image::GetScale() const {
    return data_->Scale();
}

Status Image::SetScale(INT scale) {
    return last_ = data_->SetScale(scale) ? Ok : InvalidParameter;
}

std::uint64_t Image::GetRevision() const {
    return data_->Revision();
}

}  // namespace Gdiplus
