#include "tavik/resample/resample.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

using Bytes = std::vector<uint8_t>;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

Bytes noise(std::size_t count) {
    Bytes bytes(count);
    std::mt19937 random(static_cast<uint32_t>(count));
    for (uint8_t &byte : bytes) byte = static_cast<uint8_t>(random() % 3 == 0 ? random() % 2 * 255 : random());
    return bytes;
}

std::size_t area(int32_t width, int32_t height) { return static_cast<std::size_t>(width * height); }

TEST(Resample, BilinearValues) {
    struct Case {
        int32_t p00, p10, p01, p11;
        float tx, ty;
        int32_t expected;
    };
    const Case cases[] = {
        {0, 255, 0, 255, 0.5F, 0.5F, 127},
        {10, 20, 30, 60, 0.25F, 0.0F, 12},
        {10, 20, 30, 60, 0.0F, 0.25F, 15},
        {10, 20, 30, 60, 1.0F, 1.0F, 60},
        {0, 10, 0, 10, -0.25F, 0, -2}, // toward zero
        {2147483647, -2, 2147483647, -2, 1.0F, 0, -2147483647 - 1},
        {0, 0, 2147483647, 2147483647, 0, 3, -2147483647 - 1},
        {1, 2, 3, 4, nan, 0, -2147483647 - 1},
    };
    for (const Case &c : cases) EXPECT_EQ(Bilerp(c.p00, c.p10, c.p01, c.p11, c.tx, c.ty), c.expected) << c.p00;

    const uint8_t plane[] = {10, 20, 40, 110, 120, 240};
    struct Place {
        float x, y;
        int32_t expected;
    };
    const Place places[] = {
        {0, 0, 10},
        {1.5F, 0, 30},
        {0.5F, 0.5F, 65},
        {1.5F, 1, 180},
        {2, 0.5F, 140},
        {2.5F, 0.5F, 140},
        {-0.5F, 0, 5},
        {0, -0.5F, -40},
        {-1.5F, 0, 5},
        {7.25F, 9, 240},
        {1e10F, 0, -2147483647 - 1},
        {-3e9F, 0, -2147483647 - 1},
    };
    for (const Place &p : places) EXPECT_EQ(BilinearSample(p.x, p.y, 3, 2, plane), p.expected) << p.x << ' ' << p.y;
    EXPECT_EQ(BilinearSample(5.5F, -3.5F, 1, 1, plane), 10);
}

TEST(Resample, CubicValues) {
    std::array<float, 16> patch;
    patch.fill(7.5F);
    EXPECT_EQ(f_bicubicInterpolate(patch.data(), 0.3F, 0.8F), 7.5F);
    for (std::size_t i = 0; i < patch.size(); ++i) patch[i] = static_cast<float>(i * i);
    EXPECT_EQ(f_bicubicInterpolate(patch.data(), 0, 0), 25);
    EXPECT_EQ(f_bicubicInterpolate(patch.data(), 1, 0), 81); // to the right
    EXPECT_EQ(f_bicubicInterpolate(patch.data(), 0, 1), 36); // below
    EXPECT_EQ(f_bicubicInterpolate(patch.data(), 0.5F, 0), 49);
    patch.fill(0);
    patch[4] = 16; // to the right by 0, above by 1
    EXPECT_EQ(f_bicubicInterpolate(patch.data(), 0, 0.5F), -1);

    for (const float t : {-3.0F, 0.0F, 0.3F, 1.0F, 77.0F}) EXPECT_EQ(Bspline(1, 1, 1, 1, t), 1) << t;
    EXPECT_EQ(Bspline(0, 1, 0, 0, 0), 0.6666667F);
    EXPECT_FLOAT_EQ(Bspline(0, 1, 0, 0, 1), 1.0F / 6);
    EXPECT_FLOAT_EQ(Bspline(6, 0, 0, 0, 0.5F), 0.125F);
    EXPECT_FLOAT_EQ(Bspline(0, 48, 0, 0, 0.5F), 23);
    EXPECT_FLOAT_EQ(Bspline(0, 0, 48, 0, 0.5F), 23);
    EXPECT_FLOAT_EQ(Bspline(0, 0, 0, 6, 0.5F), 0.125F);
}

// The formula of the passes, term by term.
uint8_t cubic(float p0, float p1, float p2, float p3, float t) {
    const float a = 1.5F * p1 - 0.5F * p0 - 1.5F * p2 + 0.5F * p3;
    const float b = p0 - 2.5F * p1 + 2.0F * p2 - 0.5F * p3;
    const float c = 0.5F * p2 - 0.5F * p0;
    return static_cast<uint8_t>(std::clamp(static_cast<int32_t>(((a * t + b) * (t * t)) + c * t + p1), 0, 255));
}

struct Resize {
    int32_t from, to;
    float scale;
};

