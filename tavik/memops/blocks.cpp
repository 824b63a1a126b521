#include "tavik/memops/memops.h"

#include <cmath>

#include "tavik/frame/overlap.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/memops/blocks_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

using BlockRow = void(const uint8_t *src, uint8_t *dst, std::size_t count);

constexpr PerLevel<BlockRow> add_blocks = TAVIK_EVERY_LEVEL(add_blocks);
constexpr PerLevel<BlockRow> subtract_blocks = TAVIK_EVERY_LEVEL(subtract_blocks);
constexpr PerLevel<BlockRow> multiply_blocks = TAVIK_EVERY_LEVEL(multiply_blocks);

constexpr std::size_t block_bytes = 16;

// Blocks are loaded whole before they are stored, so a destination inside its source sees each block's old bytes
// and the new bytes of the blocks before it.
void combine_blocks(const PerLevel<BlockRow> &rows, int32_t width, int32_t height, const uint8_t *src, uint8_t *dst) {
    const std::size_t bytes = counts(width, height) / block_bytes * block_bytes;
    if (same_or_apart(src, dst, bytes)) {
        rows.active()(src, dst, bytes);
        return;
    }
    for (std::size_t i = 0; i < bytes; i += block_bytes) {
        uint8_t block[block_bytes];
        std::memcpy(block, src + i, block_bytes);
        rows.scalar()(block, dst + i, block_bytes);
    }
}

// Copies units of `Unit` in increasing order. Only a destination that begins inside the source differs from a
// plain move.
template <std::size_t Unit> void copy_forward(const void *src, void *dst, std::size_t units) {
    const std::size_t bytes = units * Unit;
    const auto ahead = reinterpret_cast<std::uintptr_t>(dst) - reinterpret_cast<std::uintptr_t>(src);
    if (ahead == 0 || ahead >= bytes) {
        std::memmove(dst, src, bytes);
        return;
    }
    const auto *from = static_cast<const uint8_t *>(src);
    auto *to = static_cast<uint8_t *>(dst);
    for (std::size_t i = 0; i < bytes; i += Unit) {
        uint8_t unit[Unit];
        std::memcpy(unit, from + i, Unit);
        std::memcpy(to + i, unit, Unit);
    }
}

} // namespace

TAVIK_EXPORT(void) moveSSE(const void *src, void *dst, int32_t count) {
    copy_forward<block_bytes>(src, dst, element_count(count >> 2));
}

TAVIK_EXPORT(void) moveASM(const void *src, void *dst, int32_t bytes) {
    copy_forward<4>(src, dst, static_cast<uint32_t>(bytes) / 4);
}

TAVIK_EXPORT(void) add_SSE(int32_t width, int32_t height, const uint8_t *src, uint8_t *dst) {
    combine_blocks(add_blocks, width, height, src, dst);
}

TAVIK_EXPORT(void) sub_SSE(int32_t width, int32_t height, const uint8_t *src, uint8_t *dst) {
    combine_blocks(subtract_blocks, width, height, src, dst);
}

TAVIK_EXPORT(void) Mult_SSE(int32_t width, int32_t height, const uint8_t *src, uint8_t *dst) {
    combine_blocks(multiply_blocks, width, height, src, dst);
}

TAVIK_EXPORT(void) SSE_SQRT_SS(float *p) { *p = std::sqrt(*p); }

TAVIK_EXPORT(float) sqrt_sse(float x) { return std::sqrt(x); }
