#include "tavik/raster/raster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "host/drawing.h"
#include "host/run.h"
#include "host/space.h"

namespace gallery {
namespace {

using Vector = std::array<float, 3>;

constexpr Colour night = {20, 24, 38};

void height_field(Run &run) {
    constexpr int32_t width = 600;
    constexpr int32_t height = 420;
    const Image &photo = run.photo;
    // The photo's brightness, smoothed by a running mean.
    std::vector<float> heights(static_cast<std::size_t>(photo.pixel_count()));
    for (int32_t y = 0; y < photo.height; ++y) {
        for (int32_t x = 0; x < photo.width; ++x) {
            int32_t sum = 0;
            for (int32_t j = -2; j <= 2; ++j)
                for (int32_t i = -2; i <= 2; ++i)
                    sum += photo.green[photo.index(std::clamp(x + i, 0, photo.x_max()),
                                                   std::clamp(y + j, 0, photo.y_max()))];
            heights[photo.index(x, y)] = static_cast<float>(sum) / 25.0F;
        }
    }
    run.label("heights", heights);
    const auto extent = static_cast<float>(photo.width);
    const std::array<Matrix, 2> views = {view_from({0.9F, 0.43589F, 0.8F, 0.6F, extent * 1.5F, 2.2F, 10.0F / 7}),
                                         view_from({0.6F, -0.8F, 0.6F, 0.8F, extent * 1.5F, 2.0F, 10.0F / 7})};
    run.label("views", views);
    Image &picture = run.draw_on(2 * width, 2 * height, night);
    std::vector<tavik_mesh_vertex> grid(static_cast<std::size_t>(photo.pixel_count()));
    run.label("grid", grid);
    for (std::size_t view = 0; view < views.size(); ++view) {
        run.call(EXPORT(Transform3DHelper), photo.width, photo.height, heights.data(), 0.45F, photo.red.data(),
                 photo.green.data(), photo.blue.data(), views[view].data(), width, height, grid.data());
        Image screen(width, height, night);
        Canvas canvas(screen);
        tavik_triangle record = canvas.triangle();
        if (view == 0) {
            run.call(EXPORT(Render3DHelper2), &record, grid.data(), photo.width, photo.height, photo.width, 8);
        } else {
            constexpr int32_t bands = 4;
            for (int32_t band = 0; band < bands; ++band)
                run.call(EXPORT(Render3DHelper), &record, grid.data(), photo.width, photo.height, photo.width, band,
                         bands);
        }
        const auto top = static_cast<int32_t>(view) * height;
        paste(picture, screen, 0, top);
        paste(picture, canvas.picture_of_depth(), width, top);
    }
}

void interpenetrating(Run &run) {
    Image &picture = run.draw_on(520, 520, night);
    Canvas canvas(picture);
    run.label("depth", canvas.depth);
    const auto draw = [&](std::array<int32_t, 6> places, std::array<float, 3> depths) {
        tavik_triangle t = canvas.triangle();
        t.x0 = places[0];
        t.y0 = places[1];
        t.x1 = places[2];
        t.y1 = places[3];
        t.x2 = places[4];
        t.y2 = places[5];
        t.z0 = depths[0];
        t.z1 = depths[1];
        t.z2 = depths[2];
        t.r0 = t.g1 = t.b2 = 255;
        t.g0 = t.b1 = t.r2 = 40;
        t.b0 = t.r1 = t.g2 = 60;
        run.call(EXPORT(zTriangle), &t);
    };
    draw({260, 20, 500, 440, 20, 440}, {10, 90, 50});
    draw({20, 130, 500, 130, 260, 505}, {60, 20, 60});
    draw({60, 40, 150, 500, 480, 300}, {45, 45, 45});
}

void pyramid(Run &run) {
    Image &picture = run.draw_on(520, 400, {238, 240, 244});
    Canvas canvas(picture);
    const auto draw = [&](std::array<int32_t, 6> places, std::array<Colour, 3> colours) {
        tavik_triangle t = canvas.triangle();
        std::copy(places.begin(), places.end(), &t.x0);
        for (std::size_t i = 0; i < 3; ++i) {
            (&t.r0)[3 * i] = colours[i].red;
            (&t.r0)[3 * i + 1] = colours[i].green;
            (&t.r0)[3 * i + 2] = colours[i].blue;
        }
        run.call(EXPORT(TriangleColor), &t);
    };
    constexpr Colour sand = {238, 205, 140};
    constexpr Colour shade = {120, 84, 60};
    constexpr Colour dark = {70, 48, 44};
    constexpr Colour tip = {255, 240, 200};
    draw({250, 40, 60, 330, 300, 365}, {tip, sand, sand});
    draw({250, 40, 300, 365, 470, 300}, {shade, dark, shade});
    draw({60, 330, 300, 365, 180, 392}, {{{196, 186, 170}, {150, 140, 130}, {228, 226, 222}}});
}

void room(Run &run) {
    constexpr int32_t width = 720;
    constexpr int32_t height = 480;
    Image &picture = run.draw_on(width, height, {0, 0, 0});
    Canvas canvas(picture);
    const Image &photo = run.photo;
    const auto u = static_cast<float>(photo.x_max());
    const auto v = static_cast<float>(photo.y_max());
    // Walls that begin behind the eye; each of its four corners with the photo's.
    struct Wall {
        std::array<Vector, 4> corners;
    };
    const std::array<Wall, 4> walls = {{{{{{-2, -1.4F, -1}, {-2, -1.4F, 8}, {-2, 1.4F, 8}, {-2, 1.4F, -1}}}},
                                        {{{{2, -1.4F, 8}, {2, -1.4F, -1}, {2, 1.4F, -1}, {2, 1.4F, 8}}}},
                                        {{{{-2, 1.4F, 8}, {2, 1.4F, 8}, {2, 1.4F, -1}, {-2, 1.4F, -1}}}},
                                        {{{{-2, -1.4F, 8}, {2, -1.4F, 8}, {2, 1.4F, 8}, {-2, 1.4F, 8}}}}}};
    const std::array<std::array<float, 2>, 4> texels = {{{0, 0}, {u, 0}, {u, v}, {0, v}}};
    for (const Wall &wall : walls) {
        for (const auto &corners : {std::array<std::size_t, 3>{0, 1, 2}, {0, 2, 3}}) {
            tavik_clipped_triangle t = {};
            for (std::size_t i = 0; i < 3; ++i) {
                float *vertex = &t.x0 + 5 * i;
                std::copy(wall.corners[corners[i]].begin(), wall.corners[corners[i]].end(), vertex);
                std::copy(texels[corners[i]].begin(), texels[corners[i]].end(), vertex + 3);
            }
            t.centre_x = width / 2.0F;
            t.centre_y = height / 2.0F;
            t.focal = 330;
            t.nearest = 0.1F;
            t.texture_width = photo.width;
            t.texture_height = photo.height;
            t.width = width;
            t.height = height;
            t.smooth = 1;
            t.texture_r = photo.red.data();
            t.texture_g = photo.green.data();
            t.texture_b = photo.blue.data();
            t.plane_r = picture.red.data();
            t.plane_g = picture.green.data();
            t.plane_b = picture.blue.data();
            t.depth = canvas.depth.data();
            run.call(EXPORT(xTriangle_Clipped), &t);
        }
    }
    // A turned card in the middle of the room, projected by the host.
    for (const bool lower : {false, true}) {
        const auto place = lower ? std::array<float, 2>{470, 350} : std::array<float, 2>{260, 150};
        const float w = lower ? 2.4F : 3.4F;
        const tavik_textured_triangle t = {place[0],
                                           place[1],
                                           w,
                                           lower ? u : 0,
                                           lower ? v : 0,
                                           470,
                                           110,
                                           2.4F,
                                           u,
                                           0,
                                           260,
                                           320,
                                           3.4F,
                                           0,
                                           v,
                                           photo.width,
                                           photo.height,
                                           width,
                                           height,
                                           0,
                                           photo.red.data(),
                                           photo.green.data(),
                                           photo.blue.data(),
                                           picture.red.data(),
                                           picture.green.data(),
                                           picture.blue.data(),
                                           canvas.depth.data()};
        run.call(EXPORT(xTriangle_Perspective), &t);
    }
}

void points(Run &run) {
    // The photo's colours where they lie in the cube of all colours.
    constexpr int32_t side = 480;
    const Image &photo = run.photo;
    std::vector<float> places;
    std::vector<uint32_t> colours;
    for (int32_t i = 0; i < photo.pixel_count(); i += 5) {
        const auto at = static_cast<std::size_t>(i);
        for (const uint8_t sample : {photo.red[at], photo.green[at], photo.blue[at]})
            places.push_back(static_cast<float>(sample) - 127.5F);
        colours.push_back(uint32_t{photo.red[at]} | uint32_t{photo.green[at]} << 8 | uint32_t{photo.blue[at]} << 16);
    }
    const Matrix view = view_from({0.8F, 0.6F, 0.87F, 0.49F, 560, 3.2F, 1});
    run.label("places", places);
    run.label("colours", colours);
    run.label("view", view);
    std::vector<tavik_mesh_vertex> vertices(colours.size());
    run.label("vertices", vertices);
    run.call(EXPORT(Transform3DHelper_2), static_cast<int32_t>(colours.size()), places.data(), colours.data(),
             view.data(), side, side, vertices.data());
    Image &picture = run.draw_on(side, side, night);
    for (const tavik_mesh_vertex &vertex : vertices)
        if (vertex.visible != 0 && vertex.x >= 0 && vertex.x < side && vertex.y >= 0 && vertex.y < side)
            picture.set(vertex.x, vertex.y, {vertex.r, vertex.g, vertex.b});
}

// What a ray sees first.
struct Seen {
    float distance = 1e9F;
    Colour colour = {150, 180, 220};
    Vector normal = {0, 0, 0};
};

void ray_scene(Run &run) {
    constexpr int32_t width = 420;
    constexpr int32_t height = 300;
    Image &picture = run.draw_on(width, height, night);
    const Vector eye = {0, -1.2F, -6};
    const Vector ball = {-1.4F, 0, 1};
    const Vector box_min = {0.6F, -0.6F, -0.4F};
    const Vector box_max = {1.8F, 1, 0.8F};
    const std::array<Vector, 3> sail = {{{-0.6F, 1, 2.2F}, {2.6F, 1, 2.6F}, {0.6F, -2.4F, 2.4F}}};
    const std::array<std::array<double, 3>, 3> ground = {{{-60, 1, -20}, {60, 1, -20}, {0, 1, 90}}};
    const Vector sun = {-0.48F, -0.8F, -0.36F};
    const auto shadowed = [&](const Vector &from) {
        float nearest;
        float farthest;
        if (run.call(EXPORT(intersectRaySphere), from.data(), sun.data(), ball.data(), 1.0F, &nearest, &farthest) != 0)
            return true;
        if (run.call(EXPORT(rayBoxIntersect), from.data(), sun.data(), box_min.data(), box_max.data(), &nearest,
                     &farthest) != 0)
            return true;
        return run.call(EXPORT(triangle_intersection), sail[0].data(), sail[1].data(), sail[2].data(), from.data(),
                        sun.data(), &nearest) != 0;
    };
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const Vector ray = {(static_cast<float>(x) - width / 2.0F) / 330, (static_cast<float>(y) - 110) / 330, 1};
            const auto along = [&](float distance) -> Vector {
                return {eye[0] + ray[0] * distance, eye[1] + ray[1] * distance, eye[2] + ray[2] * distance};
            };
            Seen seen;
            float nearest;
            float farthest;
            if (run.call(EXPORT(intersectRaySphere), eye.data(), ray.data(), ball.data(), 1.0F, &nearest, &farthest) !=
                0) {
                const Vector at = along(nearest);
                seen = {nearest, {220, 90, 70}, {at[0] - ball[0], at[1] - ball[1], at[2] - ball[2]}};
            }
            if (run.call(EXPORT(rayBoxIntersect), eye.data(), ray.data(), box_min.data(), box_max.data(), &nearest,
                         &farthest) != 0 &&
                nearest < seen.distance) {
                const Vector at = along(nearest);
                Vector normal = {0, 0, -1};
                if (std::abs(at[1] - box_min[1]) < 1e-4F) normal = {0, -1, 0};
                if (std::abs(at[0] - box_min[0]) < 1e-4F) normal = {-1, 0, 0};
                seen = {nearest, {90, 170, 110}, normal};
            }
            Vector hit;
            if (run.call(EXPORT(xRayTriangleIntersect), eye.data(), ray.data(), sail[0].data(), sail[1].data(),
                         sail[2].data(), 0, hit.data()) != 0 &&
                hit[0] < seen.distance)
                seen = {hit[0],
                        {static_cast<uint8_t>(255 * hit[1]), static_cast<uint8_t>(255 * hit[2]), 200},
                        {-0.2F, -0.3F, -0.93F}};
            const std::array<double, 3> far_eye = {eye[0], eye[1], eye[2]};
            const std::array<double, 3> far_ray = {ray[0], ray[1], ray[2]};
            double distance;
            if (run.call(EXPORT(triangle_intersection_d), ground[0].data(), ground[1].data(), ground[2].data(),
                         far_eye.data(), far_ray.data(), &distance) != 0 &&
                static_cast<float>(distance) < seen.distance) {
                const Vector at = along(static_cast<float>(distance));
                const bool light = ((static_cast<int32_t>(at[0] + 100) + static_cast<int32_t>(at[2] + 100)) & 1) != 0;
                seen = {static_cast<float>(distance), light ? Colour{230, 226, 214} : Colour{96, 92, 100}, {0, -1, 0}};
            }
            float light = 1;
            if (seen.distance < 1e8F) {
                Vector from = along(seen.distance);
                for (std::size_t i = 0; i < 3; ++i) from[i] += seen.normal[i] * 1e-3F;
                const float cosine = seen.normal[0] * sun[0] + seen.normal[1] * sun[1] + seen.normal[2] * sun[2];
                light = 0.25F + (cosine > 0 && !shadowed(from) ? 0.75F * cosine : 0);
            }
            const auto lit = [light](uint8_t sample) {
                return static_cast<uint8_t>(std::min(static_cast<float>(sample) * light, 255.0F));
            };
            picture.set(x, y, {lit(seen.colour.red), lit(seen.colour.green), lit(seen.colour.blue)});
        }
    }
}

