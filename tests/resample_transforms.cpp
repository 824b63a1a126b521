#include "tavik/resample/resample.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

using Four = std::array<Bytes, 4>;
using Matrix = std::array<float, 16>;

std::size_t within(int32_t x_max, int32_t y_max) { return area(x_max + 1, y_max + 1); }

Four four_planes(std::size_t count) { return {noise(count, 0), noise(count, 1), noise(count, 2), noise(count, 3)}; }

TEST(ResampleTransforms, Rotation) {
    // A quarter turn of letters, and the same at twice the size.
    const Bytes letters = {'a', 'b', 'c', 'd', '.', 'e', 'f', 'g', 'h', '.',
                           'i', 'j', 'k', 'l', '.', '.', '.', '.', '.', '.'};
    const auto turned = [&](int32_t x_max, int32_t y_max, float zoom) {
        std::string dst(within(x_max, y_max), '-');
        ScaleRotate_8_noAA(letters.data(), reinterpret_cast<uint8_t *>(dst.data()), 4, 3, x_max, y_max, zoom, 0, 1);
        std::replace(dst.begin(), dst.end(), '\0', ' ');
        return dst;
    };
    EXPECT_EQ(turned(6, 6, 1), "      -  dhhl-  cggk-  cggk-  bffj-  aeei--------");
    EXPECT_EQ(turned(8, 8, 2), "  ddhhhl-  ddhhhl-  ccgggk-  ccgggk-  ccgggk-  bbfffj-  bbfffj-  aaeeei----------");
    struct Case {
        int32_t src_x_max, src_y_max, dst_x_max, dst_y_max;
        float zoom, cosine, sine;
        uint32_t result;
    };
    const Case cases[] = {
        {40, 30, 40, 30, 1, 1, 0, 0x4EA949D2U},
        {41, 31, 61, 51, 1.5F, 0.8F, 0.6F, 0x06488D90U},
        {40, 30, 50, 51, 0.7F, -0.6F, 0.8F, 0xD20A6672U},
        {9, 9, 1200, 7, 60, -1, 0, 0x42B70807U},
        {1300, 90, 1201, 45, 1, 0.99F, -0.1F, 0xB7EACE51U},
        {40, 30, 1200, 60, 0.004F, 1, 1, 0x5A537E1AU}, // Products wrap around.
        {5, 5, 30, 30, 1, 1e9F, 0.5F, 0xF3878EF8U},
        {0, 5, 9, 9, 1, 1, 0, 0x40A81D15U},
        {5, 0, 9, 9, 1, 1, 0, 0x40A81D15U},
        {9, 9, 1, 9, 1, 1, 0, 0x4E22E0D5U},
        {9, 9, 9, 1, 1, 1, 0, 0x4E22E0D5U},
        {30, 30, 40, 40, 1, 0, 1, 0xC6827516U},
        {30, 30, 40, 40, -2, 0.7F, 0.7F, 0x53283D1CU},
    };
    for (const Case &c : cases) {
        const Four src = four_planes(within(c.src_x_max, c.src_y_max));
        Four dst;
        dst.fill(Bytes(within(c.dst_x_max, c.dst_y_max), 99));
        Bytes alone = dst[3];
        call(FasterScaleRotate, src, dst, c.src_x_max, c.src_y_max, c.dst_x_max, c.dst_y_max, c.zoom, c.cosine, c.sine,
             257, 2, -1);
        EXPECT_EQ(folded(dst), c.result) << c.dst_x_max << ' ' << c.zoom;
        ScaleRotate_8_noAA(src[3].data(), alone.data(), c.src_x_max, c.src_y_max, c.dst_x_max, c.dst_y_max, c.zoom,
                           c.cosine, c.sine);
        EXPECT_EQ(alone, dst[3]) << c.dst_x_max << ' ' << c.zoom;
    }
}

