// Pictures of solid colours for tests, so that they can state exact pixels.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <platform/headless.h>
#include <platform/text.h>

#include "support/gif.h"

namespace kit {

// A picture file in the test's output folder; returns its path. Colours are premultiplied ARGB.
inline CString SavePicture(const std::string& name, const Headless::Picture& picture) {
    const CString path((std::string(QKUI_TEST_OUTPUT) + "/" + name + ".png").c_str());
    picture.SavePng(path);
    return path;
}

// Frames of one colour each, stacked or side by side.
inline CString Strip(const std::string& name, const std::vector<std::uint32_t>& frames, int frameWidth,
                     int frameHeight, bool vertical) {
    const int count = static_cast<int>(frames.size());
    Headless::Picture picture;
    picture.width = vertical ? frameWidth : frameWidth * count;
    picture.height = vertical ? frameHeight * count : frameHeight;
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            picture.argb.push_back(
                frames[static_cast<std::size_t>(vertical ? y / frameHeight : x / frameWidth)]);
    return SavePicture(name, picture);
}

inline CString Solid(const std::string& name, std::uint32_t colour, int width, int height) {
    return Strip(name, {colour}, width, height, true);
}

// Bytes as they stand: for broken files.
inline CString SaveBytes(const std::string& name, const std::string& bytes) {
    const std::string path = std::string(QKUI_TEST_OUTPUT) + "/" + name;
    if (FILE* file = std::fopen(path.c_str(), "wb")) {
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
    }
    return CString(path.c_str());
}

// An animated picture of one pixel: the item that shows it is filled with the colour of its frame.
struct GifPixel {
    std::uint32_t colour;  // 0xRRGGBB
    int delay;             // hundredths of a second; -1 stores none
};

inline CString SaveGif(const std::string& name, const std::vector<GifPixel>& frames) {
    GifFile file{1, 1, {}, -1, {}, true};
    for (const GifPixel& frame : frames) {
        GifImage& image = file.images.emplace_back(SolidGifImage(0, 0, 1, 1, 0));
        image.palette = {frame.colour};
        image.delay = frame.delay;
    }
    const Bytes bytes = Gif(file);
    return SaveBytes(name + ".gif", std::string(bytes.begin(), bytes.end()));
}

constexpr std::uint32_t kNormal = 0xFF101010;
constexpr std::uint32_t kOver = 0xFF00C000;
constexpr std::uint32_t kPressed = 0xFF0000C0;
constexpr std::uint32_t kActive = 0xFFC0C000;
constexpr std::uint32_t kDisabled = 0xFF808080;

}  // namespace kit
