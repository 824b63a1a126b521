#include "tavik/paint/paint.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "host/circle.h"
#include "host/drawing.h"
#include "host/run.h"
#include "tavik/convert/convert.h"

namespace gallery {
namespace {

struct Dab {
    Point centre;
    float diameter;
    float feather;
    std::array<float, 3> colour;
    float opacity;
};

template <class Function, class Planes, class... Depth>
void stamp(Run &run, Export<Function> dab_export, const Dab &dab, const Image &size, const Planes &planes,
           Depth... depth) {
    run.call(dab_export, dab.centre.x, dab.centre.y, dab.diameter, dab.feather, dab.colour[0], dab.colour[1],
             dab.colour[2], dab.opacity, size.x_max(), size.y_max(), planes[0], planes[1], planes[2], depth...);
}

// Calls at(point, share of the way) along a wave across the picture.
template <class At> void along_wave(const Image &size, float height, int32_t points, const At &at) {
    for (int32_t i = 0; i < points; ++i) {
        const float way = static_cast<float>(i) / static_cast<float>(points - 1);
        const float swing = on_circle(way * 1.5).y * 0.08F;
        at(Point{way * static_cast<float>(size.width), (height + swing) * static_cast<float>(size.height)}, way);
    }
}

void strokes(Run &run) {
    const auto size = static_cast<float>(run.photo.height) / 400.0F;
    const float feathers[] = {0.5F, 9, 24};
    for (int32_t stroke = 0; stroke < 3; ++stroke)
        along_wave(run.photo, 0.2F + 0.3F * static_cast<float>(stroke), 140, [&](Point point, float way) {
            const float feather = feathers[stroke];
            stamp(run, EXPORT(FeatheredCircle),
                  {point, (42 - feather) * size * (1 - 0.7F * way), feather * size, hue(way * 0.8), 0.8F}, run.picture,
                  run.picture.planes());
        });
}

void lights(Run &run) {
    uint32_t state = 7;
    const auto random = [&] {
        state = state * 1664525U + 1013904223U;
        return static_cast<float>(state >> 16) / 65536.0F;
    };
    const auto width = static_cast<float>(run.photo.width);
    const auto height = static_cast<float>(run.photo.height);
    for (int32_t i = 0; i < 60; ++i) {
        const Point centre = {random() * width, random() * height};
        const float diameter = (0.02F + 0.08F * random()) * height;
        auto colour = hue(random());
        for (float &component : colour) component *= 0.4F;
        stamp(run, EXPORT(FeatheredCircle_Add), {centre, diameter, diameter * 0.6F, colour, 0.5F}, run.picture,
              run.picture.planes());
    }
    stamp(run, EXPORT(FeatheredCircle_Add),
          {{0.5F * width, 0.5F * height}, 0.1F * height, 0.3F * height, {-120, -120, -120}, 0.5F}, run.picture,
          run.picture.planes());
}

void glasses(Run &run) {
    const auto width = static_cast<float>(run.photo.width);
    const auto height = static_cast<float>(run.photo.height);
    const std::array<std::array<float, 3>, 3> colours = {{{0, 200, 255}, {255, 60, 220}, {255, 240, 40}}};
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const Point away = on_circle(static_cast<double>(i) / 3.0 - 0.25);
        stamp(run, EXPORT(FeatheredCircle_Multiply),
              {{0.5F * width + 0.2F * height * away.x, 0.52F * height + 0.2F * height * away.y},
               0.5F * height,
               0.05F * height,
               colours[i],
               0.9F},
              run.picture, run.picture.planes());
    }
}

void mist(Run &run) {
    const auto size = static_cast<float>(run.photo.height);
    for (int32_t layer = 0; layer < 4; ++layer)
        along_wave(run.photo, 0.25F + 0.25F * static_cast<float>(layer), 7, [&](Point point, float way) {
            const float shade = 200.0F + 12.0F * static_cast<float>(layer);
            stamp(run, EXPORT(FeatheredCircle_ppl),
                  {point, size * 0.05F, size * (0.15F + 0.2F * way), {shade, shade, shade + 10}, 0.4F}, run.picture,
                  run.picture.planes());
        });
}

// Dabs too faint for one of them to move a byte.
void airbrush(Run &run) {
    const Image &photo = run.photo;
    std::array<std::vector<float>, 3> floats;
    std::array<float *, 3> planes;
    const auto channels = run.channels();
    for (std::size_t i = 0; i < 3; ++i) {
        floats[i].resize(static_cast<std::size_t>(photo.pixel_count()));
        planes[i] = floats[i].data();
        run.label("floats", floats[i]);
        run.call(EXPORT(char_to_float), photo.width, photo.height, channels[i].photo, planes[i]);
    }
    const auto spray = [&](float height, const auto &spray_at) {
        for (int32_t pass = 0; pass < 12; ++pass)
            along_wave(photo, height, 60, [&](Point point, float way) {
                const auto size = static_cast<float>(photo.height);
                spray_at(Dab{point, 0.02F * size, 0.12F * size, hue(0.55 + 0.4 * way), 0.008F});
            });
    };
    spray(0.28F, [&](const Dab &dab) { stamp(run, EXPORT(FeatheredCircle_ppl_float), dab, photo, planes); });
    for (std::size_t i = 0; i < 3; ++i)
        run.call(EXPORT(float_to_char_clamp), photo.width, photo.height, planes[i], channels[i].picture);
    spray(0.72F, [&](const Dab &dab) { stamp(run, EXPORT(FeatheredCircle), dab, photo, run.picture.planes()); });
}

struct Ball {
    float x, y, depth, radius;
    std::array<float, 3> colour;
};

// Balls seen from the front, and how far each pixel is away.
struct Scene {
    Image size;
    std::array<std::vector<float>, 3> samples;
    std::vector<float> depths;

