#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <numeric>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "tavik/resample/resample.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

using Bytes = std::vector<uint8_t>;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr int32_t side = 9;

struct Planes {
    Bytes r, g, b;

    explicit Planes(std::size_t count = side * side, uint8_t value = 7) : r(count, value), g(r), b(r) {}
    bool operator==(const Planes &) const = default;
};

// 10x + y, 10y + x and 7xy.
Planes ramp(int32_t width = side, int32_t height = side) {
    Planes planes(0);
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            planes.r.push_back(static_cast<uint8_t>(10 * x + y));
            planes.g.push_back(static_cast<uint8_t>(10 * y + x));
            planes.b.push_back(static_cast<uint8_t>(7 * x * y));
        }
    }
    return planes;
}

Bytes row_of(const Bytes &plane, std::ptrdiff_t y, std::ptrdiff_t width = side) {
    return {plane.begin() + y * width, plane.begin() + (y + 1) * width};
}

// Calls an export with its six planes last.
template <auto Export> Planes warped(auto... shape) {
    const Planes src = ramp();
    Planes dst;
    Export(side, side, shape..., src.r.data(), src.g.data(), src.b.data(), dst.r.data(), dst.g.data(), dst.b.data());
    return dst;
}

Planes twirled(float radius, float degrees) {
    const Planes src = ramp();
    Planes dst;
    xRenderTwirlTo(4, 4, radius, degrees, side, side, dst.r.data(), dst.g.data(), dst.b.data(), src.r.data(),
                   src.g.data(), src.b.data());
    return dst;
}

TEST(ResampleWarps, Fisheye) {
    const Planes bulged = warped<xFisheye>(4.0F, 4.0F, 4.0F, 0.5F);
    EXPECT_EQ(row_of(bulged.r, 4), (Bytes{4, 23, 33, 39, 44, 49, 55, 65, 84}));
    EXPECT_EQ(row_of(bulged.b, 0), row_of(ramp().b, 0));
    EXPECT_EQ(row_of(warped<xFisheye>(4.0F, 4.0F, 4.0F, -1.0F).r, 4), (Bytes{4, 6, 12, 25, 44, 63, 76, 82, 84}));
    EXPECT_EQ(warped<xFisheye>(4.0F, 4.0F, 4.0F, 0.0F), ramp());
    EXPECT_EQ(warped<xFisheye>(nan, 4.0F, 4.0F, 0.5F), ramp());
}

TEST(ResampleWarps, LensAndItsTwin) {
    const auto row = [](auto... shape) { return row_of(warped<xLensHelper>(4.0F, 4.0F, shape...).r, 4); };
    EXPECT_EQ(warped<xLensHelper>(4.0F, 4.0F, 0.0F, 0.0F, 1.0F, 0.0F), ramp());
    EXPECT_EQ(row(0.0F, 0.0F, 0.5F, 0.0F), (Bytes{24, 29, 34, 39, 44, 49, 54, 59, 64}));
    EXPECT_EQ(row(0.5F, 0.0F, 1.0F, 0.0F), (Bytes{4, 11, 23, 34, 44, 54, 65, 77, 84}));
    EXPECT_EQ(row(0.0F, 0.0F, 1.0F, 0.25F), (Bytes{4, 7, 19, 32, 44, 57, 69, 82, 84}));
    const Planes fringed = warped<xLensHelper>(4.0F, 4.0F, 0.0F, 0.0F, 1.0F, 0.25F);
    EXPECT_EQ(fringed.g, ramp().g);
    EXPECT_EQ(row_of(fringed.b, 4), (Bytes{28, 49, 70, 91, 112, 133, 154, 175, 196}));
    EXPECT_EQ(warped<xLensHelper>(3.5F, 5.0F, 0.3F, -0.2F, 0.9F, 0.02F),
              warped<p_LensHelper>(3.5F, 5.0F, 0.3F, -0.2F, 0.9F, 0.02F));
}

TEST(ResampleWarps, Twirl) {
    EXPECT_EQ(row_of(twirled(4, 90).g, 4), (Bytes{40, 44, 50, 51, 44, 37, 38, 44, 48}));
    EXPECT_EQ(twirled(4, 0), ramp());
    EXPECT_EQ(twirled(nan, 90), ramp());
}