// Larger, smaller, the same, a single sample, backwards by less than one.
const Resize resizes[] = {{100, 341, 0.29F}, {341, 100, 3.4F}, {50, 50, 1},    {1, 600, 0.001F},  {2, 7, 0.25F},
                          {3, 9, 0.3F},      {5, 40, 0.1F},    {20, 9, -0.1F}, {9000, 1030, 8.7F}};

TEST(Resample, CubicPasses) {
    for (const Resize &r : resizes) {
        constexpr int32_t lines = 5;
        const auto expected = [&](const Bytes &src, int32_t k, int32_t line, int32_t step, int32_t line_step) {
            const float position = static_cast<float>(k) * r.scale;
            const auto i = static_cast<int32_t>(position);
            const auto at = [&](int32_t j) -> float {
                return src[static_cast<std::size_t>(std::clamp(j, 0, r.from - 1) * step + line * line_step)];
            };
            return cubic(at(i - 1), at(i), at(i + 1), at(i + 2), position - static_cast<float>(i));
        };
        const Bytes src = noise(area(r.from, lines));
        Bytes rows(area(r.to, lines));
        Bytes columns = rows;
        DoCubicPass1Helper(src.data(), rows.data(), r.to - 1, -7, r.from - 1, lines, r.scale, 99);
        DoCubicPass2Helper(src.data(), columns.data(), lines - 1, r.to, -7, r.from - 1, 99, r.scale);
        for (int32_t k = 0; k < r.to; ++k) {
            for (int32_t line = 0; line < lines; ++line) {
                ASSERT_EQ(rows[static_cast<std::size_t>(line * r.to + k)], expected(src, k, line, 1, r.from)) << k;
                ASSERT_EQ(columns[static_cast<std::size_t>(k * lines + line)], expected(src, k, line, lines, 1)) << k;
            }
        }
    }
}

// The centre sample is read where it lies, even in the row before.
TEST(Resample, TheCentreOfACubicIsNotClamped) {
    const Bytes src = {10, 20, 30, 40, 50, 60};
    Bytes dst(2 * 3);
    DoCubicPass1Helper(src.data() + 3, dst.data(), 2, 0, 2, 1, -1, 0);
    EXPECT_EQ(dst, (Bytes{40, 30, 20, 0, 0, 0}));
    DoCubicPass2Helper(src.data() + 3, dst.data(), 0, 3, 0, 2, 0, -1);
    EXPECT_EQ(dst, (Bytes{40, 30, 20, 0, 0, 0}));
    DoCubicPass1Helper(src.data(), dst.data(), -1, 0, 2, 1, 1, 0);
    DoCubicPass1Helper(src.data(), dst.data(), 2, 0, 2, -1, 1, 0);
    DoCubicPass2Helper(src.data(), dst.data(), -1, 3, 0, 2, 0, 1);
    EXPECT_EQ(dst, (Bytes{40, 30, 20, 0, 0, 0}));
}

TEST(Resample, BicubicIsItsKernelOnEachPatch) {
    for (const Resize &x : resizes) {
        for (const Resize &y : {Resize{7, 9, 0.7F}, {9, 3, 4}, {2, 3, 1}, {9, 3, 1e9F}, {9, 2, nan}}) {
            if (x.from < 2) continue;
            const Bytes src = noise(area(x.from, y.from));
            Bytes dst(area(x.to, y.to));
            xBiCubicHelper(src.data(), dst.data(), x.to, y.to, x.from, y.from, x.scale, y.scale);
            for (int32_t row = 0; row < y.to; ++row) {
                for (int32_t column = 0; column < x.to; ++column) {
                    const auto place = [](int32_t k, float scale, int32_t count, std::array<int32_t, 4> &taps) {
                        const float position = static_cast<float>(k) * scale;
                        const bool fits = position < 0x1p31F; // NaN does not.
                        const int64_t whole = fits ? static_cast<int64_t>(position) : -0x80000000LL;
                        for (int32_t tap = 0; tap < 4; ++tap) {
                            const auto wrapped = static_cast<int32_t>(static_cast<uint32_t>(whole - 1 + tap));
                            taps[static_cast<std::size_t>(tap)] = std::clamp(wrapped, 0, count - 2);
                        }
                        return position - static_cast<float>(whole);
                    };
                    std::array<int32_t, 4> sx;
                    std::array<int32_t, 4> sy;
                    std::array<float, 16> patch;
                    const float tx = place(column, x.scale, x.from, sx);
                    const float ty = place(row, y.scale, y.from, sy);
                    for (std::size_t i = 0; i < 16; ++i)
                        patch[i] = src[static_cast<std::size_t>(sy[i % 4] * x.from + sx[i / 4])];
                    const float value = f_bicubicInterpolate(patch.data(), tx, ty);
                    const float clamped = std::isnan(value) ? 255 : std::clamp(value, 0.0F, 255.0F);
                    ASSERT_EQ(dst[static_cast<std::size_t>(row * x.to + column)], static_cast<uint8_t>(clamped))
                        << x.from << ' ' << y.scale << ": " << column << ' ' << row;
                }
            }
        }
    }
}

