// A row's pixels are painted in float lanes, one vector at a time; the scalar level, and planes narrower than a vector,
// take them one by one. The formulas serve both.

using tavik::fast_root;

#include "tavik/frame/float_lanes.inl"

#if TAVIK_LEVEL >= TAVIK_SSE2

inline Floats fast_root(Floats number) {
    using Bits = uint32_t __attribute__((vector_size(vector_bytes)));
    const auto shifted = reinterpret_cast<Longs>(reinterpret_cast<Bits>(number) - 0x800000U) >> 1;
    return reinterpret_cast<Floats>(reinterpret_cast<Bits>(shifted) + 0x20000000U);
}

#endif

// What is no number comes out low.
template <class Float> Float clamp_nan_low(Float value, float low, float high) {
    const Float lowest = low - Float{};
    const Float highest = high - Float{};
    const Float raised = select(value > lowest, value, lowest);
    return select(raised < highest, raised, highest);
}

// Rules. at(distance, index) gives the function of an old sample and the disc's colour that makes the new sample, for
// pixels at this distance from the centre and from this index on. A rule that leaves pixels outside the disc as they
// are, to the bit, is confined to it.

template <bool translucent, bool is_confined> struct Replace {
    static constexpr bool confined = is_confined;

    float radius;
    float feather;
    float outer;
    float per_feather;
    float opacity;

    explicit Replace(const Disc &disc)
        : radius(disc.radius),
          feather(disc.feather),
          outer(disc.radius + disc.feather),
          per_feather(1.0F / disc.feather),
          opacity(disc.opacity) {}

    template <class Float> auto at(Float distance, size_t /*index*/) const {
        const auto solid = distance <= radius;
        const auto touched = distance < outer;
        const Float fall = (feather - (distance - radius)) * per_feather;
        return [=, *this](Float old, float colour) {
            const Float faded = select(touched, old + (colour - old) * fall, old);
            const Float value = select(solid, colour - Float{}, faded);
            return translucent ? (value - old) * opacity + old : value;
        };
    }
};

// The weight of the rules that go on rising inside the disc.
struct RisingWeight {
    float radius;
    float feather;
    float per_feather;
    float opacity;

    explicit RisingWeight(const Disc &disc)
        : radius(disc.radius), feather(disc.feather), per_feather(1.0F / disc.feather), opacity(disc.opacity) {}

    template <class Float> Float operator()(Float distance) const {
        return clamp_nan_low((feather - (distance - radius)) * per_feather * opacity, 0.0F, 1.0F);
    }
};

struct Add {
    static constexpr bool confined = true;

    RisingWeight weight_at;

    explicit Add(const Disc &disc) : weight_at(disc) {}

    template <class Float> auto at(Float distance, size_t /*index*/) const {
        return [weight = weight_at(distance)](Float old, float colour) {
            return clamp_nan_low(old + weight * colour, 0.0F, 255.0F);
        };
    }
};

struct Multiply {
    static constexpr bool confined = true;

    RisingWeight weight_at;

    explicit Multiply(const Disc &disc) : weight_at(disc) {}

    template <class Float> auto at(Float distance, size_t /*index*/) const {
        return [weight = weight_at(distance)](Float old, float colour) {
            const Float factor = (colour - 255.0F) * weight + 255.0F;
            return clamp_nan_low(factor * old * unit_per_byte, 0.0F, 255.0F);
        };
    }
};

struct InFront {
    static constexpr bool confined = true;

    float radius;
    float outer;
    float opacity;
    float depth;
    const float *depths;

    InFront(const Disc &disc, float disc_depth, const float *depth_plane)
        : radius(disc.radius),
          outer(disc.radius + disc.feather),
          opacity(disc.opacity),
          depth(disc_depth),
          depths(depth_plane) {}

    template <class Float> auto at(Float distance, size_t index) const {
        const auto stored = read_samples<Float>(depths + index);
        const auto touched = (distance < outer) & (depth < stored);
        const Float fall = clamp_nan_low((distance - radius) / (outer - radius), 0.0F, 1.0F);
        const Float in_front = clamp_nan_low((stored - depth) / ((depth + 10.0F) - depth), 0.0F, 1.0F);
        const Float weight = opacity * (1.0F - fall) * in_front;
        return [=](Float old, float colour) { return select(touched, (colour - old) * weight + old, old); };
    }
};

