#include <algorithm>
#include <atomic>
#include <limits>

#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/lighting/height_field.h"
#include "tavik/lighting/lighting.h"

namespace {

using namespace tavik;

constexpr int32_t weathering_run = 512;

struct Extremes {
    float lowest, highest;
};

} // namespace

#define TAVIK_ROWS "tavik/lighting/weathering_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<void(const HeightField<float> &field, float talus, float half_rate, int32_t first, int32_t y,
                        float *flow, int32_t count)>
    find_flow = TAVIK_EVERY_LEVEL(find_flow);
constexpr PerLevel<void(const HeightField<float> &field, const float *flow, float talus, int32_t first, int32_t y,
                        float *dst, int32_t count)>
    move_material = TAVIK_EVERY_LEVEL(move_material);
constexpr PerLevel<void(const float *before, const float *after, float gain, uint8_t *dst, std::size_t count)>
    show_difference = TAVIK_EVERY_LEVEL(show_difference);
constexpr PerLevel<void(const float *plane, std::size_t count, Extremes &extremes)> find_extremes =
    TAVIK_EVERY_LEVEL(find_extremes);

// Calls body(x, y, count, at) for runs of samples, in parallel rows, with what lies below them in the planes on its way.
template <class Planes, class Body>
void for_each_run(int32_t width, int32_t height, const Planes &planes, const Body &body) {
    // Eight neighbours cost about as many light elements.
    parallel_for(0, height, std::max(row_grain(width) / 8, 1), [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y)
            for (int32_t x = 0; x < width; x += weathering_run) {
                const std::size_t at = static_cast<std::size_t>(y) * element_count(width) + x;
                const int32_t count = std::min(weathering_run, width - x);
                const std::size_t below = at + element_count(width);
                planes.fetch(below, below + element_count(count));
                body(x, y, count, at);
            }
    });
}

template <class Better> void keep_better(std::atomic<float> &best, float value, const Better &better) {
    float current = best.load(std::memory_order_relaxed);
    while (better(value, current) && !best.compare_exchange_weak(current, value, std::memory_order_relaxed)) {
    }
}

} // namespace

TAVIK_EXPORT(void)
xFindMinMax_f(int32_t width, int32_t height, const float *plane, float *lowest, float *highest) {
    if (width <= 0 || height <= 0) return;
    constexpr float infinity = std::numeric_limits<float>::infinity();
    std::atomic<float> low = infinity;
    std::atomic<float> high = -infinity;
    const std::size_t stride = element_count(width);
    parallel_for(0, height, row_grain(width), [&](int32_t begin, int32_t end) {
        Extremes extremes = {infinity, -infinity};
        find_extremes.active()(plane + begin * stride, (end - begin) * stride, extremes);
        keep_better(low, extremes.lowest, [](float a, float b) { return a < b; });
        keep_better(high, extremes.highest, [](float a, float b) { return a > b; });
    });
    // Makes a zero +0, whichever sign was met first.
    *lowest = low.load(std::memory_order_relaxed) + 0.0F;
    *highest = high.load(std::memory_order_relaxed) + 0.0F;
}

TAVIK_EXPORT(void)
xDifferenceKernel(int32_t width, int32_t height, float talus, float rate, const float *heights, float *flow) {
    const HeightField<float> field = {heights, width, height};
    const float half_rate = rate * 0.5F;
    const FetchAhead planes(counts(width, height), heights, flow);
    for_each_run(width, height, planes, [&](int32_t x, int32_t y, int32_t count, std::size_t at) {
        find_flow.active()(field, talus, half_rate, x, y, flow + at, count);
    });
}

TAVIK_EXPORT(void)
xApplySlope(int32_t width, int32_t height, float talus, const float *heights, const float *flow, float *dst) {
    const HeightField<float> field = {heights, width, height};
    const FetchAhead planes(counts(width, height), heights, flow, dst);
    for_each_run(width, height, planes, [&](int32_t x, int32_t y, int32_t count, std::size_t at) {
        move_material.active()(field, flow, talus, x, y, dst + at, count);
    });
}

TAVIK_EXPORT(void)
erosionsubtracter(int32_t width, int32_t height, float gain, const float *before, const float *after, uint8_t *dst) {
    const FetchAhead planes(counts(width, height), before, after, dst);
    planes.for_rows(width, height, [&](std::size_t i, std::size_t n) {
        show_difference.active()(before + i, after + i, gain, dst + i, n);
    });
}
