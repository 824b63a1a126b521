void map_run(const Quadrilateral &quadrilateral, int32_t first, int32_t y, MappedPixels &pixels, size_t count) {
    const Quadrilateral q = quadrilateral;
    const auto row = static_cast<float>(y);
    const auto column = [=](size_t i) { return static_cast<float>(first + static_cast<int32_t>(i)); };
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const float x = column(i);
        float cover = 1.0F;
        for (const Edge &edge : q.edges) {
            const float distance = edge.distance(x, row);
            cover = distance < cover ? distance : cover;
        }
        pixels.weight[i] = cover * q.opacity;
    }
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const float x = column(i);
        const float r = 1.0F / q.depth.at(x, row);
        pixels.u[i] = q.across.at(x, row) * r * q.source_width - 0.5F;
        pixels.v[i] = q.down.at(x, row) * r * q.source_height - 0.5F;
    }
}

void nearest_samples(const MappedPixels &pixels, int32_t width, int32_t height, int32_t *index, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i)
        index[i] = tavik::nearest_index(pixels.v[i], height) * width + tavik::nearest_index(pixels.u[i], width);
}

void weigh(const float *alpha, float *weight, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) weight[i] *= alpha[i] * unit_per_byte;
}

void mix_weighted(const float *values, float tint, const float *weight, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const auto old = static_cast<float>(dst[i]);
        dst[i] = round_to_byte((values[i] * tint - old) * weight[i] + old);
    }
}
