#include "host/drawing.h"

#include <algorithm>
#include <cmath>

#include <stb/stb_easy_font.h>

namespace gallery {
namespace {

float distance_to_segment(Point p, Point a, Point b) {
    const Point along = {b.x - a.x, b.y - a.y};
    const Point from_a = {p.x - a.x, p.y - a.y};
    const float length_squared = along.x * along.x + along.y * along.y;
    const float t =
        length_squared > 0 ? std::clamp((from_a.x * along.x + from_a.y * along.y) / length_squared, 0.0F, 1.0F) : 0.0F;
    const Point away = {from_a.x - t * along.x, from_a.y - t * along.y};
    return std::sqrt(away.x * away.x + away.y * away.y);
}

void blend(uint8_t &below, uint8_t above, uint8_t coverage) {
    below = static_cast<uint8_t>((below * (255 - coverage) + above * coverage + 127) / 255);
}

// Raises the coverage of the pixels near one segment of a line.
void cover(std::vector<uint8_t> &coverage, const Image &image, Point a, Point b, float width) {
    const float reach = width / 2 + 1;
    const int32_t left = std::max(static_cast<int32_t>(std::min(a.x, b.x) - reach), 0);
    const int32_t right = std::min(static_cast<int32_t>(std::max(a.x, b.x) + reach), image.x_max());
    const int32_t top = std::max(static_cast<int32_t>(std::min(a.y, b.y) - reach), 0);
    const int32_t bottom = std::min(static_cast<int32_t>(std::max(a.y, b.y) + reach), image.y_max());
    for (int32_t y = top; y <= bottom; ++y) {
        for (int32_t x = left; x <= right; ++x) {
            const Point centre = {static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F};
            const float inside = width / 2 + 0.5F - distance_to_segment(centre, a, b);
            uint8_t &covered = coverage[image.index(x, y)];
            covered = std::max(covered, static_cast<uint8_t>(std::clamp(inside, 0.0F, 1.0F) * 255));
        }
    }
}

} // namespace

void fill(Image &image, int32_t left, int32_t top, int32_t width, int32_t height, Colour colour) {
    for (int32_t y = std::max(top, 0); y < std::min(top + height, image.height); ++y)
        for (int32_t x = std::max(left, 0); x < std::min(left + width, image.width); ++x) image.set(x, y, colour);
}

// The coverage is gathered first, so that the joints of the line are not painted twice.
void draw_line(Image &image, std::span<const Point> points, float width, Colour colour) {
    std::vector<uint8_t> coverage(image.red.size());
    for (std::size_t i = 1; i < points.size(); ++i) cover(coverage, image, points[i - 1], points[i], width);
    for (std::size_t i = 0; i < coverage.size(); ++i) {
        if (coverage[i] == 0) continue;
        blend(image.red[i], colour.red, coverage[i]);
        blend(image.green[i], colour.green, coverage[i]);
        blend(image.blue[i], colour.blue, coverage[i]);
    }
}

void draw_text(Image &image, int32_t left, int32_t top, int32_t size, std::string text, Colour colour) {
    struct Vertex {
        float x;
        float y;
        float z;
        uint32_t colour;
    };
    struct Quad {
        std::array<Vertex, 4> corners;
    };
    // A character takes fewer quads than this.
    constexpr std::size_t quads_per_character = 32;
    std::vector<Quad> quads(text.size() * quads_per_character);
    const int count =
        stb_easy_font_print(0, 0, text.data(), nullptr, quads.data(), static_cast<int>(quads.size() * sizeof(Quad)));
    for (const Quad &quad : std::span(quads).first(static_cast<std::size_t>(count))) {
        const auto pixels = [&](float units) { return static_cast<int32_t>(units) * size; };
        const Vertex &first = quad.corners[0];
        const Vertex &opposite = quad.corners[2];
        fill(image, left + pixels(first.x), top + pixels(first.y), pixels(opposite.x - first.x),
             pixels(opposite.y - first.y), colour);
    }
}

int32_t text_width(int32_t size, std::string text) { return stb_easy_font_width(text.data()) * size; }

void paste(Image &image, const Image &above, int32_t left, int32_t top) {
    const auto from = above.planes();
    const auto to = image.planes();
    for (std::size_t channel = 0; channel < from.size(); ++channel)
        for (int32_t y = 0; y < above.height; ++y)
            std::copy_n(from[channel] + above.index(0, y), above.width, to[channel] + image.index(left, top + y));
}

} // namespace gallery
