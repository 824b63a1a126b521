/* resample: interpolation kernels, cubic resizing, the box prefilter before it, rotation, free transforms and mirrors;
 * warps, maps of points, image pyramids and transforms with soft edges.
 *
 * A destination index k lies at the source position k × scale, without a half-pixel offset; a scale is source units per
 * destination unit. Arithmetic is single precision, one rounding for each operation in the order written; conversions
 * to integers truncate toward zero (out of range and NaN give −2147483648), and a position's fraction is what the
 * conversion drops, so it is negative for a negative position. Integers are 32-bit and wrap around.
 *
 * Planes have x_max + 1 columns and y_max + 1 rows (upper bounds), each plane with bounds of its own, where an entry
 * does not say counts. Destinations are distinct from sources, except where an entry allows otherwise. All sources, or
 * destinations, of one call have the same size. "Parallel" is by destination rows. Buffer kinds and size forms are
 * those of frame.h. */
#ifndef TAVIK_RESAMPLE_RESAMPLE_H
#define TAVIK_RESAMPLE_RESAMPLE_H

#include "tavik/export.h"

/* Interpolates between four values: with top = (p10 − p00)·tx + p00 and bottom = (p11 − p01)·tx + p01, differences
 * taken in integers, returns trunc((bottom − top)·ty + top).
 *   tx, ty   0 .. 1 across and down; beyond that the result extrapolates */
TAVIK_EXPORT(int32_t) Bilerp(int32_t p00, int32_t p10, int32_t p01, int32_t p11, float tx, float ty);

/* Returns Bilerp of the four samples around a position of a channel plane of width × height (counts, at least 1).
 * Columns and rows outside are replaced by the edge's, but fractions are not: x = −0.5 extrapolates from columns 0 and
 * 1 by −0.5. */
TAVIK_EXPORT(int32_t) BilinearSample(float x, float y, int32_t width, int32_t height, const uint8_t *plane);

/* Returns the Catmull-Rom bicubic value of a patch, unclamped: the cubic
 *   p1 + 0.5·t·((p2 − p0) + t·((2·p0 − 5·p1 + 4·p2 − p3) + t·(3·(p1 − p2) + p3 − p0)))
 * of each column with t = ty, then of the four results with t = tx.
 *   patch    16 floats: patch[4·i + j] is the sample i − 1 to the right and j − 1 below
 *   tx, ty   0 .. 1 between the samples at 0 and 1; 0 and 0 give patch[5] */
TAVIK_EXPORT(float) f_bicubicInterpolate(const float *patch, float tx, float ty);

/* Returns a point of the uniform cubic B-spline, which smooths the samples instead of passing through them:
 *   ((−p0 + 3·p1 − 3·p2 + p3)·t³ + (3·p0 − 6·p1 + 3·p2)·t² + (−3·p0 + 3·p2)·t) × s + (p0·s + p1·f + p2·s)
 * with t² = t·t, t³ = t·t·t, s = 0.16666667 (1/6) and f = 0.6666667 (4/6).
 *   t   0 .. 1 from between p0, p1, p2 to between p1, p2, p3 */
TAVIK_EXPORT(float) Bspline(float p0, float p1, float p2, float p3, float t);

/* Resizes the rows of a channel plane by the Catmull-Rom cubic (parallel).
 *   row_count         of both planes
 *   x_scale           the source position of column x is x × x_scale; its whole part i must stay inside the row, since
 *                     the sample at i is read as it is. Those at i − 1, i + 1 and i + 2 are replaced by the row's ends
 *                     where they lie outside
 *   first_ignored, last_ignored   any value
 * dst = trunc(((a·t + b)·(t·t) + c·t) + p1) clamped to 0 .. 255, with t the position's fraction and
 *   a = 1.5·p1 − 0.5·p0 − 1.5·p2 + 0.5·p3, b = p0 − 2.5·p1 + 2·p2 − 0.5·p3, c = 0.5·p2 − 0.5·p0 */
TAVIK_EXPORT(void)
DoCubicPass1Helper(const uint8_t *src, uint8_t *dst, int32_t dst_x_max, int32_t first_ignored, int32_t src_x_max,
                   int32_t row_count, float x_scale, int32_t last_ignored);

