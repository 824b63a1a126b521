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
using Four = std::array<Bytes, 4>;
using Matrix = std::array<float, 16>;

constexpr float infinity = std::numeric_limits<float>::infinity();

std::size_t area(int32_t x_max, int32_t y_max) { return static_cast<std::size_t>((x_max + 1) * (y_max + 1)); }

Four four_planes(std::size_t count) {
    Four planes;
    std::mt19937 random(static_cast<uint32_t>(count));
    for (Bytes &plane : planes) {
        plane.resize(count);
        for (uint8_t &byte : plane) byte = static_cast<uint8_t>(random());
    }
    return planes;
}

int32_t wrapped(int64_t value) { return static_cast<int32_t>(static_cast<uint32_t>(value)); }

TEST(ResampleTransforms, Rotation) {
    struct Case {
        int32_t src_x_max, src_y_max, dst_x_max, dst_y_max;
        float zoom, cosine, sine;
    };
    const Case cases[] = {
        {40, 30, 40, 30, 1, 1, 0},
        {41, 31, 61, 51, 1.5F, 0.8F, 0.6F},
        {40, 30, 50, 51, 0.7F, -0.6F, 0.8F},
        {9, 9, 1200, 7, 60, -1, 0},
        {1300, 90, 1201, 45, 1, 0.99F, -0.1F},
        {40, 30, 1200, 60, 0.004F, 1, 1}, // Products wrap around.
        {5, 5, 30, 30, 1, 1e9F, 0.5F},
        {0, 5, 9, 9, 1, 1, 0},
        {5, 0, 9, 9, 1, 1, 0},
        {9, 9, 1, 9, 1, 1, 0},
        {9, 9, 9, 1, 1, 1, 0},
        {30, 30, 40, 40, 1, 0, 1},
        {30, 30, 40, 40, -2, 0.7F, 0.7F},
    };
    for (const Case &c : cases) {
        const Four src = four_planes(area(c.src_x_max, c.src_y_max));
        Four expected;
        expected.fill(Bytes(area(c.dst_x_max, c.dst_y_max), 99));
        Four dst = expected;
        const auto fixed = [](float value) { return int64_t{static_cast<int32_t>(value * 255.0F)}; };
        const int64_t fixed_cosine = c.cosine == 1e9F ? -0x80000000LL : fixed(c.cosine);
        const int64_t zoom = fixed(1 / c.zoom);
        const uint8_t background[] = {1, 2, 255, 0};
        for (int32_t y = -(c.dst_y_max / 2); y < c.dst_y_max / 2; ++y) {
            for (int32_t x = -(c.dst_x_max / 2); x < c.dst_x_max / 2; ++x) {
                const auto source = [&](int64_t a, int64_t b) {
                    return wrapped(int64_t{wrapped(wrapped(a) + int64_t{wrapped(b)})} * zoom) >> 16;
                };
                const int32_t sx = source(fixed_cosine * x, -fixed(c.sine) * y) + c.src_x_max / 2;
                const int32_t sy = source(fixed(c.sine) * x, fixed_cosine * y) + c.src_y_max / 2;
                const bool inside = 0 <= sx && sx < c.src_x_max && 0 <= sy && sy < c.src_y_max;
                for (std::size_t k = 0; k < 4; ++k)
                    expected[k][static_cast<std::size_t>((y + c.dst_y_max / 2) * (c.dst_x_max + 1) + c.dst_x_max / 2 +
                                                         x)] =
                        inside ? src[k][static_cast<std::size_t>(sy * (c.src_x_max + 1) + sx)] : background[k];
            }
        }
        FasterScaleRotate(src[0].data(), src[1].data(), src[2].data(), src[3].data(), dst[0].data(), dst[1].data(),
                          dst[2].data(), dst[3].data(), c.src_x_max, c.src_y_max, c.dst_x_max, c.dst_y_max, c.zoom,
                          c.cosine, c.sine, 257, 2, -1);
        for (std::size_t k = 0; k < 4; ++k) EXPECT_TRUE(dst[k] == expected[k]) << c.dst_x_max << ' ' << c.zoom << k;
        Bytes alone(expected[3].size(), 99);
        ScaleRotate_8_noAA(src[3].data(), alone.data(), c.src_x_max, c.src_y_max, c.dst_x_max, c.dst_y_max, c.zoom,
                           c.cosine, c.sine);
        EXPECT_TRUE(alone == expected[3]) << c.dst_x_max << ' ' << c.zoom;
    }
}

