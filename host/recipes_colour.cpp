#include "tavik/colour/colour.h"

#include <algorithm>
#include <array>
#include <vector>

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

// The photo, smaller, with its hues turned by 30 degrees from picture to picture.
void hue_wheel(Run &run) {
    constexpr int32_t columns = 4;
    constexpr int32_t rows = 3;
    const Image small = shrunk_to_fit(run.photo, 240, 160);
    Image &strip = run.draw_on(columns * small.width, rows * small.height, {0, 0, 0});
    Image turned = small;
    run.label("small", small.red);
    for (int32_t i = 0; i < columns * rows; ++i) {
        run.call(EXPORT(FastHSV_ppl), small.width, small.height, static_cast<float>(30 * i), 1.0F, 1.0F,
                 small.red.data(), small.green.data(), small.blue.data(), turned.red.data(), turned.green.data(),
                 turned.blue.data());
        paste(strip, turned, i % columns * small.width, i / columns * small.height);
    }
}

// One colour turned through the circle, at five saturations.
void hue_steps(Run &run) {
    constexpr int32_t side = 400;
    Image &picture = run.draw_on(side, side, {250, 250, 252});
    for (int32_t spoke = 0; spoke < 12; ++spoke) {
        for (int32_t step = 0; step < 5; ++step) {
            std::array<float, 3> colour = {230, 60, 40};
            run.call(EXPORT(TransformHSV), &colour[0], &colour[1], &colour[2], static_cast<float>(30 * spoke),
                     static_cast<float>(step + 1) * 0.25F, 1.0F);
            const auto byte = [](float value) { return static_cast<uint8_t>(std::clamp(value, 0.0F, 255.0F)); };
            fill(picture, 14 + spoke * 31, 40 + step * 64, 30, 62, {byte(colour[0]), byte(colour[1]), byte(colour[2])});
        }
    }
}

void keyed(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    std::vector<uint8_t> alpha(static_cast<std::size_t>(photo.pixel_count()));
    run.label("alpha", alpha);
    // The saucer's red.
    run.call(EXPORT(xKeyToAlpha), photo.width, photo.height, 150, 20, 0, 16.0F, 26.0F, photo.red.data(),
             photo.green.data(), photo.blue.data(), alpha.data());
    for (int32_t y = 0; y < photo.height; ++y) {
        for (int32_t x = 0; x < photo.width; ++x) {
            const std::size_t at = photo.index(x, y);
            const int32_t board = (x / 16 + y / 16) % 2 == 0 ? 235 : 200;
            for (uint8_t *plane : picture.planes())
                plane[at] = static_cast<uint8_t>(board + (plane[at] - board) * alpha[at] / 255);
        }
    }
}

template <class Function> void to_grey(Run &run, Export<Function> grey) {
    const Image &photo = run.photo;
    run.call(grey, photo.width, photo.height, photo.red.data(), photo.green.data(), photo.blue.data(),
             run.picture.red.data());
    run.picture.green = run.picture.red;
    run.picture.blue = run.picture.red;
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
                {"hue_wheel",
                 "Hue wheel",
                 "Hues turned about the grey axis by 30 degrees from picture to picture; the mean is kept.",
                 {"FastHSV_ppl"},
                 hue_wheel},
                {"hue_steps", "One colour turned", "Hues across, saturations down.", {"TransformHSV"}, hue_steps},
                {"vivid",
                 "Vivid",
                 "Saturation by half more.",
                 {"xFastHSV"},
                 [](Run &run) {
                     const Image &photo = run.photo;
                     Image &picture = run.picture;
                     run.call(EXPORT(xFastHSV), photo.width, photo.height, 0.0F, 1.5F, 1.0F, photo.red.data(),
                              photo.green.data(), photo.blue.data(), picture.red.data(), picture.green.data(),
                              picture.blue.data());
                 }},
                {"moonlight",
                 "Moonlight",
                 "Hue, saturation, value and colour balance in one pass.",
                 {"FastHSVandRGB"},
                 [](Run &run) {
                     const Image &photo = run.photo;
                     Image &picture = run.picture;
                     run.call(EXPORT(FastHSVandRGB), photo.width, photo.height, 10.0F, 0.35F, 0.7F, -12.0F, 0.0F, 38.0F,
                              photo.red.data(), photo.green.data(), photo.blue.data(), picture.red.data(),
                              picture.green.data(), picture.blue.data());
                 }},
                {"tritone",
                 "Tritone",
                 "Three colours for the shadows, the middle and the lights.",
                 {"xTritone"},
                 [](Run &run) {
                     const Image &photo = run.photo;
                     Image &picture = run.picture;
                     run.call(EXPORT(xTritone), photo.width, photo.height, 255, 236, 190, 196, 98, 74, 14, 26, 66,
                              photo.red.data(), photo.green.data(), photo.blue.data(), picture.red.data(),
                              picture.green.data(), picture.blue.data());
                 }},
                {"grey",
                 "Grey",
                 "The luma of each pixel.",
                 {"xColorToGrayscale"},
                 [](Run &run) { to_grey(run, EXPORT(xColorToGrayscale)); }},
                {"grey_channel",
                 "Grey channel",
                 "The same function by its second name.",
                 {"xColorToGrayChannel"},
                 [](Run &run) { to_grey(run, EXPORT(xColorToGrayChannel)); }},
                {"key", "Colour key", "The saucer's red becomes transparent, softly.", {"xKeyToAlpha"}, keyed},
            }};
}

} // namespace gallery
