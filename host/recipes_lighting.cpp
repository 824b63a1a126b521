#include "tavik/lighting/lighting.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "host/run.h"

namespace gallery {
namespace {

using Vector = std::array<float, 3>;

uint8_t as_sample(float unit) { return static_cast<uint8_t>(std::clamp(unit * 255.0F + 0.5F, 0.0F, 255.0F)); }

void lit_sphere(Run &run) {
    constexpr int32_t side = 420;
    constexpr float radius = 180;
    Image &picture = run.draw_on(side, side, {16, 18, 26});
    // Position, colour, intensity, specular colour, intensity, shininess: a warm lamp near, a cold one far.
    const std::array<std::array<float, 12>, 2> lamps = {
        {{-220, -240, 300, 1, 0.72F, 0.45F, 130000, 1, 0.9F, 0.7F, 130000, 60},
         {420, 160, 120, 0.3F, 0.5F, 1, 110000, 0.5F, 0.7F, 1, 90000, 25}}};
    const Vector view = {0, 0, 1};
    run.label("lamps", lamps);
    for (int32_t y = 0; y < side; ++y) {
        for (int32_t x = 0; x < side; ++x) {
            const float px = static_cast<float>(x) - side / 2.0F;
            const float py = static_cast<float>(y) - side / 2.0F;
            const float rest = radius * radius - px * px - py * py;
            if (rest <= 0) continue;
            const Vector point = {px, py, std::sqrt(rest)};
            Vector normal = point;
            run.call(EXPORT(Normalize), normal.data());
            Vector shade = {0.03F, 0.03F, 0.04F};
            for (const auto &lamp : lamps) {
                std::array<float, 6> light = {};
                run.call(EXPORT(GetPointLight), light.data(), lamp.data(), point.data(), view.data(), normal.data());
                for (std::size_t i = 0; i < 3; ++i) shade[i] += light[i] * 0.8F + light[i + 3];
            }
            picture.set(x, y, {as_sample(shade[0]), as_sample(shade[1]), as_sample(shade[2])});
        }
    }
}

void facets(Run &run) {
    // Triangles of the photo's brightness as heights, each of one shade.
    constexpr int32_t cell = 12;
    const Image &photo = run.photo;
    const auto vertex = [&](int32_t i, int32_t j) -> Vector {
        const std::size_t at = photo.index(std::min(i * cell, photo.x_max()), std::min(j * cell, photo.y_max()));
        return {static_cast<float>(i * cell), static_cast<float>(j * cell), static_cast<float>(photo.green[at]) / 9.0F};
    };
    Vector light = {-0.5F, -0.6F, 0.6F};
    run.call(EXPORT(Normalize), light.data());
    for (int32_t j = 0; j * cell < photo.height; ++j) {
        for (int32_t i = 0; i * cell < photo.width; ++i) {
            const Vector a = vertex(i, j);
            const Vector b = vertex(i + 1, j);
            const Vector c = vertex(i + 1, j + 1);
            const Vector d = vertex(i, j + 1);
            Vector upper;
            run.call(EXPORT(CalculateNormal), upper.data(), a.data(), b.data(), c.data());
            const Vector down = {d[0] - a[0], d[1] - a[1], d[2] - a[2]};
            const Vector across = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
            Vector lower;
            run.call(EXPORT(CrossProduct), lower.data(), across.data(), down.data());
            std::array<float, 2> shades;
            for (const auto &[normal, shade] : {std::pair{&upper, &shades[0]}, {&lower, &shades[1]}}) {
                const float length = run.call(EXPORT(VectorLength), normal->data());
                *shade = std::max(run.call(EXPORT(DotProduct), normal->data(), light.data()) / length, 0.0F);
            }
            for (int32_t y = 0; y < cell && j * cell + y < photo.height; ++y) {
                for (int32_t x = 0; x < cell && i * cell + x < photo.width; ++x) {
                    const uint8_t grey = as_sample(0.1F + 0.95F * shades[x >= y ? 0 : 1]);
                    run.picture.set(i * cell + x, j * cell + y, {grey, grey, grey});
                }
            }
        }
    }
}

void falloff(Run &run) {
    constexpr int32_t width = 640;
    constexpr int32_t height = 320;
    Image &picture = run.draw_on(width, height, {0, 0, 0});
    // Three lamps of the primaries above a wall.
    struct Lamp {
        float x, y, z, intensity;
    };
    constexpr std::array<Lamp, 3> lamps = {{{150, 120, 40, 1.2F}, {330, 210, 60, 1.5F}, {500, 110, 45, 1.3F}}};
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            Vector light;
            for (std::size_t i = 0; i < 3; ++i) {
                const Lamp &lamp = lamps[i];
                const float distance = run.call(EXPORT(Distance_3d), static_cast<float>(x), lamp.x,
                                                static_cast<float>(y), lamp.y, 0.0F, lamp.z);
                light[i] = run.call(EXPORT(InverseSquareLight), distance, lamp.intensity, lamp.z);
            }
            picture.set(x, y,
                        {as_sample(light[0] + 0.2F * light[1]), as_sample(light[1] + 0.2F * light[2]),
                         as_sample(light[2] + 0.2F * light[0])});
        }
    }
}

} // namespace

Family lighting_family() {
    return {"lighting",
            "Vectors, normals and the light of point lamps.",
            {
                {"lit_sphere",
                 "Lit sphere",
                 "Every pixel of a ball under a warm lamp and a cold one.",
                 {"Normalize", "GetPointLight"},
                 lit_sphere},
                {"facets",
                 "Facets",
                 "The photo's brightness as a field of flat triangles, each shaded by its normal.",
                 {"Normalize", "CalculateNormal", "CrossProduct", "VectorLength", "DotProduct"},
                 facets},
                {"falloff",
                 "Inverse square",
                 "Three lamps on a wall; the contours are as uneven as the fast distance.",
                 {"Distance_3d", "InverseSquareLight"},
                 falloff},
            }};
}

} // namespace gallery
