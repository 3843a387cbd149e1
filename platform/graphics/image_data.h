// What an Image holds: pixels that are shared with its clones until one of them changes, and the encoded
// picture that further frames come from.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include <platform/gdiplus.h>

#include "platform/graphics/decode/picture.h"
#include "platform/graphics/image_revision.h"
#include "platform/graphics/surface.h"

namespace platform {

// The encoded picture, shared by an image and its clones. Usable from every thread.
class FrameSource {
  public:
    explicit FrameSource(std::unique_ptr<EncodedPicture> picture);

    int FrameCount() const { return frameCount_; }
    const std::vector<std::uint32_t>& Delays() const { return delays_; }
    int LoopCount() const { return loopCount_; }
    // Null when the data of the frame is damaged.
    std::shared_ptr<Surface> Frame(int index);
    // A frame shows the same pixels however often it comes round, so it keeps its revision, and with it the
    // scaled copies.
    std::shared_ptr<ImageRevision> RevisionOf(int index);

  private:
    std::mutex mutex_;
    std::unique_ptr<EncodedPicture> picture_;  // null once the only frame was given out
    const int frameCount_;
    const std::vector<std::uint32_t> delays_;
    const int loopCount_;
    std::vector<std::shared_ptr<ImageRevision>> revisions_;
};

class ImageData {
  public:
    // The picture of a file; for a screen, the one with as many pixels to a unit as it has, or the next
    // fewer, where there is one beside it: "name@2x.png" for "name.png". In an error status when it cannot be
    // read.
    static std::shared_ptr<ImageData> FromFile(LPCWSTR path);
    static std::shared_ptr<ImageData> FromFileForScreen(LPCWSTR path);

    // An image without pixels, in a lasting error status.
    static std::shared_ptr<ImageData> Failed(Gdiplus::Status status);
    static std::shared_ptr<ImageData> Decode(std::vector<std::uint8_t> bytes);
    static std::shared_ptr<ImageData> FromPicture(std::unique_ptr<EncodedPicture> picture);
    // Takes the surface over.
    static std::shared_ptr<ImageData> FromSurface(std::shared_ptr<Surface> surface,
                                                  Gdiplus::PixelFormat format);

    Gdiplus::Status LoadStatus() const { return loadStatus_; }
    bool IsGood() const { return shown_ != nullptr; }
    // In pixels; divided by Scale it is in the units that hosts see.
    int Width() const { return width_; }
    int Height() const { return height_; }
    // Pixels to a unit, each way. What is drawn on the image counts in units.
    int Scale() const { return scale_; }
    // False, and nothing changes, for a size that is no number of units.
    bool SetScale(int scale);
    Gdiplus::PixelFormat Format() const { return format_; }
    // Every pixel has alpha 255, and must keep it.
    bool IsOpaqueFormat() const { return format_ == Gdiplus::PixelFormat32bppRGB; }

    // Cheap: the pixels are copied when one of the two changes.
    std::shared_ptr<ImageData> Clone();
    // Whether the two share their pixels, and would show the same in each frame.
    bool IsCloneOf(const ImageData& other) const;
    // A clone that holds `original`, which nobody else changes, for as long as it shows its pixels.
    static std::shared_ptr<ImageData> CloneOf(std::shared_ptr<ImageData> original);

    // For reading only; null for a failed image.
    const std::shared_ptr<Surface>& Pixels() const;
    // For writing, which must be followed by Touch of the surface. Null for a failed image or without memory.
    std::shared_ptr<Surface> Writable();
    // Other pixels instead, of any size. What is left is a still image.
    void Replace(std::shared_ptr<Surface> surface);
    // Sets every alpha to 255, after somebody wrote who does not know the format.
    void RestoreOpacity();

    // Between the two, somebody else may write to the surface at any time, so that clones cannot share it.
    void BeginLending() { ++lent_; }
    void EndLending() { --lent_; }

    // Of the pixels as they are now.
    const std::shared_ptr<ImageRevision>& CurrentRevision();
    std::uint64_t Revision() { return IsGood() ? CurrentRevision()->Id() : 0; }

    // The frames of a picture that was decoded and not changed as a whole since; else one.
    const FrameSource* Frames() const { return shown_ ? shown_->source.get() : nullptr; }
    int FrameCount() const { return Frames() ? Frames()->FrameCount() : 1; }
    bool SelectFrame(int index);

  private:
    // What an image shows. Clones hold the same one until one of them changes.
    struct Shown {
        std::shared_ptr<Surface> pixels;
        std::shared_ptr<FrameSource> source;
        std::shared_ptr<ImageRevision> revision;
        std::uint64_t surfaceRevision = 0;  // the revision of the surface that `revision` stands for
    };

    ImageData() = default;
    static std::shared_ptr<ImageData> New();
    void Show(std::shared_ptr<Surface> surface, std::shared_ptr<FrameSource> source,
              std::shared_ptr<ImageRevision> revision);

    int width_ = 0;  // of what is shown
    int height_ = 0;
    int scale_ = 1;
    int frame_ = 0;
    int lent_ = 0;
    Gdiplus::Status loadStatus_ = Gdiplus::Ok;
    Gdiplus::PixelFormat format_ = Gdiplus::PixelFormat32bppARGB;
    std::shared_ptr<Shown> shown_;
    std::shared_ptr<ImageData> original_;
};

}  // namespace platform
