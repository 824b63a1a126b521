// Calls body(neighbour, limit, begin, end) for the neighbours that lie inside the plane, row by row, with the columns
// [begin, end) of a run that have them; the pointer is to the neighbour of column 0.
template <class Body>
inline void for_each_neighbour(const HeightField<float> &field, int32_t y, float talus, int32_t first, int32_t count,
                               const Body &body) {
    for (int32_t down = -1; down <= 1; ++down) {
        if (y + down < 0 || y + down >= field.height) continue;
        const float *row = field.row(y + down);
        for (int32_t right = -1; right <= 1; ++right) {
            if (right == 0 && down == 0) continue;
            const float limit = right != 0 && down != 0 ? talus * 1.4142135F : talus;
            body(row, right, limit, std::max(first, -right), std::min(first + count, field.width - right));
        }
    }
}

// How far the first height stands above the second and what the slope holds.
inline float excess(float from, float to, float limit) {
    const float above = (from - to) - limit;
    return above > 0 ? above : 0.0F;
}

void find_flow(const HeightField<float> &field, float talus, float half_rate, int32_t first, int32_t y, float *flow,
               int32_t count) {
    float sum[weathering_run];
    float largest[weathering_run];
    std::fill_n(sum, count, 0.0F);
    std::fill_n(largest, count, 0.0F);
    const float *here = field.row(y);
    for_each_neighbour(field, y, talus, first, count,
                       [&](const float *row, int32_t right, float limit, int32_t begin, int32_t end) {
                           for (int32_t x = begin; x < end; ++x) {
                               const float over = excess(here[x], row[x + right], limit);
                               sum[x - first] += over;
                               largest[x - first] = over > largest[x - first] ? over : largest[x - first];
                           }
                       });
    for (int32_t i = 0; i < count; ++i) flow[i] = sum[i] > 0 ? (half_rate * largest[i]) / sum[i] : 0.0F;
}

void move_material(const HeightField<float> &field, const float *flow, float talus, int32_t first, int32_t y,
                   float *dst, int32_t count) {
    float out[weathering_run];
    float in[weathering_run];
    std::fill_n(out, count, 0.0F);
    std::fill_n(in, count, 0.0F);
    const float *here = field.row(y);
    for_each_neighbour(field, y, talus, first, count,
                       [&](const float *row, int32_t right, float limit, int32_t begin, int32_t end) {
                           const float *flow_there = flow + (row - field.heights);
                           for (int32_t x = begin; x < end; ++x) {
                               out[x - first] += excess(here[x], row[x + right], limit);
                               in[x - first] += flow_there[x + right] * excess(row[x + right], here[x], limit);
                           }
                       });
    const float *flow_here = flow + (here - field.heights);
    for (int32_t i = 0; i < count; ++i) dst[i] = (here[first + i] - flow_here[first + i] * out[i]) + in[i];
}

void show_difference(const float *before, const float *after, float gain, uint8_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = round_to_byte((before[i] - after[i]) * gain);
}

// Several lanes at a time: which of them a number meets changes nothing, and each lane passes over NaN.
void find_extremes(const float *plane, size_t count, Extremes &extremes) {
    constexpr size_t lanes = 64;
    float low[lanes];
    float high[lanes];
    std::fill_n(low, lanes, extremes.lowest);
    std::fill_n(high, lanes, extremes.highest);
    for (size_t start = 0; start < count; start += lanes) {
        const size_t length = std::min(lanes, count - start);
        const float *values = plane + start;
        if (length == lanes) {
            for (size_t i = 0; i < lanes; ++i) {
                low[i] = values[i] < low[i] ? values[i] : low[i];
                high[i] = values[i] > high[i] ? values[i] : high[i];
            }
        } else {
            for (size_t i = 0; i < length; ++i) {
                low[i] = values[i] < low[i] ? values[i] : low[i];
                high[i] = values[i] > high[i] ? values[i] : high[i];
            }
        }
    }
    extremes.lowest = *std::min_element(low, low + lanes);
    extremes.highest = *std::max_element(high, high + lanes);
}
