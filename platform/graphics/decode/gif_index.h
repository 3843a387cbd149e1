// Where the frames of an animated picture lie in its bytes, and how they follow on each other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace platform {

// What becomes of a frame's place before the next frame is drawn.
enum class GifDisposal : std::uint8_t { Keep, Clear, Restore };

struct GifFrame {
    std::size_t begin = 0;  // of its image descriptor
    std::size_t end = 0;    // after its last data block
    // Its place on the screen, which it may leave; up to 65535 each. Without size when there is too little
    // data for any picture of its size.
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    int transparent = -1;  // colour index, -1 for none
    GifDisposal disposal = GifDisposal::Keep;
};

struct GifIndex {
    int width = 0;  // of the screen; above zero
    int height = 0;
    std::size_t screenEnd = 0;  // after the screen description and the common colours
    std::vector<GifFrame> frames;
    std::vector<std::uint32_t> delays;  // hundredths as stored, one per frame; empty when none are stored
    int loopCount = -1;                 // as stored, 0 for ever; -1 when not stored
};

// Walks the blocks without decoding pixels. A file that breaks off, or stops making sense, gives the frames
// whose data is complete; nothing when there is not one.
std::optional<GifIndex> IndexGif(std::span<const std::uint8_t> bytes);

}  // namespace platform
