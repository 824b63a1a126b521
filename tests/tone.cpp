#include "tavik/tone/tone.h"

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

// 0 .. 255, and one more sample for the exports that leave the last one.
Bytes ramp_and_one() {
    Bytes plane(257);
    for (std::size_t i = 0; i < plane.size(); ++i) plane[i] = static_cast<uint8_t>(i);
    return plane;
}

// What an in-place operation over the upper bounds (255, 0) makes of 0 .. 255.
template <class Operation> Bytes over_all_bytes(const Operation &operation) {
    Bytes plane = ramp_and_one();
    plane.pop_back();
    operation(plane.data());
    return plane;
}

struct Levels {
    int32_t out_low, out_high, in_low, in_high;
    std::vector<std::array<int, 2>> mapped;
};

TEST(Tone, LevelsStretchTheInputAndClipTheOutput) {
    const Levels cases[] = {
        {0, 255, 0, 255, {{{255, 255}}, {{128, 128}}, {{0, 0}}, {{1, 1}}}},
        {20,
         230,
         100,
         200,
         {{{50, 20}}, {{150, 127}}, {{250, 230}}, {{100, 20}}, {{101, 20}}, {{108, 20}}, {{109, 23}}}},
        {7, 255, 90, 90, {{{0, 7}}, {{255, 7}}}},
        {-5, 255, 90, 80, {{{0, 0}}, {{255, 0}}}},
        {0, 300, 0, 128, {{{128, 0}}, {{127, 254}}, {{200, 44}}}},
        {0, -1, 0, 255, {{{0, 255}}, {{9, 255}}}},
    };
    for (const Levels &c : cases) {
        const Bytes src = ramp_and_one();
        Bytes serial(257, 99);
        Bytes parallel(257, 99);
        AdjustLevels_channel(src.data(), serial.data(), 256, 1, c.out_low, c.out_high, c.in_low, c.in_high);
        AdjustLevels_channel_ppl(src.data(), parallel.data(), 256, 1, c.out_low, c.out_high, c.in_low, c.in_high);
        for (const auto &[from, to] : c.mapped) EXPECT_EQ(serial[static_cast<std::size_t>(from)], to) << from;
        EXPECT_EQ(serial, parallel);
    }
}

// The sizes that each form handles, seen by what stays 99.
struct Extent {
    const char *name;
    std::function<void(uint8_t *plane, int32_t a, int32_t b)> change;
    std::vector<std::array<int32_t, 3>> a_b_and_elements;
};

