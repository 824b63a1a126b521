#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "tavik/frame/parallel_for.h"
#include "tavik/frame/sampling.h"
#include "tavik/frame/size_form.h"
#include "tavik/paint/paint.h"

namespace {

using namespace tavik;

// A linear function of a place.
struct Plane {
    float per_x, per_y, constant;

    [[gnu::always_inline]] float at(float x, float y) const { return (per_x * x + per_y * y) + constant; }
};

// How far a pixel reaches over a line, in pixels.
struct Edge {
    Plane line;

    [[gnu::always_inline]] float distance(float x, float y) const { return line.at(x, y) + 0.5F; }

    // What is no number bounds nothing.
    bool lets_in(int32_t x, float y) const { return !(distance(static_cast<float>(x), y) <= 0.0F); }
};

struct Quadrilateral {
    std::array<Edge, 4> edges;
    Plane across, down, depth; // the place in the source, 0 .. 1, is (across, down) / depth
    float source_width, source_height;
    float opacity;
};

struct Corner {
    float x, y;
};

Edge edge_between(Corner from, Corner to, float sign) {
    const float dx = to.x - from.x;
    const float dy = to.y - from.y;
    const float squared = dx * dx + dy * dy;
    if (squared == 0.0F) return {{0.0F, 0.0F, 1e30F}};
    const float f = sign / std::sqrt(squared);
    return {{-dy * f, dx * f, (dy * from.x - dx * from.y) * f}};
}

// Nothing for corners without an area.
std::optional<Quadrilateral> quadrilateral_of(const std::array<Corner, 4> &corners, int32_t source_width,
                                              int32_t source_height, float opacity) {
    const auto [p0, p1, p2, p3] = corners;
    const float area = (p2.x - p0.x) * (p3.y - p1.y) - (p3.x - p1.x) * (p2.y - p0.y);
    if (area == 0.0F || std::isnan(area)) return std::nullopt;
    const float sign = area < 0.0F ? -1.0F : 1.0F;

    // From the unit square to the corners (Heckbert 1989),
    const float sx = ((p0.x - p1.x) + p2.x) - p3.x;
    const float sy = ((p0.y - p1.y) + p2.y) - p3.y;
    const float dx1 = p1.x - p2.x;
    const float dx2 = p3.x - p2.x;
    const float dy1 = p1.y - p2.y;
    const float dy2 = p3.y - p2.y;
    const float denominator = dx1 * dy2 - dx2 * dy1;
    const float g = (sx * dy2 - dx2 * sy) / denominator;
    const float h = (dx1 * sy - sx * dy1) / denominator;
    const float a = (p1.x - p0.x) + g * p1.x;
    const float b = (p3.x - p0.x) + h * p3.x;
    const float c = p0.x;
    const float e = (p1.y - p0.y) + g * p1.y;
    const float f = (p3.y - p0.y) + h * p3.y;
    const float k = p0.y;
    // and back, by the adjugate.
    return Quadrilateral{.edges = {edge_between(p0, p1, sign), edge_between(p1, p2, sign), edge_between(p2, p3, sign),
                                   edge_between(p3, p0, sign)},
                         .across = {f - k * h, c * h - b, b * k - c * f},
                         .down = {k * g - e, a - c * g, c * e - a * k},
                         .depth = {e * h - f * g, b * g - a * h, a * f - b * e},
                         .source_width = static_cast<float>(source_width),
                         .source_height = static_cast<float>(source_height),
                         .opacity = opacity};
}

// The first of the columns begin .. end − 1 from which on a condition holds; `end` if there is none.
template <class Condition> int32_t first_column(int32_t begin, int32_t end, const Condition &holds) {
    while (begin < end) {
        const int32_t middle = begin + (end - begin) / 2;
        if (holds(middle))
            end = middle;
        else
            begin = middle + 1;
    }
    return begin;
}

struct Span {
    int32_t begin, end;
};

// The columns of a row that the quadrilateral reaches. Along a row each distance only grows or only falls, rounding
// included, so that they are found exactly.
Span span_of(const Quadrilateral &quadrilateral, float y, int32_t width) {
    Span span = {0, width};
    for (const Edge &edge : quadrilateral.edges) {
        if (edge.line.per_x < 0.0F)
            span.end = first_column(span.begin, span.end, [&](int32_t x) { return !edge.lets_in(x, y); });
        else
            span.begin = first_column(span.begin, span.end, [&](int32_t x) { return edge.lets_in(x, y); });
    }
    return span;
}

struct MappedPixels {
    std::array<float, sampling_run> u, v, weight;
};

} // namespace

#define TAVIK_ROWS "tavik/paint/quadrilateral_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<void(const Quadrilateral &quadrilateral, int32_t first, int32_t y, MappedPixels &pixels,
                        std::size_t count)>
    map_run = TAVIK_EVERY_LEVEL(map_run);
