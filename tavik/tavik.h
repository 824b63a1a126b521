/* tavik: image processing and procedural graphics for a paint and effects host. Includes every family. */
#ifndef TAVIK_TAVIK_H
#define TAVIK_TAVIK_H

#include "tavik/blockmatch/blockmatch.h"
#include "tavik/colour/colour.h"
#include "tavik/composite/composite.h"
#include "tavik/convert/convert.h"
#include "tavik/dither/dither.h"
#include "tavik/filters/filters.h"
#include "tavik/foliage/foliage.h"
#include "tavik/frame/frame.h"
#include "tavik/framefile/framefile.h"
#include "tavik/generators/generators.h"
#include "tavik/lighting/lighting.h"
#include "tavik/memops/memops.h"
#include "tavik/paint/paint.h"
#include "tavik/raster/raster.h"
#include "tavik/resample/resample.h"
#include "tavik/scalar/scalar.h"
#include "tavik/tone/tone.h"

#endif
