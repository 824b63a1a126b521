// Three float planes, made of one that is as large as the picture.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>

#include "bench/support/picture.h"

namespace tavik_bench {

// Square planes that hold so many rows of the picture each.
struct FloatCanvas {
    static constexpr int32_t rows = 64;

    int32_t side;
    std::array<float *, 3> planes;

    explicit FloatCanvas(const Picture &p) : side(static_cast<int32_t>(std::sqrt(p.width * rows))) {
        for (std::size_t i = 0; i < planes.size(); ++i)
            planes[i] = p.to_floats + i * static_cast<std::size_t>(p.width) * rows;
    }
};

} // namespace tavik_bench
