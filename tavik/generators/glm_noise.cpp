#include <glm/gtc/noise.hpp>

#include "tavik/generators/generators.h"

TAVIK_EXPORT(float) glm_perlin_noise3(float x, float y, float z) { return glm::perlin(glm::vec3(x, y, z)); }

TAVIK_EXPORT(float) glm_simplex_noise3(float x, float y, float z) { return glm::simplex(glm::vec3(x, y, z)); }
