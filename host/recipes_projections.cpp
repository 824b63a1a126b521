#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "host/drawing.h"
#include "host/run.h"
#include "host/shading.h"
#include "host/sizes.h"
#include "tavik/composite/composite.h"
#include "tavik/generators/generators.h"
#include "tavik/resample/resample.h"

namespace gallery {
namespace {

// A square whose right half mirrors its left one, so that its ends meet, upside down.
Image panorama_of(const Image &photo) {
    const int32_t side = std::min(photo.width, photo.height);
    Image panorama(side, side);
    for (int32_t y = 0; y < side; ++y) {
        for (int32_t x = 0; x < side; ++x) {
            const int32_t across = std::min(x, side - 1 - x) * 2 * photo.width / (side + 1);
            const std::size_t from = photo.index(across, side - 1 - y);
            panorama.set(x, y, {photo.red[from], photo.green[from], photo.blue[from]});
        }
    }
    return panorama;
}

void bend(Run &run, const Image &from, Image &to, int32_t unroll) {
    run.call(EXPORT(xPolarHelper), from.width, from.height, middle(from.width), middle(from.height),
             middle(from.height), unroll, from.red.data(), from.green.data(), from.blue.data(), to.red.data(),
             to.green.data(), to.blue.data());
}

void tiny_planet(Run &run) {
    run.layer = panorama_of(run.photo);
    bend(run, *run.layer, run.draw_on(run.layer->width, run.layer->height, {0, 0, 0}), 0);
}

void unrolled_planet(Run &run) {
    const Image panorama = panorama_of(run.photo);
    run.layer = Image(panorama.width, panorama.height);
    bend(run, panorama, *run.layer, 0);
    bend(run, *run.layer, run.draw_on(panorama.width, panorama.height, {0, 0, 0}), 1);
}

// Octaves of noise on a sphere, with cold poles, as an equirectangular map. Sines are rounded from double precision, so
// that they are the same with every runtime.
Image map_of_heights(Run &run, int32_t width, int32_t height) {
    constexpr double pi = 3.14159265358979;
    Image map(width, height);
    for (int32_t y = 0; y < height; ++y) {
        const double latitude = pi * (0.5 - y / static_cast<double>(height - 1));
        const auto up = static_cast<float>(std::sin(latitude));
        for (int32_t x = 0; x < width; ++x) {
            const double longitude = 2 * pi * x / width;
            const auto east = static_cast<float>(std::cos(latitude) * std::cos(longitude));
            const auto north = static_cast<float>(std::cos(latitude) * std::sin(longitude));
            float land = 0.5F + 0.8F * std::max(std::abs(up) - 0.8F, 0.0F);
            float scale = 1.1F;
            float weight = 0.24F;
            for (int octave = 0; octave < 5; ++octave) {
                land += weight * run.call(EXPORT(glm_simplex_noise3), east * scale + 3, north * scale + 5, up * scale);
                scale *= 2;
                weight /= 2;
            }
            const uint8_t sample = level(land);
            map.set(x, y, {sample, sample, sample});
        }
    }
    return map;
}

// Seas, beaches, plains, mountains and snow by height.
std::array<std::array<uint8_t, 256>, 3> colours_of_heights() {
    struct Step {
        int32_t height;
        std::array<uint8_t, 3> colour;
    };
    constexpr std::array<Step, 8> steps = {{{0, {14, 38, 92}},
                                            {70, {14, 38, 92}},
                                            {134, {36, 96, 158}},
                                            {138, {214, 196, 140}},
                                            {148, {70, 122, 56}},
                                            {176, {118, 96, 70}},
                                            {190, {244, 246, 250}},
                                            {255, {244, 246, 250}}}};
    std::array<std::array<uint8_t, 256>, 3> tables{};
    for (std::size_t i = 1; i < steps.size(); ++i) {
        const Step &from = steps[i - 1];
        const Step &to = steps[i];
        for (int32_t h = from.height; h <= to.height; ++h)
            for (std::size_t k = 0; k < 3; ++k)
                tables[k][static_cast<std::size_t>(h)] = static_cast<uint8_t>(
                    from.colour[k] + (to.colour[k] - from.colour[k]) * (h - from.height) / (to.height - from.height));
    }
    return tables;
}

void planet(Run &run) {
    constexpr int32_t side = 480;
    run.layer = map_of_heights(run, 512, 256);
    Image &map = *run.layer;
    const auto tables = colours_of_heights();
    run.label("colours", tables);
    run.call(EXPORT(ApplyGradient), map.width, 0, map.height, map.red.data(), map.green.data(), map.blue.data(),
             tables[0].data(), tables[1].data(), tables[2].data());
    Image &picture = run.draw_on(side, side, {4, 5, 14});
    run.call(EXPORT(xNova), side, side, middle(side), middle(side), 0.8F * side, 60, 3, 70.0F, 130.0F, 255.0F, 12.0F,
             picture.red.data(), picture.green.data(), picture.blue.data());
    run.call(EXPORT(xGlobe), map.width, map.height, side, side, middle(side), middle(side), 0.38F * side, 20.0F, 25.0F,
             map.red.data(), map.green.data(), map.blue.data(), picture.red.data(), picture.green.data(),
             picture.blue.data());
}

// The photo, smaller, with a white border.
Image card_of(const Image &photo, int32_t tenths) {
    constexpr int32_t border = 14;
    const Image small = shrunk_to_fit(photo, photo.width * tenths / 10, photo.height * tenths / 10);
    Image card(small.width + 2 * border, small.height + 2 * border, {255, 255, 255});
    paste(card, small, border, border);
    return card;
}

void rotated_card(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    const Image card = card_of(photo, 5);
    Image turned(photo.width, photo.height);
    Plane alpha(photo.red.size());
    const float cosine = std::cos(0.3F);
    const float sine = std::sin(0.3F);
    const float across = middle(photo.width);
    const float down = middle(photo.height);
    const std::array<float, 16> matrix = {cosine,
                                          -sine,
                                          0,
                                          0,
                                          sine,
                                          cosine,
                                          0,
                                          0,
                                          0,
                                          0,
                                          1,
                                          0,
                                          middle(card.width) - cosine * across - sine * down,
                                          middle(card.height) + sine * across - cosine * down,
                                          0,
                                          1};
    run.label("matrix", matrix);
    run.label("alpha", alpha);
    run.call(EXPORT(GoodTransform2), card.red.data(), card.green.data(), card.blue.data(), turned.red.data(),
             turned.green.data(), turned.blue.data(), alpha.data(), card.width, card.height, photo.width, photo.height,
             matrix.data(), 0xFFFFFF, 4);
    for (std::size_t k = 0; k < 3; ++k) {
        for (uint8_t &sample : std::span(picture.planes()[k], photo.red.size())) sample /= 2;
        run.call(EXPORT(AlphaBlit), photo.width, photo.height, turned.planes()[k], picture.planes()[k], alpha.data());
    }
}

void flying_card(Run &run) {
    constexpr Colour sky = {40, 64, 90};
    constexpr int32_t packed_sky = sky.blue << 16 | sky.green << 8 | sky.red;
    const int32_t width = run.photo.width;
    const int32_t height = run.photo.height;
    const Image card = card_of(run.photo, 8);
    run.layer = Image(width, height, sky);
    paste(*run.layer, card, (width - card.width) / 2, (height - card.height) / 2);
    const Image &sheet = *run.layer;
    Image &picture = run.draw_on(width, height, sky);
    run.call(EXPORT(Fast_ThreeDeePerspective), sheet.red.data(), sheet.green.data(), sheet.blue.data(),
             picture.red.data(), picture.green.data(), picture.blue.data(), width, height, 35.0F, 30.0F, 10.0F,
             1.4F * static_cast<float>(width), packed_sky);
}

} // namespace

Family projections_family() {
    return {"projections",
            "Pictures bent into discs, wrapped on balls, and turned in the plane and in space.",
            {
                {"tiny_planet",
                 "Tiny planet",
                 "A panorama, made of the photo and its mirror image, bent into a disc.",
                 {"xPolarHelper"},
                 tiny_planet},
                {"unrolled_planet",
                 "Unrolled planet",
                 "The tiny planet back to a panorama; only its middle has lost detail.",
                 {"xPolarHelper"},
                 unrolled_planet},
                {"planet",
                 "Planet with an atmosphere",
                 "Noise of space, coloured by height, wrapped on a ball before a burst of light.",
                 {"glm_simplex_noise3", "ApplyGradient", "xNova", "xGlobe"},
                 planet},
                {"rotated_card",
                 "Rotated card",
                 "A card turned with 16 sub-samples to a pixel, and drawn through its soft-edged opacity.",
                 {"GoodTransform2", "AlphaBlit"},
                 rotated_card},
                {"flying_card",
                 "Flying card",
                 "A sheet with the photo on it, turned about three axes.",
                 {"Fast_ThreeDeePerspective"},
                 flying_card},
            }};
}

} // namespace gallery
