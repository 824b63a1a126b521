/* raster: triangles, meshes of a height field, and intersections of rays.
 *
 * Depth is a plane of floats that the host fills before the first triangle; smaller is nearer, and a pixel is drawn
 * only where the triangle is nearer than what the plane holds. */
#ifndef TAVIK_RASTER_RASTER_H
#define TAVIK_RASTER_RASTER_H

#include "tavik/export.h"

/* A triangle on the screen: 24 fields of 32 bits each in 32-bit hosts. */
struct tavik_triangle {
    int32_t x0, y0, x1, y1, x2, y2; /* the vertices in pixels */
    int32_t r0, g0, b0;             /* their colours, 0 .. 255 */
    int32_t r1, g1, b1;
    int32_t r2, g2, b2;
    float z0, z1, z2; /* their depths */
    int32_t x_limit;  /* pixels 0 <= x < x_limit are drawn; rows are x_limit + 1 samples apart, so the last column of a
                         plane of that width stays as it was */
    int32_t y_limit;  /* rows 0 <= y < y_limit are drawn */
    uint8_t *plane_r;
    uint8_t *plane_g;
    uint8_t *plane_b;
    float *depth;
};

/* A vertex of a mesh: 12 bytes. */
struct tavik_mesh_vertex {
    int16_t x, y; /* on the screen */
    float z;
    uint8_t r, g, b;
    uint8_t visible; /* not 0 where the vertex may be drawn */
};

/* A triangle with a texture, in perspective. */
struct tavik_textured_triangle {
    float x0, y0, w0, u0, v0; /* position on the screen, distance along the view axis (above 0), position in the
                                 texture in texels; of vertex 0, then 1, then 2 */
    float x1, y1, w1, u1, v1;
    float x2, y2, w2, u2, v2;
    int32_t texture_width, texture_height;
    int32_t width, height; /* of the target, whose rows are width samples apart */
    int32_t smooth;        /* 0 takes the nearest texel, anything else interpolates bilinearly */
    const uint8_t *texture_r, *texture_g, *texture_b;
    uint8_t *plane_r, *plane_g, *plane_b;
    float *depth; /* holds w */
};

/* The same before projection, with z forward. */
struct tavik_clipped_triangle {
    float x0, y0, z0, u0, v0;
    float x1, y1, z1, u1, v1;
    float x2, y2, z2, u2, v2;
    float centre_x, centre_y; /* of the screen, in pixels */
    float focal;              /* pixels per unit at distance 1 */
    float nearest;            /* the distance of the near plane, above 0 */
    int32_t texture_width, texture_height;
    int32_t width, height;
    int32_t smooth;
    const uint8_t *texture_r, *texture_g, *texture_b;
    uint8_t *plane_r, *plane_g, *plane_b;
    float *depth;
};

/* Draws a triangle with a colour and a depth per vertex, interpolated linearly on the screen (serial).
 * Sorts the record's vertices by y on the way and leaves them so; vertices of equal y keep their order. Nothing is
 * drawn or sorted when all x are below 0 or all above x_limit.
 * From the top vertex to the middle one and from there to the bottom one, each row is filled between the long edge and
 * the short one, both ends included; the middle row is filled twice. With (long) and (short) the ends of a row,
 *   t = float(y − y_start) × (1 / (y_end − y_start)), 0 for an edge without height
 *   x = trunc(float(x_end − x_start) × t + x_start), depth and colours alike without truncation
 *   from the left end on, depth and colours grow by (right − left) × (1 / (x_right − x_left)) per pixel
 * A pixel is drawn where the plane's depth is above the triangle's: it takes the depth and the low bytes of the
 * truncated colours. Triangles that share an edge both draw it. A triangle without height draws its first vertex and
 * the row between its first two.
 * Calls at the same time need records of their own and must not cover the same pixels. */
TAVIK_EXPORT(void) zTriangle(struct tavik_triangle *record);

/* --- Covered triangles and meshes ---
 *
 * The triangles below cover pixels by exact edge functions of vertices in sixteenths of a pixel (Pineda 1988): two
 * triangles that share an edge never draw a pixel twice and leave no gap, whatever the winding. Unlike zTriangle they
 * do not change the record, include no right or lower edge and stand alone at every pixel: an attribute is
 * (a0 + (a1 − a0)·b1) + (a2 − a0)·b2 with b1, b2 the barycentric weights. Any float is safe. */

/* Draws a shaded triangle without depth (serial): z0, z1, z2 and depth are not read. Each channel is the attribute
 * rounded to the nearest and held to 0 .. 255. Vertices are held to ±33554432. */
TAVIK_EXPORT(void) TriangleColor(const struct tavik_triangle *record);

/* Draws a textured triangle in perspective, depth-tested (serial). q = 1/w, u·q and v·q are interpolated linearly
 * (Blinn 1992); a pixel is drawn where depth is above w. Texels are taken at (u, v), or rounded from the four around
 * it; beyond the texture its edge is repeated. */
TAVIK_EXPORT(void) xTriangle_Perspective(const struct tavik_textured_triangle *record);

