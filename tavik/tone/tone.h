/* tone: levels, posterising, look-up tables, gamma, contrast, inversion and brightness of channel planes.
 *
 * Every operation works element by element, so a destination may be its own source. Integers and floats are
 * evaluated as written: 32-bit integers that wrap around, single precision unless double is said, conversions
 * that truncate toward zero (out of range or NaN gives −2147483648). "Low byte" means that a result outside
 * 0 .. 255 wraps, without a clamp. Buffer kinds and size forms are those of frame.h. */
#ifndef TAVIK_TONE_TONE_H
#define TAVIK_TONE_TONE_H

#include "tavik/export.h"

/* Stretches the input range in_low .. in_high to 0 .. 256 and clips the result to out_low .. out_high (the output
 * range clips, it does not rescale). Serial.
 *   scale = 65536 / (in_high − in_low), or 0 when that difference is not positive
 *   v = ((src − in_low) × scale) >> 8; dst = low byte of out_low if v < out_low, else of min(v, out_high)
 *   src, dst        channel planes of x_max + 1 columns
 *   x_max, height   (x_max + 1) × height − 1 elements: the last one stays as it was */
TAVIK_EXPORT(void)
AdjustLevels_channel(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t height, int32_t out_low, int32_t out_high,
                     int32_t in_low, int32_t in_high);

/* AdjustLevels_channel in parallel by pixels, over width × height elements (counts). */
TAVIK_EXPORT(void)
AdjustLevels_channel_ppl(const uint8_t *src, uint8_t *dst, int32_t width, int32_t height, int32_t out_low,
                         int32_t out_high, int32_t in_low, int32_t in_high);

/* Reduces each channel to multiples of `step`: q = low byte of (src × (65536 / step)) >> 16, dst = low byte of
 * q × (low byte of step). Serial, red before green before blue; one short: the last element of each plane stays.
 * Step 1 copies, 64 gives 0, 64, 128, 192, 255 gives 0 throughout. Step 0 is a divide fault. */
TAVIK_EXPORT(void)
FastPosterize(uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, int32_t width, int32_t height, const uint8_t *src_r,
              const uint8_t *src_g, const uint8_t *src_b, int32_t step);

/* FastPosterize in parallel by pixels, over width × height elements (counts), one plane after the other. */
TAVIK_EXPORT(void)
FastPosterize_ppl(uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, int32_t width, int32_t height, const uint8_t *src_r,
                  const uint8_t *src_g, const uint8_t *src_b, int32_t step);

/* Maps one plane through three tables of 256 bytes into three planes (upper bounds; parallel by rows). Each
 * destination may be the source. */
TAVIK_EXPORT(void)
MapLut(int32_t x_max, int32_t y_max, const uint8_t *src, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b,
       const uint8_t *table_r, const uint8_t *table_g, const uint8_t *table_b);

/* Maps a plane through a table of 256 bytes: dst = table[src] (counts; serial). */
TAVIK_EXPORT(void) ValueLut(int32_t width, int32_t height, const uint8_t *src, uint8_t *dst, const uint8_t *table);

/* Raises a plane to a power approximately, in place (upper bounds; serial): x = value × 0.003921569 as a double,
 * k = trunc((the upper 32 bits of x − 1072632447) × gamma + 1072632447.0), in double precision; the double whose
 * upper 32 bits are k and lower 32 bits 0, as a float clamped to 0 .. 1, × 255 truncated. Off by a few levels:
 * gamma 1 lowers most values by one, and gamma 0.5 gives 251 for 255. A NaN gives 0, so that black stays black for
 * every gamma above 0.
 * Source: N. N. Schraudolph, "A Fast, Compact Approximation of the Exponential Function", 1999. */
TAVIK_EXPORT(void) xGamma(int32_t x_max, int32_t y_max, float gamma, uint8_t *plane);

/* Changes contrast around 128, in place (upper bounds; serial): trunc((value − 128) × amount) + 128, clamped to
 * 0 .. 255. */
TAVIK_EXPORT(void) xcontrast(int32_t x_max, int32_t y_max, float amount, uint8_t *plane);

/* Replaces each sample by 255 − sample, in place (upper bounds; serial). */
TAVIK_EXPORT(void) xInvert(int32_t x_max, int32_t y_max, uint8_t *plane);

/* Replaces each sample by 255 − sample, in place (counts; serial). */
TAVIK_EXPORT(void) xNegate(int32_t width, int32_t height, uint8_t *plane);

/* Flips the lightness of three planes and keeps the differences between the channels, in place (counts; serial):
 * m = (r + g + b) / 3, each channel c becomes c + 255 − 2m clamped to 0 .. 255. */
TAVIK_EXPORT(void) xInvertValue(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b);

/* Subtracts the mean of the channels from each, in place (counts; serial): m = (r + g + b) / 3, each channel c
 * becomes max(c − m, 0). */
TAVIK_EXPORT(void) xValueCancelation(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b);

/* Writes a weighted grey to three planes. Serial; one short: the last element of each plane stays.
 *   weights wR = 255 − expose_r, wG, wB alike; scale = 65536 / (wR + wG + wB) as unsigned numbers, the sum taken
 *   as 1 when it is 0
 *   dst = low byte of ((srcB·wB + srcG·wG + srcR·wR) × scale) >> 16
 *   width, height   at least one pixel; of exactly one, nothing is written
 *   expose_*        0 .. 255; 255 takes a channel out of the mix */
TAVIK_EXPORT(void)
FastGreyscaleExpose(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, int32_t width, int32_t height,
                    uint8_t *dst1, uint8_t *dst2, uint8_t *dst3, int32_t expose_r, int32_t expose_g, int32_t expose_b);

/* Multiplies `count` samples by a factor, in place: the low byte of trunc(sample × factor), so factors above 1
 * wrap. Serial. */
TAVIK_EXPORT(void) xDimChannel(float factor, int32_t count, uint8_t *plane);

/* Maps a plane through a gamma curve (counts; parallel by rows):
 * dst = trunc(clamp(powf(src × 0.003921569, gamma) × gain + offset, 0, 1) × 255); the curve's value for 255 is taken
 * at 1.0 exactly. */
TAVIK_EXPORT(void)
xGammaAB(float gamma, float gain, float offset, int32_t width, int32_t height, const uint8_t *src, uint8_t *dst);

/* Scales a plane by a factor up to 1: dst = (src × k) >> 8 with k = trunc(factor × 255), in 16 bits. Serial.
 *   x_max, y_max   upper bounds, in blocks of 8: of n elements n / 8 blocks are written, the first one even when n
 *                  is below 8 (both planes hold at least 8 samples), the n mod 8 last elements stay
 *   factor         0 .. 1; above 1 nothing is written */
TAVIK_EXPORT(void) ChannelValue_mmx(uint8_t *dst, const uint8_t *src, int32_t x_max, int32_t y_max, float factor);

/* Scales a plane by a factor, in place. Serial. Up to 1 as ChannelValue_mmx, blocks of 8 included; above 1 all
 * elements (upper bounds) become min((sample × k) >> 8, 255). */
TAVIK_EXPORT(void) ChannelValue1_mmx(uint8_t *plane, int32_t x_max, int32_t y_max, float factor);

/* Adds `delta`, −255 .. 255 or beyond, to a plane in place, clamped to 0 .. 255. Serial; one short: the last
 * element stays. */
TAVIK_EXPORT(void) FastChannelAdd(uint8_t *plane, int32_t width, int32_t height, int32_t delta);

#endif
