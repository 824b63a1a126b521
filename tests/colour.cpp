#include "tavik/colour/colour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

using Colour = std::array<int, 3>;
using Unit = std::array<float, 3>;

Planes picture_of(const std::vector<Colour> &colours) {
    Planes planes;
    for (const Colour &colour : colours)
        for (std::size_t c = 0; c < 3; ++c) planes[c].push_back(static_cast<uint8_t>(colour[c]));
    return planes;
}

Planes repeated(std::size_t count, const Colour &colour) { return picture_of(std::vector<Colour>(count, colour)); }

Colour pixel(const Planes &planes, std::size_t i) { return {planes[0][i], planes[1][i], planes[2][i]}; }

int32_t count_of(const Planes &planes) { return static_cast<int32_t>(planes[0].size()); }

// Colours all over the cube, its corners and greys among them.
std::vector<Colour> many_colours() {
    std::vector<Colour> colours;
    for (int r = 0; r <= 255; r += 15)
        for (int g = 0; g <= 255; g += 15)
            for (int b = 0; b <= 255; b += 17) colours.push_back({r, g, b});
    return colours;
}

// Runs an export from the colours to three planes.
Planes mapped(const std::vector<Colour> &colours, auto by, auto... settings) {
    Planes dst = planes_of(colours.size());
    call(by, static_cast<int32_t>(colours.size()), 1, settings..., picture_of(colours), dst);
    return dst;
}

TEST(Colour, RgbToHsv) {
    struct Case {
        Unit rgb;
        Unit hsv;
    };
    const Case cases[] = {
        {{1, 0, 0}, {0, 1, 1}},
        {{0, 1, 0}, {120, 1, 1}},
        {{0, 0, 1}, {240, 1, 1}},
        {{1, 0, 1}, {300, 1, 1}},
        {{1, 1, 0}, {60, 1, 1}},
        {{0, 1, 1}, {180, 1, 1}},
        {{0.5F, 0.5F, 0.5F}, {-1, 0, 0.5F}},
        {{0, 0, 0}, {-1, 0, 0}},
        {{0, 200, 100}, {150, 1, 200}},
        {{4, 3, 2}, {30, 0.5F, 4}},
        {{3, 2, 4}, {270, 0.5F, 4}},
        {{-1, -2, -4}, {40, -3, -1}},
    };
    for (const auto &[rgb, hsv] : cases) {
        Unit actual = {99, 99, 99};
        call(RGB_To_HSV, rgb, &actual[0], &actual[1], &actual[2]);
        EXPECT_EQ(actual, hsv) << rgb[0] << ' ' << rgb[1] << ' ' << rgb[2];
    }
    Unit kept = {-2, 99, 99};
    RGB_To_HSV(no_number, no_number, no_number, &kept[0], &kept[1], &kept[2]);
    EXPECT_EQ(kept[0], 240.0F);
    EXPECT_TRUE(std::isnan(kept[1]) && std::isnan(kept[2]));
}

TEST(Colour, HsvToRgb) {
    struct Case {
        Unit hsv;
        Unit rgb;
    };
    // What stays of {−1, 0.25, 7} is clipped.
    const Unit kept = {0, 0.25F, 1};
    const Case cases[] = {
        {{0, 1, 1}, {1, 0, 0}},
        {{360, 1, 1}, {1, 0, 0}},
        {{30, 1, 1}, {1, 0.5F, 0}},
        {{90, 1, 1}, {0.5F, 1, 0}},
        {{150, 1, 1}, {0, 1, 0.5F}},
        {{210, 1, 1}, {0, 0.5F, 1}},
        {{270, 1, 1}, {0.5F, 0, 1}},
        {{330, 1, 1}, {1, 0, 0.5F}},
        {{0, 0, 2}, {1, 1, 1}},
        {{-1, 0, 0.5F}, {0.5F, 0.5F, 0.5F}},
        {{15, 0.5F, 0.5F}, {0.5F, 0.3125F, 0.25F}},
        {{60, 1, -1}, {0, 0, 0}},
        {{420, 1, 1}, kept},
        {{-60, 1, 1}, kept},
        {{359.99997F, 1, 1}, kept},
        {{no_number, 1, 1}, kept},
        {{1e30F, 1, 1}, kept},
        {{-59, 0, 0.5F}, {0.5F, 0.5F, 0.5F}},
    };
    for (const auto &[hsv, rgb] : cases) {
        Unit actual = {-1, 0.25F, 7};
        call(HSV_To_RGB, &actual[0], &actual[1], &actual[2], hsv);
        for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(actual[i], rgb[i], 1e-6F) << "hue " << hsv[0];
    }
}

