#include "tavik/frame/vector_level.h"

namespace tavik {

VectorLevel supported_level() {
    __builtin_cpu_init();
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
        __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi"))
        return VectorLevel::avx512;
#endif
    if (__builtin_cpu_supports("avx2")) return VectorLevel::avx2;
    if (__builtin_cpu_supports("sse4.1")) return VectorLevel::sse41;
    return VectorLevel::sse2;
}

} // namespace tavik
