/* foliage: grass, leaves and twigs as the traces of particles. Each particle is emitted, moved step by step, and draws
 * a tapering, shaded, depth-tested stroke from where it was to where it is.
 *
 * The host owns the records; a pool of zeros is empty.
 *   particle   20 words: 0-2 x, y, depth; 3-5 the same one step before; 6-8 the velocity of the three; 9 age; 10 life;
 *              11 radius; 12-14 colour at the base, 0 .. 255; 15-17 colour at the tip; 18 phase in the gusts, in turns;
 *              19 state (int32: 0 free, 1 growing, 2 finished: drawn once more, freed by the next step of physics).
 *              All but the state are floats
 *   emitter    24 floats: 0-1 x and y of one corner of where particles begin; 2-3 of the other; 4-5 depth at the one
 *              and the other; 6 heading and 7 its spread in degrees, clockwise on the screen from the right; 8-9 least
 *              and greatest speed; 10-11 life; 12-13 radius; 14-16 colour at the base; 17-19 at the tip; 20 how much
 *              the brightness varies, 0 .. 1; 21-23 are not read
 *   physics    8 floats: gravity x, y; wind x, y; drag; strength of the gusts; their rate in turns per unit of age;
 *              time step
 * Smaller depth is nearer. Unlike most exports with random numbers these take a seed: the same calls paint the same
 * picture on every machine. Sizes are counts, colours are rounded, and any float is safe: it can spoil the picture
 * but reaches nothing outside the buffers. */
#ifndef TAVIK_FOLIAGE_FOLIAGE_H
#define TAVIK_FOLIAGE_FOLIAGE_H

#include "tavik/export.h"

/* Where strokes are drawn: planes of width × height. */
struct tavik_foliage_target {
    int32_t width, height;
    uint8_t *plane_r, *plane_g, *plane_b;
    float *depth; /* filled by the host before the first stroke */
};

/* Fills the first free record of a pool with a new particle and returns its index, −1 when none is free (serial).
 *   seed   decides place, direction and all else. Depth goes with y, so that what begins lower on the screen can lie
 *          nearer
 * With u_i = unit(hash(i + hash(seed))), in [0, 1), and between(a, b, u) = (b − a)·u + a: x by u_0, y and depth by u_1,
 * heading + (u_2 − 0.5)·spread, speed by u_3, life by u_4, radius by u_5, all six colour components times
 * 1 + (u_6 − 0.5)·variation held to 0 .. 255, phase u_7. */
TAVIK_EXPORT(int32_t) xEmmit_particle(float *particles, int32_t capacity, const float *emitter, int32_t seed);

/* Moves the growing particles by one time step and frees the finished ones (parallel by particles; semi-implicit
 * Euler).
 *   ax = ((wind_x + gust·sin(age·rate + phase)) − vx)·drag + gravity_x, ay = (wind_y − vy)·drag + gravity_y
 *   velocity = a·dt + velocity, then place = velocity·dt + place; age = age + dt
 * A particle whose age is then not below its life is finished. */
TAVIK_EXPORT(void) xApply_Physics(float *particles, int32_t count, const float *physics);

/* Returns the index of the next record after `index` that is not free, −1 when there is none. Begin with −1. */
TAVIK_EXPORT(int32_t) Foliage_NextParticle(const float *particles, int32_t count, int32_t index);

/* Draws a stroke between two ends, seven floats each: x, y, depth, radius, red, green, blue (serial).
 *   opacity   0 .. 1
 * All but the distance runs linearly along the segment, by s = 0 .. 1 of the point nearest to the pixel:
 *   cover = (radius − distance) + 0.5, held to 0 .. 1; only pixels of the box around the segment are asked, the larger
 *           radius + 1 beyond its ends
 *   drawn where cover > 0 and z <= depth: equal depth draws, so that the joints of a blade blend
 *   depth = z where cover >= 0.5
 *   shade = 1 − e²·0.375 with e = distance / (radius + 0.5), held to 0 .. 1, which makes the stroke look round
 *   value = (colour·shade − value)·(cover·opacity) + value, rounded and held to 0 .. 255 */
TAVIK_EXPORT(void)
foliage_zLine(const struct tavik_foliage_target *target, const float *from, const float *to, float opacity);

/* Draws a dab: foliage_zLine with both ends the same (serial). */
TAVIK_EXPORT(void)
foliage_xpen(const struct tavik_foliage_target *target, float x, float y, float depth, float radius, float red,
             float green, float blue, float opacity);

/* Grows foliage for so many steps and returns the number of particles that are still growing (serial, but for the
 * physics). Each step emits particles until the pool is full, with the seeds hash(k + hash(step + hash(seed))); applies
 * the physics; and draws each particle that is not free from its previous place to its place. With u = age / life held
 * to 0 .. 1, at either end, the stroke has radius·(1 − u) and the colour (tip − base)·u + base.
 *   emit_per_step   particles begun in each step
 *   steps           0 draws nothing
 * With none to emit it goes on with what grows. */
TAVIK_EXPORT(int32_t)
xFoliage_Process(const struct tavik_foliage_target *target, float *particles, int32_t capacity, const float *emitter,
                 const float *physics, int32_t emit_per_step, int32_t steps, int32_t seed, float opacity);

#endif
