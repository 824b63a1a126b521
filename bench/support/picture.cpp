#include "bench/support/picture.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace tavik_bench {
namespace {

constexpr std::size_t cache_line = 64;
constexpr std::size_t gap = 5 * cache_line;

constexpr std::size_t buffers = 11;
constexpr std::size_t bytes_per_pixel = 6 * sizeof(uint8_t) + 2 * sizeof(float) + 2 * sizeof(uint32_t);
constexpr std::size_t table_bytes = 256;

std::byte *next_cache_line(std::byte *place) {
    const auto address = reinterpret_cast<std::uintptr_t>(place);
    return place + (cache_line - address % cache_line) % cache_line;
}

} // namespace

PictureBuffers::PictureBuffers(int32_t width, int32_t height)
    : memory(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * bytes_per_pixel + table_bytes +
             buffers * (gap + cache_line)),
      unused(memory.data()) {
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    std::minstd_rand random(1);
    const auto noise = [&](std::size_t length) {
        auto *bytes = take<uint8_t>(length);
        std::generate_n(bytes, length, [&] { return static_cast<uint8_t>(random() >> 16); });
        return bytes;
    };
    parts.width = width;
    parts.height = height;
    parts.r = noise(count);
    parts.g = noise(count);
    parts.b = noise(count);
    parts.table = noise(table_bytes);
    parts.to_r = take<uint8_t>(count);
    parts.to_g = take<uint8_t>(count);
    parts.to_b = take<uint8_t>(count);

    auto *floats = take<float>(count);
    auto *pixels = take<uint32_t>(count);
    for (std::size_t i = 0; i < count; ++i) {
        floats[i] = static_cast<float>(parts.r[i]) + static_cast<float>(parts.g[i]) / 256.0F;
        pixels[i] = uint32_t{parts.r[i]} << 16 | uint32_t{parts.g[i]} << 8 | parts.b[i];
    }
    parts.floats = floats;
    parts.pixels = pixels;
    parts.to_floats = take<float>(count);
    parts.to_pixels = take<uint32_t>(count);
    parts.histograms = histograms.data();
}

Picture PictureBuffers::in_place() const {
    Picture same = parts;
    same.r = parts.to_r;
    same.g = parts.to_g;
    same.b = parts.to_b;
    return same;
}

void PictureBuffers::refresh() {
    const auto count = static_cast<std::size_t>(parts.count());
    std::memcpy(parts.to_r, parts.g, count);
    std::memcpy(parts.to_g, parts.b, count);
    std::memcpy(parts.to_b, parts.r, count);
}

template <class Element> Element *PictureBuffers::take(std::size_t count) {
    std::byte *begin = next_cache_line(unused);
    unused = begin + count * sizeof(Element) + gap;
    return reinterpret_cast<Element *>(begin);
}

} // namespace tavik_bench
