// Each gives the source positions of a run of pixels and returns whether it moves any of them.

bool fisheye(const Fisheye &warp, const PixelRun &run, SourcePositions &from) {
    const Fisheye w = warp;
    const auto y = static_cast<float>(run.y);
    const float dy = y - w.centre_y;
    uint32_t moves = 0;
    for (size_t i = 0; i < run.count; ++i) {
        const auto x = static_cast<float>(run.x + static_cast<int32_t>(i));
        const float dx = x - w.centre_x;
        const float q = (dx * dx + dy * dy) * w.per_square;
        const float k = w.gain / (1.0F - w.strength * q);
        const bool inside = q < 1.0F;
        from.x[i] = choose(inside, dx * k + w.centre_x, x);
        from.y[i] = choose(inside, dy * k + w.centre_y, y);
        moves |= inside ? 1U : 0U;
    }
    return moves != 0;
}

bool twirl(const Twirl &warp, const PixelRun &run, SourcePositions &from) {
    const Twirl w = warp;
    const auto y = static_cast<float>(run.y);
    const float dy = y - w.centre_y;
    uint32_t moves = 0;
    for (size_t i = 0; i < run.count; ++i) {
        const auto x = static_cast<float>(run.x + static_cast<int32_t>(i));
        const float dx = x - w.centre_x;
        const float f = 1.0F - std::sqrt(dx * dx + dy * dy) * w.per_pixel;
        const float angle = w.turns * (f * f);
        const float s = sin_turn(angle);
        const float c = cos_turn(angle);
        const bool inside = f > 0;
        from.x[i] = choose(inside, (dx * c + dy * s) + w.centre_x, x);
        from.y[i] = choose(inside, (dy * c - dx * s) + w.centre_y, y);
        moves |= inside ? 1U : 0U;
    }
    return moves != 0;
}

bool bend_to_disc(const Disc &warp, const PixelRun &run, SourcePositions &from) {
    const Disc w = warp;
    const float dy = static_cast<float>(run.y) - w.centre_y;
    for (size_t i = 0; i < run.count; ++i) {
        const float dx = static_cast<float>(run.x + static_cast<int32_t>(i)) - w.centre_x;
        const float t = atan2_turn(dx, -dy);
        from.x[i] = (t - static_cast<float>(floor_to_int(t))) * w.columns;
        from.y[i] = std::sqrt(dx * dx + dy * dy) * w.rows_per_pixel;
    }
    return true;
}

bool unroll_disc(const Disc &warp, const PixelRun &run, SourcePositions &from) {
    const Disc w = warp;
    const float r = static_cast<float>(run.y) * w.pixels_per_row;
    for (size_t i = 0; i < run.count; ++i) {
        const float t = static_cast<float>(run.x + static_cast<int32_t>(i)) * w.turns_per_column;
        from.x[i] = w.centre_x + r * sin_turn(t);
        from.y[i] = w.centre_y - r * cos_turn(t);
    }
    return true;
}

void lens(const Lens &warp, float channel_zoom, const PixelRun &run, SourcePositions &from) {
    const Lens w = warp;
    const float dy = static_cast<float>(run.y) - w.centre_y;
    for (size_t i = 0; i < run.count; ++i) {
        const float dx = static_cast<float>(run.x + static_cast<int32_t>(i)) - w.centre_x;
        const float q = (dx * dx + dy * dy) * w.per_square;
        const float k = (((w.k2 * q + w.k1) * q + 1.0F) * w.zoom) * channel_zoom;
        from.x[i] = dx * k + w.centre_x;
        from.y[i] = dy * k + w.centre_y;
    }
}
