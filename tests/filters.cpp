#include "tavik/filters/filters.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <tuple>
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
    Bytes samples;

    Plane(int32_t last_column, int32_t last_row, uint8_t value = 99)
        : x_max(last_column),
          y_max(last_row),
          samples(static_cast<std::size_t>(last_column + 1) * static_cast<std::size_t>(last_row + 1), value) {}

    uint8_t &at(int32_t x, int32_t y) { return samples[static_cast<std::size_t>(y * (x_max + 1) + x)]; }
    int32_t at(int32_t x, int32_t y) const { return samples[static_cast<std::size_t>(y * (x_max + 1) + x)]; }
};

Plane noisy(int32_t x_max, int32_t y_max) {
    Plane plane(x_max, y_max);
    plane.samples = noise(plane.samples.size(), static_cast<uint32_t>(x_max * 1000 + y_max));
    return plane;
}

Plane convolved(const Plane &src, const Kernel &k, int32_t divisor, int32_t bias) {
    Plane dst(src.x_max, src.y_max);
    call(Convolve8, dst.samples.data(), src.samples.data(), src.x_max, src.y_max, k, divisor, bias);
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

// Neighbours outside the filtered picture are replaced by its edge.
TEST(Filters, ConvolutionWeighsEachNeighbour) {
    Plane few(4, 3);
    few.samples = {1, 2, 3, 4, 9, 10, 20, 30, 40, 9, 50, 70, 90, 110, 9, 9, 9, 9, 9, 9};
    const auto centre = [&](const Kernel &k, int32_t x, int32_t y) { return convolved(few, k, 20, 0).at(x, y); };
    EXPECT_EQ(centre({20, 0, 0, 0, 0, 0, 0, 0, 0}, 1, 1), 1);
    EXPECT_EQ(centre({1, 2, 3, 4, 5, 6, 7, 8, 9}, 1, 1), 102);
    EXPECT_EQ(centre({1, 2, 3, 4, 5, 6, 7, 8, 9}, 0, 1), 79);
    EXPECT_EQ(centre({1, 2, 3, 4, 5, 6, 7, 8, 9}, 3, 1), 154);
    EXPECT_EQ(centre({1, 2, 3, 4, 5, 6, 7, 8, 9}, 1, 0), 27);
    EXPECT_EQ(centre({1, 2, 3, 4, 5, 6, 7, 8, 9}, 2, 2), 189);
    struct Case {
        Kernel kernel;
        int32_t divisor, bias;
        uint32_t result;
    };
    const Case cases[] = {
        {identity, 1, 0, 0x7ECC5ECEU},
        {ones, 9, 0, 0x182F845BU},
        {{1, 2, 3, 4, 5, 6, 7, 8, 9}, 45, 0, 0xBE96BD4AU},
        {{-1, -2, -3, -4, 60, -6, -7, -8, -9}, 20, 0, 0x6890528BU},
        {{-2, -1, 0, -1, 1, 1, 0, 1, 2}, 1, 128, 0xED2ED20EU},
        {{-3, 5, -7, 11, -13, 17, -19, 23, -29}, -4, 60, 0x13AB1284U},
        {{16448, 0, 0, 0, 0, 0, 0, 0, 0}, 16449, 1, 0x4FC2ABA5U}, // The largest light sums
        {{0, 0, 0, 0, 0, 0, 0, 0, 16449}, 16451, 1, 0x9A1EAC1DU}, // and the first above.
        {{32767, -32768, 32767, -32768, 32767, -32768, 32767, 1, 2}, 40000, 100, 0xE3DDF876U},
        {{1000000007, -1000000009, 998244353, 3, 5, 7, -2147483647, 11, 13},
         8000000,
         99,
         0xF8430358U}, // Sums wrap around.
        {{100, 100, 100, 100, 100, 100, 100, 100, 100}, 2147483647, 7, 0x632C3B61U},
        {{-100, 1, 1, 1, 1, 1, 1, 1, 1}, 1, 2147483647 - 1000, 0x33C615D8U},
    };
    const Plane src = noisy(131, 7);
    for (const Case &c : cases)
        EXPECT_EQ(folded(convolved(src, c.kernel, c.divisor, c.bias).samples), c.result) << c.kernel[0];
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
        {{1, 1, 1}, {no_number, 0, 0}, 1, 0},
    };
    constexpr int32_t x_max = 67;
    constexpr int32_t rows = 3;
    for (const Case &c : cases) {
        Floats normals;
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
    Plane few(3, 2);
    few.samples = {50, 10, 90, 1, 20, 80, 30, 2, 70, 40, 60, 3};
    Plane few_medians(3, 2);
    xMedian(few.samples.data(), few_medians.samples.data(), 3, 2);
    EXPECT_EQ(few_medians.samples, (Bytes{99, 99, 99, 99, 99, 50, 30, 99, 99, 99, 99, 99}));
    for (const auto &[x_max, y_max, result] : {std::tuple{131, 6, 0x019EE3B7U},
                                               {2, 2, 0x478ABA86U},
                                               {1, 5, 0x9CE69501U},
                                               {5, 1, 0x9CE69501U},
                                               {0, 0, 0xE60C2C52U},
                                               {-1, 3, 0xABC4E599U},
                                               {3, -1, 0xABC4E599U}}) {
        const Plane src = noisy(std::max(x_max, 0), std::max(y_max, 0));
        Plane dst(src.x_max, src.y_max);
        xMedian(src.samples.data(), dst.samples.data(), x_max, y_max);
        EXPECT_EQ(folded(dst.samples), result) << x_max;
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
    const Bytes samples = {3, 1, 4, 1, 5, 9};
    for (const auto &[radius, high, low] : {std::tuple{1, Bytes{3, 3, 4, 4, 5, 9}, Bytes{3, 1, 1, 1, 1, 5}},
                                            {2, Bytes{3, 4, 4, 5, 9, 9}, Bytes{1, 1, 1, 1, 1, 1}},
                                            {0, Bytes(6, 0), Bytes(6, 255)},
                                            {-3, Bytes(6, 0), Bytes(6, 255)}}) {
        Bytes largest(6);
        Bytes smallest(6);
        Maximum_s(samples.data(), largest.data(), 5, 0, radius);
        Minimum_s(samples.data(), smallest.data(), 5, 0, radius);
        EXPECT_EQ(largest, high) << radius;
        EXPECT_EQ(smallest, low) << radius;
    }
    for (const auto &[x_max, y_max, result] : {std::tuple{150, 66, 0xDDE53250U},
                                               {20, 3, 0x3637D74CU},
                                               {0, 70, 0x92403B18U},
                                               {70, 0, 0xE6557C2FU},
                                               {1, 1, 0x07593895U},
                                               {-1, 5, 0x75BCC2A8U},
                                               {5, -1, 0x75BCC2A8U}}) {
        const Plane src = noisy(std::max(x_max, 0), std::max(y_max, 0));
        uint32_t all = 0;
        for (const int32_t radius : {-3, 0, 1, 2, 3, 8, 10, 11, 31, 32, 33, 64, 75, 76, 149, 150, 151, 2147483647}) {
            Plane turned(src.y_max, src.x_max);
            Maximum_s(src.samples.data(), turned.samples.data(), x_max, y_max, radius);
            all = folded(turned.samples, all);
            Minimum_s(src.samples.data(), turned.samples.data(), x_max, y_max, radius);
            all = folded(turned.samples, all);
        }
        EXPECT_EQ(all, result) << x_max;
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

TEST(Filters, BlurOfAnImpulse) {
    const Bytes line = {0, 0, 0, 0, 255, 0, 0, 0, 0};
    for (const auto &[passes, expected] :
         {std::pair<int32_t, Bytes>{1, {0, 0, 0, 85, 85, 85, 0, 0, 0}}, {3, {0, 9, 28, 57, 66, 57, 28, 9, 0}}}) {
        for (const bool down : {false, true}) {
            Bytes dst(9);
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
    struct Case {
        int32_t radius;
        std::array<uint32_t, 3> results; // of no pass, one and three
    };
    for (const Case &c : {Case{-4, {0x7051CF7BU, 0x7051CF7BU, 0x7051CF7BU}},
                          {0, {0x7051CF7BU, 0x7051CF7BU, 0x7051CF7BU}},
                          {1, {0x7051CF7BU, 0xECF31D6AU, 0x0B87A0A8U}},
                          {7, {0x7051CF7BU, 0x8859EAC4U, 0x39805C00U}},
                          {15, {0x7051CF7BU, 0x66394042U, 0xB5B9BE59U}},
                          {16, {0x7051CF7BU, 0xE2A907C7U, 0x9B09B6B9U}},
                          {50, {0x7051CF7BU, 0x5CA2419AU, 0x8B0488FCU}},
                          {127, {0x7051CF7BU, 0xBE316491U, 0xCEA960BAU}},
                          {1000, {0x7051CF7BU, 0xBE316491U, 0xCEA960BAU}}}) {
        const Plane src = noisy(70, 36);
        const auto blurred = [&](int32_t passes) {
            Plane dst(70, 36);
            xBlur(71, 37, c.radius, passes, src.samples.data(), dst.samples.data());
            return folded(dst.samples);
        };
        EXPECT_EQ((std::array{blurred(0), blurred(1), blurred(3)}), c.results) << c.radius;
        EXPECT_EQ(blurred(-1), blurred(0));
    }
}

// Wide pictures are blurred strip by strip, in place all at once.
TEST(Filters, BlurOfWidePicturesIsThatInPlace) {
    struct Case {
        int32_t width, radius, passes;
    };
    for (const Case &c : {Case{385, 2, 1}, {700, 6, 3}, {1025, 1, 20}, {3000, 127, 1}, {600, 127, 9}}) {
        constexpr int32_t height = 21;
        const Bytes src = noise(area(c.width, height), 3);
        Bytes dst(src.size());
        xBlur(c.width, height, c.radius, c.passes, src.data(), dst.data());
        Bytes in_place = src;
        xBlur(c.width, height, c.radius, c.passes, in_place.data(), in_place.data());
        EXPECT_EQ(dst, in_place) << c.width << ' ' << c.radius << ' ' << c.passes;
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
    call(Convolve8, dst, src, w.bounds(), k, w.integer(1, 5 * largest_weight), w.integer(-50, 200));
}

void shade(Workspace &w, bool three) {
    // The last normal of the last row is not read.
    const std::size_t read = w.count() - 1;
    float *normals = w.floats(3 * read, -1, 1);
    float *light = w.floats(3, -2, 2);
    const float scale = w.real(100, 300);
    if (three)
        call(xGradientConvolve, w.width - 1, w.height, normals, light, scale, w.buffers(read));
    else
        xGradientConvolve8(w.width - 1, w.height, normals, light, scale, w.buffer(read));
}

template <auto Export> void run_transposed(Workspace &w) {
    call(Export, w.buffer(), w.result(), w.bounds(), w.integer(0, 20));
}

const BulkCase cases[] = {
    {"Convolve8", [](Workspace &w) { convolve(w, 12); }},
    {"Convolve8_heavy", [](Workspace &w) { convolve(w, 100000000); }},
    {"xGradientConvolve", [](Workspace &w) { shade(w, true); }},
    {"xGradientConvolve8", [](Workspace &w) { shade(w, false); }},
    {"xMedian", [](Workspace &w) { call(xMedian, w.buffer(), w.buffer(), w.bounds()); }},
    {"Maximum_s", run_transposed<Maximum_s>},
    {"Minimum_s", run_transposed<Minimum_s>},
    {"xBlur",
     [](Workspace &w) {
         uint8_t *src = w.buffer();
         call(xBlur, w.size(), w.integer(0, 20), 3, src, w.result_of(src));
     },
     true},
};

const BulkFamily family("Filters", cases);

} // namespace
