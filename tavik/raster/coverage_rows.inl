void weight_row(double first, double step, float inverse_area, size_t count, float *to) {
    const auto columns = static_cast<int32_t>(count);
    for (int32_t i = 0; i < columns; ++i)
        to[i] = static_cast<float>(first + step * static_cast<double>(i)) * inverse_area;
}
