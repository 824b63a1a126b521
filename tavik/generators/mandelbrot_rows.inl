#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

// Iterates one point.
template <class Real> inline void escape_one(Real re, Real im, Real bound, int32_t limit, Escape<Real> &escape) {
    Real zr = 0;
    Real zi = 0;
    for (escape.iterations = 0; escape.iterations < limit; ++escape.iterations) {
        const Real r2 = zr * zr;
        const Real j2 = zi * zi;
        escape.square = r2 + j2;
        if (escape.square > bound) return;
        zi = (zr + zr) * zi + im;
        zr = (r2 - j2) + re;
    }
}

#if TAVIK_LEVEL >= TAVIK_SSE2

template <class Real> struct Vectors;
template <> struct Vectors<double> {
    using Lanes = double __attribute__((vector_size(vector_bytes)));
    using Masks = int64_t __attribute__((vector_size(vector_bytes)));
};
template <> struct Vectors<float> {
    using Lanes = float __attribute__((vector_size(vector_bytes)));
    using Masks = int32_t __attribute__((vector_size(vector_bytes)));
};

// Each iteration of a point waits for the one before; so many vectors of points fill the wait, as registers allow.
constexpr size_t vectors_at_once = TAVIK_LEVEL >= TAVIK_AVX512 ? 4 : 2;
template <class Real> constexpr size_t points_at_once = vectors_at_once *(vector_bytes / sizeof(Real));

// Iterates a group of points until the last has left.
template <class Real>
inline void escape_together(const Real *re, Real im, Real bound, int32_t limit, Escape<Real> *escapes) {
    using Lanes = typename Vectors<Real>::Lanes;
    using Masks = typename Vectors<Real>::Masks;
    constexpr size_t lanes = vector_bytes / sizeof(Real);
    Lanes constant[vectors_at_once];
    std::memcpy(constant, re, sizeof constant);
    Lanes zr[vectors_at_once] = {};
    Lanes zi[vectors_at_once] = {};
    Lanes square[vectors_at_once] = {};
    Masks iterations[vectors_at_once] = {};
    Masks inside[vectors_at_once];
    for (Masks &mask : inside) mask = Masks{} - 1;
    for (int32_t n = 0; n < limit; ++n) {
        Masks any_inside = {};
        for (size_t v = 0; v < vectors_at_once; ++v) {
            const Lanes r2 = zr[v] * zr[v];
            const Lanes j2 = zi[v] * zi[v];
            const Lanes now = r2 + j2;
            const Masks leaves = inside[v] & (now > bound);
            square[v] = leaves ? now : square[v];
            inside[v] &= ~leaves;
            iterations[v] -= inside[v];
            any_inside |= inside[v];
            zi[v] = (zr[v] + zr[v]) * zi[v] + im;
            zr[v] = (r2 - j2) + constant[v];
        }
        // Looking more often costs more than the iterations that it saves.
        if (n % 8 != 7) continue;
        bool any = false;
        for (size_t i = 0; i < lanes; ++i) any = any || any_inside[i] != 0;
        if (!any) break;
    }
    for (size_t i = 0; i < points_at_once<Real>; ++i)
        escapes[i] = {square[i / lanes][i % lanes], static_cast<int32_t>(iterations[i / lanes][i % lanes])};
}

#endif

template <class Real>
inline void escape_row(const Real *re, Real im, Real bound, int32_t limit, Escape<Real> *escapes, size_t count) {
    size_t done = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; count - done >= points_at_once<Real>; done += points_at_once<Real>)
        escape_together<Real>(re + done, im, bound, limit, escapes + done);
#endif
    for (; done < count; ++done) escape_one(re[done], im, bound, limit, escapes[done]);
}

void escape_doubles(const double *re, double im, int32_t limit, Escape<double> *escapes, size_t count) {
    escape_row<double>(re, im, 65536.0, limit, escapes, count);
}

void escape_floats(const float *re, float im, int32_t limit, Escape<float> *escapes, size_t count) {
    escape_row<float>(re, im, 4.0F, limit, escapes, count);
}

// Places in the tables that are continuous over the escapes' whole numbers of iterations.
void find_smooth_places(const float *squares, const int32_t *iterations, float colour_step, int32_t *indices,
                        float *parts, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const float beyond = log2_of_normal(log2_of_normal(squares[i]) * 0.0625F);
        const float place = (static_cast<float>(iterations[i]) - beyond) * colour_step;
        const float held = value_or_zero(place > 0, place);
        const float wrapped = held - 256.0F * static_cast<float>(floor_to_int(held * 0.00390625F));
        indices[i] = tavik::truncate(wrapped);
        parts[i] = wrapped - static_cast<float>(indices[i]);
    }
}
