#include "tavik/generators/generators.h"

#include <algorithm>
#include <array>
#include <vector>

#include "host/colour_ramp.h"
#include "host/drawing.h"
#include "host/run.h"
#include "tavik/frame/frame.h"

namespace gallery {
namespace {

const std::vector<Stop> land = {{0.0F, {16, 42, 96}},   {0.42F, {60, 138, 190}}, {0.5F, {224, 208, 150}},
                                {0.56F, {92, 150, 70}}, {0.75F, {110, 88, 66}},  {1.0F, {255, 255, 255}}};

// Draws heights, about -1 .. 1, as land and sea, lit from the left.
template <class Height>
void draw_heights(Image &picture, int32_t left, int32_t width, const ByteTables &tables, const Height &height_at) {
    for (int32_t y = 0; y < picture.height; ++y) {
        float before = height_at(-1, y);
        for (int32_t x = 0; x < width; ++x) {
            const float height = height_at(x, y);
            const float light = std::clamp(1 + 6 * (height - before), 0.6F, 1.3F);
            before = height;
            const auto i = static_cast<std::size_t>(std::clamp((height + 1) * 127.5F, 0.0F, 255.0F));
            const auto lit = [&](uint8_t value) {
                return static_cast<uint8_t>(std::min(static_cast<float>(value) * light, 255.0F));
            };
            picture.set(left + x, y, {lit(tables[0][i]), lit(tables[1][i]), lit(tables[2][i])});
        }
    }
}

void value_noise(Run &run) {
    Image &picture = run.draw_on(360, 240, {0, 0, 0});
    draw_heights(picture, 0, picture.width, byte_tables(land), [&](int32_t x, int32_t y) {
        return 1.2F * run.call(EXPORT(FastPerlinNoise_2D), 3 + static_cast<float>(x) * 0.02F,
                               5 + static_cast<float>(y) * 0.02F, 5);
    });
}

void noise_in_space(Run &run) {
    Image &picture = run.draw_on(400, 200, {0, 0, 0});
    const auto tables = byte_tables(land);
    const auto draw = [&](int32_t left, auto noise) {
        draw_heights(picture, left, 200, tables, [&](int32_t x, int32_t y) {
            return run.call(noise, static_cast<float>(x) * 0.03F, static_cast<float>(y) * 0.03F, 0.4F);
        });
    };
    draw(0, EXPORT(glm_perlin_noise3));
    draw(200, EXPORT(glm_simplex_noise3));
}

void open_simplex(Run &run) {
    constexpr int32_t side = 320;
    constexpr std::array<int32_t, 3> octaves = {1, 3, 8};
    Image &picture = run.draw_on(side * 3, side, {0, 0, 0});
    for (std::size_t i = 0; i < octaves.size(); ++i) {
        Image part(side, side);
        run.label("plane", part.red);
        run.call(EXPORT(seed_rand), 5U);
        run.call(EXPORT(xOpenSimplex), side, side, 60, octaves[i], part.red.data());
        part.green = part.blue = part.red;
        paste(picture, part, side * static_cast<int32_t>(i), 0);
    }
}

void bricks(Run &run) {
    Image &picture = run.draw_on(600, 400, {0, 0, 0});
    const auto planes = picture.planes();
    run.call(EXPORT(xbrick), 60.0F, 5.0F, 168, 74, 52, 206, 198, 184, picture.width, picture.height, planes[0],
             planes[1], planes[2]);
}

void checks(Run &run) {
    Image &picture = run.draw_on(600, 400, {0, 0, 0});
    const auto planes = picture.planes();
    run.call(EXPORT(xcheckerboard), 40, 25, 245, 240, 228, 44, 62, 92, picture.width, picture.height, planes[0],
             planes[1], planes[2]);
}

void weave(Run &run) {
    // Threads over and under one another, lighter in their middle.
    constexpr int32_t side = 16;
    std::array<uint8_t, std::size_t{side} * side> tile{};
    for (int32_t i = 0; i < side * side; ++i) {
        const int32_t x = i % side;
        const int32_t y = i / side;
        const bool lengthwise = (x / 8 + y / 8) % 2 == 0;
        const int32_t across = (lengthwise ? y : x) % 8;
        tile[static_cast<std::size_t>(i)] = static_cast<uint8_t>(255 - 9 * (2 * across - 7) * (2 * across - 7) / 4);
    }
    run.label("tile", tile);
    const auto [red, green, blue] = run.channels();
    run.call(EXPORT(xDoWeave), 60, run.photo.width, run.photo.height, side, side, tile.data(), red.photo, green.photo,
             blue.photo, red.picture, green.picture, blue.picture);
}

// Calls body(x, y) for a random place in each square of a grid over the picture.
template <class Body> void for_each_place(Run &run, int32_t spacing, const Body &body) {
    int32_t number = 0;
    const auto random_step = [&] {
        const float unit = run.call(EXPORT(IntNoise), ++number) * 0.5F + 0.5F;
        return static_cast<int32_t>(unit * static_cast<float>(spacing - 1));
    };
    for (int32_t top = 0; top < run.picture.height; top += spacing) {
        for (int32_t left = 0; left < run.picture.width; left += spacing) {
            const int32_t x = left + random_step();
            body(std::min(x, run.picture.x_max()), std::min(top + random_step(), run.picture.y_max()));
        }
    }
}

void crystals(Run &run) {
    Image &picture = run.picture;
    std::vector<tavik_crystal_seed> seeds;
    for_each_place(run, 12, [&](int32_t x, int32_t y) {
        const std::size_t i = run.photo.index(x, y);
        seeds.push_back({static_cast<int16_t>(x), static_cast<int16_t>(y), run.photo.red[i], run.photo.green[i],
                         run.photo.blue[i], 0});
    });
    std::vector<float> heights(picture.red.size());
    run.label("seeds", seeds);
    run.label("heights", heights);
    run.call(EXPORT(xCrystalize), picture.width, picture.height, static_cast<int32_t>(seeds.size()), 1, 48, 0, 1, 0, 0,
             picture.red.data(), picture.green.data(), picture.blue.data(), seeds.data(), heights.data());
}

void cells(Run &run) {
    Image &picture = run.draw_on(600, 400, {0, 0, 0});
    std::vector<tavik_cell_seed> seeds;
    for_each_place(run, 40, [&](int32_t x, int32_t y) {
        seeds.push_back({static_cast<float>(x), static_cast<float>(y)});
    });
    std::vector<float> heights(picture.red.size());
    run.label("seeds", seeds);
    run.label("heights", heights);
    run.call(EXPORT(xcellular), picture.width, picture.height, static_cast<int32_t>(seeds.size()), 1, 110, 0, 1, 0, 1,
             picture.red.data(), picture.green.data(), picture.blue.data(), seeds.data(), heights.data());
}

} // namespace

Family generators_family() {
    return {
        "generators",
        "Noise and textures, on an empty picture or over the photo.",
        {
            {"value_noise",
             "Value noise",
             "Five octaves of hashed values as heights of land and sea.",
             {"FastPerlinNoise_2D"},
             value_noise},
            {"noise_in_space",
             "Noise in space",
             "One slice through classic Perlin noise on the left, through simplex noise on the right.",
             {"glm_perlin_noise3", "glm_simplex_noise3"},
             noise_in_space},
            {"open_simplex",
             "OpenSimplex noise",
             "One, three and eight octaves of the same field.",
             {"seed_rand", "xOpenSimplex"},
             open_simplex},
            {"bricks", "Bricks", "Half a brick's shift in every second course.", {"xbrick"}, bricks},
            {"checks", "Checks", "Two colours, from the second one on.", {"xcheckerboard"}, checks},
            {"weave",
             "Weave",
             "The photo multiplied by a small tile of threads, which repeats at 60 percent.",
             {"xDoWeave"},
             weave},
            {"crystals",
             "Crystals",
             "Each pixel has the photo's colour at the nearest of many places.",
             {"IntNoise", "xCrystalize"},
             crystals},
            {"cells",
             "Cells",
             "Cones around random places, inverted; dithered, so slightly another picture each time.",
             {"IntNoise", "xcellular"},
             cells},
        },
    };
}

} // namespace gallery
