#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <new>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/size_form.h"
#include "tavik/framefile/framefile.h"
#include "tavik/framefile/scaling.h"

#if defined(_WIN32)
#include <windows.h>
#endif

using namespace tavik;

namespace {

void read_plane(std::FILE *stream, const tavik_frame_header &header, int32_t plane, uint8_t *dst) {
    const std::size_t bytes = upper_bounds(header.x_max, header.y_max);
    const int32_t offset = wrap_add(wrap_mul(static_cast<int32_t>(bytes), plane), sizeof(tavik_frame_header));
    // After a seek that fails the runtimes stand at different places.
    if (bytes == 0 || std::fseek(stream, offset, SEEK_SET) != 0) return;
    // What a short file lacks stays as it was.
    static_cast<void>(std::fread(dst, 1, bytes, stream));
}

#if defined(_WIN32)

void draw(const ScaledPlanes &planes, void *target) {
    const int32_t width = planes.out_width;
    const int32_t height = planes.out_height;
    BITMAPINFO from_the_top_down = {};
    from_the_top_down.bmiHeader.biSize = sizeof from_the_top_down.bmiHeader;
    from_the_top_down.bmiHeader.biWidth = width;
    from_the_top_down.bmiHeader.biHeight = -height;
    from_the_top_down.bmiHeader.biPlanes = 1;
    from_the_top_down.bmiHeader.biBitCount = 32;
    from_the_top_down.bmiHeader.biCompression = BI_RGB;
    const std::unique_ptr<uint32_t[]> pixels(
        new (std::nothrow) uint32_t[static_cast<std::size_t>(width) * static_cast<std::size_t>(height)]);
    if (!pixels) return;
    // Hosts count on these calls in this order; the frame is drawn from the buffer beside the section.
    HDC memory = CreateCompatibleDC(nullptr);
    void *section_pixels = nullptr;
    HBITMAP section = CreateDIBSection(memory, &from_the_top_down, DIB_RGB_COLORS, &section_pixels, nullptr, 0);
    SelectObject(memory, section);
    scale_to_bitmap(planes, width, height, pixels.get(), width);
    SetDIBitsToDevice(static_cast<HDC>(target), 0, 0, static_cast<DWORD>(width), static_cast<DWORD>(height), 0, 0, 0,
                      static_cast<UINT>(height), pixels.get(), &from_the_top_down, DIB_RGB_COLORS);
    DeleteDC(memory);
    DeleteObject(section);
}

#else

void draw(const ScaledPlanes &planes, void *target) {
    const auto &surface = *static_cast<const tavik_surface *>(target);
    scale_to_bitmap(planes, std::min(planes.out_width, surface.width), std::min(planes.out_height, surface.height),
                    surface.pixels, surface.stride);
}

#endif

} // namespace

TAVIK_EXPORT(FILE *) kvf_open(const char *path, tavik_frame_header *header) {
    std::FILE *stream = std::fopen(path, "rb");
    if (stream != nullptr) static_cast<void>(std::fread(header, sizeof *header, 1, stream));
    return stream;
}

TAVIK_EXPORT(void)
kvf_getframe(FILE *stream, const tavik_frame_header *header, int32_t frame, uint8_t *dst_r, uint8_t *dst_g,
             uint8_t *dst_b) {
    const int32_t count = header->frame_count;
    read_plane(stream, *header, frame, dst_r);
    read_plane(stream, *header, wrap_add(count, frame), dst_g);
    read_plane(stream, *header, wrap_add(wrap_mul(2, count), frame), dst_b);
}

TAVIK_EXPORT(void)
kvf_getframetoHDC_scaled(FILE *stream, const tavik_frame_header *header, int32_t frame, void *target, int32_t out_width,
                         int32_t out_height) {
    const int64_t width = int64_t{header->x_max} + 1;
    const int64_t height = int64_t{header->y_max} + 1;
    if (out_width <= 0 || out_height <= 0 || width <= 0 || height <= 0 ||
        width * height > std::numeric_limits<int32_t>::max())
        return;
    const auto bytes = static_cast<std::size_t>(width * height);
    const auto new_plane = [&] { return std::unique_ptr<uint8_t[]>(new (std::nothrow) uint8_t[bytes]()); };
    const auto red = new_plane();
    const auto green = new_plane();
    const auto blue = new_plane();
    if (!red || !green || !blue) return;
    kvf_getframe(stream, header, frame, red.get(), green.get(), blue.get());
    draw({red.get(), green.get(), blue.get(), static_cast<int32_t>(width), static_cast<int32_t>(height), out_width,
          out_height},
         target);
}

TAVIK_EXPORT(void) kvf_close(FILE *stream) { static_cast<void>(std::fclose(stream)); }
