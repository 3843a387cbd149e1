#include "platform/graphics/image_data.h"

#include <new>
#include <utility>

#include "platform/graphics/pixel_rows.h"

namespace platform {
namespace {

std::shared_ptr<Surface> CopyOf(const Surface& surface) {
    std::shared_ptr<Surface> copy = Surface::CreateUnset(surface.Width(), surface.Height());
    if (copy) CopyPixels(*copy, CRect(0, 0, copy->Width(), copy->Height()), surface, 0, 0);
    return copy;
}

}  // namespace

FrameSource::FrameSource(std::unique_ptr<EncodedPicture> picture)
    : picture_(std::move(picture)),
      frameCount_(picture_->FrameCount()),
      delays_(picture_->Delays()),
      loopCount_(picture_->LoopCount()) {}

std::shared_ptr<Surface> FrameSource::Frame(int index) {
    const std::lock_guard lock(mutex_);
    if (!picture_) return {};
    std::shared_ptr<Surface> frame = picture_->Frame(index);
    // A still picture is never asked again; its bytes would only take room.
    if (frameCount_ == 1) picture_.reset();
    return frame;
}

std::shared_ptr<ImageRevision> FrameSource::RevisionOf(int index) {
    const std::lock_guard lock(mutex_);
    const auto at = static_cast<std::size_t>(index);
    if (revisions_.size() <= at) revisions_.resize(at + 1);
    if (!revisions_[at]) revisions_[at] = std::make_shared<ImageRevision>(NextRevision());
    return revisions_[at];
}

// In one block with its count: lists of icons clone images by the thousand.
std::shared_ptr<ImageData> ImageData::New() {
    struct Counted : ImageData {};
    return std::make_shared<Counted>();
}

std::shared_ptr<ImageData> ImageData::Failed(Gdiplus::Status status) {
    std::shared_ptr<ImageData> image = New();
    image->loadStatus_ = status;
    return image;
}

std::shared_ptr<ImageData> ImageData::Decode(std::vector<std::uint8_t> bytes) {
    Gdiplus::Status status = Gdiplus::Ok;
    std::unique_ptr<EncodedPicture> picture = OpenPicture(std::move(bytes), status);
    if (!picture) return Failed(status == Gdiplus::Ok ? Gdiplus::UnknownImageFormat : status);
    return FromPicture(std::move(picture));
}

std::shared_ptr<ImageData> ImageData::FromPicture(std::unique_ptr<EncodedPicture> picture) {
    auto source = std::make_shared<FrameSource>(std::move(picture));
    std::shared_ptr<Surface> first = source->Frame(0);
    if (!first) return Failed(Gdiplus::UnknownImageFormat);
    std::shared_ptr<ImageRevision> revision = source->FrameCount() > 1 ? source->RevisionOf(0) : nullptr;
    std::shared_ptr<ImageData> image = New();
    image->Show(std::move(first), std::move(source), std::move(revision));
    return image;
}

std::shared_ptr<ImageData> ImageData::FromSurface(std::shared_ptr<Surface> surface,
                                                  Gdiplus::PixelFormat format) {
    if (!surface) return Failed(Gdiplus::OutOfMemory);
    std::shared_ptr<ImageData> image = New();
    image->format_ = format;
    image->scale_ = surface->Scale();
    image->Show(std::move(surface), nullptr, nullptr);
    return image;
}

void ImageData::Show(std::shared_ptr<Surface> surface, std::shared_ptr<FrameSource> source,
                     std::shared_ptr<ImageRevision> revision) {
    auto shown = std::make_shared<Shown>();
    shown->pixels = std::move(surface);
    shown->pixels->SetScale(scale_);
    shown->source = std::move(source);
    shown->surfaceRevision = revision ? shown->pixels->Revision() : 0;
    shown->revision = std::move(revision);
    width_ = shown->pixels->Width();
    height_ = shown->pixels->Height();
    shown_ = std::move(shown);
    original_.reset();
}

std::shared_ptr<ImageData> ImageData::Clone() {
    if (!IsGood()) return {};
    std::shared_ptr<ImageData> clone = New();
    clone->scale_ = scale_;
    if (lent_ > 0) {
        std::shared_ptr<Surface> copy = CopyOf(*shown_->pixels);
        if (!copy) return {};
        clone->Show(std::move(copy), shown_->source, nullptr);
    } else {
        CurrentRevision();  // once for both
        clone->shown_ = shown_;
        clone->original_ = original_;
        clone->width_ = width_;
        clone->height_ = height_;
    }
    clone->format_ = format_;
    clone->frame_ = frame_;
    return clone;
}

bool ImageData::IsCloneOf(const ImageData& other) const {
    return IsGood() && shown_ == other.shown_ && lent_ == 0 && other.lent_ == 0 && format_ == other.format_ &&
           scale_ == other.scale_ && frame_ == other.frame_;
}

std::shared_ptr<ImageData> ImageData::CloneOf(std::shared_ptr<ImageData> original) {
    std::shared_ptr<ImageData> clone = original->Clone();
    clone->original_ = std::move(original);
    return clone;
}

const std::shared_ptr<Surface>& ImageData::Pixels() const {
    static const std::shared_ptr<Surface> none;
    return shown_ ? shown_->pixels : none;
}

std::shared_ptr<Surface> ImageData::Writable() {
    if (!IsGood()) return {};
    // Held by nobody else the original goes, and what it showed is written to in place.
    if (original_.use_count() == 1) original_.reset();
    if (shown_.use_count() > 1) {
        std::shared_ptr<Surface> copy = CopyOf(*shown_->pixels);
        if (!copy) return {};
        // Until something is drawn, the copy shows what the clones show.
        Show(std::move(copy), shown_->source, CurrentRevision());
    }
    return shown_->pixels;
}

void ImageData::Replace(std::shared_ptr<Surface> surface) {
    Show(std::move(surface), nullptr, nullptr);
    frame_ = 0;
}

bool ImageData::SetScale(int scale) {
    if (!IsGood() || scale < 1 || Width() % scale != 0 || Height() % scale != 0) return false;
    if (scale == scale_) return true;
    if (!Writable()) return false;  // the surface knows its scale, and others may show it
    scale_ = scale;
    shown_->pixels->SetScale(scale);
    return true;
}

void ImageData::RestoreOpacity() {
    if (!IsGood() || !IsOpaqueFormat()) return;
    Surface& pixels = *shown_->pixels;
    for (int y = 0; y < pixels.Height(); ++y)
        MakeOpaqueRow(pixels.Row(y), pixels.Row(y), static_cast<std::size_t>(pixels.Width()));
    pixels.Touch();
}

const std::shared_ptr<ImageRevision>& ImageData::CurrentRevision() {
    Shown& shown = *shown_;
    if (!shown.revision || shown.surfaceRevision != shown.pixels->Revision()) {
        shown.surfaceRevision = shown.pixels->Revision();
        shown.revision = std::make_shared<ImageRevision>(shown.surfaceRevision);
    }
    return shown.revision;
}

bool ImageData::SelectFrame(int index) {
    if (!Frames() || index == frame_) return IsGood();
    const std::shared_ptr<FrameSource> source = shown_->source;
    std::shared_ptr<Surface> frame = source->Frame(index);
    if (!frame) return false;
    Show(std::move(frame), source, source->RevisionOf(index));
    frame_ = index;
    return true;
}

}  // namespace platform
