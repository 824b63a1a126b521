/* generators: noise, gradients, textures, particle clouds, fractals and light.
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

/* --- Gradients: fills of three channel planes ---
 *
 * Sources and destinations are channel planes with the same index for a pixel; a destination may be its own source.
 * Where nothing else is said, all rows are filled, in parallel. */

/* Fills with a linear gradient of 256 colours.
 * In each row the position begins at start + y × step_y and grows by step_x before each pixel, the first too; the
 * gradient runs against it: g = table_*[i] with i = trunc(−position), clamped to 0 .. 255. If use_blend_table is
 * positive, g becomes blend_table[256·s + g], where s is the source sample. If use_alpha is 1 the destination is
 * ((255 − a)·s + a·g) >> 8 with a = table_a[i], else g.
 *   x_max, rows          planes of (x_max + 1) × rows, of which the last column stays as it was
 *   src_*                not read without blend table and alpha
 *   table_*              256 bytes each; table_a is not read without alpha
 *   blend_table          65536 bytes: the results for source 0, then those for source 1, and so on
 *   ignored              not used */
TAVIK_EXPORT(void)
fastLinearGradient(float step_y, float step_x, float start, int32_t x_max, int32_t rows, int32_t use_blend_table,
                   int32_t use_alpha, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r,
                   uint8_t *dst_g, uint8_t *dst_b, const uint8_t *table_r, const uint8_t *table_g,
                   const uint8_t *table_b, const uint8_t *table_a, const uint8_t *blend_table, int32_t ignored);

/* Fills with a circular gradient of 256 colours.
 * i = trunc(d × (255 / radius)), clamped to 0 .. 255, where d is the distance from (cx, cy) in pixels, up to 6% high:
 * fastsqrt of the squares' sum (see scalar.h). With a = table_a[i] and g as in fastLinearGradient the destination stays
 * as it was if a is 0 or 1, is g if a is 255, else ((255 − a)·s + a·g) >> 8.
 *   x_max, rows   planes of (x_max + 1) × rows, of which the last column stays as it was
 *   radius        pixels from the first colour to the last; 0 does nothing
 *   other parameters as in fastLinearGradient */
TAVIK_EXPORT(void)
fastCircularGradient(int32_t x_max, int32_t rows, int32_t cx, int32_t cy, int32_t radius, int32_t use_blend_table,
                     const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
                     uint8_t *dst_b, const uint8_t *table_r, const uint8_t *table_g, const uint8_t *table_b,
                     const uint8_t *table_a, const uint8_t *blend_table);

/* The xRender*To exports interpolate a colour and its alpha, all 0 .. 255, at a position t of a float table:
 *   table   4 rows, red, green, blue and alpha, of n + 1 floats each; n is 0 .. 2^24
 * With t0 = t and t1 = t + 1, each clamped to 0 .. n (NaN gives n), i0 and i1 their integer parts and f = t0 − i0, each
 * component is T[i0] + (T[i1] − T[i0]) × f. The destination is the low byte of trunc((c − s) × alpha·(1/255) + s), or
 * of trunc(c) if alpha is not below 255; s is the source sample. Counts: planes of width × rows.
 *
 * Linear: t = x × step_x + step_y × y + offset. */
TAVIK_EXPORT(void)
xRenderLinearTo(float step_x, float step_y, float offset, int32_t width, int32_t rows, int32_t n, const float *table,
                uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const uint8_t *src_r, const uint8_t *src_g,
                const uint8_t *src_b);

/* Circular: t is the distance from (cx, cy) in pixels, √((x − cx)² + (y − cy)²). */
TAVIK_EXPORT(void)
xRenderCircularTo(float cx, float cy, int32_t ignored1, int32_t ignored2, int32_t width, int32_t rows, int32_t n,
                  const float *table, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const uint8_t *src_r,
                  const uint8_t *src_g, const uint8_t *src_b);

/* Sweep around (cx, cy), from straight up over the left once around, `repeats` times: t = (angle + π) × repeats ×
 * 57.2958 × (1/360) × L with angle = atan2(x − cx, y − cy), rounded to single precision, and L the distance from (cx,
 * cy) to (px, py), which is the number of table positions in a turn. The factor is a little above 180/π. */
TAVIK_EXPORT(void)
xRenderSweepTo(float cx, float cy, float px, float py, float repeats, int32_t width, int32_t rows, int32_t n,
               const float *table, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const uint8_t *src_r,
               const uint8_t *src_g, const uint8_t *src_b);

/* Recolours a band of rows by brightness, in place: with v = ((plane0 + plane1 + plane2) × 85) >> 8, 0 .. 254, the
 * planes become table0[v], table1[v] and table2[v]. Serial.
 *   width            samples of a row
 *   y_start, y_end   rows y_start .. y_end − 1 are recoloured; nothing if there are none
 *   table*           256 bytes each */
