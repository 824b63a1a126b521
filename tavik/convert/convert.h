/* convert: pixels between channel planes, packed colours, float planes and bitmaps; single colours; and raw
 * memory for hosts whose language has no pointers.
 *
 * Packings used here:
 *   RGBV quad      4 bytes R, G, B, V in memory order, V = (R + G + B) / 3; as a number 0xVVBBGGRR
 *   bitmap pixel   uint32_t (R << 16) | (G << 8) | B: bytes B, G, R, 0 in memory, as in a top-down 32-bit
 *                  device-independent bitmap
 *   ARGB           int32_t (A << 24) | (R << 16) | (G << 8) | B
 * Buffer kinds and size forms are those of frame.h. Functions without a size form touch only what they name. */
#ifndef TAVIK_CONVERT_CONVERT_H
#define TAVIK_CONVERT_CONVERT_H

#include "tavik/export.h"

/* Packs a colour as ARGB: ((a·256 | r)·256 | g)·256 | b. The parts are not masked: one above 255 spills into
 * the next field. */
TAVIK_EXPORT(int32_t) GDIP_ColorToARGB(int32_t a, int32_t r, int32_t g, int32_t b);

/* Writes bits 24-31 of `colour` to *p1, bits 16-23 to *p2 and bits 8-15 to *p3; bits 0-7 are not used. Of an
 * ARGB value that is alpha, red, green. */
TAVIK_EXPORT(void) Long_To_RGB(int32_t colour, uint8_t *p1, uint8_t *p2, uint8_t *p3);

/* Returns `value` shifted left by `count` modulo 32. */
TAVIK_EXPORT(int32_t) xshiftL(int32_t value, int32_t count);

/* Returns `value` shifted right by `count` modulo 32, copying the sign bit. */
TAVIK_EXPORT(int32_t) xshiftR(int32_t value, int32_t count);

/* Exchanges *p and *q by three exclusive-ors; when p and q are the same address the value becomes 0. */
TAVIK_EXPORT(void) swap_l(int32_t *p, int32_t *q);

/* Returns the address of a variable as a number as wide as a pointer. */
TAVIK_EXPORT(intptr_t) GetAddressSingle(float *p);

/* Returns base[index], 0 .. 255. */
TAVIK_EXPORT(int32_t) ReadChar(const uint8_t *base, int32_t index);

/* Stores the low 8 bits of `value` at base[index]. */
TAVIK_EXPORT(void) WriteChar(uint8_t *base, int32_t index, int32_t value);

/* Stores the 32-bit pattern `value` into dst[0] .. dst[count − 1]. To fill with a float pass its bits. Serial. */
TAVIK_EXPORT(void) SetFloat(int32_t count, int32_t value, void *dst);

/* Stores the 32-bit pattern `value` into the width × height words of dst (counts). Serial. */
TAVIK_EXPORT(void) xFillBuff(int32_t width, int32_t height, int32_t value, void *dst);

/* Converts a channel plane to a float plane, 0.0 .. 255.0 exactly (counts; parallel by rows). */
TAVIK_EXPORT(void) char_to_float(int32_t width, int32_t height, const uint8_t *src, float *dst);

/* Converts a float plane to a channel plane (counts; parallel by rows): the low 8 bits of the value truncated
 * toward zero. There is no clamp: 256.7 gives 0 and −1.0 gives 255. NaN and values outside the 32-bit integers
 * give 0. */
TAVIK_EXPORT(void) float_to_char(int32_t width, int32_t height, const float *src, uint8_t *dst);

/* Converts a float plane to a channel plane (counts; parallel by rows): the value clamped to 0 .. 255, then
 * truncated. NaN gives 255. */
TAVIK_EXPORT(void) float_to_char_clamp(int32_t width, int32_t height, const float *src, uint8_t *dst);

/* Widens a channel plane to 32-bit integers (counts; parallel by rows). */
TAVIK_EXPORT(void) char_to_long(int32_t width, int32_t height, const uint8_t *src, int32_t *dst);

/* Stores the low 8 bits of 32-bit integers in a channel plane (counts; parallel by rows). */
TAVIK_EXPORT(void) long_to_char(int32_t width, int32_t height, const int32_t *src, uint8_t *dst);

/* Packs three channel planes into a bitmap. Parallel by rows.
 *   x_max, height   the planes are (x_max + 1) × height; only the first x_max pixels of each row are converted
 *   dst_stride      pixels per row of the bitmap; may be larger than the planes' rows
 *   ignored         not used
 *   dst             bitmap pixels, dst_stride × height; their top byte becomes 0, the rest of a row stays */
TAVIK_EXPORT(void)
RGB_to_bbytes(int32_t x_max, int32_t height, int32_t dst_stride, int32_t ignored, const uint8_t *src_r,
              const uint8_t *src_g, const uint8_t *src_b, uint32_t *dst);

/* Unpacks a bitmap into three channel planes: the inverse of RGB_to_bbytes, with the same sizes. The top byte of
 * a bitmap pixel is not used; the last sample of each plane row stays as it was. Parallel by rows. */
TAVIK_EXPORT(void)
bbytes_to_RGB(int32_t x_max, int32_t height, int32_t src_stride, int32_t ignored, uint8_t *dst_r, uint8_t *dst_g,
              uint8_t *dst_b, const uint32_t *src);

/* Packs three channel planes into RGBV quads (upper bounds; serial). */
TAVIK_EXPORT(void)
LongRGBV_to_RGB_array(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst, int32_t x_max,
                      int32_t y_max);

/* Unpacks RGBV quads into three channel planes; V is not used (upper bounds; serial). */
TAVIK_EXPORT(void)
Long_to_RGBV_array(uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const uint8_t *src, int32_t x_max, int32_t y_max);

/* Maps three channel planes through one table and counts the results, one task per channel at the same time.
 *   table           256 bytes
 *   histograms      3 × 256 counters: red, green, blue; each result adds 1, the caller clears them
 *   width, height   counts, of which only the low 16 bits are used, as signed numbers
 * A destination may be its own source. The planes of different channels, and the counters, must not overlap. */
TAVIK_EXPORT(void)
NewSetValue(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
            uint8_t *dst_b, const uint8_t *table, int32_t *histograms, int32_t width, int32_t height);

#endif
