#include "host/chart.h"

namespace gallery::chart {

void draw_key(Image &picture, int32_t left, int32_t top, const std::string &text, Colour colour) {
    fill(picture, left, top + 8, 36, 8, colour);
    draw_text(picture, left + 48, top, text_size, text, ink);
}

} // namespace gallery::chart