struct Transform {
    float left, right, top, bottom, centre_x, centre_y;
    // m0, m1, m4, m5, m12, m13
    std::array<float, 6> m;

    Matrix matrix() const {
        Matrix all;
        all.fill(infinity);
        constexpr std::array<std::size_t, 6> places = {0, 1, 4, 5, 12, 13};
        for (std::size_t i = 0; i < places.size(); ++i) all[places[i]] = m[i];
        return all;
    }
};

constexpr std::array<float, 6> identity = {1, 0, 0, 1, 0, 0};

const Transform transforms[] = {
    {0, 1000, 0, 1000, 3, 4, identity},
    {2.9F, 8.4F, 1.9F, 7.4F, 0, 0, identity},
    {2.9F, 8.5F, 1.9F, 7.5F, 0, 0, identity},
    {-50, -40, 0, 1000, 0, 0, {1, 0, 0, 1, 2, 2}},
    {5000, 6000, 0, 1000, 0, 0, {1, 0, 0, 1, -2, 2}},
    {0, 1000, 0, 1000, 30.5F, 20.25F, {0.8F, 0.6F, -0.6F, 0.8F, 0.3F, -7.1F}},
    {0, 1000, 0, 1000, 30.5F, 20.25F, {-0.8F, 0.5F, -0.7F, -0.9F, 0.3F, 7.1F}},
    {0, 1000, 0, 1000, 30, 20, {0, -1.5F, 1.5F, 0, 0, 0}},
    {0, 1000, 0, 1000, 30, 20, {-1, -1e-9F, 0.001F, -1, 1e-6F, 0}},
    {0, 1000, 0, 1000, 30, 20, {0, 0, 0, 0, -30, -20}},
    {0, 1000, 0, 1000, 30, 20, {0.01F, 0.02F, -0.003F, 0.007F, 7, 2}},
    {0, 1000, 0, 1000, 0, 0, {3e38F, 0, 0, 1, 0, 0}},
    {0, 1000, 0, 1000, 3, 0, {infinity, 0, 0, 1, 0, 0}},
    {0, 1000, 0, 1000, 3, 0, {1, 0, -infinity, 1, 0, 1}},
    {0, 1000, 0, 1000, 3, infinity, identity},
    {-infinity, infinity, 3e9F, std::nanf(""), 0, 0, identity},
};

// Where the transform draws, pixel by pixel: body(place in the plane, sx, sy).
template <class Body>
void for_each_pixel(const Transform &t, float margin, int32_t x_max, int32_t y_max, const Body &body) {
    const auto whole = [](float v, int32_t bound) {
        return v >= -0x1p31F && v < 0x1p31F ? std::clamp(static_cast<int32_t>(v), 0, bound) : 0;
    };
    for (int32_t y = whole(t.top, y_max); y < whole(t.bottom + margin, y_max); ++y) {
        for (int32_t x = whole(t.left, x_max); x <= whole(t.right + margin, x_max); ++x) {
            const float dx = static_cast<float>(x) - t.centre_x;
            const float dy = static_cast<float>(y) - t.centre_y;
            body(static_cast<std::size_t>(y * (x_max + 1) + x), t.m[0] * dx + t.m[2] * dy + t.m[4] + t.centre_x,
                 t.centre_y + (t.m[3] * dy + t.m[1] * dx + t.m[5]));
        }
    }
}

