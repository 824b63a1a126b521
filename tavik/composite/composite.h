/* composite: blend modes, alpha blits, previews, onion skins and accumulation of frames.
 *
 * Every operation but the blits works element by element, so a destination may be its own source. The blend modes
 * and AlphaBlit visit their elements in increasing order, also where planes overlap partly. Integers and floats are
 * evaluated as written: single precision with K = 0.003921569 (1/255), one rounding for each operation in the order
 * written, conversions to integers that truncate toward zero (out of range gives −2147483648). "Low byte" means that
 * a result outside 0 .. 255 wraps, without a clamp. Buffer kinds and size forms are those of frame.h; a display row
 * is a run of pixels of three bytes, blue, green, red.
 *
 * Layer modes share one frame: `layer` is read, `target` is read and overwritten, both channel planes of
 * width × height (counts); serial. Below, L is the layer's sample and T the target's, and a quotient truncates
 * toward zero. */
#ifndef TAVIK_COMPOSITE_COMPOSITE_H
#define TAVIK_COMPOSITE_COMPOSITE_H

#include "tavik/export.h"

/* Adds two planes: dst = min(a + b, 255) (upper bounds; serial). */
TAVIK_EXPORT(void)
xCombineAdd(int32_t x_max, int32_t y_max, const uint8_t *src_a, const uint8_t *src_b, uint8_t *dst);

/* Subtracts the second plane from the first: dst = max(a − b, 0) (upper bounds; serial). */
TAVIK_EXPORT(void)
xCombineSub(int32_t x_max, int32_t y_max, const uint8_t *src_a, const uint8_t *src_b, uint8_t *dst);

/* Mixes a plane into another: target = low byte of trunc(src × g + target × f), f = amount × K, g = 1 − f (upper
 * bounds; serial).
 *   amount   the weight of the target's own value: 0 copies src, 255 keeps target; it is not clamped, and beyond
 *            0 .. 255 results wrap */
TAVIK_EXPORT(void) xBlend(int32_t x_max, int32_t y_max, int32_t amount, const uint8_t *src, uint8_t *target);

/* Mixes two planes: dst = low byte of trunc(a × g + b × f), f and g as in xBlend (upper bounds; serial). */
TAVIK_EXPORT(void)
xBlend2(int32_t x_max, int32_t y_max, int32_t amount, const uint8_t *src_a, const uint8_t *src_b, uint8_t *dst);

/* Lays a plane over another through a mask, in place: over = trunc((over − under) × mask × K + under) (counts;
 * serial). Mask 0 gives under; mask 255 keeps over, less 1 for some pairs whose product rounds up. */
TAVIK_EXPORT(void)
Overlay_channel(uint8_t *over, const uint8_t *under, const uint8_t *mask, int32_t width, int32_t height);

/* Soft light: with s = L >> 1, trunc((2s + 128) × T × K) where T < 128, else
 * trunc(255 − 2 × (191 − s) × (255 − T) × K). Even layers and the odd ones above them give the same. */
TAVIK_EXPORT(void) xcombineSoftLight(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target);

/* Hard light: 2·T·L / 255 where L < 128, else 255 − 2·(255 − L)·(255 − T) / 255. The layer chooses the half. */
TAVIK_EXPORT(void) xcombineHardLight(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target);

/* Colour dodge: 255 where T is 255, else min(256·L / (255 − T), 255). */
TAVIK_EXPORT(void) xcombineColorDodge(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target);

/* Colour burn: 0 where T is 0, else max(255 − 256·(255 − L) / T, 0). */
TAVIK_EXPORT(void) xcombineColorBurn(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target);

/* Linear dodge: L + T − 256 where the sum is above 255, else 255. Sums wrap around instead of stopping at white, and
 * what would fit becomes white. */
TAVIK_EXPORT(void) xcombinelinearDodge(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target);

/* Linear burn: max(L + T − 255, 0). */
TAVIK_EXPORT(void) xcombinelinearBurn(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target);

/* Linear light: with t = L + 2·T, max(t − 255, 0) where T < 128; else 255 where t is below 512 and t − 512 from
 * there, wrapping around as linear dodge does. */
