#include "tavik/tone/tone.h"

#include <string>

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

const std::string through_table = "through a byte table; below sse41 no byte shuffle reads one";

const Case cases[] = {
    {"AdjustLevels_channel",
     {.bytes = 2, .in_place_too = true, .note = through_table},
     [](const Picture &p) { AdjustLevels_channel(p.r, p.to_r, p.x_max(), p.height, 10, 240, 20, 200); }},
    {"AdjustLevels_channel_ppl",
     {.bytes = 2, .parallel = true, .note = through_table},
     [](const Picture &p) { AdjustLevels_channel_ppl(p.r, p.to_r, p.width, p.height, 10, 240, 20, 200); }},
    {"FastPosterize",
     {.bytes = 6, .in_place_too = true, .note = through_table},
     [](const Picture &p) { FastPosterize(p.to_r, p.to_g, p.to_b, p.width, p.height, p.r, p.g, p.b, 32); }},
    {"FastPosterize_ppl",
     {.bytes = 6, .parallel = true, .note = through_table},
     [](const Picture &p) { FastPosterize_ppl(p.to_r, p.to_g, p.to_b, p.width, p.height, p.r, p.g, p.b, 32); }},
    {"MapLut",
     {.bytes = 4, .parallel = true, .in_place_too = true, .note = through_table},
     [](const Picture &p) { MapLut(p.x_max(), p.y_max(), p.r, p.to_r, p.to_g, p.to_b, p.table, p.table, p.table); }},
    {"ValueLut",
     {.bytes = 2, .in_place_too = true, .note = through_table},
     [](const Picture &p) { ValueLut(p.width, p.height, p.r, p.to_r, p.table); }},
    {"xGamma",
     {.bytes = 2, .note = through_table},
     [](const Picture &p) { xGamma(p.x_max(), p.y_max(), 1.01F, p.to_r); }},
    {"xGammaAB",
     {.bytes = 2, .parallel = true, .in_place_too = true, .note = through_table},
     [](const Picture &p) { xGammaAB(2.2F, 1.1F, 0.01F, p.width, p.height, p.r, p.to_r); }},
    {"xcontrast",
     {.bytes = 2, .note = through_table},
     [](const Picture &p) { xcontrast(p.x_max(), p.y_max(), 1.01F, p.to_r); }},
    {"xInvert", {.bytes = 2}, [](const Picture &p) { xInvert(p.x_max(), p.y_max(), p.to_r); }},
    {"xNegate", {.bytes = 2}, [](const Picture &p) { xNegate(p.width, p.height, p.to_r); }},
    {"xInvertValue", {.bytes = 6}, [](const Picture &p) { xInvertValue(p.width, p.height, p.to_r, p.to_g, p.to_b); }},
    {"xValueCancelation",
     {.bytes = 6},
     [](const Picture &p) { xValueCancelation(p.width, p.height, p.to_r, p.to_g, p.to_b); }},
    {"FastGreyscaleExpose",
     {.bytes = 6, .in_place_too = true},
     [](const Picture &p) {
         FastGreyscaleExpose(p.r, p.g, p.b, p.width, p.height, p.to_r, p.to_g, p.to_b, 178, 105, 227);
     }},
    {"xDimChannel",
     {.bytes = 2, .note = through_table},
     [](const Picture &p) { xDimChannel(0.99F, p.count(), p.to_r); }},
    {"ChannelValue_mmx",
     {.bytes = 2, .in_place_too = true},
     [](const Picture &p) { ChannelValue_mmx(p.to_r, p.r, p.x_max(), p.y_max(), 0.9F); }},
    {"ChannelValue1_mmx, below 1",
     {.bytes = 2},
     [](const Picture &p) { ChannelValue1_mmx(p.to_r, p.x_max(), p.y_max(), 0.9F); }},
    {"ChannelValue1_mmx, above 1",
     {.bytes = 2, .note = through_table},
     [](const Picture &p) { ChannelValue1_mmx(p.to_r, p.x_max(), p.y_max(), 1.1F); }},
    {"FastChannelAdd", {.bytes = 2}, [](const Picture &p) { FastChannelAdd(p.to_r, p.width, p.height, 3); }},
};

const Family tone("tone", cases);

} // namespace
} // namespace tavik_bench
