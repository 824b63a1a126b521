// A stroke between two round ends.
#pragma once

#include <array>

#include "tavik/foliage/foliage.h"

namespace tavik {

struct StrokeEnd {
    float x, y, depth, radius;
    std::array<float, 3> colour;
};

void draw_stroke(const tavik_foliage_target &target, const StrokeEnd &from, const StrokeEnd &to, float opacity);

} // namespace tavik
