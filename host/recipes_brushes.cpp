#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "host/circle.h"
#include "host/colour_ramp.h"
#include "host/drawing.h"
#include "host/run.h"
#include "tavik/colour/colour.h"
#include "tavik/convert/convert.h"
#include "tavik/filters/filters.h"
#include "tavik/paint/paint.h"
#include "tavik/tone/tone.h"

namespace gallery {
namespace {

using Bytes = std::vector<uint8_t>;

float real(int32_t value) { return static_cast<float>(value); }

// A round mask: 255 up to `solid` of its radius, falling to 0 at the rim.
Bytes round_mask(int32_t width, int32_t height, float solid) {
    Bytes mask;
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x) {
            const float u = (real(2 * x + 1) - real(width)) / real(width);
            const float v = (real(2 * y + 1) - real(height)) / real(height);
            const float rim = (1 - std::sqrt(u * u + v * v)) / (1 - solid);
            mask.push_back(static_cast<uint8_t>(std::clamp(rim, 0.0F, 1.0F) * 255));
        }
    return mask;
}

Colour colour_of(const std::array<float, 4> &components) {
    const auto byte = [&](std::size_t i) { return static_cast<uint8_t>(std::lround(components[i])); };
    return {byte(0), byte(1), byte(2)};
}

// A sky from night above to the last light below.
void paint_sky(Image &image) {
    const std::vector<Stop> stops = {
        {0, {22, 34, 84}}, {0.45F, {118, 84, 140}}, {0.75F, {240, 140, 96}}, {1, {255, 220, 130}}};
    for (int32_t y = 0; y < image.height; ++y)
        fill(image, 0, y, image.width, 1, colour_of(between(stops, real(y) / real(image.y_max()))));
}

// Calls step(left, top, first) for the places of a brush along a path, and at its beginning once more.
template <class Path, class Step> void drag(int32_t steps, int32_t size, const Path &path, const Step &step) {
    for (int32_t i = 0; i <= steps; ++i) {
        const Point at = path(real(i) / real(steps));
        const auto left = static_cast<int32_t>(at.x) - size / 2;
        const auto top = static_cast<int32_t>(at.y) - size / 2;
        if (i == 0) step(left, top, true);
        step(left, top, false);
    }
}

void smeared_sky(Run &run) {
    Image &picture = run.draw_on(720, 440, {0, 0, 0});
    paint_sky(picture);
    const auto planes = picture.planes();
    for (int32_t i = 0; i < 60; ++i) {
        const Point way = on_circle(0.37 * i);
        const float x = 360 + 340 * way.x * on_circle(0.013 * i).x;
        const float y = 60 + real(i * 53 % 300);
        run.call(EXPORT(FeatheredCircle), x, y, 12.0F, 26.0F, 255.0F, 236.0F - y * 0.2F, 214.0F - y * 0.3F, 0.55F,
                 picture.x_max(), picture.y_max(), planes[0], planes[1], planes[2]);
    }

    std::array<std::vector<float>, 3> floats;
    for (std::size_t k = 0; k < 3; ++k) {
        floats[k].resize(picture.red.size());
        run.call(EXPORT(char_to_float), picture.width, picture.height, planes[k], floats[k].data());
    }
    constexpr int32_t size = 44;
    const Bytes mask = round_mask(size, size, 0.2F);
    std::array<std::vector<float>, 3> carry;
    carry.fill(std::vector<float>(static_cast<std::size_t>(size * size)));
    for (int32_t stroke = 0; stroke < 9; ++stroke) {
        const auto along_sine = [&](float t) {
            const float height = 40.0F + 44.0F * real(stroke);
            return Point{24 + t * 720, height + 26 * on_circle(1.6 * t + 0.21 * stroke).y};
        };
        drag(500, size, along_sine, [&](int32_t left, int32_t top, bool first) {
            run.call(EXPORT(Cust_Smear_helper2), left, top, size, size, first ? 0.0F : 0.55F, first ? 1.0F : 0.04F,
                     picture.width, picture.height, mask.data(), carry[0].data(), carry[1].data(), carry[2].data(),
                     floats[0].data(), floats[1].data(), floats[2].data());
        });
    }
    for (std::size_t k = 0; k < 3; ++k)
        run.call(EXPORT(float_to_char_clamp), picture.width, picture.height, floats[k].data(), planes[k]);
}

// A spiral drawn out from the middle of the photo.
void finger_paint(Run &run) {
    const Image &photo = run.photo;
    const auto planes = run.picture.planes();
    const int32_t size = photo.height / 12;
    const Bytes mask = round_mask(size, size, 0.5F);
    std::array<Bytes, 3> carry;
    carry.fill(Bytes(mask.size()));
    const auto spiral = [&](float t) {
        const Point way = on_circle(3.25 * t);
        const float reach = t * 0.44F * real(photo.height);
        return Point{0.48F * real(photo.width) + reach * 1.3F * way.x, 0.45F * real(photo.height) + reach * way.y};
    };
    drag(1400, size, spiral, [&](int32_t left, int32_t top, bool first) {
        run.call(EXPORT(Cust_Smear_helper), left, top, size, size, first ? 0 : 230, first ? 255 : 26, photo.width,
                 photo.height, mask.data(), carry[0].data(), carry[1].data(), carry[2].data(), planes[0], planes[1],
                 planes[2]);
    });
}

using Corners = std::array<float, 8>;

void place(Run &run, const Image &source, const Corners &corners, Image &target, float opacity) {
    const auto from = source.planes();
    const auto to = target.planes();
    run.call(EXPORT(xFillPoly4_p), corners.data(), from[0], from[1], from[2], source.width, source.height, to[0], to[1],
             to[2], target.width, target.height, opacity, 1);
}

Image brick_wall(int32_t columns, int32_t rows) {
    constexpr int32_t width = 40;
    constexpr int32_t height = 16;
    Image wall(columns * width, rows * height, {176, 166, 152});
    for (int32_t row = 0; row < rows; ++row)
        for (int32_t column = -1; column < columns; ++column) {
            const auto shade = static_cast<uint8_t>((row * 7 + column * 13 + 60) * 29 % 37);
            fill(wall, column * width + (row % 2 == 0 ? 0 : width / 2) + 2, row * height + 2, width - 3, height - 3,
                 {static_cast<uint8_t>(136 + shade), static_cast<uint8_t>(72 + shade / 2), 54});
        }
    return wall;
}

// Two walls that meet at a corner of a street, each with a poster, and a round sticker on one of them.
void posters(Run &run) {
    Image &picture = run.draw_on(760, 460, {150, 176, 206});
    fill(picture, 0, 380, 760, 80, {104, 102, 104});
    const Image wall = brick_wall(12, 22);
    place(run, wall, {-60, -90, 420, 40, 420, 380, -60, 470}, picture, 1);
    place(run, wall, {420, 40, 800, -40, 800, 440, 420, 380}, picture, 1);
    place(run, Image(8, 8), {420, 40, 800, -40, 800, 440, 420, 380}, picture, 0.35F);
    Image poster(run.photo.width + 40, run.photo.height + 40, {248, 246, 240});
    paste(poster, run.photo, 20, 20);
    place(run, poster, {40, 48, 330, 90, 330, 310, 40, 324}, picture, 1);
    place(run, poster, {490, 86, 720, 52, 720, 300, 490, 276}, picture, 1);

    constexpr int32_t size = 160;
    Image sticker(size, size, {255, 226, 60});
    draw_text(sticker, 30, 66, 4, "FRESH", {150, 30, 30});
    const Bytes alpha = round_mask(size, size, 0.97F);
    const Corners corners = {262, 56, 370, 78, 356, 180, 250, 164};
    const auto from = sticker.planes();
    const auto to = picture.planes();
    run.call(EXPORT(xFillPoly4_Alpha_p), corners.data(), from[0], from[1], from[2], alpha.data(), size, size, to[0],
             to[1], to[2], picture.width, picture.height, 1.0F, 1);
}

// The middle of the photo flies off in three tints.
void ghosts(Run &run) {
    const Image &photo = run.photo;
    const Bytes alpha = round_mask(photo.width, photo.height, 0.55F);
    const std::array<std::array<float, 3>, 3> tints = {{{70, 255, 255}, {255, 110, 255}, {255, 255, 90}}};
    const auto to = run.picture.planes();
    for (std::size_t i = 0; i < tints.size(); ++i) {
        const float away = real(static_cast<int32_t>(i) + 1) / 3;
        const float w = real(photo.width);
        const float h = real(photo.height);
        const float scale = 1 - 0.5F * away;
        const float left = 0.62F * w * away;
        const float top = -0.06F * h * away;
        const Corners corners = {left,
                                 top + 0.1F * h * away,
                                 left + scale * w,
                                 top,
                                 left + scale * w,
                                 top + scale * h,
                                 left + 0.05F * w * away,
                                 top + 0.86F * scale * h};
        run.call(EXPORT(xFillPoly4_Alpha_p_Tinted), corners.data(), photo.red.data(), photo.green.data(),
                 photo.blue.data(), alpha.data(), photo.width, photo.height, to[0], to[1], to[2], photo.width,
                 photo.height, 0.8F - 0.2F * away, 1, tints[i][0], tints[i][1], tints[i][2]);
    }
}

void marching(Run &run) {
    const Image small = shrunk_to_fit(run.photo, 300, 200);
    constexpr int32_t frames = 16;
    constexpr int32_t gap = 6;
    const auto count = small.red.size();
    Bytes selection(count);
    Bytes labels(count);
    Bytes light(count);
    // The mask is 0 near the red of the saucer, which is what shall be selected.
    run.call(EXPORT(xKeyToAlpha), small.width, small.height, 180, 44, 15, 11.0F, 29.0F, small.red.data(),
             small.green.data(), small.blue.data(), selection.data());
    for (uint8_t &value : selection) value = static_cast<uint8_t>(255 - value);
    run.call(EXPORT(xBlur), small.width, small.height, 2, 2, selection.data(), selection.data());
    run.call(EXPORT(xInitMarquee), selection.data(), labels.data(), small.width, small.height, 127, 8, 1, 1);
    Image &picture = run.draw_on(4 * (small.width + gap) + gap, 4 * (small.height + gap) + gap, {250, 250, 252});
    for (int32_t frame = 0; frame < frames; ++frame) {
        std::array<uint8_t, 256> table = {};
        for (int32_t label = 1; label <= 16; ++label)
            table[static_cast<std::size_t>(label)] = (label - 1 + frame) % 16 < 8 ? 255 : 0;
        run.call(EXPORT(ValueLut), small.width, small.height, labels.data(), light.data(), table.data());
        Image view = small;
        for (std::size_t i = 0; i < count; ++i)
            if (labels[i] != 0) view.red[i] = view.green[i] = view.blue[i] = light[i];
        paste(picture, view, gap + frame % 4 * (small.width + gap), gap + frame / 4 * (small.height + gap));
    }
}

// A flower of petals around a heart, on clear ground.
struct Stamp {
    Image image;
    Bytes alpha;
};

Stamp flower(int32_t size, Colour petals, Colour heart) {
    Stamp stamp = {Image(size, size, petals), Bytes(static_cast<std::size_t>(size * size))};
    for (int32_t y = 0; y < size; ++y)
        for (int32_t x = 0; x < size; ++x) {
            const float u = (real(2 * x + 1) - real(size)) / real(size);
            const float v = (real(2 * y + 1) - real(size)) / real(size);
            const float distance = std::sqrt(u * u + v * v);
            // A curve of five petals, without angles.
            const float u5 = u * u * u * u * u - 10 * u * u * u * v * v + 5 * u * v * v * v * v;
            const float wave = u5 / std::max(distance * distance * distance * distance * distance, 1e-6F);
            const float rim = (0.72F + 0.24F * wave - distance) * real(size) * 0.4F;
            stamp.alpha[stamp.image.index(x, y)] = static_cast<uint8_t>(std::clamp(rim, 0.0F, 1.0F) * 255);
            if (distance < 0.24F) stamp.image.set(x, y, heart);
        }
    return stamp;
}

void press(Run &run, const Stamp &stamp, int32_t x, int32_t y, int32_t opacity, Image &target) {
    const auto from = stamp.image.planes();
    const auto to = target.planes();
    run.call(EXPORT(CustomBrushBlit), x, y, stamp.image.width, stamp.image.height, opacity, target.width, target.height,
             from[0], from[1], from[2], stamp.alpha.data(), to[0], to[1], to[2]);
}

void stamp_trail(Run &run) {
    const std::array<Stamp, 3> stamps = {flower(46, {250, 244, 238}, {238, 180, 40}),
                                         flower(38, {255, 176, 190}, {196, 50, 80}),
                                         flower(30, {150, 186, 255}, {250, 240, 140})};
    constexpr int32_t steps = 44;
    for (int32_t i = 0; i < steps; ++i) {
        const float way = real(i) / real(steps - 1);
        const float x = way * real(run.photo.width);
        const float y = (0.5F + 0.4F * on_circle(1.5 * way).y) * real(run.photo.height);
        const Stamp &stamp = stamps[static_cast<std::size_t>(i) % 3];
        press(run, stamp, static_cast<int32_t>(x) - stamp.image.width / 2,
              static_cast<int32_t>(y) - stamp.image.height / 2, 90 + 165 * i / steps, run.picture);
    }
}

// One bed is planted by hand; the others are clones of it through soft masks.
void flower_bed(Run &run) {
    Image &picture = run.draw_on(720, 420, {84, 128, 62});
    for (int32_t y = 0; y < picture.height; ++y)
        for (int32_t x = 0; x < picture.width; ++x) {
            const auto grain = static_cast<uint8_t>((x * 7919 + y * 104729 + x * y * 31) % 97 % 23);
            picture.set(x, y, {static_cast<uint8_t>(74 + grain), static_cast<uint8_t>(118 + grain), 56});
        }
    const std::array<Stamp, 3> stamps = {flower(30, {240, 80, 90}, {250, 220, 80}),
                                         flower(26, {250, 246, 240}, {240, 190, 40}),
                                         flower(28, {170, 110, 220}, {255, 240, 150})};
    for (int32_t i = 0; i < 40; ++i) {
        const Point way = on_circle(0.381966 * i);
        const float reach = std::sqrt(real(i) / 40);
        press(run, stamps[static_cast<std::size_t>(i) % 3], static_cast<int32_t>(150 + 105 * reach * way.x) - 14,
              static_cast<int32_t>(135 + 85 * reach * way.y) - 14, 255, picture);
    }
    const Image before = picture;
    const auto from = before.planes();
    const auto to = picture.planes();
    constexpr int32_t left = 21;
    constexpr int32_t top = 23;
    Image spot(250, 210);
    spot.red = round_mask(spot.width, spot.height, 0.9F);
    for (const auto &[dx, dy] : {std::array{290, -5}, {144, 182}, {434, 177}}) {
        Image mask(picture.width, picture.height);
        paste(mask, spot, left + dx, top + dy);
        run.call(EXPORT(xclonefill), picture.width, picture.height, -dx, -dy, 255, mask.red.data(), from[0], from[1],
                 from[2], to[0], to[1], to[2]);
    }
}

void gradient_star(Run &run) {
    Image &picture = run.draw_on(640, 640, {12, 12, 22});
    const auto planes = picture.planes();
    constexpr int32_t rays = 180;
    for (int32_t i = 0; i < rays; ++i) {
        const double turns = static_cast<double>(i) / rays;
        const Point way = on_circle(turns);
        const float reach = i % 3 == 0 ? 310.0F : (i % 3 == 1 ? 240.0F : 170.0F);
        const auto colour = hue(turns);
        run.call(EXPORT(xGradAALine_b), 319.5F + 20 * way.x, 319.5F + 20 * way.y, 319.5F + reach * way.x,
                 319.5F + reach * way.y, 255.0F, 255.0F, 240.0F, colour[0], colour[1], colour[2], picture.width,
                 picture.height, planes[0], planes[1], planes[2]);
    }
}

// Brushes as a host's tool bar shows them: each is painted row by row into a bitmap of blue, green and red.
void brush_strip(Run &run) {
    constexpr int32_t cell = 96;
    constexpr int32_t columns = 7;
    constexpr int32_t rows = 3;
    Image &picture = run.draw_on(columns * cell, rows * cell, {236, 238, 242});
    Bytes bitmap(3 * picture.red.size(), 240);
    for (int32_t y = 0; y < picture.height; ++y)
        for (int32_t column = 0; column < columns; ++column) {
            const int32_t row = y / cell;
            const float size = 14.0F + 10.0F * real(column);
            const float feather = size * 0.5F * (row == 0 ? 0.04F : (row == 1 ? 0.5F : 0.95F));
            const auto colour = hue(0.1 * column + 0.3 * row);
            run.call(EXPORT(brush_preview_helper), bitmap.data(), cell, y % cell, 47.5F, 47.5F, size - 2 * feather,
                     feather, colour[0] * 0.8F, colour[1] * 0.8F, colour[2] * 0.8F, row == 2 ? 0.8F : 1.0F,
                     3 * (y * picture.width + column * cell));
        }
    for (std::size_t i = 0; i < picture.red.size(); ++i) {
        picture.blue[i] = bitmap[3 * i];
        picture.green[i] = bitmap[3 * i + 1];
        picture.red[i] = bitmap[3 * i + 2];
    }
}

} // namespace

