#include "tavik/filters/filters.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

using Kernel = std::array<int32_t, 9>;

// A plane in the form of upper bounds.
struct Plane {
    int32_t x_max;
    int32_t y_max;
    std::vector<uint8_t> samples;

    Plane(int32_t last_column, int32_t last_row, uint8_t value = 99)
        : x_max(last_column),
          y_max(last_row),
          samples(static_cast<std::size_t>(last_column + 1) * static_cast<std::size_t>(last_row + 1), value) {}

    uint8_t &at(int32_t x, int32_t y) { return samples[static_cast<std::size_t>(y * (x_max + 1) + x)]; }
    int32_t at(int32_t x, int32_t y) const { return samples[static_cast<std::size_t>(y * (x_max + 1) + x)]; }
};

Plane noise(int32_t x_max, int32_t y_max) {
    Plane plane(x_max, y_max);
    std::mt19937 random(static_cast<uint32_t>(x_max * 1000 + y_max));
    for (uint8_t &sample : plane.samples) sample = static_cast<uint8_t>(random());
    return plane;
}

Plane convolved(const Plane &src, const Kernel &k, int32_t divisor, int32_t bias) {
    Plane dst(src.x_max, src.y_max);
    Convolve8(dst.samples.data(), src.samples.data(), src.x_max, src.y_max, k[0], k[1], k[2], k[3], k[4], k[5], k[6],
              k[7], k[8], divisor, bias);
    return dst;
}

constexpr Kernel identity = {0, 0, 0, 0, 1, 0, 0, 0, 0};
constexpr Kernel ones = {1, 1, 1, 1, 1, 1, 1, 1, 1};

TEST(Filters, ConvolutionLeavesCornersAndTheLastRowAndColumn) {
    for (const auto &[x_max, y_max] :
         {std::pair{6, 5}, {100, 4}, {5, 2}, {6, 1}, {2, 6}, {1, 6}, {2, 2}, {9, 0}, {0, 9}}) {
        const Plane src(x_max, y_max, 20);
        const Plane dst = convolved(src, ones, 9, 0);
        for (int32_t y = 0; y <= y_max; ++y) {
            for (int32_t x = 0; x <= x_max; ++x) {
                const bool on_side = x == 0 || x == x_max - 1;
                const bool on_top_or_bottom = y == 0 || y == y_max - 1;
                const bool written = x < x_max && y < y_max && !(on_side && on_top_or_bottom);
                EXPECT_EQ(dst.at(x, y), written ? 20 : 99) << x_max << ' ' << y_max << ": " << x << ' ' << y;
            }
        }
    }
}

// What a kernel gives, from 64-bit sums, with neighbours outside the filtered picture replaced by its edge.
int32_t expected_at(const Plane &src, const Kernel &kernel, int64_t divisor, int64_t bias, int32_t x, int32_t y) {
    int64_t sum = 0;
    for (int32_t j = -1; j <= 1; ++j)
        for (int32_t i = -1; i <= 1; ++i)
            sum += int64_t{kernel[static_cast<std::size_t>(3 * j + i + 4)]} *
                   src.at(std::clamp(x + i, 0, src.x_max - 1), std::clamp(y + j, 0, src.y_max - 1));
    const auto wrapped = [](int64_t value) { return static_cast<int32_t>(static_cast<uint32_t>(value)); };
    return std::clamp(wrapped(wrapped(sum) / divisor + bias), 0, 255);
}

