// Picture brushes, graded lines, quadrilaterals and outlines.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include <gtest/gtest.h>

#include "tavik/paint/paint.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

constexpr int32_t side = 9;

Planes picture(uint8_t value) { return planes_of(side * side, value); }
const Planes ramp = ramp_planes(side, side);

TEST(Brushes, StampsMixByAlphaAndAreCutOff) {
    struct Case {
        int32_t x, y, opacity;
        Bytes expected; // the planes, 4 × 2 of 200
    };
    for (const Case &c : {Case{0, 0, 255, {200, 150, 100, 200, 200, 200, 200, 200}},
                          {-1, 0, 128, {175, 150, 200, 200, 200, 200, 200, 200}},
                          {2, 1, 255, {200, 200, 200, 200, 200, 200, 200, 150}},
                          {0, -1, 255, Bytes(8, 200)},
                          {lowest, 0, 255, Bytes(8, 200)},
                          {highest, 0, 255, Bytes(8, 200)}}) {
        const Bytes brush(3, 100);
        const Bytes alpha = {0, 128, 255};
        Planes planes = planes_of(8, 200);
        call(CustomBrushBlit, c.x, c.y, 3, 1, c.opacity, 4, 2, brush.data(), brush.data(), brush.data(), alpha, planes);
        for (const Bytes &plane : planes) EXPECT_EQ(plane, c.expected) << c.x << ' ' << c.y;
    }
}

TEST(Brushes, SmearsCarryPaint) {
    const Bytes mask = {255, 128, 0};
    const auto smear = [&](int32_t x, int32_t strength, int32_t pickup, Bytes &carry, Bytes &plane) {
        Bytes unused(3, 9);
        Bytes beside(3, 9);
        Cust_Smear_helper(x, 0, 3, 1, strength, pickup, 3, 1, mask.data(), carry.data(), unused.data(), unused.data(),
                          plane.data(), beside.data(), beside.data());
        EXPECT_EQ(beside, Bytes(3, 9)) << "one colour stays as it is";
    };
    Bytes plane = {1, 2, 3};
    Bytes carry = {9, 9, 9};
    smear(1, 0, 255, carry, plane);
    EXPECT_EQ(plane, (Bytes{1, 2, 3}));
    EXPECT_EQ(carry, (Bytes{2, 3, 9})) << "what hangs over picks up nothing";
    plane = {0, 0, 0};
    carry = {100, 40, 100};
    smear(0, 255, 64, carry, plane);
    EXPECT_EQ(plane, (Bytes{100, 20, 0}));
    EXPECT_EQ(carry, (Bytes{75, 30, 75}));

    std::array<Floats, 3> planes;
    std::array<Floats, 3> carries;
    planes.fill({0, 0, 0});
    carries.fill({100, 40, 100});
    call(Cust_Smear_helper2, 0, 0, 3, 1, 1, 0.25F, 3, 1, mask.data(), carries, planes);
    for (const Floats &p : planes) EXPECT_EQ(p, (Floats{100, 20.0784321F, 0}));
    for (const Floats &c : carries) EXPECT_EQ(c, (Floats{75, 30, 75}));
}

TEST(Brushes, ClonesRepeatLikeATile) {
    const Planes source = ramp;
    const auto cloned = [&](int32_t dx, int32_t dy, const Bytes &mask) {
        Planes result = picture(250);
        call(xclonefill, side, side, dx, dy, 255, mask.data(), source, result);
        return result;
    };
    const Bytes full(side * side, 255);
    EXPECT_EQ(row_of(cloned(-1, 2, full)[0], 0, side), (Bytes{82, 2, 12, 22, 32, 42, 52, 62, 72}));
    EXPECT_EQ(cloned(side, -5 * side, full), source);
    EXPECT_EQ(cloned(3, 3, Bytes(side * side)), picture(250));
    Bytes half = full;
    half[4] = 128;
    EXPECT_EQ(row_of(cloned(0, 0, half)[0], 0, side), (Bytes{0, 10, 20, 30, 144, 50, 60, 70, 80}));
}

