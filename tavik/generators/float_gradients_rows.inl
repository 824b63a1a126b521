// The positions of pixels x .. of a row.
void linear_positions(int32_t x, float step_x, float row_offset, float offset, float *positions, size_t count) {
    for (size_t i = 0; i < count; ++i)
        positions[i] = static_cast<float>(x + static_cast<int32_t>(i)) * step_x + row_offset + offset;
}

void circular_positions(int32_t x, float cx, float dy, float *positions, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const float dx = static_cast<float>(x + static_cast<int32_t>(i)) - cx;
        positions[i] = std::sqrt(dx * dx + dy * dy);
    }
}

// Turns angles into positions.
void sweep_positions(float *angles, float repeats, float length, size_t count) {
    // Not quite 180/π: hosts rely on positions to the last bit.
    constexpr float degrees_per_radian = 57.2958F;
    constexpr float turns_per_degree = 0.0027777778F;
    for (size_t i = 0; i < count; ++i)
        angles[i] = (angles[i] + pi) * repeats * degrees_per_radian * turns_per_degree * length;
}

void render_row(const float *positions, const FloatTable &table, const uint8_t *const src[3], uint8_t *const dst[3],
                size_t count) {
    const FloatTable same = table;
    const uint8_t *const sources[3] = {src[0], src[1], src[2]};
    uint8_t *const destinations[3] = {dst[0], dst[1], dst[2]};
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const float t0 = clamp_nan_high(positions[i], 0.0F, same.last);
        const float t1 = clamp_nan_high(positions[i] + 1.0F, 0.0F, same.last);
        const auto i0 = static_cast<int32_t>(t0);
        const auto i1 = static_cast<int32_t>(t1);
        const float f = t0 - static_cast<float>(i0);
        const auto component = [&](size_t c) {
            const float *values = same.components[c];
            return values[i0] + (values[i1] - values[i0]) * f;
        };
        const float alpha = component(3);
        const float k = alpha * unit_per_byte;
        for (size_t c = 0; c < 3; ++c) {
            const float colour = component(c);
            const float s = sources[c][i];
            const float partly = (colour - s) * k + s;
            destinations[c][i] = low_byte(truncate(alpha < 255.0F ? partly : colour));
        }
    }
}
