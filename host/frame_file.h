// Writes frame files, for the gallery and the tests.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#include "tavik/framefile/framefile.h"

namespace gallery {

// The red, green and blue plane of a frame.
using FramePlanes = std::array<const uint8_t *, 3>;

inline std::vector<char> bytes_of_frame_file(int32_t width, int32_t height, std::span<const FramePlanes> frames) {
    const tavik_frame_header header = {{0, 0}, width - 1, height - 1, static_cast<int32_t>(frames.size())};
    std::vector<char> bytes(sizeof header);
    std::memcpy(bytes.data(), &header, sizeof header);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        for (const FramePlanes &planes : frames) {
            const auto *plane = reinterpret_cast<const char *>(planes[channel]);
            bytes.insert(bytes.end(), plane, plane + std::size_t{1} * width * height);
        }
    }
    return bytes;
}

} // namespace gallery
