// The blend modes and AlphaBlit, over every pair of samples.
#include "tavik/composite/composite.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

const auto k = std::bit_cast<float>(0x3B808081);

int low_byte_of_truncated(float value) {
    const bool fits = std::abs(value) < 2147483648.0F;
    return fits ? static_cast<int>(value) & 255 : 0;
}

// All pairs: the first sample of pair i is i mod 256, the second one i / 256.
struct Pairs {
    Bytes first = Bytes(65536);
    Bytes second = Bytes(65536);

    Pairs() {
        for (std::size_t i = 0; i < first.size(); ++i) {
            first[i] = static_cast<uint8_t>(i);
            second[i] = static_cast<uint8_t>(i >> 8);
        }
    }
};

// Compares the result of every pair with expected(first sample, second sample).
template <class Expected> void expect_table(const Bytes &results, const Expected &expected) {
    for (int i = 0; i < 65536; ++i)
        ASSERT_EQ(results[static_cast<std::size_t>(i)], expected(i % 256, i / 256)) << i % 256 << ", " << i / 256;
}

using LayerMode = void TAVIK_CALL(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target);

struct LayerCase {
    const char *name;
    LayerMode *blend;
    int (*expected)(int l, int t);
};

int linear_dodge(int l, int t) { return std::max(l + t, 255) & 255; }

const LayerCase layer_modes[] = {
    {"soft light", xcombineSoftLight,
     [](int l, int t) {
         const int s = l >> 1;
         return static_cast<int>(t < 128
                                     ? static_cast<float>(2 * s + 128) * static_cast<float>(t) * k
                                     : 255.0F - static_cast<float>(2 * (191 - s)) * static_cast<float>(255 - t) * k);
     }},
    {"hard light", xcombineHardLight,
     [](int l, int t) { return l < 128 ? 2 * t * l / 255 : 255 - 2 * (255 - l) * (255 - t) / 255; }},
    {"colour dodge", xcombineColorDodge,
     [](int l, int t) { return t == 255 ? 255 : std::min(255, l * 256 / (255 - t)); }},
    {"colour burn", xcombineColorBurn,
     [](int l, int t) { return t == 0 ? 0 : std::max(0, 255 + (l - 255) * 256 / t); }},
    {"linear dodge", xcombinelinearDodge, linear_dodge},
    {"linear burn", xcombinelinearBurn, [](int l, int t) { return std::max(l + t - 255, 0); }},
    {"linear light", xcombineLinearLight,
     [](int l, int t) { return t < 128 ? std::max(l + 2 * t - 255, 0) : std::max(l + 2 * t - 256, 255) & 255; }},
    {"vivid light", xcombineVividLight,
     [](int l, int t) {
         if (t == 0) return 0;
         return t < 128 ? std::max(0, 255 + (l - 255) * 256 / (2 * t)) : std::min(255, l * 256 / (511 - 2 * t));
     }},
};

TEST(CompositeBlend, LayerModesGiveTheirWholeTables) {
    const Pairs pairs;
    for (const LayerCase &mode : layer_modes) {
        SCOPED_TRACE(mode.name);
        Bytes target = pairs.second;
        mode.blend(256, 256, pairs.first.data(), target.data());
        expect_table(target, mode.expected);
        // A plane blended with itself.
        target = pairs.first;
        mode.blend(256, 256, target.data(), target.data());
        for (std::size_t i = 0; i < 256; ++i)
            ASSERT_EQ(target[i], mode.expected(static_cast<int>(i), static_cast<int>(i)));
    }
}

TEST(CompositeBlend, LayerModesAtTheirTurningPoints) {
    struct Point {
        LayerMode *blend;
        int l, t, result;
    };
    const Point points[] = {
        {xcombinelinearDodge, 0, 0, 255},     {xcombinelinearDodge, 128, 127, 255}, {xcombinelinearDodge, 128, 128, 0},
        {xcombinelinearDodge, 255, 255, 254}, {xcombinelinearDodge, 200, 100, 44},  {xcombinelinearBurn, 128, 127, 0},
        {xcombinelinearBurn, 255, 255, 255},  {xcombineHardLight, 127, 255, 254},   {xcombineHardLight, 128, 0, 1},
        {xcombineColorDodge, 0, 255, 255},    {xcombineColorDodge, 0, 254, 0},      {xcombineColorDodge, 255, 0, 255},
        {xcombineColorBurn, 255, 0, 0},       {xcombineColorBurn, 255, 1, 255},     {xcombineVividLight, 255, 0, 0},
        {xcombineVividLight, 0, 255, 0},      {xcombineVividLight, 1, 255, 255},    {xcombineSoftLight, 255, 0, 0},
        {xcombineSoftLight, 0, 255, 255},     {xcombineLinearLight, 1, 255, 255},   {xcombineLinearLight, 90, 255, 88},
    };
    for (const auto &[blend, l, t, result] : points) {
        const auto layer = static_cast<uint8_t>(l);
        auto target = static_cast<uint8_t>(t);
        blend(1, 1, &layer, &target);
        EXPECT_EQ(target, result) << l << ", " << t;
    }
}

