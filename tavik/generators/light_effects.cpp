#include <algorithm>
#include <cmath>

#include "tavik/frame/elementary.h"
#include "tavik/frame/hash.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/generators/generators.h"

namespace {

struct Nova {
    float centre_x, centre_y, inverse_radius;
    int32_t rays;
    uint32_t hash_of_seed;
    float red, green, blue, intensity;
};

struct Streaks {
    float cosine, sine;
    float per_length, per_spacing, density;
    uint32_t hash_of_seed;
    float red, green, blue, opacity;
};

} // namespace

#define TAVIK_ROWS "tavik/generators/light_effects_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

template <class Effect>
using EffectRow = void(const Effect &effect, int32_t y, uint8_t *r, uint8_t *g, uint8_t *b, std::size_t count);
constexpr PerLevel<EffectRow<Nova>> add_nova = TAVIK_EVERY_LEVEL(add_nova);
constexpr PerLevel<EffectRow<Streaks>> add_streaks = TAVIK_EVERY_LEVEL(add_streaks);

struct Picture {
    int32_t width, height;
    uint8_t *r, *g, *b;
};

template <class Effect>
void add_to_rows(const PerLevel<EffectRow<Effect>> &row, const Effect &effect, const Picture &picture, int32_t begin,
                 int32_t end) {
    const std::size_t columns = element_count(picture.width);
    if (columns == 0) return;
    for (int32_t y = begin; y < end; ++y) {
        const std::size_t start = static_cast<std::size_t>(y) * columns;
        row.active()(effect, y, picture.r + start, picture.g + start, picture.b + start, columns);
    }
}

template <class Effect>
void add_in_parallel(const PerLevel<EffectRow<Effect>> &row, const Effect &effect, const Picture &picture) {
    // A pixel is worth many light elements.
    parallel_for(0, picture.height, std::max(row_grain(picture.width) / 32, 1),
                 [&](int32_t begin, int32_t end) { add_to_rows(row, effect, picture, begin, end); });
}

Nova nova_of(float cx, float cy, float radius, int32_t rays, int32_t seed, float red, float green, float blue,
             float intensity) {
    return {cx, cy, 1.0F / radius, rays, hash(static_cast<uint32_t>(seed)), red, green, blue, intensity};
}

Streaks streaks_of(float degrees, float length, float spacing, float density, int32_t seed, float red, float green,
                   float blue, float opacity) {
    const float turns = degrees_to_turns(degrees);
    return {cos_turn(turns),
            sin_turn(turns),
            1.0F / length,
            1.0F / spacing,
            density,
            hash(static_cast<uint32_t>(seed)),
            red,
            green,
            blue,
            opacity};
}

} // namespace

TAVIK_EXPORT(void)
xNova(int32_t width, int32_t height, float cx, float cy, float radius, int32_t rays, int32_t seed, float red,
      float green, float blue, float intensity, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    add_to_rows(add_nova, nova_of(cx, cy, radius, rays, seed, red, green, blue, intensity),
                {width, height, plane_r, plane_g, plane_b}, 0, height);
}

TAVIK_EXPORT(void)
p_Nova(int32_t width, int32_t height, float cx, float cy, float radius, int32_t rays, int32_t seed, float red,
       float green, float blue, float intensity, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    add_in_parallel(add_nova, nova_of(cx, cy, radius, rays, seed, red, green, blue, intensity),
                    {width, height, plane_r, plane_g, plane_b});
}

TAVIK_EXPORT(void)
xRandomStreaks(int32_t width, int32_t height, float degrees, float length, float spacing, float density, int32_t seed,
               float red, float green, float blue, float opacity, uint8_t *plane_r, uint8_t *plane_g,
               uint8_t *plane_b) {
    add_to_rows(add_streaks, streaks_of(degrees, length, spacing, density, seed, red, green, blue, opacity),
                {width, height, plane_r, plane_g, plane_b}, 0, height);
}

TAVIK_EXPORT(void)
p_RandomStreaks(int32_t width, int32_t height, float degrees, float length, float spacing, float density, int32_t seed,
                float red, float green, float blue, float opacity, uint8_t *plane_r, uint8_t *plane_g,
                uint8_t *plane_b) {
    add_in_parallel(add_streaks, streaks_of(degrees, length, spacing, density, seed, red, green, blue, opacity),
                    {width, height, plane_r, plane_g, plane_b});
}
