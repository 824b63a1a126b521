#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "host/recipe.h"

namespace gallery {

// The families with only the recipes of these names, or with all when there are none. Throws std::runtime_error for
// a name that no recipe has.
std::vector<Family> chosen_families(std::span<const std::string> names);

// Runs the recipes on the photo and writes their pictures, the contact sheet, a list of the recipes and the page, telling
// its progress on standard output. Everything that can be found wrong beforehand is, before the first file is written.
// Throws std::runtime_error with one line about what is wrong.
void make_gallery(const std::filesystem::path &library, const std::filesystem::path &photo,
                  const std::filesystem::path &folder, std::span<const Family> families);

} // namespace gallery
