#include "tavik/frame/random.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace tavik {

#if defined(_WIN32)

void seed_random(uint32_t seed) { std::srand(seed); }

void draw_random(uint16_t *numbers, std::size_t count) {
    std::generate(numbers, numbers + count, [] { return static_cast<uint16_t>(std::rand()); });
}

#else

namespace {

thread_local uint32_t state = 1;

// state × factor + addend: one step of the generator, or several at once.
struct Step {
    uint32_t factor;
    uint32_t addend;

    constexpr uint32_t operator()(uint32_t from) const { return from * factor + addend; }
    constexpr Step then(Step next) const { return {factor * next.factor, next(addend)}; }
};

constexpr Step one_step = {214013, 2531011};

// As many generators in step as vectors have lanes for.
constexpr std::size_t lanes = 16;

constexpr Step lanes_steps = [] {
    Step steps = one_step;
    for (std::size_t i = 1; i < lanes; ++i) steps = steps.then(one_step);
    return steps;
}();

constexpr uint16_t number_of(uint32_t from) { return static_cast<uint16_t>((from >> 16) & 0x7FFFU); }

} // namespace

void seed_random(uint32_t seed) { state = seed; }

void draw_random(uint16_t *numbers, std::size_t count) {
    std::size_t i = 0;
    if (count >= lanes) {
        std::array<uint32_t, lanes> next;
        uint32_t from = state;
        for (uint32_t &lane : next) lane = from = one_step(from);
        for (; i + lanes <= count; i += lanes) {
            state = next.back();
            for (std::size_t lane = 0; lane < lanes; ++lane) {
                numbers[i + lane] = number_of(next[lane]);
                next[lane] = lanes_steps(next[lane]);
            }
        }
    }
    for (; i < count; ++i) numbers[i] = number_of(state = one_step(state));
}

#endif

} // namespace tavik