TEST(Brushes, APreviewIsARowOfTheDab) {
    constexpr int32_t count = 80;
    struct Dab {
        float cx, cy, diameter, feather, colour, opacity;
    };
    for (const Dab &d : {Dab{40, 20, 30, 6.5F, 250, 1},
                         {39.5F, 20, 30, 40, 300, 0.6F},
                         {75, 20, 20, 0, -1, 1},
                         {40, 20, 30, -3, 10, 1},
                         {40, 20, 9, 9, 10, 0},
                         {no_number, 3, 9, 9, 10, 1},
                         {3, 3, no_number, 9, 9, 1},
                         {3, 20, 1e30F, 4, 77, 0.5F},
                         {40, 20, 60, 9, no_number, 0.5F}}) {
        for (int32_t y = -1; y < 45; ++y) {
            Planes planes = planes_of(static_cast<std::size_t>(count + 1) * 61, 100);
            call(FeatheredCircle, d.cx, d.cy, d.diameter, d.feather, d.colour, 200, 5, d.opacity, count, 60, planes);
            Bytes row(5 + 3 * count, 100);
            Bytes expected = row;
            brush_preview_helper(row.data(), count, y, d.cx, d.cy, d.diameter, d.feather, d.colour, 200, 5, d.opacity,
                                 5);
            for (std::size_t x = 0; y >= 0 && x < count; ++x)
                for (std::size_t i = 0; i < 3; ++i)
                    expected[5 + 3 * x + 2 - i] = planes[i][static_cast<std::size_t>(y) * (count + 1) + x];
            ASSERT_EQ(row, expected) << d.cx << ' ' << d.diameter << ' ' << d.feather << ": row " << y;
        }
    }
}

TEST(Brushes, GradedLinesRunFromColourToColour) {
    const auto graded = [](std::array<float, 4> ends, float red0, float red1) {
        Planes result = picture(0);
        call(xGradAALine_b, ends, red0, 90, 30, red1, 90, 30, side, side, result);
        return result;
    };
    EXPECT_EQ(row_of(graded({2, 1, 6, 1}, 0, 200)[0], 1, side), (Bytes{0, 0, 0, 50, 100, 150, 200, 0, 0}));
    EXPECT_EQ(row_of(graded({6, 1, 2, 1}, 0, 200)[0], 1, side), (Bytes{0, 0, 200, 150, 100, 50, 0, 0, 0}));
    for (const auto &ends : {std::array<float, 4>{0.3F, 7, 7.7F, 1.1F}, {-20, 3, 30, 5}, {4, 4, 4, 4}}) {
        Planes plain = picture(0);
        call(xAAFloatLine, ends, 200, 90, 30, side, side, plain);
        EXPECT_EQ(graded(ends, 200, 200), plain);
    }
}

using Corners = std::array<float, 8>;
constexpr Corners own_edges = {-0.5F, -0.5F, 8.5F, -0.5F, 8.5F, 8.5F, -0.5F, 8.5F};

Planes filled(const Corners &corners, const Planes &source, Planes target, int32_t smooth = 1, float opacity = 1) {
    call(xFillPoly4_p, corners.data(), source, side, side, target, side, side, opacity, smooth);
    return target;
}

TEST(Brushes, QuadrilateralsCopyMirrorAndCover) {
    Planes mirrored = ramp;
    for (Bytes &plane : mirrored)
        for (std::size_t y = 0; y < side; ++y) std::reverse(&plane[y * side], &plane[y * side] + side);
    for (const int32_t smooth : {0, 1}) {
        EXPECT_EQ(filled(own_edges, ramp, picture(9), smooth), ramp);
        EXPECT_EQ(filled({8.5F, -0.5F, -0.5F, -0.5F, -0.5F, 8.5F, 8.5F, 8.5F}, ramp, picture(9), smooth), mirrored);
    }
    const Planes square = filled({2, 2, 6, 2, 6, 6, 2, 6}, picture(200), picture(0));
    EXPECT_EQ(row_of(square[1], 1, side), Bytes(side, 0));
    EXPECT_EQ(row_of(square[1], 2, side), (Bytes{0, 0, 100, 100, 100, 100, 100, 0, 0}));
    EXPECT_EQ(row_of(square[2], 4, side), (Bytes{0, 0, 100, 200, 200, 200, 100, 0, 0}));
    EXPECT_EQ(filled({1, 1, 5, 5, 1, 1, 5, 5}, picture(200), picture(0)), picture(0)) << "without an area";
}

