// A plane of heights whose samples outside count for nothing.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tavik {

template <class Height> struct HeightField {
    const Height *heights;
    int32_t width, height;

    const Height *row(int32_t y) const {
        return heights + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
};

} // namespace tavik
