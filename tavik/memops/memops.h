/* memops: block operations on raw memory, square roots and sorting.
 *
 * The block operations handle whole blocks only and leave what remains of the last one as it was. */
#ifndef TAVIK_MEMOPS_MEMOPS_H
#define TAVIK_MEMOPS_MEMOPS_H

#include "tavik/export.h"

/* Copies blocks of 16 bytes from src to dst, in increasing order.
 *   src, dst   aligned to 16 bytes
 *   count      32-bit elements; count / 4 blocks are copied, the count mod 4 last elements are not. At least 4. */
TAVIK_EXPORT(void) moveSSE(const void *src, void *dst, int32_t count);

/* Copies 32-bit words from src to dst, in increasing order: a dst that begins inside src repeats what was copied
 * before.
 *   bytes   taken as unsigned; bytes / 4 words are copied, the bytes mod 4 last bytes are not */
TAVIK_EXPORT(void) moveASM(const void *src, void *dst, int32_t bytes);

/* Adds src to dst byte by byte, stopping at 255: dst = min(dst + src, 255). Serial.
 *   width, height   (width × height) / 16 blocks of 16 bytes are handled, the remaining bytes stay; at least one
 *   src, dst        may be the same */
TAVIK_EXPORT(void) add_SSE(int32_t width, int32_t height, const uint8_t *src, uint8_t *dst);

/* Subtracts src from dst byte by byte, stopping at 0: dst = max(dst − src, 0). Sizes as in add_SSE. Serial. */
TAVIK_EXPORT(void) sub_SSE(int32_t width, int32_t height, const uint8_t *src, uint8_t *dst);

/* Multiplies dst by src byte by byte: dst = (dst × src) >> 8, so 255 × 255 gives 254. Sizes as in add_SSE.
 * Serial. */
TAVIK_EXPORT(void) Mult_SSE(int32_t width, int32_t height, const uint8_t *src, uint8_t *dst);

/* Replaces *p by its square root in single precision; a negative number becomes NaN. */
TAVIK_EXPORT(void) SSE_SQRT_SS(float *p);

/* Returns the square root of x in single precision. */
TAVIK_EXPORT(float) sqrt_sse(float x);

/* Sorts data[0] .. data[count − 1] in ascending order, in place. Counts below 2 change nothing. Serial. */
TAVIK_EXPORT(void) quicksort(uint8_t *data, int32_t count);

/* Moves larger floats up by count − 2 phases of odd-even transposition, in place: phase p compares and swaps the
 * pairs that begin at even places when p is even, those that begin at odd places when p is odd.
 * The phases run in parallel on the shared array without order, and are fewer than sorting needs, so the result is
 * only partly sorted; while phases race, a value may even be stored twice and another lost. Up to 2 elements stay
 * as they are; of 3, the first two are put in order. Every element of the result is an element of the input. */
TAVIK_EXPORT(void) xParallelSort(float *data, int32_t count);

#endif
