// src × factor / 255, rounded down.
void scaled_by_bytes(const uint8_t *src, const uint8_t *factors, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const auto product = static_cast<uint16_t>(src[i] * factors[i]);
        // Exact for all products of two bytes, which leave the sum below 2^16.
        dst[i] = static_cast<uint8_t>(static_cast<uint16_t>(product + 1 + (product >> 8)) >> 8);
    }
}