TEST(Colour, SaturateClampsEachValue) {
    std::array<int32_t, 3> values = {-5, 300, 17};
    Saturate(&values[0], &values[1], &values[2]);
    EXPECT_EQ(values, (std::array<int32_t, 3>{0, 255, 17}));
}

TEST(Colour, HueTurnsByWholeDegrees) {
    struct Case {
        Unit parameters;
        std::array<Colour, 3> to;
        uint32_t cube;
    };
    constexpr Colour from[] = {{255, 0, 0}, {200, 100, 50}, {30, 60, 220}};
    for (const Case &c :
         {Case{{0, 1, 1}, {{{255, 0, 0}, {200, 97, 49}, {30, 61, 220}}}, 0x74CB5AE2U},
          {{-30, 1, 1}, {{{255, 0, 127}, {200, 49, 74}, {30, 156, 220}}}, 0x8487F7C8U},
          {{-0.75F, 0.5F, 1}, {{{255, 127, 127}, {200, 148, 125}, {125, 142, 220}}}, 0x23A8813DU},
          {{200.5F, 1.5F, 1.25F}, {{{0, 159, 255}, {0, 62, 250}, {209, 255, 0}}}, 0x340291C7U},
          {{-1000, 1, -1}, {{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}}, 0x270934C5U},
          {{999999.5F, 1, 1}, {{{165, 0, 255}, {197, 49, 200}, {30, 220, 125}}}, 0x61A54B11U},
          {{-999999.5F, 1, 1}, {{{165, 255, 0}, {97, 200, 49}, {220, 30, 185}}}, 0x5A72B991U},
          {{123456792, 1, 1}, {{{0, 203, 255}, {49, 129, 200}, {207, 220, 30}}}, 0x85A97B25U},
          {{-5e9F, 1, 1}, {{{0, 33, 255}, {49, 69, 200}, {30, 55, 220}}}, 0x0747A1A2U}, // beyond the integers: −2^31
          {{no_number, 1, 0.5F}, {{{0, 16, 127}, {24, 34, 100}, {15, 27, 110}}}, 0x5701DD2DU},
          {{10, infinity, 0},
           {{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}},
           0x270934C5U}}) { // 0 × infinity is no number, which becomes 0.
        for (std::size_t i = 0; i < 3; ++i) {
            Planes planes = repeated(70, from[i]);
            call(xHue, 6, 9, c.parameters, planes);
            EXPECT_EQ(pixel(planes, 0), c.to[i]) << c.parameters[0];
            EXPECT_EQ(pixel(planes, 69), c.to[i]) << c.parameters[0];
        }
        Planes cube = picture_of(many_colours());
        call(xHue, count_of(cube) - 1, 0, c.parameters, cube);
        EXPECT_EQ(folded(cube), c.cube) << c.parameters[0];
    }
}