TEST(ResampleTransforms, FreeTransforms) {
    for (const auto &last : {std::array{61, 45}, {700, 9}, {0, 3}, {3, 0}, {1, 1}}) {
        const int32_t x_max = last[0];
        const int32_t y_max = last[1];
        const Four src = four_planes(area(x_max, y_max));
        const auto width = static_cast<float>(x_max);
        const auto height = static_cast<float>(y_max);
        const auto at = [&](std::size_t k, float x, float y) {
            return src[k][static_cast<std::size_t>(static_cast<int32_t>(y) * (x_max + 1) + static_cast<int32_t>(x))];
        };
        const auto lerp_at = [&](std::size_t k, float x, float y) {
            return static_cast<uint8_t>(Bilerp(at(k, x, y), at(k, x + 1, y), at(k, x, y + 1), at(k, x + 1, y + 1),
                                               x - std::trunc(x), y - std::trunc(y)));
        };
        for (const Transform &t : transforms) {
            const Matrix matrix = t.matrix();
            Four expected;
            expected.fill(Bytes(src[0].size(), 99));
            Four dst = expected;
            Bytes nearest = expected[0];
            Bytes lerped = nearest;
            Bytes expected_nearest = nearest;
            Bytes expected_lerped = nearest;
            for_each_pixel(t, 0.5F, x_max, y_max, [&](std::size_t place, float x, float y) {
                if (0 <= x && x <= width && 0 < y && y <= height) expected_nearest[place] = at(0, x, y);
                if (0 <= x && x < width && 0 <= y && y < height) expected_lerped[place] = lerp_at(0, x, y);
            });
            for_each_pixel(t, 1.5F, x_max, y_max, [&](std::size_t place, float x, float y) {
                if (0 <= x && x < width && 0 <= y && y < height)
                    for (std::size_t k = 0; k < 4; ++k) expected[k][place] = lerp_at(k, x, y);
            });
            SCOPED_TRACE(testing::Message() << x_max << ", " << &t - transforms);
            xfreetransformalpha(t.left, t.right, t.top, t.bottom, t.centre_x, t.centre_y, x_max, y_max, src[0].data(),
                                nearest.data(), matrix.data());
            EXPECT_TRUE(nearest == expected_nearest);
            xfreetransformalpha_aa(t.left, t.right, t.top, t.bottom, t.centre_x, t.centre_y, x_max, y_max,
                                   src[0].data(), lerped.data(), matrix.data());
            EXPECT_TRUE(lerped == expected_lerped);
            xfreetransform_aa(t.left, t.right, t.top, t.bottom, t.centre_x, t.centre_y, x_max, y_max, src[0].data(),
                              src[1].data(), src[2].data(), src[3].data(), dst[0].data(), dst[1].data(), dst[2].data(),
                              dst[3].data(), matrix.data());
            for (std::size_t k = 0; k < 4; ++k) EXPECT_TRUE(dst[k] == expected[k]) << k;
        }
    }
}

TEST(ResampleTransforms, GridsOfPoints) {
    struct Case {
        int32_t dst_x_max, dst_y_max, src_x_max, src_y_max;
    };
    for (const Case &c :
         {Case{40, 30, 3, 2}, {7, 5, 70, 51}, {600, 3, 599, 2}, {1, 1, 1, 1}, {0, 3, 4, 4}, {3, 0, 4, 4}}) {
        std::mt19937 random(1);
        std::vector<float> src(2 * area(c.src_x_max, c.src_y_max));
        for (float &value : src) value = static_cast<float>(random() >> 8) * 0x1p-10F - 99;
        std::vector<float> expected(2 * area(c.dst_x_max, c.dst_y_max), 5);
        std::vector<float> dst = expected;
        const float x_scale = 1.0F / (static_cast<float>(c.dst_x_max) / static_cast<float>(c.src_x_max));
        const float y_scale = 1.0F / (static_cast<float>(c.dst_y_max) / static_cast<float>(c.src_y_max));
        for (int32_t y = 0; y < c.dst_y_max; ++y) {
            for (int32_t i = 0; i < 2 * c.dst_x_max; ++i) {
                const float sx = static_cast<float>(i / 2) * x_scale;
                const float sy = static_cast<float>(y) * y_scale;
                const auto at = [&](int32_t right, int32_t below) {
                    return src[static_cast<std::size_t>(2 * ((static_cast<int32_t>(sy) + below) * (c.src_x_max + 1) +
                                                             static_cast<int32_t>(sx) + right) +
                                                        i % 2)];
                };
                const float fx = sx - std::trunc(sx);
                const float top = (at(1, 0) - at(0, 0)) * fx + at(0, 0);
                const float bottom = (at(1, 1) - at(0, 1)) * fx + at(0, 1);
                expected[static_cast<std::size_t>(2 * y * (c.dst_x_max + 1) + i)] =
                    (bottom - top) * (sy - std::trunc(sy)) + top;
            }
        }
        xBilinearScalePointf(c.dst_x_max, c.dst_y_max, c.src_x_max, c.src_y_max, src.data(), dst.data());
        EXPECT_TRUE(dst == expected) << c.dst_x_max;
    }
}