struct Transform {
    float left, right, top, bottom, centre_x, centre_y;
    // m0, m1, m4, m5, m12, m13
    std::array<float, 6> m;
    // Of the nearest samples, the interpolated ones and those of four planes.
    std::array<uint32_t, 3> results;

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
    {0, 1000, 0, 1000, 3, 4, identity, {0x38533A02U, 0xF7EE0FCEU, 0x1DD06044U}},
    {2.9F, 8.4F, 1.9F, 7.4F, 0, 0, identity, {0x1EF5CBF4U, 0x5EE225D2U, 0x6C158A9EU}},
    {2.9F, 8.5F, 1.9F, 7.5F, 0, 0, identity, {0xED704A22U, 0x2AA1708CU, 0x8CD2708CU}},
    {-50, -40, 0, 1000, 0, 0, {1, 0, 0, 1, 2, 2}, {0x7BEBCC59U, 0x1E9ACB64U, 0x92139B62U}},
    {5000, 6000, 0, 1000, 0, 0, {1, 0, 0, 1, -2, 2}, {0x088DA0FBU, 0x65BCE7CAU, 0xFB5D2F03U}},
    {0, 1000, 0, 1000, 30.5F, 20.25F, {0.8F, 0.6F, -0.6F, 0.8F, 0.3F, -7.1F}, {0xB7D0F9E0U, 0x5A959872U, 0x46EC7C75U}},
    {0, 1000, 0, 1000, 30.5F, 20.25F, {-0.8F, 0.5F, -0.7F, -0.9F, 0.3F, 7.1F}, {0x3D832EBCU, 0xA3974671U, 0x387D6727U}},
    {0, 1000, 0, 1000, 30, 20, {0, -1.5F, 1.5F, 0, 0, 0}, {0xEFF08CD9U, 0x5087A3D1U, 0xBDCF0498U}},
    {0, 1000, 0, 1000, 30, 20, {-1, -1e-9F, 0.001F, -1, 1e-6F, 0}, {0x9D751958U, 0x6BFA979FU, 0x53813CA0U}},
    {0, 1000, 0, 1000, 30, 20, {0, 0, 0, 0, -30, -20}, {0x955B13BEU, 0x5D60595DU, 0x667DB1CFU}},
    {0, 1000, 0, 1000, 30, 20, {0.01F, 0.02F, -0.003F, 0.007F, 7, 2}, {0xC95C1BDFU, 0xFBC0DF3AU, 0x0937028EU}},
    {0, 1000, 0, 1000, 0, 0, {3e38F, 0, 0, 1, 0, 0}, {0xEEEDC346U, 0xD74FAC37U, 0x5B03E3ADU}},
    {0, 1000, 0, 1000, 3, 0, {infinity, 0, 0, 1, 0, 0}, {0x955B13BEU, 0x955B13BEU, 0xACB51DF8U}},
    {0, 1000, 0, 1000, 3, 0, {1, 0, -infinity, 1, 0, 1}, {0x955B13BEU, 0x955B13BEU, 0xACB51DF8U}},
    {0, 1000, 0, 1000, 3, infinity, identity, {0x955B13BEU, 0x955B13BEU, 0xACB51DF8U}},
    {-infinity, infinity, 3e9F, std::nanf(""), 0, 0, identity, {0x955B13BEU, 0x955B13BEU, 0xACB51DF8U}},
};

TEST(ResampleTransforms, FreeTransforms) {
    for (const Transform &t : transforms) {
        const Matrix matrix = t.matrix();
        std::array<uint32_t, 3> results = {};
        for (const auto &last : {std::array{61, 45}, {700, 9}, {0, 3}, {3, 0}, {1, 1}}) {
            const Four src = four_planes(within(last[0], last[1]));
            Four dst;
            dst.fill(Bytes(src[0].size(), 99));
            Bytes nearest = dst[0];
            Bytes lerped = nearest;
            const auto transformed = [&](auto by, const auto &from, auto &to) {
                call(by, t.left, t.right, t.top, t.bottom, t.centre_x, t.centre_y, last, from, to, matrix.data());
            };
            transformed(xfreetransformalpha, src[0], nearest);
            transformed(xfreetransformalpha_aa, src[0], lerped);
            transformed(xfreetransform_aa, src, dst);
            results = {folded(nearest, results[0]), folded(lerped, results[1]), folded(dst, results[2])};
        }
        EXPECT_EQ(results, t.results) << &t - transforms;
    }
}