TEST(Colour, NightAndFogAreGradedFromTopToBottom) {
    struct Case {
        Colour from;
        std::array<Colour, 3> night, fog; // rows 0, 1 and 3 of 4
    };
    for (const Case &c :
         {Case{{255, 255, 255},
               {{{127, 158, 178}, {133, 167, 187}, {146, 184, 205}}},
               {{{255, 255, 255}, {239, 242, 255}, {209, 216, 255}}}},
          {{0, 0, 0}, {{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}}, {{{0, 0, 0}, {1, 1, 2}, {13, 14, 18}}}},
          {{200, 100, 50},
           {{{73, 60, 50}, {77, 63, 53}, {84, 70, 58}}},
           {{{200, 100, 50}, {190, 117, 90}, {146, 126, 139}}}},
          {{30, 60, 220},
           {{{41, 60, 123}, {43, 63, 130}, {47, 70, 142}}},
           {{{30, 60, 220}, {58, 82, 212}, {94, 106, 169}}}},
          {{255, 0, 0}, {{{76, 15, 17}, {80, 16, 18}, {87, 18, 20}}}, {{{255, 0, 0}, {221, 31, 39}, {137, 78, 97}}}},
          {{0, 255, 0},
           {{{19, 102, 26}, {20, 108, 28}, {21, 120, 30}}},
           {{{0, 255, 0}, {29, 222, 39}, {74, 141, 97}}}}}) {
        Planes night = repeated(4 * 33, c.from);
        Planes fog = night;
        call(xDayForNight, 33, 4, night);
        call(xFogFilter, 33, 4, fog);
        for (const std::size_t x : {0U, 32U}) {
            EXPECT_EQ((std::array{pixel(night, x), pixel(night, 33 + x), pixel(night, 99 + x)}), c.night);
            EXPECT_EQ((std::array{pixel(fog, x), pixel(fog, 33 + x), pixel(fog, 99 + x)}), c.fog);
        }
    }
    Planes black = planes_of(1000);
    call(xFogFilter, 1, 1000, black);
    EXPECT_EQ(pixel(black, 999), (Colour{24, 25, 31}));
}

TEST(Colour, SepiaFadesThenTints) {
    struct Case {
        Unit parameters;
        Colour from;
        Colour to;
    };
    const Case cases[] = {
        {{0, 0, 0}, {12, 200, 255}, {12, 200, 255}},
        {{0, 1, 1}, {255, 255, 255}, {255, 229, 170}},
        {{2, 0, 0}, {0, 0, 100}, {254, 254, 210}}, // 510 and −300 + 510 keep their low bytes.
        {{0, 2, 0}, {200, 0, 0}, {176, 119, 119}}, // −80.4 truncates to −80.
        {{no_number, 0, 0}, {9, 9, 9}, {0, 0, 0}},
        {{0, 1, 0}, {255, 0, 0}, {76, 76, 76}},
        {{0, 1, 0}, {0, 255, 0}, {149, 149, 149}},
        {{0, 1, 0}, {0, 0, 255}, {29, 29, 29}},
        {{0.1F, 0.7F, 0.9F}, {200, 100, 50}, {143, 108, 75}},
        {{0.1F, 0.7F, 0.9F}, {30, 60, 220}, {71, 71, 82}},
        {{0.5F, 1, 1}, {30, 60, 220}, {127, 114, 85}},
        {{0, 0.25F, 0.5F}, {30, 60, 220}, {39, 59, 152}},
    };
    for (const Case &c : cases) {
        Planes to = planes_of(65);
        call(xSepia, 13, 5, c.parameters, repeated(65, c.from), to);
        EXPECT_EQ(pixel(to, 0), c.to);
        EXPECT_EQ(pixel(to, 64), c.to);
    }
}

// All sums of three bytes.
TEST(Colour, DuotoneRunsFromDarkToLight) {
    std::vector<Colour> colours;
    for (int sum = 0; sum <= 765; ++sum) {
        const int r = std::min(sum, 255);
        const int g = std::min(sum - r, 255);
        colours.push_back({r, g, sum - r - g});
    }
    struct Case {
        Colour light;
        Colour dark;
    };
    for (const auto &[light, dark] : {Case{{255, 200, 100}, {0, 0, 50}}, Case{{0, 255, 255}, {255, 255, 254}},
                                      Case{{17, 3, 1}, {200, 128, 0}}, Case{{300, -40, 255}, {0, 1000, -256}}}) {
        const Planes dst = mapped(colours, xDuotone, light, dark);
        for (int sum = 0; sum <= 765; ++sum) {
            Colour expected;
            for (std::size_t c = 0; c < 3; ++c) {
                const int mean = sum / 3;
                expected[c] = (light[c] * mean + dark[c] * (255 - mean)) / 255 & 255;
            }
            ASSERT_EQ(pixel(dst, static_cast<std::size_t>(sum)), expected) << sum;
        }
    }
}

