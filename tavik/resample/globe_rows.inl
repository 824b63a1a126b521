// How much of each pixel of a run the ball covers. Returns whether it covers any.
bool cover_globe(const Globe &globe, const PixelRun &run, float *cover) {
    const Globe g = globe;
    const float v = (static_cast<float>(run.y) - g.centre_y) * g.per_pixel;
    for (size_t i = 0; i < run.count; ++i) {
        const float u = (static_cast<float>(run.x + static_cast<int32_t>(i)) - g.centre_x) * g.per_pixel;
        cover[i] = clamp((1.0F - std::sqrt(u * u + v * v)) * g.radius + 0.5F, 0.0F, 1.0F);
    }
    return std::any_of(cover, cover + run.count, [](float part) { return part > 0; });
}

void map_globe(const Globe &globe, const PixelRun &run, SourcePositions &from) {
    const Globe g = globe;
    const float v = (static_cast<float>(run.y) - g.centre_y) * g.per_pixel;
    for (size_t i = 0; i < run.count; ++i) {
        const float u = (static_cast<float>(run.x + static_cast<int32_t>(i)) - g.centre_x) * g.per_pixel;
        const float rest = 1.0F - (u * u + v * v);
        const float w = std::sqrt(rest > 0 ? rest : 0.0F);
        const float y = v * g.cosine - w * g.sine;
        const float z = v * g.sine + w * g.cosine;
        const float longitude = atan2_turn(u, z) + g.longitude;
        const float latitude = atan2_turn(y, std::sqrt(u * u + z * z));
        from.x[i] = (longitude - static_cast<float>(floor_to_int(longitude))) * g.map_columns;
        from.y[i] = (latitude + 0.25F) * g.map_rows_per_turn;
    }
}

void mix_covered(const float *samples, const float *cover, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const auto old = static_cast<float>(dst[i]);
        const uint8_t mixed = round_to_byte((samples[i] - old) * cover[i] + old);
        dst[i] = cover[i] > 0 ? mixed : dst[i];
    }
}