Family brushes_family() {
    return {"brushes",
            "Brushes that are pictures, brushes that smear, pictures in any quadrilateral, and a selection's outline.",
            {
                {"smeared_sky",
                 "Smeared sky",
                 "Clouds of soft dabs, then nine strokes along a sine that carry what they pass, in floats.",
                 {"FeatheredCircle", "char_to_float", "Cust_Smear_helper2", "float_to_char_clamp"},
                 smeared_sky},
                {"finger_paint",
                 "A finger in the paint",
                 "One stroke that winds outward and takes the photo's colours along.",
                 {"Cust_Smear_helper"},
                 finger_paint},
                {"posters",
                 "Posters on two walls",
                 "Bricks, posters and a shadow in perspective, and a round sticker with transparency.",
                 {"xFillPoly4_p", "xFillPoly4_Alpha_p"},
                 posters},
                {"ghosts",
                 "Tinted ghosts",
                 "The photo's middle through an oval, three times over itself, each in a tint of its own.",
                 {"xFillPoly4_Alpha_p_Tinted"},
                 ghosts},
                {"marching",
                 "A selection that marches",
                 "Sixteen frames, row by row: one plane of labels through a table that turns by one each time.",
                 {"xKeyToAlpha", "xBlur", "xInitMarquee", "ValueLut"},
                 marching},
                {"flower_bed",
                 "A flower bed, cloned",
                 "The bed at the top left is planted flower by flower; the other three are clones of it.",
                 {"CustomBrushBlit", "xclonefill"},
                 flower_bed},
                {"stamp_trail",
                 "A trail of stamps",
                 "Three picture brushes by turns, more opaque to the right.",
                 {"CustomBrushBlit"},
                 stamp_trail},
                {"gradient_star",
                 "A star of graded lines",
                 "180 lines from nearly white in the middle to the colour of their direction.",
                 {"xGradAALine_b"},
                 gradient_star},
                {"brush_strip",
                 "A strip of brushes",
                 "Hard, soft and very soft dabs of growing size, painted row by row into a display bitmap.",
                 {"brush_preview_helper"},
                 brush_strip},
            }};
}

} // namespace gallery
