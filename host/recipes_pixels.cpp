#include <algorithm>
#include <bit>

#include "host/drawing.h"
#include "host/run.h"
#include "tavik/colour/colour.h"
#include "tavik/convert/convert.h"
#include "tavik/memops/memops.h"

namespace gallery {
namespace {

constexpr int32_t cell = 5;

Image small_photo(const Run &run) { return shrunk_to_fit(run.photo, 120, 80); }

Colour colour_at(const Image &image, std::size_t at) { return {image.red[at], image.green[at], image.blue[at]}; }

// Draws a cell for each pixel, of the colour shade(x, y).
template <class Shade> void draw_cells(Run &run, const Image &small, Shade shade) {
    Image &picture = run.draw_on(small.width * cell, small.height * cell, {0, 0, 0});
    for (int32_t y = 0; y < small.height; ++y)
        for (int32_t x = 0; x < small.width; ++x) fill(picture, x * cell, y * cell, cell, cell, shade(x, y));
}

void hue_alone(Run &run) {
    const Image small = small_photo(run);
    std::array<float, 3> hsv{};
    std::array<float, 3> rgb{};
    run.label("hsv", hsv);
    run.label("rgb", rgb);
    draw_cells(run, small, [&](int32_t x, int32_t y) {
        const Colour colour = colour_at(small, small.index(x, y));
        run.call(EXPORT(RGB_To_HSV), static_cast<float>(colour.red), static_cast<float>(colour.green),
                 static_cast<float>(colour.blue), &hsv[0], &hsv[1], &hsv[2]);
        run.call(EXPORT(HSV_To_RGB), &rgb[0], &rgb[1], &rgb[2], std::max(hsv[0], 0.0F), hsv[1], 1.0F);
        const auto byte = [](float unit) { return static_cast<uint8_t>(unit * 255.0F); };
        return Colour{byte(rgb[0]), byte(rgb[1]), byte(rgb[2])};
    });
}

void hard_contrast(Run &run) {
    const Image small = small_photo(run);
    std::array<int32_t, 3> rgb{};
    run.label("rgb", rgb);
    draw_cells(run, small, [&](int32_t x, int32_t y) {
        const Colour colour = colour_at(small, small.index(x, y));
        // From half the contrast at the left to four times at the right.
        const auto stretched = [&](uint8_t value) {
            return 128 + (value - 128) * (small.width + 7 * x) / small.width / 2;
        };
        rgb = {stretched(colour.red), stretched(colour.green), stretched(colour.blue)};
        run.call(EXPORT(Saturate), &rgb[0], &rgb[1], &rgb[2]);
        const auto byte = [](int32_t value) { return static_cast<uint8_t>(value); };
        return Colour{byte(rgb[0]), byte(rgb[1]), byte(rgb[2])};
    });
}

// Unpacking takes the upper three bytes: eight bits to the left red, green and blue come out as they went in. A bit
// further each spills into the one before; a byte back red comes out as green and green as blue.
void shifted_colours(Run &run) {
    const Image small = small_photo(run);
    std::array<uint8_t, 3> rgb{};
    run.label("rgb", rgb);
    draw_cells(run, small, [&](int32_t x, int32_t y) {
        const Colour colour = colour_at(small, small.index(x, y));
        const int32_t packed =
            run.call(EXPORT(GDIP_ColorToARGB), 0, int32_t{colour.red}, int32_t{colour.green}, int32_t{colour.blue});
        const int32_t third = 3 * x / small.width;
        int32_t shifted = run.call(EXPORT(xshiftL), packed, third == 0 ? 9 : 8);
        if (third == 2) shifted = run.call(EXPORT(xshiftR), shifted, 8);
        run.call(EXPORT(Long_To_RGB), shifted, &rgb[0], &rgb[1], &rgb[2]);
        return Colour{rgb[0], rgb[1], rgb[2]};
    });
}

// Byte 2 of a float holds the last bit of the exponent and the first seven of the fraction: it counts up once between
// powers of four.
void bytes_of_floats(Run &run) {
    const Image small = small_photo(run);
    Image changed = small;
    std::array<float, 1> value{};
    run.label("value", value);
    run.label("changed.red", changed.red);
    run.label("changed.green", changed.green);
    run.label("changed.blue", changed.blue);
    // The number is that of the variable's address, so that a host without pointers reaches its bytes.
    const auto *address = std::bit_cast<const uint8_t *>(run.call(EXPORT(GetAddressSingle), value.data()));
    for (std::size_t channel = 0; channel < 3; ++channel) {
        for (int32_t i = 0; i < small.pixel_count(); ++i) {
            const auto sample = static_cast<float>(small.planes()[channel][i]);
            run.call(EXPORT(SetFloat), 1, std::bit_cast<int32_t>(sample), value.data());
            run.call(EXPORT(WriteChar), changed.planes()[channel], i, run.call(EXPORT(ReadChar), address, 2));
        }
    }
    draw_cells(run, small, [&](int32_t x, int32_t y) { return colour_at(changed, changed.index(x, y)); });
}

// The upper half is mirrored by exchanging words, each a packed colour.
void exchanged_words(Run &run) {
    const Image small = small_photo(run);
    std::vector<int32_t> words;
    for (std::size_t i = 0; i < small.red.size(); ++i)
        words.push_back(small.blue[i] << 16 | small.green[i] << 8 | small.red[i]);
    run.label("words", words);
    for (int32_t y = 0; y < small.height / 2; ++y)
        for (int32_t x = 0; x < small.width / 2; ++x)
            run.call(EXPORT(swap_l), &words[small.index(x, y)], &words[small.index(small.x_max() - x, y)]);
    draw_cells(run, small, [&](int32_t x, int32_t y) {
        const int32_t word = words[small.index(x, y)];
        return Colour{static_cast<uint8_t>(word), static_cast<uint8_t>(word >> 8), static_cast<uint8_t>(word >> 16)};
    });
}

void partly_sorted(Run &run) {
    const Image small = small_photo(run);
    std::vector<float> greys;
    for (const uint8_t green : small.green) greys.push_back(green);
    run.label("greys", greys);
    for (int32_t y = 0; y < small.height; ++y) run.call(EXPORT(xParallelSort), &greys[small.index(0, y)], small.width);
    draw_cells(run, small, [&](int32_t x, int32_t y) {
        const auto grey = static_cast<uint8_t>(greys[small.index(x, y)]);
        return Colour{grey, grey, grey};
    });
}

struct alignas(16) Block {
    std::array<uint8_t, 16> bytes;
};

// Every second band of the photo is copied over the one below.
void copied_bands(Run &run) {
    const int32_t rows = std::max(run.photo.height / 12 / 16, 1) * 16;
    const std::size_t band = run.photo.index(0, rows) / sizeof(Block);
    std::vector<Block> blocks(run.photo.red.size() / sizeof(Block));
    run.label("blocks", blocks);
    for (const auto [source, target] : run.channels()) {
        std::copy_n(source, blocks.size() * sizeof(Block), blocks.data()->bytes.data());
        for (std::size_t from = 0; from + 2 * band <= blocks.size(); from += 2 * band)
            run.call(EXPORT(moveSSE), &blocks[from], &blocks[from + band],
                     static_cast<int32_t>(band * sizeof(Block) / 4));
        std::copy_n(blocks.data()->bytes.data(), blocks.size() * sizeof(Block), target);
    }
}

} // namespace

Family pixels_family() {
    return {
        "pixels",
        "Single colours, words and bytes: a call for each pixel of a small photo.",
        {
            {"hue_alone",
             "Hue and saturation alone",
             "Takes each colour apart and puts it together again with full value.",
             {"RGB_To_HSV", "HSV_To_RGB"},
             hue_alone},
            {"hard_contrast",
             "Contrast that grows to the right",
             "Stretches each colour about the middle grey and clamps what leaves 0 to 255.",
             {"Saturate"},
             hard_contrast},
            {"shifted_colours",
             "Shifted colours",
             "Packs each colour and unpacks it a bit too far to the left, in its place, and a byte to the right.",
             {"GDIP_ColorToARGB", "xshiftL", "xshiftR", "Long_To_RGB"},
             shifted_colours},
            {"bytes_of_floats",
             "A byte of each float",
             "Stores each sample as a float and reads its third byte back through its address.",
             {"GetAddressSingle", "SetFloat", "ReadChar", "WriteChar"},
             bytes_of_floats},
            {"exchanged_words",
             "Exchanged words",
             "Mirrors the upper half by exchanging packed colours.",
             {"swap_l"},
             exchanged_words},
            {"partly_sorted",
             "Partly sorted rows",
             "Sorts the greys of each row by phases that race.",
             {"xParallelSort"},
             partly_sorted},
            {"copied_bands",
             "Copied bands",
             "Copies every second band over the one below it, in blocks of 16 bytes.",
             {"moveSSE"},
             copied_bands},
        },
    };
}

} // namespace gallery
