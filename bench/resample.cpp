#include "tavik/resample/resample.h"

#include <array>

#include "bench/support/cases.h"

namespace tavik_bench {
namespace {

// 20 degrees about the middle.
constexpr float cosine = 0.9396926F;
constexpr float sine = 0.34202015F;
const std::array<float, 16> turn = {cosine, sine, 0, 0, -sine, cosine, 0, 0, 0, 0, 1, 0, 3.3F, -2.2F, 0, 1};

// A free transform over the whole picture.
template <auto Export, class... Planes> void transform(const Picture &p, Planes... planes) {
    const auto width = static_cast<float>(p.width);
    const auto height = static_cast<float>(p.height);
    Export(0, width, 0, height, width / 2, height / 2, p.x_max(), p.y_max(), planes..., turn.data());
}

// Into a picture of the same size from a part of it, or the other way round.
void enlarge_rows(const Picture &p) { DoCubicPass1Helper(p.r, p.to_r, p.x_max(), 0, p.x_max(), p.height, 0.4F, 0); }
void reduce_rows(const Picture &p) {
    DoCubicPass1Helper(p.r, p.to_r, p.width / 2 - 1, 0, p.x_max(), p.height, 1.99F, 0);
}
void enlarge_columns(const Picture &p) { DoCubicPass2Helper(p.r, p.to_r, p.x_max(), p.height, 0, p.y_max(), 0, 0.4F); }

const char *const loads = "a load and a store for each sample";

const Case cases[] = {
    {"DoCubicPass1Helper, larger", {.bytes = 1.4, .parallel = true}, enlarge_rows},
    {"DoCubicPass1Helper, smaller", {.bytes = 1.5, .parallel = true}, reduce_rows},
    {"DoCubicPass2Helper", {.bytes = 1.4, .parallel = true}, enlarge_columns},
    {"xBiCubicHelper, larger",
     {.bytes = 1.2, .parallel = true},
     [](const Picture &p) { xBiCubicHelper(p.r, p.to_r, p.width, p.height, p.width, p.height, 0.4F, 0.4F); }},
    {"xBiCubicHelper, smaller",
     {.bytes = 1.25, .parallel = true},
     [](const Picture &p) { xBiCubicHelper(p.r, p.to_r, p.width / 2, p.height / 2, p.width, p.height, 1.9F, 1.9F); }},
    {"PrefilterCubicPass1Helper",
     {.bytes = 2, .parallel = true},
     [](const Picture &p) { PrefilterCubicPass1Helper(p.r, p.to_r, p.width / 9, 0, p.x_max(), p.height); }},
    {"PrefilterCubicPass1Helper, copies",
     {.bytes = 2, .parallel = true},
     [](const Picture &p) { PrefilterCubicPass1Helper(p.r, p.to_r, p.width, 0, p.x_max(), p.height); }},
    {"PrefilterCubicPass2Helpter",
     {.bytes = 2, .parallel = true},
     [](const Picture &p) { PrefilterCubicPass2Helpter(p.r, p.to_r, p.x_max(), p.height / 9, 0, p.y_max()); }},
    {"xprefilterlerp",
     {.bytes = 9, .parallel = true},
     [](const Picture &p) { xprefilterlerp(p.width, p.height, 0.5F, p.to_floats, p.r); }},
    {"FasterScaleRotate",
     {.bytes = 8, .parallel = true, .note = loads},
     [](const Picture &p) {
         FasterScaleRotate(p.r, p.g, p.b, p.quads(), p.to_r, p.to_g, p.to_b, p.to_quads(), p.x_max(), p.y_max(),
                           p.x_max(), p.y_max(), 1.2F, cosine, sine, 1, 2, 3);
     }},
    {"ScaleRotate_8_noAA",
     {.bytes = 2, .parallel = true, .note = loads},
     [](const Picture &p) {
         ScaleRotate_8_noAA(p.r, p.to_r, p.x_max(), p.y_max(), p.x_max(), p.y_max(), 1.2F, cosine, sine);
     }},
    {"xfreetransformalpha",
     {.bytes = 2, .parallel = true, .note = loads},
     [](const Picture &p) { transform<xfreetransformalpha>(p, p.r, p.to_r); }},
    {"xfreetransformalpha_aa",
     {.bytes = 2, .parallel = true},
     [](const Picture &p) { transform<xfreetransformalpha_aa>(p, p.r, p.to_r); }},
    {"xfreetransform_aa",
     {.bytes = 8, .parallel = true},
     [](const Picture &p) {
         transform<xfreetransform_aa>(p, p.r, p.g, p.b, p.quads(), p.to_r, p.to_g, p.to_b, p.to_quads());
     }},
    {"xBilinearScalePointf, larger",
     {.bytes = 4.2, .parallel = true, .rows = 64},
     [](const Picture &p) { xBilinearScalePointf(p.x_max() / 2, 63, p.width / 10, 12, p.floats, p.to_floats); }},
    {"xBilinearScalePointf, smaller",
     {.bytes = 16, .parallel = true, .rows = 32},
     [](const Picture &p) { xBilinearScalePointf(p.x_max() / 4, 31, p.x_max() / 2, 63, p.floats, p.to_floats); }},
    {"ScaleHelper",
     {.bytes = 4.5, .note = "positions are added up one after the other"},
     [](const Picture &p) { ScaleHelper(p.count(), 0, p.count() - 1, 0.5F, 0, p.quads(), p.to_quads(), 0, 0); }},
    {"FastHMirror",
     {.bytes = 1, .parallel = true},
     [](const Picture &p) { FastHMirror(p.r, p.to_r, p.x_max(), p.y_max()); }},
    {"FastVMirror",
     {.bytes = 1, .parallel = true},
     [](const Picture &p) { FastVMirror(p.r, p.to_r, p.x_max(), p.y_max()); }},
};

const Family resample("resample", cases);

} // namespace
} // namespace tavik_bench
