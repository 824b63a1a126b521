// Directions and the colours around a circle.
#pragma once

#include <array>
#include <cmath>
#include <numbers>

#include "host/drawing.h"

namespace gallery {

// A point of the unit circle, in steps that hide how the platforms' libraries round.
inline Point on_circle(double turns) {
    const auto stepped = [](double value) { return static_cast<float>(std::round(value * 65536.0) / 65536.0); };
    const double angle = 2.0 * std::numbers::pi * turns;
    return {stepped(std::cos(angle)), stepped(std::sin(angle))};
}

// The colour at this place of the colour circle.
inline std::array<float, 3> hue(double turns) {
    const auto component = [&](double shift) { return 127.5F + 127.5F * on_circle(turns - shift).x; };
    return {component(0.0), component(1.0 / 3.0), component(2.0 / 3.0)};
}

} // namespace gallery
