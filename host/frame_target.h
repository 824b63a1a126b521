// What kvf_getframetoHDC_scaled draws on: a device context in memory on Windows, elsewhere a surface.
#pragma once

#include <cstdint>
#include <vector>

#include "tavik/framefile/framefile.h"

#if defined(_WIN32)
#include <windows.h>
#endif

namespace gallery {

#if defined(_WIN32)

// Black to begin with.
class FrameTarget {
  public:
    FrameTarget(int32_t width, int32_t height) : context(CreateCompatibleDC(nullptr)) {
        BITMAPINFO description = {};
        description.bmiHeader = {sizeof description.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void *bits = nullptr;
        bitmap = CreateDIBSection(context, &description, DIB_RGB_COLORS, &bits, nullptr, 0);
        before = SelectObject(context, bitmap);
        first_pixel = static_cast<uint32_t *>(bits);
    }
    ~FrameTarget() {
        SelectObject(context, before);
        DeleteObject(bitmap);
        DeleteDC(context);
    }
    FrameTarget(const FrameTarget &) = delete;
    FrameTarget &operator=(const FrameTarget &) = delete;

    void *handle() { return context; }
    uint32_t *pixels() {
        GdiFlush();
        return first_pixel;
    }

  private:
    HDC context;
    HBITMAP bitmap;
    HGDIOBJ before;
    uint32_t *first_pixel;
};

#else

class FrameTarget {
  public:
    FrameTarget(int32_t width, int32_t height)
        : memory(static_cast<std::size_t>(width * height)), surface{width, height, width, memory.data()} {}
    FrameTarget(const FrameTarget &) = delete;
    FrameTarget &operator=(const FrameTarget &) = delete;

    void *handle() { return &surface; }
    uint32_t *pixels() { return memory.data(); }

  private:
    std::vector<uint32_t> memory;
    tavik_surface surface;
};

#endif

} // namespace gallery
