// Adds the samples of six frames, each weighted. Before that those of the first three frames are raised by one
// amount and those of the last three by another, up to 255.
void add_frames(const uint8_t *const frames[6], uint8_t raise_first, uint8_t raise_last, const float weights[6],
                uint8_t *dst, size_t count) {
    struct Term {
        const uint8_t *frame;
        float weight;

        float raised(size_t i, uint8_t raise) const {
            const auto room = static_cast<uint8_t>(~frame[i]);
            return weight * static_cast<float>(static_cast<uint8_t>(frame[i] + std::min(raise, room)));
        }
    };
    const Term a{frames[0], weights[0]};
    const Term b{frames[1], weights[1]};
    const Term c{frames[2], weights[2]};
    const Term d{frames[3], weights[3]};
    const Term e{frames[4], weights[4]};
    const Term f{frames[5], weights[5]};
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const float first = a.raised(i, raise_first) + b.raised(i, raise_first) + c.raised(i, raise_first);
        const float sum = first + d.raised(i, raise_last) + e.raised(i, raise_last) + f.raised(i, raise_last);
        dst[i] = low_byte(truncate(sum));
    }
}
