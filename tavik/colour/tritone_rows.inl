void mean_of_planes(const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = static_cast<uint8_t>(mean_of_three(r[i], g[i], b[i]));
}
