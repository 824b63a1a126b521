// Products and mixtures of bytes that round and are exact at both ends of 0 .. 255. Each step fits 16 bits, which keeps
// vectors of them dense.
#pragma once

#include <cstdint>

namespace tavik {

// a × b / 255, rounded.
[[gnu::always_inline]] constexpr uint8_t byte_product(uint8_t a, uint8_t b) {
    const auto t = static_cast<uint16_t>(a * b + 128);
    return static_cast<uint8_t>(static_cast<uint16_t>(t + (t >> 8)) >> 8);
}

// From one byte to another: `from` at 0, `to` at 255.
[[gnu::always_inline]] constexpr uint8_t byte_mix(uint8_t from, uint8_t to, uint8_t amount) {
    const auto weight = static_cast<uint16_t>(amount + (amount >> 7));
    return static_cast<uint8_t>(static_cast<uint16_t>(from * (256 - weight) + to * weight + 128) >> 8);
}

} // namespace tavik