TEST(Filters, ConvolutionWeighsEachNeighbour) {
    struct Case {
        Kernel kernel;
        int32_t divisor, bias;
    };
    const Case cases[] = {
        {identity, 1, 0},
        {ones, 9, 0},
        {{1, 2, 3, 4, 5, 6, 7, 8, 9}, 45, 0},
        {{-1, -2, -3, -4, 60, -6, -7, -8, -9}, 20, 0},
        {{-2, -1, 0, -1, 1, 1, 0, 1, 2}, 1, 128},
        {{-3, 5, -7, 11, -13, 17, -19, 23, -29}, -4, 60},
        {{16448, 0, 0, 0, 0, 0, 0, 0, 0}, 16449, 1}, // The largest light sums
        {{0, 0, 0, 0, 0, 0, 0, 0, 16449}, 16451, 1}, // and the first above.
        {{32767, -32768, 32767, -32768, 32767, -32768, 32767, 1, 2}, 40000, 100},
        {{1000000007, -1000000009, 998244353, 3, 5, 7, -2147483647, 11, 13}, 8000000, 99}, // Sums wrap around.
        {{100, 100, 100, 100, 100, 100, 100, 100, 100}, 2147483647, 7},
        {{-100, 1, 1, 1, 1, 1, 1, 1, 1}, 1, 2147483647 - 1000},
    };
    const Plane src = noise(131, 7);
    for (const Case &c : cases) {
        const Plane dst = convolved(src, c.kernel, c.divisor, c.bias);
        for (int32_t y = 0; y < src.y_max; ++y) {
            for (int32_t x = 0; x < src.x_max; ++x) {
                if ((x == 0 || x == src.x_max - 1) && (y == 0 || y == src.y_max - 1)) continue;
                ASSERT_EQ(dst.at(x, y), expected_at(src, c.kernel, c.divisor, c.bias, x, y))
                    << c.kernel[0] << ": " << x << ' ' << y;
            }
        }
    }
}

// Sums one below, at and one above multiples of the divisor, of either sign, with the bias that shows their quotient.
// A column's three samples are the digits of its sum.
TEST(Filters, ConvolutionDividesExactlyNearMultiples) {
    struct Digits {
        int32_t high, middle;
        int32_t largest_sum;
    };
    const Digits kernels[] = {{16000, 200, 255 * 16201}, {32767, 255, 255 * 33023}};
    for (const Digits &digits : kernels) {
        for (const int32_t divisor :
             {1, 2, 3, 7, 9, 16, 25, 45, 100, 255, 256, 257, 331, 1000, 4095, 4097, 16381, 65537, 999983, 2097151}) {
            for (const int32_t sign : {1, -1}) {
                // Quotients in the window 1 .. 254 around each of a few multiples.
                const int32_t quotients = digits.largest_sum / divisor;
                for (const int32_t first : {0, quotients / 2, quotients - 250}) {
                    if (first < 0) continue;
                    std::vector<int32_t> sums;
                    for (int32_t quotient = first; quotient <= std::min(first + 250, quotients); ++quotient)
                        for (int32_t near = -1; near <= 1; ++near)
                            sums.push_back(std::clamp(quotient * divisor + near, 0, digits.largest_sum));
                    Plane src(static_cast<int32_t>(sums.size()) + 1, 3);
                    for (std::size_t i = 0; i < sums.size(); ++i) {
                        const auto x = static_cast<int32_t>(i) + 1;
                        const int32_t high = std::min(sums[i] / digits.high, 255);
                        const int32_t rest = sums[i] - high * digits.high;
                        const int32_t middle = std::min(rest / digits.middle, 255);
                        src.at(x, 0) = static_cast<uint8_t>(high);
                        src.at(x, 1) = static_cast<uint8_t>(middle);
                        src.at(x, 2) = static_cast<uint8_t>(rest - middle * digits.middle);
                        ASSERT_LE(rest - middle * digits.middle, 255);
                    }
                    const Kernel kernel = {0, sign * digits.high, 0, 0, sign * digits.middle, 0, 0, sign, 0};
                    const int32_t bias = sign > 0 ? 2 - first : first + 253;
                    const Plane dst = convolved(src, kernel, divisor, bias);
                    for (std::size_t i = 0; i + 1 < sums.size(); ++i)
                        ASSERT_EQ(dst.at(static_cast<int32_t>(i) + 1, 1), sign * sums[i] / divisor + bias)
                            << sign * sums[i] << " / " << divisor;
                }
            }
        }
    }
}

TEST(Filters, NegativeSumsTruncateTowardZero) {
    const Plane src(80, 3, 5);
    EXPECT_EQ(convolved(src, {0, 0, 0, 0, -1, 0, 0, 0, 0}, 2, 0).at(40, 1), 0);
    EXPECT_EQ(convolved(src, {0, 0, 0, 0, -1, 0, 0, 0, 0}, 2, 128).at(40, 1), 126);
    EXPECT_EQ(convolved(src, {0, 0, 0, 0, 1, 0, 0, 0, 0}, -2, 128).at(78, 1), 126);
}

