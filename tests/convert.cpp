#include "tavik/convert/convert.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

TEST(Convert, ColoursPackAndUnpack) {
    EXPECT_EQ(GDIP_ColorToARGB(255, 0, 0, 0), lowest + 0x7F000000);
    EXPECT_EQ(GDIP_ColorToARGB(1, 2, 3, 4), 0x01020304);
    EXPECT_EQ(GDIP_ColorToARGB(0, 256, 0, 0), 0x01000000);
    EXPECT_EQ(GDIP_ColorToARGB(0, 0, 0, -1), -1);
    std::array<uint8_t, 3> parts = {};
    Long_To_RGB(0x11223344, &parts[0], &parts[1], &parts[2]);
    EXPECT_EQ(parts, (std::array<uint8_t, 3>{0x11, 0x22, 0x33}));
    Long_To_RGB(-1, &parts[0], &parts[1], &parts[2]);
    EXPECT_EQ(parts, (std::array<uint8_t, 3>{0xFF, 0xFF, 0xFF}));
}

TEST(Convert, ShiftsTakeTheirCountModulo32) {
    EXPECT_EQ(xshiftR(-8, 1), -4);
    EXPECT_EQ(xshiftR(-8, 33), -4);
    EXPECT_EQ(xshiftR(-1, -1), -1);
    EXPECT_EQ(xshiftL(1, 33), 2);
    EXPECT_EQ(xshiftL(1, 31), lowest);
    EXPECT_EQ(xshiftL(3, -1), lowest);
}

TEST(Convert, RawMemory) {
    int32_t a = 5;
    int32_t b = -7;
    swap_l(&a, &b);
    EXPECT_EQ(a, -7);
    EXPECT_EQ(b, 5);
    swap_l(&a, &a);
    EXPECT_EQ(a, 0);
    float variable = 0;
    EXPECT_EQ(GetAddressSingle(&variable), reinterpret_cast<intptr_t>(&variable));
    Bytes bytes = {1, 200, 3};
    EXPECT_EQ(ReadChar(bytes.data() + 2, -1), 200);
    WriteChar(bytes.data(), 2, 0x1234);
    EXPECT_EQ(bytes[2], 0x34);
}

TEST(Convert, FillsStoreThePattern) {
    std::vector<int32_t> words(8, 1);
    SetFloat(3, 0x3F800000, words.data());
    EXPECT_EQ(words, (std::vector<int32_t>{0x3F800000, 0x3F800000, 0x3F800000, 1, 1, 1, 1, 1}));
    SetFloat(-1, 9, words.data());
    xFillBuff(3, 0, 9, words.data());
    xFillBuff(-3, 2, 9, words.data());
    EXPECT_EQ(words[0], 0x3F800000);
    xFillBuff(2, 2, -7, words.data());
    EXPECT_EQ(words, (std::vector<int32_t>{-7, -7, -7, -7, 1, 1, 1, 1}));
}

TEST(Convert, FloatsTruncateOrClamp) {
    struct Case {
        float value;
        int low_byte, clamped;
    };
    const Case cases[] = {
        {0.0F, 0, 0},           {0.999F, 0, 0},      {254.999F, 254, 254},
        {255.0F, 255, 255},     {256.7F, 0, 255},    {300.0F, 44, 255},
        {-0.5F, 0, 0},          {-1.0F, 255, 0},     {-3.5F, 253, 0},
        {3e9F, 0, 255},         {-3e9F, 0, 0},       {infinity, 0, 255},
        {-infinity, 0, 0},      {no_number, 0, 255}, {2147483520.0F, 128, 255},
        {-no_number, 0, 255},   {1e-40F, 0, 0},      {-0.0F, 0, 0},
        {-2147483648.0F, 0, 0},
    };
    Floats src;
    for (const Case &c : cases) src.push_back(c.value);
    const auto count = static_cast<int32_t>(src.size());
    Bytes low(src.size());
    Bytes clamped(src.size());
    // As one row and as a column, which takes the rows' ends.
    for (const auto &[width, height] : {std::array{count, 1}, std::array{1, count}}) {
        float_to_char(width, height, src.data(), low.data());
        float_to_char_clamp(width, height, src.data(), clamped.data());
        for (std::size_t i = 0; i < src.size(); ++i) {
            EXPECT_EQ(low[i], cases[i].low_byte) << cases[i].value;
            EXPECT_EQ(clamped[i], cases[i].clamped) << cases[i].value;
        }
    }
}

TEST(Convert, PlanesWidenAndNarrow) {
    Bytes all(256);
    std::iota(all.begin(), all.end(), uint8_t{0});
    Floats floats(256);
    std::vector<int32_t> longs(256);
    char_to_float(64, 4, all.data(), floats.data());
    char_to_long(64, 4, all.data(), longs.data());
    for (std::size_t i = 0; i < 256; ++i) {
        EXPECT_EQ(floats[i], static_cast<float>(i));
        EXPECT_EQ(longs[i], static_cast<int32_t>(i));
        longs[i] += 256 * (static_cast<int32_t>(i) - 99);
    }
    Bytes back(256);
    long_to_char(4, 64, longs.data(), back.data());
    EXPECT_EQ(back, all);
    // Nothing for an empty or negative size.
    back.assign(256, 9);
    for (const auto &[width, height] : {std::array{0, 4}, std::array{4, 0}, std::array{-4, 4}, std::array{4, -4}}) {
        long_to_char(width, height, longs.data(), back.data());
        float_to_char(width, height, floats.data(), back.data());
        float_to_char_clamp(width, height, floats.data(), back.data());
    }
    EXPECT_EQ(back, Bytes(256, 9));
}

