#include "tavik/lighting/relief_columns.inl"

void shade_grey(const ReliefRows<uint8_t> &rows, const GreyShading &shading, uint8_t *dst) {
    const GreyShading s = shading;
    for_each_column(rows.width, [=](std::ptrdiff_t left, std::ptrdiff_t x, std::ptrdiff_t right) {
        const float gx = (static_cast<float>(rows.here[right]) - static_cast<float>(rows.here[left])) * s.scale;
        const float gy = (static_cast<float>(rows.below[x]) - static_cast<float>(rows.above[x])) * s.scale;
        const float cosine = (s.light.z - (gx * s.light.x + gy * s.light.y)) / std::sqrt((gx * gx + gy * gy) + 1.0F);
        dst[x] = round_to_byte((clamp(cosine, 0.0F, 1.0F) * s.rest + s.ambient) * 255.0F);
    });
}

// What a sample of the picture becomes: its value times shade, plus shine.
struct Reflection {
    float shade, shine;
};

inline Reflection reflection_of(Gradient gradient, const GlossyShading &s) {
    const float gx = gradient.x * s.scale;
    const float gy = gradient.y * s.scale;
    const float inverse = 1.0F / std::sqrt((gx * gx + gy * gy) + 1.0F);
    const float diffuse = clamp((s.light.z - (gx * s.light.x + gy * s.light.y)) * inverse, 0.0F, 1.0F);
    const float half = clamp((s.half.z - (gx * s.half.x + gy * s.half.y)) * inverse, 0.0F, 1.0F);
    const float shine = power(half, s.shininess) * s.gloss;
    return {diffuse * s.rest + s.ambient, value_or_zero(diffuse > 0, shine)};
}

void shade_colours(const ReliefRows<uint8_t> &rows, const GlossyShading &shading, const uint8_t *const src[3],
                   uint8_t *const dst[3]) {
    const GlossyShading s = shading;
    const uint8_t *r = src[0];
    const uint8_t *g = src[1];
    const uint8_t *b = src[2];
    uint8_t *to_r = dst[0];
    uint8_t *to_g = dst[1];
    uint8_t *to_b = dst[2];
    for_each_column(rows.width, [=](std::ptrdiff_t left, std::ptrdiff_t x, std::ptrdiff_t right) {
        const Reflection at = reflection_of(sobel(rows, left, x, right), s);
        to_r[x] = round_to_byte(static_cast<float>(r[x]) * at.shade + at.shine);
        to_g[x] = round_to_byte(static_cast<float>(g[x]) * at.shade + at.shine);
        to_b[x] = round_to_byte(static_cast<float>(b[x]) * at.shade + at.shine);
    });
}

void shade_float_colours(const ReliefRows<float> &rows, const GlossyShading &shading, const float *const src[3],
                         float *const dst[3]) {
    const GlossyShading s = shading;
    const float *r = src[0];
    const float *g = src[1];
    const float *b = src[2];
    float *to_r = dst[0];
    float *to_g = dst[1];
    float *to_b = dst[2];
    for_each_column(rows.width, [=](std::ptrdiff_t left, std::ptrdiff_t x, std::ptrdiff_t right) {
        const Reflection at = reflection_of(sobel(rows, left, x, right), s);
        to_r[x] = r[x] * at.shade + at.shine;
        to_g[x] = g[x] * at.shade + at.shine;
        to_b[x] = b[x] * at.shade + at.shine;
    });
}
