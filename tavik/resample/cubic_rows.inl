// The cubic of a byte's neighbourhood. Its coefficients are exact in single precision, so that their terms may be
// gathered: b is what makes the curve end at p2.
inline uint8_t cubic_byte(float p0, float p1, float p2, float p3, float t) {
    const float c = 0.5F * (p2 - p0);
    const float a = 1.5F * (p1 - p2) + 0.5F * (p3 - p0);
    const float b = (p2 - p1) - (a + c);
    const float value = ((a * t + b) * (t * t) + c * t) + p1;
    // A fraction is less than 1 either way, and the value not far outside the bytes.
    return static_cast<uint8_t>(clamp_to_byte(static_cast<int32_t>(value)));
}

void cubic_of_quads(const Quad *quads, const float *fractions, uint8_t *dst, size_t count) {
    const auto sample = [](Quad quad, int place) { return static_cast<float>(quad >> 8 * place & 0xFF); };
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) {
        const Quad quad = quads[x];
        dst[x] = cubic_byte(sample(quad, 0), sample(quad, 1), sample(quad, 2), sample(quad, 3), fractions[x]);
    }
}

void cubic_of_rows(const FourRows &rows, float fraction, uint8_t *dst, size_t count) {
    const auto [p0, p1, p2, p3] = rows;
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) dst[x] = cubic_byte(p0[x], p1[x], p2[x], p3[x], fraction);
}

void bicubic_columns(const FourRows &rows, float fraction, float *values, size_t count) {
    const auto [p0, p1, p2, p3] = rows;
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) values[x] = catmull_rom(p0[x], p1[x], p2[x], p3[x], fraction);
}

void bicubic_row(const float *values, const std::array<const int32_t *, 4> &columns, const float *fractions,
                 uint8_t *dst, size_t count) {
    const auto [c0, c1, c2, c3] = columns;
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) {
        const float value = catmull_rom(values[c0[x]], values[c1[x]], values[c2[x]], values[c3[x]], fractions[x]);
        dst[x] = static_cast<uint8_t>(static_cast<int32_t>(clamp_nan_high(value, 0.0F, 255.0F)));
    }
}
