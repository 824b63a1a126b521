#include "tavik/colour/colour_lanes.inl"

void multiply_by_matrix(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r,
                        uint8_t *dst_g, uint8_t *dst_b, size_t count, const float *matrix) {
    if (count == 0) return; // The matrix may be missing.
    float m[16];
    std::copy_n(matrix, 16, m);
    map_colours({src_r, src_g, src_b}, {dst_r, dst_g, dst_b}, count, [&](auto c) {
        const decltype(c.r) zero = {};
        const auto high = zero + 255.0F;
        const auto output = [&](int column) {
            const auto sum = m[8 + column] * c.b + m[4 + column] * c.g + m[12 + column] + m[column] * c.r;
            const auto raised = zero > sum ? zero : sum;
            return raised < high ? raised : high;
        };
        return decltype(c){output(0), output(1), output(2)};
    });
}
