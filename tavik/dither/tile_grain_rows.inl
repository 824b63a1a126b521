void tile_columns(int32_t first, float scale, float offset, int32_t size, TileColumns &columns, size_t count) {
    const auto span = static_cast<float>(size);
    const float per_tile = 1.0F / span;
    for (size_t i = 0; i < count; ++i) {
        const TilePosition at = position_in_tile(static_cast<float>(first + static_cast<int32_t>(i)) * scale + offset,
                                                 size, span, per_tile);
        columns.left[i] = at.index;
        columns.right[i] = at.next;
        columns.part[i] = at.part;
    }
}

void add_tile_grain(const float *top, const float *bottom, const TileColumns &columns, float part_y, float amount,
                    uint8_t *plane, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const int32_t left = columns.left[i];
        const int32_t right = columns.right[i];
        const float grain = lerp4(top[left], top[right], bottom[left], bottom[right], columns.part[i], part_y);
        plane[i] = round_to_byte(grain * amount + static_cast<float>(plane[i]));
    }
}
