// Animated pictures as an input describes them, and what their frames show.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace fuzz {

using Bytes = std::vector<std::uint8_t>;
using Screen = std::vector<std::uint32_t>;

class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

    bool IsEmpty() const { return left_ == 0; }
    unsigned Byte() {
        if (left_ == 0) return 0;
        --left_;
        return *data_++;
    }
    unsigned Word() {
        const unsigned low = Byte();
        return low | Byte() << 8;
    }

  private:
    const std::uint8_t* data_;
    std::size_t left_;
};

// Compresses as the format wants it, except where `style` has the writer clear its table early, late, at
// first not at all, or leave out the end.
class CodeWriter {
  public:
    enum Style : unsigned { NoFirstClear = 1, NoEnd = 2, EarlyClears = 4, LateClears = 8 };

    CodeWriter(unsigned bits, unsigned style) : clear_(1U << bits), style_(style) { Forget(); }

    Bytes Write(const Bytes& pixels) {
        if ((style_ & NoFirstClear) == 0) Clear();
        std::optional<unsigned> run;
        unsigned sinceClear = 0;
        for (const std::uint8_t pixel : pixels) {
            if (!run) {
                run = pixel;
                continue;
            }
            const auto longer = table_.find({*run, pixel});
            if (longer != table_.end()) {
                run = longer->second;
                continue;
            }
            Emit(*run, {*run, pixel});
            run = pixel;
            const bool isFull = next_ == kCodes && (style_ & LateClears) == 0;
            if (isFull || ((style_ & EarlyClears) != 0 && ++sinceClear % 5 == 0)) {
                Clear();
            }
        }
        if (run) Emit(*run, {kCodes, 0});
        if ((style_ & NoEnd) == 0) Put(clear_ + 1);
        if (held_ > 0) out_.push_back(static_cast<std::uint8_t>(bits_));
        return std::move(out_);
    }

  private:
    static constexpr unsigned kCodes = 4096;

    void Forget() {
        table_.clear();
        next_ = clear_ + 2;
        for (width_ = 2; (1U << width_) <= clear_; ++width_) {
        }
    }
    void Clear() {
        Put(clear_);
        Forget();
    }
    void Put(unsigned code) {
        bits_ |= code << held_;
        for (held_ += width_; held_ >= 8; held_ -= 8, bits_ >>= 8)
            out_.push_back(static_cast<std::uint8_t>(bits_));
    }
    void Emit(unsigned code, std::pair<unsigned, std::uint8_t> longer) {
        Put(code);
        if (next_ == kCodes) return;
        table_[longer] = next_;
        if (next_++ == 1U << width_ && width_ < 12) ++width_;
    }

    const unsigned clear_;
    const unsigned style_;
    std::map<std::pair<unsigned, std::uint8_t>, unsigned> table_;
    unsigned next_ = 0;
    unsigned width_ = 0;
    unsigned bits_ = 0;
    unsigned held_ = 0;
    Bytes out_;
};

// What was written; `frames` and `delays` hold only while `isSound`.
struct Animation {
    Bytes bytes;
    bool isSound = true;
    unsigned width = 0;
    unsigned height = 0;
    std::vector<Screen> frames;
    std::vector<std::uint32_t> delays;
    bool hasDelays = false;
};

class GifWriter {
  public:
    explicit GifWriter(Input& input) : input_(input) {}

    Animation Write() {
        const unsigned kinds = input_.Byte();
        Text((kinds & 1) != 0 ? "GIF87a" : "GIF89a");
        made_.width = input_.Byte() % 72;
        made_.height = input_.Byte() % 72;
        screenPlace_ = {0, 0, made_.width, made_.height};
        Word(made_.width);
        Word(made_.height);
        commonColours_ = Colours(kinds >> 1 & 15);
        Byte(kinds >> 4);  // a background, which nobody shows
        Byte(0);
        PutColours(commonColours_);
        for (unsigned count = 1 + input_.Byte() % 12; count > 0; --count)
            Frame();
        if ((kinds & 0x20) == 0) Byte(0x3B);
        if ((kinds & 0x40) != 0) Text("behind the end");
        if ((kinds & 0x80) != 0) Damage();
        return std::move(made_);
    }

