#include "platform/graphics/row_blends.h"

#if defined(__SSE2__)

#include "platform/graphics/row_blends_vector.h"

namespace platform {
namespace {

using Four = VectorBlends<Lanes4>;

void Pixels(std::uint32_t* to, const std::uint32_t* from, std::size_t count) {
    const std::size_t done = Four::Pixels(to, from, count);
    kPlainRowBlends.pixels(to + done, from + done, count - done);
}

void Color(std::uint32_t* to, std::uint32_t color, std::size_t count) {
    const std::size_t done = Four::Color(to, color, count);
    kPlainRowBlends.color(to + done, color, count - done);
}

void Coverage(std::uint32_t* to, std::uint32_t color, const std::uint8_t* coverage, std::size_t count) {
    const std::size_t done = Four::Coverage(to, color, coverage, count);
    kPlainRowBlends.coverage(to + done, color, coverage + done, count - done);
}

constexpr RowBlends kBlends{&Pixels, &Color, &Coverage};

}  // namespace

const RowBlends* Sse2RowBlends() {
    return &kBlends;
}

}  // namespace platform

#else

const platform::RowBlends* platform::Sse2RowBlends() {
    return nullptr;
}

#endif
