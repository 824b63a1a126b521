// Loads the library, uses it on several threads and unloads it, a thousand times; every tenth time while the threads
// are busy with other work.
#include <algorithm>
#include <cstdint>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "tavik/frame/frame.h"
#include "tests/load/host_work.h"
#include "tests/support/module.h"

int main(int argc, char **argv) {
    if (argc != 2) {
        std::cerr << "usage: load_cycles LIBRARY\n";
        return 2;
    }
    constexpr int cycles = 1000;
    constexpr int32_t width = 1024;
    constexpr int32_t height = 256;
    std::vector<uint8_t> plane(std::size_t{width} * height, 0);
    const std::string path = std::string("./") + argv[1];
    for (int cycle = 0; cycle < cycles; ++cycle) {
        std::unique_ptr<tavik_test::HostWork> work;
        if (cycle % 10 == 9) work = std::make_unique<tavik_test::HostWork>();
        const tavik_test::Module module(path.c_str());
        auto *complement = module.loaded() ? module.function<decltype(TestPPL2)>("TestPPL2") : nullptr;
        if (complement == nullptr) {
            std::cerr << "cycle " << cycle << ": cannot load TestPPL2 from " << path << '\n';
            return 1;
        }
        complement(plane.data(), height, width);
        const uint8_t expected = cycle % 2 == 0 ? 255 : 0;
        if (!std::all_of(plane.begin(), plane.end(), [=](uint8_t value) { return value == expected; })) {
            std::cerr << "cycle " << cycle << ": the plane was not complemented whole\n";
            return 1;
        }
    }
    std::cout << cycles << " cycles of loading, complementing in parallel and unloading\n";
    return 0;
}
