#include "tavik/colour/colour.h"

#include <algorithm>
#include <array>

#include "host/drawing.h"
#include "host/run.h"

namespace gallery {
namespace {

void sepia(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    run.call(EXPORT(xSepia), photo.width, photo.height, 0.06F, 0.85F, 1.0F, photo.red.data(), photo.green.data(),
             photo.blue.data(), picture.red.data(), picture.green.data(), picture.blue.data());
}

void two_colours(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    run.call(EXPORT(xDuotone), photo.width, photo.height, 255, 214, 150, 28, 20, 92, photo.red.data(),
             photo.green.data(), photo.blue.data(), picture.red.data(), picture.green.data(), picture.blue.data());
}

// A faded film: channels bleed into each other, shadows turn blue and lights yellow.
void colour_matrix(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    const std::array<float, 16> matrix = {1.15F, 0.05F, 0.0F,  0, 0.1F, 1.0F, 0.15F, 0,
                                          -0.2F, 0.0F,  0.55F, 0, 6,    4,    52,    0};
    run.label("matrix", matrix);
    run.call(EXPORT(xColorMatrix_ppl), photo.width, photo.height, photo.red.data(), photo.green.data(),
             photo.blue.data(), picture.red.data(), picture.green.data(), picture.blue.data(), matrix.data());
}

// Hues from left to right; saturation grows down to the middle, then the value falls.
void hue_chart(Run &run) {
    constexpr int32_t columns = 72;
    constexpr int32_t rows = 41;
    constexpr int32_t cell_width = 8;
    constexpr int32_t cell_height = 8;
    Image &chart = run.draw_on(columns * cell_width, rows * cell_height, {0, 0, 0});
    std::array<float, 3> colour{};
    run.label("colour", colour);
    for (int32_t row = 0; row < rows; ++row) {
        const float down = static_cast<float>(row) / 20.0F;
        for (int32_t column = 0; column < columns; ++column) {
            const float hue = static_cast<float>(column) * 5.0F;
            run.call(EXPORT(HSV_To_RGB), &colour[0], &colour[1], &colour[2], hue, std::min(down, 1.0F),
                     std::min(2.0F - down, 1.0F));
            const auto byte = [](float unit) { return static_cast<uint8_t>(unit * 255.0F); };
            fill(chart, column * cell_width, row * cell_height, cell_width, cell_height,
                 {byte(colour[0]), byte(colour[1]), byte(colour[2])});
        }
    }
}

} // namespace

Family colour_family() {
    return {"colour",
            "Hue, saturation and value; looks and the colour matrix.",
            {
                {"night",
                 "Night",
                 "Darkens the day and takes its colour, more so toward the top.",
                 {"xDayForNight"},
                 [](Run &run) {
                     Image &picture = run.picture;
                     run.call(EXPORT(xDayForNight), picture.width, picture.height, picture.red.data(),
                              picture.green.data(), picture.blue.data());
                 }},
                {"fog",
                 "Fog",
                 "Adds fog that thickens toward the bottom.",
                 {"xFogFilter"},
                 [](Run &run) {
                     Image &picture = run.picture;
                     run.call(EXPORT(xFogFilter), picture.width, picture.height, picture.red.data(),
                              picture.green.data(), picture.blue.data());
                 }},
                {"sepia", "Sepia", "Fades the colours and tints what is left brown.", {"xSepia"}, sepia},
                {"two_colours",
                 "Two colours",
                 "Mixes ink blue and a warm light in proportion to each pixel's brightness.",
                 {"xDuotone"},
                 two_colours},
                {"hue_turn",
                 "Hue turn",
                 "Turns every hue by 150 degrees and strengthens the colours by a fifth.",
                 {"xHue"},
                 [](Run &run) {
                     Image &picture = run.picture;
                     run.call(EXPORT(xHue), picture.x_max(), picture.y_max(), 150.0F, 1.2F, 1.0F, picture.red.data(),
                              picture.green.data(), picture.blue.data());
                 }},
                {"colour_matrix",
                 "Colour matrix",
                 "Lets the channels bleed into each other as on a faded film, with blue shadows and yellow lights.",
                 {"xColorMatrix_ppl"},
                 colour_matrix},
                {"hue_chart",
                 "Hue chart",
                 "Hues from red to red; saturation grows down to the middle, then the value falls to black.",
                 {"HSV_To_RGB"},
                 hue_chart},
            }};
}

} // namespace gallery
