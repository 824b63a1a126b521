#include "tavik/blockmatch/blockmatch.h"

#include <array>
#include <cstdint>
#include <random>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

using Plane = Bytes;
using Place = std::array<int32_t, 2>;

constexpr int32_t none = highest;
constexpr int32_t width = 90;
constexpr int32_t height = 60;

Plane noise(uint32_t seed) { return tavik_test::noise(width * height, seed); }

uint8_t at(const Plane &plane, int32_t x, int32_t y) { return plane[static_cast<std::size_t>(y * width + x)]; }

// The plane moved right and down.
Plane shifted(const Plane &plane, int32_t right, int32_t down) {
    Plane moved(plane.size());
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x)
            moved[static_cast<std::size_t>(y * width + x)] =
                at(plane, (x - right + width) % width, (y - down + height) % height);
    return moved;
}

// A single sample that differs costs where the block covers it.
TEST(BlockMatch, FixedBlocksCoverTheirSamplesAndNoOthers) {
    struct Shape {
        decltype(xcompareblock) *compare;
        int32_t left, right, above, below, reach;
    };
    for (const Shape &s : {Shape{xcompareblock16, 8, 7, 8, 7, 8}, {xcompareblock, 4, 3, 4, 4, 4}}) {
        const Plane dark(width * height, 3);
        for (int32_t y = 0; y < height; ++y) {
            for (int32_t x = 0; x < width; ++x) {
                Plane lit = dark;
                lit[static_cast<std::size_t>(y * width + x)] = 0;
                const bool inside = x >= 40 - s.left && x <= 40 + s.right && y >= 30 - s.above && y <= 30 + s.below;
                ASSERT_EQ(s.compare(40, 30, 20, 20, width, height, lit.data(), dark.data()), inside ? 3 : 0);
                ASSERT_EQ(s.compare(20, 20, 40, 30, width, height, dark.data(), lit.data()), inside ? 3 : 0);
            }
        }
        const Plane white(width * height, 255);
        const Plane black(width * height, 0);
        EXPECT_EQ(s.compare(20, 20, 30, 30, width, height, white.data(), black.data()), s.reach == 8 ? 65280 : 18360);
        EXPECT_EQ(s.compare(20, 20, 20, 20, width, height, white.data(), white.data()), 0);

        // Each coordinate of either block one too small, the smallest, the largest and one too large.
        for (std::size_t i = 0; i < 4; ++i) {
            const int32_t last = (i % 2 == 0 ? width : height) - 1 - s.reach;
            for (const int32_t value : {s.reach - 1, s.reach, last, last + 1, highest}) {
                std::array<int32_t, 4> point = {30, 30, 30, 30};
                point[i] = value;
                EXPECT_EQ(s.compare(point[0], point[1], point[2], point[3], width, height, white.data(), black.data()) <
                              none,
                          value >= s.reach && value <= last);
            }
        }
    }
    const Plane plane = noise(1);
    EXPECT_EQ(xcompareblock16(8, 8, 8, 8, 17, 17, plane.data(), plane.data()), 0);
    EXPECT_EQ(xcompareblock(4, 4, 4, 4, 9, 9, plane.data(), plane.data()), 0);
}

