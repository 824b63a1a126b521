// What a triangle interpolates between its corners.
#pragma once

#include <cstddef>

#include "tavik/frame/vector_level.h"
#include "tavik/raster/coverage.h"

namespace tavik {

struct Attribute {
    float at_first, to_second, to_third;

    constexpr Attribute(float a0, float a1, float a2) : at_first(a0), to_second(a1 - a0), to_third(a2 - a0) {}

    // With the corners in the order that the coverage has put them.
    static Attribute of(const Coverage &coverage, float a0, float a1, float a2) {
        return coverage.exchanged() ? Attribute(a0, a2, a1) : Attribute(a0, a1, a2);
    }

    [[gnu::always_inline]] constexpr float operator()(float second, float third) const {
        return (at_first + to_second * second) + to_third * third;
    }
};

} // namespace tavik