TEST(Filters, NormalsAreShadedByTheirProductWithTheLight) {
    struct Case {
        std::array<float, 3> normal, light;
        float scale;
        int shade;
    };
    const Case cases[] = {
        {{0, 0, 1}, {0, 0, 1}, 255, 255},
        {{0, 0, -1}, {0, 0, 1}, 255, 0},
        {{0.5F, 0.25F, 2}, {10, 20, 30}, 1.5F, 105},
        {{1, 1, 1}, {0.9F, 0, 0}, 1, 0},
        {{1, 1, 1}, {200, 100, 1}, 1, 255},
        {{1, 1, 1}, {1e10F, 0, 0}, 1, 0}, // No 32-bit integer holds it.
        {{1, 1, 1}, {1e8F, -1e8F, 3}, 1, 3},
        {{1, 1, 1}, {-1e8F, 3, 1e8F}, 1, 0},
        {{1, 1, 1}, {std::numeric_limits<float>::quiet_NaN(), 0, 0}, 1, 0},
    };
    constexpr int32_t x_max = 67;
    constexpr int32_t rows = 3;
    for (const Case &c : cases) {
        std::vector<float> normals;
        for (int32_t i = 0; i < (x_max + 1) * rows; ++i)
            normals.insert(normals.end(), c.normal.begin(), c.normal.end());
        std::array<Plane, 4> dst = {Plane(x_max, rows), Plane(x_max, rows), Plane(x_max, rows), Plane(x_max, rows)};
        xGradientConvolve(x_max, rows, normals.data(), c.light.data(), c.scale, dst[0].samples.data(),
                          dst[1].samples.data(), dst[2].samples.data());
        xGradientConvolve8(x_max, rows, normals.data(), c.light.data(), c.scale, dst[3].samples.data());
        for (const Plane &plane : dst)
            for (int32_t y = 0; y <= rows; ++y)
                for (int32_t x = 0; x <= x_max; ++x)
                    ASSERT_EQ(plane.at(x, y), x < x_max && y < rows ? c.shade : 99)
                        << c.light[0] << ": " << x << ' ' << y;
    }
}

TEST(Filters, MedianIsTheFifthOfNine) {
    for (const auto &[x_max, y_max] : {std::pair{131, 6}, {2, 2}, {1, 5}, {5, 1}, {0, 0}, {-1, 3}, {3, -1}}) {
        const Plane src = noise(std::max(x_max, 0), std::max(y_max, 0));
        Plane dst(std::max(x_max, 0), std::max(y_max, 0));
        xMedian(src.samples.data(), dst.samples.data(), x_max, y_max);
        for (int32_t y = 0; y <= y_max; ++y) {
            for (int32_t x = 0; x <= x_max; ++x) {
                int32_t expected = 99;
                if (x > 0 && x < x_max && y > 0 && y < y_max) {
                    std::array<int32_t, 9> nine;
                    for (int32_t i = 0; i < 9; ++i)
                        nine[static_cast<std::size_t>(i)] = src.at(x + i % 3 - 1, y + i / 3 - 1);
                    std::nth_element(nine.begin(), nine.begin() + 4, nine.end());
                    expected = nine[4];
                }
                ASSERT_EQ(dst.at(x, y), expected) << x_max << ' ' << y_max << ": " << x << ' ' << y;
            }
        }
    }
}

// A selection of nine is right when it is right for all pictures of two levels.
TEST(Filters, MedianOfTwoLevels) {
    Plane src(3 * 512, 2, 0);
    for (int32_t pattern = 0; pattern < 512; ++pattern)
        for (int32_t bit = 0; bit < 9; ++bit)
            if ((pattern >> bit & 1) != 0) src.at(3 * pattern + bit % 3, bit / 3) = 255;
    Plane dst(3 * 512, 2);
    xMedian(src.samples.data(), dst.samples.data(), src.x_max, src.y_max);
    for (uint32_t pattern = 0; pattern < 512; ++pattern)
        ASSERT_EQ(dst.at(static_cast<int32_t>(3 * pattern + 1), 1), __builtin_popcount(pattern) >= 5 ? 255 : 0)
            << pattern;
}