TEST(BlockMatch, SquaredDifferencesOfWholeAndKnownBlocks) {
    const Plane a[3] = {noise(1), noise(2), noise(3)};
    const Plane b[3] = {noise(4), noise(5), noise(6)};
    Plane mask_a(width * height, 1);
    Plane mask_b(width * height, 255);
    const auto compare = [&](int32_t x_b, int32_t y_b, int32_t size) {
        return call(CompareBlock, 30, 25, x_b, y_b, size, width - 1, height - 1, a, b);
    };
    const auto compare_known = [&](int32_t x_b, int32_t y_b, int32_t size, int32_t min_count) {
        return call(CompareBlock_mask, 30, 25, x_b, y_b, size, width - 1, height - 1, a, b, mask_a, mask_b, min_count);
    };
    const auto squares = [&](int32_t x, int32_t y) {
        int32_t sum = 0;
        for (std::size_t plane = 0; plane < 3; ++plane) {
            const int32_t difference = at(a[plane], 30 + x, 25 + y) - at(b[plane], 41 + x, 30 + y);
            sum += difference * difference;
        }
        return sum;
    };
    // All numbers of columns beside the vector blocks.
    for (int32_t size = 2; size <= 50; ++size) {
        int32_t sum = 0;
        for (int32_t y = -(size / 2); y < size / 2; ++y)
            for (int32_t x = -(size / 2); x < size / 2; ++x) sum += squares(x, y);
        ASSERT_EQ(compare(41, 30, size), sum) << size;
        ASSERT_EQ(compare_known(41, 30, size, 0), sum) << size;
    }
    struct Bounds {
        int32_t x, y, size, cost;
    };
    for (const Bounds &c : {Bounds{4, 20, 8, 0},
                            {3, 20, 8, none},
                            {85, 20, 8, 0},
                            {86, 20, 8, none},
                            {20, 4, 9, 0},
                            {20, 3, 9, none},
                            {20, 55, 9, 0},
                            {20, 56, 9, none},
                            {0, 0, 1, 0},
                            {-1, 0, 1, none},
                            {20, height, 0, none}}) {
        EXPECT_EQ(compare(c.x, c.y, c.size) == none, c.cost == none) << c.x << ' ' << c.y;
        EXPECT_EQ(compare_known(c.x, c.y, c.size, 0) == none, c.cost == none) << c.x << ' ' << c.y;
        const bool empty = c.size < 2 && c.cost == 0;
        EXPECT_TRUE(!empty || compare(c.x, c.y, c.size) == 0);
    }

    // One pixel known: its difference stands for the block's 16.
    mask_a.assign(mask_a.size(), 0);
    mask_a[24 * width + 31] = 7;
    EXPECT_EQ(compare_known(41, 30, 4, 1), 16 * squares(1, -1));
    EXPECT_EQ(compare_known(41, 30, 4, 2), none);
    mask_b[29 * width + 42] = 0;
    EXPECT_EQ(compare_known(41, 30, 4, -5), none);
}

// Blocks so large that the one sum wraps and the other is held.
TEST(BlockMatch, SumsOfLargeBlocks) {
    constexpr int32_t side = 3000;
    const Plane white(std::size_t{side + 1} * (side + 1), 255);
    const Plane black(white.size(), 0);
    const auto cost = [&](int32_t size) {
        return CompareBlock(1500, 1500, 1500, 1500, size, side, side, white.data(), white.data(), white.data(),
                            black.data(), black.data(), black.data());
    };
    EXPECT_EQ(cost(104), 104 * 104 * 3 * 65025);
    EXPECT_EQ(cost(106), static_cast<int32_t>(106U * 106U * 3U * 65025U));
    EXPECT_EQ(cost(side), static_cast<int32_t>(9000000U * 195075U));
    for (const int32_t size : {100, side})
        EXPECT_EQ(CompareBlock_mask(1500, 1500, 1500, 1500, size, side, side, white.data(), white.data(), white.data(),
                                    black.data(), black.data(), black.data(), white.data(), white.data(), size * size),
                  size == side ? none - 1 : size * size * 195075);
}

Place find_rgb(Place reference, Place start, int32_t search, const Plane &a, const Plane &b) {
    call(xFindBlock_RGB, reference, &start[0], &start[1], search, 99, width - 1, height - 1, a.data(), a.data(),
         a.data(), b.data(), b.data(), b.data());
    return start;
}

Place find_channel(Place start, int32_t search, const Plane &a, const Plane &b) {
    xFindBlock_Channel(&start[0], &start[1], search, 99, width - 1, height - 1, a.data(), b.data());
    return start;
}

TEST(BlockMatch, SearchesFindWhatMoved) {
    const Plane a = noise(1);
    for (const Place by : {Place{2, 1}, {-7, 5}, {-8, -8}, {7, 7}}) {
        const Plane b = shifted(a, by[0], by[1]);
        const Place there = {40 + by[0], 30 + by[1]};
        EXPECT_EQ(find_rgb({40, 30}, {40, 30}, 16, a, b), there);
        EXPECT_EQ(find_channel({40, 30}, 16, b, a), there); // the candidates are of the first plane
    }
    // 8 is one beyond the last place.
    EXPECT_NE(find_rgb({40, 30}, {40, 30}, 16, a, shifted(a, 8, 0)), (Place{48, 30}));
    // A match far away in a wide search, at the corners of what is in bounds.
    for (const Place corner : {Place{8, 8}, {width - 9, height - 9}, {width - 9, 8}}) {
        const Plane b = shifted(a, corner[0] - 40, corner[1] - 30);
        EXPECT_EQ(find_rgb({40, 30}, {40, 30}, 500, a, b), corner);
        EXPECT_EQ(find_channel({40, 30}, 500, b, a), corner);
    }
}

