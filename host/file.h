#pragma once

#include <filesystem>
#include <span>

namespace gallery {

// Writes the whole file or leaves what was there: the bytes go to a temporary name in the same folder, which then
// takes the file's name. Throws std::runtime_error when that fails.
void replace_file(const std::filesystem::path &path, std::span<const char> bytes);

// A file that is there as long as this object.
class TemporaryFile {
  public:
    // In the folder, under a name of its own. Throws std::runtime_error when it cannot be written.
    TemporaryFile(const std::filesystem::path &folder, std::span<const char> bytes);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    const std::filesystem::path path;
};

// Creates the folder where it is missing and makes sure that files can be written there. Throws
// std::runtime_error when they cannot.
void prepare_folder(const std::filesystem::path &folder);

} // namespace gallery
