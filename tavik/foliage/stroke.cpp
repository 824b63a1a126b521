#include "tavik/foliage/stroke.h"

#include <algorithm>
#include <cmath>

#include "tavik/frame/arithmetic.h"

namespace {

using namespace tavik;

// A segment from its first end on, and what changes along it.
struct Stroke {
    StrokeEnd from;
    StrokeEnd change;
    float per_squared_length; // 0 for a point
    float opacity;
};

struct Box {
    int32_t left, right, top, bottom; // right and bottom are one past
};

int32_t low_bound(float a, float b, float reach) { return std::max(floor_to_int((a < b ? a : b) - reach), 0); }

int32_t high_bound(float a, float b, float reach, int32_t size) {
    return std::min(floor_to_int((a > b ? a : b) + reach) + 1, size);
}

} // namespace

#define TAVIK_ROWS "tavik/foliage/stroke_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<void(const Stroke &stroke, const Box &box, const tavik_foliage_target &target)> draw =
    TAVIK_EVERY_LEVEL(draw);

StrokeEnd end_of(const float *record) {
    return {record[0], record[1], record[2], record[3], {record[4], record[5], record[6]}};
}

} // namespace

void tavik::draw_stroke(const tavik_foliage_target &target, const StrokeEnd &from, const StrokeEnd &to, float opacity) {
    const float reach = (from.radius > to.radius ? from.radius : to.radius) + 1.0F;
    const Box box = {.left = low_bound(from.x, to.x, reach),
                     .right = high_bound(from.x, to.x, reach, target.width),
                     .top = low_bound(from.y, to.y, reach),
                     .bottom = high_bound(from.y, to.y, reach, target.height)};
    if (box.left >= box.right) return;
    const StrokeEnd change = {
        to.x - from.x,
        to.y - from.y,
        to.depth - from.depth,
        to.radius - from.radius,
        {to.colour[0] - from.colour[0], to.colour[1] - from.colour[1], to.colour[2] - from.colour[2]}};
    const float squared_length = change.x * change.x + change.y * change.y;
    draw.active()({from, change, squared_length > 0.0F ? 1.0F / squared_length : 0.0F, opacity}, box, target);
}

TAVIK_EXPORT(void)
foliage_zLine(const tavik_foliage_target *target, const float *from, const float *to, float opacity) {
    draw_stroke(*target, end_of(from), end_of(to), opacity);
}

TAVIK_EXPORT(void)
foliage_xpen(const tavik_foliage_target *target, float x, float y, float depth, float radius, float red, float green,
             float blue, float opacity) {
    const StrokeEnd end = {x, y, depth, radius, {red, green, blue}};
    draw_stroke(*target, end, end, opacity);
}
