#include "tavik/colour/colour_lanes.inl"

void darken_to_night(uint8_t *r, uint8_t *g, uint8_t *b, size_t count, float down) {
    const float up = 1.0F - down;
    map_colours({r, g, b}, {r, g, b}, count, [=](auto c) {
        const auto half_blue = c.b * 0.5F;
        const auto shared = (c.g * 0.3F + c.r * 0.2F + half_blue) * 0.5F;
        const auto red = c.r * 0.5F + shared;
        const auto green = c.g * 0.5F + shared;
        const auto blue = half_blue + shared;
        return decltype(c){red * 0.5F * up + red * 0.6F * down, green * 0.62F * up + green * 0.76F * down,
                           blue * 0.7F * up + blue * 0.84F * down};
    });
}

void add_fog(uint8_t *r, uint8_t *g, uint8_t *b, size_t count, float down) {
    const float up = 1.0F - down;
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const float red = r[i];
        const float green = g[i];
        const float blue = b[i];
        const float mean = (green + red + blue) * 0.33333334F;
        const float thick = down * 32.0F + mean + mean * up;
        const float fog = thick < 255.0F ? thick : 255.0F;
        // Red and green are mixed in double precision, blue is not.
        const auto to_byte = [](auto value) { return static_cast<uint8_t>(static_cast<int32_t>(value)); };
        r[i] = to_byte(double{fog} * 0.76 * double{down} + double{red} * double{up});
        g[i] = to_byte(double{fog} * 0.8 * double{down} + double{green} * double{up});
        b[i] = to_byte(blue * up + fog * down);
    }
}

void tone_sepia(const Sepia &sepia, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r,
                uint8_t *dst_g, uint8_t *dst_b, size_t count) {
    map_colours({src_r, src_g, src_b}, {dst_r, dst_g, dst_b}, count, [sepia](auto c) {
        const auto grey = c.g * 0.587F + c.r * 0.299F + c.b * 0.114F;
        const auto faded = [&](auto channel) {
            return sepia.contrast * ((grey - channel) * sepia.desaturate + channel) + sepia.lift;
        };
        const auto green = faded(c.g);
        const auto blue = faded(c.b);
        return decltype(c){faded(c.r), (green * 0.9F - green) * sepia.tint + green,
                           (blue * 0.67F - blue) * sepia.tint + blue};
    });
}

void tone_duotone(const Duotone &duotone, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                  uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, size_t count) {
    const auto is_byte = [](int32_t value) { return value >= 0 && value <= 255; };
    if (std::all_of(duotone.light, duotone.light + 3, is_byte) &&
        std::all_of(duotone.dark, duotone.dark + 3, is_byte)) {
        // The mixture of two bytes fits in 16 bits.
        uint16_t light[3];
        uint16_t dark[3];
        std::copy_n(duotone.light, 3, light);
        std::copy_n(duotone.dark, 3, dark);
        TAVIK_INDEPENDENT
        for (size_t i = 0; i < count; ++i) {
            const uint16_t mean = mean_of_three(src_r[i], src_g[i], src_b[i]);
            const auto rest = static_cast<uint16_t>(255 - mean);
            const auto mixed = [=](uint16_t bright, uint16_t dim) {
                const auto mixture = static_cast<uint16_t>(bright * mean + dim * rest);
                return static_cast<uint8_t>(mixture / 255);
            };
            dst_r[i] = mixed(light[0], dark[0]);
            dst_g[i] = mixed(light[1], dark[1]);
            dst_b[i] = mixed(light[2], dark[2]);
        }
        return;
    }
    for (size_t i = 0; i < count; ++i) {
        const int32_t mean = mean_of_three(src_r[i], src_g[i], src_b[i]);
        const auto mixed = [=](int32_t light, int32_t dark) {
            return low_byte(wrap_add(wrap_mul(light, mean), wrap_mul(dark, 255 - mean)) / 255);
        };
        dst_r[i] = mixed(duotone.light[0], duotone.dark[0]);
        dst_g[i] = mixed(duotone.light[1], duotone.dark[1]);
        dst_b[i] = mixed(duotone.light[2], duotone.dark[2]);
    }
}

void mean_to_float(const uint8_t *r, const uint8_t *g, const uint8_t *b, float *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = mean_of_three(r[i], g[i], b[i]);
}
