#include "tavik/generators/generators.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

constexpr int32_t width = 77;
constexpr int32_t rows = 9;
constexpr std::size_t pixels = std::size_t{width} * rows;

uint8_t noise(uint32_t i, uint32_t salt) { return static_cast<uint8_t>((i + salt * 1000) * 2654435761U >> 24); }

Bytes noise_plane(std::size_t count, uint32_t salt) {
    Bytes plane(count);
    for (uint32_t i = 0; i < count; ++i) plane[i] = noise(i, salt);
    return plane;
}

// Source planes 1 .. 3, colour tables 4 .. 6, alpha 7, blend 8; the destination starts as 99.
struct Scene {
    Planes src = {noise_plane(pixels, 1), noise_plane(pixels, 2), noise_plane(pixels, 3)};
    Planes dst = planes_of(pixels, 99);
    Planes tables = {noise_plane(256, 4), noise_plane(256, 5), noise_plane(256, 6)};
    Bytes alpha = noise_plane(256, 7);
    Bytes blend = noise_plane(65536, 8);

    // The expected folds come from the formulas in exact arithmetic, rounded after each operation.
    uint32_t fold() const { return folded(dst); }
    // Calls gradient(sources, destinations, tables, blend table).
    template <class Gradient> void fill(const Gradient &gradient) { call(gradient, src, dst, tables, alpha, blend); }
    void linear(float step_y, float step_x, float start, int32_t use_blend, int32_t use_alpha) {
        fill([&](auto... rest) {
            fastLinearGradient(step_y, step_x, start, width - 1, rows, use_blend, use_alpha, rest..., 0);
        });
    }
    void circular(int32_t cx, int32_t cy, int32_t radius, int32_t use_blend) {
        fill([&](auto... rest) { fastCircularGradient(width - 1, rows, cx, cy, radius, use_blend, rest...); });
    }
};

TEST(Gradients, LinearBlendsAndMixes) {
    struct Case {
        int32_t use_blend, use_alpha;
        uint32_t expected;
    };
    for (const Case &c : {Case{0, 0, 0xE4BC7A96U},
                          {1, 0, 0xE3386A33U},
                          {0, 1, 0x088C83B2U},
                          {1, 1, 0x7FC9817BU},
                          {-1, 2, 0xE4BC7A96U}}) {
        Scene scene;
        scene.linear(-7.3F, -1.7F, 30.1F, c.use_blend, c.use_alpha);
        EXPECT_EQ(scene.fold(), c.expected) << c.use_blend << ' ' << c.use_alpha;
    }
}

TEST(Gradients, LinearTakesTheNegatedPositionClamped) {
    // Beyond the integers all is the first colour, by the conversion's lowest number.
    for (const auto &[start, index] : {std::pair{-10.0F, 10},
                                       {-10.99F, 10},
                                       {10.0F, 0},
                                       {-255.5F, 255},
                                       {-999.0F, 255},
                                       {-3e9F, 0},
                                       {infinity, 0}}) {
        Scene scene;
        scene.linear(0, 0, start, 0, 0);
        for (std::size_t i = 0; i < pixels; ++i)
            ASSERT_EQ(scene.dst[1][i], i % width == width - 1 ? 99 : scene.tables[1][static_cast<std::size_t>(index)])
                << start << ": " << i;
    }
}

TEST(Gradients, CircularSkipsWhatIsInvisible) {
    struct Case {
        int32_t cx, cy, radius, use_blend;
        uint32_t expected;
    };
    for (const Case &c : {Case{20, 4, 30, 0, 0xB08DDD73U},
                          {20, 4, 30, 1, 0x44A9A793U},
                          {-5, 12, 90, 0, 0x24F71FC9U},
                          {30, 3, -40, 1, 0x9F6F6F5AU}}) {
        Scene scene;
        for (std::size_t i = 0; i < 256; ++i)
            if (scene.alpha[i] % 5 == 0)
                scene.alpha[i] = std::array<uint8_t, 5>{0, 1, 2, 254, 255}[scene.alpha[i] / 5U % 5U];
        scene.circular(c.cx, c.cy, c.radius, c.use_blend);
        EXPECT_EQ(scene.fold(), c.expected) << c.cx << ' ' << c.radius;
    }
    Scene scene;
    scene.circular(20, 4, 0, 0);
    EXPECT_EQ(scene.dst, Scene().dst);
}

// Runs render(n, table, destinations, sources) with a table of n + 1 noisy colours.
template <class Render> uint32_t fold_rendered(bool opaque, const Render &render) {
    constexpr int32_t n = 20;
    Scene scene;
    Floats table;
    for (uint32_t component = 4; component < 8; ++component) {
        for (uint32_t i = 0; i <= n; ++i) {
            const uint8_t value = noise(i, component);
            table.push_back(component == 7 && (opaque || value > 200) ? 255.0F : static_cast<float>(value));
        }
    }
    call(render, n, table.data(), scene.dst, scene.src);
    return scene.fold();
}

TEST(Gradients, FloatTablesAreInterpolated) {
    const auto linear = [](auto... rest) { xRenderLinearTo(0.713F, -1.37F, -3.2F, width, rows, rest...); };
    const auto circular = [](auto... rest) { xRenderCircularTo(31.3F, 4.6F, 0, 0, width, rows, rest...); };
    const auto sweep = [](auto... rest) { xRenderSweepTo(31, 4, 40.5F, -7.25F, 1.5F, width, rows, rest...); };
    EXPECT_EQ(fold_rendered(false, linear), 0xCB9E09AAU);
    EXPECT_EQ(fold_rendered(true, linear), 0x32524958U);
    EXPECT_EQ(fold_rendered(false, circular), 0x64F3F300U);
    EXPECT_EQ(fold_rendered(true, circular), 0xB1E7408FU);
    EXPECT_EQ(fold_rendered(false, sweep), 0x031EC2CDU);
    EXPECT_EQ(fold_rendered(true, sweep), 0xC8CD41DBU);
}

