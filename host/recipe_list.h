#pragma once

#include <span>
#include <string>

#include "host/exhibit.h"

namespace gallery {

// The recipes with their pictures and the exports they call, as XML: for programs, such as the manual's generator.
std::string recipe_list(std::span<const Section> sections);

} // namespace gallery