TEST(Filters, RunningMaximumAndMinimumForEveryRadius) {
    for (const auto &[x_max, y_max] : {std::pair{150, 66}, {20, 3}, {0, 70}, {70, 0}, {1, 1}, {-1, 5}, {5, -1}}) {
        const Plane src = noise(std::max(x_max, 0), std::max(y_max, 0));
        for (const int32_t radius : {-3, 0, 1, 2, 3, 8, 10, 11, 31, 32, 33, 64, 75, 76, 149, 150, 151, 2147483647}) {
            Plane largest(std::max(y_max, 0), std::max(x_max, 0));
            Plane smallest = largest;
            Maximum_s(src.samples.data(), largest.samples.data(), x_max, y_max, radius);
            Minimum_s(src.samples.data(), smallest.samples.data(), x_max, y_max, radius);
            if (x_max < 0 || y_max < 0) {
                EXPECT_EQ(largest.samples, Plane(largest.x_max, largest.y_max).samples);
                EXPECT_EQ(smallest.samples, largest.samples);
                continue;
            }
            for (int32_t y = 0; y <= y_max; ++y) {
                for (int32_t x = 0; x <= x_max; ++x) {
                    int32_t high = 0;
                    int32_t low = 255;
                    const int32_t reach = std::min(radius, 1000);
                    for (int32_t i = std::max(x - reach, 0); radius > 0 && i <= std::min(x + reach - 1, x_max); ++i) {
                        high = std::max(high, src.at(i, y));
                        low = std::min(low, src.at(i, y));
                    }
                    ASSERT_EQ(largest.at(y, x), high)
                        << x_max << ' ' << y_max << ' ' << radius << ": " << x << ' ' << y;
                    ASSERT_EQ(smallest.at(y, x), low)
                        << x_max << ' ' << y_max << ' ' << radius << ": " << x << ' ' << y;
                }
            }
        }
    }
}

TEST(Filters, TwoRunningMaximaDilateByASquare) {
    Plane src(20, 30, 0);
    src.at(7, 11) = 200;
    Plane turned(30, 20);
    Plane dilated(20, 30);
    Maximum_s(src.samples.data(), turned.samples.data(), 20, 30, 3);
    Maximum_s(turned.samples.data(), dilated.samples.data(), 30, 20, 3);
    for (int32_t y = 0; y <= 30; ++y)
        for (int32_t x = 0; x <= 20; ++x)
            EXPECT_EQ(dilated.at(x, y), x >= 5 && x <= 10 && y >= 9 && y <= 14 ? 200 : 0) << x << ' ' << y;
}

// One pass along a line, from exact sums.
std::vector<int64_t> box_pass(const std::vector<int64_t> &line, int64_t radius) {
    const auto last = static_cast<int64_t>(line.size()) - 1;
    std::vector<int64_t> means;
    for (int64_t i = 0; i <= last; ++i) {
        int64_t sum = 0;
        for (int64_t j = i - radius; j <= i + radius; ++j)
            sum += line[static_cast<std::size_t>(std::clamp(j, int64_t{0}, last))];
        means.push_back(
            static_cast<int64_t>(static_cast<float>(sum) * (1.0F / static_cast<float>(2 * radius + 1)) + 0.5F));
    }
    return means;
}

TEST(Filters, BlurOfAnImpulse) {
    const std::vector<uint8_t> line = {0, 0, 0, 0, 255, 0, 0, 0, 0};
    for (const auto &[passes, expected] : {std::pair<int32_t, std::vector<uint8_t>>{1, {0, 0, 0, 85, 85, 85, 0, 0, 0}},
                                           {3, {0, 9, 28, 57, 66, 57, 28, 9, 0}}}) {
        for (const bool down : {false, true}) {
            std::vector<uint8_t> dst(9);
            xBlur(down ? 1 : 9, down ? 9 : 1, 1, passes, line.data(), dst.data());
            EXPECT_EQ(dst, expected);
        }
    }
    Plane plane(4, 4, 0);
    plane.at(2, 2) = 255;
    xBlur(5, 5, 1, 1, plane.samples.data(), plane.samples.data());
    for (int32_t y = 0; y < 5; ++y)
        for (int32_t x = 0; x < 5; ++x) EXPECT_EQ(plane.at(x, y), x % 4 != 0 && y % 4 != 0 ? 28 : 0);
}

