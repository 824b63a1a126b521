#include "tavik/generators/generators.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tavik/frame/frame.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

struct Picture {
    int32_t width, height;
    Planes planes;

    Picture(int32_t picture_width, int32_t picture_height) : width(picture_width), height(picture_height) {
        planes.fill(Bytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 99));
    }
    uint8_t *plane(std::size_t c) { return planes[c].data(); }
    std::size_t index(int32_t x, int32_t y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
    // Whether each row repeats the letters of its pattern: # for the colour (10, 20, 30), others for (40, 50, 60).
    testing::AssertionResult shows(const std::vector<std::string_view> &patterns) const {
        for (int32_t y = 0; y < height; ++y) {
            const std::string_view pattern = patterns[static_cast<std::size_t>(y) % patterns.size()];
            for (int32_t x = 0; x < width; ++x) {
                const bool first = pattern[static_cast<std::size_t>(x) % pattern.size()] == '#';
                for (uint8_t c = 0; c < 3; ++c)
                    if (planes[c][index(x, y)] != (first ? 10 : 40) + 10 * c)
                        return testing::AssertionFailure() << x << ' ' << y << " channel " << int{c};
            }
        }
        return testing::AssertionSuccess();
    }
};

TEST(Textures, BricksAndJoints) {
    const auto wall = [](float brick_width, float mortar, int32_t width) {
        Picture p(width, 24);
        // Of a colour the low byte counts.
        call(xbrick, brick_width, mortar, 10, 256 + 20, 30, 40, 50, 60 - 256, p.width, p.height, p.planes);
        return p;
    };
    const std::vector<std::string_view> fives = {"######.", "######.", "######.", ".",
                                                 "####.##", "####.##", "####.##", "."};
    for (const int32_t width : {1, 4, 5, 7, 100, 1000}) EXPECT_TRUE(wall(5.9F, 2.5F, width).shows(fives)) << width;
    EXPECT_TRUE(wall(5, 1, 300).shows({"#"})) << "joints of one less than 1";
    EXPECT_TRUE(wall(5, 0, 300).shows({"#"}));
    EXPECT_TRUE(wall(1.7F, 2, 300).shows({"##.", "##.", ".", "#.#", "#.#", "."})) << "lowest bricks";
    EXPECT_TRUE(wall(40, -30, 300).shows({"#"})) << "a period within the brick";
    EXPECT_TRUE(wall(-5, 2, 300).shows({"."})) << "no column within the brick";
    EXPECT_TRUE(wall(0.5F, 0.5F, 300).shows({"#"})) << "a period of nothing";
}

TEST(Textures, ChecksBeginWithColourB) {
    for (const int32_t width : {1, 2, 5, 6, 100, 1000}) {
        Picture p(width, 9);
        call(xcheckerboard, 3, 2, 40, 50, 60, 10, 20, 30, p.width, p.height, p.planes);
        EXPECT_TRUE(p.shows({"###...", "###...", "...###", "...###"})) << width;
        call(xcheckerboard, -1, 3, 40, 50, 60, 10, 20, 30, p.width, p.height, p.planes);
        EXPECT_TRUE(p.shows({"#.", "#.", "#.", ".#", ".#", ".#"})) << width;
    }
    for (const auto &[width, height] : {std::pair{0, 3}, {-3, 3}, {3, 0}, {3, -1}}) {
        xcheckerboard(3, 2, 0, 0, 0, 0, 0, 0, width, height, nullptr, nullptr, nullptr);
        xbrick(5, 2, 0, 0, 0, 0, 0, 0, width, height, nullptr, nullptr, nullptr);
    }
}

TEST(Textures, WeaveMultipliesExactly) {
    // Row y of the image meets every factor.
    Picture image(257, 256);
    Bytes tile(256);
    for (std::size_t i = 0; i < 256; ++i) tile[i] = static_cast<uint8_t>(i);
    for (std::size_t i = 0; i < image.planes[0].size(); ++i) image.planes[0][i] = static_cast<uint8_t>(i / 257);
    Picture woven(257, 256);
    call(xDoWeave, 100, 257, 256, 256, 1, tile.data(), image.plane(0), image.plane(1), image.plane(0), woven.planes);
    for (int32_t y = 0; y < 256; ++y) {
        for (int32_t x = 0; x < 257; ++x) {
            const std::size_t i = woven.index(x, y);
            ASSERT_EQ(woven.planes[0][i], x == 256 ? 99 : x * y / 255) << x << ' ' << y;
            ASSERT_EQ(woven.planes[1][i], x == 256 ? 99 : x * 99 / 255) << x << ' ' << y;
        }
    }
    EXPECT_EQ(woven.planes[2], woven.planes[0]);
}

