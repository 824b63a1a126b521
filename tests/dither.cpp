#include "tavik/dither/dither.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include <gtest/gtest.h>

#include "tavik/frame/frame.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

// 3 × 3 thresholds; the fourth byte of each row is not the matrix's.
constexpr std::array<uint8_t, 12> matrix = {0, 10, 20, 255, 30, 50, 40, 255, 5, 15, 25, 255};

// Cube colour i as (i, 255 − i, 7i), so that every index shows.
struct Palette {
    Planes tables = planes_of(216);
    Palette() {
        for (std::size_t i = 0; i < 216; ++i) {
            tables[0][i] = static_cast<uint8_t>(i);
            tables[1][i] = static_cast<uint8_t>(255 - i);
            tables[2][i] = static_cast<uint8_t>(7 * i);
        }
    }
};

int quantised(int value, int threshold) { return value / 51 + (value % 51 > threshold ? 1 : 0); }

TEST(Dither, OrderedCubeQuantisesEveryValueAgainstEveryThreshold) {
    const Palette palette;
    // 256 rows of 3 columns repeat the matrix; row y has the channel values y, 255 − y and 3y.
    Planes planes = planes_of(768);
    for (std::size_t i = 0; i < 768; ++i) {
        const std::size_t y = i / 3;
        planes[0][i] = static_cast<uint8_t>(y);
        planes[1][i] = static_cast<uint8_t>(255 - y);
        planes[2][i] = static_cast<uint8_t>(3 * y);
    }
    for (std::size_t turn = 0; turn < 3; ++turn) {
        // Turning the matrix lets every value meet every threshold.
        std::array<uint8_t, 12> turned;
        for (std::size_t i = 0; i < turned.size(); ++i) turned[i] = matrix[(i + 4 * turn) % matrix.size()];
        Planes dithered = planes;
        call(x8BitOrderedDither, 3, 0, 256, dithered, turned.data(), palette.tables);
        for (std::size_t i = 0; i < 768; ++i) {
            const int threshold = turned[i / 3 % 3 * 4 + i % 3];
            const int colour = quantised(planes[0][i], threshold) + 6 * quantised(planes[1][i], threshold) +
                               36 * quantised(planes[2][i], threshold);
            ASSERT_EQ(dithered[0][i], colour) << i;
            ASSERT_EQ(dithered[1][i], 255 - colour) << i;
            ASSERT_EQ(dithered[2][i], static_cast<uint8_t>(7 * colour)) << i;
        }
    }
}

TEST(Dither, CubeDithersOnlyTheBand) {
    const Palette palette;
    const auto &[pal_r, pal_g, pal_b] = palette.tables;
    for (const auto &[y_start, y_end] : {std::array{1, 3}, std::array{2, 2}, std::array{3, 1}, std::array{0, 4}}) {
        Planes ordered = planes_of(40, 99);
        Planes random = ordered;
        call(x8BitOrderedDither, 10, y_start, y_end, ordered, matrix.data(), pal_r.data(), pal_g.data(), pal_b.data());
        call(x8BitRandomDither, 10, y_start, y_end, random, pal_r.data(), pal_g.data(), pal_b.data());
        for (const Planes *planes : {&ordered, &random}) {
            for (int i = 0; i < 40; ++i) {
                const bool in_band = i / 10 >= y_start && i / 10 < y_end;
                // 43 or 86 for a cube colour of equal channels.
                EXPECT_EQ((*planes)[0][static_cast<std::size_t>(i)] == 99, !in_band) << i;
            }
        }
    }
}

