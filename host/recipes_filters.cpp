#include "tavik/filters/filters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "host/drawing.h"
#include "host/run.h"
#include "tavik/colour/colour.h"

namespace gallery {
namespace {

struct Kernel {
    std::array<int32_t, 9> weights;
    int32_t divisor;
    int32_t bias;
};

// Fills what a convolution leaves, the corners and the last column and row, with the samples beside it.
void fill_border(Image &picture) {
    const int32_t right = picture.x_max() - 1;
    const int32_t bottom = picture.y_max() - 1;
    for (uint8_t *plane : picture.planes()) {
        const auto copy = [&](int32_t to_x, int32_t to_y, int32_t from_x, int32_t from_y) {
            plane[picture.index(to_x, to_y)] = plane[picture.index(from_x, from_y)];
        };
        copy(0, 0, 1, 0);
        copy(right, 0, right - 1, 0);
        copy(0, bottom, 1, bottom);
        copy(right, bottom, right - 1, bottom);
        for (int32_t y = 0; y < picture.y_max(); ++y) copy(right + 1, y, right, y);
        for (int32_t x = 0; x < picture.width; ++x) copy(x, bottom + 1, x, bottom);
    }
}

void convolve(Run &run, const Kernel &kernel) {
    const auto &w = kernel.weights;
    for (const auto [source, target] : run.channels())
        run.call(EXPORT(Convolve8), target, source, run.photo.x_max(), run.photo.y_max(), w[0], w[1], w[2], w[3], w[4],
                 w[5], w[6], w[7], w[8], kernel.divisor, kernel.bias);
    fill_border(run.picture);
}

// Four passes back and forth between two planes, the last one into the picture.
void blur(Run &run) {
    std::vector<uint8_t> between(static_cast<std::size_t>(run.photo.pixel_count()));
    run.label("between", between);
    for (uint8_t *plane : run.picture.planes()) {
        std::copy_n(plane, between.size(), between.data());
        for (int32_t pass = 0; pass < 4; ++pass) {
            uint8_t *from = pass % 2 == 0 ? plane : between.data();
            uint8_t *to = pass % 2 == 0 ? between.data() : plane;
            run.call(EXPORT(Convolve8), to, from, run.photo.x_max(), run.photo.y_max(), 1, 2, 1, 2, 4, 2, 1, 2, 1, 16,
                     0);
        }
    }
    fill_border(run.picture);
}

// The photo's grey as a relief: the normal leans against the slope.
std::vector<float> normals_of(Run &run) {
    const Image &photo = run.photo;
    std::vector<float> grey(static_cast<std::size_t>(photo.x_max()) * static_cast<std::size_t>(photo.y_max()));
    run.label("grey", grey);
    run.call(EXPORT(colortograyscale_trim), photo.width, photo.height, photo.red.data(), photo.green.data(),
             photo.blue.data(), grey.data());
    const auto height_at = [&](int32_t x, int32_t y) {
        const auto column = static_cast<std::size_t>(std::clamp(x, 0, photo.x_max() - 1));
        const auto row = static_cast<std::size_t>(std::clamp(y, 0, photo.y_max() - 1));
        return grey[row * static_cast<std::size_t>(photo.x_max()) + column] / 12.0F;
    };
    std::vector<float> normals;
    for (int32_t y = 0; y < photo.height; ++y) {
        for (int32_t x = 0; x < photo.width; ++x) {
            const float right = height_at(x - 1, y) - height_at(x + 1, y);
            const float down = height_at(x, y - 1) - height_at(x, y + 1);
            const float length = std::sqrt(right * right + down * down + 4.0F);
            normals.insert(normals.end(), {right / length, down / length, 2.0F / length});
        }
    }
    return normals;
}

void shading(Run &run) {
    const std::vector<float> normals = normals_of(run);
    const std::array<float, 3> light = {-0.6F, -0.5F, 0.62F};
    run.label("normals", normals);
    run.label("light", light);
    run.call(EXPORT(xGradientConvolve), run.photo.x_max(), run.photo.height, normals.data(), light.data(), 255.0F,
             run.picture.red.data(), run.picture.green.data(), run.picture.blue.data());
    for (uint8_t *plane : run.picture.planes())
        for (int32_t y = 0; y < run.photo.height; ++y)
            plane[run.photo.index(run.photo.x_max(), y)] = plane[run.photo.index(run.photo.x_max() - 1, y)];
}

void coloured_lights(Run &run) {
    const std::vector<float> normals = normals_of(run);
    // From the left, from above and from the right.
    const std::array<float, 9> lights = {-0.8F, 0.1F, 0.6F, 0.0F, -0.8F, 0.6F, 0.8F, 0.1F, 0.6F};
    run.label("normals", normals);
    run.label("lights", lights);
    const auto planes = run.picture.planes();
    for (std::size_t i = 0; i < planes.size(); ++i) {
        run.call(EXPORT(xGradientConvolve8), run.photo.x_max(), run.photo.height, normals.data(), lights.data() + 3 * i,
                 255.0F, planes[i]);
        for (int32_t y = 0; y < run.photo.height; ++y)
            planes[i][run.photo.index(run.photo.x_max(), y)] = planes[i][run.photo.index(run.photo.x_max() - 1, y)];
    }
}

// The photo with every sixteenth pixel or so black or white.
Image with_salt_and_pepper(const Image &photo) {
    Image noisy = photo;
    uint32_t state = 1;
    for (int32_t i = 0; i < photo.pixel_count(); ++i) {
        state = state * 1664525U + 1013904223U;
        if (state >> 28 != 0) continue;
        for (uint8_t *plane : noisy.planes()) plane[i] = (state >> 27 & 1) != 0 ? 255 : 0;
    }
    return noisy;
}

void median(Run &run) {
    run.layer = with_salt_and_pepper(run.photo);
    run.picture = *run.layer;
    const auto noisy = run.layer->planes();
    const auto clean = run.picture.planes();
    for (std::size_t i = 0; i < clean.size(); ++i)
        run.call(EXPORT(xMedian), noisy[i], clean[i], run.photo.x_max(), run.photo.y_max());
}

// Along rows into a transposed plane, then along its rows and back.
template <class Function> void filter_by_squares(Run &run, Export<Function> filter, int32_t radius) {
    std::vector<uint8_t> transposed(static_cast<std::size_t>(run.photo.pixel_count()));
    run.label("transposed", transposed);
    const int32_t x_max = run.photo.x_max();
    const int32_t y_max = run.photo.y_max();
    for (const auto [source, target] : run.channels()) {
        run.call(filter, source, transposed.data(), x_max, y_max, radius);
        run.call(filter, transposed.data(), target, y_max, x_max, radius);
    }
}

// Radii across, passes down.
void blur_ladder(Run &run) {
    const Image small = shrunk_to_fit(run.photo, 300, 200);
    Image &ladder = run.draw_on(3 * small.width, 3 * small.height, {0, 0, 0});
    Image blurred = small;
    run.label("small", small.red);
    int32_t left = 0;
    for (const int32_t radius : {2, 6, 20}) {
        for (int32_t passes = 1; passes <= 3; ++passes) {
            const auto src = small.planes();
            const auto dst = blurred.planes();
            for (std::size_t channel = 0; channel < 3; ++channel)
                run.call(EXPORT(xBlur), small.width, small.height, radius, passes, src[channel], dst[channel]);
            paste(ladder, blurred, left, (passes - 1) * small.height);
        }
        left += small.width;
    }
}

} // namespace

Family filters_family() {
    return {"filters",
            "Filters of a neighbourhood: 3 × 3 kernels, shading of a relief, median, dilation and erosion, blur.",
            {
                {"blur", "Blur", "Four passes of the kernel 1 2 1, 2 4 2, 1 2 1.", {"Convolve8"}, blur},
                {"sharpen",
                 "Sharpen",
                 "Takes an eighth of each neighbour away from the double sample.",
                 {"Convolve8"},
                 [](Run &run) {
                     convolve(run, {{-1, -1, -1, -1, 16, -1, -1, -1, -1}, 8, 0});
                 }},
                {"edges",
                 "Edges",
                 "What a sample differs by from its eight neighbours.",
                 {"Convolve8"},
                 [](Run &run) {
                     convolve(run, {{-1, -1, -1, -1, 8, -1, -1, -1, -1}, 1, 0});
                 }},
                {"emboss",
                 "Emboss",
                 "Differences along the diagonal around a middle grey.",
                 {"Convolve8"},
                 [](Run &run) {
                     convolve(run, {{-2, -1, 0, -1, 0, 1, 0, 1, 2}, 2, 128});
                 }},
                {"shading",
                 "Shaded relief",
                 "The photo's brightness as a relief, lit from the upper left.",
                 {"colortograyscale_trim", "xGradientConvolve"},
                 shading},
                {"coloured_lights",
                 "Coloured lights",
                 "The same relief under a red light from the left, a green one from above and a blue one from the "
                 "right.",
                 {"colortograyscale_trim", "xGradientConvolve8"},
                 coloured_lights},
                {"median",
                 "Median",
                 "Removes the salt and pepper that the layer strews over the photo.",
                 {"xMedian"},
                 median},
                {"dilate",
                 "Dilate",
                 "The brightest sample of a square of 10 × 10.",
                 {"Maximum_s"},
                 [](Run &run) { filter_by_squares(run, EXPORT(Maximum_s), 5); }},
                {"erode",
                 "Erode",
                 "The darkest sample of a square of 10 × 10.",
                 {"Minimum_s"},
                 [](Run &run) { filter_by_squares(run, EXPORT(Minimum_s), 5); }},
                {"blur_ladder",
                 "Blur ladder",
                 "Boxes of radius 2, 6 and 20; one, two and three passes.",
                 {"xBlur"},
                 blur_ladder},
            }};
}

} // namespace gallery
