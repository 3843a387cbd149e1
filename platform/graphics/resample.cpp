#include "platform/graphics/resample.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "platform/graphics/counters.h"
#include "platform/graphics/row_scales.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace platform {
namespace {

// What every pixel along one axis is made of: pairs [begin[i], begin[i + 1]).
struct Axis {
    std::vector<TapPair> pairs;
    std::vector<std::uint32_t> begin{0};
    bool neighbours = false;  // one pair for each, the second right behind the first

    int Count() const { return static_cast<int>(begin.size()) - 1; }
    void Close() { begin.push_back(static_cast<std::uint32_t>(pairs.size())); }
};

struct AxisRequest {
    double start, size;  // the source rectangle along this axis
    int pictureSize;
    int resultSize;
    int from, to;  // of the result
    Filter filter;
    Tiling tiling;
};

bool Averages(Filter filter, double scale) {
    return (filter == Filter::Smooth && scale > 1) || (filter == Filter::Bilinear && scale >= 2);
}

// After so many pixels the tiles of a picture come round.
int PeriodOf(Tiling tiling, int pictureSize) {
    return tiling == Tiling::Mirror ? 2 * pictureSize : pictureSize;
}

// Weights for the last pixel of an axis, from the lengths of the pixels that it is made of. Rounding the
// running sum, not each length, keeps the total exact.
class Shares {
  public:
    Shares(Axis& axis, double total) : axis_(axis), total_(total) {}

    void Add(int pixel, double length) {
        lengths_ += length;
        AddUpTo(static_cast<int>(std::lround(lengths_ / total_ * kWeightSum)), pixel);
    }
    void AddRest(int pixel) { AddUpTo(kWeightSum, pixel); }

  private:
    void AddUpTo(int sum, int pixel) {
        const int weight = std::clamp(sum, done_, kWeightSum) - done_;
        done_ += weight;
        if (weight == 0) return;
        if (open_) {
            axis_.pairs.back().second = pixel;
            axis_.pairs.back().secondWeight = static_cast<std::int16_t>(weight);
        } else {
            axis_.pairs.push_back({pixel, pixel, static_cast<std::int16_t>(weight), 0});
        }
        open_ = !open_;
    }

    Axis& axis_;
    const double total_;
    double lengths_ = 0;
    int done_ = 0;
    bool open_ = false;
};

class AxisBuilder {
  public:
    explicit AxisBuilder(const AxisRequest& request) : request_(request) {
        scale_ = request.size / request.resultSize;
        low_ = request.start;
        high_ = request.start + request.size;
        firstPixel_ = static_cast<int>(std::floor(low_));
        lastPixel_ = static_cast<int>(std::ceil(high_)) - 1;
        if (request.tiling == Tiling::None) {
            low_ = std::max(low_, 0.0);
            high_ = std::min(high_, static_cast<double>(request.pictureSize));
            firstPixel_ = std::clamp(firstPixel_, 0, request.pictureSize - 1);
            lastPixel_ = std::min(lastPixel_, request.pictureSize - 1);
        }
        lastPixel_ = std::max(firstPixel_, lastPixel_);
    }

    Axis Build() {
        const bool average = Averages(request_.filter, scale_);
        axis_.begin.reserve(static_cast<std::size_t>(request_.to - request_.from) + 1);
        for (int i = request_.from; i < request_.to; ++i) {
            if (request_.filter == Filter::Nearest)
                AddNearest(i);
            else if (average)
                AddAverage(i);
            else
                AddBilinear(i);
            axis_.Close();
        }
        PairNeighbours();
        return std::move(axis_);
    }

