// Functions of colours over three planes, in float lanes; include it inside a rows file. A generic function serves
// single colours and vectors of them alike.

#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

template <class Lane> struct Colour {
    Lane r;
    Lane g;
    Lane b;
};

struct ColourSources {
    const uint8_t *r;
    const uint8_t *g;
    const uint8_t *b;
};

struct ColourDestinations {
    uint8_t *r;
    uint8_t *g;
    uint8_t *b;
};

#if TAVIK_LEVEL >= TAVIK_SSE2

// Each float without its fraction.
inline Floats whole(Floats value) { return to_floats(truncate(value)); }

// map_colours for as many whole vectors as there are; returns the elements done.
template <class Function>
size_t map_colour_vectors(ColourSources src, ColourDestinations dst, size_t count, const Function &function) {
    size_t i = 0;
    for (; i + vector_bytes <= count; i += vector_bytes) {
        FloatQuarters r(load(src.r + i));
        FloatQuarters g(load(src.g + i));
        FloatQuarters b(load(src.b + i));
        for (int quarter = 0; quarter < 4; ++quarter) {
            const Colour<Floats> result =
                function(Colour<Floats>{r.quarters[quarter], g.quarters[quarter], b.quarters[quarter]});
            r.quarters[quarter] = result.r;
            g.quarters[quarter] = result.g;
            b.quarters[quarter] = result.b;
        }
        store(dst.r + i, r.low_bytes());
        store(dst.g + i, g.low_bytes());
        store(dst.b + i, b.low_bytes());
    }
    return i;
}

#endif

// Stores the low bytes of the truncated function of each colour of bytes.
template <class Function>
void map_colours(ColourSources src, ColourDestinations dst, size_t count, const Function &function) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    i = map_colour_vectors(src, dst, count, function);
#endif
    const auto to_byte = [](float value) { return low_byte(tavik::truncate(value)); };
    for (; i < count; ++i) {
        const Colour<float> result = function(
            Colour<float>{static_cast<float>(src.r[i]), static_cast<float>(src.g[i]), static_cast<float>(src.b[i])});
        dst.r[i] = to_byte(result.r);
        dst.g[i] = to_byte(result.g);
        dst.b[i] = to_byte(result.b);
    }
}