void crossings(Run &run) {
    constexpr float side = 480;
    Image &picture = run.draw_on(480, 480, {250, 250, 252});
    struct Segment {
        Point from, to;
    };
    constexpr std::size_t count = 16;
    std::vector<Segment> segments;
    segments.reserve(count);
    uint32_t state = 7;
    const auto place = [&state] {
        state = state * 1664525U + 1013904223U;
        return 20 + static_cast<float>(state >> 16) / 65536.0F * (side - 40);
    };
    for (std::size_t i = 0; i < count; ++i) segments.push_back({{place(), place()}, {place(), place()}});
    for (const Segment &s : segments) draw_line(picture, std::array{s.from, s.to}, 2, {60, 66, 80});
    for (std::size_t i = 0; i < segments.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            const Segment &a = segments[i];
            const Segment &b = segments[j];
            float x;
            float y;
            const int32_t result = run.call(EXPORT(lineIntersection), a.from.x, a.from.y, a.to.x, a.to.y, b.from.x,
                                            b.from.y, b.to.x, b.to.y, &x, &y);
            if (result == 0 || x < 4 || y < 4 || x > side - 5 || y > side - 5) continue;
            const Colour colour = result == 1 ? Colour{214, 64, 69} : Colour{190, 200, 216};
            fill(picture, static_cast<int32_t>(x) - 3, static_cast<int32_t>(y) - 3, 7, 7, colour);
        }
    }
}

} // namespace

