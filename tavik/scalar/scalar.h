/* scalar: clamping, interpolation, fast approximations and easing, one value per call.
 *
 * All are pure functions of their arguments. Float formulas are evaluated in single precision from left to right
 * as written, with single-precision constants, unless double is said. The approximations are exact in their
 * errors: every machine returns the same bits. Nothing is checked; NaN passes through, except where comparisons or the
 * bits of a number decide: of NaN fastsqrt makes some number. */
#ifndef TAVIK_SCALAR_SCALAR_H
#define TAVIK_SCALAR_SCALAR_H

#include "tavik/export.h"

/* Returns lo if v < lo, otherwise the smaller of v and hi; the low test wins when lo > hi. */
TAVIK_EXPORT(int32_t) Clamp(int32_t v, int32_t lo, int32_t hi);

/* Returns (b − a)·t + a. */
TAVIK_EXPORT(float) LinearInterpolate(float a, float b, float t);

/* Returns the cubic a0·mu³ + a1·mu² + a2·mu + y1 with a0 = y3 − y2 − y0 + y1, a1 = y0 − y1 − a0, a2 = y2 − y0: y1 at
 * mu = 0, y2 at mu = 1. Evaluated as (a0·mu + a1)·mu·mu + a2·mu + y1. */
TAVIK_EXPORT(float) CubicInterpolate(float y0, float y1, float y2, float y3, float mu);

/* Returns the Catmull-Rom spline between y1 (mu = 0) and y2 (mu = 1), evaluated as CubicInterpolate is with
 * a0 = −0.5·y0 + 1.5·y1 − 1.5·y2 + 0.5·y3, a1 = y0 − 2.5·y1 + 2·y2 − 0.5·y3, a2 = 0.5·y2 − 0.5·y0. */
TAVIK_EXPORT(float) CatmulInterpolate(float y0, float y1, float y2, float y3, float mu);

/* Returns √(1 − t·t), the quarter circle; NaN for |t| > 1. */
TAVIK_EXPORT(float) ArcInterpolate(float t);

/* Returns 0 if x < edge0, 1 if x ≥ edge1, otherwise (3 − 2u)·u·u of u = (x − edge0)/(edge1 − edge0). The tests
 * come in this order, so equal edges never divide by zero; a NaN x gives NaN. */
TAVIK_EXPORT(float) smoothstep(float edge0, float edge1, float x);

/* Returns about 1/√x, within 0.2%: the bits 0x5F3759D5 − (bits of x >> 1) as a first guess y, then one Newton
 * step y·(1.5 − 0.5·x·y·y). */
TAVIK_EXPORT(float) InvSqrt(float x);

/* Returns about √x, up to 6% high, exact at even powers of two: ((bits of x − 0x00800000) >> 1) + 0x20000000 as
 * a float. */
TAVIK_EXPORT(float) fastsqrt(float x);

/* Returns the arc cosine of x as the C runtime computes it in single precision. */
TAVIK_EXPORT(float) fast_acos(float x);

/* Returns the angle of (x, y) in radians, −π .. π, in double precision. */
TAVIK_EXPORT(double) arctan2(double y, double x);

/* Returns about sin(x), within 0.057, by a parabola over each half period: y = x/π, t = y less the nearest even
 * integer, 4·(t − t·|t|). For |x| up to 2^23·π. */
TAVIK_EXPORT(float) sine_x(float x);

/* Returns about cos(x), within 0.057, by the same parabola: y = (x + π/2)/2π + 0.5, k = trunc(y), one less when y
 * is negative, z = (y − k)·2π − π, z·4/π − z·|z|·4/π². */
TAVIK_EXPORT(float) cosine_x(float x);

/* Returns the largest whole number not above x. */
TAVIK_EXPORT(float) xfloor(float x);

/* Returns the smallest whole number not below x, as a double. */
TAVIK_EXPORT(double) xceil(float x);

/* Returns the remainder of a / b with the sign of a. b = 0 is a divide fault. */
TAVIK_EXPORT(int32_t) modulo(int32_t a, int32_t b);

/* Returns a modulo b, folded into 0 .. b − 1 for negative a too. For a < 0 it is computed as
 * b − (−a − 1) % b − 1 and clamped to 0 .. b − 1 in single precision, which rounds above 2^24. b = 0 is a divide
 * fault. */
TAVIK_EXPORT(int32_t) NewMod(int32_t a, int32_t b);

/* Returns the easing curve of the given number at t, computed in double precision; any other number returns t.
 * Curves go from 0 at t = 0 to 1 at t = 1, except 17 and 18, which end at 0.99609375 and 0.998046875. With
 * u = t − 1:
 *    1  sin(1.5707963·t), decelerating        16  (2^(8t) − 1)/255
 *    2  sin(1.5707963·u) + 1, accelerating    17  1 − 2^(−8t)
 *    3  (sin(3.1415926·(t − 0.5)) + 1)/2      18  t < 0.5: (2^(16t) − 1)/510, else 1 − 2^(−16(t − 0.5))/2
 *    4  t²                                    19  1 − √(1 − t)
 *    5  (2 − t)·t                             20  √t
 *    6  t < 0.5: 2t², else (4 − 2t)·t − 1     21  t < 0.5: (1 − √(1 − 2t))/2, else (√(2t − 1) + 1)/2
 *    7  t³                                    22  (2.70158·t − 1.70158)·t²
 *    8  u³ + 1                                23  (2.70158·u + 1.70158)·u² + 1
 *    9  t < 0.5: 4t³, else u·(2t − 2)² + 1    24  t < 0.5: 2t²·(7t − 2.5), else 2u²·(7u + 2.5) + 1
 *   10  t⁴                                    25  sin(a·t)·t⁴
 *   11  1 − u⁴                                26  1 − cos(a·t)·u⁴
 *   12  t < 0.5: 8t⁴, else 1 − 8u⁴            27  t < 0.45: 8t⁴·sin(2a·t), t < 0.55: 0.5 + 0.75·sin(4π·t),
 *   13  t⁵                                        else 1 − 8u⁴·sin(2a·t)
 *   14  u⁵ + 1                                28  |sin(b·t)|·2^(6u)
 *   15  t < 0.5: 16t⁵, else 16u⁵ + 1          29  1 − |cos(b·t)|·2^(−6t)
 *                                             30  s = |sin(2b·t)|; t < 0.5: 8s·2^(8u), else 1 − 8s·2^(−8t)
 * a = 4.5π and b = 3.5π, with π taken as 3.1415926545. 19 and 20 take t where a circle takes t². */
TAVIK_EXPORT(float) xEase(float t, int32_t curve);

#endif
