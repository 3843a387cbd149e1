// Images with several frames, their properties, and where images come from.
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <fstream>
#include <string>

#include "graphics/gdiplus_kit.h"

namespace Gdiplus {
namespace {

using kit::MadeUpImage;
using kit::Pixels;

std::vector<Pixels> ThreeFrames() {
    return {Pixels(4, 4, 0xFF000011), Pixels(4, 4, 0xFF000022), Pixels(4, 4, 0xFF000033)};
}

TEST(Frames, AreListedAlongTimeAndSelected) {
    MadeUpImage image(ThreeFrames(), {10, 20, 0}, 5);
    ASSERT_EQ(1U, image.GetFrameDimensionsCount());
    FrameDimension dimension{};
    ASSERT_EQ(Ok, image.GetFrameDimensionsList(&dimension, 1));
    EXPECT_EQ(FrameDimensionTime, dimension);
    EXPECT_EQ(3U, image.GetFrameCount(&dimension));
    EXPECT_EQ(0U, image.GetFrameCount(&FrameDimensionPage));
    EXPECT_EQ(InvalidParameter, image.GetLastStatus());

    const std::uint64_t first = image.GetRevision();
    EXPECT_EQ(Ok, image.SelectActiveFrame(&dimension, 2));
    EXPECT_EQ(0xFF000033, kit::PixelsOf(image).At(0, 0));
    EXPECT_NE(first, image.GetRevision());
    EXPECT_EQ(InvalidParameter, image.SelectActiveFrame(&dimension, 3));
    EXPECT_EQ(InvalidParameter, image.SelectActiveFrame(&FrameDimensionPage, 0));
    EXPECT_EQ(InvalidParameter, image.SelectActiveFrame(nullptr, 0));
    EXPECT_EQ(0xFF000033, kit::PixelsOf(image).At(0, 0));
    EXPECT_EQ(Ok, image.SelectActiveFrame(&dimension, 0));
    EXPECT_EQ(first, image.GetRevision()) << "the same pixels again";
}

TEST(Frames, ADamagedOneLeavesTheOneThatShows) {
    std::vector<Pixels> frames = ThreeFrames();
    frames[1] = Pixels(0, 0);
    MadeUpImage image(frames, {1, 1, 1});
    EXPECT_EQ(GenericError, image.SelectActiveFrame(&FrameDimensionTime, 1));
    EXPECT_EQ(0xFF000011, kit::PixelsOf(image).At(0, 0));
    EXPECT_EQ(Ok, image.SelectActiveFrame(&FrameDimensionTime, 2));
    frames[0] = Pixels(0, 0);
    const MadeUpImage damaged(frames);
    EXPECT_EQ(UnknownImageFormat, damaged.GetLastStatus());
    EXPECT_EQ(0U, damaged.GetWidth());
}

TEST(Frames, DrawingOnOneLeavesTheOthersAndTheClones) {
    MadeUpImage image(ThreeFrames(), {1, 1, 1});
    const std::unique_ptr<Image> clone(image.Clone());
    const std::uint64_t untouched = image.GetRevision();
    Graphics(&image).Clear(Color(0xFF, 0, 0, 0x99));
    EXPECT_NE(untouched, image.GetRevision());
    EXPECT_EQ(0xFF000011, kit::PixelsOf(*clone).At(0, 0));
    EXPECT_EQ(Ok, clone->SelectActiveFrame(&FrameDimensionTime, 1));
    EXPECT_EQ(0xFF000099, kit::PixelsOf(image).At(0, 0));
    EXPECT_EQ(Ok, image.SelectActiveFrame(&FrameDimensionTime, 2));
    EXPECT_EQ(Ok, image.SelectActiveFrame(&FrameDimensionTime, 0));
    EXPECT_EQ(0xFF000011, kit::PixelsOf(image).At(0, 0)) << "decoded anew";
    EXPECT_EQ(untouched, image.GetRevision());
}

TEST(Frames, ATurnedImageKeepsItsActiveFrameOnly) {
    MadeUpImage image(ThreeFrames(), {1, 1, 1}, 0);
    EXPECT_EQ(Ok, image.SelectActiveFrame(&FrameDimensionTime, 1));
    EXPECT_EQ(Ok, image.RotateFlip(Rotate180FlipX));
    EXPECT_EQ(0U, image.GetFrameCount(&FrameDimensionTime));
    EXPECT_EQ(1U, image.GetFrameCount(&FrameDimensionPage));
    EXPECT_EQ(0U, image.GetPropertyItemSize(PropertyTagFrameDelay));
    EXPECT_EQ(Ok, image.SelectActiveFrame(&FrameDimensionPage, 0));
    EXPECT_EQ(0xFF000022, kit::PixelsOf(image).At(0, 0));
}

TEST(Properties, LieBehindTheirRecord) {
    const MadeUpImage image(ThreeFrames(), {10, 20, 655360}, 7);
    const UINT size = image.GetPropertyItemSize(PropertyTagFrameDelay);
    ASSERT_EQ(sizeof(PropertyItem) + 12, size);
    std::vector<PropertyItem> memory(2);
    EXPECT_EQ(InvalidParameter, image.GetPropertyItem(PropertyTagFrameDelay, size - 1, memory.data()));
    EXPECT_EQ(InvalidParameter, image.GetPropertyItem(PropertyTagFrameDelay, size, nullptr));
    ASSERT_EQ(Ok, image.GetPropertyItem(PropertyTagFrameDelay, size, memory.data()));
    EXPECT_EQ(PropertyTagFrameDelay, memory[0].id);
    EXPECT_EQ(12U, memory[0].length);
    EXPECT_EQ(PropertyTagTypeLong, memory[0].type);
    EXPECT_EQ(&memory[1], memory[0].value);
    std::uint32_t delays[3];
    std::memcpy(delays, memory[0].value, 12);
    EXPECT_EQ(655360U, delays[2]);
    ASSERT_EQ(sizeof(PropertyItem) + 2, image.GetPropertyItemSize(PropertyTagLoopCount));
    ASSERT_EQ(Ok, image.GetPropertyItem(PropertyTagLoopCount, size, memory.data()));
    std::uint16_t loops = 0;
    std::memcpy(&loops, memory[0].value, 2);
    EXPECT_EQ(7, loops);
    EXPECT_EQ(0U, image.GetPropertyItemSize(0x010F));
    EXPECT_EQ(PropertyNotFound, image.GetPropertyItem(0x010F, 100, memory.data()));

    const MadeUpImage still({Pixels(2, 2, 0)});
    EXPECT_EQ(0U, still.GetPropertyItemSize(PropertyTagFrameDelay));
    EXPECT_EQ(0U, still.GetPropertyItemSize(PropertyTagLoopCount));
    EXPECT_EQ(1U, still.GetFrameCount(&FrameDimensionPage));
    const MadeUpImage oneTimedFrame({Pixels(2, 2, 0)}, {5});
    EXPECT_EQ(1U, oneTimedFrame.GetFrameCount(&FrameDimensionTime));
}

// Bytes that lie about their size and fail in the middle.
class OddStream final : public IStream {
  public:
    explicit OddStream(std::vector<std::uint8_t> bytes, std::size_t failAt = SIZE_MAX)
        : bytes_(std::move(bytes)), failAt_(failAt) {}
    ~OddStream() override = default;
    ULONG AddRef() override { return ++references; }
    ULONG Release() override { return --references; }
    HRESULT Read(void* buffer, ULONG size, ULONG* read) override {
        const std::size_t count = std::min<std::size_t>({size, 100, bytes_.size() - position_});
        if (position_ >= failAt_) return E_FAIL;
        std::memcpy(buffer, bytes_.data() + position_, count);
        position_ += count;
        *read = static_cast<ULONG>(count);
        return S_OK;
    }
    HRESULT Seek(std::int64_t offset, DWORD, std::uint64_t*) override {
        position_ = static_cast<std::size_t>(offset);
        return S_OK;
    }
    HRESULT Size(std::uint64_t* bytes) override {
        *bytes = std::uint64_t{1} << 60;
        return S_OK;
    }
    ULONG references = 1;

