#include "tavik/raster/raster.h"

#include <array>
#include <cmath>

#include <gtest/gtest.h>

#include "tests/support/planes.h"

using namespace tavik_test;

namespace {

TEST(Rays, RaysMeetTriangles) {
    struct Case {
        std::array<float, 3> origin, direction;
        float scale;
        int hit;       // from either side
        int faced_hit; // from the front alone
        float distance;
    };
    const float most = std::nextafter(1.0F, 2.0F);
    const Case cases[] = {
        {{0.25F, 0.25F, 1}, {0, 0, -2}, 1, 1, 1, 0.5F},  {{0.25F, 0.25F, 1}, {0, 0, 1}, 1, 0, 0, 0},
        {{0.25F, 0.25F, -1}, {0, 0, 1}, 1, 1, 0, 1},     {{1, 0, 1}, {0, 0, -1}, 1, 1, 1, 1}, // corner
        {{0.5F, 0.5F, 1}, {0, 0, -1}, 1, 1, 1, 1},       {{most, 0, 1}, {0, 0, -1}, 1, 0, 0, 0},
        {{0, -0.001F, 1}, {0, 0, -1}, 1, 0, 0, 0},       {{0, 0, 1}, {1, 0, 0}, 1, 0, 0, 0},
        {{0.25F, 0.25F, 0}, {0, 0, -1}, 1, 0, 1, 0}, // on it
        {{2e-5F, 2e-5F, 1}, {0, 0, -1}, 1e-4F, 0, 1, 1},
    };
    for (const Case &c : cases) {
        const std::array<float, 3> v0 = {0, 0, 0};
        const std::array<float, 3> v1 = {c.scale, 0, 0};
        const std::array<float, 3> v2 = {0, c.scale, 0};
        SCOPED_TRACE(&c - cases);
        float distance = -9;
        EXPECT_EQ(
            triangle_intersection(v0.data(), v1.data(), v2.data(), c.origin.data(), c.direction.data(), &distance),
            c.hit);
        EXPECT_EQ(distance, c.hit != 0 ? c.distance : -9);
        Floats hit = {-9, -9, -9};
        const auto faced = [&](auto &b, auto &d) {
            return xRayTriangleIntersect(c.origin.data(), c.direction.data(), v0.data(), b.data(), d.data(), 1,
                                         hit.data());
        };
        EXPECT_EQ(faced(v1, v2), c.faced_hit);
        const Floats expected = {c.distance, c.origin[0] / c.scale, c.origin[1] / c.scale};
        for (std::size_t i = 0; i < 3; ++i) EXPECT_FLOAT_EQ(hit[i], c.faced_hit != 0 ? expected[i] : -9);
        EXPECT_EQ(faced(v2, v1), &c - cases == 2 ? 1 : 0);
    }
    const std::array<double, 3> v0 = {0, 0, 0};
    const std::array<double, 3> v1 = {1e-4, 0, 0};
    const std::array<double, 3> v2 = {0, 1e-4, 0};
    double distance = 0;
    EXPECT_EQ(triangle_intersection_d(v0.data(), v1.data(), v2.data(), std::array<double, 3>{2e-5, 2e-5, 1}.data(),
                                      std::array<double, 3>{0, 0, -3}.data(), &distance),
              1);
    EXPECT_DOUBLE_EQ(distance, 1.0 / 3);
}

TEST(Rays, RaysMeetBoxesAndSpheres) {
    using Vector = Floats;
    struct Case {
        Vector origin, direction;
        int hit;
        float nearest, farthest;
    };
    const auto expect = [](const Case &c, auto meet, auto... shape) {
        SCOPED_TRACE(testing::PrintToString(c.origin) + testing::PrintToString(c.direction));
        float nearest = -9;
        float farthest = -9;
        EXPECT_EQ(call(meet, c.origin, c.direction, shape..., &nearest, &farthest), c.hit);
        EXPECT_EQ(nearest, c.hit != 0 ? c.nearest : -9);
        EXPECT_EQ(farthest, c.hit != 0 ? c.farthest : -9);
    };
    const Case boxes[] = {{{-1, 0.5F, 0.5F}, {1, 0, 0}, 1, 1, 2},  {{0.5F, 0.5F, 0.5F}, {1, 0, 0}, 1, 0, 0.5F},
                          {{-1, 1, 0.5F}, {1, 0, 0}, 1, 1, 2},     {{-1, 0.5F, 0.5F}, {-1, 0, 0}, 0, 0, 0},
                          {{-1, 1.01F, 0.5F}, {1, 0, 0}, 0, 0, 0}, {{2, 2, 2}, {-2, -2, -2}, 1, 0.5F, 1},
                          {{-1, 0, 0.5F}, {1, 3, 0}, 0, 0, 0}};
    for (const Case &c : boxes) expect(c, rayBoxIntersect, Vector{0, 0, 0}, Vector{1, 1, 1});
    const Case spheres[] = {{{0, 0, -5}, {0, 0, 1}, 1, 3, 7}, {{0, 0, -5}, {0, 0, 2}, 1, 1.5F, 3.5F},
                            {{0, 0, 0}, {0, 0, 1}, 1, -2, 2}, {{2, 0, -5}, {0, 0, 1}, 1, 5, 5},
                            {{0, 0, 5}, {0, 0, 1}, 0, 0, 0},  {{2.01F, 0, -5}, {0, 0, 1}, 0, 0, 0},
                            {{0, 0, -5}, {0, 0, 0}, 0, 0, 0}};
    for (const Case &c : spheres) expect(c, intersectRaySphere, Vector{0, 0, 0}, 2);
}

TEST(Rays, LinesCross) {
    struct Case {
        std::array<float, 8> ends;
        int result;
        float x, y;
    };
    for (const Case &c : {Case{{0, 0, 4, 4, 0, 4, 4, 0}, 1, 2, 2},
                          {{0, 0, 1, 1, 0, 4, 4, 0}, 2, 2, 2},
                          {{0, 0, 4, 4, 0, 4, 1, 3}, 2, 2, 2},
                          {{0, 0, 4, 4, 1, 0, 5, 4}, 0, -9, -9},
                          {{0, 0, 4, 0, 4, 0, 4, 4}, 1, 4, 0},
                          {{0, 0, 4, 0, 5, -1, 5, 4}, 2, 5, 0}}) {
        float x = -9;
        float y = -9;
        EXPECT_EQ(call(lineIntersection, c.ends, &x, &y), c.result);
        EXPECT_EQ(x, c.x);
        EXPECT_EQ(y, c.y);
    }
}

} // namespace
