#include <bit>
#include <cmath>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/vector.h"
#include "tavik/lighting/lighting.h"

using namespace tavik;

TAVIK_EXPORT(float) VectorLength(const float *v) { return length(load_vector(v)); }

TAVIK_EXPORT(void) Normalize(float *v) {
    const Vector vector = load_vector(v);
    const float long_as = length(vector);
    if (long_as == 0) return;
    store_vector(vector * (1.0F / long_as), v);
}

TAVIK_EXPORT(float) DotProduct(const float *a, const float *b) {
    const auto product = [&](int axis) { return static_cast<double>(a[axis]) * static_cast<double>(b[axis]); };
    return static_cast<float>((product(1) + product(0)) + product(2));
}

TAVIK_EXPORT(float *) CrossProduct(float *out, const float *a, const float *b) {
    store_vector(cross(load_vector(a), load_vector(b)), out);
    return out;
}

TAVIK_EXPORT(float *) CalculateNormal(float *out, const float *p0, const float *p1, const float *p2) {
    const Vector middle = load_vector(p1);
    store_vector(cross(middle - load_vector(p0), load_vector(p2) - middle), out);
    return out;
}

TAVIK_EXPORT(float) Distance_3d(float x0, float x1, float y0, float y1, float z0, float z1) {
    const Vector apart = Vector{x1, y1, z1} - Vector{x0, y0, z0};
    return fast_root(dot(apart, apart));
}

TAVIK_EXPORT(float) InverseSquareLight(float distance, float intensity, float scale) {
    const float t = distance / scale;
    const float square = t * t;
    return square == 0 ? 0.0F : intensity / square;
}