TEST(ResampleWarps, Polar) {
    const Planes unrolled = warped<xPolarHelper>(4.0F, 3.0F, 4.0F, 1);
    EXPECT_EQ(row_of(unrolled.r, 0), Bytes(side, 43));
    EXPECT_EQ(unrolled.r[6 * side], 40); // three up
    Bytes src(8 * 5);
    for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<uint8_t>(i / 8 * 50);
    Bytes dst(src.size());
    xPolarHelper(8, 5, 3, 2, 4, 0, src.data(), src.data(), src.data(), dst.data(), dst.data(), dst.data());
    EXPECT_EQ(row_of(dst, 2, 8), (Bytes{150, 100, 50, 0, 50, 100, 150, 200}));
    // Spokes: to the right is a quarter turn on, and straight up lies between the last column and the first.
    const Planes bent = warped<xPolarHelper>(4.0F, 4.0F, 4.0F, 0);
    EXPECT_EQ(bent.r[4 * side + 8], 31); // column 2.25 of row 8
    EXPECT_EQ(bent.r[0 * side + 4], 8);
    EXPECT_EQ(bent.r[0 * side + 3], 36); // column 8.65 of row 8, between 88 and 8
}

TEST(ResampleWarps, Globe) {
    const Planes map = ramp(16, 9);
    Planes dst(side * side, 200);
    const auto draw = [&](float longitude, float latitude) {
        xGlobe(16, 9, side, side, 4, 4, 3, longitude, latitude, map.r.data(), map.g.data(), map.b.data(), dst.r.data(),
               dst.g.data(), dst.b.data());
    };
    // The rim mixes with what is there.
    draw(90, 0);
    EXPECT_EQ(row_of(dst.r, 4), (Bytes{200, 102, 25, 35, 44, 53, 63, 142, 200}));
    dst = Planes(side * side, 200);
    draw(0, 0);
    draw(90, 0);
    EXPECT_EQ(row_of(dst.r, 4), (Bytes{200, 83, 25, 35, 44, 53, 63, 103, 200}));
    EXPECT_EQ(row_of(dst.r, 0), Bytes(side, 200));
    draw(0, 90);
    EXPECT_EQ(dst.g[4 * side + 4], 0); // the pole: row 0
    draw(-22.5F, 0);
    EXPECT_EQ(dst.r[4 * side + 4], 154); // column 15
}

TEST(ResampleWarps, LinearWarp) {
    std::vector<float> field;
    for (int i = 0; i < 10 * side; ++i) field.insert(field.end(), {i % 10 == 9 ? 50.0F : 1.0F, -0.5F});
    EXPECT_EQ(warped<xLinearWarp>(0.0F, 10, field.data()), ramp());
    EXPECT_EQ(row_of(warped<xLinearWarp>(2.0F, 10, field.data()).r, 4), (Bytes{23, 33, 43, 53, 63, 73, 83, 83, 83}));
}

TEST(ResampleWarps, Morph) {
    const Planes from = ramp();
    const Planes to(side * side, 88);
    const auto morph = [&](float t, const std::vector<float> &field, const Planes &target) {
        Planes dst;
        xBilinearMorpheHelper(side, side, t, side, field.data(), from.r.data(), from.g.data(), from.b.data(),
                              target.r.data(), target.g.data(), target.b.data(), dst.r.data(), dst.g.data(),
                              dst.b.data());
        return dst;
    };
    std::vector<float> field(2 * side * side, 0);
    EXPECT_EQ(morph(0.5F, field, to).r[0], 44);
    for (std::size_t i = 0; i < field.size(); i += 2) field[i] = 2;
    EXPECT_EQ(morph(0, field, to), from);
    EXPECT_EQ(morph(1, field, to), to);
    EXPECT_EQ(row_of(morph(0.25F, field, from).r, 4), (Bytes{8, 14, 24, 34, 44, 54, 64, 73, 80}));
}