// A pixel on: to the right and below, by half the distance, and not over the last column and row.
TEST(ResampleTransforms, FreeTransformsMoveAndInterpolate) {
    const Bytes src = {0, 10, 20, 30, 100, 110, 120, 130, 200, 210, 220, 230};
    const Transform half = {0, 100, 0, 100, 0, 0, {1, 0, 0, 1, 0.5F, 1}, {}};
    const auto moved = [&](auto by) {
        Bytes dst(12, 99);
        by(half.left, half.right, half.top, half.bottom, 0, 0, 3, 2, src.data(), dst.data(), half.matrix().data());
        return dst;
    };
    EXPECT_EQ(moved(xfreetransformalpha), (Bytes{100, 110, 120, 99, 200, 210, 220, 99, 99, 99, 99, 99}));
    EXPECT_EQ(moved(xfreetransformalpha_aa), (Bytes{105, 115, 125, 99, 99, 99, 99, 99, 99, 99, 99, 99}));
}

TEST(ResampleTransforms, GridsOfPoints) {
    // Of 2 × 2 points to 4 × 2 of the grid; the last row and column are left.
    const Floats corners = {0, 1, 8, 3, 4, 5, 0, 7};
    Floats grid(2 * 5 * 3, 9);
    xBilinearScalePointf(4, 2, 1, 1, corners.data(), grid.data());
    EXPECT_EQ(grid, (Floats{0, 1,    2,    1.5F, 4, 2, 6, 2.5F, 9, 9, 2, 3, 2.5F, 3.5F, 3,
                            4, 3.5F, 4.5F, 9,    9, 9, 9, 9,    9, 9, 9, 9, 9,    9,    9}));
    struct Case {
        int32_t dst_x_max, dst_y_max, src_x_max, src_y_max;
        uint32_t result;
    };
    for (const Case &c : {Case{40, 30, 3, 2, 0xC68AAD71U},
                          {7, 5, 70, 51, 0xB858A9D3U},
                          {600, 3, 599, 2, 0x4A4B1D0EU},
                          {1, 1, 1, 1, 0xC341AD03U},
                          {0, 3, 4, 4, 0x65E17165U},
                          {3, 0, 4, 4, 0x65E17165U}}) {
        Floats src;
        for (const uint8_t sample : noise(2 * within(c.src_x_max, c.src_y_max), 1))
            src.push_back(static_cast<float>(sample) * 1.7F - 99);
        Floats dst(2 * within(c.dst_x_max, c.dst_y_max), 5);
        xBilinearScalePointf(c.dst_x_max, c.dst_y_max, c.src_x_max, c.src_y_max, src.data(), dst.data());
        EXPECT_EQ(folded(dst), c.result) << c.dst_x_max;
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

// Half of each row, or all but the last column of half the rows; in place, mirrored over what is read later.
TEST(ResampleTransforms, Mirrors) {
    const std::string src = "abcdefghijklmnopqrstuvwxy";
    const auto mirrored = [&](auto mirror, int32_t x_max, int32_t y_max, bool in_place = false) {
        std::string from = src.substr(0, within(x_max, y_max));
        std::string to(from.size(), '-');
        const auto bytes = [](std::string &text) { return reinterpret_cast<uint8_t *>(text.data()); };
        mirror(bytes(from), bytes(in_place ? from : to), x_max, y_max);
        return in_place ? from : to;
    };
    EXPECT_EQ(mirrored(FastHMirror, 4, 1), "ed---ji---");
    EXPECT_EQ(mirrored(FastHMirror, 5, 1), "fe----lk----");
    EXPECT_EQ(mirrored(FastHMirror, 5, 1, true), "fecdeflkijkl");
    EXPECT_EQ(mirrored(FastHMirror, 1, 1), "----");
    EXPECT_EQ(mirrored(FastVMirror, 2, 4), "------gh-de-ab-");
    EXPECT_EQ(mirrored(FastVMirror, 2, 3), "---gh-de-ab-");
    EXPECT_EQ(mirrored(FastVMirror, 1, 0), "a-");
    // Rows with every number of columns beside the vector blocks.
    uint32_t across = 0;
    uint32_t down = 0;
    for (int32_t x_max = -1; x_max < 140; ++x_max) {
        const Bytes rows = noise(within(x_max, 3), 5);
        Bytes dst(rows.size(), 99);
        FastHMirror(rows.data(), dst.data(), x_max, 3);
        across = folded(dst, across);
        FastVMirror(rows.data(), dst.data(), x_max, 3);
        down = folded(dst, down);
    }
    EXPECT_EQ(across, 0x43F28221U);
    EXPECT_EQ(down, 0xB2B93172U);
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
    call(Export, w.real(-5, 5), right, w.real(-5, 5), bottom, right / 2, bottom / 2, w.bounds(), w.buffers<channels>(),
         w.buffers<channels>(w.count() - static_cast<std::size_t>(w.width)), m.data());
}

const BulkCase cases[] = {
    {"FasterScaleRotate",
     [](Workspace &w) {
         const int32_t x_max = w.integer(1, w.width);
         const int32_t y_max = w.integer(1, w.height);
         const auto from = [&] { return rotated_source(w, x_max, y_max); };
         const auto to = [&] { return w.buffer(rotated_area(w)); };
         call(FasterScaleRotate, from(), from(), from(), from(), to(), to(), to(), to(), x_max, y_max, w.bounds(),
              w.real(0.01F, 2), w.real(-1, 1), w.real(-1, 1), 7, 8, 9);
     }},
    {"ScaleRotate_8_noAA",
     [](Workspace &w) {
         call(ScaleRotate_8_noAA, rotated_source(w, w.width, w.height), w.buffer(rotated_area(w)), w.size(), w.bounds(),
              w.real(0.5F, 2), w.real(-1, 1), w.real(-1, 1));
     }},
    {"xfreetransformalpha", transform<xfreetransformalpha, 1>},
    {"xfreetransformalpha_aa", transform<xfreetransformalpha_aa, 1>},
    {"xfreetransform_aa", transform<xfreetransform_aa, 4>},
    {"xBilinearScalePointf",
     [](Workspace &w) {
         const int32_t x_max = w.integer(1, w.width);
         const int32_t y_max = w.integer(1, w.height);
         float *src = w.floats(2 * within(x_max, y_max), -9, 9);
         // All but the last row and the last point before it.
         call(xBilinearScalePointf, w.size(), x_max, y_max, src,
              w.buffer<float>(2 * (within(w.width, w.height - 1) - 1)));
     }},
    {"ScaleHelper",
     [](Workspace &w) {
         uint8_t *src = w.buffer(3 * w.count());
         const auto count = static_cast<int32_t>(w.count());
         ScaleHelper(count, 0, count - 1, w.real(0.1F, 0.9F), 1, src, w.buffer(3 * w.count()), 0, 0);
     }},
    {"FastHMirror", [](Workspace &w) { FastHMirror(w.buffer(), w.buffer(), w.width - 1, w.height - 1); }},
    {"FastVMirror",
     [](Workspace &w) { call(FastVMirror, w.buffer(w.count() - 1), w.buffer(w.count() - 1), w.bounds()); }},
};

const BulkFamily family("ResampleTransforms", cases);

} // namespace
