#include "host/contact_sheet.h"

#include <algorithm>

#include "host/drawing.h"

namespace gallery {
namespace {

constexpr int32_t most_columns = 5;
constexpr int32_t gap = 28;
constexpr int32_t text_size = 2;
constexpr int32_t title_height = 34;
constexpr Colour background = {24, 26, 31};
constexpr Colour lettering = {214, 218, 226};

} // namespace

Image contact_sheet(std::span<const Section> sections) {
    std::vector<const Exhibit *> exhibits;
    for (const Section &section : sections)
        for (const Exhibit &exhibit : section.exhibits) exhibits.push_back(&exhibit);

    const auto count = static_cast<int32_t>(exhibits.size());
    const int32_t columns = std::min(count, most_columns);
    const int32_t rows = (count + columns - 1) / columns;
    constexpr int32_t cell_width = thumbnail_width + gap;
    constexpr int32_t cell_height = thumbnail_height + title_height + gap;
    Image sheet(gap + columns * cell_width, gap + rows * cell_height, background);
    for (int32_t i = 0; i < count; ++i) {
        const Exhibit &exhibit = *exhibits[static_cast<std::size_t>(i)];
        const int32_t left = gap + i % columns * cell_width;
        const int32_t top = gap + i / columns * cell_height;
        paste(sheet, exhibit.thumbnail, left + (thumbnail_width - exhibit.thumbnail.width) / 2,
              top + (thumbnail_height - exhibit.thumbnail.height) / 2);
        const int32_t indent = std::max((thumbnail_width - text_width(text_size, exhibit.recipe.title)) / 2, 0);
        draw_text(sheet, left + indent, top + thumbnail_height + 12, text_size, exhibit.recipe.title, lettering);
    }
    return sheet;
}

} // namespace gallery
