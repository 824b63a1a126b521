void lay_matte(uint8_t *pixels, const uint8_t *mask, size_t count, const Matte &matte) {
    const auto strong = static_cast<uint16_t>(matte.opacity >> 8);
    const auto weak = static_cast<uint8_t>(matte.opacity & 255);
    const auto blue = static_cast<uint16_t>(matte.blue);
    const auto green = static_cast<uint16_t>(matte.green);
    const auto red = static_cast<uint16_t>(matte.red);
    TAVIK_INDEPENDENT
    for (size_t k = 0; k < count; ++k) {
        const uint8_t m = mask[k];
        // Bits 8 to 15 of a sum come from the low 16 bits of its terms alone.
        const auto share = static_cast<uint16_t>(m * strong + (static_cast<uint16_t>(m * weak) >> 8));
        // 256 keeps what is there.
        const auto rest = static_cast<uint16_t>(m == 0 ? 256 : 255 - share);
        const auto mixed = [&](uint8_t was, uint16_t colour) {
            return static_cast<uint8_t>(static_cast<uint16_t>(uint32_t{was} * rest + uint32_t{share} * colour) >> 8);
        };
        pixels[3 * k] = mixed(pixels[3 * k], blue);
        pixels[3 * k + 1] = mixed(pixels[3 * k + 1], green);
        pixels[3 * k + 2] = mixed(pixels[3 * k + 2], red);
    }
}

// Writes to every third byte.
void multiply_into_pixels(const uint8_t *a, const uint8_t *b, uint8_t flip, uint8_t *middle, size_t count) {
    for (size_t k = 0; k < count; ++k)
        middle[3 * k] = static_cast<uint8_t>(static_cast<uint16_t>(a[k] * static_cast<uint8_t>(b[k] ^ flip)) >> 8);
}

// Steps the values of neighbouring rows along `count` columns and writes what the fade keeps at each, 255 − t.
#if TAVIK_LEVEL >= TAVIK_SSE2
// All rows step at once, sixteen columns at a time, also beyond `count`: no value is used after a short piece.
void fade_columns(float values[fade_rows], float step, uint8_t (*kept)[fade_piece], size_t count) {
    static_assert(fade_rows == 16 && fade_piece % 16 == 0);
    const __m128 sign = _mm_set1_ps(-0.0F);
    const __m128 steps = _mm_set1_ps(step);
    __m128 v[4] = {_mm_loadu_ps(values), _mm_loadu_ps(values + 4), _mm_loadu_ps(values + 8), _mm_loadu_ps(values + 12)};
    for (size_t x = 0; x < count; x += 16) {
        __m128i bytes[16];
        for (__m128i &column : bytes) {
            __m128i fade[4];
            for (int quarter = 0; quarter < 4; ++quarter) {
                v[quarter] = _mm_add_ps(v[quarter], steps);
                fade[quarter] = _mm_cvttps_epi32(_mm_xor_ps(v[quarter], sign));
            }
            // Packing clamps.
            const __m128i low = _mm_packs_epi32(fade[0], fade[1]);
            const __m128i high = _mm_packs_epi32(fade[2], fade[3]);
            column = _mm_xor_si128(_mm_packus_epi16(low, high), _mm_set1_epi8(-1));
        }
        // Four rounds turn columns of rows into rows of columns.
        for (int round = 0; round < 4; ++round) {
            __m128i next[16];
            for (int i = 0; i < 8; ++i) {
                next[2 * i] = _mm_unpacklo_epi8(bytes[i], bytes[i + 8]);
                next[2 * i + 1] = _mm_unpackhi_epi8(bytes[i], bytes[i + 8]);
            }
            std::copy(next, next + 16, bytes);
        }
        for (int32_t row = 0; row < fade_rows; ++row)
            _mm_storeu_si128(reinterpret_cast<__m128i *>(&kept[row][x]), bytes[row]);
    }
    for (int quarter = 0; quarter < 4; ++quarter) _mm_storeu_ps(values + 4 * quarter, v[quarter]);
}
#else
void fade_columns(float values[fade_rows], float step, uint8_t (*kept)[fade_piece], size_t count) {
    for (int32_t row = 0; row < fade_rows; ++row) {
        for (size_t x = 0; x < count; ++x) {
            values[row] += step;
            kept[row][x] = static_cast<uint8_t>(255 - clamp_to_byte(truncate(-values[row])));
        }
    }
}
#endif

void fade_over_squares(const uint8_t *mask, const uint8_t *kept, const uint8_t *squares, const uint8_t *const src[3],
                       uint8_t *const dst[3], size_t count) {
    const uint8_t *src1 = src[0];
    const uint8_t *src2 = src[1];
    const uint8_t *src3 = src[2];
    uint8_t *dst1 = dst[0];
    uint8_t *dst2 = dst[1];
    uint8_t *dst3 = dst[2];
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const float share = static_cast<float>(static_cast<uint16_t>(mask[i] * kept[i])) * unit_per_byte_product;
        const auto square = static_cast<float>(squares[i]);
        const auto laid = [&](uint8_t sample) {
            // Above −1 and below 256.
            return static_cast<uint8_t>(static_cast<int32_t>((static_cast<float>(sample) - square) * share + square));
        };
        dst1[i] = laid(src1[i]);
        dst2[i] = laid(src2[i]);
        dst3[i] = laid(src3[i]);
    }
}