/* Resizes the columns of a channel plane by the same cubic (parallel).
 *   x_max           of both planes
 *   dst_row_count   the source position of row y is y × y_scale; its whole part must stay inside the source, as for
 *                   columns above
 *   first_ignored, last_ignored   any value */
TAVIK_EXPORT(void)
DoCubicPass2Helper(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t dst_row_count, int32_t first_ignored,
                   int32_t src_y_max, float last_ignored, float y_scale);

/* Resizes a channel plane both ways at once by f_bicubicInterpolate, clamped to 0 .. 255 and truncated (counts;
 * parallel). NaN gives 255.
 *   src_width, src_height   at least 2. Samples outside are replaced by those of column 0 and src_width − 2, row 0 and
 *                           src_height − 2: the last column and row of the source are never read */
TAVIK_EXPORT(void)
xBiCubicHelper(const uint8_t *src, uint8_t *dst, int32_t dst_width, int32_t dst_height, int32_t src_width,
               int32_t src_height, float x_scale, float y_scale);

/* Averages along rows, before a plane is reduced to `target_width` columns (parallel).
 *   target_width   less than 1 counts as 1. From x_max on, all rows are copied as they are; otherwise the span is
 *                  size = x_max / target_width samples, in integers
 *   ignored        any value
 * dst at x = low byte of trunc((1 / size) × sum), the sum of src at x − size/2 + 1 .. x + size/2 with the row's ends
 * repeated; for an odd size at x − (size − 1)/2 + 1 .. x + (size + 1)/2, and then column x_max of dst stays as it was.
 * The last row of dst, row_count − 1, stays as it was except when rows are copied.
 * The sum runs along the row in single precision: it is exact up to a size of 65,792. The index of a row's first sample
 * is read in single precision, too, so that planes of more than 2^24 samples are read some samples beside their rows.
 */
TAVIK_EXPORT(void)
PrefilterCubicPass1Helper(const uint8_t *src, uint8_t *dst, int32_t target_width, int32_t ignored, int32_t x_max,
                          int32_t row_count);

/* Averages along columns, before a plane is reduced to `target_height` rows (parallel).
 *   target_height   less than 1 counts as 1. From y_max on, rows 0 .. y_max − 1 are copied as they are; otherwise the
 *                   span is size = y_max / target_height samples
 *   ignored         any value
 * As along rows, but for an odd size the average for row y is written half a row further on, to
 * dst[y × (x_max + 1) + (x_max + 1) / 2 + x], for y up to y_max − 1. Column x_max is not averaged; what no average is
 * written to stays as it was. */
TAVIK_EXPORT(void)
PrefilterCubicPass2Helpter(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t target_height, int32_t ignored,
                           int32_t y_max);

/* Blends a filtered float plane back toward the bytes it was made of, in place:
 * filtered = (filtered − unfiltered) × amount + unfiltered (counts; parallel).
 *   amount   1 keeps the filtered plane, 0 restores the bytes */
TAVIK_EXPORT(void)
xprefilterlerp(int32_t width, int32_t row_count, float amount, float *filtered, const uint8_t *unfiltered);

/* Rotates and zooms four channel planes about their middle, nearest sample, onto a background (parallel).
 *   zoom           not 0
 *   cosine, sine   of the angle that the picture turns back by
 *   back_a .. c    their low bytes fill the first three planes where the source is outside; the fourth gets 0
 * In integers: C = trunc(cosine × 255), S = trunc(sine × 255), Z = trunc((1 / zoom) × 255), and for x, y from the
 * middle of the destination (dst_x_max / 2, dst_y_max / 2)
 *   sx = ((C·x − S·y)·Z >> 16) + src_x_max / 2, sy = ((S·x + C·y)·Z >> 16) + src_y_max / 2
 * A sample is inside where 0 <= sx < src_x_max and 0 <= sy < src_y_max, so the last column and row of the source are
 * never read. Scales are 255 · 255 / 65536 of the nominal ones. x and y end before the bound's half: for even bounds
 * the last column and row of the destination stay as they were, for odd ones the last two. */
