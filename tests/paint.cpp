#include "tavik/paint/paint.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

struct Point {
    float x, y;
};

using Samples = std::array<float, 3>;

struct Dab {
    float cx, cy, diameter, feather;
    Samples colour;
    float opacity = 1;
};

constexpr float dab_depth = 40;

// Three planes of bytes or floats in the form of upper bounds, and depths.
template <class Sample> struct Canvas {
    int32_t x_max;
    int32_t y_max;
    std::array<std::vector<Sample>, 3> planes;
    Floats depths;

    // depth(x) is the depth of column x.
    template <class Depth>
    Canvas(int32_t last_column, int32_t last_row, Sample sample, const Depth &depth)
        : x_max(last_column), y_max(last_row) {
        for (std::size_t i = 0; i < 3; ++i) planes[i].assign(index(0, y_max + 1), sample);
        for (int32_t y = 0; y <= y_max; ++y)
            for (int32_t x = 0; x <= x_max; ++x) depths.push_back(depth(x));
    }
    Canvas(int32_t last_column, int32_t last_row, Sample sample = 100)
        : Canvas(last_column, last_row, sample, [](int32_t) { return 50.0F; }) {}

    std::size_t index(int32_t x, int32_t y) const { return static_cast<std::size_t>(y * (x_max + 1) + x); }
    Sample at(std::size_t plane, int32_t x, int32_t y) const { return planes[plane][index(x, y)]; }
};

// One of the exports.
template <auto Export, class SampleType> struct Variant {
    using Sample = SampleType;

    const char *name;
    bool parallel;

    static void call(const Dab &d, int32_t x_max, int32_t y_max, const std::array<Sample *, 3> &planes,
                     const float *depths) {
        const auto paint = [&](auto... depth) {
            tavik_test::call(Export, d.cx, d.cy, d.diameter, d.feather, d.colour, d.opacity, x_max, y_max, planes,
                             depth...);
        };
        if constexpr (std::is_same_v<decltype(Export), decltype(&FeatheredCircle_ppl_float_zbuffer)>)
            paint(dab_depth, depths);
        else
            paint();
    }

    static void paint(const Dab &dab, Canvas<Sample> &canvas) {
        call(dab, canvas.x_max, canvas.y_max,
             {canvas.planes[0].data(), canvas.planes[1].data(), canvas.planes[2].data()}, canvas.depths.data());
    }
};

constexpr Variant<FeatheredCircle, uint8_t> serial = {"FeatheredCircle", false};
constexpr Variant<FeatheredCircle_Add, uint8_t> adding = {"FeatheredCircle_Add", false};
constexpr Variant<FeatheredCircle_Multiply, uint8_t> multiplying = {"FeatheredCircle_Multiply", false};
constexpr Variant<FeatheredCircle_ppl, uint8_t> parallel = {"FeatheredCircle_ppl", true};
constexpr Variant<FeatheredCircle_ppl_float, float> floating = {"FeatheredCircle_ppl_float", true};
constexpr Variant<FeatheredCircle_ppl_float_zbuffer, float> in_depth = {"FeatheredCircle_ppl_float_zbuffer", true};

template <class Check> void for_each_variant(const Check &check) {
    check(serial), check(adding), check(multiplying), check(parallel), check(floating), check(in_depth);
}

template <class V> using CanvasOf = Canvas<typename V::Sample>;

// What a dab makes of samples 100 to the right of its centre and below it.
struct Profile {
    float diameter, feather, colour, opacity;
    Floats samples; // from the centre to the last that changes
};

template <class V> void expect_profiles(const V &variant, const std::vector<Profile> &profiles) {
    for (const Profile &p : profiles) {
        CanvasOf<V> canvas(30, 30);
        variant.paint({7, 8, p.diameter, p.feather, {p.colour, p.colour, p.colour}, p.opacity}, canvas);
        for (int32_t i = 0; i < 20; ++i) {
            const auto distance = static_cast<std::size_t>(i);
            const float expected = distance < p.samples.size() ? p.samples[distance] : 100.0F;
            EXPECT_EQ(canvas.at(0, 7 + i, 8), expected) << variant.name << ' ' << p.colour << ", right " << i;
            EXPECT_EQ(canvas.at(1, 7, 8 + i), expected) << variant.name << ' ' << p.colour << ", down " << i;
        }
    }
}

