#include <algorithm>
#include <array>

#include "tavik/frame/elementary.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/generators/generators.h"

namespace {

using namespace tavik;

// How a point leaves: the square of its distance from the origin, and after how many iterations.
template <class Real> struct Escape {
    Real square;
    int32_t iterations;
};

} // namespace

#define TAVIK_ROWS "tavik/generators/mandelbrot_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<void(const float *squares, const int32_t *iterations, float colour_step, int32_t *indices,
                        float *parts, std::size_t count)>
    find_smooth_places = TAVIK_EVERY_LEVEL(find_smooth_places);
template <class Real>
using EscapeRow = void(const Real *re, Real im, int32_t limit, Escape<Real> *escapes, std::size_t count);
constexpr PerLevel<EscapeRow<double>> escape_doubles = TAVIK_EVERY_LEVEL(escape_doubles);
constexpr PerLevel<EscapeRow<float>> escape_floats = TAVIK_EVERY_LEVEL(escape_floats);

// The picture's part of the plane of numbers.
template <class Real> struct View {
    int32_t width, height;
    Real centre_re, centre_im, step;

    Real re(int32_t x) const { return at(x, width, centre_re); }
    Real im(int32_t y) const { return at(y, height, centre_im); }

  private:
    Real at(int32_t index, int32_t count, Real centre) const {
        return (static_cast<Real>(index) - static_cast<Real>(count - 1) * Real{0.5}) * step + centre;
    }
};

struct Tables {
    std::array<const uint8_t *, 3> channels;
};

struct Planes {
    std::array<uint8_t *, 3> channels;

    void set(std::size_t at, uint32_t colour) const {
        for (std::size_t i = 0; i < 3; ++i) channels[i][at] = low_byte(colour >> (8 * i));
    }
};

// In the cardioid or the disc to the left of it, where nothing ever leaves.
bool in_largest_parts(double re, double im) {
    const double i2 = im * im;
    const double k = re - 0.25;
    const double q = k * k + i2;
    const double b = re + 1.0;
    return q * (q + k) <= 0.25 * i2 || b * b + i2 <= 0.0625;
}

constexpr std::size_t longest_run = 256;

// The points of a run that are not known to stay inside, by their places in the planes.
struct Candidates {
    std::array<double, longest_run> re;
    std::array<std::size_t, longest_run> at;
    std::size_t count = 0;

    void add(double number, std::size_t place) {
        re[count] = number;
        at[count++] = place;
    }
};

void colour_smoothly(const Candidates &points, const std::array<Escape<double>, longest_run> &escapes, int32_t max_iter,
                     float colour_step, uint32_t inside, const Tables &tables, const Planes &planes) {
    std::array<float, longest_run> squares;
    std::array<int32_t, longest_run> iterations;
    for (std::size_t i = 0; i < points.count; ++i) {
        squares[i] = static_cast<float>(escapes[i].square);
        iterations[i] = escapes[i].iterations;
    }
    std::array<int32_t, longest_run> indices;
    std::array<float, longest_run> parts;
    find_smooth_places.active()(squares.data(), iterations.data(), colour_step, indices.data(), parts.data(),
                                points.count);
    for (std::size_t i = 0; i < points.count; ++i) {
        if (iterations[i] >= max_iter) {
            planes.set(points.at[i], inside);
            continue;
        }
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const uint8_t *table = tables.channels[channel];
            const auto first = static_cast<float>(table[indices[i] & 255]);
            const auto second = static_cast<float>(table[wrap_add(indices[i], 1) & 255]);
            planes.channels[channel][points.at[i]] = round_to_byte((second - first) * parts[i] + first);
        }
    }
}

// Calls body(re, im, count, at) for runs of points, in parallel rows: each is worth a thread.
template <class Real, class Body> void for_each_run(const View<Real> &view, const Body &body) {
    constexpr auto run = static_cast<int32_t>(longest_run);
    parallel_for(0, view.height, 1, [&](int32_t begin, int32_t end) {
        std::array<Real, longest_run> re;
        for (int32_t y = begin; y < end; ++y) {
            for (int32_t x = 0; x < view.width; x += run) {
                const int32_t count = std::min(run, view.width - x);
                for (int32_t i = 0; i < count; ++i) re[static_cast<std::size_t>(i)] = view.re(x + i);
                body(re.data(), view.im(y), element_count(count),
                     static_cast<std::size_t>(y) * element_count(view.width) + x);
            }
        }
    });
}

} // namespace

TAVIK_EXPORT(void)
DoMandel(int32_t width, int32_t height, double centre_re, double centre_im, double step, int32_t max_iter,
         float colour_step, int32_t inside, const uint8_t *table_r, const uint8_t *table_g, const uint8_t *table_b,
         uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const Tables tables = {{table_r, table_g, table_b}};
    const Planes planes = {{dst_r, dst_g, dst_b}};
    for_each_run<double>({width, height, centre_re, centre_im, step}, [&](const double *re, double im,
                                                                          std::size_t count, std::size_t at) {
        Candidates points;
        for (std::size_t i = 0; i < count; ++i) {
            if (in_largest_parts(re[i], im))
                planes.set(at + i, static_cast<uint32_t>(inside));
            else
                points.add(re[i], at + i);
        }
        std::array<Escape<double>, longest_run> escapes;
        escape_doubles.active()(points.re.data(), im, max_iter, escapes.data(), points.count);
        colour_smoothly(points, escapes, max_iter, colour_step, static_cast<uint32_t>(inside), tables, planes);
    });
}

TAVIK_EXPORT(void)
DoFastMandel(int32_t width, int32_t height, float centre_re, float centre_im, float step, int32_t max_iter,
             int32_t inside, const uint8_t *table_r, const uint8_t *table_g, const uint8_t *table_b, uint8_t *dst_r,
             uint8_t *dst_g, uint8_t *dst_b) {
    const Planes planes = {{dst_r, dst_g, dst_b}};
    for_each_run<float>({width, height, centre_re, centre_im, step},
                        [&](const float *re, float im, std::size_t count, std::size_t at) {
                            std::array<Escape<float>, longest_run> escapes;
                            escape_floats.active()(re, im, max_iter, escapes.data(), count);
                            for (std::size_t i = 0; i < count; ++i) {
                                const int32_t n = escapes[i].iterations;
                                if (n < max_iter) {
                                    dst_r[at + i] = table_r[n & 255];
                                    dst_g[at + i] = table_g[n & 255];
                                    dst_b[at + i] = table_b[n & 255];
                                } else {
                                    planes.set(at + i, static_cast<uint32_t>(inside));
                                }
                            }
                        });
}
