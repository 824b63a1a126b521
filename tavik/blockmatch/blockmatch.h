/* blockmatch: how much blocks of two pictures differ, and the search for the block most like another.
 *
 * Planes are channel planes of x_max + 1 samples per row and y_max + 1 rows (upper bounds). A cost is a signed 32-bit
 * integer; the smaller, the more alike. 2147483647 says that a block reaches out of bounds and is not comparable.
 * Blocks are not centred: one of 16 × 16 around (x, y) covers columns x − 8 .. x + 7 and rows y − 8 .. y + 7, one of
 * size s, with h = s / 2, columns x − h .. x + h − 1 and rows alike. Bounds reach one sample further right and down
 * than the blocks do.
 *
 * Comparisons are pure functions that any number of threads may call at once. Searches try every place x' in
 * *x − r .. *x + r − 1, y' in *y − r .. *y + r − 1, with r = search_size / 2 about the start that *x and *y hold, and
 * write the place of the lowest cost back; equal costs give the first in row order. */
#ifndef TAVIK_BLOCKMATCH_BLOCKMATCH_H
#define TAVIK_BLOCKMATCH_BLOCKMATCH_H

#include "tavik/export.h"

/* Returns the sum of absolute differences of the 16 × 16 blocks of plane_a around (x_a, y_a) and of plane_b around
 * (x_b, y_b). Both planes have `rows` rows of `stride` samples (counts). In bounds are x in 8 .. stride − 9 and y in
 * 8 .. rows − 9. */
TAVIK_EXPORT(int32_t)
xcompareblock16(int32_t x_a, int32_t y_a, int32_t x_b, int32_t y_b, int32_t stride, int32_t rows,
                const uint8_t *plane_a, const uint8_t *plane_b);

/* xcompareblock16 for blocks of 8 columns and 9 rows: columns x − 4 .. x + 3, rows y − 4 .. y + 4. In bounds are x in
 * 4 .. stride − 5 and y in 4 .. rows − 5. */
TAVIK_EXPORT(int32_t)
xcompareblock(int32_t x_a, int32_t y_a, int32_t x_b, int32_t y_b, int32_t stride, int32_t rows, const uint8_t *plane_a,
              const uint8_t *plane_b);

/* Returns the sum of squared differences of two blocks of that size in three planes each. The sum wraps around in 32
 * bits, for blocks of 106 × 106 at the earliest. In bounds are x − h, x + h in 0 .. x_max and y − h, y + h in
 * 0 .. y_max; a size below 2 costs 0 there. */
TAVIK_EXPORT(int32_t)
CompareBlock(int32_t x_a, int32_t y_a, int32_t x_b, int32_t y_b, int32_t size, int32_t x_max, int32_t y_max,
             const uint8_t *a1, const uint8_t *a2, const uint8_t *a3, const uint8_t *b1, const uint8_t *b2,
             const uint8_t *b3);

/* CompareBlock on the pixels that are known in both blocks, those where mask_a and mask_b are not 0: the cost as if
 * the whole block were like its known part, sum·(4·h·h)/known in 64 bits, held to 2147483646. With fewer known pixels
 * than min_count, or none, the blocks are not comparable. For filling holes by example (Criminisi, Pérez, Toyama 2004).
 *   mask_a, mask_b   channel planes beside a1 .. a3 and b1 .. b3 */
TAVIK_EXPORT(int32_t)
CompareBlock_mask(int32_t x_a, int32_t y_a, int32_t x_b, int32_t y_b, int32_t size, int32_t x_max, int32_t y_max,
                  const uint8_t *a1, const uint8_t *a2, const uint8_t *a3, const uint8_t *b1, const uint8_t *b2,
                  const uint8_t *b3, const uint8_t *mask_a, const uint8_t *mask_b, int32_t min_count);

/* Searches b1 .. b3 for the block most like that of a1 .. a3 around (x_ref, y_ref), by the sum of xcompareblock16 over
 * the three planes (serial). A start outside the planes or a search_size below 2 leaves *x and *y as they are. Where no
 * place is comparable the result is the first place tried, (*x − r, *y − r), not the start. `ignored` has no effect. */
TAVIK_EXPORT(void)
xFindBlock_RGB(int32_t x_ref, int32_t y_ref, int32_t *x, int32_t *y, int32_t search_size, int32_t ignored,
               int32_t x_max, int32_t y_max, const uint8_t *a1, const uint8_t *a2, const uint8_t *a3, const uint8_t *b1,
               const uint8_t *b2, const uint8_t *b3);

/* Searches plane_a for the block most like that of plane_b around the start, by xcompareblock16 (parallel by rows of
 * places; the result does not depend on threads). A start outside the planes or not comparable, or a search without
 * comparable places, leaves *x and *y as they are. `ignored` has no effect. */
TAVIK_EXPORT(void)
xFindBlock_Channel(int32_t *x, int32_t *y, int32_t search_size, int32_t ignored, int32_t x_max, int32_t y_max,
                   const uint8_t *plane_a, const uint8_t *plane_b);

/* Searches plane_b for the block most like that of plane_a around (x_ref, y_ref), of that size and weighted by alpha
 * (parallel by rows of places; the result does not depend on threads).
 *   alpha_a, alpha_b   channel planes, the weights of the samples of plane_a and plane_b
 * A place costs Σ k·|a − b| · 256 / Σ k with k = alpha_a·alpha_b, in 64 bits; places out of bounds, as CompareBlock has
 * them, and those where every k is 0 are passed by. A size below 2, a reference out of bounds or no place to compare
 * leaves *x and *y as they are. Wherever the planes have fewer than 2^31 samples nothing overflows. */
TAVIK_EXPORT(void)
xMatchBlockAlf(int32_t x_ref, int32_t y_ref, int32_t *x, int32_t *y, int32_t search_size, int32_t size, int32_t x_max,
               int32_t y_max, const uint8_t *plane_a, const uint8_t *plane_b, const uint8_t *alpha_a,
               const uint8_t *alpha_b);

#endif
