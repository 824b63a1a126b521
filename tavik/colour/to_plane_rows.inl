void weigh_luma(const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i)
        dst[i] = static_cast<uint8_t>(static_cast<uint16_t>(77 * r[i] + 150 * g[i] + 29 * b[i] + 128) >> 8);
}

void key_to_alpha(const Key &key, const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst, size_t count) {
    const Key k = key;
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const auto red = static_cast<float>(wrap_sub(r[i], k.red));
        const auto green = static_cast<float>(wrap_sub(g[i], k.green));
        const auto blue = static_cast<float>(wrap_sub(b[i], k.blue));
        const float cb = (blue * 0.5F - red * 0.168736F) - green * 0.331264F;
        const float cr = (red * 0.5F - green * 0.418688F) - blue * 0.081312F;
        dst[i] = round_to_byte(clamp((std::sqrt(cb * cb + cr * cr) - k.inner) * k.slope, 0.0F, 1.0F) * 255.0F);
    }
}
