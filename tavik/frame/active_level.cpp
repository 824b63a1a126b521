#include "tavik/frame/vector_level.h"

namespace tavik {
namespace {

const VectorLevel level = supported_level();

} // namespace

VectorLevel active_level() { return level; }

} // namespace tavik
