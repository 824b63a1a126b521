#include "tavik/colour/colour_lanes.inl"

void turn_hue(const HueMatrix &matrix, const float *add, const uint8_t *const src[3], uint8_t *const dst[3],
              size_t count) {
    const HueMatrix m = matrix;
    const float add_r = add[0];
    const float add_g = add[1];
    const float add_b = add[2];
    map_colours({src[0], src[1], src[2]}, {dst[0], dst[1], dst[2]}, count, [=](auto c) {
        const decltype(c.r) zero = {};
        const auto high = zero + 255.0F;
        const auto rounded = [&](auto sum) {
            const auto value = sum + 0.5F;
            const auto lowered = value < high ? value : high;
            return lowered > zero ? lowered : zero;
        };
        return decltype(c){rounded(m.same * c.r + m.before * c.g + m.after * c.b + add_r),
                           rounded(m.after * c.r + m.same * c.g + m.before * c.b + add_g),
                           rounded(m.before * c.r + m.after * c.g + m.same * c.b + add_b)};
    });
}
