// Vector levels: every hot row function is compiled once per level, and each call picks the widest one that
// the processor and the operating system support. All levels give the same bytes.
//
// A family writes its rows in a file NAME_rows.inl and, in one source file,
//     #define TAVIK_ROWS "tavik/family/NAME_rows.inl"
//     #include "tavik/frame/each_level.inl"
//     constexpr PerLevel<Row> row_name = TAVIK_EVERY_LEVEL(row_name);
// and calls `row_name.active()(...)`.
#pragma once

#include <array>
#include <cstddef>

namespace tavik {

// `scalar` is the plain loop with vectorisation off: the truth the others are compared with, and the order
// that planes which overlap partly get.
enum class VectorLevel : std::size_t { scalar, sse2, sse41, avx2, avx512 };

constexpr std::array<const char *, 5> vector_level_names = {"scalar", "sse2", "sse41", "avx2", "avx512"};

// The level that this processor and operating system support.
VectorLevel supported_level();

// The level that calls use: the supported one in the library. The tests and benchmarks link their own
// definition, which can be set lower.
VectorLevel active_level();

template <class Row> struct PerLevel {
    std::array<Row *, vector_level_names.size()> rows;

    Row &active() const { return *rows[static_cast<std::size_t>(active_level())]; }
    Row &scalar() const { return *rows[static_cast<std::size_t>(VectorLevel::scalar)]; }
};

} // namespace tavik

// Values of TAVIK_LEVEL inside a rows file, for intrinsics that stand beside the plain loop.
#define TAVIK_SCALAR 0
#define TAVIK_SSE2 1
#define TAVIK_SSE41 2
#define TAVIK_AVX2 3
#define TAVIK_AVX512 4

// The table of one row function. 32-bit code has eight vector registers, too few for 512-bit rows to pay.
#if defined(__x86_64__)
#define TAVIK_EVERY_LEVEL(row)                                                                                         \
    {                                                                                                                  \
        { scalar::row, sse2::row, sse41::row, avx2::row, avx512::row }                                                 \
    }
#else
#define TAVIK_EVERY_LEVEL(row)                                                                                         \
    {                                                                                                                  \
        { scalar::row, sse2::row, sse41::row, avx2::row, avx2::row }                                                   \
    }
#endif
