/* paint: feathered round dabs and anti-aliased lines, painted in place into three planes.
 *
 * Each export returns 0. Buffer kinds are those of frame.h. A distance is measured with a root that is quick and part
 * of the look:
 *   root(s) = the float whose bits are ((bits of s − 0x800000) >> 1) + 0x20000000, with an arithmetic shift
 * It is exact at even powers of two, up to 6% high between them, and a tiny positive number for 0. */
#ifndef TAVIK_PAINT_PAINT_H
#define TAVIK_PAINT_PAINT_H

#include "tavik/export.h"

/* Paints a round dab: it replaces the picture by its colour inside the radius and fades out over the feather (serial).
 *   cx, cy             centre in pixels; pixel (x, y) is the point (x, y)
 *   diameter, feather  in pixels; radius = diameter × 0.5
 *   red, green, blue   colour, 0 .. 255; beyond that the low byte of a result is stored
 *   opacity            clamped to 0 .. 1
 *   x_max, y_max       planes have x_max + 1 columns and y_max + 1 rows; column x_max and row y_max are never painted
 *   d = root((x − cx)·(x − cx) + (y − cy)·(y − cy)), and per plane, with the old value o:
 *     v = colour                                                          where d <= radius
 *     v = o + (colour − o) × ((feather − (d − radius)) × (1 / feather))   where radius < d < radius + feather
 *     v = o                                                               elsewhere
 *     v = (v − o) × opacity + o                                           if opacity < 1
 *   and trunc(v) is stored.
 * Columns trunc(cx − radius − feather) .. trunc(radius + cx + feather) + 1 are visited, and rows likewise; a box
 * outside the planes paints nothing. With feather 0 the dab has a hard edge. */
TAVIK_EXPORT(int32_t)
FeatheredCircle(float cx, float cy, float diameter, float feather, float red, float green, float blue, float opacity,
                int32_t x_max, int32_t y_max, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b);

/* FeatheredCircle that adds (serial).
 *   red, green, blue   may be negative, which darkens
 *   w = ((feather − (d − radius)) × (1 / feather)) × opacity, clamped to 0 .. 1
 *   new = trunc(o + w × colour, clamped to 0 .. 255)
 * Inside the radius w goes on rising above the opacity, so that a soft dab builds up in its middle. A weight that is
 * no number, which feather 0 has where d = radius or the opacity is 0, counts as 0. */
TAVIK_EXPORT(int32_t)
FeatheredCircle_Add(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                    float opacity, int32_t x_max, int32_t y_max, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b);

/* FeatheredCircle that multiplies, with the weight w of FeatheredCircle_Add (serial).
 *   new = trunc(((colour − 255) × w + 255) × o × 1/255, clamped to 0 .. 255)
 * White leaves all as it was; black of full opacity blackens the disc. */
TAVIK_EXPORT(int32_t)
FeatheredCircle_Multiply(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                         float opacity, int32_t x_max, int32_t y_max, uint8_t *plane_r, uint8_t *plane_g,
                         uint8_t *plane_b);

/* FeatheredCircle, parallel by rows. The last row of the box, trunc(radius + cy + feather) + 1, is not visited. */
TAVIK_EXPORT(int32_t)
FeatheredCircle_ppl(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                    float opacity, int32_t x_max, int32_t y_max, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b);

/* FeatheredCircle_ppl into float planes: v is stored as it is. */
TAVIK_EXPORT(int32_t)
FeatheredCircle_ppl_float(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                          float opacity, int32_t x_max, int32_t y_max, float *plane_r, float *plane_g, float *plane_b);

/* FeatheredCircle_ppl_float behind what stands nearer (parallel by rows). Smaller depth is nearer.
 *   dab_depth     depth of the dab
 *   depth_plane   float plane of the picture's depths; read only
 *   Pixels with d < radius + feather and dab_depth < depth change:
 *     fall = (d − radius) / ((radius + feather) − radius), clamped to 0 .. 1
 *     near = (depth − dab_depth) / ((dab_depth + 10) − dab_depth), clamped to 0 .. 1: the dab appears over the first 10
 *            units in front of the picture
 *     value = (colour − value) × (opacity × (1 − fall) × near) + value */
TAVIK_EXPORT(int32_t)
FeatheredCircle_ppl_float_zbuffer(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                                  float opacity, int32_t x_max, int32_t y_max, float *plane_r, float *plane_g,
                                  float *plane_b, float dab_depth, const float *depth_plane);

/* Draws an anti-aliased line: walks from one end to the other in steps of about a pixel and spreads the colour over the
 * four pixels around each sample, by their distance (serial).
 *   x0, y0, x1, y1     ends in pixels
 *   red, green, blue   colour, 0 .. 255; beyond that the low byte of a result is stored
 *   width, height      planes of width × height (counts)
 *   dx = x1 − x0, dy = y1 − y0, length = root(dx·dx + dy·dy); trunc(length) + 1 samples, the first at (x0, y0), each
 *   next one by adding dx / length and dy / length to the one before. A length of 2^31 or more draws nothing.
 *   A sample (px, py) with i = trunc(px), j = trunc(py), fx = px − i, fy = py − j and colour c mixes
 *     (i, j)           (o × fx + (1 − fx) × c) × (1 − fy) + o × fy
 *     (i + 1, j)       (o × (1 − fx) + fx × c) × (1 − fy) + o × fy
 *     (i, j + 1)       (o × fx + (1 − fx) × c) × fy + o × (1 − fy)
 *     (i + 1, j + 1)   (o × (1 − fx) + fx × c) × fy + o × (1 − fy)
 *   where o is the old value, and stores the low byte of the truncated result, if 0 <= i < width − 1 and
 *   0 <= j < height − 1: the last column and row are reached as the second of two only.
 * Neighbouring samples overlap, which gives the line its weight. */
TAVIK_EXPORT(int32_t)
xAAFloatLine(float x0, float y0, float x1, float y1, float red, float green, float blue, int32_t width, int32_t height,
             uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b);

#endif