    Scene(int32_t width, int32_t height, const std::vector<Ball> &balls) : size(width, height) {
        for (int32_t y = 0; y < height; ++y) {
            for (int32_t x = 0; x < width; ++x) {
                const float sky = static_cast<float>(y) / static_cast<float>(height);
                std::array<float, 3> colour = {30 + 30 * sky, 36 + 40 * sky, 56 + 60 * sky};
                float nearest = 1000;
                for (const Ball &ball : balls) {
                    const float dx = (static_cast<float>(x) - ball.x) / ball.radius;
                    const float dy = (static_cast<float>(y) - ball.y) / ball.radius;
                    if (dx * dx + dy * dy >= 1) continue;
                    const float bulge = std::sqrt(1 - dx * dx - dy * dy);
                    const float depth = ball.depth - bulge * ball.radius;
                    if (depth >= nearest) continue;
                    nearest = depth;
                    const float light = 0.2F + 0.8F * std::max(0.6F * bulge - 0.5F * dx - 0.62F * dy, 0.0F);
                    for (std::size_t i = 0; i < 3; ++i) colour[i] = ball.colour[i] * light;
                }
                for (std::size_t i = 0; i < 3; ++i) samples[i].push_back(colour[i]);
                depths.push_back(nearest);
            }
        }
    }
};

void ribbon(Run &run) {
    const std::vector<Ball> balls = {
        {190, 200, 500, 105, {214, 92, 70}}, {480, 200, 500, 130, {72, 136, 206}}, {770, 200, 500, 105, {98, 170, 96}}};
    Scene scene(960, 400, balls);
    run.label("depths", scene.depths);
    std::array<float *, 3> planes;
    for (std::size_t i = 0; i < 3; ++i) {
        planes[i] = scene.samples[i].data();
        run.label("samples", scene.samples[i]);
    }
    constexpr int32_t dabs = 1400;
    for (int32_t i = 0; i < dabs; ++i) {
        const double way = static_cast<double>(i) / dabs;
        const Point around = on_circle(way * 8.5);
        const float x = 30.0F + 900.0F * static_cast<float>(way);
        const Dab dab = {{x, 200 + 155 * around.x}, 9, 4, hue(way), 0.9F};
        stamp(run, EXPORT(FeatheredCircle_ppl_float_zbuffer), dab, scene.size, planes, 500 + 155 * around.y,
              scene.depths.data());
    }
    Image &picture = run.draw_on(scene.size.width, scene.size.height, {0, 0, 0});
    const auto target = picture.planes();
    for (std::size_t i = 0; i < 3; ++i)
        run.call(EXPORT(float_to_char_clamp), picture.width, picture.height, planes[i], target[i]);
}

void line(Run &run, Image &picture, Point from, Point to, const std::array<float, 3> &colour) {
    const auto planes = picture.planes();
    run.call(EXPORT(xAAFloatLine), from.x, from.y, to.x, to.y, colour[0], colour[1], colour[2], picture.width,
             picture.height, planes[0], planes[1], planes[2]);
}

Point beside(Point centre, Point direction, float distance) {
    return {centre.x + direction.x * distance, centre.y + direction.y * distance};
}

void line_fan(Run &run) {
    Image &picture = run.draw_on(640, 640, {18, 20, 28});
    const Point centre = {319.5F, 319.5F};
    constexpr int32_t lines = 144;
    for (int32_t i = 0; i < lines; ++i) {
        const double turns = static_cast<double>(i) / lines;
        const Point direction = on_circle(turns);
        line(run, picture, beside(centre, direction, i % 2 == 0 ? 40 : 120), beside(centre, direction, 310),
             hue(turns));
    }
}

void string_art(Run &run) {
    Image &picture = run.draw_on(640, 640, {250, 248, 244});
    const Point centre = {319.5F, 319.5F};
    constexpr int32_t nails = 300;
    for (int32_t i = 0; i < nails; ++i) {
        auto colour = hue(0.5 + 0.5 * i / nails);
        for (float &component : colour) component *= 0.7F;
        line(run, picture, beside(centre, on_circle(static_cast<double>(i) / nails), 310),
             beside(centre, on_circle(3.0 * i / nails), 310), colour);
    }
}

} // namespace

