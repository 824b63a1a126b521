// Pixels of three bytes to planes.
void unpack_pixels(const uint8_t *src, uint8_t *blue, uint8_t *green, uint8_t *red, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        blue[i] = src[3 * i];
        green[i] = src[3 * i + 1];
        red[i] = src[3 * i + 2];
    }
}

// How many bytes from the first on, 1 .. count, equal it.
size_t run_length(const uint8_t *src, size_t count) {
    size_t length = 1;
#if TAVIK_LEVEL >= TAVIK_SSE2
    const __m128i value = _mm_set1_epi8(static_cast<char>(*src));
    for (; count - length >= 16; length += 16) {
        const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i *>(src + length));
        const auto equal = static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(value, next)));
        if (equal != 0xFFFF) return length + static_cast<size_t>(std::countr_one(equal));
    }
#endif
    while (length < count && src[length] == *src) ++length;
    return length;
}