// The distances 2 .. 8 count as 2, 3.125, 4, 5.125, 6.25, 7.0625 and 8.
TEST(Paint, DabsFadeOverTheirFeather) {
    const std::vector<Profile> as_bytes = {
        {6, 2, 200, 1, {200, 200, 200, 193, 150}},
        {6, 4, 255, 0.5F, {177, 177, 177, 175, 158, 136, 114}},
        {8, 0, 3, 1, {3, 3, 3, 3, 3}},
        {8, 3, 3, 0, {}},
        {8, 0, 3, -1, {}},
        {2, 0, 9, 7, {9, 9}},
        {2, 0, 300, 1, {44, 44}}, // Beyond bytes the low byte is stored.
        {2, 0, -1, 1, {255, 255}},
    };
    expect_profiles(serial, as_bytes);
    expect_profiles(parallel, as_bytes);
    const std::vector<Profile> as_floats = {
        {6, 2, 200, 1, {200, 200, 200, 193.75F, 150}},
        {6, 4, 255, 0.5F, {177.5F, 177.5F, 177.5F, 175.078125F, 158.125F, 136.328125F, 114.53125F}},
    };
    expect_profiles(floating, as_floats);
    expect_profiles(floating, {{4, 0, 300.5F, 1, {300.5F, 300.5F, 300.5F}}});
    expect_profiles(in_depth, as_floats);                             // All of the dab shows 10 before the picture,
    expect_profiles(in_depth, {{4, 0, 300.5F, 1, {300.5F, 300.5F}}}); // but never its last pixel.

    // In the disc the weights rise toward the centre, at half opacity from 0.5 at the radius to 0.875.
    expect_profiles(adding, {{6, 2, 50, 1, {150, 150, 150, 146, 125}},
                             {6, 2, -300, 1, {0, 0, 0, 0, 0}},
                             {6, 4, 64, 0.5F, {156, 148, 140, 131, 124, 115, 106}},
                             {8, 0, 9, 1, {109, 109, 109, 109}},
                             {8, 0, 9, 0, {}}});
    expect_profiles(multiplying, {{6, 2, 0, 1, {0, 0, 0, 6, 50}},
                                  {6, 4, 510, 0.5F, {187, 175, 162, 148, 137, 123, 109}},
                                  {8, 0, 127.5F, 1, {50, 50, 50, 50}}});
}

TEST(Paint, MultiplyingByWhiteKeepsEverySample) {
    Canvas<uint8_t> canvas(300, 1);
    for (int32_t x = 0; x < 256; ++x)
        for (auto &plane : canvas.planes) plane[canvas.index(x, 0)] = static_cast<uint8_t>(x);
    const auto before = canvas.planes;
    multiplying.paint({128, 0, 200, 100, {255, 255, 255}}, canvas);
    EXPECT_EQ(canvas.planes, before);
}

TEST(Paint, DepthHidesADabAndFadesItIn) {
    // From 5 in front of the dab, over its own depth, to 14 behind it.
    Canvas<float> canvas(20, 4, 100, [](int32_t x) { return 35.0F + static_cast<float>(x); });
    const auto depths = canvas.depths;
    in_depth.paint({10, 2, 60, 0, {200, 0, 100}, 0.5F}, canvas);
    EXPECT_EQ(canvas.depths, depths);
    for (int32_t x = 0; x < 20; ++x) {
        const float share = std::clamp((static_cast<float>(x) - 5.0F) / 10.0F, 0.0F, 1.0F) * 0.5F;
        EXPECT_EQ(canvas.at(0, x, 1), 100.0F * share + 100.0F) << x;
        EXPECT_EQ(canvas.at(1, x, 1), -100.0F * share + 100.0F) << x;
    }
}

