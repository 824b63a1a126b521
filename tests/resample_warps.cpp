#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>

#include <gtest/gtest.h>

#include "tavik/resample/resample.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

constexpr int32_t side = 9;

Planes result() { return planes_of(side * side, 7); }
const Planes ramp = ramp_planes(side, side);

Bytes row_of(const Bytes &plane, std::ptrdiff_t y, std::ptrdiff_t width = side) {
    return tavik_test::row_of(plane, y, width);
}

// Calls an export with its six planes last.
template <auto Export> Planes warped(auto... shape) {
    Planes dst = result();
    call(Export, side, side, shape..., ramp, dst);
    return dst;
}

Planes twirled(float radius, float degrees) {
    Planes dst = result();
    call(xRenderTwirlTo, 4, 4, radius, degrees, side, side, dst, ramp);
    return dst;
}

TEST(ResampleWarps, Fisheye) {
    const Planes bulged = warped<xFisheye>(4.0F, 4.0F, 4.0F, 0.5F);
    EXPECT_EQ(row_of(bulged[0], 4), (Bytes{4, 23, 33, 39, 44, 49, 55, 65, 84}));
    EXPECT_EQ(row_of(bulged[2], 0), row_of(ramp[2], 0));
    EXPECT_EQ(row_of(warped<xFisheye>(4.0F, 4.0F, 4.0F, -1.0F)[0], 4), (Bytes{4, 6, 12, 25, 44, 63, 76, 82, 84}));
    EXPECT_EQ(warped<xFisheye>(4.0F, 4.0F, 4.0F, 0.0F), ramp);
    EXPECT_EQ(warped<xFisheye>(no_number, 4.0F, 4.0F, 0.5F), ramp);
}

TEST(ResampleWarps, LensAndItsTwin) {
    const auto row = [](auto... shape) { return row_of(warped<xLensHelper>(4.0F, 4.0F, shape...)[0], 4); };
    EXPECT_EQ(warped<xLensHelper>(4.0F, 4.0F, 0.0F, 0.0F, 1.0F, 0.0F), ramp);
    EXPECT_EQ(row(0.0F, 0.0F, 0.5F, 0.0F), (Bytes{24, 29, 34, 39, 44, 49, 54, 59, 64}));
    EXPECT_EQ(row(0.5F, 0.0F, 1.0F, 0.0F), (Bytes{4, 11, 23, 34, 44, 54, 65, 77, 84}));
    EXPECT_EQ(row(0.0F, 0.0F, 1.0F, 0.25F), (Bytes{4, 7, 19, 32, 44, 57, 69, 82, 84}));
    const Planes fringed = warped<xLensHelper>(4.0F, 4.0F, 0.0F, 0.0F, 1.0F, 0.25F);
    EXPECT_EQ(fringed[1], ramp[1]);
    EXPECT_EQ(row_of(fringed[2], 4), (Bytes{28, 49, 70, 91, 112, 133, 154, 175, 196}));
    EXPECT_EQ(warped<xLensHelper>(3.5F, 5.0F, 0.3F, -0.2F, 0.9F, 0.02F),
              warped<p_LensHelper>(3.5F, 5.0F, 0.3F, -0.2F, 0.9F, 0.02F));
}

TEST(ResampleWarps, Twirl) {
    EXPECT_EQ(row_of(twirled(4, 90)[1], 4), (Bytes{40, 44, 50, 51, 44, 37, 38, 44, 48}));
    EXPECT_EQ(twirled(4, 0), ramp);
    EXPECT_EQ(twirled(no_number, 90), ramp);
}

TEST(ResampleWarps, Polar) {
    const Planes unrolled = warped<xPolarHelper>(4.0F, 3.0F, 4.0F, 1);
    EXPECT_EQ(row_of(unrolled[0], 0), Bytes(side, 43));
    EXPECT_EQ(unrolled[0][6 * side], 40); // three up
    Bytes src(8 * 5);
    for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<uint8_t>(i / 8 * 50);
    Bytes dst(src.size());
    xPolarHelper(8, 5, 3, 2, 4, 0, src.data(), src.data(), src.data(), dst.data(), dst.data(), dst.data());
    EXPECT_EQ(row_of(dst, 2, 8), (Bytes{150, 100, 50, 0, 50, 100, 150, 200}));
    // Spokes: to the right is a quarter turn on, and straight up lies between the last column and the first.
    const Planes bent = warped<xPolarHelper>(4.0F, 4.0F, 4.0F, 0);
    EXPECT_EQ(bent[0][4 * side + 8], 31); // column 2.25 of row 8
    EXPECT_EQ(bent[0][0 * side + 4], 8);
    EXPECT_EQ(bent[0][0 * side + 3], 36); // column 8.65 of row 8, between 88 and 8
}

