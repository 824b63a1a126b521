#include "tavik/memops/memops.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>

#include "tavik/frame/parallel_for.h"

using namespace tavik;

TAVIK_EXPORT(void) quicksort(uint8_t *data, int32_t count) {
    if (count < 2) return;
    // Equal bytes cannot be told apart, so counting them sorts; it pays once there are more bytes than counters.
    constexpr int32_t enough_to_count = 512;
    if (count < enough_to_count) {
        std::sort(data, data + count);
        return;
    }
    std::array<uint32_t, 256> counts = {};
    std::for_each(data, data + count, [&](uint8_t value) { ++counts[value]; });
    for (std::size_t value = 0; value < counts.size(); ++value)
        data = std::fill_n(data, counts[value], static_cast<uint8_t>(value));
}

TAVIK_EXPORT(void) xParallelSort(float *data, int32_t count) {
    if (count < 3) return;
    // Relaxed loads and stores are plain moves; they only tell the language that the phases race on purpose.
    const auto order = [data](std::ptrdiff_t first) {
        const std::atomic_ref<float> lower(data[first]);
        const std::atomic_ref<float> upper(data[first + 1]);
        const float a = lower.load(std::memory_order_relaxed);
        const float b = upper.load(std::memory_order_relaxed);
        if (a > b) {
            lower.store(b, std::memory_order_relaxed);
            upper.store(a, std::memory_order_relaxed);
        }
    };
    const int32_t half = count / 2;
    constexpr int32_t phases_per_task = 1;
    parallel_for(0, count - 2, phases_per_task, [&](int32_t begin, int32_t end) {
        for (int32_t phase = begin; phase < end; ++phase) {
            const int32_t odd = phase & 1;
            for (int32_t k = 0; k < half - odd; ++k) order(std::ptrdiff_t{2} * k + odd);
        }
    });
}
