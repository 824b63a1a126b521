// A particle's record as a structure. The pools are arrays of floats, so records are copied out of them and back.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tavik {

enum ParticleState : int32_t { free_record = 0, growing = 1, finished = 2 };

struct Particle {
    float x, y, depth;
    float previous_x, previous_y, previous_depth;
    float velocity_x, velocity_y, velocity_depth;
    float age, life, radius;
    std::array<float, 3> base, tip;
    float phase;
    int32_t state; // a ParticleState, but hosts may write anything
};

constexpr std::size_t particle_words = 20;
static_assert(sizeof(Particle) == particle_words * sizeof(float));

inline std::size_t record_index(int32_t particle) { return static_cast<std::size_t>(particle) * particle_words; }

inline Particle load_particle(const float *pool, int32_t index) {
    Particle particle;
    std::memcpy(&particle, pool + record_index(index), sizeof particle);
    return particle;
}

inline void store_particle(const Particle &particle, float *pool, int32_t index) {
    std::memcpy(pool + record_index(index), &particle, sizeof particle);
}

inline int32_t state_of(const float *pool, int32_t index) {
    int32_t state;
    std::memcpy(&state, pool + record_index(index) + particle_words - 1, sizeof state);
    return state;
}

} // namespace tavik
