// Charts of functions of one value.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "host/drawing.h"

namespace gallery::chart {

inline constexpr Colour paper = {250, 250, 252};
inline constexpr Colour grid = {222, 225, 232};
inline constexpr Colour ink = {60, 66, 80};
inline constexpr Colour red = {214, 64, 69};
inline constexpr Colour blue = {47, 111, 214};
inline constexpr Colour green = {28, 150, 110};
inline constexpr Colour pale = {160, 168, 184};
inline constexpr int32_t text_size = 3;

// A rectangle of the picture with the values that its edges stand for.
struct Axes {
    float left, top, width, height;
    float x_first, x_last;
    float y_low, y_high;

    Point at(float x, float y) const {
        return {left + (x - x_first) / (x_last - x_first) * width, top + (y_high - y) / (y_high - y_low) * height};
    }
    void rule(Image &image, float y, Colour colour) const {
        draw_line(image, std::array{at(x_first, y), at(x_last, y)}, 1.5F, colour);
    }
    // One point for each pixel across.
    template <class Function> std::vector<Point> points_of(Function function) const {
        std::vector<Point> points;
        const auto last = static_cast<int32_t>(width);
        for (int32_t i = 0; i <= last; ++i) {
            const float x = x_first + (x_last - x_first) * static_cast<float>(i) / static_cast<float>(last);
            points.push_back(at(x, function(x)));
        }
        return points;
    }
};

// A stroke of the colour and its meaning.
void draw_key(Image &picture, int32_t left, int32_t top, const std::string &text, Colour colour);

} // namespace gallery::chart
