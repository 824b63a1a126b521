#include "tavik/foliage/foliage.h"

#include <bit>
#include <vector>

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

tavik_foliage_target target_of(const Picture &p) { return {p.width, p.height, p.to_r, p.to_g, p.to_b, p.to_floats}; }

// Strokes of 24 pixels and a radius of 4, one for each 32 × 16 pixels. All have the nearest depth there is, so that
// each run draws what the run before has drawn.
void strokes(const Picture &p) {
    const auto target = target_of(p);
    for (int32_t y = 8; y < p.height; y += 16)
        for (int32_t x = 4; x < p.width; x += 32) {
            const auto left = static_cast<float>(x);
            const auto top = static_cast<float>(y);
            const float from[] = {left, top, -9, 4, 20, 90, 30};
            const float to[] = {left + 24, top + 6, -9, 1, 160, 220, 60};
            foliage_zLine(&target, from, to, 0.75F);
        }
}

void dabs(const Picture &p) {
    const auto target = target_of(p);
    for (int32_t y = 8; y < p.height; y += 16)
        for (int32_t x = 8; x < p.width; x += 16)
            foliage_xpen(&target, static_cast<float>(x), static_cast<float>(y), -9, 7, 200, 90.5F, 10, 0.75F);
}

// As many particles as the picture has groups of 20 pixels.
void physics(const Picture &p) {
    const float settings[] = {0, 0.05F, 0.3F, 0, 0.2F, 1.5F, 0.05F, 0};
    const auto count = static_cast<std::size_t>(p.width) * static_cast<std::size_t>(p.height) / 20;
    static std::vector<float> pool;
    if (pool.size() != count * 20) {
        // Growing for ever, as no time passes.
        pool.assign(count * 20, 1e9F);
        for (std::size_t i = 0; i < count; ++i) {
            pool[20 * i + 9] = 0.0F;
            pool[20 * i + 19] = std::bit_cast<float>(1);
        }
    }
    xApply_Physics(pool.data(), static_cast<int32_t>(count), settings);
}

// A meadow of about a blade of grass for each 100 pixels.
void meadow(const Picture &p) {
    const auto target = target_of(p);
    const auto right = static_cast<float>(p.width);
    const auto bottom = static_cast<float>(p.height);
    const float emitter[24] = {0,  9, right, bottom, -9, -9, -90, 40,  1,  3,   6,
                               12, 1, 2.5F,  20,     90, 30, 160, 220, 60, 0.5F};
    const float settings[] = {0, 0.05F, 0.3F, 0, 0.2F, 1.5F, 0.05F, 1};
    const int32_t blades = p.width * p.height / 100;
    std::vector<float> pool(static_cast<std::size_t>(blades) * 20);
    xFoliage_Process(&target, pool.data(), blades, emitter, settings, blades / 10 + 1, 20, 7, 1);
}

const Case cases[] = {
    {"foliage_zLine", {.bytes = 14, .note = "a stroke for each 512 pixels"}, strokes},
    {"foliage_xpen", {.bytes = 14, .note = "a dab for each 256 pixels"}, dabs},
    {"xApply_Physics",
     {.bytes = 8, .parallel = true, .note = "a particle for each 20 pixels; records of mixed fields"},
     physics},
    {"xFoliage_Process", {.bytes = 14, .note = "a blade for each 100 pixels"}, meadow},
};

const Family foliage("foliage", cases);

} // namespace
} // namespace tavik_bench