TEST(Dither, RandomCubeRepeatsItsPicture) {
    const Palette palette;
    const auto &tables = palette.tables;
    const Planes grey = planes_of(3000, 76);
    const auto dithered = [&] {
        Planes planes = grey;
        call(x8BitRandomDither, 100, 0, 30, planes, tables);
        return planes;
    };
    seed_rand(1);
    const Planes first = dithered();
    seed_rand(2);
    EXPECT_EQ(dithered(), first);
    // 76 is 51 + 25: half way, and equal channels share their threshold.
    const auto low = std::count(first[0].begin(), first[0].end(), 43);
    EXPECT_EQ(low + std::count(first[0].begin(), first[0].end(), 86), 3000);
    EXPECT_NEAR(static_cast<double>(low), 1500, 150);
    // The seed is set for an empty band, too.
    std::array<float, 8> after_empty = {};
    std::array<float, 8> after_seed = {};
    call(x8BitRandomDither, 5, 3, 3, nullptr, nullptr, nullptr, tables);
    xgrain(8, 1, 1, 0, 0, after_empty.data(), after_seed.data(), after_seed.data());
    seed_rand(1231209);
    after_seed = {};
    std::array<float, 8> other = {};
    xgrain(8, 1, 1, 0, 0, after_seed.data(), other.data(), other.data());
    EXPECT_EQ(after_empty, after_seed);
}

TEST(Dither, OneBitComparesTheMeanStrictly) {
    const Bytes r = {0, 3, 30, 31, 151, 255, 0, 10, 20};
    const Bytes g = {0, 0, 30, 31, 150, 255, 0, 11, 20};
    const Bytes b = {2, 0, 30, 31, 152, 255, 1, 9, 15};
    Planes planes = {r, g, b};
    constexpr std::array<uint8_t, 12> thresholds = {0, 0, 30, 0, 30, 151, 254, 0, 0, 9, 18, 0};
    call(x1bitorderedDither, 3, 3, planes, thresholds.data());
    EXPECT_EQ(planes[0], (Bytes{0, 255, 0, 255, 0, 255, 0, 255, 0}));
    EXPECT_EQ(planes[1], planes[0]);
    EXPECT_EQ(planes[2], planes[0]);
    for (const auto &[width, height] : {std::array{0, 3}, std::array{-3, 3}, std::array{3, -1}}) {
        call(x1bitorderedDither, width, height, planes, thresholds.data());
        call(x1bitranddither, width, height, planes);
    }
    EXPECT_EQ(planes[0], (Bytes{0, 255, 0, 255, 0, 255, 0, 255, 0}));
}

TEST(Dither, RandomOneBitIsWhiteAsOftenAsTheGreyIsBright) {
    constexpr std::size_t count = 20000;
    // The share of the 32768 numbers for which each grey is above 128 + h.
    for (const int grey : {0, 1, 64, 128, 200, 254, 255}) {
        int whites = 0;
        for (int number = 0; number < 32768; ++number) {
            const float h = std::trunc(static_cast<float>(number) * (-255.0F / 32767.0F) + 128.0F);
            whites += static_cast<float>(grey) - h > 128.0F;
        }
        Planes planes = planes_of(count, static_cast<uint8_t>(grey));
        seed_rand(5);
        call(x1bitranddither, 200, 100, planes);
        const auto white = std::count(planes[0].begin(), planes[0].end(), 255);
        EXPECT_EQ(white + std::count(planes[0].begin(), planes[0].end(), 0), count);
        EXPECT_NEAR(static_cast<double>(white) / count, whites / 32768.0, 0.015) << grey;
        EXPECT_TRUE(grey != 0 || white == 0);
        EXPECT_EQ(planes[1], planes[0]);
        EXPECT_EQ(planes[2], planes[0]);
    }
}

TEST(Dither, GrainTakesTheNumbersPlaneByPlane) {
    constexpr int32_t count = 1500;
    const auto grained = [](float amount1, float amount2, float amount3) {
        std::array<Floats, 3> planes;
        planes.fill(Floats(count, 10.0F));
        seed_rand(9);
        call(xgrain, count / 3, 3, amount1, amount2, amount3, planes);
        return planes;
    };
    const auto planes = grained(1, 2, 0);
    // One long plane sees the same numbers in the same order.
    Floats long_plane(count * 3, 10.0F);
    Floats unused(count * 3);
    seed_rand(9);
    xgrain(count * 3, 1, 1, 0, 0, long_plane.data(), unused.data(), unused.data());
    for (std::size_t i = 0; i < count; ++i) {
        ASSERT_EQ(planes[0][i], long_plane[i]);
        // Twice the amount of the next plane's numbers.
        ASSERT_NEAR(planes[1][i] - 10.0F, 2 * (long_plane[count + i] - 10.0F), 1e-5F);
        ASSERT_GE(planes[0][i], 9.5F);
        ASSERT_LE(planes[0][i], 10.5F);
    }
    EXPECT_EQ(planes[2], Floats(count, 10.0F));
    const auto [lowest, highest] = std::minmax_element(planes[0].begin(), planes[0].end());
    EXPECT_GT(*highest - *lowest, 0.99F);
}