TAVIK_EXPORT(void)
FasterScaleRotate(const uint8_t *src_a, const uint8_t *src_b, const uint8_t *src_c, const uint8_t *src_d,
                  uint8_t *dst_a, uint8_t *dst_b, uint8_t *dst_c, uint8_t *dst_d, int32_t src_x_max, int32_t src_y_max,
                  int32_t dst_x_max, int32_t dst_y_max, float zoom, float cosine, float sine, int32_t back_a,
                  int32_t back_b, int32_t back_c);

/* FasterScaleRotate of one plane onto 0. */
TAVIK_EXPORT(void)
ScaleRotate_8_noAA(const uint8_t *src, uint8_t *dst, int32_t src_x_max, int32_t src_y_max, int32_t dst_x_max,
                   int32_t dst_y_max, float zoom, float cosine, float sine);

/* Draws an affine transform of a channel plane over another of its size, nearest sample (parallel).
 *   left .. bottom       where to draw: rows trunc(top) up to, but without, trunc(bottom + 0.5); columns trunc(left) to
 *                        trunc(right + 0.5), all clamped to 0 .. y_max and 0 .. x_max. A span beside the plane still
 *                        draws its column 0 or x_max
 *   centre_x, centre_y   what the matrix turns about
 *   matrix               16 floats by columns, m[4 · column + row], from destination to source; only 0, 1, 4, 5, 12 and
 *                        13 are used
 * With dx = x − centre_x and dy = y − centre_y, the source position is
 *   sx = m0·dx + m4·dy + m12 + centre_x, sy = centre_y + (m5·dy + m1·dx + m13)
 * and dst at (x, y) = src at (trunc(sx), trunc(sy)) where 0 <= sx <= x_max and 0 < sy <= y_max: sy = 0 is outside.
 * Elsewhere dst stays as it was. */
TAVIK_EXPORT(void)
xfreetransformalpha(float left, float right, float top, float bottom, float centre_x, float centre_y, int32_t x_max,
                    int32_t y_max, const uint8_t *src, uint8_t *dst, const float *matrix);

/* xfreetransformalpha with Bilerp of the four samples around the source position, which is inside where
 * 0 <= sx < x_max and 0 <= sy < y_max. */
TAVIK_EXPORT(void)
xfreetransformalpha_aa(float left, float right, float top, float bottom, float centre_x, float centre_y, int32_t x_max,
                       int32_t y_max, const uint8_t *src, uint8_t *dst, const float *matrix);

/* xfreetransformalpha_aa of four planes, one more pixel to the right and below: with trunc(bottom + 1.5) and
 * trunc(right + 1.5). */
TAVIK_EXPORT(void)
xfreetransform_aa(float left, float right, float top, float bottom, float centre_x, float centre_y, int32_t x_max,
                  int32_t y_max, const uint8_t *src_a, const uint8_t *src_b, const uint8_t *src_c, const uint8_t *src_d,
                  uint8_t *dst_a, uint8_t *dst_b, uint8_t *dst_c, uint8_t *dst_d, const float *matrix);

/* Resizes a grid of points or vectors by bilinear interpolation (parallel).
 *   src, dst   x and y of each node; the last column and row of dst stay as they were
 *   scales     1 / (dst_x_max / src_x_max) and the same of y, in single precision; source bounds are at least 1
 * Each component is (bottom − top)·fy + top of top = (right − left)·fx + left and bottom, the same a row below. */
TAVIK_EXPORT(void)
xBilinearScalePointf(int32_t dst_x_max, int32_t dst_y_max, int32_t src_x_max, int32_t src_y_max, const float *src,
                     float *dst);

/* Scales a row of pixels of three bytes, nearest sample (serial). Positions begin at (start − origin) × scale and scale
 * is added before each of the end − start + 1 steps. A step whose whole position i is 0 .. src_count − 1 appends pixel
 * i + src_offset of src to the destination; others append nothing, so the output has no gaps.
 *   dst_offset   of the first pixel written, in bytes
 *   src_offset   in pixels
 * Returns start − origin where start > end, which does nothing, else 0. */
