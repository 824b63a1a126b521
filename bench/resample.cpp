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

// A warp about the middle that reaches most of the picture.
template <auto Export> void warp(const Picture &p, auto... shape) {
    Export(p.width, p.height, 0.5F * static_cast<float>(p.width), 0.5F * static_cast<float>(p.height), shape..., p.r,
           p.g, p.b, p.to_r, p.to_g, p.to_b);
}

float half(int32_t size) { return 0.5F * static_cast<float>(size); }

// Rows of the picture, at half its width, for which its floats hold a plane of points.
constexpr int32_t point_rows = 64;

const Case warps[] = {
    {"xFisheye", {.bytes = 6, .parallel = true}, [](const Picture &p) { warp<xFisheye>(p, half(p.width), 0.5F); }},
    {"xGlobe",
     {.bytes = 9, .parallel = true},
     [](const Picture &p) {
         xGlobe(p.width, p.height, p.width, p.height, half(p.width), half(p.height), half(p.width), 30, 25, p.r, p.g,
                p.b, p.to_r, p.to_g, p.to_b);
     }},
    {"xPolarHelper, into a disc",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) { warp<xPolarHelper>(p, half(p.height), 0); }},
    {"xPolarHelper, unrolled",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) { warp<xPolarHelper>(p, half(p.height), 1); }},
    {"xLensHelper", {.bytes = 6}, [](const Picture &p) { warp<xLensHelper>(p, 0.35F, 0.1F, 0.85F, 0.015F); }},
    {"p_LensHelper",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) { warp<p_LensHelper>(p, 0.35F, 0.1F, 0.85F, 0.015F); }},
    {"xRenderTwirlTo",
     {.bytes = 6, .parallel = true},
     [](const Picture &p) {
         xRenderTwirlTo(half(p.width), half(p.height), half(p.width), 220, p.width, p.height, p.to_r, p.to_g, p.to_b,
                        p.r, p.g, p.b);
     }},
    {"xLinearWarp",
     {.bytes = 14, .parallel = true, .rows = point_rows / 2},
     [](const Picture &p) {
         xLinearWarp(p.width / 2, point_rows, 0.05F, p.width / 2, p.floats, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b);
     }},
    {"xBilinearMorpheHelper",
     {.bytes = 17, .parallel = true, .rows = point_rows / 2},
     [](const Picture &p) {
         xBilinearMorpheHelper(p.width / 2, point_rows, 0.3F, p.width / 2, p.floats, p.r, p.g, p.b, p.g, p.b, p.r,
                               p.to_r, p.to_g, p.to_b);
     }},
    {"Mapxtwo",
     {.bytes = 40, .parallel = true, .rows = 4},
     [](const Picture &p) { Mapxtwo(p.width / 2, 8, p.floats, p.to_floats); }},
    {"MapCopy",
     {.bytes = 14,
      .parallel = true,
      .rows = point_rows / 2,
      .note = "gathers from places that differ from pixel to pixel"},
     [](const Picture &p) {
         MapCopy(p.width / 2, point_rows, p.floats, p.width, p.height, p.r, p.g, p.b, p.to_r, p.to_g, p.to_b);
     }},
    {"xHalfSizeBuf",
     {.bytes = 5, .parallel = true},
     [](const Picture &p) { xHalfSizeBuf(p.width, p.height, p.floats, p.to_floats); }},
    {"xEval",
     {.bytes = 0, .rows = 1, .note = "one row of calls"},
     [](const Picture &p) {
         for (int32_t x = 0; x < p.width; ++x)
             *p.to_floats += xEval(static_cast<float>(x), 9.3F, 1.6F, p.width, p.height / 2, 6, p.floats);
     }},
    {"xFastEval",
     {.bytes = 0, .rows = 1, .note = "one row of calls"},
     [](const Picture &p) {
         for (int32_t x = 0; x < p.width; ++x)
             *p.to_floats += xFastEval(static_cast<float>(x), 9.3F, 1.6F, p.width, p.height / 2, 6, p.floats);
     }},
    {"xrefinementhelper",
     {.bytes = 10, .parallel = true},
     [](const Picture &p) {
         xrefinementhelper(p.width, p.height, 1.5F, p.floats, p.floats, p.floats + p.count() / 2, p.to_floats);
     }},
    {"GoodTransform2, 1 sample",
     {.bytes = 7, .parallel = true},
     [](const Picture &p) {
         GoodTransform2(p.r, p.g, p.b, p.to_r, p.to_g, p.to_b, p.to_quads(), p.width, p.height, p.width, p.height,
                        turn.data(), 0, 1);
     }},
    {"GoodTransform2, 16 samples",
     {.bytes = 7, .parallel = true},
     [](const Picture &p) {
         GoodTransform2(p.r, p.g, p.b, p.to_r, p.to_g, p.to_b, p.to_quads(), p.width, p.height, p.width, p.height,
                        turn.data(), 0, 4);
     }},
    {"Fast_ThreeDeePerspective",
     {.bytes = 6, .parallel = true, .note = loads},
     [](const Picture &p) {
         Fast_ThreeDeePerspective(p.r, p.g, p.b, p.to_r, p.to_g, p.to_b, p.width, p.height, 35, 30, 10,
                                  static_cast<float>(p.width), 0);
     }},
};

const Family resample("resample", cases);
const Family resample_warps("resample: warps", warps);

} // namespace
} // namespace tavik_bench