// A pixel that tells where it comes from: red its column, green its row.
Planes places(int32_t width, int32_t height) {
    Planes planes;
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            planes[0].push_back(static_cast<uint8_t>(x));
            planes[1].push_back(static_cast<uint8_t>(y));
            planes[2].push_back(static_cast<uint8_t>(x ^ y));
        }
    }
    return planes;
}

TEST(Dither, JitterStaysInReach) {
    constexpr int32_t x_max = 199;
    constexpr int32_t y_max = 149;
    const Planes src = places(x_max + 1, y_max + 1);
    for (const int32_t amount : {0, 6, 7, -6}) {
        Planes dst = planes_of(src[0].size(), 250);
        call(FastJitter, dst, 0, x_max, y_max, src, amount);
        const int32_t offset = amount / 2;
        const auto in_reach = [&](int32_t from, int32_t to, int32_t limit) {
            const int32_t lowest = std::clamp(to - offset + std::min(amount, 0), 0, limit);
            const int32_t highest = std::clamp(to - offset + std::max(amount, 0), 0, limit);
            return from >= lowest && from <= highest;
        };
        bool moved = false;
        for (int32_t y = 0; y <= y_max; ++y) {
            for (int32_t x = 0; x <= x_max; ++x) {
                const auto i = static_cast<std::size_t>(y * (x_max + 1) + x);
                if (x == x_max || y == y_max) {
                    ASSERT_EQ(dst[0][i], 250);
                    continue;
                }
                ASSERT_TRUE(in_reach(dst[0][i], x, x_max - 2)) << x << ' ' << y;
                ASSERT_TRUE(in_reach(dst[1][i], y, y_max - 2)) << x << ' ' << y;
                ASSERT_EQ(dst[2][i], dst[0][i] ^ dst[1][i]) << "the channels come from different places";
                moved = moved || dst[0][i] != std::min(x, x_max - 2);
            }
        }
        EXPECT_EQ(moved, amount != 0) << amount;
    }
}

const BulkCase cases[] = {
    {"x8BitOrderedDither",
     [](Workspace &w) { call(x8BitOrderedDither, w.width, 0, w.height, w.buffers(), w.buffer(11), w.buffers(216)); }},
    {"x8BitRandomDither",
     [](Workspace &w) { call(x8BitRandomDither, w.width, 0, w.height, w.buffers(), w.buffers(216)); }},
    {"x1bitorderedDither",
     [](Workspace &w) { call(x1bitorderedDither, w.width, w.height, w.buffers(), w.buffer(11)); }},
    {"x1bitranddither",
     [](Workspace &w) {
         seed_rand(3);
         call(x1bitranddither, w.size(), w.buffers());
     }},
    {"xgrain",
     [](Workspace &w) {
         seed_rand(3);
         float *planes[3] = {w.floats(w.count(), 0, 255), w.floats(w.count(), 0, 255), w.floats(w.count(), 0, 255)};
         call(xgrain, w.size(), w.real(0, 9), w.real(0, 9), w.real(0, 9), planes);
     }},
    // Without displacement, as its numbers differ from call to call. Neither the last row nor the last two samples of
    // the source's last rows are touched.
    {"FastJitter",
     [](Workspace &w) {
         const std::size_t stride = static_cast<std::size_t>(w.width) + 1;
         const std::size_t written = w.count() + static_cast<std::size_t>(w.height) - 1;
         const auto last_row = static_cast<std::size_t>(std::max(w.height - 2, 0));
         const std::size_t read = last_row * stride + static_cast<std::size_t>(std::max(w.width - 1, 1));
         call(FastJitter, w.buffers(written), 0, w.size(), w.buffers(read), 0);
     }},
};

const BulkFamily family("Dither", cases);

} // namespace