/* Cuts a triangle in camera space at the near plane (Sutherland, Hodgman 1974), projects what is in front,
 * x·(focal/z) + centre_x and y alike, and draws it as xTriangle_Perspective does, with w = z (serial). */
TAVIK_EXPORT(void) xTriangle_Clipped(const struct tavik_clipped_triangle *record);

/* Projects a height field to the vertices of a mesh (parallel by rows).
 *   heights, src_r .. src_b   columns × rows; the field lies about the origin, x from −(columns − 1)/2, y from
 *                             −(rows − 1)/2, z = heights × height_scale
 *   matrix                    16 floats, column by column, from there to clip space (x right, y up, depth −1 .. 1)
 *   width, height             of the screen
 *   grid                      columns × rows, one record for each sample
 * A vertex is visible when its w is above 0.0001, its depth in −1 .. 1 and its place on the screen in −32768 .. 32767;
 * the others get x, y, z and visible 0. All get their colour. */
TAVIK_EXPORT(void)
Transform3DHelper(int32_t columns, int32_t rows, const float *heights, float height_scale, const uint8_t *src_r,
                  const uint8_t *src_g, const uint8_t *src_b, const float *matrix, int32_t width, int32_t height,
                  struct tavik_mesh_vertex *grid);

/* Projects any points (parallel): count times three floats, with a packed colour 0x00BBGGRR each. */
TAVIK_EXPORT(void)
Transform3DHelper_2(int32_t count, const float *points, const uint32_t *colours, const float *matrix, int32_t width,
                    int32_t height, struct tavik_mesh_vertex *vertices);

/* Draws a band of a mesh (serial): each cell of the grid whose four corners are visible, as two triangles that share
 * the diagonal from its first corner, by zTriangle.
 *   record       its limits and planes filled by the host; the vertices are left as the last triangle sorted them
 *   grid         columns × rows vertices, `stride` records from one row to the next
 *   band, bands  of (rows − 1) / bands rows of cells each; the last runs to the end. Neighbouring bands share pixels:
 *                bands drawn one after the other are the whole mesh, but must not run at once on the same planes */
TAVIK_EXPORT(void)
Render3DHelper(struct tavik_triangle *record, const struct tavik_mesh_vertex *grid, int32_t columns, int32_t rows,
               int32_t stride, int32_t band, int32_t bands);

/* Draws a whole mesh as Render3DHelper does in one band, parallel by `bands` bands of the screen's rows; their number
 * changes nothing but the speed. The record is not changed. */
TAVIK_EXPORT(void)
Render3DHelper2(const struct tavik_triangle *record, const struct tavik_mesh_vertex *grid, int32_t columns,
                int32_t rows, int32_t stride, int32_t bands);

/* --- Rays ---
 *
 * Points and directions are vectors of three consecutive floats (or doubles), boxes are given by their lowest and
 * highest corners. Each returns 1 for a hit and writes its results only then, and 0 otherwise; all are pure functions
 * that any number of threads may call at once. Distances are in lengths of the direction. */

/* A ray and a triangle, seen from either side, edges and corners included (Möller, Trumbore 1997). Hits are farther
 * than 1e−6; triangles whose determinant is not above 1e−6 in magnitude are passed by. */
TAVIK_EXPORT(int32_t)
triangle_intersection(const float *v0, const float *v1, const float *v2, const float *origin, const float *direction,
                      float *distance);

/* triangle_intersection in double precision, with 1e−12 for 1e−6. */
TAVIK_EXPORT(int32_t)
triangle_intersection_d(const double *v0, const double *v1, const double *v2, const double *origin,
                        const double *direction, double *distance);

/* triangle_intersection with no limit but 0, which counts as a hit. With cull not 0, only triangles whose normal
 * (v1 − v0) × (v2 − v0) faces the origin are hit. hit takes the distance and the weights of v1 and v2. */
TAVIK_EXPORT(int32_t)
xRayTriangleIntersect(const float *origin, const float *direction, const float *v0, const float *v1, const float *v2,
                      int32_t cull, float *hit);

/* A ray and a box with sides along the axes, faces included (slabs: Kay, Kajiya 1986). Writes where the ray enters, 0
 * when it starts inside, and where it leaves. */
TAVIK_EXPORT(int32_t)
rayBoxIntersect(const float *origin, const float *direction, const float *box_min, const float *box_max, float *nearest,
                float *farthest);

/* A ray and a sphere. Writes both intersections; `nearest` is negative when the ray starts inside. */
TAVIK_EXPORT(int32_t)
intersectRaySphere(const float *origin, const float *direction, const float *centre, float radius, float *nearest,
                   float *farthest);

/* Where the lines through a and b and through c and d cross: 1 when the segments meet there, ends included, 2 when only
 * the lines do, 0 when they are parallel. Only 0 writes nothing. */
TAVIK_EXPORT(int32_t)
lineIntersection(float ax, float ay, float bx, float by, float cx, float cy, float dx, float dy, float *x, float *y);

#endif