TAVIK_EXPORT(int32_t)
ScaleHelper(int32_t src_count, int32_t start, int32_t end, float scale, int32_t origin, const uint8_t *src,
            uint8_t *dst, int32_t dst_offset, int32_t src_offset);

/* Mirrors the right half of each row into the left half of dst: dst at x = src at x_max − x for x < x_max / 2
 * (parallel). The other columns stay as they were. dst may be src. */
TAVIK_EXPORT(void) FastHMirror(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t y_max);

/* Mirrors the upper half of a plane into the lower half of dst: with h = y_max / 2, row h + k of dst = row
 * h + y_max mod 2 − k of src, for k = 0 .. y_max − h (parallel). The last column and the rows above h stay as they
 * were. */
TAVIK_EXPORT(void) FastVMirror(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t y_max);

/* Turns the point (x, y) by an angle in degrees: x·cos − y·sin, y·cos + x·sin. */
TAVIK_EXPORT(void) RotatePoint(float angle, float *x, float *y);

/* Transforms a point by a matrix of 16 floats by columns, with perspective:
 *   w = m3·x + m7·y + m11·z + m15
 *   out.x = (m0·x + m4·y + m8·z + m12) × (1 / w), out.y = (m1·x + m5·y + m9·z + m13) × (1 / w), out.z = in.z
 * Where w is 0, out.x and out.y stay as they were.
 *   in, out   x, y and z; may be the same */
TAVIK_EXPORT(void) TransformPoint(const float *in, float *out, const float *matrix);

/* --- Warps, maps, pyramids and soft transforms ---
 *
 * From here on sizes are counts, every sample of a rectangle is handled, bytes are rounded where the entries above
 * truncate, and any float is safe: it can spoil the picture, but reads and writes stay inside the buffers.
 *
 * A position (x, y) is that of a sample's centre, y downward; positions outside a source take its edge samples. Angles
 * are in degrees, clockwise. Sources and destinations are different planes, except where an entry says otherwise. All
 * are parallel by destination rows where no other way is named. "Bilinear" is
 *   top = (b − a)·fx + a, bottom = (d − c)·fx + c, (bottom − top)·fy + top
 * of the samples a, b and below them c, d around a position held to 0 .. width − 1 and 0 .. height − 1, with the
 * fractions fx, fy; bytes are min(max(value + 0.5, 0), 255) truncated. Sines, cosines and arctangents are polynomials of
 * single precision, off by less than 2e−7 and exact at quarter turns. */

/* Magnifies or shrinks what lies inside a circle, as a stereographic fish-eye does against a pinhole picture (also the
 * division model of radial distortion, Fitzgibbon 2001).
 *   strength   below 1: 0 copies, a positive one magnifies the centre by 1 / (1 − strength), a negative one pinches
 * With dx = x − cx, dy = y − cy and q = (dx² + dy²)·(1 / radius²), a pixel with q < 1 is the bilinear sample at
 * (dx·k + cx, dy·k + cy), k = (1 − strength) / (1 − strength·q); others are copied. */
