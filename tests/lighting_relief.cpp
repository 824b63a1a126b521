// Height fields as surfaces.
#include <array>
#include <cmath>
#include <cstdint>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "tavik/lighting/lighting.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

constexpr int32_t side = 9;
constexpr std::size_t count = side * side;

// value(x, y) of each sample.
template <class Sample = uint8_t, class Value> std::vector<Sample> plane_of(const Value &value) {
    std::vector<Sample> plane;
    for (int32_t y = 0; y < side; ++y)
        for (int32_t x = 0; x < side; ++x) plane.push_back(static_cast<Sample>(value(x, y)));
    return plane;
}

const Bytes ramp = plane_of([](int32_t x, int32_t y) { return 10 * x + y; });
const Bytes rising = plane_of([](int32_t x, int32_t) { return 10 * x; });

TEST(Lighting, NormalsOfSlopes) {
    const Floats heights = plane_of<float>([](int32_t x, int32_t) { return x; });
    Floats normals(3 * count, 9);
    x_F_Convolve_Normals(side, side, 1, heights.data(), normals.data());
    const auto at = [&](std::size_t x, std::size_t y) {
        const float *n = &normals[3 * (y * side + x)];
        return std::array<float, 3>{n[0], n[1], n[2]};
    };
    EXPECT_EQ(at(4, 4), (std::array<float, 3>{-0.70710677F, 0, 0.70710677F}));
    EXPECT_EQ(at(4, 0), at(4, 4));
    EXPECT_EQ(at(0, 4), (std::array<float, 3>{-0.44721359F, 0, 0.89442718F}));
    EXPECT_EQ(at(8, 8), at(0, 4));
    EXPECT_TRUE(std::signbit(at(4, 4)[1]));

    const Bytes falling = plane_of([](int32_t, int32_t y) { return 10 * y; });
    struct Case {
        const Bytes &heights;
        int32_t flip_y;
        std::array<int, 3> colour;
    };
    for (const Case &c : {Case{Bytes(count, 7), 0, {128, 128, 255}},
                          {rising, 0, {37, 128, 218}},
                          {falling, 0, {128, 37, 218}},
                          {falling, 1, {128, 218, 218}}}) {
        Bytes r(count);
        Bytes g(count);
        Bytes b(count);
        xNormalMap(side, side, 0.1F, c.flip_y, c.heights.data(), r.data(), g.data(), b.data());
        EXPECT_EQ((std::array<int, 3>{r[40], g[40], b[40]}), c.colour);
    }
}

TEST(Lighting, ReliefsInGrey) {
    struct Case {
        const Bytes &heights;
        std::array<float, 3> light;
        float ambient;
        int grey;
    };
    for (const Case &c : {Case{Bytes(count, 7), {0, 0, 1}, 0, 255},
                          {rising, {1, 0, 1}, 0.2F, 51},
                          {rising, {-1, 0, 1}, 0.2F, 255},
                          {rising, {0, 0, -3}, 0.2F, 51},
                          {rising, {0, 3, 4}, 0, 144}}) {
        Bytes dst(count);
        call(CPU_hightmap_r2, side, side, 0.1F, c.light, c.ambient, c.heights.data(), dst.data());
        EXPECT_EQ(dst[40], c.grey);
    }
    Bytes dst(count);
    CPU_hightmap_r2(side, side, 0.1F, 0, 0, 1, 0, rising.data(), dst.data());
    EXPECT_EQ(row_of(dst, 0, side), (Bytes{228, 180, 180, 180, 180, 180, 180, 180, 228}));
}

TEST(Lighting, ReliefsInColour) {
    const Floats heights(rising.begin(), rising.end());
    const Floats colour(count, 100);
    const Bytes byte_colour(count, 100);
    for (const auto &[specular, expected] : {std::pair{0.5F, 157.764862F}, {0.0F, 100.0F}}) {
        std::array<Floats, 3> floats = {colour, Floats(count), Floats(count)};
        call(CPU_hightmap_r3_float, side, side, 0.1F, -1, 0, 1, 0.2F, specular, 10, heights, floats[0].data(),
             colour.data(), colour.data(), floats);
        Planes bytes = planes_of(count);
        call(CPU_hightmap_r3, side, side, 0.1F, -1, 0, 1, 0.2F, specular, 10, rising, byte_colour, byte_colour,
             byte_colour, bytes);
        EXPECT_FLOAT_EQ(floats[1][40], expected);
        EXPECT_EQ(floats[0], floats[2]);
        for (std::size_t plane = 0; plane < 3; ++plane)
            for (std::size_t i = 0; i < count; ++i)
                EXPECT_EQ(bytes[plane][i], static_cast<int>(floats[plane][i] + 0.5F));
    }
    // Turned away from the light there is no highlight.
    Bytes dark(count);
    CPU_hightmap_r3(side, side, 1, 1, 0, 0.1F, 0.25F, 1, 0, rising.data(), byte_colour.data(), byte_colour.data(),
                    byte_colour.data(), dark.data(), dark.data(), dark.data());
    EXPECT_EQ(dark[40], 25);
}

