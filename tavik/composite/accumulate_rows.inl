// Sums and products of 16 bits that wrap around.

void add_samples(const uint8_t *src, int16_t *sums, size_t count) {
    for (size_t i = 0; i < count; ++i) sums[i] = static_cast<int16_t>(sums[i] + src[i]);
}

void add_weighted_samples(const uint8_t *src, int16_t *sums, size_t count, int16_t weight) {
    for (size_t i = 0; i < count; ++i) sums[i] = static_cast<int16_t>(sums[i] + src[i] * weight);
}

// The low byte of sum / divisor, toward zero, in 16 bits.
void divide_sums(const int16_t *sums, uint8_t *dst, size_t count, int32_t divisor) {
    const uint32_t whole = divisor < 0 ? 0U - static_cast<uint32_t>(divisor) : static_cast<uint32_t>(divisor);
    // No sum reaches a divisor that does not fit.
    const auto size = static_cast<uint16_t>(std::min(whole, 65535U));
    // Below 65536 / size by 1 or less. Sums are up to 32768, so their quotients come out exact or one short.
    const auto reciprocal = static_cast<uint16_t>(65535 / size);
    const auto flip = static_cast<uint16_t>(divisor < 0 ? 0xFFFF : 0);
    for (size_t i = 0; i < count; ++i) {
        const auto sign = static_cast<uint16_t>(sums[i] < 0 ? 0xFFFF : 0);
        const auto sum = static_cast<uint16_t>((sums[i] ^ sign) - sign);
        const auto near = static_cast<uint16_t>((uint32_t{sum} * reciprocal) >> 16);
        const auto remainder = static_cast<uint16_t>(sum - near * size);
        const auto quotient = static_cast<uint16_t>(near + (remainder >= size ? 1 : 0));
        const auto negative = static_cast<uint16_t>(sign ^ flip);
        dst[i] = low_byte((quotient ^ negative) - negative);
    }
}
