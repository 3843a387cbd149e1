#include "platform/graphics/decode/gif_index.h"

#include <algorithm>
#include <string_view>

#include "platform/base/byte_reader.h"

namespace platform {
namespace {

constexpr std::uint8_t kExtension = 0x21;
constexpr std::uint8_t kImage = 0x2C;
constexpr std::uint8_t kTrailer = 0x3B;
constexpr std::uint8_t kPlainText = 0x01;
constexpr std::uint8_t kGraphicControl = 0xF9;
constexpr std::uint8_t kApplication = 0xFF;

// Bytes of the colour table that a packed field announces.
std::size_t ColourTableBytes(unsigned packed) {
    return (packed & 0x80U) != 0 ? std::size_t{3} << ((packed & 7U) + 1U) : 0;
}

GifDisposal DisposalOf(unsigned packed) {
    switch ((packed >> 2U) & 7U) {
        case 2:
            return GifDisposal::Clear;
        case 3:
            return GifDisposal::Restore;
        default:
            return GifDisposal::Keep;
    }
}

// The most pixels that so many bytes of codes can stand for, when the first codes have `codeBits` bits: a
// code stands for one pixel more than the code before it at best, and for 4096 at most.
std::int64_t MostPixels(std::size_t bytes, unsigned codeBits) {
    constexpr std::int64_t kLongest = 4096;
    const std::int64_t codes = static_cast<std::int64_t>(bytes) * 8 / codeBits;
    return codes < kLongest ? codes * (codes + 1) / 2 : codes * kLongest;
}

class Walker {
  public:
    explicit Walker(std::span<const std::uint8_t> bytes) : reader_(bytes) {}

    std::optional<GifIndex> Walk() {
        if (!ReadScreen()) return std::nullopt;
        while (ReadRecord()) {
        }
        if (index_.frames.empty()) return std::nullopt;
        if (!hasDelays_) index_.delays.clear();
        if (index_.width == 0 || index_.height == 0) AdoptFirstFrame();
        if (index_.width == 0 || index_.height == 0) return std::nullopt;
        return std::move(index_);
    }

  private:
    // What a graphic control extension says about the frame that follows it.
    struct Control {
        bool isStored = false;
        unsigned packed = 0;
        std::uint32_t delay = 0;
        int transparent = -1;
    };

    bool ReadScreen() {
        reader_.Skip(6);
        index_.width = reader_.Word();
        index_.height = reader_.Word();
        const unsigned packed = reader_.Byte();
        reader_.Skip(2 + ColourTableBytes(packed));
        index_.screenEnd = reader_.Position();
        return !reader_.Failed();
    }

    // False at the end, and where the blocks stop making sense.
    bool ReadRecord() {
        const std::size_t begin = reader_.Position();
        switch (reader_.Byte()) {
            case kExtension:
                return ReadExtension();
            case kImage:
                return ReadImage(begin);
            case 0:  // padding that some encoders leave between blocks
                return !reader_.Failed();
            case kTrailer:
            default:
                return false;
        }
    }

    // The rest of a chain of data blocks, up to and with its terminator.
    bool SkipBlocks() {
        while (const std::size_t length = reader_.Byte())
            reader_.Skip(length);
        return !reader_.Failed();
    }

    bool ReadExtension() {
        const std::uint8_t label = reader_.Byte();
        const std::span<const std::uint8_t> first = reader_.Bytes(reader_.Byte());
        switch (label) {
            case kGraphicControl:
                ReadControl(first);
                break;
            case kApplication:
                ReadApplication(first);
                break;
            case kPlainText:  // not shown; the control before it was meant for it
                control_ = Control();
                break;
            default:
                break;
        }
        return first.empty() ? !reader_.Failed() : SkipBlocks();  // an empty block ends the chain
    }

    void ReadControl(std::span<const std::uint8_t> block) {
        if (block.size() < 4) return;
        control_.packed = block[0];
        control_.delay = block[1] | (std::uint32_t{block[2]} << 8U);
        control_.transparent = (block[0] & 1U) != 0 ? block[3] : -1;
        control_.isStored = true;
    }

    void ReadApplication(std::span<const std::uint8_t> block) {
        const std::string_view name(reinterpret_cast<const char*>(block.data()), block.size());
        if (name != "NETSCAPE2.0" && name != "ANIMEXTS1.0") return;
        ByteReader ahead = reader_;
        const std::span<const std::uint8_t> loop = ahead.Bytes(ahead.Byte());
        if (loop.size() >= 3 && loop[0] == 1) index_.loopCount = loop[1] | (loop[2] << 8);
    }

    bool ReadImage(std::size_t begin) {
        GifFrame frame;
        frame.begin = begin;
        frame.left = reader_.Word();
        frame.top = reader_.Word();
        frame.width = reader_.Word();
        frame.height = reader_.Word();
        reader_.Skip(ColourTableBytes(reader_.Byte()));
        const unsigned codeBits = reader_.Byte() + 1U;
        const std::size_t codesAt = reader_.Position();
        if (!SkipBlocks()) return false;
        frame.end = reader_.Position();
        // Neither memory nor time is spent on what cannot come out whole.
        if (std::int64_t{frame.width} * frame.height > MostPixels(frame.end - codesAt, codeBits))
            frame.width = frame.height = 0;
        frame.transparent = control_.transparent;
        frame.disposal = DisposalOf(control_.packed);
        index_.frames.push_back(frame);
        index_.delays.push_back(control_.delay);
        hasDelays_ = hasDelays_ || control_.isStored;
        control_ = Control();
        return true;
    }

    // A screen of no size is as large as what is shown on it first.
    void AdoptFirstFrame() {
        const GifFrame& first = index_.frames.front();
        index_.width = first.left + first.width;
        index_.height = first.top + first.height;
    }

    ByteReader reader_;
    GifIndex index_;
    Control control_;
    bool hasDelays_ = false;
};

}  // namespace

std::optional<GifIndex> IndexGif(std::span<const std::uint8_t> bytes) {
    return Walker(bytes).Walk();
}

}  // namespace platform
