// Animated pictures of one pixel: the item that shows one is filled with the colour of its frame.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "kit/skin.h"

namespace kit {

struct GifPixel {
    std::uint32_t colour;  // 0xRRGGBB
    int delay;             // hundredths of a second; -1 stores none
};

inline CString SaveGif(const std::string& name, const std::vector<GifPixel>& frames) {
    using namespace std::string_literals;
    std::string bytes = "GIF89a\x01\0\x01\0\0\0\0"s;
    for (const GifPixel& frame : frames) {
        const auto byte = [](std::uint32_t value) { return static_cast<char>(value & 0xFF); };
        if (frame.delay >= 0) {
            const auto delay = static_cast<std::uint32_t>(frame.delay);
            bytes += "\x21\xF9\x04\0"s + byte(delay) + byte(delay >> 8) + "\0\0"s;
        }
        bytes += ",\0\0\0\0\x01\0\x01\0\x80"s;  // one pixel, two colours of its own
        bytes += {byte(frame.colour >> 16), byte(frame.colour >> 8), byte(frame.colour)};
        bytes += "\0\0\0\x02\x02\x44\x01\0"s;  // clear, colour 0, end
    }
    return SaveBytes(name + ".gif", bytes + ";");
}

}  // namespace kit