TEST(ResampleWarps, Globe) {
    const Planes map = ramp_planes(16, 9);
    Planes dst = planes_of(side * side, 200);
    const auto draw = [&](float longitude, float latitude) {
        call(xGlobe, 16, 9, side, side, 4, 4, 3, longitude, latitude, map, dst);
    };
    // The rim mixes with what is there.
    draw(90, 0);
    EXPECT_EQ(row_of(dst[0], 4), (Bytes{200, 102, 25, 35, 44, 53, 63, 142, 200}));
    dst = planes_of(side * side, 200);
    draw(0, 0);
    draw(90, 0);
    EXPECT_EQ(row_of(dst[0], 4), (Bytes{200, 83, 25, 35, 44, 53, 63, 103, 200}));
    EXPECT_EQ(row_of(dst[0], 0), Bytes(side, 200));
    draw(0, 90);
    EXPECT_EQ(dst[1][4 * side + 4], 0); // the pole: row 0
    draw(-22.5F, 0);
    EXPECT_EQ(dst[0][4 * side + 4], 154); // column 15
}

TEST(ResampleWarps, LinearWarp) {
    Floats field;
    for (int i = 0; i < 10 * side; ++i) field.insert(field.end(), {i % 10 == 9 ? 50.0F : 1.0F, -0.5F});
    EXPECT_EQ(warped<xLinearWarp>(0.0F, 10, field.data()), ramp);
    EXPECT_EQ(row_of(warped<xLinearWarp>(2.0F, 10, field.data())[0], 4), (Bytes{23, 33, 43, 53, 63, 73, 83, 83, 83}));
}

TEST(ResampleWarps, Morph) {
    const Planes &from = ramp;
    const Planes to = planes_of(side * side, 88);
    const auto morph = [&](float t, const Floats &field, const Planes &target) {
        Planes dst = result();
        call(xBilinearMorpheHelper, side, side, t, side, field, from, target, dst);
        return dst;
    };
    Floats field(2 * side * side, 0);
    EXPECT_EQ(morph(0.5F, field, to)[0][0], 44);
    for (std::size_t i = 0; i < field.size(); i += 2) field[i] = 2;
    EXPECT_EQ(morph(0, field, to), from);
    EXPECT_EQ(morph(1, field, to), to);
    EXPECT_EQ(row_of(morph(0.25F, field, from)[0], 4), (Bytes{8, 14, 24, 34, 44, 54, 64, 73, 80}));
}

TEST(ResampleWarps, MapsOfPoints) {
    const auto identity = [](int32_t width, int32_t height) {
        Floats map;
        for (int32_t i = 0; i < width * height; ++i)
            map.insert(map.end(), {static_cast<float>(i % width), static_cast<float>(i / width)});
        return map;
    };
    const auto doubled = [](int32_t width, int32_t height, const Floats &map) {
        Floats dst(4 * map.size(), -1);
        Mapxtwo(width, height, map.data(), dst.data());
        return dst;
    };
    EXPECT_EQ(doubled(5, 3, identity(5, 3)), identity(10, 6));
    EXPECT_EQ(doubled(300, 2, identity(300, 2)), identity(600, 4));
    EXPECT_EQ(doubled(1, 3, Floats(6, 5)), Floats(24, 10));
    EXPECT_EQ(doubled(2, 1, {0, 1, 4, 3}), (Floats{0, 2, 4, 4, 8, 6, 12, 8, 0, 2, 4, 4, 8, 6, 12, 8}));
    EXPECT_EQ(doubled(1, 2, {0, 1, 4, 3}), (Floats{0, 2, 0, 2, 4, 4, 4, 4, 8, 6, 8, 6, 12, 8, 12, 8}));

    Planes dst = result();
    const auto copy = [&](const Floats &map, int32_t count) { call(MapCopy, count, 1, map, side, side, ramp, dst); };
    copy(identity(side, side), side * side);
    EXPECT_EQ(dst, ramp);
    copy({-3, 2.4F, 2.5F, 1, no_number, 99}, 3);
    EXPECT_EQ(Bytes(dst[0].begin(), dst[0].begin() + 3), (Bytes{2, 31, 88}));
}

