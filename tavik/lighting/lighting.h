/* lighting: vectors, triangle normals and point lamps, one value per call; then the shading of height fields.
 *
 * A vector is three consecutive floats x, y and z, passed by pointer. The functions of vectors are pure, in single
 * precision from left to right as written unless double is said. Nothing is checked: a light in its own point, a half
 * vector of length 0 or NaN give the infinities and NaN of the arithmetic. Any number of threads may call them at
 * once. */
#ifndef TAVIK_LIGHTING_LIGHTING_H
#define TAVIK_LIGHTING_LIGHTING_H

#include "tavik/export.h"

/* Returns √((x·x + y·y) + z·z). */
TAVIK_EXPORT(float) VectorLength(const float *v);

/* Scales a vector in place to length 1, by 1 / VectorLength. A vector of length 0 stays as it is, one so short that
 * its squares underflow too. */
TAVIK_EXPORT(void) Normalize(float *v);

/* Returns (a.y·b.y + a.x·b.x) + a.z·b.z, summed in double precision and rounded once. */
TAVIK_EXPORT(float) DotProduct(const float *a, const float *b);

/* Writes the vector a × b: x = a.y·b.z − a.z·b.y, y = a.z·b.x − a.x·b.z, z = a.x·b.y − a.y·b.x. out may be a or b.
 * Returns out. */
TAVIK_EXPORT(float *) CrossProduct(float *out, const float *a, const float *b);

/* Writes the normal of a triangle, (p1 − p0) × (p2 − p1): the second edge starts at p1. Its length is twice the
 * triangle's area. Returns out. */
TAVIK_EXPORT(float *) CalculateNormal(float *out, const float *p0, const float *p1, const float *p2);

/* Returns the approximate distance of (x0, y0, z0) and (x1, y1, z1), up to 6% too large: the square root of
 * ((x1 − x0)² + (y1 − y0)²) + (z1 − z0)² by fastsqrt. The arguments come in pairs of an axis. */
TAVIK_EXPORT(float) Distance_3d(float x0, float x1, float y0, float y1, float z0, float z1);

/* Returns intensity / t² with t = distance / scale, or 0 where t² is 0. */
TAVIK_EXPORT(float) InverseSquareLight(float distance, float intensity, float scale);

/* The light of a lamp on a point of a surface (Blinn's half-vector model with inverse-square falloff).
 *   out      6 floats: diffuse red, green, blue, specular red, green, blue
 *   light    12 floats: position x, y, z; diffuse red, green, blue; diffuse intensity; specular red, green, blue;
 *            specular intensity; shininess
 *   point, view, normal   vectors; the view points to the eye; neither it nor the normal is scaled to length 1
 * d is the distance to the lamp, L the unit vector to it, and fall = 1 / (d·d).
 *   diffuse = ((colour × kd) × intensity) × fall         kd = L·normal, held to 0 .. 1
 *   specular = ((colour × s) × intensity) × fall         s = ks to the power of shininess, ks = H·normal held to
 *                                                        0 .. 1, H = view + L scaled to length 1; 0 to the power 0 is 1
 * Writes nothing when the diffuse intensity is not above 0, whatever the specular one. Returns out. */
TAVIK_EXPORT(float *)
GetPointLight(float *out, const float *light, const float *point, const float *view, const float *normal);

/* --- Height fields ---
 *
 * The exports below take counts, and unless they say otherwise write their whole rectangle and run in parallel by rows.
 * Bytes are rounded to the nearest, halves up, and held to 0 .. 255. Heights grow towards the viewer, as z does; x goes
 * right and y down; a light vector points from the surface to the light. Edge samples are repeated beyond the edges.
 * Any float is safe: NaN can spoil the picture, but nothing outside the buffers is touched.
 *
 * The normal of a height plane is (−gx, −gy, 1) scaled to length 1, with (gx, gy) Sobel's gradient times `scale`: of
 * the neighbours a b c / d . f / g i j, gx = (((c − a) + (j − g)) + (f − d)·2)·0.125 and
 * gy = (((g − a) + (j − c)) + (i − b)·2)·0.125. */

/* Writes the normals of a float height plane, three floats to a pixel: what xGradientConvolve reads with
 * x_max = width − 1. */
TAVIK_EXPORT(void)
x_F_Convolve_Normals(int32_t width, int32_t height, float scale, const float *heights, float *normals);

/* Writes the normals of a byte height plane as a picture, each component n as n·127.5 + 127.5.
 *   flip_y   not 0 negates y, for hosts whose y points up */
TAVIK_EXPORT(void)
xNormalMap(int32_t width, int32_t height, float scale, int32_t flip_y, const uint8_t *heights, uint8_t *dst_r,
           uint8_t *dst_g, uint8_t *dst_b);

