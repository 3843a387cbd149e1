#include "examples/gallery/skin/writers.h"

#include <cstddef>
#include <cstdio>  // jpeglib.h needs it before
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <vector>

#include <jpeglib.h>

namespace skin {
namespace {

using Bytes = std::vector<unsigned char>;

void Append(Bytes& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<unsigned char>(value >> (8 * i) & 255));
}
void Append16(Bytes& bytes, std::size_t value) {
    Append(bytes, static_cast<std::uint32_t>(value), 2);
}
void Append32(Bytes& bytes, std::size_t value) {
    Append(bytes, static_cast<std::uint32_t>(value), 4);
}

void WriteAll(const Bytes& bytes, const std::filesystem::path& file) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) throw std::runtime_error("cannot write " + file.string());
}

Bytes PngOf(const Canvas& picture) {
    Bytes bytes;
    const auto append = [](void* target, const unsigned char* data, unsigned length) {
        static_cast<Bytes*>(target)->insert(static_cast<Bytes*>(target)->end(), data, data + length);
        return CAIRO_STATUS_SUCCESS;
    };
    cairo_surface_t* surface = cairo_get_target(picture.Cairo());
    if (cairo_surface_write_to_png_stream(surface, append, &bytes) != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error("cannot encode a PNG");
    }
    return bytes;
}

// The header that bitmap files and icon entries share.
void AppendBitmapHeader(Bytes& bytes, int width, int height, std::size_t bits) {
    Append32(bytes, 40);
    Append32(bytes, static_cast<std::size_t>(width));
    Append32(bytes, static_cast<std::size_t>(height));
    Append16(bytes, 1);
    Append16(bytes, bits);
    bytes.insert(bytes.end(), 24, 0);  // uncompressed, no palette, no resolution
}

// 32-bit straight alpha, bottom-up, followed by the one-bit mask that old readers use.
Bytes IconBitmapOf(const Canvas& picture) {
    Bytes bytes;
    AppendBitmapHeader(bytes, picture.PixelWidth(), picture.PixelHeight() * 2, 32);
    Bytes mask;
    for (int y = picture.PixelHeight() - 1; y >= 0; --y) {
        Bytes bits(static_cast<std::size_t>((picture.PixelWidth() + 31) / 32) * 4);
        std::size_t x = 0;
        for (const std::uint32_t pixel : picture.Row(y)) {
            const std::uint32_t alpha = pixel >> 24;
            for (int shift = 0; shift < 24; shift += 8) {
                const std::uint32_t channel = pixel >> shift & 255;
                Append(bytes, alpha == 0 ? 0 : (channel * 255 + alpha / 2) / alpha, 1);
            }
            Append(bytes, alpha, 1);
            if (alpha < 128) bits[x / 8] = static_cast<unsigned char>(bits[x / 8] | 0x80U >> (x % 8));
            ++x;
        }
        mask.insert(mask.end(), bits.begin(), bits.end());
    }
    bytes.insert(bytes.end(), mask.begin(), mask.end());
    return bytes;
}

struct JpegFailure {
    [[noreturn]] static void Throw(j_common_ptr state) {
        char text[JMSG_LENGTH_MAX];
        state->err->format_message(state, text);
        throw std::runtime_error(text);
    }
};

// Owns the compressor and the memory that it writes to.
class JpegEncoder {
  public:
    JpegEncoder() {
        state_.err = jpeg_std_error(&errors_);
        errors_.error_exit = JpegFailure::Throw;
        jpeg_create_compress(&state_);
        jpeg_mem_dest(&state_, &memory_, &size_);
    }
    ~JpegEncoder() {
        jpeg_destroy_compress(&state_);
        std::free(memory_);  // allocated by jpeg_mem_dest, which documents free()
    }
    JpegEncoder(const JpegEncoder&) = delete;
    JpegEncoder& operator=(const JpegEncoder&) = delete;

    Bytes Encode(const Canvas& picture, int quality) {
        state_.image_width = static_cast<JDIMENSION>(picture.PixelWidth());
        state_.image_height = static_cast<JDIMENSION>(picture.PixelHeight());
        state_.input_components = 3;
        state_.in_color_space = JCS_RGB;
        jpeg_set_defaults(&state_);
        jpeg_set_quality(&state_, quality, TRUE);
        jpeg_start_compress(&state_, TRUE);
        Bytes line;
        for (int y = 0; y < picture.PixelHeight(); ++y) {
            line.clear();
            for (const std::uint32_t pixel : picture.Row(y)) {
                for (int shift = 16; shift >= 0; shift -= 8)
                    Append(line, pixel >> shift, 1);
            }
            JSAMPROW row = line.data();
            jpeg_write_scanlines(&state_, &row, 1);
        }
        jpeg_finish_compress(&state_);
        return {memory_, memory_ + size_};
    }

  private:
    jpeg_compress_struct state_{};
    jpeg_error_mgr errors_{};
    unsigned char* memory_ = nullptr;
    unsigned long size_ = 0;
};

}  // namespace

void WritePng(const Canvas& picture, const std::filesystem::path& file) {
    WriteAll(PngOf(picture), file);
}

void WriteJpeg(const Canvas& picture, const std::filesystem::path& file, int quality) {
    JpegEncoder encoder;
    WriteAll(encoder.Encode(picture, quality), file);
}

void WriteBmp(const Canvas& picture, const std::filesystem::path& file) {
    constexpr std::size_t kHeaders = 14 + 40;
    const std::size_t padding = static_cast<std::size_t>(picture.PixelWidth()) % 4;  // rows end on four bytes
    const std::size_t line = static_cast<std::size_t>(picture.PixelWidth()) * 3 + padding;
    Bytes bytes{'B', 'M'};
    Append32(bytes, kHeaders + line * static_cast<std::size_t>(picture.PixelHeight()));
    Append32(bytes, 0);
    Append32(bytes, kHeaders);
    AppendBitmapHeader(bytes, picture.PixelWidth(), picture.PixelHeight(), 24);
    for (int y = picture.PixelHeight() - 1; y >= 0; --y) {
        for (const std::uint32_t pixel : picture.Row(y))
            Append(bytes, pixel, 3);
        bytes.insert(bytes.end(), padding, 0);
    }
    WriteAll(bytes, file);
}

void WriteIco(std::span<const Canvas> pictures, const std::filesystem::path& file) {
    Bytes directory;
    Bytes data;
    Append16(directory, 0);
    Append16(directory, 1);  // an icon, not a cursor
    Append16(directory, pictures.size());
    for (const Canvas& picture : pictures) {
        const Bytes entry = picture.PixelWidth() <= 48 ? IconBitmapOf(picture) : PngOf(picture);
        // One byte each; 256 is written as 0.
        Append(directory, static_cast<std::uint32_t>(picture.PixelWidth()), 1);
        Append(directory, static_cast<std::uint32_t>(picture.PixelHeight()), 1);
        Append16(directory, 0);
        Append16(directory, 1);
        Append16(directory, 32);
        Append32(directory, entry.size());
        Append32(directory, 6 + 16 * pictures.size() + data.size());
        data.insert(data.end(), entry.begin(), entry.end());
    }
    directory.insert(directory.end(), data.begin(), data.end());
    WriteAll(directory, file);
}

}  // namespace skin
