#include "tavik/generators/generators.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include <gtest/gtest.h>

#include "tavik/frame/frame.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

// Folds numbers so that a bit of any of them shows. The expected folds come from the formulas in exact arithmetic,
// rounded after each operation.
template <class Number> uint32_t fold(uint32_t count, const Number &number) {
    uint32_t hash = 2166136261U;
    for (uint32_t i = 0; i < count; ++i) hash = (hash ^ std::bit_cast<uint32_t>(number(i))) * 16777619U;
    return hash;
}

// Points on both sides of zero along both axes.
template <class Noise> uint32_t fold_points(const Noise &noise) {
    return fold(4096, [&](uint32_t i) {
        const auto n = static_cast<int32_t>(i);
        return noise(static_cast<float>(n - 2048) * 0.371F, static_cast<float>(n % 64 - 20) * 0.173F,
                     static_cast<float>(n % 7) * 0.6F);
    });
}

TEST(Noise, HashOfIntegers) {
    EXPECT_EQ(IntNoise(0), 1.0F - 1376312589.0F * 0x1p-30F);
    EXPECT_EQ(IntNoise(1), -0.226373076F);
    EXPECT_EQ(IntNoise(-1), 0.900126278F);
    EXPECT_EQ(fold(4096, [](uint32_t i) { return IntNoise(static_cast<int32_t>(i * 2654435761U)); }), 0x62A94C26U);
}

TEST(Noise, ValueNoiseSumsItsOctaves) {
    EXPECT_EQ(fold_points([](float x, float y, float) { return FastPerlinNoise_2D(x, y, 4); }), 0xCC0CA3ADU);
    EXPECT_EQ(FastPerlinNoise_2D(3.7F, 1.2F, 0), 0.0F);
    EXPECT_EQ(FastPerlinNoise_2D(3.7F, 1.2F, -1), 0.0F);
    // Lattice points have their own value, those on the axes that of zero.
    EXPECT_EQ(FastPerlinNoise_2D(1.5F, 2.5F, 1), 0.5F * IntNoise(15));
    EXPECT_EQ(FastPerlinNoise_2D(0, 8, 1), 0.5F * IntNoise(0));
    // A negative fraction of the cell at zero.
    EXPECT_EQ(FastPerlinNoise_2D(-0.25F, 0.3F, 1), -0.13147445F);
}

TEST(Noise, NoiseInSpaceIsThatOfGlm) {
    EXPECT_EQ(fold_points(glm_perlin_noise3), 0x36EF7F68U);
    EXPECT_EQ(fold_points(glm_simplex_noise3), 0x3E02C2BFU);
}

Bytes open_simplex(uint32_t seed, int32_t width, int32_t height, int32_t period, int32_t octaves) {
    Bytes plane(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 99);
    seed_rand(seed);
    xOpenSimplex(width, height, period, octaves, plane.data());
    return plane;
}

TEST(Noise, OpenSimplexOfOneAndSeveralOctaves) {
    struct Case {
        uint32_t seed;
        int32_t width, height, period, octaves;
        uint32_t expected;
    };
    const Case cases[] = {
        {7, 131, 40, 17, 1, 0xC91BBC0BU},
        {8, 131, 40, 23, 5, 0x254F5D0BU},
        {9, 300, 3, 2, 3, 0xFF4BCF4BU}, // Reaches 0 and 255.
        {1, 64, 8, 1, 1, 0x60957DE9U},
    };
    for (const Case &c : cases) {
        const auto plane = open_simplex(c.seed, c.width, c.height, c.period, c.octaves);
        EXPECT_EQ(fold(static_cast<uint32_t>(plane.size()), [&](uint32_t i) { return uint32_t{plane[i]}; }), c.expected)
            << c.width << " x " << c.height << ", " << c.octaves;
    }
    for (const auto &flat : {open_simplex(1, 70, 5, 9, 0), open_simplex(1, 70, 5, 9, -2), open_simplex(1, 70, 5, 0, 3)})
        EXPECT_EQ(std::count(flat.begin(), flat.end(), 127), 350);
}

TEST(Noise, OpenSimplexDrawsOneNumberEachCall) {
    const auto second_of_two = [](int32_t width, int32_t height) {
        Bytes first(64);
        Bytes second(64);
        seed_rand(3);
        xOpenSimplex(width, height, 5, 1, first.data());
        xOpenSimplex(8, 8, 5, 1, second.data());
        EXPECT_NE(first, second);
        return second;
    };
    EXPECT_EQ(second_of_two(8, 8), second_of_two(0, 8));
    EXPECT_EQ(second_of_two(8, 8), second_of_two(8, -1));
}

const BulkCase cases[] = {
    {"xOpenSimplex",
     [](Workspace &w) {
         seed_rand(5);
         const int32_t octaves = w.integer(1, 3);
         call(xOpenSimplex, w.size(), w.integer(1, 40), octaves, w.result());
     }},
};

const BulkFamily family("Noise", cases);

} // namespace
