#pragma once

#include <filesystem>
#include <span>

namespace gallery {

// Writes the whole file or leaves what was there: the bytes go to a temporary name in the same folder, which then
// takes the file's name. Throws std::runtime_error when that fails.
void replace_file(const std::filesystem::path &path, std::span<const char> bytes);

// Creates the folder where it is missing and makes sure that files can be written there. Throws
// std::runtime_error when they cannot.
void prepare_folder(const std::filesystem::path &folder);

} // namespace gallery
