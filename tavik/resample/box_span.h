// The moving span of the box prefilter, and how its sums are divided.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>

namespace tavik {

// Divides 16-bit sums of 2 .. 257 bytes by their number: the high half of a product, shifted.
struct ShortDivision {
    uint16_t factor;
    int32_t shift;

    explicit ShortDivision(int32_t size)
        // Of a power of two the factor is 2^15, else at least that.
        : factor(0), shift(std::bit_width(static_cast<uint32_t>(size - 1)) - 1) {
        const uint32_t numerator = 1U << (16 + shift);
        factor = static_cast<uint16_t>((numerator + static_cast<uint32_t>(size) - 1) / static_cast<uint32_t>(size));
    }

    uint8_t operator()(uint16_t sum) const {
        const auto high = static_cast<uint16_t>((uint32_t{sum} * factor) >> 16);
        return static_cast<uint8_t>(high >> shift);
    }
};

// The span of samples that moves along a line of last + 1 samples. Its sum begins as `size` times the first sample; at
// each step the sample ahead is added and the one behind subtracted. The first step is −1, that of the first average
// `ahead`.
struct BoxSpan {
    int32_t size;
    int32_t last;
    // From the sample averaged to the ones added and subtracted for it.
    int32_t ahead;
    int32_t behind;
    // The averages written. Those of an odd size lie between two samples, one fewer.
    int32_t written;
    float inverse;

    BoxSpan(int32_t bound, int32_t target)
        : size(bound / target),
          last(bound),
          ahead(size / 2 + size % 2),
          behind(size / 2),
          written(size % 2 == 0 ? bound + 1 : bound),
          inverse(1.0F / static_cast<float>(size)) {}

    // The sample added in a step, or subtracted `size` steps later.
    int32_t at(int32_t step) const { return std::clamp(step, 0, last); }

    // Whether the sums fit in 16 bits and the product with the inverse truncates to the quotient in integers. It does
    // unless the inverse is so much too small that some multiple of the size falls below its quotient.
    bool divides_shortly() const {
        if (size < 2 || size > 257) return false;
        for (int32_t quotient = 1; quotient <= 255; ++quotient)
            if (inverse * static_cast<float>(quotient * size) < static_cast<float>(quotient)) return false;
        return true;
    }
};

} // namespace tavik