TAVIK_EXPORT(void)
ApplyGradient(int32_t width, int32_t y_start, int32_t y_end, uint8_t *plane0, uint8_t *plane1, uint8_t *plane2,
              const uint8_t *table0, const uint8_t *table1, const uint8_t *table2);

/* --- Textures: fills of three channel planes of width × height (counts), parallel by rows ---
 *
 * Colours are three numbers, of which the low byte is stored. */

/* Fills with a brick wall. With bw = trunc(brick_width), m = trunc(mortar), bh = max(bw / 2, 1), a pixel is mortar if
 * y mod (bh + m) > bh or x' mod (bw + m) > bw, else brick; x' is x, plus bh in every second course, those with odd
 * y / (bh + m). A brick so has bw + 1 by bh + 1 pixels and a joint m − 1: mortar of 0 or 1 draws none. bh + m is not 0;
 * if bw + m is, bricks have no joints between them. */
TAVIK_EXPORT(void)
xbrick(float brick_width, float mortar, int32_t brick_r, int32_t brick_g, int32_t brick_b, int32_t mortar_r,
       int32_t mortar_g, int32_t mortar_b, int32_t width, int32_t height, uint8_t *dst_r, uint8_t *dst_g,
       uint8_t *dst_b);

/* Fills with checks of cell_width × cell_height pixels, not 0: colour B where x / cell_width and y / cell_height are
 * both even or both odd, as in the first cell, else colour A. */
