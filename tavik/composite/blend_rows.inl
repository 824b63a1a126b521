#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

// In every loop `l` is the layer's sample and `t` the target's.

// 256·n / d, at most 255, by long division: eight bits of the fraction, the highest first, with the remainder below
// d. That takes byte lanes only. An n of d or more, so d = 0 too, gives 255.
inline uint8_t fraction_of_256(uint8_t n, uint8_t d) {
    uint8_t remainder = n;
    uint8_t quotient = 0;
    for (int bit = 0; bit < 8; ++bit) {
        // Twice the remainder may need a ninth bit; what it lacks to d does not.
        const auto lacking = static_cast<uint8_t>(d - remainder);
        const uint8_t fits = remainder >= lacking ? 255 : 0;
        remainder = static_cast<uint8_t>(remainder + remainder - (fits & d));
        quotient = static_cast<uint8_t>(quotient + quotient - fits);
    }
    return n >= d ? 255 : quotient;
}

// p / 255 for p < 65535, in 16 bits.
inline uint8_t over_255(uint16_t p) {
    const auto rounded_up = static_cast<uint16_t>(p + 1 + (p >> 8));
    return static_cast<uint8_t>(rounded_up >> 8);
}

// l + t less 256, or 255 where the sum fits in a byte.
inline uint8_t dodge_linearly(uint8_t l, uint8_t t) {
    const auto sum = static_cast<uint8_t>(l + t);
    return sum < l ? sum : 255;
}

// l + t less 255, at least 0.
inline uint8_t burn_linearly(uint8_t l, uint8_t t) {
    const auto room = static_cast<uint8_t>(~t);
    return static_cast<uint8_t>(l - std::min(l, room));
}

void add(const uint8_t *a, const uint8_t *b, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const auto sum = static_cast<uint8_t>(a[i] + b[i]);
        dst[i] = sum < a[i] ? 255 : sum;
    }
}

void subtract(const uint8_t *a, const uint8_t *b, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) dst[i] = static_cast<uint8_t>(a[i] - std::min(a[i], b[i]));
}

void mix(const uint8_t *a, const uint8_t *b, uint8_t *dst, size_t count, float share_of_b) {
    const float share_of_a = 1.0F - share_of_b;
    const auto mixed = [=](auto of_a, auto of_b) { return of_a * share_of_a + of_b * share_of_b; };
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    i = map_floats(dst, count, mixed, a, b);
#endif
    for (; i < count; ++i) dst[i] = low_byte(truncate(mixed(static_cast<float>(a[i]), static_cast<float>(b[i]))));
}

void overlay(const uint8_t *over, const uint8_t *under, const uint8_t *mask, uint8_t *dst, size_t count) {
    const auto laid = [](auto top, auto ground, auto share) { return (top - ground) * share * unit_per_byte + ground; };
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    i = map_floats(dst, count, laid, over, under, mask);
#endif
    for (; i < count; ++i)
        dst[i] = low_byte(
            truncate(laid(static_cast<float>(over[i]), static_cast<float>(under[i]), static_cast<float>(mask[i]))));
}

void soft_light(const uint8_t *layer, uint8_t *target, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        // A light target is moved from the other end, by the complements.
        const auto flip = static_cast<int8_t>(static_cast<int8_t>(target[i]) >> 7);
        const auto half = static_cast<uint8_t>(static_cast<uint8_t>(layer[i] ^ flip) >> 1);
        const auto distance = static_cast<uint8_t>(target[i] ^ flip);
        const auto product = static_cast<int16_t>((half + 64) * distance);
        const auto signed_product = static_cast<int16_t>((product ^ flip) - flip);
        // Half the product times twice the factor: the same float.
        const float moved = static_cast<float>(signed_product) * (2 * unit_per_byte);
        target[i] = static_cast<uint8_t>(static_cast<int32_t>(static_cast<float>(static_cast<uint8_t>(flip)) + moved));
    }
}

void hard_light(const uint8_t *layer, uint8_t *target, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        // A light layer works on the complements.
        const uint8_t flip = layer[i] < 128 ? 0 : 255;
        const auto l = static_cast<uint8_t>(layer[i] ^ flip);
        const auto t = static_cast<uint8_t>(target[i] ^ flip);
        target[i] = static_cast<uint8_t>(over_255(static_cast<uint16_t>(2 * t * l)) ^ flip);
    }
}

// Dodges, or burns with a flip of 255: burning dodges the complements and gives the complement.
void dodge_or_burn(const uint8_t *layer, uint8_t *target, size_t count, uint8_t flip) {
    const auto flip_divisor = static_cast<uint8_t>(~flip);
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const auto l = static_cast<uint8_t>(layer[i] ^ flip);
        const auto divisor = static_cast<uint8_t>(target[i] ^ flip_divisor);
        target[i] = static_cast<uint8_t>(fraction_of_256(l, divisor) ^ flip);
    }
}

// Burns by twice the target where it is dark and dodges by what twice the target has above 256 where it is light.
void vivid_light(const uint8_t *layer, uint8_t *target, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const uint8_t flip = target[i] < 128 ? 255 : 0;
        const auto l = static_cast<uint8_t>(layer[i] ^ flip);
        const auto twice = static_cast<uint8_t>(target[i] + target[i]);
        const auto divisor = static_cast<uint8_t>(twice ^ ~flip);
        target[i] = static_cast<uint8_t>(fraction_of_256(l, divisor) ^ flip);
    }
}

void linear_dodge(const uint8_t *layer, uint8_t *target, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) target[i] = dodge_linearly(layer[i], target[i]);
}

void linear_burn(const uint8_t *layer, uint8_t *target, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) target[i] = burn_linearly(layer[i], target[i]);
}

void linear_light(const uint8_t *layer, uint8_t *target, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const auto twice = static_cast<uint8_t>(target[i] + target[i]);
        target[i] = target[i] < 128 ? burn_linearly(layer[i], twice) : dodge_linearly(layer[i], twice);
    }
}
