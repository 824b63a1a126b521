#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/resample/box_span.h"
#include "tavik/resample/positions.h"
#include "tavik/resample/resample.h"

#define TAVIK_ROWS "tavik/resample/prefilter_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const int32_t *sums, float inverse, uint8_t *dst, std::size_t count)> divide_sums =
    TAVIK_EVERY_LEVEL(divide_sums);
constexpr PerLevel<uint16_t(uint16_t sum, const uint8_t *lead, const uint8_t *trail, ShortDivision division,
                            uint8_t *dst, std::size_t count)>
    average_short_row = TAVIK_EVERY_LEVEL(average_short_row);
constexpr PerLevel<void(uint16_t *sums, const uint8_t *lead, const uint8_t *trail, ShortDivision division, uint8_t *dst,
                        std::size_t count)>
    move_short_spans = TAVIK_EVERY_LEVEL(move_short_spans);
constexpr PerLevel<void(float *sums, const uint8_t *lead, const uint8_t *trail, float inverse, uint8_t *dst,
                        std::size_t count)>
    move_spans = TAVIK_EVERY_LEVEL(move_spans);
constexpr PerLevel<void(float *filtered, const uint8_t *unfiltered, float amount, std::size_t count)> lerp_to_bytes =
    TAVIK_EVERY_LEVEL(lerp_to_bytes);

// Sums of so many samples are exact in single precision, even where the sum begins with a sample of another row.
constexpr int32_t largest_exact_size = (1 << 24) / (2 * 255) - 1;

// A row's sum, in single precision or, where that is the same, in integers.
template <class Sum> struct RowSum {
    const uint8_t *row;
    const BoxSpan &span;
    Sum value;

    // Up to the span before the first average's.
    RowSum(const uint8_t *source_row, uint8_t first_sample, const BoxSpan &row_span)
        : row(source_row), span(row_span), value(static_cast<Sum>(first_sample * static_cast<Sum>(span.size))) {
        for (int32_t step = -1; step < span.ahead; ++step) move(step);
    }

    void move(int32_t step) {
        value = static_cast<Sum>(value + row[span.at(step)]);
        value = static_cast<Sum>(value - row[span.at(step - span.size)]);
    }
};

void average_row_in_floats(const uint8_t *row, uint8_t first_sample, const BoxSpan &span, uint8_t *dst) {
    RowSum<float> sum(row, first_sample, span);
    for (int32_t x = 0; x < span.written; ++x) {
        sum.move(x + span.ahead);
        dst[x] = low_byte(truncate(span.inverse * sum.value));
    }
}

void average_row_in_integers(const uint8_t *row, uint8_t first_sample, const BoxSpan &span, uint8_t *dst) {
    RowSum<int32_t> sum(row, first_sample, span);
    for_each_block(span.written, [&](int32_t first, int32_t end) {
        std::array<int32_t, block_columns> sums;
        for (int32_t x = first; x < end; ++x) {
            sum.move(x + span.ahead);
            sums[static_cast<std::size_t>(x - first)] = sum.value;
        }
        divide_sums.active()(sums.data(), span.inverse, dst + first, static_cast<std::size_t>(end - first));
    });
}

void average_row_shortly(const uint8_t *row, uint8_t first_sample, const BoxSpan &span, uint8_t *dst) {
    const ShortDivision division(span.size);
    RowSum<uint16_t> sum(row, first_sample, span);
    int32_t x = 0;
    const auto average_until = [&](int32_t end) {
        for (; x < end; ++x) {
            sum.move(x + span.ahead);
            dst[x] = division(sum.value);
        }
    };
    // Between the ends of the row no sample is repeated.
    average_until(std::min(span.behind, span.written));
    const int32_t inside = std::max(span.last + 1 - span.ahead - x, 0);
    sum.value = average_short_row.active()(sum.value, row + x + span.ahead, row + x - span.behind, division, dst + x,
                                           static_cast<std::size_t>(inside));
    x += inside;
    average_until(span.written);
}

// As many columns as are averaged together, row by row: wide enough that memory is read in long runs.
constexpr int32_t columns_together = 4096;

