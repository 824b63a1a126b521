inline uint8_t table_index(float position) { return static_cast<uint8_t>(clamp_to_byte(truncate(position))); }

// The indices of pixels at growing positions, each a sum rounded to single precision; returns the last position.
float linear_indices(float position, float step, uint8_t *indices, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        position += step;
        indices[i] = table_index(-position);
    }
    return position;
}

// The indices of pixels at (dx, dy), (dx + 1, dy) and so on from the centre.
void circular_indices(int32_t dx, int32_t dy, float scale, uint8_t *indices, size_t count) {
    const auto square = [](int32_t value) { return static_cast<uint32_t>(value) * static_cast<uint32_t>(value); };
    const uint32_t dy_squared = square(dy);
    for (size_t i = 0; i < count; ++i) {
        const uint32_t squares = dy_squared + square(wrap_add(dx, static_cast<int32_t>(i)));
        indices[i] = table_index(scale * fast_root(static_cast<float>(static_cast<int32_t>(squares))));
    }
}

inline uint8_t mixed(uint8_t src, uint8_t colour, uint8_t alpha) {
    return static_cast<uint8_t>(static_cast<uint16_t>((255 - alpha) * src + alpha * colour) >> 8);
}

void mix(const uint8_t *src, const uint8_t *colours, const uint8_t *alphas, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) dst[i] = mixed(src[i], colours[i], alphas[i]);
}

void mix_where_visible(const uint8_t *src, const uint8_t *colours, const uint8_t *alphas, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const uint8_t partly = mixed(src[i], colours[i], alphas[i]);
        const uint8_t visible = alphas[i] > 254 ? colours[i] : partly;
        dst[i] = alphas[i] <= 1 ? dst[i] : visible;
    }
}

// About a third of the sum, 0 .. 254.
void brightness_row(const uint8_t *a, const uint8_t *b, const uint8_t *c, uint8_t *brightness, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const auto sum = static_cast<uint16_t>(a[i] + b[i] + c[i]);
        brightness[i] = static_cast<uint8_t>(static_cast<uint16_t>(sum * 85) >> 8);
    }
}
