void invert_value(uint8_t *r, uint8_t *g, uint8_t *b, size_t count) {
    const auto shifted = [](uint8_t channel, int16_t shift) {
        const auto sum = static_cast<int16_t>(channel + shift);
        return static_cast<uint8_t>(std::clamp<int16_t>(sum, 0, 255));
    };
    for (size_t i = 0; i < count; ++i) {
        const auto shift = static_cast<int16_t>(255 - 2 * mean_of_three(r[i], g[i], b[i]));
        r[i] = shifted(r[i], shift);
        g[i] = shifted(g[i], shift);
        b[i] = shifted(b[i], shift);
    }
}

void cancel_value(uint8_t *r, uint8_t *g, uint8_t *b, size_t count) {
    const auto less = [](uint8_t channel, uint8_t mean) {
        return static_cast<uint8_t>(channel - std::min(channel, mean));
    };
    for (size_t i = 0; i < count; ++i) {
        const auto mean = static_cast<uint8_t>(mean_of_three(r[i], g[i], b[i]));
        r[i] = less(r[i], mean);
        g[i] = less(g[i], mean);
        b[i] = less(b[i], mean);
    }
}