// Every window onto a dab shows what the whole picture of it shows, in the order of its planes. Windows narrower than
// any vector, boxes too narrow for chords, and planes of one column or row are among them.
TEST(Paint, DabsAreCutOffAtColumnXMaxAndRowYMax) {
    const Dab dabs[] = {{60, 50, 70, 5.5F, {0, 50, 255}, 0.7F}, {60, 50, 90.5F, 0, {0, 50, 255}, 1},
                        {60, 50, 3, 40, {0, 50, 255}, 1},       {60, 50, 0, 9, {0, 50, 255}, 0.9F},
                        {60, 50, -4, 30, {0, 50, 255}, 0.3F},   {60, 50, 13, 1, {0, 50, 255}, 1}};
    const std::array<int32_t, 4> windows[] = {{0, 0, 60, 50},   {60, 50, 80, 70}, {52, 45, 3, 9},
                                              {40, 40, 17, 30}, {20, 30, 64, 1},  {71, 20, 1, 60},
                                              {57, 50, 7, 3},   {57, 50, 0, 3},   {57, 50, 7, 0}};
    for_each_variant([&](const auto &variant) {
        using Canvas = CanvasOf<std::decay_t<decltype(variant)>>;
        for (const Dab &dab : dabs) {
            Canvas whole(140, 120);
            variant.paint(dab, whole);
            ASSERT_LE(whole.at(0, 61, 51), whole.at(1, 61, 51)) << variant.name;
            ASSERT_LT(whole.at(1, 61, 51), whole.at(2, 61, 51)) << variant.name;
            for (const auto &[left, top, width, height] : windows) {
                Canvas window(width, height);
                Canvas expected = window;
                for (std::size_t i = 0; i < 3; ++i)
                    for (int32_t y = 0; y < height; ++y)
                        for (int32_t x = 0; x < width; ++x)
                            expected.planes[i][expected.index(x, y)] = whole.at(i, left + x, top + y);
                Dab moved = dab;
                moved.cx -= static_cast<float>(left);
                moved.cy -= static_cast<float>(top);
                variant.paint(moved, window);
                ASSERT_TRUE(window.planes == expected.planes)
                    << variant.name << ' ' << dab.diameter << ": " << left << ' ' << top;
            }
        }
    });
}

TEST(Paint, DabsAreRound) {
    for_each_variant([](const auto &variant) {
        for (const float radius : {1.5F, 7.9F, 71.0F}) {
            CanvasOf<std::decay_t<decltype(variant)>> canvas(160, 160);
            variant.paint({80.25F, 79.5F, 2 * radius, 0, {60, 60, 60}}, canvas);
            for (int32_t i = 0; i < 160 * 160; ++i) {
                // The quick root is up to 1.0607 times the distance and never less.
                const double distance = std::hypot(i % 160 - 80.25, i / 160 - 79.5);
                if (distance <= radius && distance * 1.061 >= radius) continue;
                ASSERT_EQ(canvas.at(1, i % 160, i / 160) != 100, distance < radius)
                    << variant.name << ' ' << radius << ": " << i % 160 << ' ' << i / 160;
            }
        }
    });
}

TEST(Paint, BoxesOutsideThePlanesPaintNothing) {
    constexpr float huge = 1e10F;
    const Point centres[] = {{-30, 5}, {5, 40}, {50, 5}, {5, -huge}, {huge, 5}, {-huge, huge}, {infinity, 5}};
    for_each_variant([&](const auto &variant) {
        const CanvasOf<std::decay_t<decltype(variant)>> blank(9, 9);
        for (const Point centre : centres) {
            auto canvas = blank;
            variant.paint({centre.x, centre.y, 20, 5, {1, 2, 3}}, canvas);
            EXPECT_EQ(canvas.planes, blank.planes) << variant.name << ' ' << centre.x << ' ' << centre.y;
        }
    });
}