TAVIK_EXPORT(void)
xFisheye(int32_t width, int32_t height, float cx, float cy, float radius, float strength, const uint8_t *src_r,
         const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Draws a ball that carries a map onto a picture, seen from far away, with a smooth edge.
 *   map_width, map_height    a full turn, pole to pole; at least 1
 *   cx, cy, radius           of the ball in the picture
 *   longitude, latitude      of the place in the middle of the disc: longitude 0 is map column 0 and grows to the right,
 *                            latitude 90 is the top row
 * Columns wrap around. The ball covers min(max((1 − d)·radius + 0.5, 0), 1) of a pixel at d radii from the centre; what
 * it covers nothing of stays as it was. */
TAVIK_EXPORT(void)
xGlobe(int32_t map_width, int32_t map_height, int32_t width, int32_t height, float cx, float cy, float radius,
       float longitude, float latitude, const uint8_t *map_r, const uint8_t *map_g, const uint8_t *map_b,
       uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Bends a picture into a disc or unrolls one, to the same size.
 *   radius   of the disc: the last row lies there
 *   unroll   0 makes columns spokes, clockwise from straight up, and rows rings around (cx, cy), row 0 in the middle;
 *            columns wrap around, and beyond the radius the last row goes on. Others do the inverse */
TAVIK_EXPORT(void)
xPolarHelper(int32_t width, int32_t height, float cx, float cy, float radius, int32_t unroll, const uint8_t *src_r,
             const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Distorts a picture as a lens does, by the radial terms of the Brown-Conrady model (serial).
 *   k1, k2   positive ones draw the rim inward (barrel), negative ones push it outward (pincushion)
 *   zoom     below 1 enlarges; 1 keeps the size
 *   fringe   by how much red is drawn further inward than green, and blue less: lateral chromatic aberration, about
 *            0.01
 * With q = (dx² + dy²)·(4 / (width² + height²)), 1 at the corners of a centred picture, and
 * k = ((k2·q + k1)·q + 1)·zoom, channels are bilinear samples at (dx·k' + cx, dy·k' + cy), where k' is k·(1 + fringe)
 * for red, k for green and k·(1 − fringe) for blue. */
TAVIK_EXPORT(void)
xLensHelper(int32_t width, int32_t height, float cx, float cy, float k1, float k2, float zoom, float fringe,
            const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
            uint8_t *dst_b);

/* xLensHelper by rows in parallel. */
TAVIK_EXPORT(void)
p_LensHelper(int32_t width, int32_t height, float cx, float cy, float k1, float k2, float zoom, float fringe,
             const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
             uint8_t *dst_b);

/* Twists a picture of width × rows about a point, destinations before sources.
 *   degrees   that the centre turns by, clockwise; 0 copies
 * With f = 1 − distance / radius, a pixel with f > 0 is the bilinear sample turned back by degrees·f² about (cx, cy);
 * others are copied. */
TAVIK_EXPORT(void)
xRenderTwirlTo(float cx, float cy, float radius, float degrees, int32_t width, int32_t rows, uint8_t *dst_r,
               uint8_t *dst_g, uint8_t *dst_b, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b);

/* Moves samples by a field of vectors: the pixel at (x, y) is the bilinear sample at (vx·amount + x, vy·amount + y).
 *   field_stride   vectors in a row of the field, at least width
 *   field          vx, vy of each pixel. A coarse grid resized by xBilinearScalePointf with dst_x_max = width and
 *                  dst_y_max = height serves with field_stride = width + 1 */
TAVIK_EXPORT(void)
xLinearWarp(int32_t width, int32_t height, float amount, int32_t field_stride, const float *field, const uint8_t *src_r,
            const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Draws a picture between two others, warped and cross-dissolved (field morphing, Beier and Neely 1992).
 *   t       0 gives `from`, 1 gives `to`
 *   field   as of xLinearWarp; at an in-between position, where its feature lies in `to` minus where in `from`
 * dst = (q − p)·t + p, rounded, of the bilinear samples p of `from` at (x − vx·t, y − vy·t) and q of `to` at
 * (vx·(1 − t) + x, vy·(1 − t) + y). */
TAVIK_EXPORT(void)
xBilinearMorpheHelper(int32_t width, int32_t height, float t, int32_t field_stride, const float *field,
                      const uint8_t *from_r, const uint8_t *from_g, const uint8_t *from_b, const uint8_t *to_r,
                      const uint8_t *to_g, const uint8_t *to_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Makes a map of source positions that of a picture twice as wide and high, whose source is twice as large, too.
 *   map   x and y for each pixel of width × height
 *   dst   the same of 2·width × 2·height
 * Even columns and rows get twice a node, those between two nodes their sum, those between four half of their sum. After
 * the last column, and then after the last row, the map goes on as from the one before to the last. */
TAVIK_EXPORT(void) Mapxtwo(int32_t width, int32_t height, const float *map, float *dst);

/* Copies the nearest samples at the positions of a map, without interpolation, so that palette indices and masks keep
 * their values.
 *   map   x and y for each destination pixel of width × height; NaN counts as the last column or row
 * Sources are src_width × src_height, at least 1 × 1. */
TAVIK_EXPORT(void)
MapCopy(int32_t width, int32_t height, const float *map, int32_t src_width, int32_t src_height, const uint8_t *src_r,
        const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Makes the next level of an image pyramid, of half the size rounded up, by the weights 1 3 3 1 (Burt and Adelson 1983):
 * sums of four samples, ((a + d) + (b + c)·3)·0.125, along rows and then along columns, edge samples repeated.
 *   src   width × height floats
 *   dst   (width + 1) / 2 × (height + 1) / 2 floats
 * A pyramid is one buffer of all its levels, the largest first. A sample of level k stands for the middle of a block of
 * 2^k × 2^k: level 0 at x is level k at (x + 0.5)·2^−k − 0.5. */
TAVIK_EXPORT(void) xHalfSizeBuf(int32_t width, int32_t height, const float *src, float *dst);

/* Returns a value of a pyramid by trilinear interpolation (mip mapping, Williams 1983).
 *   x, y            position on level 0
 *   level           0 .. levels − 1, with fractions between levels; held to that
 *   width, height   of level 0
 *   levels          in the buffer, at least 1 */
TAVIK_EXPORT(float)
xEval(float x, float y, float level, int32_t width, int32_t height, int32_t levels, const float *pyramid);

/* xEval by one look-up: the sample whose block the position lies in, of the nearest level. */
TAVIK_EXPORT(float)
xFastEval(float x, float y, float level, int32_t width, int32_t height, int32_t levels, const float *pyramid);

/* Enlarges what was made of a reduced plane, and adds the detail that reducing took away (Laplacian pyramid):
 * dst = fine·gain + (enlarged(coarse_out) − enlarged(coarse_in)·gain).
 *   gain         0 is a smooth enlargement, 1 restores the detail, more is local contrast
 *   fine, dst    width × height; dst may be fine
 *   coarse_in    fine after xHalfSizeBuf
 *   coarse_out   what was made of coarse_in; the same plane with gain 1 gives fine
 * An enlarged sample is 3/4 of the coarse one it lies in and 1/4 of the one next to it, along rows and then along
 * columns, edge samples repeated. */
TAVIK_EXPORT(void)
xrefinementhelper(int32_t width, int32_t height, float gain, const float *fine, const float *coarse_in,
                  const float *coarse_out, float *dst);

/* Draws an affine transform of a picture by Catmull-Rom cubics, with smooth edges and its opacity.
 *   dst_a        how much of each pixel the source covers
 *   matrix       16 floats by columns, m[4 · column + row], from destination to source; only 0, 1, 4, 5, 12 and 13 are
 *                used
 *   background   0x00BBGGRR, mixed in where the source does not cover a pixel whole
 *   samples      n for n × n sub-samples to a pixel, held to 1 .. 4; without reduction, 1 serves inside a picture
 * The sub-sample k of n lies (k + 0.5)·(1 / n) − 0.5 off the pixel's centre. Its source position is (m0·px + m4·py) +
 * m12, (m1·px + m5·py) + m13; it counts where that is at least −0.5 and less than the size − 0.5, and its value is the
 * cubic of f_bicubicInterpolate, along x and then along y, clamped to 0 .. 255. dst is the rounded mean of n². */
TAVIK_EXPORT(void)
GoodTransform2(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
               uint8_t *dst_b, uint8_t *dst_a, int32_t src_width, int32_t src_height, int32_t dst_width,
               int32_t dst_height, const float *matrix, int32_t background, int32_t samples);

/* Draws a picture as a sheet through the middle of the frame, turned in space, nearest sample.
 *   degrees_x .. z   turns about the x axis, then y, then z; 0 copies
 *   distance         of the eye in front of the frame's middle, in pixels
 *   background       0x00BBGGRR, beside the sheet
 * From behind the picture is mirrored; edge-on, all is background. */
TAVIK_EXPORT(void)
Fast_ThreeDeePerspective(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r,
                         uint8_t *dst_g, uint8_t *dst_b, int32_t width, int32_t height, float degrees_x,
                         float degrees_y, float degrees_z, float distance, int32_t background);

#endif
