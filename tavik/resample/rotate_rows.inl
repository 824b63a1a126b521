// Where the columns from `first` on lie in the source; all are inside.
void rotated_indices(const RotatedRow &row, int32_t first, int32_t stride, int32_t *indices, size_t count) {
    const RotatedRow same = row;
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const int32_t x = first + static_cast<int32_t>(i);
        indices[i] = same.source_y(x) * stride + same.source_x(x);
    }
}