TEST(Textures, WeaveScalesAndRepeatsItsTile) {
    const std::array<uint8_t, 15> tile = {0, 1, 2, 3, 4, 10, 11, 12, 13, 14, 20, 21, 22, 23, 24};
    struct Case {
        int32_t percent;
        // The tile's columns and rows of the first ten pixels.
        std::array<uint8_t, 10> columns, rows;
    };
    const Case cases[] = {
        {100, {0, 1, 2, 3, 4, 0, 1, 2, 3, 4}, {0, 1, 2, 0, 1, 2, 0, 1, 2, 0}},
        {200, {0, 0, 1, 1, 2, 2, 3, 3, 4, 4}, {0, 0, 1, 1, 2, 2, 0, 0, 1, 1}},
        {30, {0, 3, 1, 0, 3, 1, 0, 3, 1, 0}, {0, 0, 0, 1, 1, 1, 2, 2, 2, 0}},
    };
    for (const Case &c : cases) {
        Picture image(11, 10);
        for (Bytes &plane : image.planes) plane.assign(plane.size(), 255);
        Picture woven(11, 10);
        call(xDoWeave, c.percent, 11, 10, 5, 3, tile.data(), image.planes, woven.planes);
        for (int32_t y = 0; y < 10; ++y)
            for (int32_t x = 0; x < 10; ++x)
                ASSERT_EQ(woven.planes[0][woven.index(x, y)],
                          c.rows[static_cast<std::size_t>(y)] * 10 + c.columns[static_cast<std::size_t>(x)])
                    << c.percent << ": " << x << ' ' << y;
    }
    xDoWeave(100, 1, 10, 5, 3, tile.data(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
}

uint8_t noise(uint32_t i, uint32_t salt) { return static_cast<uint8_t>((i + salt * 1000) * 2654435761U >> 24); }

// Seeds in and around an image.
std::vector<tavik_crystal_seed> crystal_seeds(uint32_t count, const Picture &p) {
    std::vector<tavik_crystal_seed> seeds;
    for (uint32_t i = 0; i < count; ++i)
        seeds.push_back({static_cast<int16_t>(noise(i, 11) * p.width / 200 - 6),
                         static_cast<int16_t>(noise(i, 12) * p.height / 200 - 6), noise(i, 13), noise(i, 14),
                         noise(i, 15), 0});
    return seeds;
}

void crystallize(Picture &p, int32_t seeds_per_row, int32_t rows, int32_t size, int32_t layers,
                 const std::vector<tavik_crystal_seed> &seeds, Floats &heights) {
    call(xCrystalize, p.width, p.height, seeds_per_row, rows, size, 0, layers, 0, 0, p.planes, seeds.data(), heights);
}

// The expected folds come from the formulas in exact arithmetic, rounded after each operation.
TEST(Textures, CrystalsTakeTheHighestCone) {
    struct Case {
        float initial;
        uint32_t heights, colours;
    };
    for (const Case &c : {Case{0, 0x5FF0DDBDU, 0x1B297062U}, {-100, 0xDFA019E8U, 0xE7D9C5F7U}}) {
        Picture p(90, 50);
        Floats heights(p.planes[0].size(), c.initial);
        crystallize(p, 40, 1, 24, 2, crystal_seeds(80, p), heights);
        EXPECT_EQ(folded(heights), c.heights);
        EXPECT_EQ(folded(p.planes), c.colours);
    }
}

TEST(Textures, TheFirstOfEqualSeedsWins) {
    // Two seeds of a row, two layers; a seed's layers come before the next seed.
    std::vector<tavik_crystal_seed> seeds = {
        {1, 1, 10, 0, 0, 0}, {5, 1, 20, 0, 0, 0}, {5, 1, 30, 0, 0, 0}, {9, 1, 40, 0, 0, 0}};
    Picture p(12, 3);
    Floats heights(36);
    crystallize(p, 2, 1, 4, 2, seeds, heights);
    EXPECT_EQ(p.planes[0][p.index(1, 1)], 10);
    EXPECT_EQ(p.planes[0][p.index(5, 1)], 30);
    EXPECT_EQ(p.planes[0][p.index(9, 1)], 40);
    // Half way between two seeds of equal height there, the first.
    EXPECT_EQ(p.planes[0][p.index(11, 2)], 99) << "height 0 is not above 0";
    EXPECT_EQ(heights[p.index(6, 1)], (1 - 1 * 0.5F * 0.5F) * 255);
}

// Rows of seeds that meet may lose to one another by timing, but only between themselves.
TEST(Textures, RowsOfSeedsRunTogether) {
    Picture alone(700, 300);
    const auto seeds = crystal_seeds(600, alone);
    Floats highest(alone.planes[0].size());
    crystallize(alone, 600, 1, 90, 1, seeds, highest);
    Picture together(700, 300);
    Floats heights(highest.size());
    crystallize(together, 20, 15, 90, 2, seeds, heights);
    std::size_t same = 0;
    for (std::size_t i = 0; i < highest.size(); ++i) {
        ASSERT_LE(heights[i], highest[i]);
        ASSERT_EQ(heights[i] > 0, highest[i] > 0);
        same += heights[i] == highest[i];
    }
    EXPECT_GT(same, highest.size() * 99 / 100);
}

void draw_cells(Picture &p, const std::vector<tavik_cell_seed> &seeds, int32_t size, int32_t layers, int32_t falloff,
                int32_t invert, Floats &heights) {
    call(xcellular, p.width, p.height, static_cast<int32_t>(seeds.size()) / layers, 1, size, 0, layers, falloff, invert,
         p.planes, seeds.data(), heights);
}

TEST(Textures, CellsRaiseBowlsAndCones) {
    struct Case {
        int32_t size, falloff;
        float initial;
        uint32_t heights;
    };
    for (const Case &c : {Case{25, 1, 0, 0x5FF0DDBDU},
                          {24, 1, -100, 0xFD38DDBDU},
                          {24, 0, 0, 0xD98519AAU},
                          {24, 2, -100, 0x437D19AAU}}) {
        Picture p(90, 50);
        std::vector<tavik_cell_seed> seeds;
        for (const tavik_crystal_seed &seed : crystal_seeds(80, p)) {
            // Truncated toward zero.
            const auto away = [](int16_t v) { return static_cast<float>(v) + (v < 0 ? -0.7F : 0.7F); };
            seeds.push_back({away(seed.x), away(seed.y)});
        }
        Floats heights(p.planes[0].size(), c.initial);
        draw_cells(p, seeds, c.size, 2, c.falloff, 0, heights);
        EXPECT_EQ(folded(heights), c.heights) << c.falloff;
        for (std::size_t i = 0; i < heights.size(); ++i) {
            const auto lowest = static_cast<uint8_t>(static_cast<int32_t>(heights[i]));
            ASSERT_TRUE(heights[i] < 0 || p.planes[0][i] == lowest || p.planes[0][i] == lowest + 1);
        }
    }
}

TEST(Textures, HeightsBecomeDitheredGreys) {
    for (const int32_t invert : {0, 1, 2}) {
        Picture p(100, 60);
        Floats heights(6000);
        for (std::size_t i = 0; i < 6000; ++i) heights[i] = i < 1000 ? 300.0F : (i < 2000 ? -2.5F : 100.25F);
        seed_rand(4);
        draw_cells(p, {}, 10, 1, 1, invert, heights);
        const auto flipped = [=](int32_t value) { return static_cast<uint8_t>(invert == 1 ? 255 - value : value); };
        EXPECT_EQ(std::count(p.planes[0].begin(), p.planes[0].begin() + 1000, flipped(255)), 1000);
        // Below zero it truncates upward: -2 or -1.
        const auto lower = std::count(p.planes[0].begin() + 1000, p.planes[0].begin() + 2000, flipped(-2));
        EXPECT_NEAR(static_cast<double>(lower), 500, 60);
        EXPECT_EQ(std::count(p.planes[0].begin() + 1000, p.planes[0].begin() + 2000, flipped(-1)), 1000 - lower);
        const auto higher = std::count(p.planes[0].begin() + 2000, p.planes[0].end(), flipped(101));
        EXPECT_NEAR(static_cast<double>(higher), 1000, 120);
        EXPECT_EQ(std::count(p.planes[0].begin() + 2000, p.planes[0].end(), flipped(100)), 4000 - higher);
        EXPECT_EQ(p.planes[1], p.planes[0]);
        EXPECT_EQ(p.planes[2], p.planes[0]);
    }
}

template <class Fill> void run_fill(Workspace &w, const Fill &fill) {
    call(fill, 1, 2, 3, 4, 5, 6, w.size(), w.results());
}

const BulkCase cases[] = {
    {"xbrick", [](Workspace &w) { run_fill(w, [](auto... rest) { xbrick(39.5F, 4, rest...); }); }},
    {"xcheckerboard", [](Workspace &w) { run_fill(w, [](auto... rest) { xcheckerboard(9, 7, rest...); }); }},
    {"xDoWeave",
     [](Workspace &w) {
         // Neither the last row's end nor more of the tile than it has is touched.
         const std::size_t count = w.count() - 1;
         const auto src = w.buffers(count);
         const auto dst = w.buffers(count);
         const int32_t percent = w.integer(30, 300);
         call(xDoWeave, percent, w.size(), 13, 7, w.buffer(91), src, dst);
     }},
    {"xCrystalize",
     [](Workspace &w) {
         Picture size(w.width, w.height);
         const auto seeds = crystal_seeds(40, size);
         call(xCrystalize, w.size(), 20, 1, w.integer(2, 300), 0, 2, 0, 0, w.buffers(), seeds.data(),
              w.floats(w.count(), -1, 100));
     }},
    // Heights so low that the dither rounds off: what they become does not depend on the threads' numbers.
    {"xcellular",
     [](Workspace &w) {
         float *heights = w.floats(w.count(), 0, 255);
         for (std::size_t i = 0; i < w.count(); ++i) heights[i] = -0x1p25F - 4 * std::floor(heights[i]);
         call(xcellular, w.size(), 9, 0, 8, 0, 1, 1, w.integer(0, 1), w.results(), nullptr, heights);
     }},
};

const BulkFamily family("Textures", cases);

} // namespace
