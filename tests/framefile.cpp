#include "tavik/framefile/framefile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/frame_file.h"
#include "host/frame_target.h"
#include "tests/support/bulk.h"

using namespace tavik_test;

namespace {

// A file in the build folder, until the test ends; tests of other programs may run beside this one.
class ScratchFile {
  public:
    explicit ScratchFile(const std::vector<char> &bytes)
        : path(std::string(TAVIK_TEST_FOLDER "/frames") + std::to_string(std::random_device{}())) {
        std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    ~ScratchFile() { std::filesystem::remove(path); }
    ScratchFile(const ScratchFile &) = delete;
    ScratchFile &operator=(const ScratchFile &) = delete;

    const std::string path;
};

struct OpenFile {
    ScratchFile file;
    tavik_frame_header header = {{-1, -1}, -1, -1, -1};
    FILE *stream;

    explicit OpenFile(const std::vector<char> &bytes) : file(bytes), stream(kvf_open(file.path.c_str(), &header)) {}
    ~OpenFile() { kvf_close(stream); }

    // The red, green and blue bytes of a frame, over planes of 99.
    Planes frame(int32_t number, std::size_t plane_bytes) const {
        Planes planes = planes_of(plane_bytes, 99);
        call(kvf_getframe, stream, &header, number, planes);
        return planes;
    }
};

// Byte i is i, but for a header of two frames of 2 × 1.
std::vector<char> counting_file() {
    std::vector<char> bytes(32);
    std::iota(bytes.begin(), bytes.end(), char{0});
    const tavik_frame_header header = {{7, 8}, 1, 0, 2};
    std::memcpy(bytes.data(), &header, sizeof header);
    return bytes;
}

TEST(FrameFile, PlanesLieChannelByChannel) {
    const OpenFile open(counting_file());
    ASSERT_NE(open.stream, nullptr);
    EXPECT_EQ(open.header.host_words[1], 8);
    EXPECT_EQ((std::array{open.header.x_max, open.header.y_max, open.header.frame_count}), (std::array{1, 0, 2}));
    EXPECT_EQ(open.frame(1, 2), (Planes{{{22, 23}, {26, 27}, {30, 31}}}));
    EXPECT_EQ(open.frame(0, 2), (Planes{{{20, 21}, {24, 25}, {28, 29}}}));
    // Beyond the frames stands what follows in the file, until it ends; before it nothing can be read.
    EXPECT_EQ(open.frame(2, 2), (Planes{{{24, 25}, {28, 29}, {99, 99}}}));
    EXPECT_EQ(open.frame(1000, 2), (Planes{{{99, 99}, {99, 99}, {99, 99}}}));
    EXPECT_EQ(open.frame(-11, 2)[0], (Bytes{99, 99}));
    EXPECT_EQ(open.frame(0, 2)[0], (Bytes{20, 21}));
}

TEST(FrameFile, OffsetsWrapIn32Bits) {
    OpenFile open(counting_file());
    // 2^31 frames of 2 bytes are 2^32.
    EXPECT_EQ(open.frame(lowest + 1, 2)[0], (Bytes{22, 23}));
    // 65536 × 65537 pixels are as many as 65536.
    open.header.x_max = 65535;
    open.header.y_max = 65536;
    const auto planes = open.frame(0, 65536);
    EXPECT_EQ(planes[0][11], 31);
    EXPECT_EQ(planes[0][12], 99);
}

TEST(FrameFile, MissingShortAndDamagedFiles) {
    tavik_frame_header header = {{1, 2}, 3, 4, 5};
    EXPECT_EQ(kvf_open(TAVIK_TEST_FOLDER "/no such file", &header), nullptr);
    EXPECT_EQ(header.frame_count, 5);

    std::vector<char> bytes = counting_file();
    bytes.resize(27);
    const OpenFile cut(bytes);
    EXPECT_EQ(cut.frame(1, 2), (Planes{{{22, 23}, {26, 99}, {99, 99}}}));
    bytes.resize(16);
    const OpenFile no_frames(bytes);
    EXPECT_EQ(no_frames.header.x_max, 1);
    EXPECT_EQ(no_frames.header.frame_count, -1);
    EXPECT_EQ(no_frames.frame(0, 2)[0], (Bytes{99, 99}));

    OpenFile damaged(counting_file());
    for (const int32_t y_max : {-1, -5}) {
        damaged.header.y_max = y_max;
        EXPECT_EQ(damaged.frame(0, 2)[0], (Bytes{99, 99}));
    }
}

TEST(FrameFile, FramesAreDrawnAsPlanesAreScaled) {
    constexpr int32_t width = 37;
    constexpr int32_t height = 23;
    std::vector<Bytes> planes;
    for (uint32_t i = 0; i < 9; ++i) planes.push_back(noise(width * height, i));
    std::vector<gallery::FramePlanes> frames;
    for (std::size_t i = 0; i < 9; i += 3)
        frames.push_back({planes[i].data(), planes[i + 1].data(), planes[i + 2].data()});
    const OpenFile open(gallery::bytes_of_frame_file(width, height, frames));
    EXPECT_EQ(open.frame(1, width * height), (Planes{planes[3], planes[4], planes[5]}));

    struct Case {
        int32_t frame, out_width, out_height;
    };
    // To a target of 60 × 40: smaller, larger, as large, cut off, nothing, and a frame beyond the file's end.
    for (const Case &c : {Case{0, 20, 10},
                          {2, 60, 40},
                          {1, 37, 23},
                          {1, 100, 90},
                          {1, 7, 90},
                          {1, 0, 9},
                          {1, 9, 0},
                          {1, -9, 9},
                          {1, 9, -9},
                          {50, 20, 20}}) {
        gallery::FrameTarget target(60, 40);
        std::fill_n(target.pixels(), 60 * 40, 0x123456);
        kvf_getframetoHDC_scaled(open.stream, &open.header, c.frame, target.handle(), c.out_width, c.out_height);

        std::vector<uint32_t> scaled(100 * 90);
        if (c.frame < 3)
            p_scale_to_dib(planes[static_cast<std::size_t>(3 * c.frame)].data(),
                           planes[static_cast<std::size_t>(3 * c.frame) + 1].data(),
                           planes[static_cast<std::size_t>(3 * c.frame) + 2].data(), scaled.data(), width, height,
                           c.out_width, c.out_height, 100);
        for (int32_t y = 0; y < 40; ++y) {
            for (int32_t x = 0; x < 60; ++x) {
                const bool drawn = x < c.out_width && y < c.out_height;
                ASSERT_EQ(target.pixels()[y * 60 + x],
                          drawn ? scaled[static_cast<std::size_t>(y * 100 + x)] : 0x123456U)
                    << c.out_width << ' ' << x << ' ' << y;
            }
        }
    }
    // Headers of no picture, or one too large.
    for (const int32_t x_max : {-1, -38, 1 << 30}) {
        gallery::FrameTarget target(8, 8);
        tavik_frame_header header = open.header;
        header.x_max = x_max;
        kvf_getframetoHDC_scaled(open.stream, &header, 0, target.handle(), 8, 8);
        EXPECT_EQ(target.pixels()[0], 0U);
    }
}

// The source columns and rows that a plane is scaled from.
std::vector<int> scaled_places(int32_t width, int32_t height, int32_t out_width, int32_t out_height) {
    Bytes columns;
    Bytes rows;
    for (int32_t i = 0; i < width * height; ++i) {
        columns.push_back(static_cast<uint8_t>(i % width));
        rows.push_back(static_cast<uint8_t>(i / width));
    }
    std::vector<uint32_t> out(static_cast<std::size_t>(out_width) * static_cast<std::size_t>(out_height));
    p_scale_to_dib(columns.data(), rows.data(), rows.data(), out.data(), width, height, out_width, out_height,
                   out_width);
    std::vector<int> places;
    for (const uint32_t pixel : out) places.push_back(static_cast<int>(pixel >> 16 | (pixel & 0xFFU) << 8));
    return places;
}

TEST(FrameFile, ScalingTruncatesAndDrifts) {
    EXPECT_EQ(scaled_places(3, 1, 7, 1), (std::vector{0, 0, 0, 1, 1, 2, 2}));
    EXPECT_EQ(scaled_places(10, 1, 3, 1), (std::vector{0, 3, 6}));
    EXPECT_EQ(scaled_places(2, 2, 4, 3), (std::vector{0, 0, 1, 1, 0, 0, 1, 1, 256, 256, 257, 257}));
    EXPECT_EQ(scaled_places(2, 5, 1, 2), (std::vector{0, 512}));
    // The sum of ten times a tenth is above 1, that of thirty times below 3.
    const auto tenths = scaled_places(10, 1, 100, 1);
    EXPECT_EQ((std::array{tenths[10], tenths[29], tenths[30], tenths[31], tenths[99]}), (std::array{1, 2, 2, 3, 9}));
    // Here the sum exceeds the row: the next row's first sample, and the last one again at the end.
    const auto wide = scaled_places(50, 2, 30000, 2);
    EXPECT_EQ(wide[29999], 256);
    EXPECT_EQ(wide[59999], 49 + 256);

    std::array<uint32_t, 12> out = {};
    const Bytes one = {7};
    p_scale_to_dib(one.data(), one.data(), one.data(), out.data() + 8, 1, 1, 2, 3, -4);
    EXPECT_EQ(out, (std::array<uint32_t, 12>{0x70707, 0x70707, 0, 0, 0x70707, 0x70707, 0, 0, 0x70707, 0x70707}));
    p_scale_to_dib(one.data(), one.data(), one.data(), out.data() + 10, 1, 1, 2, 0, 2);
    EXPECT_EQ(out[10], 0U);
}

TEST(FrameFile, BitmapsAreUnpackedFromTheBottom) {
    Bytes src(12);
    std::iota(src.begin(), src.end(), uint8_t{1});
    Bytes red(6, 99);
    Bytes green = red;
    Bytes blue = red;
    AVI_extract(2, 2, 12, red.data(), green.data(), blue.data(), src.data());
    EXPECT_EQ(blue, (Bytes{7, 10, 99, 1, 4, 99}));
    EXPECT_EQ(green, (Bytes{8, 11, 99, 2, 5, 99}));
    EXPECT_EQ(red, (Bytes{9, 12, 99, 3, 6, 99}));
    for (const int32_t bytes : {0, -3}) AVI_extract(2, 2, bytes, red.data(), red.data(), red.data(), src.data());
    EXPECT_EQ(red[3], 3);
    // A byte of the third pixel brings it whole.
    Bytes dst(6, 99);
    AVI_extract(2, 2, 7, dst.data(), green.data(), blue.data(), src.data());
    EXPECT_EQ(dst, (Bytes{9, 99, 99, 3, 6, 99}));
}

TEST(FrameFile, StripsAreStretched) {
    const Bytes src = {10, 20, 30, 40};
    struct Case {
        float step;
        int32_t first, last;
        Bytes after;
    };
    for (const Case &c : {Case{0.5F, 2, 5, {99, 99, 10, 10, 20, 20}},
                          {1.5F, 0, 2, {10, 20, 40, 99, 99, 99}},
                          {0, 4, 5, {99, 99, 99, 99, 10, 10}},
                          {1, 3, 2, {99, 99, 99, 99, 99, 99}}}) {
        Bytes dst(6, 99);
        FilmstripHelper(c.step, c.first, c.last, src.data(), dst.data());
        EXPECT_EQ(dst, c.after) << c.step;
    }
}

TEST(FrameFile, RunLengths) {
    const auto repeated = [](std::size_t count, uint8_t value) { return Bytes(count, value); };
    Bytes mixed = repeated(256, 1);
    mixed.insert(mixed.end(), 300, 2);
    struct Case {
        Bytes src;
        Bytes encoded;
        int32_t result;
    };
    for (const Case &c : {Case{repeated(10, 7), {10, 7}, 0},
                          {{1, 2, 3, 4}, {1, 1, 1}, 1},
                          {{}, {}, 0},
                          {{5}, {1}, 1},
                          {{5, 5}, {2}, 1},
                          {{5, 5, 5}, {3, 5}, 1},
                          {{5, 5, 5, 5}, {4, 5}, 0},
                          {{5, 5, 6, 6, 6}, {2, 5, 3, 6}, 1},
                          {{5, 5, 6, 6, 6, 6}, {2, 5, 4, 6}, 0},
                          {repeated(255, 3), {255, 3}, 0},
                          {repeated(256, 3), {255, 3, 1, 3}, 0},
                          {mixed, {255, 1, 1, 1, 255, 2, 45, 2}, 0}}) {
        Bytes dst(c.src.size() + 1, 99);
        auto length = static_cast<int32_t>(c.src.size());
        EXPECT_EQ(xRLE_Encode_byte(c.src.data(), dst.data(), &length), c.result);
        EXPECT_EQ(Bytes(dst.begin(), dst.begin() + length), c.encoded);
        EXPECT_TRUE(std::all_of(dst.begin() + length, dst.end(), [](uint8_t byte) { return byte == 99; }));
    }
    int32_t length = -4;
    EXPECT_EQ(xRLE_Encode_byte(nullptr, nullptr, &length), 0);
    EXPECT_EQ(length, 0);
}

struct Thumbnail {
    Planes scratch;
    Bytes pixels;
    int32_t result;