TEST(Colour, GreyPlaneIsTrimmed) {
    const Planes src = picture_of({{10, 20, 31}, {255, 255, 255}, {1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {4, 4, 4}});
    const auto trimmed = [&](int32_t width, int32_t height) {
        Floats dst(6, -1.0F);
        call(colortograyscale_trim, width, height, src, dst);
        return dst;
    };
    EXPECT_EQ(trimmed(3, 2), (Floats{20, 255, -1, -1, -1, -1}));
    EXPECT_EQ(trimmed(2, 3), (Floats{20, 1, -1, -1, -1, -1}));
    for (const auto &[width, height] : {std::array{1, 6}, {6, 1}, {0, 5}, {-2, -3}})
        EXPECT_EQ(trimmed(width, height), Floats(6, -1.0F)) << width << ' ' << height;
}

using Matrix = std::array<float, 16>;

TEST(Colour, MatrixSumsInItsOrder) {
    struct Case {
        Matrix matrix;
        Colour from;
        Colour to;
    };
    const float huge = 1e8F;
    const Case cases[] = {
        {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0}, {1, 128, 255}, {1, 128, 255}},
        {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 300}, {5, 6, 7}, {255, 0, 0}},
        {{0, 0.5F, 0, 9, 0.25F, 0, 0, 9, 0, 0, 2, 9, 0.75F, -10, 0, 9}, {40, 41, 42}, {11, 10, 84}},
        {{-1, 1, 0, 0, 0, -2, 0, 0, 0, 0, no_number, 0, 0, 0, 0, 0}, {100, 49, 1}, {0, 2, 255}},
        // Blue and green cancel before the rest is added.
        {{3, 3, 3, 0, huge, huge, huge, 0, -huge, -huge, -huge, 0, 7, 7, 7, 0}, {1, 1, 1}, {10, 10, 10}},
        // The constant swallows what is added before red takes it away.
        {{-huge, -huge, -huge, 0, 1, 1, 1, 0, 1, 1, 1, 0, huge, huge, huge, 0}, {1, 1, 1}, {0, 0, 0}},
    };
    for (const Case &c : cases) {
        const Planes from = repeated(66, c.from);
        Planes serial = planes_of(66);
        Planes parallel = serial;
        call(xColorMatrix, 10, 5, from, serial, c.matrix.data());
        call(xColorMatrix_ppl, 11, 6, from, parallel, c.matrix.data());
        for (const std::size_t i : {std::size_t{0}, std::size_t{65}}) {
            EXPECT_EQ(pixel(serial, i), c.to) << c.from[0] << ' ' << c.matrix[0];
            EXPECT_EQ(pixel(parallel, i), c.to) << c.from[0] << ' ' << c.matrix[0];
        }
    }
}

