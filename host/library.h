// The library, loaded at run time.
#pragma once

#include <filesystem>

namespace gallery {

// The folder that this program was started from and the library's file name there.
std::filesystem::path library_beside_program();

class Library {
  public:
    // Throws std::runtime_error when the file cannot be loaded.
    explicit Library(const std::filesystem::path &path);
    ~Library();
    Library(const Library &) = delete;
    Library &operator=(const Library &) = delete;

    // The address of an export. Throws std::runtime_error when the library has none of that name.
    void *address(const char *name) const;

    std::filesystem::path file_name() const { return path_.filename(); }

  private:
    std::filesystem::path path_;
    void *module_;
};

// An export's name with its type, which its header declares.
template <class Function> struct Export { const char *name; };

} // namespace gallery

#define EXPORT(function)                                                                                               \
    gallery::Export<decltype(function)> { #function }