TEST(BlockMatch, TiesAndBoundsOfSearches) {
    const Plane flat(width * height, 9);
    struct Case {
        Place start;
        int32_t search;
        Place rgb, channel;
    };
    for (const Case &c : {Case{{40, 30}, 16, {32, 22}, {32, 22}},
                          {{40, 30}, 17, {32, 22}, {32, 22}},
                          {{40, 30}, 3, {39, 29}, {39, 29}},
                          {{12, 9}, 16, {8, 8}, {8, 8}},
                          {{40, 30}, 1, {40, 30}, {40, 30}},
                          {{40, 30}, 0, {40, 30}, {40, 30}},
                          {{40, 30}, -9, {40, 30}, {40, 30}},
                          {{2, 3}, 8, {-2, -1}, {2, 3}},     // nothing to compare with
                          {{7, 30}, 16, {8, 22}, {7, 30}},   // its own block is out of bounds
                          {{88, 58}, 9, {84, 54}, {88, 58}}, // beyond the last place
                          {{-1, 30}, 90, {-1, 30}, {-1, 30}},
                          {{40, height}, 90, {40, height}, {40, height}}}) {
        EXPECT_EQ(find_rgb({40, 30}, c.start, c.search, flat, flat), c.rgb) << c.start[0] << ' ' << c.search;
        EXPECT_EQ(find_channel(c.start, c.search, flat, flat), c.channel) << c.start[0] << ' ' << c.search;
    }
    EXPECT_EQ(find_rgb({7, 30}, {40, 30}, 16, flat, flat), (Place{32, 22}));
    EXPECT_EQ(find_rgb({7, 30}, {9, 9}, 16, flat, flat), (Place{1, 1}));
}

// The sum over the planes decides, and all rows and runs of places take part.
TEST(BlockMatch, WideSearchesAreSequentialOnes) {
    constexpr int32_t wide = 700;
    constexpr int32_t tall = 130;
    std::mt19937 random(3);
    Plane a(wide * tall);
    Plane b(wide * tall);
    // Few values, so that there are ties.
    for (std::size_t i = 0; i < a.size(); ++i) {
        a[i] = random() % 64 == 0 ? 1 : 0;
        b[i] = random() % 64 == 0 ? 1 : 0;
    }
    Place expected = {};
    int32_t lowest = none;
    for (int32_t y = 8; y < tall - 8; ++y) {
        for (int32_t x = 8; x < wide - 8; ++x) {
            const int32_t cost = xcompareblock16(x, y, 350, 60, wide, tall, a.data(), b.data());
            if (cost < lowest) {
                lowest = cost;
                expected = {x, y};
            }
        }
    }
    Place channel = {350, 60};
    Place rgb = channel;
    xFindBlock_Channel(&channel[0], &channel[1], 2000, 0, wide - 1, tall - 1, a.data(), b.data());
    xFindBlock_RGB(350, 60, &rgb[0], &rgb[1], 2000, 0, wide - 1, tall - 1, b.data(), b.data(), b.data(), a.data(),
                   a.data(), a.data());
    EXPECT_EQ(channel, expected);
    EXPECT_EQ(rgb, expected);
}

Place match(Place reference, Place start, int32_t search, int32_t size, const Plane &a, const Plane &b,
            const Plane &alpha_a, const Plane &alpha_b) {
    call(xMatchBlockAlf, reference, &start[0], &start[1], search, size, width - 1, height - 1, a.data(), b.data(),
         alpha_a.data(), alpha_b.data());
    return start;
}

