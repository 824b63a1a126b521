#include "tavik/frame/frame.h"

#include "tavik/frame/arithmetic.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <fstream>
#include <string>
#endif

namespace {

struct Memory {
    double available_physical = 0;
    double total_physical = 0;
    double available_page_file = 0;
    double total_page_file = 0;
};

#if defined(_WIN32)

Memory memory_in_kib() {
    MEMORYSTATUSEX status;
    status.dwLength = sizeof status;
    GlobalMemoryStatusEx(&status);
    const auto kib = [](DWORDLONG bytes) { return static_cast<double>(bytes) / 1024.0; };
    return {kib(status.ullAvailPhys), kib(status.ullTotalPhys), kib(status.ullAvailPageFile),
            kib(status.ullTotalPageFile)};
}

#else

Memory memory_in_kib() {
    Memory memory;
    double available_swap = 0;
    double total_swap = 0;
    std::ifstream lines("/proc/meminfo");
    std::string name;
    double kib = 0;
    std::string unit;
    while (lines >> name >> kib && std::getline(lines, unit)) {
        if (name == "MemAvailable:") memory.available_physical = kib;
        if (name == "MemTotal:") memory.total_physical = kib;
        if (name == "SwapFree:") available_swap = kib;
        if (name == "SwapTotal:") total_swap = kib;
    }
    memory.available_page_file = memory.available_physical + available_swap;
    memory.total_page_file = memory.total_physical + total_swap;
    return memory;
}

#endif

} // namespace

TAVIK_EXPORT(void)
MemoryInfo(int32_t *available_physical, int32_t *total_physical, int32_t *available_page_file,
           int32_t *total_page_file) {
    const Memory memory = memory_in_kib();
    *available_physical = tavik::truncate(memory.available_physical);
    *total_physical = tavik::truncate(memory.total_physical);
    *available_page_file = tavik::truncate(memory.available_page_file);
    *total_page_file = tavik::truncate(memory.total_page_file);
}