TEST(CompositeBlend, SumsAndDifferencesStopAtTheEnds) {
    const Pairs pairs;
    Bytes dst(65536);
    xCombineAdd(255, 255, pairs.first.data(), pairs.second.data(), dst.data());
    expect_table(dst, [](int a, int b) { return std::min(a + b, 255); });
    xCombineSub(255, 255, pairs.first.data(), pairs.second.data(), dst.data());
    expect_table(dst, [](int a, int b) { return std::max(a - b, 0); });
}

TEST(CompositeBlend, AmountsWeighTheSecondPlane) {
    const Pairs pairs;
    for (const int32_t amount : {0, 1, 64, 127, 128, 200, 254, 255, -1, 256, 70000, 1073741824, highest, lowest}) {
        SCOPED_TRACE(amount);
        const float f = static_cast<float>(amount) * k;
        const float g = 1.0F - f;
        const auto expected = [=](int a, int b) {
            return low_byte_of_truncated(static_cast<float>(a) * g + static_cast<float>(b) * f);
        };
        Bytes dst(65536);
        xBlend2(255, 255, amount, pairs.first.data(), pairs.second.data(), dst.data());
        expect_table(dst, expected);
        Bytes target = pairs.second;
        xBlend(255, 255, amount, pairs.first.data(), target.data());
        EXPECT_EQ(target, dst);
    }
    Bytes target = pairs.second;
    xBlend(255, 255, 255, pairs.first.data(), target.data());
    EXPECT_EQ(target, pairs.second);
    xBlend(255, 255, 0, pairs.first.data(), target.data());
    EXPECT_EQ(target, pairs.first);
}

TEST(CompositeBlend, MasksChooseBetweenThePlanes) {
    const Pairs pairs;
    for (const int mask : {0, 1, 2, 64, 127, 128, 129, 200, 254, 255}) {
        SCOPED_TRACE(mask);
        const Bytes masks(65536, static_cast<uint8_t>(mask));
        Bytes over = pairs.first;
        Overlay_channel(over.data(), pairs.second.data(), masks.data(), 256, 256);
        expect_table(over, [=](int o, int u) {
            return static_cast<int>(static_cast<float>(o - u) * static_cast<float>(mask) * k + static_cast<float>(u));
        });
        Bytes drawn = pairs.second;
        AlphaBlit(256, 256, pairs.first.data(), drawn.data(), masks.data());
        expect_table(drawn, [=](int src, int dst) { return ((255 - mask) * dst + src * mask) / 256; });
    }
    // Mask 255 does not always keep the upper plane.
    Bytes over = {1};
    Overlay_channel(over.data(), Bytes{4}.data(), Bytes{255}.data(), 1, 1);
    EXPECT_EQ(over[0], 0);
}

// A call of each export on width × height samples, with one plane read and one read or written.
struct TwoPlanes {
    const char *name;
    std::function<void(int32_t width, int32_t height, const uint8_t *src, uint8_t *dst)> call;
};

std::vector<TwoPlanes> every_export() {
    static const Bytes masks(4096, 90);
    std::vector<TwoPlanes> exports = {
        {"xCombineAdd", [](auto w, auto h, auto src, auto dst) { xCombineAdd(w - 1, h - 1, src, dst, dst); }},
        {"xCombineSub", [](auto w, auto h, auto src, auto dst) { xCombineSub(w - 1, h - 1, dst, src, dst); }},
        {"xBlend", [](auto w, auto h, auto src, auto dst) { xBlend(w - 1, h - 1, 100, src, dst); }},
        {"xBlend2", [](auto w, auto h, auto src, auto dst) { xBlend2(w - 1, h - 1, 100, masks.data(), src, dst); }},
        {"Overlay_channel", [](auto w, auto h, auto src, auto dst) { Overlay_channel(dst, src, masks.data(), w, h); }},
        {"Overlay_channel's mask",
         [](auto w, auto h, auto src, auto dst) { Overlay_channel(dst, masks.data(), src, w, h); }},
        {"AlphaBlit", [](auto w, auto h, auto src, auto dst) { AlphaBlit(w, h, src, dst, masks.data()); }},
        {"AlphaBlit's alpha", [](auto w, auto h, auto src, auto dst) { AlphaBlit(w, h, masks.data(), dst, src); }},
    };
    for (const LayerCase &mode : layer_modes) exports.push_back({mode.name, mode.blend});
    return exports;
}

