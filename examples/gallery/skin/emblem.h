// The application's emblem: moon over ridgelines. It is the icon, and the seal on the glass panel.
#pragma once

#include "examples/gallery/skin/canvas.h"

namespace skin {

enum class EmblemShape { Disc, Tile };

// Centred on (x, y); `radius` is half the side of a tile.
void DrawEmblem(Canvas& canvas, double x, double y, double radius, EmblemShape shape);
// A square icon, any size from 16 up.
Canvas AppIcon(int side);

}  // namespace skin
