// Raises the horizon of the pixels from column `first` on by the heights of another row, `shift` columns along.
template <class Height>
inline void raise_horizon(const Height *here, const Height *there, float weight, float *horizon, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const float rise = (static_cast<float>(there[i]) - static_cast<float>(here[i])) * weight;
        horizon[i] = rise > horizon[i] ? rise : horizon[i];
    }
}

// Adds the sine of the steepest angle along the steps.
template <class Height>
inline void add_occlusion(const HeightField<Height> &field, std::span<const HorizonStep> steps, int32_t first,
                          int32_t y, float *sum, int32_t count) {
    float horizon[occlusion_run];
    std::fill_n(horizon, count, 0.0F);
    const Height *here = field.row(y);
    for (const HorizonStep &step : steps) {
        if (y + step.down < 0 || y + step.down >= field.height) continue;
        // The columns that have one so many to the right.
        const int32_t begin = std::max(first, -step.right);
        const int32_t end = std::min(first + count, field.width - step.right);
        if (begin >= end) continue;
        raise_horizon(here + begin, field.row(y + step.down) + (begin + step.right), step.weight,
                      horizon + (begin - first), static_cast<size_t>(end - begin));
    }
    for (int32_t i = 0; i < count; ++i) sum[i] += horizon[i] / std::sqrt(horizon[i] * horizon[i] + 1.0F);
}

void add_occlusion_of_floats(const HeightField<float> &field, std::span<const HorizonStep> steps, int32_t first,
                             int32_t y, float *sum, int32_t count) {
    add_occlusion(field, steps, first, y, sum, count);
}

void add_occlusion_of_bytes(const HeightField<uint8_t> &field, std::span<const HorizonStep> steps, int32_t first,
                            int32_t y, float *sum, int32_t count) {
    add_occlusion(field, steps, first, y, sum, count);
}

void show_openness(const float *sum, float share, float *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = 1.0F - sum[i] * share;
}

void show_openness_in_bytes(const float *sum, float share, uint8_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = round_to_byte((1.0F - sum[i] * share) * 255.0F);
}

void darken(const float *sum, float per_sum, uint8_t *r, uint8_t *g, uint8_t *b, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const float light = 1.0F - clamp(sum[i] * per_sum, 0.0F, 1.0F);
        r[i] = round_to_byte(static_cast<float>(r[i]) * light);
        g[i] = round_to_byte(static_cast<float>(g[i]) * light);
        b[i] = round_to_byte(static_cast<float>(b[i]) * light);
    }
}
