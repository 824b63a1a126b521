/* generators: noise, gradients and textures.
 *
 * Pixel (x, y) has index y × width + x. Floats are single precision, rounded after each operation, and expressions are
 * evaluated from left to right; trunc goes toward zero to a 32-bit integer, and gives −2147483648 for what none
 * holds. Random numbers are those of the thread that draws them, 0 .. 32767 (see seed_rand in frame.h). */
#ifndef TAVIK_GENERATORS_GENERATORS_H
#define TAVIK_GENERATORS_GENERATORS_H

#include "tavik/export.h"

/* --- Noise: functions of a point, pure and serial, and one that fills a plane --- */

/* Returns a hash of n, −1 .. 1: with m = n XOR n·2^13 and r = the low 31 bits of
 * m·(m·m·15731 + 789221) + 1376312589, in 32-bit integers that wrap around, 1 − r·2^−30.
 * In 32-bit Windows code n comes in the register ecx (fastcall), the only export whose argument is not on the stack. */
TAVIK_REGISTER_EXPORT(float) IntNoise(int32_t n);

/* Returns fractal value noise, about −1 .. 1: the sum for k = 1 .. octaves of 2^−k × noise(2^k·x, 2^k·y); 0 if octaves
 * is not positive.
 * noise(x, y) lies between four hashes: with ix = trunc(x), iy = trunc(y), which leave negative fractions of negative
 * positions, IntNoise of the products ix·iy, (ix + 1)·iy, ix·(iy + 1) and (ix + 1)·(iy + 1), weighted by
 * (1 − cos(π·fraction)) / 2 along each axis. The cosine is a parabola's, 0.06 off at most. The field is the same under
 * an exchange of x and y, and all corners with a coordinate of 0 have one value. */
TAVIK_EXPORT(float) FastPerlinNoise_2D(float x, float y, int32_t octaves);

/* Fills a channel plane with fractal OpenSimplex noise (counts). Parallel by rows.
 * Draws one random number on the calling thread, whatever the size, and seeds the noise's permutation with it. Then, in
 * double precision, with the sum for k = 1 .. octaves of 2^(1−k) × noise(x·k/period, y·k/period), a sample is
 * (sum + 1) × 127, clamped to 0 .. 255 and truncated. The octaves' frequencies are k, not powers of two. noise is
 * two-dimensional OpenSimplex noise in its first form.
 *   period    pixels per lattice step of the first octave; 0 leaves no coordinate finite and gives 127 everywhere
 *   octaves   0 or fewer give 127 everywhere
 *   dst       written whole */
TAVIK_EXPORT(void) xOpenSimplex(int32_t width, int32_t height, int32_t period, int32_t octaves, uint8_t *dst);

/* Returns classic Perlin noise of a point in space as GLM's glm::perlin has it, about −1 .. 1. */
TAVIK_EXPORT(float) glm_perlin_noise3(float x, float y, float z);

/* Returns simplex noise of a point in space as GLM's glm::simplex has it, about −1 .. 1. */
TAVIK_EXPORT(float) glm_simplex_noise3(float x, float y, float z);

#endif