constexpr PerLevel<void(const MappedPixels &pixels, int32_t width, int32_t height, int32_t *index, std::size_t count)>
    nearest_samples = TAVIK_EVERY_LEVEL(nearest_samples);
constexpr PerLevel<void(const float *alpha, float *weight, std::size_t count)> weigh = TAVIK_EVERY_LEVEL(weigh);
constexpr PerLevel<void(const float *values, float tint, const float *weight, uint8_t *dst, std::size_t count)>
    mix_weighted = TAVIK_EVERY_LEVEL(mix_weighted);

struct Source {
    std::array<const uint8_t *, 3> planes;
    const uint8_t *alpha; // may be null: opaque
    int32_t width, height;
    bool smooth;
};

struct Target {
    std::array<uint8_t *, 3> planes;
    int32_t width, height;
};

// Takes samples of any of the source's planes at the places of some pixels.
class Sampler {
  public:
    Sampler(const Source &source, const MappedPixels &pixels, std::size_t count)
        : source_(source), pixels_(pixels), count_(count) {
        if (!source.smooth) nearest_samples.active()(pixels, source.width, source.height, index_.data(), count);
    }

    const float *operator()(const uint8_t *plane) {
        if (source_.smooth)
            sample_bilinear.active()(plane, source_.width, source_.height, pixels_.u.data(), pixels_.v.data(),
                                     values_.data(), count_);
        else
            for (std::size_t i = 0; i < count_; ++i) values_[i] = static_cast<float>(plane[index_[i]]);
        return values_.data();
    }

  private:
    const Source &source_;
    const MappedPixels &pixels_;
    std::size_t count_;
    std::array<int32_t, sampling_run> index_;
    std::array<float, sampling_run> values_;
};

void fill(const float *corners, const Source &source, const Target &target, float opacity,
          const std::array<float, 3> &tint) {
    if (target.width <= 0) return;
    const auto quadrilateral = quadrilateral_of(
        {{{corners[0], corners[1]}, {corners[2], corners[3]}, {corners[4], corners[5]}, {corners[6], corners[7]}}},
        source.width, source.height, opacity);
    if (!quadrilateral) return;
    parallel_for(0, target.height, std::max(row_grain(target.width) / 16, 1), [&](int32_t begin, int32_t end) {
        MappedPixels pixels;
        for (int32_t y = begin; y < end; ++y) {
            const std::size_t row = static_cast<std::size_t>(y) * element_count(target.width);
            const Span span = span_of(*quadrilateral, static_cast<float>(y), target.width);
            for (int32_t x = span.begin; x < span.end;) {
                const int32_t columns = std::min(span.end - x, static_cast<int32_t>(sampling_run));
                const auto count = static_cast<std::size_t>(columns);
                map_run.active()(*quadrilateral, x, y, pixels, count);
                Sampler samples(source, pixels, count);
                if (source.alpha != nullptr) weigh.active()(samples(source.alpha), pixels.weight.data(), count);
                for (std::size_t i = 0; i < 3; ++i)
                    mix_weighted.active()(samples(source.planes[i]), tint[i], pixels.weight.data(),
                                          target.planes[i] + row + static_cast<std::size_t>(x), count);
                x += columns;
            }
        }
    });
}

constexpr std::array<float, 3> no_tint = {1.0F, 1.0F, 1.0F};

} // namespace

TAVIK_EXPORT(void)
xFillPoly4_p(const float *corners, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, int32_t src_width,
             int32_t src_height, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, int32_t width, int32_t height,
             float opacity, int32_t smooth) {
    fill(corners, {{src_r, src_g, src_b}, nullptr, src_width, src_height, smooth != 0},
         {{dst_r, dst_g, dst_b}, width, height}, opacity, no_tint);
}

TAVIK_EXPORT(void)
xFillPoly4_Alpha_p(const float *corners, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                   const uint8_t *src_a, int32_t src_width, int32_t src_height, uint8_t *dst_r, uint8_t *dst_g,
                   uint8_t *dst_b, int32_t width, int32_t height, float opacity, int32_t smooth) {
    fill(corners, {{src_r, src_g, src_b}, src_a, src_width, src_height, smooth != 0},
         {{dst_r, dst_g, dst_b}, width, height}, opacity, no_tint);
}

TAVIK_EXPORT(void)
xFillPoly4_Alpha_p_Tinted(const float *corners, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                          const uint8_t *src_a, int32_t src_width, int32_t src_height, uint8_t *dst_r, uint8_t *dst_g,
                          uint8_t *dst_b, int32_t width, int32_t height, float opacity, int32_t smooth, float tint_r,
                          float tint_g, float tint_b) {
    fill(corners, {{src_r, src_g, src_b}, src_a, src_width, src_height, smooth != 0},
         {{dst_r, dst_g, dst_b}, width, height}, opacity,
         {tint_r * unit_per_byte, tint_g * unit_per_byte, tint_b * unit_per_byte});
}
