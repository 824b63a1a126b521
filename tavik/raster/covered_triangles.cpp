#include <array>
#include <cstddef>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/sampling.h"
#include "tavik/raster/attribute.h"
#include "tavik/raster/coverage.h"
#include "tavik/raster/raster.h"

#define TAVIK_ROWS "tavik/raster/attribute_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

using ShadeRow = void(const Attribute &attribute, const float *second, const float *third, uint8_t *dst,
                      std::size_t count);
using ProjectRow = void(const Attribute &q, const Attribute &u_q, const Attribute &v_q, const float *second,
                        const float *third, float *w, float *u, float *v, std::size_t count);
constexpr PerLevel<ShadeRow> shade = TAVIK_EVERY_LEVEL(shade);
constexpr PerLevel<ProjectRow> project = TAVIK_EVERY_LEVEL(project);

// Pixels of one row, from `start` on in each plane of the target.
struct TexturedRun {
    std::size_t start, count;
    std::array<float, longest_run> w, u, v;
    std::array<bool, longest_run> drawn;
};

// Decides by depth, and whether any pixel is drawn.
bool test_depth(const tavik_textured_triangle &t, TexturedRun &run) {
    bool any = false;
    for (std::size_t i = 0; i < run.count; ++i) {
        float &depth = t.depth[run.start + i];
        run.drawn[i] = depth > run.w[i];
        if (run.drawn[i]) depth = run.w[i];
        any = any || run.drawn[i];
    }
    return any;
}

void put_nearest_texels(const tavik_textured_triangle &t, const TexturedRun &run) {
    for (std::size_t i = 0; i < run.count; ++i) {
        if (!run.drawn[i]) continue;
        const std::size_t texel = static_cast<std::size_t>(nearest_index(run.v[i], t.texture_height)) *
                                      static_cast<std::size_t>(t.texture_width) +
                                  static_cast<std::size_t>(nearest_index(run.u[i], t.texture_width));
        t.plane_r[run.start + i] = t.texture_r[texel];
        t.plane_g[run.start + i] = t.texture_g[texel];
        t.plane_b[run.start + i] = t.texture_b[texel];
    }
}

void put_smooth_texels(const tavik_textured_triangle &t, const TexturedRun &run) {
    const std::array<const uint8_t *, 3> texture = {t.texture_r, t.texture_g, t.texture_b};
    const std::array<uint8_t *, 3> planes = {t.plane_r, t.plane_g, t.plane_b};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        std::array<float, longest_run> texels;
        sample_bilinear.active()(texture[channel], t.texture_width, t.texture_height, run.u.data(), run.v.data(),
                                 texels.data(), run.count);
        for (std::size_t i = 0; i < run.count; ++i)
            if (run.drawn[i]) planes[channel][run.start + i] = round_to_byte(texels[i]);
    }
}

} // namespace

TAVIK_EXPORT(void) TriangleColor(const tavik_triangle *record) {
    const tavik_triangle &t = *record;
    const Coverage coverage(corner_at(t.x0, t.y0), corner_at(t.x1, t.y1), corner_at(t.x2, t.y2));
    const auto channel = [&](int32_t a, int32_t b, int32_t c) {
        return Attribute::of(coverage, static_cast<float>(a), static_cast<float>(b), static_cast<float>(c));
    };
    const std::array<Attribute, 3> colour = {channel(t.r0, t.r1, t.r2), channel(t.g0, t.g1, t.g2),
                                             channel(t.b0, t.b1, t.b2)};
    const std::array<uint8_t *, 3> planes = {t.plane_r, t.plane_g, t.plane_b};
    for_each_run(coverage, t.x_limit, t.y_limit,
                 [&](int32_t x, int32_t y, std::size_t count, const float *second, const float *third) {
                     const std::size_t at = static_cast<std::size_t>(y) * (static_cast<std::size_t>(t.x_limit) + 1) + x;
                     for (std::size_t i = 0; i < 3; ++i)
                         shade.active()(colour[i], second, third, planes[i] + at, count);
                 });
}

TAVIK_EXPORT(void) xTriangle_Perspective(const tavik_textured_triangle *record) {
    const tavik_textured_triangle &t = *record;
    const Coverage coverage(corner_at(t.x0, t.y0), corner_at(t.x1, t.y1), corner_at(t.x2, t.y2));
    const float q0 = 1.0F / t.w0;
    const float q1 = 1.0F / t.w1;
    const float q2 = 1.0F / t.w2;
    const Attribute q = Attribute::of(coverage, q0, q1, q2);
    const Attribute u_q = Attribute::of(coverage, t.u0 * q0, t.u1 * q1, t.u2 * q2);
    const Attribute v_q = Attribute::of(coverage, t.v0 * q0, t.v1 * q1, t.v2 * q2);
    TexturedRun run;
    for_each_run(coverage, t.width, t.height,
                 [&](int32_t x, int32_t y, std::size_t count, const float *second, const float *third) {
                     project.active()(q, u_q, v_q, second, third, run.w.data(), run.u.data(), run.v.data(), count);
                     run.start = static_cast<std::size_t>(y) * static_cast<std::size_t>(t.width) + x;
                     run.count = count;
                     if (!test_depth(t, run)) return;
                     if (t.smooth == 0)
                         put_nearest_texels(t, run);
                     else
                         put_smooth_texels(t, run);
                 });
}
