#include "tavik/blockmatch/blockmatch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "host/drawing.h"
#include "host/run.h"
#include "host/shading.h"
#include "tavik/paint/paint.h"

namespace gallery {
namespace {

struct Place {
    int32_t x;
    int32_t y;

    bool operator==(const Place &) const = default;
};

constexpr int32_t grid_step = 24;

// The sample nearest to what a function of the position gives for each pixel; beyond the photo its edge is repeated.
template <class Source> Image resampled(const Image &photo, int32_t width, int32_t height, const Source &source) {
    Image image(width, height);
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const Point from = source(static_cast<float>(x), static_cast<float>(y));
            const auto i = photo.index(std::clamp(static_cast<int32_t>(std::floor(from.x + 0.5F)), 0, photo.x_max()),
                                       std::clamp(static_cast<int32_t>(std::floor(from.y + 0.5F)), 0, photo.y_max()));
            image.set(x, y, {photo.red[i], photo.green[i], photo.blue[i]});
        }
    }
    return image;
}

// The picture made dark, for what is drawn over it.
void dim(Image &image) {
    for (uint8_t *plane : image.planes())
        std::transform(plane, plane + image.red.size(), plane, [](uint8_t sample) { return sample / 2; });
}

void draw_vector(Run &run, Place from, Place to) {
    Image &picture = run.picture;
    run.call(EXPORT(xAAFloatLine), static_cast<float>(from.x), static_cast<float>(from.y), static_cast<float>(to.x),
             static_cast<float>(to.y), 255.0F, 220.0F, 60.0F, picture.width, picture.height, picture.red.data(),
             picture.green.data(), picture.blue.data());
    fill(picture, from.x - 1, from.y - 1, 3, 3, {235, 70, 60});
}

// Calls vector(place) at the crossings of a grid.
template <class Vector> void on_grid(const Image &image, const Vector &vector) {
    for (int32_t y = grid_step; y < image.height - grid_step / 2; y += grid_step)
        for (int32_t x = grid_step; x < image.width - grid_step / 2; x += grid_step) vector(Place{x, y});
}

void shifted_crops(Run &run) {
    constexpr Place shift = {13, -8};
    constexpr int32_t margin = 16;
    const int32_t width = std::max(run.photo.width - 2 * margin, 1);
    const int32_t height = std::max(run.photo.height - 2 * margin, 1);
    const auto crop = [&](Place by) {
        return resampled(run.photo, width, height, [&](float x, float y) {
            return Point{x + static_cast<float>(margin - by.x), y + static_cast<float>(margin - by.y)};
        });
    };
    const Image first = crop({0, 0});
    run.layer = crop(shift);
    run.draw_on(width, height, {0, 0, 0}) = first;
    dim(run.picture);
    run.label("first.green", first.green);
    int32_t searches = 0;
    int32_t hits = 0;
    Place found{};
    run.label("place", std::span(&found, 1));
    on_grid(first, [&](Place at) {
        found = at;
        run.call(EXPORT(xFindBlock_Channel), &found.x, &found.y, 2 * margin, 0, first.x_max(), first.y_max(),
                 run.layer->green.data(), first.green.data());
        draw_vector(run, at, found);
        ++searches;
        hits += found == Place{at.x + shift.x, at.y + shift.y} ? 1 : 0;
    });
    run.note(std::to_string(hits) + " of " + std::to_string(searches) + " vectors are (13, -8), the shift.");
}

void moving_camera(Run &run) {
    const Point middle = {static_cast<float>(run.photo.width) / 2, static_cast<float>(run.photo.height) / 2};
    // Turned by three degrees and enlarged by a twentieth.
    const float across = std::cos(0.0524F) / 1.05F;
    const float down = std::sin(0.0524F) / 1.05F;
    run.layer = resampled(run.photo, run.photo.width, run.photo.height, [&](float x, float y) {
        const Point away = {x - middle.x, y - middle.y};
        return Point{middle.x + away.x * across + away.y * down, middle.y - away.x * down + away.y * across};
    });
    dim(run.picture);
    const auto a = run.photo.planes();
    const auto b = run.layer->planes();
    Place found{};
    run.label("place", std::span(&found, 1));
    on_grid(run.photo, [&](Place at) {
        found = at;
        run.call(EXPORT(xFindBlock_RGB), at.x, at.y, &found.x, &found.y, 56, 0, run.photo.x_max(), run.photo.y_max(),
                 a[0], a[1], a[2], b[0], b[1], b[2]);
        draw_vector(run, at, found);
    });
}

