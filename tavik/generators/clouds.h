/* clouds: particles in space, drawn as soft round puffs. Buffer kinds are those of frame.h. */
#ifndef TAVIK_GENERATORS_CLOUDS_H
#define TAVIK_GENERATORS_CLOUDS_H

#include "tavik/export.h"

/* Draws a cloud of translucent puffs, one for each particle, in the order of the array: a host that wants near puffs
 * before far ones sorts them from far to near (parallel by rows).
 *   particles      count records of 18 floats:
 *                    0, 1, 2    x (to the right), y (depth, along the view) and z (down)
 *                    3          size: diameter in the units of x
 *                    4          opacity, clamped to 0 .. 1
 *                    8, 9, 10   colour in the first, second and third plane, clamped to 0 .. 255
 *                  5 .. 7 and 11 .. 17 are not read; they are the host's
 *   camera         5 floats: x, y (depth), z, zoom, near
 *   count          0 or less draws nothing
 *   x_max, y_max   upper bounds; column x_max and row y_max are never painted
 *   dst0 .. dst2   channel planes, painted in place
 * A particle with y > camera.y + near is projected:
 *   depth = ((y − camera.y) × zoom) × 0.0005, inv = 1 / depth, or 0 where depth is 0
 *   sx = trunc(inv × (x − camera.x) + x_max / 2), sy = trunc(inv × (z − camera.z) + y_max / 2), halves in integers
 *   half = size × inv × 0.5; it is drawn if 0 < half < 1000
 *   radius = trunc(half × 0.5), feather = trunc(size × inv × 0.25)
 * and painted as by FeatheredCircle_ppl with this centre, radius, feather, colour and opacity. So half of a puff is
 * solid and half is rim, and one of fewer than four pixels across leaves the picture as it is. */
TAVIK_EXPORT(void)
xRenderCloud(const float *particles, const float *camera, int32_t count, int32_t x_max, int32_t y_max, uint8_t *dst0,
             uint8_t *dst1, uint8_t *dst2);

/* xRenderCloud into float planes, as by FeatheredCircle_ppl_float, with puffs that fade in with their distance.
 *   opacity = fade × opacity, fade = ((y − camera.y) − 50) × 0.01 clamped to 0 .. 1: nothing up to 50 units from the
 *   camera, all from 150 on
 *   A puff with opacity 0, sx + half < 0, sy + half < 0, sx − half > x_max or sy − half > y_max is not drawn. */
TAVIK_EXPORT(void)
xRenderCloud_float(const float *particles, const float *camera, int32_t count, int32_t x_max, int32_t y_max,
                   float *dst0, float *dst1, float *dst2);

#endif
