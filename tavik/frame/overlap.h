// Which row a serial export may use for two planes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "tavik/frame/vector_level.h"

namespace tavik {

// Whether the planes are one and the same or share no byte. Vector rows are right for those only: a source
// that overlaps its destination partly must see what the elements before it wrote.
inline bool same_or_apart(const void *a, const void *b, std::size_t bytes) {
    const auto distance = reinterpret_cast<std::uintptr_t>(a) - reinterpret_cast<std::uintptr_t>(b);
    return distance == 0 || (distance >= bytes && distance <= std::uintptr_t{0} - bytes);
}

// The row that gives what increasing element order gives.
template <class Row> Row &row_in_order(const PerLevel<Row> &rows, const void *src, const void *dst, std::size_t bytes) {
    return same_or_apart(src, dst, bytes) ? rows.active() : rows.scalar();
}

// The same for any number of planes, no two of which may overlap partly.
template <class Row>
Row &row_in_order(const PerLevel<Row> &rows, std::initializer_list<const void *> planes, std::size_t bytes) {
    const bool independent = std::all_of(planes.begin(), planes.end(), [&](const void *a) {
        return std::all_of(planes.begin(), planes.end(), [&](const void *b) { return same_or_apart(a, b, bytes); });
    });
    return independent ? rows.active() : rows.scalar();
}

} // namespace tavik
