#include "tavik/memops/memops.h"

#include <algorithm>
#include <cmath>

#include "host/run.h"
#include "tavik/tone/tone.h"

namespace gallery {
namespace {

// A layer of the photo's size, its colour given by how far a pixel is from a centre: 1 at half the diagonal.
template <class Shade> Image radial_layer(const Image &photo, float centre_x, float centre_y, Shade shade) {
    Image layer(photo.width, photo.height);
    const auto width = static_cast<float>(photo.width);
    const auto height = static_cast<float>(photo.height);
    const float reach = std::sqrt(width * width + height * height) / 2;
    for (int32_t y = 0; y < layer.height; ++y) {
        for (int32_t x = 0; x < layer.width; ++x) {
            const float dx = static_cast<float>(x) - centre_x * width;
            const float dy = static_cast<float>(y) - centre_y * height;
            layer.set(x, y, shade(std::sqrt(dx * dx + dy * dy) / reach));
        }
    }
    return layer;
}

Colour scaled(Colour colour, float amount) {
    const auto part = [=](uint8_t value) { return static_cast<uint8_t>(static_cast<float>(value) * amount); };
    return {part(colour.red), part(colour.green), part(colour.blue)};
}

Colour glow(float distance, Colour colour) {
    const float light = std::max(1 - distance / 1.8F, 0.0F);
    return scaled(colour, light * light);
}

// Combines the layer into each plane of the picture.
template <class Function> void combine_layer(Run &run, Export<Function> combine) {
    for (std::size_t channel = 0; channel < 3; ++channel)
        run.call(combine, run.photo.width, run.photo.height, run.layer->planes()[channel],
                 run.picture.planes()[channel]);
}

void light_leak(Run &run) {
    run.layer = radial_layer(run.photo, 0.02F, 0.1F, [](float distance) { return glow(distance, {255, 150, 60}); });
    combine_layer(run, EXPORT(add_SSE));
}

void shadow(Run &run) {
    run.layer = radial_layer(run.photo, 1.0F, 0.5F, [](float distance) { return glow(distance, {150, 120, 60}); });
    combine_layer(run, EXPORT(sub_SSE));
}

void vignette(Run &run) {
    run.layer = radial_layer(run.photo, 0.5F, 0.5F, [](float distance) {
        return scaled({255, 250, 240}, std::clamp(1.15F - distance * distance, 0.0F, 1.0F));
    });
    combine_layer(run, EXPORT(Mult_SSE));
}

void sorted_rows(Run &run) {
    for (uint8_t *plane : run.picture.planes())
        for (int32_t y = 0; y < run.picture.height; ++y)
            run.call(EXPORT(quicksort), plane + run.picture.index(0, y), run.picture.width);
}

// A copy whose destination begins inside its source repeats what lies between the two.
void repeated_columns(Run &run) {
    const int32_t period = std::max(run.photo.width / 24, 4);
    const int32_t from = run.photo.width / 2;
    for (uint8_t *plane : run.picture.planes()) {
        for (int32_t y = 0; y < run.picture.height; ++y) {
            uint8_t *start = plane + run.picture.index(from, y);
            run.call(EXPORT(moveASM), start - period, start, run.photo.width - from);
        }
    }
}

void square_root(Run &run) {
    std::array<uint8_t, 256> table{};
    run.label("table", table);
    for (std::size_t value = 0; value < table.size(); ++value) {
        const float unit = static_cast<float>(value) / 255;
        table[value] = static_cast<uint8_t>(run.call(EXPORT(sqrt_sse), unit) * 255);
    }
    for (const auto [source, target] : run.channels())
        run.call(EXPORT(ValueLut), run.photo.width, run.photo.height, source, target, table.data());
}

} // namespace

Family memops_family() {
    return {
        "memops",
        "Blocks of bytes added, subtracted, multiplied, moved and sorted.",
        {
            {"light_leak", "Light leak", "Adds a warm glow and stops at white.", {"add_SSE"}, light_leak},
            {"shadow", "Shadow", "Subtracts a glow, blue least, and stops at black.", {"sub_SSE"}, shadow},
            {"vignette",
             "Vignette",
             "Multiplies the photo by a layer that darkens the corners.",
             {"Mult_SSE"},
             vignette},
            {"sorted_rows",
             "Sorted rows",
             "Sorts the samples of each row, channel by channel.",
             {"quicksort"},
             sorted_rows},
            {"repeated_columns",
             "Repeated columns",
             "Copies each row onto itself a little further right, so that one strip repeats to the edge.",
             {"moveASM"},
             repeated_columns},
            {"square_root",
             "Square root",
             "Opens the shadows with a table of square roots.",
             {"sqrt_sse", "ValueLut"},
             square_root},
        },
    };
}

} // namespace gallery