  private:
    std::vector<std::uint8_t> bytes_;
    std::size_t failAt_;
    std::size_t position_ = 7;
};

TEST(Image, HoldsItsStreamAndReadsItFromTheStart) {
    Pixels pixels(30, 20, 0xFF204060);
    pixels.At(29, 19) = 0x80800000;
    const std::vector<std::uint8_t> png = platform::EncodePng(*kit::SurfaceOf(pixels));
    OddStream stream(png);
    {
        const Bitmap image(&stream);
        EXPECT_EQ(Ok, image.GetLastStatus());
        EXPECT_TRUE(Same(kit::PixelsOf(image), pixels));
        const std::unique_ptr<Bitmap> clone(image.Clone());
        EXPECT_EQ(2U, stream.references);
    }
    EXPECT_EQ(1U, stream.references);
    OddStream failing(png, 50);
    EXPECT_EQ(GenericError, Image(&failing).GetLastStatus());
    EXPECT_EQ(1U, failing.references);
    OddStream garbage(std::vector<std::uint8_t>(5000, 0x42));
    EXPECT_EQ(UnknownImageFormat, Image(&garbage).GetLastStatus());
}

void WritePng(const std::string& path, const Pixels& pixels) {
    const std::vector<std::uint8_t> png = platform::EncodePng(*kit::SurfaceOf(pixels));
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
}

Status Loaded(const std::string& path) {
    return Image(FromUtf8(path).GetString()).GetLastStatus();
}

TEST(Image, LoadsFilesAndRefusesWhatIsNone) {
    const std::string folder = testing::TempDir();
    const std::string path = folder + "/graphics_\xE5\x9B\xBE.png";
    const Pixels pixels(5, 3, 0xFF0000FF);
    WritePng(path, pixels);
    EXPECT_TRUE(Same(kit::PixelsOf(Image(FromUtf8(path).GetString())), pixels));
    EXPECT_EQ(Ok, Loaded(path));
    unlink(path.c_str());
    EXPECT_EQ(FileNotFound, Loaded(path));
    EXPECT_EQ(FileNotFound, Loaded(folder));
    const std::string pipe = folder + "/graphics_pipe";
    unlink(pipe.c_str());
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
    EXPECT_EQ(FileNotFound, Loaded(pipe)) << "and does not wait";
    unlink(pipe.c_str());
}

// A file that lies there for a while: only such a one is shared.
TEST(Image, ThoseOfOneFileShareItsPixelsUntilOneChanges) {
    const CString path = FromUtf8(QKUI_TEST_DATA) + u"/../resources/close.png";
    std::weak_ptr<platform::Surface> shown;
    Pixels before(1, 1);
    {
        Image first(path);
        const Image second(path);
        shown = first.Data()->Pixels();
        EXPECT_EQ(first.Data()->Pixels(), second.Data()->Pixels());
        EXPECT_EQ(first.GetRevision(), second.GetRevision());
        before = kit::PixelsOf(second);
        Graphics(&first).Clear(Color(1, 2, 3));
        EXPECT_TRUE(Same(kit::PixelsOf(second), before));
        EXPECT_EQ(Image(path).Data()->Pixels(), second.Data()->Pixels());
    }
    EXPECT_TRUE(shown.expired());
    Image alone(path);
    const auto* const pixels = alone.Data()->Pixels().get();
    Graphics(&alone).Clear(Color(1, 2, 3));
    EXPECT_EQ(alone.Data()->Pixels().get(), pixels) << "in place";
    EXPECT_TRUE(Same(kit::PixelsOf(Image(path)), before));
}

TEST(Image, AFileWrittenAnewIsReadAnew) {
    const std::string path = testing::TempDir() + "/graphics_anew.png";
    std::vector<std::unique_ptr<Image>> held;
    for (std::uint32_t colour = 0xFF000001; colour < 0xFF000010; ++colour) {
        WritePng(path, Pixels(5, 3, colour));
        held.push_back(std::make_unique<Image>(FromUtf8(path).GetString()));
        EXPECT_EQ(colour, kit::PixelsOf(*held.back()).At(0, 0));
    }
    unlink(path.c_str());
}

}  // namespace
}  // namespace Gdiplus
