#pragma once

#include <string>

namespace gallery {

// The text with what HTML and XML take for markup escaped.
std::string escaped(const std::string &text);

} // namespace gallery
