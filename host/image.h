// Pictures as the library takes them: three channel planes without padding.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace gallery {

struct Colour {
    uint8_t red;
    uint8_t green;
    uint8_t blue;
};

struct Image {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> red;
    std::vector<uint8_t> green;
    std::vector<uint8_t> blue;

    Image() = default;
    Image(int32_t image_width, int32_t image_height, Colour colour = {0, 0, 0});

    int32_t x_max() const { return width - 1; }
    int32_t y_max() const { return height - 1; }
    int32_t pixel_count() const { return width * height; }
    std::size_t index(int32_t x, int32_t y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
    std::array<uint8_t *, 3> planes() { return {red.data(), green.data(), blue.data()}; }
    std::array<const uint8_t *, 3> planes() const { return {red.data(), green.data(), blue.data()}; }

    void set(int32_t x, int32_t y, Colour colour);
};

// Reads a PNG or JPEG file; transparency is dropped. Throws std::runtime_error for a file that is missing,
// damaged or cut short, and for a size that not every recipe can handle.
Image read_photo(const std::filesystem::path &path);

std::vector<uint8_t> png_of(const Image &image);

// The image made smaller, to fit into a box of this size with its proportions kept.
Image shrunk_to_fit(const Image &image, int32_t box_width, int32_t box_height);

} // namespace gallery
