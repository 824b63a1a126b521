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
        : factor(
              static_cast<uint16_t>((numerator(size) + static_cast<uint32_t>(size) - 1) / static_cast<uint32_t>(size))),
          shift(shift_of(size)) {}

    uint8_t operator()(uint16_t sum) const {
        const auto high = static_cast<uint16_t>((uint32_t{sum} * factor) >> 16);
        return static_cast<uint8_t>(high >> shift);
    }

    // Whether every sum gives its quotient. The factor is rounded up; what that adds to the product of the largest sum
    // below 255 times the size must not carry it to the next quotient.
    bool is_exact(int32_t size) const {
        const uint64_t excess = uint64_t{factor} * static_cast<uint32_t>(size) - numerator(size);
        return excess * (255 * static_cast<uint64_t>(size) - 1) < numerator(size);
    }

  private:
    // Makes factors of 2^15 and more, in 16 bits.
    static int32_t shift_of(int32_t size) { return std::bit_width(static_cast<uint32_t>(size - 1)) - 1; }
    static uint32_t numerator(int32_t size) { return 1U << (16 + shift_of(size)); }
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

    // Whether short division gives what the product with the inverse truncates to. That is the quotient in integers,
    // unless the inverse is so much too small that some multiple of the size falls below it.
    bool divides_shortly() const {
        if (size < 2 || size > 257 || !ShortDivision(size).is_exact(size)) return false;
        for (int32_t quotient = 1; quotient <= 255; ++quotient)
            if (inverse * static_cast<float>(quotient * size) < static_cast<float>(quotient)) return false;
        return true;
    }
};

} // namespace tavik
