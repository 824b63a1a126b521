#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>

#include <gtest/gtest.h>

#include "tavik/lighting/lighting.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

TEST(Erosion, ExtremesPassOverNan) {
    struct Case {
        Floats plane;
        float lowest, highest;
    };
    for (const Case &c : {Case{{3, -1, no_number, 2}, -1, 3},
                          {{-0.0F, 0.0F}, 0, 0},
                          {{-0.0F, -0.0F, -0.0F}, 0, 0},
                          {{no_number, no_number}, infinity, -infinity},
                          {{no_number, -infinity}, -infinity, -infinity}}) {
        float lowest = 9;
        float highest = 9;
        xFindMinMax_f(static_cast<int32_t>(c.plane.size()), 1, c.plane.data(), &lowest, &highest);
        EXPECT_EQ(lowest, c.lowest);
        EXPECT_EQ(highest, c.highest);
        EXPECT_EQ(std::signbit(lowest), c.lowest < 0);
        EXPECT_EQ(std::signbit(highest), c.highest < 0);
    }
    float untouched = 9;
    xFindMinMax_f(0, 4, nullptr, &untouched, &untouched);
    EXPECT_EQ(untouched, 9);
    // In every place of a plane that is split between threads and lanes.
    Floats plane(501 * 403, 1);
    for (std::size_t at = 0; at < plane.size(); at += 997) {
        plane[at] = -5;
        plane[plane.size() - 1 - at / 2] = 7;
        float lowest;
        float highest;
        xFindMinMax_f(501, 403, plane.data(), &lowest, &highest);
        EXPECT_EQ(lowest, -5);
        EXPECT_EQ(highest, 7);
        plane[at] = plane[plane.size() - 1 - at / 2] = 1;
    }
}

double sum_of(const Floats &plane) { return std::accumulate(plane.begin(), plane.end(), 0.0); }

TEST(Erosion, WeatheringSpreadsASpike) {
    Floats heights(9, 0);
    heights[4] = 8;
    Floats flow(9, 9);
    Floats dst(9, 9);
    xDifferenceKernel(3, 3, 1, 1, heights.data(), flow.data());
    xApplySlope(3, 3, 1, heights.data(), flow.data(), dst.data());
    EXPECT_EQ(flow, (Floats{0, 0, 0, 0, 0.0644055456F, 0, 0, 0, 0}));
    EXPECT_EQ(dst, (Floats{0.424161166F, 0.450838804F, 0.424161166F, 0.450838804F, 4.5F, 0.450838804F, 0.424161166F,
                           0.450838804F, 0.424161166F}));
    xDifferenceKernel(3, 3, 9, 1, heights.data(), flow.data());
    xApplySlope(3, 3, 9, heights.data(), flow.data(), dst.data());
    EXPECT_EQ(dst, heights);
}

// Smooth hills.
Floats hills(int32_t width, int32_t height) {
    Floats plane;
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x)
            plane.push_back(static_cast<float>((x * 13 % 64 < 32 ? x * 13 % 64 : 64 - x * 13 % 64) +
                                               (y * 7 % 48 < 24 ? y * 7 % 48 : 48 - y * 7 % 48)) /
                            2);
    return plane;
}

TEST(Erosion, WeatheringKeepsTheSumAndLevelsSlopes) {
    Floats heights = hills(60, 50);
    const double before = sum_of(heights);
    Floats flow(heights.size());
    Floats dst(heights.size());
    for (int i = 0; i < 40; ++i) {
        xDifferenceKernel(60, 50, 0.5F, 1, heights.data(), flow.data());
        xApplySlope(60, 50, 0.5F, heights.data(), flow.data(), dst.data());
        heights.swap(dst);
    }
    EXPECT_NEAR(sum_of(heights), before, before * 1e-5);
    float steepest = 0;
    for (std::size_t i = 1; i < heights.size(); ++i)
        if (i % 60 != 0) steepest = std::max(steepest, std::abs(heights[i] - heights[i - 1]));
    EXPECT_LT(steepest, 3); // 6.5 before
}

constexpr std::array<float, 8> good_start = {0.05F, 2, 0.01F, 0.1F, 0.1F, 0.02F, 4, 3};

// The hash that seeds blocks.
uint32_t hash(uint32_t n) {
    n += 0x9E3779B9U;
    n ^= n >> 16;
    n *= 0x7FEB352DU;
    n ^= n >> 15;
    n *= 0x846CA68BU;
    return n ^ n >> 16;
}

TEST(Erosion, RainOnFlatGroundChangesNothing) {
    Floats flat(64 * 64, 5);
    xDoErode(64, 64, flat.data(), 32, 200, 20, 2, 1, good_start.data());
    EXPECT_EQ(flat, Floats(64 * 64, 5));
}

