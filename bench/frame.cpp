#include "tavik/frame/frame.h"

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

const Case cases[] = {
    {"TestPPL2", {.bytes = 2, .parallel = true}, [](const Picture &p) { TestPPL2(p.to_r, p.height, p.width); }},
};

const Family frame("frame", cases);

} // namespace
} // namespace tavik_bench
