#include "tests/support/vector_level.h"

#include <utility>

namespace {

tavik::VectorLevel level = tavik::supported_level();

} // namespace

tavik::VectorLevel tavik::active_level() { return level; }

tavik::VectorLevel tavik_test::set_active_level(tavik::VectorLevel wanted) { return std::exchange(level, wanted); }

std::vector<tavik::VectorLevel> tavik_test::supported_levels() {
    std::vector<tavik::VectorLevel> levels;
    for (std::size_t index = 0; index <= static_cast<std::size_t>(tavik::supported_level()); ++index)
        levels.push_back(static_cast<tavik::VectorLevel>(index));
    return levels;
}

std::string_view tavik_test::name_of(tavik::VectorLevel wanted) {
    return tavik::vector_level_names[static_cast<std::size_t>(wanted)];
}