// Nothing clamps a table's colours: their low bytes are stored. Positions beyond the table, and none at all, take its
// end.
TEST(Gradients, FloatTablesBeyondTheirRange) {
    const std::array<float, 8> table = {300, -3, 10, 20, 30, 40, 255, 255};
    const auto rendered = [&](float offset) {
        Planes planes = planes_of(1);
        call(xRenderLinearTo, 0, 0, offset, 1, 1, 1, table.data(), planes, planes);
        return std::array{planes[0][0], planes[1][0], planes[2][0]};
    };
    EXPECT_EQ(rendered(-5), (std::array<uint8_t, 3>{44, 10, 30}));
    EXPECT_EQ(rendered(0.5F), (std::array<uint8_t, 3>{148, 15, 35}));
    for (const float beyond : {1.0F, 7.0F, 1e30F, no_number})
        EXPECT_EQ(rendered(beyond), (std::array<uint8_t, 3>{253, 20, 40})) << beyond;
    // Without a turn's length every position is 0.
    Planes planes = planes_of(9);
    call(xRenderSweepTo, 1, 1, 1, 1, 3, 3, 3, 1, table.data(), planes, planes);
    EXPECT_EQ(planes[0], Bytes(9, 44));
}

TEST(Gradients, MapRecoloursABandByBrightness) {
    Bytes identity(256);
    for (std::size_t i = 0; i < 256; ++i) identity[i] = static_cast<uint8_t>(i);
    const Bytes other = noise_plane(256, 9);
    // Every sum of three samples, 0 .. 765, once.
    Planes planes = planes_of(766);
    for (int32_t sum = 0; sum < 766; ++sum)
        for (int32_t c = 0; c < 3; ++c)
            planes[static_cast<std::size_t>(c)][static_cast<std::size_t>(sum)] =
                static_cast<uint8_t>(std::clamp(sum - 255 * c, 0, 255));
    const Planes before = planes;
    call(ApplyGradient, 2, 10, 381, planes, identity, other, identity);
    for (std::size_t sum = 0; sum < 766; ++sum) {
        const bool in_band = sum >= 20 && sum < 762;
        const std::size_t brightness = sum * 85 / 256;
        ASSERT_EQ(planes[0][sum], in_band ? brightness : before[0][sum]) << sum;
        ASSERT_EQ(planes[1][sum], in_band ? other[brightness] : before[1][sum]) << sum;
        ASSERT_EQ(planes[2][sum], in_band ? brightness : before[2][sum]) << sum;
    }
}

// Fast gradients never touch the last column, nor the last row's end.
template <class Gradient> void run_fast(Workspace &w, const Gradient &gradient) {
    const std::size_t count = w.count() + static_cast<std::size_t>(w.height) - 1;
    uint8_t *planes[6];
    for (uint8_t *&plane : planes) plane = w.buffer(count);
    uint8_t *tables[4];
    for (uint8_t *&table : tables) table = w.buffer(256);
    call(gradient, planes, tables, w.buffer(65536));
}

template <int32_t blend, int32_t alpha> void run_linear(Workspace &w) {
    run_fast(w, [&](auto... rest) {
        call(fastLinearGradient, w.real(-3, 3), w.real(-2, 0), w.real(-300, 100), w.size(), blend, alpha, rest..., 0);
    });
}

template <int32_t blend> void run_circular(Workspace &w) {
    run_fast(w, [&](auto... rest) {
        call(fastCircularGradient, w.size(), w.integer(-20, w.width), w.integer(-20, w.height), w.integer(1, 300),
             blend, rest...);
    });
}

template <class Render> void run_rendered(Workspace &w, const Render &render, int32_t n = 100) {
    const auto src = w.buffers();
    uint8_t *dst[3];
    for (std::size_t c = 0; c < 3; ++c) dst[c] = w.result_of(src[c]);
    call(render, n, w.floats(area(4, n + 1), 0, 300), dst, src);
}

const BulkCase cases[] = {
    {"fastLinearGradient", run_linear<0, 0>},
    {"fastLinearGradient_alpha", run_linear<0, 1>},
    {"fastLinearGradient_blend", run_linear<1, 0>},
    {"fastLinearGradient_blend_alpha", run_linear<1, 1>},
    {"fastCircularGradient", run_circular<0>},
    {"fastCircularGradient_blend", run_circular<1>},
    {"xRenderLinearTo",
     [](Workspace &w) {
         run_rendered(w, [&](auto... rest) { xRenderLinearTo(0.7F, -0.3F, 5, w.width, w.height, rest...); });
     },
     true},
    {"xRenderLinearTo_long_table",
     [](Workspace &w) {
         const auto render = [&](auto... rest) { xRenderLinearTo(9.7F, -3.3F, 5, w.width, w.height, rest...); };
         run_rendered(w, render, 1500);
     }},
    {"xRenderCircularTo",
     [](Workspace &w) {
         run_rendered(w, [&](auto... rest) { xRenderCircularTo(40.3F, 7, 0, 0, w.width, w.height, rest...); });
     },
     true},
    {"xRenderSweepTo",
     [](Workspace &w) {
         run_rendered(w, [&](auto... rest) { xRenderSweepTo(40.3F, 7, 9, 50, 2, w.width, w.height, rest...); });
     },
     true},
    {"ApplyGradient", [](Workspace &w) { call(ApplyGradient, w.width, 0, w.height, w.buffers(), w.buffers(256)); }},
};

const BulkFamily family("Gradients", cases);

} // namespace
