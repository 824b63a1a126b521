void black_or_white(uint8_t *r, uint8_t *g, uint8_t *b, const uint8_t *thresholds, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const auto grey = static_cast<uint8_t>(mean_of_three(r[i], g[i], b[i]));
        const auto tone = static_cast<uint8_t>(grey > thresholds[i] ? 255 : 0);
        r[i] = tone;
        g[i] = tone;
        b[i] = tone;
    }
}

// h + 128 as a threshold: 256 for the number 0, which no grey is above, is 255.
void random_grey_thresholds(const uint16_t *numbers, uint8_t *thresholds, size_t count) {
    constexpr float per_number = -255.0F / 32767.0F;
    for (size_t i = 0; i < count; ++i) {
        const auto h = static_cast<int32_t>(static_cast<float>(numbers[i]) * per_number + 128.0F);
        thresholds[i] = static_cast<uint8_t>(std::min(h + 128, 255));
    }
}
