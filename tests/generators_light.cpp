// Fractals and light.
#include <cstdint>
#include <numeric>

#include <gtest/gtest.h>

#include "tavik/generators/generators.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

Bytes identity_table() {
    Bytes table(256);
    std::iota(table.begin(), table.end(), uint8_t{0});
    return table;
}

const Bytes table = identity_table();

TEST(Generators, Mandelbrot) {
    const auto smooth = [](int32_t side, double re, double step, int32_t limit, float colour_step) {
        Bytes dst(static_cast<std::size_t>(side * side));
        Bytes other(dst.size());
        DoMandel(side, side, re, 0, step, limit, colour_step, 0x0000C8, table.data(), table.data(), table.data(),
                 dst.data(), other.data(), other.data());
        return dst;
    };
    EXPECT_EQ(smooth(1, 2, 1, 100, 16), Bytes{58});
    EXPECT_EQ(smooth(1, 2, 1, 4, 16), Bytes{200}); // The escape at the fourth iteration is never tested.
    const Bytes picture = smooth(5, -0.5, 0.5, 100, 10);
    EXPECT_EQ(Bytes(picture.begin(), picture.begin() + 5), (Bytes{47, 52, 63, 200, 51}));
    for (std::ptrdiff_t y = 0; y < 5; ++y)
        for (std::size_t x = 0; x < 5; ++x)
            EXPECT_EQ(picture[static_cast<std::size_t>(5 * y) + x], picture[static_cast<std::size_t>(5 * (4 - y)) + x]);

    const auto banded = [](int32_t side, float re, float step, int32_t limit) {
        Bytes dst(static_cast<std::size_t>(side * side));
        Bytes other(dst.size());
        Bytes blue(dst.size());
        DoFastMandel(side, side, re, 0, step, limit, 0x0A0BC8, table.data(), table.data(), table.data(), dst.data(),
                     other.data(), blue.data());
        EXPECT_EQ(dst[0] == 200, blue[0] == 10);
        return dst;
    };
    EXPECT_EQ(banded(1, 2, 1, 100), Bytes{2});
    EXPECT_EQ(banded(1, 3, 1, 100), Bytes{1});
    EXPECT_EQ(banded(1, 0, 1, 100), Bytes{200});
    const Bytes bands = banded(5, -0.5F, 0.5F, 100);
    EXPECT_EQ(Bytes(bands.begin(), bands.begin() + 5), (Bytes{2, 3, 4, 200, 2}));
}

TEST(Generators, Novas) {
    for (auto *draw : {xNova, p_Nova}) {
        const auto burst = [&](uint8_t ground, float intensity) {
            Planes p = planes_of(81, ground);
            call(draw, 9, 9, 4, 4, 4, 8, 1, 255, 128, 0, intensity, p);
            return p;
        };
        const Planes p = burst(0, 1);
        EXPECT_EQ(Bytes(p[0].begin() + 36, p[0].begin() + 45), (Bytes{0, 0, 5, 54, 255, 69, 8, 1, 0}));
        for (std::size_t i = 0; i < 81; ++i) EXPECT_EQ(p[2][i], i == 40 ? 255 : 0);
        EXPECT_EQ(burst(77, 0), planes_of(81, 77));
        EXPECT_EQ(burst(255, 1), planes_of(81, 255));
    }
}

TEST(Generators, Streaks) {
    for (auto *draw : {xRandomStreaks, p_RandomStreaks}) {
        const auto streaked = [&](float density, float opacity) {
            Planes p = planes_of(32, 0);
            call(draw, 8, 4, 0, 8, 2, density, 1, 255, 255, 255, opacity, p);
            return p;
        };
        const Planes p = streaked(1, 1);
        EXPECT_EQ(Bytes(p[0].begin(), p[0].begin() + 8), Bytes(8, 0));
        EXPECT_EQ(Bytes(p[1].begin() + 8, p[1].begin() + 16), (Bytes{33, 97, 163, 200, 180, 74, 0, 0}));
        EXPECT_EQ(Bytes(p[2].begin() + 16, p[2].begin() + 24), Bytes(8, 0));
        EXPECT_EQ(streaked(0, 1), planes_of(32, 0));
        EXPECT_EQ(streaked(1, 0), planes_of(32, 0));
    }
}

template <auto Export> void nova(Workspace &w) {
    const auto p = w.buffers();
    for (const float cx : {w.real(0, 90), no_number, -1e30F})
        call(Export, w.size(), cx, w.real(0, 9), w.real(1, 99), w.integer(1, 60), 3, 255, 200, 90, w.real(0, 2), p);
}

template <auto Export> void streaks(Workspace &w) {
    const auto p = w.buffers();
    for (const float degrees : {w.real(-400, 400), no_number, 1e30F})
        call(Export, w.size(), degrees, w.real(0, 90), w.real(0, 4), w.real(0, 1), 3, 255, 200, 90, w.real(0, 1), p);
}

const BulkCase cases[] = {
    {"DoMandel",
     [](Workspace &w) {
         uint8_t *t = w.buffer(256);
         for (const double re : {-0.6, static_cast<double>(no_number), 1e300})
             call(DoMandel, w.size(), re, 0.1, 3.0 / w.width, 60, w.real(-9, 30), 77, t, t, t, w.results());
     }},
    {"DoFastMandel",
     [](Workspace &w) {
         uint8_t *t = w.buffer(256);
         for (const float re : {-0.6F, no_number, 1e30F})
             call(DoFastMandel, w.size(), re, 0.1F, 3.0F / static_cast<float>(w.width), 60, 77, t, t, t, w.results());
     }},
    {"xNova", nova<xNova>},
    {"p_Nova", nova<p_Nova>},
    {"xRandomStreaks", streaks<xRandomStreaks>},
    {"p_RandomStreaks", streaks<p_RandomStreaks>},
};

const BulkFamily family("Light", cases);

} // namespace
