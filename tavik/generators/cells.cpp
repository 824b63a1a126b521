#include <array>
#include <atomic>
#include <cmath>

#include "tavik/frame/parallel_for.h"
#include "tavik/frame/random.h"
#include "tavik/frame/size_form.h"
#include "tavik/generators/generators.h"

namespace {

// (1 - square of the relative distance) × 255, or the distance itself instead of its square.
enum class Cone { bowl, clamped_bowl, linear };

} // namespace

#define TAVIK_ROWS "tavik/generators/cells_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(Cone cone, int32_t dx, int32_t dy, float per_radius, float *heights, std::size_t count)>
    cone_heights = TAVIK_EVERY_LEVEL(cone_heights);
constexpr PerLevel<void(const uint16_t *numbers, const float *heights, bool invert, uint8_t *dst, std::size_t count)>
    dithered_heights = TAVIK_EVERY_LEVEL(dithered_heights);

constexpr std::size_t run = 256;

// The image's heights, and where seeds raise them.
struct HeightField {
    int32_t width;
    int32_t height;
    int32_t radius;
    float *heights;
};

struct Place {
    int32_t x;
    int32_t y;
};

// Values that several rows of seeds read and write at once, without a lock.
template <class Value> Value shared_load(Value &from) { return std::atomic_ref(from).load(std::memory_order_relaxed); }
template <class Value> void shared_store(Value &to, Value value) {
    std::atomic_ref(to).store(value, std::memory_order_relaxed);
}

// Raises the heights around a seed to those of its cone and calls on_raised(index) for each pixel raised.
template <class OnRaised> void raise(const HeightField &field, Cone cone, Place seed, const OnRaised &on_raised) {
    const auto first = [&](int32_t centre) { return std::max<int64_t>(int64_t{centre} - field.radius, 0); };
    const auto last = [&](int32_t centre, int32_t size) {
        return std::min<int64_t>(int64_t{centre} + field.radius, int64_t{size} - 1);
    };
    const float per_radius = 1.0F / static_cast<float>(field.radius);
    const int64_t end_x = last(seed.x, field.width) + 1;
    const int64_t last_y = last(seed.y, field.height);
    std::array<float, run> cone_row;
    for (int64_t y = first(seed.y); y <= last_y; ++y) {
        for (int64_t x = first(seed.x); x < end_x; x += run) {
            const std::size_t count = std::min(run, static_cast<std::size_t>(end_x - x));
            cone_heights.active()(cone, static_cast<int32_t>(x - seed.x), static_cast<int32_t>(y - seed.y), per_radius,
                                  cone_row.data(), count);
            const std::size_t start =
                static_cast<std::size_t>(y) * element_count(field.width) + static_cast<std::size_t>(x);
            for (std::size_t i = 0; i < count; ++i) {
                if (!(cone_row[i] > shared_load(field.heights[start + i]))) continue;
                shared_store(field.heights[start + i], cone_row[i]);
                on_raised(start + i);
            }
        }
    }
}

// Calls body(seed) for each of the grid's seeds, the rows of seeds in parallel.
template <class Seed, class Body>
void for_each_seed(const Seed *seeds, int32_t seeds_per_row, int32_t seed_rows, int32_t layers, int32_t radius,
                   const Body &body) {
    // Rows whose neighbourhoods hold few pixels stay on one thread.
    const double row_pixels = 4.0 * radius * radius * seeds_per_row * layers;
    const int32_t grain = row_pixels < light_grain ? static_cast<int32_t>(light_grain / std::max(row_pixels, 1.0)) : 1;
    parallel_for(0, seed_rows, grain, [&](int32_t begin, int32_t end) {
        for (int32_t row = begin; row < end; ++row)
            for (int32_t i = 0; i < seeds_per_row; ++i)
                for (int32_t layer = 0; layer < layers; ++layer) {
                    const std::size_t grid_row =
                        static_cast<std::size_t>(layer) * element_count(seed_rows) + static_cast<std::size_t>(row);
                    body(seeds[grid_row * element_count(seeds_per_row) + static_cast<std::size_t>(i)]);
                }
    });
}

} // namespace

TAVIK_EXPORT(void)
xCrystalize(int32_t width, int32_t height, int32_t seeds_per_row, int32_t seed_rows, int32_t size, int32_t /*ignored1*/,
            int32_t layers, int32_t /*ignored2*/, int32_t /*ignored3*/, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b,
            const tavik_crystal_seed *seeds, float *heights) {
    const HeightField field = {width, height, size / 2, heights};
    for_each_seed(seeds, seeds_per_row, seed_rows, layers, field.radius, [&](const tavik_crystal_seed &seed) {
        raise(field, Cone::bowl, {seed.x, seed.y}, [&](std::size_t i) {
            shared_store(dst_r[i], seed.r);
            shared_store(dst_g[i], seed.g);
            shared_store(dst_b[i], seed.b);
        });
    });
}

TAVIK_EXPORT(void)
xcellular(int32_t width, int32_t height, int32_t seeds_per_row, int32_t seed_rows, int32_t size, int32_t /*ignored*/,
          int32_t layers, int32_t falloff, int32_t invert, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b,
          const tavik_cell_seed *seeds, float *heights) {
    const HeightField field = {width, height, size / 2, heights};
    const Cone cone = falloff == 1 ? Cone::clamped_bowl : Cone::linear;
    for_each_seed(seeds, seeds_per_row, seed_rows, layers, field.radius, [&](const tavik_cell_seed &seed) {
        raise(field, cone, {truncate(seed.x), truncate(seed.y)}, [](std::size_t) {});
    });

    const std::size_t columns = element_count(width);
    // Drawing the numbers costs a few times a light element.
    const int32_t grain = std::max(row_grain(width) / 4, 1);
    parallel_for(0, height, grain, [&](int32_t begin, int32_t end) {
        std::array<uint16_t, run> numbers;
        for (int32_t y = begin; y < end; ++y) {
            for (std::size_t x = 0; x < columns; x += run) {
                const std::size_t count = std::min(run, columns - x);
                const std::size_t start = static_cast<std::size_t>(y) * columns + x;
                draw_random(numbers.data(), count);
                dithered_heights.active()(numbers.data(), heights + start, invert == 1, dst_r + start, count);
                std::copy_n(dst_r + start, count, dst_g + start);
                std::copy_n(dst_r + start, count, dst_b + start);
            }
        }
    });
}
