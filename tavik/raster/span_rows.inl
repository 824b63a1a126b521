// Adds the step so many times. Not one multiplication: each sum is rounded.
inline void advance(Attributes &attributes, const Attributes &step, int32_t steps) {
    for (; steps > 0; --steps) attributes += step;
}

inline void draw_pixel(const Attributes &attributes, const Target &target, size_t at) {
    if (!(target.depth[at] > attributes[depth_lane])) return;
    target.depth[at] = attributes[depth_lane];
    for (int channel = 0; channel < 3; ++channel)
        target.planes[channel][at] = low_byte(truncate(attributes[red_lane + channel]));
}

void draw_span(Attributes attributes, const Attributes &step, int32_t hidden, size_t count, const Target &target) {
    advance(attributes, step, hidden);
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; count - i >= 4; i += 4) {
        __m128 depth = attributes;
        __m128 red = attributes + step;
        __m128 green = red + step;
        __m128 blue = green + step;
        attributes = blue + step;
        _MM_TRANSPOSE4_PS(depth, red, green, blue);
        const __m128 before = _mm_loadu_ps(target.depth + i);
        const __m128 nearer = _mm_cmpgt_ps(before, depth);
        if (_mm_movemask_ps(nearer) == 0) continue;
        _mm_storeu_ps(target.depth + i, _mm_or_ps(_mm_and_ps(nearer, depth), _mm_andnot_ps(nearer, before)));
        // The mask of four floats as one of four bytes.
        const __m128i mask_words = _mm_packs_epi32(_mm_castps_si128(nearer), _mm_setzero_si128());
        const auto mask = static_cast<uint32_t>(_mm_cvtsi128_si32(_mm_packs_epi16(mask_words, mask_words)));
        const __m128 colours[] = {red, green, blue};
        for (int channel = 0; channel < 3; ++channel) {
            const __m128i low = _mm_and_si128(_mm_cvttps_epi32(colours[channel]), _mm_set1_epi32(255));
            const __m128i words = _mm_packs_epi32(low, low);
            const auto drawn = static_cast<uint32_t>(_mm_cvtsi128_si32(_mm_packus_epi16(words, words)));
            uint32_t old;
            std::memcpy(&old, target.planes[channel] + i, sizeof old);
            const uint32_t mixed = (drawn & mask) | (old & ~mask);
            std::memcpy(target.planes[channel] + i, &mixed, sizeof mixed);
        }
    }
#endif
    for (; i < count; ++i) {
        draw_pixel(attributes, target, i);
        attributes += step;
    }
}
