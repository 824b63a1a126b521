#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "bench/support/equivalents.h"

namespace tavik_bench {
namespace {

// The library's matrices are never const; sources are only read.
template <class Element> cv::Mat matrix(const Picture &p, const Element *elements, int type) {
    return {p.height, p.width, type, const_cast<Element *>(elements)};
}
cv::Mat plane(const Picture &p, const uint8_t *samples) { return matrix(p, samples, CV_8UC1); }
cv::Mat floats(const Picture &p, const float *values) { return matrix(p, values, CV_32FC1); }
cv::Mat quads(const Picture &p, const uint32_t *pixels) { return matrix(p, pixels, CV_8UC4); }
cv::Mat table_of(const Picture &p) { return {1, 256, CV_8UC1, const_cast<uint8_t *>(p.table)}; }

void complement(const Picture &p) {
    cv::Mat to = plane(p, p.to_r);
    cv::bitwise_not(to, to);
}

void look_up(const Picture &p) {
    cv::Mat to = plane(p, p.to_r);
    cv::LUT(plane(p, p.r), table_of(p), to);
}

void box(const Picture &p, cv::Size size, int passes) {
    cv::Mat to = plane(p, p.to_r);
    cv::blur(plane(p, p.r), to, size, {-1, -1}, cv::BORDER_REPLICATE);
    for (int pass = 1; pass < passes; ++pass) cv::blur(to, to, size, {-1, -1}, cv::BORDER_REPLICATE);
}

// A plane's upper left part resized to fill a plane.
void resize(const Picture &p, double part_x, double part_y) {
    const cv::Rect part(0, 0, static_cast<int>(p.width * part_x), static_cast<int>(p.height * part_y));
    cv::Mat to = plane(p, p.to_r);
    cv::resize(plane(p, p.r)(part), to, to.size(), 0, 0, cv::INTER_CUBIC);
}

void rotate(const Picture &p, int interpolation) {
    const cv::Point2f centre(static_cast<float>(p.width) / 2, static_cast<float>(p.height) / 2);
    cv::Mat to = plane(p, p.to_r);
    cv::warpAffine(plane(p, p.r), to, cv::getRotationMatrix2D(centre, 20, 0.9), to.size(), interpolation);
}

void dilate(const Picture &p, int radius) {
    static cv::Mat dilated;
    const cv::Mat element = cv::getStructuringElement(cv::MORPH_RECT, {2 * radius, 1});
    cv::dilate(plane(p, p.r), dilated, element);
    cv::Mat to(p.width, p.height, CV_8UC1, p.to_r);
    cv::transpose(dilated, to);
}

const Equivalent all[] = {
    {"TestPPL2", "bitwise_not", complement},
    {"xInvert", "bitwise_not", complement},
    {"xNegate", "bitwise_not", complement},
    {"ValueLut", "LUT", look_up},
    {"MapLut", "LUT ×3",
     [](const Picture &p) {
         for (uint8_t *to : {p.to_r, p.to_g, p.to_b}) {
             cv::Mat target = plane(p, to);
             cv::LUT(plane(p, p.r), table_of(p), target);
         }
     }},
    {"AdjustLevels_channel_ppl", "convertTo",
     [](const Picture &p) {
         cv::Mat to = plane(p, p.to_r);
         plane(p, p.r).convertTo(to, CV_8U, 1.28, -15.6);
     }},
    {"xBlend2", "addWeighted",
     [](const Picture &p) {
         cv::Mat to = plane(p, p.to_r);
         cv::addWeighted(plane(p, p.r), 0.61, plane(p, p.g), 0.39, 0, to);
     }},
    {"char_to_float", "convertTo",
     [](const Picture &p) {
         cv::Mat to = floats(p, p.to_floats);
         plane(p, p.r).convertTo(to, CV_32F);
     }},
    {"float_to_char_clamp", "convertTo",
     [](const Picture &p) {
         cv::Mat to = plane(p, p.to_r);
         floats(p, p.floats).convertTo(to, CV_8U);
     }},
    {"RGB_to_bbytes", "merge",
     [](const Picture &p) {
         const cv::Mat from[] = {plane(p, p.r), plane(p, p.g), plane(p, p.b), plane(p, p.r)};
         cv::Mat to = quads(p, p.to_pixels);
         cv::merge(from, 4, to);
     }},
    {"bbytes_to_RGB", "split",
     [](const Picture &p) {
         static cv::Mat rest;
         cv::Mat to[] = {plane(p, p.to_r), plane(p, p.to_g), plane(p, p.to_b), rest};
         cv::split(quads(p, p.pixels), to);
         rest = to[3];
     }},
    {"xColorMatrix_ppl", "transform",
     [](const Picture &p) {
         static const cv::Mat weights = (cv::Mat_<float>(4, 5) << 0.8F, 0.15F, 0.05F, 0, 4, 0.1F, 0.85F, 0.05F, 0, -6,
                                         0.05F, 0.05F, 0.9F, 0, 10, 0, 0, 0, 1, 0);
         cv::Mat to = quads(p, p.to_pixels);
         cv::transform(quads(p, p.pixels), to, weights);
     }},
    {"Convolve8", "filter2D",
     [](const Picture &p) {
         static const cv::Mat kernel = (cv::Mat_<float>(3, 3) << 1, 2, 1, 2, 4, 2, 1, 2, 1) / 16;
         cv::Mat to = plane(p, p.to_r);
         cv::filter2D(plane(p, p.r), to, -1, kernel, {-1, -1}, 0, cv::BORDER_REPLICATE);
     }},
    {"xMedian", "medianBlur",
     [](const Picture &p) {
         cv::Mat to = plane(p, p.to_r);
         cv::medianBlur(plane(p, p.r), to, 3);
     }},
    {"Maximum_s, radius 2", "dilate, transpose", [](const Picture &p) { dilate(p, 2); }},
    {"Maximum_s, radius 20", "dilate, transpose", [](const Picture &p) { dilate(p, 20); }},
    {"xBlur, radius 6, 3 passes", "blur ×3",
     [](const Picture &p) {
         box(p, {13, 13}, 3);
     }},
    {"PrefilterCubicPass1Helper", "blur",
     [](const Picture &p) {
         box(p, {8, 1}, 1);
     }},
    {"PrefilterCubicPass2Helpter", "blur",
     [](const Picture &p) {
         box(p, {1, 8}, 1);
     }},
    {"DoCubicPass1Helper, larger", "resize", [](const Picture &p) { resize(p, 0.4, 1); }},
    {"DoCubicPass2Helper", "resize", [](const Picture &p) { resize(p, 1, 0.4); }},
    {"xBiCubicHelper, larger", "resize", [](const Picture &p) { resize(p, 0.4, 0.4); }},
    {"ScaleRotate_8_noAA", "warpAffine", [](const Picture &p) { rotate(p, cv::INTER_NEAREST); }},
    {"xfreetransformalpha", "warpAffine", [](const Picture &p) { rotate(p, cv::INTER_NEAREST); }},
    {"xfreetransformalpha_aa", "warpAffine", [](const Picture &p) { rotate(p, cv::INTER_LINEAR); }},
    {"FastHMirror", "flip",
     [](const Picture &p) {
         cv::Mat to = plane(p, p.to_r);
         cv::flip(plane(p, p.r), to, 1);
     }},
    {"FastVMirror", "flip",
     [](const Picture &p) {
         cv::Mat to = plane(p, p.to_r);
         cv::flip(plane(p, p.r), to, 0);
     }},
    {"xAccumulate", "add ×3",
     [](const Picture &p) {
         cv::Mat to(p.height, p.width, CV_16SC1, p.to_pixels);
         for (const uint8_t *from : {p.r, p.g, p.b}) cv::add(to, plane(p, from), to, cv::noArray(), CV_16S);
     }},
    {"xFindMinMax_f", "minMaxLoc",
     [](const Picture &p) {
         double low = 0;
         double high = 0;
         cv::minMaxLoc(floats(p, p.floats), &low, &high);
         p.to_floats[0] = static_cast<float>(low + high);
     }},
};

} // namespace

std::span<const Equivalent> equivalents() {
    cv::setNumThreads(1);
    return all;
}

} // namespace tavik_bench
