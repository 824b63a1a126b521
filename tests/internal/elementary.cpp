// The elementary functions against a double evaluation, and their bits at every vector level.
#include "tavik/frame/elementary.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>

#include "tavik/frame/hash.h"
#include "tavik/frame/sampling.h"
#include "tests/support/guarded_memory.h"

#define TAVIK_ROWS "tests/internal/elementary_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

using Row = void(const float *x, float *dst, std::size_t count);
constexpr PerLevel<Row> sines = TAVIK_EVERY_LEVEL(sines);
constexpr PerLevel<Row> angles = TAVIK_EVERY_LEVEL(angles);
constexpr PerLevel<Row> logarithms = TAVIK_EVERY_LEVEL(logarithms);
constexpr PerLevel<Row> exponentials = TAVIK_EVERY_LEVEL(exponentials);
constexpr PerLevel<Row> powers = TAVIK_EVERY_LEVEL(powers);
constexpr PerLevel<Row> floors = TAVIK_EVERY_LEVEL(floors);
constexpr PerLevel<Row> bytes = TAVIK_EVERY_LEVEL(bytes);
constexpr PerLevel<Row> hashes = TAVIK_EVERY_LEVEL(hashes);

// All floats, a few thousand bit patterns apart.
std::vector<float> floats_of_all_sizes() {
    std::vector<float> floats;
    for (uint64_t bits = 0; bits <= 0xFFFFFFFFU; bits += 30011) floats.push_back(std::bit_cast<float>(uint32_t(bits)));
    for (const float special :
         {0.5F, -0.5F, 0.25F, 254.5F, 255.5F, 1e30F, -1e30F, std::numeric_limits<float>::infinity(),
          -std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()})
        floats.push_back(special);
    return floats;
}

TEST(Elementary, GivesTheSameBitsAtEveryLevel) {
    const std::vector<float> x = floats_of_all_sizes();
    for (const auto *rows : {&sines, &angles, &logarithms, &exponentials, &powers, &floors, &bytes, &hashes}) {
        std::vector<float> expected(x.size());
        std::vector<float> result(x.size());
        rows->scalar()(x.data(), expected.data(), x.size());
        rows->active()(x.data(), result.data(), x.size());
        for (std::size_t i = 0; i < x.size(); ++i) {
            if (std::isnan(expected[i]) && std::isnan(result[i])) continue;
            ASSERT_EQ(std::bit_cast<uint32_t>(result[i]), std::bit_cast<uint32_t>(expected[i]))
                << "function " << rows - &sines << " of " << x[i];
        }
    }
}

// The largest |function − exact| over low .. high.
template <class Function, class Exact>
double largest_error(float low, float high, const Function &function, const Exact &exact) {
    double error = 0;
    constexpr int steps = 400000;
    for (int i = 0; i <= steps; ++i) {
        const float x = low + (high - low) * static_cast<float>(i) / steps;
        error = std::max(error, std::abs(function(x) - exact(static_cast<double>(x))));
    }
    return error;
}

TEST(Elementary, IsCloseToTheExactFunctions) {
    constexpr double turn = 2 * std::numbers::pi;
    EXPECT_LT(largest_error(
                  -3, 3, [](float x) { return sin_turn(x); }, [](double x) { return std::sin(x * turn); }),
              2e-7);
    EXPECT_LT(
        largest_error(
            -9, 9, [](float x) { return atan2_turn(x, 1.5F); }, [](double x) { return std::atan2(x, 1.5) / turn; }),
        4e-8);
    EXPECT_LT(largest_error(
                  -1, 1, [](float x) { return atan2_turn(-0.7F, x); },
                  [](double x) { return std::atan2(static_cast<double>(-0.7F), x) / turn; }),
              4e-8);
    for (const float low : {0.002F, 0.6F, 1.001F, 500.0F})
        EXPECT_LT(largest_error(
                      low, low * 1.6F, [](float x) { return log2_of_normal(x) / std::log2(static_cast<double>(x)); },
                      [](double) { return 1.0; }),
                  2.5e-7);
    EXPECT_LT(largest_error(
                  -126, 126, [](float x) { return exp2_of_held(x) / std::exp2(static_cast<double>(x)); },
                  [](double) { return 1.0; }),
              1e-7);
}

