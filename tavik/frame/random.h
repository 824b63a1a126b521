// Random numbers 0 .. 32767 of the calling thread. On Windows they are the C runtime's `rand`. Elsewhere they
// are a linear congruential generator of the same range and seeding rule, kept per thread, so that a seed gives
// the same numbers on every machine.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tavik {

void seed_random(uint32_t seed);

// Draws the next `count` numbers.
void draw_random(uint16_t *numbers, std::size_t count);

} // namespace tavik
