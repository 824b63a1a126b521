#include "tavik/generators/generators.h"

#include <algorithm>
#include <array>
#include <vector>

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

const std::string chain = "each position is the sum of the one before and a step";
const std::string one_point = "one point a call; a pixel is a call";

// Calls noise(x, y, i) for the point of each pixel.
template <class Noise> void at_each_pixel(const Picture &p, const Noise &noise) {
    for (int32_t y = 0; y < p.height; ++y) {
        for (int32_t x = 0; x < p.width; ++x) {
            const int32_t i = y * p.width + x;
            p.to_floats[i] = noise(static_cast<float>(x) * 0.01F, static_cast<float>(y) * 0.01F, i);
        }
    }
}

template <int32_t octaves> void open_simplex(const Picture &p) { xOpenSimplex(p.width, p.height, 64, octaves, p.to_r); }

// The pixels' bytes serve as the blend table.
template <int32_t blend, int32_t alpha> void fast_linear(const Picture &p) {
    fastLinearGradient(-0.02F, -0.03F, -9, p.x_max(), p.height, blend, alpha, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b,
                       p.table, p.table, p.table, p.table, p.quads(), 0);
}

template <int32_t blend> void fast_circular(const Picture &p) {
    fastCircularGradient(p.x_max(), p.height, p.width / 3, p.height / 2, p.height, blend, p.r, p.g, p.b, p.to_r, p.to_g,
                         p.to_b, p.table, p.table, p.table, p.table, p.quads());
}

// Of the float tables' colours.
constexpr int32_t last = 1023;

int32_t grid(int32_t size, int32_t step) { return size / step + 1; }

// Seeds in every 16 × 16 pixels, in two layers, each 48 pixels wide.
constexpr int32_t cell = 16;
constexpr int32_t cone = 48;

template <class Seed, class SeedAt> const Seed *seeds_of(const Picture &p, const SeedAt &seed_at) {
    static std::vector<Seed> seeds;
    const int32_t columns = grid(p.width, cell);
    const int32_t rows = grid(p.height, cell);
    const int32_t count = 2 * columns * rows;
    if (seeds.size() != static_cast<std::size_t>(count)) {
        seeds.clear();
        for (int32_t i = 0; i < count; ++i)
            seeds.push_back(
                seed_at(i % columns * cell + p.r[i] % cell, i / columns % rows * cell + p.g[i] % cell, p.b[i]));
    }
    return seeds.data();
}

float *zeroed_heights(const Picture &p) {
    std::fill_n(p.to_floats, p.count(), 0.0F);
    return p.to_floats;
}