TEST(Tone, EachSizeFormHandlesItsElements) {
    static const Bytes zeros(64, 0);
    static Bytes other(64);
    static Bytes another(64);
    const Bytes table(256, 7);
    const std::vector<std::array<int32_t, 3>> counts = {{4, 2, 8}, {1, 1, 1}, {0, 5, 0}, {5, 0, 0}, {-3, 4, 0}};
    const std::vector<std::array<int32_t, 3>> bounds = {{3, 1, 8}, {0, 0, 1}, {-1, 5, 0}, {5, -1, 0}, {-4, 3, 0}};
    const std::vector<std::array<int32_t, 3>> one_short = {{4, 2, 7}, {1, 1, 0}, {2, 1, 1}, {0, 5, 0}, {-3, 4, 0}};
    const Extent extents[] = {
        {"AdjustLevels_channel",
         [](auto p, auto a, auto b) { AdjustLevels_channel(p, p, a, b, 5, 5, 0, 255); },
         {{3, 2, 7}, {0, 2, 1}, {0, 1, 0}, {-1, 3, 0}, {3, -2, 0}}},
        {"AdjustLevels_channel_ppl", [](auto p, auto a, auto b) { AdjustLevels_channel_ppl(p, p, a, b, 5, 5, 0, 255); },
         counts},
        {"FastPosterize",
         [](auto p, auto a, auto b) {
             FastPosterize(other.data(), p, another.data(), a, b, zeros.data(), zeros.data(), zeros.data(), 64);
         },
         one_short},
        {"FastPosterize_ppl",
         [](auto p, auto a, auto b) {
             FastPosterize_ppl(other.data(), another.data(), p, a, b, zeros.data(), zeros.data(), zeros.data(), 64);
         },
         counts},
        {"MapLut",
         [&](auto p, auto a, auto b) {
             MapLut(a, b, zeros.data(), other.data(), p, another.data(), table.data(), table.data(), table.data());
         },
         bounds},
        {"ValueLut", [&](auto p, auto a, auto b) { ValueLut(a, b, p, p, table.data()); }, counts},
        {"xGamma", [](auto p, auto a, auto b) { xGamma(a, b, 3.0F, p); }, bounds},
        {"xcontrast", [](auto p, auto a, auto b) { xcontrast(a, b, 0.0F, p); }, bounds},
        {"xInvert", [](auto p, auto a, auto b) { xInvert(a, b, p); }, bounds},
        {"xNegate", [](auto p, auto a, auto b) { xNegate(a, b, p); }, counts},
        {"xInvertValue", [](auto p, auto a, auto b) { xInvertValue(a, b, other.data(), p, another.data()); }, counts},
        {"xValueCancelation", [](auto p, auto a, auto b) { xValueCancelation(a, b, other.data(), another.data(), p); },
         counts},
        {"FastGreyscaleExpose",
         [](auto p, auto a, auto b) {
             FastGreyscaleExpose(zeros.data(), zeros.data(), zeros.data(), a, b, other.data(), p, another.data(), 0, 0,
                                 0);
         },
         {{4, 2, 7}, {1, 1, 0}, {2, 1, 1}}},
        {"xDimChannel", [](auto p, auto a, auto b) { xDimChannel(0.5F, a * b, p); }, counts},
        {"xGammaAB", [](auto p, auto a, auto b) { xGammaAB(1.0F, 0.0F, 0.0F, a, b, p, p); }, counts},
        {"ChannelValue_mmx",
         [](auto p, auto a, auto b) { ChannelValue_mmx(p, p, a, b, 0.5F); },
         {{0, 0, 8}, {-1, 3, 8}, {6, 0, 8}, {7, 0, 8}, {14, 0, 8}, {15, 0, 16}, {4, 4, 24}}},
        {"ChannelValue1_mmx up to 1",
         [](auto p, auto a, auto b) { ChannelValue1_mmx(p, a, b, 1.0F); },
         {{0, 0, 8}, {-1, 3, 8}, {6, 0, 8}, {15, 0, 16}, {4, 4, 24}}},
        {"ChannelValue1_mmx above 1", [](auto p, auto a, auto b) { ChannelValue1_mmx(p, a, b, 1.5F); }, bounds},
        {"FastChannelAdd", [](auto p, auto a, auto b) { FastChannelAdd(p, a, b, 1); }, one_short},
    };
    for (const Extent &extent : extents) {
        for (const auto &[a, b, elements] : extent.a_b_and_elements) {
            Bytes plane(64, 99);
            extent.change(plane.data(), a, b);
            const auto kept = std::find_if(plane.begin(), plane.end(), [](uint8_t v) { return v == 99; });
            EXPECT_EQ(kept - plane.begin(), elements) << extent.name << ' ' << a << ' ' << b;
            EXPECT_EQ(std::count(kept, plane.end(), 99), plane.end() - kept) << extent.name << ' ' << a << ' ' << b;
        }
    }
    // Empty sizes read no table.
    MapLut(-1, 5, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    ValueLut(0, 5, nullptr, nullptr, nullptr);
}

TEST(Tone, PosteriseKeepsMultiplesOfTheStep) {
    struct Case {
        int32_t step;
        std::vector<std::array<int, 2>> mapped;
    };
    const Case cases[] = {
        {64, {{{0, 0}}, {{63, 0}}, {{64, 64}}, {{127, 64}}, {{191, 128}}, {{192, 192}}, {{255, 192}}}},
        {1, {{{0, 0}}, {{77, 77}}, {{255, 255}}}},
        {255, {{{254, 0}}, {{255, 0}}}},
        {100, {{{100, 0}}, {{101, 100}}, {{200, 100}}, {{201, 200}}}},
        {-64, {{{0, 0}}, {{1, 64}}, {{255, 0}}}},
        {300, {{{255, 0}}}},
    };
    for (const Case &c : cases) {
        const Planes src = {ramp_and_one(), ramp_and_one(), ramp_and_one()};
        Planes serial = planes_of(257, 99);
        Planes parallel = serial;
        call(FastPosterize, serial, 257, 1, src, c.step);
        call(FastPosterize_ppl, parallel, 256, 1, src, c.step);
        for (const auto &[from, to] : c.mapped) EXPECT_EQ(serial[0][static_cast<std::size_t>(from)], to) << c.step;
        EXPECT_EQ(serial, (Planes{serial[0], serial[0], serial[0]}));
        EXPECT_EQ(parallel, serial);
    }
}

TEST(Tone, GammaApproximatesThroughTheExponent) {
    struct Case {
        float gamma;
        std::vector<std::array<int, 2>> mapped;
    };
    const Case cases[] = {
        {1.0F, {{{255, 255}}, {{200, 199}}, {{128, 127}}, {{64, 63}}, {{1, 0}}, {{0, 0}}}},
        {0.5F, {{{128, 187}}, {{255, 251}}, {{0, 0}}}},
        {2.2F, {{{64, 13}}, {{128, 59}}, {{0, 0}}}},
        // Black falls among the bits of the NaNs.
        {1.0005F, {{{0, 0}}, {{128, 127}}}},
        // Far outside any exponent.
        {1e30F, {{{0, 0}}, {{10, 0}}}},
    };
    for (const Case &c : cases) {
        const Bytes plane = over_all_bytes([&](uint8_t *p) { xGamma(255, 0, c.gamma, p); });
        for (const auto &[from, to] : c.mapped) EXPECT_EQ(plane[static_cast<std::size_t>(from)], to) << c.gamma;
    }
}

TEST(Tone, GammaCurveWithGainAndOffset) {
    for (const auto &[gamma, gain, offset] :
         {std::array{1.0F, 1.0F, 0.0F}, std::array{0.45F, 1.0F, 0.0F}, std::array{2.2F, 1.3F, -0.1F},
          std::array{0.0F, 0.5F, 0.25F}, std::array{-1.0F, 0.1F, 0.0F}}) {
        const Bytes src = ramp_and_one();
        Bytes dst(256);
        xGammaAB(gamma, gain, offset, 64, 4, src.data(), dst.data());
        for (std::size_t i = 0; i < 256; ++i) {
            const double x = i == 255 ? 1.0 : static_cast<double>(static_cast<float>(i) * 0.003921569F);
            const float power = static_cast<float>(std::pow(x, static_cast<double>(gamma)));
            const float curve = std::clamp(power * gain + offset, 0.0F, 1.0F);
            ASSERT_EQ(dst[i], static_cast<uint8_t>(curve * 255.0F)) << i << " gamma " << gamma;
        }
    }
    Bytes one = {255};
    xGammaAB(0.5F, 0.5F, 0.25F, 1, 1, one.data(), one.data());
    EXPECT_EQ(one[0], 191);
}

TEST(Tone, ContrastTurnsAround128) {
    const Bytes doubled = over_all_bytes([](uint8_t *p) { xcontrast(255, 0, 2.0F, p); });
    EXPECT_EQ(doubled[200], 255);
    EXPECT_EQ(doubled[100], 72);
    EXPECT_EQ(doubled[10], 0);
    EXPECT_EQ(doubled[128], 128);
    const Bytes third = over_all_bytes([](uint8_t *p) { xcontrast(255, 0, 0.3F, p); });
    EXPECT_EQ(third[125], 128); // −0.9 truncates toward zero.
    EXPECT_EQ(third[124], 127);
    EXPECT_EQ(third[255], 166);
    // Beyond the 32-bit integers a product is the lowest integer.
    const Bytes huge = over_all_bytes([](uint8_t *p) { xcontrast(255, 0, 1e10F, p); });
    EXPECT_EQ(huge[255], 0);
    EXPECT_EQ(huge[128], 128);
}

TEST(Tone, InversionOfValueKeepsChannelDifferences) {
    const auto invert = [](std::array<uint8_t, 3> c) {
        xInvertValue(1, 1, &c[0], &c[1], &c[2]);
        return c;
    };
    EXPECT_EQ(invert({10, 20, 30}), (std::array<uint8_t, 3>{225, 235, 245}));
    EXPECT_EQ(invert({0, 0, 0}), (std::array<uint8_t, 3>{255, 255, 255}));
    EXPECT_EQ(invert({255, 255, 255}), (std::array<uint8_t, 3>{0, 0, 0}));
    EXPECT_EQ(invert({255, 0, 0}), (std::array<uint8_t, 3>{255, 85, 85}));
    EXPECT_EQ(invert({0, 255, 255}), (std::array<uint8_t, 3>{0, 170, 170}));
    const auto cancel = [](std::array<uint8_t, 3> c) {
        xValueCancelation(1, 1, &c[0], &c[1], &c[2]);
        return c;
    };
    EXPECT_EQ(cancel({10, 20, 30}), (std::array<uint8_t, 3>{0, 0, 10}));
    EXPECT_EQ(cancel({255, 255, 254}), (std::array<uint8_t, 3>{1, 1, 0}));
}

// All sums of three bytes, so that a mean that is off by one anywhere shows.
TEST(Tone, MeansRoundDownForEverySum) {
    for (int sum = 0; sum <= 765; ++sum) {
        uint8_t largest = static_cast<uint8_t>(std::min(sum, 255));
        uint8_t middle = static_cast<uint8_t>(std::min(sum - largest, 255));
        uint8_t rest = static_cast<uint8_t>(sum - largest - middle);
        const int before = largest;
        xValueCancelation(1, 1, &largest, &middle, &rest);
        ASSERT_EQ(largest, before - sum / 3) << sum;
    }
}

TEST(Tone, WeightedGreyLeavesOutExposedChannels) {
    struct Case {
        std::array<int32_t, 3> expose;
        std::array<uint8_t, 3> colour;
        int grey;
    };
    const Case cases[] = {
        {{0, 0, 0}, {30, 60, 90}, 59},       {{0, 0, 0}, {255, 255, 255}, 253}, {{255, 255, 255}, {200, 200, 200}, 0},
        {{0, 255, 255}, {200, 9, 9}, 199},   {{255, 0, 255}, {9, 200, 9}, 199}, {{255, 255, 0}, {9, 9, 200}, 199},
        {{254, 254, 253}, {10, 20, 30}, 22}, {{256, 255, 254}, {4, 0, 6}, 2},
    };
    for (const Case &c : cases) {
        const Planes src = {Bytes{c.colour[0], 0}, Bytes{c.colour[1], 0}, Bytes{c.colour[2], 0}};
        Planes dst = planes_of(2, 99);
        call(FastGreyscaleExpose, src, 2, 1, dst, c.expose);
        const auto grey = static_cast<uint8_t>(c.grey);
        EXPECT_EQ(dst, (Planes{Bytes{grey, 99}, {grey, 99}, {grey, 99}})) << c.expose[0];
    }
}

TEST(Tone, ScalingTruncatesAndWrapsAsItsKindDoes) {
    struct Case {
        const char *name;
        std::function<void(uint8_t *)> operation;
        std::vector<std::array<int, 2>> mapped;
    };
    const Case cases[] = {
        {"dim 0.5", [](uint8_t *p) { xDimChannel(0.5F, 256, p); }, {{{255, 127}}, {{1, 0}}}},
        {"dim 1.5", [](uint8_t *p) { xDimChannel(1.5F, 256, p); }, {{{100, 150}}, {{200, 44}}}},
        {"dim -1", [](uint8_t *p) { xDimChannel(-1.0F, 256, p); }, {{{1, 255}}, {{255, 1}}}},
        {"dim NaN", [=](uint8_t *p) { xDimChannel(no_number, 256, p); }, {{{1, 0}}, {{255, 0}}}},
        {"scale 0.5", [](uint8_t *p) { ChannelValue_mmx(p, p, 255, 0, 0.5F); }, {{{255, 126}}, {{2, 0}}, {{3, 1}}}},
        {"scale 1", [](uint8_t *p) { ChannelValue_mmx(p, p, 255, 0, 1.0F); }, {{{255, 254}}, {{1, 0}}}},
        {"scale 1.5", [](uint8_t *p) { ChannelValue_mmx(p, p, 255, 0, 1.5F); }, {{{255, 255}}, {{1, 1}}}},
        {"scale in place 0.5", [](uint8_t *p) { ChannelValue1_mmx(p, 255, 0, 0.5F); }, {{{255, 126}}, {{3, 1}}}},
        {"brighten 2", [](uint8_t *p) { ChannelValue1_mmx(p, 255, 0, 2.0F); }, {{{100, 199}}, {{200, 255}}, {{1, 1}}}},
        {"add 10", [](uint8_t *p) { FastChannelAdd(p, 257, 1, 10); }, {{{0, 10}}, {{245, 255}}, {{255, 255}}}},
        {"add -10", [](uint8_t *p) { FastChannelAdd(p, 257, 1, -10); }, {{{0, 0}}, {{10, 0}}, {{11, 1}}}},
        {"add 1000", [](uint8_t *p) { FastChannelAdd(p, 257, 1, 1000); }, {{{0, 255}}, {{255, 255}}}},
        {"add -1000", [](uint8_t *p) { FastChannelAdd(p, 257, 1, -1000); }, {{{0, 0}}, {{255, 0}}}},
        {"add 2^31 - 1", [](uint8_t *p) { FastChannelAdd(p, 257, 1, 2147483647); }, {{{0, 255}}, {{1, 0}}}},
    };
    for (const Case &c : cases) {
        const Bytes plane = over_all_bytes(c.operation);
        for (const auto &[from, to] : c.mapped) EXPECT_EQ(plane[static_cast<std::size_t>(from)], to) << c.name << from;
    }
}

// A serial export over planes that overlap partly sees what its earlier elements wrote.
TEST(Tone, SerialExportsRunInIncreasingOrder) {
    Bytes table(256);
    for (std::size_t i = 0; i < 256; ++i) table[i] = static_cast<uint8_t>(i + 1);
    Bytes plane(600, 0);
    ValueLut(500, 1, plane.data(), plane.data() + 1, table.data());
    for (std::size_t i = 0; i < 501; ++i) ASSERT_EQ(plane[i], i & 255) << i;
    std::fill(plane.begin(), plane.end(), uint8_t{200});
    AdjustLevels_channel(plane.data(), plane.data() + 1, 499, 1, 0, 150, 0, 255);
    EXPECT_EQ(plane[499], 150);
}

void levels(Workspace &w) {
    const std::size_t n = w.count() - 1;
    uint8_t *src = w.buffer(n);
    const int32_t in_low = w.integer(-20, 200);
    AdjustLevels_channel(src, w.result_of(src, n), w.width - 1, w.height, w.integer(0, 40), w.integer(200, 255), in_low,
                         in_low + w.integer(1, 100));
}

void levels_parallel(Workspace &w) {
    uint8_t *src = w.buffer();
    call(AdjustLevels_channel_ppl, src, w.result_of(src), w.size(), 0, 255, w.integer(0, 9), 222);
}

template <auto Export> void posterise(Workspace &w, std::size_t n) {
    const auto src = w.buffers(n);
    call(Export, w.result_of(src[0], n), w.result_of(src[1], n), w.result_of(src[2], n), w.size(), src,
         w.integer(1, 99));
}

template <auto Export> void on_three_planes(Workspace &w) { call(Export, w.width, w.height, w.buffers()); }

void weighted_grey(Workspace &w) {
    const std::size_t n = w.count() - 1;
    const auto src = w.buffers(n);
    call(FastGreyscaleExpose, src, w.size(), w.results_of(src, n), w.integer(0, 255), w.integer(0, 255),
         w.integer(-100, 255));
}

void map_to_three(Workspace &w) {
    uint8_t *src = w.buffer();
    call(MapLut, w.bounds(), src, w.result(), w.result_of(src), w.result(), w.buffers(256));
}

void scale_blocks(Workspace &w) {
    const std::size_t n = std::max<std::size_t>(w.count() / 8 * 8, 8);
    uint8_t *src = w.buffer(n);
    call(ChannelValue_mmx, w.result_of(src, n), src, w.bounds(), w.real(0, 1));
}

const BulkCase cases[] = {
    {"AdjustLevels_channel", levels, true},
    {"AdjustLevels_channel_ppl", levels_parallel, true},
    {"FastPosterize", [](Workspace &w) { posterise<FastPosterize>(w, w.count() - 1); }, true},
    {"FastPosterize_ppl", [](Workspace &w) { posterise<FastPosterize_ppl>(w, w.count()); }, true},
    {"MapLut", map_to_three, true},
    {"ValueLut",
     [](Workspace &w) {
         uint8_t *src = w.buffer();
         call(ValueLut, w.size(), src, w.result_of(src), w.buffer(256));
     },
     true},
    {"xGamma", [](Workspace &w) { xGamma(w.width - 1, w.height - 1, w.real(0.1F, 4), w.buffer()); }},
    {"xcontrast", [](Workspace &w) { xcontrast(w.width - 1, w.height - 1, w.real(-2, 4), w.buffer()); }},
    {"xInvert", [](Workspace &w) { xInvert(w.width - 1, w.height - 1, w.buffer()); }},
    {"xNegate", [](Workspace &w) { xNegate(w.width, w.height, w.buffer()); }},
    {"xInvertValue", on_three_planes<xInvertValue>},
    {"xValueCancelation", on_three_planes<xValueCancelation>},
    {"FastGreyscaleExpose", weighted_grey, true},
    {"xDimChannel", [](Workspace &w) { xDimChannel(w.real(-1, 3), static_cast<int32_t>(w.count()), w.buffer()); }},
    {"xGammaAB",
     [](Workspace &w) {
         uint8_t *src = w.buffer();
         call(xGammaAB, w.real(0.2F, 3), 1, 0, w.size(), src, w.result_of(src));
     },
     true},
    {"ChannelValue_mmx", scale_blocks, true},
    {"ChannelValue1_mmx",
     [](Workspace &w) { ChannelValue1_mmx(w.buffer(), w.width - 1, w.height - 1, w.real(1.01F, 5)); }},
    {"FastChannelAdd",
     [](Workspace &w) { FastChannelAdd(w.buffer(w.count() - 1), w.width, w.height, w.integer(-255, 255)); }},
};

const BulkFamily family("Tone", cases);

} // namespace