Family paint_family() {
    return {"paint",
            "Painting: soft round dabs in several rules, behind and before what stands in a picture, and lines.",
            {
                {"brush_strokes",
                 "Brush strokes",
                 "Three strokes of 140 dabs each: with a hard edge, soft, and softer.",
                 {"FeatheredCircle"},
                 strokes},
                {"lights",
                 "Lights and a shadow",
                 "Dabs of light that are brightest in their middle, and a dark one of a negative colour.",
                 {"FeatheredCircle_Add"},
                 lights},
                {"glasses",
                 "Coloured glass",
                 "Cyan, magenta and yellow discs that multiply what is below.",
                 {"FeatheredCircle_Multiply"},
                 glasses},
                {"mist", "Mist", "Large dabs that are almost all feather.", {"FeatheredCircle_ppl"}, mist},
                {"airbrush",
                 "Airbrush",
                 "The same faint strokes into float planes, above, and into bytes, below, where most dabs change a "
                 "sample by less than one and only rounding down is left of them.",
                 {"char_to_float", "FeatheredCircle_ppl_float", "float_to_char_clamp", "FeatheredCircle"},
                 airbrush},
                {"ribbon",
                 "A ribbon in depth",
                 "A stroke that winds around three balls: each dab shows only before what is stored in the depth "
                 "plane.",
                 {"FeatheredCircle_ppl_float_zbuffer", "float_to_char_clamp"},
                 ribbon},
                {"line_fan", "A fan of lines", "144 lines at all angles.", {"xAAFloatLine"}, line_fan},
                {"string_art",
                 "String art",
                 "From each of 300 nails on a circle to the one of three times its number.",
                 {"xAAFloatLine"},
                 string_art},
            }};
}

} // namespace gallery
