// Vectors of three components, real numbers of one type.
#pragma once

#include <cmath>

namespace tavik {

template <class Real> struct VectorOf {
    Real x, y, z;

    friend constexpr VectorOf operator+(VectorOf a, VectorOf b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend constexpr VectorOf operator-(VectorOf a, VectorOf b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend constexpr VectorOf operator*(VectorOf v, Real scale) { return {v.x * scale, v.y * scale, v.z * scale}; }
};

using Vector = VectorOf<float>;

template <class Real> constexpr VectorOf<Real> load_vector(const Real *from) { return {from[0], from[1], from[2]}; }

template <class Real> constexpr void store_vector(VectorOf<Real> v, Real *to) {
    to[0] = v.x;
    to[1] = v.y;
    to[2] = v.z;
}

template <class Real> constexpr Real dot(VectorOf<Real> a, VectorOf<Real> b) {
    return (a.x * b.x + a.y * b.y) + a.z * b.z;
}

template <class Real> constexpr VectorOf<Real> cross(VectorOf<Real> a, VectorOf<Real> b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

template <class Real> Real length(VectorOf<Real> v) { return std::sqrt(dot(v, v)); }

} // namespace tavik
