#include "tavik/resample/resample.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

// With black and white among the samples.
Bytes contrasty(std::size_t count) {
    Bytes samples = noise(count, static_cast<uint32_t>(count));
    for (std::size_t i = 0; i < count; i += 3) samples[i] = samples[i] % 2 == 0 ? 0 : 255;
    return samples;
}

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
        {1, 2, 3, 4, no_number, 0, -2147483647 - 1},
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

struct Resize {
    int32_t from, to;
    float scale;
    uint32_t rows, columns;
};

// Larger, smaller, the same, a single sample, backwards by less than one.
const Resize resizes[] = {{100, 341, 0.29F, 0xE0B092D8U, 0x0E15DE0DU}, {341, 100, 3.4F, 0x0A49C12EU, 0x881DE27DU},
                          {50, 50, 1, 0xB3AE2F23U, 0xB3AE2F23U},       {1, 600, 0.001F, 0x2497EE3DU, 0xAFDAC6EDU},
                          {2, 7, 0.25F, 0x75AA740BU, 0x17349895U},     {3, 9, 0.3F, 0x71CF0EFBU, 0xB0BFBA39U},
                          {5, 40, 0.1F, 0xBD74F9CFU, 0x3D35B05BU},     {20, 9, -0.1F, 0x07503F4FU, 0x2EE5D728U},
                          {9000, 1030, 8.7F, 0x26CFCE88U, 0xDE0BF4D7U}};

