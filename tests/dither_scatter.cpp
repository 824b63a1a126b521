#include <array>
#include <cstdint>

#include <gtest/gtest.h>

#include "tavik/dither/dither.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

constexpr std::size_t side = 9;

// 10x + y.
Bytes ramp() {
    Bytes plane;
    for (std::size_t i = 0; i < side * side; ++i) plane.push_back(static_cast<uint8_t>(i % side * 10 + i / side));
    return plane;
}

TEST(Dither, TileGrainRepeatsAndInterpolates) {
    const std::array<float, 4> tile = {10, -10, 0, 20};
    struct Case {
        uint8_t before;
        float scale, offset_x, offset_y, amount;
        Bytes after; // two rows
    };
    for (const Case &c : {Case{100, 1, 0, 0, 1, {110, 90, 110, 90, 100, 120, 100, 120}},
                          {100, 0.5F, 0, 0, 1, {110, 100, 90, 100, 105, 105, 105, 105}},
                          {250, 1, -1, 0, 1, {240, 255, 240, 255, 255, 250, 255, 250}},
                          {100, 1, 0, 1, 0.25F, {100, 105, 100, 105, 103, 98, 103, 98}},
                          {100, no_number, no_number, no_number, 0, {100, 100, 100, 100, 100, 100, 100, 100}}}) {
        Bytes plane(8, c.before);
        Bytes other = plane;
        Bytes third = plane;
        xfilmgrainHelper(4, 2, 2, 2, c.scale, c.offset_x, c.offset_y, c.amount, tile.data(), tile.data(), tile.data(),
                         plane.data(), other.data(), third.data());
        EXPECT_EQ(plane, c.after) << c.scale;
        EXPECT_EQ(third, c.after) << c.scale;
    }
}

TEST(Dither, ScatteredPixels) {
    const Bytes src = ramp();
    Bytes dst[3] = {Bytes(81), Bytes(81), Bytes(81)};
    call(xjitter, side, side, 2, 1, src.data(), src.data(), src.data(), dst);
    EXPECT_EQ(row_of(dst[0], 0, side), (Bytes{0, 2, 40, 41, 40, 60, 61, 81, 82}));
    EXPECT_EQ(dst[0], dst[2]);
    for (int i = 0; i < 81; ++i) {
        EXPECT_LE(std::abs(dst[0][static_cast<std::size_t>(i)] / 10 - i % 9), 2);
        EXPECT_LE(std::abs(dst[0][static_cast<std::size_t>(i)] % 10 - i / 9), 2);
    }
    call(xjitter2, side, side, 3, 4, 1, src.data(), src.data(), src.data(), dst);
    EXPECT_EQ(row_of(dst[0], 4, side), (Bytes{3, 3, 6, 24, 38, 45, 50, 55, 62}));
    EXPECT_EQ(dst[1], dst[0]);
    EXPECT_EQ(dst[2], dst[0]);
    call(xjitter, side, side, 0, 7, src.data(), src.data(), src.data(), dst);
    xjitter2(side, side, 0, 3, 7, src.data(), src.data(), src.data(), dst[1].data(), dst[1].data(), dst[1].data());
    EXPECT_EQ(dst[0], src);
    EXPECT_EQ(dst[1], src);
}

template <auto Export, class... Shape> void scatter(Workspace &w, Shape... shape) {
    const std::size_t n = w.count();
    const auto src = w.buffers(n);
    const auto dst = w.results(n);
    for (const float amount : {w.real(0, 30), 1e30F, no_number})
        call(Export, w.size(), amount, shape..., w.integer(0, 99), src, dst);
}

const BulkCase cases[] = {
    {"xfilmgrainHelper",
     [](Workspace &w) {
         constexpr int32_t columns = 7;
         constexpr int32_t rows = 5;
         float *tiles[3];
         for (float *&tile : tiles) tile = w.floats(columns * rows, -40, 40);
         const auto planes = w.buffers();
         for (const float offset : {w.real(-100, 100), 1e30F, -infinity})
             call(xfilmgrainHelper, w.size(), columns, rows, w.real(-2, 2), offset, w.real(-9, 9), w.real(0, 1), tiles,
                  planes);
     }},
    {"xjitter", [](Workspace &w) { scatter<xjitter>(w); }},
    {"xjitter2", [](Workspace &w) { scatter<xjitter2>(w, w.real(0, 9)); }},
};

const BulkFamily family("DitherByHash", cases);

} // namespace