TEST(Convert, BitmapsLeaveTheLastColumn) {
    // Planes of 4 × 2, a bitmap of 5 pixels a row.
    const Bytes r = {1, 2, 3, 4, 5, 6, 7, 8};
    const Bytes g = {11, 12, 13, 14, 15, 16, 17, 18};
    const Bytes b = {21, 22, 23, 24, 25, 26, 27, 28};
    std::vector<uint32_t> bitmap(10, 0xFFFFFFFF);
    RGB_to_bbytes(0, 2, 5, 0, r.data(), g.data(), b.data(), bitmap.data());
    RGB_to_bbytes(3, -2, 5, 0, r.data(), g.data(), b.data(), bitmap.data());
    EXPECT_EQ(bitmap, std::vector<uint32_t>(10, 0xFFFFFFFF));
    RGB_to_bbytes(3, 2, 5, 77, r.data(), g.data(), b.data(), bitmap.data());
    EXPECT_EQ(bitmap, (std::vector<uint32_t>{0x010B15, 0x020C16, 0x030D17, 0xFFFFFFFF, 0xFFFFFFFF, 0x050F19, 0x06101A,
                                             0x07111B, 0xFFFFFFFF, 0xFFFFFFFF}));
    for (uint32_t &pixel : bitmap) pixel |= 0xAB000000;
    Planes planes = planes_of(8, 99);
    call(bbytes_to_RGB, 3, 2, 5, 77, planes, bitmap);
    EXPECT_EQ(planes[0], (Bytes{1, 2, 3, 99, 5, 6, 7, 99}));
    EXPECT_EQ(planes[1], (Bytes{11, 12, 13, 99, 15, 16, 17, 99}));
    EXPECT_EQ(planes[2], (Bytes{21, 22, 23, 99, 25, 26, 27, 99}));
}

TEST(Convert, QuadsCarryTheMean) {
    const Bytes r = {255, 0, 1, 10};
    const Bytes g = {255, 0, 1, 20};
    const Bytes b = {254, 2, 1, 33};
    Bytes quads(20, 99);
    LongRGBV_to_RGB_array(r.data(), g.data(), b.data(), quads.data(), 1, 1);
    EXPECT_EQ(quads, (Bytes{255, 255, 254, 254, 0, 0, 2, 0, 1, 1, 1, 1, 10, 20, 33, 21, 99, 99, 99, 99}));
    Planes planes = planes_of(5, 99);
    call(Long_to_RGBV_array, planes, quads, 3, 0);
    EXPECT_EQ(planes[0], (Bytes{255, 0, 1, 10, 99}));
    EXPECT_EQ(planes[1], (Bytes{255, 0, 1, 20, 99}));
    EXPECT_EQ(planes[2], (Bytes{254, 2, 1, 33, 99}));
    call(Long_to_RGBV_array, planes, quads, -1, 3);
    EXPECT_EQ(planes[0][0], 255);
}

class SetValue : public testing::Test {
  protected:
    void SetUp() override {
        for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<uint8_t>(i / 2);
        for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<uint8_t>(i * 7);
    }
    // Runs the red plane apart from the others, which tell the channels apart.
    void run(int32_t width, int32_t height, const uint8_t *from, uint8_t *to) {
        NewSetValue(from, src.data(), src.data(), to, green.data(), blue.data(), table.data(), histograms.data(), width,
                    height);
    }
    Bytes table = Bytes(256);
    Bytes src = Bytes(70000);
    Bytes red = Bytes(70000, 99);
    Bytes green = Bytes(70000, 99);
    Bytes blue = Bytes(70000, 99);
    std::vector<int32_t> histograms = std::vector<int32_t>(768, 1000);
};

TEST_F(SetValue, MapsAndAddsToTheHistograms) {
    run(233, 300, src.data(), red.data());
    std::vector<int32_t> expected(768, 1000);
    for (std::size_t i = 0; i < 233 * 300; ++i) {
        ASSERT_EQ(red[i], table[src[i]]);
        for (std::size_t channel : {0, 1, 2}) ++expected[256 * channel + red[i]];
    }
    EXPECT_EQ(red[233 * 300], 99);
    EXPECT_EQ(green, red);
    EXPECT_EQ(blue, red);
    EXPECT_EQ(histograms, expected);
}

TEST_F(SetValue, TakesTheLow16BitsOfItsSize) {
    run(65536 + 2, 3, src.data(), red.data());
    EXPECT_EQ(red[5], table[src[5]]);
    EXPECT_EQ(red[6], 99);
    EXPECT_EQ(std::accumulate(histograms.begin(), histograms.begin() + 256, 0), 256 * 1000 + 6);
    run(0xFFFF, 1, src.data(), red.data());
    EXPECT_EQ(red[6], 99);
    // Nothing is read for an empty size.
    NewSetValue(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, 5);
}

