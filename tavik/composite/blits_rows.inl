void alpha_blit(const uint8_t *src, const uint8_t *alpha, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        // (255 − alpha) · dst + alpha · src with one product, in 16 bits that wrap around on the way.
        const auto change = static_cast<uint16_t>(alpha[i] * (src[i] - dst[i]));
        dst[i] = static_cast<uint8_t>(static_cast<uint16_t>(255 * dst[i] + change) >> 8);
    }
}

void swap_samples(uint8_t *a, uint8_t *b, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const uint8_t was = a[i];
        a[i] = b[i];
        b[i] = was;
    }
}
