#include "tavik/frame/streaming.h"

#include <cstring>

#include <emmintrin.h>

namespace tavik {

void stream_copy(void *dst, const void *src, std::size_t bytes) {
    auto *to = static_cast<uint8_t *>(dst);
    const auto *from = static_cast<const uint8_t *>(src);
    constexpr std::size_t step = sizeof(__m128i);
    const std::size_t head = std::min((step - reinterpret_cast<std::uintptr_t>(to) % step) % step, bytes);
    std::memcpy(to, from, head);
    std::size_t i = head;
    for (; i + step <= bytes; i += step)
        _mm_stream_si128(reinterpret_cast<__m128i *>(to + i),
                         _mm_loadu_si128(reinterpret_cast<const __m128i *>(from + i)));
    std::memcpy(to + i, from + i, bytes - i);
}

void fence_stream() { _mm_sfence(); }

} // namespace tavik