    // The second plane is the first one's complement, the third a constant.
    Thumbnail(const Bytes &red, int32_t x_max, int32_t y_max, int32_t width, int32_t height)
        : pixels(static_cast<std::size_t>(3 * (std::max(width, 0) + 1) * std::max(height, 0)), 99) {
        Bytes green;
        for (const uint8_t sample : red) green.push_back(static_cast<uint8_t>(255 - sample));
        const Bytes blue(red.size(), 200);
        scratch.fill(Bytes(static_cast<std::size_t>((2 * std::max(width, 0) + 1) * 2 * std::max(height, 0)), 99));
        result = call(SuperThumb, red, green, blue, scratch, pixels, x_max, y_max, width, height);
    }
};

TEST(FrameFile, ThumbnailsAreResampledThenHalved) {
    const Thumbnail one({10, 21, 31, 41}, 1, 1, 1, 1);
    EXPECT_EQ(one.scratch[0], (Bytes{10, 15, 99, 20, 25, 99})); // 10, 15.5; 20.5, 25.75
    EXPECT_EQ(one.scratch[1], (Bytes{245, 239, 99, 234, 229, 99}));
    EXPECT_EQ(one.pixels, (Bytes{200, 236, 17, 99, 99, 99}));
    EXPECT_EQ(one.result, 1);
    // Steps of 1: the last row and column are never reached.
    const Thumbnail same({0, 4, 250, 8, 12, 250, 250, 250, 250}, 2, 2, 1, 1);
    EXPECT_EQ(same.scratch[0], (Bytes{0, 4, 99, 8, 12, 99}));
    EXPECT_EQ(same.pixels[2], 6);
    const Bytes ramp = {0, 100, 0, 100};
    const Thumbnail wide(ramp, 1, 1, 2, 1);
    EXPECT_EQ(wide.scratch[0], (Bytes{0, 25, 50, 75, 99, 0, 25, 50, 75, 99}));
    EXPECT_EQ((std::array{wide.pixels[2], wide.pixels[5], wide.pixels[8]}), (std::array<uint8_t, 3>{12, 62, 99}));
    for (const int32_t none : {0, -2}) {
        EXPECT_EQ(Thumbnail(ramp, 1, 1, 2, none).result, 0);
        EXPECT_EQ(Thumbnail(ramp, 1, 1, none, 3).result, 3);
    }
}

// From this many samples on some row starts fall between the numbers that a float holds.
TEST(FrameFile, ThumbnailsOfLargePlanesRoundTheirRowStarts) {
    constexpr int32_t width = 4097;
    constexpr int32_t rows = 4200;
    Bytes red(std::size_t{width} * rows);
    for (std::size_t i = 0; i < red.size(); ++i) red[i] = i % width == 0 ? 255 : 0;
    // Rows 0, 4099 and so on: 4097 · 4099 is odd and becomes the even number below.
    const Thumbnail t(red, width - 1, 2 * 4099, 1, 1);
    EXPECT_EQ(t.scratch[0], (Bytes{255, 0, 99, 0, 0, 99}));
}

const BulkCase cases[] = {
    {"AVI_extract",
     [](Workspace &w) {
         const std::size_t plane = static_cast<std::size_t>((w.width + 1) * w.height - 1);
         call(AVI_extract, w.size(), static_cast<int32_t>(3 * w.count()), w.buffers(plane), w.buffer(3 * w.count()));
     }},
    {"FilmstripHelper",
     [](Workspace &w) {
         const float step = w.real(0, 3);
         const auto last = static_cast<int32_t>(w.count()) - 1;
         float position = 0;
         for (int32_t i = 0; i < last; ++i) position += step;
         FilmstripHelper(step, 0, last, w.buffer(static_cast<std::size_t>(position) + 1), w.result(w.count()));
     }},
    {"SuperThumb",
     [](Workspace &w) {
         if (w.count() == 0) return; // There is nothing to sample.
         const auto src = w.buffers();
         for (const int32_t thumb_width : {5, 70, 300}) {
             constexpr int32_t thumb_height = 3;
             const auto scratch = static_cast<std::size_t>(2 * thumb_height * (2 * thumb_width + 1) - 1);
             call(SuperThumb, src, w.buffers(scratch),
                  w.buffer(static_cast<std::size_t>(3 * (thumb_height * (thumb_width + 1) - 1))), w.bounds(),
                  thumb_width, thumb_height);
         }
     }},
    {"p_scale_to_dib",
     [](Workspace &w) { call(p_scale_to_dib, w.buffers(), w.result<uint32_t>(45 * 60), w.size(), 45, 60, 45); }},
    {"xRLE_Encode_byte",
     [](Workspace &w) {
         uint8_t *src = w.buffer();
         // Runs of many lengths, up to the end.
         for (std::size_t i = 0; i < w.count(); ++i) src[i] = i % 97 < 20 || src[i] < 200 ? 1 : src[i];
         auto *length = w.buffer<int32_t>(1);
         *length = static_cast<int32_t>(w.count());
         xRLE_Encode_byte(src, w.buffer(std::max<std::size_t>(w.count(), 2) - 1), length);
     }},
};

const BulkFamily family("FrameFile", cases);

} // namespace
