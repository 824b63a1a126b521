/* paint: feathered round dabs, picture brushes, anti-aliased lines, pictures in quadrilaterals and outlines of
 * selections, painted in place into three planes.
 *
 * The dabs FeatheredCircle* and xAAFloatLine return 0, the others nothing. Buffer kinds are those of frame.h. A
 * distance is measured with a root that is quick and part of the look:
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

/* xAAFloatLine from one colour to another (serial): sample k has the colour (colour1 − colour0) × t + colour0 with
 * t = float(k) × (1 / length), at most 1. With equal colours it draws what xAAFloatLine draws. */
TAVIK_EXPORT(void)
xGradAALine_b(float x0, float y0, float x1, float y1, float red0, float green0, float blue0, float red1, float green1,
              float blue1, int32_t width, int32_t height, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b);

/* Paints one row of a dab into a display row (serial): pixel x is painted as FeatheredCircle paints pixel (x, y) of
 * planes that are larger than the row.
 *   row, row_offset   pixel x is the three bytes blue, green, red from row[row_offset + 3x] on
 *   count             pixels of the row */
TAVIK_EXPORT(void)
brush_preview_helper(uint8_t *row, int32_t count, int32_t y, float cx, float cy, float diameter, float feather,
                     float red, float green, float blue, float opacity, int32_t row_offset);

/* --- Brushes, pictures and outlines ---
 *
 * The exports below round where those above truncate, take sizes as counts and never leave a column or row of their
 * rectangle out. Bytes are weighed by
 *   product(a, b) = round(a × b / 255)
 *   mix(d, s, a) = (d × (256 − w) + s × w + 128) >> 8 with w = a + (a >> 7): d for a = 0, s for a = 255
 * Weights are 0 .. 255; of others the low byte is used. */

/* Stamps a picture brush: plane = mix(plane, brush, product(brush_a, opacity)) (serial).
 *   x, y            where the brush's top left pixel lies; what hangs over the planes is cut off
 *   brush_*         brush_width × brush_height, alpha last
 *   opacity         0 .. 255
 *   width, height   of the planes */
TAVIK_EXPORT(void)
CustomBrushBlit(int32_t x, int32_t y, int32_t brush_width, int32_t brush_height, int32_t opacity, int32_t width,
                int32_t height, const uint8_t *brush_r, const uint8_t *brush_g, const uint8_t *brush_b,
                const uint8_t *brush_a, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b);

/* One step of a smear: the brush leaves some of the paint it carries and picks up some of what it covers (serial).
 *   x, y, brush_width, brush_height   the brush, cut off as in CustomBrushBlit
 *   mask       the brush's shape
 *   carry_*    the paint on it, of its size; the host keeps them from step to step
 *   strength   how much of its paint the brush leaves, 0 .. 255
 *   pickup     how much it takes on, 0 .. 255
 * With o the plane's and c the carried value before: plane = mix(o, c, product(mask, strength)) and
 * carry = mix(c, o, pickup). A stroke begins with strength 0 and pickup 255, which takes the picture under the brush. */
TAVIK_EXPORT(void)
Cust_Smear_helper(int32_t x, int32_t y, int32_t brush_width, int32_t brush_height, int32_t strength, int32_t pickup,
                  int32_t width, int32_t height, const uint8_t *mask, uint8_t *carry_r, uint8_t *carry_g,
                  uint8_t *carry_b, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b);

/* Cust_Smear_helper over float planes, for long strokes: bytes stop moving when a step is below half a level (serial).
 *   strength, pickup   0 .. 1
 * plane = (c − o) × (mask × (strength × (1/255))) + o and carry = (o − c) × pickup + c. */
TAVIK_EXPORT(void)
Cust_Smear_helper2(int32_t x, int32_t y, int32_t brush_width, int32_t brush_height, float strength, float pickup,
                   int32_t width, int32_t height, const uint8_t *mask, float *carry_r, float *carry_g, float *carry_b,
                   float *plane_r, float *plane_g, float *plane_b);

/* Fills a selection from elsewhere in a picture: dst = mix(dst, src at (x + dx, y + dy), product(mask, opacity)), where
 * the picture repeats like a tile (parallel by rows).
 *   opacity   0 .. 255
 *   src_*     other planes than dst_*, all of width × height */
TAVIK_EXPORT(void)
xclonefill(int32_t width, int32_t height, int32_t dx, int32_t dy, int32_t opacity, const uint8_t *mask,
           const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
           uint8_t *dst_b);

/* Draws a picture into a quadrilateral, in perspective and with anti-aliased edges (parallel by rows).
 *   corners                 x and y of the places where the top left, top right, bottom right and bottom left corner
 *                           of the picture go: a convex quadrilateral, turned either way. Pixel (x, y) covers
 *                           x − 0.5 .. x + 0.5, so a picture stays where it is with corners −0.5 and size − 0.5
 *   src_width, src_height   of the picture, 1 or more
 *   opacity                 0 .. 1
 *   smooth                  0 takes the nearest sample, anything else interpolates bilinearly
 * The picture's place (u, v) at a pixel is the projective mapping of Heckbert 1989; beyond its edges they are repeated.
 * A pixel's weight w is its least signed distance from an edge + 0.5, at most 1, × opacity; where that distance is not
 * above 0 nothing is written, elsewhere dst = (value − dst) × w + dst, rounded and held to 0 .. 255. Corners without an
 * area draw nothing; a quadrilateral that is not convex is drawn oddly. */
TAVIK_EXPORT(void)
xFillPoly4_p(const float *corners, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, int32_t src_width,
             int32_t src_height, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, int32_t width, int32_t height,
             float opacity, int32_t smooth);

/* xFillPoly4_p of a picture with an alpha plane, which is sampled like the others: w is multiplied by
 * alpha × (1/255). */
TAVIK_EXPORT(void)
xFillPoly4_Alpha_p(const float *corners, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                   const uint8_t *src_a, int32_t src_width, int32_t src_height, uint8_t *dst_r, uint8_t *dst_g,
                   uint8_t *dst_b, int32_t width, int32_t height, float opacity, int32_t smooth);

/* xFillPoly4_Alpha_p through coloured glass: each value is multiplied by tint × (1/255).
 *   tint_r, tint_g, tint_b   0 .. 255; more brightens */
TAVIK_EXPORT(void)
xFillPoly4_Alpha_p_Tinted(const float *corners, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                          const uint8_t *src_a, int32_t src_width, int32_t src_height, uint8_t *dst_r, uint8_t *dst_g,
                          uint8_t *dst_b, int32_t width, int32_t height, float opacity, int32_t smooth, float tint_r,
                          float tint_g, float tint_b);

/* Labels the outline of a selection with stripes that a host can make march (parallel by rows): pixels of the selection
 * with at least one of their four neighbours outside it get 1 + ((x × slant_x + y × slant_y) modulo (2 × dash)), all
 * others 0. Pixels beyond the plane are outside.
 *   mask               selected where above the threshold
 *   dst                another plane than mask
 *   dash               length of a stripe, held to 1 .. 127
 *   slant_x, slant_y   1 and 1 are the usual diagonal stripes, which never break at corners
 * In frame f of an animation label n is light where (n − 1 + f) modulo (2 × dash) < dash: a table of 256 bytes for
 * ValueLut or MapLut. */
TAVIK_EXPORT(void)
xInitMarquee(const uint8_t *mask, uint8_t *dst, int32_t width, int32_t height, int32_t threshold, int32_t dash,
             int32_t slant_x, int32_t slant_y);

#endif