Floats pyramid_of(int32_t width, int32_t height, int32_t levels, Floats pyramid) {
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
    Floats plane(16);
    std::iota(plane.begin(), plane.end(), 0.0F);
    const Floats pyramid = pyramid_of(4, 4, 3, plane);
    EXPECT_EQ(Floats(pyramid.begin() + 16, pyramid.end()), (Floats{3.125F, 4.875F, 10.125F, 11.875F, 7.5F}));
    for (const float value : pyramid_of(7, 5, 4, Floats(35, 0.3F))) EXPECT_EQ(value, 0.3F);

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
                           {no_number, 0, no_number, 7.5F, 7.5F}}) {
        EXPECT_FLOAT_EQ(xEval(p.x, p.y, p.level, 4, 4, 3, pyramid.data()), p.trilinear) << p.x << ' ' << p.level;
        EXPECT_EQ(xFastEval(p.x, p.y, p.level, 4, 4, 3, pyramid.data()), p.nearest) << p.x << ' ' << p.level;
    }

    Floats enlarged(16);
    xrefinementhelper(4, 4, 0, plane.data(), &pyramid[16], &pyramid[16], enlarged.data());
    EXPECT_EQ(Floats(enlarged.begin(), enlarged.begin() + 4), (Floats{3.125F, 3.5625F, 4.4375F, 4.875F}));
    EXPECT_EQ(enlarged[12], 10.125F);
    // In place, and on odd sizes.
    Floats odd(521 * 3);
    for (std::size_t i = 0; i < odd.size(); ++i) odd[i] = static_cast<float>(i * i % 255) / 7;
    const Floats reduced = pyramid_of(521, 3, 2, odd);
    Floats rebuilt = odd;
    xrefinementhelper(521, 3, 1, rebuilt.data(), &reduced[odd.size()], &reduced[odd.size()], rebuilt.data());
    EXPECT_EQ(rebuilt, odd);
}

struct Transformed {
    Planes colour = result();
    Bytes alpha = Bytes(side * side);

    Transformed(const Planes &src, const std::array<float, 6> &m, int32_t background, int32_t samples) {
        const std::array<float, 16> matrix = {m[0],      m[1],      no_number, no_number, m[2],      m[3],
                                              no_number, no_number, no_number, no_number, no_number, no_number,
                                              m[4],      m[5],      no_number, no_number};
        call(GoodTransform2, src, colour, alpha, side, side, side, side, matrix.data(), background, samples);
    }
};