TEST(ResampleTransforms, RowsOfPixels) {
    Bytes src(3 * 10);
    for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<uint8_t>(i);
    struct Case {
        int32_t count, start, end;
        float scale;
        int32_t origin, src_offset;
        std::vector<int32_t> pixels;
    };
    const Case cases[] = {
        {10, 0, 3, 2, 0, 0, {2, 4, 6, 8}},
        {10, 0, 9, 0.5F, 0, 0, {0, 1, 1, 2, 2, 3, 3, 4, 4, 5}},
        {4, -3, 4, 1, 0, 0, {0, 1, 2, 3}},
        {4, 5, 7, 1, 6, 2, {2, 3, 4}},
        {10, 0, 3, -0.4F, 0, 3, {3, 3}},
        {10, 3, 3, 1, 0, -1, {3}},
        {10, 0, 9, 0.1F, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0, 0, 1}}, // The tenth sum of 0.1 is above 1.
    };
    for (const Case &c : cases) {
        Bytes expected(40, 200);
        auto to = expected.begin() + 4;
        for (const int32_t pixel : c.pixels) to = std::copy_n(src.begin() + 3 * pixel, 3, to);
        Bytes dst(40, 200);
        ScaleHelper(c.count, c.start, c.end, c.scale, c.origin, src.data(), dst.data(), 4, c.src_offset);
        EXPECT_EQ(dst, expected) << c.start << ' ' << c.scale;
    }
    EXPECT_EQ(ScaleHelper(10, 7, 6, 1, 3, nullptr, nullptr, 0, 0), 4);
    EXPECT_EQ(ScaleHelper(10, 2147483647, 6, 1, -1, nullptr, nullptr, 0, 0), -2147483647 - 1);
}

TEST(ResampleTransforms, Mirrors) {
    for (int32_t x_max = -1; x_max < 140; ++x_max) {
        for (const int32_t y_max : {0, 1, 8, 9}) {
            const Bytes src = four_planes(area(x_max, y_max))[0];
            Bytes across(src.size(), 99);
            Bytes down = across;
            Bytes in_place = src;
            FastHMirror(src.data(), across.data(), x_max, y_max);
            FastHMirror(in_place.data(), in_place.data(), x_max, y_max);
            FastVMirror(src.data(), down.data(), x_max, y_max);
            for (int32_t y = 0; y <= y_max; ++y) {
                for (int32_t x = 0; x <= x_max; ++x) {
                    const auto at = [&](int32_t column, int32_t row) {
                        return static_cast<std::size_t>(row * (x_max + 1) + column);
                    };
                    const uint8_t mirrored = src[at(x_max - x, y)];
                    ASSERT_EQ(across[at(x, y)], x < x_max / 2 ? mirrored : 99) << x_max << ' ' << x;
                    ASSERT_EQ(in_place[at(x, y)], x < x_max / 2 ? mirrored : src[at(x, y)]) << x_max << ' ' << x;
                    ASSERT_EQ(down[at(x, y)], y < y_max / 2 || x == x_max ? 99 : src[at(x, y_max - y)]) << y;
                }
            }
        }
    }
    FastVMirror(nullptr, nullptr, 5, -1);
    FastHMirror(nullptr, nullptr, 5, -1);
}

TEST(ResampleTransforms, SinglePoints) {
    float x = 3;
    float y = 1;
    RotatePoint(90, &x, &y);
    EXPECT_NEAR(x, -1, 1e-6);
    EXPECT_NEAR(y, 3, 1e-6);
    x = 2;
    y = 0;
    RotatePoint(-30, &x, &y);
    EXPECT_NEAR(x, std::sqrt(3.0), 1e-6);
    EXPECT_NEAR(y, -1, 1e-6);

    const Matrix matrix = {2, 3, 100, 1, 5, 7, 100, -1, 11, 13, 100, 0.5F, 17, 19, 100, 2};
    std::array<float, 3> point = {1, 2, 4};
    std::array<float, 3> to = {};
    TransformPoint(point.data(), to.data(), matrix.data());
    EXPECT_EQ(to, (std::array{73 * (1 / 3.0F), 88 * (1 / 3.0F), 4.0F}));
    point = {1, 3, 0};
    to = {8, 9, 10};
    TransformPoint(point.data(), to.data(), matrix.data()); // w is 0.
    EXPECT_EQ(to, (std::array{8.0F, 9.0F, 0.0F}));
    point = {1, 2, 4};
    TransformPoint(point.data(), point.data(), matrix.data());
    EXPECT_EQ(point, (std::array{73 * (1 / 3.0F), 88 * (1 / 3.0F), 4.0F}));
}

