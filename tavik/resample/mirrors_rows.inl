// dst[0] = last[0], dst[1] = last[-1] and so on.
void copy_backwards(const uint8_t *last, uint8_t *dst, size_t count) {
    const uint8_t *first = last - (count - 1);
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) dst[x] = first[count - 1 - x];
}
