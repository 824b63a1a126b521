// What recipes work out from the sizes of pictures.
#pragma once

#include <cstddef>
#include <cstdint>

namespace gallery {

inline std::size_t area(int32_t width, int32_t height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

inline float ratio(int32_t a, int32_t b) { return static_cast<float>(a) / static_cast<float>(b); }

inline float middle(int32_t size) { return static_cast<float>(size - 1) / 2; }

// Source units per destination unit. The last position stays inside the source.
inline float scale_between(int32_t from, int32_t to) { return ratio(from - 1, to); }

} // namespace gallery