  private:
    // What reads one pixel twice, at an edge, may as well read the one beside it with weight 0.
    void PairNeighbours() {
        axis_.neighbours = axis_.pairs.size() == axis_.begin.size() - 1;
        for (TapPair& pair : axis_.pairs) {
            if (pair.first == pair.second && request_.pictureSize > 1) {
                const bool isLast = pair.first == request_.pictureSize - 1;
                pair.first -= isLast;
                pair.second = pair.first + 1;
                const int weight = pair.firstWeight + pair.secondWeight;
                pair.firstWeight = static_cast<std::int16_t>(isLast ? 0 : weight);
                pair.secondWeight = static_cast<std::int16_t>(isLast ? weight : 0);
            }
            axis_.neighbours = axis_.neighbours && pair.second == pair.first + 1;
        }
    }

    int Inside(double position) const {
        return static_cast<int>(std::clamp(std::floor(position), 1.0 * firstPixel_, 1.0 * lastPixel_));
    }
    int Beside(int pixel) const {
        if (request_.tiling == Tiling::Repeat) {
            if (pixel < firstPixel_) return lastPixel_;
            if (pixel > lastPixel_) return firstPixel_;
        }
        return std::clamp(pixel, firstPixel_, lastPixel_);
    }

    // The pixel of the picture that shows at a place among its tiles.
    int InPicture(int pixel) const {
        if (request_.tiling == Tiling::None) return pixel;
        const int size = request_.pictureSize;
        const int period = PeriodOf(request_.tiling, size);
        const int offset = ((pixel % period) + period) % period;
        return offset < size ? offset : period - 1 - offset;
    }

    void AddNearest(int i) {
        const int pixel = InPicture(Inside(request_.start + (i + 0.5) * scale_));
        axis_.pairs.push_back({pixel, pixel, kWeightSum, 0});
    }

    void AddBilinear(int i) {
        const double position =
            std::clamp(request_.start + (i + 0.5) * scale_ - 0.5, firstPixel_ - 1.0, lastPixel_ + 1.0);
        const double whole = std::floor(position);
        const int weight = static_cast<int>(std::lround((position - whole) * kWeightSum));
        const int pixel = static_cast<int>(whole);
        axis_.pairs.push_back({InPicture(Beside(pixel)), InPicture(Beside(pixel + 1)),
                               static_cast<std::int16_t>(kWeightSum - weight),
                               static_cast<std::int16_t>(weight)});
    }

    // Every pixel by the length of it that falls between the two ends.
    void AddAverage(int i) {
        const double begin = std::clamp(request_.start + i * scale_, low_, high_);
        const double end = std::clamp(request_.start + (i + 1) * scale_, low_, high_);
        const double length = end - begin;
        if (!(length > 0)) {
            AddNearest(i);
            return;
        }
        Shares shares(axis_, length);
        const int period = PeriodOf(request_.tiling, request_.pictureSize);
        if (request_.tiling != Tiling::None && length > period) {
            AddTiles(begin, length, shares);
        } else {
            const int first = Inside(begin);
            const int last = std::max(first, std::min(lastPixel_, static_cast<int>(std::ceil(end)) - 1));
            for (int pixel = first; pixel < last; ++pixel)
                shares.Add(InPicture(pixel), std::min(pixel + 1.0, end) - std::max(1.0 * pixel, begin));
            shares.AddRest(InPicture(last));
        }
    }

    // More than a whole round of tiles: every pixel of the picture has its share of the whole rounds, and
    // some have another one of what is left.
    void AddTiles(double begin, double length, Shares& shares) {
        const int size = request_.pictureSize;
        const int period = PeriodOf(request_.tiling, size);
        const double rounds = std::floor(length / period);
        const double end = begin + (length - rounds * period);
        std::vector<double> lengths(static_cast<std::size_t>(size), rounds * period / size);
        for (int pixel = static_cast<int>(std::floor(begin)); pixel < end; ++pixel)
            lengths[static_cast<std::size_t>(InPicture(pixel))] +=
                std::min(pixel + 1.0, end) - std::max(1.0 * pixel, begin);
        for (int pixel = 0; pixel < size - 1; ++pixel)
            shares.Add(pixel, lengths[static_cast<std::size_t>(pixel)]);
        shares.AddRest(size - 1);
    }

