// The vector level of the library's calls, in programs that link its code together with this choice.
#pragma once

#include <string_view>
#include <vector>

#include "tavik/frame/vector_level.h"

namespace tavik_test {

// Calls use `level` from now on; it must be supported here. Not while calls run. Returns the level before.
tavik::VectorLevel set_active_level(tavik::VectorLevel level);

// The levels that this processor can run, the plain loop first.
std::vector<tavik::VectorLevel> supported_levels();

std::string_view name_of(tavik::VectorLevel level);

} // namespace tavik_test
