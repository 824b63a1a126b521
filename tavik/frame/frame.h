/* frame: what every export shares, and the few exports of the frame itself.
 *
 * Calls. Every export is a plain C function. In 32-bit Windows code arguments are 32-bit stack slots (a double
 * takes two), pushed right to left and removed by the export, and float results come back on the x87 stack;
 * elsewhere the platform's own C convention holds. An export preserves what a C function preserves, needs no
 * more stack alignment than the platform promises (4 bytes in 32-bit code), and keeps no pointer after it
 * returns.
 *
 * Buffers. All memory belongs to the host. Images are row-major with no padding between rows:
 *   channel plane   uint8_t, one channel (red, green, blue, alpha or a mask) of each pixel
 *   float plane     float, one value for each pixel
 *   colour array    uint32_t 0x00BBGGRR: red in bits 0-7, green in 8-15, blue in 16-23
 * A colour image is three channel planes. Where an export works element by element a destination may be its
 * own source, exactly; other overlaps are for the host to avoid unless an export allows them.
 *
 * Sizes. Each export takes its size in one of these forms, named in its description; twins may differ:
 *   counts          width and height (or rows): width × height elements
 *   upper bounds    x_max = width − 1 and y_max = height − 1: (x_max + 1) × (y_max + 1) elements
 *   one short       width and height: width × height − 1 elements; the last one is left as it was
 * Products are 32-bit and wrap around. A size that comes out zero or negative does nothing.
 *
 * Threads. Any export may be called on any thread, also at the same time on separate buffers. Serial exports
 * run on the calling thread, over elements in increasing order; parallel exports spread rows or pixels over the
 * platform's worker threads and return when all are done.
 *
 * Faults. Arguments are not checked and no error is reported: null pointers, buffers that are too small and
 * divisors of zero are the host's to avoid.
 */
#ifndef TAVIK_FRAME_FRAME_H
#define TAVIK_FRAME_FRAME_H

#include "tavik/export.h"

/* Replaces every sample by its complement, 255 − value, in place.
 *   buffer   channel plane of width × height (counts; height comes first)
 * Parallel by rows. Applied twice it restores the plane. */
TAVIK_EXPORT(void) TestPPL2(uint8_t *buffer, int32_t height, int32_t width);

/* Reports the system's memory in KiB, rounded down. On Windows the last two count physical memory and page file
 * together, as the system commits them; elsewhere they count physical memory and swap.
 *   available_physical, total_physical, available_page_file, total_page_file   one int32_t each, written;
 *       note that available comes before total
 * A figure of 2^31 KiB (2 TiB) or more is written as −2147483648. */
TAVIK_EXPORT(void)
MemoryInfo(int32_t *available_physical, int32_t *total_physical, int32_t *available_page_file,
           int32_t *total_page_file);

/* Returns the whole MiB that a × b × c pixels of three bytes occupy: trunc(a·b·c · 3/1048576), in double
 * precision. */
TAVIK_EXPORT(int32_t) CalcMem(int32_t a, int32_t b, int32_t c);

/* Seeds the calling thread's random numbers (0 .. 32767), which the grain, jitter and random dither exports
 * draw from. On Windows this is the C runtime's `srand`; elsewhere the library keeps a generator per thread.
 * Parallel exports draw on worker threads too, which this seed does not reach. */
TAVIK_EXPORT(void) seed_rand(uint32_t seed);

#endif
