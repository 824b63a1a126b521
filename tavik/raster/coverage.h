// Which pixels a triangle covers, by exact edge functions, and the barycentric weights of each.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace tavik {

// A place in sixteenths of a pixel.
struct Corner {
    int64_t x, y;
};

Corner corner_at(float x, float y);
Corner corner_at(int32_t x, int32_t y);

// A triangle in the order that has its inside on the positive side of its edges.
class Coverage {
  public:
    Coverage(Corner a, Corner b, Corner c);

    bool empty() const { return area_ == 0; }
    // Whether the second and third corner were exchanged, as their attributes must be.
    bool exchanged() const { return exchanged_; }

    struct Range {
        int32_t first, last; // included; empty when last is below first
    };
    Range rows(int32_t height) const;
    Range columns(int32_t y, int32_t width) const;

    // The weights of the second and third corner at `count` pixels from (x, y) on.
    void weights(int32_t x, int32_t y, std::size_t count, float *second, float *third) const;

  private:
    // value(x, y) = at_origin + 16·(dx·y − dy·x), above 0 inside.
    struct Edge {
        int64_t dx, dy, at_origin;
        int64_t smallest; // 0 for the edges that own their pixels, else 1
    };
    static Edge edge(Corner from, Corner to);
    static int64_t value(const Edge &edge, int32_t x, int32_t y) {
        return edge.at_origin + 16 * (edge.dx * y - edge.dy * x);
    }
    void weights_of(const Edge &edge, int32_t x, int32_t y, std::size_t count, float *to) const;

    std::array<Corner, 3> corners_;
    int64_t area_;
    bool exchanged_ = false;
    std::array<Edge, 3> edges_; // from each corner to the next
    float inverse_area_ = 0;
};

// The most pixels that for_each_run draws at a time.
constexpr std::size_t longest_run = 256;

// Calls draw(x, y, count, second, third) for runs of covered pixels with the weights of the second and third corner.
template <class Draw> void for_each_run(const Coverage &coverage, int32_t width, int32_t height, const Draw &draw) {
    if (coverage.empty()) return;
    constexpr auto run = static_cast<int32_t>(longest_run);
    std::array<float, longest_run> second;
    std::array<float, longest_run> third;
    const Coverage::Range rows = coverage.rows(height);
    for (int32_t y = rows.first; y <= rows.last; ++y) {
        const Coverage::Range columns = coverage.columns(y, width);
        for (int32_t x = columns.first; x <= columns.last; x += run) {
            const auto count = static_cast<std::size_t>(std::min(run, columns.last - x + 1));
            coverage.weights(x, y, count, second.data(), third.data());
            draw(x, y, count, second.data(), third.data());
        }
    }
}

} // namespace tavik
