#include <array>

#include "tavik/frame/arithmetic.h"
#include "tavik/paint/paint.h"

namespace {

// Planes of at least 2 × 2 pixels.
struct LineCanvas {
    int32_t width;
    int32_t height;
    std::array<uint8_t *, 3> planes;
};

struct Line {
    float x;
    float y;
    float step_x;
    float step_y;
    int32_t samples;
    std::array<float, 3> colour;

    // Whether a point outside the picture and all that follow on the line are on the same side of it: a sum that grows
    // or falls never turns back.
    bool has_left(float at_x, float at_y, const LineCanvas &canvas) const {
        const auto leaves = [](float at, float step, int32_t size) {
            return (at <= -1.0F && step <= 0.0F) || (at >= static_cast<float>(size) && step >= 0.0F);
        };
        return leaves(at_x, step_x, canvas.width) || leaves(at_y, step_y, canvas.height);
    }
};

} // namespace

#define TAVIK_ROWS "tavik/paint/lines_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const Line &line, const LineCanvas &canvas)> draw = TAVIK_EVERY_LEVEL(draw);

} // namespace

TAVIK_EXPORT(int32_t)
xAAFloatLine(float x0, float y0, float x1, float y1, float red, float green, float blue, int32_t width, int32_t height,
             uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    const float dx = x1 - x0;
    const float dy = y1 - y0;
    const float length = fast_root(dx * dx + dy * dy);
    const int32_t whole_length = truncate(length);
    if (whole_length < 0 || width < 2 || height < 2) return 0;
    const Line line = {.x = x0,
                       .y = y0,
                       .step_x = dx != 0.0F ? dx / length : 0.0F,
                       .step_y = dy != 0.0F ? dy / length : 0.0F,
                       .samples = whole_length + 1,
                       .colour = {red, green, blue}};
    draw.active()(line, {width, height, {plane_r, plane_g, plane_b}});
    return 0;
}
