// Random numbers 0 .. 32767 of the calling thread. On Windows they are the C runtime's `rand`. Elsewhere they
// are a linear congruential generator of the same range and seeding rule, kept per thread, so that a seed gives
// the same numbers on every machine.
#pragma once

#include <cstdint>

namespace tavik {

void seed_random(uint32_t seed);

int32_t random_number();

} // namespace tavik