Bytes uneven(std::size_t count) {
    Bytes plane(count);
    for (std::size_t i = 0; i < count; ++i) plane[i] = static_cast<uint8_t>(i * 89 + i / 7 + 40);
    return plane;
}

TEST(CompositeBlend, PlanesThatOverlapPartlySeeEarlierResults) {
    for (const TwoPlanes &item : every_export()) {
        for (const auto &[from, to] : {std::array<std::size_t, 2>{0, 1}, {0, 9}, {33, 0}, {0, 64}, {1, 0}, {0, 299}}) {
            SCOPED_TRACE(testing::Message() << item.name << ' ' << from << ' ' << to);
            Bytes at_once = uneven(600);
            Bytes one_by_one = at_once;
            item.call(300, 1, at_once.data() + from, at_once.data() + to);
            for (std::size_t i = 0; i < 300; ++i) item.call(1, 1, &one_by_one[from + i], &one_by_one[to + i]);
            ASSERT_EQ(at_once, one_by_one);
        }
    }
}

TEST(CompositeBlend, EachSizeHandlesItsElements) {
    struct Size {
        int32_t width, height;
        std::size_t elements;
    };
    const Size sizes[] = {{1, 1, 1},  {5, 3, 15},        {40, 1, 40},       {0, 5, 0},   {5, 0, 0},
                          {-3, 4, 0}, {65536, 65536, 0}, {46341, 46341, 0}, {4, -10, 0}, {-2, -3, 6}};
    for (const TwoPlanes &item : every_export()) {
        for (const auto &[width, height, elements] : sizes) {
            SCOPED_TRACE(testing::Message() << item.name << ' ' << width << ' ' << height);
            const Bytes src = uneven(64);
            Bytes in_one = uneven(65);
            std::reverse(in_one.begin(), in_one.end());
            Bytes one_by_one = in_one;
            item.call(width, height, src.data(), in_one.data());
            for (std::size_t i = 0; i < elements; ++i) item.call(1, 1, &src[i], &one_by_one[i]);
            ASSERT_EQ(in_one, one_by_one);
        }
    }
}

template <auto Export> void on_layer(Workspace &w) { call(Export, w.size(), w.buffer(), w.buffer()); }

template <auto Export> void on_two(Workspace &w) {
    uint8_t *a = w.buffer();
    call(Export, w.bounds(), a, w.buffer(), w.result_of(a));
}

void mix_two(Workspace &w) {
    const uint8_t *a = w.buffer();
    uint8_t *b = w.buffer();
    call(xBlend2, w.bounds(), w.integer(-300, 600), a, b, w.result_of(b));
}

const BulkCase cases[] = {
    {"xCombineAdd", on_two<xCombineAdd>, true},
    {"xCombineSub", on_two<xCombineSub>, true},
    {"xBlend", [](Workspace &w) { call(xBlend, w.bounds(), w.integer(0, 255), w.buffer(), w.buffer()); }},
    {"xBlend2", mix_two, true},
    {"Overlay_channel", [](Workspace &w) { call(Overlay_channel, w.buffers(), w.width, w.height); }},
    {"AlphaBlit", [](Workspace &w) { call(AlphaBlit, w.width, w.height, w.buffers()); }},
    {"xcombineSoftLight", on_layer<xcombineSoftLight>},
    {"xcombineHardLight", on_layer<xcombineHardLight>},
    {"xcombineColorDodge", on_layer<xcombineColorDodge>},
    {"xcombineColorBurn", on_layer<xcombineColorBurn>},
    {"xcombinelinearDodge", on_layer<xcombinelinearDodge>},
    {"xcombinelinearBurn", on_layer<xcombinelinearBurn>},
    {"xcombineLinearLight", on_layer<xcombineLinearLight>},
    {"xcombineVividLight", on_layer<xcombineVividLight>},
};

const BulkFamily family("CompositeBlend", cases);

} // namespace