// The running sum, step by step: a sample is at read(rounded start + whole position).
template <class Read, class Write>
void run_span(float size, double bound, uint8_t first_sample, const Read &read, const Write &write) {
    const float half = size * 0.5F;
    const float inverse = 1.0F / size;
    float sum = first_sample * size;
    for (double d = -1 - half; d <= half + 1 + bound; d += 1) {
        sum += static_cast<float>(read(std::clamp(d + half, 0.0, bound)));
        sum -= static_cast<float>(read(std::clamp(d - half, 0.0, bound)));
        if (d >= 0 && d <= bound) write(d, static_cast<uint8_t>(static_cast<int32_t>(inverse * sum)));
    }
}

// Bounds and targets that give sizes of either parity, a copy, the largest size and sizes whose sums are rounded.
const std::array<std::array<int32_t, 2>, 12> spans = {{{9, 4},
                                                       {9, 3},
                                                       {10, 10},
                                                       {10, 9},
                                                       {10, 20},
                                                       {7, 0},
                                                       {8, -5},
                                                       {600, 31},
                                                       {1500, 2},
                                                       {66000, 2},
                                                       {140001, 1},
                                                       {140001, 2}}};

TEST(Resample, PrefilterAlongRows) {
    for (const auto &[x_max, target] : spans) {
        constexpr int32_t rows = 3;
        const Bytes src = noise(area(x_max + 1, rows));
        Bytes expected(src.size(), 77);
        Bytes dst = expected;
        PrefilterCubicPass1Helper(src.data(), dst.data(), target, -1, x_max, rows);
        if (std::max(target, 1) >= x_max) {
            EXPECT_EQ(dst, src);
            continue;
        }
        for (int32_t r = 0; r < rows - 1; ++r) {
            const double base = r * (x_max + 1);
            run_span(
                static_cast<float>(x_max / std::max(target, 1)), x_max, src[static_cast<std::size_t>(base)],
                [&](double at) { return src[static_cast<std::size_t>(base + at)]; },
                [&](double at, uint8_t average) { expected[static_cast<std::size_t>(base + at)] = average; });
        }
        ASSERT_TRUE(dst == expected) << x_max << ' ' << target;
    }
}

TEST(Resample, PrefilterAlongColumns) {
    for (const auto &[y_max, target] : spans) {
        for (const int32_t x_max : {1, 6, 300}) {
            if (y_max > 2000 && x_max > 6) continue;
            const Bytes src = noise(area(x_max + 1, y_max + 1));
            Bytes expected(src.size(), 77);
            Bytes dst = expected;
            PrefilterCubicPass2Helpter(src.data(), dst.data(), x_max, target, -1, y_max);
            const int32_t stride = x_max + 1;
            if (std::max(target, 1) >= y_max) {
                std::copy_n(src.begin(), area(stride, y_max), expected.begin());
            } else {
                for (int32_t c = 0; c < x_max; ++c)
                    run_span(
                        static_cast<float>(y_max / std::max(target, 1)), y_max, src[static_cast<std::size_t>(c)],
                        [&](double at) {
                            return src[static_cast<std::size_t>(stride * at) + static_cast<std::size_t>(c)];
                        },
                        [&](double at, uint8_t average) {
                            expected[static_cast<std::size_t>(stride * at + c)] = average;
                        });
            }
            ASSERT_TRUE(dst == expected) << x_max << ' ' << y_max << ' ' << target;
        }
    }
}

// Columns of one value but for the last row, which is one less: sums at and just below multiples of every size.
TEST(Resample, PrefilterDividesBySinglePrecisionAtEverySize) {
    constexpr int32_t values = 255;
    for (int32_t size = 2; size < 300; ++size) {
        Bytes src;
        for (int32_t y = 0; y <= size; ++y)
            for (int32_t c = 1; c <= values + 1; ++c) src.push_back(static_cast<uint8_t>(y < size ? c : c - 1));
        Bytes dst(src.size());
        Bytes expected = dst;
        PrefilterCubicPass2Helpter(src.data(), dst.data(), values, 1, 0, size);
        const int32_t shift = size % 2 == 0 ? 0 : (values + 1) / 2;
        for (int32_t y = 0; y <= size - size % 2; ++y) {
            const int32_t less = std::max(y + (size + 1) / 2 - size + 1, 0);
            for (int32_t c = 1; c <= values; ++c)
                expected[static_cast<std::size_t>(y * (values + 1) + shift + c - 1)] = static_cast<uint8_t>(
                    static_cast<int32_t>(1.0F / static_cast<float>(size) * static_cast<float>(c * size - less)));
        }
        ASSERT_TRUE(dst == expected) << size;
    }
}

