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

    // Whether a point outside the picture and all that follow on the line are on the same side of it: a sum that grows
    // or falls never turns back.
    bool has_left(float at_x, float at_y, const LineCanvas &canvas) const {
        const auto leaves = [](float at, float step, int32_t size) {
            return (at <= -1.0F && step <= 0.0F) || (at >= static_cast<float>(size) && step >= 0.0F);
        };
        return leaves(at_x, step_x, canvas.width) || leaves(at_y, step_y, canvas.height);
    }
};

using Colour = std::array<float, 3>;

// What colour each sample has.
struct OneColour {
    Colour colour;

    const Colour &at(int32_t /*sample*/) const { return colour; }
};

struct ColourAlong {
    Colour first;
    Colour change;
    float per_length;

    Colour at(int32_t sample) const {
        const float way = static_cast<float>(sample) * per_length;
        const float t = way < 1.0F ? way : 1.0F;
        return {change[0] * t + first[0], change[1] * t + first[1], change[2] * t + first[2]};
    }
};

} // namespace

#define TAVIK_ROWS "tavik/paint/lines_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

template <class Colours> using Draw = void(const Line &line, const Colours &colours, const LineCanvas &canvas);
constexpr PerLevel<Draw<OneColour>> draw_plain = TAVIK_EVERY_LEVEL(draw<OneColour>);
constexpr PerLevel<Draw<ColourAlong>> draw_graded = TAVIK_EVERY_LEVEL(draw<ColourAlong>);

// Calls draw(line, length), where anything is to be drawn.
template <class DrawLine>
void walk(float x0, float y0, float x1, float y1, const LineCanvas &canvas, const DrawLine &draw_line) {
    const float dx = x1 - x0;
    const float dy = y1 - y0;
    const float length = fast_root(dx * dx + dy * dy);
    const int32_t whole_length = truncate(length);
    if (whole_length < 0 || canvas.width < 2 || canvas.height < 2) return;
    const Line line = {.x = x0,
                       .y = y0,
                       .step_x = dx != 0.0F ? dx / length : 0.0F,
                       .step_y = dy != 0.0F ? dy / length : 0.0F,
                       .samples = whole_length + 1};
    draw_line(line, length);
}

} // namespace

TAVIK_EXPORT(int32_t)
xAAFloatLine(float x0, float y0, float x1, float y1, float red, float green, float blue, int32_t width, int32_t height,
             uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    const LineCanvas canvas = {width, height, {plane_r, plane_g, plane_b}};
    walk(x0, y0, x1, y1, canvas, [&](const Line &line, float /*length*/) {
        draw_plain.active()(line, {{red, green, blue}}, canvas);
    });
    return 0;
}

TAVIK_EXPORT(void)
xGradAALine_b(float x0, float y0, float x1, float y1, float red0, float green0, float blue0, float red1, float green1,
              float blue1, int32_t width, int32_t height, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    const LineCanvas canvas = {width, height, {plane_r, plane_g, plane_b}};
    walk(x0, y0, x1, y1, canvas, [&](const Line &line, float length) {
        const ColourAlong colours = {.first = {red0, green0, blue0},
                                     .change = {red1 - red0, green1 - green0, blue1 - blue0},
                                     .per_length = 1.0F / length};
        draw_graded.active()(line, colours, canvas);
    });
}