uint8_t *rotated_source(Workspace &w, int32_t x_max, int32_t y_max) {
    // The last row and column are not read.
    return w.buffer(static_cast<std::size_t>((x_max + 1) * y_max - 1));
}

// What rotations write is all but the last row and the end of the row before.
std::size_t rotated_area(const Workspace &w) {
    const int32_t half_width = (w.width - 1) / 2;
    const int32_t half_height = (w.height - 1) / 2;
    return half_width == 0 || half_height == 0
               ? 0
               : static_cast<std::size_t>((2 * half_height - 1) * w.width + 2 * half_width);
}

template <auto Export, std::size_t channels> void transform(Workspace &w) {
    Matrix m = {};
    for (const std::size_t i : {0, 1, 4, 5}) m[i] = w.real(-1.5F, 1.5F);
    m[12] = w.real(-5, 5);
    m[13] = w.real(-5, 5);
    const auto right = static_cast<float>(w.width);
    const auto bottom = static_cast<float>(w.height);
    // Nothing is written to the last row.
    const auto to = [&] { return w.buffer(w.count() - static_cast<std::size_t>(w.width)); };
    const auto from = [&] { return w.buffer(w.count()); };
    const auto call = [&](auto... planes) {
        Export(w.real(-5, 5), right, w.real(-5, 5), bottom, right / 2, bottom / 2, w.width - 1, w.height - 1, planes...,
               m.data());
    };
    if constexpr (channels == 1)
        call(from(), to());
    else
        call(from(), from(), from(), from(), to(), to(), to(), to());
}

const BulkCase cases[] = {
    {"FasterScaleRotate",
     [](Workspace &w) {
         const int32_t x_max = w.integer(1, w.width);
         const int32_t y_max = w.integer(1, w.height);
         const auto from = [&] { return rotated_source(w, x_max, y_max); };
         const auto to = [&] { return w.buffer(rotated_area(w)); };
         FasterScaleRotate(from(), from(), from(), from(), to(), to(), to(), to(), x_max, y_max, w.width - 1,
                           w.height - 1, w.real(0.01F, 2), w.real(-1, 1), w.real(-1, 1), 7, 8, 9);
     }},
    {"ScaleRotate_8_noAA",
     [](Workspace &w) {
         ScaleRotate_8_noAA(rotated_source(w, w.width, w.height), w.buffer(rotated_area(w)), w.width, w.height,
                            w.width - 1, w.height - 1, w.real(0.5F, 2), w.real(-1, 1), w.real(-1, 1));
     }},
    {"xfreetransformalpha", transform<xfreetransformalpha, 1>},
    {"xfreetransformalpha_aa", transform<xfreetransformalpha_aa, 1>},
    {"xfreetransform_aa", transform<xfreetransform_aa, 4>},
    {"xBilinearScalePointf",
     [](Workspace &w) {
         const int32_t x_max = w.integer(1, w.width);
         const int32_t y_max = w.integer(1, w.height);
         float *src = w.floats(2 * area(x_max, y_max), -9, 9);
         // All but the last row and the last point before it.
         xBilinearScalePointf(w.width, w.height, x_max, y_max, src,
                              w.buffer<float>(2 * (area(w.width, w.height - 1) - 1)));
     }},
    {"ScaleHelper",
     [](Workspace &w) {
         uint8_t *src = w.buffer(3 * w.count());
         const auto count = static_cast<int32_t>(w.count());
         ScaleHelper(count, 0, count - 1, w.real(0.1F, 0.9F), 1, src, w.buffer(3 * w.count()), 0, 0);
     }},
    {"FastHMirror",
     [](Workspace &w) { FastHMirror(w.buffer(w.count()), w.buffer(w.count()), w.width - 1, w.height - 1); }},
    {"FastVMirror",
     [](Workspace &w) {
         uint8_t *src = w.buffer(w.count() - 1);
         FastVMirror(src, w.buffer(w.count() - 1), w.width - 1, w.height - 1);
     }},
};

const BulkFamily family("ResampleTransforms", cases);

} // namespace
