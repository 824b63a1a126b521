/* framefile: frames of an animation read from a file, thumbnails, and the bytes of bitmaps and strips. All serial.
 *
 * A frame file is little-endian, without padding: a header of five 32-bit integers, then the red planes of all frames,
 * then all green planes, then all blue ones. A plane is (x_max + 1) × (y_max + 1) bytes, row by row from the top.
 * Nothing in a file is checked. Offsets are 32-bit and wrap around, so files hold up to 2 GiB.
 *
 * Bitmap pixels are 32 bits, red << 16 | green << 8 | blue: bytes blue, green, red, 0. */
#ifndef TAVIK_FRAMEFILE_FRAMEFILE_H
#define TAVIK_FRAMEFILE_FRAMEFILE_H

#include <stdio.h>

#include "tavik/export.h"

/* The first 20 bytes of a frame file. */
struct tavik_frame_header {
    int32_t host_words[2]; /* the host's own; the library reads neither */
    int32_t x_max, y_max;  /* width and height of the frames, less 1 */
    int32_t frame_count;
};

/* A picture to draw on where there are no device contexts. */
struct tavik_surface {
    int32_t width, height;
    int32_t stride; /* pixels from one row to the next */
    uint32_t *pixels;
};

/* Opens a frame file for reading and reads its header, of a file too short as much as there is.
 *   path     zero-terminated, as the C runtime's fopen takes it
 * Returns the stream, which belongs to the caller until kvf_close, or null with the header as it was when the file
 * cannot be opened. On Windows it is a FILE of msvcrt.dll, to other runtimes an opaque pointer. Any number of files may
 * be open at once; a stream serves one thread at a time. */
TAVIK_EXPORT(FILE *) kvf_open(const char *path, struct tavik_frame_header *header);

/* Reads a frame into three planes, by a seek to each from the file's start. What lies beyond the end of the file leaves
 * the rest of a plane as it was; so does, for the whole plane, an offset below 0 or a header of no size.
 *   header   as kvf_open filled it
 *   frame    0 .. frame_count − 1; others read what is there in the file */
TAVIK_EXPORT(void)
kvf_getframe(FILE *stream, const struct tavik_frame_header *header, int32_t frame, uint8_t *dst_r, uint8_t *dst_g,
             uint8_t *dst_b);

/* Draws a frame scaled to out_width × out_height with its top left corner at (0, 0) of the target. What the file lacks
 * of the frame is black.
 *   target   on Windows the handle of a device context (HDC), elsewhere a tavik_surface, to which the frame is cut off
 * Scales as p_scale_to_dib does. An out_width or out_height below 1, or a frame without pixels or of 2^31 or more,
 * draws nothing; so does too little memory. */
TAVIK_EXPORT(void)
kvf_getframetoHDC_scaled(FILE *stream, const struct tavik_frame_header *header, int32_t frame, void *target,
                         int32_t out_width, int32_t out_height);

/* Closes the stream. */
TAVIK_EXPORT(void) kvf_close(FILE *stream);

/* Unpacks a 24-bit bitmap, whose rows go up from the bottom without padding, bytes blue, green, red, into planes.
 *   x_max        pixels in a row of the bitmap, at least 1. Planes have rows of x_max + 1 samples; the last of each
 *                stays as it was
 *   height       of the planes; the first row goes to row height − 1
 *   byte_count   of the bitmap; pixels that it holds a part of count, and are read whole. Below 1 does nothing */
TAVIK_EXPORT(void)
AVI_extract(int32_t x_max, int32_t height, int32_t byte_count, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b,
            const uint8_t *src);

/* Stretches a strip of bytes: dst[i] = src[trunc(position)] for i in first .. last, where the position begins at 0,
 * whatever `first` is, and grows by `step` each time, in single precision. */
TAVIK_EXPORT(void) FilmstripHelper(float step, int32_t first, int32_t last, const uint8_t *src, uint8_t *dst);

/* Makes a thumbnail in two stages and returns thumb_height, or 0 when that is below 1.
 *   src_*   channel planes of upper bounds src_x_max, src_y_max
 *   tmp_*   scratch, 2·thumb_height rows of 2·thumb_width + 1 bytes each; the last byte of a row stays as it was
 *   dst     thumb_height rows of thumb_width + 1 pixels of three bytes blue, green, red; the last pixel of a row stays
 *           as it was
 * First the source is resampled to 2·thumb_width × 2·thumb_height: column i is at i·(src_x_max / (2·thumb_width)), row
 * j alike, and a sample is (a·(1 − tx) + b·tx)·(1 − ty) + (c·(1 − tx) + d·tx)·ty, truncated, of the four around it.
 * Rows of the source begin at (src_x_max + 1)·row in single precision, which is rounded in planes of more than 2^24
 * samples: there the last row may be read a few samples late. Then each pixel is the sum of 2 × 2 samples >> 2. */
TAVIK_EXPORT(int32_t)
SuperThumb(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *tmp_r, uint8_t *tmp_g,
           uint8_t *tmp_b, uint8_t *dst, int32_t src_x_max, int32_t src_y_max, int32_t thumb_width,
           int32_t thumb_height);

/* Scales planes of src_width × src_height (counts) to a bitmap of out_width × out_height by the nearest sample to the
 * left and above. The source row of row y is trunc(y·(src_height / out_height)); the source column begins at 0 and
 * grows by src_width / out_width per pixel, all in single precision, so that the columns of wide rows drift a little:
 * one beyond the row's end is the first of the next row, and beyond the last row's the last sample of the planes.
 *   dst          rows of dst_stride pixels
 * Nothing is written without memory for a number per column. */
TAVIK_EXPORT(void)
p_scale_to_dib(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint32_t *dst, int32_t src_width,
               int32_t src_height, int32_t out_width, int32_t out_height, int32_t dst_stride);

/* Encodes bytes as pairs of a run length, 1 .. 255, and the value of the run.
 *   length   in: the bytes of src, and of dst; out: the bytes written
 * Returns 0 when everything is encoded, in at most *length − 2 bytes. Returns 1 as soon as *length − 1 bytes are
 * written, even if those were all and be it in the middle of a pair; one or two bytes always end so. A *length below 1
 * becomes 0, which is returned. dst is not src. */
TAVIK_EXPORT(int32_t) xRLE_Encode_byte(const uint8_t *src, uint8_t *dst, int32_t *length);

#endif
