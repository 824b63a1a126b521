#include "tavik/foliage/foliage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <string>
#include <vector>

#include "host/circle.h"
#include "host/colour_ramp.h"
#include "host/drawing.h"
#include "host/run.h"

namespace gallery {
namespace {

constexpr std::size_t particle_words = 20;
constexpr float far_away = 1000;

float real(int32_t value) { return static_cast<float>(value); }

struct Pool {
    int32_t capacity;
    std::vector<float> records;

    explicit Pool(int32_t particles)
        : capacity(particles), records(particle_words * static_cast<std::size_t>(particles)) {}

    const float *at(int32_t index) const { return &records[particle_words * static_cast<std::size_t>(index)]; }
};

// The picture, and depths that the strokes test and write.
struct Ground {
    std::vector<float> depths;
    tavik_foliage_target target;

    explicit Ground(Image &image)
        : depths(image.red.size(), far_away), target{image.width,        image.height,      image.red.data(),
                                                     image.green.data(), image.blue.data(), depths.data()} {}
};

void meadow(Run &run) {
    Image &picture = run.picture;
    Ground ground(picture);
    run.label("depths", ground.depths);
    Pool pool(6000);
    run.label("particles", pool.records);
    const float width = real(picture.width);
    const float height = real(picture.height);
    const float size = height / 400;
    const std::array<float, 24> emitter = {-10,         0.62F * height,
                                           width + 10,  1.04F * height,
                                           100,         10,
                                           -90,         30,
                                           1.2F * size, 3.4F * size,
                                           14,          34,
                                           1.2F * size, 2.6F * size,
                                           22,          66,
                                           20,          150,
                                           210,         70,
                                           0.7F};
    const std::array<float, 8> breeze = {0, 0.03F * size, 0.8F * size, 0, 0.03F, 3 * size, 0.012F, 1};
    for (const auto &[emit_per_step, steps] : {std::array{80, 30}, {0, 40}}) {
        const int32_t growing = run.call(EXPORT(xFoliage_Process), &ground.target, pool.records.data(), pool.capacity,
                                         emitter.data(), breeze.data(), emit_per_step, steps, 3, 0.95F);
        run.note(std::to_string(growing) + " blades grow on after " + std::to_string(steps) + " steps.");
    }
}

Image &sky(Run &run, int32_t width, int32_t height) {
    Image &picture = run.draw_on(width, height, {0, 0, 0});
    const std::vector<Stop> stops = {{0, {150, 196, 236}}, {0.7F, {226, 240, 246}}, {1, {246, 240, 222}}};
    for (int32_t y = 0; y < height; ++y) {
        const auto colour = between(stops, real(y) / real(height - 1));
        const auto byte = [&](std::size_t i) { return static_cast<uint8_t>(std::lround(colour[i])); };
        fill(picture, 0, y, width, 1, {byte(0), byte(1), byte(2)});
    }
    return picture;
}

// What xFoliage_Process does, done by the host, which sets a blossom on each twig that has ended.
void bush(Run &run) {
    Image &picture = sky(run, 680, 460);
    Ground ground(picture);
    run.label("depths", ground.depths);
    Pool pool(400);
    run.label("particles", pool.records);
    const std::array<float, 24> emitter = {310, 452,  370,  456, 60, 40, -90, 84,  4.5F, 9.5F, 26,
                                           58,  2.5F, 5.5F, 70,  48, 30, 96,  150, 60,   0.5F};
    const std::array<float, 8> settings = {0, 0.03F, 0, 0, 0.012F, 14, 0.03F, 1};
    for (int32_t step = 0; step < 60; ++step) {
        for (int32_t k = 0; k < 5 && step < 30; ++k)
            run.call(EXPORT(xEmmit_particle), pool.records.data(), pool.capacity, emitter.data(), 5 * step + k);
        run.call(EXPORT(xApply_Physics), pool.records.data(), pool.capacity, settings.data());
        const auto next = [&](int32_t index) {
            return run.call(EXPORT(Foliage_NextParticle), pool.records.data(), pool.capacity, index);
        };
        for (int32_t i = next(-1); i >= 0; i = next(i)) {
            const float *p = pool.at(i);
            std::array<std::array<float, 7>, 2> ends;
            for (std::size_t end = 0; end < 2; ++end) {
                const float *place = end == 0 ? p + 3 : p;
                const float u = std::min((p[9] - (end == 0 ? 1.0F : 0.0F)) / p[10], 1.0F);
                ends[end] = {place[0], place[1], place[2], p[11] * (1 - 0.85F * u)};
                for (std::size_t c = 0; c < 3; ++c) ends[end][4 + c] = p[12 + c] + (p[15 + c] - p[12 + c]) * u;
            }
            run.call(EXPORT(foliage_zLine), &ground.target, ends[0].data(), ends[1].data(), 1.0F);
            const int32_t age = static_cast<int32_t>(p[9]);
            if (age > 12 && age % 4 == 0) {
                const Point side = on_circle(0.31 * age + p[18]);
                run.call(EXPORT(foliage_xpen), &ground.target, p[0] + 6 * side.x, p[1] + 6 * side.y, p[2] + side.y,
                         4.2F, 70 + 26 * side.x, 140 + 30 * side.y, 56.0F, 0.95F);
            }
            if (std::bit_cast<int32_t>(p[19]) != 2) continue;
            for (int32_t petal = 0; petal < 5; ++petal) {
                const Point way = on_circle(petal / 5.0 + p[18]);
                run.call(EXPORT(foliage_xpen), &ground.target, p[0] + 5 * way.x, p[1] + 5 * way.y, p[2] - 20, 4.2F,
                         255.0F, 150 + 60 * p[18], 190.0F, 1.0F);
            }
            run.call(EXPORT(foliage_xpen), &ground.target, p[0], p[1], p[2] - 21, 2.8F, 255.0F, 224.0F, 90.0F, 1.0F);
        }
    }
}

} // namespace

Family foliage_family() {
    return {"foliage",
            "Grass and bushes as the traces of particles, tapering, shaded and tested against depths.",
            {
                {"meadow",
                 "Grass before the photo",
                 "Eighty blades a step for thirty steps, and forty more steps to grow up in the wind.",
                 {"xFoliage_Process"},
                 meadow},
                {"bush",
                 "A bush in bloom",
                 "Twigs that the host emits, moves and draws itself, with leaves on their way and blossoms at their "
                 "ends.",
                 {"xEmmit_particle", "xApply_Physics", "Foliage_NextParticle", "foliage_zLine", "foliage_xpen"},
                 bush},
            }};
}

} // namespace gallery
