#include "tavik/frame/bytes.h"

#define TAVIK_ROWS "tavik/frame/bytes_rows.inl"
#include "tavik/frame/each_level.inl"

namespace tavik {

const PerLevel<MapBytesRow> map_bytes = TAVIK_EVERY_LEVEL(map_bytes);
const PerLevel<MapBytesToThreeRow> map_bytes_to_three = TAVIK_EVERY_LEVEL(map_bytes_to_three);
const PerLevel<ComplementRow> complement = TAVIK_EVERY_LEVEL(complement);

} // namespace tavik
