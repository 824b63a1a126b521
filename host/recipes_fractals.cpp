#include <algorithm>
#include <vector>

#include "host/colour_ramp.h"
#include "host/drawing.h"
#include "host/run.h"
#include "tavik/generators/generators.h"

namespace gallery {
namespace {

const std::vector<Stop> dusk = {{0.0F, {10, 12, 50}},    {0.2F, {40, 90, 180}},  {0.45F, {240, 240, 250}},
                                {0.65F, {250, 170, 40}}, {0.85F, {110, 20, 40}}, {1.0F, {10, 12, 50}}};

void seahorse_valley(Run &run) {
    Image &picture = run.draw_on(600, 400, {0, 0, 0});
    const auto tables = byte_tables(dusk);
    run.label("tables", tables);
    run.call(EXPORT(DoMandel), picture.width, picture.height, -0.743643887, 0.131825904, 2e-5, 2000, 4.0F, 0,
             tables[0].data(), tables[1].data(), tables[2].data(), picture.red.data(), picture.green.data(),
             picture.blue.data());
}

void whole_set(Run &run) {
    Image &picture = run.draw_on(600, 400, {0, 0, 0});
    // One colour after another, since bands are whole iterations.
    const auto smooth = byte_tables(dusk);
    auto tables = smooth;
    for (std::size_t channel = 0; channel < 3; ++channel)
        for (std::size_t i = 0; i < 256; ++i) tables[channel][i] = smooth[channel][i * 9 & 255];
    run.label("tables", tables);
    run.call(EXPORT(DoFastMandel), picture.width, picture.height, -0.65F, 0.0F, 0.0058F, 500, 0x281008,
             tables[0].data(), tables[1].data(), tables[2].data(), picture.red.data(), picture.green.data(),
             picture.blue.data());
}

// The photo at a third of its brightness.
void darken(Image &picture) {
    for (uint8_t *plane : picture.planes())
        for (int32_t i = 0; i < picture.pixel_count(); ++i) plane[i] = static_cast<uint8_t>(plane[i] / 3);
}

void sunburst(Run &run) {
    Image &picture = run.picture;
    darken(picture);
    run.call(EXPORT(xNova), picture.width, picture.height, 390.0F, 120.0F, 430.0F, 48, 7, 255.0F, 190.0F, 90.0F, 1.0F,
             picture.red.data(), picture.green.data(), picture.blue.data());
    run.call(EXPORT(p_Nova), picture.width, picture.height, 150.0F, 300.0F, 160.0F, 24, 2, 90.0F, 140.0F, 255.0F, 0.7F,
             picture.red.data(), picture.green.data(), picture.blue.data());
}

void rain(Run &run) {
    Image &picture = run.picture;
    run.call(EXPORT(p_RandomStreaks), picture.width, picture.height, 78.0F, 60.0F, 4.0F, 0.35F, 1, 210.0F, 225.0F,
             255.0F, 0.7F, picture.red.data(), picture.green.data(), picture.blue.data());
}

void brushed_steel(Run &run) {
    Image &picture = run.draw_on(600, 400, {120, 124, 130});
    run.call(EXPORT(xRandomStreaks), picture.width, picture.height, 0.0F, 220.0F, 1.5F, 0.8F, 1, 225.0F, 228.0F, 234.0F,
             0.6F, picture.red.data(), picture.green.data(), picture.blue.data());
    run.call(EXPORT(xRandomStreaks), picture.width, picture.height, 0.0F, 150.0F, 1.5F, 0.6F, 2, 60.0F, 62.0F, 70.0F,
             0.5F, picture.red.data(), picture.green.data(), picture.blue.data());
}

} // namespace

Family fractals_family() {
    return {"fractals",
            "The Mandelbrot set, bursts and streaks of light.",
            {
                {"seahorse_valley",
                 "Seahorse valley",
                 "In double precision, with continuous colours.",
                 {"DoMandel"},
                 seahorse_valley},
                {"whole_set",
                 "The whole set",
                 "In single precision, a flat colour for each number of iterations.",
                 {"DoFastMandel"},
                 whole_set},
                {"sunburst", "Sunburst", "Two bursts of light over the darkened photo.", {"xNova", "p_Nova"}, sunburst},
                {"rain", "Rain", "Streaks that fall steeply to the right.", {"p_RandomStreaks"}, rain},
                {"brushed_steel",
                 "Brushed steel",
                 "Light streaks and dark ones, long and thin.",
                 {"xRandomStreaks"},
                 brushed_steel},
            }};
}

} // namespace gallery
