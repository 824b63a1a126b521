#include "tavik/composite/composite.h"

#include "host/run.h"
#include "host/shading.h"

namespace gallery {
namespace {

// Every tone of every channel: red rises to the right, green downwards, and blue in rings around the centre.
Image colourful_layer(const Image &photo) {
    Image layer(photo.width, photo.height);
    layer.red = plane_of(photo, [](float x, float) { return x; });
    layer.green = plane_of(photo, [](float, float y) { return y; });
    layer.blue =
        plane_of(photo, [](float x, float y) { return 0.5F + 0.5F * std::cos(20 * distance(x, y, 0.5F, 0.5F)); });
    return layer;
}

template <class Blend> void blend_layer(Run &run, const Blend &blend) {
    run.layer = colourful_layer(run.photo);
    const auto layer = run.layer->planes();
    const auto picture = run.picture.planes();
    for (std::size_t channel = 0; channel < 3; ++channel) blend(layer[channel], picture[channel]);
}

template <class Function> void blend_mode(Run &run, Export<Function> mode) {
    blend_layer(run, [&](const uint8_t *layer, uint8_t *picture) {
        run.call(mode, run.photo.width, run.photo.height, layer, picture);
    });
}

template <class Function> void combine(Run &run, Export<Function> mode) {
    blend_layer(run, [&](const uint8_t *layer, uint8_t *picture) {
        run.call(mode, run.photo.x_max(), run.photo.y_max(), picture, layer, picture);
    });
}

void blend(Run &run) {
    blend_layer(run, [&](const uint8_t *layer, uint8_t *picture) {
        run.call(EXPORT(xBlend), run.photo.x_max(), run.photo.y_max(), 160, layer, picture);
    });
}

void blend_two(Run &run) {
    blend_layer(run, [&](const uint8_t *layer, uint8_t *picture) {
        run.call(EXPORT(xBlend2), run.photo.x_max(), run.photo.y_max(), 90, picture, layer, picture);
    });
}

void overlay(Run &run) {
    const Plane mask = oval_mask(run.photo);
    run.label("mask", mask);
    blend_layer(run, [&](const uint8_t *layer, uint8_t *picture) {
        run.call(EXPORT(Overlay_channel), picture, layer, mask.data(), run.photo.width, run.photo.height);
    });
}

void alpha_blit(Run &run) {
    const Plane mask = oval_mask(run.photo);
    run.label("mask", mask);
    blend_layer(run, [&](const uint8_t *layer, uint8_t *picture) {
        run.call(EXPORT(AlphaBlit), run.photo.width, run.photo.height, layer, picture, mask.data());
    });
}

} // namespace

Family blend_family() {
    return {
        "blend",
        "Two layers combined sample by sample. The layer's red rises to the right, its green downwards, its blue in "
        "rings.",
        {
            {"combine_add",
             "Add",
             "Adds the layer and stops at white.",
             {"xCombineAdd"},
             [](Run &run) { combine(run, EXPORT(xCombineAdd)); }},
            {"combine_sub",
             "Subtract",
             "Subtracts the layer and stops at black.",
             {"xCombineSub"},
             [](Run &run) { combine(run, EXPORT(xCombineSub)); }},
            {"blend", "Blend", "Mixes the layer into the photo, which keeps 160 parts of 255.", {"xBlend"}, blend},
            {"blend_two", "Blend of two", "Mixes the photo with 90 parts of 255 of the layer.", {"xBlend2"}, blend_two},
            {"overlay_mask",
             "Overlay through a mask",
             "Keeps the photo in a soft oval and shows the layer around it.",
             {"Overlay_channel"},
             overlay},
            {"soft_light",
             "Soft light",
             "Lightens and darkens gently by the layer.",
             {"xcombineSoftLight"},
             [](Run &run) { blend_mode(run, EXPORT(xcombineSoftLight)); }},
            {"hard_light",
             "Hard light",
             "Multiplies where the layer is dark and screens where it is light.",
             {"xcombineHardLight"},
             [](Run &run) { blend_mode(run, EXPORT(xcombineHardLight)); }},
            {"colour_dodge",
             "Colour dodge",
             "Brightens the photo towards white by the layer.",
             {"xcombineColorDodge"},
             [](Run &run) { blend_mode(run, EXPORT(xcombineColorDodge)); }},
            {"colour_burn",
             "Colour burn",
             "Darkens the photo towards black by the layer.",
             {"xcombineColorBurn"},
             [](Run &run) { blend_mode(run, EXPORT(xcombineColorBurn)); }},
            {"linear_dodge",
             "Linear dodge",
             "Adds the layer; sums wrap around, and what fits becomes white.",
             {"xcombinelinearDodge"},
             [](Run &run) { blend_mode(run, EXPORT(xcombinelinearDodge)); }},
            {"linear_burn",
             "Linear burn",
             "Adds the layer and takes white away.",
             {"xcombinelinearBurn"},
             [](Run &run) { blend_mode(run, EXPORT(xcombinelinearBurn)); }},
            {"linear_light",
             "Linear light",
             "Burns linearly where the photo is dark; where it is light, sums wrap around as in linear dodge.",
             {"xcombineLinearLight"},
             [](Run &run) { blend_mode(run, EXPORT(xcombineLinearLight)); }},
            {"vivid_light",
             "Vivid light",
             "Burns where the photo is dark and dodges where it is light.",
             {"xcombineVividLight"},
             [](Run &run) { blend_mode(run, EXPORT(xcombineVividLight)); }},
            {"alpha_blit", "Alpha blit", "Draws the layer through a soft oval of alpha.", {"AlphaBlit"}, alpha_blit},
        },
    };
}

} // namespace gallery
