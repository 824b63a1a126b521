// Sums and differences that stay within a byte, so that the loops run in byte lanes.

void add_saturated(const uint8_t *src, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const auto room = static_cast<uint8_t>(255 - dst[i]);
        dst[i] = static_cast<uint8_t>(dst[i] + std::min(src[i], room));
    }
}

void subtract_saturated(const uint8_t *src, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) dst[i] = static_cast<uint8_t>(dst[i] - std::min(src[i], dst[i]));
}

void multiply(const uint8_t *src, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) dst[i] = static_cast<uint8_t>(static_cast<uint16_t>(dst[i] * src[i]) >> 8);
}
