#include "host/image.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

#include <stb/stb_image.h>
#include <stb/stb_image_resize.h>
#include <stb/stb_image_write.h>

namespace gallery {
namespace {

constexpr int channels = 3;

// The block operations of the library need 16 samples. The upper limits keep the pixel count far inside 32 bits
// and one side inside the 16 bits that NewSetValue looks at.
constexpr int shortest_side = 16;
constexpr int longest_side = 16384;
constexpr int64_t most_pixels = int64_t{1} << 26;

std::vector<uint8_t> bytes_of_file(const std::filesystem::path &path) {
    if (!std::filesystem::exists(path)) throw std::runtime_error("no such file");
    if (std::filesystem::is_directory(path)) throw std::runtime_error("is a folder, not a photo");
    std::ifstream file(path, std::ios::binary);
    std::vector<uint8_t> bytes(std::istreambuf_iterator<char>(file), {});
    if (!file) throw std::runtime_error("cannot be read");
    return bytes;
}

uint32_t crc32(std::span<const uint8_t> bytes) {
    uint32_t crc = ~uint32_t{0};
    for (const uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return ~crc;
}

uint32_t big_endian(std::span<const uint8_t> bytes) {
    return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

// The decoder does not look at the checksums of a PNG file.
bool has_damaged_chunk(std::span<const uint8_t> file) {
    constexpr std::array<uint8_t, 8> png_signature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    if (file.size() < png_signature.size() || !std::ranges::equal(file.first<8>(), png_signature)) return false;
    std::span<const uint8_t> rest = file.subspan(png_signature.size());
    // A chunk is its length, a type of four bytes, the data and a checksum of type and data.
    constexpr std::size_t around_data = 12;
    while (rest.size() >= around_data) {
        const std::size_t length = big_endian(rest);
        if (length > rest.size() - around_data) return true;
        if (crc32(rest.subspan(4, 4 + length)) != big_endian(rest.subspan(8 + length))) return true;
        rest = rest.subspan(around_data + length);
    }
    return false;
}

// The file as the decoder reads it. It takes zeros for what is missing at the end of a JPEG file, without an error,
// so reading past the end is noted here.
struct Source {
    std::span<const uint8_t> rest;
    bool ended_early = false;

    static int read(void *user, char *data, int size) {
        Source &source = *static_cast<Source *>(user);
        const std::size_t count = std::min(static_cast<std::size_t>(size), source.rest.size());
        if (count == 0) source.ended_early = true;
        std::ranges::copy(source.rest.first(count), data);
        source.rest = source.rest.subspan(count);
        return static_cast<int>(count);
    }
    static void skip(void *user, int count) {
        Source &source = *static_cast<Source *>(user);
        source.rest = source.rest.subspan(std::min(static_cast<std::size_t>(count), source.rest.size()));
    }
    static int at_end(void *user) { return static_cast<Source *>(user)->rest.empty() ? 1 : 0; }
};

constexpr stbi_io_callbacks source_callbacks = {Source::read, Source::skip, Source::at_end};

void require_usable_size(std::span<const uint8_t> file) {
    Source source{file};
    int width = 0;
    int height = 0;
    int channels_in_file = 0;
    if (stbi_info_from_callbacks(&source_callbacks, &source, &width, &height, &channels_in_file) == 0)
        throw std::runtime_error("is not a PNG or JPEG picture");
    const auto [shorter, longer] = std::minmax({width, height});
    if (shorter < shortest_side || longer > longest_side || int64_t{width} * height > most_pixels)
        throw std::runtime_error("has " + std::to_string(width) + " x " + std::to_string(height) +
                                 " pixels; from 16 to 16384 a side and up to 64 million in all can be used");
}

Image decode(std::span<const uint8_t> file) {
    require_usable_size(file);
    if (has_damaged_chunk(file)) throw std::runtime_error("is damaged");
    Source source{file};
    int width = 0;
    int height = 0;
    int channels_in_file = 0;
    const std::unique_ptr<stbi_uc, decltype(&stbi_image_free)> pixels(
        stbi_load_from_callbacks(&source_callbacks, &source, &width, &height, &channels_in_file, channels),
        stbi_image_free);
    if (source.ended_early) throw std::runtime_error("ends before the picture is complete");
    if (pixels == nullptr) throw std::runtime_error(std::string("is damaged: ") + stbi_failure_reason());

    Image image(width, height);
    for (std::size_t i = 0; i < image.red.size(); ++i) {
        image.red[i] = pixels.get()[channels * i];
        image.green[i] = pixels.get()[channels * i + 1];
        image.blue[i] = pixels.get()[channels * i + 2];
    }
    return image;
}

std::vector<uint8_t> interleaved(const Image &image) {
    std::vector<uint8_t> pixels;
    pixels.reserve(channels * image.red.size());
    for (std::size_t i = 0; i < image.red.size(); ++i)
        pixels.insert(pixels.end(), {image.red[i], image.green[i], image.blue[i]});
    return pixels;
}

} // namespace

Image::Image(int32_t image_width, int32_t image_height, Colour colour)
    : width(image_width),
      height(image_height),
      red(static_cast<std::size_t>(image_width * image_height), colour.red),
      green(red.size(), colour.green),
      blue(red.size(), colour.blue) {}

void Image::set(int32_t x, int32_t y, Colour colour) {
    const std::size_t i = index(x, y);
    red[i] = colour.red;
    green[i] = colour.green;
    blue[i] = colour.blue;
}

Image read_photo(const std::filesystem::path &path) {
    try {
        return decode(bytes_of_file(path));
    } catch (const std::runtime_error &error) {
        throw std::runtime_error(path.string() + ": " + error.what());
    }
}

std::vector<uint8_t> png_of(const Image &image) {
    std::vector<uint8_t> png;
    const auto append = [](void *context, void *data, int size) {
        const auto *bytes = static_cast<const uint8_t *>(data);
        static_cast<std::vector<uint8_t> *>(context)->assign(bytes, bytes + size);
    };
    const std::vector<uint8_t> pixels = interleaved(image);
    if (stbi_write_png_to_func(append, &png, image.width, image.height, channels, pixels.data(),
                               channels * image.width) == 0)
        throw std::bad_alloc();
    return png;
}

Image shrunk_to_fit(const Image &image, int32_t box_width, int32_t box_height) {
    const double scale = std::min({1.0, double{1} * box_width / image.width, double{1} * box_height / image.height});
    Image small(std::max(static_cast<int32_t>(image.width * scale), 1),
                std::max(static_cast<int32_t>(image.height * scale), 1));
    const auto from = image.planes();
    const auto to = small.planes();
    for (std::size_t channel = 0; channel < from.size(); ++channel)
        stbir_resize_uint8(from[channel], image.width, image.height, 0, to[channel], small.width, small.height, 0, 1);
    return small;
}

} // namespace gallery
