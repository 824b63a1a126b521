/* colour: conversion between RGB and HSV, and colour transforms of three channel planes.
 *
 * Floats are single precision unless double is said, evaluated in the order written; conversions to integers
 * truncate toward zero (out of range or NaN gives −2147483648). "Low byte" means that a result outside 0 .. 255
 * wraps, without a clamp. Every transform works element by element, so each destination may be its own source.
 * Buffer kinds and size forms are those of frame.h. */
#ifndef TAVIK_COLOUR_COLOUR_H
#define TAVIK_COLOUR_COLOUR_H

#include "tavik/export.h"

/* Converts a colour to hue, saturation and value.
 *   r, g, b      on any common scale
 *   hue          degrees, 0 to below 360, or −1 for grey and black, which have none
 *   saturation   (largest − smallest) / largest, or 0 when the largest is 0
 *   value        the largest of r, g and b, on their scale
 * Of equal largest components red decides the hue before green, green before blue:
 *   60 × ((g − b)/d, 2 + (b − r)/d or 4 + (r − g)/d), d = largest − smallest, + 360 if negative
 * The largest and smallest leave NaN components out; of three NaN the hue is what `hue` held, × 60, + 360 if
 * negative. */
TAVIK_EXPORT(void) RGB_To_HSV(float r, float g, float b, float *hue, float *saturation, float *value);

/* Converts hue, saturation and value to a colour of 0 .. 1 (larger values are clipped).
 *   h         degrees; 360 is taken for 0
 *   s, v      saturation, and value on a scale of 0 .. 1
 * k = h × 0.016666668, i = trunc(k), f = k − i; p = v(1 − s), q = v(1 − f·s), t = v(1 − (1 − f)·s).
 * i = 0 .. 5 gives (v, t, p), (q, v, p), (p, v, t), (p, q, v), (t, p, v), (v, p, q). Any other i, such as that of
 * −60 or 420 degrees, writes no colour. In each case r, g and b are then clipped to 0 .. 1 in place. */
TAVIK_EXPORT(void) HSV_To_RGB(float *r, float *g, float *b, float h, float s, float v);

/* Clamps each of three integers to 0 .. 255 in place. */
TAVIK_EXPORT(void) Saturate(int32_t *r, int32_t *g, int32_t *b);

/* Turns the hue and scales saturation and value of three planes, in place (upper bounds; serial).
 *   hue_shift                 degrees, any number
 *   saturation_, value_scale  factors
 * Each pixel goes through RGB_To_HSV as r, g, b × 0.003921569; hue + hue_shift is truncated to whole degrees and
 * taken modulo 360 (0 .. 359); saturation and value are multiplied; the result of HSV_To_RGB × 255 is truncated.
 * The whole degrees and truncations may change a coloured pixel by a level even where nothing is asked for. */
TAVIK_EXPORT(void)
xHue(int32_t x_max, int32_t y_max, float hue_shift, float saturation_scale, float value_scale, uint8_t *r, uint8_t *g,
     uint8_t *b);

/* Makes day into night, darker toward the top, in place (counts; serial).
 *   t = y × (1/height), u = 1 − t in row y; k = (G·0.3 + R·0.2 + B·0.5) × 0.5
 *   r1 = R·0.5 + k, g1 = G·0.5 + k, b1 = B·0.5 + k
 *   R = trunc(r1·0.5·u + r1·0.6·t), G = trunc(g1·0.62·u + g1·0.76·t), B = trunc(b1·0.7·u + b1·0.84·t) */
TAVIK_EXPORT(void) xDayForNight(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b);

/* Adds fog that thickens toward the bottom, in place (counts; serial). The top row stays as it is.
 *   t = y × (1/height), u = 1 − t in row y; a = (G + R + B) × 0.33333334; f = min(t·32 + a + a·u, 255)
 *   R = trunc(f·0.76·t + R·u) and G = trunc(f·0.8·t + G·u) in double precision, B = trunc(B·u + f·t) */
TAVIK_EXPORT(void) xFogFilter(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b);

/* Tones three planes brown (counts; parallel by rows).
 *   lift         raises the darkest tones and lowers the contrast, 0 .. 0.5
 *   desaturate   0 keeps the colours, 1 makes them grey
 *   tint         0 .. 1, takes up to 10 % off green and 33 % off blue
 * grey = G·0.587 + R·0.299 + B·0.114; each channel c becomes
 *   c1 = (1 − 2·lift) × ((grey − c) × desaturate + c) + lift·255
 *   R = trunc(R1), G = trunc((G1·0.9 − G1) × tint + G1), B = trunc((B1·0.67 − B1) × tint + B1), low byte of each:
 * parameters outside their ranges can wrap. */
