#include <algorithm>
#include <memory>
#include <new>
#include <span>

#include "tavik/frame/elementary.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/sampling.h"
#include "tavik/frame/size_form.h"
#include "tavik/lighting/height_field.h"
#include "tavik/lighting/lighting.h"

namespace {

using namespace tavik;

// Where the ray is after a whole number of pixels: so many to the right and down and a part of the next, and how far
// it has climbed.
struct RayStep {
    int32_t right, down;
    float part_x, part_y;
    float distance, climb;
};

struct RayCorners {
    const float *upper_left, *upper_right, *lower_left, *lower_right;
};

constexpr int32_t shadow_run = 512;

} // namespace

#define TAVIK_ROWS "tavik/lighting/ray_shadow_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<void(const HeightField<float> &field, std::span<const RayStep> steps, float hardness, int32_t first,
                        int32_t y, uint8_t *dst, int32_t count)>
    cast_rays = TAVIK_EVERY_LEVEL(cast_rays);

RayStep step_at(int32_t index, float cosine, float sine, float rise) {
    const auto distance = static_cast<float>(index);
    const float x = cosine * distance;
    const float y = sine * distance;
    const int32_t right = floor_to_int(x);
    const int32_t down = floor_to_int(y);
    return {right, down, x - static_cast<float>(right), y - static_cast<float>(down), distance, rise * distance};
}

} // namespace

TAVIK_EXPORT(void)
xDoRaytraceShadow(int32_t width, int32_t height, const float *heights, float degrees, float rise, int32_t steps,
                  float softness, uint8_t *dst) {
    const std::size_t step_count = element_count(steps);
    const std::unique_ptr<RayStep[]> ray(new (std::nothrow) RayStep[step_count]);
    if (!ray || width <= 0) return;
    const float turns = degrees_to_turns(degrees);
    const float cosine = cos_turn(turns);
    const float sine = sin_turn(turns);
    for (std::size_t i = 0; i < step_count; ++i) ray[i] = step_at(static_cast<int32_t>(i) + 1, cosine, sine, rise);
    const float hardness = softness > 0 ? 1.0F / softness : 1e30F;
    const HeightField<float> field = {heights, width, height};
    const int32_t cost = std::clamp(steps, 1, light_grain);
    parallel_for(0, height, std::max(row_grain(width) / cost, 1), [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y)
            for (int32_t x = 0; x < width; x += shadow_run)
                cast_rays.active()(field, {ray.get(), step_count}, hardness, x, y,
                                   dst + static_cast<std::size_t>(y) * element_count(width) + x,
                                   std::min(shadow_run, width - x));
    });
}
