// Vectors of bytes at the level that the including rows file is compiled for; include it inside the file,
// for levels with byte shuffles (TAVIK_LEVEL >= TAVIK_SSE41).

#if TAVIK_LEVEL >= TAVIK_AVX512

using ByteVector = __m512i;

inline ByteVector load(const uint8_t *from) { return _mm512_loadu_si512(from); }
inline void store(uint8_t *to, ByteVector value) { _mm512_storeu_si512(to, value); }

#elif TAVIK_LEVEL >= TAVIK_AVX2

using ByteVector = __m256i;

inline ByteVector load(const uint8_t *from) { return _mm256_loadu_si256(reinterpret_cast<const __m256i *>(from)); }
inline void store(uint8_t *to, ByteVector value) { _mm256_storeu_si256(reinterpret_cast<__m256i *>(to), value); }
inline ByteVector every_byte(uint8_t value) { return _mm256_set1_epi8(static_cast<char>(value)); }
inline ByteVector repeat_16(const uint8_t *from) {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i *>(from)));
}
inline ByteVector bit_and(ByteVector a, ByteVector b) { return _mm256_and_si256(a, b); }
inline ByteVector add(ByteVector a, ByteVector b) { return _mm256_add_epi8(a, b); }
inline ByteVector shuffle_16(ByteVector values, ByteVector index) { return _mm256_shuffle_epi8(values, index); }
inline ByteVector select_by_top_bit(ByteVector choice, ByteVector if_clear, ByteVector if_set) {
    return _mm256_blendv_epi8(if_clear, if_set, choice);
}

#else

using ByteVector = __m128i;

inline ByteVector load(const uint8_t *from) { return _mm_loadu_si128(reinterpret_cast<const __m128i *>(from)); }
inline void store(uint8_t *to, ByteVector value) { _mm_storeu_si128(reinterpret_cast<__m128i *>(to), value); }
inline ByteVector every_byte(uint8_t value) { return _mm_set1_epi8(static_cast<char>(value)); }
inline ByteVector repeat_16(const uint8_t *from) { return load(from); }
inline ByteVector bit_and(ByteVector a, ByteVector b) { return _mm_and_si128(a, b); }
inline ByteVector add(ByteVector a, ByteVector b) { return _mm_add_epi8(a, b); }
inline ByteVector shuffle_16(ByteVector values, ByteVector index) { return _mm_shuffle_epi8(values, index); }
inline ByteVector select_by_top_bit(ByteVector choice, ByteVector if_clear, ByteVector if_set) {
    return _mm_blendv_epi8(if_clear, if_set, choice);
}

#endif
