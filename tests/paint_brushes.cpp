// Picture brushes, graded lines, quadrilaterals and outlines.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "tavik/paint/paint.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

using Bytes = std::vector<uint8_t>;
using Floats = std::vector<float>;
constexpr int32_t side = 9;

std::size_t area(int32_t width, int32_t height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

// Three planes of 9 × 9.
struct Picture {
    std::array<Bytes, 3> planes;

    explicit Picture(uint8_t value) { planes.fill(Bytes(side * side, value)); }
    bool operator==(const Picture &) const = default;

    Bytes row(std::size_t plane, std::ptrdiff_t y) const {
        return {planes[plane].begin() + y * side, planes[plane].begin() + (y + 1) * side};
    }
};

Picture ramp() {
    Picture picture(0);
    for (int32_t y = 0; y < side; ++y)
        for (int32_t x = 0; x < side; ++x) {
            const auto i = area(side, y) + static_cast<std::size_t>(x);
            picture.planes[0][i] = static_cast<uint8_t>(10 * x + y);
            picture.planes[1][i] = static_cast<uint8_t>(10 * y + x);
            picture.planes[2][i] = static_cast<uint8_t>(7 * x * y);
        }
    return picture;
}

TEST(Brushes, StampsMixByAlphaAndAreCutOff) {
    struct Case {
        int32_t x, y, opacity;
        Bytes expected; // the planes, 4 × 2 of 200
    };
    for (const Case &c : {Case{0, 0, 255, {200, 150, 100, 200, 200, 200, 200, 200}},
                          {-1, 0, 128, {175, 150, 200, 200, 200, 200, 200, 200}},
                          {2, 1, 255, {200, 200, 200, 200, 200, 200, 200, 150}},
                          {0, -1, 255, Bytes(8, 200)},
                          {std::numeric_limits<int32_t>::min(), 0, 255, Bytes(8, 200)},
                          {std::numeric_limits<int32_t>::max(), 0, 255, Bytes(8, 200)}}) {
        const Bytes brush(3, 100);
        const Bytes alpha = {0, 128, 255};
        std::array<Bytes, 3> planes;
        planes.fill(Bytes(8, 200));
        CustomBrushBlit(c.x, c.y, 3, 1, c.opacity, 4, 2, brush.data(), brush.data(), brush.data(), alpha.data(),
                        planes[0].data(), planes[1].data(), planes[2].data());
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
    Cust_Smear_helper2(0, 0, 3, 1, 1, 0.25F, 3, 1, mask.data(), carries[0].data(), carries[1].data(), carries[2].data(),
                       planes[0].data(), planes[1].data(), planes[2].data());
    for (const Floats &p : planes) EXPECT_EQ(p, (Floats{100, 20.0784321F, 0}));
    for (const Floats &c : carries) EXPECT_EQ(c, (Floats{75, 30, 75}));
}

TEST(Brushes, ClonesRepeatLikeATile) {
    const Picture source = ramp();
    const auto cloned = [&](int32_t dx, int32_t dy, const Bytes &mask) {
        Picture picture(250);
        xclonefill(side, side, dx, dy, 255, mask.data(), source.planes[0].data(), source.planes[1].data(),
                   source.planes[2].data(), picture.planes[0].data(), picture.planes[1].data(),
                   picture.planes[2].data());
        return picture;
    };
    const Bytes full(side * side, 255);
    EXPECT_EQ(cloned(-1, 2, full).row(0, 0), (Bytes{82, 2, 12, 22, 32, 42, 52, 62, 72}));
    EXPECT_EQ(cloned(side, -5 * side, full), source);
    EXPECT_EQ(cloned(3, 3, Bytes(side * side)), Picture(250));
    Bytes half = full;
    half[4] = 128;
    EXPECT_EQ(cloned(0, 0, half).row(0, 0), (Bytes{0, 10, 20, 30, 144, 50, 60, 70, 80}));
}

TEST(Brushes, APreviewIsARowOfTheDab) {
    constexpr int32_t count = 80;
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    struct Dab {
        float cx, cy, diameter, feather, colour, opacity;
    };
    for (const Dab &d : {Dab{40, 20, 30, 6.5F, 250, 1},
                         {39.5F, 20, 30, 40, 300, 0.6F},
                         {75, 20, 20, 0, -1, 1},
                         {40, 20, 30, -3, 10, 1},
                         {40, 20, 9, 9, 10, 0},
                         {nan, 3, 9, 9, 10, 1},
                         {3, 3, nan, 9, 9, 1},
                         {3, 20, 1e30F, 4, 77, 0.5F},
                         {40, 20, 60, 9, nan, 0.5F}}) {
        for (int32_t y = -1; y < 45; ++y) {
            std::array<Bytes, 3> planes;
            planes.fill(Bytes(static_cast<std::size_t>(count + 1) * 61, 100));
            FeatheredCircle(d.cx, d.cy, d.diameter, d.feather, d.colour, 200, 5, d.opacity, count, 60, planes[0].data(),
                            planes[1].data(), planes[2].data());
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
        Picture picture(0);
        xGradAALine_b(ends[0], ends[1], ends[2], ends[3], red0, 90, 30, red1, 90, 30, side, side,
                      picture.planes[0].data(), picture.planes[1].data(), picture.planes[2].data());
        return picture;
    };
    EXPECT_EQ(graded({2, 1, 6, 1}, 0, 200).row(0, 1), (Bytes{0, 0, 0, 50, 100, 150, 200, 0, 0}));
    EXPECT_EQ(graded({6, 1, 2, 1}, 0, 200).row(0, 1), (Bytes{0, 0, 200, 150, 100, 50, 0, 0, 0}));
    for (const auto &ends : {std::array<float, 4>{0.3F, 7, 7.7F, 1.1F}, {-20, 3, 30, 5}, {4, 4, 4, 4}}) {
        Picture plain(0);
        xAAFloatLine(ends[0], ends[1], ends[2], ends[3], 200, 90, 30, side, side, plain.planes[0].data(),
                     plain.planes[1].data(), plain.planes[2].data());
        EXPECT_EQ(graded(ends, 200, 200), plain);
    }
}

using Corners = std::array<float, 8>;
constexpr Corners own_edges = {-0.5F, -0.5F, 8.5F, -0.5F, 8.5F, 8.5F, -0.5F, 8.5F};

Picture filled(const Corners &corners, const Picture &source, Picture target, int32_t smooth = 1, float opacity = 1) {
    xFillPoly4_p(corners.data(), source.planes[0].data(), source.planes[1].data(), source.planes[2].data(), side, side,
                 target.planes[0].data(), target.planes[1].data(), target.planes[2].data(), side, side, opacity,
                 smooth);
    return target;
}

TEST(Brushes, QuadrilateralsCopyMirrorAndCover) {
    Picture mirrored = ramp();
    for (Bytes &plane : mirrored.planes)
        for (std::size_t y = 0; y < side; ++y) std::reverse(&plane[y * side], &plane[y * side] + side);
    for (const int32_t smooth : {0, 1}) {
        EXPECT_EQ(filled(own_edges, ramp(), Picture(9), smooth), ramp());
        EXPECT_EQ(filled({8.5F, -0.5F, -0.5F, -0.5F, -0.5F, 8.5F, 8.5F, 8.5F}, ramp(), Picture(9), smooth), mirrored);
    }
    const Picture square = filled({2, 2, 6, 2, 6, 6, 2, 6}, Picture(200), Picture(0));
    EXPECT_EQ(square.row(1, 1), Bytes(side, 0));
    EXPECT_EQ(square.row(1, 2), (Bytes{0, 0, 100, 100, 100, 100, 100, 0, 0}));
    EXPECT_EQ(square.row(2, 4), (Bytes{0, 0, 100, 200, 200, 200, 100, 0, 0}));
    EXPECT_EQ(filled({1, 1, 5, 5, 1, 1, 5, 5}, Picture(200), Picture(0)), Picture(0)) << "without an area";
}

// A trapezium that is seen as a square lying down: its diagonals still meet over the picture's middle.
TEST(Brushes, QuadrilateralsAreInPerspective) {
    Picture halves(0);
    for (Bytes &plane : halves.planes) std::fill(plane.begin() + 4 * side + 4, plane.end(), 200);
    const Corners lying = {3, 0, 5, 0, 8, 8, 0, 8};
    const Picture seen = filled(lying, halves, Picture(0), 0);
    // The diagonals from (3, 0) to (8, 8) and from (5, 0) to (0, 8) meet at (4, 1.6).
    EXPECT_EQ(seen.row(0, 1)[4], 0);
    EXPECT_EQ(seen.row(0, 2)[4], 200);
}

TEST(Brushes, AlphaAndTintWeighQuadrilaterals) {
    const Corners corners = {1.3F, 0.2F, 7.1F, 1.9F, 8, 7.5F, 0.4F, 6};
    const auto through = [&](const Picture &source, uint8_t alpha, float tint, int32_t smooth) {
        const Bytes alphas(side * side, alpha);
        Picture tinted(40);
        Picture plain(40);
        const auto call = [&](auto &&fill, Picture &to, auto... tints) {
            fill(corners.data(), source.planes[0].data(), source.planes[1].data(), source.planes[2].data(),
                 alphas.data(), side, side, to.planes[0].data(), to.planes[1].data(), to.planes[2].data(), side, side,
                 0.8F, smooth, tints...);
        };
        call(xFillPoly4_Alpha_p_Tinted, tinted, tint, tint, tint);
        call(xFillPoly4_Alpha_p, plain);
        EXPECT_TRUE(tint != 255 || tinted == plain);
        return tinted;
    };
    for (const int32_t smooth : {0, 1}) {
        EXPECT_EQ(through(ramp(), 255, 255, smooth), filled(corners, ramp(), Picture(40), smooth, 0.8F));
        EXPECT_EQ(through(ramp(), 0, 255, smooth), Picture(40));
        EXPECT_EQ(through(Picture(100), 51, 510, smooth).row(0, 4)[4], 66);
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

// Among numbers of the picture's size, those that are none or too large.
float hostile(Workspace &w, float low, float high) {
    const std::array<float, 6> odd = {std::numeric_limits<float>::quiet_NaN(),
                                      std::numeric_limits<float>::infinity(),
                                      -std::numeric_limits<float>::infinity(),
                                      1e30F,
                                      -1e30F,
                                      1e-30F};
    const int32_t which = w.integer(0, 40);
    return which < 6 ? odd[static_cast<std::size_t>(which)] : w.real(low, high);
}

template <class Element = uint8_t> std::array<Element *, 3> three_planes(Workspace &w, std::size_t elements) {
    return {w.buffer<Element>(elements), w.buffer<Element>(elements), w.buffer<Element>(elements)};
}

// smear(brush's place and size, mask, carry, planes) for brushes around the edges.
template <class Sample, class Smear> void smear_in(Workspace &w, const Smear &smear) {
    const int32_t width = w.width / 2 + 1;
    const int32_t height = w.height + 2;
    const std::size_t size = area(width, height);
    const uint8_t *mask = w.buffer(size);
    const auto carry = three_planes<Sample>(w, size);
    const auto planes = three_planes<Sample>(w, w.count());
    for (const int32_t x : {-w.width / 3, 0, w.width / 3, 2 * w.width / 3})
        smear(x, w.integer(-3, 2), width, height, mask, carry, planes);
}

template <int variant> void fill_in(Workspace &w) {
    const int32_t width = w.integer(1, 40);
    const int32_t height = w.integer(1, 20);
    const auto src = three_planes(w, area(width, height));
    const uint8_t *alpha = w.buffer(area(width, height));
    const auto dst = three_planes(w, w.count());
    const auto right = static_cast<float>(w.width) + 9;
    const auto bottom = static_cast<float>(w.height) + 9;
    for (int32_t i = 0; i < 8; ++i) {
        Corners c;
        for (std::size_t k = 0; k < 8; ++k) c[k] = hostile(w, -9, k % 2 == 0 ? right : bottom);
        if (i < 3) c = {w.real(-9, right / 3), -3, right, w.real(-9, 9), right - 7, bottom, 3, bottom - 4};
        const float opacity = hostile(w, 0, 1);
        if constexpr (variant == 0)
            xFillPoly4_p(c.data(), src[0], src[1], src[2], width, height, dst[0], dst[1], dst[2], w.width, w.height,
                         opacity, i % 2);
        else if constexpr (variant == 1)
            xFillPoly4_Alpha_p(c.data(), src[0], src[1], src[2], alpha, width, height, dst[0], dst[1], dst[2], w.width,
                               w.height, opacity, i % 2);
        else
            xFillPoly4_Alpha_p_Tinted(c.data(), src[0], src[1], src[2], alpha, width, height, dst[0], dst[1], dst[2],
                                      w.width, w.height, opacity, i % 2, hostile(w, 0, 255), hostile(w, 0, 255), 99);
    }
}

const BulkCase cases[] = {
    {"CustomBrushBlit",
     [](Workspace &w) {
         smear_in<uint8_t>(
             w, [&](int32_t x, int32_t y, int32_t width, int32_t height, auto mask, auto brush, auto planes) {
                 CustomBrushBlit(x, y, width, height, w.integer(0, 255), w.width, w.height, brush[0], brush[1],
                                 brush[2], mask, planes[0], planes[1], planes[2]);
             });
     }},
    {"Cust_Smear_helper",
     [](Workspace &w) {
         smear_in<uint8_t>(
             w, [&](int32_t x, int32_t y, int32_t width, int32_t height, auto mask, auto carry, auto planes) {
                 Cust_Smear_helper(x, y, width, height, w.integer(0, 255), w.integer(0, 255), w.width, w.height, mask,
                                   carry[0], carry[1], carry[2], planes[0], planes[1], planes[2]);
             });
     }},
    {"Cust_Smear_helper2",
     [](Workspace &w) {
         smear_in<float>(w,
                         [&](int32_t x, int32_t y, int32_t width, int32_t height, auto mask, auto carry, auto planes) {
                             // Two numbers that are none have no rule which of them remains.
                             const std::size_t size = area(width, height);
                             for (std::size_t i = 0; i < 3; ++i) {
                                 const auto is_none = [](float value) { return value != value; };
                                 std::replace_if(carry[i], carry[i] + size, is_none, 7.0F);
                                 std::replace_if(planes[i], planes[i] + w.count(), is_none, INFINITY);
                             }
                             Cust_Smear_helper2(x, y, width, height, w.real(0, 1), w.real(0, 1), w.width, w.height,
                                                mask, carry[0], carry[1], carry[2], planes[0], planes[1], planes[2]);
                         });
     }},
    {"xclonefill",
     [](Workspace &w) {
         const uint8_t *mask = w.buffer(w.count());
         const auto src = three_planes(w, w.count());
         const auto dst = three_planes(w, w.count());
         for (const int32_t far : {std::numeric_limits<int32_t>::min(), -7, 0, std::numeric_limits<int32_t>::max()})
             xclonefill(w.width, w.height, far, w.integer(-900, 900), w.integer(0, 255), mask, src[0], src[1], src[2],
                        dst[0], dst[1], dst[2]);
     }},
    {"brush_preview_helper",
     [](Workspace &w) {
         uint8_t *row = w.buffer(3 * w.count());
         const auto count = static_cast<int32_t>(w.count());
         for (int32_t i = 0; i < 9; ++i)
             brush_preview_helper(row, count, 5, hostile(w, 0, 60), hostile(w, 0, 9), hostile(w, 0, 90),
                                  hostile(w, 0, 9), hostile(w, 0, 255), 200, 90, hostile(w, 0, 2), 0);
     }},
    {"xGradAALine_b",
     [](Workspace &w) {
         const auto planes = three_planes(w, w.count());
         const auto right = static_cast<float>(w.width + 9);
         const auto bottom = static_cast<float>(w.height + 9);
         for (int32_t i = 0; i < 9; ++i)
             xGradAALine_b(hostile(w, -9, right), hostile(w, -9, bottom), hostile(w, -9, right), hostile(w, -9, bottom),
                           hostile(w, 0, 255), 0, 99, hostile(w, 0, 255), 255, 99, w.width, w.height, planes[0],
                           planes[1], planes[2]);
     }},
    {"xFillPoly4_p", fill_in<0>},
    {"xFillPoly4_Alpha_p", fill_in<1>},
    {"xFillPoly4_Alpha_p_Tinted", fill_in<2>},
    {"xInitMarquee",
     [](Workspace &w) {
         const uint8_t *mask = w.buffer(w.count());
         uint8_t *labels = w.result(w.count());
         xInitMarquee(mask, labels, w.width, w.height, w.integer(20, 60), w.integer(-5, 130), w.integer(-300, 300),
                      std::numeric_limits<int32_t>::max());
     }},
};

const BulkFamily family("Brushes", cases);

} // namespace