TEST(Lighting, LampsOverAPicture) {
    const std::array<float, 12> lamp = {0, 0, 2, 1, 0.5F, 0.25F, 1, 1, 1, 1, 1, 20};
    std::array<float, 12> off = lamp;
    off[6] = 0;
    const Floats height = {0};
    const Floats up = {0, 0, 1};
    std::array<uint8_t, 3> pixel = {200, 200, 200};
    xLighting(1, 1, 0.1F, 1, lamp.data(), 1, height.data(), up.data(), &pixel[0], &pixel[1], &pixel[2], &pixel[0],
              &pixel[1], &pixel[2]);
    EXPECT_EQ(pixel, (std::array<uint8_t, 3>{134, 109, 96}));
    pixel = {200, 200, 200};
    xLighting(1, 1, 0.5F, 1, off.data(), 1, height.data(), up.data(), &pixel[0], &pixel[1], &pixel[2], &pixel[0],
              &pixel[1], &pixel[2]);
    EXPECT_EQ(pixel, (std::array<uint8_t, 3>{100, 100, 100}));

    // Several lamps over a hilly picture are the sums of GetPointLight.
    const Floats heights = plane_of<float>([](int32_t x, int32_t y) { return (x * 7 + y * 5) % 4; });
    Floats normals(3 * count);
    x_F_Convolve_Normals(side, side, 0.5F, heights.data(), normals.data());
    const std::array<float, 36> lamps = {2,  3, 12, 1,    0.5F, 0.2F, 90, 1,    1, 0.5F, 30, 9,  //
                                         8,  1, 5,  0.1F, 0.5F, 0.9F, 20, 0.2F, 1, 1,    9,  30, //
                                         -9, 4, 3,  1,    1,    1,    0,  1,    1, 1,    99, 1};
    Planes dst = planes_of(count);
    call(xLighting, side, side, 0.15F, 0.5F, lamps.data(), 3, heights, normals, ramp, ramp, ramp, dst);
    const std::array<float, 3> view = {0, 0, 1};
    for (std::size_t i = 0; i < count; ++i) {
        const std::array<float, 3> point = {static_cast<float>(i % side), static_cast<float>(i / side),
                                            heights[i] * 0.5F};
        std::array<float, 6> sum = {0.15F, 0.15F, 0.15F, 0, 0, 0};
        for (std::size_t lamp_index = 0; lamp_index < 3; ++lamp_index) {
            std::array<float, 6> light = {};
            GetPointLight(light.data(), &lamps[12 * lamp_index], point.data(), view.data(), &normals[3 * i]);
            for (std::size_t part = 0; part < 6; ++part) sum[part] += light[part];
        }
        for (std::size_t channel = 0; channel < 3; ++channel)
            EXPECT_NEAR(dst[channel][i],
                        std::min(255.0F, static_cast<float>(ramp[i]) * sum[channel] + sum[channel + 3] * 255), 1.01)
                << i;
    }
}

TEST(Lighting, BallsOfGlass) {
    const auto through = [](float index, float depth, float tint, float rim) {
        Planes dst = planes_of(count);
        call(SphereInnards, side, side, 4, 4, 4, index, depth, tint, 255, 255, rim, ramp, ramp, ramp, dst);
        return dst;
    };
    EXPECT_EQ(through(1, 2, 255, 0)[0], ramp);
    EXPECT_EQ(row_of(through(1.5F, 1, 255, 0)[0], 4, side), (Bytes{39, 37, 38, 41, 44, 47, 50, 51, 49}));
    EXPECT_EQ(row_of(through(1.5F, 4, 255, 0)[2], 4, side), (Bytes{44, 84, 84, 61, 44, 27, 4, 4, 44}));
    const auto tinted = through(1.5F, 1, 127.5F, 0);
    EXPECT_EQ(tinted[0][40], 22);
    EXPECT_EQ(tinted[1][40], 44);
    EXPECT_EQ(tinted[0][0], ramp[0]);
    const Bytes plain = through(1.3F, 2, 255, 0)[0];
    const Bytes bright = through(1.3F, 2, 255, 1)[0];
    for (std::size_t i = 0; i < count; ++i) EXPECT_GE(bright[i], plain[i]);
    EXPECT_GT(bright[4 * side + 1], plain[4 * side + 1]);
}

