#if TAVIK_LEVEL >= TAVIK_SSE2
using FourFloats = float __attribute__((vector_size(16)));
#endif

// What a sample leaves of old samples and gives of its colour, along x and along y.
template <class Float> struct Shares {
    Float kept_x;
    Float given_x;
    Float kept_y;
    Float given_y;

    Float mix(Float old, float colour) const { return (old * kept_x + given_x * colour) * given_y + old * kept_y; }
};

// Spreads a sample over the four pixels from this index on. fx and fy are its distances from the first of them.
inline void spread(size_t index, float fx, float fy, const Line &line, const LineCanvas &canvas) {
    const float gx = 1.0F - fx;
    const float gy = 1.0F - fy;
    const auto stride = static_cast<size_t>(canvas.width);
#if TAVIK_LEVEL >= TAVIK_SSE2
    const Shares<FourFloats> shares = {{fx, gx, fx, gx}, {gx, fx, gx, fx}, {fy, fy, gy, gy}, {gy, gy, fy, fy}};
    for (size_t channel = 0; channel < 3; ++channel) {
        uint8_t *upper = canvas.planes[channel] + index;
        uint8_t *lower = upper + stride;
        const auto old = _mm_cvtepi32_ps(_mm_setr_epi32(upper[0], upper[1], lower[0], lower[1]));
        const auto mixed = _mm_cvttps_epi32(shares.mix(old, line.colour[channel]));
        const __m128i words = _mm_packs_epi32(_mm_and_si128(mixed, _mm_set1_epi32(0xFF)), __m128i{});
        const int32_t four = _mm_cvtsi128_si32(_mm_packus_epi16(words, words));
        // Byte by byte, so that the next sample's loads need not wait for these stores to reach the cache.
        upper[0] = low_byte(four);
        upper[1] = low_byte(four >> 8);
        lower[0] = low_byte(four >> 16);
        lower[1] = low_byte(four >> 24);
    }
#else
    for (size_t channel = 0; channel < 3; ++channel) {
        uint8_t *upper = canvas.planes[channel] + index;
        uint8_t *lower = upper + stride;
        const auto mix = [&](uint8_t &sample, const Shares<float> &shares) {
            sample = low_byte(tavik::truncate(shares.mix(static_cast<float>(sample), line.colour[channel])));
        };
        mix(upper[0], {fx, gx, fy, gy});
        mix(upper[1], {gx, fx, fy, gy});
        mix(lower[0], {fx, gx, gy, fy});
        mix(lower[1], {gx, fx, gy, fy});
    }
#endif
}

void draw(const Line &line, const LineCanvas &canvas) {
    float x = line.x;
    float y = line.y;
    for (int32_t sample = 0; sample < line.samples; ++sample) {
        const int32_t column = tavik::truncate(x);
        const int32_t row = tavik::truncate(y);
        if (column >= 0 && row >= 0 && column < canvas.width - 1 && row < canvas.height - 1) {
            const size_t index =
                static_cast<size_t>(row) * static_cast<size_t>(canvas.width) + static_cast<size_t>(column);
            spread(index, x - static_cast<float>(column), y - static_cast<float>(row), line, canvas);
        } else if (line.has_left(x, y, canvas)) {
            return;
        }
        x += line.step_x;
        y += line.step_y;
    }
}
