/* dither: ordered and random dithering to a colour cube or to black and white, grain and jitter.
 *
 * Random numbers r are those of the calling thread, 0 .. 32767 (see seed_rand in frame.h). Pixel (x, y) has index
 * y × width + x. A threshold matrix is 3 rows of 3 bytes, 4 bytes apart: pixel (x, y) has the threshold
 * matrix[(y mod 3) × 4 + x mod 3]. Floats are single precision, rounded after each operation. */
#ifndef TAVIK_DITHER_DITHER_H
#define TAVIK_DITHER_DITHER_H

#include "tavik/export.h"

/* Reduces a band of rows to the 216 colours of a 6 × 6 × 6 cube, in place. Serial.
 * Each channel c becomes q = c / 51, one more if c mod 51 > the pixel's threshold; the colour i = qR + 6·qG + 36·qB
 * becomes pal_r[i], pal_g[i], pal_b[i].
 *   width            samples of a row
 *   y_start, y_end   rows y_start .. y_end − 1 are dithered; nothing if there are none
 *   r, g, b          channel planes, of which row 0 is the first
 *   matrix           thresholds; 0 .. 50 tell remainders apart
 *   pal_*            216 bytes each */
TAVIK_EXPORT(void)
x8BitOrderedDither(int32_t width, int32_t y_start, int32_t y_end, uint8_t *r, uint8_t *g, uint8_t *b,
                   const uint8_t *matrix, const uint8_t *pal_r, const uint8_t *pal_g, const uint8_t *pal_b);

/* x8BitOrderedDither with a random threshold for each pixel, trunc(r × 51/32767), drawn row by row. Seeds the calling
 * thread's random numbers with 1231209 first, also for an empty band, so that every call gives the same picture. */
TAVIK_EXPORT(void)
x8BitRandomDither(int32_t width, int32_t y_start, int32_t y_end, uint8_t *r, uint8_t *g, uint8_t *b,
                  const uint8_t *pal_r, const uint8_t *pal_g, const uint8_t *pal_b);

/* Reduces an image to black and white, in place (counts; serial): all three channels become 255 if
 * (r + g + b) / 3 > the pixel's threshold, else 0. */
TAVIK_EXPORT(void)
x1bitorderedDither(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b, const uint8_t *matrix);

/* Reduces an image to black and white at random, in place (counts; serial): with one number drawn for each pixel and
 * h = trunc(number × (−255/32767) + 128), 128 .. −127, all three channels become 0 if (r + g + b) / 3 − h ≤ 128, else
 * 255. Goes on with the random numbers where they are. */
TAVIK_EXPORT(void) x1bitranddither(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b);

/* Adds grain to three float planes, in place (counts; serial): value + (number × (1/32767) − 0.5) × amount, with one
 * number drawn for each value, the whole first plane before the second and third. Not clamped. */
TAVIK_EXPORT(void)
xgrain(int32_t width, int32_t height, float amount1, float amount2, float amount3, float *plane1, float *plane2,
       float *plane3);

/* Replaces each pixel by a random one near it. Parallel by rows: the numbers come from the threads that happen to run
 * them, so that pictures differ from call to call.
 * With two numbers drawn for each pixel, offset = amount / 2 and scale = amount × (1/32767), the pixel (x, y) comes
 * from (trunc(scale × first) − offset + x, trunc(scale × second) − offset + y), clamped to 0 .. x_max − 2 and 0 ..
 * y_max − 2 (to 0 in smaller planes).
 *   dst_*, src_*   channel planes of (x_max + 1) × (y_max + 1), different ones; the last column and row of dst stay as
 *                  they were, and the last two of src are not read
 *   ignored        not used
 *   amount         pixels that the displacement spans, −amount/2 .. amount − amount/2; 0 copies */
TAVIK_EXPORT(void)
FastJitter(uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, int32_t ignored, int32_t x_max, int32_t y_max,
           const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, int32_t amount);

/* --- Scattering and film grain ---
 *
 * The exports below differ from the ones above: all take counts, write their whole rectangle and round to the nearest
 * byte, and their patterns are functions of the place and a seed, the same on every thread and machine. */

/* Adds grain from tiles to three planes, in place (parallel by rows).
 *   grain_*              float planes of grain_width × grain_height (at least 1), values about 0, repeated as tiles
 *   scale                grain samples per pixel
 *   offset_x, offset_y   grain samples that the tiles are moved by, from frame to frame
 *   amount               of the grain: plane = round(grain × amount + plane), held to 0 .. 255
 * Grain is interpolated bilinearly at (x × scale + offset_x, y × scale + offset_y), wrapped at the tile's edges. */
TAVIK_EXPORT(void)
xfilmgrainHelper(int32_t width, int32_t height, int32_t grain_width, int32_t grain_height, float scale, float offset_x,
                 float offset_y, float amount, const float *grain_r, const float *grain_g, const float *grain_b,
                 uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b);

/* Scatters pixels: each comes from a random one at most `amount` away on each axis, the edge ones beyond the edges
 * (parallel by rows). A FastJitter that repeats itself and reaches all edges. Sources and destinations are different
 * planes. */
TAVIK_EXPORT(void)
xjitter(int32_t width, int32_t height, float amount, int32_t seed, const uint8_t *src_r, const uint8_t *src_g,
        const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Shows a picture through frosted glass: xjitter with displacements that vary smoothly over cells of `cell` pixels
 * (above 0), and samples interpolated bilinearly (parallel by rows). */
TAVIK_EXPORT(void)
xjitter2(int32_t width, int32_t height, float amount, float cell, int32_t seed, const uint8_t *src_r,
         const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

#endif