const Case cases[] = {
    {"IntNoise",
     {.bytes = 4, .note = one_point},
     [](const Picture &p) { at_each_pixel(p, [](float, float, int32_t i) { return IntNoise(i); }); }},
    {"FastPerlinNoise_2D, 1 octave",
     {.bytes = 4, .note = one_point},
     [](const Picture &p) { at_each_pixel(p, [](float x, float y, int32_t) { return FastPerlinNoise_2D(x, y, 1); }); }},
    {"FastPerlinNoise_2D, 6 octaves",
     {.bytes = 4, .note = one_point},
     [](const Picture &p) { at_each_pixel(p, [](float x, float y, int32_t) { return FastPerlinNoise_2D(x, y, 6); }); }},
    {"glm_perlin_noise3",
     {.bytes = 4, .note = one_point},
     [](const Picture &p) {
         at_each_pixel(p, [](float x, float y, int32_t) { return glm_perlin_noise3(x, y, 0.5F); });
     }},
    {"glm_simplex_noise3",
     {.bytes = 4, .note = one_point},
     [](const Picture &p) {
         at_each_pixel(p, [](float x, float y, int32_t) { return glm_simplex_noise3(x, y, 0.5F); });
     }},
    {"xOpenSimplex, 1 octave", {.bytes = 1, .parallel = true}, open_simplex<1>},
    {"xOpenSimplex, 4 octaves", {.bytes = 1, .parallel = true}, open_simplex<4>},
    {"fastLinearGradient", {.bytes = 3, .parallel = true, .note = chain}, fast_linear<0, 0>},
    {"fastLinearGradient, alpha", {.bytes = 6, .parallel = true, .note = chain}, fast_linear<0, 1>},
    {"fastLinearGradient, blend table and alpha",
     {.bytes = 6, .parallel = true, .note = "three look-ups in 64 KiB a pixel"},
     fast_linear<1, 1>},
    {"fastCircularGradient", {.bytes = 9, .parallel = true}, fast_circular<0>},
    {"fastCircularGradient, blend table",
     {.bytes = 9, .parallel = true, .note = "three look-ups in 64 KiB a pixel"},
     fast_circular<1>},
    {"xRenderLinearTo",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) {
         xRenderLinearTo(0.2F, 0.1F, -9, p.width, p.height, last, p.floats, p.to_r, p.to_g, p.to_b, p.r, p.g, p.b);
     }},
    {"xRenderCircularTo",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) {
         xRenderCircularTo(99, 99, 0, 0, p.width, p.height, last, p.floats, p.to_r, p.to_g, p.to_b, p.r, p.g, p.b);
     }},
    {"xRenderSweepTo",
     {.bytes = 6, .parallel = true, .note = "the runtime's atan2 takes most of the time"},
     [](const Picture &p) {
         xRenderSweepTo(99, 99, 99, 600, 2, p.width, p.height, last, p.floats, p.to_r, p.to_g, p.to_b, p.r, p.g, p.b);
     }},
    {"ApplyGradient",
     {.bytes = 6},
     [](const Picture &p) { ApplyGradient(p.width, 0, p.height, p.to_r, p.to_g, p.to_b, p.table, p.table, p.table); }},
    {"xbrick",
     {.bytes = 3, .parallel = true, .note = "copies of the first brick"},
     [](const Picture &p) { xbrick(40, 3, 1, 2, 3, 4, 5, 6, p.width, p.height, p.to_r, p.to_g, p.to_b); }},
    {"xcheckerboard",
     {.bytes = 3, .parallel = true, .note = "copies of the first check"},
     [](const Picture &p) { xcheckerboard(8, 8, 1, 2, 3, 4, 5, 6, p.width, p.height, p.to_r, p.to_g, p.to_b); }},
    {"xDoWeave",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) { xDoWeave(70, p.width, p.height, 16, 16, p.table, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b); }},
    {"xCrystalize",
     {.bytes = 10, .parallel = true, .note = "18 cones over a pixel"},
     [](const Picture &p) {
         const auto *seeds = seeds_of<tavik_crystal_seed>(p, [](int32_t x, int32_t y, uint8_t colour) {
             return tavik_crystal_seed{static_cast<int16_t>(x), static_cast<int16_t>(y), colour, colour, colour, 0};
         });
         xCrystalize(p.width, p.height, grid(p.width, cell), grid(p.height, cell), cone, 0, 2, 0, 0, p.to_r, p.to_g,
                     p.to_b, seeds, zeroed_heights(p));
     }},
    {"xcellular",
     {.bytes = 11, .parallel = true, .note = "18 cones over a pixel"},
     [](const Picture &p) {
         const auto *seeds = seeds_of<tavik_cell_seed>(p, [](int32_t x, int32_t y, uint8_t) {
             return tavik_cell_seed{static_cast<float>(x), static_cast<float>(y)};
         });
         xcellular(p.width, p.height, grid(p.width, cell), grid(p.height, cell), cone, 0, 2, 0, 0, p.to_r, p.to_g,
                   p.to_b, seeds, zeroed_heights(p));
     }},
    {"DoMandel, the whole set",
     {.bytes = 3, .parallel = true, .note = "up to 100 iterations a pixel"},
     [](const Picture &p) {
         DoMandel(p.width, p.height, -0.65, 0, 3.2 / p.width, 100, 4, 0, p.table, p.table, p.table, p.to_r, p.to_g,
                  p.to_b);
     }},
    {"DoFastMandel, the whole set",
     {.bytes = 3, .parallel = true, .note = "up to 100 iterations a pixel"},
     [](const Picture &p) {
         DoFastMandel(p.width, p.height, -0.65F, 0, 3.2F / static_cast<float>(p.width), 100, 0, p.table, p.table,
                      p.table, p.to_r, p.to_g, p.to_b);
     }},
    {"p_Nova",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) {
         p_Nova(p.width, p.height, static_cast<float>(p.width) / 2, static_cast<float>(p.height) / 2,
                static_cast<float>(p.width), 48, 1, 255, 200, 90, 0.01F, p.to_r, p.to_g, p.to_b);
     }},
    {"p_RandomStreaks",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) {
         p_RandomStreaks(p.width, p.height, 78, 60, 4, 0.35F, 1, 200, 220, 255, 0.5F, p.to_r, p.to_g, p.to_b);
     }},
};

const Family family("generators", cases);

} // namespace
} // namespace tavik_bench
