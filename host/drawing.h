// What the host itself draws: charts and the lettering of charts and of the contact sheet.
#pragma once

#include <span>
#include <string>

#include "host/image.h"

namespace gallery {

struct Point {
    float x;
    float y;
};

// A rectangle of whole pixels, cut off at the edges of the image.
void fill(Image &image, int32_t left, int32_t top, int32_t width, int32_t height, Colour colour);

// A smooth-edged line through the points.
void draw_line(Image &image, std::span<const Point> points, float width, Colour colour);

// One line of text in capitals of 7 × size pixels.
void draw_text(Image &image, int32_t left, int32_t top, int32_t size, std::string text, Colour colour);

int32_t text_width(int32_t size, std::string text);

// Places `above` with its top left corner at (left, top); it fits.
void paste(Image &image, const Image &above, int32_t left, int32_t top);

} // namespace gallery
