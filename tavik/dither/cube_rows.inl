// Of each channel the steps of 51 below it, one more where the rest is above the threshold; all three as an index
// into the cube.
void cube_indices(const uint8_t *r, const uint8_t *g, const uint8_t *b, const uint8_t *thresholds, uint8_t *indices,
                  size_t count) {
    const auto quantised = [](uint8_t value, uint8_t threshold) {
        const auto steps =
            static_cast<uint8_t>((value >= 51) + (value >= 102) + (value >= 153) + (value >= 204) + (value == 255));
        const auto rest = static_cast<uint8_t>(value - 51 * steps);
        return static_cast<uint8_t>(steps + (rest > threshold));
    };
    for (size_t i = 0; i < count; ++i) {
        const uint8_t threshold = thresholds[i];
        indices[i] = static_cast<uint8_t>(quantised(r[i], threshold) + 6 * quantised(g[i], threshold) +
                                          36 * quantised(b[i], threshold));
    }
}

void random_thresholds(const uint16_t *numbers, uint8_t *thresholds, size_t count) {
    constexpr float per_number = 51.0F / 32767.0F;
    for (size_t i = 0; i < count; ++i)
        thresholds[i] = static_cast<uint8_t>(static_cast<int32_t>(static_cast<float>(numbers[i]) * per_number));
}
