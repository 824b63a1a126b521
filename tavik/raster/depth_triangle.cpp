#include "tavik/raster/depth_triangle.h"

#include <array>
#include <utility>

#include "tavik/frame/arithmetic.h"

namespace tavik {

namespace {

// Depth and colour of a point, in the lanes of one vector.
using Attributes = float __attribute__((vector_size(16)));
constexpr int depth_lane = 0;
constexpr int red_lane = 1;

// The first visible pixel of a span in each plane.
struct Target {
    float *depth;
    uint8_t *planes[3];
};

} // namespace
} // namespace tavik

#define TAVIK_ROWS "tavik/raster/span_rows.inl"
#include "tavik/frame/each_level.inl"

namespace tavik {
namespace {

using SpanRow = void(Attributes attributes, const Attributes &step, int32_t hidden, std::size_t count,
                     const Target &target);
constexpr PerLevel<SpanRow> draw_span = TAVIK_EVERY_LEVEL(draw_span);

struct Vertex {
    int32_t x, y;
    Attributes attributes;
    std::array<int32_t, 3> colour;
};

struct SpanEnd {
    int32_t x;
    Attributes attributes;
};

// The line from one vertex to another.
class Edge {
  public:
    Edge(const Vertex &from, const Vertex &to)
        : start(from),
          inverse_height(from.y == to.y ? 0.0F : 1.0F / static_cast<float>(wrap_sub(to.y, from.y))),
          width(static_cast<float>(wrap_sub(to.x, from.x))),
          change{to.attributes[depth_lane] - from.attributes[depth_lane], difference(from, to, 0),
                 difference(from, to, 1), difference(from, to, 2)} {}

    SpanEnd at(int32_t y) const {
        const float t = static_cast<float>(wrap_sub(y, start.y)) * inverse_height;
        return {truncate(width * t + static_cast<float>(start.x)), change * t + start.attributes};
    }

  private:
    static float difference(const Vertex &from, const Vertex &to, std::size_t channel) {
        return static_cast<float>(wrap_sub(to.colour[channel], from.colour[channel]));
    }

    const Vertex &start;
    float inverse_height;
    float width;
    Attributes change;
};

class Painter {
  public:
    explicit Painter(const tavik_triangle &triangle)
        : triangle_(triangle), row_stride_(static_cast<std::size_t>(wrap_add(triangle.x_limit, 1))) {}

    // Between two ends, both included.
    void fill(int32_t y, const SpanEnd &a, const SpanEnd &b) const {
        const bool a_is_left = a.x < b.x;
        const SpanEnd &left = a_is_left ? a : b;
        const SpanEnd &right = a_is_left ? b : a;
        const int32_t first = std::max(left.x, 0);
        const int32_t last = std::min(right.x, wrap_sub(triangle_.x_limit, 1));
        if (first > last) return;
        const float per_pixel = left.x == right.x ? 0.0F : 1.0F / static_cast<float>(wrap_sub(right.x, left.x));
        const Attributes step = (right.attributes - left.attributes) * per_pixel;
        const std::size_t at = row_stride_ * static_cast<std::size_t>(y) + static_cast<std::size_t>(first);
        row_(left.attributes, left.x == right.x ? Attributes{} : step, wrap_sub(first, left.x),
             static_cast<std::size_t>(last - first) + 1,
             {triangle_.depth + at, {triangle_.plane_r + at, triangle_.plane_g + at, triangle_.plane_b + at}});
    }

  private:
    const tavik_triangle &triangle_;
    std::size_t row_stride_;
    SpanRow &row_ = draw_span.active();
};

void sort_by_y(tavik_triangle &t) {
    const auto order_first_two = [&] {
        if (t.y1 >= t.y0) return;
        std::swap(t.x0, t.x1);
        std::swap(t.y0, t.y1);
        std::swap(t.r0, t.r1);
        std::swap(t.g0, t.g1);
        std::swap(t.b0, t.b1);
        std::swap(t.z0, t.z1);
    };
    const auto order_last_two = [&] {
        if (t.y2 >= t.y1) return;
        std::swap(t.x1, t.x2);
        std::swap(t.y1, t.y2);
        std::swap(t.r1, t.r2);
        std::swap(t.g1, t.g2);
        std::swap(t.b1, t.b2);
        std::swap(t.z1, t.z2);
    };
    order_first_two();
    order_last_two();
    order_first_two();
    order_last_two();
}

Vertex vertex_of(int32_t x, int32_t y, float z, int32_t red, int32_t green, int32_t blue) {
    const Attributes attributes = {z, static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue)};
    return {x, y, attributes, {{red, green, blue}}};
}

} // namespace

void draw_depth_triangle(tavik_triangle &t, int32_t first_row, int32_t last_row) {
    if (t.x0 < 0 && t.x1 < 0 && t.x2 < 0) return;
    if (t.x0 > t.x_limit && t.x1 > t.x_limit && t.x2 > t.x_limit) return;
    sort_by_y(t);

    const int32_t top = std::max({t.y0, first_row, 0});
    const int32_t bottom = std::min({t.y2, wrap_sub(last_row, 1), wrap_sub(t.y_limit, 1)});
    if (top > bottom) return;
    const Vertex highest = vertex_of(t.x0, t.y0, t.z0, t.r0, t.g0, t.b0);
    const Vertex middle = vertex_of(t.x1, t.y1, t.z1, t.r1, t.g1, t.b1);
    const Vertex lowest = vertex_of(t.x2, t.y2, t.z2, t.r2, t.g2, t.b2);
    const Edge long_edge(highest, lowest);
    const Edge upper(highest, middle);
    const Edge lower(middle, lowest);
    const Painter painter(t);
    for (int32_t y = top; y <= std::min(middle.y, bottom); ++y) painter.fill(y, long_edge.at(y), upper.at(y));
    for (int32_t y = std::max(middle.y, top); y <= bottom; ++y) painter.fill(y, long_edge.at(y), lower.at(y));
}

} // namespace tavik

TAVIK_EXPORT(void) zTriangle(tavik_triangle *record) { tavik::draw_depth_triangle(*record, 0, record->y_limit); }
