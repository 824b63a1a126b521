#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "host/drawing.h"
#include "host/run.h"
#include "host/sizes.h"
#include "tavik/convert/convert.h"
#include "tavik/resample/resample.h"

namespace gallery {
namespace {

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

} // namespace

Family warps_family() {
    return {
        "warps",
        "Pictures bent by lenses and fields of vectors, and morphed; image pyramids.",
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
        }};
}

} // namespace gallery
