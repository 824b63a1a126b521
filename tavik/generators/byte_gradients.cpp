#include <array>

#include "tavik/frame/bytes.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/generators/generators.h"

#define TAVIK_ROWS "tavik/generators/byte_gradients_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<float(float position, float step, uint8_t *indices, std::size_t count)> linear_indices =
    TAVIK_EVERY_LEVEL(linear_indices);
constexpr PerLevel<void(int32_t dx, int32_t dy, float scale, uint8_t *indices, std::size_t count)> circular_indices =
    TAVIK_EVERY_LEVEL(circular_indices);

using MixRow = void(const uint8_t *src, const uint8_t *colours, const uint8_t *alphas, uint8_t *dst, std::size_t count);
constexpr PerLevel<MixRow> mix = TAVIK_EVERY_LEVEL(mix);
constexpr PerLevel<MixRow> mix_where_visible = TAVIK_EVERY_LEVEL(mix_where_visible);

constexpr PerLevel<void(const uint8_t *a, const uint8_t *b, const uint8_t *c, uint8_t *brightness, std::size_t count)>
    brightness_row = TAVIK_EVERY_LEVEL(brightness_row);

// Pixels that are worked on at once.
constexpr std::size_t run = 1024;

struct Channels {
    std::array<const uint8_t *, 3> src;
    std::array<uint8_t *, 3> dst;
};

struct ColourTables {
    std::array<const uint8_t *, 3> colours;
    const uint8_t *alphas; // null: the gradient covers what it is drawn on
    const uint8_t *blend;  // null: the gradient's colours are taken as they are
};

// Writes the gradient's colours of a run of pixels, `indices` into the tables, that begins at `start` of the planes.
void write_run(const Channels &planes, const ColourTables &tables, const PerLevel<MixRow> &mix_row,
               const uint8_t *indices, std::size_t start, std::size_t count) {
    std::array<std::array<uint8_t, run>, 3> colours;
    std::array<uint8_t, run> alphas;
    const bool plain = tables.alphas == nullptr && tables.blend == nullptr;
    std::array<uint8_t *, 3> colour_runs;
    for (std::size_t c = 0; c < 3; ++c) colour_runs[c] = plain ? planes.dst[c] + start : colours[c].data();
    map_bytes_to_three.active()(indices, colour_runs.data(), count, tables.colours.data());
    if (plain) return;
    if (tables.alphas != nullptr) map_bytes.active()(indices, alphas.data(), count, tables.alphas);
    for (std::size_t c = 0; c < 3; ++c) {
        const uint8_t *src = planes.src[c] + start;
        uint8_t *dst = planes.dst[c] + start;
        uint8_t *blended = tables.alphas != nullptr ? colour_runs[c] : dst;
        if (tables.blend != nullptr)
            for (std::size_t i = 0; i < count; ++i)
                blended[i] = tables.blend[std::size_t{256} * src[i] + colours[c][i]];
        if (tables.alphas != nullptr) mix_row.active()(src, colour_runs[c], alphas.data(), dst, count);
    }
}

// A blend or alpha table costs a few times a light element.
int32_t grain_of(int32_t columns, const ColourTables &tables) {
    return tables.blend != nullptr || tables.alphas != nullptr ? std::max(row_grain(columns) / 4, 1)
                                                               : row_grain(columns);
}

} // namespace

TAVIK_EXPORT(void)
fastLinearGradient(float step_y, float step_x, float start, int32_t x_max, int32_t rows, int32_t use_blend_table,
                   int32_t use_alpha, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r,
                   uint8_t *dst_g, uint8_t *dst_b, const uint8_t *table_r, const uint8_t *table_g,
                   const uint8_t *table_b, const uint8_t *table_a, const uint8_t *blend_table, int32_t /*ignored*/) {
    if (x_max <= 0) return;
    const Channels planes = {{src_r, src_g, src_b}, {dst_r, dst_g, dst_b}};
    const ColourTables tables = {
        {table_r, table_g, table_b}, use_alpha == 1 ? table_a : nullptr, use_blend_table > 0 ? blend_table : nullptr};
    const std::size_t columns = element_count(x_max);
    parallel_for(0, rows, grain_of(x_max, tables), [&](int32_t begin, int32_t end) {
        std::array<uint8_t, run> indices;
        for (int32_t y = begin; y < end; ++y) {
            const std::size_t row = static_cast<std::size_t>(y) * (columns + 1);
            float position = start + static_cast<float>(y) * step_y;
            for (std::size_t x = 0; x < columns; x += run) {
                const std::size_t count = std::min(run, columns - x);
                position = linear_indices.active()(position, step_x, indices.data(), count);
                write_run(planes, tables, mix, indices.data(), row + x, count);
            }
        }
    });
}

TAVIK_EXPORT(void)
fastCircularGradient(int32_t x_max, int32_t rows, int32_t cx, int32_t cy, int32_t radius, int32_t use_blend_table,
                     const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
                     uint8_t *dst_b, const uint8_t *table_r, const uint8_t *table_g, const uint8_t *table_b,
                     const uint8_t *table_a, const uint8_t *blend_table) {
    if (radius == 0 || x_max <= 0) return;
    const Channels planes = {{src_r, src_g, src_b}, {dst_r, dst_g, dst_b}};
    const ColourTables tables = {{table_r, table_g, table_b}, table_a, use_blend_table > 0 ? blend_table : nullptr};
    const std::size_t columns = element_count(x_max);
    const float scale = 255.0F / static_cast<float>(radius);
    parallel_for(0, rows, grain_of(x_max, tables), [&](int32_t begin, int32_t end) {
        std::array<uint8_t, run> indices;
        for (int32_t y = begin; y < end; ++y) {
            const std::size_t row = static_cast<std::size_t>(y) * (columns + 1);
            for (std::size_t x = 0; x < columns; x += run) {
                const std::size_t count = std::min(run, columns - x);
                circular_indices.active()(wrap_sub(static_cast<int32_t>(x), cx), wrap_sub(y, cy), scale, indices.data(),
                                          count);
                write_run(planes, tables, mix_where_visible, indices.data(), row + x, count);
            }
        }
    });
}

TAVIK_EXPORT(void)
ApplyGradient(int32_t width, int32_t y_start, int32_t y_end, uint8_t *plane0, uint8_t *plane1, uint8_t *plane2,
              const uint8_t *table0, const uint8_t *table1, const uint8_t *table2) {
    if (width <= 0 || y_start >= y_end) return;
    const uint8_t *const tables[3] = {table0, table1, table2};
    std::array<uint8_t, run> brightness;
    // The band's rows follow each other.
    const std::ptrdiff_t last = std::ptrdiff_t{width} * y_end;
    for (std::ptrdiff_t i = std::ptrdiff_t{width} * y_start; i < last;) {
        const std::size_t count = std::min(run, static_cast<std::size_t>(last - i));
        uint8_t *const planes[3] = {plane0 + i, plane1 + i, plane2 + i};
        brightness_row.active()(planes[0], planes[1], planes[2], brightness.data(), count);
        map_bytes_to_three.active()(brightness.data(), planes, count, tables);
        i += static_cast<std::ptrdiff_t>(count);
    }
}
