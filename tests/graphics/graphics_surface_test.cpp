#include "platform/graphics/surface.h"

#include <cairo.h>

#include <limits>
#include <vector>

#include "graphics/picture_kit.h"
#include "platform/graphics/pixel_memory.h"

namespace platform {
namespace {

TEST(Surface, RefusesSizesBeyondItsLimits) {
    for (const auto& [width, height] : {std::pair(1, 1), {32767, 1}, {1, 32767}, {8192, 64}})
        EXPECT_TRUE(Surface::Create(width, height)) << width << "x" << height;
    for (const auto& [width, height] : {std::pair(0, 1),
                                        {1, 0},
                                        {-1, 5},
                                        {32768, 1},
                                        {1, 32768},
                                        {16384, 16385},
                                        {32767, 32767},
                                        {std::numeric_limits<int>::min(), 1}})
        EXPECT_FALSE(Surface::Create(width, height)) << width << "x" << height;
}

TEST(Surface, ReusedMemoryComesZeroedAndWithoutTheSystem) {
    { const auto first = Surface::Create(640, 480); }
    const std::size_t before = PixelMemory::SystemAllocations();
    for (int round = 0; round < 20; ++round) {
        // A window that is being resized.
        const auto surface = Surface::Create(640 - round, 480 - round);
        for (int y = 0; y < surface->Height(); ++y)
            for (int x = 0; x < surface->Width(); ++x)
                ASSERT_EQ(0U, std::exchange(surface->Row(y)[x], 0xFFFFFFFF));
    }
    EXPECT_EQ(before, PixelMemory::SystemAllocations());
}

TEST(Surface, PoolKeepsABoundedAmount) {
    std::vector<std::shared_ptr<Surface>> many;
    for (int i = 0; i < 24; ++i)
        many.push_back(Surface::Create(1280, 800));
    many.clear();
    EXPECT_LE(PixelMemory::PooledBytes(), std::size_t{64} << 20);
    EXPECT_GE(PixelMemory::PooledBytes(), std::size_t{32} << 20);
}

TEST(Surface, RowsMayRunUpwards) {
    std::vector<std::uint32_t> memory(5 * 3);
    const auto surface = Surface::Wrap(memory.data() + 2 * 5, 4, 3, -5 * 4, nullptr);
    ASSERT_TRUE(surface);
    surface->Row(0)[1] = 0xFF0000AA;
    EXPECT_EQ(0xFF0000AA, memory[2 * 5 + 1]);

    cairo_t* const cairo = cairo_create(surface->Cairo());
    ASSERT_EQ(CAIRO_STATUS_SUCCESS, cairo_status(cairo));
    cairo_set_source_rgb(cairo, 1, 0, 0);
    cairo_rectangle(cairo, 1, 2, 3, 1);
    cairo_fill(cairo);
    cairo_destroy(cairo);
    surface->Touch();
    const std::vector<std::uint32_t> expected = {0, 0xFFFF0000, 0xFFFF0000, 0xFFFF0000, 0, 0, 0, 0,
                                                 0, 0,          0,          0xFF0000AA, 0, 0, 0};
    EXPECT_EQ(expected, memory);
}

TEST(Surface, WrapRefusesRowsThatOverlapOrAreOddlyPlaced) {
    std::uint32_t memory[16] = {};
    EXPECT_FALSE(Surface::Wrap(memory, 4, 4, 12, nullptr));
    EXPECT_FALSE(Surface::Wrap(memory, 4, 4, -12, nullptr));
    EXPECT_FALSE(Surface::Wrap(memory, 4, 2, 18, nullptr));
    EXPECT_FALSE(Surface::Wrap(nullptr, 4, 4, 16, nullptr));
    const auto keep = std::make_shared<int>(0);
    auto surface = Surface::Wrap(memory, 4, 4, 16, keep);
    ASSERT_TRUE(surface);
    EXPECT_EQ(2, keep.use_count());
    surface.reset();
    EXPECT_EQ(1, keep.use_count());
}

}  // namespace
}  // namespace platform