TAVIK_EXPORT(void) xcombineLinearLight(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target);

/* Vivid light: 0 where T is 0; max(255 − 256·(255 − L) / 2T, 0) where T < 128; else min(256·L / (511 − 2T), 255). */
TAVIK_EXPORT(void) xcombineVividLight(int32_t width, int32_t height, const uint8_t *layer, uint8_t *target);

/* Draws a plane through an alpha plane: dst = ((255 − alpha) × dst + src × alpha) >> 8 (counts; serial). The division
 * by 256 darkens: white on white becomes 254, under alpha 0 too. */
TAVIK_EXPORT(void)
AlphaBlit(int32_t width, int32_t height, const uint8_t *src, uint8_t *dst, const uint8_t *alpha);

/* Draws a coloured matte over a display row. Serial. For k = 0 .. count − 1 with x = x0 + k in 0 .. x_limit − 1 and
 * m = mask[mask_offset + k] other than 0, the pixel at row[row_offset + 3k] becomes, with a = (m × opacity) >> 8,
 *   byte = low byte of (byte × (255 − a) + a × colour) >> 8
 * Pixels elsewhere are neither read nor written, and the mask is read inside 0 .. x_limit − 1 only.
 *   red, green, blue, opacity   0 .. 255; beyond that results wrap */
TAVIK_EXPORT(void)
Matte_preview_helper(uint8_t *row, const uint8_t *mask, int32_t count, int32_t x0, int32_t x_limit, int32_t mask_offset,
                     int32_t red, int32_t green, int32_t blue, int32_t row_offset, int32_t opacity);

/* Writes the product of two planes into the middle bytes of a display row. Serial. For i = first .. last, the byte
 * row[row_offset + 1 + 3·(i − first)] = (a[i] × b[i]) >> 8, or (a[i] × (255 − b[i])) >> 8 with `invert` other than
 * 0. */
TAVIK_EXPORT(void)
alpha_overlay_helper(int32_t row_offset, int32_t ignored, int32_t first, int32_t last, const uint8_t *a,
                     const uint8_t *b, uint8_t *row, int32_t invert);

/* An onion skin: adds six weighted images of three channels, tinted (counts; the three channels at the same time).
 *   v   the images' samples; of images 1 to 3 in channel 1 and of images 4 to 6 in channel 3, min(v + 80, 255)
 *   dst = low byte of trunc(w1·v1 + w2·v2 + ... + w6·v6), added in this order
 *   w1 .. w6   weights with a sum up to 1; beyond that results wrap
 *   imageK_C   channel C of image K */
TAVIK_EXPORT(void)
UnionSkin(int32_t width, int32_t height, float w1, float w2, float w3, float w4, float w5, float w6,
          const uint8_t *image1_1, const uint8_t *image1_2, const uint8_t *image1_3, const uint8_t *image2_1,
          const uint8_t *image2_2, const uint8_t *image2_3, const uint8_t *image3_1, const uint8_t *image3_2,
          const uint8_t *image3_3, const uint8_t *image4_1, const uint8_t *image4_2, const uint8_t *image4_3,
          const uint8_t *image5_1, const uint8_t *image5_2, const uint8_t *image5_3, const uint8_t *image6_1,
          const uint8_t *image6_2, const uint8_t *image6_3, uint8_t *dst1, uint8_t *dst2, uint8_t *dst3);

/* UnionSkin without the tint. */
TAVIK_EXPORT(void)
UnionSkin_untinted(int32_t width, int32_t height, float w1, float w2, float w3, float w4, float w5, float w6,
                   const uint8_t *image1_1, const uint8_t *image1_2, const uint8_t *image1_3, const uint8_t *image2_1,
                   const uint8_t *image2_2, const uint8_t *image2_3, const uint8_t *image3_1, const uint8_t *image3_2,
                   const uint8_t *image3_3, const uint8_t *image4_1, const uint8_t *image4_2, const uint8_t *image4_3,
                   const uint8_t *image5_1, const uint8_t *image5_2, const uint8_t *image5_3, const uint8_t *image6_1,
                   const uint8_t *image6_2, const uint8_t *image6_3, uint8_t *dst1, uint8_t *dst2, uint8_t *dst3);

