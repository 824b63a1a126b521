void add_nova(const Nova &nova, int32_t y, uint8_t *r, uint8_t *g, uint8_t *b, size_t count) {
    const Nova n = nova;
    const float v = (static_cast<float>(y) - n.centre_y) * n.inverse_radius;
    const auto rays = static_cast<float>(n.rays);
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const float u = (static_cast<float>(static_cast<int32_t>(i)) - n.centre_x) * n.inverse_radius;
        const float d2 = u * u + v * v;
        const float d = std::sqrt(d2);
        const float rest = 1.0F - d;
        const float fall = (rest * rest) * rest;
        const float turn = (atan2_turn(v, u) + 0.5F) * rays;
        const int32_t sector = floor_to_int(turn);
        const float part = smooth(turn - static_cast<float>(sector));
        const int32_t first = sector >= n.rays ? sector - n.rays : sector;
        const int32_t second = first + 1 >= n.rays ? first + 1 - n.rays : first + 1;
        const float first_ray = unit(hash(static_cast<uint32_t>(first) + n.hash_of_seed));
        const float second_ray = unit(hash(static_cast<uint32_t>(second) + n.hash_of_seed));
        const float k = (second_ray - first_ray) * part + first_ray;
        const float core = 0.02F / (d2 + 0.02F);
        const float ray = ((k * k) * k) / (d * 3.0F + 0.25F);
        const float light = (core * 2.0F + ray) * fall * n.intensity;
        const float white = clamp(light - 1.0F, 0.0F, 1.0F);
        const bool in_reach = d2 < 1.0F;
        const auto lit = [&](uint8_t old, float colour) {
            const float share = clamp(((255.0F - colour) * white + colour) * light * unit_per_byte, 0.0F, 1.0F);
            const uint8_t screened =
                round_to_byte((255.0F - static_cast<float>(old)) * share + static_cast<float>(old));
            return in_reach ? screened : old;
        };
        r[i] = lit(r[i], n.red);
        g[i] = lit(g[i], n.green);
        b[i] = lit(b[i], n.blue);
    }
}

void add_streaks(const Streaks &streaks, int32_t y, uint8_t *r, uint8_t *g, uint8_t *b, size_t count) {
    const Streaks s = streaks;
    const auto row = static_cast<float>(y);
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        const auto x = static_cast<float>(static_cast<int32_t>(i));
        const float u = x * s.cosine + row * s.sine;
        const float v = (row * s.cosine - x * s.sine) * s.per_spacing;
        const int32_t lane = floor_to_int(v);
        const float across = v - static_cast<float>(lane);
        const uint32_t hash_of_lane = hash(static_cast<uint32_t>(lane) + s.hash_of_seed);
        const float w = u * s.per_length + unit(hash_of_lane);
        const int32_t cell = floor_to_int(w);
        const float along = w - static_cast<float>(cell);
        const uint32_t hash_of_cell = hash(static_cast<uint32_t>(cell) + hash_of_lane);
        const uint32_t form = hash(hash_of_cell);
        const auto byte_of_form = [form](int shift) {
            return static_cast<float>(static_cast<int32_t>((form >> shift) & 255U));
        };
        const float part = byte_of_form(0) * 0.0029296875F + 0.25F;
        const float start = (1.0F - part) * (byte_of_form(8) * 0.00390625F);
        const float bright = byte_of_form(16) * 0.00234375F + 0.4F;
        const float t = (along - start) / part;
        const float twice = across + across;
        const float beside = twice < 1.0F ? twice : 2.0F - twice;
        const float light = clamp((((t * t) * (1.0F - t)) * 6.75F) * smooth(beside) * bright * s.opacity, 0.0F, 1.0F);
        const bool in_streak = (unit(hash_of_cell) < s.density) & (t > 0) & (t < 1.0F);
        const auto lit = [&](uint8_t old, float colour) {
            const uint8_t mixed = round_to_byte((colour - static_cast<float>(old)) * light + static_cast<float>(old));
            return in_streak ? mixed : old;
        };
        r[i] = lit(r[i], s.red);
        g[i] = lit(g[i], s.green);
        b[i] = lit(b[i], s.blue);
    }
}