TEST(Elementary, IsExactWhereItShows) {
    for (int quarter = -8; quarter <= 8; ++quarter) {
        constexpr std::array<float, 4> sines_of_quarters = {0, 1, 0, -1};
        EXPECT_EQ(sin_turn(static_cast<float>(quarter) / 4), sines_of_quarters[static_cast<std::size_t>(quarter & 3)]);
        EXPECT_EQ(cos_turn(static_cast<float>(quarter) / 4),
                  sines_of_quarters[static_cast<std::size_t>((quarter + 1) & 3)]);
    }
    EXPECT_EQ(sin_turn(std::numeric_limits<float>::quiet_NaN()), 0);
    EXPECT_EQ(atan2_turn(0, 2), 0);
    EXPECT_EQ(atan2_turn(2, 0), 0.25F);
    EXPECT_EQ(atan2_turn(0, -2), 0.5F);
    EXPECT_EQ(atan2_turn(-2, 0), -0.25F);
    EXPECT_EQ(atan2_turn(0, 0), 0);
    for (int exponent = -126; exponent <= 126; ++exponent) {
        EXPECT_EQ(log2_of_normal(std::ldexp(1.0F, exponent)), static_cast<float>(exponent));
        EXPECT_EQ(exp2_of_held(static_cast<float>(exponent)), std::ldexp(1.0F, exponent));
    }
    EXPECT_EQ(power(1, 77), 1);
    EXPECT_EQ(power(0, 0), 0);
    EXPECT_EQ(floor_to_int(-1.5F), -2);
    EXPECT_EQ(floor_to_int(-2), -2);
    EXPECT_EQ(floor_to_int(std::numeric_limits<float>::quiet_NaN()), 1 << 30);
    EXPECT_EQ(floor_to_int(-1e30F), -(1 << 30));
    EXPECT_EQ(round_to_byte(127.5F), 128);
    EXPECT_EQ(nearest_index(2.4F, 9), 2);
    EXPECT_EQ(nearest_index(-3, 9), 0);
    EXPECT_EQ(nearest_index(std::numeric_limits<float>::quiet_NaN(), 9), 8);
    EXPECT_EQ(hash(0), 0x01FCE552U);
    EXPECT_EQ(hash(1), 0x9F505634U);
    EXPECT_EQ(hash(1 + hash_of_row(2, 3)), 0x06B753B7U);
    EXPECT_EQ(unit(0xFFFFFFFFU), 0x1.fffffep-1F);
}

// Planes of every small shape against inaccessible pages, at positions in, on and beyond their edges.
TEST(Sampling, BilinearRowsStayInsideThePlane) {
    tavik_test::GuardedMemory memory(4096);
    for (const auto placement :
         {tavik_test::Placement::against_the_page_before, tavik_test::Placement::against_the_page_after}) {
        for (int32_t width = 1; width <= 5; ++width) {
            for (int32_t height = 1; height <= 5; ++height) {
                uint8_t *plane = memory.place(static_cast<std::size_t>(width * height), placement);
                for (int32_t i = 0; i < width * height; ++i) plane[i] = static_cast<uint8_t>(i * 37 + 11);
                std::vector<float> x;
                std::vector<float> y;
                for (float row = -1; row <= static_cast<float>(height); row += 0.375F) {
                    for (float column = -1; column <= static_cast<float>(width); column += 0.375F) {
                        x.push_back(column);
                        y.push_back(row);
                    }
                    x.push_back(std::numeric_limits<float>::quiet_NaN());
                    y.push_back(1e30F);
                }
                std::vector<float> result(x.size());
                sample_bilinear.active()(plane, width, height, x.data(), y.data(), result.data(), x.size());
                for (std::size_t i = 0; i < x.size(); ++i)
                    ASSERT_EQ(result[i], bilinear(plane, width, height, x[i], y[i]))
                        << width << ' ' << height << ": " << x[i] << ' ' << y[i];
            }
        }
    }
}

TEST(Sampling, BilinearWeighsFourSamples) {
    const std::array<float, 6> plane = {0, 10, 20, 100, 210, 320};
    EXPECT_EQ(bilinear(plane.data(), 3, 2, 0.5F, 0.25F), 42.5F);
    EXPECT_EQ(bilinear(plane.data(), 3, 2, 7, -3), 20);
    EXPECT_EQ(bilinear_wrapped(plane.data(), 3, 2, 2.5F, 0), 10);
    EXPECT_EQ(bilinear_wrapped(plane.data(), 3, 2, 3, 1), 100);
}

} // namespace
