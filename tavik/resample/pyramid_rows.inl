// The reduced row's samples from `first` on.
void reduce_across(const float *row, int32_t width, int32_t first, float *dst, size_t count) {
    const auto at = [&](int64_t x) { return row[std::clamp<int64_t>(x, 0, width - 1)]; };
    const auto at_edge = [&](size_t i) {
        const int64_t x = 2 * (first + static_cast<int64_t>(i));
        dst[i] = binomial(at(x - 1), at(x), at(x + 1), at(x + 2));
    };
    size_t begin = 0;
    if (first == 0) at_edge(begin++);
    size_t end = count;
    while (end > begin && 2 * (first + static_cast<int64_t>(end)) + 1 > width) at_edge(--end);
    const float *from = row + 2 * (static_cast<size_t>(first) + begin) - 1;
    for (size_t i = 0; i < end - begin; ++i)
        dst[begin + i] = binomial(from[2 * i], from[2 * i + 1], from[2 * i + 2], from[2 * i + 3]);
}

void reduce_down(const float *above, const float *upper, const float *lower, const float *below, float *dst,
                 size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = binomial(above[i], upper[i], lower[i], below[i]);
}

// The enlarged row's samples from `first` on, which is even.
void enlarge_across(const float *row, int32_t coarse_width, int32_t first, float *dst, size_t count) {
    const int32_t left = first / 2;
    const auto at = [&](int32_t x) { return row[std::clamp(x, 0, coarse_width - 1)]; };
    const auto at_edge = [&](size_t pair) {
        const int32_t x = left + static_cast<int32_t>(pair);
        const float near = at(x);
        dst[2 * pair] = three_to_one(near, at(x - 1));
        if (2 * pair + 1 < count) dst[2 * pair + 1] = three_to_one(near, at(x + 1));
    };
    size_t begin = 0;
    if (left == 0) at_edge(begin++);
    size_t end = (count + 1) / 2;
    while (end > begin && (2 * end > count || left + static_cast<int32_t>(end) >= coarse_width)) at_edge(--end);
    const float *from = row + (static_cast<size_t>(left) + begin) - 1;
    float *to = dst + 2 * begin;
    for (size_t i = 0; i < end - begin; ++i) {
        to[2 * i] = three_to_one(from[i + 1], from[i]);
        to[2 * i + 1] = three_to_one(from[i + 1], from[i + 2]);
    }
}

void add_detail(const EnlargedRows &in, const EnlargedRows &out, float gain, const float *fine, float *dst,
                size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i)
        dst[i] = fine[i] * gain + (three_to_one(out.near[i], out.far[i]) - three_to_one(in.near[i], in.far[i]) * gain);
}