    AxisRequest request_;
    double scale_;
    double low_, high_;           // the source rectangle, cut to the picture unless that tiles
    int firstPixel_, lastPixel_;  // that may be read, counted on over the tiles
    Axis axis_;
};

// One row, scaled across: four channels a pixel, in memory order.
using MiddleRow = std::vector<std::int16_t>;

void ScaleAcross(const std::uint32_t* row, const Axis& axis, std::int16_t* to) {
    const int count = axis.Count();
    const RowScales* const fast = axis.neighbours ? Avx2RowScales() : nullptr;
    const int done =
        fast ? static_cast<int>(fast->across(to, row, axis.pairs.data(), axis.begin.size() - 1)) : 0;
    to += std::ptrdiff_t{done} * 4;
    for (int i = done; i < count; ++i, to += 4) {
        const TapPair* pair = axis.pairs.data() + axis.begin[static_cast<std::size_t>(i)];
        const TapPair* const end = axis.pairs.data() + axis.begin[static_cast<std::size_t>(i) + 1];
#if defined(__SSE2__)
        __m128i sum = _mm_set1_epi32(1 << (kAcrossShift - 1));
        for (; pair != end; ++pair) {
            const __m128i first = _mm_cvtsi32_si128(static_cast<int>(row[pair->first]));
            const __m128i second = _mm_cvtsi32_si128(static_cast<int>(row[pair->second]));
            const __m128i channels = _mm_unpacklo_epi8(_mm_unpacklo_epi8(first, second), _mm_setzero_si128());
            const __m128i weights = _mm_set1_epi32(pair->firstWeight | (pair->secondWeight << 16));
            sum = _mm_add_epi32(sum, _mm_madd_epi16(channels, weights));
        }
        sum = _mm_srli_epi32(sum, kAcrossShift);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packs_epi32(sum, sum));
#else
        std::array<int, 4> sum;
        sum.fill(1 << (kAcrossShift - 1));
        for (; pair != end; ++pair)
            for (int channel = 0; channel < 4; ++channel)
                sum[static_cast<std::size_t>(channel)] +=
                    static_cast<int>((row[pair->first] >> (8 * channel)) & 0xFF) * pair->firstWeight +
                    static_cast<int>((row[pair->second] >> (8 * channel)) & 0xFF) * pair->secondWeight;
        for (int channel = 0; channel < 4; ++channel)
            to[channel] = static_cast<std::int16_t>(sum[static_cast<std::size_t>(channel)] >> kAcrossShift);
#endif
    }
}

// sums += first * firstWeight + second * secondWeight.
void AddDown(const MiddleRow& first, const MiddleRow& second, const TapPair& pair,
             std::vector<std::int32_t>& sums) {
    for (std::size_t i = 0; i < sums.size(); ++i)
        sums[i] += first[i] * pair.firstWeight + second[i] * pair.secondWeight;
}

void Finish(const std::vector<std::int32_t>& sums, std::uint32_t* to) {
    for (std::size_t i = 0; i < sums.size(); i += 4)
        to[i / 4] = static_cast<std::uint32_t>(sums[i] >> kDownShift) |
                    static_cast<std::uint32_t>(sums[i + 1] >> kDownShift) << 8 |
                    static_cast<std::uint32_t>(sums[i + 2] >> kDownShift) << 16 |
                    static_cast<std::uint32_t>(sums[i + 3] >> kDownShift) << 24;
}

