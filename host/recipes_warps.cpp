#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "host/drawing.h"
#include "host/run.h"
#include "host/shading.h"
#include "tavik/composite/composite.h"
#include "tavik/convert/convert.h"
#include "tavik/generators/generators.h"
#include "tavik/resample/resample.h"

namespace gallery {
namespace {

float middle(int32_t size) { return static_cast<float>(size - 1) / 2; }

std::size_t area(int32_t width, int32_t height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

// A warp about the middle of the photo.
template <class Function, class... Shape> void warp(Run &run, Export<Function> function, Shape... shape) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    run.call(function, photo.width, photo.height, middle(photo.width), middle(photo.height), shape..., photo.red.data(),
             photo.green.data(), photo.blue.data(), picture.red.data(), picture.green.data(), picture.blue.data());
}

void fish_eye(Run &run) { warp(run, EXPORT(xFisheye), 0.48F * static_cast<float>(run.photo.height), 0.7F); }

void lens(Run &run) { warp(run, EXPORT(xLensHelper), 0.35F, 0.1F, 0.85F, 0.015F); }

void pincushion(Run &run) { warp(run, EXPORT(p_LensHelper), -0.25F, 0.0F, 1.0F, 0.01F); }

void twirl(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    run.call(EXPORT(xRenderTwirlTo), middle(photo.width), middle(photo.height),
             0.48F * static_cast<float>(photo.height), 220.0F, photo.width, photo.height, picture.red.data(),
             picture.green.data(), picture.blue.data(), photo.red.data(), photo.green.data(), photo.blue.data());
}

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

// A random vector at each node of a coarse grid, resized to one for each pixel.
void melting(Run &run) {
    constexpr int32_t nodes_across = 16;
    constexpr int32_t nodes_down = 7;
    const Image &photo = run.photo;
    Image &picture = run.picture;
    std::vector<float> nodes;
    uint32_t state = 5;
    for (int32_t j = 0; j <= nodes_down; ++j) {
        for (int32_t i = 0; i <= nodes_across; ++i) {
            state = state * 1664525U + 1013904223U;
            const float down = static_cast<float>(state >> 16) / 65536;
            nodes.push_back(4 * std::sin(static_cast<float>(5 * i + j)));
            nodes.push_back(-down * static_cast<float>(j));
        }
    }
    std::vector<float> field(2 * area(photo.width + 1, photo.height + 1));
    run.label("nodes", nodes);
    run.label("field", field);
    run.call(EXPORT(xBilinearScalePointf), photo.width, photo.height, nodes_across, nodes_down, nodes.data(),
             field.data());
    run.call(EXPORT(xLinearWarp), photo.width, photo.height, static_cast<float>(photo.height) / 30, photo.width + 1,
             field.data(), photo.red.data(), photo.green.data(), photo.blue.data(), picture.red.data(),
             picture.green.data(), picture.blue.data());
}

// The radius of a rosette of five petals in a direction, 1 on the average; none of it is a circle.
float rosette(float angle, float petals) { return 1 + petals * std::cos(5 * angle); }

// Rings of two colours inside a rosette.
Image rings_of(int32_t side, float petals, Colour a, Colour b, Colour around) {
    Image image(side, side, around);
    for (int32_t y = 0; y < side; ++y) {
        for (int32_t x = 0; x < side; ++x) {
            const float dx = static_cast<float>(x) - middle(side);
            const float dy = static_cast<float>(y) - middle(side);
            const float part =
                std::hypot(dx, dy) / (0.35F * static_cast<float>(side)) / rosette(std::atan2(dx, -dy), petals);
            if (part < 1) image.set(x, y, static_cast<int32_t>(part * 4) % 2 == 0 ? a : b);
        }
    }
    return image;
}

// The circle becomes the rosette: on the way each point stays on its ring.
void morph(Run &run) {
    constexpr int32_t side = 200;
    constexpr int32_t steps = 5;
    constexpr Colour around = {244, 242, 236};
    constexpr float petals = 0.32F;
    const Image circle = rings_of(side, 0, {230, 96, 60}, {250, 196, 90}, around);
    const Image flower = rings_of(side, petals, {60, 72, 170}, {120, 190, 230}, around);
    Image &picture = run.draw_on(side * steps, side, around);
    std::vector<float> field(2 * area(side, side));
    Image between(side, side);
    run.label("field", field);
    for (int32_t step = 0; step < steps; ++step) {
        const float t = static_cast<float>(step) / (steps - 1);
        for (int32_t y = 0; y < side; ++y) {
            for (int32_t x = 0; x < side; ++x) {
                const float dx = static_cast<float>(x) - middle(side);
                const float dy = static_cast<float>(y) - middle(side);
                const float end = rosette(std::atan2(dx, -dy), petals);
                const float stretch = (end - 1) / (1 + t * (end - 1));
                field[2 * between.index(x, y)] = dx * stretch;
                field[2 * between.index(x, y) + 1] = dy * stretch;
            }
        }
        run.call(EXPORT(xBilinearMorpheHelper), side, side, t, side, field.data(), circle.red.data(),
                 circle.green.data(), circle.blue.data(), flower.red.data(), flower.green.data(), flower.blue.data(),
                 between.red.data(), between.green.data(), between.blue.data());
        paste(picture, between, step * side, 0);
    }
}

void ripples(Run &run) {
    const Image &photo = run.photo;
    const int32_t width = photo.width / 2;
    const int32_t height = photo.height / 2;
    Image &picture = run.draw_on(2 * width, 2 * height, {0, 0, 0});
    std::vector<float> half;
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const float dx = static_cast<float>(x) - middle(width);
            const float dy = static_cast<float>(y) - middle(height);
            const float d = std::hypot(dx, dy) + 0.01F;
            const float push = 7 * std::sin(d / 5) * std::exp(-d / 90) / d;
            half.push_back(static_cast<float>(x) + dx * push);
            half.push_back(static_cast<float>(y) + dy * push);
        }
    }
    std::vector<float> map(4 * half.size());
    run.label("half", half);
    run.label("map", map);
    run.call(EXPORT(Mapxtwo), width, height, half.data(), map.data());
    run.call(EXPORT(MapCopy), picture.width, picture.height, map.data(), photo.width, photo.height, photo.red.data(),
             photo.green.data(), photo.blue.data(), picture.red.data(), picture.green.data(), picture.blue.data());
}