TEST(ResampleWarps, MapsOfPoints) {
    const auto identity = [](int32_t width, int32_t height) {
        std::vector<float> map;
        for (int32_t i = 0; i < width * height; ++i)
            map.insert(map.end(), {static_cast<float>(i % width), static_cast<float>(i / width)});
        return map;
    };
    const auto doubled = [](int32_t width, int32_t height, const std::vector<float> &map) {
        std::vector<float> dst(4 * map.size(), -1);
        Mapxtwo(width, height, map.data(), dst.data());
        return dst;
    };
    EXPECT_EQ(doubled(5, 3, identity(5, 3)), identity(10, 6));
    EXPECT_EQ(doubled(300, 2, identity(300, 2)), identity(600, 4));
    EXPECT_EQ(doubled(1, 3, std::vector<float>(6, 5)), std::vector<float>(24, 10));
    EXPECT_EQ(doubled(2, 1, {0, 1, 4, 3}), (std::vector<float>{0, 2, 4, 4, 8, 6, 12, 8, 0, 2, 4, 4, 8, 6, 12, 8}));
    EXPECT_EQ(doubled(1, 2, {0, 1, 4, 3}), (std::vector<float>{0, 2, 0, 2, 4, 4, 4, 4, 8, 6, 8, 6, 12, 8, 12, 8}));

    const Planes src = ramp();
    Planes dst;
    const auto copy = [&](const std::vector<float> &map, int32_t count) {
        MapCopy(count, 1, map.data(), side, side, src.r.data(), src.g.data(), src.b.data(), dst.r.data(), dst.g.data(),
                dst.b.data());
    };
    copy(identity(side, side), side * side);
    EXPECT_EQ(dst, src);
    copy({-3, 2.4F, 2.5F, 1, nan, 99}, 3);
    EXPECT_EQ(Bytes(dst.r.begin(), dst.r.begin() + 3), (Bytes{2, 31, 88}));
}

std::vector<float> pyramid_of(int32_t width, int32_t height, int32_t levels, std::vector<float> pyramid) {
    for (std::size_t start = 0; --levels > 0;) {
        const std::size_t end = pyramid.size();
        pyramid.resize(end + static_cast<std::size_t>((width + 1) / 2 * ((height + 1) / 2)));
        xHalfSizeBuf(width, height, &pyramid[start], &pyramid[end]);
        width = (width + 1) / 2;
        height = (height + 1) / 2;
        start = end;
    }
    return pyramid;
}

TEST(ResampleWarps, Pyramid) {
    std::vector<float> plane(16);
    std::iota(plane.begin(), plane.end(), 0.0F);
    const std::vector<float> pyramid = pyramid_of(4, 4, 3, plane);
    EXPECT_EQ(std::vector<float>(pyramid.begin() + 16, pyramid.end()),
              (std::vector<float>{3.125F, 4.875F, 10.125F, 11.875F, 7.5F}));
    for (const float value : pyramid_of(7, 5, 4, std::vector<float>(35, 0.3F))) EXPECT_EQ(value, 0.3F);

    struct Place {
        float x, y, level, trilinear, nearest;
    };
    for (const Place &p : {Place{1, 2, 0, 9, 9},
                           {1.5F, 1.5F, 0, 7.5F, 10},
                           {1.5F, 1.5F, 2, 7.5F, 7.5F},
                           {-9, -9, 0, 0, 0},
                           {1, 2, 0.4F, 8.925F, 9},
                           {3, 3, 1, 11.875F, 11.875F},
                           {3, 3, 9, 7.5F, 7.5F},
                           {nan, 0, nan, 7.5F, 7.5F}}) {
        EXPECT_FLOAT_EQ(xEval(p.x, p.y, p.level, 4, 4, 3, pyramid.data()), p.trilinear) << p.x << ' ' << p.level;
        EXPECT_EQ(xFastEval(p.x, p.y, p.level, 4, 4, 3, pyramid.data()), p.nearest) << p.x << ' ' << p.level;
    }

    std::vector<float> enlarged(16);
    xrefinementhelper(4, 4, 0, plane.data(), &pyramid[16], &pyramid[16], enlarged.data());
    EXPECT_EQ(std::vector<float>(enlarged.begin(), enlarged.begin() + 4),
              (std::vector<float>{3.125F, 3.5625F, 4.4375F, 4.875F}));
    EXPECT_EQ(enlarged[12], 10.125F);
    // In place, and on odd sizes.
    std::vector<float> odd(521 * 3);
    for (std::size_t i = 0; i < odd.size(); ++i) odd[i] = static_cast<float>(i * i % 255) / 7;
    const std::vector<float> reduced = pyramid_of(521, 3, 2, odd);
    std::vector<float> rebuilt = odd;
    xrefinementhelper(521, 3, 1, rebuilt.data(), &reduced[odd.size()], &reduced[odd.size()], rebuilt.data());
    EXPECT_EQ(rebuilt, odd);
}