TEST(ResampleWarps, SoftTransform) {
    const Transformed copied(ramp, {1, 0, 0, 1, 0, 0}, 0, -5);
    EXPECT_EQ(copied.colour, ramp);
    EXPECT_EQ(copied.alpha, Bytes(side * side, 255));

    const Transformed moved(ramp, {1, 0, 0, 1, 4.5F, 0}, 0x0000C8, 2);
    EXPECT_EQ(row_of(moved.alpha, 0), (Bytes{255, 255, 255, 255, 128, 0, 0, 0, 0}));
    EXPECT_EQ(row_of(moved.colour[0], 0), (Bytes{45, 55, 65, 76, 140, 200, 200, 200, 200}));
    EXPECT_EQ(moved.colour[1][8], 0);

    Planes step = planes_of(side * side);
    for (std::size_t i = 0; i < step[0].size(); ++i)
        if (i % side >= 4) step[0][i] = step[1][i] = 200;
    const Bytes stepped = row_of(Transformed(step, {1, 0, 0, 1, 0.5F, 0}, 0, 1).colour[0], 4);
    EXPECT_EQ(stepped[3], 100);
    EXPECT_EQ(stepped[4], 213);
    // A quarter turn by the matrix's columns, and a reduction by three.
    EXPECT_EQ(Transformed(ramp, {0, 1, 1, 0, 0, 0}, 0, 1).colour[0], ramp[1]);
    const Transformed smaller(ramp, {3, 0, 0, 3, 1, 1}, 0, 3);
    EXPECT_EQ(row_of(smaller.colour[0], 1), (Bytes{14, 44, 74, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(smaller.alpha[2 * side + 2], 255);
}

TEST(ResampleWarps, SheetInSpace) {
    const auto turned = [&](float x, float y, float z, float distance, int32_t background) {
        Planes dst = result();
        call(Fast_ThreeDeePerspective, ramp, dst, side, side, x, y, z, distance, background);
        return dst;
    };
    EXPECT_EQ(turned(0, 0, 0, 10, 0), ramp);
    EXPECT_EQ(row_of(turned(0, 0, 90, 10, 0)[0], 0), (Bytes{8, 7, 6, 5, 4, 3, 2, 1, 0}));
    EXPECT_EQ(row_of(turned(0, 0, 90, 10, 0)[1], 0), (Bytes{80, 70, 60, 50, 40, 30, 20, 10, 0}));
    EXPECT_EQ(row_of(turned(0, 180, 0, 10, 0)[0], 0), (Bytes{80, 70, 60, 50, 40, 30, 20, 10, 0}));
    const Planes edge_on = turned(90, 0, 0, 10, 0x030201);
    EXPECT_EQ(edge_on[0], Bytes(side * side, 1));
    EXPECT_EQ(edge_on[2], Bytes(side * side, 3));
    EXPECT_EQ(row_of(turned(0, 60, 0, 10, 255)[0], 4), (Bytes{255, 255, 255, 24, 44, 64, 74, 84, 255}));
}

// Floats of which every seventh leads far away.
float *points(Workspace &w, std::size_t count, float reach) {
    float *values = w.floats(2 * count, -reach, reach);
    for (std::size_t i = 5; i < 2 * count; i += 7) values[i] = w.far_or_none();
    return values;
}

struct SixPlanes {
    std::array<uint8_t *, 3> src, dst;

    explicit SixPlanes(Workspace &w) : SixPlanes(w, w.count()) {}
    SixPlanes(Workspace &w, std::size_t src_count) : src(w.buffers(src_count)), dst(w.buffers()) {}
};

// Calls by(settings) with the settings as they are, and with a hostile number in place of each.
template <std::size_t n, class Call> void with_hostile(Workspace &w, std::array<float, n> settings, const Call &by) {
    call(by, settings);
    for (float &setting : settings) {
        const float kept = setting;
        setting = w.far_or_none();
        call(by, settings);
        setting = kept;
    }
}

template <auto Export, std::size_t n> void warp(Workspace &w, const std::array<float, n> &settings, auto... shape) {
    const SixPlanes p(w);
    with_hostile(w, settings,
                 [&](auto... floats) { call(Export, w.width, w.height, floats..., shape..., p.src, p.dst); });
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
                 call(xGlobe, map_width, map_height, w.size(), floats..., p.src, p.dst);
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
         with_hostile(w, shaped(w, reach(w), w.real(-900, 900)),
                      [&](auto... floats) { call(xRenderTwirlTo, floats..., w.width, w.height, p.dst, p.src); });
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
         const uint8_t *to = w.buffer();
         const float *field = points(w, w.count(), 20);
         with_hostile(w, std::array{0.3F}, [&](float t) {
             call(xBilinearMorpheHelper, w.size(), t, w.width, field, p.src, to, to, p.src[0], p.dst);
         });
     }},
    {"Mapxtwo",
     [](Workspace &w) {
         Mapxtwo(w.width, 2, w.floats(std::size_t(4 * w.width), -9, 9), w.result<float>(std::size_t(16 * w.width)));
     }},
    {"MapCopy",
     [](Workspace &w) {
         const SixPlanes p(w, 7 * 5);
         call(MapCopy, w.size(), points(w, w.count(), 9), 7, 5, p.src, p.dst);
     }},
    {"xHalfSizeBuf",
     [](Workspace &w) {
         const int32_t reduced = (w.width + 1) / 2 * ((w.height + 1) / 2);
         call(xHalfSizeBuf, w.size(), w.floats(w.count(), -9, 9), w.result<float>(std::size_t(reduced)));
     }},
    {"xEval", evaluate<xEval>},
    {"xFastEval", evaluate<xFastEval>},
    {"xrefinementhelper",
     [](Workspace &w) {
         const std::size_t coarse = static_cast<std::size_t>((w.width + 1) / 2 * ((w.height + 1) / 2));
         call(xrefinementhelper, w.size(), w.real(-2, 3), w.floats(w.count(), -9, 9), w.floats(coarse, -9, 9),
              w.floats(coarse, -9, 9), w.result<float>());
     }},
    {"GoodTransform2",
     [](Workspace &w) {
         for (const int32_t columns : {1, 3, 4, 61}) {
             const int32_t rows = columns / 2 + 1;
             const SixPlanes p(w, static_cast<std::size_t>(columns * rows));
             uint8_t *alpha = w.result();
             with_hostile(w, std::array{w.real(0.1F, 0.9F), -0.3F, 0.4F, 0.8F, -2.0F, 1.5F}, [&](auto... m) {
                 const std::array<float, 6> part = {m...};
                 const std::array<float, 16> matrix = {part[0], part[1], 0, 0, part[2], part[3], 0, 0,
                                                       0,       0,       0, 0, part[4], part[5], 0, 0};
                 call(GoodTransform2, p.src, p.dst, alpha, columns, rows, w.size(), matrix.data(),
                      w.integer(0, 0xFFFFFF), w.integer(1, 2));
             });
         }
     }},
    {"Fast_ThreeDeePerspective",
     [](Workspace &w) {
         const SixPlanes p(w);
         with_hostile(w, std::array{35.0F, w.real(-90, 90), 10.0F, reach(w)}, [&](auto... floats) {
             call(Fast_ThreeDeePerspective, p.src, p.dst, w.size(), floats..., w.integer(0, 0xFFFFFF));
         });
     }},
};

const BulkFamily family("ResampleWarps", cases);

} // namespace
