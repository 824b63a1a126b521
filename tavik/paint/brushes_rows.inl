using tavik::byte_mix;
using tavik::byte_product;

void mix_through(const uint8_t *mask, uint8_t opacity, const uint8_t *src, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) dst[i] = byte_mix(dst[i], src[i], byte_product(mask[i], opacity));
}

void smear_bytes(const uint8_t *mask, uint8_t strength, uint8_t pickup, uint8_t *carry, uint8_t *plane, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const uint8_t old = plane[i];
        const uint8_t carried = carry[i];
        plane[i] = byte_mix(old, carried, byte_product(mask[i], strength));
        carry[i] = byte_mix(carried, old, pickup);
    }
}

void smear_floats(const uint8_t *mask, float strength, float pickup, float *carry, float *plane, size_t count) {
    const float per_mask = strength * unit_per_byte;
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const float old = plane[i];
        const float carried = carry[i];
        plane[i] = (carried - old) * (static_cast<float>(mask[i]) * per_mask) + old;
        carry[i] = (old - carried) * pickup + carried;
    }
}