// The levels of one channel of the photo, one after the other.
struct Pyramid {
    struct Level {
        int32_t width, height;
        std::size_t start;
    };
    std::vector<Level> levels;
    std::vector<float> values;

    Pyramid(Run &run, const uint8_t *plane, int32_t count) {
        Level level = {run.photo.width, run.photo.height, 0};
        std::size_t end = 0;
        for (int32_t i = 0; i < count; ++i) {
            levels.push_back(level);
            end = level.start + area(level.width, level.height);
            level = {(level.width + 1) / 2, (level.height + 1) / 2, end};
        }
        values.resize(end);
        run.label("pyramid", values);
        run.call(EXPORT(char_to_float), run.photo.width, run.photo.height, plane, values.data());
        for (std::size_t i = 1; i < levels.size(); ++i)
            run.call(EXPORT(xHalfSizeBuf), levels[i - 1].width, levels[i - 1].height, at(i - 1), at(i));
    }

    float *at(std::size_t level) { return values.data() + levels[level].start; }
};

// Softer and softer above and below the row of the cup's rim; beside it without interpolation, at half the size.
void depth_of_field(Run &run) {
    const Image &photo = run.photo;
    const int32_t width = photo.width / 2;
    Image &picture = run.draw_on(2 * width, photo.height / 2, {0, 0, 0});
    for (std::size_t k = 0; k < 3; ++k) {
        Pyramid pyramid(run, photo.planes()[k], 6);
        for (int32_t y = 0; y < picture.height; ++y) {
            const float away = std::abs(static_cast<float>(y) / static_cast<float>(picture.height) - 0.4F);
            const float level = 1 + 8 * std::max(away - 0.12F, 0.0F);
            for (int32_t x = 0; x < width; ++x) {
                const float across = static_cast<float>(2 * x) + 0.5F;
                const float down = static_cast<float>(2 * y) + 0.5F;
                uint8_t *row = picture.planes()[k] + picture.index(0, y);
                row[x] = static_cast<uint8_t>(
                    run.call(EXPORT(xEval), across, down, level, photo.width, photo.height, 6, pyramid.values.data()));
                row[x + width] = static_cast<uint8_t>(run.call(EXPORT(xFastEval), across, down, level, photo.width,
                                                               photo.height, 6, pyramid.values.data()));
            }
        }
    }
}

// More of the detail between two coarse levels, all of the finer detail as it was.
void clarity(Run &run) {
    for (const auto [source, target] : run.channels()) {
        Pyramid pyramid(run, source, 5);
        std::vector<float> coarse(pyramid.at(4), pyramid.values.data() + pyramid.values.size());
        for (std::size_t level = 4; level-- > 0;) {
            const auto [width, height, start] = pyramid.levels[level];
            std::vector<float> finer(area(width, height));
            run.label("coarse", coarse);
            run.label("finer", finer);
            run.call(EXPORT(xrefinementhelper), width, height, level == 3 ? 3.0F : 1.0F, pyramid.at(level),
                     pyramid.at(level + 1), coarse.data(), finer.data());
            coarse = std::move(finer);
        }
        run.call(EXPORT(float_to_char_clamp), run.photo.width, run.photo.height, coarse.data(), target);
    }
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

Family warps_family() {
    return {
        "warps",
        "Pictures bent by lenses, wrapped on balls, morphed, and turned in space; image pyramids.",
        {
            {"fish_eye",
             "Fish-eye",
             "A stereographic bulge: the middle is more than three times as large, and nothing tears at the rim.",
             {"xFisheye"},
             fish_eye},
            {"lens_with_fringes",
             "Lens with fringes",
             "Barrel distortion, and red drawn further inward than blue.",
             {"xLensHelper"},
             lens},
            {"pincushion",
             "Pincushion",
             "The other way round: the rim is pushed outward.",
             {"p_LensHelper"},
             pincushion},
            {"twirl", "Twirl", "The middle turned by 220 degrees, less and less outward.", {"xRenderTwirlTo"}, twirl},
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
            {"melting",
             "Melting",
             "Random vectors of a coarse grid, resized to a displacement for each pixel.",
             {"xBilinearScalePointf", "xLinearWarp"},
             melting},
            {"morph",
             "Morph",
             "Five steps from a circle to a flower: each ring moves and changes its colour.",
             {"xBilinearMorpheHelper"},
             morph},
            {"ripples",
             "Ripples",
             "A map of positions at half the size, doubled; the photo is copied through it.",
             {"Mapxtwo", "MapCopy"},
             ripples},
            {"depth_of_field",
             "Depth of field",
             "A level of an image pyramid for each row, between levels on the left, nearest samples on the right.",
             {"char_to_float", "xHalfSizeBuf", "xEval", "xFastEval"},
             depth_of_field},
            {"clarity",
             "Clarity",
             "Three times the detail between two coarse levels of a pyramid; finer detail as it was.",
             {"char_to_float", "xHalfSizeBuf", "xrefinementhelper", "float_to_char_clamp"},
             clarity},
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
