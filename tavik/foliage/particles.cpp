#include "tavik/foliage/foliage.h"
#include "tavik/foliage/particle.h"
#include "tavik/foliage/stroke.h"
#include "tavik/frame/elementary.h"
#include "tavik/frame/hash.h"
#include "tavik/frame/parallel_for.h"

namespace {

using namespace tavik;

float between(float a, float b, float u) { return (b - a) * u + a; }

Particle emitted(const float *emitter, uint32_t seed) {
    const auto draw = [start = hash(seed)](uint32_t i) { return unit(hash(i + start)); };
    Particle p = {};
    p.x = between(emitter[0], emitter[2], draw(0));
    p.y = between(emitter[1], emitter[3], draw(1));
    p.depth = between(emitter[4], emitter[5], draw(1));
    p.previous_x = p.x;
    p.previous_y = p.y;
    p.previous_depth = p.depth;
    const float heading = degrees_to_turns(emitter[6] + (draw(2) - 0.5F) * emitter[7]);
    const float speed = between(emitter[8], emitter[9], draw(3));
    p.velocity_x = speed * cos_turn(heading);
    p.velocity_y = speed * sin_turn(heading);
    p.life = between(emitter[10], emitter[11], draw(4));
    p.radius = between(emitter[12], emitter[13], draw(5));
    const float shade = 1.0F + (draw(6) - 0.5F) * emitter[20];
    for (std::size_t i = 0; i < 3; ++i) {
        p.base[i] = clamp(emitter[14 + i] * shade, 0.0F, 255.0F);
        p.tip[i] = clamp(emitter[17 + i] * shade, 0.0F, 255.0F);
    }
    p.phase = draw(7);
    p.state = growing;
    return p;
}

// The first free record from `first` on, `capacity` if there is none.
int32_t find_free(const float *pool, int32_t capacity, int32_t first) {
    while (first < capacity && state_of(pool, first) != free_record) ++first;
    return first;
}

struct Physics {
    float gravity_x, gravity_y, wind_x, wind_y, drag, gust, gust_rate, step;

    void move(Particle &p) const {
        p.previous_x = p.x;
        p.previous_y = p.y;
        p.previous_depth = p.depth;
        const float sway = gust * sin_turn(p.age * gust_rate + p.phase);
        const float ax = ((wind_x + sway) - p.velocity_x) * drag + gravity_x;
        const float ay = (wind_y - p.velocity_y) * drag + gravity_y;
        p.velocity_x = ax * step + p.velocity_x;
        p.velocity_y = ay * step + p.velocity_y;
        p.x = p.velocity_x * step + p.x;
        p.y = p.velocity_y * step + p.y;
        p.depth = p.velocity_depth * step + p.depth;
        p.age = p.age + step;
        p.state = p.age < p.life ? growing : finished;
    }
};

// What a particle's stroke is like where it was at this age.
StrokeEnd end_at(const Particle &p, float x, float y, float depth, float age) {
    const float u = clamp(age * (1.0F / p.life), 0.0F, 1.0F);
    return {x,
            y,
            depth,
            p.radius * (1.0F - u),
            {between(p.base[0], p.tip[0], u), between(p.base[1], p.tip[1], u), between(p.base[2], p.tip[2], u)}};
}

void draw_trace(const tavik_foliage_target &target, const Particle &p, float step, float opacity) {
    draw_stroke(target, end_at(p, p.previous_x, p.previous_y, p.previous_depth, p.age - step),
                end_at(p, p.x, p.y, p.depth, p.age), opacity);
}

} // namespace

TAVIK_EXPORT(int32_t)
xEmmit_particle(float *particles, int32_t capacity, const float *emitter, int32_t seed) {
    const int32_t index = find_free(particles, capacity, 0);
    if (index >= capacity) return -1;
    store_particle(emitted(emitter, static_cast<uint32_t>(seed)), particles, index);
    return index;
}

TAVIK_EXPORT(void) xApply_Physics(float *particles, int32_t count, const float *physics) {
    if (count <= 0) return;
    const Physics settings = {physics[0], physics[1], physics[2], physics[3],
                              physics[4], physics[5], physics[6], physics[7]};
    parallel_for(0, count, light_grain / 16, [&](int32_t begin, int32_t end) {
        for (int32_t i = begin; i < end; ++i) {
            const int32_t state = state_of(particles, i);
            if (state != growing && state != finished) continue;
            Particle particle = load_particle(particles, i);
            if (state == growing)
                settings.move(particle);
            else
                particle.state = free_record;
            store_particle(particle, particles, i);
        }
    });
}

TAVIK_EXPORT(int32_t) Foliage_NextParticle(const float *particles, int32_t count, int32_t index) {
    // Compared first, so that no index is past the largest.
    while (index < count - 1)
        if (state_of(particles, ++index) != free_record) return index;
    return -1;
}

TAVIK_EXPORT(int32_t)
xFoliage_Process(const tavik_foliage_target *target, float *particles, int32_t capacity, const float *emitter,
                 const float *physics, int32_t emit_per_step, int32_t steps, int32_t seed, float opacity) {
    for (int32_t step = 0; step < steps; ++step) {
        const uint32_t start = hash_of_row(step, seed);
        int32_t index = -1;
        for (int32_t k = 0; k < emit_per_step; ++k) {
            index = find_free(particles, capacity, index + 1);
            if (index >= capacity) break;
            store_particle(emitted(emitter, hash(static_cast<uint32_t>(k) + start)), particles, index);
        }
        xApply_Physics(particles, capacity, physics);
        for (index = Foliage_NextParticle(particles, capacity, -1); index >= 0;
             index = Foliage_NextParticle(particles, capacity, index))
            draw_trace(*target, load_particle(particles, index), physics[7], opacity);
    }
    int32_t still_growing = 0;
    for (int32_t index = 0; index < capacity; ++index) still_growing += state_of(particles, index) == growing ? 1 : 0;
    return still_growing;
}