template <class Float, class Rule, class Sample, class Choice>
void paint_pixels(const Rule &rule, const Disc &disc, float dy_squared, const Canvas<Sample> &canvas, size_t row,
                  int32_t first, Choice inside) {
    const size_t index = row + static_cast<size_t>(first);
    const Float dx = columns_from<Float>(first) - disc.cx;
    const auto mix = rule.at(fast_root(dx * dx + dy_squared), index);
    for (size_t channel = 0; channel < 3; ++channel) {
        Sample *samples = canvas.planes[channel] + index;
        const auto old = read_samples<Float>(samples);
        write_samples(samples, select(inside, mix(old, disc.colour[channel]), old));
    }
}

struct Span {
    int32_t begin;
    int32_t end;
};

// The columns of a row in which the disc is, with a little to spare for all rounding.
inline Span chord(const Disc &disc, const Box &box, float dy_squared) {
    const float reach = (disc.radius + disc.feather) * 1.00001F;
    const float half_squared = reach * reach - dy_squared;
    if (half_squared < 0.0F) return {0, 0};
    const float half = std::sqrt(half_squared) + 0.0625F;
    Span span = {box.left, box.right};
    if (disc.cx - half > static_cast<float>(span.begin)) span.begin = tavik::truncate(disc.cx - half);
    if (disc.cx + half < static_cast<float>(span.end)) span.end = tavik::truncate(disc.cx + half) + 1;
    return span;
}

template <class Rule, class Sample>
void paint(const Rule &rule, const Disc &disc, const Box &box, const Canvas<Sample> &canvas) {
    // A chord does not pay in a box of one vector, and pixels further right are too coarse for the spare. A negative
    // feather has its rim inside the radius, and one of −0 rises outside it.
    const bool by_chords = Rule::confined && box.right - box.left > lanes && box.right < 1 << 18 &&
                           disc.feather >= 0.0F && !std::signbit(disc.feather) && disc.radius >= 0.0F;
    for (int32_t y = box.top; y < box.bottom; ++y) {
        const float dy = static_cast<float>(y) - disc.cy;
        const float dy_squared = dy * dy;
        const size_t row = canvas.row(y);
        const Span span = by_chords ? chord(disc, box, dy_squared) : Span{box.left, box.right};
        int32_t x = span.begin;
#if TAVIK_LEVEL >= TAVIK_SSE2
        if (canvas.x_max - canvas.left >= lanes) {
            for (; x < span.end; x += lanes) {
                // The last vector may begin before x, so that it ends inside the row.
                const int32_t first = std::min(x, canvas.x_max - lanes);
                const Longs columns = lane_numbers() + first;
                paint_pixels<Floats>(rule, disc, dy_squared, canvas, row, first, (columns >= x) & (columns < span.end));
            }
        }
#endif
        for (; x < span.end; ++x) paint_pixels<float>(rule, disc, dy_squared, canvas, row, x, true);
    }
}

template <class Sample> void replace(const Disc &disc, const Box &box, const Canvas<Sample> &canvas) {
    // The opacity's rounding turns −0 into 0 and infinities into no numbers, outside the disc too.
    constexpr bool is_byte = std::is_same_v<Sample, uint8_t>;
    if (disc.opacity < 1.0F)
        paint(Replace<true, is_byte>(disc), disc, box, canvas);
    else
        paint(Replace<false, true>(disc), disc, box, canvas);
}

void add(const Disc &disc, const Box &box, const Canvas<uint8_t> &canvas) { paint(Add(disc), disc, box, canvas); }

void multiply(const Disc &disc, const Box &box, const Canvas<uint8_t> &canvas) {
    paint(Multiply(disc), disc, box, canvas);
}

void replace_in_front(const Disc &disc, const Box &box, const Canvas<float> &canvas, float depth, const float *depths) {
    paint(InFront(disc, depth, depths), disc, box, canvas);
}

// Between pixels of three bytes, blue, green, red, and planes.

void split_pixels(const uint8_t *pixels, uint8_t *r, uint8_t *g, uint8_t *b, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        b[i] = pixels[3 * i];
        g[i] = pixels[3 * i + 1];
        r[i] = pixels[3 * i + 2];
    }
}

void join_pixels(const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *pixels, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t i = 0; i < count; ++i) {
        pixels[3 * i] = b[i];
        pixels[3 * i + 1] = g[i];
        pixels[3 * i + 2] = r[i];
    }
}