TEST(Erosion, OneBlockOfRainIsErodeBlock) {
    Floats whole = hills(64, 64);
    Floats block = whole;
    xDoErode(64, 64, whole.data(), 64, 500, 27, 1, 9, good_start.data());
    xErodeBlock(64, 64, block.data(), 0, 0, 64, 64, 32, 500, 27, static_cast<int32_t>(hash(hash(hash(hash(9))))),
                good_start.data());
    EXPECT_EQ(whole, block);
    EXPECT_NE(whole, hills(64, 64));
}

TEST(Erosion, RainStaysInItsWindowAndKeepsTheSum) {
    const Floats before = hills(128, 120);
    Floats after = before;
    xErodeBlock(128, 120, after.data(), 50, 40, 80, 70, 14, 2000, 60, 3, good_start.data());
    for (int32_t y = 0; y < 120; ++y) {
        for (int32_t x = 0; x < 128; ++x) {
            const auto at = static_cast<std::size_t>(y * 128 + x);
            const bool in_window = x >= 36 && x < 94 && y >= 26 && y < 84;
            ASSERT_TRUE(in_window || after[at] == before[at]) << x << ' ' << y;
        }
    }
    EXPECT_NE(after, before);
    EXPECT_NEAR(sum_of(after), sum_of(before), 0.01);
}

TEST(Erosion, AWindowBeyondAllNumbersIsThePlane) {
    constexpr int32_t largest = std::numeric_limits<int32_t>::max();
    Floats whole = hills(64, 64);
    xErodeBlock(64, 64, whole.data(), 0, 0, 64, 64, 0, 500, 27, 9, good_start.data());
    for (const int32_t start : {0, -largest - 1}) {
        Floats after = hills(64, 64);
        xErodeBlock(64, 64, after.data(), start, start, 64, 64, largest, 500, 27, 9, good_start.data());
        EXPECT_EQ(after, whole) << start;
    }
}

// The phases' blocks one after another, in another order than the threads', make the same plane.
TEST(Erosion, BlocksOfAPhaseDoNotMeet) {
    Floats heights = hills(150, 130);
    xDoErode(150, 130, heights.data(), 31, 300, 70, 2, 4, good_start.data());
    EXPECT_EQ(folded(heights), 0x9CA59FDDU);
}

TEST(Erosion, WhatWasWornAway) {
    const Floats before(3, 10);
    const Floats after = {8, 12, -200};
    Bytes dst(3);
    erosionsubtracter(3, 1, 2, before.data(), after.data(), dst.data());
    EXPECT_EQ(dst, (Bytes{4, 0, 255}));
}

const BulkCase cases[] = {
    {"xFindMinMax_f",
     [](Workspace &w) {
         call(xFindMinMax_f, w.size(), w.floats(w.count(), -9, 9), w.result<float>(1), w.result<float>(1));
     }},
    {"xDifferenceKernel",
     [](Workspace &w) {
         call(xDifferenceKernel, w.size(), w.real(-1, 2), 0.8F, w.floats(w.count(), 0, 9), w.result<float>());
     }},
    {"xApplySlope",
     [](Workspace &w) {
         call(xApplySlope, w.size(), w.real(-1, 2), w.floats(w.count(), 0, 9), w.floats(w.count(), 0, 0.2F),
              w.result<float>());
     }},
    {"erosionsubtracter",
     [](Workspace &w) {
         call(erosionsubtracter, w.size(), w.real(-5, 5), w.floats(w.count(), 0, 99), w.floats(w.count(), 0, 99),
              w.result());
     }},
    {"xErodeBlock",
     [](Workspace &w) {
         float *heights = w.floats(w.count(), 0, 9);
         float *settings = w.floats(8, -1, 3);
         settings[7] = w.real(-1, 12);
         const int32_t x = w.integer(-3, w.width);
         const int32_t y = w.integer(-3, w.height);
         xErodeBlock(w.width, w.height, heights, x, y, x + w.integer(0, 90), y + w.integer(0, 90), w.integer(0, 9), 90,
                     40, w.integer(0, 99), settings);
     }},
    {"xDoErode",
     [](Workspace &w) {
         float *heights = w.floats(w.count(), 0, 9);
         if (w.count() > 8) heights[7] = no_number;
         float *settings = w.floats(8, -1, 3);
         settings[7] = w.real(-1, 12);
         call(xDoErode, w.size(), heights, w.integer(1, 40), 300, 40, 2, 5, settings);
     }},
};

const BulkFamily family("Erosion", cases);

} // namespace
