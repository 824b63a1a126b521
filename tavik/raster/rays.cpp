#include <cmath>

#include "tavik/frame/vector.h"
#include "tavik/raster/raster.h"

using namespace tavik;

namespace {

// What of a triangle a ray may hit.
template <class Real> struct Acceptance {
    Real smallest_determinant; // not included
    bool both_sides;
};

template <class Real> struct Hit { Real distance, u, v; };

template <class Real>
bool intersect(const Real *v0, const Real *v1, const Real *v2, const Real *origin, const Real *direction,
               Acceptance<Real> acceptance, Hit<Real> &hit) {
    const VectorOf<Real> corner = load_vector(v0);
    const VectorOf<Real> ray = load_vector(direction);
    const VectorOf<Real> edge1 = load_vector(v1) - corner;
    const VectorOf<Real> edge2 = load_vector(v2) - corner;
    const VectorOf<Real> p = cross(ray, edge2);
    const Real determinant = dot(edge1, p);
    const Real magnitude = acceptance.both_sides && determinant < 0 ? -determinant : determinant;
    if (!(magnitude > acceptance.smallest_determinant)) return false;
    const Real inverse = 1 / determinant;
    const VectorOf<Real> s = load_vector(origin) - corner;
    const Real u = dot(s, p) * inverse;
    if (!(u >= 0 && u <= 1)) return false;
    const VectorOf<Real> q = cross(s, edge1);
    const Real v = dot(ray, q) * inverse;
    if (!(v >= 0 && u + v <= 1)) return false;
    hit = {dot(edge2, q) * inverse, u, v};
    return true;
}

template <class Real>
int32_t distance_to_triangle(const Real *v0, const Real *v1, const Real *v2, const Real *origin, const Real *direction,
                             Real epsilon, Real *distance) {
    Hit<Real> hit;
    if (!intersect(v0, v1, v2, origin, direction, {epsilon, true}, hit) || !(hit.distance > epsilon)) return 0;
    *distance = hit.distance;
    return 1;
}

} // namespace

TAVIK_EXPORT(int32_t)
triangle_intersection(const float *v0, const float *v1, const float *v2, const float *origin, const float *direction,
                      float *distance) {
    return distance_to_triangle(v0, v1, v2, origin, direction, 1e-6F, distance);
}

TAVIK_EXPORT(int32_t)
triangle_intersection_d(const double *v0, const double *v1, const double *v2, const double *origin,
                        const double *direction, double *distance) {
    return distance_to_triangle(v0, v1, v2, origin, direction, 1e-12, distance);
}

TAVIK_EXPORT(int32_t)
xRayTriangleIntersect(const float *origin, const float *direction, const float *v0, const float *v1, const float *v2,
                      int32_t cull, float *hit) {
    Hit<float> found;
    if (!intersect(v0, v1, v2, origin, direction, {0.0F, cull == 0}, found) || !(found.distance >= 0)) return 0;
    hit[0] = found.distance;
    hit[1] = found.u;
    hit[2] = found.v;
    return 1;
}

TAVIK_EXPORT(int32_t)
rayBoxIntersect(const float *origin, const float *direction, const float *box_min, const float *box_max, float *nearest,
                float *farthest) {
    float enter = 0;
    float leave = 3.4028235e38F;
    for (int axis = 0; axis < 3; ++axis) {
        if (direction[axis] == 0) {
            if (origin[axis] < box_min[axis] || origin[axis] > box_max[axis]) return 0;
            continue;
        }
        const float inverse = 1.0F / direction[axis];
        const float a = (box_min[axis] - origin[axis]) * inverse;
        const float b = (box_max[axis] - origin[axis]) * inverse;
        const float first = a < b ? a : b;
        const float last = a < b ? b : a;
        enter = first > enter ? first : enter;
        leave = last < leave ? last : leave;
    }
    if (!(enter <= leave)) return 0;
    *nearest = enter;
    *farthest = leave;
    return 1;
}

TAVIK_EXPORT(int32_t)
intersectRaySphere(const float *origin, const float *direction, const float *centre, float radius, float *nearest,
                   float *farthest) {
    const Vector from_centre = load_vector(origin) - load_vector(centre);
    const Vector ray = load_vector(direction);
    const float a = dot(ray, ray);
    const float b = dot(from_centre, ray);
    const float c = dot(from_centre, from_centre) - radius * radius;
    const float discriminant = b * b - a * c;
    if (!(discriminant >= 0 && a > 0)) return 0;
    const float root = std::sqrt(discriminant);
    // The sum whose terms have one sign, which loses no digits.
    const float q = b > 0 ? -b - root : root - b;
    const float t0 = q / a;
    const float t1 = q == 0 ? 0.0F : c / q;
    const float first = t0 > t1 ? t1 : t0;
    const float last = t0 > t1 ? t0 : t1;
    if (!(last >= 0)) return 0;
    *nearest = first;
    *farthest = last;
    return 1;
}

TAVIK_EXPORT(int32_t)
lineIntersection(float ax, float ay, float bx, float by, float cx, float cy, float dx, float dy, float *x, float *y) {
    const float rx = bx - ax;
    const float ry = by - ay;
    const float sx = dx - cx;
    const float sy = dy - cy;
    const float qx = cx - ax;
    const float qy = cy - ay;
    const float determinant = rx * sy - ry * sx;
    if (determinant == 0) return 0;
    const float t = (qx * sy - qy * sx) / determinant;
    const float u = (qx * ry - qy * rx) / determinant;
    *x = rx * t + ax;
    *y = ry * t + ay;
    return t >= 0 && t <= 1 && u >= 0 && u <= 1 ? 1 : 2;
}
