/* lighting: vectors, triangle normals and the light of a point lamp, one value per call.
 *
 * A vector is three consecutive floats x, y and z, passed by pointer. All are pure functions of their arguments, in
 * single precision from left to right as written unless double is said. Nothing is checked: a light in its own
 * point, a half vector of length 0 or NaN give the infinities and NaN of the arithmetic. Any number of threads may
 * call them at once. */
#ifndef TAVIK_LIGHTING_LIGHTING_H
#define TAVIK_LIGHTING_LIGHTING_H

#include "tavik/export.h"

/* Returns √((x·x + y·y) + z·z). */
TAVIK_EXPORT(float) VectorLength(const float *v);

/* Scales a vector in place to length 1, by 1 / VectorLength. A vector of length 0 stays as it is, one so short that
 * its squares underflow too. */
TAVIK_EXPORT(void) Normalize(float *v);

/* Returns (a.y·b.y + a.x·b.x) + a.z·b.z, summed in double precision and rounded once. */
TAVIK_EXPORT(float) DotProduct(const float *a, const float *b);

/* Writes the vector a × b: x = a.y·b.z − a.z·b.y, y = a.z·b.x − a.x·b.z, z = a.x·b.y − a.y·b.x. out may be a or b.
 * Returns out. */
TAVIK_EXPORT(float *) CrossProduct(float *out, const float *a, const float *b);

/* Writes the normal of a triangle, (p1 − p0) × (p2 − p1): the second edge starts at p1. Its length is twice the
 * triangle's area. Returns out. */
TAVIK_EXPORT(float *) CalculateNormal(float *out, const float *p0, const float *p1, const float *p2);

/* Returns the approximate distance of (x0, y0, z0) and (x1, y1, z1), up to 6% too large: the square root of
 * ((x1 − x0)² + (y1 − y0)²) + (z1 − z0)² by fastsqrt. The arguments come in pairs of an axis. */
TAVIK_EXPORT(float) Distance_3d(float x0, float x1, float y0, float y1, float z0, float z1);

/* Returns intensity / t² with t = distance / scale, or 0 where t² is 0. */
TAVIK_EXPORT(float) InverseSquareLight(float distance, float intensity, float scale);

/* The light of a lamp on a point of a surface (Blinn's half-vector model with inverse-square falloff).
 *   out      6 floats: diffuse red, green, blue, specular red, green, blue
 *   light    12 floats: position x, y, z; diffuse red, green, blue; diffuse intensity; specular red, green, blue;
 *            specular intensity; shininess
 *   point, view, normal   vectors; the view points to the eye; neither it nor the normal is scaled to length 1
 * d is the distance to the lamp, L the unit vector to it, and fall = 1 / (d·d).
 *   diffuse = ((colour × kd) × intensity) × fall         kd = L·normal, held to 0 .. 1
 *   specular = ((colour × s) × intensity) × fall         s = ks to the power of shininess, ks = H·normal held to
 *                                                        0 .. 1, H = view + L scaled to length 1; 0 to the power 0 is 1
 * Writes nothing when the diffuse intensity is not above 0, whatever the specular one. Returns out. */
TAVIK_EXPORT(float *)
GetPointLight(float *out, const float *light, const float *point, const float *view, const float *normal);

#endif
