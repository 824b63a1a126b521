#include "host/library.h"

#include <stdexcept>
#include <string>

#if defined(_WIN32)
#include <array>
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace gallery {
namespace {

namespace fs = std::filesystem;

#if defined(_WIN32)

constexpr const char *library_name = "tavik.dll";

fs::path program() {
    std::array<wchar_t, 32768> name{};
    GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    return name.data();
}

void *load(const fs::path &path) { return LoadLibraryW(path.c_str()); }
void unload(void *module) { FreeLibrary(static_cast<HMODULE>(module)); }
void *find(void *module, const char *name) {
    return reinterpret_cast<void *>(GetProcAddress(static_cast<HMODULE>(module), name));
}
std::string load_error() { return "error " + std::to_string(GetLastError()); }

#else

constexpr const char *library_name = "libtavik.so";

fs::path program() { return fs::read_symlink("/proc/self/exe"); }

void *load(const fs::path &path) { return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL); }
void unload(void *module) { dlclose(module); }
void *find(void *module, const char *name) { return dlsym(module, name); }
std::string load_error() { return dlerror(); }

#endif

} // namespace

fs::path library_beside_program() { return program().parent_path() / library_name; }

// An absolute path, so that the system does not search its own folders.
Library::Library(const fs::path &path) : path_(fs::absolute(path)), module_(nullptr) {
    if (!fs::exists(path_)) throw std::runtime_error(path.string() + ": no such library");
    module_ = load(path_);
    if (module_ == nullptr) throw std::runtime_error(path.string() + ": cannot be loaded (" + load_error() + ")");
}

Library::~Library() { unload(module_); }

void *Library::address(const char *name) const {
    void *found = find(module_, name);
    if (found == nullptr) throw std::runtime_error(path_.string() + ": has no export " + name);
    return found;
}

} // namespace gallery