// The box goes one column and row past a rim that ends inside the radius, but parallel dabs leave out the row.
TEST(Paint, ANegativeFeatherShowsTheBox) {
    for_each_variant([](const auto &variant) {
        if (std::string_view(variant.name) == in_depth.name) return;
        CanvasOf<std::decay_t<decltype(variant)>> canvas(20, 20);
        variant.paint({8, 9, 8, -1, {-60, -60, -60}}, canvas);
        EXPECT_NE(canvas.at(1, 12, 9), 100) << variant.name;
        EXPECT_EQ(canvas.at(1, 13, 9), 100) << variant.name;
        EXPECT_EQ(canvas.at(1, 8, 13) == 100, variant.parallel) << variant.name;
        EXPECT_EQ(canvas.at(1, 8, 14), 100) << variant.name;
        EXPECT_NE(canvas.at(1, 8, 12), 100) << variant.name;
    });
}

// The reciprocal of −0 turns the rising weight around: 0 inside the radius, 1 outside.
TEST(Paint, AFeatherOfMinusZeroShowsTheBox) {
    Canvas<uint8_t> canvas(40, 40);
    adding.paint({20, 20, 32, -0.0F, {50, 50, 50}}, canvas);
    EXPECT_EQ(canvas.at(0, 20, 20), 100);
    EXPECT_EQ(canvas.at(0, 4, 4), 150); // The corner of the box
    EXPECT_EQ(canvas.at(0, 3, 4), 100);
}

TEST(Paint, TranslucencyRoundsFloatsOutsideTheDisc) {
    Canvas<float> canvas(60, 60, -0.0F);
    floating.paint({30, 30, 40, 1, {1, 1, 1}, 0.5F}, canvas);
    EXPECT_FALSE(std::signbit(canvas.at(0, 9, 9))); // The corner of the box
    EXPECT_TRUE(std::signbit(canvas.at(0, 8, 9)));
}

struct Line {
    float x0, y0, x1, y1;
};

// The first plane, of samples 40, after lines of colour 100.
std::vector<int> drawn(int32_t width, int32_t height, const std::vector<Line> &lines, float colour = 100) {
    Planes planes = planes_of(static_cast<std::size_t>(width * height), 40);
    for (const Line &line : lines)
        call(xAAFloatLine, line.x0, line.y0, line.x1, line.y1, colour, 40, 140, width, height, planes);
    EXPECT_EQ(planes[1], Bytes(planes[1].size(), 40));
    return {planes[0].begin(), planes[0].end()};
}

TEST(Paint, LinesSpreadEachSampleOverFourPixels) {
    using Picture = std::vector<int>;
    // Full weight at whole pixels: four steps, exactly.
    EXPECT_EQ(drawn(9, 3, {{2, 1, 6, 1}}), (Picture{40,  40,  40, 40, 40, 40, 40, 40, 40, 40, 40, 100, 100, 100,
                                                    100, 100, 40, 40, 40, 40, 40, 40, 40, 40, 40, 40,  40}));
    // One sample between pixels.
    EXPECT_EQ(drawn(4, 3, {{1.5F, 0, 1.5F, 0}}), (Picture{40, 70, 70, 40, 40, 40, 40, 40, 40, 40, 40, 40}));
    EXPECT_EQ(drawn(4, 3, {{1.25F, 0.5F, 1.25F, 0.5F}}), (Picture{40, 62, 47, 40, 40, 62, 47, 40, 40, 40, 40, 40}));
    EXPECT_EQ(drawn(4, 3, {{0.5F, 0.125F, 0.5F, 0.125F}}), (Picture{66, 66, 40, 40, 43, 43, 40, 40, 40, 40, 40, 40}));
    // Three samples overlap by half.
    EXPECT_EQ(drawn(5, 2, {{0.5F, 0, 2.5F, 0}}), (Picture{70, 85, 85, 70, 40, 40, 40, 40, 40, 40}));
    EXPECT_EQ(drawn(2, 5, {{0, 2.5F, 0, 0.5F}}), (Picture{70, 40, 85, 40, 85, 40, 70, 40, 40, 40}));
    // The length of 6 counts as 6.25: the last sample ends short, at 5.76.
    EXPECT_EQ(drawn(8, 2, {{0, 0, 6, 0}})[6], 85);
    // Samples in the last column or row are skipped, those in (−1, 0) are not: they leave 1.5 × 100 − 0.5 × 40.
    EXPECT_EQ(drawn(3, 3, {{2, 0, 2, 2}, {0, 2, 2, 2}}), Picture(9, 40));
    EXPECT_EQ(drawn(3, 2, {{-0.5F, 0, -0.5F, 0}}), (Picture{130, 10, 40, 40, 40, 40}));
    EXPECT_EQ(drawn(3, 2, {{0, 0, 0, 0}}, 300), (Picture{44, 40, 40, 40, 40, 40}));
    for (const auto &[width, height] : {std::pair{1, 5}, {5, 1}})
        EXPECT_EQ(drawn(width, height, {{0, 0, 3, 3}}), Picture(5, 40));
}