TEST(Filters, BlurOfEveryRadius) {
    for (const auto &[radius, held] :
         {std::pair{-4, 0}, {0, 0}, {1, 1}, {7, 7}, {15, 15}, {16, 16}, {50, 50}, {127, 127}, {1000, 127}}) {
        for (const int32_t passes : {-1, 0, 1, 3}) {
            const Plane src = noise(70, 36);
            Plane expected = src;
            std::vector<std::vector<int64_t>> rows;
            for (int32_t y = 0; y <= 36; ++y) {
                std::vector<int64_t> row;
                for (int32_t x = 0; x <= 70; ++x) row.push_back(src.at(x, y) * 256);
                for (int32_t pass = 0; pass < passes; ++pass) row = box_pass(row, held);
                rows.push_back(row);
            }
            for (int32_t x = 0; x <= 70; ++x) {
                std::vector<int64_t> column;
                for (const auto &row : rows) column.push_back(row[static_cast<std::size_t>(x)]);
                for (int32_t pass = 0; pass < passes; ++pass) column = box_pass(column, held);
                for (int32_t y = 0; y <= 36; ++y)
                    expected.at(x, y) = static_cast<uint8_t>((column[static_cast<std::size_t>(y)] + 128) / 256);
            }
            Plane dst(70, 36);
            xBlur(71, 37, radius, passes, src.samples.data(), dst.samples.data());
            ASSERT_EQ(dst.samples, expected.samples) << radius << ' ' << passes;
        }
    }
}

void convolve(Workspace &w, int32_t largest_weight) {
    // Nothing is read or written of the last row, nor of the last column's end.
    const std::size_t columns = static_cast<std::size_t>(w.width);
    const std::size_t touched = columns < 2 || w.height < 2 ? 0 : columns * static_cast<std::size_t>(w.height - 1) - 1;
    uint8_t *src = w.buffer(touched);
    uint8_t *dst = w.buffer(touched);
    Kernel k;
    for (int32_t &weight : k) weight = w.integer(-largest_weight, largest_weight);
    Convolve8(dst, src, w.width - 1, w.height - 1, k[0], k[1], k[2], k[3], k[4], k[5], k[6], k[7], k[8],
              w.integer(1, 5 * largest_weight), w.integer(-50, 200));
}

void shade(Workspace &w, bool three) {
    // The last normal of the last row is not read.
    const std::size_t read = w.count() - 1;
    float *normals = w.floats(3 * read, -1, 1);
    float *light = w.floats(3, -2, 2);
    const float scale = w.real(100, 300);
    if (three)
        xGradientConvolve(w.width - 1, w.height, normals, light, scale, w.buffer(read), w.buffer(read), w.buffer(read));
    else
        xGradientConvolve8(w.width - 1, w.height, normals, light, scale, w.buffer(read));
}

template <auto Export> void run_transposed(Workspace &w) {
    uint8_t *src = w.buffer(w.count());
    Export(src, w.result(w.count()), w.width - 1, w.height - 1, w.integer(0, 20));
}

const BulkCase cases[] = {
    {"Convolve8", [](Workspace &w) { convolve(w, 12); }},
    {"Convolve8_heavy", [](Workspace &w) { convolve(w, 100000000); }},
    {"xGradientConvolve", [](Workspace &w) { shade(w, true); }},
    {"xGradientConvolve8", [](Workspace &w) { shade(w, false); }},
    {"xMedian",
     [](Workspace &w) {
         uint8_t *src = w.buffer(w.count());
         xMedian(src, w.buffer(w.count()), w.width - 1, w.height - 1);
     }},
    {"Maximum_s", run_transposed<Maximum_s>},
    {"Minimum_s", run_transposed<Minimum_s>},
    {"xBlur",
     [](Workspace &w) {
         uint8_t *src = w.buffer(w.count());
         xBlur(w.width, w.height, w.integer(0, 20), 3, src, w.result_of(src, w.count()));
     },
     true},
};

const BulkFamily family("Filters", cases);

} // namespace
