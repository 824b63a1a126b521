void scale_in_16_bits(const uint8_t *src, uint8_t *dst, size_t count, uint16_t factor) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) dst[i] = static_cast<uint8_t>(static_cast<uint16_t>(src[i] * factor) >> 8);
}

// Adds a positive amount or subtracts a negative one's size, within a byte.
void add_clamped(uint8_t *plane, size_t count, uint8_t raise, uint8_t lower) {
    for (size_t i = 0; i < count; ++i) {
        const auto room = static_cast<uint8_t>(255 - plane[i]);
        const auto raised = static_cast<uint8_t>(plane[i] + std::min(raise, room));
        plane[i] = static_cast<uint8_t>(raised - std::min(lower, raised));
    }
}

void weighted_grey(const GreyWeights &weights, const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst1,
                   uint8_t *dst2, uint8_t *dst3, size_t count) {
    const uint32_t wr = weights.r;
    const uint32_t wg = weights.g;
    const uint32_t wb = weights.b;
    const uint32_t scale = weights.scale;
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const auto grey = static_cast<uint8_t>(((b[i] * wb + g[i] * wg + r[i] * wr) * scale) >> 16);
        dst1[i] = grey;
        dst2[i] = grey;
        dst3[i] = grey;
    }
}