// Twice as large, bright where the cost is low against the panel's mean, blue where blocks are not comparable.
void draw_costs(Image &picture, const Image &of, const std::vector<int32_t> &costs, Place corner) {
    constexpr int32_t not_comparable = std::numeric_limits<int32_t>::max();
    int64_t sum = 0;
    int64_t count = 1;
    for (const int32_t cost : costs) {
        if (cost == not_comparable) continue;
        sum += cost;
        ++count;
    }
    const auto mean = static_cast<float>(sum + count) / static_cast<float>(count);
    for (int32_t y = 0; y < of.height; ++y) {
        for (int32_t x = 0; x < of.width; ++x) {
            const int32_t cost = costs[of.index(x, y)];
            const uint8_t grey = level(1 - 0.8F * std::sqrt(static_cast<float>(cost) / mean));
            fill(picture, corner.x + 2 * x, corner.y + 2 * y, 2, 2,
                 cost == not_comparable ? Colour{30, 40, 90} : Colour{grey, grey, grey});
        }
    }
}

void cost_maps(Run &run) {
    const Image small = shrunk_to_fit(run.photo, 180, 120);
    const Place at = {small.width / 2, small.height / 2};
    constexpr int32_t size = 16;
    const auto p = small.planes();
    run.label("small.red", small.red);
    run.label("small.green", small.green);
    run.label("small.blue", small.blue);
    // Known is a disc about the place; elsewhere everything.
    const Plane everything(small.red.size(), 255);
    Plane disc(small.red.size());
    for (int32_t y = 0; y < small.height; ++y)
        for (int32_t x = 0; x < small.width; ++x)
            disc[small.index(x, y)] = (x - at.x) * (x - at.x) + (y - at.y) * (y - at.y) <= 20 ? 255 : 0;
    run.label("disc", disc);
    run.label("everything", everything);
    Image &picture = run.draw_on(4 * small.width, 4 * small.height, {0, 0, 0});
    const auto map = [&](int32_t column, int32_t row, const auto &cost_of) {
        std::vector<int32_t> costs;
        for (int32_t y = 0; y < small.height; ++y)
            for (int32_t x = 0; x < small.width; ++x) costs.push_back(cost_of(x, y));
        draw_costs(picture, small, costs, {2 * small.width * column, 2 * small.height * row});
    };
    map(0, 0, [&](int32_t x, int32_t y) {
        return run.call(EXPORT(xcompareblock16), at.x, at.y, x, y, small.width, small.height, p[1], p[1]);
    });
    map(1, 0, [&](int32_t x, int32_t y) {
        return run.call(EXPORT(xcompareblock), at.x, at.y, x, y, small.width, small.height, p[1], p[1]);
    });
    map(0, 1, [&](int32_t x, int32_t y) {
        return run.call(EXPORT(CompareBlock), at.x, at.y, x, y, size, small.x_max(), small.y_max(), p[0], p[1], p[2],
                        p[0], p[1], p[2]);
    });
    map(1, 1, [&](int32_t x, int32_t y) {
        return run.call(EXPORT(CompareBlock_mask), at.x, at.y, x, y, size, small.x_max(), small.y_max(), p[0], p[1],
                        p[2], p[0], p[1], p[2], disc.data(), everything.data(), 10);
    });
}

// A ball of the photo's middle, in other colours, somewhere over the photo.
constexpr int32_t ball_radius = 22;

