#include "tavik/colour/colour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

using Bytes = std::vector<uint8_t>;
using Colour = std::array<int, 3>;
using Unit = std::array<float, 3>;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

// Three planes of as many pixels.
struct Planes {
    Bytes r, g, b;

    explicit Planes(std::size_t count, uint8_t value = 99) : r(count, value), g(count, value), b(count, value) {}
    explicit Planes(const std::vector<Colour> &colours) : Planes(colours.size()) {
        for (std::size_t i = 0; i < colours.size(); ++i) {
            r[i] = static_cast<uint8_t>(colours[i][0]);
            g[i] = static_cast<uint8_t>(colours[i][1]);
            b[i] = static_cast<uint8_t>(colours[i][2]);
        }
    }
    Colour operator[](std::size_t i) const { return {r[i], g[i], b[i]}; }
    int32_t count() const { return static_cast<int32_t>(r.size()); }
};

// Colours all over the cube, its corners and greys among them.
std::vector<Colour> many_colours() {
    std::vector<Colour> colours;
    for (int r = 0; r <= 255; r += 15)
        for (int g = 0; g <= 255; g += 15)
            for (int b = 0; b <= 255; b += 17) colours.push_back({r, g, b});
    return colours;
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
        RGB_To_HSV(rgb[0], rgb[1], rgb[2], &actual[0], &actual[1], &actual[2]);
        EXPECT_EQ(actual, hsv) << rgb[0] << ' ' << rgb[1] << ' ' << rgb[2];
    }
    Unit kept = {-2, 99, 99};
    RGB_To_HSV(nan, nan, nan, &kept[0], &kept[1], &kept[2]);
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
        {{nan, 1, 1}, kept},
        {{1e30F, 1, 1}, kept},
        {{-59, 0, 0.5F}, {0.5F, 0.5F, 0.5F}},
    };
    for (const auto &[hsv, rgb] : cases) {
        Unit actual = {-1, 0.25F, 7};
        HSV_To_RGB(&actual[0], &actual[1], &actual[2], hsv[0], hsv[1], hsv[2]);
        for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(actual[i], rgb[i], 1e-6F) << "hue " << hsv[0];
    }
}

TEST(Colour, SaturateClampsEachValue) {
    std::array<int32_t, 3> values = {-5, 300, 17};
    Saturate(&values[0], &values[1], &values[2]);
    EXPECT_EQ(values, (std::array<int32_t, 3>{0, 255, 17}));
}

// The conversions of single colours, around the turn by whole degrees.
Colour turned(const Colour &colour, float shift, float saturation_scale, float value_scale) {
    Unit unit;
    for (std::size_t i = 0; i < 3; ++i) unit[i] = static_cast<float>(colour[i]) * 0.003921569F;
    Unit hsv;
    RGB_To_HSV(unit[0], unit[1], unit[2], &hsv[0], &hsv[1], &hsv[2]);
    const float sum = hsv[0] + shift;
    // Out of the range of integers the conversion gives −2^31.
    const double whole = std::fabs(sum) < 0x1p31F ? std::trunc(double{sum}) : -0x1p31;
    const double degrees = whole - 360.0 * std::floor(whole / 360.0);
    Unit rgb;
    HSV_To_RGB(&rgb[0], &rgb[1], &rgb[2], static_cast<float>(degrees), hsv[1] * saturation_scale, hsv[2] * value_scale);
    Colour result;
    for (std::size_t i = 0; i < 3; ++i) result[i] = static_cast<int>(rgb[i] * 255.0F);
    return result;
}