// Beyond 2^24 samples a row is read from the nearest even place, but begins with and is written to its own.
TEST(Resample, PrefilterOfALargePlane) {
    constexpr int32_t x_max = 4096;
    constexpr int32_t rows = 4101;
    const Bytes src = noise(area(x_max + 1, rows));
    Bytes dst(src.size());
    PrefilterCubicPass1Helper(src.data(), dst.data(), 400, 0, x_max, rows);
    for (const int32_t r : {4094, 4095, 4096, 4097, 4098, 4099}) {
        const int32_t base = r * (x_max + 1);
        run_span(
            10, x_max, src[static_cast<std::size_t>(base)],
            [&](double at) {
                return src[static_cast<std::size_t>(static_cast<float>(base)) + static_cast<std::size_t>(at)];
            },
            [&](double at, uint8_t average) {
                ASSERT_EQ(dst[static_cast<std::size_t>(base) + static_cast<std::size_t>(at)], average)
                    << r << ' ' << at;
            });
    }
}

TEST(Resample, PrefilterLerp) {
    std::array<float, 6> filtered = {0, 100, 200, 0.1F, 50, 51};
    const uint8_t bytes[] = {8, 8, 8, 10, 10, 10};
    xprefilterlerp(2, 2, 0.25F, filtered.data(), bytes);
    EXPECT_EQ(filtered, (std::array<float, 6>{6, 31, 56, (0.1F - 10.0F) * 0.25F + 10.0F, 50, 51}));
    xprefilterlerp(0, 2, 0, filtered.data(), bytes);
    xprefilterlerp(2, 0, 0, filtered.data(), bytes);
    EXPECT_EQ(filtered[0], 6);
}

// A scale that takes `to` indices into `from` samples.
float scale_into(int32_t from, int32_t to) { return 0.999F * static_cast<float>(from - 1) / static_cast<float>(to); }

const BulkCase cases[] = {
    {"BilinearSample",
     [](Workspace &w) {
         if (w.count() == 0) return; // There is nothing to sample.
         const uint8_t *plane = w.buffer(w.count());
         auto *samples = w.result<int32_t>(20);
         for (std::size_t i = 0; i < 20; ++i)
             samples[i] = BilinearSample(w.real(-9, static_cast<float>(w.width + 9)),
                                         w.real(-9, static_cast<float>(w.height + 9)), w.width, w.height, plane);
     }},
    {"f_bicubicInterpolate",
     [](Workspace &w) {
         const float *patch = w.floats(16, -50, 300);
         *w.result<float>(1) = f_bicubicInterpolate(patch, w.real(-1, 2), w.real(-1, 2));
     }},
    {"DoCubicPass1Helper",
     [](Workspace &w) {
         const int32_t from = w.integer(1, 2 * w.width);
         DoCubicPass1Helper(w.buffer(area(from, w.height)), w.result(w.count()), w.width - 1, 0, from - 1, w.height,
                            scale_into(from, w.width), 0);
     }},
    {"DoCubicPass2Helper",
     [](Workspace &w) {
         const int32_t from = w.integer(1, 2 * w.height);
         DoCubicPass2Helper(w.buffer(area(w.width, from)), w.result(w.count()), w.width - 1, w.height, 0, from - 1, 0,
                            scale_into(from, w.height));
     }},
    {"xBiCubicHelper",
     [](Workspace &w) {
         const int32_t width = w.integer(2, 3 * w.width);
         const int32_t height = w.integer(2, 3 * w.height);
         // The last row and column are not read.
         xBiCubicHelper(w.buffer(area(width, height - 1) - 1), w.result(w.count()), w.width, w.height, width, height,
                        w.real(0.1F, 5), w.real(0.1F, 5));
     }},
    {"PrefilterCubicPass1Helper",
     [](Workspace &w) {
         PrefilterCubicPass1Helper(w.buffer(w.count()), w.buffer(w.count()), w.integer(0, w.width / 2), 0, w.width - 1,
                                   w.height);
     }},
    {"PrefilterCubicPass2Helpter",
     [](Workspace &w) {
         // The last sample is not read.
         PrefilterCubicPass2Helpter(w.buffer(w.count() - 1), w.buffer(w.count() - 1), w.width - 1,
                                    w.integer(0, w.height), 0, w.height - 1);
     }},
    {"xprefilterlerp",
     [](Workspace &w) {
         xprefilterlerp(w.width, w.height, w.real(-1, 2), w.floats(w.count(), -50, 300), w.buffer(w.count()));
     }},
};

const BulkFamily family("Resample", cases);

} // namespace
