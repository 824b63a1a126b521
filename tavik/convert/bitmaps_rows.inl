void pack_bitmap(const uint8_t *r, const uint8_t *g, const uint8_t *b, uint32_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = uint32_t{r[i]} << 16 | uint32_t{g[i]} << 8 | b[i];
}

void unpack_bitmap(uint8_t *r, uint8_t *g, uint8_t *b, const uint32_t *src, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const uint32_t pixel = src[i];
        r[i] = low_byte(pixel >> 16);
        g[i] = low_byte(pixel >> 8);
        b[i] = low_byte(pixel);
    }
}

void pack_quads(const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        dst[4 * i] = r[i];
        dst[4 * i + 1] = g[i];
        dst[4 * i + 2] = b[i];
        dst[4 * i + 3] = static_cast<uint8_t>(mean_of_three(r[i], g[i], b[i]));
    }
}

void unpack_quads(uint8_t *r, uint8_t *g, uint8_t *b, const uint8_t *src, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        r[i] = src[4 * i];
        g[i] = src[4 * i + 1];
        b[i] = src[4 * i + 2];
    }
}
