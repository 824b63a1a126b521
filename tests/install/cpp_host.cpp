#include <array>
#include <iostream>
#include <tavik/tavik.h>

int main() {
    std::array<uint8_t, 4> plane = {0, 1, 254, 255};
    xNegate(2, 2, plane.data());
    if (plane != std::array<uint8_t, 4>{255, 254, 1, 0} || fastsqrt(4.0F) != 2.0F) return 1;
    std::cout << "C++ host: " << LinearInterpolate(0.0F, 10.0F, 0.5F) << '\n';
}
