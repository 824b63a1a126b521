// Numbers at the ends of their types.
#pragma once

#include <cstdint>
#include <limits>

namespace tavik_test {

constexpr float no_number = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr int32_t lowest = std::numeric_limits<int32_t>::min();
constexpr int32_t highest = std::numeric_limits<int32_t>::max();

} // namespace tavik_test