/* Exchanges a block with a region of a plane. Serial; twice restores both.
 *   x0, y0   the region's top left corner; a negative one moves to 0, the block is not cut off there. At the right
 *            and bottom the region ends with the plane, and what lies outside stays
 *   plane    channel plane of plane_width × plane_height
 *   block    channel plane of block_width × block_height */
TAVIK_EXPORT(void)
xSwapBlit(int32_t plane_width, int32_t plane_height, int32_t x0, int32_t y0, int32_t block_width, int32_t block_height,
          uint8_t *plane, uint8_t *block);

/* Places a scaled image in a frame, nearest sample, with a colour around it (counts; parallel by rows).
 *   sx = trunc((x − x_offset) / scale), sy = trunc((y − y_offset) / scale), in single precision
 *   dst at (x, y) = src at (sx, sy) where 0 <= sx < src_width − 1 and 0 <= sy < src_height − 1, else the low byte of
 *   fill. So the last column and row of the source are never drawn, and up to one step of scale left of and above
 *   the offset the first ones are.
 *   dst1, dst2, dst3   planes of dst_width × dst_height, apart from the sources; the last row stays as it was */
TAVIK_EXPORT(void)
FixedAspectBlit(int32_t src_width, int32_t src_height, int32_t dst_width, int32_t dst_height, int32_t x_offset,
                int32_t y_offset, float scale, int32_t fill1, int32_t fill2, int32_t fill3, uint8_t *dst1,
                uint8_t *dst2, uint8_t *dst3, const uint8_t *src1, const uint8_t *src2, const uint8_t *src3);

/* Shows an image that fades along a line, over a checkerboard (counts; parallel by rows).
 *   The fade t is 0 up to the line through (x1, y1) at right angles to the direction to (x2, y2), rises from there by
 *   255 to the line through (x2, y2), whatever the direction, and stays 255 beyond:
 *     dx = x1 − x2, dy = y1 − y2, scale = 255 / (dx·dx + dy·dy), A = dx × scale, B = dy × scale
 *     row y begins with v = y × B − (x1 × A + y1 × B); each pixel adds A to v, the first one too, and
 *     t = trunc(−v) clamped to 0 .. 255
 *   Points less than one pixel apart draw nothing.
 *   g = 200 where both or none of x mod 20 < 10 and y mod 20 > 10 hold, else 100
 *   f = mask × (255 − t) × 1/65025; dst = trunc((src − g) × f + g) */
TAVIK_EXPORT(void)
xLinearAlphaFadePreview(int32_t width, int32_t height, int32_t x1, int32_t y1, int32_t x2, int32_t y2,
                        const uint8_t *src1, const uint8_t *src2, const uint8_t *src3, const uint8_t *mask,
                        uint8_t *dst1, uint8_t *dst2, uint8_t *dst3);

/* Adds a frame to three accumulators: acc += src, in 16 bits that wrap around (counts; parallel by rows). The host
 * clears the accumulators before the first frame. */
TAVIK_EXPORT(void)
xAccumulate(int32_t width, int32_t height, const uint8_t *src1, const uint8_t *src2, const uint8_t *src3, int16_t *acc1,
            int16_t *acc2, int16_t *acc3);

/* Adds a weighted frame to three accumulators: acc += src × weight, in 16 bits that wrap around (counts; parallel by
 * rows).
 *   weight   its low 16 bits count, as a signed number */
TAVIK_EXPORT(void)
xAccumulate3d(int32_t width, int32_t height, int32_t weight, const uint8_t *src1, const uint8_t *src2,
              const uint8_t *src3, int16_t *acc1, int16_t *acc2, int16_t *acc3);

/* Divides three accumulators into planes: dst = low byte of acc / divisor, toward zero (counts; parallel by rows).
 * The size comes after the divisor. A sum of 32768 or more has wrapped around to a negative one. Divisor 0 is a
 * divide fault. */
TAVIK_EXPORT(void)
xAccumulate_finish(int32_t divisor, int32_t width, int32_t height, const int16_t *acc1, const int16_t *acc2,
                   const int16_t *acc3, uint8_t *dst1, uint8_t *dst2, uint8_t *dst3);

#endif
