#include "tavik/composite/composite.h"

#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/composite/accumulate_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *src, int16_t *sums, std::size_t count)> add_samples =
    TAVIK_EVERY_LEVEL(add_samples);
constexpr PerLevel<void(const uint8_t *src, int16_t *sums, std::size_t count, int16_t weight)> add_weighted_samples =
    TAVIK_EVERY_LEVEL(add_weighted_samples);
constexpr PerLevel<void(const int16_t *sums, uint8_t *dst, std::size_t count, int32_t divisor)> divide_sums =
    TAVIK_EVERY_LEVEL(divide_sums);

// Runs run(from, to, count) over runs of samples of each of three planes.
template <class Source, class Target, class Run>
void for_runs(int32_t width, int32_t height, const Source *const src[3], Target *const dst[3], const Run &run) {
    if (width <= 0) return;
    const std::size_t stride = element_count(width);
    parallel_for(0, height, row_grain(width), [&](int32_t begin, int32_t end) {
        for (int32_t channel = 0; channel < 3; ++channel) {
            const Source *from = src[channel];
            Target *to = dst[channel];
            FetchAhead(counts(width, height), from, to)
                .for_runs(begin * stride, end * stride,
                          [&](std::size_t i, std::size_t n) { run(from + i, to + i, n); });
        }
    });
}

} // namespace

TAVIK_EXPORT(void)
xAccumulate(int32_t width, int32_t height, const uint8_t *src1, const uint8_t *src2, const uint8_t *src3, int16_t *acc1,
            int16_t *acc2, int16_t *acc3) {
    const uint8_t *const src[3] = {src1, src2, src3};
    int16_t *const acc[3] = {acc1, acc2, acc3};
    for_runs(width, height, src, acc, add_samples.active());
}

TAVIK_EXPORT(void)
xAccumulate3d(int32_t width, int32_t height, int32_t weight, const uint8_t *src1, const uint8_t *src2,
              const uint8_t *src3, int16_t *acc1, int16_t *acc2, int16_t *acc3) {
    const uint8_t *const src[3] = {src1, src2, src3};
    int16_t *const acc[3] = {acc1, acc2, acc3};
    for_runs(width, height, src, acc, [&](const uint8_t *samples, int16_t *sums, std::size_t count) {
        add_weighted_samples.active()(samples, sums, count, static_cast<int16_t>(weight));
    });
}

TAVIK_EXPORT(void)
xAccumulate_finish(int32_t divisor, int32_t width, int32_t height, const int16_t *acc1, const int16_t *acc2,
                   const int16_t *acc3, uint8_t *dst1, uint8_t *dst2, uint8_t *dst3) {
    const int16_t *const acc[3] = {acc1, acc2, acc3};
    uint8_t *const dst[3] = {dst1, dst2, dst3};
    for_runs(width, height, acc, dst, [&](const int16_t *sums, uint8_t *samples, std::size_t count) {
        divide_sums.active()(sums, samples, count, divisor);
    });
}
