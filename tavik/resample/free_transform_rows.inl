// Of the columns from `first` on, all of them inside, so that every conversion is in range.
void transform_positions(const TransformedRow &row, int32_t first, int32_t stride, SamplePositions &positions,
                         size_t count) {
    const TransformedRow same = row;
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const int32_t column = first + static_cast<int32_t>(i);
        const float x = same.source_x(column);
        const float y = same.source_y(column);
        const auto whole_x = static_cast<int32_t>(x);
        const auto whole_y = static_cast<int32_t>(y);
        positions.indices[i] = whole_y * stride + whole_x;
        positions.x_fractions[i] = x - static_cast<float>(whole_x);
        positions.y_fractions[i] = y - static_cast<float>(whole_y);
    }
}

void lerp_squares(const Square *squares, const SamplePositions &positions, uint8_t *dst, size_t count) {
    const float *x_fractions = positions.x_fractions.data();
    const float *y_fractions = positions.y_fractions.data();
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const Square square = squares[i];
        const auto sample = [&](int place) { return static_cast<int32_t>(square >> 8 * place & 0xFF); };
        const float value = bilerp(sample(0), sample(1), sample(2), sample(3), x_fractions[i], y_fractions[i]);
        dst[i] = low_byte(static_cast<int32_t>(value));
    }
}