TEST(Lighting, BubbleShadows) {
    struct Case {
        float opacity, focus;
        Bytes row;
    };
    for (const Case &c : {Case{0.8F, 0, {188, 120, 105, 132, 144, 132, 105, 120, 188}},
                          {0, 0.2F, {200, 200, 200, 212, 240, 212, 200, 200, 200}},
                          {0, 0, Bytes(9, 200)}}) {
        Planes planes = planes_of(count, 200);
        call(xBubbleShadow, side, side, 4, 4, 3, 0.5F, c.opacity, c.focus, planes);
        EXPECT_EQ(row_of(planes[0], 4, side), c.row);
        EXPECT_EQ(planes[0], planes[2]);
        EXPECT_EQ(planes[0][0], 200);
    }
}

// A wall of height 4 in column 5.
template <class Sample> std::vector<Sample> ridge() {
    return plane_of<Sample>([](int32_t x, int32_t) { return x == 5 ? 4 : 0; });
}

TEST(Lighting, OcclusionByTheHorizon) {
    const Floats heights = ridge<float>();
    Floats sum(count);
    xOcclusionAdder(side, side, heights.data(), 0, 4, 4, 1, sum.data());
    EXPECT_EQ(row_of(sum, 4, side), (Floats{0, 0.338719487F, 0.649119258F, 0.859292865F, 0.967724204F, 0, 0, 0, 0}));

    Bytes openness(count);
    xDoOcclusion(side, side, ridge<uint8_t>().data(), 8, 4, 4, 1, openness.data());
    EXPECT_EQ(row_of(openness, 4, side), (Bytes{255, 244, 218, 183, 165, 255, 165, 183, 218}));

    // All directions at once are the sum of the directions.
    for (const int32_t directions : {3, 8, 17, 24}) {
        Floats hills = plane_of<float>([](int32_t x, int32_t y) { return (x * 7 + y * 5) % 11; });
        Floats open(count);
        CPUxDoOcclusion_f(side, side, hills.data(), directions, 5, 6, 0.3F, open.data());
        sum.assign(count, 0);
        for (int32_t i = 0; i < directions; ++i)
            xOcclusionAdder(side, side, hills.data(), 360.0F * static_cast<float>(i) / static_cast<float>(directions),
                            5, 6, 0.3F, sum.data());
        for (std::size_t i = 0; i < count; ++i)
            ASSERT_EQ(open[i], 1 - sum[i] * (1 / static_cast<float>(directions))) << directions;
    }

    Planes planes = {Bytes(2, 200), Bytes(2, 100), Bytes(2, 50)};
    const Floats two = {0, 4};
    call(xOcclusionBlender, 2, 1, two, 8, 1, planes);
    EXPECT_EQ(planes, (Planes{Bytes{200, 100}, {100, 50}, {50, 25}}));
}

TEST(Lighting, ShadowsOfRays) {
    const Floats heights = ridge<float>();
    struct Case {
        float degrees, rise, softness;
        Bytes row;
    };
    for (const Case &c : {Case{0, 1, 0, {255, 255, 0, 0, 0, 255, 255, 255, 255}},
                          {0, 1, 2, {255, 255, 213, 128, 0, 255, 255, 255, 255}},
                          {90, 1, 0, Bytes(9, 255)},
                          {180, 1, 0, {255, 255, 255, 255, 255, 255, 0, 0, 0}}}) {
        Bytes dst(count);
        xDoRaytraceShadow(side, side, heights.data(), c.degrees, c.rise, 8, c.softness, dst.data());
        EXPECT_EQ(row_of(dst, 4, side), c.row) << c.degrees;
    }
}

