#include "tavik/generators/generators.h"

#include <array>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "tavik/paint/paint.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

constexpr int32_t x_max = 61;
constexpr int32_t y_max = 40;

// A unit of x or z is a pixel 200 before this camera, and (0, 0) is pixel (30, 20).
constexpr std::array<float, 5> camera = {5, -3, 2, 10, 7};

Floats particle(float x, float depth, float z, float size, float opacity,
                std::array<float, 3> colour = {200, 300, -5}) {
    const float unread = 1e6F;
    return {camera[0] + x, camera[1] + depth, camera[2] + z, size,   opacity, unread, unread, unread, colour[0],
            colour[1],     colour[2],         unread,        unread, unread,  unread, unread, unread, unread};
}

template <class Sample> struct Planes {
    std::array<std::vector<Sample>, 3> planes;

    Planes() { planes.fill(std::vector<Sample>((x_max + 1) * (y_max + 1), 90)); }

    void render(const Floats &particles, const std::array<float, 5> &from = camera) {
        const auto count = static_cast<int32_t>(particles.size() / 18);
        if constexpr (std::is_same_v<Sample, float>)
            call(xRenderCloud_float, particles, from.data(), count, x_max, y_max, planes);
        else
            call(xRenderCloud, particles, from.data(), count, x_max, y_max, planes);
    }

    // The dab that a puff is, of colour (200, 255, 0).
    void dab(float cx, float cy, float radius, float opacity) {
        const auto &export_of_type = [] {
            if constexpr (std::is_same_v<Sample, float>)
                return FeatheredCircle_ppl_float;
            else
                return FeatheredCircle_ppl;
        }();
        call(export_of_type, cx, cy, 2 * radius, radius, 200, 255, 0, opacity, x_max, y_max, planes);
    }

    bool operator==(const Planes &) const = default;
};

struct Case {
    float x, depth, z, size, opacity;
    float cx, cy, radius, painted_opacity; // of the dab
    float faded_opacity;                   // of the dab in float planes
};

template <class Sample> void expect_puff(const Case &c, float opacity) {
    Planes<Sample> puff;
    puff.render(particle(c.x, c.depth, c.z, c.size, c.opacity));
    Planes<Sample> dab;
    if (opacity > 0) dab.dab(c.cx, c.cy, c.radius, opacity);
    EXPECT_TRUE(puff == dab) << sizeof(Sample) << ": " << c.x << ' ' << c.depth << ' ' << c.size;
}

TEST(Clouds, APuffIsAProjectedDab) {
    const Case cases[] = {
        {0, 200, 0, 20, 1, 30, 20, 5, 1, 1},
        {7.9F, 200, -4.9F, 23.9F, 0.5F, 37, 15, 5, 0.5F, 0.5F}, // All truncates,
        {-33.5F, 200, -22.5F, 40, 9, -3, -2, 10, 1, 1},         // toward zero, too.
        {10, 100, 4, 10, 1, 50, 28, 5, 1, 0.5F},                // Twice as large at half the distance
        {10, 400, 4, 40, 1, 35, 22, 5, 1, 1},
        {10, 50, 4, 4, 1, 70, 36, 4, 1, 0}, // Float puffs have not yet begun to fade in.
        {10, 49, 0, 3, 1, 70, 20, 3, 1, 0},
        {3, 200, 0, 20, -1, 0, 0, 0, 0, 0},
        {3, 200, 0, 3.9F, 1, 0, 0, 0, 0, 0},        // No radius
        {3, 200, 0, -20, 1, 0, 0, 0, 0, 0},         // Behind itself
        {0, 7, 0, 20, 1, 0, 0, 0, 0, 0},            // At the near distance
        {0, -200, 0, -20, 1, 0, 0, 0, 0, 0},        // Behind the camera
        {0, 200, 0, 2000, 1, 0, 0, 0, 0, 0},        // Half of 1000 is too large,
        {0, 200, 0, 1999.9F, 1, 30, 20, 499, 1, 1}, // and just not.
        {-51, 200, 0, 40, 1, -21, 20, 10, 1, 1},    // Off the picture, on every side
        {52, 200, 0, 40, 1, 82, 20, 10, 1, 1},
        {0, 200, -41, 40, 1, 30, -21, 10, 1, 1},
        {0, 200, 41, 40, 1, 30, 61, 10, 1, 1},
    };
    for (const Case &c : cases) {
        expect_puff<uint8_t>(c, c.painted_opacity);
        expect_puff<float>(c, c.faded_opacity);
    }
    // No zoom, no size.
    Planes<uint8_t> planes;
    planes.render(particle(0, 200, 0, 20, 1), {5, -3, 2, 0, 7});
    EXPECT_TRUE(planes == Planes<uint8_t>());
}

// More puffs than one batch has, over each other.
TEST(Clouds, PuffsCoverEachOtherInTheirOrder) {
    Floats particles;
    Planes<uint8_t> one_by_one;
    for (int32_t i = 0; i < 1500; ++i) {
        const auto shade = static_cast<float>(i % 256);
        const auto puff = particle(static_cast<float>(i * 7 % 50 - 25), 200, static_cast<float>(i * 11 % 40 - 20), 24,
                                   0.4F, {shade, 255 - shade, 128});
        particles.insert(particles.end(), puff.begin(), puff.end());
        one_by_one.render(puff);
    }
    Planes<uint8_t> together;
    together.render(particles);
    EXPECT_TRUE(together == one_by_one);
}

template <class Sample, auto Export> void render_in(Workspace &w) {
    // The last column of the last row that may be painted is not touched.
    const std::size_t touched = static_cast<std::size_t>(w.width + 1) * static_cast<std::size_t>(w.height) - 1;
    Sample *planes[3];
    for (Sample *&plane : planes)
        plane = std::is_same_v<Sample, float> ? reinterpret_cast<Sample *>(w.floats(touched, 0, 255))
                                              : w.buffer<Sample>(touched);
    constexpr int32_t count = 60;
    float *particles = w.floats(std::size_t{18} * count, 0, 1);
    for (float *p = particles; p != particles + 18 * count; p += 18) {
        p[0] = w.real(-0.6F, 0.6F) * static_cast<float>(w.width);
        p[1] = w.real(-20, 400);
        p[2] = w.real(-0.6F, 0.6F) * static_cast<float>(w.height);
        p[3] = w.real(0, w.integer(0, 5) == 0 ? 300 : 20);
        p[8] = w.real(0, 255);
    }
    call(Export, particles, w.floats(5, 1, 9), count, w.size(), planes);
}

const BulkCase cases[] = {{"xRenderCloud", render_in<uint8_t, xRenderCloud>},
                          {"xRenderCloud_float", render_in<float, xRenderCloud_float>}};

const BulkFamily family("Clouds", cases);

} // namespace
