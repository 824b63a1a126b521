// Thresholds of a 3 × 3 matrix, repeated along runs of a row.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tavik {

// The samples that are dithered at a time: a multiple of the matrix's width and of every vector's.
constexpr std::size_t threshold_run = 768;

class ThresholdMatrix {
  public:
    explicit ThresholdMatrix(const uint8_t *matrix) {
        constexpr std::size_t matrix_stride = 4;
        for (std::size_t y = 0; y < rows.size(); ++y)
            for (std::size_t x = 0; x < threshold_run; ++x) rows[y][x] = matrix[y * matrix_stride + x % 3];
    }
    // Of any run of row y, which is not negative.
    const uint8_t *row(int32_t y) const { return rows[static_cast<std::size_t>(y % 3)].data(); }

  private:
    std::array<std::array<uint8_t, threshold_run>, 3> rows;
};

} // namespace tavik