TEST(Resample, CubicPasses) {
    const Bytes src = {0, 0, 200, 200, 0, 255};
    Bytes row(11);
    Bytes column(11);
    DoCubicPass1Helper(src.data(), row.data(), 10, -7, 5, 1, 0.5F, 99);
    DoCubicPass2Helper(src.data(), column.data(), 0, 11, -7, 5, 99, 0.5F);
    EXPECT_EQ(row, (Bytes{0, 0, 0, 100, 200, 225, 200, 84, 0, 115, 255}));
    EXPECT_EQ(column, row);
    for (const Resize &r : resizes) {
        constexpr int32_t lines = 5;
        const Bytes plane = contrasty(area(r.from, lines));
        Bytes rows(area(r.to, lines));
        Bytes columns = rows;
        DoCubicPass1Helper(plane.data(), rows.data(), r.to - 1, -7, r.from - 1, lines, r.scale, 99);
        DoCubicPass2Helper(plane.data(), columns.data(), lines - 1, r.to, -7, r.from - 1, 99, r.scale);
        EXPECT_EQ(folded(rows), r.rows) << r.from;
        EXPECT_EQ(folded(columns), r.columns) << r.from;
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

// Whose taps stop at the last column and row but one.
TEST(Resample, Bicubic) {
    const Bytes src = {0, 100, 200, 99, 50, 150, 250, 99, 20, 20, 20, 99, 99, 99, 99, 99};
    Bytes small(5 * 4);
    xBiCubicHelper(src.data(), small.data(), 5, 4, 4, 4, 0.5F, 0.5F);
    EXPECT_EQ(small, (Bytes{0, 43, 100, 156, 200, 26, 73, 133, 192, 239, 50, 93, 150, 206, 250, 38, 60, 88, 116, 138}));
    struct Axis {
        int32_t from, to;
        float scale;
    };
    struct Case {
        Axis x, y;
        uint32_t result;
    };
    for (const Case &c : {Case{{100, 341, 0.29F}, {7, 9, 0.7F}, 0x6CEC9F5AU},
                          {{120, 100, 1.07F}, {5, 4, 1.1F}, 0x2F832229U},
                          {{130, 100, 1.15F}, {5, 4, 1}, 0xFDE1225FU},
                          {{341, 100, 3.4F}, {9, 3, 4}, 0x533EEB96U},
                          {{20, 9, -0.1F}, {2, 3, 1}, 0x2549BB74U},
                          {{3, 9, 0.3F}, {9, 3, 1e9F}, 0xA28AAEBCU},
                          {{5, 40, 0.1F}, {9, 2, no_number}, 0xB1C0F6B5U},
                          {{2, 7, 0.25F}, {7, 9, 0.7F}, 0x9D902895U}}) {
        const Bytes plane = contrasty(area(c.x.from, c.y.from));
        Bytes dst(area(c.x.to, c.y.to));
        xBiCubicHelper(plane.data(), dst.data(), c.x.to, c.y.to, c.x.from, c.y.from, c.x.scale, c.y.scale);
        EXPECT_EQ(folded(dst), c.result) << c.x.from;
    }
}

// What the passes make of three rows, or of columns, of the bound's plane; 77 is left alone.
TEST(Resample, Prefilter) {
    const Bytes step = {0, 0, 0, 0, 90, 90, 90, 90, 90, 90, 0, 0};
    Bytes across(12, 77);
    PrefilterCubicPass1Helper(step.data(), across.data(), 2, -1, 5, 2);
    EXPECT_EQ(across, (Bytes{0, 0, 0, 45, 90, 90, 77, 77, 77, 77, 77, 77}));
    Bytes down(12, 77);
    PrefilterCubicPass2Helpter(step.data(), down.data(), 1, 2, -1, 5);
    EXPECT_EQ(down, (Bytes{0, 77, 45, 77, 90, 77, 90, 77, 45, 77, 0, 77}));
    struct Span {
        int32_t bound, target;
        uint32_t rows, columns;
    };
    // Sizes of either parity, a copy, the largest size and sizes whose sums are rounded.
    for (const Span &s : {Span{9, 4, 0x46935AACU, 0x7B379352U},
                          {9, 3, 0x300D6C9CU, 0x7C5412EDU},
                          {10, 10, 0x65A3EC3CU, 0x68ADC3DEU},
                          {10, 9, 0xAE3EFABEU, 0xF720B3B3U},
                          {10, 20, 0x65A3EC3CU, 0x68ADC3DEU},
                          {7, 0, 0x95E6BCC6U, 0x896EFAA9U},
                          {8, -5, 0xE8A33163U, 0x0DFE26ABU},
                          {600, 31, 0x7657F5B9U, 0xE42D6C3BU},
                          {1500, 2, 0x3D3DC381U, 0x8A0381BBU},
                          {66000, 2, 0x89EA4382U, 0x26995448U},
                          {140001, 1, 0x92BF8D28U, 0x2BA6825AU},
                          {140001, 2, 0x657C37BDU, 0xFDAF2784U}}) {
        const Bytes rows = contrasty(area(s.bound + 1, 3));
        Bytes dst(rows.size(), 77);
        PrefilterCubicPass1Helper(rows.data(), dst.data(), s.target, -1, s.bound, 3);
        EXPECT_EQ(folded(dst), s.rows) << s.bound << ' ' << s.target;
        uint32_t columns = 0;
        for (const int32_t x_max : {1, 6, 300}) {
            if (s.bound > 2000 && x_max > 6) continue;
            const Bytes plane = contrasty(area(x_max + 1, s.bound + 1));
            dst.assign(plane.size(), 77);
            PrefilterCubicPass2Helpter(plane.data(), dst.data(), x_max, s.target, -1, s.bound);
            columns = folded(dst, columns);
        }
        EXPECT_EQ(columns, s.columns) << s.bound << ' ' << s.target;
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
        PrefilterCubicPass2Helpter(src.data(), dst.data(), values, 1, 0, size);
        const int32_t shift = size % 2 == 0 ? 0 : (values + 1) / 2;
        for (int32_t y = 0; y <= size - size % 2; ++y) {
            const int32_t less = std::max(y + (size + 1) / 2 - size + 1, 0);
            for (int32_t c = 1; c <= values; ++c)
                ASSERT_EQ(dst[static_cast<std::size_t>(y * (values + 1) + shift + c - 1)],
                          static_cast<int32_t>(1.0F / static_cast<float>(size) * static_cast<float>(c * size - less)) &
                              255)
                    << size;
        }
    }
}

// Beyond 2^24 samples a row is read from the nearest even place, but begins with and is written to its own.
TEST(Resample, PrefilterOfALargePlane) {
    constexpr int32_t x_max = 4096;
    constexpr int32_t rows = 4101;
    const Bytes src = contrasty(area(x_max + 1, rows));
    Bytes dst(src.size());
    PrefilterCubicPass1Helper(src.data(), dst.data(), 400, 0, x_max, rows);
    EXPECT_EQ(folded(Bytes(dst.begin() + 4094 * (x_max + 1), dst.end())), 0xF3BF5C0CU);
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
         DoCubicPass1Helper(w.buffer(area(from, w.height)), w.result(), w.width - 1, 0, from - 1, w.height,
                            scale_into(from, w.width), 0);
     }},
    {"DoCubicPass2Helper",
     [](Workspace &w) {
         const int32_t from = w.integer(1, 2 * w.height);
         DoCubicPass2Helper(w.buffer(area(w.width, from)), w.result(), w.width - 1, w.height, 0, from - 1, 0,
                            scale_into(from, w.height));
     }},
    {"xBiCubicHelper",
     [](Workspace &w) {
         const int32_t width = w.integer(2, 3 * w.width);
         const int32_t height = w.integer(2, 3 * w.height);
         // The last row and column are not read.
         call(xBiCubicHelper, w.buffer(area(width, height - 1) - 1), w.result(), w.size(), width, height,
              w.real(0.1F, 5), w.real(0.1F, 5));
     }},
    {"PrefilterCubicPass1Helper",
     [](Workspace &w) {
         PrefilterCubicPass1Helper(w.buffer(), w.buffer(), w.integer(0, w.width / 2), 0, w.width - 1, w.height);
     }},
    {"PrefilterCubicPass2Helpter",
     [](Workspace &w) {
         // The last sample is not read.
         PrefilterCubicPass2Helpter(w.buffer(w.count() - 1), w.buffer(w.count() - 1), w.width - 1,
                                    w.integer(0, w.height), 0, w.height - 1);
     }},
    {"xprefilterlerp",
     [](Workspace &w) { call(xprefilterlerp, w.size(), w.real(-1, 2), w.floats(w.count(), -50, 300), w.buffer()); }},
};

const BulkFamily family("Resample", cases);

} // namespace