// Averages for rows [begin, end) go to dst at row × stride, from `dst` on. move(sums, lead, trail, dst, count) moves
// the sums on by a row.
template <class Sum, class Move>
void average_rows(const uint8_t *src, std::size_t stride, const BoxSpan &span, uint8_t *dst, int32_t begin, int32_t end,
                  const Move &move) {
    // The last column is not averaged.
    for (std::size_t first = 0; first < stride - 1; first += columns_together) {
        const std::size_t count = std::min<std::size_t>(stride - 1 - first, columns_together);
        std::array<Sum, columns_together> sums;
        const auto row = [&](int32_t step) { return src + row_start(stride, span.at(step)) + first; };
        if (begin == 0) {
            std::array<uint8_t, columns_together> unused;
            for (std::size_t x = 0; x < count; ++x) sums[x] = static_cast<Sum>(row(0)[x] * static_cast<Sum>(span.size));
            for (int32_t step = -1; step < span.ahead; ++step)
                move(sums.data(), row(step), row(step - span.size), unused.data(), count);
        } else {
            std::fill_n(sums.begin(), count, Sum{0});
            for (int32_t step = begin - span.behind; step < begin + span.ahead; ++step)
                for (std::size_t x = 0; x < count; ++x) sums[x] = static_cast<Sum>(sums[x] + row(step)[x]);
        }
        for (int32_t y = begin; y < end; ++y) {
            const int32_t step = y + span.ahead;
            move(sums.data(), row(step), row(step - span.size), dst + row_start(stride, y) + first, count);
        }
    }
}

void copy_rows(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t rows) {
    if (x_max < 0) return;
    const std::size_t stride = static_cast<std::size_t>(x_max) + 1;
    parallel_for(0, rows, row_grain(x_max), [&](int32_t begin, int32_t end) {
        std::memcpy(dst + row_start(stride, begin), src + row_start(stride, begin), row_start(stride, end - begin));
    });
}

} // namespace

TAVIK_EXPORT(void)
PrefilterCubicPass1Helper(const uint8_t *src, uint8_t *dst, int32_t target_width, int32_t /*ignored*/, int32_t x_max,
                          int32_t row_count) {
    const int32_t target = std::max(target_width, 1);
    if (target >= x_max) {
        copy_rows(src, dst, x_max, row_count);
        return;
    }
    if (row_count < 2) return;
    const BoxSpan span(x_max, target);
    // Beyond 2^24 samples a row's sum can begin with a sample of another one, which takes it out of 16 bits.
    const bool is_small = int64_t{row_count} * (int64_t{x_max} + 1) <= 1 << 24;
    auto *average = span.size > largest_exact_size       ? average_row_in_floats
                    : is_small && span.divides_shortly() ? average_row_shortly
                                                         : average_row_in_integers;
    const std::size_t stride = static_cast<std::size_t>(x_max) + 1;
    parallel_for(0, row_count - 1, row_grain(x_max), [&](int32_t begin, int32_t end) {
        for (int32_t r = begin; r < end; ++r) {
            const std::size_t base = row_start(stride, r);
            const uint8_t *row = src + static_cast<std::size_t>(static_cast<float>(base));
            average(row, src[base], span, dst + base);
        }
    });
}

TAVIK_EXPORT(void)
PrefilterCubicPass2Helpter(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t target_height, int32_t /*ignored*/,
                           int32_t y_max) {
    const int32_t target = std::max(target_height, 1);
    if (target >= y_max) {
        copy_rows(src, dst, x_max, y_max);
        return;
    }
    if (x_max < 1) return;
    const BoxSpan span(y_max, target);
    const bool is_short = span.divides_shortly();
    const std::size_t stride = static_cast<std::size_t>(x_max) + 1;
    // Half a row further on for an odd size.
    uint8_t *to = dst + (span.size % 2 == 0 ? 0 : stride / 2);
    // Exact sums can begin anywhere; to begin pays for itself over a few spans.
    const bool is_exact = span.size <= largest_exact_size;
    const int32_t grain = is_exact ? std::max(row_grain(x_max), 32 * span.size) : span.written;
    parallel_for(0, span.written, grain, [&](int32_t begin, int32_t end) {
        if (is_short)
            average_rows<uint16_t>(src, stride, span, to, begin, end,
                                   [division = ShortDivision(span.size)](auto *sums, auto *lead, auto *trail,
                                                                         auto *averages, std::size_t count) {
                                       move_short_spans.active()(sums, lead, trail, division, averages, count);
                                   });
        else
            average_rows<float>(src, stride, span, to, begin, end,
                                [&](auto *sums, auto *lead, auto *trail, auto *averages, std::size_t count) {
                                    move_spans.active()(sums, lead, trail, span.inverse, averages, count);
                                });
    });
}

TAVIK_EXPORT(void)
xprefilterlerp(int32_t width, int32_t row_count, float amount, float *filtered, const uint8_t *unfiltered) {
    const FetchAhead planes(counts(width, row_count), filtered, unfiltered);
    planes.for_rows(width, row_count, [&](std::size_t i, std::size_t n) {
        lerp_to_bytes.active()(filtered + i, unfiltered + i, amount, n);
    });
}