void paste_ball(Image &frame, const Image &photo, Place at) {
    for (int32_t y = -ball_radius; y <= ball_radius; ++y) {
        for (int32_t x = -ball_radius; x <= ball_radius; ++x) {
            const Place to = {at.x + x, at.y + y};
            const bool inside = to.x >= 0 && to.x < frame.width && to.y >= 0 && to.y < frame.height;
            if (!inside || x * x + y * y > ball_radius * ball_radius) continue;
            const auto i = photo.index(std::clamp(photo.width / 2 + x, 0, photo.x_max()),
                                       std::clamp(photo.height / 2 + y, 0, photo.y_max()));
            frame.set(to.x, to.y, {photo.blue[i], static_cast<uint8_t>(255 - photo.green[i]), photo.red[i]});
        }
    }
}

void tracked_ball(Run &run) {
    const Image &photo = run.photo;
    constexpr int32_t frames = 16;
    const auto place_in_frame = [&](int32_t number) {
        const float along = static_cast<float>(number) / (frames - 1);
        const float bounce = std::abs(std::cos(along * 6.5F)) * (1 - 0.5F * along);
        return Place{static_cast<int32_t>(static_cast<float>(photo.width) * (0.08F + 0.84F * along)),
                     static_cast<int32_t>(static_cast<float>(photo.height) * (0.85F - 0.65F * bounce))};
    };
    const Place start = place_in_frame(0);
    Image first = photo;
    paste_ball(first, photo, start);
    Plane ball_alpha(photo.red.size());
    for (int32_t y = 0; y < photo.height; ++y)
        for (int32_t x = 0; x < photo.width; ++x)
            ball_alpha[photo.index(x, y)] =
                level(ball_radius - distance(static_cast<float>(x), static_cast<float>(y), static_cast<float>(start.x),
                                             static_cast<float>(start.y)));
    const Plane opaque(photo.red.size(), 255);
    Image frame = photo;
    Place found = start;
    run.label("first.green", first.green);
    run.label("frame.green", frame.green);
    run.label("ball", ball_alpha);
    run.label("opaque", opaque);
    run.label("place", std::span(&found, 1));
    int32_t hits = 0;
    std::vector<Point> path;
    for (int32_t number = 0; number < frames; ++number) {
        const Place there = place_in_frame(number);
        std::copy(photo.green.begin(), photo.green.end(), frame.green.begin());
        paste_ball(frame, photo, there);
        paste_ball(run.picture, photo, there);
        run.call(EXPORT(xMatchBlockAlf), start.x, start.y, &found.x, &found.y, 200, 2 * ball_radius + 2, photo.x_max(),
                 photo.y_max(), first.green.data(), frame.green.data(), ball_alpha.data(), opaque.data());
        hits += found == there ? 1 : 0;
        path.push_back({static_cast<float>(found.x) + 0.5F, static_cast<float>(found.y) + 0.5F});
    }
    draw_line(run.picture, path, 2, {255, 220, 60});
    for (const Point &at : path)
        fill(run.picture, static_cast<int32_t>(at.x) - 2, static_cast<int32_t>(at.y) - 2, 5, 5, {235, 70, 60});
    run.note("Found to the pixel in " + std::to_string(hits) + " of " + std::to_string(frames) + " frames.");
}

} // namespace

Family blockmatch_family() {
    return {
        "blockmatch",
        "Motion: how much blocks of two pictures differ, and where a block has gone.",
        {
            {"shifted_crops",
             "Two crops",
             "The layer is the photo cropped elsewhere; each line leads to where a block of 16 × 16 is found in it.",
             {"xFindBlock_Channel", "xAAFloatLine"},
             shifted_crops},
            {"moving_camera",
             "A moving camera",
             "The layer is turned by three degrees and enlarged by a twentieth. Smooth places lead astray.",
             {"xFindBlock_RGB", "xAAFloatLine"},
             moving_camera},
            {"cost_maps",
             "Cost maps",
             "How much the blocks around each pixel are like the one in the middle: 16 × 16 and 8 × 9 of the green "
             "plane above; 16 × 16 in colour, whole and of a disc, below. Blue is out of bounds.",
             {"xcompareblock16", "xcompareblock", "CompareBlock", "CompareBlock_mask"},
             cost_maps},
            {"tracked_ball",
             "A tracked ball",
             "A ball bounces through 16 frames, all drawn here, and is found in each by its own round alpha.",
             {"xMatchBlockAlf"},
             tracked_ball},
        }};
}

} // namespace gallery
