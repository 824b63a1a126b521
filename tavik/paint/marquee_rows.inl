// The label of each column of a run, whose first has this phase, where it is on the outline; else 0.
template <class IsOutline>
void label_run(const Stripes &stripes, int32_t phase, uint8_t *dst, size_t count, const IsOutline &is_outline) {
    const uint8_t *steps = stripes.steps.data();
    const auto first = static_cast<uint8_t>(phase);
    const auto period = static_cast<uint8_t>(stripes.period);
    const auto wraps_at = static_cast<uint8_t>(stripes.period - phase);
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const auto wrapped = static_cast<uint8_t>(steps[i] >= wraps_at ? period : 0);
        const auto label = static_cast<uint8_t>(steps[i] + first - wrapped + 1);
        dst[i] = static_cast<uint8_t>(is_outline(i) ? label : 0);
    }
}

void label_edge_row(const Stripes &stripes, int32_t phase, uint8_t least, const uint8_t *mask, uint8_t *dst,
                    size_t count) {
    label_run(stripes, phase, dst, count, [=](size_t i) { return mask[i] >= least; });
}

// The columns have a neighbour on either side, and the mask's rows are `stride` apart.
void label_inner_row(const Stripes &stripes, int32_t phase, uint8_t least, const uint8_t *mask, size_t stride,
                     uint8_t *dst, size_t count) {
    const uint8_t *above = mask - stride;
    const uint8_t *below = mask + stride;
    const uint8_t *left = mask - 1;
    const uint8_t *right = mask + 1;
    label_run(stripes, phase, dst, count, [=](size_t i) {
        const uint8_t beside = std::min(left[i], right[i]);
        const uint8_t over_and_under = std::min(above[i], below[i]);
        return (mask[i] >= least) & (std::min(beside, over_and_under) < least);
    });
}
