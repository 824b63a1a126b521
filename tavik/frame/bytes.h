// Operations on runs of bytes that several families share.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/overlap.h"
#include "tavik/frame/vector_level.h"

namespace tavik {

using ByteTable = std::array<uint8_t, 256>;

// dst[i] = table[src[i]]; dst may be src.
using MapBytesRow = void(const uint8_t *src, uint8_t *dst, std::size_t count, const uint8_t *table);
extern const PerLevel<MapBytesRow> map_bytes;

// dstR[i] = tables[0][src[i]], and so with dstG and tables[1], dstB and tables[2]; each destination may be src.
using MapBytesToThreeRow = void(const uint8_t *src, uint8_t *const dst[3], std::size_t count,
                                const uint8_t *const tables[3]);
extern const PerLevel<MapBytesToThreeRow> map_bytes_to_three;

// plane[i] = 255 - plane[i].
using ComplementRow = void(uint8_t *plane, std::size_t count);
extern const PerLevel<ComplementRow> complement;

// The table of a function from byte to byte.
template <class Function> ByteTable tabulate(const Function &function) {
    ByteTable table;
    for (std::size_t value = 0; value < table.size(); ++value) table[value] = function(static_cast<uint8_t>(value));
    return table;
}

// dst[i] = table[src[i]] in increasing order, whether the runs overlap or not.
inline void map_in_order(const uint8_t *src, uint8_t *dst, std::size_t count, const uint8_t *table) {
    auto &row = row_in_order(map_bytes, src, dst, count);
    FetchAhead(count, src, dst).for_all([&](std::size_t i, std::size_t n) { row(src + i, dst + i, n, table); });
}

// dst[i] = function(src[i]) in increasing order. Runs long enough to repay it go through the function's table.
template <class Function>
void apply_to_bytes(const uint8_t *src, uint8_t *dst, std::size_t count, const Function &function) {
    if (count < std::tuple_size_v<ByteTable>) {
        for (std::size_t i = 0; i < count; ++i) dst[i] = function(src[i]);
        return;
    }
    map_in_order(src, dst, count, tabulate(function).data());
}

} // namespace tavik