TEST(Colour, HueTurnsByWholeDegrees) {
    const std::vector<Colour> colours = many_colours();
    for (const auto &[shift, saturation, value] :
         {Unit{0, 1, 1}, Unit{-30, 1, 1}, Unit{-0.75F, 0.5F, 1}, Unit{200.5F, 1.5F, 1.25F}, Unit{-1000, 1, -1},
          Unit{999999.5F, 1, 1}, Unit{-999999.5F, 1, 1}, Unit{123456792.0F, 1, 1}, Unit{-5e9F, 1, 1},
          Unit{nan, 1, 0.5F}}) {
        Planes planes(colours);
        xHue(planes.count() - 1, 0, shift, saturation, value, planes.r.data(), planes.g.data(), planes.b.data());
        for (std::size_t i = 0; i < colours.size(); ++i)
            ASSERT_EQ(planes[i], turned(colours[i], shift, saturation, value))
                << shift << ": " << colours[i][0] << ' ' << colours[i][1] << ' ' << colours[i][2];
    }
    Planes red(std::vector<Colour>(70, {255, 0, 0}));
    xHue(6, 9, -30, 1, 1, red.r.data(), red.g.data(), red.b.data());
    EXPECT_EQ(red[69], (Colour{255, 0, 127}));
    Planes grey(std::vector<Colour>(70, {77, 77, 77}));
    xHue(69, 0, 0, 1, 1, grey.r.data(), grey.g.data(), grey.b.data());
    EXPECT_EQ(grey[69], (Colour{77, 77, 77}));
    Planes endless(std::vector<Colour>(70, {255, 10, 0}));
    xHue(69, 0, 10, std::numeric_limits<float>::infinity(), 0, endless.r.data(), endless.g.data(), endless.b.data());
    EXPECT_EQ(endless[0], (Colour{0, 0, 0})); // 0 × infinity is no number, which becomes 0.
    EXPECT_EQ(endless[69], endless[0]);
}

// The truncation of an exact value, or of what rounding may have made of it.
void expect_truncated(int actual, double exact) {
    EXPECT_GE(actual, static_cast<int>(exact - 1e-3)) << exact;
    EXPECT_LE(actual, static_cast<int>(exact + 1e-3)) << exact;
}

TEST(Colour, NightAndFogAreGradedFromTopToBottom) {
    const std::vector<Colour> colours = many_colours();
    const auto width = static_cast<std::size_t>(colours.size());
    constexpr int32_t height = 7;
    std::vector<Colour> rows;
    for (int32_t y = 0; y < height; ++y) rows.insert(rows.end(), colours.begin(), colours.end());
    Planes night(rows);
    Planes fog(rows);
    const auto columns = static_cast<int32_t>(width);
    xDayForNight(columns, height, night.r.data(), night.g.data(), night.b.data());
    xFogFilter(columns, height, fog.r.data(), fog.g.data(), fog.b.data());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const double down = static_cast<double>(i / width) / height;
        const auto [r, g, b] = std::array<double, 3>{double(rows[i][0]), double(rows[i][1]), double(rows[i][2])};
        const double shared = (0.3 * g + 0.2 * r + 0.5 * b) / 2;
        expect_truncated(night.r[i], (r / 2 + shared) * (0.5 + 0.1 * down));
        expect_truncated(night.g[i], (g / 2 + shared) * (0.62 + 0.14 * down));
        expect_truncated(night.b[i], (b / 2 + shared) * (0.7 + 0.14 * down));
        const double mean = (r + g + b) / 3;
        const double mist = std::min(32 * down + mean * (2 - down), 255.0);
        expect_truncated(fog.r[i], mist * 0.76 * down + r * (1 - down));
        expect_truncated(fog.g[i], mist * 0.8 * down + g * (1 - down));
        expect_truncated(fog.b[i], mist * down + b * (1 - down));
        if (i < width) {
            ASSERT_EQ(fog[i], rows[i]);
        }
    }
    const Planes white(std::vector<Colour>(1, {255, 255, 255}));
    Planes top = white;
    xDayForNight(1, 1, top.r.data(), top.g.data(), top.b.data());
    EXPECT_EQ(top[0], (Colour{127, 158, 178}));
    Planes black(1000, 0);
    xFogFilter(1, 1000, black.r.data(), black.g.data(), black.b.data());
    EXPECT_EQ(black[999], (Colour{24, 25, 31}));
}

