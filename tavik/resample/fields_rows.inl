// Positions of the pixels of a run, moved by `amount` times their vectors.
void displace(const float *field, float amount, const PixelRun &run, SourcePositions &from) {
    const auto y = static_cast<float>(run.y);
    const size_t count = run.count;
    const int32_t first = run.x;
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        from.x[i] = field[2 * i] * amount + static_cast<float>(first + static_cast<int32_t>(i));
        from.y[i] = field[2 * i + 1] * amount + y;
    }
}

void cross_dissolve(const float *from, const float *to, float t, uint8_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = round_to_byte((to[i] - from[i]) * t + from[i]);
}

// Indices of the samples nearest to the points of a map.
void nearest_samples(const float *map, int32_t width, int32_t height, int32_t *from, size_t count) {
    for (size_t i = 0; i < count; ++i)
        from[i] = nearest_index(map[2 * i + 1], height) * width + nearest_index(map[2 * i], width);
}