// A trapezium that is seen as a square lying down: its diagonals still meet over the picture's middle.
TEST(Brushes, QuadrilateralsAreInPerspective) {
    Planes halves = picture(0);
    for (Bytes &plane : halves) std::fill(plane.begin() + 4 * side + 4, plane.end(), 200);
    const Corners lying = {3, 0, 5, 0, 8, 8, 0, 8};
    const Planes seen = filled(lying, halves, picture(0), 0);
    // The diagonals from (3, 0) to (8, 8) and from (5, 0) to (0, 8) meet at (4, 1.6).
    EXPECT_EQ(row_of(seen[0], 1, side)[4], 0);
    EXPECT_EQ(row_of(seen[0], 2, side)[4], 200);
}

TEST(Brushes, AlphaAndTintWeighQuadrilaterals) {
    const Corners corners = {1.3F, 0.2F, 7.1F, 1.9F, 8, 7.5F, 0.4F, 6};
    const auto through = [&](const Planes &source, uint8_t alpha, float tint, int32_t smooth) {
        const Bytes alphas(side * side, alpha);
        Planes tinted = picture(40);
        Planes plain = picture(40);
        const auto fill_by = [&](auto fill, Planes &to, auto... tints) {
            call(fill, corners.data(), source, alphas, side, side, to, side, side, 0.8F, smooth, tints...);
        };
        fill_by(xFillPoly4_Alpha_p_Tinted, tinted, tint, tint, tint);
        fill_by(xFillPoly4_Alpha_p, plain);
        EXPECT_TRUE(tint != 255 || tinted == plain);
        return tinted;
    };
    for (const int32_t smooth : {0, 1}) {
        EXPECT_EQ(through(ramp, 255, 255, smooth), filled(corners, ramp, picture(40), smooth, 0.8F));
        EXPECT_EQ(through(ramp, 0, 255, smooth), picture(40));
        EXPECT_EQ(row_of(through(picture(100), 51, 510, smooth)[0], 4, side)[4], 66);
    }
}