TEST(Colour, SepiaFadesThenTints) {
    const std::vector<Colour> colours = many_colours();
    const Planes src(colours);
    for (const auto &[lift, desaturate, tint] : {Unit{0.1F, 0.7F, 0.9F}, Unit{0.5F, 1, 1}, Unit{0, 0.25F, 0.5F}}) {
        Planes dst(colours.size());
        xSepia(src.count(), 1, lift, desaturate, tint, src.r.data(), src.g.data(), src.b.data(), dst.r.data(),
               dst.g.data(), dst.b.data());
        const double contrast = 1 - 2.0 * lift;
        const double saturation = 1 - 1.0 * desaturate;
        const double least = 255.0 * lift;
        for (std::size_t i = 0; i < colours.size(); ++i) {
            const auto &[r, g, b] = colours[i];
            const double grey = 0.299 * r + 0.587 * g + 0.114 * b;
            const auto faded = [=](int c) { return contrast * (grey + (c - grey) * saturation) + least; };
            expect_truncated(dst.r[i], faded(r));
            expect_truncated(dst.g[i], faded(g) * (1 - 0.1 * tint));
            expect_truncated(dst.b[i], faded(b) * (1 - 0.33 * tint));
        }
    }
    struct Case {
        Unit parameters;
        Colour from;
        Colour to;
    };
    const Case cases[] = {
        {{0, 0, 0}, {12, 200, 255}, {12, 200, 255}}, {{0, 1, 1}, {255, 255, 255}, {255, 229, 170}},
        {{2, 0, 0}, {0, 0, 100}, {254, 254, 210}}, // 510 and −300 + 510 keep their low bytes.
        {{0, 2, 0}, {200, 0, 0}, {176, 119, 119}}, // −80.4 truncates to −80.
        {{nan, 0, 0}, {9, 9, 9}, {0, 0, 0}},
    };
    for (const Case &c : cases) {
        const Planes from(std::vector<Colour>(65, c.from));
        Planes to(65);
        xSepia(13, 5, c.parameters[0], c.parameters[1], c.parameters[2], from.r.data(), from.g.data(), from.b.data(),
               to.r.data(), to.g.data(), to.b.data());
        EXPECT_EQ(to[0], c.to);
        EXPECT_EQ(to[64], c.to);
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
    const Planes src(colours);
    struct Case {
        Colour light;
        Colour dark;
    };
    for (const auto &[light, dark] : {Case{{255, 200, 100}, {0, 0, 50}}, Case{{0, 255, 255}, {255, 255, 254}},
                                      Case{{17, 3, 1}, {200, 128, 0}}, Case{{300, -40, 255}, {0, 1000, -256}}}) {
        Planes dst(colours.size());
        xDuotone(src.count(), 1, light[0], light[1], light[2], dark[0], dark[1], dark[2], src.r.data(), src.g.data(),
                 src.b.data(), dst.r.data(), dst.g.data(), dst.b.data());
        for (int sum = 0; sum <= 765; ++sum) {
            Colour expected;
            for (std::size_t c = 0; c < 3; ++c) {
                const int mean = sum / 3;
                expected[c] = (light[c] * mean + dark[c] * (255 - mean)) / 255 & 255;
            }
            ASSERT_EQ(dst[static_cast<std::size_t>(sum)], expected) << sum;
        }
    }
}

TEST(Colour, GreyPlaneIsTrimmed) {
    const Planes src(std::vector<Colour>{{10, 20, 31}, {255, 255, 255}, {1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {4, 4, 4}});
    const auto trimmed = [&](int32_t width, int32_t height) {
        std::vector<float> dst(6, -1.0F);
        colortograyscale_trim(width, height, src.r.data(), src.g.data(), src.b.data(), dst.data());
        return dst;
    };
    EXPECT_EQ(trimmed(3, 2), (std::vector<float>{20, 255, -1, -1, -1, -1}));
    EXPECT_EQ(trimmed(2, 3), (std::vector<float>{20, 1, -1, -1, -1, -1}));
    for (const auto &[width, height] : {std::array{1, 6}, {6, 1}, {0, 5}, {-2, -3}})
        EXPECT_EQ(trimmed(width, height), std::vector<float>(6, -1.0F)) << width << ' ' << height;
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
        {{-1, 1, 0, 0, 0, -2, 0, 0, 0, 0, nan, 0, 0, 0, 0, 0}, {100, 49, 1}, {0, 2, 255}},
        // Blue and green cancel before the rest is added.
        {{3, 3, 3, 0, huge, huge, huge, 0, -huge, -huge, -huge, 0, 7, 7, 7, 0}, {1, 1, 1}, {10, 10, 10}},
        // The constant swallows what is added before red takes it away.
        {{-huge, -huge, -huge, 0, 1, 1, 1, 0, 1, 1, 1, 0, huge, huge, huge, 0}, {1, 1, 1}, {0, 0, 0}},
    };
    for (const Case &c : cases) {
        const Planes from(std::vector<Colour>(66, c.from));
        Planes serial(66);
        Planes parallel(66);
        xColorMatrix(10, 5, from.r.data(), from.g.data(), from.b.data(), serial.r.data(), serial.g.data(),
                     serial.b.data(), c.matrix.data());
        xColorMatrix_ppl(11, 6, from.r.data(), from.g.data(), from.b.data(), parallel.r.data(), parallel.g.data(),
                         parallel.b.data(), c.matrix.data());
        for (const std::size_t i : {std::size_t{0}, std::size_t{65}}) {
            EXPECT_EQ(serial[i], c.to) << c.from[0] << ' ' << c.matrix[0];
            EXPECT_EQ(parallel[i], c.to) << c.from[0] << ' ' << c.matrix[0];
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
        {"xHue", [](Planes &p, int32_t a, int32_t b) { xHue(a, b, 0, 1, 0, p.r.data(), p.g.data(), p.b.data()); },
         bounds},
        {"xDayForNight",
         [](Planes &p, int32_t a, int32_t b) { xDayForNight(a, b, p.r.data(), p.g.data(), p.b.data()); }, counts},
        {"xSepia",
         [](Planes &p, int32_t a, int32_t b) {
             xSepia(a, b, 0.25F, 0, 1, p.r.data(), p.g.data(), p.b.data(), p.r.data(), p.g.data(), p.b.data());
         },
         counts},
        {"xDuotone",
         [](Planes &p, int32_t a, int32_t b) {
             xDuotone(a, b, 0, 0, 0, 1, 2, 3, p.r.data(), p.g.data(), p.b.data(), p.r.data(), p.g.data(), p.b.data());
         },
         counts},
        {"xColorMatrix",
         [](Planes &p, int32_t a, int32_t b) {
             xColorMatrix(a, b, p.r.data(), p.g.data(), p.b.data(), p.r.data(), p.g.data(), p.b.data(), none.data());
         },
         bounds},
        {"xColorMatrix_ppl",
         [](Planes &p, int32_t a, int32_t b) {
             xColorMatrix_ppl(a, b, p.r.data(), p.g.data(), p.b.data(), p.r.data(), p.g.data(), p.b.data(),
                              none.data());
         },
         counts},
    };
    for (const Extent &extent : extents) {
        for (const auto &[a, b, elements] : extent.a_b_and_elements) {
            Planes planes(64, 99);
            extent.change(planes, a, b);
            for (const Bytes &plane : {planes.r, planes.g, planes.b}) {
                const auto kept = std::find(plane.begin(), plane.end(), 99);
                EXPECT_EQ(kept - plane.begin(), elements) << extent.name << ' ' << a << ' ' << b;
                EXPECT_EQ(std::count(kept, plane.end(), 99), plane.end() - kept) << extent.name << ' ' << a << ' ' << b;
            }
        }
    }
    // Empty sizes read no matrix.
    xColorMatrix(-1, 5, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    xColorMatrix_ppl(0, 5, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    Planes fog(64, 99);
    xFogFilter(4, 2, fog.r.data(), fog.g.data(), fog.b.data());
    EXPECT_EQ(std::count(fog.r.begin(), fog.r.end(), 99), 60); // The top row, and what lies below the picture.
}

// A serial export over planes that overlap partly sees what its earlier elements wrote.
TEST(Colour, SerialExportsRunInIncreasingOrder) {
    Bytes plane(300, 0);
    const Matrix add_one = {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0};
    Planes other(250, 0);
    xColorMatrix(249, 0, plane.data(), other.g.data(), other.b.data(), plane.data() + 1, other.g.data(), other.b.data(),
                 add_one.data());
    for (std::size_t i = 0; i <= 250; ++i) ASSERT_EQ(plane[i], i) << i;
}

// Runs an export from three planes to three over the colours.
template <class Call> Planes mapped(const std::vector<Colour> &colours, const Call &call) {
    const Planes src(colours);
    Planes dst(colours.size());
    call(src, dst);
    return dst;
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
                          {0, 1, nan, {}, {100, 50, 30}, {255, 255, 255}}}) {
        const Planes dst = mapped({c.from}, [&](const Planes &src, Planes &to) {
            FastHSVandRGB(1, 1, c.hue, c.saturation, c.value, c.add[0], c.add[1], c.add[2], src.r.data(), src.g.data(),
                          src.b.data(), to.r.data(), to.g.data(), to.b.data());
        });
        EXPECT_EQ(dst[0], c.to);
    }

    // The three forms of it are one.
    const std::vector<Colour> colours = many_colours();
    const auto by = [&](auto turn, auto... add) {
        return mapped(colours, [&](const Planes &src, Planes &to) {
            turn(src.count(), 1, 33, 1.4F, 0.9F, add..., src.r.data(), src.g.data(), src.b.data(), to.r.data(),
                 to.g.data(), to.b.data());
        });
    };
    const Planes serial = by(xFastHSV);
    for (const Planes &other : {by(FastHSV_ppl), by(FastHSVandRGB, 0.0F, 0.0F, 0.0F)}) {
        EXPECT_EQ(other.r, serial.r);
        EXPECT_EQ(other.g, serial.g);
        EXPECT_EQ(other.b, serial.b);
    }
}

TEST(Colour, GreysTonesAndKeys) {
    const Planes src({{255, 255, 255},
                      {100, 50, 30},
                      {255, 0, 0},
                      {0, 0, 255},
                      {0, 255, 0},
                      {10, 240, 10},
                      {0, 128, 0},
                      {90, 90, 90}});
    Bytes dst(8);
    xColorToGrayscale(4, 2, src.r.data(), src.g.data(), src.b.data(), dst.data());
    EXPECT_EQ(dst, (Bytes{255, 63, 77, 29, 149, 145, 75, 90}));
    Bytes channel(8);
    xColorToGrayChannel(4, 2, src.r.data(), src.g.data(), src.b.data(), channel.data());
    EXPECT_EQ(channel, dst);

    xKeyToAlpha(4, 2, 0, 255, 0, 20, 60, src.r.data(), src.g.data(), src.b.data(), dst.data());
    EXPECT_EQ(dst, (Bytes{255, 255, 255, 255, 0, 0, 255, 255}));
    xKeyToAlpha(4, 2, 0, 128, 0, 60, 100, src.r.data(), src.g.data(), src.b.data(), dst.data());
    EXPECT_EQ(dst[4], 50); // (67.80 − 60) / 40 of 255
    xKeyToAlpha(4, 2, 0, 255, 0, 14, 14, src.r.data(), src.g.data(), src.b.data(), dst.data()); // 13.35 away
    EXPECT_EQ(dst[5], 0);
    xKeyToAlpha(4, 2, 0, 255, 0, 13, 13, src.r.data(), src.g.data(), src.b.data(), dst.data());
    EXPECT_EQ(dst[5], 255);

    const Planes tones =
        mapped({{0, 0, 0}, {127, 127, 127}, {255, 255, 255}, {64, 64, 64}, {128, 128, 128}, {63, 64, 66}},
               [](const Planes &from, Planes &to) {
                   xTritone(6, 1, 255, 1, 2, 200, 101, 33, 10, 20, 250, from.r.data(), from.g.data(), from.b.data(),
                            to.r.data(), to.g.data(), to.b.data());
               });
    EXPECT_EQ(tones[0], (Colour{10, 20, 250}));
    EXPECT_EQ(tones[1], (Colour{200, 101, 33}));
    EXPECT_EQ(tones[2], (Colour{255, 1, 2}));
    EXPECT_EQ(tones[3], (Colour{106, 61, 141}));
    EXPECT_EQ(tones[4][0], 200);
    EXPECT_EQ(tones[5], tones[3]);
}

void hue(Workspace &w) {
    uint8_t *planes[3] = {w.buffer(w.count()), w.buffer(w.count()), w.buffer(w.count())};
    xHue(w.width - 1, w.height - 1, w.real(-720, 720), w.real(0, 2), w.real(0, 2), planes[0], planes[1], planes[2]);
}

template <auto Export> void on_three_planes(Workspace &w) {
    Export(w.width, w.height, w.buffer(w.count()), w.buffer(w.count()), w.buffer(w.count()));
}

// Calls from(src[3], dst[3]).
template <class Call> void from_three_to_three(Workspace &w, const Call &call) {
    const std::size_t n = w.count();
    uint8_t *src[3] = {w.buffer(n), w.buffer(n), w.buffer(n)};
    uint8_t *dst[3] = {w.result_of(src[0], n), w.result_of(src[1], n), w.result_of(src[2], n)};
    call(src, dst);
}

void sepia(Workspace &w) {
    from_three_to_three(w, [&](auto &src, auto &dst) {
        xSepia(w.width, w.height, w.real(-1, 2), w.real(-1, 2), w.real(-1, 2), src[0], src[1], src[2], dst[0], dst[1],
               dst[2]);
    });
}

void duotone(Workspace &w) {
    from_three_to_three(w, [&](auto &src, auto &dst) {
        const auto tone = [&] { return w.integer(0, 255); };
        xDuotone(w.width, w.height, tone(), tone(), tone(), tone(), tone(), tone(), src[0], src[1], src[2], dst[0],
                 dst[1], dst[2]);
    });
}

void trim(Workspace &w) {
    const auto columns = static_cast<std::size_t>(w.width);
    const auto rows = static_cast<std::size_t>(w.height);
    // The last row of the sources is not read, nor the last sample before it.
    const std::size_t read = rows < 2 || columns < 2 ? 0 : columns * (rows - 1) - 1;
    uint8_t *src[3] = {w.buffer(read), w.buffer(read), w.buffer(read)};
    colortograyscale_trim(w.width, w.height, src[0], src[1], src[2], w.result<float>((columns - 1) * (rows - 1)));
}

template <auto Export, int32_t less> void matrix(Workspace &w) {
    from_three_to_three(w, [&](auto &src, auto &dst) {
        Export(w.width - less, w.height - less, src[0], src[1], src[2], dst[0], dst[1], dst[2], w.floats(16, -1, 1.5F));
    });
}

template <auto Export> void turn_hue(Workspace &w) {
    from_three_to_three(w, [&](auto &src, auto &dst) {
        Export(w.width, w.height, w.real(-400, 400), w.real(0, 2), w.real(0, 2), src[0], src[1], src[2], dst[0], dst[1],
               dst[2]);
    });
}

void tritone(Workspace &w) {
    from_three_to_three(w, [&](auto &src, auto &dst) {
        const auto tone = [&] { return w.integer(0, 255); };
        xTritone(w.width, w.height, tone(), tone(), tone(), tone(), tone(), tone(), tone(), tone(), tone(), src[0],
                 src[1], src[2], dst[0], dst[1], dst[2]);
    });
}

template <auto Export> void grey(Workspace &w) {
    uint8_t *src[3] = {w.buffer(w.count()), w.buffer(w.count()), w.buffer(w.count())};
    Export(w.width, w.height, src[0], src[1], src[2], w.result_of(src[1], w.count()));
}

void key(Workspace &w) {
    uint8_t *src[3] = {w.buffer(w.count()), w.buffer(w.count()), w.buffer(w.count())};
    xKeyToAlpha(w.width, w.height, w.integer(0, 255), w.integer(0, 255), w.integer(0, 255), w.real(0, 60),
                w.real(0, 200), src[0], src[1], src[2], w.result_of(src[2], w.count()));
}

const BulkCase cases[] = {
    {"xHue", hue},
    {"xDayForNight", on_three_planes<xDayForNight>},
    {"xFogFilter", on_three_planes<xFogFilter>},
    {"xSepia", sepia, true},
    {"xDuotone", duotone, true},
    {"colortograyscale_trim", trim},
    {"xColorMatrix", matrix<xColorMatrix, 1>, true},
    {"xColorMatrix_ppl", matrix<xColorMatrix_ppl, 0>, true},
    {"xFastHSV", turn_hue<xFastHSV>, true},
    {"FastHSV_ppl", turn_hue<FastHSV_ppl>, true},
    {"xTritone", tritone, true},
    {"xColorToGrayscale", grey<xColorToGrayscale>, true},
    {"xColorToGrayChannel", grey<xColorToGrayChannel>, true},
    {"xKeyToAlpha", key, true},
};

const BulkFamily family("Colour", cases);

} // namespace
