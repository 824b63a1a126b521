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

// Iterates as many points as a vector holds, until the last has left.
template <class Real>
inline void escape_together(const Real *re, Real im, Real bound, int32_t limit, Escape<Real> *escapes) {
    using Lanes = typename Vectors<Real>::Lanes;
    using Masks = typename Vectors<Real>::Masks;
    constexpr size_t lanes = vector_bytes / sizeof(Real);
    Lanes constant;
    std::memcpy(&constant, re, sizeof constant);
    Lanes zr = {};
    Lanes zi = {};
    Lanes square = {};
    Masks iterations = {};
    Masks inside = Masks{} - 1;
    for (int32_t n = 0; n < limit; ++n) {
        const Lanes r2 = zr * zr;
        const Lanes j2 = zi * zi;
        const Lanes now = r2 + j2;
        const Masks leaves = inside & (now > bound);
        square = leaves ? now : square;
        inside &= ~leaves;
        iterations -= inside;
        zi = (zr + zr) * zi + im;
        zr = (r2 - j2) + constant;
        // Looking more often costs more than the iterations that it saves.
        if (n % 8 != 7) continue;
        bool any = false;
        for (size_t i = 0; i < lanes; ++i) any = any || inside[i] != 0;
        if (!any) break;
    }
    for (size_t i = 0; i < lanes; ++i) escapes[i] = {square[i], static_cast<int32_t>(iterations[i])};
}

#endif

template <class Real>
inline void escape_row(const Real *re, Real im, Real bound, int32_t limit, Escape<Real> *escapes, size_t count) {
    size_t done = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    constexpr size_t lanes = vector_bytes / sizeof(Real);
    for (; count - done >= lanes; done += lanes) escape_together<Real>(re + done, im, bound, limit, escapes + done);
#endif
    for (; done < count; ++done) escape_one(re[done], im, bound, limit, escapes[done]);
}

void escape_doubles(const double *re, double im, int32_t limit, Escape<double> *escapes, size_t count) {
    escape_row<double>(re, im, 65536.0, limit, escapes, count);
}

void escape_floats(const float *re, float im, int32_t limit, Escape<float> *escapes, size_t count) {
    escape_row<float>(re, im, 4.0F, limit, escapes, count);
}