TEST(Brushes, OutlinesCarryStripes) {
    Bytes mask(25);
    for (const std::size_t i : {6U, 7U, 8U, 11U, 12U, 13U, 16U, 17U, 18U}) mask[i] = 255;
    const auto outline = [&](const Bytes &selection, int32_t threshold, int32_t dash, int32_t slant_x,
                             int32_t slant_y) {
        Bytes labels(25, 9);
        xInitMarquee(selection.data(), labels.data(), 5, 5, threshold, dash, slant_x, slant_y);
        return labels;
    };
    EXPECT_EQ(outline(mask, 127, 2, 1, 1),
              (Bytes{0, 0, 0, 0, 0, 0, 3, 4, 1, 0, 0, 4, 0, 2, 0, 0, 1, 2, 3, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(outline(mask, 127, 2, -1, -5), outline(mask, 127, 2, 3, 7));
    const Bytes border = {1, 1, 1, 1, 1, 1, 0, 0, 0, 1, 1, 0, 0, 0, 1, 1, 0, 0, 0, 1, 1, 1, 1, 1, 1};
    EXPECT_EQ(outline(Bytes(25, 255), 254, 127, 0, 0), border);
    EXPECT_EQ(outline(Bytes(25, 0), -1, 1, 0, 0), border);
    EXPECT_EQ(outline(Bytes(25, 70), 70, 3, 1, 1), Bytes(25));
    EXPECT_EQ(outline(mask, 255, 3, 1, 1), Bytes(25));
}

// smear(brush's place and size, mask, carry, planes) for brushes around the edges.
template <class Sample, class Smear> void smear_in(Workspace &w, const Smear &smear) {
    const int32_t width = w.width / 2 + 1;
    const int32_t height = w.height + 2;
    const std::size_t size = area(width, height);
    const uint8_t *mask = w.buffer(size);
    const auto carry = w.buffers<3, Sample>(size);
    const auto planes = w.buffers<3, Sample>();
    for (const int32_t x : {-w.width / 3, 0, w.width / 3, 2 * w.width / 3})
        smear(x, w.integer(-3, 2), width, height, mask, carry, planes);
}

template <int variant> void fill_in(Workspace &w) {
    const int32_t width = w.integer(1, 40);
    const int32_t height = w.integer(1, 20);
    const auto src = w.buffers(area(width, height));
    const uint8_t *alpha = w.buffer(area(width, height));
    const auto dst = w.buffers();
    const auto right = static_cast<float>(w.width) + 9;
    const auto bottom = static_cast<float>(w.height) + 9;
    for (int32_t i = 0; i < 8; ++i) {
        Corners c;
        for (std::size_t k = 0; k < 8; ++k) c[k] = w.hostile(-9, k % 2 == 0 ? right : bottom);
        if (i < 3) c = {w.real(-9, right / 3), -3, right, w.real(-9, 9), right - 7, bottom, 3, bottom - 4};
        const float opacity = w.hostile(0, 1);
        if constexpr (variant == 0)
            call(xFillPoly4_p, c.data(), src, width, height, dst, w.size(), opacity, i % 2);
        else if constexpr (variant == 1)
            call(xFillPoly4_Alpha_p, c.data(), src, alpha, width, height, dst, w.size(), opacity, i % 2);
        else
            call(xFillPoly4_Alpha_p_Tinted, c.data(), src, alpha, width, height, dst, w.size(), opacity, i % 2,
                 w.hostile(0, 255), w.hostile(0, 255), 99);
    }
}

const BulkCase cases[] = {
    {"CustomBrushBlit",
     [](Workspace &w) {
         smear_in<uint8_t>(
             w, [&](int32_t x, int32_t y, int32_t width, int32_t height, auto mask, auto brush, auto planes) {
                 call(CustomBrushBlit, x, y, width, height, w.integer(0, 255), w.size(), brush, mask, planes);
             });
     }},
    {"Cust_Smear_helper",
     [](Workspace &w) {
         smear_in<uint8_t>(
             w, [&](int32_t x, int32_t y, int32_t width, int32_t height, auto mask, auto carry, auto planes) {
                 call(Cust_Smear_helper, x, y, width, height, w.integer(0, 255), w.integer(0, 255), w.size(), mask,
                      carry, planes);
             });
     }},
    {"Cust_Smear_helper2",
     [](Workspace &w) {
         smear_in<float>(w, [&](int32_t x, int32_t y, int32_t width, int32_t height, auto mask, auto carry,
                                auto planes) {
             // Two numbers that are none have no rule which of them remains.
             const std::size_t size = area(width, height);
             for (std::size_t i = 0; i < 3; ++i) {
                 const auto is_none = [](float value) { return value != value; };
                 std::replace_if(carry[i], carry[i] + size, is_none, 7.0F);
                 std::replace_if(planes[i], planes[i] + w.count(), is_none, INFINITY);
             }
             call(Cust_Smear_helper2, x, y, width, height, w.real(0, 1), w.real(0, 1), w.size(), mask, carry, planes);
         });
     }},
    {"xclonefill",
     [](Workspace &w) {
         const uint8_t *mask = w.buffer();
         const auto src = w.buffers();
         const auto dst = w.buffers();
         for (const int32_t far : {lowest, -7, 0, highest})
             call(xclonefill, w.size(), far, w.integer(-900, 900), w.integer(0, 255), mask, src, dst);
     }},
    {"brush_preview_helper",
     [](Workspace &w) {
         uint8_t *row = w.buffer(3 * w.count());
         const auto count = static_cast<int32_t>(w.count());
         for (int32_t i = 0; i < 9; ++i)
             brush_preview_helper(row, count, 5, w.hostile(0, 60), w.hostile(0, 9), w.hostile(0, 90), w.hostile(0, 9),
                                  w.hostile(0, 255), 200, 90, w.hostile(0, 2), 0);
     }},
    {"xGradAALine_b",
     [](Workspace &w) {
         const auto planes = w.buffers();
         const auto right = static_cast<float>(w.width + 9);
         const auto bottom = static_cast<float>(w.height + 9);
         for (int32_t i = 0; i < 9; ++i)
             call(xGradAALine_b, w.hostile(-9, right), w.hostile(-9, bottom), w.hostile(-9, right),
                  w.hostile(-9, bottom), w.hostile(0, 255), 0, 99, w.hostile(0, 255), 255, 99, w.size(), planes);
     }},
    {"xFillPoly4_p", fill_in<0>},
    {"xFillPoly4_Alpha_p", fill_in<1>},
    {"xFillPoly4_Alpha_p_Tinted", fill_in<2>},
    {"xInitMarquee",
     [](Workspace &w) {
         call(xInitMarquee, w.buffer(), w.result(), w.size(), w.integer(20, 60), w.integer(-5, 130),
              w.integer(-300, 300), highest);
     }},
};

const BulkFamily family("Brushes", cases);

} // namespace
