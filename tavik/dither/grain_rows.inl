void add_grain(const uint16_t *numbers, float *plane, float amount, size_t count) {
    for (size_t i = 0; i < count; ++i)
        plane[i] = plane[i] + (static_cast<float>(numbers[i]) * unit_per_number - 0.5F) * amount;
}

// The positions along one axis that two numbers in turn displace: every second number, from the first.
void displaced(const uint16_t *numbers, int32_t *positions, float scale, int32_t first, int32_t step, int32_t limit,
               size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const int32_t displacement = truncate(scale * static_cast<float>(numbers[2 * i]));
        const int32_t position = wrap_add(wrap_add(displacement, first), wrap_mul(step, static_cast<int32_t>(i)));
        positions[i] = std::max(std::min(position, limit), 0);
    }
}
