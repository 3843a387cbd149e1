// Everything above the mountains: stars, clouds, the moon, northern lights.
#pragma once

#include "examples/gallery/skin/landscape.h"
#include "examples/gallery/skin/light_map.h"

namespace skin {

void PaintSky(LightMap& map, const Scene& scene);

}  // namespace skin