// Lines that come from far outside and go there, along whole pixels and in whole steps.
TEST(Paint, LinesCrossThePictureFromFarAway) {
    for (const auto &[from, to] : {std::pair{-16384.0F, 16384.0F}, {16384.0F, -16384.0F}, {-1000.0F, 64536.0F}}) {
        const auto row = drawn(50, 3, {{from, 1, to, 1}});
        const auto column = drawn(3, 50, {{1, from, 1, to}});
        for (std::size_t i = 0; i < 50; ++i) {
            EXPECT_EQ(row[50 + i], i < 49 ? 100 : 40) << from << ": " << i;
            EXPECT_EQ(column[3 * i + 1], i < 49 ? 100 : 40) << from << ": " << i;
        }
    }
    // Beside the picture, and longer than any loop may take.
    EXPECT_EQ(drawn(5, 5, {{-9, 0, -9, 1e9F}, {1e9F, 7, -1e9F, 7}, {9, 9, 1e30F, 9}}), std::vector<int>(25, 40));
}

// Dabs of growing size around the picture. Floats hold a −0 and an infinity here and there.
template <const auto &variant> void paint_in(Workspace &w) {
    using Sample = typename std::decay_t<decltype(variant)>::Sample;
    // The last column of the last row that may be painted is not touched.
    const auto touched = static_cast<std::size_t>(std::max((w.width + 1) * w.height, 1) - 1);
    std::array<Sample *, 3> planes;
    for (auto &plane : planes) {
        if constexpr (std::is_same_v<Sample, float>) {
            plane = w.floats(touched, -10, 300);
            for (std::size_t i = 0; i < touched; i += 7) plane[i] = i % 2 == 0 ? -0.0F : INFINITY;
        } else {
            plane = w.buffer(touched);
        }
    }
    const float *depths = w.floats(touched, 30, 60);
    const auto size = static_cast<float>(w.width + w.height);
    for (const float reach : {2.0F, 9.0F, 30.0F, 0.1F * size, 0.4F * size}) {
        for (const float opacity : {1.0F, 0.3F}) {
            const float radius = w.real(0, reach);
            const Dab dab = {
                w.real(-5, static_cast<float>(w.width + 5)),  w.real(-5, static_cast<float>(w.height + 5)), 2 * radius,
                w.integer(0, 3) == 0 ? 0.0F : reach - radius, {w.real(0, 255), w.real(0, 255), 255},        opacity};
            variant.call(dab, w.width, w.height, planes, depths);
        }
    }
}

void draw_lines_in(Workspace &w) {
    const auto planes = w.buffers();
    const auto right = static_cast<float>(w.width + 9);
    const auto bottom = static_cast<float>(w.height + 9);
    for (int32_t line = 0; line < 9; ++line)
        call(xAAFloatLine, w.real(-9, right), w.real(-9, bottom), w.real(-9, right), w.real(-9, bottom), w.real(0, 255),
             w.real(0, 255), 300, w.size(), planes);
}

const BulkCase cases[] = {
    {serial.name, paint_in<serial>},     {adding.name, paint_in<adding>},     {multiplying.name, paint_in<multiplying>},
    {parallel.name, paint_in<parallel>}, {floating.name, paint_in<floating>}, {in_depth.name, paint_in<in_depth>},
    {"xAAFloatLine", draw_lines_in},
};

const BulkFamily family("Paint", cases);

} // namespace
