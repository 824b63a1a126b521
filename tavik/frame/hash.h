// Random patterns that are functions of their place: the same call paints the same picture on every thread and
// machine.
#pragma once

#include <cstdint>

namespace tavik {

[[gnu::always_inline]] constexpr uint32_t hash(uint32_t n) {
    n += 0x9E3779B9U;
    n ^= n >> 16;
    n *= 0x7FEB352DU;
    n ^= n >> 15;
    n *= 0x846CA68BU;
    n ^= n >> 16;
    return n;
}

// The hash of (x, y) under a seed is hash(x + hash_of_row(y, seed)).
constexpr uint32_t hash_of_row(int32_t y, int32_t seed) {
    return hash(static_cast<uint32_t>(y) + hash(static_cast<uint32_t>(seed)));
}

// In [0, 1), from the upper 24 bits.
[[gnu::always_inline]] constexpr float unit(uint32_t hash_value) {
    return static_cast<float>(static_cast<int32_t>(hash_value >> 8)) * 0x1p-24F;
}

} // namespace tavik