/* Lights a picture with relief by point lamps.
 *   ambient        light that falls everywhere, 0 .. 1
 *   height_scale   of the heights; lamps are placed in pixels and scaled heights
 *   lights         light_count records of 12 floats, as GetPointLight takes them; those whose diffuse intensity is not
 *                  above 0 are dark. A lamp d pixels away needs an intensity of about d² to reach 1
 *   heights        float plane;  normals   its normals, three floats to a pixel
 *   dst_*          may be src_*
 * dst = src × (ambient + diffuse) + specular × 255, with the sums over the lamps in order of what GetPointLight gives
 * for the view (0, 0, 1); the power is computed to a few units in the last place, the same on every machine. */
TAVIK_EXPORT(void)
xLighting(int32_t width, int32_t height, float ambient, float height_scale, const float *lights, int32_t light_count,
          const float *heights, const float *normals, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
          uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Shades a relief by one direction of light (hill shading, Horn 1981, with central differences).
 *   light_x, light_y, light_z   of any length above 0
 *   dst = cosine × (1 − ambient) + ambient, as 0 .. 255; the cosine is held to 0 .. 1 */
TAVIK_EXPORT(void)
CPU_hightmap_r2(int32_t width, int32_t height, float scale, float light_x, float light_y, float light_z, float ambient,
                const uint8_t *heights, uint8_t *dst);

/* Shades a colour picture by the relief of a height plane: one direction of light, Sobel's normals, and Blinn and
 * Phong's highlight for a view from straight above.
 *   specular, shininess   strength and exponent of the highlight
 *   dst_*                 may be src_*
 * value = src × (cosine × (1 − ambient) + ambient) + highlight × specular × 255 where the light reaches the surface. */
TAVIK_EXPORT(void)
CPU_hightmap_r3(int32_t width, int32_t height, float scale, float light_x, float light_y, float light_z, float ambient,
                float specular, float shininess, const uint8_t *heights, const uint8_t *src_r, const uint8_t *src_g,
                const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* CPU_hightmap_r3 over float planes, neither rounded nor held. */
TAVIK_EXPORT(void)
CPU_hightmap_r3_float(int32_t width, int32_t height, float scale, float light_x, float light_y, float light_z,
                      float ambient, float specular, float shininess, const float *heights, const float *src_r,
                      const float *src_g, const float *src_b, float *dst_r, float *dst_g, float *dst_b);

/* Shows a picture through a ball of glass. Outside the ball it is copied; its rim is anti-aliased.
 *   cx, cy, radius     of the ball, in pixels; radius above 0
 *   index              refractive, 1 or more; 1 changes nothing
 *   depth              how far the ball's centre hangs before the picture, in radii, 1 or more; deep enough, the
 *                      picture turns over
 *   tint_*             colour of the glass, 0 .. 255
 *   rim                strength of the light reflected at grazing angles (Schlick 1994)
 * Rays are refracted at both surfaces by Snell's law; samples are interpolated bilinearly. */
TAVIK_EXPORT(void)
SphereInnards(int32_t width, int32_t height, float cx, float cy, float radius, float index, float depth, float tint_r,
              float tint_g, float tint_b, float rim, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
              uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b);

/* Casts the soft shadow of a bubble onto a picture, in place: darkest near the rim, where the wall is seen edge-on,
 * with a bright spot of half the radius in the middle.
 *   softness   how far the shadow reaches beyond the radius and into it, in radii, above 0 (0 gives odd pictures)
 *   opacity    of the shadow;  focus   strength of the spot */
TAVIK_EXPORT(void)
xBubbleShadow(int32_t width, int32_t height, float cx, float cy, float radius, float softness, float opacity,
              float focus, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b);

/* --- Occlusion ---
 *
 * By the horizon of a height plane (horizon-based ambient occlusion, Bavoil and Sainz 2008): for one direction
 * (degrees, clockwise on the screen from the right) the sine of the steepest angle under which the heights along it are
 * seen, 0 .. 1, each of `steps` samples out to `radius` weighing less the farther it is. Samples outside the plane are
 * left out. Use as many steps as the radius where thin features count.
 *   radius, steps   1 or more
 *   scale           of the heights
 * The exports allocate a few bytes per step and direction while they run; without that memory they write nothing. */

/* Adds the occlusion of one direction to a float plane that the host has cleared, so that a host can show the picture
 * after each direction. */
TAVIK_EXPORT(void)
xOcclusionAdder(int32_t width, int32_t height, const float *heights, float degrees, int32_t radius, int32_t steps,
                float scale, float *sum);

/* Darkens three planes in place by the occlusion that so many passes have added up: old × (1 − sum × (amount /
 * passes)), the product held to 0 .. 1. */
TAVIK_EXPORT(void)
xOcclusionBlender(int32_t width, int32_t height, const float *sum, int32_t passes, float amount, uint8_t *plane_r,
                  uint8_t *plane_g, uint8_t *plane_b);

/* Writes how open each sample is to the sky, 1 − the mean occlusion of so many directions around the circle: 1 in the
 * open, 0 at the bottom of a shaft. */
TAVIK_EXPORT(void)
CPUxDoOcclusion_f(int32_t width, int32_t height, const float *heights, int32_t directions, int32_t radius,
                  int32_t steps, float scale, float *dst);

/* CPUxDoOcclusion_f of a byte height plane, as 0 .. 255. */
TAVIK_EXPORT(void)
xDoOcclusion(int32_t width, int32_t height, const uint8_t *heights, int32_t directions, int32_t radius, int32_t steps,
             float scale, uint8_t *dst);

/* Writes the cast shadow of a height plane: 255 in the light, 0 in full shadow.
 *   degrees    the direction in which the light lies, clockwise on the screen from the right
 *   rise       how much a ray towards the light climbs per pixel
 *   steps      how many pixels a ray is followed
 *   softness   the slope above the ray at which the shadow is full; 0 or less is a hard shadow
 * Heights along the ray are interpolated bilinearly; a ray that leaves the plane meets nothing more. Allocates a few
 * bytes per step; without that memory it writes nothing. */
TAVIK_EXPORT(void)
xDoRaytraceShadow(int32_t width, int32_t height, const float *heights, float degrees, float rise, int32_t steps,
                  float softness, uint8_t *dst);

/* --- Erosion of float height planes --- */

/* Writes the lowest and the highest number of a plane; NaN is passed over. A zero is +0; a plane of NaN alone gives +∞
 * and −∞, an empty one writes nothing. */
TAVIK_EXPORT(void)
xFindMinMax_f(int32_t width, int32_t height, const float *plane, float *lowest, float *highest);

/* One step of thermal weathering (Musgrave, Kolb, Mace 1989) in two passes, xDifferenceKernel and then xApplySlope with
 * the same talus: what stands steeper than the talus slides to the lower neighbours. The sum of the heights is kept up
 * to rounding, and slopes settle towards the talus.
 *   talus   the steepest stable difference of neighbours, √2 times as much on diagonals; below 0 gives odd planes
 *   rate    0 .. 1, how much moves in a step
 * With excess(a, b) = (a − b) − talus where positive, flow is the share of each excess that will move: half the rate of
 * the largest excess over the sum of all eight, 0 where none is. Neighbours outside the plane are left out. */
TAVIK_EXPORT(void)
xDifferenceKernel(int32_t width, int32_t height, float talus, float rate, const float *heights, float *flow);

/* The second pass: dst = (height − flow × Σ excess(own, neighbour)) + Σ flow of the neighbour × excess(neighbour, own).
 * dst is another plane than heights; the host swaps them. */
TAVIK_EXPORT(void)
xApplySlope(int32_t width, int32_t height, float talus, const float *heights, const float *flow, float *dst);

/* Erodes a block of a plane, in place, by droplets of rain that run down the slopes, take material where they are fast
 * and leave it where they are slow (Beyer 2015; serial).
 *   x0 .. y1      the block, columns x0 .. x1 − 1 and rows y0 .. y1 − 1, where droplets start
 *   margin        how far around the block they may go; nothing outside that window, or the plane, is touched
 *   droplets      how many;  life   how many steps of a pixel each takes at most;  seed   of their places
 *   settings      8 floats: inertia, capacity, least drop, erosion, deposition, evaporation, gravity, brush radius
 *                 (1 .. 8). A good start: 0.05, 2, 0.01, 0.1, 0.1, 0.02, 4, 3 */
TAVIK_EXPORT(void)
xErodeBlock(int32_t width, int32_t height, float *heights, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
            int32_t margin, int32_t droplets, int32_t life, int32_t seed, const float *settings);

/* Erodes a plane in place by rain: in each pass it is covered by blocks, moved by half a block in every other pass,
 * that are eroded in four phases of blocks whose windows do not meet (parallel by the blocks of a phase). The result
 * does not depend on the threads.
 *   block_size   1 or more; small against the plane for many threads, large against the droplets' life for long
 *                valleys: 160 suits a life of 70
 *   droplets     of a whole block; those cut off by the edges get their share
 *   life         held to block_size / 2 − radius − 2, so that no droplet leaves its window inside the plane */
TAVIK_EXPORT(void)
xDoErode(int32_t width, int32_t height, float *heights, int32_t block_size, int32_t droplets, int32_t life,
         int32_t passes, int32_t seed, const float *settings);

/* Writes what was worn away, (before − after) × gain, as 0 .. 255: a mask for colouring rock, or sediment with a
 * negative gain. */
TAVIK_EXPORT(void)
erosionsubtracter(int32_t width, int32_t height, float gain, const float *before, const float *after, uint8_t *dst);

#endif