// The common case, one pair of rows, without a detour through sums.
void BlendDown(const MiddleRow& first, const MiddleRow& second, const TapPair& pair, std::uint32_t* to,
               int count) {
    const RowScales* const fast = Avx2RowScales();
    int i = fast ? static_cast<int>(fast->down(to, first.data(), second.data(), pair, first.size() / 4)) : 0;
#if defined(__SSE2__)
    const __m128i weights = _mm_set1_epi32(pair.firstWeight | (pair.secondWeight << 16));
    const __m128i half = _mm_set1_epi32(1 << (kDownShift - 1));
    const auto load = [](const MiddleRow& row, int pixel) {
        return _mm_loadu_si128(
            reinterpret_cast<const __m128i*>(row.data() + static_cast<std::size_t>(pixel) * 4));
    };
    const auto blend = [&](__m128i interleaved) {
        return _mm_srli_epi32(_mm_add_epi32(_mm_madd_epi16(interleaved, weights), half), kDownShift);
    };
    for (; i + 2 <= count; i += 2) {
        const __m128i a = load(first, i);
        const __m128i b = load(second, i);
        const __m128i both =
            _mm_packs_epi32(blend(_mm_unpacklo_epi16(a, b)), blend(_mm_unpackhi_epi16(a, b)));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to + i), _mm_packus_epi16(both, both));
    }
#endif
    for (; i < count; ++i) {
        std::uint32_t pixel = 0;
        for (int channel = 0; channel < 4; ++channel) {
            const std::size_t at = static_cast<std::size_t>(i) * 4 + static_cast<std::size_t>(channel);
            const int sum =
                first[at] * pair.firstWeight + second[at] * pair.secondWeight + (1 << (kDownShift - 1));
            pixel |= static_cast<std::uint32_t>(sum >> kDownShift) << (8 * channel);
        }
        to[i] = pixel;
    }
}

// Rows scaled across, the last few of them: neighbours in the result share source rows.
class MiddleRows {
  public:
    MiddleRows(const Surface& picture, const Axis& across) : picture_(picture), across_(across) {
        for (Slot& slot : slots_)
            slot.row.resize(static_cast<std::size_t>(across.Count()) * 4);
    }
    // Valid until the call after next.
    const MiddleRow& Get(int y) {
        Slot* oldest = slots_.data();
        for (Slot& slot : slots_) {
            if (slot.y == y) {
                slot.used = ++clock_;
                return slot.row;
            }
            if (slot.used < oldest->used) oldest = &slot;
        }
        ScaleAcross(picture_.Row(y), across_, oldest->row.data());
        oldest->y = y;
        oldest->used = ++clock_;
        return oldest->row;
    }

  private:
    struct Slot {
        MiddleRow row;
        int y = -1;
        std::uint64_t used = 0;
    };
    const Surface& picture_;
    const Axis& across_;
    std::array<Slot, 3> slots_;
    std::uint64_t clock_ = 0;
};

AxisRequest RequestAcross(const Scaling& scaling, int pictureSize) {
    return {scaling.sourceX, scaling.sourceWidth, pictureSize,    scaling.width,
            scaling.left,    scaling.right,       scaling.filter, scaling.tilingX};
}

AxisRequest RequestDown(const Scaling& scaling, int pictureSize) {
    return {scaling.sourceY, scaling.sourceHeight, pictureSize,    scaling.height,
            scaling.top,     scaling.bottom,       scaling.filter, scaling.tilingY};
}

void Scale(Surface& target, int left, int top, const Surface& picture, const Scaling& scaling) {
    const Axis across = AxisBuilder(RequestAcross(scaling, picture.Width())).Build();
    const Axis down = AxisBuilder(RequestDown(scaling, picture.Height())).Build();
    MiddleRows rows(picture, across);
    std::vector<std::int32_t> sums(static_cast<std::size_t>(across.Count()) * 4);
    for (int y = 0; y < down.Count(); ++y) {
        const std::uint32_t begin = down.begin[static_cast<std::size_t>(y)];
        const std::uint32_t end = down.begin[static_cast<std::size_t>(y) + 1];
        if (end - begin == 1) {
            const TapPair& pair = down.pairs[begin];
            const MiddleRow& first = rows.Get(pair.first);
            BlendDown(first, rows.Get(pair.second), pair, target.Row(top + y) + left, across.Count());
            continue;
        }
        std::fill(sums.begin(), sums.end(), 1 << (kDownShift - 1));
        for (std::uint32_t i = begin; i < end; ++i) {
            const TapPair& pair = down.pairs[i];
            const MiddleRow& first = rows.Get(pair.first);
            AddDown(first, rows.Get(pair.second), pair, sums);
        }
        Finish(sums, target.Row(top + y) + left);
    }
}

