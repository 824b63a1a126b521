// A 3×3 kernel of integers, and the division of its sums.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace tavik {

// The float next above 1/divisor, or next below it for a negative divisor. A sum times that, truncated, is the
// quotient truncated: the excess keeps multiples of the divisor from falling below their quotient, and is too small
// to carry the number before a multiple up to it while sums stay within ±2^22 in single precision or 32 bits in
// double.
template <class Float> Float reciprocal_away_from_zero(int32_t divisor) {
    const auto nearest = static_cast<Float>(1.0 / divisor);
    return std::nextafter(nearest, std::copysign(std::numeric_limits<Float>::infinity(), nearest));
}

struct Kernel {
    std::array<int32_t, 9> weights; // by rows from the top left
    int32_t bias;
    double reciprocal;
    float short_reciprocal;
    // Whether the weights fit in 16 bits and the sums where the short reciprocal is exact.
    bool is_light;

    Kernel(const std::array<int32_t, 9> &nine_weights, int32_t divisor, int32_t added)
        : weights(nine_weights),
          bias(added),
          reciprocal(reciprocal_away_from_zero<double>(divisor)),
          short_reciprocal(reciprocal_away_from_zero<float>(divisor)) {
        int64_t largest_sum = 0;
        for (const int32_t weight : weights) largest_sum += 255 * std::abs(int64_t{weight});
        is_light = largest_sum < (1 << 22);
    }
};

} // namespace tavik
