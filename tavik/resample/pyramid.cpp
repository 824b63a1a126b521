// Image pyramids: each level half as large as the one before it (Burt and Adelson 1983).
#include <algorithm>

#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/sampling.h"
#include "tavik/resample/positions.h"
#include "tavik/resample/resample.h"

namespace {

using namespace tavik;

constexpr float binomial(float a, float b, float c, float d) { return ((a + d) + (b + c) * 3.0F) * 0.125F; }
constexpr float three_to_one(float near, float far) { return near * 0.75F + far * 0.25F; }

// Samples of a run, enlarged across, from the coarse row that it lies in and the one next to it.
struct EnlargedRows {
    std::array<float, sampling_run> near, far;
};

} // namespace

#define TAVIK_ROWS "tavik/resample/pyramid_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<void(const float *row, int32_t width, int32_t first, float *dst, std::size_t count)> reduce_across =
    TAVIK_EVERY_LEVEL(reduce_across);
constexpr PerLevel<void(const float *above, const float *upper, const float *lower, const float *below, float *dst,
                        std::size_t count)>
    reduce_down = TAVIK_EVERY_LEVEL(reduce_down);
constexpr PerLevel<void(const float *row, int32_t coarse_width, int32_t first, float *dst, std::size_t count)>
    enlarge_across = TAVIK_EVERY_LEVEL(enlarge_across);
constexpr PerLevel<void(const EnlargedRows &in, const EnlargedRows &out, float gain, const float *fine, float *dst,
                        std::size_t count)>
    add_detail = TAVIK_EVERY_LEVEL(add_detail);

// Half of it, rounded up.
constexpr int32_t reduced(int32_t size) { return size / 2 + size % 2; }

struct Level {
    const float *plane;
    int32_t width, height;
    float scale = 1; // of its positions

    Level(const float *pyramid, int32_t full_width, int32_t full_height, int32_t index)
        : plane(pyramid), width(full_width), height(full_height) {
        for (int32_t i = 0; i < index; ++i) {
            plane += counts(width, height);
            width = reduced(width);
            height = reduced(height);
            scale *= 0.5F;
        }
    }

    float between(float x, float y) const {
        return bilinear(plane, width, height, (x + 0.5F) * scale - 0.5F, (y + 0.5F) * scale - 0.5F);
    }

    float nearest(float x, float y) const {
        const float column = clamp((x + 0.5F) * scale, 0.0F, static_cast<float>(width - 1));
        const float row = clamp((y + 0.5F) * scale, 0.0F, static_cast<float>(height - 1));
        return plane[row_start(element_count(width), static_cast<int32_t>(row)) + static_cast<std::size_t>(column)];
    }
};

} // namespace

TAVIK_EXPORT(void) xHalfSizeBuf(int32_t width, int32_t height, const float *src, float *dst) {
    const std::size_t src_columns = element_count(width);
    const std::size_t columns = element_count(reduced(width));
    parallel_for(0, reduced(height), std::max(row_grain(width) / 2, 1), [&](int32_t begin, int32_t end) {
        for (std::size_t x = 0; x < columns; x += sampling_run) {
            const std::size_t count = std::min(sampling_run, columns - x);
            // The four rows around a row of the destination, each reduced once.
            std::array<std::array<float, sampling_run>, 4> window;
            const auto reduced_row = [&](int32_t y) { return window[static_cast<std::size_t>(y) % 4].data(); };
            for (int32_t y = 2 * begin - 1; y <= 2 * end; ++y) {
                prefetch(src, row_start(src_columns, y + 2) + 2 * x, row_start(src_columns, y + 2) + 2 * (x + count));
                reduce_across.active()(src + row_start(src_columns, std::clamp(y, 0, height - 1)), width,
                                       static_cast<int32_t>(x), reduced_row(y), count);
                if (y % 2 != 0 || y == 2 * begin) continue;
                reduce_down.active()(reduced_row(y - 3), reduced_row(y - 2), reduced_row(y - 1), reduced_row(y),
                                     dst + row_start(columns, y / 2 - 1) + x, count);
            }
        }
    });
}

TAVIK_EXPORT(float)
xEval(float x, float y, float level, int32_t width, int32_t height, int32_t levels, const float *pyramid) {
    const float held = clamp(level, 0.0F, static_cast<float>(levels - 1));
    const auto finer = static_cast<int32_t>(held);
    const float a = Level(pyramid, width, height, finer).between(x, y);
    const float b = Level(pyramid, width, height, std::min(finer + 1, levels - 1)).between(x, y);
    return (b - a) * (held - static_cast<float>(finer)) + a;
}

TAVIK_EXPORT(float)
xFastEval(float x, float y, float level, int32_t width, int32_t height, int32_t levels, const float *pyramid) {
    return Level(pyramid, width, height, nearest_index(level, levels)).nearest(x, y);
}

TAVIK_EXPORT(void)
xrefinementhelper(int32_t width, int32_t height, float gain, const float *fine, const float *coarse_in,
                  const float *coarse_out, float *dst) {
    const int32_t coarse_width = reduced(width);
    const FetchAhead planes(counts(width, height), fine, dst);
    const auto enlarged = [&](const float *coarse, const PixelRun &run) {
        const auto row_at = [&](int32_t y) {
            return coarse + row_start(element_count(coarse_width), std::clamp(y, 0, reduced(height) - 1));
        };
        const int32_t near = run.y / 2;
        EnlargedRows rows;
        enlarge_across.active()(row_at(near), coarse_width, run.x, rows.near.data(), run.count);
        enlarge_across.active()(row_at(run.y % 2 == 0 ? near - 1 : near + 1), coarse_width, run.x, rows.far.data(),
                                run.count);
        return rows;
    };
    for_each_run(width, height, [&](const PixelRun &run) {
        const std::size_t below = run.at + element_count(width);
        planes.fetch(below, below + run.count);
        add_detail.active()(enlarged(coarse_in, run), enlarged(coarse_out, run), gain, fine + run.at, dst + run.at,
                            run.count);
    });
}
