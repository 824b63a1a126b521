// Where the rays through pixels from column `first` on leave the ball and meet the picture, how much of each pixel the
// ball covers and how much of the rim light it reflects. Returns whether it covers any.
bool refract(const Ball &ball, int32_t first, int32_t y, RefractedPixels &pixels, size_t count) {
    const Ball b = ball;
    const float v = (static_cast<float>(y) - b.centre_y) * b.inverse_radius;
    const auto from_centre = [=](size_t i) {
        return (static_cast<float>(first + static_cast<int32_t>(i)) - b.centre_x) * b.inverse_radius;
    };
    for (size_t i = 0; i < count; ++i) {
        const float u = from_centre(i);
        pixels.cover[i] = clamp((1.0F - std::sqrt(u * u + v * v)) * b.radius + 0.5F, 0.0F, 1.0F);
    }
    if (std::none_of(pixels.cover.begin(), pixels.cover.begin() + static_cast<std::ptrdiff_t>(count),
                     [](float cover) { return cover > 0; }))
        return false;

    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const float u = from_centre(i);
        const float d2 = u * u + v * v;
        const float e2 = d2 < 1.0F ? d2 : 1.0F;
        const float w = std::sqrt(1.0F - e2);
        // Into the ball,
        const float inside = std::sqrt(1.0F - (b.eta * b.eta) * e2);
        const float bend = b.eta * w - inside;
        const float tx = bend * u;
        const float ty = bend * v;
        const float tz = bend * w - b.eta;
        // across it,
        const float far = inside + inside;
        const float qx = u + far * tx;
        const float qy = v + far * ty;
        const float qz = w + far * tz;
        // and out of it.
        const float back = b.index * inside - w;
        const float ex = b.index * tx - back * qx;
        const float ey = b.index * ty - back * qy;
        const float steep = b.index * tz - back * qz;
        const float ez = steep < -0.01F ? steep : -0.01F;
        const float t = (-b.depth - qz) / ez;
        pixels.x[i] = (qx + t * ex) * b.radius + b.centre_x;
        pixels.y[i] = (qy + t * ey) * b.radius + b.centre_y;

        const float m = 1.0F - w;
        const float m2 = m * m;
        pixels.reflected[i] = ((1.0F - b.reflectance) * (m2 * m2 * m) + b.reflectance) * b.rim;
    }
    return true;
}

void mix_refracted(const RefractedPixels &pixels, const float *samples, float tint, const uint8_t *src, uint8_t *dst,
                   size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const auto old = static_cast<float>(src[i]);
        const float through = samples[i] * tint;
        const float value = (255.0F - through) * pixels.reflected[i] + through;
        const uint8_t mixed = round_to_byte((value - old) * pixels.cover[i] + old);
        dst[i] = pixels.cover[i] > 0 ? mixed : src[i];
    }
}

void cast_bubble_shadow(const BubbleShadow &shadow, int32_t y, uint8_t *r, uint8_t *g, uint8_t *b, size_t count) {
    const BubbleShadow s = shadow;
    const float v = (static_cast<float>(y) - s.centre_y) * s.inverse_radius;
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const float u = (static_cast<float>(static_cast<int32_t>(i)) - s.centre_x) * s.inverse_radius;
        const float d2 = u * u + v * v;
        const float d = std::sqrt(d2);
        const float edge = smooth(clamp((s.outer - d) * s.slope, 0.0F, 1.0F));
        const float held = d2 < 1.0F ? d2 : 1.0F;
        const float dark = (s.opacity * edge) * (held * 0.65F + 0.35F);
        const float inner = 1.0F - d2 * 4.0F;
        const float core = inner > 0 ? inner : 0.0F;
        const float light = (1.0F - dark) + s.focus * (core * core);
        const bool in_reach = d < s.outer;
        const auto lit = [&](uint8_t old) {
            const uint8_t shaded = round_to_byte(static_cast<float>(old) * light);
            return in_reach ? shaded : old;
        };
        r[i] = lit(r[i]);
        g[i] = lit(g[i]);
        b[i] = lit(b[i]);
    }
}
