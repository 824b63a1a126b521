// Blits, previews, onion skins and accumulation.
#include "tavik/composite/composite.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

Bytes letters(const std::string &text) { return {text.begin(), text.end()}; }

TEST(Composite, MatteCoversWhereTheMaskIsSet) {
    struct Case {
        int32_t count, x0, x_limit, mask_offset, row_offset;
        std::array<int32_t, 4> red_green_blue_opacity;
        Bytes row;
    };
    const Bytes mask = {0, 255, 128, 1, 255};
    const Case cases[] = {
        // Mask 255 and opacity 256 leave nothing of the row; 128 of 255 gives a = 127.
        {5, 0, 5, 0, 1, {10, 20, 30, 256}, {99, 99, 99, 99, 29, 19, 9, 64, 59, 54, 98, 98, 98, 29, 19, 9, 99}},
        // Opacity 0 darkens all the same: 99 × 255 / 256.
        {5, 0, 5, 0, 1, {10, 20, 30, 0}, {99, 99, 99, 99, 98, 98, 98, 98, 98, 98, 98, 98, 98, 98, 98, 98, 99}},
        // Columns −1 and 0 .. 1 of a limit of 2.
        {4, -1, 2, 1, 0, {0, 0, 0, 256}, {99, 99, 99, 49, 49, 49, 98, 98, 98, 99, 99, 99, 99, 99, 99, 99, 99}},
        // What lies before the limit is drawn, and positions count from x0.
        {3, 3, 4, 4, 14, {256, 257, 511, 255}, {99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 251, 255, 254}},
        // Beyond the usual ranges the low byte stays: a = −255, (99 × 510 − 255 × 256) >> 8.
        {1,
         0,
         1,
         4,
         0,
         {256, -1, 65536, -256},
         {197, 198, 198, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99}},
        {0, 0, 5, 1, 0, {0, 0, 0, 255}, Bytes(17, 99)},
        {-2, 0, 5, 1, 0, {0, 0, 0, 255}, Bytes(17, 99)},
        {4, 0, 0, 1, 0, {0, 0, 0, 255}, Bytes(17, 99)},
        {4, lowest, 5, 1, 0, {0, 0, 0, 255}, Bytes(17, 99)},
        {highest, 5, 5, 1, 0, {0, 0, 0, 255}, Bytes(17, 99)},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(&c - cases);
        Bytes row(17, 99);
        const auto &[red, green, blue, opacity] = c.red_green_blue_opacity;
        Matte_preview_helper(row.data(), mask.data(), c.count, c.x0, c.x_limit, c.mask_offset, red, green, blue,
                             c.row_offset, opacity);
        EXPECT_EQ(row, c.row);
    }
}

TEST(Composite, MatteOfEveryMaskAndSample) {
    Bytes samples(3 * 65536);
    Bytes mask(65536);
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<uint8_t>(i / 3);
    for (std::size_t i = 0; i < mask.size(); ++i) mask[i] = static_cast<uint8_t>(i >> 8);
    uint32_t results = 0;
    // Where products wrap around at 32 bits, too.
    for (const int32_t opacity : {0, 1, 100, 255, 256, 777, -300, 123456789, highest, lowest}) {
        for (const int32_t colour : {0, 200, 255, -7, 300, 70000}) {
            Bytes row = samples;
            Matte_preview_helper(row.data(), mask.data(), 65536, 0, 65536, 0, colour, colour, colour, 0, opacity);
            EXPECT_TRUE(std::equal(row.begin(), row.begin() + 3 * 256, samples.begin())) << "without a mask";
            results = folded(row, results);
        }
    }
    EXPECT_EQ(results, 0xA036F764U);
}

TEST(Composite, OverlayWritesTheMiddleBytes) {
    const Bytes a = {9, 255, 100, 200, 7};
    const Bytes b = {9, 255, 128, 0, 7};
    const auto overlaid = [&](int32_t offset, int32_t first, int32_t last, int32_t invert) {
        Bytes row(12, 99);
        alpha_overlay_helper(offset, 12345, first, last, a.data(), b.data(), row.data(), invert);
        return row;
    };
    EXPECT_EQ(overlaid(1, 1, 3, 0), (Bytes{99, 99, 254, 99, 99, 50, 99, 99, 0, 99, 99, 99}));
    EXPECT_EQ(overlaid(0, 1, 3, 1), (Bytes{99, 0, 99, 99, 49, 99, 99, 199, 99, 99, 99, 99}));
    EXPECT_EQ(overlaid(0, 3, 3, -1), (Bytes{99, 199, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99}));
    EXPECT_EQ(overlaid(0, 3, 2, 0), Bytes(12, 99));
    EXPECT_EQ(overlaid(0, highest, lowest, 0), Bytes(12, 99));
}

