#include "tavik/frame/random.h"

#include <cstdlib>

namespace tavik {

#if defined(_WIN32)

void seed_random(uint32_t seed) { std::srand(seed); }

int32_t random_number() { return std::rand(); } // NOLINT(cert-msc30-c,cert-msc50-cpp,concurrency-mt-unsafe)

#else

namespace {

thread_local uint32_t state = 1;

} // namespace

void seed_random(uint32_t seed) { state = seed; }

int32_t random_number() {
    state = state * 214013U + 2531011U;
    return static_cast<int32_t>((state >> 16) & 0x7FFFU);
}

#endif

} // namespace tavik
