#include "tavik/dither/dither.h"

#include <array>
#include <vector>

#include "host/run.h"
#include "tavik/convert/convert.h"
#include "tavik/frame/frame.h"

namespace gallery {
namespace {

// Thresholds in the order in which a 3 × 3 block fills, 4 bytes to a row, spread over 0 .. range − 1.
std::array<uint8_t, 12> filling_order(int32_t range) {
    constexpr std::array<int32_t, 12> order = {0, 7, 3, 0, 6, 5, 2, 0, 4, 1, 8, 0};
    std::array<uint8_t, 12> matrix{};
    for (std::size_t i = 0; i < matrix.size(); ++i) matrix[i] = static_cast<uint8_t>((2 * order[i] + 1) * range / 18);
    return matrix;
}

// The colours of the cube: six steps of each channel, red fastest.
std::array<std::array<uint8_t, 216>, 3> cube_palette() {
    std::array<std::array<uint8_t, 216>, 3> palette{};
    for (std::size_t i = 0; i < 216; ++i) {
        palette[0][i] = static_cast<uint8_t>(i % 6 * 51);
        palette[1][i] = static_cast<uint8_t>(i / 6 % 6 * 51);
        palette[2][i] = static_cast<uint8_t>(i / 36 * 51);
    }
    return palette;
}

void ordered_cube(Run &run) {
    Image &picture = run.picture;
    const auto matrix = filling_order(51);
    const auto palette = cube_palette();
    run.label("matrix", matrix);
    run.label("palette", palette);
    run.call(EXPORT(x8BitOrderedDither), picture.width, 0, picture.height, picture.red.data(), picture.green.data(),
             picture.blue.data(), matrix.data(), palette[0].data(), palette[1].data(), palette[2].data());
}

void random_cube(Run &run) {
    Image &picture = run.picture;
    const auto palette = cube_palette();
    run.label("palette", palette);
    run.call(EXPORT(x8BitRandomDither), picture.width, 0, picture.height, picture.red.data(), picture.green.data(),
             picture.blue.data(), palette[0].data(), palette[1].data(), palette[2].data());
}

void ordered_black_and_white(Run &run) {
    Image &picture = run.picture;
    const auto matrix = filling_order(256);
    run.label("matrix", matrix);
    run.call(EXPORT(x1bitorderedDither), picture.width, picture.height, picture.red.data(), picture.green.data(),
             picture.blue.data(), matrix.data());
}

void random_black_and_white(Run &run) {
    Image &picture = run.picture;
    run.call(EXPORT(seed_rand), uint32_t{1});
    run.call(EXPORT(x1bitranddither), picture.width, picture.height, picture.red.data(), picture.green.data(),
             picture.blue.data());
}

void grain(Run &run) {
    std::array<std::vector<float>, 3> planes;
    const auto channels = run.channels();
    for (std::size_t i = 0; i < planes.size(); ++i) {
        planes[i].resize(static_cast<std::size_t>(run.photo.pixel_count()));
        run.label("grains", planes[i]);
        run.call(EXPORT(char_to_float), run.photo.width, run.photo.height, channels[i].photo, planes[i].data());
    }
    run.call(EXPORT(seed_rand), uint32_t{1});
    run.call(EXPORT(xgrain), run.photo.width, run.photo.height, 70.0F, 70.0F, 70.0F, planes[0].data(), planes[1].data(),
             planes[2].data());
    for (std::size_t i = 0; i < planes.size(); ++i)
        run.call(EXPORT(float_to_char_clamp), run.photo.width, run.photo.height, planes[i].data(), channels[i].picture);
}

void jitter(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    run.call(EXPORT(FastJitter), picture.red.data(), picture.green.data(), picture.blue.data(), 0, photo.x_max(),
             photo.y_max(), photo.red.data(), photo.green.data(), photo.blue.data(), 14);
}

// A tile of smooth noise about 0.
std::array<std::vector<float>, 3> grain_tiles(int32_t side) {
    std::array<std::vector<float>, 3> tiles;
    uint32_t state = 1;
    for (auto &tile : tiles) {
        for (int32_t i = 0; i < side * side; ++i) {
            float sum = 0;
            for (int draw = 0; draw < 4; ++draw) {
                state = state * 1664525U + 1013904223U;
                sum += static_cast<float>(state >> 16) / 65536.0F - 0.5F;
            }
            tile.push_back(sum * 40);
        }
    }
    return tiles;
}

void film_still(Run &run) {
    constexpr int32_t side = 64;
    Image &picture = run.picture;
    const auto tiles = grain_tiles(side);
    run.label("grain", tiles[0]);
    run.call(EXPORT(xfilmgrainHelper), picture.width, picture.height, side, side, 0.7F, 11.3F, 5.8F, 1.0F,
             tiles[0].data(), tiles[1].data(), tiles[2].data(), picture.red.data(), picture.green.data(),
             picture.blue.data());
}

} // namespace

Family dither_family() {
    return {"dither",
            "Fewer colours, or none, without bands; grain and jitter.",
            {
                {"ordered_cube",
                 "216 colours, ordered",
                 "Six steps of each channel; a 3 × 3 matrix decides which way a value between two steps goes.",
                 {"x8BitOrderedDither"},
                 ordered_cube},
                {"random_cube",
                 "216 colours, random",
                 "The same cube with a random threshold for each pixel, the same ones in every call.",
                 {"x8BitRandomDither"},
                 random_cube},
                {"ordered_black_and_white",
                 "Black and white, ordered",
                 "Nine thresholds make ten tones of black and white.",
                 {"x1bitorderedDither"},
                 ordered_black_and_white},
                {"random_black_and_white",
                 "Black and white, random",
                 "A pixel is white as often as it is bright.",
                 {"seed_rand", "x1bitranddither"},
                 random_black_and_white},
                {"grain",
                 "Grain",
                 "Random numbers added to each channel in float planes.",
                 {"char_to_float", "seed_rand", "xgrain", "float_to_char_clamp"},
                 grain},
                {"jitter",
                 "Jitter",
                 "Each pixel comes from a place up to seven pixels off; another picture each time.",
                 {"FastJitter"},
                 jitter},
                {"film_still",
                 "Film still",
                 "Grain from a tile of 64 × 64, a little enlarged.",
                 {"xfilmgrainHelper"},
                 film_still},
                {"scatter",
                 "Scatter",
                 "Each pixel comes from a place up to five pixels off, the same in every call.",
                 {"xjitter"},
                 [](Run &run) {
                     const Image &photo = run.photo;
                     Image &picture = run.picture;
                     run.call(EXPORT(xjitter), photo.width, photo.height, 5.0F, 1, photo.red.data(), photo.green.data(),
                              photo.blue.data(), picture.red.data(), picture.green.data(), picture.blue.data());
                 }},
                {"frosted_glass",
                 "Frosted glass",
                 "Displacements of up to seven pixels that vary smoothly over cells of nine.",
                 {"xjitter2"},
                 [](Run &run) {
                     const Image &photo = run.photo;
                     Image &picture = run.picture;
                     run.call(EXPORT(xjitter2), photo.width, photo.height, 7.0F, 9.0F, 1, photo.red.data(),
                              photo.green.data(), photo.blue.data(), picture.red.data(), picture.green.data(),
                              picture.blue.data());
                 }},
            }};
}

} // namespace gallery
