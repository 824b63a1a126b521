#include "host/file.h"

#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

namespace gallery {
namespace {

namespace fs = std::filesystem;

// Differs between programs that write to one folder at the same time.
fs::path temporary_name(const fs::path &path) {
    fs::path name = path;
    name += '.';
    name += std::to_string(std::random_device()());
    name += ".part";
    return name;
}

void write(const fs::path &path, std::span<const char> bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error("cannot be written");
}

} // namespace

void replace_file(const fs::path &path, std::span<const char> bytes) {
    const fs::path temporary = temporary_name(path);
    try {
        write(temporary, bytes);
        fs::rename(temporary, path);
    } catch (const std::runtime_error &) {
        std::error_code ignored;
        fs::remove(temporary, ignored);
        throw std::runtime_error(path.string() + ": cannot be written");
    }
}

TemporaryFile::TemporaryFile(const fs::path &folder, std::span<const char> bytes)
    : path(temporary_name(folder / "temporary")) {
    replace_file(path, bytes);
}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    fs::remove(path, ignored);
}

void prepare_folder(const fs::path &folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    const fs::path trial = temporary_name(folder / "trial");
    if (!error && std::ofstream(trial)) {
        fs::remove(trial);
        return;
    }
    throw std::runtime_error(folder.string() + ": cannot write to this folder");
}

} // namespace gallery
