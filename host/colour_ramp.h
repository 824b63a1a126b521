// Tables of colours between a few given ones, as the gradients take them.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "host/image.h"

namespace gallery {

// A colour at a position, 0 .. 1, of a gradient.
struct Stop {
    float position;
    Colour colour;
    uint8_t alpha = 255;
};

// Red, green, blue and alpha at 256 places.
using ByteTables = std::array<std::array<uint8_t, 256>, 4>;

// Red, green, blue and alpha between the stops, the first of which is at 0 and the last at 1.
inline std::array<float, 4> between(const std::vector<Stop> &stops, float position) {
    std::size_t next = 1;
    while (next + 1 < stops.size() && stops[next].position < position) ++next;
    const Stop &a = stops[next - 1];
    const Stop &b = stops[next];
    const float t = (position - a.position) / (b.position - a.position);
    const auto mixed = [t](uint8_t from, uint8_t to) {
        return static_cast<float>(from) + (static_cast<float>(to) - static_cast<float>(from)) * t;
    };
    return {mixed(a.colour.red, b.colour.red), mixed(a.colour.green, b.colour.green),
            mixed(a.colour.blue, b.colour.blue), mixed(a.alpha, b.alpha)};
}

inline ByteTables byte_tables(const std::vector<Stop> &stops) {
    ByteTables tables{};
    for (std::size_t i = 0; i < 256; ++i) {
        const auto components = between(stops, static_cast<float>(i) / 255);
        for (std::size_t c = 0; c < 4; ++c) tables[c][i] = static_cast<uint8_t>(std::lround(components[c]));
    }
    return tables;
}

inline std::vector<float> float_table(const std::vector<Stop> &stops, int32_t n) {
    const auto stride = static_cast<std::size_t>(n) + 1;
    std::vector<float> table(4 * stride);
    for (std::size_t i = 0; i < stride; ++i) {
        const auto components = between(stops, static_cast<float>(i) / static_cast<float>(n));
        for (std::size_t c = 0; c < 4; ++c) table[c * stride + i] = components[c];
    }
    return table;
}

} // namespace gallery
