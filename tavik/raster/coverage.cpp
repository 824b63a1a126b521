#include "tavik/raster/coverage.h"

#include <utility>

#include "tavik/frame/arithmetic.h"

#define TAVIK_ROWS "tavik/raster/coverage_rows.inl"
#include "tavik/frame/each_level.inl"

namespace tavik {

namespace {

using WeightRow = void(double first, double step, float inverse_area, std::size_t count, float *to);
constexpr PerLevel<WeightRow> weight_row = TAVIK_EVERY_LEVEL(weight_row);

constexpr float sixteenths(float pixels) { return pixels * 16.0F + 0.5F; }

int64_t floor_held(float value) {
    constexpr float limit = 536870912.0F;
    const float held = clamp(value, -limit, limit);
    return floor_to_int(held);
}

constexpr int64_t floor_divide(int64_t dividend, int64_t divisor) {
    const int64_t quotient = dividend / divisor;
    return dividend % divisor < 0 ? quotient - 1 : quotient;
}

} // namespace

Corner corner_at(float x, float y) { return {floor_held(sixteenths(x)), floor_held(sixteenths(y))}; }

Corner corner_at(int32_t x, int32_t y) {
    constexpr int32_t limit = 33554432;
    return {int64_t{16} * std::clamp(x, -limit, limit), int64_t{16} * std::clamp(y, -limit, limit)};
}

Coverage::Coverage(Corner a, Corner b, Corner c)
    : corners_{a, b, c}, area_((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y)) {
    if (area_ < 0) {
        std::swap(corners_[1], corners_[2]);
        area_ = -area_;
        exchanged_ = true;
    }
    for (std::size_t i = 0; i < 3; ++i) edges_[i] = edge(corners_[i], corners_[(i + 1) % 3]);
    if (area_ != 0) inverse_area_ = 1.0F / static_cast<float>(area_);
}

Coverage::Edge Coverage::edge(Corner from, Corner to) {
    const int64_t dx = to.x - from.x;
    const int64_t dy = to.y - from.y;
    const bool top_or_left = dy < 0 || (dy == 0 && dx > 0);
    return {dx, dy, dy * from.x - dx * from.y, top_or_left ? 0 : 1};
}

Coverage::Range Coverage::rows(int32_t height) const {
    const auto [top, bottom] = std::minmax({corners_[0].y, corners_[1].y, corners_[2].y});
    return {static_cast<int32_t>(std::max<int64_t>(-floor_divide(-top, 16), 0)),
            static_cast<int32_t>(std::min<int64_t>(floor_divide(bottom, 16), int64_t{height} - 1))};
}

Coverage::Range Coverage::columns(int32_t y, int32_t width) const {
    int64_t first = 0;
    int64_t last = int64_t{width} - 1;
    for (const Edge &e : edges_) {
        // Inside where 16·dy·x is at most this.
        const int64_t room = value(e, 0, y) - e.smallest;
        if (e.dy > 0)
            last = std::min(last, floor_divide(room, 16 * e.dy));
        else if (e.dy < 0)
            first = std::max(first, -floor_divide(room, -16 * e.dy));
        else if (room < 0)
            last = -1;
    }
    if (first > last) return {0, -1};
    return {static_cast<int32_t>(first), static_cast<int32_t>(last)};
}

void Coverage::weights_of(const Edge &e, int32_t x, int32_t y, std::size_t count, float *to) const {
    const int64_t first = value(e, x, y);
    const int64_t step = -16 * e.dy;
    // Weights inside are at most the area, so that sums of so many steps are exact in double precision.
    constexpr int64_t exact_in_double = int64_t{1} << 52;
    if (area_ < exact_in_double) {
        weight_row.active()(static_cast<double>(first), static_cast<double>(step), inverse_area_, count, to);
        return;
    }
    for (std::size_t i = 0; i < count; ++i)
        to[i] = static_cast<float>(first + step * static_cast<int64_t>(i)) * inverse_area_;
}

void Coverage::weights(int32_t x, int32_t y, std::size_t count, float *second, float *third) const {
    weights_of(edges_[2], x, y, count, second);
    weights_of(edges_[0], x, y, count, third);
}

} // namespace tavik
