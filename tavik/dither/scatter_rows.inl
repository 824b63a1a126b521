void scatter(uint32_t hash_of_row, int32_t first, int32_t y, float amount, int32_t width, int32_t height, int32_t *from,
             size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const int32_t x = first + static_cast<int32_t>(i);
        const Displacement by(hash(static_cast<uint32_t>(x) + hash_of_row));
        from[i] = nearest_index(by.y * amount + static_cast<float>(y), height) * width +
                  nearest_index(by.x * amount + static_cast<float>(x), width);
    }
}

void frost(const FrostedRow &row, int32_t first, int32_t y, float amount, float per_cell, float *from_x, float *from_y,
           size_t count) {
    const FrostedRow r = row;
    for (size_t i = 0; i < count; ++i) {
        const auto x = static_cast<float>(first + static_cast<int32_t>(i));
        const float u = x * per_cell;
        const int32_t cell = floor_to_int(u);
        const float part = smooth(u - static_cast<float>(cell));
        const auto column = static_cast<uint32_t>(cell);
        const Displacement a(hash(column + r.hash_above));
        const Displacement b(hash(column + 1 + r.hash_above));
        const Displacement c(hash(column + r.hash_below));
        const Displacement d(hash(column + 1 + r.hash_below));
        from_x[i] = lerp4(a.x, b.x, c.x, d.x, part, r.part) * amount + x;
        from_y[i] = lerp4(a.y, b.y, c.y, d.y, part, r.part) * amount + static_cast<float>(y);
    }
}