// Eighteen planes of images, each of one sample, and three of results.
TEST(Composite, SkinsAddSixWeightedFramesInOrder) {
    struct Case {
        std::array<float, 6> weights;
        Bytes tinted, untinted;
    };
    for (const Case &c : {Case{{1, 0, 0, 0, 0, 0}, {85, 18, 31}, {5, 18, 31}},
                          {{0, 1, 0, 0, 0, 0}, {124, 57, 70}, {44, 57, 70}},
                          {{0, 0, 1, 0, 0, 0}, {163, 96, 109}, {83, 96, 109}},
                          {{0, 0, 0, 1, 0, 0}, {122, 135, 228}, {122, 135, 148}},
                          {{0, 0, 0, 0, 1, 0}, {161, 174, 255}, {161, 174, 187}},
                          {{0, 0, 0, 0, 0, 1}, {200, 213, 255}, {200, 213, 226}},
                          {{0.1F, 0.15F, 0.25F, 0.2F, 0.17F, 0.13F}, {145, 118, 162}, {105, 118, 131}},
                          {{0, 0, 0, 0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
                          {{1, 1, 1, 1, 1, 1}, {87, 181, 180}, {103, 181, 3}},
                          {{-1, 0.5F, 0, 0.3F, 0, 0.01F}, {15, 53, 74}, {55, 53, 50}},
                          {{1e6F, -1e6F, 0.7F, 0, 0, 1}, {124, 88, 140}, {68, 88, 112}},
                          {{1e30F, 0, 0, 0, 0, 0}, {0, 0, 0}, {0, 0, 0}}}) {
        std::array<Bytes, 21> planes;
        for (std::size_t plane = 0; plane < 21; ++plane)
            planes[plane] = Bytes(66, static_cast<uint8_t>(plane < 18 ? 13 * plane + 5 : 99));
        const auto added = [&](auto skin, int32_t width, int32_t height) {
            call(skin, width, height, c.weights, planes);
            for (std::size_t plane = 18; plane < 21; ++plane) {
                EXPECT_EQ(planes[plane][64], planes[plane][0]);
                EXPECT_EQ(planes[plane][65], 99) << "beyond the 13 × 5";
            }
            return Bytes{planes[18][0], planes[19][0], planes[20][0]};
        };
        EXPECT_EQ(added(UnionSkin, 13, 5), c.tinted) << c.weights[0];
        for (const auto &[width, height] : {std::array{0, 9}, {9, -1}, {65536, 65536}})
            EXPECT_EQ(added(UnionSkin_untinted, width, height), c.tinted);
        EXPECT_EQ(added(UnionSkin_untinted, 13, 5), c.untinted);
    }
}

TEST(Composite, SwapMovesTheBlockAtTheStartAndClipsItAtTheEnd) {
    struct Case {
        std::array<int32_t, 4> x_y_width_height;
        std::string plane;
        std::string block;
    };
    const Case cases[] = {
        {{1, 1, 2, 2}, "abcdeABhiCDl", "fgjkEFGH"},  {{-5, -9, 2, 2}, "ABcdCDghijkl", "abefEFGH"},
        {{3, 2, 2, 2}, "abcdefghijkA", "lBCDEFGH"},  {{2, -1, 4, 2}, "abABefEFijkl", "cdCDghGH"},
        {{0, 1, 1, 8}, "abcdAfghBjkl", "eiCDEFGH"},  {{4, 0, 2, 2}, "abcdefghijkl", "ABCDEFGH"},
        {{0, 3, 2, 2}, "abcdefghijkl", "ABCDEFGH"},  {{0, 0, 2, 0}, "abcdefghijkl", "ABCDEFGH"},
        {{0, 0, -2, 2}, "abcdefghijkl", "ABCDEFGH"}, {{highest, highest, 2, 2}, "abcdefghijkl", "ABCDEFGH"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(&c - cases);
        const Bytes plane_before = letters("abcdefghijkl");
        const Bytes block_before = letters("ABCDEFGH");
        Bytes plane = plane_before;
        Bytes block = block_before;
        const auto &[x, y, width, height] = c.x_y_width_height;
        xSwapBlit(4, 3, x, y, width, height, plane.data(), block.data());
        EXPECT_EQ(plane, letters(c.plane));
        EXPECT_EQ(block, letters(c.block));
        xSwapBlit(4, 3, x, y, width, height, plane.data(), block.data());
        EXPECT_EQ(plane, plane_before);
        EXPECT_EQ(block, block_before);
    }
}

TEST(Composite, FixedAspectDrawsInsideItsFrame) {
    struct Case {
        std::array<int32_t, 4> width_height_x_y;
        float scale;
        std::string drawn;
    };
    const Case cases[] = {
        {{6, 4, 0, 0}, 1, "abc---efg---------######"},
        {{6, 4, 2, 1}, 1, "--------abc---efg-######"},
        // Up to one step left of and above the offset the first samples show.
        {{10, 8, 3, 2},
         2,
         "----------"
         "--aaabbcc-"
         "--aaabbcc-"
         "--aaabbcc-"
         "--eeeffgg-"
         "--eeeffgg-"
         "----------"
         "##########"},
        {{4, 3, 0, 0}, 0.5F, "ac------####"},
        {{5, 3, 3, 1}, -1, "-gfe--cba-#####"},
        {{3, 3, -1, -1}, 1, "fg----###"},
        {{3, 3, 0, 0}, 0, "------###"},
        {{3, 3, 1, 1}, infinity, "aaaaaa###"},
        {{3, 3, 1, 1}, no_number, "------###"},
        {{3, 1, 0, 0}, 1, "###"},
        {{3, 0, 0, 0}, 1, ""},
        {{-3, 5, 0, 0}, 1, "####"},
        {{4, lowest, 0, 0}, 1, "####"},
    };
    const Bytes src = letters("abcdefghijkl");
    for (const Case &c : cases) {
        SCOPED_TRACE(&c - cases);
        Planes sources;
        Planes results = planes_of(c.drawn.size(), '#');
        Planes expected;
        // Lower case, upper case and signs.
        for (int channel = 0; channel < 3; ++channel) {
            const auto k = static_cast<std::size_t>(channel);
            for (const uint8_t sample : src) sources[k].push_back(static_cast<uint8_t>(sample - 32 * channel));
            for (const char sample : c.drawn)
                expected[k].push_back(
                    static_cast<uint8_t>(sample == '-' ? "-+*"[channel] : sample - (sample >= 'a' ? 32 * channel : 0)));
        }
        const auto &[width, height, x, y] = c.width_height_x_y;
        call(FixedAspectBlit, 4, 3, width, height, x, y, c.scale, '-', 256 + '+', '*' - 512, results, sources);
        EXPECT_EQ(results, expected);
    }
}

// White under a whole mask, faded over the checkerboard.
struct Fade {
    int32_t width, height;
    Planes results;

    Fade(int32_t image_width, int32_t image_height, std::array<int32_t, 4> points, uint8_t mask = 255,
         uint8_t sample = 255)
        : width(image_width), height(image_height) {
        const auto count = static_cast<std::size_t>(width * height);
        results.fill(Bytes(count, 99));
        const Bytes src(count, sample);
        const Bytes masks(count, mask);
        call(xLinearAlphaFadePreview, width, height, points, src.data(), src.data(), src.data(), masks, results);
        EXPECT_EQ(results[1], results[0]);
        EXPECT_EQ(results[2], results[0]);
    }
    int at(int32_t x, int32_t y) const { return results[0][static_cast<std::size_t>(y * width + x)]; }
};

TEST(Composite, CheckerboardShowsWhereTheMaskIsClear) {
    const Fade fade(50, 50, {0, 0, 10, 10}, 0);
    for (int32_t y = 0; y < 50; ++y) {
        const std::string rows_of_light = "00000000000111111111"; // 11 of one, 9 of the other
        const std::string columns_of_light = "11111111110000000000";
        for (int32_t x = 0; x < 50; ++x) {
            const bool light =
                columns_of_light[static_cast<std::size_t>(x % 20)] == rows_of_light[static_cast<std::size_t>(y % 20)];
            ASSERT_EQ(fade.at(x, y), light ? 200 : 100) << x << ", " << y;
        }
    }
}

TEST(Composite, FadeStepsBeforeItsFirstPixel) {
    // One level for each column, so t is x + 1, or x − 3 from the fourth column on.
    for (const int32_t start : {0, 4}) {
        const Fade fade(300, 1, {start, 0, start + 255, 0});
        for (int32_t x = 0; x < 300; ++x) {
            const int32_t t = std::clamp(x + 1 - start, 0, 255);
            const auto square = static_cast<float>(x % 20 < 10 ? 100 : 200);
            const float share = static_cast<float>(255 * (255 - t)) * (1.0F / 65025.0F);
            ASSERT_EQ(fade.at(x, 0), static_cast<int>((255.0F - square) * share + square)) << x;
        }
    }
    EXPECT_EQ(Fade(4, 1, {9, 9, 9, 9}).at(0, 0), 99);
}

// How much is left of white over a square, 1 .. 0.
double left_of_white(const Fade &fade, int32_t x, int32_t y) {
    const double square = (x % 20 < 10) == (y % 20 > 10) ? 200 : 100;
    return (fade.at(x, y) - square) / (255 - square);
}

TEST(Composite, FadeRisesFromTheFirstPointToTheSecondInEveryDirection) {
    constexpr int32_t size = 200;
    for (const auto &[right, down] : {std::array{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}}) {
        for (const int32_t reach : {20, 37, 60}) {
            SCOPED_TRACE(testing::Message() << right << ' ' << down << ' ' << reach);
            const std::array<int32_t, 2> from = {100 - right * reach, 100 - down * reach};
            const std::array<int32_t, 2> to = {100 + right * reach, 100 + down * reach};
            const Fade fade(size, size, {from[0], from[1], to[0], to[1]});
            const double square_of_length = 4.0 * reach * reach * (right * right + down * down);
            for (int32_t y = 0; y < size; ++y) {
                for (int32_t x = 0; x < size; ++x) {
                    // The share of the way along the line, one column on: each pixel carries a step.
                    const double along =
                        ((x + 1 - from[0]) * (to[0] - from[0]) + (y - from[1]) * (to[1] - from[1])) / square_of_length;
                    const double left = left_of_white(fade, x, y);
                    // One level of the fade and one of the result, over a light square.
                    ASSERT_NEAR(left, 1 - std::clamp(along, 0.0, 1.0), 1.0 / 255 + 1.0 / 55) << x << ", " << y;
                    ASSERT_EQ(left, std::clamp(left, along > 0 ? 0.0 : 1.0, along > 1.001 ? 0.0 : 1.0))
                        << x << ", " << y;
                }
            }
        }
    }
}

TEST(Composite, AccumulatorsWrapAroundIn16Bits) {
    const Bytes src = {0, 1, 200, 255};
    std::array<std::vector<int16_t>, 3> acc;
    acc.fill({5, -1, 32767, 100});
    const auto add = [&](int32_t width, int32_t height) {
        call(xAccumulate, width, height, src.data(), src.data(), src.data(), acc);
    };
    add(3, 1);
    for (const auto &sums : acc) EXPECT_EQ(sums, (std::vector<int16_t>{5, 0, -32569, 100}));
    for (const auto &[width, height] : {std::array{0, 3}, {3, 0}, {-1, 3}, {3, -1}}) add(width, height);
    EXPECT_EQ(acc[2], (std::vector<int16_t>{5, 0, -32569, 100}));

    struct Case {
        int32_t weight;
        std::vector<int16_t> sums;
    };
    const Case cases[] = {
        {2, {1, 3, 401, 511}},       {65536 + 2, {1, 3, 401, 511}},     {-1, {1, 0, -199, -254}},
        {65535, {1, 0, -199, -254}}, {32767, {1, -32768, -199, 32514}}, {200, {1, 201, -25535, -14535}}};
    for (const Case &c : cases) {
        acc.fill({1, 1, 1, 1});
        call(xAccumulate3d, 2, 2, c.weight, src.data(), src.data(), src.data(), acc);
        for (const auto &sums : acc) EXPECT_EQ(sums, c.sums) << c.weight;
    }
}

void expect_quotients(const std::vector<int16_t> &sums, int32_t divisor) {
    Planes dst = planes_of(sums.size());
    call(xAccumulate_finish, divisor, static_cast<int32_t>(sums.size()), 1, sums.data(), sums.data(), sums.data(), dst);
    for (std::size_t i = 0; i < sums.size(); ++i)
        ASSERT_EQ(dst[0][i], sums[i] / int64_t{divisor} & 255) << sums[i] << " / " << divisor;
    EXPECT_EQ(dst[1], dst[0]);
    EXPECT_EQ(dst[2], dst[0]);
}

TEST(Composite, QuotientsOfEverySum) {
    std::vector<int16_t> sums(65536);
    std::iota(sums.begin(), sums.end(), int16_t{-32768});
    for (const int32_t divisor : {1,     2,     3,     7,       10, 24, 255, 256,  1000,   32767, 32768,
                                  32769, 65535, 65536, highest, -1, -2, -3,  -100, -32768, lowest})
        expect_quotients(sums, divisor);
}

// Just where the quotient steps, for every divisor that any sum reaches.
TEST(Composite, QuotientsStepAtTheMultiplesOfEveryDivisor) {
    std::vector<int16_t> sums;
    for (int32_t divisor = 1; divisor <= 32768; ++divisor) {
        sums.clear();
        for (int32_t multiple = divisor; multiple <= 32768; multiple += divisor) {
            sums.push_back(static_cast<int16_t>(-multiple));
            sums.push_back(static_cast<int16_t>(multiple - 1));
        }
        expect_quotients(sums, divisor % 2 == 0 ? divisor : -divisor);
        if (HasFatalFailure()) return;
    }
}

template <auto Export> void skins_of_random_frames(Workspace &w) {
    std::array<float, 6> weights;
    for (float &weight : weights) weight = w.real(-0.3F, 0.7F);
    const auto images = w.buffers<18>();
    call(Export, w.size(), weights, images, w.results_of(std::array{images[0], images[10], images[17]}, w.count()));
}

void matte(Workspace &w) {
    // Two columns before the picture and three behind it, whose pixels and mask do not exist.
    const auto columns = static_cast<int32_t>(w.count());
    uint8_t *row = w.buffer(3 * w.count());
    const uint8_t *mask = w.buffer();
    const int32_t opacity = w.integer(-300, 600);
    Matte_preview_helper(row, mask, columns + 5, -2, columns, -2, w.integer(0, 255), w.integer(0, 255),
                         w.integer(-99, 999), -6, opacity);
}

void overlay_rows(Workspace &w) {
    const uint8_t *a = w.buffer();
    const uint8_t *b = w.buffer();
    // From the middle byte of the first pixel to that of the last.
    alpha_overlay_helper(-1, 0, 0, static_cast<int32_t>(w.count()) - 1, a, b, w.buffer(3 * w.count() - 2),
                         w.integer(0, 1));
}

void swap(Workspace &w) {
    const int32_t x = w.width / 3;
    call(xSwapBlit, w.size(), x, -1, w.size(), w.buffer(), w.buffer(w.count() - static_cast<std::size_t>(x)));
}

void fit(Workspace &w) {
    const int32_t height = w.height + 1;
    const int32_t src_width = w.width / 2 + 2;
    const int32_t src_height = w.height / 2 + 2;
    // The last row and the last sample of the row before it are never read.
    const auto samples = static_cast<std::size_t>(src_width * (src_height - 1) - 1);
    call(FixedAspectBlit, src_width, src_height, w.width, height, w.integer(-3, 9), w.integer(-3, 9),
         w.real(0.3F, 2.5F), 1, 2, 3, w.results(), w.buffers(samples));
}

void fade(Workspace &w) {
    const auto src = w.buffers();
    call(xLinearAlphaFadePreview, w.size(), w.integer(-20, 20), w.integer(-20, 20), w.integer(30, 600),
         w.integer(-300, 300), src, w.buffer(), w.results_of(src));
}

const BulkCase cases[] = {
    {"Matte_preview_helper", matte},
    {"alpha_overlay_helper", overlay_rows},
    {"UnionSkin", skins_of_random_frames<UnionSkin>, true},
    {"UnionSkin_untinted", skins_of_random_frames<UnionSkin_untinted>, true},
    {"xSwapBlit", swap},
    {"FixedAspectBlit", fit},
    {"xLinearAlphaFadePreview", fade, true},
    {"xAccumulate", [](Workspace &w) { call(xAccumulate, w.size(), w.buffers(), w.buffers<3, int16_t>()); }},
    {"xAccumulate3d",
     [](Workspace &w) { call(xAccumulate3d, w.size(), w.integer(-999, 999), w.buffers(), w.buffers<3, int16_t>()); }},
    {"xAccumulate_finish",
     [](Workspace &w) { call(xAccumulate_finish, w.integer(1, 99), w.size(), w.buffers<3, int16_t>(), w.results()); }},
};

const BulkFamily family("Composite", cases);

} // namespace
