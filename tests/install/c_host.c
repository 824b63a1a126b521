#include <stdio.h>
#include <tavik/tavik.h>

int main(void) {
    uint8_t plane[4] = {0, 1, 254, 255};
    xInvert(3, 0, plane);
    if (plane[0] != 255 || plane[3] != 0 || xceil(1.5F) != 2.0) return 1;
    printf("C host: %d MiB\n", (int)CalcMem(1024, 1024, 1));
    return 0;
}
