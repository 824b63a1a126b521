// The positions of pixels x .. of a row.
void linear_positions(int32_t x, float step_x, float row_offset, float offset, float *positions, size_t count) {
    for (size_t i = 0; i < count; ++i)
        positions[i] = static_cast<float>(x + static_cast<int32_t>(i)) * step_x + row_offset + offset;
}

void circular_positions(int32_t x, float cx, float dy, float *positions, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const float dx = static_cast<float>(x + static_cast<int32_t>(i)) - cx;
        positions[i] = std::sqrt(dx * dx + dy * dy);
    }
}

// Turns angles into positions.
void sweep_positions(float *angles, float repeats, float length, size_t count) {
    // Not quite 180/π: hosts rely on positions to the last bit.
    constexpr float degrees_per_radian = 57.2958F;
    constexpr float turns_per_degree = 0.0027777778F;
    for (size_t i = 0; i < count; ++i)
        angles[i] = (angles[i] + pi) * repeats * degrees_per_radian * turns_per_degree * length;
}

// Where a run takes its colours from: between two entries of the table.
struct Places {
    int32_t lower[run];
    int32_t upper[run];
    float fraction[run];
};

inline void find_places(const float *positions, float last, Places &places, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const float t = clamp_nan_high(positions[i], 0.0F, last);
        places.lower[i] = static_cast<int32_t>(t);
        places.upper[i] = static_cast<int32_t>(clamp_nan_high(positions[i] + 1.0F, 0.0F, last));
        places.fraction[i] = t - static_cast<float>(places.lower[i]);
    }
}

// The components of a run's colours, each a row.
using Components = float[4][run];

inline void interpolate(const FloatTable &table, const Places &places, Components &colours, size_t count) {
    size_t done = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; table.entries && done + 4 <= count; done += 4) {
        __m128 entries[4];
        for (size_t i = 0; i < 4; ++i) {
            const __m128 lower = _mm_loadu_ps(table.entries[places.lower[done + i]].data());
            const __m128 upper = _mm_loadu_ps(table.entries[places.upper[done + i]].data());
            const __m128 fraction = _mm_set1_ps(places.fraction[done + i]);
            entries[i] = _mm_add_ps(lower, _mm_mul_ps(_mm_sub_ps(upper, lower), fraction));
        }
        _MM_TRANSPOSE4_PS(entries[0], entries[1], entries[2], entries[3]);
        for (size_t c = 0; c < 4; ++c) _mm_storeu_ps(colours[c] + done, entries[c]);
    }
#endif
    for (size_t c = 0; c < 4; ++c) {
        const float *values = table.components[c];
        for (size_t i = done; i < count; ++i) {
            const float lower = values[places.lower[i]];
            colours[c][i] = lower + (values[places.upper[i]] - lower) * places.fraction[i];
        }
    }
}

void render_row(const float *positions, const FloatTable &table, const uint8_t *const src[3], uint8_t *const dst[3],
                size_t count) {
    Places places;
    find_places(positions, table.last, places, count);
    Components colours;
    interpolate(table, places, colours, count);
    for (size_t c = 0; c < 3; ++c) {
        const uint8_t *from = src[c];
        uint8_t *to = dst[c];
        TAVIK_INDEPENDENT
        for (size_t i = 0; i < count; ++i) {
            const float colour = colours[c][i];
            const float s = from[i];
            const float alpha = colours[3][i];
            const float partly = (colour - s) * (alpha * unit_per_byte) + s;
            to[i] = low_byte(truncate(alpha < 255.0F ? partly : colour));
        }
    }
}