Family raster_family() {
    return {"raster",
            "Triangles with depth, height fields in space, and rays.",
            {
                {"height_field",
                 "Height field",
                 "The photo as a mesh, its brightness as heights, from two sides; at the right its depth, near in "
                 "white.",
                 {"Transform3DHelper", "Render3DHelper", "Render3DHelper2"},
                 height_field},
                {"depth_triangles",
                 "Depth test",
                 "Three shaded triangles that pierce each other.",
                 {"zTriangle"},
                 interpenetrating},
                {"pyramid", "Pyramid", "Shaded triangles that share their edges exactly.", {"TriangleColor"}, pyramid},
                {"room",
                 "Room of pictures",
                 "Walls that run past the eye, cut at the near plane, and a card turned in space.",
                 {"xTriangle_Clipped", "xTriangle_Perspective"},
                 room},
                {"colour_cube",
                 "Colours in space",
                 "The photo's pixels as points at red, green and blue.",
                 {"Transform3DHelper_2"},
                 points},
                {"rays",
                 "Traced rays",
                 "A ball, a box, a triangle and the ground, with the shadows of the sun.",
                 {"intersectRaySphere", "rayBoxIntersect", "xRayTriangleIntersect", "triangle_intersection",
                  "triangle_intersection_d"},
                 ray_scene},
                {"crossings",
                 "Crossings",
                 "Where segments meet, in red, and where only their lines do, in grey.",
                 {"lineIntersection"},
                 crossings},
            }};
}

} // namespace gallery