TEST_F(SetValue, SeesEarlierResultsWherePlanesOverlapPartly) {
    for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<uint8_t>(i + 1);
    red[0] = 0;
    run(1000, 1, red.data(), red.data() + 1);
    for (std::size_t i = 0; i <= 1000; ++i) ASSERT_EQ(red[i], i & 255);
}

// Results of 16 MiB and more go past the caches, from wherever in a line they begin.
TEST(Convert, LargeResultsAreThoseOfTheirRows) {
    constexpr int32_t width = 2100;
    constexpr int32_t height = 2001;
    constexpr std::size_t samples = std::size_t{width} * height;
    const Bytes src = noise(samples + 2, 1);
    const uint8_t *r = src.data();
    const uint8_t *g = r + 1;
    const uint8_t *b = r + 2;
    std::vector<uint32_t> large(samples + 1);
    std::vector<uint32_t> row(width);
    const auto compare = [&](const char *name, const auto &call) {
        call(0, height, large.data() + 1);
        for (int32_t y = 0; y < height; ++y) {
            const std::size_t begin = std::size_t{width} * static_cast<std::size_t>(y);
            call(begin, 1, row.data());
            ASSERT_EQ(std::memcmp(large.data() + 1 + begin, row.data(), width * sizeof row[0]), 0) << name << ' ' << y;
        }
    };
    compare("RGB_to_bbytes", [&](std::size_t i, int32_t rows, uint32_t *dst) {
        RGB_to_bbytes(width - 1, rows, width, 0, r + i, g + i, b + i, dst);
    });
    compare("LongRGBV_to_RGB_array", [&](std::size_t i, int32_t rows, uint32_t *dst) {
        LongRGBV_to_RGB_array(r + i, g + i, b + i, reinterpret_cast<uint8_t *>(dst), width - 1, rows - 1);
    });
    compare("SetFloat", [&](std::size_t, int32_t rows, uint32_t *dst) { SetFloat(width * rows, 0x12345678, dst); });
    compare("char_to_float", [&](std::size_t i, int32_t rows, uint32_t *dst) {
        char_to_float(width, rows, r + i, reinterpret_cast<float *>(dst));
    });
}

template <auto Export, class From, class To> void convert_plane(Workspace &w) {
    From *src = w.buffer<From>();
    call(Export, w.size(), src, w.buffer<To>());
}

void narrow_ordinary_floats(Workspace &w) { call(float_to_char, w.size(), w.floats(w.count(), -600, 900), w.buffer()); }

void pack_bitmap(Workspace &w) {
    // The last sample of a plane's last row, and what lies behind the bitmap's last pixel, are not the call's.
    const std::size_t samples = w.count() + static_cast<std::size_t>(w.height) - 1;
    const int32_t stride = w.width + 3;
    const auto pixels = static_cast<std::size_t>(stride * w.height - 3);
    call(RGB_to_bbytes, w.size(), stride, 0, w.buffers(samples), w.buffer<uint32_t>(pixels));
}

void unpack_bitmap(Workspace &w) {
    const std::size_t samples = w.count() + static_cast<std::size_t>(w.height) - 1;
    call(bbytes_to_RGB, w.size(), w.width, 0, w.buffers(samples), w.buffer<uint32_t>());
}

void set_value(Workspace &w) {
    const auto src = w.buffers();
    call(NewSetValue, src, w.results_of(src), w.buffer(256), w.buffer<int32_t>(768), w.size());
}

const BulkCase cases[] = {
    {"SetFloat",
     [](Workspace &w) { SetFloat(static_cast<int32_t>(w.count()), w.integer(-9, 9), w.buffer<int32_t>()); }},
    {"xFillBuff", [](Workspace &w) { xFillBuff(w.width, w.height, w.integer(-9, 9), w.buffer<int32_t>()); }},
    {"char_to_float", convert_plane<char_to_float, uint8_t, float>},
    {"float_to_char", convert_plane<float_to_char, float, uint8_t>},
    {"float_to_char_ordinary", narrow_ordinary_floats},
    {"float_to_char_clamp", convert_plane<float_to_char_clamp, float, uint8_t>},
    {"char_to_long", convert_plane<char_to_long, uint8_t, int32_t>},
    {"long_to_char", convert_plane<long_to_char, int32_t, uint8_t>},
    {"RGB_to_bbytes", pack_bitmap},
    {"bbytes_to_RGB", unpack_bitmap},
    {"LongRGBV_to_RGB_array",
     [](Workspace &w) { call(LongRGBV_to_RGB_array, w.buffers(), w.buffer(4 * w.count()), w.bounds()); }},
    {"Long_to_RGBV_array",
     [](Workspace &w) { call(Long_to_RGBV_array, w.buffers(), w.buffer(4 * w.count()), w.bounds()); }},
    {"NewSetValue", set_value, true},
};

const BulkFamily family("Convert", cases);

} // namespace
