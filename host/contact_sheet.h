#pragma once

#include <span>

#include "host/exhibit.h"

namespace gallery {

// The size of the box that a thumbnail fits into.
constexpr int32_t thumbnail_width = 300;
constexpr int32_t thumbnail_height = 200;

// All thumbnails with their titles, in one picture.
Image contact_sheet(std::span<const Section> sections);

} // namespace gallery
