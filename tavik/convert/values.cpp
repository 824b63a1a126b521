#include "tavik/convert/convert.h"

#include "tavik/frame/arithmetic.h"

using namespace tavik;

TAVIK_EXPORT(int32_t) GDIP_ColorToARGB(int32_t a, int32_t r, int32_t g, int32_t b) {
    const auto pushed = [](uint32_t fields, int32_t next) { return fields << 8 | static_cast<uint32_t>(next); };
    return static_cast<int32_t>(pushed(pushed(pushed(static_cast<uint32_t>(a), r), g), b));
}

TAVIK_EXPORT(void) Long_To_RGB(int32_t colour, uint8_t *p1, uint8_t *p2, uint8_t *p3) {
    *p1 = low_byte(colour >> 24);
    *p2 = low_byte(colour >> 16);
    *p3 = low_byte(colour >> 8);
}

TAVIK_EXPORT(int32_t) xshiftL(int32_t value, int32_t count) {
    return static_cast<int32_t>(static_cast<uint32_t>(value) << (count & 31));
}

TAVIK_EXPORT(int32_t) xshiftR(int32_t value, int32_t count) { return value >> (count & 31); }

TAVIK_EXPORT(void) swap_l(int32_t *p, int32_t *q) {
    *p ^= *q;
    *q ^= *p;
    *p ^= *q;
}

TAVIK_EXPORT(intptr_t) GetAddressSingle(float *p) { return reinterpret_cast<intptr_t>(p); }

TAVIK_EXPORT(int32_t) ReadChar(const uint8_t *base, int32_t index) { return base[index]; }

TAVIK_EXPORT(void) WriteChar(uint8_t *base, int32_t index, int32_t value) { base[index] = low_byte(value); }
