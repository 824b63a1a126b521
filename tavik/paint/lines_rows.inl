// What a sample leaves of old samples and gives of its colour, along x and along y.
struct Shares {
    float kept_x;
    float given_x;
    float kept_y;
    float given_y;

    template <class Float> Float mix(Float old, Float colour) const {
        return (old * kept_x + given_x * colour) * given_y + old * kept_y;
    }
};

// One pixel at a time, so that it waits for none but the sample before that painted the same pixel.
inline void mix_pixel(const LineCanvas &canvas, size_t index, const Shares &shares, const Colour &colour) {
    uint8_t &r = canvas.planes[0][index];
    uint8_t &g = canvas.planes[1][index];
    uint8_t &b = canvas.planes[2][index];
#if TAVIK_LEVEL >= TAVIK_SSE2
    const __m128 old = _mm_cvtepi32_ps(_mm_setr_epi32(r, g, b, 0));
    const __m128i mixed = _mm_cvttps_epi32(shares.mix(old, _mm_setr_ps(colour[0], colour[1], colour[2], 0.0F)));
    const __m128i words = _mm_packs_epi32(_mm_and_si128(mixed, _mm_set1_epi32(0xFF)), __m128i{});
    const int32_t three = _mm_cvtsi128_si32(_mm_packus_epi16(words, words));
    r = low_byte(three);
    g = low_byte(three >> 8);
    b = low_byte(three >> 16);
#else
    const auto mixed = [&](uint8_t old, float component) {
        return low_byte(tavik::truncate(shares.mix(static_cast<float>(old), component)));
    };
    r = mixed(r, colour[0]);
    g = mixed(g, colour[1]);
    b = mixed(b, colour[2]);
#endif
}

// Spreads a sample over the four pixels from this index on. fx and fy are its distances from the first of them.
inline void spread(const Colour &colour, const LineCanvas &canvas, size_t index, float fx, float fy) {
    const float gx = 1.0F - fx;
    const float gy = 1.0F - fy;
    const auto below = index + static_cast<size_t>(canvas.width);
    mix_pixel(canvas, index, {fx, gx, fy, gy}, colour);
    mix_pixel(canvas, index + 1, {gx, fx, fy, gy}, colour);
    mix_pixel(canvas, below, {fx, gx, gy, fy}, colour);
    mix_pixel(canvas, below + 1, {gx, fx, gy, fy}, colour);
}

template <class Colours> void draw(const Line &line, const Colours &colours, const LineCanvas &canvas) {
    float x = line.x;
    float y = line.y;
    for (int32_t sample = 0; sample < line.samples; ++sample) {
        const int32_t column = tavik::truncate(x);
        const int32_t row = tavik::truncate(y);
        if (column >= 0 && row >= 0 && column < canvas.width - 1 && row < canvas.height - 1) {
            const size_t index =
                static_cast<size_t>(row) * static_cast<size_t>(canvas.width) + static_cast<size_t>(column);
            spread(colours.at(sample), canvas, index, x - static_cast<float>(column), y - static_cast<float>(row));
        } else if (line.has_left(x, y, canvas)) {
            return;
        }
        x += line.step_x;
        y += line.step_y;
    }
}