TAVIK_EXPORT(void)
xcheckerboard(int32_t cell_width, int32_t cell_height, int32_t a_r, int32_t a_g, int32_t a_b, int32_t b_r, int32_t b_g,
              int32_t b_b, int32_t width, int32_t height, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Multiplies an image by a repeated grey tile: destination = source × t / 255, rounded down, with
 * t = tile[(trunc(s × y) mod tile_height) × tile_width + trunc(x × s) mod tile_width] and s = 100 / tile_scale.
 *   tile_scale   percent of the tile's own size, above 0
 *   tile         channel plane of tile_width × tile_height
 *   src_*        channel planes; dst_* may be the same. The last column of dst_* stays as it was. */
TAVIK_EXPORT(void)
xDoWeave(int32_t tile_scale, int32_t width, int32_t height, int32_t tile_width, int32_t tile_height,
         const uint8_t *tile, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r,
         uint8_t *dst_g, uint8_t *dst_b);

/* A seed of xCrystalize: a pixel, inside the image or not, and a colour. */
struct tavik_crystal_seed {
    int16_t x, y;
    uint8_t r, g, b;
    uint8_t unused;
};

/* A seed of xcellular; its position is truncated. */
struct tavik_cell_seed {
    float x, y;
};

/* Seeds come as a grid of layers × seed_rows × seeds_per_row records, seed i of a row r of a layer k at index
 * (k × seed_rows + r) × seeds_per_row + i. Each raises the heights of the pixels around it, at most
 * radius = size / 2 away along either axis, to those of its own cone.
 *   size      2 or more
 *   heights   float plane, which the host initialises, normally to 0
 * The rows of seeds run in parallel and their neighbourhoods overlap: where two rows' cones meet, which of them is
 * found the higher can depend on timing. One row of seeds always gives the same picture: seeds in order, all layers of
 * a seed before the next seed.
 *
 * xCrystalize draws cells of flat colour: where (1 − d²·k·k) × 255 is above the height, d the distance from the seed
 * and k = 1 / radius, it becomes the height and the pixel takes the seed's colour. Pixels that no seed raises keep
 * theirs. */
TAVIK_EXPORT(void)
xCrystalize(int32_t width, int32_t height, int32_t seeds_per_row, int32_t seed_rows, int32_t size, int32_t ignored1,
            int32_t layers, int32_t ignored2, int32_t ignored3, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b,
            const struct tavik_crystal_seed *seeds, float *heights);

/* Draws soft grey cones: heights are raised to (1 − t) × 255, with t = d²·k·k, at most 1, for falloff 1 and its root
 * for any other. Then every pixel becomes min(trunc(number × (1/32767) + height), 255) in all three planes, with one
 * random number drawn for each pixel on the thread that runs its row; 255 minus that if invert is 1. Heights below 0
 * give their low byte. */
TAVIK_EXPORT(void)
xcellular(int32_t width, int32_t height, int32_t seeds_per_row, int32_t seed_rows, int32_t size, int32_t ignored,
          int32_t layers, int32_t falloff, int32_t invert, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b,
          const struct tavik_cell_seed *seeds, float *heights);

/* --- Particle clouds: particles in space, drawn as soft round puffs --- */

/* Draws a cloud of translucent puffs, one for each particle, in the order of the array: a host that wants near puffs
 * before far ones sorts them from far to near (parallel by rows).
 *   particles      count records of 18 floats:
 *                    0, 1, 2    x (to the right), y (depth, along the view) and z (down)
 *                    3          size: diameter in the units of x
 *                    4          opacity, clamped to 0 .. 1
 *                    8, 9, 10   colour in the first, second and third plane, clamped to 0 .. 255
 *                  5 .. 7 and 11 .. 17 are not read; they are the host's
 *   camera         5 floats: x, y (depth), z, zoom, near
 *   count          0 or less draws nothing
 *   x_max, y_max   upper bounds; column x_max and row y_max are never painted
 *   dst0 .. dst2   channel planes, painted in place
 * A particle with y > camera.y + near is projected:
 *   depth = ((y − camera.y) × zoom) × 0.0005, inv = 1 / depth, or 0 where depth is 0
 *   sx = trunc(inv × (x − camera.x) + x_max / 2), sy = trunc(inv × (z − camera.z) + y_max / 2), halves in integers
 *   half = size × inv × 0.5; it is drawn if 0 < half < 1000
 *   radius = trunc(half × 0.5), feather = trunc(size × inv × 0.25)
 * and painted as by FeatheredCircle_ppl with this centre, radius, feather, colour and opacity. So half of a puff is
 * solid and half is rim, and one of fewer than four pixels across leaves the picture as it is. */
TAVIK_EXPORT(void)
xRenderCloud(const float *particles, const float *camera, int32_t count, int32_t x_max, int32_t y_max, uint8_t *dst0,
             uint8_t *dst1, uint8_t *dst2);

/* xRenderCloud into float planes, as by FeatheredCircle_ppl_float, with puffs that fade in with their distance.
 *   opacity = fade × opacity, fade = ((y − camera.y) − 50) × 0.01 clamped to 0 .. 1: nothing up to 50 units from the
 *   camera, all from 150 on
 *   A puff with opacity 0, sx + half < 0, sy + half < 0, sx − half > x_max or sy − half > y_max is not drawn. */
TAVIK_EXPORT(void)
xRenderCloud_float(const float *particles, const float *camera, int32_t count, int32_t x_max, int32_t y_max,
                   float *dst0, float *dst1, float *dst2);

/* --- Fractals and light ---
 *
 * These take counts, write their whole rectangle and round to the nearest byte; their patterns are functions of the
 * place and a seed, the same on every thread and machine. */

/* Draws the Mandelbrot set in double precision with continuous colours (parallel by rows).
 *   centre_re, centre_im   the number in the middle of the picture
 *   step                   from pixel to pixel
 *   max_iter               iterations of z = z² + c from 0; a point has left when |z|² is above 65536
 *   colour_step            table entries per iteration, of n − log2(log2|z| / 8) after n iterations; the tables repeat
 *   inside                 packed colour 0x00BBGGRR of what has not left
 *   table_*                256 bytes each, interpolated */
TAVIK_EXPORT(void)
DoMandel(int32_t width, int32_t height, double centre_re, double centre_im, double step, int32_t max_iter,
         float colour_step, int32_t inside, const uint8_t *table_r, const uint8_t *table_g, const uint8_t *table_b,
         uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* DoMandel in single precision with flat bands: entry n & 255 of the tables after n iterations, when |z|² is above 4
 * (parallel by rows). */
TAVIK_EXPORT(void)
DoFastMandel(int32_t width, int32_t height, float centre_re, float centre_im, float step, int32_t max_iter,
             int32_t inside, const uint8_t *table_r, const uint8_t *table_g, const uint8_t *table_b, uint8_t *dst_r,
             uint8_t *dst_g, uint8_t *dst_b);

/* Adds a burst of light with rays to three planes, in place (serial). Pixels outside the radius stay as they were.
 *   rays                how many, 1 or more; their lengths are smooth noise over the angle
 *   red, green, blue    0 .. 255; light is screened over the picture, and turns white where it is above 1
 *   intensity           1 or so */
TAVIK_EXPORT(void)
xNova(int32_t width, int32_t height, float cx, float cy, float radius, int32_t rays, int32_t seed, float red,
      float green, float blue, float intensity, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b);

/* xNova in parallel by rows. */
TAVIK_EXPORT(void)
p_Nova(int32_t width, int32_t height, float cx, float cy, float radius, int32_t rays, int32_t seed, float red,
       float green, float blue, float intensity, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b);

/* Draws random streaks over three planes, in place: rain, brushed metal, speed lines (serial).
 *   degrees            their direction, clockwise on the screen from the right; they brighten slowly along it and end
 *                      quickly
 *   length, spacing    pixels of the cells along and across the direction, above 0
 *   density            the share of cells with a streak, 0 .. 1
 *   red, green, blue   0 .. 255
 *   opacity            0 .. 1 */
TAVIK_EXPORT(void)
xRandomStreaks(int32_t width, int32_t height, float degrees, float length, float spacing, float density, int32_t seed,
               float red, float green, float blue, float opacity, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b);

/* xRandomStreaks in parallel by rows. */
TAVIK_EXPORT(void)
p_RandomStreaks(int32_t width, int32_t height, float degrees, float length, float spacing, float density, int32_t seed,
                float red, float green, float blue, float opacity, uint8_t *plane_r, uint8_t *plane_g,
                uint8_t *plane_b);

#endif
