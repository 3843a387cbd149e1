#include "platform/graphics/decode/gif_index.h"

#include <algorithm>
#include <string_view>

#include "platform/graphics/decode/byte_reader.h"

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
        index_.screenEnd = reader_.At();
        return !reader_.Overran();
    }

    // False at the end, and where the blocks stop making sense.
    bool ReadRecord() {
        const std::size_t begin = reader_.At();
        switch (reader_.Byte()) {
            case kExtension:
                return ReadExtension();
            case kImage:
                return ReadImage(begin);
            case 0:  // padding that some encoders leave between blocks
                return !reader_.Overran();
            case kTrailer:
            default:
                return false;
        }
    }

    // The rest of a chain of data blocks, up to and with its terminator.
    bool SkipBlocks() {
        while (const std::size_t length = reader_.Byte())
            reader_.Skip(length);
        return !reader_.Overran();
    }

    bool ReadExtension() {
        switch (reader_.Byte()) {
            case kGraphicControl:
                ReadControl(reader_.Take(reader_.Byte()));
                break;
            case kApplication:
                ReadApplication(reader_.Take(reader_.Byte()));
                break;
            case kPlainText:  // not shown; the control before it was meant for it
                control_ = Control();
                break;
            default:
                break;
        }
        return SkipBlocks();
    }

    void ReadControl(std::span<const std::uint8_t> block) {
        if (block.size() < 4) return;
        control_.packed = block[0];
        control_.delay = block[1] | (std::uint32_t{block[2]} << 8U);
        control_.transparent = (block[0] & 1U) != 0 ? block[3] : -1;
        hasDelays_ = true;
    }

    void ReadApplication(std::span<const std::uint8_t> block) {
        const std::string_view name(reinterpret_cast<const char*>(block.data()), block.size());
        if (name != "NETSCAPE2.0" && name != "ANIMEXTS1.0") return;
        ByteReader ahead = reader_;
        const std::span<const std::uint8_t> loop = ahead.Take(ahead.Byte());
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
        reader_.Skip(1);  // bits of a code
        if (!SkipBlocks()) return false;
        frame.end = reader_.At();
        frame.transparent = control_.transparent;
        frame.disposal = DisposalOf(control_.packed);
        index_.frames.push_back(frame);
        index_.delays.push_back(control_.delay);
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