TAVIK_EXPORT(void)
xSepia(int32_t width, int32_t height, float lift, float desaturate, float tint, const uint8_t *src_r,
       const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Maps black to the dark colour, white to the light one and what lies between in proportion (counts; parallel by
 * rows): v = (R + G + B) / 3, dst = low byte of (light × v + dark × (255 − v)) / 255, both divisions of integers.
 *   light_*, dark_*   0 .. 255 */
TAVIK_EXPORT(void)
xDuotone(int32_t width, int32_t height, int32_t light_r, int32_t light_g, int32_t light_b, int32_t dark_r,
         int32_t dark_g, int32_t dark_b, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
         uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Writes the mean of three planes, (R + G + B) / 3 of integers, without their last column and last row (parallel by
 * rows).
 *   src_*   channel planes of width × height
 *   dst     float plane of (width − 1) × (height − 1); nothing when that is empty */
TAVIK_EXPORT(void)
colortograyscale_trim(int32_t width, int32_t height, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                      float *dst);

/* Multiplies each colour by a matrix (upper bounds; serial).
 *   matrix   16 floats m; the fourth of each row of four is not used
 *   R = ((m[8]·B + m[4]·G) + m[12]) + m[0]·R, G the same with m[9], m[5], m[13], m[1], B with m[10], m[6], m[14],
 *   m[2]; below 0 gives 0, above 255 or NaN gives 255, the rest is truncated */
TAVIK_EXPORT(void)
xColorMatrix(int32_t x_max, int32_t y_max, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
             uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const float *matrix);

/* xColorMatrix in parallel by rows, over width × height elements (counts). */
TAVIK_EXPORT(void)
xColorMatrix_ppl(int32_t width, int32_t height, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                 uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const float *matrix);

/* --- Hue matrices, greys, tones and keys ---
 *
 * The exports below differ from the ones above: all take counts, write their whole rectangle and round to the nearest
 * byte, halves up. Their destinations may be their sources. */

/* Turns, saturates and scales one colour in place, by one matrix (Rodrigues' rotation about the grey axis).
 *   red, green, blue   of any scale; not clamped
 *   hue                degrees; +120 takes red to green
 *   saturation         scales the distance from the mean of the three, which is kept at value 1
 *   value              scales all
 *   red' = (a·r + b·g) + c·b, green' = (c·r + a·g) + b·b, blue' = (b·r + c·g) + a·b with
 *   s = saturation·cos(hue), t = (saturation·sin(hue))·√3, a = ((1 + (s + s))·value)/3,
 *   b = (((1 − s) − t)·value)/3, c = (((1 − s) + t)·value)/3 */
TAVIK_EXPORT(void)
TransformHSV(float *red, float *green, float *blue, float hue, float saturation, float value);

/* TransformHSV of each colour of three planes, rounded and held to 0 .. 255 (serial). NaN gives 255. */
TAVIK_EXPORT(void)
xFastHSV(int32_t width, int32_t height, float hue, float saturation, float value, const uint8_t *src_r,
         const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* xFastHSV in parallel by rows. */
TAVIK_EXPORT(void)
FastHSV_ppl(int32_t width, int32_t height, float hue, float saturation, float value, const uint8_t *src_r,
            const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* FastHSV_ppl with add_r, add_g and add_b added before the rounding. */
TAVIK_EXPORT(void)
FastHSVandRGB(int32_t width, int32_t height, float hue, float saturation, float value, float add_r, float add_g,
              float add_b, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r,
              uint8_t *dst_g, uint8_t *dst_b);

/* Writes the luma of Rec. 601, (77·R + 150·G + 29·B + 128) >> 8 (parallel by rows). Whites stay 255. */
TAVIK_EXPORT(void)
xColorToGrayscale(int32_t width, int32_t height, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                  uint8_t *dst);

/* xColorToGrayscale under a second name: the same function. */
TAVIK_EXPORT(void)
xColorToGrayChannel(int32_t width, int32_t height, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                    uint8_t *dst);

/* Maps black, the middle grey 127 and white to three colours and the greys between in proportion (parallel by rows):
 * v = (R + G + B) / 3 of integers, dst = (mid·v + dark·(127 − v) + 63) / 127 below 128 and
 * (light·(v − 127) + mid·(255 − v) + 64) / 128 from there.
 *   light_*, mid_*, dark_*   0 .. 255; others leave the low byte */
TAVIK_EXPORT(void)
xTritone(int32_t width, int32_t height, int32_t light_r, int32_t light_g, int32_t light_b, int32_t mid_r, int32_t mid_g,
         int32_t mid_b, int32_t dark_r, int32_t dark_g, int32_t dark_b, const uint8_t *src_r, const uint8_t *src_g,
         const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Writes a mask that is 0 near a key colour and 255 away from it (parallel by rows). Distance is that in the chroma
 * plane of Rec. 601: brightness plays no part, except that a dark screen is less colourful and wants a wider `outer`.
 *   inner, outer   the distances where the mask leaves 0 and reaches 255; a hard key unless outer is above inner
 *   with r, g, b the differences pixel − key, cb = (b·0.5 − r·0.168736) − g·0.331264,
 *   cr = (r·0.5 − g·0.418688) − b·0.081312:
 *   alpha = (√(cb·cb + cr·cr) − inner)·(1 / (outer − inner)) held to 0 .. 1, times 255, rounded
 *   alpha may be a source */
TAVIK_EXPORT(void)
xKeyToAlpha(int32_t width, int32_t height, int32_t key_r, int32_t key_g, int32_t key_b, float inner, float outer,
            const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *alpha);

#endif