TEST(BlockMatch, WeightedSearch) {
    const Plane a = noise(1);
    const Plane full(width * height, 255);
    const Plane nothing(width * height, 0);
    const Plane flat(width * height, 9);
    EXPECT_EQ(match({40, 30}, {40, 30}, 8, 6, a, shifted(a, 2, 1), full, full), (Place{42, 31}));
    EXPECT_EQ(match({40, 30}, {70, 20}, 300, 40, a, shifted(a, 20, -10), full, full), (Place{60, 20}));
    EXPECT_EQ(match({40, 30}, {40, 30}, 8, 6, a, a, nothing, full), (Place{40, 30}));
    EXPECT_EQ(match({10, 10}, {10, 10}, 4, 4, flat, flat, full, full), (Place{8, 8}));
    EXPECT_EQ(match({10, 10}, {1, 1}, 4, 4, flat, flat, full, full), (Place{2, 2}));
    EXPECT_EQ(match({10, 10}, {-9, 1}, 4, 4, flat, flat, full, full), (Place{-9, 1}));
    EXPECT_EQ(match({1, 10}, {20, 20}, 4, 4, flat, flat, full, full), (Place{20, 20}));
    EXPECT_EQ(match({10, 10}, {20, 20}, 4, 1, flat, flat, full, full), (Place{20, 20}));

    // What is transparent in either plane does not count: there the planes differ most.
    Plane b = shifted(a, -3, 2);
    Plane alpha_a = full;
    Plane alpha_b = full;
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const auto i = static_cast<std::size_t>(y * width + x);
            if (x % 3 == 0) {
                alpha_a[i] = 0;
            } else if (y % 2 == 0) {
                b[i] ^= 0x80;
                alpha_b[i] = 0;
            }
        }
    }
    EXPECT_EQ(match({40, 30}, {41, 31}, 20, 24, a, b, alpha_a, alpha_b), (Place{37, 32}));
}

// Where every term is as large as it can be.
TEST(BlockMatch, WeightedSearchOfLargeBlocks) {
    const Plane white(width * height, 255);
    Plane black(width * height, 0);
    black[10 * width + 20] = 1;
    // Only blocks that hold the one sample cost less.
    EXPECT_EQ(match({45, 30}, {45, 30}, 80, 46, white, black, white, white), (Place{23, 23}));
    EXPECT_EQ(match({45, 30}, {45, 30}, 20, 46, white, black, white, white), (Place{35, 23}));
}

void compare_all(Workspace &w, decltype(xcompareblock) compare) {
    const uint8_t *a = w.buffer();
    const uint8_t *b = w.buffer();
    auto *costs = w.result<int32_t>(64);
    for (int i = 0; i < 64; ++i)
        costs[i] = compare(w.integer(0, w.width), w.integer(0, w.height), w.integer(0, w.width), w.integer(0, w.height),
                           w.width, w.height, a, b);
}

const BulkCase cases[] = {
    {"xcompareblock16", [](Workspace &w) { compare_all(w, xcompareblock16); }},
    {"xcompareblock", [](Workspace &w) { compare_all(w, xcompareblock); }},
    {"CompareBlock",
     [](Workspace &w) {
         const auto planes = w.buffers<6>();
         auto *costs = w.result<int32_t>(64);
         for (int32_t size = 0; size < 64; ++size)
             costs[size] = call(CompareBlock, w.width / 2, w.height / 2, w.integer(0, w.width), w.integer(0, w.height),
                                size, w.bounds(), planes);
     }},
    {"CompareBlock_mask",
     [](Workspace &w) {
         const auto planes = w.buffers<8>();
         auto *costs = w.result<int32_t>(64);
         for (int32_t size = 0; size < 64; ++size)
             costs[size] = call(CompareBlock_mask, w.width / 2, w.height / 2, w.integer(0, w.width),
                                w.integer(0, w.height), size, w.bounds(), planes, 9);
     }},
    {"xFindBlock_RGB",
     [](Workspace &w) {
         const auto planes = w.buffers<6>();
         auto *place = w.buffer<int32_t>(2);
         place[0] = w.integer(0, w.width - 1);
         place[1] = w.integer(0, w.height - 1);
         call(xFindBlock_RGB, w.width / 2, w.height / 2, place, place + 1, w.integer(0, 90), 0, w.bounds(), planes);
     }},
    {"xFindBlock_Channel",
     [](Workspace &w) {
         const auto planes = w.buffers<6>();
         auto *place = w.buffer<int32_t>(2);
         place[0] = w.width / 2;
         place[1] = w.height / 2;
         call(xFindBlock_Channel, place, place + 1, w.integer(0, 200), 0, w.bounds(), planes[0], planes[3]);
     }},
    {"xMatchBlockAlf",
     [](Workspace &w) {
         const auto planes = w.buffers<6>();
         auto *place = w.buffer<int32_t>(2);
         place[0] = w.integer(0, w.width - 1);
         place[1] = w.integer(0, w.height - 1);
         call(xMatchBlockAlf, w.width / 2, w.height / 2, place, place + 1, w.integer(0, 90), w.integer(2, 40),
              w.bounds(), planes[0], planes[3], planes[1], planes[4]);
     }},
};

const BulkFamily family("BlockMatch", cases);

} // namespace