// How many pixels of the picture make up the pixels of a result along an axis, each counted as often as it is
// read.
double ReadsOf(const AxisRequest& request) {
    const double scale = request.size / request.resultSize;
    const double most = request.tiling == Tiling::None ? scale : 1.0 * request.pictureSize;
    return (request.to - request.from) * (Averages(request.filter, scale) ? std::min(scale, most) + 2 : 2);
}

// The largest size to which a picture has to be shrunk, so that scaling its tiles takes neither more than
// about half a second, beyond what the sizes of picture and result take, nor much memory. A picture that does
// not tile is read about once and keeps its size.
CSize AffordableSize(CSize size, Scaling scaling) {
    constexpr double kMostReads = 1 << 28;
    constexpr double kMostReadsOfAxis = 1 << 22;
    if (scaling.tilingX == Tiling::None && scaling.tilingY == Tiling::None) return size;
    const double columns = scaling.right - scaling.left;
    const double rows = scaling.bottom - scaling.top;
    const double mostReads = std::max(kMostReads, 16 * (columns * rows + 1.0 * size.cx * size.cy));
    for (;;) {
        const double across = ReadsOf(RequestAcross(scaling, size.cx));
        const double down = ReadsOf(RequestDown(scaling, size.cy));
        const bool isAffordable =
            std::max(across, down) <= kMostReadsOfAxis && down * (across + columns) <= mostReads;
        if (isAffordable || (size.cx == 1 && size.cy == 1)) return size;
        const auto halve = [](LONG& pixels, double& sourceSize) {
            if (pixels == 1) return;
            sourceSize *= 0.5;
            pixels /= 2;
        };
        halve(size.cx, scaling.sourceWidth);
        halve(size.cy, scaling.sourceHeight);
    }
}

// A whole picture to another size.
Scaling Shrinking(CSize from, CSize to) {
    Scaling scaling;
    scaling.sourceWidth = from.cx;
    scaling.sourceHeight = from.cy;
    scaling.width = scaling.right = to.cx;
    scaling.height = scaling.bottom = to.cy;
    scaling.filter = Filter::Smooth;
    return scaling;
}

}  // namespace

Span CoveredBy(double sourceStart, double sourceSize, int pictureSize, int size) {
    const double scale = sourceSize / size;
    const auto place = [&](double position) {
        return static_cast<int>(
            std::clamp(std::ceil((position - sourceStart) / scale - 0.5), 0.0, static_cast<double>(size)));
    };
    return {place(0), place(pictureSize)};
}

std::shared_ptr<Surface> Resample(const Surface& picture, const Scaling& scaling) {
    std::shared_ptr<Surface> result =
        Surface::CreateUnset(scaling.right - scaling.left, scaling.bottom - scaling.top);
    if (!result || !ResampleInto(*result, 0, 0, picture, scaling)) return {};
    return result;
}

bool ResampleInto(Surface& target, int left, int top, const Surface& picture, const Scaling& scaling) {
    ++Gdiplus::Counters().scaledImages;
    const CSize size(picture.Width(), picture.Height());
    const CSize affordable = AffordableSize(size, scaling);
    if (affordable == size) {
        Scale(target, left, top, picture, scaling);
        return true;
    }
    const std::shared_ptr<Surface> smaller = Surface::CreateUnset(affordable.cx, affordable.cy);
    if (!smaller) return false;
    Scale(*smaller, 0, 0, picture, Shrinking(size, affordable));
    Scaling rest = scaling;
    const double byX = 1.0 * affordable.cx / size.cx;
    const double byY = 1.0 * affordable.cy / size.cy;
    rest.sourceX *= byX;
    rest.sourceWidth *= byX;
    rest.sourceY *= byY;
    rest.sourceHeight *= byY;
    Scale(target, left, top, *smaller, rest);
    return true;
}

}  // namespace platform
