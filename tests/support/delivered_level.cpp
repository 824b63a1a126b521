// The delivered library chooses its level itself: there is one to test.
#include "tests/support/vector_level.h"

tavik::VectorLevel tavik_test::set_active_level(tavik::VectorLevel level) { return level; }

std::vector<tavik::VectorLevel> tavik_test::supported_levels() { return {tavik::VectorLevel::scalar}; }

std::string_view tavik_test::name_of(tavik::VectorLevel /*level*/) { return "the library's own level"; }