  private:
    struct Control {
        int transparent = -1;
        unsigned disposal = 0;
        std::uint32_t delay = 0;
    };
    static constexpr unsigned kMostSide = 256;  // of a screen that is worth following
    struct Place {
        unsigned left, top, width, height;
    };

    void Byte(unsigned value) { made_.bytes.push_back(static_cast<std::uint8_t>(value)); }
    void Word(unsigned value) {
        Byte(value & 0xFF);
        Byte(value >> 8);
    }
    void Text(std::string_view text) { made_.bytes.insert(made_.bytes.end(), text.begin(), text.end()); }

    // The bits of a table's size follow its flag; no table below 8.
    std::size_t Colours(unsigned kind) {
        Byte(kind < 8 ? 0 : 0x80 | (kind & 7));
        return kind < 8 ? 0 : std::size_t{2} << (kind & 7);
    }
    static std::uint32_t ColourAt(std::size_t index) {
        return 0xFF000000U | (static_cast<std::uint32_t>(index + 1) * 0x9E3779U & 0xFFFFFFU);
    }
    void PutColours(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            Byte(ColourAt(i) >> 16 & 0xFF);
            Byte(ColourAt(i) >> 8 & 0xFF);
            Byte(ColourAt(i) & 0xFF);
        }
    }

    void Extension(unsigned kind) {
        switch (kind) {
            case 1:
                return Text(std::string_view("\x21\xFE\x03yes\x02no\0", 10));
            case 2:  // plain text takes the control before it
                control_ = Control();
                controlIsStored_ = false;
                return Text(std::string_view("\x21\x01\x0C\0\0\0\0\1\0\1\0\1\1\0\1\x01x\0", 18));
            case 3:
                return Text(std::string_view("\x21\xFF\x0BNETSCAPE2.0\x03\x01\x07\0\0", 19));
            case 4:
                return Text(std::string_view("\x21\x77\x01\x2C\0", 5));
            case 5:
                return Text(std::string_view("\0\0", 2));
            case 6:
                return Text(std::string_view("\x21\xF9\0", 3));
            case 7:
                return Text(std::string_view("\x21\xFF\0", 3));
            default:
                return;
        }
    }
    void PutControl() {
        const unsigned kind = input_.Byte();
        control_.disposal = kind >> 1 & 7;
        control_.delay = (kind & 0x40) != 0 ? input_.Word() : kind >> 4 & 3;
        const unsigned transparent = input_.Byte();
        control_.transparent = (kind & 1) != 0 ? static_cast<int>(transparent) : -1;
        controlIsStored_ = true;
        Text("\x21\xF9\x04");
        Byte(control_.disposal << 2 | (kind & 1));
        Word(control_.delay);
        Byte(transparent);
        Byte(0);
    }

    void Frame() {
        const unsigned between = input_.Byte();
        Extension(between & 7);
        if ((between & 0x80) != 0) PutControl();
        Extension(between >> 3 & 7);
        const unsigned kind = input_.Byte();
        const Place place = TakePlace(kind);
        Byte(0x2C);
        for (const unsigned value : {place.left, place.top, place.width, place.height})
            Word(value);
        const bool interlaced = (kind & 4) != 0;
        const std::size_t own = Colours((kind & 8) != 0 ? 8 | kind >> 4 : 0);
        made_.bytes.back() |= interlaced ? 0x40 : 0;
        PutColours(own);
        const std::size_t colours = own != 0 ? own : commonColours_;

        const unsigned bits = input_.Byte();
        Byte(bits % 16);
        const Bytes indices = Indices(place, bits % 16);
        PutCodes(Passes(indices, place, interlaced), bits % 16, bits >> 4);
        if (place.width == 0 || place.height == 0 || colours == 0) made_.isSound = false;
        if (made_.isSound) Show(place, indices, colours);
        control_ = Control();
        controlIsStored_ = false;
    }
    Place TakePlace(unsigned kind) {
        if ((kind & 1) != 0) return screenPlace_;
        const unsigned far = (kind & 2) != 0 && input_.Byte() == 0xFF ? 60'000 : 0;
        const unsigned left = input_.Byte() % 80;
        const unsigned top = input_.Byte() % 80;
        const unsigned width = input_.Byte() % 80;
        return {left + far, top, width, input_.Byte() % 80};
    }
    Bytes Indices(const Place& place, unsigned bits) {
        const unsigned pattern = input_.Byte();
        std::uint32_t random = pattern * 2654435761U;
        Bytes indices(std::size_t{place.width} * place.height);
        for (std::size_t i = 0; i < indices.size(); ++i) {
            random = random * 1664525U + 1013904223U;
            const std::size_t value = (pattern & 3) == 0   ? pattern >> 2
                                      : (pattern & 3) == 1 ? i / ((pattern >> 2) + 1)
                                      : (pattern & 3) == 2 ? (i & pattern) != 0
                                                           : random >> 24;
            indices[i] = static_cast<std::uint8_t>(value & ((1U << std::min(bits, 8U)) - 1));
        }
        return indices;
    }
    static Bytes Passes(const Bytes& indices, const Place& place, bool interlaced) {
        if (!interlaced) return indices;
        Bytes rows;
        for (const auto& [first, step] : {std::pair{0U, 8U}, {4U, 8U}, {2U, 4U}, {1U, 2U}})
            for (unsigned y = first; y < place.height; y += step) {
                const auto row = indices.begin() + static_cast<std::ptrdiff_t>(y) * place.width;
                rows.insert(rows.end(), row, row + place.width);
            }
        return rows;
    }
    void PutCodes(const Bytes& pixels, unsigned bits, unsigned style) {
        Bytes codes;
        if (bits >= 1 && bits <= 8) {
            codes = CodeWriter(bits, style).Write(pixels);
        } else {
            made_.isSound = false;
            codes = pixels;
        }
        for (std::size_t at = 0; at < codes.size();) {
            const std::size_t size = std::min<std::size_t>(255, codes.size() - at);
            Byte(static_cast<unsigned>(size));
            for (const std::size_t end = at + size; at < end; ++at)
                Byte(codes[at]);
        }
        Byte(0);
    }

    void Show(const Place& place, const Bytes& indices, std::size_t colours) {
        if (made_.frames.empty()) {
            if (made_.width == 0 || made_.height == 0) {
                made_.width = place.left + place.width;
                made_.height = place.top + place.height;
            }
            if (std::max(made_.width, made_.height) > kMostSide) {
                made_.isSound = false;
                return;
            }
            screen_.resize(std::size_t{made_.width} * made_.height);
        }
        made_.hasDelays = made_.hasDelays || controlIsStored_;
        made_.delays.push_back(control_.delay);
        const Screen before = screen_;
        const auto eachPixel = [&](const auto& set) {
            for (unsigned y = 0; y < place.height && place.top + y < made_.height; ++y)
                for (unsigned x = 0; x < place.width && place.left + x < made_.width; ++x)
                    set(screen_[std::size_t{place.top + y} * made_.width + place.left + x],
                        indices[std::size_t{y} * place.width + x]);
        };
        eachPixel([&](std::uint32_t& pixel, std::uint8_t index) {
            if (index != control_.transparent) pixel = index < colours ? ColourAt(index) : 0xFF000000U;
        });
        made_.frames.push_back(screen_);
        if (control_.disposal == 2) eachPixel([](std::uint32_t& pixel, std::uint8_t) { pixel = 0; });
        if (control_.disposal == 3) screen_ = before;
    }

    void Damage() {
        const unsigned kind = input_.Byte();
        for (unsigned flips = kind & 7; flips > 0; --flips) {
            const std::size_t at = input_.Word() % made_.bytes.size();
            made_.bytes[at] ^= static_cast<std::uint8_t>(input_.Byte());
        }
        if ((kind & 8) != 0) made_.bytes.resize(input_.Word() % (made_.bytes.size() + 1));
        if (kind != 0) made_.isSound = false;
    }

    Input& input_;
    Animation made_;
    Place screenPlace_{};  // as written, which may be nothing
    std::size_t commonColours_ = 0;
    Control control_;
    bool controlIsStored_ = false;
    Screen screen_;
};

}  // namespace fuzz
