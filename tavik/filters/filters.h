/* filters: 3×3 convolution, shading of normals, median, running maximum and minimum, and blur.
 *
 * Planes here have x_max + 1 columns and y_max + 1 rows; destinations are distinct from sources. Some borders stay
 * unwritten, as each export says. Buffer kinds are those of frame.h. */
#ifndef TAVIK_FILTERS_FILTERS_H
#define TAVIK_FILTERS_FILTERS_H

#include "tavik/export.h"

/* Convolves a plane with a 3×3 kernel of integers (parallel by rows).
 *   top_left .. bottom_right   the weights of the neighbours; sum = Σ weight × sample
 *   divisor, bias              trunc(sum / divisor) + bias, clamped to 0 .. 255; the divisor is not 0
 * All are 32-bit integers that wrap around.
 * The filtered picture ends one column and one row before the plane does, at column x_max − 1 and row y_max − 1;
 * neighbours outside it are replaced by its edge sample. Its four corners, the last column and the last row of dst
 * stay as they were. */
TAVIK_EXPORT(void)
Convolve8(uint8_t *dst, const uint8_t *src, int32_t x_max, int32_t y_max, int32_t top_left, int32_t top,
          int32_t top_right, int32_t left, int32_t centre, int32_t right, int32_t bottom_left, int32_t bottom,
          int32_t bottom_right, int32_t divisor, int32_t bias);

/* Shades a plane of normals by a light and writes the brightness to three planes (serial).
 *   x_max, rows   columns 0 .. x_max − 1 of that many rows of x_max + 1; the last column of dst stays as it was
 *   normals       x, y and z of each pixel
 *   light         x, y and z
 * dst = trunc(((light.x·x + light.y·y) + light.z·z) × scale) clamped to 0 .. 255, in single precision; out of the
 * range of 32-bit integers and NaN give 0. */
TAVIK_EXPORT(void)
xGradientConvolve(int32_t x_max, int32_t rows, const float *normals, const float *light, float scale, uint8_t *dst1,
                  uint8_t *dst2, uint8_t *dst3);

/* xGradientConvolve into one plane. */
TAVIK_EXPORT(void)
xGradientConvolve8(int32_t x_max, int32_t rows, const float *normals, const float *light, float scale, uint8_t *dst);

/* Writes the median of each 3×3 neighbourhood (serial). Rows 0 and y_max and columns 0 and x_max of dst stay as they
 * were. */
TAVIK_EXPORT(void) xMedian(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t y_max);

/* Writes the largest sample of each span of a row, transposed: that of (x, y) goes to dst[x × (y_max + 1) + y]. Two
 * calls, the second with x_max and y_max exchanged, dilate by a square of 2 × radius samples (serial).
 *   radius   the span is x − radius .. x + radius − 1, one sample more on the left, cut off at the ends of the row;
 *            any size takes the same time; 0 or less gives an empty span, whose maximum is 0 */
TAVIK_EXPORT(void) Maximum_s(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t y_max, int32_t radius);

/* Maximum_s with the smallest sample; that of an empty span is 255. Two calls erode. */
TAVIK_EXPORT(void) Minimum_s(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t y_max, int32_t radius);

/* Blurs a plane by repeated boxes (Wells 1986); the time does not depend on the radius (counts; parallel by rows, then
 * by columns).
 *   radius   held to 0 .. 127: a box is the mean of 2·radius + 1 samples; the edge samples are repeated beyond the
 *            edges; 0 copies
 *   passes   boxes along rows, then as many along columns: 1 box, 2 tent, 3 close to a Gaussian of
 *            σ² = passes × ((2·radius + 1)² − 1) / 12; 0 or less copies
 *   dst      may be src; all of it is written
 * Eight fraction bits are kept throughout, so that smooth areas stay free of bands: samples become v = src << 8, each
 * pass makes v the truncated float(sum) × (1 / (2·radius + 1)) + 0.5, and dst = (v + 128) >> 8. Allocates up to two
 * bytes per sample while it runs; without that memory it writes nothing. */
TAVIK_EXPORT(void)
xBlur(int32_t width, int32_t height, int32_t radius, int32_t passes, const uint8_t *src, uint8_t *dst);

#endif