struct Transformed {
    Planes colour;
    Bytes alpha = Bytes(side * side);

    Transformed(const Planes &src, const std::array<float, 6> &m, int32_t background, int32_t samples) {
        const std::array<float, 16> matrix = {m[0], m[1], nan, nan, m[2], m[3], nan, nan,
                                              nan,  nan,  nan, nan, m[4], m[5], nan, nan};
        GoodTransform2(src.r.data(), src.g.data(), src.b.data(), colour.r.data(), colour.g.data(), colour.b.data(),
                       alpha.data(), side, side, side, side, matrix.data(), background, samples);
    }
};

TEST(ResampleWarps, SoftTransform) {
    const Transformed copied(ramp(), {1, 0, 0, 1, 0, 0}, 0, -5);
    EXPECT_EQ(copied.colour, ramp());
    EXPECT_EQ(copied.alpha, Bytes(side * side, 255));

    const Transformed moved(ramp(), {1, 0, 0, 1, 4.5F, 0}, 0x0000C8, 2);
    EXPECT_EQ(row_of(moved.alpha, 0), (Bytes{255, 255, 255, 255, 128, 0, 0, 0, 0}));
    EXPECT_EQ(row_of(moved.colour.r, 0), (Bytes{45, 55, 65, 76, 140, 200, 200, 200, 200}));
    EXPECT_EQ(moved.colour.g[8], 0);

    Planes step(side * side, 0);
    for (std::size_t i = 0; i < step.r.size(); ++i)
        if (i % side >= 4) step.r[i] = step.g[i] = 200;
    const Bytes stepped = row_of(Transformed(step, {1, 0, 0, 1, 0.5F, 0}, 0, 1).colour.r, 4);
    EXPECT_EQ(stepped[3], 100);
    EXPECT_EQ(stepped[4], 213);
    // A quarter turn by the matrix's columns, and a reduction by three.
    EXPECT_EQ(Transformed(ramp(), {0, 1, 1, 0, 0, 0}, 0, 1).colour.r, ramp().g);
    const Transformed smaller(ramp(), {3, 0, 0, 3, 1, 1}, 0, 3);
    EXPECT_EQ(row_of(smaller.colour.r, 1), (Bytes{14, 44, 74, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(smaller.alpha[2 * side + 2], 255);
}

TEST(ResampleWarps, SheetInSpace) {
    const Planes src = ramp();
    const auto turned = [&](float x, float y, float z, float distance, int32_t background) {
        Planes dst;
        Fast_ThreeDeePerspective(src.r.data(), src.g.data(), src.b.data(), dst.r.data(), dst.g.data(), dst.b.data(),
                                 side, side, x, y, z, distance, background);
        return dst;
    };
    EXPECT_EQ(turned(0, 0, 0, 10, 0), src);
    EXPECT_EQ(row_of(turned(0, 0, 90, 10, 0).r, 0), (Bytes{8, 7, 6, 5, 4, 3, 2, 1, 0}));
    EXPECT_EQ(row_of(turned(0, 0, 90, 10, 0).g, 0), (Bytes{80, 70, 60, 50, 40, 30, 20, 10, 0}));
    EXPECT_EQ(row_of(turned(0, 180, 0, 10, 0).r, 0), (Bytes{80, 70, 60, 50, 40, 30, 20, 10, 0}));
    const Planes edge_on = turned(90, 0, 0, 10, 0x030201);
    EXPECT_EQ(edge_on.r, Bytes(side * side, 1));
    EXPECT_EQ(edge_on.b, Bytes(side * side, 3));
    EXPECT_EQ(row_of(turned(0, 60, 0, 10, 255).r, 4), (Bytes{255, 255, 255, 24, 44, 64, 74, 84, 255}));
}

constexpr std::array<float, 6> hostile = {25, 1e30F, -1e30F, infinity, -infinity, nan};

float hostile_float(Workspace &w) { return hostile[static_cast<std::size_t>(w.integer(0, 5))]; }

// Floats of which every seventh leads far away.
float *points(Workspace &w, std::size_t count, float reach) {
    float *values = w.floats(2 * count, -reach, reach);
    for (std::size_t i = 5; i < 2 * count; i += 7) values[i] = hostile_float(w);
    return values;
}

struct SixPlanes {
    uint8_t *src[3];
    uint8_t *dst[3];

    explicit SixPlanes(Workspace &w) : SixPlanes(w, w.count()) {}
    SixPlanes(Workspace &w, std::size_t src_count)
        : src{w.buffer(src_count), w.buffer(src_count), w.buffer(src_count)},
          dst{w.buffer(w.count()), w.buffer(w.count()), w.buffer(w.count())} {}
};

// Calls call(settings) with the settings as they are, and with a hostile number in place of each.
template <std::size_t n, class Call> void with_hostile(Workspace &w, std::array<float, n> settings, const Call &call) {
    std::apply(call, settings);
    for (float &setting : settings) {
        const float kept = setting;
        setting = hostile_float(w);
        std::apply(call, settings);
        setting = kept;
    }
}

template <auto Export, std::size_t n> void warp(Workspace &w, const std::array<float, n> &settings, auto... shape) {
    const SixPlanes p(w);
    with_hostile(w, settings, [&](auto... floats) {
        Export(w.width, w.height, floats..., shape..., p.src[0], p.src[1], p.src[2], p.dst[0], p.dst[1], p.dst[2]);
    });
}

// About the middle, the centre and the radius of a warp that reaches most pixels.
template <class... Rest> auto shaped(const Workspace &w, Rest... rest) {
    const auto width = static_cast<float>(w.width);
    const auto height = static_cast<float>(w.height);
    return std::array{0.45F * width, 0.6F * height, rest...};
}
float reach(const Workspace &w) { return 0.4F * static_cast<float>(w.width + w.height); }

template <auto Export> void lens(Workspace &w) { warp<Export>(w, shaped(w, 0.35F, 0.1F, 0.85F, 0.015F)); }

template <auto Export> void evaluate(Workspace &w) {
    if (w.count() == 0) return; // There is nothing to sample.
    const std::size_t coarse = static_cast<std::size_t>((w.width + 1) / 2 * ((w.height + 1) / 2));
    const float *pyramid = w.floats(w.count() + coarse, -9, 9);
    auto *results = w.result<float>(4);
    with_hostile(w, std::array{w.real(-9, 99), w.real(-9, 99), w.real(0, 1)},
                 [&](auto... place) { *results++ = Export(place..., w.width, w.height, 2, pyramid); });
}

const BulkCase cases[] = {
    {"xFisheye", [](Workspace &w) { warp<xFisheye>(w, shaped(w, reach(w), w.real(-2, 0.9F))); }},
    {"xGlobe",
     [](Workspace &w) {
         for (const int32_t map_width : {1, 3, 40}) {
             const int32_t map_height = map_width / 2 + 1;
             const SixPlanes p(w, static_cast<std::size_t>(map_width * map_height));
             with_hostile(w, shaped(w, reach(w), w.real(-400, 400), w.real(-90, 90)), [&](auto... floats) {
                 xGlobe(map_width, map_height, w.width, w.height, floats..., p.src[0], p.src[1], p.src[2], p.dst[0],
                        p.dst[1], p.dst[2]);
             });
         }
     }},
    {"xPolarHelper",
     [](Workspace &w) {
         warp<xPolarHelper>(w, shaped(w, reach(w)), 0);
         warp<xPolarHelper>(w, shaped(w, reach(w)), 1);
     }},
    {"xLensHelper", lens<xLensHelper>},
    {"p_LensHelper", lens<p_LensHelper>},
    {"xRenderTwirlTo",
     [](Workspace &w) {
         const SixPlanes p(w);
         with_hostile(w, shaped(w, reach(w), w.real(-900, 900)), [&](auto... floats) {
             xRenderTwirlTo(floats..., w.width, w.height, p.dst[0], p.dst[1], p.dst[2], p.src[0], p.src[1], p.src[2]);
         });
     }},
    {"xLinearWarp",
     [](Workspace &w) {
         // Only the rest of the last row is not there.
         const int32_t stride = w.width + 3;
         const auto vectors = static_cast<std::size_t>(std::max(stride * w.height, 3) - 3);
         warp<xLinearWarp>(w, std::array{1.5F}, stride, points(w, vectors, 20));
     }},
    {"xBilinearMorpheHelper",
     [](Workspace &w) {
         const SixPlanes p(w);
         const uint8_t *to = w.buffer(w.count());
         const float *field = points(w, w.count(), 20);
         with_hostile(w, std::array{0.3F}, [&](float t) {
             xBilinearMorpheHelper(w.width, w.height, t, w.width, field, p.src[0], p.src[1], p.src[2], to, to, p.src[0],
                                   p.dst[0], p.dst[1], p.dst[2]);
         });
     }},
    {"Mapxtwo",
     [](Workspace &w) {
         Mapxtwo(w.width, 2, w.floats(std::size_t(4 * w.width), -9, 9), w.result<float>(std::size_t(16 * w.width)));
     }},
    {"MapCopy",
     [](Workspace &w) {
         const SixPlanes p(w, 7 * 5);
         MapCopy(w.width, w.height, points(w, w.count(), 9), 7, 5, p.src[0], p.src[1], p.src[2], p.dst[0], p.dst[1],
                 p.dst[2]);
     }},
    {"xHalfSizeBuf",
     [](Workspace &w) {
         const int32_t reduced = (w.width + 1) / 2 * ((w.height + 1) / 2);
         xHalfSizeBuf(w.width, w.height, w.floats(w.count(), -9, 9), w.result<float>(std::size_t(reduced)));
     }},
    {"xEval", evaluate<xEval>},
    {"xFastEval", evaluate<xFastEval>},
    {"xrefinementhelper",
     [](Workspace &w) {
         const std::size_t coarse = static_cast<std::size_t>((w.width + 1) / 2 * ((w.height + 1) / 2));
         xrefinementhelper(w.width, w.height, w.real(-2, 3), w.floats(w.count(), -9, 9), w.floats(coarse, -9, 9),
                           w.floats(coarse, -9, 9), w.result<float>(w.count()));
     }},
    {"GoodTransform2",
     [](Workspace &w) {
         for (const int32_t columns : {1, 3, 4, 61}) {
             const int32_t rows = columns / 2 + 1;
             const SixPlanes p(w, static_cast<std::size_t>(columns * rows));
             uint8_t *alpha = w.result(w.count());
             with_hostile(w, std::array{w.real(0.1F, 0.9F), -0.3F, 0.4F, 0.8F, -2.0F, 1.5F}, [&](auto... m) {
                 const std::array<float, 6> part = {m...};
                 const std::array<float, 16> matrix = {part[0], part[1], 0, 0, part[2], part[3], 0, 0,
                                                       0,       0,       0, 0, part[4], part[5], 0, 0};
                 GoodTransform2(p.src[0], p.src[1], p.src[2], p.dst[0], p.dst[1], p.dst[2], alpha, columns, rows,
                                w.width, w.height, matrix.data(), w.integer(0, 0xFFFFFF), w.integer(1, 2));
             });
         }
     }},
    {"Fast_ThreeDeePerspective",
     [](Workspace &w) {
         const SixPlanes p(w);
         with_hostile(w, std::array{35.0F, w.real(-90, 90), 10.0F, reach(w)}, [&](auto... floats) {
             Fast_ThreeDeePerspective(p.src[0], p.src[1], p.src[2], p.dst[0], p.dst[1], p.dst[2], w.width, w.height,
                                      floats..., w.integer(0, 0xFFFFFF));
         });
     }},
};

const BulkFamily family("ResampleWarps", cases);

} // namespace