template <auto Export, class Height> void occlude(Workspace &w) {
    Height *heights;
    if constexpr (std::is_same_v<Height, float>)
        heights = w.floats(w.count(), 0, 90);
    else
        heights = w.buffer();
    call(Export, w.size(), heights, w.integer(1, 9), w.integer(1, 40), w.integer(1, 30), w.real(0, 2),
         w.result<Height>());
}

const BulkCase cases[] = {
    {"x_F_Convolve_Normals",
     [](Workspace &w) {
         call(x_F_Convolve_Normals, w.size(), w.real(-1, 2), w.floats(w.count(), -9, 9),
              w.result<float>(3 * w.count()));
     }},
    {"xNormalMap",
     [](Workspace &w) { call(xNormalMap, w.size(), w.real(-1, 2), w.integer(0, 1), w.buffer(), w.results()); }},
    {"xLighting",
     [](Workspace &w) {
         float *lamps = w.floats(24, 0.5F, 40);
         lamps[17] = w.real(-1, 1);
         const auto src = w.buffers();
         call(xLighting, w.size(), 0.2F, w.real(0, 1), lamps, 2, w.floats(w.count(), -9, 9),
              w.floats(3 * w.count(), -1, 1), src, w.results_of(src));
     },
     true},
    {"CPU_hightmap_r2",
     [](Workspace &w) {
         call(CPU_hightmap_r2, w.size(), w.real(-1, 2), w.real(-1, 1), w.real(-1, 1), w.real(0, 1), 0.1F, w.buffer(),
              w.result());
     }},
    {"CPU_hightmap_r3",
     [](Workspace &w) {
         const auto src = w.buffers();
         call(CPU_hightmap_r3, w.size(), w.real(0, 1), w.real(-1, 1), w.real(-1, 1), w.real(0, 1), 0.1F, 0.8F,
              w.real(1, 40), w.buffer(), src, w.results_of(src));
     },
     true},
    {"CPU_hightmap_r3_float",
     [](Workspace &w) {
         float *src[3] = {w.floats(w.count(), 0, 255), w.floats(w.count(), 0, 255), w.floats(w.count(), 0, 255)};
         call(CPU_hightmap_r3_float, w.size(), w.real(0, 1), w.real(-1, 1), w.real(-1, 1), w.real(0, 1), 0.1F, 0.8F,
              w.real(1, 40), w.floats(w.count(), 0, 255), src, w.result<float>(), w.result<float>(), w.result<float>());
     }},
    {"SphereInnards",
     [](Workspace &w) {
         const auto src = w.buffers();
         const auto dst = w.results();
         for (const float cx : {no_number, static_cast<float>(w.width) / 2})
             call(SphereInnards, w.size(), cx, w.real(0, 9), w.real(1, 90), w.real(1, 2), w.real(1, 4), 200, 255, 255,
                  0.5F, src, dst);
     }},
    {"xBubbleShadow",
     [](Workspace &w) {
         const auto planes = w.buffers();
         for (const float cx : {no_number, w.real(0, 99)})
             call(xBubbleShadow, w.size(), cx, w.real(0, 9), w.real(1, 90), w.real(0, 1), 0.8F, 0.2F, planes);
     }},
};

const BulkCase occlusion_cases[] = {
    {"xOcclusionAdder",
     [](Workspace &w) {
         float *heights = w.floats(w.count(), 0, 90);
         float *sum = w.floats(w.count(), 0, 1);
         for (const float degrees : {w.real(-400, 400), 1e30F, no_number})
             call(xOcclusionAdder, w.size(), heights, degrees, w.integer(1, 40), w.integer(1, 30), w.real(0, 2), sum);
     }},
    {"xOcclusionBlender",
     [](Workspace &w) { call(xOcclusionBlender, w.size(), w.floats(w.count(), 0, 9), 8, w.real(0, 2), w.buffers()); }},
    {"CPUxDoOcclusion_f", occlude<CPUxDoOcclusion_f, float>},
    {"xDoOcclusion", occlude<xDoOcclusion, uint8_t>},
    {"xDoRaytraceShadow",
     [](Workspace &w) {
         float *heights = w.floats(w.count(), 0, 90);
         uint8_t *dst = w.result();
         for (const float degrees : {no_number, w.real(-400, 400)})
             call(xDoRaytraceShadow, w.size(), heights, degrees, w.real(0, 2), w.integer(1, 40), w.real(0, 2), dst);
     }},
};

const BulkFamily occlusion_family("Occlusion", occlusion_cases);
const BulkFamily family("Relief", cases);

} // namespace
