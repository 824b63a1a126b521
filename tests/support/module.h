// A dynamic library loaded by its file name.
#pragma once

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace tavik_test {

class Module {
  public:
#if defined(_WIN32)
    explicit Module(const char *path) : handle(LoadLibraryA(path)) {}
    ~Module() {
        if (handle != nullptr) FreeLibrary(handle);
    }
    void *symbol(const char *name) const { return reinterpret_cast<void *>(GetProcAddress(handle, name)); }
    HMODULE base() const { return handle; }
#else
    explicit Module(const char *path) : handle(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {}
    ~Module() {
        if (handle != nullptr) dlclose(handle);
    }
    void *symbol(const char *name) const { return dlsym(handle, name); }
#endif
    Module(const Module &) = delete;
    Module &operator=(const Module &) = delete;

    bool loaded() const { return handle != nullptr; }

    // The function of that name, whose type the header gives.
    template <class Function> Function *function(const char *name) const {
        return reinterpret_cast<Function *>(symbol(name));
    }

  private:
#if defined(_WIN32)
    HMODULE handle;
#else
    void *handle;
#endif
};

} // namespace tavik_test
