// The heights of pixels at (dx, dy), (dx + 1, dy) and so on from the seed.
void cone_heights(Cone cone, int32_t dx, int32_t dy, float per_radius, float *heights, size_t count) {
    const auto square = [](int32_t value) { return static_cast<uint32_t>(value) * static_cast<uint32_t>(value); };
    const uint32_t dy_squared = square(dy);
    const auto write = [&](const auto &shape) {
        for (size_t i = 0; i < count; ++i) {
            const uint32_t squares = dy_squared + square(wrap_add(dx, static_cast<int32_t>(i)));
            const float t = static_cast<float>(static_cast<int32_t>(squares)) * per_radius * per_radius;
            heights[i] = (1.0F - shape(t)) * 255.0F;
        }
    };
    const auto clamped = [](float t) {
        const float raised = t > 0.0F ? t : 0.0F;
        return raised < 1.0F ? raised : 1.0F;
    };
    switch (cone) {
    case Cone::bowl:
        return write([](float t) { return t; });
    case Cone::clamped_bowl:
        return write(clamped);
    case Cone::linear:
        return write([&](float t) { return std::sqrt(clamped(t)); });
    }
}

void dithered_heights(const uint16_t *numbers, const float *heights, bool invert, uint8_t *dst, size_t count) {
    constexpr float unit_per_number = 1.0F / 32767.0F;
    const uint8_t flip = invert ? 255 : 0;
    for (size_t i = 0; i < count; ++i) {
        const int32_t level = truncate(static_cast<float>(numbers[i]) * unit_per_number + heights[i]);
        // The low byte of 255 - g is the complement of g's.
        dst[i] = static_cast<uint8_t>(low_byte(std::min(level, 255)) ^ flip);
    }
}
