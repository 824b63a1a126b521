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

// `node` and `below` are rows of a map's points with one more on the right.
void double_even_row(const float *node, float *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        for (size_t k = 0; k < 2; ++k) {
            dst[4 * i + k] = node[2 * i + k] + node[2 * i + k];
            dst[4 * i + 2 + k] = node[2 * i + k] + node[2 * i + 2 + k];
        }
    }
}

void double_odd_row(const float *node, const float *below, float *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        for (size_t k = 0; k < 2; ++k) {
            const size_t at = 2 * i + k;
            dst[4 * i + k] = node[at] + below[at];
            dst[4 * i + 2 + k] = ((node[at] + node[at + 2]) + (below[at] + below[at + 2])) * 0.5F;
        }
    }
}

// Indices of the samples nearest to the points of a map.
void nearest_samples(const float *map, int32_t width, int32_t height, int32_t *from, size_t count) {
    for (size_t i = 0; i < count; ++i)
        from[i] = nearest_index(map[2 * i + 1], height) * width + nearest_index(map[2 * i], width);
}
