#include "tavik/colour/colour_lanes.inl"

// Degrees modulo 360, as 0 .. 359.
inline int32_t on_circle(int32_t degrees) { return degrees >= 0 ? degrees % 360 : 359 - ~degrees % 360; }

inline void turn_pixel(const HueTurn &turn, uint8_t &r, uint8_t &g, uint8_t &b) {
    const auto unit = [](uint8_t byte) { return static_cast<float>(byte) * unit_per_byte; };
    float hue = 0.0F;
    float saturation = 0.0F;
    float value = 0.0F;
    rgb_to_hsv(unit(r), unit(g), unit(b), hue, saturation, value);
    const auto degrees = static_cast<float>(on_circle(tavik::truncate(hue + turn.shift)));
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;
    hsv_to_rgb(degrees, saturation * turn.saturation_scale, value * turn.value_scale, red, green, blue);
    r = low_byte(tavik::truncate(red * 255.0F));
    g = low_byte(tavik::truncate(green * 255.0F));
    b = low_byte(tavik::truncate(blue * 255.0F));
}

#if TAVIK_LEVEL >= TAVIK_SSE2

// Shifts up to this make whole degrees that single precision divides exactly by a reciprocal.
constexpr float largest_vector_shift = 1000000.0F;

// The same steps with selects for branches, for shifts up to the largest.
class HueTurnInLanes {
  public:
    explicit HueTurnInLanes(const HueTurn &hue_turn) : turn(hue_turn) {}

    Colour<Floats> operator()(Colour<Floats> bytes) const {
        const Floats r = bytes.r * unit_per_byte;
        const Floats g = bytes.g * unit_per_byte;
        const Floats b = bytes.b * unit_per_byte;
        const Floats largest = larger(r, larger(g, b));
        const Floats range = largest - smaller(r, smaller(g, b));
        const Floats saturation = largest == zero ? zero : range / largest;

        const auto from_green = g == largest;
        const auto from_red = r == largest;
        const Floats difference = from_red ? g - b : (from_green ? b - r : r - g);
        const Floats offset = if_so(~from_red, 4.0F - if_so(from_green, zero + 2.0F));
        const Floats degrees = (offset + difference / range) * 60.0F;
        const Floats hue = saturation == zero ? zero - 1.0F : degrees + if_so(degrees < zero, zero + 360.0F);

        const Floats sectors = on_circle(whole(hue + turn.shift)) * sector_per_degree;
        const Floats sector = whole(sectors);
        const Floats f = sectors - sector;
        const Floats s = saturation * turn.saturation_scale;
        const Floats v = largest * turn.value_scale;
        const Floats p = v * (1.0F - s);
        // q in odd sectors, t in even ones.
        const Floats ramp = v * (1.0F - (sector == 2.0F * whole(sector * 0.5F) ? 1.0F - f : f) * s);

        // By its distance from the middle of the sectors where it is least or most, a component is at one end, on
        // the ramp or at the other end.
        const auto component = [&](float middle, Floats near, Floats far) {
            const Floats distance = sector - middle;
            const Floats square = distance * distance;
            const Floats chosen = square < zero + 1.0F ? near : (square < zero + 4.0F ? ramp : far);
            return larger(zero, smaller(zero + 1.0F, chosen)) * 255.0F;
        };
        return {component(2.5F, p, v), component(1.5F, v, p), component(3.5F, v, p)};
    }

  private:
    // Both give b where one is NaN.
    static Floats larger(Floats a, Floats b) { return maximum_else_second(a, b); }
    static Floats smaller(Floats a, Floats b) { return minimum_else_second(a, b); }

    // The value where the condition holds, else 0. Cheaper than a choice between two values.
    static Floats if_so(Longs condition, Floats value) {
        return reinterpret_cast<Floats>(condition & reinterpret_cast<Longs>(value));
    }

    static Floats on_circle(Floats whole_degrees) {
        // Whole turns that make all degrees positive.
        constexpr float turns = 2800.0F * 360.0F;
        const Floats positive = whole_degrees + turns;
        return positive - 360.0F * whole(positive * reciprocal_of_turn);
    }

    static constexpr Floats zero = {};
    // Above 1/360, so that multiples of 360 do not fall below their quotient.
    static constexpr float reciprocal_of_turn = 0x1.6c16c4p-9F;
    const HueTurn &turn;
};

#endif

void turn_hue(const HueTurn &turn, uint8_t *r, uint8_t *g, uint8_t *b, size_t count) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    if (std::fabs(turn.shift) <= largest_vector_shift)
        i = map_colour_vectors({r, g, b}, {r, g, b}, count, HueTurnInLanes(turn));
#endif
    for (; i < count; ++i) turn_pixel(turn, r[i], g[i], b[i]);
}
