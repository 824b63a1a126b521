#if TAVIK_LEVEL >= TAVIK_SSE41
#include "tavik/frame/byte_vector.inl"

#if TAVIK_LEVEL >= TAVIK_AVX512

// A 256-byte table in four registers.
struct VectorTable {
    ByteVector quarters[4];

    explicit VectorTable(const uint8_t *table)
        : quarters{load(table), load(table + 64), load(table + 128), load(table + 192)} {}

    ByteVector operator[](ByteVector index) const {
        const ByteVector low = _mm512_permutex2var_epi8(quarters[0], index, quarters[1]);
        const ByteVector high = _mm512_permutex2var_epi8(quarters[2], index, quarters[3]);
        return _mm512_mask_blend_epi8(_mm512_movepi8_mask(index), low, high);
    }
};

#else

// A 256-byte table as sixteen shuffles of 16 bytes: the low four bits of the index shuffle each, the high four
// choose between the results.
struct VectorTable {
    ByteVector rows[16];

    explicit VectorTable(const uint8_t *table) {
        for (int row = 0; row < 16; ++row) rows[row] = repeat_16(table + 16 * row);
    }

    ByteVector operator[](ByteVector index) const {
        const ByteVector column = index & every_byte(15);
        ByteVector choice = index;
        const ByteVector bit7 = choice;
        const ByteVector bit6 = choice = add(choice, choice);
        const ByteVector bit5 = choice = add(choice, choice);
        const ByteVector bit4 = add(choice, choice);
        const auto pair = [&](int row) {
            return select_by_top_bit(bit4, shuffle_16(rows[row], column), shuffle_16(rows[row + 1], column));
        };
        const auto four = [&](int row) { return select_by_top_bit(bit5, pair(row), pair(row + 2)); };
        const auto eight = [&](int row) { return select_by_top_bit(bit6, four(row), four(row + 4)); };
        return select_by_top_bit(bit7, eight(0), eight(8));
    }
};

#endif
#endif

void map_bytes(const uint8_t *src, uint8_t *dst, size_t count, const uint8_t *table) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE41
    // Empty runs read no table.
    if (count >= sizeof(ByteVector)) {
        const VectorTable vector_table(table);
        for (; i + sizeof(ByteVector) <= count; i += sizeof(ByteVector)) store(dst + i, vector_table[load(src + i)]);
    }
#endif
    for (; i < count; ++i) dst[i] = table[src[i]];
}

void map_bytes_to_three(const uint8_t *src, uint8_t *const dst[3], size_t count, const uint8_t *const tables[3]) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE41
    if (count >= sizeof(ByteVector)) {
        const VectorTable first(tables[0]);
        const VectorTable second(tables[1]);
        const VectorTable third(tables[2]);
        for (; i + sizeof(ByteVector) <= count; i += sizeof(ByteVector)) {
            const ByteVector index = load(src + i);
            store(dst[0] + i, first[index]);
            store(dst[1] + i, second[index]);
            store(dst[2] + i, third[index]);
        }
    }
#endif
    for (; i < count; ++i) {
        const uint8_t value = src[i];
        dst[0][i] = tables[0][value];
        dst[1][i] = tables[1][value];
        dst[2][i] = tables[2][value];
    }
}

void complement(uint8_t *plane, size_t count) {
    for (size_t i = 0; i < count; ++i) plane[i] = static_cast<uint8_t>(~plane[i]);
}
