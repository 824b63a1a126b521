// Compiles the rows file named by TAVIK_ROWS once per vector level, each in a namespace of its own inside one
// translation unit. Switching the target inside the file, instead of compiling whole files for a level, keeps
// wide instructions out of the inline functions that the linker shares between files.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <immintrin.h>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/vector_level.h"

// TAVIK_INDEPENDENT before a loop says that no element depends on another, so that a destination equal to
// its source needs no overlap check, which would send it to scalar code.
namespace tavik {
namespace {

#define TAVIK_LEVEL TAVIK_SCALAR
#define TAVIK_INDEPENDENT
#if !defined(__clang__)
#pragma GCC push_options
#pragma GCC optimize("no-tree-vectorize")
#endif
namespace scalar {
#include TAVIK_ROWS
}
#if !defined(__clang__)
#pragma GCC pop_options
#endif
#undef TAVIK_LEVEL
#undef TAVIK_INDEPENDENT
#if defined(__clang__) // It would warn of the loops that it cannot vectorise.
#define TAVIK_INDEPENDENT
#else
#define TAVIK_INDEPENDENT _Pragma("GCC ivdep")
#endif

// The static checks read the plain loops and one vector level, not the same text five times over.
#if defined(__clang_analyzer__)
namespace sse2 = scalar;
namespace sse41 = scalar;
#else
#define TAVIK_LEVEL TAVIK_SSE2
namespace sse2 {
#include TAVIK_ROWS
}
#undef TAVIK_LEVEL

#define TAVIK_LEVEL TAVIK_SSE41
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("sse4.1"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("sse4.1")
#endif
namespace sse41 {
#include TAVIK_ROWS
}
#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
#undef TAVIK_LEVEL
#endif

#define TAVIK_LEVEL TAVIK_AVX2
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
#endif
namespace avx2 {
#include TAVIK_ROWS
}
#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
#undef TAVIK_LEVEL

#if defined(__x86_64__) && defined(__clang_analyzer__)
namespace avx512 = avx2;
#elif defined(__x86_64__)
#define TAVIK_LEVEL TAVIK_AVX512
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx512f,avx512bw,avx512dq,avx512vl,avx512vbmi"))),                 \
                             apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx512f,avx512bw,avx512dq,avx512vl,avx512vbmi,prefer-vector-width=512")
#endif
namespace avx512 {
#include TAVIK_ROWS
}
#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
#undef TAVIK_LEVEL
#endif

} // namespace
} // namespace tavik

#undef TAVIK_INDEPENDENT
#undef TAVIK_ROWS