TEST(Colour, EachSizeFormHandlesItsElements) {
    struct Extent {
        const char *name;
        std::function<void(Planes &p, int32_t a, int32_t b)> change;
        std::vector<std::array<int32_t, 3>> a_b_and_elements;
    };
    const std::vector<std::array<int32_t, 3>> counts = {{4, 2, 8}, {1, 1, 1},  {0, 5, 0},
                                                        {5, 0, 0}, {-3, 4, 0}, {4, -3, 0}};
    const std::vector<std::array<int32_t, 3>> bounds = {{3, 1, 8}, {0, 0, 1}, {-1, 5, 0}, {5, -1, 0}, {-4, 3, 0}};
    static const Matrix none = {};
    const Extent extents[] = {
        {"xHue", [](auto &p, auto a, auto b) { call(xHue, a, b, 0, 1, 0, p); }, bounds},
        {"xDayForNight", [](auto &p, auto a, auto b) { call(xDayForNight, a, b, p); }, counts},
        {"xSepia", [](auto &p, auto a, auto b) { call(xSepia, a, b, 0.25F, 0, 1, p, p); }, counts},
        {"xDuotone", [](auto &p, auto a, auto b) { call(xDuotone, a, b, 0, 0, 0, 1, 2, 3, p, p); }, counts},
        {"xColorMatrix", [](auto &p, auto a, auto b) { call(xColorMatrix, a, b, p, p, none.data()); }, bounds},
        {"xColorMatrix_ppl", [](auto &p, auto a, auto b) { call(xColorMatrix_ppl, a, b, p, p, none.data()); }, counts},
    };
    for (const Extent &extent : extents) {
        for (const auto &[a, b, elements] : extent.a_b_and_elements) {
            Planes planes = planes_of(64, 99);
            extent.change(planes, a, b);
            for (const Bytes &plane : planes) {
                const auto kept = std::find(plane.begin(), plane.end(), 99);
                EXPECT_EQ(kept - plane.begin(), elements) << extent.name << ' ' << a << ' ' << b;
                EXPECT_EQ(std::count(kept, plane.end(), 99), plane.end() - kept) << extent.name << ' ' << a << ' ' << b;
            }
        }
    }
    // Empty sizes read no matrix.
    xColorMatrix(-1, 5, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    xColorMatrix_ppl(0, 5, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    Planes fog = planes_of(64, 99);
    call(xFogFilter, 4, 2, fog);
    EXPECT_EQ(std::count(fog[0].begin(), fog[0].end(), 99), 60); // The top row, and what lies below the picture.
}

// A serial export over planes that overlap partly sees what its earlier elements wrote.
TEST(Colour, SerialExportsRunInIncreasingOrder) {
    Bytes plane(300, 0);
    const Matrix add_one = {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0};
    Bytes other(250, 0);
    xColorMatrix(249, 0, plane.data(), other.data(), other.data(), plane.data() + 1, other.data(), other.data(),
                 add_one.data());
    for (std::size_t i = 0; i <= 250; ++i) ASSERT_EQ(plane[i], i) << i;
}

TEST(Colour, HueMatrix) {
    const auto turned = [](Unit c, float hue, float saturation, float value) {
        TransformHSV(&c[0], &c[1], &c[2], hue, saturation, value);
        return c;
    };
    EXPECT_EQ(turned({100, 50, 30}, 0, 1, 1), (Unit{100, 50, 30}));
    EXPECT_EQ(turned({100, 50, 30}, 0, 0, 1), (Unit{60.0000038F, 60.0000038F, 60.0000038F}));
    EXPECT_EQ(turned({100, 50, 30}, 77, 1.3F, 0.5F), (Unit{28.5355415F, 54.1339722F, 7.3304882F}));
    const Unit green = turned({1, 0, 0}, 120, 1, 1);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(green[i], i == 1 ? 1 : 0, 2e-7);

    struct Case {
        float hue, saturation, value;
        Unit add;
        Colour from, to;
    };
    for (const Case &c : {Case{60, 1, 1, {}, {100, 50, 30}, {70, 90, 20}},
                          {60, 1, 1, {}, {255, 0, 0}, {170, 170, 0}},
                          {0, 0, 1, {10, 0, -10}, {100, 50, 30}, {70, 60, 50}},
                          {0, 1, 1, {0.5F, 0.25F, -0.75F}, {100, 50, 30}, {101, 50, 29}},
                          {0, 1, no_number, {}, {100, 50, 30}, {255, 255, 255}}}) {
        EXPECT_EQ(pixel(mapped({c.from}, FastHSVandRGB, c.hue, c.saturation, c.value, c.add), 0), c.to);
    }

    // The three forms of it are one.
    const std::vector<Colour> colours = many_colours();
    const Planes serial = mapped(colours, xFastHSV, 33, 1.4F, 0.9F);
    EXPECT_EQ(mapped(colours, FastHSV_ppl, 33, 1.4F, 0.9F), serial);
    EXPECT_EQ(mapped(colours, FastHSVandRGB, 33, 1.4F, 0.9F, 0, 0, 0), serial);
}

TEST(Colour, GreysTonesAndKeys) {
    const Planes src = {Bytes{255, 100, 255, 0, 0, 10, 0, 90}, Bytes{255, 50, 0, 0, 255, 240, 128, 90},
                        Bytes{255, 30, 0, 255, 0, 10, 0, 90}};
    Bytes dst(8);
    call(xColorToGrayscale, 4, 2, src, dst);
    EXPECT_EQ(dst, (Bytes{255, 63, 77, 29, 149, 145, 75, 90}));
    Bytes channel(8);
    call(xColorToGrayChannel, 4, 2, src, channel);
    EXPECT_EQ(channel, dst);

    call(xKeyToAlpha, 4, 2, 0, 255, 0, 20, 60, src, dst);
    EXPECT_EQ(dst, (Bytes{255, 255, 255, 255, 0, 0, 255, 255}));
    call(xKeyToAlpha, 4, 2, 0, 128, 0, 60, 100, src, dst);
    EXPECT_EQ(dst[4], 50);                                // (67.80 − 60) / 40 of 255
    call(xKeyToAlpha, 4, 2, 0, 255, 0, 14, 14, src, dst); // 13.35 away
    EXPECT_EQ(dst[5], 0);
    call(xKeyToAlpha, 4, 2, 0, 255, 0, 13, 13, src, dst);
    EXPECT_EQ(dst[5], 255);

    const Planes tones =
        mapped({{0, 0, 0}, {127, 127, 127}, {255, 255, 255}, {64, 64, 64}, {128, 128, 128}, {63, 64, 66}}, xTritone,
               255, 1, 2, 200, 101, 33, 10, 20, 250);
    EXPECT_EQ(tones, (Planes{Bytes{10, 200, 255, 106, 200, 106}, Bytes{20, 101, 1, 61, 100, 61},
                             Bytes{250, 33, 2, 141, 33, 141}}));
}

void hue(Workspace &w) { call(xHue, w.bounds(), w.real(-720, 720), w.real(0, 2), w.real(0, 2), w.buffers()); }

template <auto Export> void on_three_planes(Workspace &w) { call(Export, w.width, w.height, w.buffers()); }

// Three planes and those they are mapped to.
std::array<std::array<uint8_t *, 3>, 2> three_to_three(Workspace &w) {
    const auto src = w.buffers();
    return {src, w.results_of(src)};
}

template <std::size_t n> std::array<int32_t, n> tones(Workspace &w) {
    std::array<int32_t, n> all;
    for (int32_t &tone : all) tone = w.integer(0, 255);
    return all;
}

void trim(Workspace &w) {
    const auto columns = static_cast<std::size_t>(w.width);
    const auto rows = static_cast<std::size_t>(w.height);
    // The last row of the sources is not read, nor the last sample before it.
    const std::size_t read = rows < 2 || columns < 2 ? 0 : columns * (rows - 1) - 1;
    call(colortograyscale_trim, w.size(), w.buffers(read), w.result<float>((columns - 1) * (rows - 1)));
}

template <auto Export, int32_t less> void matrix(Workspace &w) {
    call(Export, w.width - less, w.height - less, three_to_three(w), w.floats(16, -1, 1.5F));
}

template <auto Export> void turn_hue(Workspace &w) {
    call(Export, w.size(), w.real(-400, 400), w.real(0, 2), w.real(0, 2), three_to_three(w));
}

template <auto Export> void grey(Workspace &w) {
    const auto src = w.buffers();
    call(Export, w.size(), src, w.result_of(src[1]));
}

void key(Workspace &w) {
    const auto src = w.buffers();
    call(xKeyToAlpha, w.size(), w.integer(0, 255), w.integer(0, 255), w.integer(0, 255), w.real(0, 60), w.real(0, 200),
         src, w.result_of(src[2]));
}

const BulkCase cases[] = {
    {"xHue", hue},
    {"xDayForNight", on_three_planes<xDayForNight>},
    {"xFogFilter", on_three_planes<xFogFilter>},
    {"xSepia",
     [](Workspace &w) { call(xSepia, w.size(), w.real(-1, 2), w.real(-1, 2), w.real(-1, 2), three_to_three(w)); },
     true},
    {"xDuotone", [](Workspace &w) { call(xDuotone, w.width, w.height, tones<6>(w), three_to_three(w)); }, true},
    {"colortograyscale_trim", trim},
    {"xColorMatrix", matrix<xColorMatrix, 1>, true},
    {"xColorMatrix_ppl", matrix<xColorMatrix_ppl, 0>, true},
    {"xFastHSV", turn_hue<xFastHSV>, true},
    {"FastHSV_ppl", turn_hue<FastHSV_ppl>, true},
    {"xTritone", [](Workspace &w) { call(xTritone, w.width, w.height, tones<9>(w), three_to_three(w)); }, true},
    {"xColorToGrayscale", grey<xColorToGrayscale>, true},
    {"xColorToGrayChannel", grey<xColorToGrayChannel>, true},
    {"xKeyToAlpha", key, true},
};

const BulkFamily family("Colour", cases);

} // namespace
