#include "tavik/lighting/lighting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

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

// The photo's luma, and as floats.
struct Relief {
    std::vector<uint8_t> heights;
    std::vector<float> float_heights;

    explicit Relief(const Image &photo) {
        for (std::size_t i = 0; i < photo.red.size(); ++i)
            heights.push_back(static_cast<uint8_t>((2 * photo.red[i] + 5 * photo.green[i] + photo.blue[i]) / 8));
        float_heights.assign(heights.begin(), heights.end());
    }
};

void lamps_on_stone(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    const Relief relief(photo);
    std::vector<float> normals(3 * relief.heights.size());
    // A warm lamp and a cold one, 150 above the picture.
    const std::array<float, 24> lamps = {150, 120, 150, 1,    0.8F, 0.55F, 20000, 1, 0.9F, 0.8F, 9000, 24,
                                         470, 290, 150, 0.5F, 0.7F, 1,     20000, 1, 1,    1,    9000, 24};
    run.label("heights", relief.float_heights);
    run.label("normals", normals);
    run.label("lamps", lamps);
    run.call(EXPORT(x_F_Convolve_Normals), photo.width, photo.height, 0.06F, relief.float_heights.data(),
             normals.data());
    run.call(EXPORT(xLighting), photo.width, photo.height, 0.12F, 0.1F, lamps.data(), 2, relief.float_heights.data(),
             normals.data(), photo.red.data(), photo.green.data(), photo.blue.data(), picture.red.data(),
             picture.green.data(), picture.blue.data());
}

void normal_map(Run &run) {
    const Relief relief(run.photo);
    run.label("heights", relief.heights);
    run.call(EXPORT(xNormalMap), run.photo.width, run.photo.height, 0.08F, 0, relief.heights.data(),
             run.picture.red.data(), run.picture.green.data(), run.picture.blue.data());
}

void grey_relief(Run &run) {
    const Relief relief(run.photo);
    run.label("heights", relief.heights);
    run.call(EXPORT(CPU_hightmap_r2), run.photo.width, run.photo.height, 0.08F, -1.0F, -1.0F, 1.2F, 0.1F,
             relief.heights.data(), run.picture.red.data());
    run.picture.green = run.picture.red;
    run.picture.blue = run.picture.red;
}

void glossy_relief(Run &run) {
    const Image &photo = run.photo;
    Image &picture = run.picture;
    const Relief relief(photo);
    run.label("heights", relief.heights);
    run.call(EXPORT(CPU_hightmap_r3), photo.width, photo.height, 0.06F, -1.0F, -1.0F, 1.2F, 0.25F, 0.6F, 24.0F,
             relief.heights.data(), photo.red.data(), photo.green.data(), photo.blue.data(), picture.red.data(),
             picture.green.data(), picture.blue.data());
}

// Rings on water over a blue ground, shaded in floats and rounded by the host.
void float_relief(Run &run) {
    constexpr int32_t side = 400;
    std::vector<float> heights;
    std::array<std::vector<float>, 3> colours;
    for (int32_t y = 0; y < side; ++y) {
        for (int32_t x = 0; x < side; ++x) {
            float height = 0;
            for (const auto &[cx, cy] : {std::pair{120.0F, 150.0F}, {290.0F, 260.0F}}) {
                const float dx = static_cast<float>(x) - cx;
                const float dy = static_cast<float>(y) - cy;
                // A triangle wave with rounded crests.
                const float phase = std::sqrt(dx * dx + dy * dy) / 28;
                const float part = std::abs(phase - std::floor(phase) - 0.5F) * 2;
                height += part * part * (3 - 2 * part) * 6;
            }
            heights.push_back(height);
            colours[0].push_back(30);
            colours[1].push_back(90 + static_cast<float>(y) / 8);
            colours[2].push_back(170);
        }
    }
    run.label("heights", heights);
    run.label("colours", colours[0]);
    auto lit = colours;
    run.call(EXPORT(CPU_hightmap_r3_float), side, side, 1.0F, -1.0F, -1.2F, 1.5F, 0.3F, 0.9F, 40.0F, heights.data(),
             colours[0].data(), colours[1].data(), colours[2].data(), lit[0].data(), lit[1].data(), lit[2].data());
    Image &picture = run.draw_on(side, side, {0, 0, 0});
    const auto planes = picture.planes();
    for (std::size_t plane = 0; plane < 3; ++plane)
        for (std::size_t i = 0; i < heights.size(); ++i) planes[plane][i] = as_sample(lit[plane][i] / 255);
}

// A ball of crystal that turns the picture over, and a bubble that hardly bends it, each in its shadow.
void balls(Run &run) {
    const Image &photo = run.photo;
    Image ground = photo;
    const auto planes = ground.planes();
    run.label("ground", ground.red);
    run.call(EXPORT(xBubbleShadow), photo.width, photo.height, 215.0F, 250.0F, 110.0F, 0.35F, 0.7F, 0.5F, planes[0],
             planes[1], planes[2]);
    run.call(EXPORT(xBubbleShadow), photo.width, photo.height, 452.0F, 152.0F, 78.0F, 0.3F, 0.3F, 0.15F, planes[0],
             planes[1], planes[2]);
    Image crystal = ground;
    run.call(EXPORT(SphereInnards), photo.width, photo.height, 190.0F, 205.0F, 110.0F, 1.5F, 4.0F, 245.0F, 250.0F,
             255.0F, 0.8F, planes[0], planes[1], planes[2], crystal.red.data(), crystal.green.data(),
             crystal.blue.data());
    run.call(EXPORT(SphereInnards), photo.width, photo.height, 440.0F, 130.0F, 78.0F, 1.12F, 1.0F, 255.0F, 255.0F,
             255.0F, 0.9F, crystal.red.data(), crystal.green.data(), crystal.blue.data(), run.picture.red.data(),
             run.picture.green.data(), run.picture.blue.data());
}

} // namespace

Family lighting_family() {
    return {"lighting",
            "Point lamps, reliefs, glass and its shadows.",
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
                {"lamps_on_stone",
                 "Two lamps",
                 "The photo as a relief under a warm lamp and a cold one.",
                 {"x_F_Convolve_Normals", "xLighting"},
                 lamps_on_stone},
                {"normal_map", "Normal map", "The normals of the photo's brightness.", {"xNormalMap"}, normal_map},
                {"grey_relief",
                 "Relief in grey",
                 "The same relief lit from the upper left.",
                 {"CPU_hightmap_r2"},
                 grey_relief},
                {"glossy_relief", "Glossy relief", "In colour, with highlights.", {"CPU_hightmap_r3"}, glossy_relief},
                {"rings", "Rings on water", "Shaded in float planes.", {"CPU_hightmap_r3_float"}, float_relief},
                {"balls",
                 "Crystal ball and bubble",
                 "One turns the picture over, the other hardly bends it; both cast shadows with a bright spot.",
                 {"xBubbleShadow", "SphereInnards"},
                 balls},
            }};
}

} // namespace gallery
