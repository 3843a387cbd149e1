#include "platform/graphics/row_blends.h"

#if defined(__AVX2__)

#include "platform/graphics/row_blends_vector.h"

namespace platform {
namespace {

using Eight = VectorBlends<Lanes8>;
using Four = VectorBlends<Lanes4>;

void Pixels(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    std::size_t done = Eight::Pixels(to, from, count);
    done += Four::Pixels(to + done, from + done, count - done);
    kPlainRowBlends.pixels(to + done, from + done, count - done);
}

void Color(std::uint32_t* to, std::uint32_t color, std::size_t count) {
    std::size_t done = Eight::Color(to, color, count);
    done += Four::Color(to + done, color, count - done);
    kPlainRowBlends.color(to + done, color, count - done);
}

void Coverage(std::uint32_t* to, std::uint32_t color, const std::uint8_t* coverage, std::size_t count) {
    std::size_t done = Eight::Coverage(to, color, coverage, count);
    done += Four::Coverage(to + done, color, coverage + done, count - done);
    kPlainRowBlends.coverage(to + done, color, coverage + done, count - done);
}

constexpr RowBlends kBlends{&Pixels, &Color, &Coverage};

}  // namespace

const RowBlends* Avx2RowBlends() {
    return __builtin_cpu_supports("avx2") ? &kBlends : nullptr;
}

}  // namespace platform

#else

const platform::RowBlends* platform::Avx2RowBlends() {
    return nullptr;
}

#endif
